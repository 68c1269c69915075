#pragma once

#include <string>
#include <string_view>

#include "evaluation/evaluate.h"
#include "evaluation/evaluation_context.h"
#include "search/hash.h"
#include "support/board_builder.h"

/// Empties the tables that the evaluation uses, with their counters.
inline void ForgetEvaluations() {
    for (ABSTRACT_HASH_TABLE* const table : {static_cast<ABSTRACT_HASH_TABLE*>(&evaluation_hash_table),
                                             static_cast<ABSTRACT_HASH_TABLE*>(&pawn_hash_table)}) {
        table->clear();
        table->newSearch();
    }
}

/// A position with all that an evaluation of it needs; the tables are empty at its start.
struct EvaluationBuilder {
    explicit EvaluationBuilder(std::string_view fen, EVALUATION_SETTINGS with = {})
        : board(BoardFromFen(std::string(fen))), settings(with) {
        ForgetEvaluations();
    }

    [[nodiscard]] int Type() const { return classify_position(board, no_position_type); }
    /// Answers from the tables, if they know.
    int Ask(int bound) { return evaluate(context, board, bound, Type()); }
    int AskAfresh(int bound) {
        ForgetEvaluations();
        return Ask(bound);
    }
    [[nodiscard]] int Score() {
        ForgetEvaluations();
        return exact_evaluation(context, board, Type());
    }

    BOARD board;
    EVALUATION_SETTINGS settings;
    EVALUATION_CONTEXT context{.settings = &settings};
};

/// The position with the board turned upside down and the colours exchanged.
[[nodiscard]] inline BOARD WithColoursExchanged(const BOARD& board) {
    std::int8_t squares[64];
    for (Square s = a1; s <= h8; ++s) {
        squares[MirrorVertically(s)] = static_cast<std::int8_t>(-board.squares[s]);
    }
    const PLY_FRAME& frame = board.frame();
    const int en_passant = frame.en_passant_square == 0 ? 0 : MirrorVertically(frame.en_passant_square);
    const int castling = (frame.castling & 3) << 2 | frame.castling >> 2;
    BOARD turned;
    turned.SetPosition(squares, static_cast<int>(board.side_to_move ^ 1U), en_passant, castling);
    return turned;
}
