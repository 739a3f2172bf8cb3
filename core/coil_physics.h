#pragma once

#include <array>
#include <optional>

namespace varo {

// A single-layer air-core coil as wound, in SI units: metres. The diameter is the median one
// (to the wire's centre); the pitch is length / turns.
struct Winding {
    double diameter = 0;
    double length = 0;
    double turns = 0;
    double wireDiameter = 0;  // bare copper; 0 when the wire is not known
};

// Nagaoka's coefficient of a current sheet: its inductance over that of the same sheet were
// the field inside it uniform. Exact, from the complete elliptic integrals; 1 for an endless
// sheet. `diameterOverLength` above 0.
double NagaokaCoefficient(double diameterOverLength);

// The inductance of the current sheet the winding approximates (henries).
double CurrentSheetInductance(double diameter, double length, double turns);

// Rosa's corrections from the current sheet to round wire: L = Ls - mu0 * a * N * (A + B).
// A compares a round wire's self-inductance with that of a strip as wide as the pitch; B the
// mutual inductances of the turns with those of the strips, summed over every pair of turns.
double RosaSelfCorrection(double pitch, double wireDiameter);
double RosaMutualCorrection(double turns);

// Skin depth of annealed copper at `frequency` hertz (metres).
double CopperSkinDepth(double frequency);

// Medhurst's measured ratio of a coil's RF resistance to that of the same wire stretched
// straight, by length/diameter and wire diameter/pitch (0 to 1).
double ProximityFactor(double lengthOverDiameter, double wireOverPitch);

// Medhurst's empirical self-capacitance of a single-layer coil (farads).
double SelfCapacitance(double diameter, double length);

// The harmonics (1 = the operating frequency, up to the 5th) that lie within 10 % of a
// self-resonant frequency.
inline constexpr int kHighestHarmonicChecked = 5;
using HarmonicsNearResonance = std::array<bool, kHighestHarmonicChecked + 1>;  // index = n

// What a coil will really be at the operating frequency. Each figure that needs something
// not known is absent: the wound inductance, AC resistance and Q need the wire (and the wire
// to fit the pitch); the AC figures need a frequency above 0.
struct CoilAsBuilt {
    double nagaoka = 0;
    double inductanceSheet = 0;  // henries
    std::optional<double> inductanceWound;
    std::optional<double> acResistance;  // ohms
    std::optional<double> q;
    double selfCapacitance = 0;  // farads
    double selfResonance = 0;    // hertz, with the wound inductance where known
    HarmonicsNearResonance nearResonance{};
};

// Empty when the winding has no length, diameter or turns (each finite and above 0).
std::optional<CoilAsBuilt> AnalyzeCoil(const Winding& winding, double frequency);

}  // namespace varo
