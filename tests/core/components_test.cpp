#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "core/fault.h"
#include "core/network.h"
#include "design_fixture.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

using test::CalculatedDesign;
using test::DesignInputs;
using test::kReferenceDesign;
using test::MakeDesign;
using test::RecordingReporter;

constexpr double kOmega39 = 2 * 3.14159265358979323846 * 3.9e6;

// 1500 -> 300 ohms with Q 12: plateR/(1 + q1^2) = intermediateR/(1 + (12 - q1)^2) has the root
// q1 = 15 - 2 sqrt(11); the L section 300 -> 50 has Q sqrt(5). (The parts' values in farads and
// henries show in the printed report's test.)
TEST(ComponentCalculations, ReferenceDesignMatchesHandValues) {
    const double q1 = 15 - 2 * std::sqrt(11.0);
    const double xC1 = 1500 / q1;
    const double xC2 = 300 / (12 - q1);
    const double xL1 = 1500 / (1 + q1 * q1) * 12;
    const double xL2 = 50 * std::sqrt(5.0);
    const double xC3 = 300 / std::sqrt(5.0);
    const struct {
        const char* name;
        float DesignState::*field;
        double value;
    } table[] = {
        {"inputQ", &DesignState::inputQ, q1}, {"outputQ", &DesignState::outputQ, 12 - q1},
        {"xC1", &DesignState::xC1, xC1},      {"xC2", &DesignState::xC2, xC2},
        {"xL1", &DesignState::xL1, xL1},      {"xL2", &DesignState::xL2, xL2},
        {"xC3", &DesignState::xC3, xC3},
    };
    const auto state = CalculatedDesign(kReferenceDesign);
    for (const auto& row : table)
        EXPECT_NEAR((*state).*row.field, row.value, 1e-5 * row.value) << row.name;
}

TEST(ComponentCalculations, EqualResistancesAndTheSmallestQStayFinite) {
    const auto equal = CalculatedDesign({3.9e6f, 2000, 2000, 50, 12});
    EXPECT_EQ(equal->intermediateR, static_cast<float>(2000.002));  // nudged apart
    // Q 2 is exactly sqrt(500/100 - 1): inputQ takes all of it and outputQ is floored.
    const auto floored = CalculatedDesign({3.9e6f, 500, 100, 100, 2});
    EXPECT_FLOAT_EQ(floored->inputQ, 2);
    EXPECT_EQ(floored->outputQ, 1e-6f);
    EXPECT_NEAR(floored->xC2, 1e8, 1e2);
}

TEST(ComponentCalculations, FaultRaisesQAndReports) {
    const char* const kBadArgument = "Invalid argument (square root or logarithm of a bad value)";
    const struct {
        const char* name;
        DesignInputs inputs;
        float newQ;
        const char *qText, *faultLine;
    } cases[] = {
        // sqrt(5000 * 50 * 25 - 4950^2) has a negative argument; Int(sqrt(100) + 1) = 11.
        {"low Q", {3.9e6f, 5000, 50, 50, 5}, 11, " 11", kBadArgument},
        // Q x plateR equals the root (500 = 100 (1 + 2^2)): inputQ 0, xC1 divides by it.
        {"zero inputQ", {3.9e6f, 100, 500, 50, 2}, 1, " 1", "Division by zero"},
        // The new Q cannot be formed from a zero intermediateR: Q keeps its value.
        {"zero intermediateR", {3.9e6f, 1500, 0, 50, 12}, 12, " 12", kBadArgument},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto state = MakeDesign(c.inputs);
        state->L2 = 123;  // a value from an earlier design stays
        RecordingReporter reporter;
        EXPECT_FALSE(ComponentCalculations(*state, reporter));
        EXPECT_EQ(state->piQ, c.newQ);
        EXPECT_EQ(state->L2, 123);
        ASSERT_EQ(reporter.events, (std::vector<std::string>{"close", "piq", "message"}));
        EXPECT_EQ(reporter.piQTexts, std::vector<std::string>{c.qText});
        EXPECT_EQ(reporter.messages[0].text,
                  std::string("We have a ComponentCalculations error.\r\n   \r\n"
                              "This can be caused by insufficient Pi-section\r\n"
                              "Q or unusual or unlikely inputs.  \r\n\r\n"
                              "Please recheck the entries.  Meanwhile, the\r\n"
                              "PI-net Q has been reset to a higher value.\r\n") +
                      c.faultLine);
        EXPECT_EQ(reporter.messages[0].title, "");
        EXPECT_EQ(reporter.messages[0].icon, MessageIcon::None);
    }
}

