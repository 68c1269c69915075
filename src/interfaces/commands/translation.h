#pragma once

#include <memory>
#include <string>

#include "interfaces/commands/command.h"
#include "interfaces/protocols/basic_protocol.h"

namespace VorkaInterfaces {

/// The command of an input line; `protocol` answers an empty one. Throws ErrorCommand.
[[nodiscard]] std::unique_ptr<Command> translate(BasicProtocol& protocol, const std::string& line);

}  // namespace VorkaInterfaces
