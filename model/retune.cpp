#include "model/retune.h"

#include <cmath>
#include <numbers>

#include "core/tank_network.h"
#include "model/fixed_text.h"

namespace varo {

namespace {

// 1 / z, exact for a pure resistance.
Complex Inverse(Complex z) {
    return z.im == 0 ? Complex{1.0 / z.re, 0} : Complex{1, 0} / z;
}

// What the network right of the midpoint (L2, and C3 where it stands across the load) presents
// at the midpoint, as an admittance.
Complex AdmittanceBeyondMidpoint(const DesignState& s, double omega, Complex zLoad) {
    if (s.L2 == 0 || s.intermediateR == s.loadR) return Inverse(zLoad);
    const Complex coil{0, omega * s.L2};
    if (!LSectionStepsUp(s)) return Inverse(zLoad + coil);
    const Complex loadWithC3 = Inverse(Inverse(zLoad) + Complex{0, omega * s.C3});
    return Inverse(loadWithC3 + coil);
}

std::string BelowZero(const char* what, double farads) {
    return std::string(what) + " would have to be " + TrimmedText(farads * 1e12, 1) + " pF (" +
           TrimmedText(-farads * 1e12, 1) + " pF below zero)";
}

// Why the match has no positive capacitances, and by how much.
std::string Problem(const Tuning& tuning, double conductance, double l1, double largestL1) {
    if (!(conductance > 0)) return "the load takes no power";
    if (!(l1 <= largestL1))
        return "L1 (" + TrimmedText(l1 * 1e6, 3) + " uH) is too large for this load: at most " +
               TrimmedText(largestL1 * 1e6, 3) + " uH would match it";
    if (!(tuning.c1 > 0)) return BelowZero("C1", tuning.c1);
    return BelowZero("the loading capacitance", tuning.load);
}

}  // namespace

bool CentreBranch(const DesignState& design) {
    return static_cast<double>(design.inputQ) * design.outputQ > 1;
}

// With the coils fixed, the plate sees Rp exactly when the admittance back towards the plate at
// the midpoint is the conjugate of the one beyond it. Its real part fixes C1 through a quadratic
// in Qc = omega C1 Rp:  X1^2 Qc^2 - 2 X1 Rp Qc + Rp^2 + X1^2 - Rp/G = 0, with G the real part of
// the admittance beyond the midpoint; its imaginary part then gives the midpoint capacitance.
Tuning RetuneFor(const DesignState& s, double frequency, bool highBranch, Complex zLoad) {
    const double omega = 2 * std::numbers::pi * frequency;
    const double rp = s.plateR;
    const double x1 = omega * s.L1;
    const Complex beyond = AdmittanceBeyondMidpoint(s, omega, zLoad);
    Tuning tuning;
    tuning.frequency = frequency;
    tuning.solvable = false;
    if (LSectionStepsUp(s)) tuning.c3 = s.C3;
    const double discriminant = rp / beyond.re - x1 * x1;
    if (beyond.re > 0 && discriminant >= 0 && x1 > 0) {
        const double qc = (rp + (highBranch ? 1 : -1) * std::sqrt(discriminant)) / x1;
        const Complex back = Inverse(Complex{rp, 0} / Complex{1, qc} + Complex{0, x1});
        tuning.c1 = qc / (omega * rp);
        tuning.load = (-back.im - beyond.im) / omega;
        tuning.solvable = tuning.c1 > 0 && tuning.load > 0;
    }
    if (!tuning.solvable)
        tuning.problem =
            Problem(tuning, beyond.re, s.L1, std::sqrt(std::fmax(rp / beyond.re, 0)) / omega);
    return tuning;
}

Tuning RetuneAt(const DesignState& s, double frequency, bool highBranch) {
    return RetuneFor(s, frequency, highBranch, Complex{s.loadR, 0});
}

}  // namespace varo
