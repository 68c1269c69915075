#pragma once

#include <vector>

#include "chess/board.h"
#include "evaluation/context/position_type.h"
#include "evaluation/context/score_pair.h"
#include "evaluation/rules/rule.h"
#include "evaluation/rules/tell.h"
#include "evaluation/rules/term.h"

/// Why the score of a position is what it is: the terms of the evaluation, and the rules that each is made of, as the
/// engine's own functions give them. For tools and pages; it takes its time and allocates.

/// What one rule gave, in the view of its side.
struct RULE_RECORD {
    Term term;
    Rule rule;
    Colour side;
    Bitboard squares;            ///< what it is about; 0 for the whole board
    int positional, reckless;    ///< centipawns; equal in an ending
    COUNTER_POINTS points = {};  ///< what it added to the counters
};

/// What one term gave. The rules of its name add up to it, those of White minus those of Black.
struct TERM_RECORD {
    Term term;
    int times;       ///< how often the term and its rules count; their values are told with it
    bool is_part;    ///< of `pawns_alone`, which follows its parts and has no rules of its own
    bool has_sides;  ///< whether both sides are known; if not their values are 0
    SCORE_PAIR of_white, of_black;
    SCORE_PAIR sum;           ///< White minus Black
    COUNTER_POINTS counters;  ///< as the term left them; for a part those that the pawn hash table keeps
};

/// One step on the way from the sum of the terms to the score of an ending. Where a rule settles the score there are no
/// terms, and the steps begin at 0.
struct STEP_RECORD {
    Rule rule;
    Colour side;       ///< whose rule it is
    Bitboard squares;  ///< what it is about; 0 for the whole board
    Effect effect;
    int change;   ///< centipawns, for the side to move: what it adds, scales away or cuts off
    SHARE share;  ///< what it leaves, if it scales
    int score;    ///< centipawns, for the side to move: the score as the step leaves it
};

/// The danger to a king that the opening and the middle game find.
struct KING_DANGER {
    int attack = 0, cover = 0;  ///< points
    double attack_factor = 0.0, cover_factor = 0.0;
};

struct EVALUATION_TRACE {
    int position_type = no_position_type;
    int material = 0;  ///< centipawns, for the side to move
    /// Centipawns, for the side to move, as the `eval` command gives it.
    int score = 0;
    /// What terms and steps come to. It is the score, but where the terms after a lazy test add more than its margin:
    /// the question that the test answers early can bend the score.
    int full_score = 0;

    /// Empty where a routine has no terms: without pieces, and where one rule settles the score.
    std::vector<TERM_RECORD> terms;
    std::vector<RULE_RECORD> rules;
    SCORE_PAIR sum;                  ///< of the terms, White minus Black
    std::vector<STEP_RECORD> steps;  ///< of an ending

    // Of the opening and the middle game alone; an ending has steps instead.
    bool is_blended = false;
    double endgame_weight = 0.0;
    int openness = 0;
    KING_DANGER king[2] = {};  ///< by Colour
    int blend_weight = 0;      ///< sixteenths of the reckless value
    int blended = 0;           ///< centipawns, White minus Black
};

/// Asks with no contempt, like the `eval` command.
[[nodiscard]] EVALUATION_TRACE trace_evaluation(const BOARD& board, int personality);
