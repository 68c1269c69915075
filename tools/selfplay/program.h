#pragma once

/// The program: reads the command line, plays, and gives its exit status.
[[nodiscard]] int RunSelfplay(int argc, char** argv);
