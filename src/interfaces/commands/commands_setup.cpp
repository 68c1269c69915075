#include "interfaces/commands/command_families.h"

#include <optional>
#include <string>
#include <utility>

#include "chess/user_board.h"
#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/commands/setup_command.h"
#include "interfaces/protocols/basic_protocol.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"
#include "interfaces/protocols/input_line.h"

/// Commands that put another position on the board.
namespace VorkaInterfaces {

namespace {

/// Gives the move to one side, and the other side to the engine.
class Command_SetSide : public CheckedCommand {
  public:
    Command_SetSide(std::string input_line, Colour side) : CheckedCommand(std::move(input_line)), side_(side) {}

  private:
    void check(ConnectedGame& game) override {
        if (side_ == game.side_to_move()) return;
        try {
            UserBoard flipped = game.record();
            flipped.ChangeSide();
        } catch (const UserBoard::invalid_board_after_changing_side&) {
            refuse(vocabulary::cannot_change_sides);
        }
    }

    void work(ConnectedGame& game) override { game.giveMoveTo(side_); }
    const Colour side_;
};

/// `white`
class Command_White : public Command_SetSide {
  public:
    explicit Command_White(std::string input_line) : Command_SetSide(std::move(input_line), white) {}
};

/// `black`
class Command_Black : public Command_SetSide {
  public:
    explicit Command_Black(std::string input_line) : Command_SetSide(std::move(input_line), black) {}
};

/// `setboard fen`
class Command_Setboard : public Command_SetupBoardCommands {
  public:
    Command_Setboard(std::string input_line, std::string fen)
        : Command_SetupBoardCommands(std::move(input_line)), fen_(std::move(fen)) {}

  private:
    [[nodiscard]] PositionStatus readPosition(ConnectedGame&, UserBoard& position) override {
        try {
            position.SetBoardFromFen(fen_);
        } catch (const UserBoard::invalid_position&) {
            return PositionStatus::illegal;
        } catch (const UserBoard::io_error&) {
            refuse(vocabulary::input_inconsistent_with_fen_standard);
        }
        return PositionStatus::read;
    }

    const std::string fen_;
};

/// `edit`: a dialogue, line by line, that blocks the program; a running analysis waits meanwhile.
class Command_Edit : public Command_SetupBoardCommands {
  public:
    using Command_SetupBoardCommands::Command_SetupBoardCommands;

  private:
    [[nodiscard]] PositionStatus readPosition(ConnectedGame& game, UserBoard& position) override {
        edit_board_.LoadFrom(game.board());
        for (;;) {
            game.protocol().sendEditPrompt();
            try {
                if (const auto status = readAndObey(game, position)) return *status;
            } catch (const ErrorCommand& error) {
                game.protocol().sendError(error.text());
            }
        }
    }

    /// Carries out one line. A returned status ends the dialogue.
    [[nodiscard]] std::optional<PositionStatus> readAndObey(ConnectedGame& game, UserBoard& position);
    [[nodiscard]] std::optional<PositionStatus> confirm(BasicProtocol& protocol, UserBoard& position) {
        if (edit_board_.IsValid()) {
            position.SetBoard(edit_board_.GetBoard());
            return PositionStatus::read;
        }
        // A person can mend the position; an interface has sent all that it has.
        if (!protocol.claimsResultItself()) return PositionStatus::illegal;
        protocol.sendCommandIgnored(vocabulary::illegal_position);
        return std::nullopt;
    }

    EditBoard edit_board_;
};

std::optional<PositionStatus> Command_Edit::readAndObey(ConnectedGame& game, UserBoard& position) {
    const auto error = [](std::string_view reason, const std::string& input) {
        return ErrorCommand(ErrorCommand::Kind::error, reason, input);
    };
    BasicProtocol& protocol = game.protocol();
    std::string input;
    Square square = a1;
    PieceType piece = no_piece;
    switch (readEditCommand(input, square, piece)) {
        case EditCommand::clear:
            edit_board_.Clear();
            protocol.onEditBoardChanged(edit_board_);
            break;
        case EditCommand::switch_colour:
            edit_board_.SetColour(Opponent(edit_board_.edit_colour()));
            break;
        case EditCommand::switch_side:
            edit_board_.SetSide(Opponent(edit_board_.side()));
            protocol.onEditBoardChanged(edit_board_);
            break;
        case EditCommand::place:
            edit_board_.SetSquare(square, piece);
            protocol.onEditBoardChanged(edit_board_);
            break;
        case EditCommand::done:
            return confirm(protocol, position);
        case EditCommand::cancel:
            return PositionStatus::given_up;
        case EditCommand::verify:
            vlog << vocabulary::current_position_is << ' '
                 << (edit_board_.IsValid() ? vocabulary::position_valid : vocabulary::position_invalid) << '\n';
            vlog.Flush();
            break;
        case EditCommand::display:
            edit_board_.Print(true);
            vlog.Flush();
            break;
        case EditCommand::quit:
            throw quit_command_received_exception{};
        case EditCommand::help:
            protocol.showEditHelp();
            break;
        case EditCommand::unknown:
            throw error(vocabulary::unknown_command, input);
    }
    return std::nullopt;
}

// clang-format off
constexpr Keyword keywords[] = {
    {"white",    alone,        Make<Command_White>,          prompt_only,            {390, help_texts::white}},
    {"black",    alone,        Make<Command_Black>,          prompt_only,            {380, help_texts::black}},
    {"setboard", at_least_two, Make<Command_Setboard, Rest>, at_start_in_force_mode, {460, help_texts::setboard}},
    {"edit",     alone,        Make<Command_Edit>,           prompt_only,            {450, help_texts::edit}},
};
// clang-format on

}  // namespace

std::span<const Keyword> setupKeywords() { return keywords; }

}  // namespace VorkaInterfaces
