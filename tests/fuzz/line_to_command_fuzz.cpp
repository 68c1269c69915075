// Any line becomes a command that nobody has carried out yet, or an error that quotes it; on the way the game stays as
// it is. The first word alone decides which row of the table it belongs to.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "interfaces/commands/keyword_table.h"
#include "interfaces/protocols/input_line.h"
#include "support/command_bench.h"

namespace {

using namespace VorkaInterfaces;

void Require(bool holds) {
    if (!holds) abort();
}

/// The words of a line that can be split read the same when they are joined and split again, if none holds a blank or a
/// quote.
void RequireSameWords(const TokenizedLine& input) {
    for (const std::string& token : input.tokens) {
        if (token.empty() || token.find_first_of("\"' \t\r\n\v\f") != std::string::npos) return;
    }
    Require(tokenizeLine(joinTokens(input.tokens, 0, input.tokens.size())).tokens == input.tokens);
}

void Translate(CommandBench& bench, const std::string& line) {
    const std::string position = bench.fen();
    try {
        const std::unique_ptr<Command> command = translate(bench.game.protocol(), line);
        Require(command != nullptr && !command->finished);
        const TokenizedLine input = tokenizeLine(line);
        RequireSameWords(input);
        Require(input.tokens.empty() == (bench.calls == std::vector<std::string>{"sendEmptyLineReply"}));
    } catch (const ErrorCommand& error) {
        Require(std::string(error.text()).ends_with(": " + line));
    }
    Require(bench.fen() == position);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // What a protocol takes no notice of is the same for both.
    static CommandBench console(RecordingProtocol::Like::console);
    static CommandBench xboard(RecordingProtocol::Like::xboard);
    const std::string line(reinterpret_cast<const char*>(data), size);
    for (CommandBench* const bench : {&console, &xboard}) {
        bench->calls.clear();
        Translate(*bench, line);
    }
    return 0;
}
