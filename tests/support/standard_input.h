#pragma once

#include <unistd.h>

#include <cstdio>
#include <stdexcept>
#include <string_view>

/// Gives a text to the program as its standard input for a scope. The text has to be read to its end within the scope,
/// since ReadLine keeps what it has buffered.
class StandardInputText {
  public:
    explicit StandardInputText(std::string_view text) : before_(dup(STDIN_FILENO)), file_(std::tmpfile()) {
        if (file_ == nullptr || std::fwrite(text.data(), 1, text.size(), file_) != text.size()) {
            throw std::runtime_error("no file for the input of a test");
        }
        std::rewind(file_);
        dup2(fileno(file_), STDIN_FILENO);
    }
    ~StandardInputText() {
        dup2(before_, STDIN_FILENO);
        close(before_);
        std::fclose(file_);
    }
    StandardInputText(const StandardInputText&) = delete;
    StandardInputText& operator=(const StandardInputText&) = delete;

  private:
    int before_;
    std::FILE* file_;
};
