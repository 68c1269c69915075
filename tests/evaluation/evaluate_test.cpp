#include "evaluation/evaluate.h"
#include "bitbases/bitbases.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string_view>
#include <tuple>

#include "evaluation/blend.h"
#include "evaluation/context/board_areas.h"
#include "evaluation/king/king_safety.h"
#include "evaluation/pawns/pawn_hash_entry.h"
#include "support/evaluation_builder.h"
#include "support/row_name.h"

namespace {

constexpr std::string_view opening_position = "rnbqkbnr/pppppppp/8/8/8/8/PPPPPPPP/RNBQKBNR w KQkq - 0 1";
constexpr std::string_view rook_up = "r2q1rk1/pppppppp/2n2n2/2b2b2/2B2B2/2N2N2/PPPPPPPP/R2Q1RKR w - - 0 1";
constexpr std::string_view rook_ending_position = "4k2r/4p3/8/8/8/8/4P3/4K2R w - - 0 1";
constexpr std::string_view queen_ending_position = "3qk3/4p3/8/8/8/8/4P3/3QK3 w - - 0 1";
constexpr std::string_view pawn_ending_position = "4k3/4p3/8/8/8/8/4P3/4K3 w - - 0 1";
constexpr std::string_view ending_position = "4kb1r/4p3/8/8/8/8/4P3/4KB1R w - - 0 1";
constexpr std::string_view lone_minor_position = "4k3/4p3/8/8/8/8/8/4K1N1 w - - 0 1";
constexpr std::string_view pawnless_position = "4k3/8/8/8/8/8/8/4K2R w - - 0 1";

/// One position for each routine, and both sides to move.
constexpr std::array positions{
    opening_position,
    rook_up,
    rook_ending_position,
    queen_ending_position,
    pawn_ending_position,
    ending_position,
    lone_minor_position,
    pawnless_position,
    std::string_view("rnbqkbnr/pppp1ppp/8/4p3/4P3/5N2/PPPP1PPP/RNBQKB1R b KQkq - 1 2"),
    std::string_view("r2q1rk1/ppp2ppp/2np1n2/2b1p3/2B1P1b1/2NP1N2/PPP2PPP/R1BQ1RK1 b - - 4 7"),
    std::string_view("4k2r/4p3/8/8/8/8/3PP3/4K2R b - - 0 1"),
};

using Counts = std::tuple<std::uint64_t, std::uint64_t>;  // of the pawn table and of the evaluation table
Counts Probes(const EvaluationBuilder& position) {
    return {position.tables.pawn.probes(), position.tables.evaluation.probes()};
}
std::uint64_t EntriesOf(const ABSTRACT_HASH_TABLE& table) { return table.totalSlots() - table.freeSlots(); }
Counts Entries(const EvaluationBuilder& position) {
    return {EntriesOf(position.tables.pawn), EntriesOf(position.tables.evaluation)};
}

// --- Bounds ---

TEST(Evaluate, NeverComputesScoresNearAMate) {
    EvaluationBuilder position(ending_position);
    EXPECT_EQ(position.Ask(31767), 31766);
    EXPECT_EQ(position.Ask(-31767), -31767);
    EXPECT_EQ(position.Ask(32767), 32766);
    EXPECT_EQ(position.Ask(-32767), -32767);
    EXPECT_EQ(Probes(position), std::tuple(0, 0)) << "no table is touched";
    EXPECT_EQ(position.Ask(31766), 31765);
    EXPECT_EQ(position.Ask(-31766), -31766);
    EXPECT_EQ(Probes(position), std::tuple(2, 2)) << "the last bounds that are looked at";
}

TEST(Evaluate, TellsTheSideOfTheBound) {
    for (const std::string_view fen : positions) {
        EvaluationBuilder position(fen);
        const int score = position.Score();
        for (const int distance : {0, 1, 2, 50, 100, 250, 1500, 5000, 20000}) {
            for (const int bound : {score - distance, score + distance}) {
                const int answer = position.AskAfresh(bound);
                EXPECT_EQ(answer >= bound, score >= bound) << fen << ' ' << bound;
                EXPECT_TRUE(answer == score || answer == bound || answer == bound - 1) << fen << ' ' << answer;
                EXPECT_EQ(position.Ask(bound) >= bound, score >= bound) << fen << ' ' << bound << " from the table";
            }
        }
    }
}

TEST(Evaluate, BisectionFindsTheGreatestBoundThatIsReached) {
    for (const std::string_view fen : positions) {
        EvaluationBuilder position(fen);
        const int score = position.Score();
        for (int bound = score - 300; bound <= score + 300; ++bound) {
            ASSERT_EQ(position.AskAfresh(bound) >= bound, bound <= score) << fen << ' ' << bound;
        }
    }
}

TEST(Evaluate, BisectionFindsEveryStoredScore) {
    EvaluationBuilder position(ending_position);
    for (int score = -31766; score <= 31766; score += score < -31700 || score > 31700 ? 1 : 317) {
        position.tables.evaluation.Store({.key = position.board.key(), .score = static_cast<std::int16_t>(score)});
        ASSERT_EQ(exact_evaluation(position.context, position.board, position.Type()), score);
    }
}

// --- Lazy test of the opening and the middle game ---

struct LazyRow {
    std::string_view name;
    std::string_view fen;
    int type;
    int lowest;   // bound that is worth a full evaluation
    int highest;  // the same
};
std::ostream& operator<<(std::ostream& out, const LazyRow& row) { return out << row.name; }

class LazyTest : public testing::TestWithParam<LazyRow> {};

TEST_P(LazyTest, StopsBeyondTheMarginOfBothValues) {
    const LazyRow& row = GetParam();
    EvaluationBuilder position(row.fen);
    ASSERT_EQ(position.Type(), row.type);
    position.AskAfresh(row.lowest);
    EXPECT_EQ(Entries(position), std::tuple(1, 1));
    position.AskAfresh(row.highest);
    EXPECT_EQ(Entries(position), std::tuple(1, 1));
    EXPECT_EQ(position.AskAfresh(row.lowest - 1), row.lowest - 1);
    EXPECT_EQ(Entries(position), std::tuple(0, 0)) << "a lazy answer leaves nothing behind";
    EXPECT_EQ(position.AskAfresh(row.highest + 1), row.highest);
    EXPECT_EQ(Entries(position), std::tuple(0, 0)) << "a lazy answer leaves nothing behind";
}

constexpr std::string_view middle_game_position = "r2q1rk1/pppppppp/2n2n2/2b2b2/2B2B2/2N2N2/PPPPPPPP/R2Q1RK1 w - - 0 1";

INSTANTIATE_TEST_SUITE_P(
    Evaluate, LazyTest,
    testing::Values(LazyRow{"opening", opening_position, opening, -285, 285},
                    LazyRow{"middle game", middle_game_position, middle_game, -275, 275},
                    // 500 for the rook; the imbalance adds 400 positional and 180 reckless points
                    LazyRow{"a rook up", rook_up, middle_game, 680 - 275, 900 + 275},
                    LazyRow{"a rook down", "r2q1rk1/pppppppp/2n2n2/2b2b2/2B2B2/2N2N2/PPPPPPPP/R2Q1RKR b - - 0 1",
                            middle_game, -900 - 275, -680 + 275},
                    // bishop 315 for knight 305, and the pair
                    LazyRow{"bishop pair", "r2q1rk1/pppppppp/2n2n2/2b2n2/2B2B2/2N2N2/PPPPPPPP/R2Q1RK1 w - - 0 1",
                            middle_game, 10 + 50 - 275, 10 + 50 + 275},
                    LazyRow{"bishop pair of the side not to move",
                            "r2q1rk1/pppppppp/2n2n2/2b2n2/2B2B2/2N2N2/PPPPPPPP/R2Q1RK1 b - - 0 1", middle_game,
                            -10 - 50 - 275, -10 - 50 + 275}),
    RowName<LazyRow>);

// --- Tables ---

TEST(EvaluationTables, FullEvaluationIsStored) {
    for (const std::string_view fen : positions) {
        EvaluationBuilder position(fen);
        if (position.Type() == pawnless) continue;
        const int score = position.Score();
        position.AskAfresh(score);
        EXPECT_EQ(Entries(position), std::tuple(1, 1)) << fen;
        EXPECT_EQ(Probes(position), std::tuple(1, 1)) << fen;
        EXPECT_EQ(position.tables.evaluation.Probe(position.board.key(), score), EvaluationAnswer::at_least_threshold)
            << fen;
        EXPECT_EQ(position.tables.evaluation.Probe(position.board.key(), score + 1), EvaluationAnswer::below_threshold)
            << fen;
        EXPECT_NE(position.tables.pawn.Probe(position.board.frame().pawn_key, position.Type()), nullptr) << fen;
    }
}

TEST(EvaluationTables, StoredScoreIsBelieved) {
    EvaluationBuilder position(ending_position);
    position.tables.evaluation.Store({.key = position.board.key(), .score = 3333});
    EXPECT_EQ(position.Ask(3333), 3333);
    EXPECT_EQ(position.Ask(3334), 3333);
    EXPECT_EQ(position.Ask(-3000), -3000) << "the bound, not the score";
    EXPECT_EQ(position.tables.evaluation.hits(), 3U);
    EXPECT_EQ(position.tables.pawn.probes(), 0U) << "it answers before anything else is looked at";
}

TEST(EvaluationTables, ALazyAnswerIsFollowedByAFullOne) {
    EvaluationBuilder position(opening_position);
    position.Ask(5000);
    EXPECT_EQ(Entries(position), std::tuple(0, 0));
    position.Ask(0);
    EXPECT_EQ(Entries(position), std::tuple(1, 1));
    EXPECT_EQ(position.tables.evaluation.hits(), 0U);
    position.Ask(5000);
    EXPECT_EQ(position.tables.evaluation.hits(), 1U) << "now the table knows";
}

TEST(EvaluationTables, PawnsAreKnownAgainUnderAnotherPlacementOfThePieces) {
    EvaluationBuilder position(ending_position);
    position.Ask(0);
    EXPECT_EQ(position.tables.pawn.hits(), 0U);
    EXPECT_FALSE(position.context.pawn_entry_from_table);
    position.board = BoardFromFen("4k1br/4p3/8/8/8/8/4P3/4KB1R w - - 0 1");
    position.Ask(0);
    EXPECT_EQ(position.tables.pawn.hits(), 1U);
    EXPECT_TRUE(position.context.pawn_entry_from_table);
    EXPECT_EQ(Entries(position), std::tuple(1, 2));
}

TEST(EvaluationTables, AKnownPawnEntryIsNotWrittenAgain) {
    EvaluationBuilder position(ending_position);
    PAWN_HASH_ENTRY entry = construct_pawn_entry(position.context, position.board, position.Type());
    entry.counters.back() = 77;
    position.tables.pawn.Store(entry);
    position.Ask(0);
    EXPECT_EQ(position.tables.pawn.Probe(entry.pawn_key, position.Type())->counters.back(), 77);
}

TEST(EvaluationTables, PawnsOfTwoTypesAreTwoEntries) {
    EvaluationBuilder position(ending_position);
    position.Ask(0);
    position.board = BoardFromFen("4k2r/4p3/8/8/8/8/4P3/4KB1R w - - 0 1");
    ASSERT_EQ(position.Type(), unbalanced_ending);
    position.Ask(0);
    EXPECT_EQ(position.tables.pawn.hits(), 0U);
    EXPECT_EQ(Entries(position), std::tuple(2, 2));
}

TEST(EvaluationTables, PositionsWithoutPawnsUseNone) {
    EvaluationBuilder position(pawnless_position);
    for (const int bound : {0, 400, 600, -2000}) position.Ask(bound);
    EXPECT_EQ(Probes(position), std::tuple(0, 0));
    EXPECT_EQ(Entries(position), std::tuple(0, 0));
    // A pawn on the board, but the other side has nothing to hold it.
    EvaluationBuilder with_pawn("4k3/8/8/8/8/8/4P3/4K2R w - - 0 1");
    ASSERT_EQ(with_pawn.Type(), pawnless);
    with_pawn.Ask(0);
    EXPECT_EQ(Probes(position), std::tuple(0, 0));
}

// --- Context ---

TEST(EvaluationContext, IsClearedButForTheSettings) {
    for (const std::string_view fen : positions) {
        EvaluationBuilder position(fen);
        const int score = position.Score();
        EVALUATION_CONTEXT& context = position.context;
        context.openness = 15;
        context.activity = 3000;
        context.pressure[white] = context.cover[black] = {500, 500, 500};
        context.king_attack[white] = context.king_attack[black] = 100;
        context.king_cover[white] = context.king_cover[black] = -100;
        context.pawn_entry_from_table = true;
        EXPECT_EQ(position.Score(), score) << fen;
        EXPECT_EQ(context.settings, &position.settings);
    }
}

TEST(EvaluationContext, HoldsWhatTheTermsRead) {
    // Black may castle still; the d-file is the only open one.
    EvaluationBuilder position("r1b1kb1r/ppp1pppp/2n2n2/8/4P3/2N2N2/PPP1BPPP/R4RK1 w kq - 0 1");
    ASSERT_EQ(position.Type(), middle_game);
    position.AskAfresh(position.board.frame().material_balance);
    const EVALUATION_CONTEXT& context = position.context;
    EXPECT_FALSE(context.has_bishop_pair[white]);
    EXPECT_TRUE(context.has_bishop_pair[black]);
    EXPECT_EQ(context.files_without_pawn[white], 0b1000);
    EXPECT_EQ(context.only_open_file, 3);
    EXPECT_EQ(context.king_wing[white], king_side);
    EXPECT_EQ(context.king_wing[black], centre);
    EXPECT_NEAR(context.endgame_weight, 1.0, 1e-9) << "two rooks and four minor pieces";
    EXPECT_TRUE(Has(context.pawns[white].attacks, d5));
    for (const Colour side : {white, black}) {
        const Bitboard around_king = bitboard_tables.king_attacks[position.board.side(side).king_square];
        EXPECT_EQ(context.attacks[side] & around_king, around_king);
        EXPECT_EQ(context.attacks_no_queen[side] & around_king, around_king);
        EXPECT_EQ(context.cover_factor[side], danger_of_cover(context.king_cover[side]));
        EXPECT_EQ(context.attack_factor[side], danger_of_attack(context.king_attack[side]));
    }
}

TEST(EvaluationContext, HasTheFactsOfThePawnsOnAHitToo) {
    EvaluationBuilder position(opening_position);
    position.Ask(0);
    position.board = BoardFromFen("rnbqkbnr/pppppppp/8/8/8/5N2/PPPPPPPP/RNBQKB1R b KQkq - 1 1");
    position.Ask(0);
    EXPECT_TRUE(position.context.pawn_entry_from_table);
    EXPECT_EQ(position.context.pawns[white].attacks, ranks<white>(2, 2));
    EXPECT_EQ(position.context.pawn_count[white], 8);
}

// --- Personality ---

TEST(Evaluate, PersonalityChoosesBetweenTheTwoValues) {
    // 500 for the rook, and 400 or 180 for the imbalance; the other terms have to leave that much room.
    EvaluationBuilder quiet(rook_up, {.personality = -1000});
    EvaluationBuilder bold(rook_up, {.personality = 1000});
    EXPECT_LT(bold.Score(), quiet.Score());
    EvaluationBuilder quiet_ending(ending_position, {.personality = -1000});
    EvaluationBuilder bold_ending(ending_position, {.personality = 1000});
    EXPECT_EQ(bold_ending.Score(), quiet_ending.Score()) << "endings know no pairs";
}

// --- Display ---

const VorkaBitbases::Bitbases no_bitbases;

TEST(Evaluate, DisplayedScoreIsTheExactOneWithoutContempt) {
    for (const std::string_view fen : positions) {
        for (const int personality : {0, 7, 1000, -1000}) {
            EvaluationBuilder position(fen, {.personality = static_cast<std::int16_t>(personality)});
            EXPECT_EQ(evaluate_for_display(position.board, personality, position.tables, no_bitbases), position.Score())
                << fen;
        }
    }
}

TEST(Evaluate, DisplayedScoreIsNotBentByLazyAnswers) {
    // Its terms add more than the lazy margin: once the score is known, questions from far away must not answer anew.
    EvaluationBuilder position("r2qr1k1/1p3ppp/2n2n2/p2ppbN1/N3p3/1P2P3/P1PP1PPP/R1BQKB1R w KQ a6 0 1");
    EXPECT_EQ(position.FullScore(), 246);
    EXPECT_EQ(evaluate_for_display(position.board, 0, position.tables, no_bitbases), 246);
}

TEST(Evaluate, DisplayLeavesTheScoresOfTheSearchAlone) {
    EvaluationBuilder position(lone_minor_position, {.draw_score = 200});
    const int score = position.Score();
    const auto entries = Entries(position);
    const auto probes = position.tables.evaluation.probes();
    EXPECT_NE(evaluate_for_display(position.board, 0, position.tables, no_bitbases), score);
    EXPECT_EQ(Entries(position), entries);
    EXPECT_EQ(position.tables.evaluation.probes(), probes);
    EXPECT_EQ(position.Ask(score), score);
}

}  // namespace
