#pragma once

namespace table_builder {

/// The program as it is called from a shell. Returns its exit status.
[[nodiscard]] int RunProgram(int argc, char** argv);

}  // namespace table_builder
