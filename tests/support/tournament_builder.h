#pragma once

#include <memory>
#include <string_view>

#include "search/tournament/search_tournament_node.h"
#include "search/tournament/tournament_node.h"
#include "support/search_builder.h"

/// What a node of the tournament search is asked, and how.
struct TournamentQuestion {
    Score beta = 0;
    Distance distance = ONE_PLY;
    NodeType type = NodeType::cut;
    bool may_pass = true;
    Move excluded = INVALID;
};

/// The same as SearchBuilder for the tournament search.
///
///     TournamentBuilder search(fen, {.null_move = 0});
///     search.rules().futility_base = 50;  // holds from here on, but for the table of reductions
class TournamentBuilder {
  public:
    explicit TournamentBuilder(std::string_view fen, const TournamentSettings& with = {}) : classic(fen) {
        state->Prepare(with);
        state->NewSearch();
    }

    SearchBuilder classic;
    std::unique_ptr<tournament::TournamentState> state = std::make_unique<tournament::TournamentState>();

    [[nodiscard]] SearchBoard& search() { return *classic.board; }
    [[nodiscard]] const BOARD& board() const { return classic.board->board; }
    [[nodiscard]] TournamentSettings& rules() { return state->settings; }
    [[nodiscard]] Move MoveNamed(std::string_view text) const { return MoveOf(board(), text); }
    void Make(std::string_view text) { classic.Make(text); }

    /// What SearchNode says in the present position.
    [[nodiscard]] Score Ask(const TournamentQuestion& question) {
        return tournament::SearchNode(search(), *state, search().move_buffer, question.beta, question.distance,
                                      question.type, search().position_class[0], question.may_pass);
    }

    /// A node at the present position whose steps can be called one by one. Its static score is `lead` above beta.
    [[nodiscard]] tournament::TournamentNode NodeAt(const TournamentQuestion& question, Score lead = 0) {
        tournament::TournamentNode node{{.search = search(),
                                         .ply = board().ply,
                                         .beta = question.beta,
                                         .distance = question.distance,
                                         .in_check = board().in_check(),
                                         .type = question.type,
                                         .parent_class = search().position_class[0],
                                         .position_class = search().position_class[0],
                                         .child_flags = ChildFlags::none,
                                         .moves = search().move_buffer,
                                         .moves_end = search().move_buffer},
                                        *state,
                                        question.may_pass,
                                        question.excluded};
        node.static_score = node.estimate = question.beta + lead;
        return node;
    }
};
