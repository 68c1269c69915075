// Prints what the evaluation sees in a position: each term with its positional and reckless value for both sides and
// the counters of pressure and cover as it leaves them; below it each rule of the term with its side, its squares and
// what it added to the counters; and how the sum becomes the score: the blend, or in an ending step by step. The terms
// and rules are those of the engine.

#include <getopt.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

#include "chess/notation.h"
#include "chess/user_board.h"
#include "evaluation/evaluation_trace.h"
#include "options/number_option.h"

namespace {

constexpr std::string_view usage =
    "usage: eval_trace [--personality N] FEN\n"
    "\n"
    "  --personality N  -1000 to 1000 (0)\n"
    "  --help           this text\n"
    "\n"
    "Prints the terms of the evaluation and their rules, positional and reckless, in centipawns, with the squares "
    "that\n"
    "each rule is about and the counters that each term leaves.\n";

std::string Pair(SCORE_PAIR pair) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%6d %6d", pair.positional(), pair.reckless());
    return text.data();
}

std::string Points(const WingCounters& counters) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%4d %4d %4d", counters[queen_side], counters[centre], counters[king_side]);
    return text.data();
}

void PrintRow(std::string_view name, const std::string& of_white, const std::string& of_black, const std::string& sum,
              const std::string& counters) {
    std::printf("%-30s |%13s |%13s |%13s |%s\n", std::string(name).c_str(), of_white.c_str(), of_black.c_str(),
                sum.c_str(), counters.c_str());
}

std::string CountersText(const COUNTER_POINTS& counters) {
    std::string text;
    for (const Colour side : {white, black}) {
        text += Points(counters.pressure[side]) + "   " + Points(counters.cover[side]) + " |";
    }
    return text;
}

void PrintTerm(const TERM_RECORD& record) {
    std::string name = (record.is_part ? "  " : "") + std::string(name_of(record.term));
    std::replace(name.begin(), name.end(), '_', ' ');
    if (record.times != 1) name += " x " + std::to_string(record.times);
    const std::string activity = record.is_part ? "" : ' ' + std::to_string(record.counters.activity);
    PrintRow(name, record.has_sides ? Pair(record.of_white) : "", record.has_sides ? Pair(record.of_black) : "",
             Pair(record.sum), CountersText(record.counters) + activity);
}

/// The squares of a rule, as their names; those of a whole wing are too many to read.
std::string SquaresText(Bitboard squares) {
    constexpr int most = 16;
    if (PopCount(squares) > most) return std::to_string(PopCount(squares)) + " squares";
    std::string text;
    for (Square s = a1; s <= h8; ++s) {
        if (!Has(squares, s)) continue;
        if (!text.empty()) text += ' ';
        text += {static_cast<char>('a' + FileOf(s)), static_cast<char>('1' + RankOf(s))};
    }
    return text;
}

/// What a rule added to the counters: "pressure k+6, enemy cover c-9".
std::string PointsText(const COUNTER_POINTS& points, Colour side) {
    std::string text;
    const auto add = [&](std::string_view name, const WingCounters& counters) {
        for (const auto& [wing, letter] : {std::pair{queen_side, 'q'}, {centre, 'c'}, {king_side, 'k'}}) {
            if (counters[wing] == 0) continue;
            if (!text.empty()) text += ", ";
            text += std::string(name) + ' ' + letter + (counters[wing] > 0 ? "+" : "") + std::to_string(counters[wing]);
        }
    };
    add("pressure", points.pressure[side]);
    add("cover", points.cover[side]);
    add("enemy pressure", points.pressure[Opponent(side)]);
    add("enemy cover", points.cover[Opponent(side)]);
    if (points.activity != 0) text += (text.empty() ? "activity " : ", activity ") + std::to_string(points.activity);
    return text;
}

void PrintRule(const RULE_RECORD& record) {
    const std::string pair = Pair({record.positional, record.reckless});
    std::string details = SquaresText(record.squares);
    const std::string points = PointsText(record.points, record.side);
    if (!details.empty() && !points.empty()) details += "; ";
    details += points;
    std::printf("    %-38s %s %s%s%s\n", std::string(name_of(record.rule)).c_str(),
                record.side == white ? "White" : "Black", pair.c_str(), details.empty() ? "" : "  ", details.c_str());
}

void PrintTerms(const EVALUATION_TRACE& trace) {
    PrintRow("", "White", "Black", "sum",
             "  pressure of White     cover of White |"
             "  pressure of Black     cover of Black |");
    PrintRow("", "pos.  reck.", "pos.  reck.", "pos.  reck.",
             "  q    c    k      q    c    k |   q    c    k      q    c    k | activity");
    std::size_t next = 0;
    for (const TERM_RECORD& term : trace.terms) {
        PrintTerm(term);
        while (next < trace.rules.size() && trace.rules[next].term == term.term) PrintRule(trace.rules[next++]);
    }
    const COUNTER_POINTS& last = trace.terms.back().counters;
    PrintRow("sum", "", "", Pair(trace.sum), CountersText(last) + ' ' + std::to_string(last.activity));
}

