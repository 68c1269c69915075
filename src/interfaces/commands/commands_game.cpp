#include "interfaces/commands/command_families.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "chess/user_board.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/commands/command.h"
#include "interfaces/commands/keyword.h"
#include "interfaces/protocols/connected_game.h"
#include "interfaces/protocols/error_command.h"

/// Commands that drive a game: who plays, what is played, what is taken back, and how it ends.
namespace VorkaInterfaces {

namespace {

/// What `undo all` and `next all` ask for: more moves than any game has.
constexpr std::int32_t all_moves = 1000000;

/// A number of moves: one if the command gives none.
struct MoveCount {
    static std::int32_t Read(const TokenizedLine& input, std::size_t place) {
        if (place >= input.tokens.size()) return 1;
        return input.tokens[place] == vocabulary::all ? all_moves : Integer::Read(input, place);
    }
};

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

/// What an interface writes after a result is free text; some words in it reveal the reason.
[[nodiscard]] GameEndReason ReasonOf(GameResult result, const std::string& comment) {
    const std::string text = VorkaUtils::ToLower(comment);
    const auto holds = [&](std::string_view word) { return text.find(word) != std::string::npos; };
    if (result == GameResult::aborted) return GameEndReason::aborted;
    // "mutal": the misspelling is looked for, so "mutual" alone reveals nothing: docs/oddities.md, mutal agreement.
    if (result == GameResult::draw && (holds("agree") || holds("mutal"))) return GameEndReason::agreed_draw;
    if (holds("time")) return GameEndReason::flag_fell;
    if (holds("resign")) return GameEndReason::resignation;
    return GameEndReason::unknown;
}

// --- Who plays ---

/// `new`: the start position, the engine plays Black; analyze mode stays.
class Command_New : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override {
        game.newGame();
        if (game.mode() == EngineMode::analyze) finishWithSearch(game, SearchKind::analyze);
    }
};

/// `force`: the engine plays no side.
class Command_Force : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override { game.stopPlaying(); }
};

/// `go`: the engine plays the side on move, and thinks.
class Command_Go : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        if (game.runningSearch() == SearchKind::normal || game.runningSearch() == SearchKind::analyze) {
            refuse(vocabulary::command_not_legal_now);
        }
    }

    void work(ConnectedGame& game) override {
        game.playSideOnMove();
        finishWithSearch(game, SearchKind::normal);
    }
};

/// `playother`: the engine plays the side that is not on move.
class Command_Playother : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        if (game.IsGameOver()) refuse(vocabulary::game_over);
    }

    void work(ConnectedGame& game) override {
        game.playOtherSide();
        finished = true;
        if (game.pondering()) game.startPondering();
    }
};

/// `analyze`: until `exit`.
class Command_Analyze : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        if (!game.IsGameOver() || game.protocol().analyzesFinishedGames()) return;
        game.protocol().sendCommandIgnored(vocabulary::game_over);
        finished = true;
    }

    void work(ConnectedGame& game) override {
        game.startAnalysis();
        finishWithSearch(game, SearchKind::analyze);
    }
};

/// `exit`: leaves analyze mode; the program goes on.
class Command_Exit : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        if (game.runningSearch() != SearchKind::analyze) refuse(vocabulary::must_be_in_analyze_mode);
    }

    void work(ConnectedGame& game) override { game.leaveAnalysis(); }
};

// --- Moves ---

/// `usermove x`, or a bare word that is no keyword: a move of the opponent, or of either side in force and analyze
/// mode.
class Command_Move : public CheckedCommand {
  public:
    Command_Move(std::string input_line, std::string text)
        : CheckedCommand(std::move(input_line)), text_(std::move(text)) {}

  private:
    void check(ConnectedGame& game) override {
        MoveParseError error{};
        move_ = game.IsGameOver() ? INVALID : ParseMove(text_, game.board(), error);
        if (move_ == INVALID) throw ErrorCommand(ErrorCommand::Kind::illegal_move, {}, line);
        if (game.runningSearch() == SearchKind::normal) refuse(vocabulary::it_is_not_your_turn_now);
    }

