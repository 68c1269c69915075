#include "uci/uci_program.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "bitbases/bitbases.h"
#include "evaluation/personality.h"
#include "frame/base/hang_up.h"
#include "frame/base/logfile.h"
#include "frame/base/os_dependent.h"
#include "frame/base/vocabulary.h"
#include "search/settings/settings_file.h"
#include "search/settings/tournament_file.h"
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

constexpr std::chrono::milliseconds longest_preparation{2000};

/// The shares of the tables in what Hash gives: the rest of a power of two is a size that the large table can have.
constexpr std::uint64_t transposition_quarters = 3;
constexpr std::uint64_t evaluation_part = 8;

struct BitbaseRow {
    std::string_view file;
    void (VorkaBitbases::Bitbases::*load)(const std::string& path);
    const VorkaBitbases::FileState& (VorkaBitbases::Bitbases::*state)() const noexcept;
};
constexpr std::array bitbase_rows{
    BitbaseRow{vocabulary::two_pawns_file, &VorkaBitbases::Bitbases::LoadTwoPawns,
               &VorkaBitbases::Bitbases::TwoPawnsState},
    BitbaseRow{vocabulary::rammed_pawn_file, &VorkaBitbases::Bitbases::LoadRammedPawns,
               &VorkaBitbases::Bitbases::RammedPawnsState},
};

/// Half moves that a mate in so many moves takes at most.
std::int64_t PliesOfMate(std::int64_t moves) { return 2 * moves; }

}  // namespace

UciProgram::UciProgram(Engine& engine) : engine_(engine), position_(StartPosition()) {
    const Timestamp now = Timestamp::Now();
    chance_.seed(static_cast<std::uint64_t>(now.seconds) * 1000000 + static_cast<std::uint64_t>(now.microseconds));
    ResizeTables();
    NewGame({});
}

// --- The main loop ---

void UciProgram::Run() {
    try {
        for (;;) {
            const WaitingLine line = NextLine();
            Handle(line.text);
            if (!request_) continue;
            request_->is_stopped = line.is_stopped;
            if (line.is_ponder_hit) (void)EndPondering();
            RunSearch();
        }
    } catch (const quit_command_received_exception&) {
        // The end of the program.
    }
}

UciProgram::WaitingLine UciProgram::NextLine() {
    if (!waiting_.empty()) {
        WaitingLine line = std::move(waiting_.front());
        waiting_.pop_front();
        return line;
    }
    std::optional<std::string> line = ReadLine();
    if (!line) throw quit_command_received_exception();
    return {.text = *std::move(line)};
}

// The text of the note tells the number.
static_assert(longest_input_line == 1048576);

std::optional<std::string> UciProgram::ReadLine() {
    try {
        std::optional<std::string> line = has_input_ended_ ? std::nullopt : ReadLineOrEnd();
        if (!line) has_input_ended_ = true;
        return line;
    } catch (const input_line_too_long& failure) {
        output_.Say(std::string(uci_texts::line_too_long) + failure.beginning());
        return "";
    }
}

void UciProgram::Handle(const std::string& text) {
    const std::optional<FoundCommand> command = FindCommand(text);
    if (!command) return;
    if (is_searching_ && !command->row.beside_search) {
        waiting_.push_back({.text = text});
    } else {
        (static_cast<CommandActions&>(*this).*command->row.carry_out)(command->line);
    }
}

// --- Commands ---

void UciProgram::Introduce(const CommandLine& /*line*/) {
    Send(std::string(uci_texts::id_name) + std::string(vocabulary::program_name) + ' ' +
         std::string(vocabulary::program_version));
    Send(uci_texts::id_author);
    for (const OptionRow& row : OptionRows()) Send(OptionLine(row));
    Send("uciok");
    // The files were read at the start, when nothing may be said.
    if (!has_told_of_bitbases_) TellOfBitbases();
}

void UciProgram::SetDebug(const CommandLine& line) {
    constexpr std::string_view off_word = "off";
    output_.SetDebug(std::find(line.words.begin(), line.words.end(), off_word) == line.words.end());
}

/// Memory is taken here, where no clock runs: the first use of 4 GiB costs seconds, and a fast search has milliseconds.
/// But an interface doesn't wait for ever either; the next `isready` goes on.
void UciProgram::GetReady(const CommandLine& /*line*/) {
    if (!is_searching_ && HasMemoryForTables()) {
        (void)engine_.tables.Touch(std::chrono::steady_clock::now() + longest_preparation);
    }
    Send("readyok");
}

/// Who asks for more than half of the memory gets what his searches use, and no more.
bool UciProgram::HasMemoryForTables() const {
    return static_cast<std::uint64_t>(values_.hash) * mebibyte <= PhysicalMemory() / 2;
}

