#include "interfaces/protocols/console_protocol.h"

#include <array>
#include <cstdlib>

#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/game/game_control.h"

namespace VorkaInterfaces {

namespace {

constexpr std::array greetings{
    vocabulary::greeting_hallo,
    vocabulary::greeting_guten_tag,
    vocabulary::greeting_welcome,
    vocabulary::greeting_vorka_welcomes_you,
    vocabulary::greeting_vorka_ist_bereit,
    vocabulary::greeting_ave,
};

/// Scores beyond it announce a mate; `mate_value` is that of a mate with the next move.
constexpr int mate_bound = 31767;
constexpr int mate_value = 32766;

/// Below this number of nodes the thinking line leaves it out.
constexpr std::uint64_t many_nodes = 100000;

/// Writes a sentence from its pieces, ends the line and flushes.
template <class... Pieces>
void Say(const Pieces&... pieces) {
    (vlog << ... << pieces) << '\n';
    vlog.Flush();
}

}  // namespace

std::string ScoreText(int score) {
    if (score >= -mate_bound && score <= mate_bound) return std::to_string(score);
    const int moves = (mate_value - std::abs(score)) / 2 + 1;
    std::string text = score < 0 ? "-#" : "#";
    text += std::to_string(moves);
    return text;
}

std::string GreetingText(int number, const std::string& opponent_name) {
    std::string text;
    text.reserve(30);
    text += greetings.at(static_cast<std::size_t>(number));
    if (opponent_name != vocabulary::default_opponent_name) text += ", " + opponent_name;
    return text + '!';
}

std::string ConsoleProtocol::greetingText(const std::string& opponent_name) const {
    const int number = NonDeterministicRand_16bit() % static_cast<int>(greetings.size());
    return GreetingText(number, opponent_name);
}

void ConsoleProtocol::start(const std::string& opponent_name) { Say(greetingText(opponent_name)); }

void ConsoleProtocol::sendHint(const std::string& move) {
    if (move.empty()) {
        Say(vocabulary::hint_without_legal_move);
    } else {
        Say(vocabulary::vorka_suggests, ' ', move);
    }
}

void ConsoleProtocol::sendEngineMove(const std::string& move) { Say(vocabulary::vorka_played, ": ", move); }

void ConsoleProtocol::sendGameResult(const UserBoard&, GameResult result, GameEndReason reason, EngineMode) {
    Say(vocabulary::game_over, ": ", ResultText(result), " (", ReasonText(result, reason), ')');
}

void ConsoleProtocol::sendPredictedMoveMade(const std::string& move) {
    Say(vocabulary::predicted_move_made, " (", move, ')');
}

void ConsoleProtocol::sendCommandIgnored(std::string_view reason) {
    Say(vocabulary::command_ignored, " (", reason, ')');
}

void ConsoleProtocol::sendEditModeAborted() { Say(vocabulary::edit_mode_aborted); }

void ConsoleProtocol::sendPrompt(const UserBoard& game) {
    const EchoScope echo(vlog, Echo::on);
    {
        const ScreenOnlyScope screen_only(vlog);
        vlog << vocabulary::over_the_open_line;
    }
    vlog << (game.side_to_move() == white ? vocabulary::prompt_white : vocabulary::prompt_black) << ' '
         << game.FullMoveNumber() << vocabulary::prompt_end;
    vlog.Flush();
}

void ConsoleProtocol::sendEmptyLineReply() { Say(vocabulary::ok, '.'); }

void ConsoleProtocol::sendSearchStatus(const SearchInfo* info) {
    if (!info) {
        sendCommandIgnored(vocabulary::no_search_running);
        return;
    }
    writeSearchStatus(*info);
    vlog.Flush();
}

void ConsoleProtocol::sendNewPvMove(const std::string& move) {
    if (post) {
        const ScreenOnlyScope screen_only(vlog);
        vlog << vocabulary::new_move_on_screen << move << '\n';
    }
    {
        const EchoScope file_only(vlog, Echo::off);
        vlog << vocabulary::new_move_found << move << '\n';
    }
    vlog.Flush();
}

void ConsoleProtocol::sendSearchInstability() {
    vlog << vocabulary::warning_search_instability_found;
    vlog.Flush();
}

void ConsoleProtocol::sendSearchStatistics(const SearchInfo& info) {
    const EchoScope echo(vlog, Echo::on);
    writeSearchStatistics(info);
    vlog.Flush();
}

void ConsoleProtocol::sendDrawAccepted() { Say(vocabulary::vorka_accepts_draw_offer); }

void ConsoleProtocol::sendResign() { Say(vocabulary::congratulations_vorka_resigns); }

void ConsoleProtocol::sendDrawOffer() { Say(vocabulary::vorka_offers_draw); }

void ConsoleProtocol::onBoardChanged(const UserBoard& game) {
    game.Print(false);
    vlog.Flush();
}

void ConsoleProtocol::onEditBoardChanged(EditBoard& board) {
    board.Print(true);
    vlog.Flush();
}

void ConsoleProtocol::onGameLoaded(const UserBoard& game) {
    writeMoveList(game);
    vlog.Flush();
}

void ConsoleProtocol::tellUser(const std::string& text) { Say(text); }

void ConsoleProtocol::sendEditPrompt() {
    vlog << vocabulary::edit_mode_prompt;
    vlog.Flush();
}

void ConsoleProtocol::writeThinkingLine(const SearchInfo& info) {
    {
        const ScreenOnlyScope screen_only(vlog);
        vlog << '\r';
    }
    vlog << vocabulary::depth << ": " << info.depth << ". ";
    for (const auto& [move, text] : info.principal_variation) vlog << text << ' ';
    vlog << '(' << ScoreText(info.score) << ")\n";
    if (info.nodes > many_nodes) vlog << VorkaUtils::ToString(info.nodes / 1000) << vocabulary::knodes_searched;
}

void ConsoleProtocol::writeDepthLine(int depth) {
    vlog << vocabulary::depth << ": " << depth << '.';
    const EchoScope file_only(vlog, Echo::off);
    vlog << " (" << vocabulary::not_sent_to_xboard << ")\n";
}

}  // namespace VorkaInterfaces
