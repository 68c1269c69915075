#pragma once

#include <string>
#include <string_view>

#include "frame/base/vorka_exception.h"

namespace VorkaInterfaces {

/// A refused command or move, with its text ready for sendError.
class ErrorCommand : public VorkaException {
  public:
    enum class Kind { illegal_move = 0, error = 1, plain = 2 };
    ErrorCommand(Kind kind, std::string_view reason, std::string_view line);
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] const char* what() const noexcept override { return text_.c_str(); }

  private:
    std::string text_;
};

/// A failure that does not end the program when a start-up option causes it.
class IgnorableErrorCommand : public ErrorCommand {
  public:
    using ErrorCommand::ErrorCommand;
};

}  // namespace VorkaInterfaces
