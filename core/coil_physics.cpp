#include "core/coil_physics.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace varo {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kMu0 = 4e-7 * kPi;  // H/m
// Annealed copper at 20 degrees C, the international standard (IACS 100 %).
constexpr double kCopperResistivity = 1.7241e-8;  // ohm metres

bool PositiveFinite(double x) {
    return x > 0 && std::isfinite(x);
}

// ln G(w + 1), G being Barnes' G function (G(n + 2) = 1! 2! ... n!), for real w >= 0: raised by
// the recurrence G(w + 1) = Gamma(w) G(w) to 10 or more, where the asymptotic series holds to
// better than 1e-12.
double LogBarnesG1(double w) {
    double shiftedAway = 0;
    while (w < 10) {
        w += 1;
        shiftedAway += std::lgamma(w);
    }
    constexpr double kZetaPrimeMinus1 = -0.16542114370045092;
    const double w2 = w * w;
    const double series = -1.0 / (240 * w2) + 1.0 / (1008 * w2 * w2) - 1.0 / (1440 * w2 * w2 * w2);
    const double logG = w2 / 2 * std::log(w) - 0.75 * w2 + w / 2 * std::log(2 * kPi) -
                        std::log(w) / 12 + kZetaPrimeMinus1 + series;
    return logG - shiftedAway;
}

// Medhurst, "H.F. resistance and self-capacitance of single-layer solenoids", Wireless
// Engineer, February and March 1947: the coil's resistance over that of the straight wire,
// with the skin effect fully developed. Rows: wire diameter / pitch 0, 0.1 .. 1; columns:
// length / diameter as below, the last being an endless coil.
constexpr std::array<double, 12> kMedhurstLengthOverDiameter{0, 0.2, 0.4, 0.6, 0.8, 1,
                                                             2, 4,   6,   8,   10,  INFINITY};
constexpr double kMedhurstFactors[11][12] = {
    {1.00, 1.00, 1.00, 1.00, 1.00, 1.00, 1.00, 1.00, 1.00, 1.000, 1.00, 1.000},
    {1.02, 1.02, 1.03, 1.03, 1.03, 1.03, 1.04, 1.04, 1.04, 1.040, 1.04, 1.050},
    {1.07, 1.08, 1.08, 1.10, 1.10, 1.10, 1.13, 1.15, 1.16, 1.165, 1.17, 1.190},
    {1.16, 1.19, 1.21, 1.22, 1.23, 1.24, 1.28, 1.32, 1.34, 1.340, 1.35, 1.395},
    {1.20, 1.29, 1.33, 1.38, 1.42, 1.45, 1.50, 1.54, 1.56, 1.570, 1.58, 1.650},
    {1.44, 1.48, 1.54, 1.60, 1.64, 1.67, 1.74, 1.78, 1.80, 1.810, 1.83, 1.930},
    {1.74, 1.77, 1.83, 1.89, 1.92, 1.94, 1.98, 2.01, 2.03, 2.080, 2.10, 2.220},
    {2.12, 2.20, 2.28, 2.38, 2.44, 2.47, 2.32, 2.27, 2.29, 2.340, 2.27, 2.510},
    {2.74, 2.83, 2.97, 3.10, 3.20, 3.17, 2.74, 2.60, 2.60, 2.620, 2.65, 2.815},
    {3.73, 3.84, 3.99, 4.11, 4.17, 4.10, 3.36, 3.05, 2.92, 2.900, 2.93, 3.110},
    {5.31, 5.45, 5.65, 5.80, 5.80, 5.55, 4.10, 3.54, 3.31, 3.200, 3.23, 3.410},
};

// The column below `lengthOverDiameter` and how far towards the next it lies. Beyond 10 the
// step to the endless coil is taken in diameter / length, which reaches 0 there.
std::pair<int, double> MedhurstColumn(double lengthOverDiameter) {
    const auto& columns = kMedhurstLengthOverDiameter;
    const int last = static_cast<int>(columns.size()) - 1;
    if (lengthOverDiameter >= columns[last - 1])
        return {last - 1, 1 - columns[last - 1] / lengthOverDiameter};
    int i = 0;
    while (lengthOverDiameter >= columns[i + 1])
        ++i;
    return {i, (lengthOverDiameter - columns[i]) / (columns[i + 1] - columns[i])};
}

double WireLength(const Winding& winding) {
    const double pitch = winding.length / winding.turns;
    return winding.turns * std::hypot(kPi * winding.diameter, pitch);
}

