#pragma once

#include <string>
#include <vector>

#include "interfaces/protocols/basic_protocol.h"
#include "support/recording_game_protocol.h"

/// A protocol that says nothing and notes what it was told to say, by the game, the search and the commands.
class RecordingProtocol : public RecordsGame<VorkaInterfaces::BasicProtocol> {
  public:
    RecordingProtocol(Like model, std::vector<std::string>& call_list)
        : RecordsGame(model, call_list, model == Like::console) {}

    [[nodiscard]] bool analyzesFinishedGames() const override { return model() == Like::xboard; }

    void start(const std::string&) override { Note("start"); }
    void sendHint(const std::string& move) override { Note("sendHint", move); }
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
    void sendDrawOfferDeferred(bool computer) override {
        Note("sendDrawOfferDeferred", computer ? "computer" : "person");
    }
    void showVersion() override { Note("showVersion"); }
    void showBoard(const UserBoard& game, bool with_state) override {
        Note("showBoard", game.GetFen() + (with_state ? ", with state" : ""));
    }
    void onEditBoardChanged(EditBoard&) override { Note("onEditBoardChanged"); }
    void onGameLoaded(const UserBoard&) override { Note("onGameLoaded"); }
    void tellUser(const std::string& text) override { Note("tellUser", text); }
    void sendEditPrompt() override { Note("sendEditPrompt"); }
    void writeThinkingLine(const SearchInfo&) override { Note("writeThinkingLine"); }
    void writeDepthLine(int) override { Note("writeDepthLine"); }
};
