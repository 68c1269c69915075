#include "search/node/pin_threat.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "support/board_builder.h"
#include "support/row_name.h"

namespace {

struct PinRow {
    std::string_view name;
    std::string_view fen;
    PinRecord pin;
};
std::ostream& operator<<(std::ostream& out, const PinRow& row) { return out << row.fen; }

PinRecord Pin(Square pinned, Square pinner, Colour side) {
    return {.pinned_square = static_cast<std::int16_t>(pinned),
            .pinner_square = static_cast<std::int16_t>(pinner),
            .pinner_side = static_cast<std::int32_t>(side)};
}

class StandingPins : public testing::TestWithParam<PinRow> {};

TEST_P(StandingPins, AreFound) {
    const PinRecord found = FindStandingPin(BoardFromFen(std::string(GetParam().fen)));
    EXPECT_EQ(found.pinned_square, GetParam().pin.pinned_square);
    EXPECT_EQ(found.pinner_square, GetParam().pin.pinner_square);
    EXPECT_EQ(found.pinner_side, GetParam().pin.pinner_side);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Threats, StandingPins, testing::Values(
    PinRow{"none", "4k3/8/8/8/8/8/4N3/4K3 w - - 0 1", {}},
    PinRow{"two pieces between", "4r1k1/8/8/8/4P3/8/4N3/4K3 w - - 0 1", {}},
    PinRow{"own knight", "4r1k1/8/8/8/8/8/4N3/4K3 w - - 0 1", Pin(e2, e8, black)},
    PinRow{"own knight, the other side to move", "4r1k1/8/8/8/8/8/4N3/4K3 b - - 0 1", Pin(e2, e8, black)},
    PinRow{"enemy bishop", "4k3/4b3/8/8/8/8/4R3/6K1 w - - 0 1", Pin(e7, e2, white)},
    PinRow{"diagonal pin by a bishop", "6k1/5q2/8/8/2B5/8/8/4K3 b - - 0 1", Pin(f7, c4, white)},
    PinRow{"of two the higher type", "4r1k1/8/8/b7/8/8/3QN3/4K3 w - - 0 1", Pin(d2, a5, black)},
    PinRow{"of both sides the higher type", "4r1k1/5q2/8/8/2B5/8/4N3/4K3 w - - 0 1", Pin(f7, c4, white)},
    PinRow{"the nearer of two pinners", "4q1k1/4r3/8/8/8/8/4N3/4K3 w - - 0 1", Pin(e2, e7, black)}),
    RowName<PinRow>);
// clang-format on

}  // namespace
