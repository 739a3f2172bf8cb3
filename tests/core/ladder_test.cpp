#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>

#include "core/fault.h"
#include "core/network.h"
#include "design_fixture.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

using test::kReferenceDesign;
using test::MakeDesign;
using test::RecordingReporter;

// A ladder of three through connections between equal resistances.
std::unique_ptr<DesignState> ThroughLadder(float resistance) {
    auto state = MakeDesign({1e6f, resistance, resistance, resistance, 1});
    state->sourceR = resistance;
    state->inductorQ = 1e7f;
    state->capacitorQ = 1e7f;
    state->elementCount = 3;
    return state;
}

LadderResult Analyze(const DesignState& state, float frequency) {
    LadderResult result;
    AnalyzeLadder(state, 0, 0, frequency, result);
    return result;
}

// Matched, the reflection sits on its floor of 1e-7; totally mismatched, on its ceiling.
TEST(AnalyzeLadder, ThroughConnectionIsLosslessAndReflectionIsClamped) {
    const auto state = ThroughLadder(50);
    const LadderResult r = Analyze(*state, 1e6f);
    // H = 2 with its imaginary part floored to 1e-10: 50 x 4 / (4 x 50) = 1.
    EXPECT_EQ(r.transmissionDb, 0);
    EXPECT_NEAR(r.transmissionPhase, 0, 1e-6);
    EXPECT_EQ(r.zMagnitude, 50);
    EXPECT_EQ(r.zAngle, 0);
    EXPECT_NEAR(r.returnDb, -140, 1e-4);
    EXPECT_NEAR(r.vswr, 1, 1e-6);
    state->loadR = 1e9f;  // rho = (1e9 - 50) / (1e9 + 50) is just above 0.9999999
    const LadderResult open = Analyze(*state, 1e6f);
    EXPECT_NEAR(open.returnDb, 20 * std::log10(0.9999999), 1e-9);
    EXPECT_NEAR(open.vswr, 1.9999999 / 1e-7, 1e-3 * open.vswr);
}

using K = FaultKind;
using Spoil = std::function<void(DesignState&)>;

TEST(AnalyzeLadder, Faults) {
    const struct {
        const char* name;
        Spoil spoil;
        K kind;
    } cases[] = {
        {"combined element", [](DesignState& s) { s.elementType[2] = 6; }, K::DivisionByZero},
        {"position above 20", [](DesignState& s) { s.elementCount = 21; }, K::IndexOutOfRange},
        {"zero load", [](DesignState& s) { s.loadR = 0; }, K::DivisionByZero},
        {"negative load", [](DesignState& s) { s.loadR = -50; }, K::InvalidArgument},
        // Zin = 50 against -50 ohms: the reflection's denominator |Zin + R0| is zero.
        {"negative source resistance", [](DesignState& s) { s.sourceR = -50; }, K::DivisionByZero},
        {"pi not set", [](DesignState& s) { s.pi = 0; }, K::DivisionByZero},
        {"zero inductor Q",
         [](DesignState& s) {
             s.elementType[1] = kSeriesInductor;
             s.inductorQ = 0;
         },
         K::DivisionByZero},
    };
    for (const auto& c : cases) {
        auto state = ThroughLadder(50);
        c.spoil(*state);
        try {
            Analyze(*state, 1e6f);
            ADD_FAILURE() << c.name << ": no fault";
        } catch (const ArithmeticFault& fault) {
            EXPECT_EQ(fault.kind(), c.kind) << c.name;
        }
    }
}

// A series inductor of 50 ohms reactance into 50 ohms: Zin = 50 + j50, usual angle +45 degrees.
TEST(AnalyzeLadder, GeneralImpedanceAngleIsNegated) {
    auto state = ThroughLadder(50);
    state->elementType[1] = kSeriesInductor;
    state->elementL[1] = static_cast<float>(50 / (2 * state->pi * 1e6));
    const LadderResult r = Analyze(*state, 1e6f);
    EXPECT_NEAR(r.zMagnitude, 50 * std::sqrt(2.0), 1e-3);
    EXPECT_NEAR(r.zAngle, -45, 1e-4);
    // Into its own resistance the generator sees |Gamma| = |j50 / (100 + j50)| = 1/sqrt(5).
    EXPECT_NEAR(r.returnDb, 20 * std::log10(1 / std::sqrt(5.0)), 1e-4);
    EXPECT_NEAR(r.vswr, (1 + 1 / std::sqrt(5.0)) / (1 - 1 / std::sqrt(5.0)), 1e-4);
}

