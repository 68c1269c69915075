#include "interfaces/commands/commands_game.h"

#include <algorithm>

#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"

namespace VorkaInterfaces {

namespace {

/// Moves may be taken back and made again only where the engine does not play.
[[nodiscard]] bool EngineLeavesBoardAlone(const ConnectedGame& game) {
    return game.mode() == EngineMode::force || game.mode() == EngineMode::analyze;
}

[[nodiscard]] GameResult ResultOf(const std::string& word) {
    for (const GameResult result :
         {GameResult::white_wins, GameResult::black_wins, GameResult::draw, GameResult::aborted}) {
        if (word == ResultText(result)) return result;
    }
    return GameResult::running;
}

/// What an interface writes behind a result is free text; some words in it give the reason away.
[[nodiscard]] GameEndReason ReasonOf(GameResult result, const std::string& comment) {
    const std::string text = VorkaUtils::ToLower(comment);
    const auto holds = [&](std::string_view word) { return text.find(word) != std::string::npos; };
    if (result == GameResult::aborted) return GameEndReason::aborted;
    // "mutal": the misspelling is what is looked for, so that "mutual" alone tells nothing: deliberate.
    if (result == GameResult::draw && (holds("agree") || holds("mutal"))) return GameEndReason::agreed_draw;
    if (holds("time")) return GameEndReason::flag_fell;
    if (holds("resign")) return GameEndReason::resignation;
    return GameEndReason::unknown;
}

}  // namespace

// --- Who plays ---

void Command_New::work(ConnectedGame& game) {
    game.newGame();
    if (game.mode() == EngineMode::analyze) finishWithSearch(game, SearchKind::analyze);
}

void Command_Force::work(ConnectedGame& game) { game.stopPlaying(); }

void Command_Go::check(ConnectedGame& game) {
    if (game.runningSearch() == SearchKind::normal || game.runningSearch() == SearchKind::analyze) {
        refuse(vocabulary::command_not_legal_now);
    }
}

void Command_Go::work(ConnectedGame& game) {
    game.playSideOnMove();
    finishWithSearch(game, SearchKind::normal);
}

void Command_Playother::check(ConnectedGame& game) {
    if (game.IsGameOver()) refuse(vocabulary::game_over);
}

void Command_Playother::work(ConnectedGame& game) {
    game.playOtherSide();
    finished = true;
    if (game.pondering()) game.startPondering();
}

void Command_Analyze::check(ConnectedGame& game) {
    if (!game.IsGameOver() || game.protocol().analyzesFinishedGames()) return;
    game.protocol().sendCommandIgnored(vocabulary::game_over);
    finished = true;
}

void Command_Analyze::work(ConnectedGame& game) {
    game.startAnalysis();
    finishWithSearch(game, SearchKind::analyze);
}

void Command_Exit::check(ConnectedGame& game) {
    if (game.runningSearch() != SearchKind::analyze) refuse(vocabulary::must_be_in_analyze_mode);
}

void Command_Exit::work(ConnectedGame& game) { game.leaveAnalysis(); }

// --- Moves ---

void Command_Move::Execute(ConnectedGame& game) {
    if (!checked_) {
        check(game);
        checked_ = true;
    }
    if (!made_) {
        was_expected_ = game.forecast().Is(move_);
        notation_ = game.playMove(move_);
        made_ = true;
    }
    react(game);
    finished = true;
}

void Command_Move::check(const ConnectedGame& game) {
    MoveParseError error{};
    const Move move = game.IsGameOver() ? INVALID : ParseMove(text_, game.board(), error);
    if (move == INVALID) throw ErrorCommand(ErrorCommand::Kind::illegal_move, {}, line);
    if (game.runningSearch() == SearchKind::normal) refuse(vocabulary::it_is_not_your_turn_now);
    move_ = move;
}

void Command_Move::react(ConnectedGame& game) {
    if (game.IsGameOver()) {
        finishGame(game);
    } else if (was_expected_ && game.runningSearch() == SearchKind::pondering) {
        game.ponderHit();
        game.protocol().sendPredictedMoveMade(notation_);
    } else {
        game.abortSearch(true);
        if (game.mode() == EngineMode::one_side) requestSearch(game, SearchKind::normal);
        if (game.mode() != EngineMode::force) requestSearch(game, SearchKind::analyze);
    }
}

void Command_Move::finishGame(ConnectedGame& game) {
    game.abortSearch(true);
    game.announceResult();
    if (game.mode() == EngineMode::analyze && game.protocol().analyzesFinishedGames()) {
        requestSearch(game, SearchKind::analyze);
    }
    game.stopPlaying();
}

void Command_Move::requestSearch(ConnectedGame& game, SearchKind kind) {
    finished = true;
    game.requestSearch(kind);
}

// --- Taking back and making again ---

void Command_Undo::check(ConnectedGame& game) {
    if (game.made_moves().empty()) refuse(vocabulary::no_move_to_undo);
    if (count_ < 0) refuse(vocabulary::argument_out_of_bounds);
    if (!EngineLeavesBoardAlone(game)) refuse(vocabulary::must_be_in_force_mode);
}

void Command_Undo::work(ConnectedGame& game) {
    game.abortSearch(true);
    const std::size_t moves = std::min(static_cast<std::size_t>(count_), game.made_moves().size());
    const std::int32_t remaining = count_ - static_cast<std::int32_t>(moves);
    if (remaining > 0 && count_ != all_moves) {
        game.protocol().tellUser(std::string(vocabulary::could_not_undo) + ' ' + VorkaUtils::ToString(remaining) + ' ' +
                                 std::string(vocabulary::moves_not_undone_at_start_position));
    }
    game.takeBack(moves);
    if (game.mode() == EngineMode::analyze) finishWithSearch(game, SearchKind::analyze);
}

void Command_Next::check(ConnectedGame& game) {
    if (game.next_moves().empty()) refuse(vocabulary::next_move_buffer_is_empty);
    if (count_ < 0) refuse(vocabulary::argument_out_of_bounds);
    if (!EngineLeavesBoardAlone(game)) refuse(vocabulary::must_be_in_force_mode);
}

void Command_Next::work(ConnectedGame& game) {
    game.abortSearch(true);
    const std::size_t moves = std::min(static_cast<std::size_t>(count_), game.next_moves().size());
    const std::int32_t remaining = count_ - static_cast<std::int32_t>(moves);
    if (remaining > 0 && count_ != all_moves) {
        game.protocol().tellUser(VorkaUtils::ToString(remaining) + ' ' +
                                 std::string(vocabulary::moves_not_made_next_move_buffer_is_empty));
    }
    game.makeAgain(moves);
    if (game.mode() != EngineMode::analyze) return;
    if (!game.IsGameOver()) finishWithSearch(game, SearchKind::analyze);
    game.stopPlaying();
}

void Command_Remove::check(ConnectedGame& game) {
    const bool opponent_on_move = game.mode() == EngineMode::one_side && !game.player(game.side_to_move()).active;
    if (game.mode() != EngineMode::force && !opponent_on_move) refuse(vocabulary::command_not_legal_now);
    if (game.made_moves().size() < 2) refuse(vocabulary::no_moves_to_remove);
    // The one check that changes the game while a search may still run: that search has a copy of its own.
    game.takeBack(2);
}

void Command_Remove::work(ConnectedGame& game) {
    game.abortSearch(true);
    finished = true;
    if (game.mode() == EngineMode::one_side && game.pondering()) game.startPondering();
}

// --- The end of a game ---

void Command_Draw::check(ConnectedGame& game) {
    if (game.IsGameOver()) refuse(vocabulary::game_over);
    if (game.mode() != EngineMode::one_side) refuse(vocabulary::command_not_legal_now);
}

void Command_Draw::work(ConnectedGame& game) {
    game.protocol().sendDrawOfferDeferred(game.advisor().opponentIsComputer);
    game.takeDrawOffer();
}

Command_Result::Command_Result(std::string input_line, const std::string& word, const std::string& comment)
    : CheckedCommand(std::move(input_line)), result_(ResultOf(word)), reason_(ReasonOf(result_, comment)) {}

void Command_Result::check(ConnectedGame&) {
    if (result_ == GameResult::running) refuse(vocabulary::invalid_arguments);
}

void Command_Result::work(ConnectedGame& game) {
    if (!game.endGame(result_, reason_)) game.protocol().sendCommandIgnored(vocabulary::game_over);
}

// --- The search ---

void Command_Hint::check(ConnectedGame& game) {
    const Forecast::State state = game.forecast().state();
    const bool has_answer = state == Forecast::State::move || state == Forecast::State::no_move_exists;
    if (!has_answer && game.runningSearch()) refuse(vocabulary::command_not_legal_now);
}

void Command_Hint::work(ConnectedGame& game) {
    switch (game.forecast().state()) {
        case Forecast::State::none:
        case Forecast::State::hint_pending:
            finished = true;
            game.requestHint();
        case Forecast::State::no_move_exists:
            game.protocol().sendHint({});
            break;
        case Forecast::State::move:
            game.protocol().sendHint(MoveToSan(game.board(), game.forecast().move()));
            break;
    }
}

void Command_MoveNow::work(ConnectedGame& game) {
    if (game.runningSearch() != SearchKind::normal) {
        game.protocol().sendCommandIgnored(vocabulary::no_search_running);
        return;
    }
    finished = true;
    game.abortSearch(false);
}

void Command_SetPondering::work(ConnectedGame& game) { game.setPondering(pondering_); }

}  // namespace VorkaInterfaces
