#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "chess/user_board.h"
#include "interfaces/commands/command.h"

/// Commands that drive a game: who plays, what is played, what is taken back, and how it ends.
namespace VorkaInterfaces {

/// What `undo all` and `next all` ask for: more moves than any game has.
inline constexpr std::int32_t all_moves = 1000000;

/// `new`: the start position, the engine plays Black; analyze mode stays.
class Command_New : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `force`: the engine plays no side.
class Command_Force : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// `go`: the engine plays the side on move, and thinks.
class Command_Go : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// `playother`: the engine plays the side that is not on move.
class Command_Playother : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// `analyze`: until `exit`.
class Command_Analyze : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// `exit`: leaves analyze mode; the program goes on.
class Command_Exit : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// A move of the opponent, or of either side in force and analyze mode.
class Command_Move : public Command {
  public:
    Command_Move(std::string input_line, std::string text) : Command(std::move(input_line)), text_(std::move(text)) {}
    void Execute(ConnectedGame& game) final;
    /// Whether the move came behind `usermove`; nothing depends on it.
    [[nodiscard]] virtual bool isNewStyle() const = 0;

  private:
    void check(const ConnectedGame& game);
    void finishGame(ConnectedGame& game);
    /// What the engine does about the new position.
    void react(ConnectedGame& game);
    [[noreturn]] void requestSearch(ConnectedGame& game, SearchKind kind);

    const std::string text_;
    Move move_ = INVALID;
    bool was_expected_ = false;  ///< by the forecast, which making the move forgets
    std::string notation_;
    bool checked_ = false;
    bool made_ = false;  ///< the rest may run again behind an aborted search, the move may not
};

/// `usermove x`
class Command_UsermoveNewStyle : public Command_Move {
  public:
    using Command_Move::Command_Move;
    [[nodiscard]] bool isNewStyle() const override { return true; }
};

/// A bare word that is no keyword.
class Command_UsermoveOldStyle : public Command_Move {
  public:
    using Command_Move::Command_Move;
    [[nodiscard]] bool isNewStyle() const override { return false; }
};

/// `undo [n|all]`: takes moves back, into the buffer of next moves.
class Command_Undo : public CheckedCommand {
  public:
    Command_Undo(std::string input_line, std::int32_t count) : CheckedCommand(std::move(input_line)), count_(count) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::int32_t count_;
};

/// `next [n|all]`: makes moves again that were taken back.
class Command_Next : public CheckedCommand {
  public:
    Command_Next(std::string input_line, std::int32_t count) : CheckedCommand(std::move(input_line)), count_(count) {}

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const std::int32_t count_;
};

/// `remove`: takes back a move of each side, so that the opponent can try again.
class Command_Remove : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// `draw`: the opponent offers one. The engine answers after its next move.
class Command_Draw : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// `result word [comment]`: how the game ended, as the interface or the opponent says.
class Command_Result : public CheckedCommand {
  public:
    Command_Result(std::string input_line, const std::string& word, const std::string& comment);

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
    const GameResult result_;  ///< `running` for a word that is no result
    const GameEndReason reason_;
};

/// `hint`: the move that the engine expects from the side on move, if it has one at hand; if not, it looks for one.
class Command_Hint : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void check(ConnectedGame& game) override;
    void work(ConnectedGame& game) override;
};

/// `?`: the search stops, and its best move is played.
class Command_MoveNow : public CheckedCommand {
  public:
    using CheckedCommand::CheckedCommand;

  private:
    void work(ConnectedGame& game) override;
};

/// Whether the engine thinks on the opponent's time.
class Command_SetPondering : public CheckedCommand {
  public:
    Command_SetPondering(std::string input_line, bool new_pondering)
        : CheckedCommand(std::move(input_line)), pondering_(new_pondering) {}

  private:
    void work(ConnectedGame& game) override;
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

}  // namespace VorkaInterfaces
