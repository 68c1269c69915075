// The index of a position is one number in a mixed radix. Its highest part is the pair of kings, normalised by mirrors;
// then come the men that are enumerated: those of the side to move, each by its place among the squares where it gives
// no check that can't be parried (the other side would be in check without the move). The number of such squares is
// another for each pair of kings, so the positions before a pair are summed up beforehand, in `bases_`. Then follow the
// men of the other side, each by its square less the occupied ones below it. Like men are a combination.
//
// An example: KQK with the queen's side to move, white king a1, black king c1, queen h8. The pair a1-c1 is the first of
// all, 0. The queen may stand on any square but a1, c1 and the five around c1: b1, d1, b2, c2, d2. On h8 there are 56
// such squares below it, so the index is 56.
//
// A bare king to move has no men to enumerate: pawns of the other side are taken instead, and no check is left out.
// Where pawns of the second side are enumerated, or met by its bare king, the board is seen from that side.

#include "tablebases/nalimov/nalimov_index.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "chess/bitboard_tables.h"
#include "tablebases/combinations.h"

namespace NalimovTablebases {

using VorkaTablebases::Choose;
using VorkaTablebases::NumberOfSet;

namespace {

constexpr Bitboard squares_of_pawns = 0x00FFFFFFFFFFFF00;

constexpr Square SwapDiagonally(Square s) { return FileOf(s) * 8 + RankOf(s); }

bool AreNeighbours(Square one, Square other) {
    return std::abs(FileOf(one) - FileOf(other)) <= 1 && std::abs(RankOf(one) - RankOf(other)) <= 1;
}

using PairNumbers = std::array<std::array<std::int16_t, 64>, 64>;
constexpr std::int16_t no_pair = -1;

bool IsNormalPair(Square mover, Square other, bool with_pawns) {
    if (AreNeighbours(mover, other) || FileOf(mover) > 3) return false;
    if (with_pawns) return true;
    if (RankOf(mover) != FileOf(mover)) return RankOf(mover) < FileOf(mover);
    return RankOf(other) <= FileOf(other);
}

PairNumbers NumberPairs(bool with_pawns) {
    PairNumbers numbers;
    std::int16_t next = 0;
    for (Square mover = a1; mover <= h8; ++mover) {
        for (Square other = a1; other <= h8; ++other) {
            const bool is_normal = IsNormalPair(mover, other, with_pawns);
            numbers[static_cast<std::size_t>(mover)][static_cast<std::size_t>(other)] = is_normal ? next++ : no_pair;
        }
    }
    return numbers;
}

/// Numbers of pairs by the square of the king whose side has the move, and by the other's.
const PairNumbers& NumbersOfPairs(bool with_pawns) {
    static const std::array numbers{NumberPairs(false), NumberPairs(true)};
    return numbers[with_pawns ? 1 : 0];
}

std::int16_t NumberOfPair(bool with_pawns, Square mover, Square other) {
    return NumbersOfPairs(with_pawns)[static_cast<std::size_t>(mover)][static_cast<std::size_t>(other)];
}

std::uint64_t CountBelow(Bitboard set, Square square) {
    return static_cast<std::uint64_t>(PopCount(set & (Bit(square) - 1)));
}

}  // namespace

NalimovIndex::NalimovIndex(const Material& material, Side mover) : mover_(mover), has_pawns_(material.has_pawns()) {
    for (const Side owner : {first_side, second_side}) {
        const std::vector<int>& men = MenOf(material, owner);
        for (std::size_t begin = 0; begin < men.size();) {
            const auto count = static_cast<std::size_t>(std::count(men.begin(), men.end(), men[begin]));
            groups_.push_back({owner, begin, count, static_cast<PieceType>(men[begin])});
            begin += count;
        }
    }
    EnumerateGroups(has_pawns_);
    OrderLowDigits(has_pawns_);
    ComputeBases();
}

/// Chooses the enumerated groups.
void NalimovIndex::EnumerateGroups(bool has_pawns) {
    const auto is_of_mover = [&](const Group& group) { return group.owner == mover_; };
    const bool is_bare = std::none_of(groups_.begin(), groups_.end(), is_of_mover);
    for (unsigned i = 0; i < groups_.size(); ++i) {
        if (is_bare ? groups_[i].kind == pawn : is_of_mover(groups_[i])) high_.push_back(i);
    }
    checks_are_out_ = !is_bare;
    is_mirrored_ = has_pawns && mover_ == second_side && !high_.empty() && groups_[high_.front()].kind == pawn;
    // A pair is the highest digit, wherever it stands in the name.
    std::stable_partition(high_.begin(), high_.end(), [&](unsigned i) { return groups_[i].count > 1; });
}

/// The low digits come in the order of the name. Which men a digit leaves out follows another order: pawns are placed
/// first, and in a triple without pawns the single piece before the pair.
void NalimovIndex::OrderLowDigits(bool has_pawns) {
    const auto is_enumerated = [&](unsigned i) { return std::find(high_.begin(), high_.end(), i) != high_.end(); };
    std::vector<unsigned> placed = high_;
    for (unsigned i = 0; i < groups_.size(); ++i) {
        if (!is_enumerated(i)) low_.push_back(i);
    }
    std::vector<unsigned> order = low_;
    std::stable_partition(order.begin(), order.end(), [&](unsigned i) { return groups_[i].kind == pawn; });
    const bool is_bare_without_pawns = high_.empty() && !has_pawns;
    if (is_bare_without_pawns) {
        std::stable_partition(order.begin(), order.end(), [&](unsigned i) { return groups_[i].count == 1; });
    }
    for (const unsigned i : order) {
        Group& group = groups_[i];
        std::uint64_t taken = 0;
        for (const unsigned before : placed) {
            if (group.kind == pawn && groups_[before].kind != pawn) continue;
            group.left_out |= 1U << before;
            taken += groups_[before].count;
        }
        group.radix = Choose((group.kind == pawn ? 48 : 62) - taken, group.count);
        low_radix_ *= group.radix;
        placed.push_back(i);
    }
}

/// Where an enumerated man may stand, as the side sees it that it is enumerated for.
Bitboard NalimovIndex::SquaresOf(PieceType kind, Square mover_king, Square other_king) const noexcept {
    const BITBOARD_TABLES& t = bitboard_tables;
    const Bitboard squares = (kind == pawn ? squares_of_pawns : ~Bitboard{0}) & ~Bit(mover_king) & ~Bit(other_king);
    if (!checks_are_out_) return squares;
    const Bitboard around = t.king_attacks[other_king];
    switch (kind) {
        case queen:
            return squares & ~around;
        case rook:
            return squares & ~(around & t.rook_mask[other_king]);
        case bishop:
            return squares & ~(around & t.bishop_mask[other_king]);
        case knight:
            return squares & ~t.knight_attacks[other_king];
        default:
            return squares & ~t.black_pawn_attacks[other_king];
    }
}

void NalimovIndex::ComputeBases() {
    bases_.assign(has_pawns_ ? pairs_with_pawns : pairs_without_pawns, 0);
    std::uint64_t sum = 0;
    for (Square mover = a1; mover <= h8; ++mover) {
        for (Square other = a1; other <= h8; ++other) {
            const std::int16_t pair = NumberOfPair(has_pawns_, mover, other);
            if (pair == no_pair) continue;
            bases_[static_cast<std::size_t>(pair)] = sum;
            std::uint64_t product = 1;
            for (const unsigned i : high_) {
                const auto places = static_cast<std::uint64_t>(PopCount(SquaresOf(groups_[i].kind, mover, other)));
                product *= Choose(places, groups_[i].count);
            }
            sum += product;
        }
    }
    size_ = sum * low_radix_;
}

/// Brings the king whose side has the move to the files a to d; without pawns, into the triangle a1-d1-d4, with the
/// other king not above the diagonal if this one is on it.
void NalimovIndex::Normalise(Placement& position) const noexcept {
    const auto turn = [&](auto&& turned) {
        for (Square& king : position.kings) king = turned(king);
        for (auto& side : position.men) {
            for (Square& man : side) man = turned(man);
        }
    };
    const Square& mover = position.kings[mover_];
    const Square& other = position.kings[Other(mover_)];
    if (FileOf(mover) > 3) turn(MirrorHorizontally);
    if (has_pawns_) return;
    if (RankOf(mover) > 3) turn(MirrorVertically);
    const int above = RankOf(mover) - FileOf(mover);
    if (above > 0 || (above == 0 && RankOf(other) > FileOf(other))) turn(SwapDiagonally);
}

std::optional<std::uint64_t> NalimovIndex::Of(Placement position) const noexcept {
    Normalise(position);
    const Square mover = position.kings[mover_];
    const Square other = position.kings[Other(mover_)];
    const std::int16_t pair = NumberOfPair(has_pawns_, Seen(mover), Seen(other));
    if (pair == no_pair) return std::nullopt;

    VorkaTablebases::ThingsOfSet places{};
    std::uint64_t number = 0;
    Bitboard occupied = Bit(mover) | Bit(other);
    std::array<Bitboard, most_men> squares_of_groups{};
    for (unsigned i = 0; i < groups_.size(); ++i) {
        const Group& group = groups_[i];
        for (std::size_t man = 0; man < group.count; ++man) {
            const Square square = position.men[group.owner][group.begin + man];
            if (Has(occupied, square)) return std::nullopt;
            if (group.kind == pawn && !Has(squares_of_pawns, square)) return std::nullopt;
            occupied |= Bit(square);
            squares_of_groups[i] |= Bit(square);
        }
    }
    for (const unsigned i : high_) {
        const Group& group = groups_[i];
        const Bitboard squares = SquaresOf(group.kind, Seen(mover), Seen(other));
        for (std::size_t man = 0; man < group.count; ++man) {
            const Square square = Seen(position.men[group.owner][group.begin + man]);
            if (!Has(squares, square)) return std::nullopt;
            places[man] = CountBelow(squares, square);
        }
        number = number * Choose(static_cast<std::uint64_t>(PopCount(squares)), group.count) +
                 NumberOfSet(places, group.count);
    }
    number += bases_[static_cast<std::size_t>(pair)];
    for (const unsigned i : low_) {
        const Group& group = groups_[i];
        Bitboard left_out = group.kind == pawn ? 0 : Bit(mover) | Bit(other);
        for (unsigned before = 0; before < groups_.size(); ++before) {
            if ((group.left_out >> before & 1U) != 0) left_out |= squares_of_groups[before];
        }
        for (std::size_t man = 0; man < group.count; ++man) {
            const Square square = position.men[group.owner][group.begin + man];
            const auto first = static_cast<std::uint64_t>(group.kind == pawn ? a2 : a1);
            places[man] = static_cast<std::uint64_t>(square) - first - CountBelow(left_out, square);
        }
        number = number * group.radix + NumberOfSet(places, group.count);
    }
    return number;
}

}  // namespace NalimovTablebases
