#include "tablebases/mate_table_index.h"

#include <algorithm>
#include <array>
#include <utility>

#include "chess/bitboard_tables.h"
#include "tablebases/combinations.h"

namespace VorkaTablebases {

namespace {

/// The ways to turn the board; a number is a sum of these. The flip along the diagonal comes last.
constexpr std::size_t mirror_files = 1;
constexpr std::size_t mirror_ranks = 2;
constexpr std::size_t flip_diagonal = 4;
constexpr std::size_t turns = 8;

struct Turns {
    std::uint8_t square[turns][64];
};

Turns BuildTurns() {
    Turns all;
    for (std::size_t turn = 0; turn < turns; ++turn) {
        for (Square s = 0; s < 64; ++s) {
            int to = s;
            if ((turn & mirror_files) != 0) to ^= 7;
            if ((turn & mirror_ranks) != 0) to ^= 56;
            if ((turn & flip_diagonal) != 0) to = (to & 7) << 3 | to >> 3;
            all.square[turn][s] = static_cast<std::uint8_t>(to);
        }
    }
    return all;
}

/// The pairs of squares of the two kings, and how a board is turned to have one of them.
struct KingPairs {
    std::uint16_t number[64][64];  ///< by white and black king
    std::uint8_t turn[64][64];
    std::vector<std::pair<Square, Square>> squares;
};

bool IsOnDiagonal(Square s) { return FileOf(s) == RankOf(s); }

/// Whether a pair is one of those that are numbered, as all others can be turned into one.
bool IsNumbered(Square white_king, Square black_king, bool with_pawns) {
    if (FileOf(white_king) > 3) return false;
    if (with_pawns) return true;
    if (RankOf(white_king) > FileOf(white_king)) return false;
    return !IsOnDiagonal(white_king) || RankOf(black_king) <= FileOf(black_king);
}

KingPairs BuildKingPairs(const Turns& all_turns, bool with_pawns) {
    KingPairs pairs{};
    const std::size_t last_turn = with_pawns ? mirror_files : turns - 1;
    for (Square w = 0; w < 64; ++w) {
        for (Square b = 0; b < 64; ++b) {
            if (w == b || std::max(std::abs(FileOf(w) - FileOf(b)), std::abs(RankOf(w) - RankOf(b))) == 1) continue;
            if (!IsNumbered(w, b, with_pawns)) continue;
            pairs.number[w][b] = static_cast<std::uint16_t>(pairs.squares.size());
            pairs.squares.emplace_back(w, b);
        }
    }
    for (Square w = 0; w < 64; ++w) {
        for (Square b = 0; b < 64; ++b) {
            for (std::size_t turn = 0; turn <= last_turn; ++turn) {
                const Square turned_w = all_turns.square[turn][w];
                const Square turned_b = all_turns.square[turn][b];
                if (!IsNumbered(turned_w, turned_b, with_pawns)) continue;
                pairs.number[w][b] = pairs.number[turned_w][turned_b];
                pairs.turn[w][b] = static_cast<std::uint8_t>(turn);
                break;
            }
        }
    }
    return pairs;
}

const Turns all_turns = BuildTurns();
const KingPairs pairs_with_pawns = BuildKingPairs(all_turns, true);
const KingPairs pairs_without_pawns = BuildKingPairs(all_turns, false);

const KingPairs& PairsOf(bool with_pawns) { return with_pawns ? pairs_with_pawns : pairs_without_pawns; }

/// The largest n with Choose(n, count) <= number: the highest thing of a set.
std::uint64_t HighestOf(std::uint64_t number, std::size_t count) {
    std::uint64_t n = count - 1;
    while (Choose(n + 1, count) <= number) ++n;
    return n;
}

}  // namespace

MateTableIndex::MateTableIndex(const Material& material)
    : material_(material),
      key_(material.key()),
      is_symmetric_(material.is_symmetric()),
      has_pawns_(material.has_pawns()) {
    std::size_t place = 2;
    size_of_side_ = PairsOf(has_pawns_).squares.size();
    for (const Colour side : {white, black}) {
        const std::vector<int>& types = material.of(side);
        for (std::size_t i = 0; i < types.size();) {
            const auto count = static_cast<std::size_t>(std::ranges::count(types, types[i]));
            const bool of_pawns = types[i] == pawn;
            const std::uint64_t numbers = Choose(of_pawns ? 48 : 64, count);
            groups_.push_back({.first = place, .count = count, .of_pawns = of_pawns, .numbers = numbers});
            size_of_side_ *= numbers;
            place += count;
            i += count;
        }
    }
    const auto of_white = static_cast<int>(material.of(white).size());
    for (int i = 0; i < static_cast<int>(most_men); ++i) {
        partner_[static_cast<std::size_t>(i)] = i < 2 ? 1 - i : i < 2 + of_white ? i + of_white : i - of_white;
    }
}

std::uint64_t MateTableIndex::NumberOf(const Squares& squares, const std::uint8_t (&turned)[64],
                                       std::uint64_t kings) const noexcept {
    std::uint64_t index = kings;
    for (const Group& group : groups_) {
        const int shift = group.of_pawns ? 8 : 0;
        ThingsOfSet things{};
        for (std::size_t i = 0; i < group.count; ++i) {
            things[i] = static_cast<std::uint64_t>(turned[squares[group.first + i]] - shift);
        }
        index = index * group.numbers + NumberOfSet(things, group.count);
    }
    return index;
}

MateTableIndex::Indices MateTableIndex::IndicesOf(const Squares& squares, Colour to_move) const noexcept {
    Squares seen = squares;
    if (is_symmetric_ && to_move == black) {
        for (std::size_t i = 0; i < material_.men(); ++i) {
            seen[i] = MirrorVertically(squares[static_cast<std::size_t>(partner_[i])]);
        }
        to_move = white;
    }
    const KingPairs& pairs = PairsOf(has_pawns_);
    const std::uint64_t kings = pairs.number[seen[0]][seen[1]];
    const std::size_t turn = pairs.turn[seen[0]][seen[1]];
    const std::uint64_t base = to_move == white ? 0 : size_of_side_;
    const std::uint64_t index = base + NumberOf(seen, all_turns.square[turn], kings);
    if (has_pawns_ || !IsOnDiagonal(all_turns.square[turn][seen[0]]) ||
        !IsOnDiagonal(all_turns.square[turn][seen[1]])) {
        return {index, index};
    }
    return {index, base + NumberOf(seen, all_turns.square[turn ^ flip_diagonal], kings)};
}

bool MateTableIndex::IsSecond(std::uint64_t index) const noexcept {
    if (has_pawns_) return false;
    const auto& pairs = PairsOf(has_pawns_).squares;
    const auto [w, b] = pairs[static_cast<std::size_t>(index % size_of_side_ / (size_of_side_ / pairs.size()))];
    if (!IsOnDiagonal(w) || !IsOnDiagonal(b)) return false;
    Squares squares{};
    Colour to_move{};
    PositionOf(index, squares, to_move);
    return IndicesOf(squares, to_move).second < index;
}

void MateTableIndex::PositionOf(std::uint64_t index, Squares& squares, Colour& to_move) const noexcept {
    to_move = index < size_of_side_ ? white : black;
    if (to_move == black) index -= size_of_side_;
    for (auto group = groups_.rbegin(); group != groups_.rend(); ++group) {
        std::uint64_t number = index % group->numbers;
        index /= group->numbers;
        const int shift = group->of_pawns ? 8 : 0;
        for (std::size_t i = group->count; i > 0; --i) {
            const std::uint64_t highest = i == 1 ? number : HighestOf(number, i);
            if (i > 1) number -= Choose(highest, i);
            squares[group->first + i - 1] = static_cast<Square>(highest) + shift;
        }
    }
    const auto [w, b] = PairsOf(has_pawns_).squares[static_cast<std::size_t>(index)];
    squares[0] = w;
    squares[1] = b;
}

}  // namespace VorkaTablebases
