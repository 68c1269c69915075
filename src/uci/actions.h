#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the rows of the commands and of the options ask of the program.
namespace VorkaUci {

class CommandActions {
  public:
    virtual ~CommandActions() = default;
    virtual void send(std::string_view line) = 0;
    virtual void introduce() = 0;
    virtual void getReady() = 0;
    virtual void newGame() = 0;
    virtual void setPosition(const std::vector<std::string>& words) = 0;
    virtual void go(const std::vector<std::string>& words) = 0;
    virtual void stop() = 0;
    virtual void ponderHit() = 0;
    virtual void setOption(const std::string& line) = 0;
    virtual void setDebug(bool on) = 0;
};

class OptionActions {
  public:
    virtual ~OptionActions() = default;
    virtual void resizeTables() = 0;
    virtual void clearTables() = 0;
    virtual void weighDraws() = 0;
    virtual void takeStyle() = 0;
    virtual void readSettings() = 0;
    virtual void openBook() = 0;
    virtual void loadBitbases() = 0;
    virtual void openSyzygy() = 0;
    virtual void noteOpponent() = 0;
    virtual void openLog() = 0;
};

}  // namespace VorkaUci
