#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tablebases/nalimov/nalimov_index.h"

/// The index of the published tables, formula by formula as it is described: slow, with lists of squares.
namespace slow_index {

using NalimovTablebases::first_side;
using NalimovTablebases::Material;
using NalimovTablebases::Placement;
using NalimovTablebases::second_side;
using NalimovTablebases::Side;
using Number = std::uint64_t;
using Squares = std::vector<Square>;

/// The men of a side beside its king, as the descriptions name them: "bn".
inline std::string LettersOf(const Material& material, Side side) {
    constexpr std::string_view letters = " pnbrq";
    std::string text;
    for (const int type : MenOf(material, side)) text += letters[static_cast<std::size_t>(type)];
    return text;
}

inline Number C2(Number n) { return n * (n - 1) / 2; }
inline Number C3(Number n) { return n * (n - 1) * (n - 2) / 6; }

/// The square less the listed ones on lower squares.
inline Number Rank(Square square, const Squares& listed) {
    const auto below = std::count_if(listed.begin(), listed.end(), [&](Square other) { return other < square; });
    return static_cast<Number>(square - below);
}

inline Number RankOfPair(Square one, Square other, const Squares& listed) {
    return C2(Rank(std::max(one, other), listed)) + Rank(std::min(one, other), listed);
}

struct Kings {
    Square mover;
    Square other;
};

/// All normal pairs, in order.
inline std::vector<Kings> PairsOfKings(bool with_pawns) {
    std::vector<Kings> pairs;
    for (Square mover = 0; mover < 64; ++mover) {
        for (Square other = 0; other < 64; ++other) {
            const int files = std::abs(mover % 8 - other % 8);
            const int ranks = std::abs(mover / 8 - other / 8);
            if (files <= 1 && ranks <= 1) continue;
            if (mover % 8 > 3) continue;
            if (!with_pawns && mover / 8 > mover % 8) continue;
            if (!with_pawns && mover / 8 == mover % 8 && other / 8 > other % 8) continue;
            pairs.push_back({mover, other});
        }
    }
    return pairs;
}

/// The squares of a man of the side to move, its own king's left out.
inline Squares SquaresOf(char kind, Kings kings, bool with_checks = false) {
    Squares squares;
    const bool is_pawn = kind == 'p';
    for (Square square = is_pawn ? 8 : 0; square < (is_pawn ? 56 : 64); ++square) {
        if (square == kings.mover || square == kings.other) continue;
        const int files = std::abs(square % 8 - kings.other % 8);
        const int up = kings.other / 8 - square / 8;
        const int ranks = std::abs(up);
        const bool on_line = files + ranks == 1;
        const bool on_diagonal = files == 1 && ranks == 1;
        const bool checks = kind == 'q'   ? on_line || on_diagonal
                            : kind == 'r' ? on_line
                            : kind == 'b' ? on_diagonal
                            : kind == 'n' ? files * ranks == 2
                                          : files == 1 && up == 1;
        if (with_checks || !checks) squares.push_back(square);
    }
    return squares;
}

inline Number PlaceIn(const Squares& squares, Square square) {
    const auto found = std::find(squares.begin(), squares.end(), square);
    return static_cast<Number>(found - squares.begin());
}

/// The numbers of the enumerated men, and how many positions there are for each pair of kings.
struct Enumeration {
    std::string men;
    bool with_pawns;
    bool with_checks;