void UciProgram::NewGame(const CommandLine& /*line*/) { ClearTables(); }

void UciProgram::SetPosition(const CommandLine& line) {
    const std::optional<PositionCommand> command = ReadPosition(line.words);
    position_.reset();
    if (!command) {
        output_.Say(uci_texts::impossible_position);
        return;
    }
    position_ = command->board;
    if (!command->refused.empty()) output_.Say(std::string(uci_texts::impossible_move) + command->refused);
}

void UciProgram::Go(const CommandLine& line) {
    const GoCommand go = ReadGo(line.words);
    if (!position_) {
        request_ = Request{.limits = LimitsFor(go, white, values_.move_overhead)};
    } else if (const Move move = MoveOfBook(go); move != INVALID) {
        Send("bestmove " + MoveText(move));
    } else {
        request_ = RequestFor(go);
    }
}

/// What one search has stored is no knowledge of the other: the bets behind it are not the same.
void UciProgram::UseSearch(bool tournament) {
    if (tournament == engine_.uses_tournament_search) return;
    engine_.uses_tournament_search = tournament;
    ClearTables();
}

UciProgram::Request UciProgram::RequestFor(const GoCommand& go) {
    Request request{.limits = LimitsFor(go, position_->mover(), values_.move_overhead)};
    request.mate = std::clamp<std::int64_t>(go.mate.value_or(0), 0, infinity_bound);
    for (const std::string& text : go.search_moves) {
        if (const Move move = FindMove(text, *position_); move != INVALID) request.limits.root_moves.push_back(move);
    }
    request.limits.lines = values_.lines;
    request.is_weakened = values_.limit_strength && request.limits.kind != SearchKind::analyze;
    // The classic search is what the levels of strength were made for, and it looks at every move that may mate.
    UseSearch(values_.search == uci_texts::tournament_search && !request.is_weakened && !go.mate);
    if (request.is_weakened) {
        strength_.Begin(values_.elo, request.limits);
    } else {
        request.known = syzygy_.RootMoves(*position_);
        // Who analyses wants to see the other moves too.
        const bool is_game = request.limits.kind != SearchKind::analyze && values_.lines == 1 && !values_.analyse_mode;
        if (is_game && request.limits.root_moves.empty()) request.limits.root_moves = BestTableMoves(request.known);
    }
    const bool has_help = syzygy_.IsOpen() && !request.is_weakened;
    engine_.tablebases.Use(has_help ? SyzygyTables::MakeSource() : nullptr);
    return request;
}

Move UciProgram::MoveOfBook(const GoCommand& go) {
    const bool is_wanted =
        values_.own_book && !values_.analyse_mode && !go.infinite && !go.ponder && !go.mate && go.search_moves.empty();
    return is_wanted ? book_.Choose(*position_, chance_()) : INVALID;
}

void UciProgram::Stop(const CommandLine& /*line*/) {
    for (WaitingLine& line : waiting_) line.is_stopped = true;
    if (is_searching_) throw search_aborted_exception{.discard = false};
}

/// Without a search to go on with, it is for one that waits.
void UciProgram::PonderHit(const CommandLine& /*line*/) {
    if (EndPondering()) {
        controller_->PonderHit();
    } else {
        for (WaitingLine& line : waiting_) line.is_ponder_hit = true;
    }
}

bool UciProgram::EndPondering() {
    if (!request_ || request_->limits.kind != SearchKind::pondering) return false;
    request_->limits.kind = SearchKind::normal;
    return true;
}

void UciProgram::Quit(const CommandLine& /*line*/) { throw quit_command_received_exception(); }

void UciProgram::SetOption(const CommandLine& line) {
    const SetOptionCommand command = ReadSetOption(line.text);
    const OptionRow* const row = FindOption(command.name);
    if (command.name.empty()) {
        output_.Say(uci_texts::setoption_lacks_name);
    } else if (row == nullptr) {
        output_.Say(std::string(uci_texts::no_such_option) + command.name);
    } else if (!TakeValue(*row, command.value, values_)) {
        const std::string value = command.value.empty() ? std::string(uci_texts::no_value) : command.value;
        output_.Say(std::string(uci_texts::refused_value) + std::string(row->name) + ": " + value);
    } else if (row->took != nullptr) {
        (static_cast<OptionActions&>(*this).*row->took)();
    }
}

// --- Options ---

