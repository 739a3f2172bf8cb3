#include "model/band_plan.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>
#include <string>
#include <vector>

#include "core/design_fixture.h"
#include "model/design.h"

namespace varo {
namespace {

using Z = std::complex<double>;
constexpr double kPico = 1e-12;

DesignState Designed(const test::DesignInputs& inputs, float power = 1500, float swing = 2500) {
    DesignState state;
    test::SetDesign(state, inputs);
    state.rfPower = power;
    state.peakSwing = swing;
    return state;
}

// A 3-500Z-like plate and a pair of ordinary variable capacitors.
BandPlanInputs Amplifier() {
    BandPlanInputs inputs;
    inputs.tubeCapacitance = 5 * kPico;
    inputs.strayCapacitance = 10 * kPico;
    inputs.tune = {10 * kPico, 500 * kPico};
    inputs.load = {30 * kPico, 3000 * kPico};
    return inputs;
}

// The impedance the plate sees, worked out directly: the load, then each part towards the plate.
Z PlateImpedance(const DesignState& design, const BandResult& band, const Tuning& tuning) {
    const double w = 2 * std::numbers::pi * tuning.frequency;
    const auto parallelC = [w](Z z, double c) { return 1.0 / (1.0 / z + Z(0, w * c)); };
    Z z = design.loadR;
    if (tuning.c3) z = parallelC(z, *tuning.c3);
    z += Z(0, w * band.l2);
    const double padder = band.band.loadPadder, tubePadder = band.band.tunePadder;
    z = parallelC(z, tuning.load + padder);
    z += Z(0, w * band.l1);
    const BandPlanInputs amp = Amplifier();
    return parallelC(z, tuning.tune + amp.tubeCapacitance + amp.strayCapacitance + tubePadder);
}

const test::DesignInputs kDesigns[] = {
    {3.9e6f, 1500, 300, 50, 12},  // steps down: C3 joins C2 at the midpoint
    {3.9e6f, 2000, 50, 50, 12},   // no L section
    {3.9e6f, 2500, 25, 75, 12},   // steps up: C3 across the load, kept as designed
};

// With the band's coils fixed, the capacitors re-tuned at each edge (and at the centre) make
// the network present the plate load again, for every topology, and at the centre they are the
// design's own.
TEST(BandPlan, RetunedEdgesPresentThePlateLoad) {
    for (const auto& inputs : kDesigns) {
        const DesignState design = Designed(inputs);
        const BandPlan plan = PlanBands(design, Amplifier());
        for (const BandResult& band : plan.bands) {
            SCOPED_TRACE(band.band.name + " R2 " + std::to_string(inputs.intermediateR));
            ASSERT_TRUE(band.designed);
            for (const Tuning& tuning : {band.centreTuning, band.edges[0], band.edges[1]}) {
                ASSERT_TRUE(tuning.solvable) << tuning.frequency;
                const Z zin = PlateImpedance(design, band, tuning);
                EXPECT_LT(std::abs(zin - Z(design.plateR)) / design.plateR, 1e-6)
                    << tuning.frequency << " " << zin;
            }
            EXPECT_EQ(band.edges[0].frequency, band.band.low);
            EXPECT_EQ(band.edges[1].frequency, band.band.high);
            // Lower edge, more capacitance.
            EXPECT_GT(band.edges[0].tune, band.edges[1].tune);
        }
    }
}

// The plate current of cosine pulses, integrated numerically: the harmonic's share of the
// fundamental for each class's conduction angle.
TEST(BandPlan, PlateCurrentHarmonicsOfCosinePulses) {
    const auto integrated = [](int n, double degrees) {
        const double half = degrees * std::numbers::pi / 360;
        const int steps = 200000;
        double fundamental = 0, harmonic = 0;
        for (int k = 0; k <= steps; ++k) {
            const double t = -half + 2 * half * k / steps;
            const double weight = (k == 0 || k == steps) ? 0.5 : 1;
            const double pulse = std::cos(t) - std::cos(half);
            fundamental += weight * pulse * std::cos(t);
            harmonic += weight * pulse * std::cos(n * t);
        }
        return std::fabs(harmonic / fundamental);
    };
    for (const double degrees : {150.0, 180.0, 240.0, 300.0})
        for (int n = 2; n <= 10; ++n)
            EXPECT_NEAR(PlateCurrentHarmonic(n, degrees), integrated(n, degrees), 1e-6)
                << degrees << " " << n;
    // Class B: half sine waves, 2nd harmonic 2/(3 pi) of the peak over 1/2 of it.
    EXPECT_NEAR(PlateCurrentHarmonic(2, 180), 4 / (3 * std::numbers::pi), 1e-12);
    for (int n = 2; n <= 10; ++n)
        EXPECT_LT(PlateCurrentHarmonic(n, 360), 1e-12) << n;
}

// Where the tube and strays already exceed the C1 the design's Q wants, the working Q rises just
// far enough for the tuning capacitor to reach the band's high edge, sitting at its minimum
// there.
TEST(BandPlan, QRisesUntilTheTuningCapacitorReachesItsMinimum) {
    BandPlanInputs amp = Amplifier();
    amp.tubeCapacitance = 20 * kPico;
    amp.bands = {{"10 m", 28.0e6, 29.7e6}, {"80 m", 3.5e6, 4.0e6}};
    const BandPlan plan = PlanBands(Designed({3.9e6f, 1500, 300, 50, 12}), amp);
    const BandResult& ten = plan.bands[0];
    ASSERT_TRUE(ten.qRaised);
    EXPECT_EQ(ten.designQ, 12);
    EXPECT_GT(ten.q, 12);
    EXPECT_NEAR(ten.edges[1].tune, amp.tune.min, 0.01 * kPico);
    EXPECT_TRUE(ten.feasible()) << ten.shortfalls.at(0);
    ASSERT_EQ(ten.notes.size(), 1u);
    const std::string& note = ten.notes[0];
    const std::string opening = "Q raised from 12 to ";
    ASSERT_EQ(note.rfind(opening, 0), 0u) << note;
    EXPECT_NEAR(std::stod(note.substr(opening.size())), ten.q, 0.05) << note;
    EXPECT_TRUE(note.ends_with(": tuning capacitor at its minimum")) << note;
    // The least such Q: a tenth less leaves the tuning capacitor below its minimum.
    BandPlanInputs lower = amp;
    DesignState justBelow = Designed({3.9e6f, 1500, 300, 50, static_cast<float>(ten.q - 0.1)});
    lower.bands = {ten.band};
    lower.tune.min = 0;
    const BandPlan below = PlanBands(justBelow, lower);
    EXPECT_LT(below.bands[0].edges[1].tune, amp.tune.min);
    EXPECT_FALSE(plan.bands[1].qRaised);
    EXPECT_EQ(plan.bands[1].q, 12);
}

// Each capacitor is checked at both edges; what it cannot reach is said with the pF missing.
TEST(BandPlan, ShortfallsNameTheEdgeTheCapacitorAndThePicofarads) {
    BandPlanInputs amp = Amplifier();
    amp.tune = {10 * kPico, 100 * kPico};
    amp.bands = {{"160 m", 1.8e6, 2.0e6}};
    const BandResult band = PlanBands(Designed({3.9e6f, 1500, 300, 50, 12}), amp).bands[0];
    ASSERT_FALSE(band.feasible());
    const double needed = band.edges[0].tune / kPico;
    char expected[160];
    std::snprintf(expected, sizeof expected,
                  "1.8 MHz: the tuning capacitor needs %.1f pF, %.1f pF above its maximum of "
                  "100 pF",
                  needed, needed - 100);
    EXPECT_EQ(band.shortfalls.at(0), expected);
}

// The limit of 43 + 10 log10(P) dB below the carrier, or 50 dB where that is less strict.
TEST(BandPlan, PowerScaledLimit) {
    EXPECT_DOUBLE_EQ(PowerScaledHarmonicLimitDbc(1500), -50);
    EXPECT_DOUBLE_EQ(PowerScaledHarmonicLimitDbc(10), -50);
    EXPECT_NEAR(PowerScaledHarmonicLimitDbc(5), -49.99, 0.01);
    EXPECT_NEAR(PowerScaledHarmonicLimitDbc(0.5), -39.99, 0.01);
}

// Class A: no harmonic current; the harmonics stand on the network alone and the plan says so.
// Class B lacks the odd ones.
TEST(BandPlan, HarmonicsTheTubeLacksAreJudgedOnTheNetworkAlone) {
    BandPlanInputs amp = Amplifier();
    amp.bands = {{"40 m", 7.0e6, 7.3e6}};
    const DesignState design = Designed({3.9e6f, 1500, 300, 50, 12});
    amp.conductionDegrees = 360;
    BandPlan plan = PlanBands(design, amp);
    EXPECT_EQ(plan.notes, std::vector<std::string>{
                              "At 360 degrees (class A) the tube makes no harmonic current in "
                              "this model: the harmonics are judged on the network's "
                              "attenuation alone."});
    for (const HarmonicEstimate& h : plan.bands[0].harmonics) {
        EXPECT_FALSE(h.currentDb) << h.n;
        EXPECT_EQ(h.outputDbc, h.networkDb);
        EXPECT_EQ(h.marginDb, -43 - h.networkDb);
    }
    amp.conductionDegrees = 180;
    plan = PlanBands(design, amp);
    EXPECT_EQ(plan.notes, std::vector<std::string>{
                              "At 180 degrees the tube makes no 3rd, 5th, 7th, 9th harmonic "
                              "current in this model: those are judged on the network's "
                              "attenuation alone."});
    const HarmonicEstimate& second = plan.bands[0].harmonics[0];
    EXPECT_NEAR(second.outputDbc, second.networkDb + 20 * std::log10(4 / (3 * std::numbers::pi)),
                1e-9);
}

TEST(BandPlan, InputProblemsAreNamed) {
    const DesignState design = Designed({3.9e6f, 1500, 300, 50, 12});
    const auto problems = [&](auto change) {
        BandPlanInputs inputs = Amplifier();
        change(inputs);
        return BandPlanInputProblems(design, inputs);
    };
    using Texts = std::vector<std::string>;
    EXPECT_EQ(problems([](BandPlanInputs&) {}), Texts{});
    EXPECT_EQ(problems([](BandPlanInputs& i) {
                  i.tune = {500 * kPico, 10 * kPico};
              }),
              Texts{"The tuning capacitor's minimum (500 pF) is above its maximum (10 pF)."});
    EXPECT_EQ(problems([](BandPlanInputs& i) { i.load.min = -1 * kPico; }),
              Texts{"The loading capacitor's range must be capacitances of 0 pF or more."});
    EXPECT_EQ(problems([](BandPlanInputs& i) { i.tubeCapacitance = -5 * kPico; }),
              Texts{"The tube's output capacitance must be 0 pF or more."});
    EXPECT_EQ(problems([](BandPlanInputs& i) {
                  i.bands = {{"40 m", 7.3e6, 7.0e6}};
              }),
              Texts{"Band 40 m: its low edge (7.3 MHz) is above its high edge (7 MHz)."});
    EXPECT_EQ(problems([](BandPlanInputs& i) { i.bands.clear(); }),
              Texts{"Choose at least one band."});
    EXPECT_EQ(problems([](BandPlanInputs& i) { i.conductionDegrees = 400; }),
              Texts{"The conduction angle must be above 0 and at most 360 degrees."});
    EXPECT_EQ(problems([](BandPlanInputs& i) { i.limitDbc = 43; }),
              Texts{"The harmonic limit must be below the carrier (a negative dBc)."});
}

// A tube whose capacitance is more than any C1 the parts allow: the band is infeasible with a
// reason, never a crash or a silent answer.
TEST(BandPlan, ATubeTooLargeForTheBandIsInfeasibleWithAReason) {
    const struct {
        double tube;
        double loadMax;
        const char* reason;
    } cases[] = {
        {400 * kPico, 1000 * kPico, "the loading capacitor needs"},
        {5000 * kPico, 3000 * kPico,
         "No working Q up to 1000 lets the tuning capacitor reach its minimum of 10 pF at "
         "29.7 MHz: the tube, strays and padder alone are 5010 pF."},
    };
    for (const auto& c : cases) {
        BandPlanInputs amp = Amplifier();
        amp.tubeCapacitance = c.tube;
        amp.load.max = c.loadMax;
        amp.bands = {{"10 m", 28.0e6, 29.7e6}};
        const BandResult band = PlanBands(Designed({3.9e6f, 1500, 300, 50, 12}), amp).bands[0];
        EXPECT_FALSE(band.feasible());
        ASSERT_FALSE(band.shortfalls.empty());
        EXPECT_NE(band.shortfalls[0].find(c.reason), std::string::npos) << band.shortfalls[0];
    }
}

// The design keeps its plan up to date: the plan follows the parts' Q entered for the losses,
// and inputs that cannot be planned with leave none.
TEST(BandPlan, TheDesignKeepsItsPlanWithTheLossQ) {
    Design design;
    design.state() = Designed({3.9e6f, 1500, 300, 50, 12});
    BandPlanInputs amp = Amplifier();
    amp.bands = {{"40 m", 7.0e6, 7.3e6}};
    design.SetBandPlanInputs(amp);
    ASSERT_TRUE(design.results().bandPlan);
    const double usual = *design.results().bandPlan->bands[0].efficiencyPercent;
    design.SetLossQ(TankQ{100, 2000});
    const double poorCoils = *design.results().bandPlan->bands[0].efficiencyPercent;
    EXPECT_LT(poorCoils, usual - 1);
    amp.tune = {500 * kPico, 10 * kPico};
    design.SetBandPlanInputs(amp);
    EXPECT_FALSE(design.results().bandPlan);
}

}  // namespace
}  // namespace varo
