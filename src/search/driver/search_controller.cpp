#include "search/driver/search_controller.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "chess/move_generator.h"
#include "chess/notation.h"
#include "frame/base/checked_assert.h"
#include "frame/base/theory.h"
#include "frame/base/vocabulary.h"
#include "search/driver/tournament_root_search.h"
#include "search/state/search_board.h"

namespace {

/// Iterations of a search without a depth bound.
constexpr int deepest_iteration = 80;
/// For so long the first iteration is not disturbed, and a puzzle goes on; milliseconds.
constexpr std::int64_t undisturbed_time = 3000;
constexpr int wait_between_polls = 125;  // milliseconds
constexpr std::uint64_t least_countdown = 100;
/// The first nodes are slow, since the memory of their tables is cold: a search with an interval of its own looks up
/// after a few of them, and then after so many parts of what it has searched.
constexpr std::uint64_t least_countdown_at_first = 10;
constexpr std::uint64_t parts_at_first = 10;
/// A candidate beat the best score already, so its bisection begins a little above it.
constexpr Score candidate_lead = 10;

/// The share of the pondering time that does not count.
constexpr std::int64_t free_pondering_tenths = 3;

int LastIteration(const SearchLimits& limits) {
    if (limits.max_depth == 0 || limits.kind == SearchKind::analyze) return deepest_iteration;
    return std::min<int>(limits.max_depth, std::numeric_limits<std::int16_t>::max());  // it is reported in 16 bits
}

bool MayChoose(const SearchLimits& limits, Move move) {
    const auto& chosen = limits.root_moves;
    return chosen.empty() || std::find(chosen.begin(), chosen.end(), move) != chosen.end();
}

}  // namespace

/// Marks the search as running, for as long as its tree or its wait loop is on the stack.
class SearchController::RunningScope {
  public:
    RunningScope(SearchController& controller, SearchHost& host) : controller_(controller) {
        controller_.host_ = &host;
        controller_.info_.start = Timestamp::Now();
    }
    ~RunningScope() {
        controller_.ReturnToBestLine();
        controller_.FlushCounters();
        controller_.info_.end = Timestamp::Now();
        controller_.info_.valid = false;

        controller_.host_ = nullptr;
    }
    RunningScope(const RunningScope&) = delete;
    RunningScope& operator=(const RunningScope&) = delete;

  private:
    SearchController& controller_;
};

SearchController::SearchController(Engine& engine) : engine_(engine), search_(std::make_unique<SearchBoard>(engine)) {
    search_->poll = this;
    search_->evaluation.settings = &evaluation_settings_;
}

SearchController::~SearchController() = default;

void SearchController::Run(const SearchLimits& limits, const UserBoard& position, SearchHost& host) {
    Begin(limits);
    if (!position.IsGameOver() && position.IsPositionValid()) ListRootMoves(position.board());
    RunFrom(position.board(), host);
}

void SearchController::Run(const SearchLimits& limits, const BOARD& position, SearchHost& host) {
    Begin(limits);
    ListRootMoves(position);
    RunFrom(position, host);
}

void SearchController::Begin(const SearchLimits& limits) {
    if constexpr (theory_is_checked) CHECKED_ASSERT(!IsRunning(), vocabulary::no_error_description);
    info_ = {};
    root_moves_.clear();
    limits_ = limits;
}

/// The root moves are listed.
void SearchController::RunFrom(const BOARD& position, SearchHost& host) {
    if (root_moves_.empty()) {
        host.onSearchFinished(true);
        return;
    }
    StartSearch(position);
    bool discard = false;
    try {
        const RunningScope running(*this, host);
        IterationLoop();
        WaitForInput();
    } catch (const search_aborted_exception& aborted) {
        discard = aborted.discard;
    }
    NoteTableUse();
    host.sendSearchStatistics(info_);
    host.onSearchFinished(discard);
}

void SearchController::ListRootMoves(const BOARD& position) {
    std::vector<Move> moves;
    GenerateLegalMoves(position, moves);
    for (const Move move : moves) {
        if (!MayChoose(limits_, move)) continue;
        root_moves_.push_back({.move = move, .text = MoveToSan(position, move)});
    }
    info_.root_moves = static_cast<int>(root_moves_.size());
}

