#include <cstdlib>
#include <iostream>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "frame/base/hang_up.h"
#include "frame/base/os_dependent.h"
#include "frame/base/out_of_memory.h"
#include "frame/base/text_utilities.h"
#include "search/driver/bench_positions.h"
#include "search/engine/engine.h"
#include "uci/uci_bench.h"
#include "uci/uci_program.h"
#include "uci/uci_texts.h"

namespace {

/// The depth of `bench` or `bench N`; 0 if the words are neither.
int BenchDepth(const std::vector<std::string_view>& words) try {
    constexpr std::string_view bench_word = "bench";
    if (words.front() != bench_word || words.size() > 2) return 0;
    if (words.size() == 1) return bench_depth;
    const int depth = VorkaUtils::ToInteger(words[1]);
    return depth <= std::numeric_limits<std::int16_t>::max() ? depth : 0;
} catch (const string_conversion_error&) {
    return 0;
}

int Usage(std::ostream& out, int status) {
    if (out << uci_texts::usage << std::flush) return status;
    std::cerr << uci_texts::could_not_write;
    return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char* argv[]) try {
    constexpr std::string_view help_word = "--help";
    IgnoreFailedWrites();
    EndInputOnHangUp();
    ReserveStandardDescriptors();
    ExecutableDirectory(PathOfProgram(argc > 0 ? argv[0] : ""));
    const std::vector<std::string_view> words(argv + (argc > 0 ? 1 : 0), argv + argc);
    Engine engine;
    if (words.empty()) {
        engine.bitbases.Init();
        VorkaUci::UciProgram(engine).Run();
        return EXIT_SUCCESS;
    }
    if (words.front() == help_word) return Usage(std::cout, EXIT_SUCCESS);
    const int depth = BenchDepth(words);
    if (depth < 1) return Usage(std::cerr, EXIT_FAILURE);
    return VorkaUci::RunBench(engine, depth) ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::bad_alloc&) {
    return ReportOutOfMemory(uci_texts::info_string.data());
}
