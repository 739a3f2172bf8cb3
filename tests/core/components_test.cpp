#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <string>

#include "core/fault.h"
#include "design_fixture.h"

namespace varo {
namespace {

using namespace test;

// 1500 -> 300 ohms with Q 12: plateR/(1 + q1^2) = intermediateR/(1 + (12 - q1)^2) has the root
// q1 = 15 - 2 sqrt(11); the L section 300 -> 50 has Q sqrt(5).
TEST(ComponentCalculations, ReferenceDesignMatchesHandValues) {
    const double q1 = 15 - 2 * std::sqrt(11.0);
    const struct {
        float DesignState::*field;
        double value;
    } table[] = {
        {&DesignState::inputQ, q1},
        {&DesignState::outputQ, 12 - q1},
        {&DesignState::xC1, 1500 / q1},
        {&DesignState::xC2, 300 / (12 - q1)},
        {&DesignState::xL1, 1500 / (1 + q1 * q1) * 12},
        {&DesignState::xL2, 50 * std::sqrt(5.0)},
        {&DesignState::xC3, 300 / std::sqrt(5.0)},
    };
    const auto state = CalculatedDesign(kReferenceDesign);
    for (const auto& row : table)
        EXPECT_NEAR((*state).*row.field, row.value, 1e-5 * row.value) << row.value;
    // Equal resistances are nudged apart; Q 2 = sqrt(500/100 - 1) leaves outputQ at its floor.
    EXPECT_EQ(CalculatedDesign({3.9e6f, 2000, 2000, 50, 12})->intermediateR, 2000.002f);
    const auto floored = CalculatedDesign({3.9e6f, 500, 100, 100, 2});
    EXPECT_EQ(floored->outputQ, 1e-6f);
    EXPECT_NEAR(floored->xC2, 1e8, 1e2);
}

TEST(ComponentCalculations, FaultRaisesQAndReports) {
    const char* const kBadArgument = "Invalid argument (square root or logarithm of a bad value)";
    const struct {
        DesignInputs inputs;
        float newQ;
        const char *qText, *faultLine;
    } cases[] = {
        // sqrt(5000 * 50 * 25 - 4950^2) has a negative argument; Int(sqrt(100) + 1) = 11.
        {{3.9e6f, 5000, 50, 50, 5}, 11, " 11", kBadArgument},
        // Q x plateR equals the root (500 = 100 (1 + 2^2)): inputQ 0, xC1 divides by it.
        {{3.9e6f, 100, 500, 50, 2}, 1, " 1", "Division by zero"},
        // No new Q from a zero intermediateR.
        {{3.9e6f, 1500, 0, 50, 12}, 12, " 12", kBadArgument},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.qText);
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

// Step up: xL2 = sqrt(100 x 50 - 50^2), xC3 = 100 x 50 / 50; C3 across the load is no rung.
TEST(SetupLadder, StepUpLSectionLeavesC3OutOfTheLadder) {
    auto state = CalculatedDesign({3.9e6f, 1500, 50, 100, 12});
    state->elementType[5] = 7;  // never written
    SetupLadder(*state);
    EXPECT_NEAR(state->xL2, 50, 1e-4);
    EXPECT_NEAR(state->xC3, 100, 1e-4);
    EXPECT_EQ(state->elementCount, 5);
    EXPECT_EQ(state->elementType[5], 7);
}

TEST(CheckedArithmetic, FaultsAndResults) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        const char* name;
        std::function<double()> operation;
        std::optional<FaultKind> fault;  // empty: the operation succeeds
    } cases[] = {
        {"divide by minus zero", [] { return CheckedDivide(1, -0.0); }, FaultKind::DivisionByZero},
        {"divide overflow", [] { return CheckedDivide(1e300, 1e-300); }, FaultKind::Overflow},
        {"sqrt(0)", [] { return CheckedSqrt(0); }, std::nullopt},
        {"sqrt(-1)", [] { return CheckedSqrt(-1); }, FaultKind::InvalidArgument},
        {"log(0)", [] { return CheckedLog(0); }, FaultKind::InvalidArgument},
        {"exp overflow", [] { return CheckedExp(1000); }, FaultKind::Overflow},
        {"store 1e38", [] { return double{StoreSingle(1e38)}; }, std::nullopt},
        {"store 1e39", [] { return double{StoreSingle(1e39)}; }, FaultKind::Overflow},
        {"store NaN", [nan] { return double{StoreSingle(nan)}; }, FaultKind::InvalidArgument},
        {"index 20", [] { return double(CheckedIndex(20, 0, 20)); }, std::nullopt},
        {"index 21", [] { return double(CheckedIndex(21, 0, 20)); }, FaultKind::IndexOutOfRange},
    };
    for (const auto& c : cases) {
        try {
            c.operation();
            EXPECT_FALSE(c.fault.has_value()) << c.name << ": no fault";
        } catch (const ArithmeticFault& fault) {
            ASSERT_TRUE(c.fault.has_value()) << c.name << ": unexpected fault";
            EXPECT_EQ(fault.kind(), *c.fault) << c.name;
            EXPECT_STREQ(fault.what(), FaultText(*c.fault)) << c.name;
        }
    }
}

}  // namespace
}  // namespace varo
