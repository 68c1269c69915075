#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/game/game_control.h"
#include "support/board_builder.h"
#include "support/fake_search_host.h"
#include "support/game_access.h"
#include "support/recording_game_protocol.h"

/// A game with a recording protocol. The engine plays the side on move.
class RecordedGame {
  public:
    explicit RecordedGame(ProtocolLike model = ProtocolLike::console, const std::string& fen = start_fen)
        : protocol(model, calls), control(engine, protocol) {
        GameAccess::record(control).SetBoardFromFen(fen);
        GameAccess::clock(control).resetClock(control.side_to_move());
        GameAccess::setPlayers(control, control.defaultEngine(true), control.defaultHuman(), false);
    }

    /// Runs a real search over so many iterations, and then the end-of-search handler as for `kind`.
    void Search(std::optional<SearchKind> kind, int depth = 2) {
        FakeSearchHost host;
        GameAccess::search(control).Run({.kind = SearchKind::normal, .max_depth = depth}, control.record(), host);
        GameAccess::pretendSearch(control, kind);
        Finish(false);
    }
    void Finish(bool discard) {
        Run([&] { control.onSearchFinished(discard); });
    }
    template <class Action>
    void Run(Action action) {
        request.reset();
        try {
            action();
        } catch (const search_request_received_exception& received) {
            request = received.request;
        }
    }
    [[nodiscard]] SearchLimits LimitsOf(SearchKind kind) {
        Run([&] { control.requestSearch(kind); });
        return request.value().limits;
    }
    [[nodiscard]] Move MoveNamed(std::string_view text) const { return MoveOf(control.board(), text); }

    std::vector<std::string> calls;
    RecordingGameProtocol protocol;
    Engine engine;
    GameControl control;
    std::optional<SearchRequest> request;
};

// Black can do nothing about what the queen does, and a mate is far away.
inline const std::string winning = "7k/8/8/8/8/8/Q7/K7 w - - 0 1";
inline const std::string losing = "7k/8/8/8/8/8/q7/7K w - - 0 1";
inline const std::string losing_as_black = "7k/Q7/8/8/8/8/8/7K b - - 0 1";
inline const std::string mate_in_one = "7k/8/5KQ1/8/8/8/8/8 w - - 0 1";
// The search takes it for a draw, so that its line ends with the first move; the game goes on.
inline const std::string two_knights = "7k/8/8/8/8/8/8/KNN5 w - - 0 1";
