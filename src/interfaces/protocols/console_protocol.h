#pragma once

#include "interfaces/protocols/basic_protocol.h"

namespace VorkaInterfaces {

/// Speaks with a person at a terminal, in plain sentences, and is in force when the program starts. What is seen on the
/// screen is also in the log. The engine itself decides that a game is over.
class ConsoleProtocol : public BasicProtocol {
  public:
    ConsoleProtocol() : BasicProtocol(true) {}

    [[nodiscard]] bool claimsResultItself() const override { return true; }
    [[nodiscard]] bool analyzesFinishedGames() const override { return false; }
    void start(const std::string& opponent_name) override;
    void sendHint(const std::string& move) override;
    void sendEngineMove(const std::string& move) override;
    void sendGameResult(const UserBoard& game, GameResult result, GameEndReason reason, EngineMode mode) override;
    void sendPredictedMoveMade(const std::string& move) override;
    void sendCommandIgnored(std::string_view reason) override;
    void sendEditModeAborted() override;
    /// Comes after " \r", which overwrites a line that thinking output left open; the log holds the prompt alone.
    void sendPrompt(const UserBoard& game) override;
    void sendEmptyLineReply() override;
    void sendSearchStatus(const SearchInfo* info) override;
    void sendNewPvMove(const std::string& move) override;
    void sendSearchInstability() override;
    void sendSearchStatistics(const SearchInfo& info) override;
    void sendDrawAccepted() override;
    void sendResign() override;
    void sendDrawOffer() override;
    void onBoardChanged(const UserBoard& game) override;
    void onEditBoardChanged(EditBoard& board) override;
    void onGameLoaded(const UserBoard& game) override;
    void tellUser(const std::string& text) override;
    void sendEditPrompt() override;
    /// Overwrites the open depth line on the screen.
    void writeThinkingLine(const SearchInfo& info) override;
    /// Leaves the line open on the screen for the thinking line.
    void writeDepthLine(int depth) override;
    /// One of several words of welcome, at random, with the opponent's name if it is known.
    [[nodiscard]] virtual std::string greetingText(const std::string& opponent_name) const;
};

/// "-#3" for a mate in three moves against the side on move, centipawns for any other score.
[[nodiscard]] std::string ScoreText(int score);
/// The words of welcome by number, 0..5, followed by the name unless it is that of an unknown opponent.
[[nodiscard]] std::string GreetingText(int number, const std::string& opponent_name);

}  // namespace VorkaInterfaces
