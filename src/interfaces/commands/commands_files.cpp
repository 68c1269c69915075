#include "interfaces/commands/commands_files.h"

#include <sstream>

#include "chess/pgn.h"
#include "frame/base/vocabulary.h"
#include "frame/base/whole_file.h"
#include "interfaces/protocols/connected_game.h"

namespace VorkaInterfaces {

PositionStatus Command_ReadFile::readPosition(ConnectedGame&, UserBoard& position) {
    std::ifstream file;
    if (!OpenForReading(path_, file)) refuse(vocabulary::could_not_open_file);
    try {
        read(file, position);
    } catch (const UserBoard::invalid_position&) {
        refuse(vocabulary::illegal_position);
    } catch (const UserBoard::invalid_move&) {
        refuse(vocabulary::illegal_move);
    } catch (const UserBoard::io_error&) {
        refuse(unreadable_);
    }
    return PositionStatus::read;
}

Command_ReadFEN::Command_ReadFEN(std::string input_line, std::string path)
    : Command_ReadFile(std::move(input_line), std::move(path), vocabulary::could_not_read_fen_file) {}

void Command_ReadFEN::read(std::istream& file, UserBoard& position) const {
    // A position is one line; more than this is none.
    constexpr std::size_t longest_fen = 1000;
    std::string fen(longest_fen, '\0');
    file.read(fen.data(), static_cast<std::streamsize>(fen.size()));
    fen.resize(static_cast<std::size_t>(file.gcount()));
    fen.resize(std::min(fen.find_first_of("\r\n"), fen.size()));
    position.SetBoardFromFen(fen);
}

Command_ReadPGN::Command_ReadPGN(std::string input_line, std::string path)
    : Command_ReadFile(std::move(input_line), std::move(path), vocabulary::could_not_read_pgn_file) {}

void Command_ReadPGN::read(std::istream& file, UserBoard& position) const {
    PGN_TAGS tags;
    ReadPgn(position, file, tags);
}

void Command_ReadPGN::onReplaced(ConnectedGame& game) { game.protocol().onGameLoaded(game.record()); }

void Command_WriteFile::work(ConnectedGame& game) {
    switch (ReplaceFile(path_, text(game))) {
        case FileOutcome::written:
            break;
        case FileOutcome::not_opened:
            refuse(vocabulary::could_not_open_file);
        case FileOutcome::not_written:
            refuse(unwritable_);
    }
}

Command_WriteFEN::Command_WriteFEN(std::string input_line, std::string path)
    : Command_WriteFile(std::move(input_line), std::move(path), vocabulary::could_not_write_fen_file) {}

std::string Command_WriteFEN::text(const ConnectedGame& game) const { return game.GetFen() + '\n'; }

Command_WritePGN::Command_WritePGN(std::string input_line, std::string path)
    : Command_WriteFile(std::move(input_line), std::move(path), vocabulary::could_not_write_pgn_file) {}

std::string Command_WritePGN::text(const ConnectedGame& game) const {
    PGN_TAGS tags;
    tags.white = game.player(white).name;
    tags.black = game.player(black).name;
    std::ostringstream stream;
    WritePgn(game.record(), stream, tags);
    return stream.str();
}

}  // namespace VorkaInterfaces
