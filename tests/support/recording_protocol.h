#pragma once

#include <string>
#include <vector>

#include "frame/game/game_control.h"
#include "interfaces/protocols/basic_protocol.h"

/// A protocol that says nothing and notes what it was told to say, each call as one text: "sendHint(e4)".
class RecordingProtocol : public VorkaInterfaces::BasicProtocol {
  public:
    /// How the two questions are answered that console and XBoard differ in.
    enum class Like { console, xboard };

    RecordingProtocol(Like model, std::vector<std::string>& call_list)
        : BasicProtocol(model == Like::console), model_(model), calls_(call_list) {}

    [[nodiscard]] bool claimsResultItself() const override { return model_ == Like::console; }
    [[nodiscard]] bool analyzesFinishedGames() const override { return model_ == Like::xboard; }

    void start() override { Note("start"); }
    void sendHint(const std::string& move) override { Note("sendHint", move); }
    void sendEngineMove(const std::string& move) override { Note("sendEngineMove", move); }
    void sendGameResult(const UserBoard&, GameResult result, GameEndReason reason, EngineMode mode) override {
        Note("sendGameResult", ResultText(result) + ", " + ReasonText(result, reason) + ", mode " +
                                   std::to_string(static_cast<int>(mode)));
    }
    void sendPredictedMoveMade(const std::string& move) override { Note("sendPredictedMoveMade", move); }
    void sendCommandIgnored(std::string_view reason) override { Note("sendCommandIgnored", reason); }
    void sendEditModeAborted() override { Note("sendEditModeAborted"); }
    void sendError(std::string_view text) override { Note("sendError", text); }
    void sendPrompt(const UserBoard&) override { Note("sendPrompt"); }
    void sendEmptyLineReply() override { Note("sendEmptyLineReply"); }
    void sendSearchStatus(const SearchInfo* info) override { Note("sendSearchStatus", info ? "search" : "none"); }
    void sendThinking(const SearchInfo&) override { Note("sendThinking"); }
    void sendDepthStarted(int) override { Note("sendDepthStarted"); }
    void sendNewPvMove(const std::string& move) override { Note("sendNewPvMove", move); }
    void sendSearchInstability() override { Note("sendSearchInstability"); }
    void sendSearchStatistics(const SearchInfo&) override { Note("sendSearchStatistics"); }
    void sendDrawAccepted() override { Note("sendDrawAccepted"); }
    void sendDrawRejected(bool computer) override { Note("sendDrawRejected", computer ? "computer" : "person"); }
    void sendResign() override { Note("sendResign"); }
    void sendDrawOffer() override { Note("sendDrawOffer"); }
    void sendDrawOfferDeferred(bool computer) override {
        Note("sendDrawOfferDeferred", computer ? "computer" : "person");
    }
    void showVersion() override { Note("showVersion"); }
    void showBoard(const UserBoard& game, bool with_state) override {
        Note("showBoard", game.GetFen() + (with_state ? ", with state" : ""));
    }
    void onBoardChanged(const UserBoard& game) override { Note("onBoardChanged", game.GetFen()); }
    void onEditBoardChanged(EditBoard&) override { Note("onEditBoardChanged"); }
    void onGameLoaded(const UserBoard&) override { Note("onGameLoaded"); }
    void tellUser(const std::string& text) override { Note("tellUser", text); }
    void sendEditPrompt() override { Note("sendEditPrompt"); }
    void writeThinkingLine(const SearchInfo&) override { Note("writeThinkingLine"); }
    void writeDepthLine(int) override { Note("writeDepthLine"); }

  private:
    void Note(std::string_view call, std::string_view argument = {}) {
        std::string& text = calls_.emplace_back(call);
        if (!argument.empty()) text.append("(").append(argument).append(")");
    }

    const Like model_;
    std::vector<std::string>& calls_;
};
