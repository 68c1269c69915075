#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "bitbases/bitbases.h"
#include "bitbases/tablebases.h"
#include "chess/exchange.h"
#include "chess/notation.h"
#include "chess/user_board.h"
#include "evaluation/evaluate.h"
#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/base/wall_clock.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/command_families.h"
#include "interfaces/commands/jobs.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"
#include "interfaces/protocols/input_line.h"

/// Commands of the endgame databases, and the developer's tool that looks for the best square of a piece.
namespace VorkaInterfaces {

namespace {

// --- Tablebases ---

std::string_view LoadedOrNot(bool is_loaded) { return is_loaded ? std::string_view{} : vocabulary::bitbase_not; }

/// `tb`
class Command_DisplayTablebasesStatus : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override {
        const VorkaBitbases::Bitbases& bitbases = game.engine().bitbases;
        vlog << vocabulary::supported_databases << vocabulary::nalimov_tablebases << vocabulary::single_pawn_bitbases
             << vocabulary::two_pawns_bitbases << LoadedOrNot(bitbases.TwoPawnsLoaded()) << vocabulary::bitbase_loaded
             << ChecksumLine(bitbases.TwoPawnsState(), vocabulary::two_pawns_file) << vocabulary::rammed_pawn_bitbases
             << LoadedOrNot(bitbases.RammedPawnsLoaded()) << vocabulary::bitbase_loaded
             << ChecksumLine(bitbases.RammedPawnsState(), vocabulary::rammed_pawn_file);
        vlog.Flush();
    }
};

/// `tb type size path`
class Command_InitTablebases : public CheckedCommand {
  public:
    Command_InitTablebases(std::string input_line, std::string type, std::string size, std::string path)
        : CheckedCommand(std::move(input_line)),
          type_(std::move(type)),
          size_(std::move(size)),
          path_(std::move(path)) {}

  private:
    void check(ConnectedGame& game) override {
        if (type_ != vocabulary::tablebase_type_nalimov) refuse(vocabulary::could_not_parse_type);
        try {
            bytes_ = VorkaUtils::ParseSize(size_);
        } catch (const string_conversion_error&) {
            refuse(vocabulary::could_not_parse_new_size);
        }
        if (game.mode() != EngineMode::force) refuse(vocabulary::must_be_in_force_mode);
    }

    void work(ConnectedGame& game) override {
        try {
            Engine& engine = game.engine();
            NalimovTablebases::Initialize(engine.tablebases, bytes_, path_, engine.open_tablebases);
        } catch (const std::exception& error) {  // whatever a reader of files may throw, bad_alloc included
            throw IgnorableErrorCommand(ErrorCommand::Kind::error,
                                        std::string(vocabulary::could_not_initialize_nalimov) + error.what(), line);
        }
    }

    const std::string type_;
    const std::string size_;
    const std::string path_;
    std::uint64_t bytes_ = 0;
};

// --- Probing ---

void WriteTablebaseResult(const VorkaTablebases::Tablebases& tablebases, const BOARD& board) {
    int score = 0;
    switch (tablebases.Probe(board, score)) {
        case VorkaTablebases::ProbeResult::found:
            vlog << vocabulary::probe_result << score;
            break;
        case VorkaTablebases::ProbeResult::not_found:
            vlog << vocabulary::probe_not_found;
            break;
        case VorkaTablebases::ProbeResult::queued:
            vlog << vocabulary::probe_queued;
            break;
        default:
            vlog << vocabulary::probe_disabled;
    }
}

/// `probe fen`: what the databases know about a position that is not the game's.
class Command_Probe : public CheckedCommand {
  public:
    /// Throws ErrorCommand for a text that is no position.
    Command_Probe(std::string input_line, const std::string& fen) : CheckedCommand(std::move(input_line)) {
        try {
            position_.SetBoardFromFen(fen);
        } catch (const UserBoard::invalid_position&) {
            refuse(vocabulary::illegal_position);
        } catch (const UserBoard::io_error&) {
            refuse(vocabulary::input_inconsistent_with_fen_standard);
        }
    }

  private:
    void work(ConnectedGame& game) override {
        game.protocol().showBoard(position_, true);
        vlog << vocabulary::probing_bitbases;
        if (const std::optional<int> known = game.engine().bitbases.Probe(position_.board())) {
            vlog << vocabulary::probe_result << *known;
        } else {
            vlog << vocabulary::probe_not_found;
        }
        vlog << vocabulary::probing_tablebases;
        WriteTablebaseResult(game.engine().tablebases, position_.board());
        vlog << '\n';
        vlog.Flush();
    }

    UserBoard position_;
};

// --- Jobs ---

/// `generate [jobs]`
class Command_Generate : public CheckedCommand {
  public:
    Command_Generate(std::string input_line, std::string jobs)
        : CheckedCommand(std::move(input_line)), jobs_(std::move(jobs)) {}

  private:
    void work(ConnectedGame& game) override {
        try {
            if (jobs_.empty()) {
                listGenerationJobs();
            } else {
                for (const auto& job : generationJobs(jobs_)) job->run(game.engine());
                vlog << vocabulary::generation_finished << '\n';
                game.engine().bitbases.Init();
            }
        } catch (const AbstractJob::JobFailedException& error) {
            refuse(error.text());
        }
        vlog.Flush();
    }

