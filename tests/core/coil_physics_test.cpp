#include "core/coil_physics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace varo {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kMu0 = 4e-7 * kPi;
constexpr double kInch = 0.0254;

TEST(CoilPhysics, NagaokaAgreesWithThePublishedTable) {
    const struct {
        double diameterOverLength;
        double published;
    } rows[] = {{0.5, 0.8181}, {1, 0.6884}, {2, 0.5255}, {10, 0.2033}};
    for (const auto& row : rows)
        EXPECT_NEAR(NagaokaCoefficient(row.diameterOverLength), row.published, 0.5e-4)
            << "D/l " << row.diameterOverLength;
}

// Mutual inductance of two coaxial loops of radius a, z apart (Maxwell).
double LoopMutualInductance(double a, double z) {
    const double k = 2 * a / std::hypot(2 * a, z);
    return kMu0 * a * ((2 / k - k) * std::comp_ellint_1(k) - 2 / k * std::comp_ellint_2(k));
}

// The sheet as a stack of loops: L = (N/l)^2 * 2 * integral over 0..l of (l - z) M(z) dz, by
// tanh-sinh quadrature above z = eps; below it M = mu0 a (ln(8a/z) - 2) is integrated by hand.
double NagaokaFromLoops(double diameter, double length) {
    const double a = diameter / 2;
    const double eps = 1e-7 * a;  // where k still differs from 1
    const double from = eps, span = length - eps;
    double sum = 0;
    const double h = 1.0 / 64;
    for (double t = -4; t <= 4; t += h) {
        const double u = kPi / 2 * std::sinh(t);
        const double x = (1 + std::tanh(u)) / 2;  // 0..1
        const double weight = kPi / 4 * std::cosh(t) / (std::cosh(u) * std::cosh(u));
        const double z = from + span * x;
        sum += h * weight * span * (length - z) * LoopMutualInductance(a, z);
    }
    const double tail = length * kMu0 * a * eps * (std::log(8 * a / eps) - 1);
    const double integral = 2 * (sum + tail);
    return integral / (kMu0 * kPi * a * a * length);
}

TEST(CoilPhysics, NagaokaIsTheExactSheetFromShortToLong) {
    for (double lengthOverDiameter : {0.01, 0.03, 0.2, 1.0, 4.0, 20.0, 100.0}) {
        const double exact = NagaokaFromLoops(1, lengthOverDiameter);
        EXPECT_NEAR(NagaokaCoefficient(1 / lengthOverDiameter) / exact, 1, 1e-6)
            << "l/D " << lengthOverDiameter;
    }
}

TEST(CoilPhysics, RosaMutualCorrectionAgreesWithTheSumOverPairsOfTurns) {
    // Worked by hand from the strips' geometric mean distances, turns k pitches apart:
    // c(k) = [(k+1)^2 ln(k+1) + (k-1)^2 ln(k-1) - 2k^2 ln k] / 2 - 3/2 - ln k;
    // c(1) = -0.1137056, c(2) = -0.0219806, c(3) = -0.0094736; B(N) = -(2/N) sum (N-k) c(k).
    // B(2) = 0.1137056, B(3) = -(2/3)(2 c1 + c2) = 0.1662612, B(4) = 0.1972759.
    // Rosa's table gives the same to its four places; for many turns Grover's series,
    // ln(2 pi) - 3/2 - ln N / (6N) - 0.3308423 / N.
    const struct {
        double turns;
        double b;
        double tolerance;
    } rows[] = {{1, 0, 1e-12},        {2, 0.1137056, 1e-7}, {3, 0.1662612, 1e-7},
                {4, 0.1972759, 1e-7}, {10, 0.2664, 0.5e-4}, {1e4, 0.3376905, 1e-7},
                {0.5, 0, 1e-12}};
    for (const auto& row : rows)
        EXPECT_NEAR(RosaMutualCorrection(row.turns), row.b, row.tolerance) << row.turns;
    // Between whole turns it runs smoothly.
    EXPECT_GT(RosaMutualCorrection(3.5), 0.1662612);
    EXPECT_LT(RosaMutualCorrection(3.5), 0.1972759);
}

TEST(CoilPhysics, AHandWoundCoilOfFourTurns) {
    // 4 turns, 20 mm across and long (pitch 5 mm), 2 mm wire. By hand:
    // Ls = mu0 pi a^2 N^2 / l * 0.688423 = 217.4228 nH; A = 1.25 - ln(2 * 5 / 2) = -0.3594379;
    // B = 0.1972759; L = Ls - mu0 a N (A + B) = 217.4228 + 8.1512 = 225.5740 nH.
    const auto coil = AnalyzeCoil({0.02, 0.02, 4, 0.002}, 0);
    ASSERT_TRUE(coil);
    EXPECT_NEAR(coil->inductanceSheet, 217.4228e-9, 0.0005e-9);
    ASSERT_TRUE(coil->inductanceWound);
    EXPECT_NEAR(*coil->inductanceWound, 225.5740e-9, 0.0005e-9);
    EXPECT_FALSE(coil->acResistance);  // no frequency, no AC figures
}

TEST(CoilPhysics, SkinDepthOfCopper) {
    // Handbook figures for copper: 66 um (0.0026 in) at 1 MHz, 12.1 um at 30 MHz.
    EXPECT_NEAR(CopperSkinDepth(1e6), 66.1e-6, 0.1e-6);
    EXPECT_NEAR(CopperSkinDepth(30e6), 12.07e-6, 0.02e-6);
}

