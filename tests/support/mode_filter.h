#pragma once

#include "chess/move_generator.h"

/// Whether a legal move, castling to king, belongs to a generation mode. Position not in check; in check every move
/// belongs to every mode. The list of a mode is the list of all legal moves, filtered by this.
///
/// Three rules make it more than "a capture, or a check that is asked for":
/// - Promotions know no captures and checks by discovery: a push that promotes comes as queen with the bit of queen
///   promotions, and otherwise with the bits that ask for its direct check. By capture the queen comes with nearly
///   every bit, but the bit of underpromotions alone brings no capture at all.
/// - A pawn's capture that gives check needs the bit of exactly its kind of check, so that the bit of direct checks
///   brings no double check. A piece's double check comes with any bit.
/// - Castling needs its own bit, or that of direct checks if it checks; the bit of all moves is not enough.
[[nodiscard]] inline bool ModeWants(unsigned mode, Move move) {
    const bool direct = GivesDirectCheck(move), discovered = GivesDiscoveredCheck(move);
    const bool capture = CapturedPiece(move) != no_piece;
    const auto has = [mode](unsigned bits) { return (mode & bits) != 0; };

    if (IsCastling(move)) return has(mode_castling) || (has(mode_direct_checks) && direct);
    if (PromotionPiece(move) != no_piece) {
        if (capture && (mode & ~unsigned{mode_underpromotions | mode_castling}) == 0) return false;
        if (has(mode_underpromotions | mode_all)) return true;
        if (PromotionPiece(move) == queen && (capture || has(mode_queen_promotions))) return true;
        return direct && (has(mode_direct_checks) || (has(mode_double_checks) && discovered));
    }
    if (has(mode_all)) return true;
    if (capture && has(mode_captures)) return true;
    if (MovingPiece(move) == pawn && capture) {
        if (direct && discovered) return has(mode_double_checks);
        return direct ? has(mode_direct_checks) : discovered && has(mode_discovered_checks);
    }
    return (direct && has(mode_direct_checks)) || (discovered && has(mode_discovered_checks)) ||
           (direct && discovered && has(mode_double_checks));
}
