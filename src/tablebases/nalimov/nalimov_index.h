#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "chess/bits.h"
#include "tablebases/nalimov/table_name.h"

namespace NalimovTablebases {

/// Where the men of a material stand. The pawns of the first side move up the board.
struct Placement {
    std::array<Square, 2> kings{};
    /// In the order of the letters of the material; like men in any order.
    std::array<std::array<Square, most_men_of_a_side>, 2> men{};
};

/// The number of a position in its table. Positions with an en passant capture have none here: they lie after all
/// others in the files.
class NalimovIndex {
  public:
    NalimovIndex(const Material& material, Side mover);

    /// Every number is below that.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }
    /// Nothing for what is no legal position: two men on one square, a king that could be taken, a pawn on the last
    /// rank. Some of the illegal ones do have a number.
    [[nodiscard]] std::optional<std::uint64_t> Of(Placement position) const noexcept;

    /// Numbers of pairs of kings: without pawns on the board, and with pawns.
    static constexpr std::size_t pairs_without_pawns = 462;
    static constexpr std::size_t pairs_with_pawns = 1806;

  private:
    /// Like men of a side.
    struct Group {
        Side owner;
        std::size_t begin;  ///< of the squares in Placement::men[owner]
        std::size_t count;
        PieceType kind;
        unsigned left_out = 0;    ///< groups whose squares it does not count, as bits
        std::uint64_t radix = 1;  ///< what its digit is below
    };

    void EnumerateGroups(bool has_pawns);
    void OrderLowDigits(bool has_pawns);
    void ComputeBases();
    void Normalise(Placement& position) const noexcept;
    [[nodiscard]] Bitboard SquaresOf(PieceType kind, Square mover_king, Square other_king) const noexcept;
    [[nodiscard]] Square Seen(Square square) const noexcept { return is_mirrored_ ? MirrorVertically(square) : square; }

    Side mover_;
    bool has_pawns_;
    bool is_mirrored_ = false;     ///< the enumerated men are pawns of the second side, or meet a bare one
    bool checks_are_out_ = true;   ///< an enumerated man stands nowhere where it gives a check that can't be parried
    std::vector<Group> groups_;    ///< first side, then second
    std::vector<unsigned> high_;   ///< enumerated groups, the highest digit first
    std::vector<unsigned> low_;    ///< the others, likewise
    std::uint64_t low_radix_ = 1;  ///< product of the low ones
    std::vector<std::uint64_t> bases_;  ///< by number of the pair of kings: positions of the pairs before
    std::uint64_t size_ = 0;
};

}  // namespace NalimovTablebases
