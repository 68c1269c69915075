#include "uci/uci_program.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "bitbases/bitbases.h"
#include "evaluation/personality.h"
#include "frame/base/hang_up.h"
#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/vocabulary.h"
#include "search/settings/settings_file.h"
#include "search/tables/score.h"
#include "uci/commands.h"
#include "uci/go_command.h"
#include "uci/info_line.h"
#include "uci/move_text.h"
#include "uci/named_settings.h"
#include "uci/position_command.h"
#include "uci/time_use.h"
#include "uci/uci_texts.h"

namespace VorkaUci {

namespace {

// Milliseconds.
constexpr std::int64_t quiet_about_moves = 3000;  ///< the root move in work is told from here on
constexpr std::int64_t quiet_about_bounds = 100;  ///< and the bounds of a score: a fast game hears scores alone
constexpr std::int64_t status_interval = 1000;
constexpr int wait_between_polls = 10;

/// The shares of the tables in what Hash gives: the rest of a power of two is a size that the large table can have.
constexpr std::uint64_t transposition_quarters = 3;
constexpr std::uint64_t evaluation_part = 8;

/// Half moves that a mate in so many moves takes at most.
std::int64_t PliesOfMate(std::int64_t moves) { return 2 * moves; }

}  // namespace

UciProgram::UciProgram(Engine& engine) : engine_(engine), position_(StartPosition()) {
    const Timestamp now = Timestamp::Now();
    chance_.seed(static_cast<std::uint64_t>(now.seconds) * 1000000 + static_cast<std::uint64_t>(now.microseconds));
    resizeTables();
    newGame();
}

// --- The main loop ---

void UciProgram::run() {
    try {
        for (;;) {
            handle(nextLine());
            if (request_) runSearch();
        }
    } catch (const quit_command_received_exception&) {
        // The end of the program.
    }
}

std::string UciProgram::nextLine() {
    if (!waiting_.empty()) {
        std::string line = std::move(waiting_.front());
        waiting_.pop_front();
        return line;
    }
    std::optional<std::string> line = readLine();
    if (!line) throw quit_command_received_exception();
    return *std::move(line);
}

std::optional<std::string> UciProgram::readLine() {
    try {
        std::optional<std::string> line = has_input_ended_ ? std::nullopt : ReadLineOrEnd();
        if (!line) has_input_ended_ = true;
        return line;
    } catch (const input_line_too_long& failure) {
        output_.say(std::string(uci_texts::line_too_long) + failure.beginning());
        return "";
    }
}

void UciProgram::handle(const std::string& text) {
    CommandLine line;
    const CommandRow* const command = FindCommand(text, line);
    if (command == nullptr) return;
    if (is_searching_ && !command->beside_search) {
        waiting_.push_back(text);
    } else {
        command->carry_out(*this, line);
    }
}

// --- Commands ---

void UciProgram::introduce() {
    send(std::string(uci_texts::id_name) + std::string(vocabulary::program_name) + ' ' +
         std::string(vocabulary::program_version));
    send(uci_texts::id_author);
    for (const OptionRow& row : OptionRows()) send(OptionLine(row));
    send("uciok");
}

/// Memory is taken here, where no clock runs: the first use of 4 GiB costs seconds, and a fast search has milliseconds.
void UciProgram::getReady() {
    if (!is_searching_ && hasMemoryForTables()) engine_.tables.Touch();
    send("readyok");
}

/// Who asks for more than half of the memory gets what his searches use, and no more.
bool UciProgram::hasMemoryForTables() const {
    return static_cast<std::uint64_t>(values_.hash) * mebibyte <= PhysicalMemory() / 2;
}

void UciProgram::newGame() {
    clearTables();
    controller_.emplace(engine_);
    weighDraws();
    takeStyle();
}

void UciProgram::setPosition(const std::vector<std::string>& words) {
    const std::optional<PositionCommand> command = ReadPosition(words);
    position_.reset();
    if (!command) {
        output_.say(uci_texts::impossible_position);
        return;
    }
    position_ = command->board;
    if (!command->refused.empty()) output_.say(std::string(uci_texts::impossible_move) + command->refused);
}

void UciProgram::go(const std::vector<std::string>& words) {
    const GoCommand go = ReadGo(words);
    if (!position_) {
        request_ = Request{.limits = LimitsFor(go, white, values_.move_overhead)};
        return;
    }
    Request request{.limits = LimitsFor(go, position_->mover(), values_.move_overhead)};
    if (const Move move = bookMove(go); move != INVALID) {
        send("bestmove " + MoveText(move));
        return;
    }
    request.mate = std::clamp<std::int64_t>(go.mate.value_or(0), 0, infinity_bound);
    for (const std::string& text : go.search_moves) {
        if (const Move move = FindMove(text, *position_); move != INVALID) request.limits.root_moves.push_back(move);
    }
    request.limits.lines = values_.lines;
    request.is_weakened = values_.limit_strength && request.limits.kind != SearchKind::analyze;
    if (request.is_weakened) {
        limitStrength(request.limits);
    } else {
        request.known = syzygy_.rootMoves(*position_);
        // Who analyses wants to see the other moves too.
        const bool is_game = request.limits.kind != SearchKind::analyze && values_.lines == 1 && !values_.analyse_mode;
        if (is_game && request.limits.root_moves.empty()) request.limits.root_moves = BestTableMoves(request.known);
    }
    const bool has_help = syzygy_.isOpen() && !request.is_weakened;
    engine_.tablebases.Use(has_help ? SyzygyTables::makeSource() : nullptr);
    request_ = std::move(request);
}

Move UciProgram::bookMove(const GoCommand& go) {
    const bool is_wanted =
        values_.own_book && !values_.analyse_mode && !go.infinite && !go.ponder && !go.mate && go.search_moves.empty();
    return is_wanted ? book_.Choose(*position_, chance_()) : INVALID;
}

void UciProgram::limitStrength(SearchLimits& limits) const {
    const std::uint64_t nodes = StrengthOf(values_.elo).nodes;
    limits.max_nodes = limits.max_nodes == 0 ? nodes : std::min(limits.max_nodes, nodes);
    limits.lines = std::max(limits.lines, candidate_count);
}

void UciProgram::stop() {
    if (is_searching_) throw search_aborted_exception{.discard = false};
}

void UciProgram::ponderHit() {
    if (request_ && request_->limits.kind == SearchKind::pondering) {
        request_->limits.kind = SearchKind::normal;
        controller_->PonderHit();
    }
}

void UciProgram::setOption(const std::string& line) {
    const SetOptionCommand command = ReadSetOption(line);
    const OptionRow* const row = FindOption(command.name);
    if (row == nullptr) {
        output_.say(std::string(uci_texts::no_such_option) + command.name);
    } else if (!TakeValue(*row, command.value, values_)) {
        output_.say(std::string(uci_texts::refused_value) + std::string(row->name) + ": " + command.value);
    } else if (row->took != nullptr) {
        (static_cast<OptionActions&>(*this).*row->took)();
    }
}

// --- Options ---

void UciProgram::resizeTables() {
    const std::uint64_t bytes = static_cast<std::uint64_t>(values_.hash) * mebibyte;
    if (!engine_.tables.Resize(bytes * transposition_quarters / 4, bytes / evaluation_part)) {
        output_.say(uci_texts::no_memory);
    }
}

void UciProgram::clearTables() { engine_.tables.Clear(); }

void UciProgram::weighDraws() { controller_->SetContempt(values_.analyse_mode ? 0 : -values_.contempt); }

void UciProgram::takeStyle() {
    int style = values_.style;
    if (style == 0) (void)parse_personality(values_.personality, style);
    controller_->SetPersonality(style);
}

void UciProgram::readSettings() {
    if (values_.settings_file.empty()) {
        engine_.settings = {};
        return;
    }
    try {
        auto settings = OptimizeInterface::Settings::Of(engine_.settings);
        settings.ReadFile(SettingsPath(values_.settings_file));
        settings.ApplyTo(engine_.settings);
    } catch (const TextException& error) {
        output_.say(std::string(uci_texts::no_settings) + error.text());
    }
}

void UciProgram::openBook() {
    book_.Close();
    if (values_.book_file.empty() || book_.Open(values_.book_file)) return;
    output_.say(std::string(uci_texts::no_book) + values_.book_file);
}

void UciProgram::loadBitbases() {
    engine_.bitbases = {};
    if (values_.bitbase_path.empty()) {
        engine_.bitbases.Init();
        return;
    }
    const std::string folder = values_.bitbase_path + '/';
    try {
        engine_.bitbases.LoadTwoPawns(std::string(folder).append(vocabulary::two_pawns_file));
        engine_.bitbases.LoadRammedPawns(std::string(folder).append(vocabulary::rammed_pawn_file));
        output_.say(VorkaBitbases::ChecksumLine(engine_.bitbases.TwoPawnsChecksum(), vocabulary::two_pawns_file));
        output_.say(VorkaBitbases::ChecksumLine(engine_.bitbases.RammedPawnsChecksum(), vocabulary::rammed_pawn_file));
    } catch (const VorkaBitbases::CouldNotOpenFileException& error) {
        output_.say(error.text());
    }
}

void UciProgram::openSyzygy() {
    engine_.tablebases.Use(nullptr);
    const int men = syzygy_.open(values_.syzygy_path);
    if (men > 0) {
        output_.say(std::string(uci_texts::tables_found) + std::to_string(men));
    } else if (!values_.syzygy_path.empty()) {
        output_.say(HasSyzygy() ? std::string(uci_texts::no_tables) + values_.syzygy_path
                                : std::string(uci_texts::no_syzygy));
    }
}

void UciProgram::noteOpponent() { LogOnly(std::string(uci_texts::opponent) + values_.opponent); }

void UciProgram::openLog() {
    vlog.Close();
    if (!values_.log_file.empty() && !vlog.Open(values_.log_file)) {
        output_.say(std::string(uci_texts::could_not_open) + values_.log_file);
    }
}

// --- Searches ---

void UciProgram::runSearch() {
    is_searching_ = true;
    candidates_.clear();
    earlier_candidates_.clear();
    last_shown_ = INVALID;
    next_status_ = status_interval;
    if (position_) {
        controller_->Run(request_->limits, *position_, *this);
    } else {
        sendNoMove();
    }
    is_searching_ = false;
    request_.reset();
}

void UciProgram::hearInput() {
    while (!has_input_ended_ && IsInputAvailable()) {
        if (const std::optional<std::string> line = readLine()) handle(*line);
    }
    const bool is_answer_wanted = request_->limits.kind == SearchKind::normal && !HasHungUp();
    if (has_input_ended_ && !is_answer_wanted) throw quit_command_received_exception();
}

void UciProgram::pollInput() {
    hearInput();
    if (!controller_->IsRunning()) return;
    if (hasSpentStrength()) {
        waitForWord();
        throw search_aborted_exception{.discard = false};
    }
    const SearchInfo& info = controller_->info();
    if (info.Milliseconds() < next_status_) return;
    next_status_ = info.Milliseconds() + status_interval;
    send("info " + StatusText(told(info), engine_.tables));
}

/// A search that ponders goes beyond its nodes, since it does not end by itself. A weakened one must not: it waits, and
/// has no more nodes when `ponderhit` comes at its last one.
bool UciProgram::hasSpentStrength() const {
    return request_->is_weakened && controller_->info().nodes >= request_->limits.max_nodes;
}

void UciProgram::sendThinking(const SearchInfo& info) {
    noteCandidate(info);
    if (info.line < values_.lines) send(ThinkingLine(told(info), engine_.tables));
    if (info.line == 0 && !info.principal_variation.empty()) last_shown_ = info.principal_variation.front().first;
    if (info.line == 0 && hasFoundMate(info)) throw search_aborted_exception{.discard = false};
}

SearchInfo UciProgram::told(const SearchInfo& info) const {
    SearchInfo told = info;
    told.statistics.endings_known += request_->known.size();
    if (info.principal_variation.empty()) return told;
    if (const TableMove* const known = FindTableMove(request_->known, info.principal_variation.front().first)) {
        told.score = KnownScore(*known, info.score, controller_->contempt());
    }
    return told;
}

/// Whether the search may end with the mate that it was to find.
bool UciProgram::hasFoundMate(const SearchInfo& info) const {
    return request_->mate != 0 && request_->limits.kind == SearchKind::normal && info.score >= mate_score_limit &&
           infinity_bound - info.score <= PliesOfMate(request_->mate);
}

/// A better line of an iteration takes the place of the one before; those after it are of the iteration before.
void UciProgram::noteCandidate(const SearchInfo& info) {
    if (info.principal_variation.empty()) return;
    if (info.line == 0 && candidates_.size() > 1) earlier_candidates_ = candidates_;
    const auto place = static_cast<std::size_t>(info.line);
    const Move move = info.principal_variation.front().first;
    candidates_.resize(std::min(candidates_.size(), place));
    candidates_.push_back({.move = move, .score = info.score});
}

void UciProgram::sendCurrentMove(const SearchInfo& info, Move move) {
    if (info.Milliseconds() >= quiet_about_moves && info.line == 0) send(CurrentMoveLine(info, move));
}

void UciProgram::sendBound(const SearchInfo& info, int score, ScoreBound bound, const std::vector<Move>& line) {
    if (info.Milliseconds() < quiet_about_bounds || info.line >= values_.lines) return;
    if (!line.empty() && FindTableMove(request_->known, line.front()) != nullptr) return;  // there is no doubt
    send(BoundLine(info, engine_.tables, score, bound, *position_, line));
}

/// A search that ends while a better move is being confirmed plays it: then that line is shown, as a lower bound.
void UciProgram::sendSearchStatistics(const SearchInfo& searched) {
    const SearchInfo info = told(searched);
    if (!info.principal_variation.empty() && info.principal_variation.front().first != last_shown_) {
        std::vector<Move> line;
        for (const auto& [move, ignored_san] : info.principal_variation) line.push_back(move);
        send(BoundLine(info, engine_.tables, info.score, ScoreBound::at_least, *position_, line));
    }
    send("info " + StatusText(info, engine_.tables));
}

void UciProgram::onSearchFinished(bool discard) {
    if (discard) {
        send(position_->in_check() ? uci_texts::score_of_mate : uci_texts::score_of_stalemate);
        sendNoMove();
    } else {
        sendBestMove();
    }
}

void UciProgram::sendNoMove() {
    try {
        waitForWord();
    } catch (const search_aborted_exception&) {
        // That was the word.
    }
    send("bestmove " + MoveText(INVALID));
}

void UciProgram::waitForWord() {
    while (request_->limits.kind != SearchKind::normal) {
        SleepMilliseconds(wait_between_polls);
        hearInput();
    }
}

void UciProgram::sendBestMove() {
    const auto& line = controller_->info().principal_variation;
    Move best = controller_->best_move();
    if (request_->is_weakened && !candidates_.empty()) {
        // An iteration that was cut off has fewer lines than the one before it.
        const auto& most = candidates_.size() < earlier_candidates_.size() ? earlier_candidates_ : candidates_;
        best = ChooseBlurred(most, StrengthOf(values_.elo).blur, std::ref(chance_));
    }
    std::string text = "bestmove " + MoveText(best);
    if (line.size() > 1 && line.front().first == best) text += " ponder " + MoveText(line[1].first);
    send(text);
}

}  // namespace VorkaUci
