#pragma once

#include <string_view>

/// Writes the report of a broken assumption to the log and to standard output, and flushes. Returns.
/// `file` is the name of the source file without its directory and ending.
void ReportFailedAssertion(std::string_view condition, std::string_view file, int line, std::string_view message);

/// ReportFailedAssertion, then abort().
[[noreturn]] void FailAssertion(std::string_view condition, std::string_view file, int line, std::string_view message);

/// "a/b/move_generator.cpp" gives "move_generator".
[[nodiscard]] constexpr std::string_view SourceFileStem(std::string_view path) {
    path.remove_prefix(path.rfind('/') + 1);  // npos + 1 is 0
    return path.substr(0, path.find('.'));
}

/// An assertion that stays in every build: for what no input can cause. The one macro of the program, since it has to
/// quote its condition. `message` is text; callers without one of their own pass vocabulary::no_error_description.
#define CHECKED_ASSERT(condition, message) \
    ((condition) ? static_cast<void>(0) : FailAssertion(#condition, SourceFileStem(__FILE__), __LINE__, (message)))
