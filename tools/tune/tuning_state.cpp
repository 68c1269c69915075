#include "tune/tuning_state.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "frame/base/text_utilities.h"
#include "options/number_option.h"

namespace {

[[noreturn]] void Refuse(std::size_t number, const std::string& what) {
    throw std::runtime_error("line " + std::to_string(number) + ": " + what);
}

void AddPoint(std::ostream& text, std::string_view word, std::uint64_t pairs, const std::vector<double>& values) {
    text << word << ' ' << pairs;
    for (const double value : values) text << ' ' << value;
    text << '\n';
}

TuningPoint ReadPoint(const std::vector<std::string>& words, std::size_t parameters, std::size_t number) {
    if (words.size() != parameters + 2) Refuse(number, "not the values of all parameters");
    TuningPoint point;
    const auto pairs = NumberIn<std::int64_t>(words[1], 0, std::numeric_limits<std::int64_t>::max());
    if (!pairs) Refuse(number, "no number of pairs: \"" + words[1] + '"');
    point.pairs = static_cast<std::uint64_t>(*pairs);
    for (std::size_t i = 2; i < words.size(); ++i) {
        char* end = nullptr;
        point.values.push_back(std::strtod(words[i].c_str(), &end));
        if (end == words[i].c_str() || *end != '\0' || !std::isfinite(point.values.back()))
            Refuse(number, "no value: \"" + words[i] + '"');
    }
    return point;
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

}  // namespace

std::string TuningHead(const Spsa& spsa, const std::string& more) {
    std::ostringstream head;
    head << std::setprecision(std::numeric_limits<double>::max_digits10) << "tune 1\n";
    for (const Parameter& parameter : spsa.parameters()) {
        head << "parameter " << parameter.name << ' ' << parameter.start << ' ' << parameter.least << ' '
             << parameter.most << ' ' << parameter.last_span << ' ' << parameter.last_rate << '\n';
    }
    const SpsaPlan& plan = spsa.plan();
    head << "pairs " << plan.pairs << " batch " << plan.batch << " seed " << plan.seed << '\n' << more << '\n';
    return head.str();
}

std::string TuningText(const std::string& head, const Spsa& spsa, const std::vector<TuningPoint>& way) {
    std::ostringstream text;
    text << head << std::setprecision(std::numeric_limits<double>::max_digits10);
    AddPoint(text, "at", spsa.pairs_done(), spsa.values());
    text << std::fixed << std::setprecision(2);
    for (const TuningPoint& point : way) AddPoint(text, "way", point.pairs, point.values);
    return text.str();
}

std::vector<TuningPoint> ReadTuning(const std::string& text, const std::string& head, Spsa& spsa) {
    const std::vector<std::string> lines = LinesOf(text), wanted = LinesOf(head);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const std::string kept = i < lines.size() ? lines[i] : "";
        if (kept != wanted[i]) {
            Refuse(i + 1, "it belongs to another run: \"" + kept + "\" there, \"" + wanted[i] + "\" here");
        }
    }
    const std::size_t count = spsa.parameters().size();
    std::vector<TuningPoint> way;
    bool has_values = false;
    for (std::size_t i = wanted.size(); i < lines.size(); ++i) {
        const std::vector<std::string> words = VorkaUtils::tokenize(lines[i]);
        if (words.empty() || (words[0] != "at" && words[0] != "way")) Refuse(i + 1, "neither at nor way");
        TuningPoint point = ReadPoint(words, count, i + 1);
        if (words[0] == "way") {
            way.push_back(point);
        } else {
            spsa.GoOnFrom(point.pairs, point.values);
            has_values = true;
        }
    }
    if (!has_values) Refuse(lines.size(), "no values");
    return way;
}
