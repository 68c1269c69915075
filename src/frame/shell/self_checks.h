#pragma once

#include <string_view>

/// Checks at every start what the whole program builds on: the identities of the square functions, and the rounding of
/// numbers. A failure is reported like a failed assertion and ends the program.
void RunSelfChecks();

/// The two checks. Each tells whether all that it looks at holds.
[[nodiscard]] bool SquareIdentitiesHold();
[[nodiscard]] bool RoundingHolds();
/// Ends the program with the report that carries `description`, unless `ok`.
void RequireSelfCheck(bool ok, std::string_view description);
