#pragma once

#include <exception>
#include <string>
#include <utility>

/// Base of every exception that reports a failure. The exceptions that steer the search (search/driver/steering.h)
/// stand apart: they report nothing and share no base, so that no handler of failures can swallow them.
class VorkaException : public std::exception {};

/// A failure that is described by its text.
class TextException : public VorkaException {
  public:
    explicit TextException(std::string text) : text_(std::move(text)) {}
    [[nodiscard]] const std::string& text() const noexcept { return text_; }
    [[nodiscard]] const char* what() const noexcept override { return text_.c_str(); }

  private:
    std::string text_;
};
