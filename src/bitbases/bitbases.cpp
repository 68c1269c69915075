#include "bitbases/bitbases.h"

#include <cstddef>
#include <memory>

#include "bitbases/single_pawn_bitbases_data.h"
#include "chess/bitboard_tables.h"
#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/vocabulary.h"

// A position is turned until it looks as the table's: colours are exchanged by XOR 56 on every square, left and right
// by XOR 7, which pawn endings allow because nobody castles in them. An example for two pawns: Black to move with its
// pawn on g4, White's on a3. XOR 56 makes the pawn of the side to move g5, White to move; g is right of the middle, so
// XOR 7 makes it b5, and the enemy pawn a3 becomes a6, then h6.

namespace VorkaBitbases {

namespace {

using VorkaUtils::FileInMemory;

/// Why a file can't be used; nothing if there is no more to it than that.
std::string_view ReasonOf(const FileState& state) {
    if (state.checksum == Checksum::does_not_fit) return vocabulary::its_checksum_does_not_fit;
    if (state.failure == FileInMemory::Failure::no_regular_file) return vocabulary::it_is_no_regular_file;
    if (state.failure == FileInMemory::Failure::other_size) return vocabulary::it_has_another_size;
    if (state.failure == FileInMemory::Failure::not_read) return vocabulary::it_cannot_be_read;
    return {};
}

std::unique_ptr<FileInMemory> ReadFile(const std::string& path, std::uint32_t size, FileState& state) {
    state = {};
    try {
        auto file = std::make_unique<FileInMemory>(path, size);
        state.checksum = TestChecksum(path, {file->address(), file->size()});
        if (state.checksum != Checksum::does_not_fit) return file;
    } catch (const FileInMemory::IOException& error) {
        state.failure = error.failure();
    }
    throw CouldNotOpenFileException(CouldNotOpen(path), ReasonOf(state));
}

int Read(const FileInMemory& bitbase, const Cell& cell) { return bitbase.address()[cell.offset] >> cell.shift & 3; }

bool IsOnRightHalf(Square s) { return FileOf(s) > 3; }

// A sure win is worth this much, and four points more for each rank that the pawn has gone. A sure loss in the file of
// two pawns is worth as much for the opponent, and counts the ranks that the own pawn still has to go.
constexpr int single_pawn_win = 32687;
constexpr int pawns_win = 32667;
/// Less four points for each king step from the weak king to the blocked pawn.
constexpr int rammed_pawns_loss = 32637;
constexpr int points_for_rank = 4;

Square OnlyPawn(const BOARD& board, Colour side) { return FindLowestBit(board.side(side).pawns); }

/// One file of the executable's directory: what the log says when it is there, missing, or unusable.
struct BitbaseFile {
    std::string_view name, found, not_found, not_found_end, failed;
    void (Bitbases::*load)(const std::string& path);
    const FileState& (Bitbases::*state)() const noexcept;
};
constexpr BitbaseFile bitbase_files[] = {
    {vocabulary::two_pawns_file, vocabulary::two_pawns_found, vocabulary::two_pawns_not_found,
     vocabulary::two_pawns_not_found_end, vocabulary::failed_to_open_two_pawns, &Bitbases::LoadTwoPawns,
     &Bitbases::TwoPawnsState},
    {vocabulary::rammed_pawn_file, vocabulary::rammed_pawn_found, vocabulary::rammed_pawn_not_found,
     vocabulary::rammed_pawn_not_found_end, vocabulary::failed_to_open_rammed_pawn, &Bitbases::LoadRammedPawns,
     &Bitbases::RammedPawnsState},
};

void LoadFrom(const std::string& directory, const BitbaseFile& file, Bitbases& bitbases) {
    const std::string path = directory + '/' + std::string(file.name);
    if (!FileExists(path)) {
        vlog << file.not_found << path << file.not_found_end;
        return;
    }
    try {
        (bitbases.*file.load)(path);
        vlog << file.found;
    } catch (const CouldNotOpenFileException&) {
        vlog << file.failed;
    }
    vlog << ChecksumLine((bitbases.*file.state)(), file.name);
}

}  // namespace

std::string CouldNotOpen(const std::string& path) {
    return std::string(vocabulary::could_not_open_bitbase_file).append(path) + '\'';
}

void Bitbases::Init() {
    two_pawns_state_ = rammed_pawns_state_ = {};
    {
        const EchoScope file_only(vlog, Echo::off);
        const std::string& directory = ExecutableDirectory();
        vlog << vocabulary::loading_bitbases << directory << vocabulary::loading_bitbases_end;
        for (const BitbaseFile& file : bitbase_files) LoadFrom(directory, file, *this);
        vlog << vocabulary::generic_bitbases_disabled;
    }
    vlog.Flush();
}

void Bitbases::LoadTwoPawns(const std::string& path) { two_pawns_ = ReadFile(path, two_pawns_size, two_pawns_state_); }
void Bitbases::LoadRammedPawns(const std::string& path) {
    rammed_pawns_ = ReadFile(path, rammed_pawn_size, rammed_pawns_state_);
}

std::string ChecksumLine(const FileState& state, std::string_view name) {
    std::string_view text;
    if (state.checksum == Checksum::missing) text = vocabulary::checksum_missing;
    if (state.checksum == Checksum::does_not_fit) text = vocabulary::checksum_does_not_fit;
    if (text.empty()) return {};
    return std::string(text).append(name).append(vocabulary::checksum_ending) + '\n';
}

std::string Complaint(const FileState& state, const std::string& folder, std::string_view name) {
    if (!state.failure && state.checksum != Checksum::does_not_fit) return ChecksumLine(state, name);
    std::string text = CouldNotOpen((folder + '/').append(name));
    if (const std::string_view reason = ReasonOf(state); !reason.empty()) text.append(" (").append(reason).append(")");
    return text;
}

bool IsSinglePawnWin(Colour to_move, Colour pawn_side, Square pawn, Square white_king, Square black_king) noexcept {
    const Square kings[2] = {white_king, black_king};
    const Square strong_king = Seen(pawn_side, kings[pawn_side]);
    const Square weak_king = Seen(pawn_side, kings[Opponent(pawn_side)]);
    const int weak_to_move = to_move == pawn_side ? 0 : 1;
    const auto word = static_cast<std::size_t>((weak_to_move * 64 + Seen(pawn_side, pawn)) * 64 + strong_king);
    return !Has(single_pawn_bitbase[word], weak_king);
}

int ProbeSinglePawn(const BOARD& board) noexcept {
    const Colour pawn_side = board.side(white).pawns != 0 ? white : black;
    const Square pawn = OnlyPawn(board, pawn_side);
    const Colour to_move = board.mover();
    if (!IsSinglePawnWin(to_move, pawn_side, pawn, board.side(white).king_square, board.side(black).king_square)) {
        return 0;
    }
    const int score = points_for_rank * RankOf(Seen(pawn_side, pawn)) + single_pawn_win;
    return to_move == pawn_side ? score : -score;
}

int Bitbases::ProbeTwoPawnsRaw(Colour to_move, Square white_king, Square black_king, Square white_pawn,
                               Square black_pawn) const noexcept {
    const Square kings[2] = {white_king, black_king};
    const Square pawns[2] = {white_pawn, black_pawn};
    const Colour enemy = Opponent(to_move);
    const bool is_mirrored = IsOnRightHalf(pawns[to_move]);
    const auto turned = [&](Square s) { return is_mirrored ? MirrorHorizontally(Seen(to_move, s)) : Seen(to_move, s); };
    return Read(*two_pawns_, TwoPawnsCell(turned(pawns[to_move]), turned(pawns[enemy]), turned(kings[to_move]),
                                          turned(kings[enemy])));
}

int Bitbases::ProbeTwoPawns(const BOARD& board) const noexcept {
    const Colour to_move = board.mover();
    const int result = ProbeTwoPawnsRaw(to_move, board.side(white).king_square, board.side(black).king_square,
                                        OnlyPawn(board, white), OnlyPawn(board, black));
    const int rank = RankOf(Seen(to_move, OnlyPawn(board, to_move)));
    if (result == stored_loss) return -(points_for_rank * (7 - rank) + pawns_win);
    return result == stored_win ? points_for_rank * rank + pawns_win : 0;
}

int Bitbases::ProbeRammedPawns(const BOARD& board) const noexcept {
    const Colour strong = PopCount(board.side(black).pawns) == 1 ? white : black;
    const Colour weak = Opponent(strong);
    const Square blocked = OnlyPawn(board, weak) - Forward(strong);
    const bool is_mirrored = IsOnRightHalf(blocked);
    const auto turned = [&](Square s) { return is_mirrored ? MirrorHorizontally(Seen(strong, s)) : Seen(strong, s); };
    const Square front = turned(blocked);
    const Square other = turned(FindLowestBit(board.side(strong).pawns & ~Bit(blocked)));
    const Square strong_king = turned(board.side(strong).king_square);
    const Square weak_king = turned(board.side(weak).king_square);
    const bool strong_to_move = board.side_to_move == strong;
    const int result =
        Read(*rammed_pawns_, RammedPawnsCell(front, other, strong_king, weak_king, strong_to_move ? 0 : 1));
    int score = 0;
    if (result == stored_loss) score = points_for_rank * bitboard_tables.distance[weak_king][front] - rammed_pawns_loss;
    if (result == stored_win) score = points_for_rank * RankOf(other) + pawns_win;
    return strong_to_move ? score : -score;
}

std::optional<int> Bitbases::Probe(const BOARD& board) const noexcept {
    if (board.total_material != 0 || board.frame().castling != 0) return std::nullopt;
    const int of_white = PopCount(board.side(white).pawns);
    const int of_black = PopCount(board.side(black).pawns);
    switch (of_white + of_black) {
        case 1:
            return ProbeSinglePawn(board);
        case 2:
            if (!TwoPawnsLoaded() || of_white != of_black) return std::nullopt;
            return ProbeTwoPawns(board);
        case 3:
            if (!RammedPawnsLoaded() || !HasRam(board) || board.frame().en_passant_square != 0) return std::nullopt;
            return ProbeRammedPawns(board);
        default:
            return std::nullopt;
    }
}

}  // namespace VorkaBitbases