void PrintBlend(const EVALUATION_TRACE& trace) {
    std::printf("\nendgame weight  %.4f\nopenness        %d\n", trace.endgame_weight, trace.openness);
    for (const Colour side : {white, black}) {
        const KING_DANGER& king = trace.king[side];
        std::printf("%s king      attack %d, factor %.4f; cover %d, factor %.4f\n", side == white ? "White" : "Black",
                    king.attack, king.attack_factor, king.cover, king.cover_factor);
    }
    std::printf("blend weight    %d of 16\nblended         %d\n", trace.blend_weight, trace.blended);
}

/// "adds 24", "scales to 5/8", "limits to 0".
std::string EffectText(const STEP_RECORD& step) {
    switch (step.effect) {
        case Effect::adds:
            return std::string(step.change < 0 ? "takes " : "adds ") + std::to_string(std::abs(step.change));
        case Effect::scales:
            return "scales to " + std::to_string(step.share.part) + '/' + std::to_string(step.share.whole);
        case Effect::limits:
            return "limits to " + std::to_string(step.score);
        case Effect::sets:
            return "sets to " + std::to_string(step.score);
    }
    return {};
}

void PrintStep(std::string_view name, std::string_view side, const std::string& effect, int score, Bitboard squares) {
    std::printf("    %-38s %-5s %-15s %7d%s%s\n", std::string(name).c_str(), std::string(side).c_str(), effect.c_str(),
                score, squares == 0 ? "" : "  ", SquaresText(squares).c_str());
}

/// The way from the sum of the terms to the score of an ending.
void PrintSteps(const EVALUATION_TRACE& trace) {
    std::printf("%sfor the side to move\n", trace.terms.empty() ? "" : "\n");
    if (!trace.terms.empty()) {
        const int sum = trace.steps.empty() ? trace.full_score : trace.steps.front().score - trace.steps.front().change;
        PrintStep("sum of the terms", "", "", sum, 0);
    }
    for (const STEP_RECORD& step : trace.steps) {
        PrintStep(name_of(step.rule), step.side == white ? "White" : "Black", EffectText(step), step.score,
                  step.squares);
    }
}

constexpr std::array<std::string_view, 18> type_names = {
    "opening",          "middle game",  "balanced ending",  "rook ending",   "queen ending",  "knight ending",
    "knight vs bishop", "same bishops", "opposite bishops", "rook vs minor", "queen vs rook", "lone knight",
    "lone bishop",      "lone rook",    "lone queen",       "pawn ending",   "pawnless",      "unbalanced ending",
};

void Print(const EVALUATION_TRACE& trace) {
    const auto type = static_cast<std::size_t>(trace.position_type);
    std::printf("position type %d: %s\n\n", trace.position_type, std::string(type_names[type]).c_str());
    if (!trace.terms.empty()) {
        PrintTerms(trace);
    }
    if (trace.is_blended) {
        PrintBlend(trace);
        std::printf("material        %d (side to move)\n", trace.material);
    } else {
        PrintSteps(trace);
    }
    if (trace.full_score != trace.score) {
        std::printf("full score      %d (side to move), to which the lazy test answers early\n", trace.full_score);
    }
    std::printf("score           %d (side to move)\n", trace.score);
}

int Usage(std::ostream& out, int status) {
    out << usage;
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const std::array<option, 3> options = {
        {{"personality", required_argument, nullptr, 'p'}, {"help", no_argument, nullptr, 'h'}, {}}};
    int personality = 0;
    for (int letter = 0; (letter = getopt_long(argc, argv, "", options.data(), nullptr)) != -1;) {
        if (letter == 'h') return Usage(std::cout, EXIT_SUCCESS);
        if (letter != 'p' || !ReadNumberOption("eval_trace", "--personality", optarg, -1000, 1000, personality)) {
            return Usage(std::cerr, EXIT_FAILURE);
        }
    }
    if (optind == argc) return Usage(std::cerr, EXIT_FAILURE);
    std::string fen = argv[optind];
    for (int word = optind + 1; word < argc; ++word) fen += std::string(" ") + argv[word];
    UserBoard position;
    try {
        position.SetBoardFromFen(fen);
    } catch (const UserBoard::user_exception&) {
        std::cerr << "eval_trace: no position: " << fen << '\n';
        return EXIT_FAILURE;
    }
    Print(trace_evaluation(position.board(), personality));
    return EXIT_SUCCESS;
}