void SearchController::StartSearch(const BOARD& position) {
    ponder_hit_ = {};
    fail_state_ = FailState::none;
    first_root_move_ = false;
    root_side_ = position.mover();
    UpdateDrawScore(contempt_);
    engine_.tables.NewSearch();
    clock_.Reset(limits_.max_time_limit, limits_.variable_time_limit,
                 LeavesFirstIterationWhole() ? FirstIteration::is_whole : FirstIteration::has_hard_limit);
    clock_of_other_lines_.Reset(0, 0);
    line_scores_.clear();
    search_->StartSearch(position, contempt_);
    root_search_ = &ChosenRootSearch();
    root_search_->NewSearch();
    search_->poll_countdown = NodesToNextPoll(UsualCountdown(0), limits_.max_nodes + 1);
}

RootSearch& SearchController::ChosenRootSearch() {
    if (!engine_.uses_tournament_search) return classic_;
    if (!tournament_) tournament_ = std::make_unique<TournamentRootSearch>(engine_.tournament);
    return *tournament_;
}

void SearchController::PonderHit() {
    limits_.kind = SearchKind::normal;
    ponder_hit_ = Timestamp::Now();
}

Move SearchController::best_move() const {
    if (!info_.principal_variation.empty()) return info_.principal_variation.front().first;
    return root_moves_.empty() ? INVALID : root_moves_.front().move;
}

// --- Iterations ---

void SearchController::IterationLoop() {
    const int last_iteration = LastIteration(limits_);
    for (int depth = 1; depth <= last_iteration; ++depth) {
        StartIteration(depth);
        SearchLine();
        SearchOtherLines();
        root_search_->NoteEffort(root_moves_, clock_);
        if (limits_.kind == SearchKind::normal &&
            (IsForced() || clock_.ShouldStop(Elapsed(), SearchMoment::iteration_complete, FailState::none))) {
            return;
        }
    }
}

/// No time of a game is spent on the only move, if the search sees it so.
bool SearchController::IsForced() const {
    return root_moves_.size() == 1 && limits_.variable_time_limit != 0 &&
           root_search_->IsEnoughForOnlyMove(info_.depth);
}

void SearchController::StartIteration(int depth) {
    clock_.NewIteration();
    info_.depth = static_cast<std::int16_t>(depth);
    search_->iteration_depth = depth;
    search_->ForgetMovesPlayed();
    info_.moves_to_search = info_.root_moves;
    root_search_->OrderMoves(root_moves_, Lines(), depth);
    host_->sendDepthStarted(depth);
}

/// The moves from the first of the line on, until no other is better.
void SearchController::SearchLine() {
    SearchFirstMove();
    for (auto index = static_cast<std::size_t>(info_.line) + 1; index < root_moves_.size(); ++index) {
        SearchFurtherMove(index);
    }
}

std::size_t SearchController::Lines() const {
    return std::min(static_cast<std::size_t>(std::max(limits_.lines, 1)), root_moves_.size());
}

/// The next best moves: the same search among the root moves that no line has yet.
void SearchController::SearchOtherLines() {
    const std::size_t lines = Lines();
    if (lines == 1) return;
    line_scores_.resize(lines, info_.score);
    best_line_ = CurrentLine();
    for (std::size_t line = 1; line < lines; ++line) {
        most_ = info_.score;
        info_.line = static_cast<int>(line);
        info_.score = std::min(line_scores_[line], most_);
        info_.moves_to_search = info_.root_moves - info_.line;
        SearchLine();
        line_scores_[line] = info_.score;
    }
    ReturnToBestLine();
}

void SearchController::ReturnToBestLine() {
    if (!best_line_) return;
    info_.line = 0;
    TakeBack(*std::exchange(best_line_, std::nullopt));
    most_ = infinity_bound;
}

void SearchController::TakeBack(LineResult line) {
    info_.score = line.score;
    info_.principal_variation = std::move(line.variation);
    info_.known_moves = line.known_moves;
}

void SearchController::SearchFirstMove() {
    RootMoveRecord& record = *FirstOfLine();
    NameCurrentMove(record);
    info_.score = FindScore(record, -infinity_bound, info_.score);
    --info_.moves_to_search;
    ShowLine(record);
    host_->sendThinking(info_);
}

