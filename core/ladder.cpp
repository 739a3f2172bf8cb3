#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "core/chain_matrix.h"
#include "core/fault.h"
#include "core/network.h"

namespace varo {

namespace {

constexpr double kLog10E = 0.43429448190325182765;  // log10(x) = ln(x) x log10(e)

// The analysis's arithmetic in two flavours with identical results. A point is first evaluated
// with NotingOps, which only note whether anything went wrong, without a branch or a call. A
// point that went wrong is evaluated again with ThrowingOps, which raise the first fault exactly
// where it happens.
struct ThrowingOps {
    static double Finite(double x) { return CheckedFinite(x); }
    static double Divide(double numerator, double denominator) {
        return CheckedDivide(numerator, denominator);
    }
    static double Sqrt(double x) { return CheckedSqrt(x); }
    // Through the natural logarithm, which the library computes several times faster than log10.
    static double Log10(double x) { return CheckedLog(x) * kLog10E; }
    static double Exp(double x) { return CheckedExp(x); }
    static float Single(double value) { return StoreSingle(value); }
    // Already checked by the operation that produced x.
    static double Guard(double x) { return x; }
    static bool ok() { return true; }
};

// Every fault of a checked operation leaves an infinity or a NaN behind (a division by zero, the
// root or logarithm of a bad argument, an overflow), and these run on into the results. Only an
// arctangent or a clamp can swallow one, so the noting flavour watches the values that go into
// those (Guard) and the stored results (Single), and nothing else.
struct NotingOps {
    std::uint64_t marks = 0;

