// Any lines, sent one after the other to an engine that always seems to search when it was asked to: each ends in an
// error that quotes it, in a finished command or in the end of the program, and leaves a position that can stand.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "frame/base/logfile.h"
#include "support/command_bench.h"

namespace {

void Require(bool holds) {
    if (!holds) abort();
}

/// Edit mode finds the end of input at once, and what is printed is nobody's business.
void SilenceTheWorld() {
    static const bool done = [] {
        vlog.SetEcho(false);
        return std::freopen("/dev/null", "r", stdin) != nullptr;
    }();
    Require(done);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SilenceTheWorld();
    const std::string text(reinterpret_cast<const char*>(data), size);
    const bool is_console = text.empty() || (text.front() & 1) != 0;
    CommandBench bench(is_console ? RecordingProtocol::Like::console : RecordingProtocol::Like::xboard);
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        const std::string line = text.substr(from, end - from);
        from = end + 1;
        if (line.find("write_") != std::string::npos) continue;  // the names of files are anybody's
        const CommandOutcome outcome = bench.Send(line);
        Require(outcome.error.empty() ? outcome.finished || outcome.quit : outcome.error.ends_with(": " + line));
        Require(!bench.game.IsPositionValid() || bench.game.board().IsValid());
        if (outcome.quit) break;
        if (outcome.request) {
            GameAccess::pretendSearch(bench.game, outcome.request->limits.kind);
            if (outcome.request->position.IsGameOver()) bench.game.onSearchFinished(true);
        }
    }
    return 0;
}
