#include "check_tables/program.h"

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "chess/fen.h"
#include "options/number_option.h"
#include "options/program_name.h"
#include "tablebases/block_cache.h"
#include "tablebases/mate_table_set.h"
#include "tablebases/nalimov/nalimov_set.h"
#include "tablebases/nalimov/table_proof.h"
#include "tablebases/nalimov/table_values.h"
#include "tablebases/table_file.h"

namespace check_tables {

namespace {

using namespace NalimovTablebases;
using VorkaTablebases::BlockCache;
using VorkaTablebases::ProbeResult;
using VorkaTablebases::SourceFailure;
using VorkaTablebases::TableSet;

constexpr int most_positions = 10'000'000;
constexpr std::uint64_t cache_bytes = std::uint64_t{64} << 20U;

constexpr std::string_view help = R"( [--own FOLDER] [--positions N] [--quiet] PATH

Tests the tables in the published format (kqk.nbw.emd and so on) that lie in the folder PATH. Positions of chance are
looked up in each of them. They are compared with the tables of this program, where it has them, and with the positions
that their moves lead to. All tables of 5 men take about a minute.

  --own FOLDER    where the tables of this program lie (PATH too)
  --positions N   positions of each table (2000, with 5 men 200)
  --quiet         show what is wrong and the result alone

Exit status: 0 if all tables agree, 1 if one does not, can't be read or can't be told right or wrong, 2 if there are
none, in FOLDER or in PATH.
)";

int Usage(std::ostream& out, const std::string& program, int status) {
    out << "usage: " << program << help;
    return status;
}

struct Options {
    std::string program;  ///< its name
    std::string path;
    std::string own;
    std::optional<int> positions;
    bool quiet = false;
};

/// Looks positions up in a set, through a cache of its own.
class Lookup : public ScoreLookup {
  public:
    explicit Lookup(std::size_t block_bytes) : cache_(block_bytes) { (void)cache_.Resize(cache_bytes); }

  protected:
    BlockCache cache_;
};

/// The tables under test, as they are.
class PublishedTables final : public Lookup {
  public:
    explicit PublishedTables(const std::string& folder) : Lookup(block_bytes), set_(folder) {}

    [[nodiscard]] std::vector<TableName> Names() const { return set_.Names(); }
    [[nodiscard]] std::optional<int> ScoreOf(const BOARD& board) noexcept override {
        return set_.ScoreOf(board, cache_);
    }

  private:
    NalimovSet set_;
};

class OwnTables final : public Lookup {
  public:
    explicit OwnTables(const std::string& folder)
        : OwnTables(std::make_unique<VorkaTablebases::MateTableSet>(folder)) {}

    [[nodiscard]] bool empty() const { return set_->empty(); }
    [[nodiscard]] std::optional<int> ScoreOf(const BOARD& board) noexcept override {
        int score = 0;
        SourceFailure failure = SourceFailure::none;
        if (set_->Probe(board, cache_, score, failure) != ProbeResult::found) return std::nullopt;
        return score;
    }

  private:
    explicit OwnTables(std::unique_ptr<TableSet> set)
        : Lookup(std::max<std::size_t>(set->largest_block(), 1)), set_(std::move(set)) {}

