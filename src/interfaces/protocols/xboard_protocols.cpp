#include "interfaces/protocols/xboard_protocols.h"

#include <array>

#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/game/game_control.h"

namespace VorkaInterfaces {

namespace {

struct Feature {
    std::string_view name;
    std::string_view value;
};

/// What protocol version 2 announces, in this order. The value of `myname` is the engine's quoted name.
constexpr std::array features{
    Feature{"analyze", "1"},   Feature{"colors", "0"},        Feature{"draw", "1"},    Feature{"ics", "0"},
    Feature{"myname", {}},     Feature{"name", "1"},          Feature{"pause", "0"},   Feature{"ping", "1"},
    Feature{"playother", "1"}, Feature{"resume", "0"},        Feature{"reuse", "1"},   Feature{"san", "1"},
    Feature{"setboard", "1"},  Feature{"sigint", "0"},        Feature{"sigterm", "0"}, Feature{"time", "0"},
    Feature{"usermove", "1"},  Feature{"variants", "normal"}, Feature{"done", "1"},
};

/// Writes a line from its pieces and flushes.
template <class... Pieces>
void Send(const Pieces&... pieces) {
    (vlog << ... << pieces) << '\n';
    vlog.Flush();
}

std::string InBrackets(std::string_view text, std::string_view bracketed) {
    return std::string(text) + " (" + std::string(bracketed) + ')';
}

}  // namespace

void BasicXBoardProtocol::sendHint(const std::string& move) {
    if (!move.empty()) Send(vocabulary::xboard_hint, ": ", move);
}

void BasicXBoardProtocol::sendEngineMove(const std::string& move) { Send(vocabulary::xboard_move, ' ', move); }

void BasicXBoardProtocol::sendGameResult(const UserBoard&, GameResult result, GameEndReason reason, EngineMode mode) {
    if (mode != EngineMode::one_side && mode != EngineMode::both_sides) return;
    Send(ResultText(result), " {", ReasonText(result, reason), '}');
}

void BasicXBoardProtocol::sendPredictedMoveMade(const std::string& move) {
    LogOnly(InBrackets(vocabulary::predicted_move_made, move));
}

void BasicXBoardProtocol::sendCommandIgnored(std::string_view reason) {
    LogOnly(InBrackets(vocabulary::command_ignored, reason));
}

void BasicXBoardProtocol::sendSearchStatus(const SearchInfo* info) {
    if (info) {
        writeSearchStatus(*info);
    } else {
        vlog << vocabulary::search_status_idle;
    }
    vlog.Flush();
}

void BasicXBoardProtocol::sendNewPvMove(const std::string& move) {
    LogOnly(std::string(vocabulary::new_pv_move_candidate_found) + move);
}

void BasicXBoardProtocol::sendSearchInstability() { LogOnly(vocabulary::search_instability_found); }

void BasicXBoardProtocol::sendSearchStatistics(const SearchInfo& info) {
    const EchoScope file_only(vlog, Echo::off);
    writeSearchStatistics(info);
    vlog.Flush();
}

// Accepting a draw is the same text as offering one: that is how the protocol says it.
void BasicXBoardProtocol::sendDrawAccepted() { Send(vocabulary::xboard_offer_draw); }

void BasicXBoardProtocol::sendResign() { Send(vocabulary::xboard_resign); }

void BasicXBoardProtocol::sendDrawOffer() { Send(vocabulary::xboard_offer_draw); }

void BasicXBoardProtocol::onBoardChanged(const UserBoard& game) {
    const EchoScope file_only(vlog, Echo::off);
    game.Print(false);
    vlog.Flush();
}

void BasicXBoardProtocol::onEditBoardChanged(EditBoard& board) {
    const EchoScope file_only(vlog, Echo::off);
    board.Print(true);
    vlog.Flush();
}

void BasicXBoardProtocol::onGameLoaded(const UserBoard& game) {
    const EchoScope file_only(vlog, Echo::off);
    writeMoveList(game);
    vlog.Flush();
}

void BasicXBoardProtocol::tellUser(const std::string& text) {
    Send(vocabulary::xboard_tell_user, ' ', VorkaUtils::ReplaceAll(text, '\n', '\t'));
}

void BasicXBoardProtocol::writeThinkingLine(const SearchInfo& info) {
    vlog << info.depth << ' ' << info.score << ' ' << info.Milliseconds() / 10 << ' ' << info.nodes << ' ';
    for (const auto& [move, text] : info.principal_variation) vlog << text << ' ';
    vlog << '\n';
}

void XBoardProtocol_1::start(const std::string& /*opponent_name*/) {
    SetStdinRawMode();
    IgnoreTerminationSignals();
}

void XBoardProtocol_2::start(const std::string& opponent_name) {
    XBoardProtocol_1::start(opponent_name);
    for (const Feature& feature : features) {
        vlog << vocabulary::feature << ' ' << feature.name << '=';
        if (feature.value.empty()) {
            vlog << getMyName();
        } else {
            vlog << feature.value;
        }
        vlog << '\n';
    }
    vlog.Flush();
}

}  // namespace VorkaInterfaces
