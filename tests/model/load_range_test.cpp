#include "model/load_range.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "model/design.h"

namespace varo {
namespace {

constexpr double kPico = 1e-12;

// Components worked out, at 1500 W.
DesignState Designed(const test::DesignInputs& inputs) {
    DesignState state = *test::CalculatedDesign(inputs);
    state.rfPower = 1500;
    return state;
}

const test::DesignInputs kDesigns[] = {
    {3.9e6f, 1500, 300, 50, 12},  // steps down: C3 joins C2 at the midpoint
    {3.9e6f, 2000, 50, 50, 12},   // no L section
    {3.9e6f, 2500, 25, 75, 12},   // steps up: C3 across the load, kept as designed
};

TEST(LoadImpedance, TextsReadAsOhms) {
    struct Case {
        const char* text;
        double re, im;
    };
    for (const Case& c :
         {Case{"37-j22", 37, -22}, Case{"37+j22", 37, 22}, Case{" 37 - j 22 ", 37, -22},
          Case{"37-22j", 37, -22}, Case{"50", 50, 0}, Case{"1.2k+j300", 1200, 300},
          Case{"1e2-j1e1", 100, -10}, Case{"2.5E+1+J4", 25, 4}}) {
        const auto z = ParseLoadImpedance(c.text);
        ASSERT_TRUE(z) << c.text;
        EXPECT_DOUBLE_EQ(z->re, c.re) << c.text;
        EXPECT_DOUBLE_EQ(z->im, c.im) << c.text;
    }
    for (const char* text : {"", "j22", "-37+j22", "0+j5", "37-j", "37+j-22", "37x", "37-22", "inf",
                             "nan+j1", "37--j2", "37+j22j", "1e400"})
        EXPECT_FALSE(ParseLoadImpedance(text)) << text;
}

// SWR 2 around 50 ohms: Gamma = 1/3 at 0, 90, 180 and 270 degrees.
TEST(LoadRange, SwrCircleWorkedByHand) {
    const std::vector<Complex> loads = SwrCircle(50, 2, 4);
    const Complex expected[] = {{100, 0}, {40, 30}, {25, 0}, {40, -30}};
    ASSERT_EQ(loads.size(), 4u);
    for (int k = 0; k < 4; ++k) {
        EXPECT_NEAR(loads[k].re, expected[k].re, 1e-9) << k;
        EXPECT_NEAR(loads[k].im, expected[k].im, 1e-9) << k;
    }
    for (const Complex& z : SwrCircle(75, 1, 3))
        EXPECT_NEAR(std::hypot(z.re - 75, z.im), 0, 1e-12);
}

// With its own load the design needs its own capacitors, and the walk finds what the plate and
// the midpoint must carry: a lossless network presenting Rp and R2 there takes the power at
// sqrt(2 P R) volts peak. The coil currents are the stresses the design screen shows.
TEST(LoadRange, TheDesignsOwnLoadGivesTheDesignsFigures) {
    for (const auto& inputs : kDesigns) {
        SCOPED_TRACE(inputs.intermediateR);
        DesignState design = Designed(inputs);
        LoadRangeInputs single;
        single.loads = {{design.loadR, 0}};
        const LoadCase load = AnalyzeLoadRange(design, single).loads.at(0);
        ASSERT_TRUE(load.tuning.solvable);
        const bool merged = design.intermediateR > design.loadR;
        EXPECT_NEAR(load.tuning.c1 / design.C1, 1, 1e-5);
        EXPECT_NEAR(load.tuning.load / (design.C2 + (merged ? design.C3 : 0)), 1, 1e-5);
        EXPECT_NEAR(load.c1PeakVolts, std::sqrt(2 * 1500.0 * design.plateR), 0.01);
        EXPECT_NEAR(load.loadPeakVolts, std::sqrt(2 * 1500.0 * design.intermediateR), 0.01);
        const double throughL1 =  // the plate's current less C1's, in quadrature
            std::hypot(load.c1PeakVolts / design.plateR, load.c1PeakVolts / design.xC1) /
            std::sqrt(2.0);
        EXPECT_NEAR(load.l1Amperes / throughL1, 1, 1e-4);
        ASSERT_TRUE(load.lossWatts);
        EXPECT_GT(*load.lossWatts, 0);
    }
}

// Every load on the circle is matched to Rp again, so the plate swings sqrt(2 P Rp) whatever
// the load. Without an L section the midpoint is the load itself: |V|^2 = 2 P |Z|^2 / R, whose
// largest value on the circle, at 0 degrees, is 2 P R0 S.
TEST(LoadRange, WorstCasesOnTheSwrCircle) {
    const DesignState design = Designed(kDesigns[1]);
    const LoadRange range = AnalyzeLoadRange(design, SwrCircleInputs(design, 2, 36, {}));
    ASSERT_EQ(range.loads.size(), 36u);
    EXPECT_EQ(range.unmatched, 0);
    for (const LoadCase& load : range.loads)
        EXPECT_NEAR(load.c1PeakVolts, std::sqrt(2 * 1500.0 * 2000), 0.05) << load.phaseDegrees;
    const WorstCase& mid = range.Worst(LoadStress::LoadVolts);
    EXPECT_EQ(range.loads.at(mid.index).phaseDegrees, 0);
    EXPECT_NEAR(mid.value, std::sqrt(2 * 1500.0 * 50 * 2), 0.01);
    EXPECT_EQ(range.loads.at(18).phaseDegrees, 180);
    ASSERT_TRUE(range.c1Cover && range.loadCover);
    EXPECT_LT(range.loadCover->min, range.loadCover->max);
    EXPECT_EQ(range.Worst(LoadStress::L2Amperes).value, 0);  // no L2
}

// Where no positive capacitances match, the load says why and by how much. With fixed coils the
// plate side can only present a conductance up to Rp / X1^2 at the midpoint; and two loads of
// the same conductance need loading capacitances that differ by their susceptances over omega.
TEST(LoadRange, AnUnmatchableLoadSaysByHowMuch) {
    const DesignState design = Designed(kDesigns[1]);
    LoadRangeInputs inputs;
    // 0.5 ohm: G = 2 S, so X1 may be at most sqrt(Rp / G) = 31.62 ohms, 1.29 uH at 3.9 MHz.
    // 50-j50 and 10-j30 ohms: G = 0.01 S both, B = 0.01 and 0.03 S.
    inputs.loads = {{0.5, 0}, {50, -50}, {10, -30}};
    const LoadRange range = AnalyzeLoadRange(design, inputs);
    EXPECT_EQ(range.unmatched, 2);
    char l1[16];
    std::snprintf(l1, sizeof l1, "%.3f", design.L1 * 1e6);
    EXPECT_EQ(range.loads[0].tuning.problem,
              std::string("L1 (") + l1 +
                  " uH) is too large for this load: at most 1.29 uH would match it");
    ASSERT_TRUE(range.loads[1].tuning.solvable);
    const double omega = 2 * std::numbers::pi * 3.9e6;
    const double needed = range.loads[1].tuning.load - 0.02 / omega;
    char pf[16];
    std::snprintf(pf, sizeof pf, "%.1f", -needed / kPico);
    EXPECT_EQ(range.loads[2].tuning.problem,
              std::string("the loading capacitance would have to be -") + pf + " pF (" + pf +
                  " pF below zero)");
    EXPECT_EQ(range.Worst(LoadStress::C1Volts).index, 1);
    EXPECT_EQ(range.c1Cover->min, range.c1Cover->max);
}

// Per band, the circle's cover is checked against the capacitors' ranges.
TEST(LoadRange, EachBandOfAPlanIsCoveredOrShort) {
    DesignState design = Designed(kDesigns[0]);
    BandPlanInputs amp;
    amp.tubeCapacitance = 5 * kPico;
    amp.strayCapacitance = 10 * kPico;
    amp.tune = {10 * kPico, 500 * kPico};
    amp.load = {30 * kPico, 3000 * kPico};
    amp.bands = {{"80 m", 3.5e6, 4.0e6}, {"20 m", 14.0e6, 14.35e6}};
    const BandPlan wide = PlanBands(design, amp);
    const auto ranges = AnalyzeBandLoadRanges(design, wide, 2, 36);
    ASSERT_EQ(ranges.size(), 2u);
    for (const BandLoadRange& band : ranges) {
        EXPECT_TRUE(band.shortfalls.empty()) << band.band;
        EXPECT_EQ(band.range.unmatched, 0);
    }
    amp.load.max = 900 * kPico;  // 80 m needs up to about 1000 pF on the circle
    const auto shortRanges = AnalyzeBandLoadRanges(design, PlanBands(design, amp), 2, 36);
    ASSERT_EQ(shortRanges[0].shortfalls.size(), 1u);
    EXPECT_EQ(shortRanges[0].shortfalls[0].rfind("the loading capacitor needs ", 0), 0u);
    EXPECT_TRUE(shortRanges[1].shortfalls.empty());
}

// The design keeps its load range with its loss Q and its band plan; a request that cannot be
// worked out leaves none.
TEST(LoadRange, TheDesignKeepsItsLoadRange) {
    Design design;
    design.state() = Designed(kDesigns[0]);
    design.SetLoadRange(LoadRangeRequest{});
    ASSERT_TRUE(design.results().loadRange);
    const LoadRangeResult& usual = *design.results().loadRange;
    EXPECT_EQ(usual.range.loads.size(), 36u);
    EXPECT_TRUE(usual.bands.empty());
    const double usualLoss = *usual.range.loads[0].lossWatts;
    design.SetLossQ(TankQ{100, 2000});
    EXPECT_GT(*design.results().loadRange->range.loads[0].lossWatts, 2 * usualLoss);
    BandPlanInputs amp;
    amp.tune = {10 * kPico, 500 * kPico};
    amp.load = {30 * kPico, 3000 * kPico};
    design.SetBandPlanInputs(amp);
    EXPECT_EQ(design.results().loadRange->bands.size(), 9u);
    LoadRangeRequest noResistance;
    noResistance.kind = LoadRangeRequest::Kind::Impedance;
    design.SetLoadRange(noResistance);
    EXPECT_FALSE(design.results().loadRange);  // no resistance
}

}  // namespace
}  // namespace varo
