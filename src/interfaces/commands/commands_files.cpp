#include "interfaces/commands/command_families.h"

#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include "chess/pgn.h"
#include "frame/base/vocabulary.h"
#include "frame/base/whole_file.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/commands/setup_command.h"
#include "interfaces/protocols/connected_game.h"

/// Commands that read and write positions and games.
namespace VorkaInterfaces {

namespace {

/// Replaces the game with a position or a game from a file.
class Command_ReadFile : public Command_SetupBoardCommands {
  public:
    Command_ReadFile(std::string input_line, std::string path, std::string_view unreadable)
        : Command_SetupBoardCommands(std::move(input_line)), path_(std::move(path)), unreadable_(unreadable) {}

  private:
    [[nodiscard]] PositionStatus readPosition(ConnectedGame&, UserBoard& position) final {
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

    /// May throw the exceptions of UserBoard.
    virtual void read(std::istream& file, UserBoard& position) const = 0;

    const std::string path_;
    const std::string_view unreadable_;  ///< the error for a file that holds something else
};

/// `read_fen file`
class Command_ReadFEN : public Command_ReadFile {
  public:
    Command_ReadFEN(std::string input_line, std::string path)
        : Command_ReadFile(std::move(input_line), std::move(path), vocabulary::could_not_read_fen_file) {}

  private:
    void read(std::istream& file, UserBoard& position) const override {
        // A position is one line; a longer text is not a position.
        constexpr std::size_t longest_fen = 1000;
        std::string fen(longest_fen, '\0');
        file.read(fen.data(), static_cast<std::streamsize>(fen.size()));
        fen.resize(static_cast<std::size_t>(file.gcount()));
        fen.resize(std::min(fen.find_first_of("\r\n"), fen.size()));
        position.SetBoardFromFen(fen);
    }
};

/// `read_pgn file`: the game stands at its start, and `next` plays its moves.
class Command_ReadPGN : public Command_ReadFile {
  public:
    Command_ReadPGN(std::string input_line, std::string path)
        : Command_ReadFile(std::move(input_line), std::move(path), vocabulary::could_not_read_pgn_file) {}

  private:
    void read(std::istream& file, UserBoard& position) const override {
        PGN_TAGS tags;
        ReadPgn(position, file, tags);
    }

    void onReplaced(ConnectedGame& game) override { game.protocol().onGameLoaded(game.record()); }
};

/// Writes a file, whole or not at all.
class Command_WriteFile : public CheckedCommand {
  public:
    Command_WriteFile(std::string input_line, std::string path, std::string_view unwritable)
        : CheckedCommand(std::move(input_line)), path_(std::move(path)), unwritable_(unwritable) {}

  private:
    void work(ConnectedGame& game) final {
        switch (ReplaceFile(path_, text(game))) {
            case FileOutcome::written:
                break;
            case FileOutcome::not_opened:
                refuse(vocabulary::could_not_open_file);
            case FileOutcome::not_written:
                refuse(unwritable_);
        }
    }

    [[nodiscard]] virtual std::string text(const ConnectedGame& game) const = 0;

    const std::string path_;
    const std::string_view unwritable_;  ///< the error for a full device
};

/// `write_fen file`
class Command_WriteFEN : public Command_WriteFile {
  public:
    Command_WriteFEN(std::string input_line, std::string path)
        : Command_WriteFile(std::move(input_line), std::move(path), vocabulary::could_not_write_fen_file) {}

  private:
    [[nodiscard]] std::string text(const ConnectedGame& game) const override { return game.GetFen() + '\n'; }
};

/// `write_pgn file`
class Command_WritePGN : public Command_WriteFile {
  public:
    Command_WritePGN(std::string input_line, std::string path)
        : Command_WriteFile(std::move(input_line), std::move(path), vocabulary::could_not_write_pgn_file) {}

  private:
    [[nodiscard]] std::string text(const ConnectedGame& game) const override {
        PGN_TAGS tags;
        tags.white = game.player(white).name;
        tags.black = game.player(black).name;
        std::ostringstream stream;
        WritePgn(game.record(), stream, tags);
        return stream.str();
    }
};

// clang-format off
constexpr Keyword keywords[] = {
    {"read_fen",  exactly(2), Make<Command_ReadFEN, Word>,  at_start_in_force_mode, {250, help_texts::read_fen}},
    {"read_pgn",  exactly(2), Make<Command_ReadPGN, Word>,  at_start_in_force_mode, {260, help_texts::read_pgn}},
    {"write_fen", exactly(2), Make<Command_WriteFEN, Word>, prompt_only,            {360, help_texts::write_fen}},
    {"write_pgn", exactly(2), Make<Command_WritePGN, Word>, prompt_only,            {370, help_texts::write_pgn}},
};
// clang-format on

}  // namespace

std::span<const Keyword> fileKeywords() { return keywords; }

}  // namespace VorkaInterfaces
