#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "chess/user_board.h"
#include "frame/base/vocabulary.h"
#include "frame/game/chess_clock.h"
#include "frame/game/draw_resign_advisor.h"
#include "frame/game/forecast.h"
#include "frame/game/game_protocol.h"
#include "search/driver/search_controller.h"
#include "search/driver/steering.h"
#include "search/engine/engine.h"

struct PlayerInfo {
    std::string name;
    std::int32_t rating = 0;
    bool isEngine = false;
    bool active = false;  ///< the engine really plays this side now
};

/// What `name` and `rating` change for all games to come.
struct PlayerDefaults {
    std::string opponentName{vocabulary::default_opponent_name};
    std::int32_t opponentRating = 0;
    std::int32_t engineRating = 0;
};

/// The one object that holds the state of a game, beyond its position: who plays, the clocks, the search and what it
/// expects, and the advice on draws and resignation.
///
/// Commands run inside a search and may throw through it. Between any two calls, this holds:
///
/// 1. mode() counts the sides that the engine plays: as many players are active in force, one_side and both_sides; none
///    is in analyze.
/// 2. runningSearch() is the kind of the search that this call may be running in. runSearch and waitInAnalysis set it,
///    onSearchFinished clears it. Of the other calls only ponderHit changes it: it turns pondering into thinking.
/// 3. The position, and which sides the engine plays, change only while no search runs. An operation that changes them
///    throws search_aborted_exception out of a running one before it has done anything; its caller calls it again once
///    the search is gone. Two operations leave a search alone, since it works on a copy of its own: playMove, because
///    the move may be the one pondered on, and takeBack, because `remove` shows its board before the search has ended.
///    Names and ratings may change at any time: no search reads them.
/// 4. forecast() is about the position on the board: whatever changes the position forgets it.
/// 5. The forecast is pending from requestHint to the end of the search that it asks for, and at no other time.
/// 6. The advisor knows the searches of one stretch of play: it starts afresh with a new game or position, with
///    playSideOnMove and playOtherSide, and when the worth of a draw changes. giveMoveTo keeps it, as that does not
///    begin to play but says which side the interface will let the engine play.
/// 7. The protocol is told of every change of the moves or the position, once, afterwards; but not when only the side
///    on move changes, and not of a position that has become invalid.
class GameControl : private UserBoard {
  public:
    /// `engine` must outlive the game. `protocol` is told of what happens; it must live as long as the game, or until
    /// another one takes its place.
    GameControl(Engine& engine, GameProtocol& protocol);
    ~GameControl() override;
    GameControl(const GameControl&) = delete;
    GameControl& operator=(const GameControl&) = delete;

    // --- What can be seen ---

    /// Position and moves, which only the operations below can change.
    [[nodiscard]] const UserBoard& record() const { return *this; }
    using UserBoard::board;
    using UserBoard::GetFen;
    using UserBoard::IsGameOver;
    using UserBoard::IsPositionValid;
    using UserBoard::made_moves;
    using UserBoard::next_moves;
    using UserBoard::reason;
    using UserBoard::result;
    using UserBoard::side_to_move;
    using UserBoard::start;

    /// The settings, tables and bitbases that the search works with.
    [[nodiscard]] Engine& engine() const { return engine_; }
    [[nodiscard]] EngineMode mode() const { return mode_; }
    [[nodiscard]] const PlayerInfo& player(Colour side) const { return players_[side]; }
    /// The players of a new game.
    [[nodiscard]] const PlayerDefaults& playerDefaults() const { return playerDefaults_; }
    [[nodiscard]] PlayerInfo defaultHuman() const;
    [[nodiscard]] PlayerInfo defaultEngine(bool active) const;
    [[nodiscard]] const ChessClock& clock() const { return clock_; }
    [[nodiscard]] const DrawResignAdvisor& advisor() const { return advisor_; }
    [[nodiscard]] const Forecast& forecast() const { return forecast_; }
    /// Whether the engine thinks on its opponent's time.
    [[nodiscard]] bool pondering() const { return pondering_; }
    /// None if no search runs.
    [[nodiscard]] std::optional<SearchKind> runningSearch() const { return running_; }
    [[nodiscard]] const SearchController& search() const { return search_; }

    // --- Who plays. Each ends a running search first ---

    /// The start position, without bounds of depth and time. The engine plays Black; in analyze mode it goes on with
    /// that, and plays no side.
    void newGame();
    /// The engine takes the side on move, or the other one. The clock runs.
    void playSideOnMove();
    void playOtherSide();
    /// The engine plays no side: force mode. The clock stops.
    void stopPlaying();
    void startAnalysis();
    /// From analyze to force mode.
    void leaveAnalysis();

    // --- Moves and positions ---

