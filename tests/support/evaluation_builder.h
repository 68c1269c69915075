#pragma once

#include <string>
#include <string_view>

#include "bitbases/bitbases.h"
#include "evaluation/blend.h"
#include "evaluation/context/evaluation_context.h"
#include "evaluation/evaluate.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/passed_pawns.h"
#include "evaluation/pawns/pawn_structure.h"
#include "evaluation/pieces/material_terms.h"
#include "search/tables/hash.h"
#include "support/board_builder.h"

/// What the first terms of the opening and middle game come to, positional, for the side to move: a bound at which the
/// routines always compute every term. A score is found there even if the other terms add more than the lazy margins
/// allow for, which misleads a bisection.
[[nodiscard]] inline int EstimateOf(const BOARD& board, const EVALUATION_SETTINGS& settings) {
    EVALUATION_CONTEXT scratch{&settings};
    find_bishop_pairs(scratch, board);
    find_passed_pawns(scratch, board);
    SCORE_PAIR sum = passed_pawns(scratch, board);
    sum += material_imbalance(scratch, board);
    sum += bishop_pair(scratch, board);
    return board.frame().material_balance + (board.side_to_move == white ? sum : -sum).positional();
}

/// A position with all that an evaluation of it needs, tables of its own included.
struct EvaluationBuilder {
    explicit EvaluationBuilder(std::string_view fen, EVALUATION_SETTINGS with = {})
        : board(BoardFromFen(std::string(fen))), settings(with) {}

    EvaluationBuilder(const BOARD& position, EVALUATION_SETTINGS with) : board(position), settings(with) {}

    [[nodiscard]] int Type() const { return classify_position(board, no_position_type); }
    /// Answers from the tables, if they know.
    int Ask(int bound) { return evaluate(context, board, bound, Type()); }
    int AskAfresh(int bound) {
        Forget();
        return Ask(bound);
    }
    [[nodiscard]] int Score() { return Score(Type()); }
    [[nodiscard]] int Score(int position_type) {
        Forget();
        return exact_evaluation(context, board, position_type);
    }

    /// Brings the context to where the terms of the opening and middle game begin: all pawn facts found, the `attacks`
    /// of both sides hold the squares next to their kings, every counter is zero.
    void PrepareTerms() {
        context = EVALUATION_CONTEXT(&settings, &tables, &bitbases);
        find_bishop_pairs(context, board);
        find_passed_pawns(context, board);
        static_cast<void>(passed_pawns(context, board));
        find_open_files(context, board);
        place_kings(context, board);
        context.endgame_weight = endgame_weight(board);
        find_pawn_attacks(context, board);
        find_pawn_facts(context, board);
    }

    [[nodiscard]] int Estimate() const { return EstimateOf(board, settings); }
    [[nodiscard]] int FullScore() { return AskAfresh(Estimate()); }

    /// Empties the tables, with their counters.
    void Forget() {
        tables.Clear();
        tables.NewSearch();
    }

    BOARD board;
    EVALUATION_SETTINGS settings;
    HashTables tables;
    VorkaBitbases::Bitbases bitbases;
    EVALUATION_CONTEXT context{&settings, &tables, &bitbases};
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
