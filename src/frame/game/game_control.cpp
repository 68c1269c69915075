#include "frame/game/game_control.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "frame/base/checked_assert.h"
#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"
#include "frame/base/wall_clock.h"

namespace {

/// No search gets less, however short the time; in milliseconds.
constexpr std::int64_t least_budget = 150;
/// The part of the time left that no search may touch.
constexpr double untouched_share = 0.15;
/// What is kept back for each move that is still to come, in milliseconds.
constexpr std::int64_t kept_back_per_move = 3000;
/// The rest of a game is taken for so many moves.
constexpr std::int64_t moves_to_the_end = 30;
/// What a search for a hint or a forecast may take, and the part of it that it aims at; in milliseconds.
constexpr std::int32_t hint_time = 1000;
constexpr std::int32_t usual_hint_time = 750;

/// Milliseconds between two looks for input in the analysis of a finished game.
constexpr int waiting_interval = 125;

struct Budget {
    std::int32_t maximum;
    std::int32_t variable;
};

std::int32_t Milliseconds(std::int64_t value) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, least_budget, most));
}

/// `left` in milliseconds; `moves_left` to the time control, -1 for the rest of the game.
Budget TimeBudget(std::int64_t left, std::int32_t moves_left) {
    if (left <= 0) return {Milliseconds(least_budget), Milliseconds(least_budget)};
    const bool has_move_count = moves_left != -1;
    const std::int64_t moves = has_move_count ? moves_left : moves_to_the_end;
    const std::int64_t untouched = VorkaUtils::RoundToInteger(static_cast<double>(left) * untouched_share);
    std::int64_t maximum = std::max(left - untouched - moves * kept_back_per_move, least_budget);
    if (has_move_count) maximum = std::max(maximum, left / moves);
    // Half of an even share: the search takes more where it meets difficulties.
    return {Milliseconds(maximum), Milliseconds(left / (2 * moves + 2))};
}

}  // namespace

GameControl::GameControl(Engine& engine, GameProtocol& protocol) : engine_(engine), protocol_(&protocol) {
    setPlayers(defaultHuman(), defaultEngine(true), false);
}

PlayerInfo GameControl::defaultHuman() const {
    return {.name = playerDefaults_.opponentName,
            .rating = playerDefaults_.opponentRating,
            .isEngine = false,
            .active = false};
}

PlayerInfo GameControl::defaultEngine(bool active) const {
    return {.name = std::string(vocabulary::program_name),
            .rating = playerDefaults_.engineRating,
            .isEngine = true,
            .active = active};
}

GameControl::~GameControl() = default;

// --- Who plays ---

void GameControl::setPlayers(PlayerInfo onMove, PlayerInfo notOnMove, bool analyze) {
    const int sides_played = int{onMove.active} + int{notOnMove.active};
    mode_ = analyze ? EngineMode::analyze : static_cast<EngineMode>(sides_played);
    players_[side_to_move()] = std::move(onMove);
    players_[Opponent(side_to_move())] = std::move(notOnMove);
}

void GameControl::leavePlay(EngineMode mode) {
    mode_ = mode;
    for (PlayerInfo& player : players_) player.active = false;
}

void GameControl::newGame() {
    abortSearch(true);
    Reset();
    maxDepth_ = 0;
    maxTime_ = 0;
    startAnew();
    const bool analyzes = mode_ == EngineMode::analyze;
    setPlayers(defaultHuman(), defaultEngine(!analyzes), analyzes);
}

void GameControl::playSideOnMove() {
    abortSearch(true);
    setPlayers(defaultEngine(true), defaultHuman(), false);
    clock_.startClock();
    advisor_.reset();
}

void GameControl::playOtherSide() {
    abortSearch(true);
    setPlayers(defaultHuman(), defaultEngine(true), false);
    clock_.startClock();
    advisor_.reset();
}

void GameControl::stopPlaying() {
    abortSearch(true);
    clock_.stopClock();
    leavePlay(EngineMode::force);
}

void GameControl::startAnalysis() {
    abortSearch(true);
    clock_.stopClock();
    leavePlay(EngineMode::analyze);
}

