#include "interfaces/protocols/error_command.h"

#include "frame/base/vocabulary.h"

namespace VorkaInterfaces {

namespace {

[[nodiscard]] std::string_view NameOfKind(ErrorCommand::Kind kind) {
    switch (kind) {
        case ErrorCommand::Kind::illegal_move:
            return vocabulary::illegal_move;
        case ErrorCommand::Kind::error:
            return vocabulary::error;
        case ErrorCommand::Kind::plain:
            break;
    }
    return {};
}

}  // namespace

ErrorCommand::ErrorCommand(Kind kind, std::string_view reason, std::string_view line) : text_(NameOfKind(kind)) {
    if (!reason.empty()) text_.append(" (").append(reason).append(")");
    text_.append(": ").append(line);
}

}  // namespace VorkaInterfaces
