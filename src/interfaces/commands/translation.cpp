#include "interfaces/commands/translation.h"

#include "interfaces/commands/keyword_table.h"
#include "interfaces/protocols/input_line.h"

namespace VorkaInterfaces {

std::unique_ptr<Command> translate(BasicProtocol& protocol, const std::string& line) {
    const TokenizedLine input = tokenizeLine(line);
    if (input.tokens.empty()) {
        protocol.sendEmptyLineReply();
        return std::make_unique<Command_DoNothing>(line);
    }
    return parseCommand(protocol, input);
}

}  // namespace VorkaInterfaces
