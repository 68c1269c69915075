// Standard input where a page is the user: the lines come from the functions inputWaits and readLine of the module,
// which web/page/engine_worker.js supplies. Where memory may be shared with the page, readLine waits for the next line;
// elsewhere nothing can wait, and it answers null when there is none.

#include <emscripten.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>

#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/vocabulary.h"
#include "frame/base/web/paused_input.h"

// clang-format off
EM_JS(int, vorka_input_waits, (), {
    return Module["inputWaits"]() ? 1 : 0;
});

/// To be freed; null if there is no line yet.
EM_JS(char*, vorka_read_line, (), {
    const line = Module["readLine"]();
    if (line === null) return 0;
    const bytes = lengthBytesUTF8(line) + 1;
    const text = _malloc(bytes);
    stringToUTF8(line, text, bytes);
    return text;
});
// clang-format on

bool IsInputAvailable() { return vorka_input_waits() != 0; }

std::optional<std::string> ReadLineOrEnd() {
    struct Freer {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Freer> text(vorka_read_line());
    if (!text) throw input_paused_exception();
    std::string line = text.get();
    if (line.size() > longest_input_line) throw input_line_too_long(line.substr(0, longest_input_line / 1024));
    const EchoScope file_only(vlog, Echo::off);
    vlog << vocabulary::vorka_received_input << ": " << line << '\n';
    return line;
}

std::string ReadLine() { return ReadLineOrEnd().value_or(std::string(vocabulary::quit)); }
