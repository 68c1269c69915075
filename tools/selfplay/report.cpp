#include "selfplay/report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <span>
#include <string_view>

namespace {

std::string Formatted(const char* format, double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, value);
    return text.data();
}

std::string WithError(const std::optional<Measured>& measured) {
    if (!measured) return "?";
    // A value that is shown as 0 has no sign of its own.
    const double value = std::abs(measured->value) < 0.05 ? 0 : measured->value;
    return Formatted("%+.1f", value) + (measured->error ? Formatted(" +- %.1f", *measured->error) : " +- ?");
}

}  // namespace

std::string ScoreLine(const PairScores& scores, const Sprt* test) {
    const GameCounts& games = scores.games();
    std::string line = "games " + std::to_string(games.wins + games.draws + games.losses) + ": +" +
                       std::to_string(games.wins) + " =" + std::to_string(games.draws) + " -" +
                       std::to_string(games.losses);
    if (scores.pairs_counted() == 0) return line;
    line += ", pairs";
    for (const std::uint64_t count : scores.pairs()) line += ' ' + std::to_string(count);
    const Strength strength = StrengthOf(scores.pairs());
    line += ", Elo " + WithError(strength.elo) + ", normalized " + WithError(strength.normalized_elo) +
            ", superiority " + Formatted("%.1f %%", 100 * strength.superiority);
    if (test == nullptr) return line;
    return line + ", LLR " + Formatted("%.2f", LogLikelihoodRatio(scores.pairs(), test->elo0, test->elo1)) + " (" +
           Formatted("%.2f", test->LowerBound()) + " to " + Formatted("%.2f", test->UpperBound()) + ") for " +
           Formatted("%g", test->elo0) + " and " + Formatted("%g", test->elo1) + " Elo";
}

// --- The picture ---

