#pragma once

#include <cstdint>
#include <vector>

/// Solves king and pawn against king from the rules of chess.
///
/// Returns 8192 words: word (to_move * 64 + pawn) * 64 + strong_king, bit n of it set if the weak king on square n
/// draws. The pawn is White's; to_move is 0 for its side. Wins and impossible positions have no bit.
[[nodiscard]] std::vector<std::uint64_t> SolveSinglePawn();

/// How many bits are set in all: known from the published counts of this ending.
inline constexpr int single_pawn_draws = 108788;
