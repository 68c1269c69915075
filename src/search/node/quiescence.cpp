#include "search/node/quiescence.h"

#include "chess/exchange.h"
#include "evaluation/context/position_type.h"
#include "evaluation/evaluate.h"
#include "search/ordering/hopeless_margin.h"

namespace {

/// The limit for generating checks by a queen that may go on for ever. It is no setting.
constexpr Distance perpetual_check_min_distance = -256;
/// Below this distance quiet moves need more, the more the deeper.
constexpr Distance deepening_need_distance = -128;
/// A losing exchange of less than this is taken for an even one, in centipawns.
constexpr int exchange_tolerance = 10;

bool IsQueenCheck(Move move) { return MovingPiece(move) == queen && GivesCheck(move); }

/// The side on move has been giving queen checks without end, and a draw would be enough for it.
bool MayGoOnGivingPerpetualCheck(const Node& node) {
    return node.distance >= perpetual_check_min_distance && node.beta <= node.draw_score() &&
           node.search.check_runs[node.ply - 1].threat != 0 && IsQueenCheck(node.search.moves_played[node.ply - 1]);
}

/// Whether a check is searched whatever it gains.
bool IsCheckWithinReach(const Node& node, Move move) {
    switch (CheckType(move)) {
        case CheckKind::direct:
            return node.distance >= node.settings().search_every_normal_check_in_quiescence_min_distance;
        case CheckKind::discovered:
            return node.distance >= node.settings().search_every_discovered_check_in_quiescence_min_distance;
        case CheckKind::both:
            return node.distance >= node.settings().search_every_double_check_in_quiescence_min_distance;
        case CheckKind::none:
            return false;
    }
    return false;
}

/// What a move has to gain to bring the side on move near beta, in centipawns.
Score NeededGain(const Node& node, Move move) {
    const Score need =
        node.beta - node.material_balance() - hopeless_margin[static_cast<std::size_t>(node.position_class)];
    const bool is_quiet = CapturedPiece(move) == no_piece && !GivesDiscoveredCheck(move);
    return is_quiet && node.distance < deepening_need_distance ? need - node.distance : need;
}

/// Whether the move may bring the side on move near beta. A check may count what it threatens, unless it is a simple
/// check by another piece than a knight.
bool GainsEnough(const Node& node, Move move) {
    const Score need = NeededGain(node, move);
    Score gain = piece_value[CapturedPiece(move)];
    if (need <= gain) return true;
    if (!GivesCheck(move)) return false;
    if (CheckType(move) == CheckKind::direct && MovingPiece(move) != knight) return false;
    gain += AttackGain(move, node.board(), node.settings().score_checking_move_should_neglect_trade_knight_vs_bishop);
    return need <= gain;
}

/// Whether the moved piece is safe enough on its square.
bool IsSoundExchange(const Node& node, Move move) {
    if (material_units[CapturedPiece(move)] >= material_units[MovingPiece(move)]) return true;
    Bitboard touched = 0;
    return ExchangeScore(move, node.board(), touched) >= -exchange_tolerance;
}

}  // namespace

NodeAnswer StandPat(Node& node) {
    // The name of the setting speaks of leaving the simple endings out; with it on they are the ones let in:
    // docs/oddities.md, stand pat in simple endings.
    const bool is_simple_ending = node.position_class >= rook_ending && node.position_class <= pawnless;
    const bool is_near_horizon =
        node.distance <= node.settings().max_distance_for_stand_pat_checks &&
        (!node.settings().no_stand_pat_check_if_full_searching_simple_endgames || is_simple_ending);
    if (node.distance >= 1 && !is_near_horizon) return go_on;
    if (HasAny(node.flags, NodeFlags::mate_threat)) return go_on;
    if (node.settings().skip_stand_pat_because_of_pin_threat && HasAny(node.flags, NodeFlags::pin_threat)) {
        return go_on;
    }
    if (evaluate(node.search.evaluation, node.board(), node.beta, node.position_class) < node.beta) return go_on;
    return node.beta;
}

unsigned QuiescenceMode(const Node& node) {
    constexpr unsigned all_checks = mode_direct_checks | mode_discovered_checks | mode_double_checks;
    static_assert(all_checks == 14);
    unsigned mode = 0;
    if (node.distance >= node.settings().generate_checking_moves_min_distance || MayGoOnGivingPerpetualCheck(node)) {
        mode |= all_checks;
    }
    // A side that looks for a mate generates checks only.
    if (node.beta < mate_score_limit) {
        mode |= mode_captures | mode_queen_promotions;
        if (node.distance >= node.settings().generate_castling_moves_in_quiescence_min_distance) mode |= mode_castling;
    }
    return mode;
}

bool PassesQuiescenceFilter(const Node& node, Move move) {
    if (PromotionPiece(move) != no_piece) {
        return PromotionPiece(move) == queen || (PromotionPiece(move) == knight && GivesDirectCheck(move));
    }
    if (IsCheckWithinReach(node, move)) return true;
    // Above the limit, not at it: docs/oddities.md, mate test in quiescence.
    if (node.beta > mate_score_limit) return false;
    if (!GainsEnough(node, move)) return false;
    if (MovingPiece(move) == king || GivesDiscoveredCheck(move)) return true;
    return IsSoundExchange(node, move);
}