void UciProgram::ResizeTables() {
    const std::uint64_t bytes = static_cast<std::uint64_t>(values_.hash) * mebibyte;
    if (!engine_.tables.Resize(bytes * transposition_quarters / 4, bytes / evaluation_part)) {
        output_.Say(uci_texts::no_memory);
        return;
    }
    const HashTables& tables = engine_.tables;
    if (tables.transposition.totalBytes() == bytes * transposition_quarters / 4) return;
    const std::uint64_t taken =
        tables.transposition.totalBytes() + tables.pawn.totalBytes() + tables.evaluation.totalBytes();
    output_.Say(std::string(uci_texts::tables_take) + std::to_string((taken + mebibyte - 1) / mebibyte) +
                std::string(uci_texts::of_the_hash) + std::to_string(values_.hash));
}

/// With the tables goes what the searches know of moves: the next one is as if it were the first.
void UciProgram::ClearTables() {
    engine_.tables.Clear();
    controller_.emplace(engine_);
    WeighDraws();
    TakeStyle();
}

void UciProgram::WeighDraws() { controller_->SetContempt(values_.analyse_mode ? 0 : -values_.contempt); }

void UciProgram::TakeStyle() {
    int style = values_.style;
    if (style == 0) (void)parse_personality(values_.personality, style);
    controller_->SetPersonality(style);
}

void UciProgram::ReadSettings() {
    if (values_.settings_file.empty()) {
        engine_.settings = {};
        return;
    }
    try {
        auto settings = OptimizeInterface::Settings::Of(engine_.settings);
        settings.ReadFile(SettingsPath(values_.settings_file));
        settings.ApplyTo(engine_.settings);
        const bool is_tournament = values_.search == uci_texts::tournament_search && !values_.limit_strength;
        if (is_tournament) output_.Say(uci_texts::few_settings_count);
    } catch (const TextException& error) {
        std::string text = std::string(uci_texts::no_settings) + error.text();
        if (const std::string places = PlacesOfNamedSettings(values_.settings_file); !places.empty()) {
            text.append(uci_texts::looked_for_in).append(places);
        }
        output_.Say(text);
    }
}

void UciProgram::ReadTournamentFile() {
    try {
        values_.tournament = values_.tournament_file.empty() ? TournamentSettings()
                                                             : tournament_settings::ReadFile(values_.tournament_file);
        TakeTournamentSettings();
    } catch (const TextException& error) {
        output_.Say(std::string(uci_texts::no_settings) + error.text());
    }
}

void UciProgram::TakeTournamentSettings() { engine_.tournament = values_.tournament; }

void UciProgram::OpenBook() {
    book_.Close();
    if (values_.book_file.empty() || book_.Open(values_.book_file)) return;
    output_.Say(std::string(uci_texts::no_book) + values_.book_file);
}

/// Each by itself: what is wrong with one keeps no other out of use.
void UciProgram::LoadBitbases() {
    engine_.bitbases = {};
    if (values_.bitbase_path.empty()) {
        engine_.bitbases.Init();
    } else {
        for (const BitbaseRow& row : bitbase_rows) {
            try {
                (engine_.bitbases.*row.load)((values_.bitbase_path + '/').append(row.file));
            } catch (const VorkaBitbases::CouldNotOpenFileException&) {
                // Its state tells why.
            }
        }
    }
    TellOfBitbases();
}

/// Those of the program's own folder need not be there; Init reads only what is.
void UciProgram::TellOfBitbases() {
    has_told_of_bitbases_ = true;
    const std::string& folder = values_.bitbase_path.empty() ? ExecutableDirectory() : values_.bitbase_path;
    for (const BitbaseRow& row : bitbase_rows) {
        output_.Say(VorkaBitbases::Complaint((engine_.bitbases.*row.state)(), folder, row.file));
    }
}

void UciProgram::OpenSyzygy() {
    engine_.tablebases.Use(nullptr);
    const int men = syzygy_.Open(values_.syzygy_path);
    if (men > 0) {
        output_.Say(std::string(uci_texts::tables_found) + std::to_string(men));
    } else if (!values_.syzygy_path.empty()) {
        output_.Say(HasSyzygy() ? std::string(uci_texts::no_tables) + values_.syzygy_path
                                : std::string(uci_texts::no_syzygy));
    }
}

void UciProgram::NoteOpponent() { LogOnly(std::string(uci_texts::opponent) + values_.opponent); }

void UciProgram::OpenLog() {
    vlog.Close();
    if (values_.log_file.empty() || vlog.Open(values_.log_file)) return;
    const std::string_view reason = vlog.was_in_use() ? uci_texts::log_in_use : std::string_view();
    output_.Say((std::string(uci_texts::could_not_open) + values_.log_file).append(reason));
}

// --- Searches ---

