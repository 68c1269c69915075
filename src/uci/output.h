#pragma once

#include <string_view>

/// The one way to the interface: whole lines on standard output, each of them visible at once.
namespace VorkaUci {

class Output {
  public:
    /// The log is told from now on what is sent, and what it says to the user becomes `info string`.
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// `line` without its end.
    void Send(std::string_view line);
    /// As `info string`; a text of several lines becomes as many.
    void Say(std::string_view text);
    /// Whether everything that the log says is sent as `info string`, what is meant for the file alone too.
    void SetDebug(bool on);

  private:
    bool sending_ = false;  ///< what the log hears now it need not tell
};

}  // namespace VorkaUci
