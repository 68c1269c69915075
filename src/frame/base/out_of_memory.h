#pragma once

/// The end of a program that gets no memory: one line on standard output, and status 1. A command that can do with less
/// says so by itself, and the program goes on. Where std::bad_alloc can't be caught, before main or in a function that
/// promises not to throw, every program that is linked with this ends with the same words.

/// For main, which has caught std::bad_alloc: says so in the log and, after `prefix`, on standard output. Asks for no
/// memory itself. Returns the exit status.
[[nodiscard]] int ReportOutOfMemory(const char* prefix = "");
