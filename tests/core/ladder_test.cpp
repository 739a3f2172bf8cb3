#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <functional>
#include <string>

#include "core/fault.h"
#include "design_fixture.h"

namespace varo {
namespace {

using namespace test;
using Impedance = std::complex<double>;

LadderResult Analyze(const DesignState& state, float frequency) {
    LadderResult result;
    AnalyzeLadder(state, 0, 0, frequency, result);
    return result;
}

std::unique_ptr<DesignState> SweptDesign(const DesignInputs& inputs, float genMultiplier = 1) {
    auto state = CalculatedDesign(inputs, genMultiplier);
    SetupLadder(*state);
    RecordingReporter reporter;
    EXPECT_TRUE(SweepRoutine(*state, reporter));
    return state;
}

// Through connections clamp the reflection to 1e-7 or just below 1; Zin = 50 + j50 reports -45.
TEST(AnalyzeLadder, ReflectionClampsAndTheAngleIsNegated) {
    auto state = MakeDesign({1e6f, 50, 50, 50, 1});
    state->sourceR = 50;
    state->inductorQ = state->capacitorQ = 1e7f;
    state->elementCount = 3;
    const LadderResult r = Analyze(*state, 1e6f);
    EXPECT_EQ(r.transmissionDb, 0);
    EXPECT_EQ(r.zMagnitude, 50);
    EXPECT_NEAR(r.returnDb, -140, 1e-4);
    EXPECT_NEAR(r.vswr, 1, 1e-6);
    state->loadR = 1e9f;  // rho = (1e9 - 50) / (1e9 + 50) is just above 0.9999999
    const LadderResult open = Analyze(*state, 1e6f);
    EXPECT_NEAR(open.returnDb, 20 * std::log10(0.9999999), 1e-9);
    EXPECT_NEAR(open.vswr, 1.9999999 / 1e-7, 1e-3 * open.vswr);

    state->loadR = 50;
    state->elementType[1] = kSeriesInductor;
    state->elementL[1] = static_cast<float>(50 / (2 * state->pi * 1e6));
    const LadderResult inductive = Analyze(*state, 1e6f);
    EXPECT_NEAR(inductive.zMagnitude, 50 * std::sqrt(2.0), 1e-3);
    EXPECT_NEAR(inductive.zAngle, -45, 1e-4);
    // |Gamma| = |j50 / (100 + j50)| into the generator's own 50 ohms.
    const double gamma = 1 / std::sqrt(5.0);
    EXPECT_NEAR(inductive.returnDb, 20 * std::log10(gamma), 1e-4);
    EXPECT_NEAR(inductive.vswr, (1 + gamma) / (1 - gamma), 1e-4);
}

// Half to four times the frequency, log-spaced; the angle stored negated again.
TEST(SweepRoutine, FrequenciesAndStoredValues) {
    const auto state = SweptDesign({3.5e6f, 1500, 300, 50, 12});
    EXPECT_FLOAT_EQ(state->sweepFrequency[0], 1.75e6f);
    EXPECT_FLOAT_EQ(state->sweepFrequency[2000], 14e6f);
    EXPECT_NEAR(state->sweepFrequency[1000], 1.75e6 * std::sqrt(8.0), 2);
    for (int i : {0, 733, 2000}) {
        const LadderResult r = Analyze(*state, state->sweepFrequency[i]);
        EXPECT_EQ(state->sweepReturn[i], r.returnDb) << i;
        EXPECT_EQ(state->sweepZAngle[i], -r.zAngle) << i;
    }
}

TEST(SweepRoutine, FaultIsReportedAndArraysKeepWhatWasStored) {
    using K = FaultKind;
    const struct {
        std::function<void(DesignState&)> spoil;
        K kind;
        int frequenciesStored;
    } cases[] = {
        {[](DesignState& s) { s.sweepStart = 0; }, K::InvalidArgument, 0},
        {[](DesignState& s) { s.sweepIntervals = 0; }, K::DivisionByZero, 0},
        {[](DesignState& s) { s.sweepIntervals = 2001; }, K::IndexOutOfRange, 2001},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.frequenciesStored);
        auto state = CalculatedDesign(kReferenceDesign);
        SetupLadder(*state);
        RecordingReporter reporter;
        state->sweepFrequency.fill(-1);
        state->sweepTransmission.fill(-1);
        c.spoil(*state);
        EXPECT_FALSE(SweepRoutine(*state, reporter));
        ASSERT_EQ(reporter.messages.size(), 1u);
        EXPECT_EQ(reporter.messages[0].text,
                  std::string("We have a sweep-routine error.\r\n") + FaultText(c.kind) +
                      "\r\nPlease check analysis starting and stopping frequencies\r\n"
                      "and check the network component values.");
        EXPECT_EQ(reporter.messages[0].title, "Sweep error checker");
        EXPECT_EQ(reporter.messages[0].icon, MessageIcon::Critical);
        EXPECT_EQ(state->sweepFrequency[std::max(c.frequenciesStored - 1, 0)] > 0,
                  c.frequenciesStored > 0);
        EXPECT_EQ(state->sweepTransmission[0], -1);
    }
}

// Circuit physics, whatever the generator resistance Rs = genMultiplier x plateR: matched at its
// frequency (the return loss referred to plateR, not Rs), and over the sweep the lossless network
// passes to the load what its input does not reflect towards Rs.
TEST(Physics, MatchedAtTheFrequencyAndPowerConservedOverTheSweep) {
    const DesignInputs designs[] = {
        kReferenceDesign,
        {7.1e6f, 2000, 50, 50, 10},   // no L section
        {3.9e6f, 1500, 50, 100, 12},  // step up
        {14.2e6f, 800, 100, 75, 8},
        {28.5e6f, 2000, 2000, 50, 6},
    };
    for (const DesignInputs& inputs : designs) {
        for (const float multiplier : {1.0f, 2.0f, 0.5f}) {
            SCOPED_TRACE(::testing::Message() << inputs.frequency << " x" << multiplier);
            auto state = SweptDesign(inputs, multiplier);
            const LadderResult r = Analyze(*state, state->frequency);
            if (inputs.loadR <= inputs.intermediateR) {  // a step-up's C3 is no rung
                EXPECT_NEAR(r.zMagnitude, inputs.plateR, 0.005 * inputs.plateR);
                EXPECT_LT(r.returnDb, -40);
                EXPECT_TRUE(multiplier != 1 || std::fabs(r.transmissionDb) < 0.01);
            }
            const double rs = double{multiplier} * inputs.plateR;
            for (int i = 0; i < kSweepPoints; ++i) {
                const double angle = state->sweepZAngle[i] * std::atan(1.0) / 45;
                const Impedance zin = std::polar(double{state->sweepZMagnitude[i]}, angle);
                const double expected = 1 - std::norm((zin - rs) / (zin + rs));
                const double gain = std::pow(10.0, state->sweepTransmission[i] / 10.0);
                ASSERT_NEAR(gain, expected, 1e-5 + 1e-4 * expected) << "point " << i;
            }
        }
    }
}

}  // namespace
}  // namespace varo
