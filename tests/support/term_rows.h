#pragma once

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "chess/notation.h"
#include "support/evaluation_builder.h"

/// Rows for the terms of the evaluation: a position from White's view, the value of the term for White, and the points
/// that it adds to the counters. Every row is also run for Black, with the colours exchanged.
///
/// Positions are written as the board alone. Counters are words: a letter for the counter (p and c are the own pressure
/// and cover, P and C the enemy's), a letter for the wing (q, k or c for the centre) and the points: "pc-6 cq3". A word
/// "a12" is the activity. Counters without a word stay 0.

/// Both instances of a term.
template <class Value>
struct SidedTerm {
    Value (*of_white)(EVALUATION_CONTEXT& context, const BOARD& board);
    Value (*of_black)(EVALUATION_CONTEXT& context, const BOARD& board);
};

/// The counters that a term leaves, in the form of the rows; those of the pawn hash table are added in.
inline std::string CountersText(const EVALUATION_CONTEXT& context, Colour own) {
    std::ostringstream text;
    const auto write = [&](char letter, const WingCounters& a, const WingCounters& b) {
        for (const auto& [wing, name] :
             {std::pair{queen_side, 'q'}, std::pair{king_side, 'k'}, std::pair{centre, 'c'}}) {
            const int points = a[wing] + b[wing];
            if (points != 0) text << letter << name << points << ' ';
        }
    };
    const Colour enemy = Opponent(own);
    write('p', context.pressure[own], context.pawn_pressure[own]);
    write('c', context.cover[own], context.pawn_cover[own]);
    write('P', context.pressure[enemy], context.pawn_pressure[enemy]);
    write('C', context.cover[enemy], context.pawn_cover[enemy]);
    if (context.activity != 0) text << 'a' << (own == white ? context.activity : -context.activity) << ' ';
    return text.str();
}

/// The words of a row in the order in which CountersText writes them.
inline std::string InOrder(std::string_view words) {
    std::istringstream in{std::string(words)};
    std::string word;
    std::array<std::string, 13> places;
    constexpr std::string_view counters = "pcPC";
    constexpr std::string_view wings = "qkc";
    while (in >> word) {
        const std::size_t place = word[0] == 'a' ? 12 : counters.find(word[0]) * 3 + wings.find(word[1]);
        places.at(place) = word.append(1, ' ');
    }
    std::string text;
    for (const std::string& place : places) text += place;
    return text;
}

inline std::string FenOfRow(std::string_view board) {
    return std::string(board) + (board.find(' ') == std::string_view::npos ? " w - - 0 1" : "");
}

/// Runs `check(context, board, own)` for White, and for Black on the exchanged position.
template <class Check>
void ForBothColours(std::string_view position, Check check) {
    EvaluationBuilder of_white(FenOfRow(position));
    of_white.PrepareTerms();
    check(of_white, white);
    if (testing::Test::HasFailure()) return;
    EvaluationBuilder of_black(WithColoursExchanged(of_white.board), {});
    of_black.PrepareTerms();
    SCOPED_TRACE("colours exchanged");
    check(of_black, black);
}

/// "(positional, reckless) counters"
inline std::string PairText(SCORE_PAIR pair, std::string_view counters) {
    std::ostringstream text;
    text << '(' << pair.positional() << ", " << pair.reckless() << ") " << counters;
    return text.str();
}

struct PairRow {
    std::string_view name;
    SidedTerm<SCORE_PAIR> term;
    std::string_view position;
    SCORE_PAIR pair;
    std::string_view counters = "";
    void (*prepare)(EVALUATION_CONTEXT& context, Colour own) = nullptr;  ///< what terms before it would have left
};
inline std::ostream& operator<<(std::ostream& out, const PairRow& row) { return out << row.name; }

inline void ExpectPair(const PairRow& row) {
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        if (row.prepare != nullptr) row.prepare(builder.context, own);
        const SCORE_PAIR pair = (own == white ? row.term.of_white : row.term.of_black)(builder.context, builder.board);
        EXPECT_EQ(PairText(pair, CountersText(builder.context, own)), PairText(row.pair, InOrder(row.counters)))
            << row.position;
    });
}

struct ValueRow {
    std::string_view name;
    SidedTerm<int> term;
    std::string_view position;
    int value;
};
inline std::ostream& operator<<(std::ostream& out, const ValueRow& row) { return out << row.name; }

inline void ExpectValue(const ValueRow& row) {
    ForBothColours(row.position, [&](EvaluationBuilder& builder, Colour own) {
        const auto term = own == white ? row.term.of_white : row.term.of_black;
        EXPECT_EQ(term(builder.context, builder.board), row.value) << row.position;
    });
}