    bool ok() const { return (marks >> 63) == 0; }
    double Guard(double x) {
        constexpr std::uint64_t kExponent = 0x7ff0000000000000;
        constexpr std::uint64_t kExponentStep = 0x0010000000000000;
        // An all-ones exponent (infinity, NaN) carries into the top bit; no other exponent does.
        marks |= (std::bit_cast<std::uint64_t>(x) & kExponent) + kExponentStep;
        return x;
    }
    static double Finite(double x) { return x; }
    static double Divide(double numerator, double denominator) { return numerator / denominator; }
    static double Sqrt(double x) { return std::sqrt(x); }
    static double Log10(double x) { return std::log(x) * kLog10E; }
    double Exp(double x) { return Guard(std::exp(Guard(x))); }
    float Single(double value) {
        const float stored = static_cast<float>(value);
        Guard(stored);
        return stored;
    }
};

inline int Index(int index, int lowest, int highest) {
    return index >= lowest && index <= highest ? index : CheckedIndex(index, lowest, highest);
}

template <class Ops>
Complex CheckFinite(Ops& ops, Complex z) {
    return {ops.Finite(z.re), ops.Finite(z.im)};
}

// The ladder as the analysis walks it: the through connections dropped, each element's loss
// factor (1 / its Q) and the degree scale worked out once for all frequencies of a sweep.
struct PreparedElement {
    bool series = false;
    double value = 0;     // henries or farads
    double inverseQ = 0;  // the loss is this fraction of the reactance or susceptance
};

struct PreparedLadder {
    std::array<PreparedElement, kLadderPositions> elements{};
    int count = 0;
    double degreesPerRadian = 0;
};

// Positions in order, with their faults in that order: a position above 20, the combined element,
// a zero Q.
PreparedLadder Prepare(const DesignState& s) {
    PreparedLadder ladder;
    for (int p = 1; p <= s.elementCount; ++p) {
        const int position = CheckedIndex(p, 0, kLadderPositions - 1);
        const float code = s.elementType[position];
        if (code == kSeriesInductor) {
            ladder.elements[ladder.count++] = {true, s.elementL[position],
                                               CheckedDivide(1.0, s.inductorQ)};
        } else if (code == kShuntCapacitor) {
            ladder.elements[ladder.count++] = {false, s.elementC[position],
                                               CheckedDivide(1.0, s.capacitorQ)};
        } else if (code == kCombinedElement) {
            // The combined element's formula divides by a quantity that is still zero at this
            // point of the analysis; nothing in the program creates such an element.
            throw ArithmeticFault(FaultKind::DivisionByZero);
        }
        // Any other code is a through connection.
    }
    ladder.degreesPerRadian = CheckedDivide(180.0, s.pi);
    return ladder;
}

// The losses: an inductor is a series resistance omega L / inductorQ, a capacitor a parallel
// conductance omega C / capacitorQ.
template <class Ops>
ChainMatrix ChainProduct(Ops& ops, const PreparedLadder& ladder, double omega) {
    ChainMatrix t;
    for (int i = 0; i < ladder.count; ++i) {
        const PreparedElement& element = ladder.elements[i];
        AppendElement(t, element.series, omega * element.value, element.inverseQ);
    }
    return {CheckFinite(ops, t.a), CheckFinite(ops, t.b), CheckFinite(ops, t.c),
            CheckFinite(ops, t.d)};
}

double WrapDegrees(double angle) {
    if (angle > 180) angle -= 360;
    if (angle < -180) angle += 360;
    return angle;
}

// -arctan(im/re) in degrees, carried over into the half-plane of a negative real part. This is
// the negative of the usual angle of z.
template <class Ops>
double NegatedAngle(Ops& ops, Complex z, double degreesPerRadian) {
    double angle = -std::atan(ops.Guard(ops.Divide(z.im, z.re))) * degreesPerRadian;
    if (z.re < 0) angle += z.im < 0 ? -180 : 180;
    return WrapDegrees(angle);
}

// Phase of the load voltage relative to the generator EMF, for H = EMF / load voltage.
template <class Ops>
double TransmissionPhase(Ops& ops, Complex h, double degreesPerRadian) {
    if (h.re == 0) return h.im < 0 ? 90 : (h.im > 0 ? -90 : 0);
    return NegatedAngle(ops, h, degreesPerRadian);
}

// Negative of the usual impedance angle, except for a purely reactive input, which keeps the
// usual sign.
template <class Ops>
double ImpedanceAngle(Ops& ops, Complex z, double degreesPerRadian) {
    if (z.re == 0) return z.im > 0 ? 90 : (z.im < 0 ? -90 : 0);
    return NegatedAngle(ops, z, degreesPerRadian);
}

// Reflection magnitude of Zin against r0, kept inside 1e-7..0.9999999 so that the return loss
// and the VSWR stay finite.
template <class Ops>
double ReflectionMagnitude(Ops& ops, Complex zin, double r0) {
    const double reflected = ops.Sqrt((zin.re - r0) * (zin.re - r0) + zin.im * zin.im);
    const double incident = ops.Guard(ops.Sqrt((zin.re + r0) * (zin.re + r0) + zin.im * zin.im));
    const double rho = ops.Guard(ops.Divide(reflected, incident));
    if (rho > 0.9999999) return 0.9999999;
    if (rho < 1e-7) return 1e-7;
    return rho;
}

// Generator EMF over load voltage; a part that is exactly zero is floored so that the phase
// and the logarithm stay defined.
template <class Ops>
Complex VoltageRatio(Ops& ops, const ChainMatrix& t, double rs, double rl) {
    // The reciprocal of the load does not wait for the ladder product.
    const double inverseLoad = ops.Divide(1.0, rl);
    const Complex output = rl * t.c + t.d;
    Complex h = CheckFinite(ops, inverseLoad * (rl * t.a + t.b + rs * output));
    if (h.re == 0) h.re = 1e-10;
    if (h.im == 0) h.im = 1e-10;
    return h;
}

template <class Ops>
Complex InputImpedance(Ops& ops, const ChainMatrix& t, double rl) {
    const Complex numerator = rl * t.a + t.b;
    const Complex denominator = rl * t.c + t.d;
    const double scale = SquaredMagnitude(denominator);
    const Complex product = numerator * Complex{denominator.re, -denominator.im};
    return CheckFinite(ops, {ops.Divide(product.re, scale), ops.Divide(product.im, scale)});
}

// One frequency point; returns whether every operation went right (the throwing flavour throws
// instead). The delay figure of the original analysis is not computed: nothing reads it.
template <class Ops>
bool Evaluate(const DesignState& s, const PreparedLadder& ladder, float frequency,
              LadderResult& result) {
    Ops ops;  // local, so that the noting flavour's state stays in a register
    const double omega = 2 * s.pi * frequency;
    const ChainMatrix t = ChainProduct(ops, ladder, omega);
    const double rs = static_cast<double>(s.genMultiplier) * s.plateR;
    const double rl = s.loadR;

    const Complex h = VoltageRatio(ops, t, rs, rl);
    const float fourRs = ops.Single(4.0 * s.plateR * s.genMultiplier);
    const double gain = rl * SquaredMagnitude(h) * ops.Divide(1.0, fourRs);
    result.transmissionDb = ops.Single(-10.0 * ops.Log10(gain));
    result.transmissionPhase = ops.Single(TransmissionPhase(ops, h, ladder.degreesPerRadian));

    const Complex zin = InputImpedance(ops, t, rl);
    result.zMagnitude = ops.Single(ops.Sqrt(SquaredMagnitude(zin)));
    result.zAngle = ops.Single(ImpedanceAngle(ops, zin, ladder.degreesPerRadian));

    const double rho = ReflectionMagnitude(ops, zin, s.sourceR);
    // -20 log10(1 / rho), without the division.
    result.returnDb = ops.Single(20.0 * ops.Log10(rho));
    result.vswr = ops.Single(ops.Divide(1.0 + rho, 1.0 - rho));
    return ops.ok();
}

void AnalyzeAt(const DesignState& s, const PreparedLadder& ladder, float frequency,
               LadderResult& result) {
    LadderResult trial = result;
    if (Evaluate<NotingOps>(s, ladder, frequency, trial)) {
        result = trial;
    } else {
        Evaluate<ThrowingOps>(s, ladder, frequency, result);
    }
}

template <class Ops>
bool SweepFrequency(double lnStart, double span, int i, int intervals, float& frequency) {
    Ops ops;
    frequency = ops.Single(ops.Exp(lnStart + ops.Divide(span * i, intervals)));
    return ops.ok();
}

std::string SweepFaultMessage(FaultKind kind) {
    std::string text = "We have a sweep-routine error.";
    text += kCrLf;
    text += FaultText(kind);
    text += kCrLf;
    text += "Please check analysis starting and stopping frequencies";
    text += kCrLf;
    text += "and check the network component values.";
    return text;
}

void FillSweepFrequencies(DesignState& s) {
    if (s.sweepIntervals < 0) return;
    const double lnStart = CheckedLog(s.sweepStart);
    const double span = CheckedLog(s.sweepStop) - lnStart;
    for (int i = 0; i <= s.sweepIntervals; ++i) {
        const int index = Index(i, 0, kSweepPoints - 1);
        float frequency = 0;
        if (!SweepFrequency<NotingOps>(lnStart, span, i, s.sweepIntervals, frequency)) {
            SweepFrequency<ThrowingOps>(lnStart, span, i, s.sweepIntervals, frequency);
        }
        s.sweepFrequency[index] = frequency;
    }
}

void AnalyzeSweepPoints(DesignState& s) {
    float delaySum = 0;
    // One result for the whole sweep: an empty ladder leaves the last values in place.
    LadderResult result;
    const bool empty = s.elementCount == 0;
    const PreparedLadder ladder = empty ? PreparedLadder{} : Prepare(s);
    for (int i = 0; i <= s.sweepIntervals; ++i) {
        const int index = Index(i, 0, kSweepPoints - 1);
        if (!empty) AnalyzeAt(s, ladder, s.sweepFrequency[index], result);
        s.sweepTransmission[index] = result.transmissionDb;
        s.sweepPhase[index] = result.transmissionPhase;
        // The delay figure is not computed, so its arrays hold zeros.
        s.sweepDelay[index] = 0;
        s.sweepZMagnitude[index] = result.zMagnitude;
        s.sweepZAngle[index] = -result.zAngle;
        s.sweepReturn[index] = result.returnDb;
        s.sweepVswr[index] = result.vswr;
        s.sweepDelaySum[index] = delaySum;
        delaySum = s.sweepDelaySum[index];
    }
    s.sweepDelay[0] = StoreSingle(2.0 * s.sweepDelay[1] - s.sweepDelay[2]);
}

}  // namespace

// The previous frequency and phase served only the delay figure, which is not computed.
void AnalyzeLadder(const DesignState& state, float /*previousFrequency*/, float /*previousPhase*/,
                   float frequency, LadderResult& result) {
    if (state.elementCount == 0) return;
    AnalyzeAt(state, Prepare(state), frequency, result);
}

bool SweepRoutine(DesignState& state, Reporter& reporter) {
    try {
        FillSweepFrequencies(state);
        AnalyzeSweepPoints(state);
        return true;
    } catch (const ArithmeticFault& fault) {
        reporter.ShowMessage(SweepFaultMessage(fault.kind()), "Sweep error checker",
                             MessageIcon::Critical);
        return false;
    }
}

}  // namespace varo