void SearchController::SearchFurtherMove(std::size_t index) {
    RootMoveRecord& record = root_moves_[index];
    NameCurrentMove(record);
    fail_state_ = FailState::none;
    const auto refutes = [&](Distance reduction) {
        return RefutationTest(info_.score, [&](Score test) {
            return Ask(record, {.test = test, .depth = info_.depth, .reduction = reduction, .expected = NodeType::cut});
        });
    };
    // What is reduced is late among the moves of its own line.
    const Distance reduction = root_search_->Reduction(static_cast<int>(index) - info_.line, info_.depth);
    const bool refuted = info_.score >= most_ || (reduction > 0 && refutes(reduction)) || refutes(0);
    if (!refuted) ConfirmCandidate(index);
    --info_.moves_to_search;
}

/// A later move seems to beat the best one. Its line stands as the best one from here on, since it did well enough to
/// be played if the search is stopped now, and goes away only if the bisection finds that the move is no better.
void SearchController::ConfirmCandidate(std::size_t index) {
    const auto first = FirstOfLine();
    const auto candidate = std::next(root_moves_.begin(), static_cast<std::ptrdiff_t>(index));
    std::rotate(first, candidate, std::next(candidate));
    RootMoveRecord& record = *first;
    ClockOfLine().NoteCandidate();
    host_->sendNewPvMove(record.text);
    LineResult old_line = CurrentLine();
    ShowLine(record);

    const Score score = FindScore(record, info_.score, info_.score + candidate_lead);
    if (score > info_.score) {
        info_.score = score;
        ShowLine(record);
        host_->sendThinking(info_);
    } else {
        ClockOfLine().NoteInstability();
        host_->sendSearchInstability();
        std::swap(*first, *std::next(first));
        TakeBack(std::move(old_line));
    }
}

/// Analysis and pondering do not end by themselves.
void SearchController::WaitForInput() {
    while (!EndsByItself()) {
        SleepMilliseconds(PollInterval());
        host_->pollInput();
    }
}

// --- Root moves ---

void SearchController::NameCurrentMove(const RootMoveRecord& record) {
    info_.root_move_text = record.text;
    info_.valid = true;
    host_->sendCurrentMove(info_, record.move);
}

Score SearchController::FindScore(RootMoveRecord& record, Score lower, Score guess) {
    first_root_move_ = true;
    const BoundSearchTask task{.depth = info_.depth,
                               .lower = lower,
                               .upper = most_,
                               .guess = best_line_ ? std::min(guess, most_) : guess,
                               .contempt = contempt_};
    const auto ask = [&](Score test) {
        // What the question expects: the guess holds, and the reply to the move fails; or else one of them refutes it.
        const NodeType expected = test <= task.guess ? NodeType::all : NodeType::cut;
        const Score answer = Ask(record, {.test = test, .depth = info_.depth, .expected = expected});
        const ScoreBound bound = answer >= test ? ScoreBound::at_least : ScoreBound::at_most;
        host_->sendBound(info_, answer, bound, std::span(record.line).first(record.known));
        return answer;
    };
    const Score score = root_search_->FindScore(task, ClockOfLine(), fail_state_, ask);
    first_root_move_ = false;
    return score;
}

Score SearchController::Ask(RootMoveRecord& record, const RootQuestion& question) {
    const std::uint64_t before = info_.nodes;
    search_->settings = engine_.settings;
    WriteLineToHash(search_->board, record, search_->position_class[0], engine_.tables.transposition);
    const Score answer = root_search_->Ask(*search_, record.move, question);
    FlushCounters();
    record.nodes += info_.nodes - before;
    ReadLineBack(*search_, question, record);
    return answer;
}

void SearchController::ShowLine(const RootMoveRecord& record) {
    info_.principal_variation = RenderLine(search_->board, record.line);
    info_.known_moves = std::min(record.known, info_.principal_variation.size());
}

// --- Polling ---