    void work(ConnectedGame& game) override {
        if (!made_) {
            was_expected_ = game.forecast().Is(move_);
            notation_ = game.playMove(move_);
            made_ = true;
        }
        if (game.IsGameOver()) {
            finishGame(game);
        } else if (was_expected_ && game.runningSearch() == SearchKind::pondering) {
            game.ponderHit();
            game.protocol().sendPredictedMoveMade(notation_);
        } else {
            game.abortSearch(true);
            if (game.mode() == EngineMode::one_side) finishWithSearch(game, SearchKind::normal);
            if (game.mode() != EngineMode::force) finishWithSearch(game, SearchKind::analyze);
        }
    }

    void finishGame(ConnectedGame& game) {
        game.abortSearch(true);
        game.announceResult();
        if (game.mode() == EngineMode::analyze && game.protocol().analyzesFinishedGames()) {
            finishWithSearch(game, SearchKind::analyze);
        }
        game.stopPlaying();
    }

    const std::string text_;
    Move move_ = INVALID;
    bool was_expected_ = false;  ///< by the forecast, which making the move forgets
    std::string notation_;
    bool made_ = false;  ///< the rest may run again after an aborted search, the move may not
};

// --- Taking back and making again ---

/// `undo [n|all]`: takes moves back, into the buffer of next moves.
class Command_Undo : public CheckedCommand {
  public:
    Command_Undo(std::string input_line, std::int32_t count) : CheckedCommand(std::move(input_line)), count_(count) {}

  private:
    void check(ConnectedGame& game) override {
        if (game.made_moves().empty()) refuse(vocabulary::no_move_to_undo);
        if (count_ < 0) refuse(vocabulary::argument_out_of_bounds);
        if (!EngineLeavesBoardAlone(game)) refuse(vocabulary::must_be_in_force_mode);
    }

    void work(ConnectedGame& game) override {
        game.abortSearch(true);
        const std::size_t moves = std::min(static_cast<std::size_t>(count_), game.made_moves().size());
        const std::int32_t remaining = count_ - static_cast<std::int32_t>(moves);
        if (remaining > 0 && count_ != all_moves) {
            game.protocol().tellUser(std::string(vocabulary::could_not_undo) + ' ' + VorkaUtils::ToString(remaining) +
                                     ' ' + std::string(vocabulary::moves_not_undone_at_start_position));
        }
        game.takeBack(moves);
        if (game.mode() == EngineMode::analyze) finishWithSearch(game, SearchKind::analyze);
    }

    const std::int32_t count_;
};

/// `next [n|all]`: makes moves again that were taken back.
class Command_Next : public CheckedCommand {
  public:
    Command_Next(std::string input_line, std::int32_t count) : CheckedCommand(std::move(input_line)), count_(count) {}

  private:
    void check(ConnectedGame& game) override {
        if (game.next_moves().empty()) refuse(vocabulary::next_move_buffer_is_empty);
        if (count_ < 0) refuse(vocabulary::argument_out_of_bounds);
        if (!EngineLeavesBoardAlone(game)) refuse(vocabulary::must_be_in_force_mode);
    }

    void work(ConnectedGame& game) override {
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

    const std::int32_t count_;
};

/// `remove`: takes back a move of each side, so that the opponent can try again.
class Command_Remove : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        const bool opponent_on_move = game.mode() == EngineMode::one_side && !game.player(game.side_to_move()).active;
        if (game.mode() != EngineMode::force && !opponent_on_move) refuse(vocabulary::command_not_legal_now);
        if (game.made_moves().size() < 2) refuse(vocabulary::no_moves_to_remove);
        // The one check that changes the game while a search may still be running: that search has a copy of its own.
        game.takeBack(2);
    }

    void work(ConnectedGame& game) override {
        game.abortSearch(true);
        finished = true;
        if (game.mode() == EngineMode::one_side && game.pondering()) game.startPondering();
    }
};

// --- The end of a game ---

/// `draw`: the opponent offers one. The engine answers after its next move.
class Command_Draw : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        if (game.IsGameOver()) refuse(vocabulary::game_over);
        if (game.mode() != EngineMode::one_side) refuse(vocabulary::command_not_legal_now);
    }

    void work(ConnectedGame& game) override {
        game.protocol().sendDrawOfferDeferred(game.advisor().opponentIsComputer);
        game.takeDrawOffer();
    }
};

/// `result word [comment]`: how the game ended, as the interface or the opponent says.
class Command_Result : public CheckedCommand {
  public:
    Command_Result(std::string input_line, const std::string& word, const std::string& comment)
        : CheckedCommand(std::move(input_line)), result_(ResultOf(word)), reason_(ReasonOf(result_, comment)) {}

