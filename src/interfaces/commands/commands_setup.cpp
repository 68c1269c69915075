#include "interfaces/commands/commands_setup.h"

#include "frame/base/logfile.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"
#include "interfaces/protocols/input_line.h"

namespace VorkaInterfaces {

void Command_SetSide::check(ConnectedGame& game) {
    if (side_ == game.side_to_move()) return;
    try {
        UserBoard flipped = game;
        flipped.ChangeSide();
    } catch (const UserBoard::invalid_board_after_changing_side&) {
        refuse(vocabulary::cannot_change_sides);
    }
}

void Command_SetSide::work(ConnectedGame& game) {
    game.abortSearch(true);
    if (side_ != game.side_to_move()) {
        game.ChangeSide();
        game.prediction = no_prediction;
    }
    game.clock.stopClock();
    game.setPlayers(game.defaultHuman(), game.defaultEngine(true), false);
}

void Command_SetupBoardCommands::check(ConnectedGame& game) {
    if (game.engineMode != EngineMode::force && game.engineMode != EngineMode::analyze) {
        refuse(vocabulary::must_be_in_force_mode);
    }
    status_ = readPosition(game, position_);
}

void Command_SetupBoardCommands::work(ConnectedGame& game) {
    switch (status_) {
        case PositionStatus::read:
            replaceGame(game);
            break;
        case PositionStatus::illegal:
            answerIllegalPosition(game);
            break;
        case PositionStatus::given_up:
            game.protocol().sendEditModeAborted();
            break;
    }
}

void Command_SetupBoardCommands::replaceGame(ConnectedGame& game) {
    game.abortSearch(true);
    game.replaceGame(position_);
    onReplaced(game);
    if (game.engineMode == EngineMode::analyze) finishWithSearch(game, SearchPurpose::analyze);
}

void Command_SetupBoardCommands::answerIllegalPosition(ConnectedGame& game) {
    if (game.protocol().claimsResultItself()) {
        game.protocol().sendCommandIgnored(vocabulary::illegal_position);
        return;
    }
    // The interface believes in its position. Playing on in the old one would be wrong moves, so there is none any
    // more.
    game.abortSearch(true);
    game.protocol().tellUser(std::string(vocabulary::illegal_position));
    game.SetInvalid();
    game.prediction = no_prediction;
    // Analyze mode goes on without a position, so that `exit` still leaves it.
    if (game.engineMode == EngineMode::analyze) finishWithSearch(game, SearchPurpose::analyze);
}

PositionStatus Command_Setboard::readPosition(ConnectedGame&, UserBoard& position) {
    try {
        position.SetBoardFromFen(fen_);
    } catch (const UserBoard::invalid_position&) {
        return PositionStatus::illegal;
    } catch (const UserBoard::io_error&) {
        refuse(vocabulary::input_inconsistent_with_fen_standard);
    }
    return PositionStatus::read;
}

PositionStatus Command_Edit::readPosition(ConnectedGame& game, UserBoard& position) {
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

std::optional<PositionStatus> Command_Edit::confirm(BasicProtocol& protocol, UserBoard& position) {
    if (edit_board_.IsValid()) {
        position.SetBoard(edit_board_.GetBoard());
        return PositionStatus::read;
    }
    // A person can mend the position; an interface has sent all that it has.
    if (!protocol.claimsResultItself()) return PositionStatus::illegal;
    protocol.sendCommandIgnored(vocabulary::illegal_position);
    return std::nullopt;
}

}  // namespace VorkaInterfaces