    [[nodiscard]] Number Product(Kings kings) const {
        std::vector<Number> q;
        for (const char man : men) q.push_back(SquaresOf(man, kings, with_checks).size());
        if (men.empty()) return 1;
        if (men.size() == 1) return q[0];
        if (men.size() == 2) return men[0] == men[1] ? C2(q[0]) : q[0] * q[1];
        if (men[0] == men[1] && men[1] == men[2]) return C3(q[0]);
        if (men[0] == men[1]) return C2(q[0]) * q[2];
        if (men[1] == men[2]) return C2(q[1]) * q[0];
        return q[0] * q[1] * q[2];
    }
    [[nodiscard]] Number Total() const {
        Number sum = 0;
        for (const Kings& kings : PairsOfKings(with_pawns)) sum += Product(kings);
        return sum;
    }
    [[nodiscard]] Number Of(Kings kings, const Squares& squares) const {
        Number base = 0;
        for (const Kings& pair : PairsOfKings(with_pawns)) {
            if (pair.mover == kings.mover && pair.other == kings.other) break;
            base += Product(pair);
        }
        std::vector<Number> n;
        std::vector<Number> q;
        for (std::size_t i = 0; i < men.size(); ++i) {
            const Squares allowed = SquaresOf(men[i], kings, with_checks);
            n.push_back(PlaceIn(allowed, squares[i]));
            q.push_back(allowed.size());
        }
        const auto pair = [&](std::size_t i, std::size_t j) { return C2(std::max(n[i], n[j])) + std::min(n[i], n[j]); };
        if (men.empty()) return base;
        if (men.size() == 1) return base + n[0];
        if (men.size() == 2) return base + (men[0] == men[1] ? pair(0, 1) : n[0] * q[1] + n[1]);
        if (men[0] == men[1] && men[1] == men[2]) {
            std::sort(n.begin(), n.end());
            return base + C3(n[2]) + C2(n[1]) + n[0];
        }
        if (men[0] == men[1]) return base + pair(0, 1) * q[2] + n[2];
        if (men[1] == men[2]) return base + pair(1, 2) * q[0] + n[0];
        return base + (n[0] * q[1] + n[1]) * q[2] + n[2];
    }
};

inline Square MirrorRank(Square square) { return square ^ 56; }

/// Turns the board until the king of the side to move stands where the pairs are numbered.
inline void Normalise(Placement& position, Side mover, bool with_pawns) {
    const auto all = [&](auto turn) {
        for (Square& king : position.kings) king = turn(king);
        for (auto& men : position.men) {
            for (Square& man : men) man = turn(man);
        }
    };
    const Square& king = position.kings[mover];
    const Square& other = position.kings[1 - mover];
    if (king % 8 > 3) all([](Square square) { return square ^ 7; });
    if (with_pawns) return;
    if (king / 8 > 3) all(MirrorRank);
    const bool is_above = king / 8 > king % 8;
    if (is_above || (king / 8 == king % 8 && other / 8 > other % 8)) {
        all([](Square square) { return square % 8 * 8 + square / 8; });
    }
}

/// The number of a position that is legal but for checks that the formulas allow.
class Formulas {
  public:
    Formulas(const Material& material, Side mover, Placement position)
        : material_(material), mover_(mover), position_(position) {
        Normalise(position_, mover, material.has_pawns());
    }

    [[nodiscard]] Number Of() const { return mover_ == NalimovTablebases::first_side ? OfFirst() : OfSecond(); }

    /// The size of the index.
    [[nodiscard]] static Number Size(const Material& material, Side mover) {
        const std::string first = LettersOf(material, first_side);
        const std::string second = LettersOf(material, second_side);
        const bool with_pawns = material.has_pawns();
        if (mover == NalimovTablebases::first_side) {
            const Number total = Enumeration{first, with_pawns, false}.Total();
            if (second.empty()) return total;
            if (second != "p") return total * (62 - first.size());
            return total * (48 - PawnsIn(first));
        }
        if (!second.empty()) {
            const Number total = Enumeration{second, with_pawns, false}.Total();
            const Number of_pawns = PawnsIn(first) == 0   ? 1
                                    : PawnsIn(first) == 1 ? (second == "p" ? 47 : 48)
                                                          : (second == "p" ? C2(47) : C2(48));
            if (first.size() == PawnsIn(first)) return total * of_pawns;
            if (first.size() == 1) return total * 61;
            if (PawnsIn(first) == 1) return total * 60 * of_pawns;
            return first[0] == first[1] ? total * 1830 : total * 61 * 60;
        }
        const std::string pawns(PawnsIn(first), 'p');
        const Number total = Enumeration{pawns, with_pawns, true}.Total();
        const std::string pieces = first.substr(0, first.size() - pawns.size());
        if (pieces.empty()) return total;
        if (pieces.size() == 1) return total * (62 - pawns.size());
        if (pieces.size() == 2 && !pawns.empty()) return total * (pieces[0] == pieces[1] ? 1830 : 61 * 60);
        if (pieces.size() == 2) return total * (pieces[0] == pieces[1] ? 1891 : 62 * 61);
        if (pieces[0] == pieces[2]) return total * 37820;
        if (pieces[0] == pieces[1] || pieces[1] == pieces[2]) return total * 1830 * 62;
        return total * 62 * 61 * 60;
    }

  private:
    static std::size_t PawnsIn(const std::string& men) {
        return static_cast<std::size_t>(std::count(men.begin(), men.end(), 'p'));
    }
    [[nodiscard]] Squares First() const { return Listed(first_side); }
    [[nodiscard]] Squares Listed(Side side) const {
        return {position_.men[side].begin(),
                position_.men[side].begin() + static_cast<std::ptrdiff_t>(MenOf(material_, side).size())};
    }
    [[nodiscard]] Kings BothKings() const { return {position_.kings[mover_], position_.kings[1 - mover_]}; }
    /// Both kings and more.
    [[nodiscard]] Squares K(const Squares& more = {}) const {
        Squares listed{position_.kings[0], position_.kings[1]};
        listed.insert(listed.end(), more.begin(), more.end());
        return listed;
    }
    /// A pawn among the squares of pawns, some of them taken.
    static Number OfPawn(Square pawn, const Squares& pawns) {
        return static_cast<Number>(pawn - 8 -
                                   std::count_if(pawns.begin(), pawns.end(), [&](Square s) { return s < pawn; }));
    }

