#pragma once

#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "support/board_builder.h"

/// Finds forced mates by trying everything. It remembers positions, and nothing else makes it faster.
class MateSolver {
  public:
    /// Gives up, and answers no, after this many positions.
    explicit MateSolver(std::uint64_t most_positions = ~std::uint64_t{0}) : left_(most_positions) {}

    /// Whether the side on move can mate with its `moves`-th move at the latest.
    [[nodiscard]] bool CanMate(const BOARD& board, int moves) {
        const auto key = std::make_pair(board.key(), moves);
        if (const auto found = known_.find(key); found != known_.end()) return found->second;
        if (left_ == 0) return false;
        --left_;
        bool can_mate = false;
        for (const Move move : LegalMovesOf(board)) {
            if (moves == 1 && !GivesCheck(move)) continue;
            BOARD child = board;
            child.MakeMove(move);
            child.ResetPly();
            if (IsLost(child, moves)) {
                can_mate = true;
                break;
            }
        }
        known_[key] = can_mate;
        return can_mate;
    }
    [[nodiscard]] bool gave_up() const { return left_ == 0; }

  private:
    /// Whether the side on move is mated, or will be within `moves` more moves of the other side (the one that led here
    /// counted).
    bool IsLost(const BOARD& board, int moves) {
        const std::vector<Move> replies = LegalMovesOf(board);
        if (replies.empty()) return board.in_check();
        if (moves == 1) return false;
        for (const Move reply : replies) {
            BOARD child = board;
            child.MakeMove(reply);
            child.ResetPly();
            if (!CanMate(child, moves - 1)) return false;
        }
        return true;
    }

    struct Hash {
        std::size_t operator()(const std::pair<std::uint64_t, int>& key) const {
            return static_cast<std::size_t>(key.first ^ static_cast<std::uint64_t>(key.second) << 56);
        }
    };
    std::unordered_map<std::pair<std::uint64_t, int>, bool, Hash> known_;
    std::uint64_t left_;
};
