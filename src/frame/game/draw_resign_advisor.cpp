#include "frame/game/draw_resign_advisor.h"

#include <cstdlib>

namespace {

/// Scores beyond the bound announce a mate; a side that is mated at once scores the negated value.
constexpr std::int32_t mate_bound = 31767;
constexpr std::int32_t mate_value = 32766;

// Scores and margins are in centipawns, runs in searches of the engine, one after the other.

/// A score this near to the draw value counts as neither above nor below it.
constexpr std::int32_t draw_value_margin = 14;
/// A score this near to 0 is drawish. Queens make every score less certain.
constexpr std::int32_t drawish_margin_with_queens = 17;
constexpr std::int32_t drawish_margin_without_queens = 25;

/// When a score is hopeless. The keen side gives up a lost game early, the patient one late.
struct HopelessScores {
    std::int32_t threshold;     ///< hopeless from here down
    std::int32_t with_few_men;  ///< added to the threshold: such endings are often drawn all the same
};
constexpr HopelessScores keen_scores{-250, -200};
constexpr HopelessScores patient_scores{-440, -600};
/// Added while a queen is on the board, which leaves chances.
constexpr std::int32_t with_queens = -70;
/// Few men: fewer pawns than the first number, and at most the second number of other men, kings included.
constexpr int many_pawns = 3;
constexpr int few_pieces = 8;

/// When to resign: early or late.
struct ResignPatience {
    std::int32_t mated_in;  ///< a forced mate that has come closer, in moves
    std::int32_t hopeless_run;
};
constexpr ResignPatience early_resignation{10, 5};
constexpr ResignPatience late_resignation{4, 6};
/// A forced mate further away than this has still to be shown, if the side resigns late.
constexpr std::int32_t distant_mate = 17;

/// A draw is offered to a person only after this many searches without an offer, and never after the first search.
constexpr std::int32_t offers_apart = 8;
constexpr std::int32_t searches_before_an_offer = 2;
/// This many scores in a row at the draw value make a draw.
constexpr std::int32_t draw_score_run = 2;
/// The first number of drawish scores in a row makes a draw, unless the last ones, as many as the second number, have
/// all been above the draw value.
constexpr std::int32_t drawish_run = 15;
constexpr std::int32_t promising_run = 7;
/// An offer is accepted after this many scores in a row below the draw value.
constexpr std::int32_t worse_run = 6;

bool HasQueens(const BOARD& position) { return (position.white_pieces().queens | position.black_pieces().queens) != 0; }

}  // namespace

void DrawResignAdvisor::reset() {
    DrawResignAdvisor fresh;
    fresh.opponentIsComputer = opponentIsComputer;
    fresh.resignMode = resignMode;
    fresh.drawValue = drawValue;
    *this = fresh;
}

void DrawResignAdvisor::setDrawValue(std::int32_t value) {
    if (value == drawValue) return;
    drawValue = value;
    reset();
}

void DrawResignAdvisor::addSearch(const BOARD& position, std::int32_t score,
                                  const VorkaTablebases::Tablebases& tablebases) {
    const auto continued = [](std::int32_t run, bool goes_on) { return goes_on ? run + 1 : 0; };

    ++searches;
    ++sinceOffer;
    const bool losing_mate = score < -mate_bound;
    losingMateWorse = losing_mate && score < lastScore;
    matedIn = losing_mate ? (score + mate_value) / 2 + 1 : -1;
    belowRun = continued(belowRun, score < drawValue - draw_value_margin);
    aboveRun = continued(aboveRun, score > drawValue + draw_value_margin);
    drawScoreRun = continued(drawScoreRun, score == drawValue);
    const std::int32_t drawish_margin =
        HasQueens(position) ? drawish_margin_with_queens : drawish_margin_without_queens;
    drawishRun = continued(drawishRun, std::abs(score) <= drawish_margin);
    hopelessRun = continued(hopelessRun, isHopeless(position, score));
    askTablebases(position, tablebases);
    lastScore = score;
}

void DrawResignAdvisor::askTablebases(const BOARD& position, const VorkaTablebases::Tablebases& tablebases) {
    int score = 0;
    switch (tablebases.Probe(position, score)) {
        case VorkaTablebases::ProbeResult::found:
            setVerdict(score);
            break;
        case VorkaTablebases::ProbeResult::queued:
            break;  // what was known stays
        default:
            setVerdict(std::nullopt);
    }
}

void DrawResignAdvisor::setVerdict(std::optional<std::int32_t> tablebase_score) {
    using enum TablebaseVerdict;
    if (!tablebase_score) {
        tablebaseVerdict = unknown;
    } else if (*tablebase_score == 0) {
        tablebaseVerdict = drawn;
    } else if (*tablebase_score > 0) {
        tablebaseVerdict = won;
    } else {
        tablebaseVerdict = VorkaTablebases::IsLossFarAway(*tablebase_score) ? lost_far_off : lost_soon;
    }
}

bool DrawResignAdvisor::isHopeless(const BOARD& position, std::int32_t score) const {
    const HopelessScores& scores = isKeen() ? keen_scores : patient_scores;
    std::int32_t threshold = scores.threshold;
    if (HasQueens(position)) threshold += with_queens;
    const Bitboard pawns = position.white_pieces().pawns | position.black_pieces().pawns;
    if (PopCount(pawns) < many_pawns && PopCount(position.occupied & ~pawns) <= few_pieces) {
        threshold += scores.with_few_men;
    }
    return score <= threshold;
}

bool DrawResignAdvisor::isKeen() const {
    return resignMode == ResignMode::keen || (resignMode == ResignMode::by_opponent && !opponentIsComputer);
}

bool DrawResignAdvisor::shouldResign() const {
    if (resignMode == ResignMode::never) return false;
    const bool early = resignMode == ResignMode::keen || (resignMode == ResignMode::by_opponent && opponentIsComputer);
    switch (tablebaseVerdict) {
        case TablebaseVerdict::won:
        case TablebaseVerdict::drawn:
        case TablebaseVerdict::lost_far_off:
            return false;
        case TablebaseVerdict::lost_soon:
            return true;
        case TablebaseVerdict::unknown:
            break;
    }
    const ResignPatience& patience = early ? early_resignation : late_resignation;
    if (losingMateWorse && matedIn <= patience.mated_in) return true;
    if (!early && matedIn > distant_mate) return false;
    return hopelessRun >= patience.hopeless_run;
}

bool DrawResignAdvisor::shouldOfferDraw() const {
    if (tablebaseVerdict == TablebaseVerdict::won || drawOfferPending) return false;
    if (searches < searches_before_an_offer) return false;
    if (!opponentIsComputer && sinceOffer < offers_apart) return false;
    return drawScoreRun >= draw_score_run || scoresAreDrawish();
}

bool DrawResignAdvisor::acceptDraw() const {
    // addSearch has counted the search that answers: an offer that came with the move before it stands at 1.
    const bool offered_with_last_move = sinceOffer <= 1;
    return offered_with_last_move || hopelessRun > 0 || drawScoreRun >= draw_score_run || belowRun >= worse_run ||
           scoresAreDrawish();
}

bool DrawResignAdvisor::scoresAreDrawish() const { return drawishRun >= drawish_run && aboveRun < promising_run; }
