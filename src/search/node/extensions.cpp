#include "search/node/extensions.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "chess/attacks.h"
#include "chess/bitboard_tables.h"
#include "evaluation/context/position_type.h"

namespace {

using enum ExtensionCauses;

/// Bound of the caps, and no cap at all.
constexpr Distance no_cap = 64000;

Distance Capped(Distance sum, Distance cap) { return cap == no_cap ? sum : std::min(sum, cap); }

// --- Which column ---

/// Below this the position earns nothing. The names of the settings speak of a depth; what is compared is the distance:
/// docs/oddities.md, least distance.
Distance LeastDistance(const Node& node) {
    return node.is_principal() ? node.settings().min_depth_for_search_extensions_if_searching_pv_move
                               : node.settings().min_depth_for_search_extensions_if_not_searching_pv_move;
}

/// Near the root all extensions are given in full.
bool TakesFullColumn(const Node& node) {
    const bool never_in_quiescence = node.is_principal()
                                         ? node.settings().never_full_extension_in_quiescence_if_searching_pv_move
                                         : node.settings().never_full_extension_in_quiescence_if_not_searching_pv_move;
    if (never_in_quiescence && node.distance <= 0) return false;
    const std::int32_t last_full_ply = node.search.iteration_depth *
                                           node.settings().full_extension_root_depth_related_factor_multiplicator /
                                           node.settings().full_extension_root_depth_related_factor_divisor +
                                       node.settings().full_extension_minimum_depth;
    return static_cast<std::int32_t>(node.ply) <= last_full_ply;
}

Distance Amount(const Node& node, Distance full, Distance limited) { return node.full_extensions ? full : limited; }

// --- Delayed extensions, of the position ---

Distance MateThreat(Node& node) {
    if (!HasAny(node.flags, NodeFlags::mate_threat)) return 0;
    node.extended |= mate_threat;
    return Amount(node, node.settings().full_mate_threat_extension_bonus,
                  node.settings().limited_mate_threat_extension_bonus);
}

Distance PerpetualThreat(Node& node) {
    if (!HasAny(node.flags, NodeFlags::perpetual_threat)) return 0;
    node.extended |= perpetual_threat;
    return Amount(node, node.settings().full_perpetual_check_threat_extension_bonus,
                  node.settings().limited_perpetual_check_threat_extension_bonus);
}

Distance PinThreat(Node& node) {
    if (!HasAny(node.flags, NodeFlags::pin_threat)) return 0;
    node.extended |= pin_threat;
    if (!node.settings().always_assume_that_pin_threat_was_hashed) {
        if (node.pin_result == PinResult::new_pin) {
            return Amount(node, node.settings().full_pin_threat_extension_bonus__new_pin,
                          node.settings().limited_pin_threat_extension_bonus__new_pin);
        }
        if (node.pin_result == PinResult::tightened) {
            return Amount(node, node.settings().full_pin_threat_extension_bonus__tightend_pin,
                          node.settings().limited_pin_threat_extension_bonus__tightend_pin);
        }
    }
    return Amount(node, node.settings().full_pin_threat_extension_bonus__hashed_pin,
                  node.settings().limited_pin_threat_extension_bonus__hashed_pin);
}

/// Tests the queens only if nobody has yet.
Distance AttackedQueen(Node& node) {
    if (!HasAny(node.flags, NodeFlags::queen_attacked | NodeFlags::queen_not_attacked)) {
        node.flags |= QueenAttacked(node.board()) ? NodeFlags::queen_attacked : NodeFlags::queen_not_attacked;
    }
    if (!HasAny(node.flags, NodeFlags::queen_attacked)) return 0;
    node.extended |= queen_attacked;
    return Amount(node, node.settings().full_queen_attacked_extension_bonus,
                  node.settings().limited_queen_attacked_extension_bonus);
}

// By position type, in 1/64 ply: while a line stays in a type, and when it enters one.
// clang-format off
constexpr std::array<std::int16_t, 18> stay{
      0,   0,                         // opening, middle game
      0,   0,    4,                   // balanced, rooks, queens
      5,   5,    5,   0,   0,         // minor pieces, rook against minor
    -10,   5,    5,   0,  -8,         // queen against rook, lone pieces
     10, -21,    0,                   // pawns, pawnless, unbalanced
};
constexpr std::array<std::int16_t, 18> enter{
      0,    0,
     32,   16,  128,
     64,   64,   32,  32,  -32,
   -192,  128,  128,   0, -128,
    256, -384,   32,
};
// clang-format on

/// Grows far from the horizon, and counts half off the principal variation.
Distance EnteringTerm(const Node& node) {
    Distance term = enter[static_cast<std::size_t>(node.position_class)];
    if (term <= 0) return term;
    constexpr Distance far_if_principal = 6 * ONE_PLY;
    constexpr Distance far = 8 * ONE_PLY;
    if (node.distance > (node.is_principal() ? far_if_principal : far)) term += term >> 1;
    return node.is_principal() ? term : term >> 1;
}

/// Whether the line was in the node's class before. From here on it is.
bool StaysInClass(Node& node) {
    std::int32_t* const class_of_line = node.search.position_class;
    class_of_line[node.ply] = node.position_class;
    return class_of_line[node.ply - 1] == node.position_class;
}

/// What the material of the position is worth: some endings are worth a longer look, others none. A capture or
/// promotion that leads into an ending earns nothing yet; the first quiet move after it enters.
Distance PositionTypeTerm(Node& node, bool earns_extensions) {
    if (!node.settings().enable_position_type_dependent_search_extensions || (node.last_move() & tactical_bits) != 0) {
        return 0;
    }
    const Distance term = StaysInClass(node) ? stay[static_cast<std::size_t>(node.position_class)] : EnteringTerm(node);
    if (term <= 0) return term;
    if (!earns_extensions) return 0;
    return node.full_extensions ? term : term >> 2;
}

// --- Instant extensions, of a move ---

/// A move has one kind of check.
Distance Check(Node& node, Move move) {
    node.extended = Without(node.extended, simple_check | discovered_check | double_check);
    if (!GivesCheck(move)) return 0;
    switch (CheckType(move)) {
        case CheckKind::direct:
            node.extended |= simple_check;
            return Amount(node, node.settings().full_simple_check_extension_bonus,
                          node.settings().limited_simple_check_extension_bonus);
        case CheckKind::discovered:
            node.extended |= discovered_check;
            return Amount(node, node.settings().full_discovered_check_extension_bonus,
                          node.settings().limited_discovered_check_extension_bonus);
        case CheckKind::both:
            node.extended |= double_check;
            return Amount(node, node.settings().full_double_check_extension_bonus,
                          node.settings().limited_double_check_extension_bonus);
        default:
            return 0;
    }
}

/// A pawn rounds to nothing, so that one taken after a quiet move counts too: docs/oddities.md, recapture.
Distance Recapture(Node& node, Move move) {
    const Move last = node.last_move();
    if (CapturedPiece(move) < node.settings().min_captured_piece_for_recapture_extension ||
        HasAny(node.child_flags, ChildFlags::no_recapture_extension) || node.ply == 0 ||
        material_units[CapturedPiece(move)] != material_units[CapturedPiece(last)] ||
        (node.settings().capture_and_recapture_must_be_on_the_same_sq && ToSquare(move) != ToSquare(last))) {
        return 0;
    }
    node.extended |= recapture;
    return Amount(node, node.settings().full_recapture_extension_bonus,
                  node.settings().limited_recapture_extension_bonus);
}

bool IsEndgame(const Node& node) { return node.position_class > middle_game; }

Distance PawnTo7th(Node& node) {
    node.extended |= passed_pawn_7th;
    return IsEndgame(node) ? Amount(node, node.settings().full_passer_7th_rank_extension_bonus__endgame,
                                    node.settings().limited_passer_7th_rank_extension_bonus__endgame)
                           : Amount(node, node.settings().full_passer_7th_rank_extension_bonus__non_endgame,
                                    node.settings().limited_passer_7th_rank_extension_bonus__non_endgame);
}

template <Colour Us>
Distance PawnTo6th(Node& node, Move move) {
    if (node.settings().passer_must_reach_6th_rank_by_non_capture_move && CapturedPiece(move) != no_piece) return 0;
    const Bitboard front_span = bitboard_tables.pawn_front_span(Us)[ToSquare(move)];
    if ((front_span & node.board().side(Opponent(Us)).pawns) != 0) return 0;
    node.extended |= passed_pawn_6th;
    return IsEndgame(node) ? Amount(node, node.settings().full_passer_6th_rank_extension_bonus__endgame,
                                    node.settings().limited_passer_6th_rank_extension_bonus__endgame)
                           : Amount(node, node.settings().full_passer_6th_rank_extension_bonus__non_endgame,
                                    node.settings().limited_passer_6th_rank_extension_bonus__non_endgame);
}

/// A pawn on its 7th rank needs nothing more; on the 6th it must be passed.
template <Colour Us>
Distance PassedPawn(Node& node, Move move) {
    if (MovingPiece(move) != pawn) return 0;
    switch (RankOf(Seen<Us>(ToSquare(move)))) {
        case 6:
            return PawnTo7th(node);
        case 5:
            return PawnTo6th<Us>(node, move);
        default:
            return 0;
    }
}

/// Not along the rank, and only against a king that is still on its first two ranks.
template <Colour Us>
Distance RookTo7th(Node& node, Move move) {
    constexpr int seventh = 6;
    if (MovingPiece(move) != rook || RankOf(Seen<Us>(ToSquare(move))) != seventh ||
        RankOf(Seen<Us>(FromSquare(move))) == seventh ||
        RankOf(Seen<Us>(node.board().side(Opponent(Us)).king_square)) < seventh) {
        return 0;
    }
    node.extended |= rook_on_7th;
    return Amount(node, node.settings().full_rook_on_7th_rank_extension_bonus,
                  node.settings().limited_rook_on_7th_rank_extension_bonus);
}

Distance SingleReply(Node& node) {
    if (!HasAny(node.flags, NodeFlags::single_reply)) return 0;
    node.extended |= single_reply;
    return Amount(node, node.settings().full_single_move_extension_bonus,
                  node.settings().limited_single_move_extension_bonus);
}

template <Colour Us>
Distance InstantExtensions(Node& node, Move move) {
    Distance sum = Check(node, move);
    sum += Recapture(node, move);
    sum += PassedPawn<Us>(node, move);
    sum += RookTo7th<Us>(node, move);
    sum += SingleReply(node);
    return Capped(sum, Amount(node, node.settings().full_instant_extensions_bonus,
                              node.settings().limited_instant_extensions_bonus));
}

}  // namespace

void DelayedExtensions(Node& node) {
    if (!node.settings().enable_search_extensions) return;
    const bool earns_extensions = node.distance >= LeastDistance(node);
    node.full_extensions = earns_extensions && TakesFullColumn(node);
    Distance sum = 0;
    if (earns_extensions) {
        sum += MateThreat(node);
        sum += PerpetualThreat(node);
        sum += PinThreat(node);
        sum += AttackedQueen(node);
    }
    sum += PositionTypeTerm(node, earns_extensions);
    node.delayed_extension = Capped(sum, Amount(node, node.settings().full_delayed_extensions_bonus,
                                                node.settings().limited_delayed_extensions_bonus));
}

Distance ExtendedDistance(Node& node, Move move) {
    if (!node.settings().enable_search_extensions) return node.distance;
    const Distance instant = node.board().side_to_move == white ? InstantExtensions<white>(node, move)
                                                                : InstantExtensions<black>(node, move);
    const Distance cap =
        Amount(node, node.settings().full_total_extensions_bonus, node.settings().limited_total_extensions_bonus);
    return node.distance + Capped(instant + node.delayed_extension, cap);
}
