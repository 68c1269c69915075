#include "bench_run/bench_run.h"

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <limits>
#include <numeric>
#include <sstream>
#include <stdexcept>

#include "options/number_option.h"

namespace {

struct Column {
    std::string_view name;
    std::uint64_t& (*of)(BenchRow& row);
};

/// The numbers of a row as the file has them.
constexpr Column columns[] = {
    {"nodes", [](BenchRow& row) -> std::uint64_t& { return row.nodes; }},
    {"microseconds", [](BenchRow& row) -> std::uint64_t& { return row.microseconds; }},
    {"depth", [](BenchRow& row) -> std::uint64_t& { return row.depth; }},
    {"microseconds_to_depth", [](BenchRow& row) -> std::uint64_t& { return row.microseconds_to_depth; }},
    {"quiescence_nodes", [](BenchRow& row) -> std::uint64_t& { return row.statistics.quiescence_nodes; }},
    {"cuts", [](BenchRow& row) -> std::uint64_t& { return row.statistics.cuts; }},
    {"first_move_cuts", [](BenchRow& row) -> std::uint64_t& { return row.statistics.first_move_cuts; }},
    {"extended_moves", [](BenchRow& row) -> std::uint64_t& { return row.statistics.extended_moves; }},
    {"reduced_moves", [](BenchRow& row) -> std::uint64_t& { return row.statistics.reduced_moves; }},
    {"verifications", [](BenchRow& row) -> std::uint64_t& { return row.statistics.verifications; }},
    {"transposition_probes", [](BenchRow& row) -> std::uint64_t& { return row.transposition.probes; }},
    {"transposition_hits", [](BenchRow& row) -> std::uint64_t& { return row.transposition.hits; }},
    {"score_probes", [](BenchRow& row) -> std::uint64_t& { return row.scores.probes; }},
    {"score_hits", [](BenchRow& row) -> std::uint64_t& { return row.scores.hits; }},
    {"pawn_probes", [](BenchRow& row) -> std::uint64_t& { return row.pawns.probes; }},
    {"pawn_hits", [](BenchRow& row) -> std::uint64_t& { return row.pawns.hits; }},
};

std::string NamesOfColumns() {
    std::string names;
    for (const Column& column : columns) (names += column.name) += ' ';
    return names + "fen";
}

/// Throws std::runtime_error with what is wrong.
BenchRow ReadRow(const std::string& line) {
    BenchRow row;
    std::istringstream words(line);
    for (const Column& column : columns) {
        std::string word;
        words >> word;
        const auto number = NumberIn<std::int64_t>(word, 0, std::numeric_limits<std::int64_t>::max());
        if (!number) throw std::runtime_error("no number for " + std::string(column.name) + ": \"" + word + '"');
        column.of(row) = static_cast<std::uint64_t>(*number);
    }
    std::getline(words >> std::ws, row.fen);
    if (row.fen.empty()) throw std::runtime_error("no position");
    return row;
}

// --- Numbers to read ---

/// Shares and ratios of nothing are 0.
double Ratio(double part, double whole) { return whole > 0 ? part / whole : 0; }
double Ratio(std::uint64_t part, std::uint64_t whole) {
    return Ratio(static_cast<double>(part), static_cast<double>(whole));
}
double HitRate(const TableUse& use) { return Ratio(use.hits, use.probes); }

std::string Number(double value, int decimals) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(decimals) << value;
    return text.str();
}

/// What is derived from the counters of a row.
struct Figure {
    std::string_view head;  ///< of its column
    std::string_view name;  ///< in the totals
    bool is_share;          ///< shown in per cent
    double (*of)(const BenchRow& row);
};

constexpr Figure figures[] = {
    {"quiesc.", "quiescence, of all nodes", true,
     [](const BenchRow& row) { return Ratio(row.statistics.quiescence_nodes, row.nodes); }},
    {"1st cut", "first move, of all cuts", true,
     [](const BenchRow& row) { return Ratio(row.statistics.first_move_cuts, row.statistics.cuts); }},
    {"table", "hits in the transposition table", true, [](const BenchRow& row) { return HitRate(row.transposition); }},
    {"scores", "hits in the table of scores", true, [](const BenchRow& row) { return HitRate(row.scores); }},
    {"pawns", "hits in the pawn table", true, [](const BenchRow& row) { return HitRate(row.pawns); }},
    {"ext./n", "extended moves a node", false,
     [](const BenchRow& row) { return Ratio(row.statistics.extended_moves, row.nodes); }},
    {"red./n", "reduced moves a node", false,
     [](const BenchRow& row) { return Ratio(row.statistics.reduced_moves, row.nodes); }},
    {"ver./n", "verifications a node", false,
     [](const BenchRow& row) { return Ratio(row.statistics.verifications, row.nodes); }},
};