void UciProgram::RunSearch() {
    is_searching_ = true;
    last_shown_ = INVALID;
    next_status_ = status_interval;
    if (position_) {
        controller_->Run(request_->limits, *position_, *this);
    } else {
        SendNoMove();
    }
    is_searching_ = false;
    request_.reset();
}

void UciProgram::HearInput() {
    if (request_->is_stopped) throw search_aborted_exception{.discard = false};
    while (!has_input_ended_ && IsInputAvailable()) {
        if (const std::optional<std::string> line = ReadLine()) Handle(*line);
    }
    const bool is_answer_wanted = request_->limits.kind == SearchKind::normal && !HasHungUp();
    if (has_input_ended_ && !is_answer_wanted) throw quit_command_received_exception();
}

void UciProgram::pollInput() {
    HearInput();
    if (!controller_->IsRunning()) return;
    if (request_->is_weakened && strength_.HasSpentNodes(controller_->info())) {
        WaitForWord();
        throw search_aborted_exception{.discard = false};
    }
    const SearchInfo& info = controller_->info();
    if (info.Milliseconds() < next_status_) return;
    next_status_ = info.Milliseconds() + status_interval;
    Send("info " + StatusText(Told(info), engine_.tables));
}

void UciProgram::sendThinking(const SearchInfo& info) {
    if (request_->is_weakened) strength_.Note(info);
    if (info.line < values_.lines) Send(ThinkingLine(Told(info), engine_.tables));
    if (info.line == 0 && !info.principal_variation.empty()) last_shown_ = info.principal_variation.front().first;
    if (info.line == 0 && HasFoundMate(info)) throw search_aborted_exception{.discard = false};
}

SearchInfo UciProgram::Told(const SearchInfo& info) const {
    SearchInfo told = info;
    told.statistics.endings_known += request_->known.size();
    if (info.principal_variation.empty()) return told;
    if (const TableMove* const known = FindTableMove(request_->known, info.principal_variation.front().first)) {
        told.score = KnownScore(*known, info.score, controller_->contempt());
    }
    return told;
}

/// Whether the search may end with the mate that it was to find.
bool UciProgram::HasFoundMate(const SearchInfo& info) const {
    return request_->mate != 0 && request_->limits.kind == SearchKind::normal && info.score >= mate_score_limit &&
           infinity_bound - info.score <= PliesOfMate(request_->mate);
}

void UciProgram::sendCurrentMove(const SearchInfo& info, Move move) {
    if (info.Milliseconds() >= quiet_about_moves && info.line == 0) Send(CurrentMoveLine(info, move));
}

void UciProgram::sendBound(const SearchInfo& info, int score, ScoreBound bound, std::span<const Move> line) {
    if (info.Milliseconds() < quiet_about_bounds || info.line >= values_.lines) return;
    if (!line.empty() && FindTableMove(request_->known, line.front()) != nullptr) return;  // there is no doubt
    Send(BoundLine(info, engine_.tables, score, bound, *position_, line));
}

/// A search that ends while a better move is being confirmed plays it: then that line is shown, as a lower bound.
void UciProgram::sendSearchStatistics(const SearchInfo& searched) {
    const SearchInfo info = Told(searched);
    if (!info.principal_variation.empty() && info.principal_variation.front().first != last_shown_) {
        std::vector<Move> line;
        for (const auto& [move, ignored_san] : std::span(info.principal_variation).first(info.known_moves)) {
            line.push_back(move);
        }
        Send(BoundLine(info, engine_.tables, info.score, ScoreBound::at_least, *position_, line));
    }
    Send("info " + StatusText(info, engine_.tables));
}

void UciProgram::onSearchFinished(bool discard) {
    if (discard) {
        Send(position_->in_check() ? uci_texts::score_of_mate : uci_texts::score_of_stalemate);
        SendNoMove();
    } else {
        SendBestMove();
    }
}

void UciProgram::SendNoMove() {
    try {
        WaitForWord();
    } catch (const search_aborted_exception&) {
        // That was the word.
    }
    Send("bestmove " + MoveText(INVALID));
}

void UciProgram::WaitForWord() {
    while (request_->limits.kind != SearchKind::normal) {
        SleepMilliseconds(wait_between_polls);
        HearInput();
    }
}

void UciProgram::SendBestMove() {
    const auto& line = controller_->info().principal_variation;
    Move best = request_->is_weakened ? strength_.Choose(chance_) : INVALID;
    if (best == INVALID) best = controller_->best_move();
    std::string text = "bestmove " + MoveText(best);
    // A move that only stood in the table is no part of the line that is shown, but good enough to ponder on.
    if (line.size() > 1 && line.front().first == best) text += " ponder " + MoveText(line[1].first);
    Send(text);
}

}  // namespace VorkaUci
