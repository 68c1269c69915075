#include "tablebases/nalimov/nalimov_index.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <tuple>
#include <vector>

#include "tablebases/nalimov/slow_index.h"

namespace NalimovTablebases {

namespace {

/// Both tables of a material, or the one if either stands for the other.
std::vector<Side> SidesOf(const Material& material) {
    return material.is_symmetric() ? std::vector{first_side} : std::vector{first_side, second_side};
}

std::uint64_t SizesOf(std::size_t men) {
    std::uint64_t sum = 0;
    for (const Material& material : VorkaTablebases::MaterialsOf(men)) {
        for (const Side side : SidesOf(material)) sum += NalimovIndex(material, side).size();
    }
    return sum;
}

/// The squares in the form that the index does not tell from another: turned, and like men sorted.
using NormalForm = std::array<Square, most_men>;
NormalForm NormalFormOf(const Material& material, Side mover, Placement position) {
    slow_index::Normalise(position, mover, material.has_pawns());
    NormalForm form{position.kings[0], position.kings[1]};
    std::size_t next = 2;
    for (const Side side : {first_side, second_side}) {
        const std::vector<int>& men = MenOf(material, side);
        for (std::size_t i = 0; i < men.size();) {
            const std::size_t end = i + static_cast<std::size_t>(std::count(men.begin(), men.end(), men[i]));
            auto& squares = position.men[side];
            std::sort(squares.begin() + static_cast<std::ptrdiff_t>(i),
                      squares.begin() + static_cast<std::ptrdiff_t>(end));
            for (; i < end; ++i) form[next++] = squares[i];
        }
    }
    return form;
}

class RandomPlacements {
  public:
    explicit RandomPlacements(std::uint32_t seed) : random_(seed) {}

    Square AnySquare() { return static_cast<Square>(random_() % 64); }
    Placement Any() {
        Placement position;
        for (Square& king : position.kings) king = AnySquare();
        for (auto& men : position.men) {
            for (Square& man : men) man = AnySquare();
        }
        return position;
    }

