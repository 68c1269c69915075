#pragma once

#include <string_view>

/// Checks at every start what the program takes from the system's library and the compiler can't check: the rounding
/// of numbers. A failure is reported like a failed assertion and ends the program.
void RunSelfChecks();

/// The check itself: whether it holds.
[[nodiscard]] bool RoundingHolds();
/// Ends the program with the report that carries `description`, unless `ok`.
void RequireSelfCheck(bool ok, std::string_view description);
