#include "tune/pair_job.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

constexpr const char* fen = "rnbqkb1r/1ppnpppp/8/p2pP3/5P2/2N5/PPPP2PP/R1BQKBNR w KQkq - 0 1";

PairJob SomeJob(std::uint64_t pair = 17) {
    return {.pair = pair,
            .first = ReadPlayer("futility_pruning_margin=310 capture_move_sorting_bonus=0,1,2,3,4,5"),
            .second = ReadPlayer(""),
            .rules = {.nodes = 100, .hash_megabytes = 1, .adjudication = {.resign_moves = 3, .resign_score = 700}},
            .fen = fen};
}

template <class Function>
std::string WhyRefused(Function read) {
    try {
        read();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was refused";
}

TEST(PairJob, LineReadsBack) {
    const PairJob job = SomeJob();
    const PairJob read = JobOfLine(LineOf(job));
    EXPECT_EQ(LineOf(job),
              "17|nodes 100 depth 0 hash 1 resign 3 700 draw 40 0 10|futility_pruning_margin=310 "
              "capture_move_sorting_bonus=0,1,2,3,4,5|defaults|" +
                  std::string(fen));
    EXPECT_EQ(LineOf(read), LineOf(job));
    EXPECT_EQ(read.first.settings, job.first.settings);
    EXPECT_EQ(read.second.settings, job.second.settings);
    EXPECT_EQ(read.rules, job.rules);
}

TEST(PairJob, BadLinesAreTold) {
    const std::string rules = "nodes 100 depth 0 hash 1 resign 0 1000 draw 40 0 10";
    EXPECT_EQ(WhyRefused([] { (void)JobOfLine("17|x"); }), "no job: \"17|x\"");
    EXPECT_EQ(WhyRefused([&] { (void)JobOfLine("x|" + rules + "|defaults|defaults|" + fen); }), "no number: \"x\"");
    EXPECT_EQ(WhyRefused([&] { (void)JobOfLine("1|" + rules + "|defaults|speed=1|" + fen); }),
              "no such setting: \"speed\"");
    EXPECT_EQ(WhyRefused([&] { (void)JobOfLine("1|" + rules + "|defaults|defaults|nowhere"); }),
              "no position: \"nowhere\"");
    EXPECT_EQ(WhyRefused([&] { (void)JobOfLine(std::string("1|nodes 5|defaults|defaults|") + fen); }),
              "no rules: \"nodes 5\"");
    EXPECT_NE(WhyRefused([&] {
                  (void)JobOfLine(
                      std::string("1|nodes 0 depth 0 hash 1 resign 0 1000 draw 40 0 10|defaults|defaults|") + fen);
              }),
              "nothing was refused")
        << "nothing would end the search";
}

TEST(PairJob, ResultReadsBack) {
    for (const int lead : {-2, -1, 0, 1, 2}) EXPECT_EQ(ResultOfLine(LineOf(PairResult{9, lead})).lead, lead);
    for (const char* text : {"", "9", "9 3", "9 -3", "9 1 1", "x 1", "9 x"}) {
        EXPECT_NE(WhyRefused([text] { (void)ResultOfLine(text); }), "nothing was refused") << text;
    }
}

TEST(PairJob, TurnedPlayersTurnTheLead) {
    const std::atomic<bool> never{false};
    for (std::uint64_t pair = 0; pair < 3; ++pair) {
        PairJob job = SomeJob(pair);
        job.rules.nodes = 60 + 40 * pair;
        PairJob turned = job;
        std::swap(turned.first, turned.second);
        EXPECT_EQ(PlayPair(job, never).value(), -PlayPair(turned, never).value());
    }
    PairJob equal = SomeJob();
    equal.first = equal.second;
    EXPECT_EQ(PlayPair(equal, never), 0);
}

TEST(PairJob, LeadsComeInTheOrderOfTheJobs) {
    std::vector<PairJob> jobs;
    for (std::uint64_t pair = 0; pair < 6; ++pair) {
        jobs.push_back(SomeJob(pair));
        jobs.back().rules.nodes = 50 + 30 * pair;
    }
    std::atomic<bool> stop{false};
    const auto alone = PlayHere(jobs, 1, stop);
    ASSERT_TRUE(alone);
    EXPECT_EQ(PlayHere(jobs, 3, stop), alone);
    stop = true;
    EXPECT_EQ(PlayHere(jobs, 2, stop), std::nullopt);
}

TEST(PairJob, CommandMayAnswerInAnyOrder) {
    const std::atomic<bool> never{false};
    const std::vector<PairJob> jobs{SomeJob(5), SomeJob(6)};
    EXPECT_EQ(PlayWith(jobs, "cat > /dev/null; echo 6 -2; echo 5 1", never), (std::vector<int>{1, -2}));
    EXPECT_EQ(WhyRefused([&] { (void)PlayWith(jobs, "echo 7 1", never); }), "a result that was not asked for: \"7 1\"");
    EXPECT_EQ(WhyRefused([&] { (void)PlayWith(jobs, "echo 6 1", never); }), "no result of pair 5 from: echo 6 1");
}

}  // namespace