    std::unique_ptr<TableSet> set_;
};

std::string TextOf(std::optional<int> score) {
    if (!score) return "nothing";
    if (*score == 0) return "draw";
    const int plies = score_of_mate - std::abs(*score);
    return *score > 0 ? "mate in " + std::to_string((plies + 1) / 2) : "mated in " + std::to_string(plies / 2);
}

/// What was found in one table.
struct Result {
    int positions = 0;
    int as_own = 0;  ///< have the score of our own table
    int proved = 0;  ///< have the score that their moves give
    int wrong = 0;
};

void TellWrong(Result& result, const BOARD& board, std::optional<int> score, const std::string& instead) {
    constexpr int most_shown = 3;
    if (++result.wrong > most_shown) return;
    std::printf("    WRONG: %s: %s, %s\n", WriteFen(board, 1).c_str(), TextOf(score).c_str(), instead.c_str());
}

Result Check(const TableName& name, int positions, PublishedTables& published, OwnTables& own) {
    Result result;
    RandomPositions chance(name.material, name.mover);
    BOARD board;
    for (; result.positions < positions; ++result.positions) {
        chance.Next(board);
        const std::optional<int> score = published.ScoreOf(board);
        const std::optional<int> own_score = own.ScoreOf(board);
        if (own_score && own_score != score) {
            TellWrong(result, board, score, "our table says " + TextOf(own_score));
            continue;
        }
        const Agreement agreement = score ? CompareWithMoves(board, *score, published) : Agreement::impossible;
        // Where our table says the same, it is another of these tables that is wrong.
        if (agreement == Agreement::impossible && !own_score) {
            TellWrong(result, board, score, "the moves say otherwise");
        }
        result.as_own += own_score.has_value() ? 1 : 0;
        result.proved += agreement == Agreement::proved ? 1 : 0;
    }
    return result;
}

/// How many tables the names of the files in the folder promise.
std::size_t TablesNamedIn(const std::string& folder) {
    std::vector<TableName> names;
    for (const std::filesystem::path& file : VorkaTablebases::FilesIn(folder)) {
        std::optional<TableName> name = ReadTableName(file.filename().string());
        if (!name) continue;
        name->is_packed = false;
        if (std::find(names.begin(), names.end(), *name) == names.end()) names.push_back(*name);
    }
    return names.size();
}

int CheckAll(const Options& options) {
    const std::size_t named = TablesNamedIn(options.path);
    if (named == 0) {
        std::cerr << options.program << ": there are no tables in the published format in " << options.path << "\n";
        return 2;
    }
    PublishedTables published(options.path);
    OwnTables own(options.own.empty() ? options.path : options.own);
    if (!options.own.empty() && own.empty()) {
        std::cerr << options.program << ": there are no tables of this program in " << options.own << "\n";
        return 2;
    }
    const std::vector<TableName> names = published.Names();
    if (!options.quiet && own.empty()) std::puts("There are no tables of our own: only moves are compared.");
    std::size_t wrong = named - names.size();
    std::size_t untold = 0;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool has_five_men = names[i].material.men() == most_men;
        const Result result = Check(names[i], options.positions.value_or(has_five_men ? 200 : 2000), published, own);
        if (result.wrong > 0) ++wrong;
        if (result.wrong == 0 && result.as_own == 0 && result.proved == 0) ++untold;
        if (options.quiet && result.wrong == 0) continue;
        std::printf("%3zu of %zu  %-13s  %d positions: %d as in our table, %d proved by their moves, %d wrong\n", i + 1,
                    names.size(), FileNameOf(names[i]).c_str(), result.positions, result.as_own, result.proved,
                    result.wrong);
        std::fflush(stdout);
    }
    if (wrong > 0) {
        std::printf("%zu of %zu tables are wrong or can't be read. Please don't use them.\n", wrong, named);
        return 1;
    }
    if (untold > 0) {
        std::printf("%zu of %zu tables can't be told right or wrong: what their moves lead to is missing.\n", untold,
                    named);
        return 1;
    }
    std::printf("All %zu tables agree.\n", named);
    return 0;
}

}  // namespace

int RunProgram(int argc, char** argv) {
    constexpr std::array<option, 5> long_options{{{"own", required_argument, nullptr, 'o'},
                                                  {"positions", required_argument, nullptr, 'p'},
                                                  {"quiet", no_argument, nullptr, 'q'},
                                                  {"help", no_argument, nullptr, 'h'},
                                                  {nullptr, 0, nullptr, 0}}};
    Options options;
    options.program = ProgramName(argv);
    optind = 1;
    for (int found = 0; (found = getopt_long(argc, argv, "", long_options.data(), nullptr)) != -1;) {
        switch (found) {
            case 'o':
                options.own = optarg;
                break;
            case 'p':
                options.positions.emplace();
                if (!ReadNumberOption(options.program, "--positions", optarg, 1, most_positions, *options.positions)) {
                    return 2;
                }
                break;
            case 'q':
                options.quiet = true;
                break;
            case 'h':
                return Usage(std::cout, options.program, 0);
            default:
                return Usage(std::cerr, options.program, 2);
        }
    }
    if (optind + 1 != argc) return Usage(std::cerr, options.program, 2);
    options.path = argv[optind];
    return CheckAll(options);
}

}  // namespace check_tables