void GameControl::leaveAnalysis() {
    abortSearch(true);
    leavePlay(EngineMode::force);
}

// --- Moves and positions ---

std::string GameControl::makeMove(Move move) {
    std::string text = MoveToSan(board(), move);
    clock_.switchClock();
    MakeMove(move);
    return text;
}

void GameControl::onMovesChanged() {
    forecast_ = {};
    protocol_->onBoardChanged(*this);
}

std::string GameControl::playMove(Move move) {
    std::string text = makeMove(move);
    onMovesChanged();
    if (mode_ == EngineMode::one_side) clock_.startClock();
    return text;
}

void GameControl::takeBack(std::size_t moves) {
    for (; moves > 0; --moves) UndoMove();
    onMovesChanged();
}

void GameControl::makeAgain(std::size_t moves) {
    abortSearch(true);
    for (; moves > 0; --moves) NextMove();
    onMovesChanged();
}

void GameControl::startAnew() {
    advisor_.reset();
    clock_.resetClock(side_to_move());
    onMovesChanged();
}

void GameControl::setPosition(const UserBoard& game) {
    abortSearch(true);
    UserBoard::operator=(game);
    startAnew();
}

void GameControl::setInvalidPosition() {
    abortSearch(true);
    SetInvalid();
    forecast_ = {};
}

void GameControl::giveMoveTo(Colour side) {
    abortSearch(true);
    if (side != side_to_move()) {
        ChangeSide();
        forecast_ = {};
    }
    clock_.stopClock();
    setPlayers(defaultHuman(), defaultEngine(true), false);
}

// --- The end of the game ---

bool GameControl::endGame(GameResult result, GameEndReason reason) {
    stopPlaying();
    if (IsGameOver()) return false;
    EndGame(result, reason);
    return true;
}

void GameControl::announceResult() {
    protocol_->sendGameResult(*this, result(), reason(), mode_);
    clock_.stopClock();
}

// --- Players and what they think a draw is worth ---

void GameControl::setContempt(std::int32_t value) {
    if (value == search_.contempt()) return;
    search_.SetContempt(value);
    advisor_.setDrawValue(value);
}

void GameControl::nameOpponent(const std::string& name) {
    playerDefaults_.opponentName = name;
    for (PlayerInfo& player : players_) {
        if (!player.isEngine) player.name = name;
    }
}

void GameControl::ratePlayers(std::int32_t engine, std::int32_t opponent) {
    playerDefaults_.engineRating = engine;
    playerDefaults_.opponentRating = opponent;
    // Names belong to sides only where the engine plays one side.
    if (players_[white].active == players_[black].active) return;
    for (PlayerInfo& player : players_) player.rating = player.active ? engine : opponent;
}

// --- The search ---

void GameControl::setPondering(bool on) {
    pondering_ = on;
    if (!on && running_ == SearchKind::pondering) abortSearch(true);
}

void GameControl::abortSearch(bool discard) {
    if (running_) throw search_aborted_exception{discard};
}

SearchLimits GameControl::limitsFor(SearchKind kind) const {
    switch (kind) {
        case SearchKind::normal:
        case SearchKind::pondering:
            break;
        case SearchKind::analyze:
            return {.kind = kind};
        case SearchKind::puzzle:
            return {.kind = kind, .max_time_limit = hint_time, .variable_time_limit = usual_hint_time};
    }
    // The engine ponders while the opponent's clock runs.
    const Colour side = kind == SearchKind::pondering ? Opponent(clock_.active()) : clock_.active();
    const Budget budget = TimeBudget(clock_.milliseconds(side), clock_.movesLeft(side));
    return {.kind = kind,
            .max_depth = maxDepth_,
            .max_time_limit = maxTime_ != 0 ? std::min(budget.maximum, maxTime_) : budget.maximum,
            .variable_time_limit = budget.variable};
}

void GameControl::requestSearch(SearchKind kind) const { requestSearch(kind, *this); }

void GameControl::requestSearch(SearchKind kind, const UserBoard& position) const {
    throw search_request_received_exception{SearchRequest{limitsFor(kind), position}};
}