void SearchController::Poll() {
    FlushCounters();
    const auto milliseconds = info_.Milliseconds();
    if (HasSpentNodes()) throw search_aborted_exception{.discard = false};
    search_->poll_countdown = NodesToNextPoll(UsualCountdown(milliseconds), limits_.max_nodes - info_.nodes);

    if (milliseconds <= undisturbed_time && info_.depth == 1 && LeavesFirstIterationWhole()) return;
    if (limits_.kind == SearchKind::puzzle) {
        if (milliseconds > undisturbed_time) throw search_aborted_exception{.discard = false};
    } else {
        host_->pollInput();
        if (!EndsByItself()) return;
    }
    const bool is_first = first_root_move_ && !best_line_;
    const auto moment = is_first ? SearchMoment::first_root_move : SearchMoment::later_root_move;
    const auto fail_state = is_first ? fail_state_ : FailState::none;
    if (clock_.ShouldStop(Elapsed(), moment, fail_state)) throw search_aborted_exception{.discard = false};
}

/// Milliseconds.
int SearchController::PollInterval() const {
    return limits_.poll_interval != 0 ? limits_.poll_interval : wait_between_polls;
}

/// The nodes of one interval. In the first second there are fewer: the speed is not known yet, or no more than begun.
std::uint64_t SearchController::UsualCountdown(std::int64_t milliseconds) const {
    const std::uint64_t nodes_per_second =
        milliseconds < 1000 ? info_.nodes : info_.nodes * 1000 / static_cast<std::uint64_t>(milliseconds);
    const std::uint64_t least =
        limits_.poll_interval != 0 ? std::clamp(info_.nodes / parts_at_first, least_countdown_at_first, least_countdown)
                                   : least_countdown;
    return nodes_per_second * static_cast<std::uint64_t>(PollInterval()) / 1000 + least;
}

/// A poll comes before its node is counted, so the one that ends a search comes with the first node too many.
std::uint64_t SearchController::NodesToNextPoll(std::uint64_t usual, std::uint64_t to_the_limit) const {
    const bool is_bounded = limits_.max_nodes > info_.nodes;
    return is_bounded ? std::min(usual, to_the_limit) : usual;
}

bool SearchController::HasSpentNodes() const {
    return limits_.max_nodes != 0 && info_.nodes >= limits_.max_nodes && EndsByItself();
}

void SearchController::FlushCounters() {
    info_.nodes += std::exchange(search_->nodes, 0);
    info_.ettc_tries += std::exchange(search_->ettc_tries, 0);
    info_.ettc_cutoffs += std::exchange(search_->ettc_cutoffs, 0);
    info_.statistics = search_->statistics;
    info_.selective_depth = search_->DeepestPly();
}

void SearchController::NoteTableUse() {
    const auto use_of = [](const ABSTRACT_HASH_TABLE& table) { return TableUse{table.probes(), table.hits()}; };
    info_.transposition_table = use_of(engine_.tables.transposition);
    info_.pawn_hash_table = use_of(engine_.tables.pawn);
    info_.evaluation_hash_table = use_of(engine_.tables.evaluation);
}

/// Milliseconds that count against the limits: the time before a ponder hit counts for 70 percent only.
std::int64_t SearchController::Elapsed() const {
    const std::int64_t since_start = ElapsedMilliseconds(info_.start, Timestamp::Now());
    if (!ponder_hit_.valid) return since_start;
    return since_start - ElapsedMilliseconds(info_.start, ponder_hit_) * free_pondering_tenths / 10;
}

bool SearchController::EndsByItself() const {
    return limits_.kind == SearchKind::normal || limits_.kind == SearchKind::puzzle;
}

// --- Settings of the evaluation ---

void SearchController::SetContempt(int contempt) {
    if (contempt == contempt_) return;
    contempt_ = contempt;
    UpdateDrawScore(contempt);
}

/// The evaluator takes White's view of a draw. What the tables remember depends on it.
void SearchController::UpdateDrawScore(int contempt) {
    const auto draw_score = static_cast<std::int16_t>(root_side_ == white ? contempt : -contempt);
    if (draw_score == evaluation_settings_.draw_score) return;
    evaluation_settings_.draw_score = draw_score;
    engine_.tables.ClearScores();
}

void SearchController::SetPersonality(int personality) {
    if (personality == evaluation_settings_.personality) return;
    evaluation_settings_.personality = static_cast<std::int16_t>(personality);
    engine_.tables.ClearScores();
}