// The wire's resistance stretched straight: the current in a skin one depth deep, or in the
// whole wire once the depth reaches its radius (where the two agree).
double StraightWireResistance(double wireLength, double wireDiameter, double frequency) {
    const double depth = std::min(CopperSkinDepth(frequency), wireDiameter / 2);
    return kCopperResistivity * wireLength / (kPi * depth * (wireDiameter - depth));
}

void FindHarmonicsNearResonance(CoilAsBuilt& coil, double frequency) {
    for (int n = 1; n <= kHighestHarmonicChecked; ++n)
        coil.nearResonance[n] =
            std::abs(n * frequency - coil.selfResonance) <= 0.1 * coil.selfResonance;
}

}  // namespace

double NagaokaCoefficient(double diameterOverLength) {
    const double x = diameterOverLength;
    const double k = x / std::hypot(1, x);      // modulus of the elliptic integrals
    const double kc = 1 / std::hypot(1, x);     // its complement
    const double bigK = std::comp_ellint_1(k);  // modulus, not parameter
    const double bigE = std::comp_ellint_2(k);
    return 4 / (3 * kPi * kc) * ((kc * kc) / (k * k) * (bigK - bigE) + bigE - k);
}

double CurrentSheetInductance(double diameter, double length, double turns) {
    const double area = kPi * diameter * diameter / 4;
    return kMu0 * area * turns * turns / length * NagaokaCoefficient(diameter / length);
}

double RosaSelfCorrection(double pitch, double wireDiameter) {
    return 1.25 - std::log(2 * pitch / wireDiameter);
}

double RosaMutualCorrection(double turns) {
    if (!(turns > 1)) return 0;
    // -(2/N) times the sum over turn pairs k apart of (N - k) times ln(strips' geometric mean
    // distance / kp); the strips' second differences telescope to N^2 ln N / 2, the rest is
    // Barnes' G, which also carries the sum between whole turns.
    const double n = turns;
    return -2 / n * (n * n * std::log(n) / 2 - 0.75 * n * (n - 1) - LogBarnesG1(n));
}

double CopperSkinDepth(double frequency) {
    return std::sqrt(kCopperResistivity / (kPi * frequency * kMu0));
}

double ProximityFactor(double lengthOverDiameter, double wireOverPitch) {
    const double rowAt = std::clamp(wireOverPitch, 0.0, 1.0) * 10;
    const int row = std::min(static_cast<int>(rowAt), 9);
    const double down = rowAt - row;
    const auto [column, across] = MedhurstColumn(std::max(lengthOverDiameter, 0.0));
    const auto at = [&](int r, int c) { return kMedhurstFactors[r][c]; };
    const double upper = at(row, column) + across * (at(row, column + 1) - at(row, column));
    const double lower =
        at(row + 1, column) + across * (at(row + 1, column + 1) - at(row + 1, column));
    return upper + down * (lower - upper);
}

double SelfCapacitance(double diameter, double length) {
    // C = H D pF with D in centimetres, H = 0.1126 l/D + 0.08 + 0.27 / sqrt(l/D).
    const double shape = length / diameter;
    const double h = 0.1126 * shape + 0.08 + 0.27 / std::sqrt(shape);
    return h * diameter * 100 * 1e-12;
}

std::optional<CoilAsBuilt> AnalyzeCoil(const Winding& winding, double frequency) {
    if (!PositiveFinite(winding.diameter) || !PositiveFinite(winding.length) ||
        !PositiveFinite(winding.turns))
        return std::nullopt;
    CoilAsBuilt coil;
    coil.nagaoka = NagaokaCoefficient(winding.diameter / winding.length);
    coil.inductanceSheet = CurrentSheetInductance(winding.diameter, winding.length, winding.turns);
    const double pitch = winding.length / winding.turns;
    const double wire = winding.wireDiameter;
    if (PositiveFinite(wire) && wire <= pitch) {
        const double rosa = RosaSelfCorrection(pitch, wire) + RosaMutualCorrection(winding.turns);
        coil.inductanceWound =
            coil.inductanceSheet - kMu0 * winding.diameter / 2 * winding.turns * rosa;
        if (PositiveFinite(frequency)) {
            coil.acResistance = StraightWireResistance(WireLength(winding), wire, frequency) *
                                ProximityFactor(winding.length / winding.diameter, wire / pitch);
            coil.q = 2 * kPi * frequency * *coil.inductanceWound / *coil.acResistance;
        }
    }
    coil.selfCapacitance = SelfCapacitance(winding.diameter, winding.length);
    const double inductance = coil.inductanceWound.value_or(coil.inductanceSheet);
    coil.selfResonance = 1 / (2 * kPi * std::sqrt(inductance * coil.selfCapacitance));
    if (PositiveFinite(frequency)) FindHarmonicsNearResonance(coil, frequency);
    return coil;
}

}  // namespace varo
