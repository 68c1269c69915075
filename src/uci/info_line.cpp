#include "uci/info_line.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "chess/move_generator.h"
#include "search/tables/score.h"
#include "uci/move_text.h"
#include "uci/syzygy/root_choice.h"
#include "uci/uci_texts.h"

namespace VorkaUci {

namespace {

/// A win that is known, not found, in centipawns, less a point for each half move.
constexpr int known_win = 10000;

std::string Head(const SearchInfo& info, int score, std::string_view bound) {
    return std::string(uci_texts::info_depth) + std::to_string(info.depth) + " seldepth " +
           std::to_string(std::max<int>(info.selective_depth, info.depth)) + " multipv " +
           std::to_string(info.line + 1) + " score " + ScoreText(score) + std::string(bound) + ' ';
}

}  // namespace

std::string ScoreText(int score) {
    if (std::abs(score) < mate_score_limit) return "cp " + std::to_string(score);
    const int plies = infinity_bound - std::abs(score);
    const int sign = score < 0 ? -1 : 1;
    if (plies > furthest_mate) return "cp " + std::to_string(sign * (known_win - plies));
    return "mate " + std::to_string(sign * ((plies + 1) / 2));
}

std::string StatusText(const SearchInfo& info, const HashTables& tables) {
    const auto milliseconds = static_cast<std::uint64_t>(std::max<std::int64_t>(info.Milliseconds(), 0));
    const std::uint64_t speed = info.nodes * 1000 / std::max<std::uint64_t>(milliseconds, 1);
    return "nodes " + std::to_string(info.nodes) + " nps " + std::to_string(speed) + " hashfull " +
           std::to_string(tables.transposition.PermilleInUse()) + " tbhits " +
           std::to_string(info.statistics.endings_known) + " time " + std::to_string(milliseconds);
}

std::string ThinkingLine(const SearchInfo& info, const HashTables& tables) {
    std::string text = Head(info, info.score, "") + StatusText(info, tables);
    if (info.known_moves == 0) return text;
    text += " pv";
    for (const auto& [move, ignored_san] : std::span(info.principal_variation).first(info.known_moves)) {
        text += ' ' + MoveText(move);
    }
    return text;
}

std::string BoundLine(const SearchInfo& info, const HashTables& tables, int score, ScoreBound bound, const BOARD& root,
                      std::span<const Move> line) {
    std::string text = Head(info, score, bound == ScoreBound::at_least ? " lowerbound" : " upperbound");
    text += StatusText(info, tables) + " pv";
    BOARD board = root;
    for (const Move move : line) {
        if (!VerifyMove(move, board)) break;
        text += ' ' + MoveText(move);
        board.MakeMove(move);
    }
    return text;
}

std::string CurrentMoveLine(const SearchInfo& info, Move move) {
    return std::string(uci_texts::info_depth) + std::to_string(info.depth) + " currmove " + MoveText(move) +
           " currmovenumber " + std::to_string(info.root_moves - info.moves_to_search + 1);
}

}  // namespace VorkaUci
