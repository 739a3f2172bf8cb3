#include "core/fault.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <optional>
#include <random>

#include "core/network.h"
#include "design_fixture.h"
#include "support/recording_reporter.h"

namespace varo {
namespace {

struct CheckedCase {
    const char* name;
    std::function<double()> operation;
    std::optional<FaultKind> fault;  // empty: the operation succeeds
};

TEST(CheckedArithmetic, FaultsAndResults) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const CheckedCase cases[] = {
        {"divide", [] { return CheckedDivide(1, 4); }, std::nullopt},
        {"divide by zero", [] { return CheckedDivide(1, 0); }, FaultKind::DivisionByZero},
        {"divide by minus zero", [] { return CheckedDivide(1, -0.0); }, FaultKind::DivisionByZero},
        {"divide overflow", [] { return CheckedDivide(1e300, 1e-300); }, FaultKind::Overflow},
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

// Random designs, including zeros, negatives and huge values, through the whole recalculation:
// every fault must be an ArithmeticFault caught where the program catches it, never a crash.
TEST(Robustness, RandomInputsNeverCrash) {
    std::mt19937 random(20240611);
    const float specials[] = {0, -1, 1, 1e-30f, 1e10f, -1e10f, 1e30f, 3.4e38f, 50};
    std::uniform_int_distribution<int> pick(0, 11);
    std::uniform_real_distribution<float> ordinary(-10, 5000);
    std::uniform_real_distribution<float> exponent(-12, 12);
    const auto draw = [&] {
        const int choice = pick(random);
        if (choice < 9) return specials[choice];
        if (choice == 9) return std::pow(10.0f, exponent(random));
        return ordinary(random);
    };
    test::RecordingReporter reporter;
    for (int round = 0; round < 300; ++round) {
        auto state = test::MakeDesign({draw() * 1e4f, draw(), draw(), draw(), draw()}, draw());
        state->rfPower = draw();
        state->peakSwing = draw();
        if (!ComponentCalculations(*state, reporter)) continue;
        try {
            SetupLadder(*state);
            SweepRoutine(*state, reporter);
            ComputeSectionPhases(*state);
        } catch (const ArithmeticFault&) {
        }
        try {
            ShowStresses(*state, reporter);
        } catch (const ArithmeticFault&) {
        }
    }
}

}  // namespace
}  // namespace varo
