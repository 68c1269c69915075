#include <algorithm>
#include <new>
#include <string>
#include <vector>

#include "frame/base/hang_up.h"
#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/out_of_memory.h"
#include "frame/base/vocabulary.h"
#include "frame/shell/engine_shell.h"
#include "frame/shell/log_file_name.h"
#include "frame/shell/self_checks.h"
#include "search/engine/engine.h"
#include "tablebases/opener/open_tables.h"

namespace {

void WriteBitAlgorithms() {
    const EchoScope file_only(vlog, Echo::off);
    vlog << vocabulary::bitboard_algorithms;
    for (const std::string_view algorithm :
         {vocabulary::popcount_algorithm, vocabulary::popcount_sparse_algorithm, vocabulary::find_lowest_bit_algorithm,
          vocabulary::find_highest_bit_algorithm, vocabulary::find_next_bit_algorithm}) {
        vlog << "\n- " << algorithm;
    }
    vlog << "\n\n";
    vlog.Flush();
}

}  // namespace

int main(int argc, char* argv[]) try {
    RunSelfChecks();
    IgnoreFailedWrites();
    EndInputOnHangUp();
    ReserveStandardDescriptors();
    Engine engine;
    OpenFirstFreeLog(vlog);
    WriteBitAlgorithms();
    engine.tables.Resize(usual_transposition_bytes, usual_evaluation_bytes);
    ExecutableDirectory(PathOfProgram(argc > 0 ? argv[0] : ""));
    engine.bitbases.Init();
    engine.open_tablebases = VorkaTablebases::OpenTables;

    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    std::erase(arguments, "");
    return EngineShell(engine, arguments).run();
} catch (const std::bad_alloc&) {
    return ReportOutOfMemory();
}
