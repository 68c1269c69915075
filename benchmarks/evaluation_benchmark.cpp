// What one evaluation costs, by how it ends: known to the evaluation table, lazy, or full with known or unknown pawns.

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "evaluation/evaluate.h"
#include "support/evaluation_builder.h"
#include "support/random_games.h"

namespace {

struct Question {
    BOARD board;
    int position_type;
    int score;
};

const EVALUATION_SETTINGS settings;

/// So few that their boards stay in the cache, as the one board of a search does.
constexpr std::size_t questions_asked = 48;

/// Positions of openings and middle games, or of endings, pawnless ones left out.
const std::vector<Question>& Questions(bool endings) {
    static const auto collect = [](bool of_endings) {
        std::vector<Question> questions;
        std::mt19937 random(1);
        ForEachRandomPosition(1, 140, 60, [&](BOARD& board, const std::vector<Move>& /*moves*/) {
            if (questions.size() == questions_asked || random() % 8 != 0) return;
            const int type = classify_position(board, no_position_type);
            if (type == pawnless || (type > middle_game) != of_endings) return;
            questions.push_back({board, type, EvaluationBuilder(board, settings).Score(type)});
        });
        return questions;
    };
    static const std::vector<Question> of_middle_games = collect(false);
    static const std::vector<Question> of_endings = collect(true);
    return endings ? of_endings : of_middle_games;
}

enum class Outcome { lazy, known, full, full_with_new_pawns };

void Evaluate(benchmark::State& state, Outcome outcome) {
    const std::vector<Question>& questions = Questions(state.range(0) != 0);
    HashTables tables;
    EVALUATION_CONTEXT context{&settings, &tables};
    tables.evaluation.resize(64 << 10);
    tables.pawn.resize(64 << 10);
    for (auto _ : state) {
        state.PauseTiming();
        if (outcome == Outcome::full) tables.evaluation.clear();
        if (outcome == Outcome::full_with_new_pawns || outcome == Outcome::lazy) {
            tables.evaluation.clear();
            tables.pawn.clear();
        }
        state.ResumeTiming();
        const int gap = outcome == Outcome::lazy ? 3000 : 0;
        int sum = 0;
        for (const Question& question : questions) {
            sum += evaluate(context, question.board, question.score + gap, question.position_type);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(questions.size()));
    state.SetLabel(state.range(0) != 0 ? "endings" : "openings and middle games");
}

BENCHMARK_CAPTURE(Evaluate, known, Outcome::known)->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(Evaluate, lazy, Outcome::lazy)->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(Evaluate, full, Outcome::full)->Arg(0)->Arg(1);
BENCHMARK_CAPTURE(Evaluate, full_with_new_pawns, Outcome::full_with_new_pawns)->Arg(0)->Arg(1);

}  // namespace
