#include "tune/tuning_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "tools/tune/tuned_parameters.h"
#include "tune/plot.h"

namespace {

class StateOfTuning : public testing::Test {
  protected:
    static Spsa Fresh() {
        return {
            ParametersIn("futility_pruning_margin 300 0 600 30 0.02\nlimited_razoring_margin 1020 500 1500 50 0.02\n"),
            {.pairs = 100, .batch = 4}};
    }
    static Spsa OnItsWay() {
        Spsa started = Fresh();
        started.GoOnFrom(8, {301.0 / 3, 1e3 + 1.0 / 7});
        return started;
    }
    [[nodiscard]] std::string WhyRefused(const std::string& kept) const {
        Spsa read = Fresh();
        try {
            (void)ReadTuning(kept, head, read);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "nothing was refused";
    }

    Spsa spsa = OnItsWay();
    std::string head = TuningHead(spsa, "nodes 500\n");
    std::vector<TuningPoint> way{{0, {300, 1020}}, {8, {100.33, 1000.14}}};
    std::string text = TuningText(head, spsa, way);
};

TEST_F(StateOfTuning, ReadsBackToTheLastBit) {
    Spsa read = Fresh();
    const auto way_read = ReadTuning(text, head, read);
    EXPECT_EQ(read.values(), spsa.values());
    EXPECT_EQ(read.pairs_done(), 8U);
    ASSERT_EQ(way_read.size(), 2U);
    EXPECT_EQ(way_read[1].pairs, 8U);
    EXPECT_EQ(way_read[1].values, way[1].values);
    EXPECT_EQ(TuningText(head, read, way_read), text);
}

TEST_F(StateOfTuning, AnotherRunIsRefused) {
    Spsa read = Fresh();
    EXPECT_THROW((void)ReadTuning(text, TuningHead(spsa, "nodes 501\n"), read), std::runtime_error);
    EXPECT_EQ(WhyRefused(""), "line 1: it belongs to another run: \"\" there, \"tune 1\" here");
    std::string other = text;
    other.replace(other.find("nodes 500"), 9, "nodes 499");
    EXPECT_EQ(WhyRefused(other), "line 5: it belongs to another run: \"nodes 499\" there, \"nodes 500\" here");
}

TEST_F(StateOfTuning, BadLinesAreToldWithTheirNumber) {
    EXPECT_EQ(WhyRefused(head), "line 6: no values");
    EXPECT_EQ(WhyRefused(head + "at 8 1\n"), "line 7: not the values of all parameters");
    EXPECT_EQ(WhyRefused(head + "at x 1 2\n"), "line 7: no number of pairs: \"x\"");
    EXPECT_EQ(WhyRefused(head + "at 8 1 2y\n"), "line 7: no value: \"2y\"");
    EXPECT_EQ(WhyRefused(head + "at 8 1 nan\n"), "line 7: no value: \"nan\"");
    EXPECT_EQ(WhyRefused(head + "at 8 1 1e999\n"), "line 7: no value: \"1e999\"");
    EXPECT_EQ(WhyRefused(text + "so 8 1 2\n"), "line 10: neither at nor way");
}

TEST_F(StateOfTuning, PlotHasADiagramForEachParameter) {
    const std::string svg = PlotSvg(spsa, way);
    EXPECT_THAT(svg, testing::HasSubstr(">futility_pruning_margin<"));
    EXPECT_THAT(svg, testing::HasSubstr(">1000.1<"));
    EXPECT_THAT(svg, testing::HasSubstr("8 of 100 pairs"));
}

}  // namespace
