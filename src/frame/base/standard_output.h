#pragma once

#include <cstdio>

/// The stream of standard output for all that the engine says, with the buffer that `stdout` would have. A descriptor
/// that is not ready, as a pipe may be that doesn't block, is waited for, where `stdout` would lose what it holds. What
/// nobody can read any more is dropped, and after a hang-up all that would have to wait.
[[nodiscard]] std::FILE* StandardOutput();
