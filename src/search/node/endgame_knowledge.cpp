#include "search/node/endgame_knowledge.h"

namespace {

constexpr std::uint32_t first_ply_of_bitbases = 3;

NodeAnswer AskBitbases(const Node& node) {
    if (node.ply < first_ply_of_bitbases) return go_on;
    const std::optional<int> known = node.search.engine.bitbases.Probe(node.board());
    if (!known) return go_on;
    const auto ply = static_cast<Score>(node.ply);
    if (*known == 0) return AsAnswer(node.draw_score(), node.beta);
    if (*known > 0) return AsAnswer(*known + 1 - ply, node.beta);
    // A loss that is still good enough may be known better.
    if (*known + ply < node.beta) return node.beta - 1;
    return go_on;
}

/// Distances to the mate count from the node. Without them a win is a lower bound, a loss an upper one: whether a mate
/// is nearer, the search has to find out.
NodeAnswer AskTablebases(const Node& node) {
    const VorkaTablebases::Tablebases& tablebases = node.search.engine.tablebases;
    int known = 0;
    if (tablebases.Probe(node.board(), known) != VorkaTablebases::ProbeResult::found) return go_on;
    const auto ply = static_cast<Score>(node.ply);
    if (known == 0) return AsAnswer(node.draw_score(), node.beta);
    const Score score = known > 0 ? known - ply : known + ply;
    const bool is_good_enough = score >= node.beta;
    if (tablebases.KnowNoDistances() && is_good_enough != (known > 0)) return go_on;
    return AsAnswer(score, node.beta);
}

}  // namespace

NodeAnswer KnowledgeOfEnding(const Node& node) {
    NodeAnswer answer = AskBitbases(node);
    if (!answer) answer = AskTablebases(node);
    if (answer) ++node.search.statistics.endings_known;
    return answer;
}
