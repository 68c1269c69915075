#include "frame/game/game_control.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "frame/base/logfile.h"
#include "frame/base/text_utilities.h"
#include "frame/base/vocabulary.h"

namespace {

/// No search is given less, however short the time: in milliseconds.
constexpr std::int64_t least_budget = 150;

struct Budget {
    std::int32_t maximum;
    std::int32_t variable;
};

std::int32_t Milliseconds(std::int64_t value) {
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, least_budget, most));
}

/// `left` in milliseconds; `moves_left` to the time control, -1 for the rest of the game, which is taken for 30 moves.
Budget TimeBudget(std::int64_t left, std::int32_t moves_left) {
    if (left <= 0) return {Milliseconds(least_budget), Milliseconds(least_budget)};
    const bool has_move_count = moves_left != -1;
    const std::int64_t moves = has_move_count ? moves_left : 30;
    const std::int64_t reserve = VorkaUtils::RoundToInteger(static_cast<double>(left) * 0.15);
    std::int64_t maximum = std::max(left - reserve - moves * 3000, least_budget);
    if (has_move_count) maximum = std::max(maximum, left / moves);
    return {Milliseconds(maximum), Milliseconds(left / (2 * moves + 2))};
}

}  // namespace

GameControl::GameControl(Engine& its_engine, GameProtocol& protocol) : engine(its_engine), protocol_(&protocol) {
    setPlayers(defaultHuman(), defaultEngine(true), false);
}

PlayerInfo GameControl::defaultHuman() const {
    return {.name = playerDefaults.opponentName,
            .rating = playerDefaults.opponentRating,
            .isEngine = false,
            .active = false};
}

PlayerInfo GameControl::defaultEngine(bool active) const {
    return {.name = std::string(vocabulary::program_name),
            .rating = playerDefaults.engineRating,
            .isEngine = true,
            .active = active};
}

GameControl::~GameControl() = default;

void GameControl::setPlayers(PlayerInfo onMove, PlayerInfo notOnMove, bool analyze) {
    const int sides_played = int{onMove.active} + int{notOnMove.active};
    engineMode = analyze ? EngineMode::analyze : static_cast<EngineMode>(sides_played);
    players[side_to_move()] = std::move(onMove);
    players[Opponent(side_to_move())] = std::move(notOnMove);
}

void GameControl::leavePlay(EngineMode mode) {
    engineMode = mode;
    for (PlayerInfo& player : players) player.active = false;
}

void GameControl::abortSearch(bool discard) {
    if (searchStatus != SearchStatus::none) throw search_aborted_exception{discard};
}

SearchLimits GameControl::limitsFor(SearchPurpose purpose) const {
    switch (purpose) {
        case SearchPurpose::think:
        case SearchPurpose::ponder:
            break;
        case SearchPurpose::analyze:
            return {.kind = SearchKind::analyze};
        case SearchPurpose::hint:
            return {.kind = SearchKind::puzzle,
                    .max_time_limit = hintTime,
                    .variable_time_limit = static_cast<std::int32_t>(VorkaUtils::RoundToInteger(0.75 * hintTime))};
    }
    // The engine ponders while the opponent's clock runs.
    const bool ponders = purpose == SearchPurpose::ponder;
    const Colour side = ponders ? Opponent(clock.active()) : clock.active();
    const Budget budget = TimeBudget(clock.milliseconds(side), clock.movesLeft(side));
    return {.kind = ponders ? SearchKind::pondering : SearchKind::normal,
            .max_depth = maxDepth,
            .max_time_limit = maxTime != 0 ? std::min(budget.maximum, maxTime) : budget.maximum,
            .variable_time_limit = budget.variable};
}

void GameControl::requestSearch(SearchPurpose purpose, const UserBoard& position) {
    throw search_request_received_exception{SearchRequest{limitsFor(purpose), position}};
}

void GameControl::startPondering() {
    if (IsGameOver()) return;
    if (prediction == no_prediction) requestSearch(SearchPurpose::hint, *this);
    if (prediction == prediction_no_move_exists || prediction == prediction_pending) return;
    ponderOnPrediction();
}

void GameControl::ponderOnPrediction() {
    UserBoard predicted = *this;
    predicted.MakeMove(prediction);
    if (!predicted.IsGameOver()) requestSearch(SearchPurpose::ponder, predicted);
}

void GameControl::makeMove(Move move, std::string& text) {
    text = MoveToSan(board(), move);
    clock.switchClock();
    MakeMove(move);
    prediction = no_prediction;
}

void GameControl::replaceGame(const UserBoard& game) {
    UserBoard::operator=(game);
    prediction = no_prediction;
    advisor.reset();
    protocol_->onBoardChanged(*this);
    clock.resetClock(side_to_move());
}

void GameControl::onSearchFinished(bool discard) {
    const SearchStatus status = std::exchange(searchStatus, SearchStatus::none);
    if (discard) {
        forgetPendingHint();
    } else if (status == SearchStatus::thinking) {
        onThinkingFinished();
    } else if (status == SearchStatus::hint) {
        onHintFinished();
    }
}

void GameControl::onThinkingFinished() {
    advisor.addSearch(board(), search.score(), engine.tablebases);
    if (advisor.drawOfferPending && answerDrawOffer()) return;

    const Move move = search.best_move() & move_bits;
    const Move forecast = forecastBehind(move);
    std::string text;
    makeMove(move, text);
    protocol_->sendEngineMove(text);
    protocol_->onBoardChanged(*this);
    if (IsGameOver()) {
        announceResult();
        return;
    }
    if (advisor.shouldResign()) {
        protocol_->sendResign();
        if (protocol_->claimsResultItself()) {
            EndGame(players[white].active ? GameResult::black_wins : GameResult::white_wins,
                    GameEndReason::resignation);
            announceResult();
            return;
        }
    } else if (advisor.shouldOfferDraw()) {
        protocol_->sendDrawOffer();
        advisor.sinceOffer = 0;
    }
    if (!pondering) return;
    if (forecast == INVALID) requestSearch(SearchPurpose::hint, *this);
    prediction = forecast;
    ponderOnPrediction();
}

bool GameControl::answerDrawOffer() {
    advisor.drawOfferPending = false;
    if (!advisor.acceptDraw()) {
        LogOnly(vocabulary::engine_rejects_draw_offer);
        protocol_->sendDrawRejected(advisor.opponentIsComputer);
        return false;
    }
    protocol_->sendDrawAccepted();
    if (!protocol_->claimsResultItself()) return false;  // the interface answers with the result
    EndGame(GameResult::draw, GameEndReason::agreed_draw);
    announceResult();
    return true;
}

void GameControl::announceResult() {
    protocol_->sendGameResult(*this, result(), reason(), EngineMode::one_side);
    clock.stopClock();
}

Move GameControl::forecastBehind(Move move) const {
    const auto& line = search.info().principal_variation;
    if (line.size() < 2 || (line[0].first & move_bits) != move) return INVALID;
    return line[1].first & move_bits;
}

void GameControl::onHintFinished() {
    const bool asked_for = prediction == prediction_pending;
    const Move best = search.best_move() & move_bits;
    prediction = best == INVALID ? prediction_no_move_exists : best;
    if (asked_for || !pondering || prediction == prediction_no_move_exists) return;
    ponderOnPrediction();
}

void GameControl::forgetPendingHint() {
    if (prediction != prediction_pending) return;
    prediction = IsGameOver() ? prediction_no_move_exists : no_prediction;
}
