#include "table_builder/program.h"

#include <getopt.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "frame/base/text_utilities.h"
#include "options/number_option.h"
#include "options/program_name.h"
#include "table_builder/solve.h"
#include "table_builder/storage.h"
#include "tablebases/packing.h"

namespace table_builder {

namespace {

constexpr int most_threads = 256;
constexpr std::uint64_t usual_memory = std::uint64_t{1} << 30;
constexpr std::uint64_t mebibyte = std::uint64_t{1} << 20;

constexpr std::string_view help = R"( [option].. [MATERIAL..]

Computes tables of distances to mate from the rules of chess, for all endings of three and four men, or for those named,
such as KBNK, with all that they need. Tables that are there are kept, so that a run that was stopped goes on where it
was.

  --output DIRECTORY  where the tables lie (the working directory)
  --men N             all endings of 3 up to N men (4), if none is named
  --memory SIZE       do nothing that takes more, such as 600M or 3G (1G)
  --threads N         threads that work (as many as there are cores)
  --list              say what each table takes, and compute nothing
  --quiet             say nothing while it works
)";

int Usage(std::ostream& out, const std::string& program, int status) {
    out << "usage: " << program << help;
    return status;
}

struct Wishes {
    std::string program;  ///< its name
    std::string folder = ".";
    std::vector<Material> materials;
    int men = 4;
    std::uint64_t memory = usual_memory;
    int threads = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, most_threads);
    bool list = false;
    bool quiet = false;
};

/// Nothing if the arguments are none; then it has been told.
std::optional<Wishes> ReadArguments(int argc, char** argv, bool& asks_for_help) {
    const std::array<option, 8> options = {{{"output", required_argument, nullptr, 'o'},
                                            {"men", required_argument, nullptr, 'm'},
                                            {"memory", required_argument, nullptr, 'b'},
                                            {"threads", required_argument, nullptr, 't'},
                                            {"list", no_argument, nullptr, 'l'},
                                            {"quiet", no_argument, nullptr, 'q'},
                                            {"help", no_argument, nullptr, 'h'},
                                            {}}};
    Wishes wishes;
    wishes.program = ProgramName(argv);
    const std::string& program = wishes.program;
    optind = 1;
    for (int letter = 0; (letter = getopt_long(argc, argv, "", options.data(), nullptr)) != -1;) {
        switch (letter) {
            case 'o':
                wishes.folder = optarg;
                break;
            case 'm':
                if (!ReadNumberOption(program, "--men", optarg, 3, 5, wishes.men)) return std::nullopt;
                break;
            case 'b':
                try {
                    wishes.memory = VorkaUtils::ParseSize(optarg);
                } catch (const string_conversion_error&) {
                    std::cerr << program << ": --memory takes a size such as 600M or 3G, not \"" << optarg << "\"\n";
                    return std::nullopt;
                }
                break;
            case 't':
                if (!ReadNumberOption(program, "--threads", optarg, 1, most_threads, wishes.threads)) {
                    return std::nullopt;
                }
                break;
            case 'l':
                wishes.list = true;
                break;
            case 'q':
                wishes.quiet = true;
                break;
            case 'h':
                asks_for_help = true;
                return wishes;
            default:
                return std::nullopt;
        }
    }
    for (int i = optind; i < argc; ++i) {
        const std::optional<Material> material = Material::FromName(argv[i]);
        if (!material) {
            std::cerr << program << ": \"" << argv[i] << "\" names no material of 3 to 5 men, such as KBNK\n";
            return std::nullopt;
        }
        wishes.materials.push_back(material->Normal());
    }
    return wishes;
}

/// All that is to be there in the end, each after what it needs.
std::vector<Material> Needed(const Wishes& wishes) {
    std::vector<Material> asked = wishes.materials;
    for (int men = 3; wishes.materials.empty() && men <= wishes.men; ++men) {
        std::ranges::copy(VorkaTablebases::MaterialsOf(static_cast<std::size_t>(men)), std::back_inserter(asked));
    }
    std::vector<Material> needed;
    for (const Material& material : asked) {
        for (const Material& next : VorkaTablebases::WithSuccessors(material)) {
            if (std::ranges::find(needed, next) == needed.end()) needed.push_back(next);
        }
    }
    return needed;
}

