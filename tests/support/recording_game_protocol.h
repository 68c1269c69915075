#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/game/game_protocol.h"

/// How the two questions are answered that console and XBoard differ in.
enum class ProtocolLike { console, xboard };

/// Says nothing and notes what it was told to say, each call as one text: "sendEngineMove(e4)". `Base` is the interface
/// of the game, or a class that adds to it.
template <class Base>
class RecordsGame : public Base {
  public:
    using Like = ProtocolLike;

    template <class... Arguments>
    RecordsGame(Like model, std::vector<std::string>& call_list, Arguments... arguments)
        : Base(arguments...), model_(model), calls_(call_list) {}

    [[nodiscard]] bool claimsResultItself() const override { return model_ == Like::console; }
    void sendEngineMove(const std::string& move) override { Note("sendEngineMove", move); }
    void sendGameResult(const UserBoard&, GameResult result, GameEndReason reason, EngineMode mode) override {
        Note("sendGameResult", ResultText(result) + ", " + ReasonText(result, reason) + ", mode " +
                                   std::to_string(static_cast<int>(mode)));
    }
    void sendDrawAccepted() override { Note("sendDrawAccepted"); }
    void sendDrawRejected(bool computer) override { Note("sendDrawRejected", computer ? "computer" : "person"); }
    void sendResign() override { Note("sendResign"); }
    void sendDrawOffer() override { Note("sendDrawOffer"); }
    void onBoardChanged(const UserBoard& game) override { Note("onBoardChanged", game.GetFen()); }

  protected:
    void Note(std::string_view call, std::string_view argument = {}) {
        std::string& text = calls_.emplace_back(call);
        if (!argument.empty()) text.append("(").append(argument).append(")");
    }
    [[nodiscard]] Like model() const { return model_; }

  private:
    const Like model_;
    std::vector<std::string>& calls_;
};

using RecordingGameProtocol = RecordsGame<GameProtocol>;