namespace {

constexpr double width = 720, height = 420;
constexpr double left = 60, right = 700, top = 50, bottom = 270;
constexpr std::size_t most_points = 400;
constexpr std::array games_colours{"#c0392b", "#bdc3c7", "#27ae60"};
constexpr std::array pairs_colours{"#c0392b", "#e59866", "#bdc3c7", "#82c99a", "#27ae60"};
constexpr std::array games_names{"lost", "drawn", "won"};
constexpr std::array pairs_names{"0", "½", "1", "1½", "2"};

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '<') {
            escaped += "&lt;";
        } else if (c == '&') {
            escaped += "&amp;";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string Number(double value) { return Formatted("%.1f", value); }

std::string Text(double x, double y, std::string_view anchor, const std::string& text) {
    return "<text x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" text-anchor=\"" + std::string(anchor) + "\">" +
           Escaped(text) + "</text>\n";
}

/// Places of games and Elo in the diagram.
struct Axes {
    double most_games = 1;
    double least_elo = -10, most_elo = 10;

    [[nodiscard]] double X(std::uint64_t games) const {
        return left + (right - left) * static_cast<double>(games) / most_games;
    }
    [[nodiscard]] double Y(double elo) const {
        const double inside = std::clamp(elo, least_elo, most_elo);
        return bottom - (bottom - top) * (inside - least_elo) / (most_elo - least_elo);
    }
    [[nodiscard]] std::string Point(std::uint64_t games, double elo) const {
        return Number(X(games)) + ',' + Number(Y(elo)) + ' ';
    }
};

/// The band of the second half of the match fills the diagram; what was known less well before may leave it.
Axes AxesFor(const std::vector<ScorePoint>& history) {
    Axes axes;
    if (history.empty()) return axes;
    axes.most_games = static_cast<double>(history.back().games);
    for (std::size_t i = history.size() / 2; i < history.size(); ++i) {
        const double error = history[i].elo.error.value_or(0);
        axes.least_elo = std::min(axes.least_elo, history[i].elo.value - 1.3 * error);
        axes.most_elo = std::max(axes.most_elo, history[i].elo.value + 1.3 * error);
    }
    return axes;
}

/// 1, 2 or 5 times a power of ten, so that about six steps fill the range.
double StepFor(double range) {
    const double power = std::pow(10, std::floor(std::log10(range / 6)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (power * factor >= range / 6) return power * factor;
    }
    return power * 10;
}

std::string Grid(const Axes& axes) {
    std::string svg;
    const double step = StepFor(axes.most_elo - axes.least_elo);
    for (double elo = std::ceil(axes.least_elo / step) * step; elo <= axes.most_elo; elo += step) {
        const std::string y = Number(axes.Y(elo));
        const bool is_zero = std::abs(elo) < step / 2;
        svg += "<line x1=\"" + Number(left) + "\" x2=\"" + Number(right) + "\" y1=\"" + y + "\" y2=\"" + y +
               "\" stroke=\"" + (is_zero ? "#555" : "#ddd") + "\"/>\n" +
               Text(left - 6, axes.Y(elo) + 4, "end", is_zero ? "0" : Formatted("%+g", elo));
    }
    return svg + Text(right, bottom + 18, "end", Formatted("%.0f games", axes.most_games));
}

std::string Band(const Axes& axes, const std::vector<ScorePoint>& history) {
    std::string line, upper, lower;
    const std::size_t step = history.size() / most_points + 1;
    for (std::size_t i = history.size() % step; i < history.size(); i += step) {
        const ScorePoint& point = history[i];
        line += axes.Point(point.games, point.elo.value);
        if (!point.elo.error) continue;
        upper += axes.Point(point.games, point.elo.value + *point.elo.error);
        lower.insert(0, axes.Point(point.games, point.elo.value - *point.elo.error));
    }
    return "<polygon points=\"" + upper + lower + "\" fill=\"#2980b9\" fill-opacity=\"0.2\"/>\n<polyline points=\"" +
           line + "\" fill=\"none\" stroke=\"#2980b9\" stroke-width=\"2\"/>\n";
}

/// One bar, divided as the counts are.
std::string Bar(double y, const std::string& name, std::span<const std::uint64_t> counts,
                std::span<const char* const> colours, std::span<const char* const> names) {
    double total = 0;
    for (const std::uint64_t count : counts) total += static_cast<double>(count);
    std::string svg = Text(left - 6, y + 19, "end", name);
    double x = left;
    for (std::size_t i = 0; i < counts.size() && total > 0; ++i) {
        const double share = static_cast<double>(counts[i]) / total;
        const double length = (right - left) * share;
        svg += "<rect x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" width=\"" + Number(length) +
               "\" height=\"28\" fill=\"" + colours[i] + "\"/>\n";
        if (length > 40) {
            svg += Text(x + length / 2, y + 19, "middle", std::string(names[i]) + ": " + std::to_string(counts[i]));
        }
        x += length;
    }
    return svg;
}

}  // namespace

std::string ReportSvg(const std::string& first, const std::string& second, const PairScores& scores,
                      const std::vector<ScorePoint>& history) {
    const Axes axes = AxesFor(history);
    const GameCounts& games = scores.games();
    const std::array<std::uint64_t, 3> results{games.losses, games.draws, games.wins};
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + Number(width) + ' ' +
                      Number(height) +
                      "\" font-family=\"sans-serif\" font-size=\"12\">\n<rect width=\"100%\" "
                      "height=\"100%\" fill=\"white\"/>\n";
    svg += Text(left, 20, "start", first + " against " + second);
    if (scores.pairs_counted() > 0) svg += Text(left, 38, "start", "Elo " + WithError(StrengthOf(scores.pairs()).elo));
    svg += Grid(axes) + Band(axes, history);
    svg += Bar(310, "games", results, games_colours, games_names);
    svg += Bar(355, "pairs", scores.pairs(), pairs_colours, pairs_names);
    return svg + "</svg>\n";
}
