#include "frame/shell/startup_options.h"

#include <algorithm>

namespace {

bool BeginsWithDash(const std::string& word) { return !word.empty() && word[0] == '-'; }

/// The place of the '=' in "name=value". In the first or the last place it separates nothing.
std::size_t FindEqualsSign(const std::string& name) {
    const std::size_t at = name.find('=', 1);
    return at + 1 < name.size() ? at : std::string::npos;
}

}  // namespace

std::string StartupOption::line() const {
    std::string text = name;
    for (const std::string& parameter : parameters) text += ' ' + parameter;
    return text;
}

StartupOption TakeStartupOption(const std::vector<std::string>& arguments, std::size_t& next) {
    StartupOption option;
    option.argument = arguments[next++];
    option.has_dash = BeginsWithDash(option.argument);
    const std::size_t dashes = std::min<std::size_t>(option.argument.find_first_not_of('-'), 2);
    option.name = option.argument.substr(std::min(dashes, option.argument.size()));
    if (option.has_dash && option.name.empty()) throw could_not_parse_exception(option.argument);

    if (const std::size_t sign = FindEqualsSign(option.name); sign != std::string::npos) {
        option.parameters.push_back(option.name.substr(sign + 1));
        option.name.resize(sign);
    }
    for (; next < arguments.size() && !BeginsWithDash(arguments[next]); ++next) {
        option.parameters.push_back(arguments[next]);
    }
    return option;
}
