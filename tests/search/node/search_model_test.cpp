// The node against a slow and obvious search: boards are copied, all moves are generated and sorted out by looking at
// them, nothing is shared and nothing is undone. Both must give the same answer to every question.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bitbases/bitbases.h"
#include "chess/exchange.h"
#include "evaluation/context/position_type.h"
#include "evaluation/evaluate.h"
#include "search/node/search_node.h"
#include "search/tables/hash.h"
#include "support/board_builder.h"
#include "support/mode_filter.h"
#include "support/plain_settings.h"
#include "support/random_games.h"
#include "support/search_builder.h"

namespace {

/// "Worth at least beta?", by the rules of the full-width search and of the quiescence search.
class SlowSearch {
  public:
    /// A score that is known answers every question; one that is not may be answered lazily. So both searches share the
    /// tables.
    SlowSearch(Colour root_side, Score contempt, HashTables& tables)
        : root_side_(root_side), contempt_(contempt), evaluation_{&evaluation_settings_, &tables, &bitbases_} {}

    bool IsAtLeast(const BOARD& board, Move last_move, Score beta, Distance distance, int parent_class) {
        const auto ply = static_cast<Score>(board.ply);
        const Score draw = static_cast<Colour>(board.side_to_move) == root_side_ ? contempt_ : -contempt_;
        if (ply - 32767 >= beta) return true;
        if (32767 - ply - 1 < beta) return false;
        if (board.IsDraw()) return draw >= beta;

        int type = parent_class;
        if (CapturedPiece(last_move) != no_piece || PromotionPiece(last_move) != no_piece ||
            (parent_class == 0 && LeavesHome(last_move))) {
            type = classify_position(board, parent_class);
        }
        const bool in_check = board.in_check();
        const bool quiescence = distance < 1 && !in_check;
        if (quiescence && evaluate(evaluation_, board, beta, type) >= beta) return true;

        const std::vector<Move> moves = LegalMovesOf(board);
        if (!quiescence && moves.empty()) return (in_check ? ply - 32767 : draw) >= beta;
        for (const Move move : moves) {
            if (quiescence && !IsTried(board, move, beta, distance, type)) continue;
            BOARD child = board;
            child.MakeMove(move);
            if (!IsAtLeast(child, move, 1 - beta, distance - 64, type)) return true;
        }
        return false;
    }

  private:
    static bool LeavesHome(Move move) {
        const std::string_view home = "RNB.KBNR";
        const Square from = FromSquare(move);
        if (MovingPiece(move) == no_piece || (RankOf(from) != 0 && RankOf(from) != 7)) return false;
        return home[static_cast<std::size_t>(FileOf(from))] ==
               piece_letters[static_cast<std::size_t>(MovingPiece(move))];
    }

    static bool IsGenerated(Move move, Score beta, Distance distance) {
        const unsigned checks = distance >= -384 ? 14U : 0U;
        const unsigned captures_and_castling = beta < 31767 ? 17U + 64U : 0U;
        return ModeWants(checks + captures_and_castling, move);
    }

    static bool IsTried(const BOARD& board, Move move, Score beta, Distance distance, int type) {
        if (!IsGenerated(move, beta, distance)) return false;
        const auto check = static_cast<unsigned>(CheckType(move));
        const bool discovered = check >= 2;
        if (PromotionPiece(move) == queen) return true;
        if (PromotionPiece(move) == knight) return GivesDirectCheck(move);
        if (PromotionPiece(move) != no_piece) return false;
        if (check == 3 || (check != 0 && distance >= -51)) return true;
        if (beta >= 31768) return false;
        constexpr std::array<Score, 18> margin{285, 275, 300, 300, 300, 400,  400,  400,  400,
                                               400, 500, 600, 600, 600, 1000, 3000, 5000, 700};
        Score need = beta - board.frame().material_balance - margin[static_cast<std::size_t>(type)];
        if (CapturedPiece(move) == no_piece && !discovered && distance < -128) need += -distance;
        Score gain = piece_value[CapturedPiece(move)];
        if (need > gain && check != 0) {
            if (check == 1 && MovingPiece(move) != knight) return false;
            gain += AttackGain(move, board, true);
        }
        if (need > gain) return false;
        if (MovingPiece(move) != king && !discovered) {
            constexpr int rounded[7] = {0, 0, 3, 3, 5, 9, 0};
            if (rounded[CapturedPiece(move)] >= rounded[MovingPiece(move)]) return true;
            Bitboard touched;
            return !(ExchangeScore(move, board, touched) < -10);
        }
        return true;
    }

    Colour root_side_;
    Score contempt_;
    EVALUATION_SETTINGS evaluation_settings_;
    VorkaBitbases::Bitbases bitbases_;
    EVALUATION_CONTEXT evaluation_;
};

TEST(SearchNodeModel, GivesTheSameAnswers) {
    constexpr std::uint32_t seed = 20240229;
    std::mt19937 random(seed);
    int questions = 0;
    ForEachRandomPosition(seed, 84, 40, [&](BOARD& position, const std::vector<Move>& moves) {
        if (moves.empty() || position.IsDraw() || random() % 5 != 0) return;
        const Move move = moves[random() % moves.size()];
        const Score contempt = static_cast<Score>(random() % 61) - 30;
        SearchBuilder search(FenOf(position), PlainSettings(), contempt);
        const int root_class = search.board->position_class[0];
        search.board->moves_played[1] = move;
        search.board->board.MakeMove(move);
        const BOARD& board = search.board->board;
        const Score material = board.frame().material_balance;
        const Distance distance = static_cast<Distance>(random() % 130) - 64;
        for (const Score beta : {material, material + 40, material - 330, material + 700, Score{0}, contempt, -contempt,
                                 Score{32760}, Score{-32760}, Score{31767}, Score{31766}, Score{-31767}}) {
            SlowSearch slow(Opponent(static_cast<Colour>(board.side_to_move)), contempt, search.tables);
            const bool expected = slow.IsAtLeast(board, move, beta, distance, root_class);
            ASSERT_EQ(search.Ask(beta, distance), expected ? beta : beta - 1)
                << "seed " << seed << ", " << FenOf(board) << ", beta " << beta << ", distance " << distance
                << ", contempt " << contempt;
            ++questions;
        }
    });
    EXPECT_GT(questions, 2000);
}

}  // namespace
