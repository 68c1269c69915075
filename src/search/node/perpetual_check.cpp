// A run counts the checks that a queen gives one after the other to the same king. The record of each ply in check
// holds what the run has come to; its first record is made two plies after the first check. Two checks are enough if
// the chased side wins nothing meanwhile; the more it wins, or the further its king gets away, the more are needed.

#include "search/node/perpetual_check.h"

#include "chess/bitboard_tables.h"

namespace {

using enum ChildFlags;

constexpr ChildFlags children_of_a_threat = NextPly(no_limited_razoring | no_extended_futility);
static_assert(Word(children_of_a_threat) == 0x300);

bool IsQueenCheck(Move move) { return MovingPiece(move) == queen && GivesCheck(move); }

bool GoesOn(const Node& node) {
    return !HasAny(node.child_flags, no_perpetual_test) && node.ply >= 2 && IsQueenCheck(node.last_move()) &&
           IsQueenCheck(node.search.moves_played[node.ply - 2]);
}

/// Checks that are needed for what the chased side has won since the first record, in centipawns.
int ChecksForGain(int gain) {
    if (gain < 315) return 2;
    return gain < 500 ? 3 : 4;
}

/// Further checks that are needed because the king has got away, or stands behind its own pieces now.
int ChecksForKing(const CheckRunRecord& first, const CheckRunRecord& now) {
    const int moved = bitboard_tables.distance[first.king_square][now.king_square];
    if (moved > 3) return 2;
    if (moved >= 2) return 1;
    const int shelter = PopCount(now.own_ring);
    return shelter >= 2 && (first.own_ring == 0 || shelter > PopCount(first.own_ring) + 1) ? 1 : 0;
}

bool IsThreat(const CheckRunRecord& first, const CheckRunRecord& now) {
    if (now.length < 2) return false;
    return now.length >= ChecksForGain(now.material_balance - first.material_balance) + ChecksForKing(first, now);
}

}  // namespace

void PerpetualCheckTest(Node& node) {
    CheckRunRecord* const runs = node.search.check_runs;
    CheckRunRecord& now = runs[node.ply];
    now.threat = 0;
    if (!GoesOn(node)) {
        now.length = 0;
        return;
    }
    const SIDE_PIECES& own = node.board().own();
    now.king_square = static_cast<std::int16_t>(own.king_square);
    now.own_ring = bitboard_tables.king_attacks[own.king_square] & own.all;
    now.material_balance = static_cast<std::int16_t>(node.material_balance());
    now.length = static_cast<std::int16_t>(runs[node.ply - 2].length + 1);
    const auto first_ply = static_cast<std::int32_t>(node.ply) + 2 - 2 * now.length;
    if (!IsThreat(runs[first_ply], now)) return;
    now.threat = 1;
    node.flags |= NodeFlags::perpetual_threat;
    node.child_flags |= children_of_a_threat;
}
