// Cross-checks of the ladder analysis against circuit physics worked out independently: impedance
// reduction from the load, and power conservation in a lossless two-port.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>

#include "core/network.h"
#include "design_fixture.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

using test::DesignInputs;
using test::RecordingReporter;
using Impedance = std::complex<double>;

std::unique_ptr<DesignState> SweptDesign(const DesignInputs& inputs, float genMultiplier) {
    auto state = test::CalculatedDesign(inputs, genMultiplier);
    SetupLadder(*state);
    RecordingReporter reporter;
    EXPECT_TRUE(SweepRoutine(*state, reporter));
    return state;
}

LadderResult AtOperatingFrequency(const DesignState& state) {
    LadderResult result;
    AnalyzeLadder(state, 0, 0, state.frequency, result);
    return result;
}

Impedance Parallel(Impedance a, Impedance b) {
    return a * b / (a + b);
}

// Input impedance of C1 - L1 - C2 - L2 into the load, lossless, reduced from the load end; C3
// only where `withC3` asks for it (across the load).
Impedance StepUpInputImpedance(const DesignState& s, bool withC3) {
    const double omega = 2 * s.pi * s.frequency;
    const auto capacitor = [&](double c) { return Impedance(0, -1 / (omega * c)); };
    const auto inductor = [&](double l) { return Impedance(0, omega * l); };
    Impedance z = s.loadR;
    if (withC3) z = Parallel(z, capacitor(s.C3));
    z = Parallel(inductor(s.L2) + z, capacitor(s.C2));
    return Parallel(inductor(s.L1) + z, capacitor(s.C1));
}

// Transducer gain of a lossless network with input impedance zin, driven from rs.
double LosslessGain(Impedance zin, double rs) {
    return 1 - std::norm((zin - rs) / (zin + rs));
}

const DesignInputs kMatchedDesigns[] = {
    {3.9e6f, 1500, 300, 50, 12},   // step down
    {1.8e6f, 3000, 200, 50, 15},   // step down
    {14.2e6f, 800, 100, 75, 8},    // step down
    {7.1e6f, 2000, 50, 50, 10},    // no L section
    {28.5e6f, 2000, 2000, 50, 6},  // pi of equal resistances (nudged)
};

TEST(Physics, MatchedDesignsDeliverAllPowerAtTheirFrequency) {
    for (const auto& inputs : kMatchedDesigns) {
        auto state = SweptDesign(inputs, 1);
        const LadderResult r = AtOperatingFrequency(*state);
        EXPECT_NEAR(r.transmissionDb, 0, 0.01) << inputs.frequency;
        EXPECT_NEAR(r.zMagnitude, inputs.plateR, 0.005 * inputs.plateR) << inputs.frequency;
    }
}

// With intermediateR below loadR the analysed ladder stops at L2 (C3 is not in it), so the
// design's match is not what the analysis sees; the full network would match.
TEST(Physics, StepUpDesignIsAnalysedWithoutC3) {
    auto state = SweptDesign({3.9e6f, 1500, 50, 100, 12}, 1);
    const LadderResult r = AtOperatingFrequency(*state);
    const Impedance analysed = StepUpInputImpedance(*state, false);
    EXPECT_NEAR(r.zMagnitude, std::abs(analysed), 1e-4 * std::abs(analysed));
    EXPECT_NEAR(r.transmissionDb, 10 * std::log10(LosslessGain(analysed, 1500)), 1e-3);
    EXPECT_LT(r.transmissionDb, -0.1);

    const Impedance complete = StepUpInputImpedance(*state, true);
    EXPECT_NEAR(complete.real(), 1500, 0.005 * 1500);
    EXPECT_NEAR(complete.imag(), 0, 0.005 * 1500);
}

// Power conservation: what the load receives is what the input does not reflect towards the
// generator resistance Rs = genMultiplier x plateR.
TEST(Physics, SweepConservesPower) {
    const DesignInputs stepUp{3.9e6f, 1500, 50, 100, 12};
    for (const float multiplier : {1.0f, 2.0f, 0.5f}) {
        for (const DesignInputs& inputs : {kMatchedDesigns[0], kMatchedDesigns[3], stepUp}) {
            auto state = SweptDesign(inputs, multiplier);
            const double rs = double{multiplier} * inputs.plateR;
            for (int i = 0; i < kSweepPoints; ++i) {
                const double angle = state->sweepZAngle[i] * std::atan(1.0) / 45;
                const Impedance zin = std::polar(double{state->sweepZMagnitude[i]}, angle);
                const double expected = LosslessGain(zin, rs);
                const double gain = std::pow(10.0, state->sweepTransmission[i] / 10.0);
                ASSERT_NEAR(gain, expected, 1e-5 + 1e-4 * expected)
                    << "point " << i << " multiplier " << multiplier << " f " << inputs.frequency;
            }
        }
    }
}

}  // namespace
}  // namespace varo
