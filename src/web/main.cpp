// What a worker of the page calls: the UCI program, the desk and the bench. A module is one engine; the page starts one
// for the search and another one for the desk, which answers at once while the first one thinks.

#include <emscripten.h>

#include <string>

#include "frame/base/web/paused_input.h"
#include "search/engine/engine.h"
#include "uci/uci_bench.h"
#include "uci/uci_program.h"
#include "web/desk.h"

extern "C" {

/// Runs the UCI program until there is no line to read (0: call it again when there are some) or `quit` (1).
EMSCRIPTEN_KEEPALIVE int vorka_run() {
    static Engine engine;
    static VorkaUci::UciProgram program(engine);
    static const bool is_ready = [] {
        engine.bitbases.Init();
        return true;
    }();
    try {
        program.Run();
        return is_ready ? 1 : 0;
    } catch (const input_paused_exception&) {
        return 0;
    }
}

/// The text is valid until the next call.
EMSCRIPTEN_KEEPALIVE const char* vorka_answer(const char* question) {
    static std::string answer;
    answer = VorkaWeb::Answer(question);
    return answer.c_str();
}

/// Prints the signature to a depth, as `vorka-uci bench` does.
EMSCRIPTEN_KEEPALIVE void vorka_bench(int depth) {
    Engine engine;
    (void)VorkaUci::RunBench(engine, depth);
}

}  // extern "C"
