#include "interfaces/protocols/basic_protocol.h"

#include <array>
#include <sstream>

#include "evaluation/personality.h"
#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "interfaces/protocols/help_screen.h"
#include "search/tables/hash.h"

namespace VorkaInterfaces {

namespace {

/// By SearchKind.
constexpr std::array search_kind_names{
    vocabulary::search_kind_normal,
    vocabulary::search_kind_analyze,
    vocabulary::search_kind_pondering,
    vocabulary::search_kind_puzzle,
};

/// No line of a move list is longer, unless a single move is.
constexpr std::size_t move_list_width = 70;

double Ratio(std::uint64_t part, std::uint64_t whole) {
    return whole == 0 ? 0.0 : static_cast<double>(part) / static_cast<double>(whole);
}

double HitRatio(const TableUse& use) { return Ratio(use.hits, use.probes); }

void WriteFilling(const ABSTRACT_HASH_TABLE& table) {
    const std::uint64_t total = table.totalSlots();
    const std::uint64_t free = table.freeSlots();
    const std::uint64_t hundredths = (total - free) * 10000 / total;
    // The second decimal has no leading zero: docs/oddities.md, hundredths.
    vlog << vocabulary::hash_total_slots << VorkaUtils::ToString(total) << '\n'
         << vocabulary::hash_free_slots << VorkaUtils::ToString(free) << '\n'
         << vocabulary::hash_fill_percentage << VorkaUtils::ToString(hundredths / 100) << '.'
         << VorkaUtils::ToString(hundredths % 100) << "%\n\n";
}

}  // namespace

std::string_view BasicProtocol::nameOfSearchKind(SearchKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return index < search_kind_names.size() ? search_kind_names[index] : search_kind_names.front();
}

void BasicProtocol::copyStateFrom(const BasicProtocol& other) {
    personality = other.personality;
    id = other.id;
}

void BasicProtocol::sendError(std::string_view text) {
    vlog << text << '\n';
    vlog.Flush();
}

void BasicProtocol::sendThinking(const SearchInfo& info) {
    {
        const EchoScope echo(vlog, post ? Echo::on : Echo::off);
        writeThinkingLine(info);
        if (!post) vlog << " (" << vocabulary::not_sent_to_xboard << ")\n";
    }
    vlog.Flush();
}

void BasicProtocol::sendDepthStarted(int depth) {
    {
        const EchoScope echo(vlog, post ? Echo::on : Echo::off);
        writeDepthLine(depth);
    }
    vlog.Flush();
}

void BasicProtocol::sendDrawRejected(bool opponent_is_computer) {
    if (!opponent_is_computer) tellUser(getShortName() + std::string(vocabulary::rejects_the_draw_offer));
}

void BasicProtocol::sendDrawOfferDeferred(bool opponent_is_computer) {
    if (!opponent_is_computer) tellUser(getShortName() + std::string(vocabulary::is_thinking_about_the_draw_offer));
}

void BasicProtocol::showHelp(const std::vector<VorkaHelpScreen::HelpText>& commands) {
    VorkaHelpScreen::SimpleHelpScreenFormatter(commands, true).print();
}

void BasicProtocol::showEditHelp() { VorkaHelpScreen::EditHelp().print(); }

void BasicProtocol::showHashtableStatus(const HashTables& tables, bool details) {
    struct NamedTable {
        std::string_view name;
        const ABSTRACT_HASH_TABLE& table;
    };
    for (const NamedTable& row : {NamedTable{vocabulary::transposition_table, tables.transposition},
                                  NamedTable{vocabulary::pawn_hashtable, tables.pawn},
                                  NamedTable{vocabulary::evaluation_hashtable, tables.evaluation}}) {
        vlog << row.name << ": " << VorkaUtils::SizeToString(row.table.totalBytes()) << '\n';
        if (details) WriteFilling(row.table);
    }
    vlog.Flush();
}

void BasicProtocol::showVersion() {
    vlog << vocabulary::program_name << ' ' << vocabulary::program_version << " (" << __DATE__ << ", " << __TIME__
         << ")\n"
         << vocabulary::build_extensions << vocabulary::build_inline_assembler << vocabulary::build_move_generator_cache
         << vocabulary::build_tablebase_support << vocabulary::build_architecture << vocabulary::build_platform
         << vocabulary::platform_word << "\n\n";
    vlog.Flush();
}

void BasicProtocol::showBoard(const UserBoard& game, bool with_state) {
    game.Print(with_state);
    vlog.Flush();
}

void BasicProtocol::showPersonality() {
    vlog << vocabulary::personality << personality_name(personality) << " (" << personality << ")\n";
    vlog.Flush();
}

std::string BasicProtocol::getMyName() const {
    if (idReplacesName()) return '"' + id.substr(vocabulary::id_override_mark.size()) + '"';
    std::string name = "\"";
    if (personality != 0) name += personality_name(personality) + ' ';
    name += vocabulary::program_name;
    if (!id.empty()) name += ' ' + id;
    return name + '"';
}

std::string BasicProtocol::getShortName() const {
    return idReplacesName() ? id.substr(vocabulary::id_override_mark.size()) : std::string(vocabulary::program_name);
}

bool BasicProtocol::idReplacesName() const {
    return id.size() > vocabulary::id_override_mark.size() && VorkaUtils::StartsWith(id, vocabulary::id_override_mark);
}

void BasicProtocol::writeSearchStatus(const SearchInfo& info) {
    vlog << vocabulary::search_status << info.Milliseconds() / 10 << ' ' << info.nodes << ' ' << info.depth << ' '
         << info.moves_to_search - 1 << ' ' << info.root_moves << ' ' << info.root_move_text << '\n';
}

void BasicProtocol::writeSearchStatistics(const SearchInfo& info) {
    const std::int64_t milliseconds = info.Milliseconds();
    // A search too short for the clock counts as one millisecond, so that its speed is a number.
    const std::uint64_t divisor = milliseconds > 0 ? static_cast<std::uint64_t>(milliseconds) : 1;
    std::ostringstream text;
    text << vocabulary::statistics_time << static_cast<double>(milliseconds) / 1000.0 << vocabulary::statistics_seconds
         << VorkaUtils::ToString(info.nodes / 1000) << vocabulary::statistics_knodes << Ratio(info.nodes, divisor)
         << vocabulary::statistics_knps << vocabulary::statistics_hit_ratio_trans << HitRatio(info.transposition_table)
         << vocabulary::statistics_hit_ratio_pawn << HitRatio(info.pawn_hash_table)
         << vocabulary::statistics_hit_ratio_eval << HitRatio(info.evaluation_hash_table) << '\n'
         << vocabulary::statistics_ettc_tries << VorkaUtils::ToString(info.ettc_tries)
         << vocabulary::statistics_ettc_cutoffs << VorkaUtils::ToString(info.ettc_cutoffs)
         << vocabulary::statistics_ettc_efficiency << Ratio(info.ettc_cutoffs, info.ettc_tries) << '\n';
    vlog << text.str();
}

void BasicProtocol::writeMoveList(const UserBoard& game) {
    BOARD board = game.start().board;
    std::uint32_t ply = game.ply_offset();
    bool first = true;
    std::string line;
    const auto append = [&](Move move) {
        std::string text;
        if (first || board.side_to_move == white) {
            text = std::to_string(ply / 2 + 1) + '.';
            if (board.side_to_move == black) text += "..";
            text += ' ';
        }
        text += MoveToSan(board, move) + ' ';
        if (!line.empty() && line.size() + text.size() > move_list_width) {
            vlog << line << '\n';
            line.clear();
        }
        line += text;
        board.MakeMove(move);
        board.ResetPly();
        ++ply;
        first = false;
    };
    for (const Move move : game.made_moves()) append(move);
    for (const Move move : game.next_moves()) append(move);
    vlog << line << '\n';
}

}  // namespace VorkaInterfaces
