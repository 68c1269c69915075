#include "search/node/pruning.h"

#include <cstdint>

#include "evaluation/context/position_type.h"

namespace {

bool IsSimpleEnding(int position_class) { return position_class >= rook_ending && position_class <= pawnless; }

bool FutilityIsEnabled(const Node& node) {
    const bool is_enabled = node.is_principal() ? node.settings().enable_futility_pruning_if_searching_pv_move
                                                : node.settings().enable_futility_pruning_if_not_searching_pv_move;
    return is_enabled &&
           (!node.settings().skip_futility_pruning_if_searching_for_mate || !node.is_searching_for_mate());
}

/// With material so far below beta, moves that gain little are futile.
void SetFutility(Node& node, Score margin) {
    const Score base = node.material_balance() + margin;
    if (base >= node.beta) return;
    node.is_futile = true;
    node.futility_base = base;
}

bool MayBeRazored(const Node& node) {
    const bool is_enabled = node.is_principal() ? node.settings().enable_limited_razoring_if_searching_pv_move
                                                : node.settings().enable_limited_razoring_if_not_searching_pv_move;
    const SIDE_PIECES& enemy = node.board().enemy();
    return is_enabled && node.distance >= node.settings().min_distance_for_limited_razoring &&
           node.distance <= node.settings().max_distance_for_limited_razoring &&
           !HasAny(node.child_flags, ChildFlags::no_limited_razoring) &&
           !(node.settings().skip_limited_razoring_if_searching_for_mate && node.is_searching_for_mate()) &&
           enemy.minor_points / 3 + enemy.heavy_points >=
               node.settings().minimum_enemy_pieces_left_for_limited_razoring &&
           node.material_balance() + node.settings().limited_razoring_margin < node.beta;
}

/// A side this far behind is searched less deep.
void LimitedRazoring(Node& node) {
    if (!MayBeRazored(node)) return;
    const Distance reduced = node.settings().limited_razoring_reduction_independent_of_current_distance
                                 ? node.settings().limited_razoring_static_reduced_distance
                                 : node.distance - node.settings().limited_razoring_dynamic_reduction_factor;
    node.razored = node.distance - reduced;
    node.distance = reduced;
}

void ExtendedFutility(Node& node) {
    const bool is_enabled = node.is_principal()
                                ? node.settings().enable_extended_futility_pruning_if_searching_pv_move
                                : node.settings().enable_extended_futility_pruning_if_not_searching_pv_move;
    if (!is_enabled || node.distance < node.settings().min_distance_for_extended_futility_pruning ||
        node.distance > node.settings().max_distance_for_extended_futility_pruning ||
        HasAny(node.child_flags, ChildFlags::no_extended_futility) ||
        (node.settings().skip_extended_futility_pruning_if_searching_for_mate && node.is_searching_for_mate())) {
        return;
    }
    SetFutility(node, node.settings().extended_futility_pruning_margin);
}

bool IsReduced(const Node& node, Move move) {
    constexpr Distance least_distance = 3 * ONE_PLY;
    constexpr int moves_at_full_distance = 3;
    return !(node.settings().skip_late_move_reduction_if_extended && node.extended != ExtensionCauses::none) &&
           node.settings().enable_late_move_reduction && node.distance >= least_distance && !GivesCheck(move) &&
           node.moves_tried > moves_at_full_distance && !HasAny(node.child_flags, ChildFlags::no_late_move_reduction) &&
           !node.has_threats() &&
           !(node.settings().skip_late_move_reduction_if_in_principal_variation && node.is_principal()) &&
           !node.in_check;
}

/// Where a capture or a promotion failed to cut, quiet moves far down the list will hardly do it.
bool IsReducedMore(const Node& node, Move move) {
    constexpr Distance least_distance = 5 * ONE_PLY;
    constexpr int moves_reduced_less = 7;
    return node.settings().enable_extended_late_move_reduction && node.distance >= least_distance &&
           (node.hash_move & tactical_bits) != 0 && node.moves_tried > moves_reduced_less &&
           (move & capture_or_promotion_bits) == 0;
}

}  // namespace

void SelectiveGates(Node& node) {
    if (node.distance < 1) {
        if (FutilityIsEnabled(node)) SetFutility(node, node.settings().futility_pruning_margin);
        return;
    }
    if (node.settings().disable_selective_techniques_if_threats_exist && node.has_threats()) return;
    // The parent's class counts here, not the node's own: docs/oddities.md, parent's class.
    if (node.settings().disable_selective_techniques_if_searching_simple_endgames &&
        IsSimpleEnding(node.parent_class)) {
        return;
    }
    LimitedRazoring(node);
    ExtendedFutility(node);
    // Its base replaces the one of extended futility.
    if (FutilityIsEnabled(node) && node.distance <= node.settings().max_distance_for_futility_pruning) {
        SetFutility(node, node.settings().futility_pruning_margin);
    }
}

bool IsFutile(const Node& node, Move move) {
    if (!node.is_futile || GivesCheck(move)) return false;
    Score gain = piece_value[CapturedPiece(move)];
    if (PromotionPiece(move) != no_piece) gain += piece_value[PromotionPiece(move)] - piece_value[pawn];
    return gain + node.futility_base < node.beta;
}

Distance LateMoveReduction(const Node& node, Move move) {
    if (!IsReduced(node, move)) return 0;
    return IsReducedMore(node, move) ? node.settings().extended_late_move_reduction
                                     : node.settings().standard_late_move_reduction;
}
