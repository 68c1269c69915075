#pragma once

#include <string>
#include <vector>

/// What the rows of the commands and of the options ask of the program.
namespace VorkaUci {

/// A line from its command on.
struct CommandLine {
    std::string text;                ///< what stands after the command, as it was written
    std::vector<std::string> words;  ///< the same, split
};

class CommandActions {
  public:
    virtual ~CommandActions() = default;
    virtual void Introduce(const CommandLine& line) = 0;
    virtual void SetDebug(const CommandLine& line) = 0;
    virtual void GetReady(const CommandLine& line) = 0;
    virtual void SetOption(const CommandLine& line) = 0;
    virtual void NewGame(const CommandLine& line) = 0;
    virtual void SetPosition(const CommandLine& line) = 0;
    virtual void Go(const CommandLine& line) = 0;
    virtual void Stop(const CommandLine& line) = 0;
    virtual void PonderHit(const CommandLine& line) = 0;
    virtual void Quit(const CommandLine& line) = 0;
};

class OptionActions {
  public:
    virtual ~OptionActions() = default;
    virtual void ResizeTables() = 0;
    virtual void ClearTables() = 0;
    virtual void WeighDraws() = 0;
    virtual void TakeStyle() = 0;
    virtual void ReadSettings() = 0;
    virtual void ReadTournamentFile() = 0;
    virtual void TakeTournamentSettings() = 0;
    virtual void OpenBook() = 0;
    virtual void LoadBitbases() = 0;
    virtual void OpenSyzygy() = 0;
    virtual void NoteOpponent() = 0;
    virtual void OpenLog() = 0;
};

}  // namespace VorkaUci
