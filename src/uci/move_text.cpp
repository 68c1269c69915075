#include "uci/move_text.h"

#include <algorithm>
#include <vector>

#include "chess/move_generator.h"
#include "chess/notation.h"
#include "frame/base/text_utilities.h"

namespace VorkaUci {

namespace {

constexpr std::string_view promotion_letters = " pnbrqk";  // by piece type

bool IsSquare(char file, char rank) { return IsFileChar(file) && IsRankChar(rank); }

}  // namespace

std::string MoveText(Move move) {
    if (move == INVALID) return std::string(null_move_text);
    std::string text = SquareToString(FromSquare(move)) + SquareToString(ToSquare(move));
    if (const int promotion = PromotionPiece(move); promotion != no_piece) {
        text += promotion_letters[static_cast<std::size_t>(promotion)];
    }
    return text;
}

Move FindMove(std::string_view text, const BOARD& board) {
    if (!LooksLikeMove(text)) return INVALID;
    const std::string wanted = VorkaUtils::ToLower(text);
    std::vector<Move> moves;
    GenerateLegalMoves(board, moves);
    const auto found = std::find_if(moves.begin(), moves.end(), [&](Move move) { return MoveText(move) == wanted; });
    return found == moves.end() ? INVALID : *found;
}

bool LooksLikeMove(std::string_view word) {
    if (word.size() != 4 && word.size() != 5) return false;
    if (!IsSquare(word[0], word[1]) || !IsSquare(word[2], word[3])) return false;
    constexpr std::string_view promotions = "nbrqNBRQ";
    return word.size() == 4 || promotions.find(word[4]) != std::string_view::npos;
}

}  // namespace VorkaUci