void GameControl::requestHint() {
    CHECKED_ASSERT(forecast_ != Forecast::HintPending(), vocabulary::unfinished_hint_request);
    forecast_ = Forecast::HintPending();
    requestSearch(SearchKind::puzzle);
}

void GameControl::startPondering() {
    if (IsGameOver()) return;
    switch (forecast_.state()) {
        case Forecast::State::none:
            requestSearch(SearchKind::puzzle);
        case Forecast::State::move:
            ponderOnForecast();
            break;
        case Forecast::State::hint_pending:
        case Forecast::State::no_move_exists:
            break;
    }
}

void GameControl::ponderOnForecast() const {
    UserBoard expected = *this;
    expected.MakeMove(forecast_.move());
    if (!expected.IsGameOver()) requestSearch(SearchKind::pondering, expected);
}

void GameControl::ponderHit() {
    search_.PonderHit();
    running_ = SearchKind::normal;
}

void GameControl::runSearch(const SearchRequest& request, SearchHost& host) {
    running_ = request.limits.kind;
    search_.Run(request.limits, request.position, host);
}

void GameControl::waitInAnalysis(SearchHost& host) {
    running_ = SearchKind::analyze;
    try {
        for (;;) {
            SleepMilliseconds(waiting_interval);
            host.pollInput();
        }
    } catch (const search_aborted_exception&) {
        onSearchFinished(true);
    }
}

void GameControl::onSearchFinished(bool discard) {
    const std::optional<SearchKind> kind = std::exchange(running_, std::nullopt);
    if (discard) {
        forgetPendingHint();
    } else if (kind == SearchKind::normal) {
        onThinkingFinished();
    } else if (kind == SearchKind::puzzle) {
        onHintFinished();
    }
}

void GameControl::onThinkingFinished() {
    advisor_.addSearch(board(), search_.score(), engine_.tablebases);
    if (advisor_.drawOfferPending && answerDrawOffer()) return;

    const Move move = search_.best_move() & move_bits;
    const Move answer = answerInLine(move);
    protocol_->sendEngineMove(makeMove(move));
    onMovesChanged();
    if (IsGameOver()) {
        announceResult();
        return;
    }
    if (resignOrOfferDraw() || !pondering_) return;
    if (answer != INVALID) forecast_ = Forecast::Of(answer);
    startPondering();
}

bool GameControl::answerDrawOffer() {
    advisor_.drawOfferPending = false;
    if (!advisor_.acceptDraw()) {
        LogOnly(vocabulary::engine_rejects_draw_offer);
        protocol_->sendDrawRejected(advisor_.opponentIsComputer);
        return false;
    }
    protocol_->sendDrawAccepted();
    if (!protocol_->claimsResultItself()) return false;  // the interface answers with the result
    EndGame(GameResult::draw, GameEndReason::agreed_draw);
    announceResult();
    return true;
}

bool GameControl::resignOrOfferDraw() {
    if (advisor_.shouldResign()) {
        protocol_->sendResign();
        if (!protocol_->claimsResultItself()) return false;  // the interface answers with the result
        EndGame(players_[white].active ? GameResult::black_wins : GameResult::white_wins, GameEndReason::resignation);
        announceResult();
        return true;
    }
    if (advisor_.shouldOfferDraw()) {
        protocol_->sendDrawOffer();
        advisor_.sinceOffer = 0;
    }
    return false;
}

Move GameControl::answerInLine(Move move) const {
    const auto& line = search_.info().principal_variation;
    if (line.size() < 2 || (line[0].first & move_bits) != move) return INVALID;
    return line[1].first & move_bits;
}

void GameControl::onHintFinished() {
    const bool asked_for = forecast_ == Forecast::HintPending();
    forecast_ = Forecast::Of(search_.best_move());
    if (!asked_for && pondering_ && forecast_.state() == Forecast::State::move) ponderOnForecast();
}

void GameControl::forgetPendingHint() {
    if (forecast_ == Forecast::HintPending()) forecast_ = IsGameOver() ? Forecast::NoMoveExists() : Forecast();
}