std::string ValueText(const Figure& figure, const BenchRow& row) {
    const double value = figure.of(row);
    return figure.is_share ? Number(100 * value, 1) + " %" : Number(value, 4);
}

constexpr int figure_width = 8;
constexpr int name_width = 34;
constexpr int ratio_width = 9;

BenchRow SumOf(const std::vector<BenchRow>& run) {
    return std::accumulate(run.begin(), run.end(), BenchRow{},
                           [](BenchRow sum, const BenchRow& row) { return sum += row; });
}

/// Nodes, time, nodes a second.
std::string Ratios(const BenchRow& row, const BenchRow& kept) {
    std::ostringstream text;
    for (const double ratio :
         {Ratio(row.nodes, kept.nodes), Ratio(row.microseconds, kept.microseconds), Ratio(Speed(row), Speed(kept))}) {
        text << std::setw(ratio_width) << Number(ratio, 3);
    }
    return text.str();
}

}  // namespace

BenchRow& BenchRow::operator+=(const BenchRow& other) {
    BenchRow copy = other;
    for (const Column& column : columns) column.of(*this) += column.of(copy);
    return *this;
}

double Speed(const BenchRow& row) { return Ratio(row.nodes, row.microseconds) * 1e6; }

// --- The file ---

std::string FileText(const std::vector<BenchRow>& run) {
    std::ostringstream text;
    text << NamesOfColumns() << '\n';
    for (BenchRow row : run) {
        for (const Column& column : columns) text << column.of(row) << ' ';
        text << row.fen << '\n';
    }
    return text.str();
}

std::vector<BenchRow> ReadFileText(const std::string& text) {
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    if (line != NamesOfColumns()) throw std::runtime_error("line 1: no run of this program");
    std::vector<BenchRow> run;
    while (std::getline(lines, line)) {
        try {
            run.push_back(ReadRow(line));
        } catch (const std::runtime_error& error) {
            throw std::runtime_error("line " + std::to_string(run.size() + 2) + ": " + error.what());
        }
    }
    return run;
}

// --- Tables ---

std::string TableHead() {
    std::ostringstream text;
    text << std::setw(12) << "nodes" << std::setw(9) << "ms" << std::setw(7) << "depth" << std::setw(9) << "after ms";
    for (const Figure& figure : figures) text << std::setw(figure_width) << figure.head;
    return text.str();
}

std::string TableRow(const BenchRow& row) {
    std::ostringstream text;
    text << std::setw(12) << row.nodes << std::setw(9) << row.microseconds / 1000 << std::setw(7) << row.depth
         << std::setw(9) << row.microseconds_to_depth / 1000;
    for (const Figure& figure : figures) text << std::setw(figure_width) << ValueText(figure, row);
    return text.str();
}

std::string TotalsText(const BenchRow& total) {
    std::ostringstream text;
    for (const Figure& figure : figures) {
        text << std::left << std::setw(name_width) << figure.name << std::right << std::setw(figure_width)
             << ValueText(figure, total) << '\n';
    }
    return text.str();
}

std::string ComparisonText(const std::vector<BenchRow>& run, const std::vector<BenchRow>& kept, bool each) {
    std::vector<std::string_view> positions;
    for (const BenchRow& row : run) positions.push_back(row.fen);
    RequireSamePositions(kept, positions);
    const BenchRow total = SumOf(run);
    const BenchRow kept_total = SumOf(kept);
    std::ostringstream text;
    text << "This run / the kept one:\n"
         << std::setw(ratio_width) << "nodes" << std::setw(ratio_width) << "time" << std::setw(ratio_width) << "nodes/s"
         << '\n';
    if (each) {
        for (std::size_t i = 0; i < run.size(); ++i) text << Ratios(run[i], kept[i]) << "  " << run[i].fen << '\n';
    }
    text << Ratios(total, kept_total) << "  in all\n";
    text << std::left << std::setw(name_width) << "" << std::right << std::setw(ratio_width) << "this"
         << std::setw(ratio_width) << "kept" << '\n';
    for (const Figure& figure : figures) {
        text << std::left << std::setw(name_width) << figure.name << std::right << std::setw(ratio_width)
             << ValueText(figure, total) << std::setw(ratio_width) << ValueText(figure, kept_total) << '\n';
    }
    return text.str();
}

void RequireSamePositions(const std::vector<BenchRow>& run, const std::vector<std::string_view>& positions) {
    if (!std::equal(run.begin(), run.end(), positions.begin(), positions.end(),
                    [](const BenchRow& row, std::string_view fen) { return row.fen == fen; })) {
        throw std::runtime_error("not the same positions");
    }
}
