#pragma once

#include <cstdint>

#include "search/state/node_answer.h"
#include "search/state/search_board.h"
#include "search/tables/node_flags.h"
#include "search/tables/score.h"

/// What the last two moves did to the pin that the search follows.
enum class PinResult : std::int8_t {
    nothing = -3,
    gone = -2,
    pinned_piece_taken = -1,
    unchanged = 0,
    new_pin = 1,
    tightened = 2,
};

/// One call of SearchNode: its question, and what its steps have found out so far.
struct Node {
    SearchBoard& search;
    const std::uint32_t ply;
    const Score beta;
    Distance distance;    ///< razoring lowers it for the rest of the node
    const bool in_check;  ///< the side on move
    NodeType type;        ///< a cut node that did not cut at once goes on as an all node
    const int parent_class;
    int position_class;  ///< the parent's until the node has its own
    ChildFlags child_flags;
    NodeFlags flags = NodeFlags::none;
    Move* moves;                 ///< first of the node's own list
    Move* moves_end;             ///< where the children's lists begin
    bool has_move_list = false;  ///< the list was generated already

    Move hash_move = INVALID;  ///< the move to try first, wherever it comes from
    bool hash_gave_class = false;
    PinResult pin_result = PinResult::nothing;

    bool full_extensions = false;  ///< the full column of the extension amounts, not the limited one
    Distance delayed_extension = 0;
    ExtensionCauses extended = ExtensionCauses::none;

    bool is_futile = false;   ///< moves that do not gain enough over futility_base may be skipped
    Score futility_base = 0;  ///< centipawns
    Distance razored = 0;     ///< what razoring took off the distance

    int moves_tried = 0;  ///< refused and skipped ones too
    Score best = best_score_start;
    Move best_move = INVALID;

    [[nodiscard]] const BOARD& board() const { return search.board; }
    [[nodiscard]] const SearchSettings& settings() const { return search.settings; }
    /// INVALID after a null move.
    [[nodiscard]] Move last_move() const { return search.moves_played[ply]; }
    /// From the view of the side on move, as every score of the node.
    [[nodiscard]] Score draw_score() const { return search.draw_score[search.board.side_to_move]; }
    [[nodiscard]] Score material_balance() const { return search.board.frame().material_balance; }
    [[nodiscard]] bool is_principal() const { return type == NodeType::principal; }
    [[nodiscard]] bool has_threats() const { return HasAny(flags, threats); }
    /// The side on move looks for a mate.
    [[nodiscard]] bool is_searching_for_mate() const { return beta >= mate_score_limit; }
    /// Whether the node looks at a selection of the moves only. In check every move is searched.
    [[nodiscard]] bool is_quiescence() const { return distance < 1 && !in_check; }
};