    [[nodiscard]] Number OfFirst() const {
        const std::string first = LettersOf(material_, first_side);
        const std::string second = LettersOf(material_, second_side);
        const Number e = Enumeration{first, material_.has_pawns(), false}.Of(BothKings(), First());
        if (second.empty()) return e;
        const Square z = position_.men[1][0];
        if (second != "p") return e * (62 - first.size()) + Rank(z, K(First()));
        Squares pawns;
        for (std::size_t i = 0; i < first.size(); ++i) {
            if (first[i] == 'p') pawns.push_back(position_.men[0][i]);
        }
        return e * (48 - pawns.size()) + OfPawn(z, pawns);
    }

    [[nodiscard]] Number OfSecond() const {
        return LettersOf(material_, second_side).empty() ? OfBareKing() : OfOneMan();
    }

    /// The second side has one man beside its king, z.
    [[nodiscard]] Number OfOneMan() const {
        const std::string first = LettersOf(material_, first_side);
        const Square z = position_.men[1][0];
        const bool is_pawn = LettersOf(material_, second_side) == "p";
        Kings kings = BothKings();
        if (is_pawn) kings = {MirrorRank(kings.mover), MirrorRank(kings.other)};
        const Number e = Enumeration{LettersOf(material_, second_side), material_.has_pawns(), false}.Of(
            kings, {is_pawn ? MirrorRank(z) : z});
        const Squares pawn_of_second = is_pawn ? Squares{z} : Squares{};
        const Square x = position_.men[0][0];
        const Square y = position_.men[0][1];
        if (first == "p") return e * 47 + OfPawn(x, {z});  // against a pawn
        if (first.size() == 1) return e * 61 + Rank(x, K({z}));
        if (first == "pp") {
            const Number high = OfPawn(std::max(x, y), pawn_of_second);
            const Number low = OfPawn(std::min(x, y), pawn_of_second);
            return e * (is_pawn ? 1081 : 1128) + C2(high) + low;
        }
        if (first[1] == 'p') return (e * 60 + Rank(x, K({y, z}))) * (is_pawn ? 47 : 48) + OfPawn(y, pawn_of_second);
        if (first[0] == first[1]) return e * 1830 + RankOfPair(x, y, K({z}));
        return (e * 61 + Rank(x, K({z}))) * 60 + Rank(y, K({z, x}));
    }

    [[nodiscard]] Number OfBareKing() const {
        const std::string first = LettersOf(material_, first_side);
        const Square x = position_.men[0][0];
        const Square y = position_.men[0][1];
        const Square z = position_.men[0][2];
        Squares pawns;
        for (std::size_t i = 0; i < first.size(); ++i) {
            if (first[i] == 'p') pawns.push_back(position_.men[0][i]);
        }
        Squares mirrored = pawns;
        std::transform(pawns.begin(), pawns.end(), mirrored.begin(), MirrorRank);
        Kings kings = BothKings();
        if (!pawns.empty()) kings = {MirrorRank(kings.mover), MirrorRank(kings.other)};
        const Number e = Enumeration{std::string(pawns.size(), 'p'), material_.has_pawns(), true}.Of(kings, mirrored);
        const std::size_t pieces = first.size() - pawns.size();
        if (pieces == 0) return e;
        if (pieces == 1) return e * (62 - pawns.size()) + Rank(x, K(pawns));
        if (pieces == 2 && pawns.size() == 1) {
            if (first[0] == first[1]) return e * 1830 + RankOfPair(x, y, K(pawns));
            return (e * 61 + Rank(x, K(pawns))) * 60 + Rank(y, K({z, x}));
        }
        if (pieces == 2) {
            return first[0] == first[1] ? e * 1891 + RankOfPair(x, y, K())
                                        : (e * 62 + Rank(x, K())) * 61 + Rank(y, K({x}));
        }
        if (first[0] == first[2]) {
            std::array n{Rank(x, K()), Rank(y, K()), Rank(z, K())};
            std::sort(n.begin(), n.end());
            return e * 37820 + C3(n[2]) + C2(n[1]) + n[0];
        }
        if (first[0] == first[1]) return (e * 1830 + RankOfPair(x, y, K({z}))) * 62 + Rank(z, K());
        if (first[1] == first[2]) return (e * 62 + Rank(x, K())) * 1830 + RankOfPair(y, z, K({x}));
        return ((e * 62 + Rank(x, K())) * 61 + Rank(y, K({x}))) * 60 + Rank(z, K({x, y}));
    }

    const Material& material_;
    Side mover_;
    Placement position_;
};

}  // namespace slow_index
