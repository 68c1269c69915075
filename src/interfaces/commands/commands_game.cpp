#include "interfaces/commands/commands_game.h"

#include "frame/base/checked_assert.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"

namespace VorkaInterfaces {

namespace {

/// Moves may be taken back and made again only where the engine does not play.
[[nodiscard]] bool EngineLeavesBoardAlone(const ConnectedGame& game) {
    return game.engineMode == EngineMode::force || game.engineMode == EngineMode::analyze;
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
    game.abortSearch(true);
    game.Reset();
    game.clock.resetClock(white);
    game.advisor.reset();
    game.prediction = no_prediction;
    game.maxDepth = 0;
    game.maxTime = 0;
    game.protocol().onBoardChanged(game);
    if (game.engineMode == EngineMode::analyze) {
        game.setPlayers(game.defaultHuman(), game.defaultEngine(false), true);
        finishWithSearch(game, SearchPurpose::analyze);
    }
    game.setPlayers(game.defaultHuman(), game.defaultEngine(true), false);
}

void Command_Force::work(ConnectedGame& game) {
    game.abortSearch(true);
    game.clock.stopClock();
    game.leavePlay(EngineMode::force);
}

void Command_Go::check(ConnectedGame& game) {
    if (game.searchStatus == SearchStatus::thinking || game.searchStatus == SearchStatus::analyzing) {
        refuse(vocabulary::command_not_legal_now);
    }
}

void Command_Go::work(ConnectedGame& game) {
    game.abortSearch(true);
    game.setPlayers(game.defaultEngine(true), game.defaultHuman(), false);
    game.clock.startClock();
    game.advisor.reset();
    finishWithSearch(game, SearchPurpose::think);
}

void Command_Playother::check(ConnectedGame& game) {
    if (game.IsGameOver()) refuse(vocabulary::game_over);
}

void Command_Playother::work(ConnectedGame& game) {
    game.abortSearch(true);
    game.setPlayers(game.defaultHuman(), game.defaultEngine(true), false);
    game.clock.startClock();
    game.advisor.reset();
    finished = true;
    if (game.pondering) game.startPondering();
}

void Command_Analyze::check(ConnectedGame& game) {
    if (!game.IsGameOver() || game.protocol().analyzesFinishedGames()) return;
    game.protocol().sendCommandIgnored(vocabulary::game_over);
    finished = true;
}

void Command_Analyze::work(ConnectedGame& game) {
    game.abortSearch(true);
    game.clock.stopClock();
    game.leavePlay(EngineMode::analyze);
    finishWithSearch(game, SearchPurpose::analyze);
}

void Command_Exit::check(ConnectedGame& game) {
    if (game.searchStatus != SearchStatus::analyzing) refuse(vocabulary::must_be_in_analyze_mode);
}

void Command_Exit::work(ConnectedGame& game) {
    game.abortSearch(true);
    game.engineMode = EngineMode::force;
}

// --- Moves ---

void Command_Move::Execute(ConnectedGame& game) {
    if (!checked_) {
        check(game);
        checked_ = true;
    }
    if (!made_) play(game);
    react(game);
    finished = true;
}

void Command_Move::check(const ConnectedGame& game) {
    MoveParseError error{};
    const Move move = game.IsGameOver() ? INVALID : ParseMove(text_, game.board(), error);
    if (move == INVALID) throw ErrorCommand(ErrorCommand::Kind::illegal_move, {}, line);
    if (game.searchStatus == SearchStatus::thinking) refuse(vocabulary::it_is_not_your_turn_now);
    move_ = move;
}

void Command_Move::play(ConnectedGame& game) {
    predicted_ = game.prediction;
    game.makeMove(move_, notation_);
    made_ = true;
    game.protocol().onBoardChanged(game);
    if (game.engineMode == EngineMode::one_side) game.clock.startClock();
}

void Command_Move::react(ConnectedGame& game) {
    if (game.IsGameOver()) {
        finishGame(game);
    } else if (isPonderHit(game)) {
        game.search.PonderHit();
        game.searchStatus = SearchStatus::thinking;
        game.protocol().sendPredictedMoveMade(notation_);
    } else {
        game.abortSearch(true);
        if (game.engineMode == EngineMode::one_side) requestSearch(game, SearchPurpose::think);
        if (game.engineMode != EngineMode::force) requestSearch(game, SearchPurpose::analyze);
    }
}

void Command_Move::finishGame(ConnectedGame& game) {
    game.abortSearch(true);
    game.protocol().sendGameResult(game, game.result(), game.reason(), game.engineMode);
    game.clock.stopClock();
    if (game.engineMode == EngineMode::analyze && game.protocol().analyzesFinishedGames()) {
        requestSearch(game, SearchPurpose::analyze);
    }
    game.leavePlay(EngineMode::force);
}

bool Command_Move::isPonderHit(const ConnectedGame& game) const {
    return game.searchStatus == SearchStatus::pondering && (predicted_ & move_bits) == (move_ & move_bits);
}

void Command_Move::requestSearch(ConnectedGame& game, SearchPurpose purpose) {
    finished = true;
    game.requestSearch(purpose, game);
}

// --- Taking back and making again ---

void Command_Undo::check(ConnectedGame& game) {
    if (game.made_moves().empty()) refuse(vocabulary::no_move_to_undo);
    if (count_ < 0) refuse(vocabulary::argument_out_of_bounds);
    if (!EngineLeavesBoardAlone(game)) refuse(vocabulary::must_be_in_force_mode);
}

void Command_Undo::work(ConnectedGame& game) {
    game.abortSearch(true);
    std::int32_t remaining = count_;
    for (; remaining > 0 && !game.made_moves().empty(); --remaining) game.UndoMove();
    if (remaining > 0 && count_ != all_moves) {
        game.protocol().tellUser(std::string(vocabulary::could_not_undo) + ' ' + VorkaUtils::ToString(remaining) + ' ' +
                                 std::string(vocabulary::moves_not_undone_at_start_position));
    }
    game.prediction = no_prediction;
    game.protocol().onBoardChanged(game);
    if (game.engineMode == EngineMode::analyze) finishWithSearch(game, SearchPurpose::analyze);
}

void Command_Next::check(ConnectedGame& game) {
    if (game.next_moves().empty()) refuse(vocabulary::next_move_buffer_is_empty);
    if (count_ < 0) refuse(vocabulary::argument_out_of_bounds);
    if (!EngineLeavesBoardAlone(game)) refuse(vocabulary::must_be_in_force_mode);
}

void Command_Next::work(ConnectedGame& game) {
    game.abortSearch(true);
    std::int32_t remaining = count_;
    for (; remaining > 0 && !game.next_moves().empty(); --remaining) game.NextMove();
    if (remaining > 0 && count_ != all_moves) {
        game.protocol().tellUser(VorkaUtils::ToString(remaining) + ' ' +
                                 std::string(vocabulary::moves_not_made_next_move_buffer_is_empty));
    }
    game.prediction = no_prediction;
    game.protocol().onBoardChanged(game);
    if (game.engineMode != EngineMode::analyze) return;
    if (!game.IsGameOver()) finishWithSearch(game, SearchPurpose::analyze);
    game.clock.stopClock();
    game.leavePlay(EngineMode::force);
}

void Command_Remove::check(ConnectedGame& game) {
    const bool opponent_on_move = game.engineMode == EngineMode::one_side && !game.players[game.side_to_move()].active;
    if (game.engineMode != EngineMode::force && !opponent_on_move) refuse(vocabulary::command_not_legal_now);
    if (game.made_moves().size() < 2) refuse(vocabulary::no_moves_to_remove);
    // The one check that changes the game while a search may still run: that search has a copy of its own.
    game.UndoMove();
    game.UndoMove();
    game.prediction = no_prediction;
    game.protocol().onBoardChanged(game);
}

void Command_Remove::work(ConnectedGame& game) {
    game.abortSearch(true);
    finished = true;
    if (game.engineMode == EngineMode::one_side && game.pondering) game.startPondering();
}

// --- The end of a game ---

void Command_Draw::check(ConnectedGame& game) {
    if (game.IsGameOver()) refuse(vocabulary::game_over);
    if (game.engineMode != EngineMode::one_side) refuse(vocabulary::command_not_legal_now);
}

void Command_Draw::work(ConnectedGame& game) {
    game.protocol().sendDrawOfferDeferred(game.advisor.opponentIsComputer);
    game.advisor.drawOfferPending = true;
}

Command_Result::Command_Result(std::string input_line, const std::string& word, const std::string& comment)
    : CheckedCommand(std::move(input_line)), result_(ResultOf(word)), reason_(ReasonOf(result_, comment)) {}

void Command_Result::check(ConnectedGame&) {
    if (result_ == GameResult::running) refuse(vocabulary::invalid_arguments);
}

void Command_Result::work(ConnectedGame& game) {
    game.abortSearch(true);
    game.clock.stopClock();
    game.leavePlay(EngineMode::force);
    if (game.IsGameOver()) {
        game.protocol().sendCommandIgnored(vocabulary::game_over);
    } else {
        game.EndGame(result_, reason_);
    }
}

// --- The search ---

void Command_Hint::check(ConnectedGame& game) {
    const bool has_answer = game.prediction != no_prediction && game.prediction != prediction_pending;
    if (!has_answer && game.searchStatus != SearchStatus::none) refuse(vocabulary::command_not_legal_now);
}

void Command_Hint::work(ConnectedGame& game) {
    CHECKED_ASSERT(game.prediction != prediction_pending, vocabulary::unfinished_hint_request);
    if (game.prediction == no_prediction) {
        game.prediction = prediction_pending;
        finishWithSearch(game, SearchPurpose::hint);
    }
    const bool move_exists = game.prediction != prediction_no_move_exists;
    game.protocol().sendHint(move_exists ? MoveToSan(game.board(), game.prediction) : std::string());
}

void Command_MoveNow::work(ConnectedGame& game) {
    if (game.searchStatus != SearchStatus::thinking) {
        game.protocol().sendCommandIgnored(vocabulary::no_search_running);
        return;
    }
    finished = true;
    throw search_aborted_exception{.discard = false};
}

void Command_SetPondering::work(ConnectedGame& game) {
    game.pondering = pondering_;
    if (!pondering_ && game.searchStatus == SearchStatus::pondering) game.abortSearch(true);
}

}  // namespace VorkaInterfaces
