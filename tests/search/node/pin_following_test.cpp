// How a pin comes into being, goes on and ends by the last two moves.

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string_view>
#include <vector>

#include "search/node/pin_threat.h"
#include "support/board_builder.h"
#include "support/row_name.h"
#include "support/search_builder.h"

namespace {

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

// White makes the first of the two moves, Black the second, so that White is on move.
constexpr std::string_view bishop_pins_knight = "4kb2/p7/8/8/8/2N5/P7/4K3 w - - 0 1";
constexpr std::string_view pinned_knight = "4k3/p7/8/8/1b6/2N5/P7/4K3 w - - 0 1";
constexpr Pin knight_c3{c3, b4, black};

// clang-format off
INSTANTIATE_TEST_SUITE_P(PinThreat, PinFollowing, testing::Values(
    PinRow{"a bishop moves onto the line", bishop_pins_knight, {"a2a3", "f8b4"}, new_pin, knight_c3},
    PinRow{"the same after a null move", bishop_pins_knight, {"-", "f8b4"}, new_pin, knight_c3},
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
    PinRow{"a knight pinned by a queen is", "1q2k3/8/8/8/8/2N5/P7/4K3 w - - 0 1", {"a2a3", "b8b4"}, new_pin, knight_c3},
    PinRow{"a rook beside the line pins nothing", "3rk3/8/8/8/8/8/P3B3/4K3 w - - 0 1", {"a2a3", "d8d2"}, nothing, std::nullopt},
    PinRow{"a bishop pinned by a rook is", "r5k1/8/8/8/4B3/8/P7/4K3 w - - 0 1", {"a2a3", "a8e8"}, new_pin, Pin{e4, e8, black}},
    PinRow{"a rook pinned by a rook is not", "r5k1/8/8/8/4R3/8/P7/4K3 w - - 0 1", {"a2a3", "a8e8"}, nothing, std::nullopt},
    PinRow{"a pin made by a discovered check", "4r1k1/4b3/8/8/8/2N5/P7/4K3 w - - 0 1", {"a2a3", "e7b4"}, new_pin, knight_c3},
    // A check by a knight or a pawn was answered: the answer may pin as any move does, even by a capture.
    PinRow{"the checking knight is taken by a slider that pins", "5b2/8/2k5/8/8/2N5/N7/4K3 w - - 0 1", {"a2b4", "f8b4"}, new_pin, knight_c3},
    PinRow{"the checking pawn is taken by a slider that pins", "5b2/8/8/k7/8/1PN5/8/4K3 w - - 0 1", {"b3b4", "f8b4"}, new_pin, knight_c3},
    PinRow{"a checking rook is taken by a slider that pins: not looked at", "5b2/8/1k6/8/7R/2N5/8/4K3 w - - 0 1", {"h4b4", "f8b4"}, nothing, std::nullopt},
    // A queen that pins a bishop counts if the fixed square f1 lies on the rook rays of the bishop.
    PinRow{"a pin that nobody has just made", "q5k1/8/8/8/8/5B2/P7/7K w - - 0 1", {"a2a3", "g8g7"}, nothing, std::nullopt},
    PinRow{"a queen pins a bishop on the f-file", "1q4k1/8/8/8/8/5B2/P7/7K w - - 0 1", {"a2a3", "b8b7"}, new_pin, Pin{f3, b7, black}},
    PinRow{"a queen pins a bishop elsewhere", "1q4k1/8/8/8/4B3/8/P7/7K w - - 0 1", {"a2a3", "b8b7"}, nothing, std::nullopt},
    PinRow{"a queen pins a bishop on the first rank", "3q2k1/7p/8/8/8/8/P7/KB6 w - - 0 1", {"a2a3", "d8d1"}, new_pin, Pin{b1, d1, black}},
    PinRow{"a queen pins a bishop on the fixed square itself", "3q2k1/7p/8/8/8/8/P7/5B1K w - - 0 1", {"a2a3", "d8d1"}, nothing, std::nullopt},
    PinRow{"a queen pins a rook on d3, whose diagonal holds f1", "6k1/q7/8/8/8/3R4/P7/3K4 w - - 0 1", {"a2a3", "a7d7"}, new_pin, Pin{d3, d7, black}},
    PinRow{"a queen pins a rook on d4, whose diagonals do not", "6k1/q7/8/8/3R4/8/P7/3K4 w - - 0 1", {"a2a3", "a7d7"}, nothing, std::nullopt},
    // A queen is pinned for real if the square numbered like the pinner's code (d1 for a bishop, e1 for a rook) is not
    // covered by the pinner's side.
    PinRow{"a bishop pins a queen", "4kb2/p7/8/8/8/2Q5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, new_pin, knight_c3},
    PinRow{"a bishop pins a queen while d1 is covered", "3rkb2/p7/8/8/8/2Q5/P7/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"a bishop pins a queen while a pawn covers d1", "4kb2/p7/8/8/8/2Q5/P1p5/4K3 w - - 0 1", {"a2a3", "f8b4"}, nothing, std::nullopt},
    PinRow{"a rook pins a queen", "r6k/8/8/8/6QK/8/7P/8 w - - 0 1", {"h2h3", "a8a4"}, new_pin, Pin{g4, a4, black}},
    PinRow{"a rook pins a queen while e1 is covered", "r6k/8/8/8/6QK/8/2n4P/8 w - - 0 1", {"h2h3", "a8a4"}, nothing, std::nullopt},
    PinRow{"a rook pins a queen while d1 is covered", "r6k/8/8/8/6QK/8/1n5P/8 w - - 0 1", {"h2h3", "a8a4"}, new_pin, Pin{g4, a4, black}},
    PinRow{"a queen pins a queen", "1q2k3/8/8/8/8/2Q5/P7/4K3 w - - 0 1", {"a2a3", "b8b4"}, nothing, std::nullopt},

    PinRow{"a knight interposes against a rook", "4k3/8/8/8/8/2n5/8/K2R4 w - - 0 1", {"d1e1", "c3e4"}, new_pin, Pin{e4, e1, white}},
    PinRow{"the king steps aside", "4k3/8/8/8/8/2n5/8/K2R4 w - - 0 1", {"d1e1", "e8f8"}, nothing, std::nullopt},
    PinRow{"the checker is taken", "4k3/8/8/8/8/8/8/3RK3 w - - 0 1", {"d1d8", "e8d8"}, nothing, std::nullopt},
    PinRow{"interposing against a discovered check", "4k3/8/8/8/4N3/2n5/8/K3R3 w - - 0 1", {"e4g5", "c3e4"}, new_pin, Pin{e4, e1, white}},
    PinRow{"interposing against a check that a pawn discovered", "4k3/8/8/3p4/4P3/2n5/8/K3R3 w - - 0 1", {"e4d5", "c3e4"}, new_pin, Pin{e4, e1, white}},
    PinRow{"of two sliders on the line the nearer one pins", "4k3/8/8/8/4N3/2n5/4R3/K3Q3 w - - 0 1", {"e4g5", "c3e4"}, new_pin, Pin{e4, e2, white}},
    // The from-square of the check must lie in line with the checker; after a pawn taken en passant it does not.
    PinRow{"interposing against a check discovered en passant", "6k1/8/8/3pP1n1/8/8/B7/4K3 w - d6 0 1", {"e5d6", "g5f7"}, nothing, std::nullopt},
    PinRow{"a queen interposes against a rook", "4k3/8/8/8/8/2q5/8/1K1R4 w - - 0 1", {"d1e1", "c3e5"}, new_pin, Pin{e5, e1, white}},
    PinRow{"a queen interposes against a rook while e1 is covered", "4k3/8/8/8/8/2q5/8/3R1K2 w - - 0 1", {"d1e1", "c3e5"}, nothing, std::nullopt},
    PinRow{"a bishop interposes against a rook", "4k3/8/8/8/8/2b5/8/1K1R4 w - - 0 1", {"d1e1", "c3e5"}, new_pin, Pin{e5, e1, white}},
    PinRow{"a rook interposes against a rook: not worth it", "4k3/8/8/8/r7/8/8/1K1R4 w - - 0 1", {"d1e1", "a4e4"}, nothing, std::nullopt},
    PinRow{"interposing against castling long", "3k4/8/8/5n2/8/8/8/R3K3 w Q - 0 1", {"e1c1", "f5d4"}, new_pin, Pin{d4, d1, white}},
    PinRow{"interposing against castling", "5k2/8/4n3/8/8/8/8/4K2R w K - 0 1", {"e1g1", "e6f4"}, new_pin, Pin{f4, f1, white}},

    PinRow{"the pin goes on", pinned_knight, {"a2a3", "a7a6"}, unchanged, knight_c3, knight_c3},
    PinRow{"the pinned piece is taken", pinned_knight, {"a2a3", "b4c3"}, pinned_piece_taken, std::nullopt, knight_c3},
    PinRow{"the pinner leaves", pinned_knight, {"a2a3", "b4f8"}, gone, std::nullopt, knight_c3},
    PinRow{"somebody covers the king", "3rk3/p7/8/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "d8d2"}, gone, std::nullopt, knight_c3},
    PinRow{"somebody stands in the pin already", "4k3/p7/8/b7/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "a7a6"}, unchanged, Pin{c3, a5, black}, Pin{c3, a5, black}},
    PinRow{"a rook steps into the pin, but looks elsewhere", "1r2k3/p7/8/b7/8/2N5/P7/4K3 w - - 0 1", {"a2a3", "b8b4"}, gone, std::nullopt, Pin{c3, a5, black}},
    PinRow{"a queen steps into the pin", "4k3/pq6/8/b7/8/2N5/P7/4K3 w - - 0 1", {"a2a3", "b7b4"}, tightened, Pin{c3, b4, black}, Pin{c3, a5, black}},
    PinRow{"a knight steps into the pin", "4k3/p7/2n5/b7/8/2N5/P7/4K3 w - - 0 1", {"a2a3", "c6b4"}, gone, std::nullopt, Pin{c3, a5, black}},
    PinRow{"a pawn attacks the pinned piece", "4k3/8/8/3p4/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "d5d4"}, tightened, knight_c3, knight_c3},
    PinRow{"a knight attacks it", "4k3/8/2n5/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "c6e5"}, unchanged, knight_c3, knight_c3},
    PinRow{"a knight attacks it from d5", "4k3/8/5n2/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "f6d5"}, tightened, knight_c3, knight_c3},
    PinRow{"a king attacks it", "8/p7/8/4k3/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "e5d4"}, tightened, knight_c3, knight_c3},
    PinRow{"a king moves elsewhere", "8/p7/8/4k3/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "e5e6"}, unchanged, knight_c3, knight_c3},
    PinRow{"a pawn stands beside it", "4k3/8/8/2p5/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "c5c4"}, unchanged, knight_c3, knight_c3},
    PinRow{"a rook attacks it", "4k2r/8/8/8/1b6/2N5/P7/4K3 w - - 0 1", {"a2a3", "h8h3"}, tightened, knight_c3, knight_c3},
    PinRow{"a rook would, but for a piece in between", "4k2r/8/8/8/1b6/2N2P2/P7/4K3 w - - 0 1", {"a2a3", "h8h3"}, unchanged, knight_c3, knight_c3}),
    RowName<PinRow>);

// Here the side with the pinned piece has just moved: the pin is by the side that is on move.
constexpr Pin knight_c6{c6, b5, white};
INSTANTIATE_TEST_SUITE_P(PinOfTheOtherSide, PinFollowing, testing::Values(
    PinRow{"it goes on", "4k3/p7/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "a7a6"}, unchanged, knight_c6, knight_c6},
    PinRow{"the king steps out", "4k3/p7/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "e8f8"}, gone, std::nullopt, knight_c6},
    PinRow{"the pinner is taken", "4k3/8/p1n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "a6b5"}, gone, std::nullopt, knight_c6},
    PinRow{"a piece moves beside the line", "3bk3/8/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "d8c7"}, unchanged, knight_c6, knight_c6},
    PinRow{"a second piece interposes before the pinned one", "1r2k3/8/2n5/8/B7/8/P7/4K3 w - - 0 1", {"a2a3", "b8b5"}, gone, std::nullopt, Pin{c6, a4, white}},
    PinRow{"the pinned piece moves along the line", "4k3/8/2q5/8/B7/8/P7/4K3 w - - 0 1", {"a2a3", "c6b5"}, gone, std::nullopt, Pin{c6, a4, white}},
    PinRow{"the pinned piece takes the pinner", "4k3/8/2q5/8/B7/8/P7/4K3 w - - 0 1", {"a2a3", "c6a4"}, gone, std::nullopt, Pin{c6, a4, white}},
    PinRow{"a second piece interposes behind it", "3qk3/8/2n5/1B6/8/8/P7/4K3 w - - 0 1", {"a2a3", "d8d7"}, gone, std::nullopt, knight_c6}),
    RowName<PinRow>);

// Black makes the first move and White the second, so that Black is on move. The rules are the mirrored ones, but for
// the squares f1, d1 and e1 of the worth test, which are not turned round: deliberate.
constexpr Pin knight_f6{f6, h4, white};
INSTANTIATE_TEST_SUITE_P(PinsByWhite, PinFollowing, testing::Values(
    PinRow{"a bishop moves onto the line", "4k3/p7/2n5/8/8/8/8/4KB2 b - - 0 1", {"a7a6", "f1b5"}, new_pin, knight_c6},
    PinRow{"two in between", "4k3/p2p4/2n5/8/8/8/8/4KB2 b - - 0 1", {"a7a6", "f1b5"}, nothing, std::nullopt},
    PinRow{"a queen pins a bishop on the f-file", "7k/p7/5b2/8/8/8/8/1Q4K1 b - - 0 1", {"a7a6", "b1b2"}, new_pin, Pin{f6, b2, white}},
    PinRow{"a queen pins a bishop elsewhere", "7k/p7/8/4b3/8/8/8/1Q4K1 b - - 0 1", {"a7a6", "b1b2"}, nothing, std::nullopt},
    PinRow{"a queen pins a bishop on the eighth rank", "kb6/p7/8/8/8/8/7P/3Q2K1 b - - 0 1", {"a7a6", "d1d8"}, nothing, std::nullopt},
    PinRow{"a bishop pins a queen", "4k3/p7/2q5/8/8/8/8/5BK1 b - - 0 1", {"a7a6", "f1b5"}, new_pin, knight_c6},
    PinRow{"a bishop pins a queen while d1 is covered", "4k3/p7/2q5/8/8/8/8/4KB2 b - - 0 1", {"a7a6", "f1b5"}, nothing, std::nullopt},
    PinRow{"a bishop pins a queen while d8 is covered", "4k3/p7/2q5/8/8/1N6/8/5BK1 b - - 0 1", {"a7a6", "f1b5"}, new_pin, knight_c6},
    PinRow{"a knight interposes against a rook", "k2r4/8/2N5/8/8/8/8/4K3 b - - 0 1", {"d8e8", "c6e5"}, new_pin, Pin{e5, e8, black}},
    PinRow{"interposing against castling", "4k2r/8/8/8/8/4N3/8/5K2 b k - 0 1", {"e8g8", "e3f5"}, new_pin, Pin{f5, f8, black}},
    PinRow{"the pin goes on", "4k3/p7/5n2/8/7B/8/P7/4K3 b - - 0 1", {"a7a6", "a2a3"}, unchanged, knight_f6, knight_f6},
    PinRow{"a pawn attacks the pinned piece", "3k4/p7/5n2/8/4P2B/8/8/4K3 b - - 0 1", {"a7a6", "e4e5"}, tightened, knight_f6, knight_f6},
    PinRow{"a pawn attacks squares behind it", "3k4/p7/5n2/6P1/7B/8/4P3/4K3 b - - 0 1", {"a7a6", "e2e4"}, unchanged, knight_f6, knight_f6},
    PinRow{"the pinned piece is taken", "3k4/p7/5n2/8/7B/8/8/4K3 b - - 0 1", {"a7a6", "h4f6"}, pinned_piece_taken, std::nullopt, knight_f6},
    PinRow{"the king of the pinned side steps out", "3k4/p7/5n2/8/7B/8/P7/4K3 w - - 0 1", {"a2a3", "d8d7"}, gone, std::nullopt, knight_f6}),
    RowName<PinRow>);
// clang-format on

// --- What the node makes of it ---

class PinFlag : public testing::Test {
  protected:
    /// The node after Black's last move.
    [[nodiscard]] Node Follow(std::string_view fen, std::vector<std::string_view> moves, std::optional<Pin> before = {},
                              NodeFlags known = NodeFlags::none) {
        search_ = std::make_unique<SearchBuilder>(fen, settings_);
        Play(*search_, moves);
        search_->board->pins[1] = RecordOf(before);
        Node node = search_->NodeAt(0, 128);
        node.child_flags = ChildFlags::none;
        node.flags = known;
        DetectPinThreat(node);
        return node;
    }
    SearchSettings settings_;
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
    settings_.consider_only_winning_pins_as_threats = true;
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
    settings_.skip_pruning_at_the_next_ply_because_of_pin_threat = false;
    EXPECT_EQ(Word(Follow(fen, {"a2a3", "f8b4"}).child_flags), 0x58U);
    settings_.skip_pruning_at_this_ply_because_of_pin_threat = false;
    EXPECT_EQ(Word(Follow(fen, {"a2a3", "f8b4"}).child_flags), 0U);
    EXPECT_EQ(Word(Follow(pinned_knight, {"a2a3", "a7a6"}, knight_c3).child_flags), 0U) << "no threat";
}

}  // namespace
