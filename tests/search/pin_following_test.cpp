// How a pin comes into being, goes on and ends by the last two moves.

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string_view>
#include <vector>

#include "search/pin_threat.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"
#include "support/settings_scope.h"

namespace {

namespace settings = search_settings;
using enum PinResult;

struct Pin {
    Square pinned, pinner;
    Colour side;  ///< that pins
};

struct PinRow {
    std::string_view name;
    std::string_view fen;
    std::vector<std::string_view> moves;  ///< two of them; "-" is a null move
    PinResult result;
    std::optional<Pin> after;        ///< what is recorded; nothing: an empty record
    std::optional<Pin> before = {};  ///< what the ply before had recorded
};
std::ostream& operator<<(std::ostream& out, const PinRow& row) { return out << row.name; }

PinRecord RecordOf(const std::optional<Pin>& pin) {
    if (!pin) return {};
    return {.pinned_square = static_cast<std::int16_t>(pin->pinned),
            .pinner_square = static_cast<std::int16_t>(pin->pinner),
            .pinner_side = static_cast<std::int32_t>(pin->side)};
}

void Play(SearchBuilder& search, const std::vector<std::string_view>& moves) {
    for (const std::string_view move : moves) {
        if (move == "-") {
            search.board->moves_played[search.board->board.ply + 1] = INVALID;
            search.board->board.MakeNullMove();
        } else {
            search.Make(move);
        }
    }
}

class PinFollowing : public testing::TestWithParam<PinRow> {};

TEST_P(PinFollowing, IsDoneByTheLastMoves) {
    const PinRow& row = GetParam();
    SearchBuilder search(row.fen);
    Play(search, row.moves);
    search.board->pins[1] = RecordOf(row.before);
    Node node = search.NodeAt(0, 128);
    DetectPinThreat(node);
    EXPECT_EQ(node.pin_result, row.result);
    EXPECT_EQ(search.board->pins[2], RecordOf(row.after));
}

// White makes the first of the two moves, Black the second, so that White is on move; and mirrored at the end.
constexpr std::string_view bishop_pins_knight = "4kb2/p7/8/8/8/2N5/P7/4K3 w - - 0 1";
constexpr std::string_view pinned_knight = "4k3/p7/8/8/1b6/2N5/P7/4K3 w - - 0 1";
constexpr Pin knight_c3{c3, b4, black};

// clang-format off
INSTANTIATE_TEST_SUITE_P(PinThreat, PinFollowing, testing::Values(
    PinRow{"a bishop moves onto the line", bishop_pins_knight, {"a2a3", "f8b4"}, new_pin, knight_c3},
    PinRow{"the same behind a null move", bishop_pins_knight, {"-", "f8b4"}, new_pin, knight_c3},
    PinRow{"a null move pins nothing", bishop_pins_knight, {"a2a3", "-"}, nothing, std::nullopt},
    PinRow{"a null move keeps the record", pinned_knight, {"a2a3", "-"}, nothing, knight_c3, knight_c3},
    PinRow{"a bishop moves elsewhere", bishop_pins_knight, {"a2a3", "f8g7"}, nothing, std::nullopt},
    PinRow{"a pawn moves", bishop_pins_knight, {"a2a3", "a7a6"}, nothing, std::nullopt},
    PinRow{"nobody in between is a check", "4kb2/p7/8/8/8/8/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"two in between", "4kb2/p7/8/8/8/2N5/P2P4/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"one of them the pinner's", "4kb2/p7/8/8/8/2n5/P2N4/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"a pinned pawn is not worth it", "4kb2/p7/8/8/8/2P5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"a bishop pinned by a bishop is not", "4kb2/p7/8/8/8/2B5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"a rook pinned by a bishop is", "4kb2/p7/8/8/8/2R5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, new_pin, knight_c3},
    PinRow{"a bishop pinned by a rook is", "3rk3/8/8/8/8/8/P3B3/4K3 w - - 0 1", {"a2a3", "d8d2"}, nothing, std::nullopt},
    PinRow{"a bishop pinned by a rook on its file", "r5k1/8/8/8/4B3/8/P7/4K3 w - - 0 1", {"a2a3", "a8e8"}, new_pin, Pin{e4, e8, black}},
    PinRow{"a rook pinned by a rook is not", "r5k1/8/8/8/4R3/8/P7/4K3 w - - 0 1", {"a2a3", "a8e8"}, nothing, std::nullopt},
    // A queen that pins a bishop counts if the fixed square f1 lies on the rook rays of the bishop.
    PinRow{"a queen pins a bishop on the f-file", "q5k1/8/8/8/8/5B2/P7/7K w - - 0 1", {"a2a3", "g8g7"}, nothing, std::nullopt},
    PinRow{"a queen pins a bishop on the f-file by moving", "1q4k1/8/8/8/8/5B2/P7/7K w - - 0 1", {"a2a3", "b8b7"}, new_pin, Pin{f3, b7, black}},
    PinRow{"a queen pins a bishop elsewhere", "1q4k1/8/8/8/4B3/8/P7/7K w - - 0 1", {"a2a3", "b8b7"}, nothing, std::nullopt},
    PinRow{"a queen pins a rook on d3, whose diagonal holds f1", "6k1/q7/8/8/8/3R4/P7/3K4 w - - 0 1", {"a2a3", "a7d7"}, new_pin, Pin{d3, d7, black}},
    PinRow{"a queen pins a rook on d4, whose diagonals do not", "6k1/q7/8/8/3R4/8/P7/3K4 w - - 0 1", {"a2a3", "a7d7"}, nothing, std::nullopt},
    // A queen is pinned for real if the square numbered like the pinner's code (d1 for a bishop, e1 for a rook) is not
    // covered by the pinner's side.
    PinRow{"a bishop pins a queen", "4kb2/p7/8/8/8/2Q5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, new_pin, knight_c3},
    PinRow{"a bishop pins a queen while d1 is covered", "3rkb2/p7/8/8/8/2Q5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"a queen pins a queen", "4k3/p6q/8/8/8/2Q5/P7/4K3 w - - 0 1", {"a2a3", "h7b7"}, nothing, std::nullopt},
    PinRow{"a check that takes the mover to its own line is none", "r5k1/8/8/8/4N3/8/P7/4K3 w - - 0 1", {"e4f6", "g8f7"}, nothing, std::nullopt},

    PinRow{"a knight interposes against a rook", "4k3/8/8/8/8/2n5/8/K2R4 w - - 0 1", {"d1e1", "c3e4"}, new_pin, Pin{e4, e1, white}},
    PinRow{"the king steps aside", "4k3/8/8/8/8/2n5/8/K2R4 w - - 0 1", {"d1e1", "e8f8"}, nothing, std::nullopt},
    PinRow{"the checker is taken", "4k3/8/8/8/8/8/8/3RK3 w - - 0 1", {"d1d8", "e8d8"}, nothing, std::nullopt},
    PinRow{"interposing against a discovered check", "4k3/8/8/8/4N3/2n5/8/K3R3 w - - 0 1", {"e4g5", "c3e4"}, new_pin, Pin{e4, e1, white}},
    PinRow{"interposing against castling", "5k2/8/4n3/8/8/8/8/4K2R w K - 0 1", {"e1g1", "e6f4"}, new_pin, Pin{f4, f1, white}},

    PinRow{"the pin goes on", pinned_knight, {"a2a3", "a7a6"}, unchanged, knight_c3, knight_c3},
    PinRow{"the pinned piece is taken", pinned_knight, {"a2a3", "b4c3"}, pinned_piece_taken, std::nullopt, knight_c3},
    PinRow{"the pinner leaves", pinned_knight, {"a2a3", "b4f8"}, gone, std::nullopt, knight_c3},
    PinRow{"somebody covers the king", "3rk3/p7/8/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "d8d2"}, gone, std::nullopt, knight_c3},
    PinRow{"another slider comes closer", "4k3/p7/8/b7/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "a7a6"}, unchanged, Pin{c3, a5, black}, Pin{c3, a5, black}},
    PinRow{"a slider steps into the pin", "4k3/p7/8/b7/8/2N5/P7/4K2b w - - 0 1", {"a2a3", "e8e7"}, unchanged, Pin{c3, a5, black}, Pin{c3, a5, black}},
    PinRow{"a queen steps into the pin", "4k3/pq6/8/b7/8/2N5/P7/4K3 w - - 0 1", {"a2a3", "b7b4"}, tightened, Pin{c3, b4, black}, Pin{c3, a5, black}},
    PinRow{"a knight steps into the pin", "4k3/p7/2n5/b7/8/2N5/P7/4K3 w - - 0 1", {"a2a3", "c6b4"}, gone, std::nullopt, Pin{c3, a5, black}},
    PinRow{"a pawn attacks the pinned piece", "4k3/8/8/3p4/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "d5d4"}, tightened, knight_c3, knight_c3},
    PinRow{"a knight attacks it", "4k3/8/2n5/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "c6e5"}, unchanged, knight_c3, knight_c3},
    PinRow{"a knight attacks it from d5", "4k3/8/5n2/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "f6d5"}, tightened, knight_c3, knight_c3},
    PinRow{"a rook attacks it", "4k2r/8/8/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "h8h3"}, tightened, knight_c3, knight_c3},
    PinRow{"a rook would, but for a piece in between", "4k2r/8/8/8/1b6/2N2P2/P7/4K3 w - - 0 1", {"a2a3", "h8h3"}, unchanged, knight_c3, knight_c3}),
    RowName<PinRow>);

// Here the side with the pinned piece has just moved: the pin is by the side that is on move.
constexpr Pin knight_c6{c6, b5, white};
INSTANTIATE_TEST_SUITE_P(PinOfTheOtherSide, PinFollowing, testing::Values(
    PinRow{"it goes on", "4k3/p7/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "a7a6"}, unchanged, knight_c6, knight_c6},
    PinRow{"the king steps out", "4k3/p7/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "e8f8"}, gone, std::nullopt, knight_c6},
    PinRow{"the pinner is taken", "4k3/8/p1n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "a6b5"}, gone, std::nullopt, knight_c6},
    PinRow{"a second piece interposes", "3bk3/8/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "d8c7"}, unchanged, knight_c6, knight_c6},
    PinRow{"a second piece interposes on the line", "4k1b1/8/2n5/1B6/8/8/P7/4K2b w - - 0 1", {"a2a3", "g8d5"}, unchanged, knight_c6, knight_c6},
    PinRow{"somebody stands on the line now", "3qk3/8/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "d8d7"}, gone, std::nullopt, knight_c6}),
    RowName<PinRow>);
// clang-format on

// --- What the node makes of it ---

class PinFlag : public testing::Test {
  protected:
    /// The node behind Black's last move.
    [[nodiscard]] Node Follow(std::string_view fen, std::vector<std::string_view> moves, std::optional<Pin> before = {},
                              NodeFlags known = NodeFlags::none) {
        search_ = std::make_unique<SearchBuilder>(fen);
        Play(*search_, moves);
        search_->board->pins[1] = RecordOf(before);
        Node node = search_->NodeAt(0, 128);
        node.child_flags = ChildFlags::none;
        node.flags = known;
        DetectPinThreat(node);
        return node;
    }
    SettingsScope scope_;
    std::unique_ptr<SearchBuilder> search_;
};

TEST_F(PinFlag, NewPinMustWinSomething) {
    EXPECT_FALSE(HasAny(Follow(bishop_pins_knight, {"a2a3", "f8b4"}).flags, NodeFlags::pin_threat))
        << "a knight by a bishop";
    EXPECT_TRUE(HasAny(Follow("4kb2/p7/8/8/8/2R5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}).flags, NodeFlags::pin_threat))
        << "a rook by a bishop";
}

TEST_F(PinFlag, TightenedPinNeedNot) {
    constexpr std::string_view fen = "4k3/8/8/3p4/1b6/2N5/P7/4K3 w - - 0 1";
    EXPECT_TRUE(HasAny(Follow(fen, {"a2a3", "d5d4"}, knight_c3).flags, NodeFlags::pin_threat));
    settings::consider_only_winning_pins_as_threats = true;
    EXPECT_FALSE(HasAny(Follow(fen, {"a2a3", "d5d4"}, knight_c3).flags, NodeFlags::pin_threat));
}

TEST_F(PinFlag, UnchangedPinSetsNothing) {
    EXPECT_FALSE(HasAny(Follow(pinned_knight, {"a2a3", "a7a6"}, knight_c3).flags, NodeFlags::pin_threat));
}

TEST_F(PinFlag, FlagFromTheTableStays) {
    const Node node = Follow(pinned_knight, {"a2a3", "a7a6"}, knight_c3, NodeFlags::pin_threat);
    EXPECT_TRUE(HasAny(node.flags, NodeFlags::pin_threat));
    EXPECT_EQ(Word(node.child_flags), 0xB00U);
}

/// With both settings on, which is the default, the bits for this ply are not set: the first value replaces the second.
TEST_F(PinFlag, SettingForTheNextPlyHidesTheOneForThisPly) {
    constexpr std::string_view fen = "4kb2/p7/8/8/8/2R5/P7/4K3 w - - 0 1";
    EXPECT_EQ(Word(Follow(fen, {"a2a3", "f8b4"}).child_flags), 0xB00U);
    settings::skip_pruning_at_the_next_ply_because_of_pin_threat = false;
    EXPECT_EQ(Word(Follow(fen, {"a2a3", "f8b4"}).child_flags), 0x58U);
    settings::skip_pruning_at_this_ply_because_of_pin_threat = false;
    EXPECT_EQ(Word(Follow(fen, {"a2a3", "f8b4"}).child_flags), 0U);
    EXPECT_EQ(Word(Follow(pinned_knight, {"a2a3", "a7a6"}, knight_c3).child_flags), 0U) << "no threat";
}

}  // namespace
