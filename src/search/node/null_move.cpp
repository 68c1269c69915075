#include "search/node/null_move.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "evaluation/context/position_type.h"
#include "frame/base/checked_assert.h"
#include "frame/base/theory.h"
#include "frame/base/vocabulary.h"
#include "search/node/search_node.h"
#include "search/tables/hash.h"

namespace {

using enum ChildFlags;

// --- Position types, as sets ---

constexpr std::uint32_t Types(std::initializer_list<int> types) {
    std::uint32_t set = 0;
    for (const int type : types) set |= 1U << type;
    return set;
}
constexpr bool Holds(std::uint32_t set, int type) { return (set >> type & 1U) != 0; }

/// Endings where zugzwang is common, or where the material is too simple to pass.
constexpr std::uint32_t types_without_null_move = Types(
    {rook_ending, knight_against_knight, knight_against_bishop, same_coloured_bishops, opposite_bishops,
     rook_against_minor, queen_against_rook, lone_knight, lone_bishop, lone_rook, lone_queen, pawn_ending, pawnless});
static_assert(types_without_null_move == 0x1FFE8);

/// Endings with too little material for a quick mate.
constexpr std::uint32_t types_without_mate_threat =
    Types({knight_against_knight, knight_against_bishop, same_coloured_bishops, opposite_bishops, lone_knight,
           lone_bishop, pawn_ending});
static_assert(types_without_mate_threat == 0x99E0);

// --- Flags ---

constexpr ChildFlags null_move_child =
    no_null_move | no_recapture_extension | no_perpetual_test | untested | NextPly(no_perpetual_test | untested);
static_assert(Word(null_move_child) == 0xC65);
static_assert(Word(null_move_child | no_ettc) == 0xC67);

constexpr ChildFlags mate_threat_child = no_null_move | no_ettc | no_recapture_extension | no_limited_razoring |
                                         no_extended_futility | no_perpetual_test | untested;
static_assert(Word(mate_threat_child) == 0x7F);

ChildFlags NullMoveFlags(const SearchSettings& settings) {
    ChildFlags flags = null_move_child;
    if (settings.skip_enhanced_transposition_cutoff_if_searching_null_move) flags |= no_ettc;
    if (settings.skip_razoring_if_searching_null_move) flags |= no_limited_razoring;
    if (settings.skip_extended_futility_pruning_if_searching_null_move) flags |= no_extended_futility;
    if (settings.skip_lmr_at_the_next_depth_if_searching_null_move) flags |= no_late_move_reduction;
    if (settings.skip_lmr_at_the_depth_after_the_next_if_searching_null_move) flags |= NextPly(no_late_move_reduction);
    return flags;
}

// --- Gates ---

bool IsWithinPlies(const Node& node) {
    const auto signed_ply = static_cast<std::int32_t>(node.ply);
    return node.settings().min_ply_for_null_move <= signed_ply && signed_ply <= node.settings().max_ply_for_null_move;
}

bool MayPass(const Node& node) {
    return !HasAny(node.child_flags, no_null_move) && !node.has_threats() && !node.is_principal() &&
           node.distance >= node.settings().min_distance_for_null_move && IsWithinPlies(node) && !node.in_check &&
           !Holds(types_without_null_move, node.position_class) &&
           !(node.settings().skip_null_move_if_side_on_move_is_searching_for_mate && node.is_searching_for_mate()) &&
           !(node.settings().skip_null_move_if_enemy_is_searching_for_mate && node.beta <= -mate_score_limit) &&
           node.beta <= node.material_balance() + node.settings().maximum_material_margin_for_null_move;
}

// --- The searches ---

/// One step is all of the reduction: the ply that a move costs is not taken off on top of it (docs/oddities.md, null
/// move step). And the bound is -beta, not 1 - beta as after a move, so that the pass must be worth one point more than
/// beta to cut (docs/oddities.md, null move bound).
bool IsGoodEnoughWithoutAMove(Node& node) {
    const Distance reduction = node.distance < node.settings().null_move_reduction_critical_distance
                                   ? node.settings().min_null_move_search_reduction
                                   : node.settings().max_null_move_search_reduction;
    const Score bound = -node.beta;
    return SearchNode(node.search, node.moves_end, bound, node.distance - reduction, -node.type, node.position_class,
                      NullMoveFlags(node.settings())) != bound;
}

/// Asks, while the null move still stands, whether the opponent mates. The distance and the node type are handed over
/// in each other's place: docs/oddities.md, mate threat test. With the defaults it is a quiescence search of an
/// expected all node.
bool OpponentThreatensMate(Node& node) {
    if (node.distance < node.settings().min_distance_for_mate_threat_test) return false;
    if (Holds(types_without_mate_threat, node.position_class)) return false;
    std::int32_t intended_distance = node.settings().maximum_distance_for_null_move_mate_threat_test;
    if (node.settings().limit_distance_for_null_move_mate_threat_test) {
        intended_distance = std::min(intended_distance, node.distance);
    }
    const Score bound =
        infinity_bound - static_cast<Score>(node.ply) - 2 * node.settings().extend_if_mate_in_x_moves_threat;
    return SearchNode(node.search, node.moves_end, bound, static_cast<Distance>(-node.type),
                      static_cast<NodeType>(intended_distance), node.position_class, mate_threat_child) == bound;
}

}  // namespace

NodeAnswer NullMove(Node& node) {
    if (!MayPass(node)) return go_on;
    if constexpr (theory_is_checked) CHECKED_ASSERT(!node.in_check, vocabulary::no_error_description);
    SearchBoard& search = node.search;
    search.moves_played[node.ply + 1] = INVALID;
    search.board.MakeNullMove();
    search.engine.tables.transposition.Prefetch(search.board.key());
    const bool cuts = IsGoodEnoughWithoutAMove(node);
    if (!cuts && OpponentThreatensMate(node)) node.flags |= NodeFlags::mate_threat;
    search.board.UnmakeNullMove();
    if (cuts) return node.beta;
    return go_on;
}
