#include <tbprobe.h>

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "chess/move_generator.h"
#include "frame/base/os_dependent.h"
#include "search/tables/score.h"
#include "uci/syzygy/syzygy.h"

namespace VorkaUci {

namespace {

int Men(const BOARD& board) { return std::popcount(board.occupied); }

bool IsWhite(const BOARD& board) { return board.mover() == white; }

/// The sets of men as the library takes them, and what else a probe needs.
template <class Probe, class... More>
unsigned Ask(const BOARD& board, Probe probe, More... more) {
    const SIDE_PIECES& w = board.white_pieces();
    const SIDE_PIECES& b = board.black_pieces();
    const Bitboard kings = Bitboard{1} << w.king_square | Bitboard{1} << b.king_square;
    return probe(w.all, b.all, kings, w.queens | b.queens, w.rooks | b.rooks, w.bishops | b.bishops,
                 w.knights | b.knights, w.pawns | b.pawns, board.frame().fifty_counter, board.frame().castling,
                 board.frame().en_passant_square, IsWhite(board), more...);
}

class Source final : public VorkaTablebases::TableSource {
  public:
    VorkaTablebases::ProbeResult Probe(const BOARD& board, int& score) noexcept override {
        using enum VorkaTablebases::ProbeResult;
        if (std::cmp_greater(Men(board), TB_LARGEST) || board.frame().fifty_counter != 0) return not_found;
        const unsigned result = Ask(board, tb_probe_wdl);
        if (result == TB_RESULT_FAILED) return not_found;
        constexpr int win = infinity_bound - plies_of_table_win;
        score = result == TB_WIN ? win : result == TB_LOSS ? -win : 0;
        return found;
    }
    bool KnowsNoDistances() const noexcept override { return true; }
    bool UseCache(std::int32_t /*bytes*/) noexcept override { return true; }
};

/// The library's promotions count from the queen down.
int PromotionOf(unsigned result) {
    constexpr std::array pieces{no_piece, queen, rook, bishop, knight};
    return pieces[std::min<std::size_t>(TB_GET_PROMOTES(result), pieces.size() - 1)];
}

}  // namespace

bool HasSyzygy() { return true; }

int SyzygyTables::Open(const std::string& path) {
    men_ = 0;
    if (path.empty()) return 0;
    // The library must not be told to close: it does not forget how many men it knew, and the next probe reads tables
    // that are gone. Another path it can be told: it puts away the tables it has used, and says "munmap" on standard
    // error for each, since it takes success for failure there.
    if (path != opened_) {
        const SilentStandardError silence;
        opened_ = tb_init(path.c_str()) ? path : std::string();
    }
    if (!opened_.empty()) men_ = static_cast<int>(TB_LARGEST);
    return men_;
}

std::unique_ptr<VorkaTablebases::TableSource> SyzygyTables::MakeSource() { return std::make_unique<Source>(); }

std::vector<TableMove> SyzygyTables::RootMoves(const BOARD& board) const {
    if (Men(board) > men_ || board.frame().castling != 0) return {};
    std::array<unsigned, TB_MAX_MOVES> results;
    if (Ask(board, tb_probe_root, results.data()) == TB_RESULT_FAILED) return {};
    std::vector<Move> legal;
    GenerateLegalMoves(board, legal);
    std::vector<TableMove> known;
    for (const unsigned* result = results.data(); *result != TB_RESULT_FAILED; ++result) {
        const auto is_that = [&](Move move) {
            return FromSquare(move) == static_cast<Square>(TB_GET_FROM(*result)) &&
                   ToSquare(move) == static_cast<Square>(TB_GET_TO(*result)) &&
                   PromotionPiece(move) == PromotionOf(*result);
        };
        const auto move = std::find_if(legal.begin(), legal.end(), is_that);
        if (move == legal.end()) continue;
        known.push_back({*move, static_cast<TableResult>(TB_GET_WDL(*result)), static_cast<int>(TB_GET_DTZ(*result))});
    }
    return known;
}

}  // namespace VorkaUci