TEST(CoilPhysics, ProximityFactorReadsMedhurstsTable) {
    const struct {
        double lengthOverDiameter, wireOverPitch, factor;
    } rows[] = {
        {2, 0.3, 1.28},    // a point of the table
        {2, 0.35, 1.39},   // halfway between two rows
        {0.1, 1.0, 5.38},  // halfway between two columns
        {0.1, 1.7, 5.38},  // a wire over the pitch reads as touching turns
        {20, 0.5, 1.88},   // halfway (in D/l) from 10 to the endless coil
        {1e9, 0.0, 1.00},  // far wound: no proximity
    };
    for (const auto& row : rows)
        EXPECT_NEAR(ProximityFactor(row.lengthOverDiameter, row.wireOverPitch), row.factor, 1e-9)
            << row.lengthOverDiameter << " " << row.wireOverPitch;
}

TEST(CoilPhysics, TheClassicExampleCoilAt7MHz) {
    // 2 in across, 4 in long, 22.136 turns of 14 gauge (0.064347 in), at 7.15 MHz. By hand:
    // wire 22.136 * sqrt((2 pi)^2 + 0.18070^2) in = 3.53426 m; skin depth 66.0838 / sqrt(7.15)
    // = 24.7143 um; straight wire 1.7241e-8 * 3.53426 / (pi * 24.7143e-6 * (1.634414e-3 -
    // 24.7143e-6)) = 0.487544 ohm; d/p 0.356097 at l/D 2: 1.28 + 0.56097 * 0.22 = 1.403413;
    // R = 0.68422 ohm. L wound 10.1742 uH; Q = 2 pi 7.15e6 * 10.1742e-6 / 0.68422 = 668.0.
    // Medhurst: D = 5.08 cm, H = 0.1126 * 2 + 0.08 + 0.27 / sqrt(2) = 0.49612: 2.5203 pF;
    // self-resonance 1 / (2 pi sqrt(10.1742 uH * 2.5203 pF)) = 31.430 MHz.
    const auto coil = AnalyzeCoil({2 * kInch, 4 * kInch, 22.136, 0.064347 * kInch}, 7.15e6);
    ASSERT_TRUE(coil);
    EXPECT_NEAR(coil->inductanceSheet, 10.0498e-6, 0.0005e-6);  // Wheeler said 10.000
    EXPECT_NEAR(*coil->inductanceWound, 10.1742e-6, 0.0005e-6);
    EXPECT_NEAR(*coil->acResistance, 0.68422, 0.00002);
    EXPECT_NEAR(*coil->q, 668.0, 0.1);
    EXPECT_NEAR(coil->selfCapacitance, 2.5203e-12, 0.0001e-12);
    EXPECT_NEAR(coil->selfResonance, 31.430e6, 0.005e6);
    // 28.6 MHz, the 4th harmonic, lies within 3.143 MHz of it; the 5th (35.75) does not.
    const HarmonicsNearResonance near{false, false, false, false, true, false};
    EXPECT_EQ(coil->nearResonance, near);
}

TEST(CoilPhysics, AtLowFrequencyTheWholeWireCarries) {
    // At 100 Hz the skin (6.6 mm) is deeper than the 0.5 mm wire's radius: its DC resistance,
    // 1.7241e-8 * 10 * sqrt((pi 0.02)^2 + 0.001^2) / (pi 0.00025^2) = 0.0551782 ohm, times
    // Medhurst's 1.57 (d/p 0.5, l/D 0.5: halfway between 1.54 and 1.60).
    const auto coil = AnalyzeCoil({0.02, 0.01, 10, 0.0005}, 100);
    ASSERT_TRUE(coil && coil->acResistance);
    const double dc = 1.7241e-8 * 10 * std::hypot(kPi * 0.02, 0.001) / (kPi * 0.00025 * 0.00025);
    EXPECT_NEAR(*coil->acResistance / dc, 1.57, 1e-9);
    EXPECT_NEAR(dc, 0.0551782, 1e-7);
}

TEST(CoilPhysics, FiguresThatNeedWhatIsNotKnownAreAbsent) {
    const Winding twoInches{2 * kInch, 4 * kInch, 22.136, 0};
    const struct {
        const char* what;
        Winding winding;
        double frequency;
        bool analysed, wound, ac;
    } rows[] = {
        {"no wire", twoInches, 7e6, true, false, false},
        {"wire thicker than the pitch",
         {2 * kInch, 4 * kInch, 22.136, 0.2 * kInch},
         7e6,
         true,
         false,
         false},
        {"no frequency", {2 * kInch, 4 * kInch, 22.136, 0.05 * kInch}, 0, true, true, false},
        {"no length", {2 * kInch, 0, 22.136, 0.05 * kInch}, 7e6, false, false, false},
        {"no turns", {2 * kInch, 4 * kInch, 0, 0.05 * kInch}, 7e6, false, false, false},
        {"endless diameter", {INFINITY, 4 * kInch, 22.136, 0}, 7e6, false, false, false},
    };
    for (const auto& row : rows) {
        const auto coil = AnalyzeCoil(row.winding, row.frequency);
        ASSERT_EQ(coil.has_value(), row.analysed) << row.what;
        if (!coil) continue;
        EXPECT_EQ(coil->inductanceWound.has_value(), row.wound) << row.what;
        EXPECT_EQ(coil->q.has_value(), row.ac) << row.what;
        EXPECT_EQ(coil->acResistance.has_value(), row.ac) << row.what;
    }
    // Without the wire the self-resonance rests on the sheet's inductance.
    const auto sheetOnly = AnalyzeCoil(twoInches, 7e6);
    EXPECT_NEAR(sheetOnly->selfResonance,
                1 / (2 * kPi * std::sqrt(sheetOnly->inductanceSheet * 2.5203e-12)), 0.01e6);
}

}  // namespace
}  // namespace varo
