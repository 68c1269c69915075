// The score of a tactical move has two parts: points for what the move is (its check, the piece that it captures), and
// points for what it gains. The gain is counted in centipawns and converted, by one of three formulas, so that a clear
// win or loss of material weighs more than the rest.

#include "search/ordering/tactical_scores.h"

#include <algorithm>

#include "chess/bitboard_tables.h"
#include "chess/exchange.h"
#include "search/state/sort_score.h"

namespace {

/// Centipawns. A queen promotion is a queen for a pawn; a knight promotion is worth as much only with a check.
constexpr Score queen_promotion_gain = 920;
constexpr Score knight_promotion_with_check_gain = 205;
static_assert(queen_promotion_gain == piece_value[queen] - piece_value[pawn]);
static_assert(knight_promotion_with_check_gain == piece_value[knight] - piece_value[pawn]);

/// A loss up to this is as good as none, in centipawns.
constexpr Score even_exchange = -10;

/// A piece that discovers a check may be left hanging if it goes this far from the enemy king: the opponent has to
/// answer the check first.
constexpr int away_from_king = 2;

/// Width of the noise among the moves of quiescence. The setting for it is read by nobody: docs/oddities.md, settings
/// without effect.
constexpr std::uint32_t quiescence_noise = 10;

std::int32_t CheckBonus(const Node& node, Move move) {
    const auto type = static_cast<std::size_t>(CheckType(move));
    return node.is_searching_for_mate() ? node.settings().checking_move_sorting_bonus_if_playing_for_mate[type]
                                        : node.settings().checking_move_sorting_bonus_if_not_playing_for_mate[type];
}

/// Centipawns to points.
std::int32_t Converted(const SearchSettings& settings, Score gain) {
    if (gain < even_exchange) {
        return gain * settings.material_loss_sorting_malus__multiplicator /
                   settings.material_loss_sorting_malus__divisor -
               settings.material_loss_sorting_malus__minimum;
    }
    if (gain > settings.very_promising_tactical_move_margin) {
        return gain * settings.material_win_sorting_bonus__multiplicator /
                   settings.material_win_sorting_bonus__divisor +
               settings.material_win_sorting_bonus__minimum;
    }
    return gain * settings.material_quite_equal_sorting_bonus__multiplicator /
               settings.material_quite_equal_sorting_bonus__divisor +
           settings.material_quite_equal_sorting_bonus__minimum;
}

int DistanceToEnemyKing(const Node& node, Move move) {
    return bitboard_tables.distance[ToSquare(move)][node.board().enemy().king_square];
}

/// Points for a direct check whose piece is safe.
std::int32_t SafeCheckBonus(const Node& node, Move move) {
    if (MovingPiece(move) != queen) return node.settings().safe_non_queen_check_sorting_bonus;
    switch (DistanceToEnemyKing(node, move)) {
        case 1:
            return node.settings().safe_queen_check_very_close_to_king_sorting_bonus;
        case 2:
            return node.settings().safe_queen_check_quite_close_to_king_sorting_bonus;
        default:
            return node.settings().safe_queen_check_not_close_to_king_sorting_bonus;
    }
}

/// What the promotion itself gains.
Score PromotionGain(Move move) {
    switch (PromotionPiece(move)) {
        case no_piece:
            return 0;
        case queen:
            return queen_promotion_gain;
        default:
            return knight_promotion_with_check_gain;
    }
}

/// A promotion to less than a queen, unless a knight checks. Nothing else counts for it.
bool IsPoorPromotion(Move move) {
    switch (PromotionPiece(move)) {
        case no_piece:
        case queen:
            return false;
        case knight:
            return !GivesCheck(move);
        default:
            return true;
    }
}

struct Worth {
    Score gain;           // centipawns
    std::int32_t points;  // on top of the converted gain
};

/// What the exchange on the target square brings, and after a check what the piece threatens next.
Worth ExchangeWorth(const Node& node, Move move) {
    Bitboard touched;
    const Score exchange = ExchangeScore(move, node.board(), touched);
    if (!GivesCheck(move)) return {exchange, 0};
    const bool may_be_lost = GivesDiscoveredCheck(move) && DistanceToEnemyKing(node, move) >= away_from_king;
    const bool is_safe = exchange >= even_exchange;
    if (!is_safe && !may_be_lost) return {exchange, 0};
    const Score next =
        AttackGain(move, node.board(), node.settings().score_checking_move_should_neglect_trade_knight_vs_bishop);
    return {.gain = (exchange < 1 && may_be_lost ? 0 : exchange) + next,
            .points = is_safe && GivesDirectCheck(move) ? SafeCheckBonus(node, move) : 0};
}

}  // namespace

std::int32_t TacticalScore(const Node& node, Move move) noexcept {
    std::int32_t points = CheckBonus(node, move) + node.settings().tactical_moves_default_sorting_value;
    Score gain;
    if (IsPoorPromotion(move)) {
        gain = piece_value[PromotionPiece(move)] - piece_value[queen];
    } else {
        const Worth worth = ExchangeWorth(node, move);
        gain = PromotionGain(move) + worth.gain;
        points +=
            node.settings().capture_move_sorting_bonus[static_cast<std::size_t>(CapturedPiece(move))] + worth.points;
    }
    return std::clamp(points + Converted(node.settings(), gain), node.settings().tactical_moves_minimum_sorting_value,
                      max_sort_score);
}

std::int32_t QuiescenceScore(const Node& node, Move move) noexcept {
    Score gain = 0;
    if (CapturedPiece(move) != no_piece) gain = piece_value[CapturedPiece(move)] - piece_value[MovingPiece(move)] / 8;
    if (PromotionPiece(move) != no_piece) gain += piece_value[PromotionPiece(move)] - piece_value[pawn];
    std::int32_t score = CheckBonus(node, move) + node.settings().tactical_moves_minimum_sorting_value +
                         Converted(node.settings(), gain) +
                         static_cast<std::int32_t>(node.search.noise.Below(quiescence_noise));
    if (node.beta - node.material_balance() <= gain) {
        score += node.settings().wins_enough_material_to_reach_at_least_beta__quiescence;
    }
    const KillerPair& killers = node.search.killers[node.ply];
    if (move == killers.first) score += node.settings().killer1_bonus__quiescence;
    if (move == killers.second) score += node.settings().killer2_bonus__quiescence;
    return std::min(score, max_sort_score);
}