  private:
    std::mt19937 random_;
};

/// Each material from 3 to 5 men, with either side to move.
class EachIndex : public testing::TestWithParam<std::size_t> {
  protected:
    template <class Test>
    void ForEach(Test&& test) {
        for (const Material& material : VorkaTablebases::MaterialsOf(GetParam())) {
            for (const Side side : {first_side, second_side}) test(material, side);
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Men, EachIndex, testing::Values<std::size_t>(3, 4, 5));

}  // namespace

TEST(NalimovIndex, HasThePublishedSizes) {
    EXPECT_EQ(SizesOf(3), 386'448U);
    // The file for two pawns goes on with 14 en passant captures for each pair of kings.
    EXPECT_EQ(SizesOf(4) + 14 * NalimovIndex::pairs_with_pawns, 138'761'729U);
    // With the en passant captures of five men the paper tells 30.6 thousand millions for all.
    EXPECT_NEAR(static_cast<double>(SizesOf(3) + SizesOf(4) + SizesOf(5)), 30.6e9, 0.05e9);
}

TEST(NalimovIndex, NumbersTheExampleOfItsDescription) {
    const NalimovIndex index(*MaterialNamed("kqk"), first_side);
    EXPECT_THAT(index.Of({.kings = {a1, c1}, .men = {{{h8}, {}}}}), testing::Optional(56U));
    // The same, turned.
    EXPECT_THAT(index.Of({.kings = {h8, f8}, .men = {{{a1}, {}}}}), testing::Optional(56U));
    EXPECT_THAT(index.Of({.kings = {a8, a6}, .men = {{{h1}, {}}}}), testing::Optional(56U));
}

TEST(NalimovIndex, KnowsNoImpossiblePositions) {
    const NalimovIndex queen_to_move(*MaterialNamed("kqk"), first_side);
    EXPECT_FALSE(queen_to_move.Of({.kings = {a1, b2}, .men = {{{h8}, {}}}})) << "neighbours";
    EXPECT_FALSE(queen_to_move.Of({.kings = {a1, a1}, .men = {{{h8}, {}}}}));
    EXPECT_FALSE(queen_to_move.Of({.kings = {a1, c1}, .men = {{{c1}, {}}}}));
    EXPECT_FALSE(queen_to_move.Of({.kings = {a1, c1}, .men = {{{c2}, {}}}})) << "it could take the king";
    EXPECT_TRUE(NalimovIndex(*MaterialNamed("kqk"), second_side).Of({.kings = {a1, c1}, .men = {{{c2}, {}}}}));
    const NalimovIndex pawn_to_move(*MaterialNamed("kpk"), first_side);
    EXPECT_FALSE(pawn_to_move.Of({.kings = {a1, c1}, .men = {{{h8}, {}}}}));
    EXPECT_FALSE(pawn_to_move.Of({.kings = {a1, c1}, .men = {{{h1}, {}}}}));
    EXPECT_FALSE(pawn_to_move.Of({.kings = {a1, c4}, .men = {{{d3}, {}}}}));
    EXPECT_TRUE(pawn_to_move.Of({.kings = {a1, c4}, .men = {{{d5}, {}}}}));
    const NalimovIndex two_rooks(*MaterialNamed("krrk"), second_side);
    EXPECT_FALSE(two_rooks.Of({.kings = {a1, c1}, .men = {{{h8, h8}, {}}}}));
}

TEST_P(EachIndex, HasTheSizeOfTheFormulas) {
    ForEach([](const Material& material, Side side) {
        EXPECT_EQ(NalimovIndex(material, side).size(), slow_index::Formulas::Size(material, side))
            << material.name() << side;
    });
}

TEST_P(EachIndex, IsThatOfTheFormulas) {
    RandomPlacements random(20260101);
    ForEach([&](const Material& material, Side side) {
        const NalimovIndex index(material, side);
        for (int numbered = 0; numbered < 12;) {
            const Placement position = random.Any();
            const auto number = index.Of(position);
            if (!number) continue;
            ++numbered;
            EXPECT_LT(*number, index.size());
            EXPECT_EQ(*number, slow_index::Formulas(material, side, position).Of()) << material.name() << side;
        }
    });
}

TEST_P(EachIndex, IsTheSameForTurnedBoardsAndForLikeMenInAnyOrder) {
    RandomPlacements random(20260102);
    ForEach([&](const Material& material, Side side) {
        const NalimovIndex index(material, side);
        for (int numbered = 0; numbered < 50;) {
            Placement position = random.Any();
            const auto number = index.Of(position);
            if (!number) continue;
            ++numbered;
            slow_index::Normalise(position, side, material.has_pawns());
            EXPECT_EQ(index.Of(position), number);
            for (Square& king : position.kings) king = MirrorHorizontally(king);
            for (auto& men : position.men) {
                for (Square& man : men) man = MirrorHorizontally(man);
            }
            EXPECT_EQ(index.Of(position), number);
            for (const Side owner : {first_side, second_side}) {
                const std::vector<int>& men = MenOf(material, owner);
                for (std::size_t i = 1; i < men.size(); ++i) {
                    if (men[i] == men[i - 1]) std::swap(position.men[owner][i], position.men[owner][i - 1]);
                }
            }
            EXPECT_EQ(index.Of(position), number) << material.name() << side;
        }
    });
}

// Around one pair of kings at a time, with the first man on some squares only where there are three.
TEST_P(EachIndex, GivesEachPositionANumberOfItsOwn) {
    RandomPlacements random(20260103);
    ForEach([&](const Material& material, Side side) {
        const NalimovIndex index(material, side);
        Placement position = random.Any();
        const std::size_t men_of_first = MenOf(material, first_side).size();
        std::vector<Square*> men;
        for (std::size_t i = 0; i < men_of_first; ++i) men.push_back(&position.men[first_side][i]);
        for (std::size_t i = 0; i < MenOf(material, second_side).size(); ++i)
            men.push_back(&position.men[second_side][i]);
        const int step = men.size() == 3 ? 13 : 1;

        std::vector<std::pair<std::uint64_t, NormalForm>> seen;
        const auto place = [&](auto& self, std::size_t man) -> void {
            if (man == men.size()) {
                const auto number = index.Of(position);
                if (!number) return;
                EXPECT_LT(*number, index.size());
                seen.emplace_back(*number, NormalFormOf(material, side, position));
                return;
            }
            for (Square square = a1; square <= h8; square += man == 0 ? step : 1) {
                *men[man] = square;
                self(self, man + 1);
            }
        };
        for (int pairs = 0; pairs < 2;) {
            position.kings = {random.AnySquare(), random.AnySquare()};
            const std::size_t before = seen.size();
            place(place, 0);
            if (seen.size() > before) ++pairs;
        }
        std::sort(seen.begin(), seen.end());
        for (std::size_t i = 1; i < seen.size(); ++i) {
            ASSERT_EQ(seen[i - 1].first == seen[i].first, seen[i - 1].second == seen[i].second)
                << material.name() << side << " number " << seen[i].first;
        }
    });
}

}  // namespace NalimovTablebases
