#include "screens/loadrange/load_range_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace varo {
namespace {

LoadCase Matched(double phase, double c1Pf, double loadPf) {
    LoadCase load;
    load.zLoad = {100, 0};
    load.phaseDegrees = phase;
    load.tuning.c1 = c1Pf * 1e-12;
    load.tuning.load = loadPf * 1e-12;
    load.c1PeakVolts = 2121.4;
    load.loadPeakVolts = 388;
    load.l1Amperes = 6.126;
    load.l2Amperes = 7.5;
    load.lossWatts = 31.26;
    return load;
}

// Made by hand: two loads of an SWR circle matched, one not, and a band of a plan.
LoadRangeResult Circle() {
    LoadRangeResult result;
    LoadRange& range = result.range;
    range.loads = {Matched(0, 214.3, 949.3), Matched(120, 253.9, 684.4), LoadCase{}};
    range.loads[2].zLoad = {12.5, -3};
    range.loads[2].phaseDegrees = 240;
    range.loads[2].tuning.solvable = false;
    range.loads[2].tuning.problem = "C1 would be below 0";
    range.worst = {{{0, 2121.4}, {1, 388}, {0, 6.126}, {1, 7.5}, {1, 31.26}}};
    range.c1Cover = {214.3e-12, 253.9e-12};
    range.loadCover = {684.4e-12, 949.3e-12};
    range.unmatched = 1;
    range.withPower = true;
    BandLoadRange band;
    band.band = "80 m";
    band.centre = 3.75e6;
    band.range.unmatched = 0;
    band.shortfalls = {"the tuning capacitor needs 600 pF; it reaches 500 pF"};
    result.bands = {band};
    return result;
}

TEST(LoadRangeText, TheSummaryNamesTheWorstCasesTheCoverAndEachBand) {
    EXPECT_EQ(LoadRangeSummary(Circle()),
              "Worst C1 voltage: 2121 Vpeak at 0 deg\n"
              "Worst loading voltage: 388 Vpeak at 120 deg\n"
              "Worst L1 current: 6.13 Arms at 0 deg\n"
              "Worst L2 current: 7.50 Arms at 120 deg\n"
              "Worst tank loss: 31.3 W at 120 deg\n"
              "C1 214.3 to 253.9 pF, loading 684.4 to 949.3 pF\n"
              "1 of 3 loads cannot be matched with these coils.\n"
              "80 m (3.750 MHz):\n"
              "  Short: the tuning capacitor needs 600 pF; it reaches 500 pF\n");
}

// An unmatched load's row ends in its problem, in the C1 column; without an RF power the
// stresses show as dashes and the summary says why.
TEST(LoadRangeText, RowsShowTheProblemOrTheStresses) {
    LoadRangeResult result = Circle();
    result.range.withPower = false;
    result.bands.clear();
    const std::vector<LoadRowText> rows = LoadRows(result);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].cells, (std::vector<std::string>{"0", "100.00", "0.00", "214.3", "949.3", "-",
                                                       "-", "-", "-", "-"}));
    EXPECT_FALSE(rows[2].matched);
    EXPECT_EQ(rows[2].cells,
              (std::vector<std::string>{"240", "12.50", "-3.00", "C1 would be below 0"}));
    EXPECT_EQ(rows[2].cells.size(), static_cast<std::size_t>(kProblemColumn + 1));
    EXPECT_NE(LoadRangeSummary(result).find("The design has no RF power"), std::string::npos);
    EXPECT_EQ(FirstColumnHeading(result), "Phase");
}

}  // namespace
}  // namespace varo