    /// Plays a legal move for a person, or for either side where the engine plays none. Returns its notation. The clock
    /// changes sides, and is started in a game against the engine. A running search goes on.
    std::string playMove(Move move);
    /// Takes back `moves` moves, which must have been made. A running search goes on.
    void takeBack(std::size_t moves);
    /// Makes `moves` moves again; at least as many must have been taken back. Ends a running search first.
    void makeAgain(std::size_t moves);
    /// Replaces position and moves. The clocks are reset with the side on move active, but don't run. Ends a running
    /// search first.
    void setPosition(const UserBoard& game);
    /// Leaves no position, since an interface has sent an impossible one. Ends a running search first.
    void setInvalidPosition();
    /// Gives the move to `side` and the other one to the engine; the clock stops. Ends a running search first. Throws
    /// UserBoard::invalid_board_after_changing_side.
    void giveMoveTo(Colour side);

    // --- The end of the game ---

    /// Ends the game from outside; the engine has no side to play then. Ends a running search first. False if the game
    /// was over already: it keeps its result.
    bool endGame(GameResult result, GameEndReason reason);
    /// Reports how the game ended, and stops the clock.
    void announceResult();
    /// The opponent offers a draw; the engine answers with its next move.
    void takeDrawOffer() { advisor_.drawOfferPending = true; }

    // --- Clocks, bounds and players. A running search keeps the limits it started with ---

    void setTimeControls(Colour side, std::vector<TimeControl> controls) {
        clock_.setControls(side, std::move(controls));
    }
    void setMilliseconds(Colour side, std::int64_t milliseconds) { clock_.setMilliseconds(side, milliseconds); }
    /// Milliseconds for a move, 0 for no bound.
    void setMaxTime(std::int32_t milliseconds) { maxTime_ = milliseconds; }
    /// Plies, 0 for no bound.
    void setMaxDepth(std::int32_t depth) { maxDepth_ = depth; }
    /// The worth of a draw for the engine, in centipawns.
    void setContempt(std::int32_t value);
    /// For this game and those to come.
    void nameOpponent(const std::string& name);
    void ratePlayers(std::int32_t engine, std::int32_t opponent);
    /// Never taken back.
    void setOpponentIsComputer() { advisor_.opponentIsComputer = true; }

    // --- The search ---

    /// Ends a pondering search when it is turned off.
    void setPondering(bool on);
    /// Unwinds a running search; returns if there is none. With `discard` what it has found is forgotten.
    void abortSearch(bool discard);
    /// Asks the main loop for a search of the position on the board.
    [[noreturn]] void requestSearch(SearchKind kind) const;
    /// Asks for the search that a hint needs. The forecast is not pending already.
    [[noreturn]] void requestHint();
    /// Ponders on the forecast, or searches for one first; returns if there is nothing to ponder on.
    void startPondering();
    /// The opponent has played the move that is pondered on: the search goes on as thinking.
    void ponderHit();
    /// Runs a search that was asked for, which ends with onSearchFinished.
    void runSearch(const SearchRequest& request, SearchHost& host);
    /// The analysis of a game that is over, for interfaces that go on analyzing: there is nothing to search, and it
    /// polls `host` until a command ends it.
    void waitInAnalysis(SearchHost& host);
    /// The end-of-search handler: the search entry calls it once, at its very end. May throw the next request.
    void onSearchFinished(bool discard);

  protected:
    /// From now on `protocol` is told of what happens.
    void speakThrough(GameProtocol& protocol) { protocol_ = &protocol; }
    /// -1000..1000
    void setSearchPersonality(std::int32_t value) { search_.SetPersonality(value); }

  private:
    /// Tests put a game into states that take a whole game to reach.
    friend struct GameAccess;

    /// Stores the records of the side on move and its opponent, and the mode that follows from them.
    void setPlayers(PlayerInfo onMove, PlayerInfo notOnMove, bool analyze);
    /// The engine plays no side: the given mode, both `active` flags off.
    void leavePlay(EngineMode mode);
    /// What every new position entails.
    void startAnew();
    /// Plays a move and switches the clock; onMovesChanged has to follow. Returns the move's notation.
    std::string makeMove(Move move);
    /// Forgets the forecast and tells the protocol.
    void onMovesChanged();

    [[nodiscard]] SearchLimits limitsFor(SearchKind kind) const;
    [[noreturn]] void requestSearch(SearchKind kind, const UserBoard& position) const;
    /// Requests pondering after the expected move, or returns if the game ends with it.
    void ponderOnForecast() const;

    void onThinkingFinished();
    void onHintFinished();
    /// Drops the request for a hint that can't be found any more.
    void forgetPendingHint();
    /// Answers the opponent's offer. True if that ended the game.
    [[nodiscard]] bool answerDrawOffer();
    /// True if the game ended with it.
    [[nodiscard]] bool resignOrOfferDraw();
    /// The opponent's answer to `move` in the principal variation; INVALID if the line ends before it.
    [[nodiscard]] Move answerInLine(Move move) const;

    Engine& engine_;
    ChessClock clock_;
    PlayerInfo players_[2];  ///< by colour
    PlayerDefaults playerDefaults_;
    EngineMode mode_ = EngineMode::one_side;
    bool pondering_ = false;
    std::int32_t maxTime_ = 0;   ///< milliseconds, 0 for none
    std::int32_t maxDepth_ = 0;  ///< 0 for none
    std::optional<SearchKind> running_;
    SearchController search_{engine_};
    DrawResignAdvisor advisor_;
    Forecast forecast_;
    GameProtocol* protocol_;  ///< not owned
};