/// Says how far the work is: the time so far, the share of the work that is done, the time that the rest will take if
/// it goes on like this, and the table that is computed, with what is done for it. A line when a table is begun, and
/// while it is computed; on a terminal the latter is written over and over.
class Progress {
  public:
    Progress(bool quiet, const std::vector<Material>& work) : quiet_(quiet) {
        for (const Material& material : work) total_ += WorkOf(material);
    }
    void Begin(const Material& material) {
        name_ = material.name();
        work_ = WorkOf(material);
        Tell(0, "\n");
    }
    /// Before and during the passes of the table that was begun.
    void Solving(const SolveState& state) {
        if (!IsTime()) return;
        if (state.plies == 0) {
            TellWithin(share_before * state.share, "captures and promotions, " + Percent(state.share));
        } else {
            TellWithin(share_before + share_of_passes * state.share,
                       "mates in " + std::to_string((state.plies + 1) / 2) + " moves, decided " + Percent(state.share));
        }
    }
    void Packing(double share) {
        if (!IsTime()) return;
        constexpr double share_of_solving = share_before + share_of_passes;
        TellWithin(share_of_solving + (1 - share_of_solving) * share, "packing, " + Percent(share));
    }
    ~Progress() { EndLine(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /// Ends the line that is written over and over, before something else is told.
    void EndLine() {
        if (line_is_open_) std::fputs("\n", stdout);
        line_is_open_ = false;
        std::fflush(stdout);
    }
    /// The table that was begun is there.
    void End() { done_ += work_; }
    void Finish() {
        EndLine();
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        if (!quiet_) std::printf("%6.1f s  done, %ld MiB at most\n", Seconds(), usage.ru_maxrss / 1024);
    }

  private:
    // What a table takes, between those measured with pawns and without. One with many draws has fewer passes to go
    // than it seems.
    static constexpr double share_before = 0.15;
    static constexpr double share_of_passes = 0.4;

    static double WorkOf(const Material& material) { return static_cast<double>(MateTableIndex(material).size()); }
    [[nodiscard]] double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }
    /// Whether to tell something again.
    [[nodiscard]] bool IsTime() const { return !quiet_ && Seconds() - told_ >= (is_terminal_ ? 0.5 : 5); }
    static std::string Percent(double share) { return std::to_string(static_cast<int>(100 * share)) + " %"; }
    void TellWithin(double share, const std::string& text) { Tell(share, ": " + text + (is_terminal_ ? "" : "\n")); }
    /// `share` of the present table is done.
    void Tell(double share, const std::string& text) {
        if (quiet_) return;
        told_ = Seconds();
        const double of_all = (done_ + share * work_) / total_;
        std::printf("%s%6.1f s %3.0f %%  ", is_terminal_ ? "\r\033[K" : "", told_, 100 * of_all);
        // What is done at the start is too little to tell anything.
        if (of_all > 0.005) std::printf("%5.0f s to go  ", told_ * (1 - of_all) / of_all);
        std::printf("%s%s", name_.c_str(), text.c_str());
        line_is_open_ = !text.ends_with('\n');
        std::fflush(stdout);
    }

    bool quiet_;
    bool is_terminal_ = isatty(STDOUT_FILENO) != 0;
    bool line_is_open_ = false;
    double total_ = 0;
    double done_ = 0;
    std::string name_;
    double work_ = 0;  ///< of the present table
    double told_ = 0;  ///< when something was told, in seconds
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

void List(const std::vector<Material>& materials, int threads) {
    for (const Material& material : materials) {
        std::printf("%-6s %12llu positions %6llu MiB to compute\n", material.name().c_str(),
                    static_cast<unsigned long long>(MateTableIndex(material).size()),
                    static_cast<unsigned long long>(MemoryToSolve(material, threads) / mebibyte + 1));
    }
}

/// Whether none of the tables needs too much memory; the first that does is told.
bool FitsIntoMemory(const std::vector<Material>& work, const Wishes& wishes) {
    for (const Material& material : work) {
        const std::uint64_t needed = MemoryToSolve(material, wishes.threads);
        if (needed <= wishes.memory) continue;
        std::cerr << wishes.program << ": " << material.name() << " takes " << needed / mebibyte + 1
                  << " MiB of memory, see --memory\n";
        return false;
    }
    return true;
}

/// Reads the tables that a material leads to and forgets all others. False if one can't be read.
bool Fetch(const Wishes& wishes, const Material& material, SolvedTables& known) {
    const std::vector<Material> needed = material.Successors();
    known.KeepOnly(needed);
    for (const Material& next : needed) {
        if (known.Has(next)) continue;
        std::unique_ptr<SolvedTable> table = ReadTable(wishes.folder, next);
        if (!table) {
            std::cerr << wishes.program << ": can't read " << PathOf(wishes.folder, next) << '\n';
            return false;
        }
        known.Add(std::move(table));
    }
    return true;
}

int Build(const Wishes& wishes) {
    const std::vector<Material> needed = Needed(wishes);
    if (wishes.list) {
        List(needed, wishes.threads);
        return EXIT_SUCCESS;
    }
    if (!VorkaTablebases::HasPacking()) {
        std::cerr << wishes.program << ": this build can't pack tables: it was made without libzstd-dev\n";
        return EXIT_FAILURE;
    }
    if (access(wishes.folder.c_str(), W_OK | X_OK) != 0) {
        std::cerr << wishes.program << ": can't write into " << wishes.folder << ": " << std::strerror(errno) << '\n';
        return EXIT_FAILURE;
    }
    // All that is missing is asked about before anything that is there is read, which may take a while.
    std::vector<Material> missing;
    std::ranges::copy_if(needed, std::back_inserter(missing), [&](const Material& material) {
        return access(PathOf(wishes.folder, material).c_str(), F_OK) != 0;
    });
    if (!FitsIntoMemory(missing, wishes)) return EXIT_FAILURE;
    std::vector<Material> work;
    for (const Material& material : needed) {
        // A damaged one is told, and computed anew.
        if (!IsSound(wishes.folder, material)) work.push_back(material);
    }
    if (!FitsIntoMemory(work, wishes)) return EXIT_FAILURE;
    Progress progress(wishes.quiet, work);
    SolvedTables known;
    for (const Material& material : work) {
        progress.Begin(material);
        if (!Fetch(wishes, material, known)) return EXIT_FAILURE;
        const std::unique_ptr<SolvedTable> table =
            Solve(material, known, wishes.threads, [&](const SolveState& state) { progress.Solving(state); });
        if (!WriteTable(wishes.folder, *table, wishes.threads, [&](double share) { progress.Packing(share); })) {
            progress.EndLine();
            std::cerr << wishes.program << ": can't write " << PathOf(wishes.folder, material) << '\n';
            return EXIT_FAILURE;
        }
        progress.End();
    }
    progress.Finish();
    return EXIT_SUCCESS;
}

}  // namespace

int RunProgram(int argc, char** argv) try {
    bool asks_for_help = false;
    const std::optional<Wishes> wishes = ReadArguments(argc, argv, asks_for_help);
    if (!wishes) return Usage(std::cerr, ProgramName(argv), EXIT_FAILURE);
    if (asks_for_help) return Usage(std::cout, ProgramName(argv), EXIT_SUCCESS);
    return Build(*wishes);
} catch (const std::exception& error) {
    std::cerr << ProgramName(argv) << ": " << error.what() << '\n';
    return EXIT_FAILURE;
}

}  // namespace table_builder
