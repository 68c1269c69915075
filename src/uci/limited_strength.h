#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "search/driver/search_host.h"
#include "search/driver/steering.h"
#include "uci/strength.h"

/// How a weakened search is held: before it by its limits, while it runs by its nodes, and after it by the choice among
/// the moves that it has found.
namespace VorkaUci {

class LimitedStrength {
  public:
    /// Begins a search of that strength: few nodes, and several lines where there is a choice among them.
    void Begin(int elo, SearchLimits& limits);
    /// Whether the nodes are used up. A search that ponders goes beyond its own, since it does not end by itself; a
    /// weakened one must not, or it has more nodes when `ponderhit` comes.
    [[nodiscard]] bool HasSpentNodes(const SearchInfo& info) const { return info.nodes >= nodes_; }
    /// To be told each line that the search shows, the best one of an iteration first.
    void Note(const SearchInfo& info);
    /// The move to play; INVALID if no line was shown, or if the search's own choice stands.
    [[nodiscard]] Move Choose(std::mt19937_64& chance) const;

  private:
    int blur_ = 0;  ///< centipawns
    std::uint64_t nodes_ = 0;
    std::vector<Candidate> candidates_;          ///< of the iteration, the best one in front
    std::vector<Candidate> earlier_candidates_;  ///< of the last iteration that had several
};

}  // namespace VorkaUci
