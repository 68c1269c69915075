#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "interfaces/protocols/help_texts.h"

/// Lists of commands in two columns, wrapped to the width of the terminal, with a stop at the end of each page.
namespace VorkaHelpScreen {

/// Breaks a text into lines of at most `width` characters where it has blanks; a line end in the text ends the line. A
/// longer word gets a line of its own.
[[nodiscard]] std::vector<std::string> WrapText(std::string_view text, std::size_t width);

class AbstractHelpScreenFormatter {
  public:
    explicit AbstractHelpScreenFormatter(std::vector<HelpText> entries);
    virtual ~AbstractHelpScreenFormatter() = default;
    AbstractHelpScreenFormatter(const AbstractHelpScreenFormatter&) = delete;
    AbstractHelpScreenFormatter& operator=(const AbstractHelpScreenFormatter&) = delete;

    /// Writes the list to the log stream.
    virtual void print() const = 0;

  protected:
    [[nodiscard]] const std::vector<HelpText>& entries() const { return entries_; }
    [[nodiscard]] std::int32_t longest_keyword() const { return longest_keyword_; }

  private:
    std::vector<HelpText> entries_;
    std::int32_t longest_keyword_ = 0;
};

class SimpleHelpScreenFormatter final : public AbstractHelpScreenFormatter {
  public:
    SimpleHelpScreenFormatter(std::vector<HelpText> entries, bool paging)
        : AbstractHelpScreenFormatter(std::move(entries)), paging_(paging) {}

    /// Unless both input and output are a terminal there is no page stop, so that no line of piped input is swallowed.
    void print() const override;

  private:
    bool paging_;
};

/// The list of edit mode, built when it is first asked for.
[[nodiscard]] const SimpleHelpScreenFormatter& EditHelp();

}  // namespace VorkaHelpScreen
