#pragma once

#include "interfaces/protocols/basic_protocol.h"

namespace VorkaInterfaces {

/// Speaks the XBoard engine protocol. What that protocol has no line for goes to the log alone. The interface decides
/// that a game is over.
class BasicXBoardProtocol : public BasicProtocol {
  public:
    BasicXBoardProtocol() : BasicProtocol(false) {}

    [[nodiscard]] bool claimsResultItself() const override { return false; }
    [[nodiscard]] bool analyzesFinishedGames() const override { return true; }
    void sendHint(const std::string& move) override;
    void sendEngineMove(const std::string& move) override;
    /// Nothing in force and analyze mode.
    void sendGameResult(const UserBoard& game, GameResult result, GameEndReason reason, EngineMode mode) override;
    void sendPredictedMoveMade(const std::string& move) override;
    void sendCommandIgnored(std::string_view reason) override;
    void sendEditModeAborted() override {}
    void sendPrompt(const UserBoard&) override {}
    void sendEmptyLineReply() override {}
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
    /// Line breaks in the text become tabs, since the message is one line.
    void tellUser(const std::string& text) override;
    void sendEditPrompt() override {}
    void writeThinkingLine(const SearchInfo& info) override;
    void writeDepthLine(int) override {}
};

/// Protocol version 1, which has no handshake.
class XBoardProtocol_1 : public BasicXBoardProtocol {
  public:
    /// Takes standard input out of the terminal's line mode, and ignores the signals that interfaces send.
    void start(const std::string& opponent_name) override;
};

/// Protocol version 2.
class XBoardProtocol_2 : public XBoardProtocol_1 {
  public:
    /// Tells the interface the engine's features. Their acceptance is not waited for.
    void start(const std::string& opponent_name) override;
};

/// Selected by `fritz`; not really supported, and the same as protocol version 1.
class XBoardFritzAdapter : public XBoardProtocol_1 {};

}  // namespace VorkaInterfaces
