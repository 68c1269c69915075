#include "uci/position_command.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "chess/fen.h"
#include "chess/game_errors.h"
#include "chess/user_board.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "uci/move_text.h"

namespace VorkaUci {

namespace {

constexpr std::string_view start_word = "startpos";
constexpr std::string_view fen_word = "fen";
constexpr std::string_view moves_word = "moves";

/// The fields that a FEN may lack, and what stands there then. The first two it must have.
constexpr std::array<std::string_view, 6> usual_fields = {"", "w", "-", "-", "0", "1"};
constexpr std::size_t castling_field = 2;
constexpr std::size_t clock_field = 4;
constexpr std::size_t move_number_field = 5;
constexpr std::uint64_t highest_clock = 100;

/// A number of the last two fields. A text that is none is left out, as many programs leave them out.
std::string NumberField(const std::string& text, std::string_view usual, std::uint64_t most) try {
    return VorkaUtils::ToString(std::min(VorkaUtils::ToUnsigned64(text), most));
} catch (const string_conversion_error&) {
    return std::string(usual);
}

/// ReadFen wants the letters in their usual order.
std::string CastlingField(const std::string& text) {
    constexpr std::string_view order = "KQkq";
    std::string sorted = text;
    std::sort(sorted.begin(), sorted.end(), [&](char a, char b) { return order.find(a) < order.find(b); });
    return sorted;
}

std::string WholeFen(std::span<const std::string> fields) {
    std::string fen;
    for (std::size_t i = 0; i < usual_fields.size(); ++i) {
        std::string field = i < fields.size() ? fields[i] : std::string(usual_fields[i]);
        if (i == castling_field) field = CastlingField(field);
        if (i == clock_field) field = NumberField(field, usual_fields[i], highest_clock);
        if (i == move_number_field) field = NumberField(field, usual_fields[i], INT16_MAX);
        fen += (i == 0 ? "" : " ") + field;
    }
    return fen;
}

/// Throws game_errors.
BOARD BoardFrom(const std::string& fen) {
    BOARD board;
    std::uint32_t ignored_offset = 0;
    ReadFen(board, fen, ignored_offset);
    board.ResetPly();
    return board;
}

}  // namespace

BOARD StartPosition() { return BoardFrom(std::string(vocabulary::start_position_fen)); }

bool ReadPosition(std::span<const std::string> words, BOARD& board, std::string& refused) {
    refused.clear();
    const auto kind = std::find_if(words.begin(), words.end(),
                                   [](const std::string& word) { return word == start_word || word == fen_word; });
    if (kind == words.end()) return false;
    const auto moves = std::find(kind, words.end(), moves_word);
    BOARD read;
    if (*kind == start_word) {
        read = StartPosition();
    } else {
        constexpr std::ptrdiff_t fewest_fields = 2;
        if (moves - kind - 1 < fewest_fields) return false;
        try {
            read = BoardFrom(WholeFen({kind + 1, moves}));
        } catch (const game_errors::user_exception&) {
            return false;
        }
    }
    for (auto word = moves; word != words.end(); ++word) {
        if (word == moves) continue;
        const Move move = FindMove(*word, read);
        if (move == INVALID) {
            refused = *word;
            break;
        }
        PlayGameMove(read, move);
    }
    board = read;
    return true;
}

}  // namespace VorkaUci
