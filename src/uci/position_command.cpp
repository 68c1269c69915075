#include "uci/position_command.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

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
constexpr std::size_t en_passant_field = 3;
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

using Fields = std::array<std::string, 6>;

Fields AllFields(std::span<const std::string> words) {
    Fields fields;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        fields[i] = i < words.size() ? words[i] : std::string(usual_fields[i]);
    }
    fields[castling_field] = CastlingField(fields[castling_field]);
    fields[clock_field] = NumberField(fields[clock_field], usual_fields[clock_field], highest_clock);
    fields[move_number_field] = NumberField(fields[move_number_field], usual_fields[move_number_field], INT16_MAX);
    return fields;
}

/// Throws game_errors.
BOARD BoardFrom(const std::string& fen) {
    BOARD board;
    std::uint32_t ignored_offset = 0;
    ReadFen(board, fen, ignored_offset);
    board.ResetPly();
    return board;
}

BOARD BoardFrom(const Fields& fields) {
    std::string fen;
    for (const std::string& field : fields) fen += field + ' ';
    return BoardFrom(fen);
}

/// Whether a position that stands without this field stands with it. Throws io_error if the field can't be read.
bool Allows(Fields fields, std::size_t field, const std::string& text) try {
    fields[field] = text;
    (void)BoardFrom(fields);
    return true;
} catch (const game_errors::invalid_position&) {
    return false;
}

/// A right to castle without its king or rook at home, and an en passant square that no pawn has jumped over, are left
/// out: interfaces write them, and the position is clear without. Throws game_errors.
BOARD LenientlyRead(Fields fields) {
    const std::string castling = std::exchange(fields[castling_field], usual_fields[castling_field]);
    const std::string en_passant = std::exchange(fields[en_passant_field], usual_fields[en_passant_field]);
    (void)BoardFrom(fields);
    std::string rights;
    for (const char right : castling) {
        if (Allows(fields, castling_field, std::string(1, right))) rights += right;
    }
    if (!rights.empty()) fields[castling_field] = rights;
    if (Allows(fields, en_passant_field, en_passant)) fields[en_passant_field] = en_passant;
    return BoardFrom(fields);
}

/// What `startpos` or `fen` with its fields says; nothing if that is no position.
std::optional<BOARD> ReadBoard(std::string_view kind, std::span<const std::string> fields) try {
    if (kind == start_word) return StartPosition();
    constexpr std::size_t fewest_fields = 2;
    if (fields.size() < fewest_fields) return std::nullopt;
    return LenientlyRead(AllFields(fields));
} catch (const game_errors::user_exception&) {
    return std::nullopt;
}

}  // namespace

BOARD StartPosition() { return BoardFrom(std::string(vocabulary::start_position_fen)); }

std::optional<PositionCommand> ReadPosition(std::span<const std::string> words) {
    const auto kind = std::find_if(words.begin(), words.end(),
                                   [](const std::string& word) { return word == start_word || word == fen_word; });
    if (kind == words.end()) return std::nullopt;
    const auto moves = std::find(kind, words.end(), moves_word);
    std::optional<BOARD> board = ReadBoard(*kind, {std::next(kind), moves});
    if (!board) return std::nullopt;
    PositionCommand command{.board = *board, .refused = {}};
    if (moves == words.end()) return command;
    for (const std::string& word : std::span(std::next(moves), words.end())) {
        const Move move = FindMove(word, command.board);
        if (move == INVALID) {
            command.refused = word;
            break;
        }
        PlayGameMove(command.board, move);
    }
    return command;
}

}  // namespace VorkaUci
