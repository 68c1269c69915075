#include "tune/plot.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

namespace {

constexpr std::size_t columns = 3;
constexpr double cell_width = 340, cell_height = 130;
constexpr double left = 40, right = 325, top = 30, bottom = 110;
constexpr std::size_t most_points = 300;

std::string Number(double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.1f", value);
    return text.data();
}

std::string Short(double value) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
}

std::string Text(double x, double y, const char* anchor, const std::string& text) {
    return "<text x=\"" + Number(x) + "\" y=\"" + Number(y) + "\" text-anchor=\"" + anchor + "\">" + text + "</text>\n";
}

std::string Diagram(const Spsa& spsa, const std::vector<TuningPoint>& way, std::size_t index) {
    const Parameter& parameter = spsa.parameters()[index];
    const auto x = [&](std::uint64_t pairs) {
        return left + (right - left) * static_cast<double>(pairs) / static_cast<double>(spsa.plan().pairs);
    };
    const auto y = [&](double value) {
        return bottom - (bottom - top) * (value - parameter.least) / (parameter.most - parameter.least);
    };
    std::string line;
    const std::size_t step = way.size() / most_points + 1;
    for (std::size_t i = 0; i < way.size(); i += step) {
        line += Number(x(way[i].pairs)) + ',' + Number(y(way[i].values[index])) + ' ';
    }
    line += Number(x(spsa.pairs_done())) + ',' + Number(y(spsa.values()[index]));
    const std::string start = Number(y(parameter.start));
    return "<g transform=\"translate(" + Number(static_cast<double>(index % columns) * cell_width) + ' ' +
           Number(static_cast<double>(index / columns) * cell_height) + ")\">\n<rect x=\"" + Number(left) + "\" y=\"" +
           Number(top) + "\" width=\"" + Number(right - left) + "\" height=\"" + Number(bottom - top) +
           "\" fill=\"none\" stroke=\"#bbb\"/>\n<line x1=\"" + Number(left) + "\" x2=\"" + Number(right) + "\" y1=\"" +
           start + "\" y2=\"" + start + "\" stroke=\"#bbb\" stroke-dasharray=\"4\"/>\n<polyline points=\"" + line +
           "\" fill=\"none\" stroke=\"#2980b9\" stroke-width=\"1.5\"/>\n" +
           Text(left, top - 8, "start", parameter.name) +
           Text(right - 5, top + 12, "end", Number(spsa.values()[index])) +
           Text(left - 5, top + 9, "end", Short(parameter.most)) +
           Text(left - 5, bottom, "end", Short(parameter.least)) + "</g>\n";
}

}  // namespace

std::string PlotSvg(const Spsa& spsa, const std::vector<TuningPoint>& way) {
    const std::size_t count = spsa.parameters().size();
    const double width = cell_width * static_cast<double>(std::min(count, columns));
    const double height = cell_height * static_cast<double>((count + columns - 1) / columns) + 24;
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + Number(width) + ' ' +
                      Number(height) +
                      "\" font-family=\"sans-serif\" font-size=\"9\">\n<rect width=\"100%\" height=\"100%\" "
                      "fill=\"white\"/>\n";
    for (std::size_t i = 0; i < count; ++i) svg += Diagram(spsa, way, i);
    svg += Text(left, height - 8, "start",
                std::to_string(spsa.pairs_done()) + " of " + std::to_string(spsa.plan().pairs) + " pairs");
    return svg + "</svg>\n";
}
