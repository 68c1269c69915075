#include "bitbase_builder/program.h"

#include <getopt.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "bitbase_builder/endings.h"
#include "bitbases/checksum_file.h"
#include "frame/base/vocabulary.h"
#include "frame/base/whole_file.h"
#include "options/number_option.h"

namespace bitbase_builder {

namespace {

constexpr int most_threads = 256;

int Usage(std::ostream& out, int status) {
    out << "usage: bitbase_builder [--output DIRECTORY] [--only kp_kp] [--threads N] [--quiet]\n"
           "\n"
           "Writes kp_kp.vbb and kpp_kp_ram.vbb, the bitbases of pawn endings, into DIRECTORY (the working "
           "directory),\n"
           "and beside each its checksum, FILE.sha256, as sha256sum makes and reads them.\n"
           "Everything is computed from the rules of chess: a minute on two cores, 600 MB of memory.\n"
           "\n"
           "  --only kp_kp   the first file alone\n"
           "  --threads N    threads that work (as many as there are cores)\n"
           "  --quiet        say nothing while it works\n";
    return status;
}

/// One line for each table: the time so far, the share of the work done, the time that the rest will take if it goes on
/// like this, and the table that is begun.
class Progress {
  public:
    Progress(bool quiet, const std::vector<Men>& tables) : quiet_(quiet) {
        for (const Men& men : tables) total_ += work_of(men);
    }
    void Begin(const Men& men) {
        if (!quiet_) {
            const double share = done_ / total_;
            std::printf("%6.1f s %3.0f %%  ", Seconds(), 100 * share);
            // The first tables are too small to tell anything.
            if (share > 0.02) std::printf("%4.0f s to go  ", Seconds() * (1 - share) / share);
            std::printf("%s\n", name_of(men).c_str());
            std::fflush(stdout);
        }
        done_ += work_of(men);
    }
    void Finish() const {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        if (!quiet_) std::printf("%6.1f s  done, %ld MiB at most\n", Seconds(), usage.ru_maxrss / 1024);
    }

  private:
    [[nodiscard]] double Seconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }
    bool quiet_;
    double total_ = 0;
    double done_ = 0;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// Writes to a temporary file and renames it; then its checksum. Whether that succeeded.
bool Write(const std::string& directory, std::string_view name, const std::vector<std::uint8_t>& bytes) {
    const std::string path = directory + '/' + std::string(name);
    const std::string text(bytes.begin(), bytes.end());
    VorkaBitbases::RemoveChecksum(path);
    if (ReplaceFile(path, text) == FileOutcome::written && VorkaBitbases::WriteChecksum(path, bytes)) return true;
    std::cerr << "bitbase_builder: can't write " << path << '\n';
    return false;
}

/// Before a minute of work: whether its results could be written.
bool CanWriteTo(const std::string& directory) {
    if (access(directory.c_str(), W_OK | X_OK) == 0) return true;
    std::cerr << "bitbase_builder: can't write into " << directory << '\n';
    return false;
}

}  // namespace

int run_program(int argc, char** argv, Library& library) {
    optind = 1;
    const std::array<option, 6> options = {{{"output", required_argument, nullptr, 'o'},
                                            {"only", required_argument, nullptr, 'y'},
                                            {"threads", required_argument, nullptr, 't'},
                                            {"quiet", no_argument, nullptr, 'q'},
                                            {"help", no_argument, nullptr, 'h'},
                                            {}}};
    std::string directory = ".";
    bool two_pawns_alone = false;
    bool quiet = false;
    int threads = std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, most_threads);
    for (int letter = 0; (letter = getopt_long(argc, argv, "", options.data(), nullptr)) != -1;) {
        switch (letter) {
            case 'o':
                directory = optarg;
                break;
            case 'y':
                if (std::string_view(optarg) != "kp_kp") return Usage(std::cerr, EXIT_FAILURE);
                two_pawns_alone = true;
                break;
            case 't':
                if (!ReadNumberOption("bitbase_builder", "--threads", optarg, 1, most_threads, threads)) {
                    return Usage(std::cerr, EXIT_FAILURE);
                }
                break;
            case 'q':
                quiet = true;
                break;
            case 'h':
                return Usage(std::cout, EXIT_SUCCESS);
            default:
                return Usage(std::cerr, EXIT_FAILURE);
        }
    }
    if (optind != argc) return Usage(std::cerr, EXIT_FAILURE);
    if (!CanWriteTo(directory)) return EXIT_FAILURE;
    std::vector<Men> tables = tables_of_two_pawns();
    const std::size_t two_pawns_end = tables.size();
    if (!two_pawns_alone) std::ranges::copy(tables_of_rammed_pawns(), std::back_inserter(tables));
    Progress progress(quiet, tables);
    const auto begun = [&progress](const Men& men) { progress.Begin(men); };
    const auto first_of_rammed = tables.begin() + static_cast<std::ptrdiff_t>(two_pawns_end);
    solve(library, {tables.begin(), first_of_rammed}, threads, begun);
    if (!Write(directory, vocabulary::two_pawns_file, two_pawns_file(library))) return EXIT_FAILURE;
    if (!two_pawns_alone) {
        solve(library, {first_of_rammed, tables.end()}, threads, begun);
        if (!Write(directory, vocabulary::rammed_pawn_file, rammed_pawn_file(library))) return EXIT_FAILURE;
    }
    progress.Finish();
    return EXIT_SUCCESS;
}

}  // namespace bitbase_builder