// The L section in each direction; where the pi's parts sit, the physics cross-checks show.
TEST(SetupLadder, LSectionForEachDirection) {
    const struct {
        const char* name;
        float intermediateR, loadR;
        double xL2, xC3;
        std::int16_t elementCount;
    } cases[] = {
        // sqrt(100 x 50 - 50^2) = 50 and 100 x 50 / 50 = 100, in both directions.
        {"step down", 100, 50, 50, 100, 4},
        {"step up", 50, 100, 50, 100, 5},
        // No L section: the reactances keep their earlier (sentinel) values.
        {"equal", 100, 100, -1, -2, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto state = MakeDesign({3.9e6f, 1500, c.intermediateR, c.loadR, 12});
        state->xL2 = -1;
        state->xC3 = -2;
        RecordingReporter reporter;
        ASSERT_TRUE(ComponentCalculations(*state, reporter));
        state->elementType[5] = 7;  // never written: a step-up C3 stays out of the analysis
        SetupLadder(*state);
        EXPECT_NEAR(state->xL2, c.xL2, 1e-4);
        EXPECT_NEAR(state->xC3, c.xC3, 1e-4);
        EXPECT_EQ(state->elementCount, c.elementCount);
        EXPECT_EQ(state->elementType[5], 7);
        if (c.elementCount == 3) {
            EXPECT_EQ(state->L2, 0);
            EXPECT_EQ(state->C3, 0);
        } else {
            EXPECT_NEAR(state->L2, c.xL2 / kOmega39, 1e-5 * state->L2);
            EXPECT_NEAR(state->C3, 1 / (c.xC3 * kOmega39), 1e-5 * state->C3);
        }
    }
}

double Degrees(double radians) {
    return radians * 45 / std::atan(1.0);
}

// The plate-side Q found by bisection: both halves of the pi see the same virtual resistance.
double PlateSideQ(double plateR, double intermediateR, double q) {
    const auto mismatch = [&](double q1) {
        return plateR / (1 + q1 * q1) - intermediateR / (1 + (q - q1) * (q - q1));
    };
    double low = 0;
    double high = q;
    for (int i = 0; i < 200; ++i) {
        const double mid = (low + high) / 2;
        (mismatch(low) * mismatch(mid) <= 0 ? high : low) = mid;
    }
    return (low + high) / 2;
}

// A matched lossless low-pass pi lags by atan(q1) + atan(q2), an L section by atan(QL); the
// analysis reports the phase with the opposite sign (EMF over load voltage).
TEST(ComputeSectionPhases, PhasesAndRestoredInputs) {
    const struct {
        const char* name;
        DesignInputs inputs;
        double lPhase;
        std::int16_t elementCount;
    } cases[] = {
        {"step down", kReferenceDesign, -Degrees(std::atan(std::sqrt(5.0))), 4},
        {"equal", {3.9e6f, 1500, 300, 300, 12}, 0, 3},
        // The L section of a step-up design counts as a through connection.
        {"step up", {3.9e6f, 300, 50, 100, 12}, 0, 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        auto state = MakeDesign(c.inputs);
        RecordingReporter reporter;
        ASSERT_TRUE(test::Recalculate(*state, reporter));
        const double q1 = PlateSideQ(c.inputs.plateR, c.inputs.intermediateR, c.inputs.piQ);
        EXPECT_NEAR(state->piPhase, -Degrees(std::atan(q1) + std::atan(c.inputs.piQ - q1)), 1e-3);
        EXPECT_NEAR(state->lPhase, c.lPhase, 1e-3);
        EXPECT_EQ(state->plateR, c.inputs.plateR);
        EXPECT_EQ(state->loadR, c.inputs.loadR);
        EXPECT_EQ(state->elementCount, c.elementCount);
    }
}

TEST(ComputeSectionPhases, FaultRestoresBorrowedInputs) {
    auto state = CalculatedDesign(kReferenceDesign);
    SetupLadder(*state);
    state->intermediateR = 0;  // the pi section would be analysed into a zero load
    try {
        ComputeSectionPhases(*state);
        ADD_FAILURE() << "expected an arithmetic fault";
    } catch (const ArithmeticFault& fault) {
        EXPECT_EQ(fault.kind(), FaultKind::DivisionByZero);
    }
    EXPECT_EQ(state->plateR, 1500);
    EXPECT_EQ(state->loadR, 50);
    EXPECT_EQ(state->elementCount, 4);
}

}  // namespace
}  // namespace varo