// A shunt capacitor whose negative loss conductance cancels the load's exactly: Zin is purely
// capacitive (-j2), and that one case keeps the usual sign of the angle. A pi of 0.5 makes omega
// equal to the frequency, so that every product here is exact.
TEST(AnalyzeLadder, PurelyReactiveInputKeepsTheUsualSign) {
    auto state = ThroughLadder(2);
    state->pi = 0.5;
    state->elementType[1] = kShuntCapacitor;
    state->elementC[1] = 0.5f;  // omega C = 1/2, the load's conductance
    state->capacitorQ = -1;
    const LadderResult r = Analyze(*state, 1);
    EXPECT_EQ(r.zMagnitude, 2);
    EXPECT_EQ(r.zAngle, -90);
}

// Matched at its frequency (the transmission itself is checked with the physics), the return loss
// is referred to the plate resistance, not to the generator.
TEST(AnalyzeLadder, ReturnLossIsReferredToThePlateResistance) {
    float returnDb[2] = {};
    for (const float genMultiplier : {1.0f, 2.0f}) {
        auto state = test::CalculatedDesign(kReferenceDesign, genMultiplier);
        SetupLadder(*state);
        returnDb[genMultiplier > 1] = Analyze(*state, state->frequency).returnDb;
    }
    EXPECT_LT(returnDb[0], -40);
    EXPECT_EQ(returnDb[0], returnDb[1]);
}

TEST(SweepRoutine, FrequenciesAndStoredValues) {
    auto state = test::CalculatedDesign({3.5e6f, 1500, 300, 50, 12});
    SetupLadder(*state);
    RecordingReporter reporter;
    ASSERT_TRUE(SweepRoutine(*state, reporter));

    EXPECT_FLOAT_EQ(state->sweepFrequency[0], 1.75e6f);
    EXPECT_FLOAT_EQ(state->sweepFrequency[2000], 14e6f);
    EXPECT_NEAR(state->sweepFrequency[1000], 1.75e6 * std::sqrt(8.0), 2);
    for (int i = 1; i <= 2000; ++i) {
        ASSERT_GT(state->sweepFrequency[i], state->sweepFrequency[i - 1]) << i;
    }
    for (int i : {0, 733, 2000}) {
        const LadderResult r = Analyze(*state, state->sweepFrequency[i]);
        EXPECT_EQ(state->sweepTransmission[i], r.transmissionDb) << i;
        EXPECT_EQ(state->sweepPhase[i], r.transmissionPhase) << i;
        EXPECT_EQ(state->sweepReturn[i], r.returnDb) << i;
        EXPECT_EQ(state->sweepVswr[i], r.vswr) << i;
        EXPECT_EQ(state->sweepZMagnitude[i], r.zMagnitude) << i;
        EXPECT_EQ(state->sweepZAngle[i], -r.zAngle) << i;
    }
}

TEST(SweepRoutine, FaultIsReportedAndArraysKeepWhatWasStored) {
    const struct {
        const char* name;
        Spoil spoil;
        K kind;
        int frequenciesStored;
    } cases[] = {
        {"zero start", [](DesignState& s) { s.sweepStart = 0; }, K::InvalidArgument, 0},
        {"no intervals", [](DesignState& s) { s.sweepIntervals = 0; }, K::DivisionByZero, 0},
        {"too many intervals", [](DesignState& s) { s.sweepIntervals = 2001; }, K::IndexOutOfRange,
         2001},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto state = test::CalculatedDesign(kReferenceDesign);
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
        if (c.frequenciesStored > 0) {
            EXPECT_GT(state->sweepFrequency[c.frequenciesStored - 1], 0);
        } else {
            EXPECT_EQ(state->sweepFrequency[0], -1);
        }
        EXPECT_EQ(state->sweepTransmission[0], -1);
    }
}

}  // namespace
}  // namespace varo