    const std::string jobs_;
};

/// `verify [jobs]`
class Command_Verify : public CheckedCommand {
  public:
    Command_Verify(std::string input_line, std::string jobs)
        : CheckedCommand(std::move(input_line)), jobs_(std::move(jobs)) {}

  private:
    void work(ConnectedGame& game) override {
        const Timestamp start = Timestamp::Now();
        try {
            if (jobs_.empty()) {
                listVerificationJobs();
            } else {
                for (const auto& job : verificationJobs(jobs_)) job->run(game.engine());
                vlog << vocabulary::verification_finished
                     << VorkaUtils::ToString(ElapsedMilliseconds(start, Timestamp::Now()))
                     << vocabulary::milliseconds_total;
            }
        } catch (const AbstractJob::JobFailedException& error) {
            refuse(error.text());
        }
        vlog.Flush();
    }

    const std::string jobs_;
};

// --- The best square of a piece ---

/// A move to a worse square than this is no proposal, in centipawns.
constexpr int tolerated_loss = -10;

std::optional<Square> ManOn(const BOARD& board, std::string_view text) {
    if (text.size() != 2 || !IsFileChar(text[0]) || !IsRankChar(text[1])) return std::nullopt;
    const Square square = SquareFromChars(text[0], text[1]);
    if (board.squares[square] == 0) return std::nullopt;
    return square;
}

/// Where a man of this kind could ever get to.
Bitboard SquaresOfKind(const BOARD& board, Square from, Colour side) {
    const BITBOARD_TABLES& t = bitboard_tables;
    constexpr Bitboard all_squares = ~Bitboard{0};
    switch (std::abs(board.squares[from])) {
        case pawn:
            return t.ray_forward(side)[from];
        case king:
            return t.king_attacks[from];
        case bishop:
            return Has(light_squares, from) ? light_squares : ~light_squares;
        default:
            return all_squares;
    }
}

/// The position with a man moved to `to`; nothing if it is no legal one.
std::optional<BOARD> WithManOn(const BOARD& board, Square from, Square to) {
    std::int8_t squares[64];
    std::copy(std::begin(board.squares), std::end(board.squares), squares);
    squares[to] = std::exchange(squares[from], std::int8_t{0});
    BOARD changed;
    const int side = static_cast<int>(board.side_to_move);
    // A king or a rook that has left its home square has lost its castling rights.
    if (from == to) return board;
    if (changed.SetPosition(squares, side, 0, board.frame().castling)) return changed;
    if (changed.SetPosition(squares, side, 0, 0)) return changed;
    return std::nullopt;
}

/// Whether the man would be lost where it goes, if going there is a move of the side on move.
bool IsLostOn(const BOARD& board, Square from, Square to, Colour side) {
    if (from == to || side != board.mover()) return false;
    Bitboard touched = 0;
    return ExchangeScore(MakeWord(from, to, std::abs(board.squares[from])), board, touched) < tolerated_loss;
}

void WriteSquare(std::string_view text, Square square, int value) {
    vlog << text << SquareToString(square) << vocabulary::optimize_value << value << ")\n";
}

void FindBestSquare(const BOARD& board, Square from, int personality, Engine& engine) {
    const Colour side = board.squares[from] > 0 ? white : black;
    int best_value = -infinity_bound;
    Square best = from;
    for (Bitboard left = (SquaresOfKind(board, from, side) & ~board.occupied) | Bit(from); left != 0;) {
        const Square to = TakeNextBit(left);
        const std::optional<BOARD> changed = WithManOn(board, from, to);
        if (!changed || IsLostOn(board, from, to, side)) continue;
        const int value = evaluate_for_display(*changed, personality, engine.tables, engine.bitbases);
        if (value <= best_value) continue;
        best_value = value;
        best = to;
        WriteSquare(vocabulary::optimize_new_best_square, best, best_value);
    }
    WriteSquare(vocabulary::optimize_best_square, best, best_value);
}

/// `optimize_piece`: reads a square from standard input.
class Command_OptimizePiece : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        if (!game.IsPositionValid()) refuse(vocabulary::command_not_legal_now);
    }

    void work(ConnectedGame& game) override {
        vlog << vocabulary::optimize_piece;
        vlog.Flush();
        if (const std::optional<Square> square = ManOn(game.board(), readInputLine())) {
            FindBestSquare(game.board(), *square, game.protocol().personality, game.engine());
        } else {
            vlog << vocabulary::optimize_invalid_square;
        }
        vlog.Flush();
    }
};

constexpr auto MakeTb = MakeDisplayOrChange<Command_DisplayTablebasesStatus, Command_InitTablebases, Word, Word, Rest>;

// clang-format off
constexpr Keyword keywords[] = {
    {"tb",             one_or_at_least_four, MakeTb,                       at_start_in_force_mode, {480, help_texts::tb}},
    {"probe",          at_least_two,         Make<Command_Probe, Rest>,    at_start,               {210, help_texts::probe}},
    {"generate",       any,                  Make<Command_Generate, Rest>, at_start_in_force_mode, {80, help_texts::generate}},
    {"verify",         any,                  Make<Command_Verify, Rest>,   at_start_in_force_mode, {340, help_texts::verify}},
    {"optimize_piece", any,                  Make<Command_OptimizePiece>},
};
// clang-format on

}  // namespace

std::span<const Keyword> databaseKeywords() { return keywords; }

}  // namespace VorkaInterfaces
