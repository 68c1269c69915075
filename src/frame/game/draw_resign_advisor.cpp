#include "frame/game/draw_resign_advisor.h"

#include <cstdlib>

namespace {

/// Scores beyond the bound announce a mate; a side that is mated at once scores the negated value.
constexpr std::int32_t mate_bound = 31767;
constexpr std::int32_t mate_value = 32766;

/// Centipawns around the draw value that count as neither above nor below it.
constexpr std::int32_t draw_value_margin = 14;

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
    const std::int32_t drawish_margin = HasQueens(position) ? 17 : 25;
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
    const bool keen = isKeen();
    std::int32_t threshold = keen ? -250 : -440;
    if (HasQueens(position)) threshold -= 70;
    const Bitboard pawns = position.white_pieces().pawns | position.black_pieces().pawns;
    if (PopCount(pawns) < 3 && PopCount(position.occupied & ~pawns) <= 8) threshold -= keen ? 200 : 600;
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
    if (losingMateWorse && matedIn <= (early ? 10 : 4)) return true;
    if (!early && matedIn > 17) return false;
    return hopelessRun >= (early ? 5 : 6);
}

bool DrawResignAdvisor::shouldOfferDraw() const {
    if (tablebaseVerdict == TablebaseVerdict::won || drawOfferPending || searches < 2) return false;
    if (!opponentIsComputer && sinceOffer < 8) return false;
    return drawScoreRun >= 2 || scoresAreDrawish();
}

bool DrawResignAdvisor::acceptDraw() const {
    // addSearch has counted the search that answers: an offer that came with the move before it stands at 1.
    const bool offered_with_last_move = sinceOffer <= 1;
    return offered_with_last_move || hopelessRun > 0 || drawScoreRun >= 2 || belowRun >= 6 || scoresAreDrawish();
}

bool DrawResignAdvisor::scoresAreDrawish() const { return drawishRun >= 15 && aboveRun < 7; }
