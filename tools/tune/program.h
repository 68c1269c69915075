#pragma once

/// The program: reads the command line, tunes, and gives its exit status.
[[nodiscard]] int RunTune(int argc, char** argv);
