// Prints what the evaluation sees in a position: each term of the opening and middle game with its positional and
// reckless value for both sides, the counters of pressure and cover as each term leaves them, and how the sum becomes
// the score. The terms are those of the engine: the same walk, with a visitor that prints.

#include <getopt.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

#include "chess/notation.h"
#include "chess/user_board.h"
#include "evaluation/evaluate.h"
#include "evaluation/king/places.h"
#include "evaluation/middle_game_walk.h"
#include "search/tables/hash.h"

namespace {

constexpr std::string_view usage =
    "usage: eval_trace [--personality N] FEN\n"
    "\n"
    "  --personality N  -1000 to 1000 (0)\n"
    "  --help           this text\n"
    "\n"
    "Prints the terms of the evaluation, positional and reckless, in centipawns, and the counters behind each.\n";

constexpr std::array<std::string_view, 30> term_names = {
    "passed pawns",
    "material imbalance",
    "bishop pair",
    "  pawn squares",
    "  backward pawns",
    "  isolated pawns",
    "  isolated queen pawn",
    "  duo and defended pawns",
    "  doubled pawns",
    "  connected passed pawns",
    "  pawn chains",
    "  pawn majorities",
    "  centre squares",
    "  centre patterns",
    "pawns alone",
    "majority and king",
    "blocked centre pawns",
    "isolated queen pawn, pieces",
    "passed pawns and pieces",
    "knights",
    "bishops",
    "rooks",
    "queens",
    "patterns",
    "space",
    "activity",
    "king safety",
    "knight mobility",
    "pawn balance",
    "sum",
};
static_assert(static_cast<std::size_t>(Term::pawn_balance) + 2 == term_names.size());

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
    std::printf("%-27s |%13s |%13s |%13s |%s\n", std::string(name).c_str(), of_white.c_str(), of_black.c_str(),
                sum.c_str(), counters.c_str());
}

/// Prints each term with the counters as it leaves them.
class TermPrinter {
  public:
    explicit TermPrinter(const EVALUATION_CONTEXT& context) : context_(context) {
        PrintRow("", "White", "Black", "sum",
                 "  pressure of White     cover of White |"
                 "  pressure of Black     cover of Black |");
        PrintRow("", "pos.  reck.", "pos.  reck.", "pos.  reck.",
                 "  q    c    k      q    c    k |   q    c    k      q    c    k | activity");
    }

    void OfSides(Term term, const SIDE_PAIRS& pairs) {
        sum_ += pairs.sum();
        PrintRow(NameOf(term), Pair(pairs.of_white), Pair(pairs.of_black), Pair(pairs.sum()), Counters());
    }
    void OfBoth(Term term, SCORE_PAIR pair) {
        sum_ += pair;
        PrintRow(NameOf(term), "", "", Pair(pair), Counters());
    }
    void OfPawnsAlone(Term term, const SIDE_PAIRS& pairs) {
        PrintRow(NameOf(term), Pair(pairs.of_white), Pair(pairs.of_black), Pair(pairs.sum()), CountersOfPawns());
    }
    void Finish() const { PrintRow(term_names.back(), "", "", Pair(sum_), Counters()); }
    [[nodiscard]] SCORE_PAIR sum() const { return sum_; }

  private:
    static std::string_view NameOf(Term term) { return term_names[static_cast<std::size_t>(term)]; }

    [[nodiscard]] std::string Counters() const {
        std::string text;
        for (const Colour side : {white, black}) {
            text += Points(context_.pressure[side]) + "   " + Points(context_.cover[side]) + " |";
        }
        return text + ' ' + std::to_string(context_.activity);
    }
    /// Of the part that the pawn hash table keeps: the evaluation takes them over behind it.
    [[nodiscard]] std::string CountersOfPawns() const {
        std::string text;
        for (const Colour side : {white, black}) {
            text += Points(context_.pawn_pressure[side]) + "   " + Points(context_.pawn_cover[side]) + " |";
        }
        return text;
    }

    const EVALUATION_CONTEXT& context_;
    SCORE_PAIR sum_;
};

template <PositionType Type>
void TraceTerms(EVALUATION_CONTEXT& context, const BOARD& board) {
    find_passed_pawns(context, board);
    TermPrinter printer(context);
    walk_first_terms(context, board, printer);
    find_places(context, board);
    walk_other_terms<Type>(context, board, printer);
    printer.Finish();

    const bool is_middle_game = Type == middle_game;
    const int value = blend(printer.sum(), is_middle_game, context, board);
    std::printf("\nendgame weight  %.4f\nopenness        %d\n", context.endgame_weight, context.openness);
    for (const Colour side : {white, black}) {
        std::printf("%s king      attack %d, factor %.4f; cover %d, factor %.4f\n", side == white ? "White" : "Black",
                    context.king_attack[side], context.attack_factor[side], context.king_cover[side],
                    context.cover_factor[side]);
    }
    std::printf("blend weight    %d of 16\nblended         %d\n", blend_weight(is_middle_game, context, board), value);
    std::printf("material        %d (side to move)\n", board.frame().material_balance);
}

constexpr std::array<std::string_view, 18> type_names = {
    "opening",          "middle game",  "balanced ending",  "rook ending",   "queen ending",  "knight ending",
    "knight vs bishop", "same bishops", "opposite bishops", "rook vs minor", "queen vs rook", "lone knight",
    "lone bishop",      "lone rook",    "lone queen",       "pawn ending",   "pawnless",      "unbalanced ending",
};

void Trace(const BOARD& board, int personality) {
    const EVALUATION_SETTINGS settings{.draw_score = 0, .personality = static_cast<std::int16_t>(personality)};
    EVALUATION_CONTEXT context{.settings = &settings};
    const int type = classify_position(board, no_position_type);
    std::printf("position type %d: %s\n\n", type, std::string(type_names[static_cast<std::size_t>(type)]).c_str());
    if (type == opening) TraceTerms<opening>(context, board);
    if (type == middle_game) TraceTerms<middle_game>(context, board);
    HashTables tables;
    std::printf("score           %d (side to move)\n", evaluate_for_display(board, personality, tables));
}

/// Whether the text is a personality; sets it.
bool ReadPersonality(const char* text, int& personality) {
    char* end = nullptr;
    const long value = std::strtol(text, &end, 10);
    if (*text == '\0' || *end != '\0' || value < -1000 || value > 1000) return false;
    personality = static_cast<int>(value);
    return true;
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
        if (letter != 'p' || !ReadPersonality(optarg, personality)) return Usage(std::cerr, EXIT_FAILURE);
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
    Trace(position.board(), personality);
    return EXIT_SUCCESS;
}
