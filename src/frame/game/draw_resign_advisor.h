#pragma once

#include <cstdint>
#include <optional>

#include "bitbases/tablebases.h"
#include "chess/board.h"

/// What a tablebase says about the position that was searched.
enum class TablebaseVerdict : std::int32_t { won = 0, lost_soon = 1, lost_far_off = 2, drawn = 3, unknown = 4 };

enum class ResignMode : std::int32_t { never = 0, keen = 1, patient = 2, by_opponent = 3 };

/// Decides on draws and resignation from the scores of the engine's own searches.
struct DrawResignAdvisor {
    std::int32_t lastScore = 1000000;
    bool losingMateWorse = false;    ///< a losing mate, and a score below that of the search before
    std::int32_t matedIn = -1;       ///< moves to being mated, -1 for none
    std::int32_t searches = 0;       ///< since the reset
    std::int32_t sinceOffer = 1000;  ///< searches since the engine's last draw offer
    std::int32_t drawScoreRun = 0;   ///< consecutive scores equal to drawValue
    std::int32_t drawishRun = 0;     ///< within the drawish margin
    std::int32_t hopelessRun = 0;
    std::int32_t belowRun = 0;  ///< clearly below drawValue
    std::int32_t aboveRun = 0;  ///< clearly above it
    TablebaseVerdict tablebaseVerdict = TablebaseVerdict::unknown;
    bool drawOfferPending = false;
    bool opponentIsComputer = false;
    ResignMode resignMode = ResignMode::by_opponent;
    std::int32_t drawValue = 0;  ///< the contempt, in centipawns

    /// A new game or position: everything but the opponent's kind, the resign mode and the draw value.
    void reset();
    /// A new value resets the rest.
    void setDrawValue(std::int32_t value);
    /// Takes the score of a finished search, in centipawns for the engine, which is on move in `position`.
    void addSearch(const BOARD& position, std::int32_t score, const VorkaTablebases::Tablebases& tablebases);
    /// What a tablebase found for the side on move: 0 a draw, otherwise a score whose distance to 32767 is that to the
    /// mate, in plies. None if the position is in no table.
    void setVerdict(std::optional<std::int32_t> tablebase_score);

    /// Whether `score` is one to resign with, if it lasts.
    [[nodiscard]] bool isHopeless(const BOARD& position, std::int32_t score) const;
    [[nodiscard]] bool shouldResign() const;
    [[nodiscard]] bool shouldOfferDraw() const;
    /// Asked after addSearch, about an offer that is pending.
    [[nodiscard]] bool acceptDraw() const;

  private:
    /// A postponed lookup leaves the verdict as it was.
    void askTablebases(const BOARD& position, const VorkaTablebases::Tablebases& tablebases);
    /// The opponent is taken for somebody against whom giving up early is polite. Not the same as `early` in
    /// shouldResign, which reads the opponent's kind the other way round: docs/oddities.md, two meanings of the
    /// opponent.
    [[nodiscard]] bool isKeen() const;
    [[nodiscard]] bool scoresAreDrawish() const;
};
