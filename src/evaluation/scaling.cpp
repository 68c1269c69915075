#include "evaluation/scaling.h"

int scale_ending(int score, bool /*opposite_bishops*/, const BOARD& /*board*/) noexcept { return score; }

std::optional<int> wrong_bishop_rule(const BOARD& /*board*/) noexcept { return std::nullopt; }