  private:
    void check(ConnectedGame&) override {
        if (result_ == GameResult::running) refuse(vocabulary::invalid_arguments);
    }

    void work(ConnectedGame& game) override {
        if (!game.endGame(result_, reason_)) game.protocol().sendCommandIgnored(vocabulary::game_over);
    }

    const GameResult result_;  ///< `running` for a word that is no result
    const GameEndReason reason_;
};

// --- The search ---

/// `hint`: the move that the engine expects from the side on move. If it has none at hand, it searches for one.
class Command_Hint : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override {
        const Forecast::State state = game.forecast().state();
        const bool has_answer = state == Forecast::State::move || state == Forecast::State::no_move_exists;
        if (!has_answer && game.runningSearch()) refuse(vocabulary::command_not_legal_now);
    }

    void work(ConnectedGame& game) override {
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
};

/// `?`: the search stops, and its best move is played.
class Command_MoveNow : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override {
        if (game.runningSearch() != SearchKind::normal) {
            game.protocol().sendCommandIgnored(vocabulary::no_search_running);
            return;
        }
        finished = true;
        game.abortSearch(false);
    }
};

/// Whether the engine thinks on the opponent's time.
class Command_SetPondering : public CheckedCommand {
  public:
    Command_SetPondering(std::string input_line, bool new_pondering)
        : CheckedCommand(std::move(input_line)), pondering_(new_pondering) {}

  private:
    void work(ConnectedGame& game) override { game.setPondering(pondering_); }

    const bool pondering_;
};

/// `hard`
class Command_Hard : public Command_SetPondering {
  public:
    explicit Command_Hard(std::string input_line) : Command_SetPondering(std::move(input_line), true) {}
};

/// `easy`
class Command_Easy : public Command_SetPondering {
  public:
    explicit Command_Easy(std::string input_line) : Command_SetPondering(std::move(input_line), false) {}
};

// clang-format off
constexpr Keyword keywords[] = {
    {"new",       alone,        Make<Command_New>,                prompt_only, {160, help_texts::new_game}},
    {"force",     alone,        Make<Command_Force>,              prompt_only, {70, help_texts::force}},
    {"go",        alone,        Make<Command_Go>,                 prompt_only, {90, help_texts::go}},
    {"playother", alone,        Make<Command_Playother>,          prompt_only, {220, help_texts::playother}},
    {"analyze",   alone,        Make<Command_Analyze>,            prompt_only, {10, help_texts::analyze}},
    {"exit",      alone,        Make<Command_Exit>,               prompt_only, {60, help_texts::exit}},
    {"usermove",  exactly(2),   Make<Command_Move, Word>,         prompt_only, {440, help_texts::usermove}},
    {"undo",      at_most_two,  Make<Command_Undo, MoveCount>,    prompt_only, {330, help_texts::undo}},
    {"next",      at_most_two,  Make<Command_Next, MoveCount>,    prompt_only, {170, help_texts::next}},
    {"remove",    alone,        Make<Command_Remove>,             prompt_only, {270, help_texts::remove}},
    {"draw",      alone,        Make<Command_Draw>,               prompt_only, {40, help_texts::draw}},
    {"result",    at_least_two, Make<Command_Result, Word, Rest>, prompt_only, {280, help_texts::result}},
    {"hint",      alone,        Make<Command_Hint>,               prompt_only, {120, help_texts::hint}},
    {"?",         alone,        Make<Command_MoveNow>,            prompt_only, {140, help_texts::move_now}},
    {"hard",      alone,        Make<Command_Hard>,               prompt_only, {410, help_texts::hard}},
    {"easy",      alone,        Make<Command_Easy>,               at_start,    {400, help_texts::easy}},
};
// clang-format on

std::unique_ptr<Command> MakeBareMove(BasicProtocol&, const TokenizedLine& input) {
    return std::make_unique<Command_Move>(input.line, input.tokens.front());
}
constexpr Keyword bare_move{{}, {1U << 1, vocabulary::unrecognized_command}, MakeBareMove};

}  // namespace

std::span<const Keyword> gameKeywords() { return keywords; }

const Keyword& bareMove() { return bare_move; }

}  // namespace VorkaInterfaces
