#pragma once

#include <cstdint>
#include <string>

#include "chess/user_board.h"
#include "frame/base/vocabulary.h"
#include "frame/game/chess_clock.h"
#include "frame/game/draw_resign_advisor.h"
#include "frame/game/game_protocol.h"
#include "search/engine/engine.h"
#include "search/root/search_controller.h"
#include "search/root/steering.h"

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

enum class SearchPurpose { think, ponder, analyze, hint };

/// The stored forecast of the opponent's next move, which is also what `hint` answers: none, no move exists, a hint
/// search is pending, or the move word.
inline constexpr std::uint32_t no_prediction = 0;
inline constexpr std::uint32_t prediction_no_move_exists = 1;
inline constexpr std::uint32_t prediction_pending = 2;

/// The one object with the state of the game: what makes a game out of a position.
///
/// Commands run inside a search and may throw through it; each leaves this object fit for the search to go on.
class GameControl : public UserBoard {
  public:
    /// `its_engine` must outlive the game. `protocol` is told of what happens; it must live as long as the game, or
    /// until another one takes its place.
    GameControl(Engine& its_engine, GameProtocol& protocol);
    ~GameControl() override;
    GameControl(const GameControl&) = delete;
    GameControl& operator=(const GameControl&) = delete;

    Engine& engine;
    ChessClock clock;
    PlayerDefaults playerDefaults;
    PlayerInfo players[2];  ///< by colour
    bool pondering = false;
    SearchStatus searchStatus = SearchStatus::none;
    EngineMode engineMode = EngineMode::one_side;
    std::int32_t maxTime = 0;      ///< milliseconds, 0 for none
    std::int32_t maxDepth = 0;     ///< 0 for none
    std::int32_t hintTime = 1000;  ///< milliseconds
    SearchController search{engine};
    DrawResignAdvisor advisor;
    std::uint32_t prediction = no_prediction;

    [[nodiscard]] PlayerInfo defaultHuman() const;
    [[nodiscard]] PlayerInfo defaultEngine(bool active) const;
    /// Stores the records of the side on move and its opponent, and the engine mode that follows from them.
    void setPlayers(PlayerInfo onMove, PlayerInfo notOnMove, bool analyze);
    /// The engine plays no side: the given mode, both `active` flags off.
    void leavePlay(EngineMode mode);

    /// Unwinds a running search; returns if there is none.
    void abortSearch(bool discard);
    /// Limits of a search for this purpose, from the clock and the bounds.
    [[nodiscard]] SearchLimits limitsFor(SearchPurpose purpose) const;
    [[noreturn]] void requestSearch(SearchPurpose purpose, const UserBoard& position);
    /// Ponders on the stored prediction, or looks for one; returns if there is nothing to ponder on.
    void startPondering();
    /// Plays a move of either side: notes its text, switches the clock, forgets the prediction.
    void makeMove(Move move, std::string& text);
    /// Replaces position and game record (after setboard, edit, read_fen). In this order: the prediction is forgotten,
    /// the advisor starts anew, the protocol shows the board, the clocks start anew with the side on move. The caller
    /// has aborted the search before, and requests a new one in analyze mode.
    void replaceGame(const UserBoard& game);
    /// The end-of-search handler: the search entry calls it once, at its very end. May throw the next request.
    void onSearchFinished(bool discard);

  protected:
    /// From now on `protocol` is told of what happens.
    void speakThrough(GameProtocol& protocol) { protocol_ = &protocol; }

  private:
    void onThinkingFinished();
    void onHintFinished();
    /// A hint that was asked for and can't be found any more leaves no pending request behind.
    void forgetPendingHint();
    /// Answers the opponent's offer. True if that ended the game.
    [[nodiscard]] bool answerDrawOffer();
    /// Says how the game ended, and stops the clock.
    void announceResult();
    /// The opponent's answer to `move` in the principal variation; INVALID if the line ends before it.
    [[nodiscard]] Move forecastBehind(Move move) const;
    /// Requests pondering behind the stored move, or returns if the game ends with it.
    void ponderOnPrediction();

    GameProtocol* protocol_;  ///< not owned
};
