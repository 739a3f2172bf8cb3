#include "model/band_plan.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/chain_matrix.h"
#include "core/fault.h"
#include "core/network.h"
#include "core/tank_network.h"
#include "model/design_results.h"

namespace varo {

namespace {

constexpr double kPico = 1e-12;
// A capacitance this close to a range's end is inside it: the single-precision design values
// and the raised Q's rounding are not worth a shortfall.
constexpr double kCapacitanceTolerance = 0.001 * kPico;
constexpr int kHighestHarmonic = 10;
// Beyond this a tank's circulating current is no longer worth planning with.
constexpr float kMostWorkingQ = 1000;
// Below this share of the fundamental a harmonic of the pulse is taken as absent (what is left
// of an exact zero after rounding).
constexpr double kAbsentHarmonic = 1e-9;

std::string Picofarads(double farads) {
    return TrimmedText(farads / kPico, 1) + " pF";
}

std::string Megahertz(double hertz) {
    return TrimmedText(hertz / 1e6, 4) + " MHz";
}

// ---- Inputs ---------------------------------------------------------------------------------

void CheckRange(const CapacitorRange& range, const char* which, std::vector<std::string>& out) {
    if (!(range.min >= 0) || !std::isfinite(range.max))
        out.push_back(std::string("The ") + which +
                      " capacitor's range must be capacitances of 0 pF or more.");
    else if (range.min > range.max)
        out.push_back(std::string("The ") + which + " capacitor's minimum (" +
                      Picofarads(range.min) + ") is above its maximum (" + Picofarads(range.max) +
                      ").");
}

void CheckBand(const Band& band, std::vector<std::string>& out) {
    const std::string name = "Band " + (band.name.empty() ? std::string("(unnamed)") : band.name);
    if (!(band.low > 0) || !std::isfinite(band.high))
        out.push_back(name + ": its edges must be frequencies above 0.");
    else if (band.low > band.high)
        out.push_back(name + ": its low edge (" + Megahertz(band.low) +
                      ") is above its high edge (" + Megahertz(band.high) + ").");
    if (!(band.tunePadder >= 0) || !(band.loadPadder >= 0) || !std::isfinite(band.tunePadder) ||
        !std::isfinite(band.loadPadder))
        out.push_back(name + ": a padder must be a capacitance of 0 pF or more.");
}

// ---- Harmonics --------------------------------------------------------------------------------

// Load voltage per plate current: the network driven by an ideal current source.
double Transimpedance(const DesignState& s, double omega) {
    const ChainMatrix t = TankChainMatrix(BuildTankNetwork(s), omega, 0, 0);
    return 1.0 / std::sqrt(SquaredMagnitude(t.c + (1.0 / s.loadR) * t.d));
}

std::vector<HarmonicEstimate> EstimateHarmonics(const DesignState& s, double centre,
                                                const BandPlanInputs& inputs) {
    const double omega = 2 * std::numbers::pi * centre;
    const double fundamental = Transimpedance(s, omega);
    std::vector<HarmonicEstimate> harmonics;
    for (int n = 2; n <= kHighestHarmonic; ++n) {
        HarmonicEstimate h;
        h.n = n;
        h.limitDbc = inputs.limitDbc;
        h.networkDb = 20 * std::log10(Transimpedance(s, n * omega) / fundamental);
        const double current = PlateCurrentHarmonic(n, inputs.conductionDegrees);
        if (current > kAbsentHarmonic) h.currentDb = 20 * std::log10(current);
        h.outputDbc = h.networkDb + h.currentDb.value_or(0);
        h.marginDb = h.limitDbc - h.outputDbc;
        harmonics.push_back(h);
    }
    return harmonics;
}

std::string Ordinal(int n) {
    return std::to_string(n) + (n == 2 ? "nd" : n == 3 ? "rd" : "th");
}

// Which harmonics the tube's pulse holds none of, judged on the network alone.
std::string AbsentHarmonicsNote(double conductionDegrees) {
    std::vector<std::string> absent;
    for (int n = 2; n <= kHighestHarmonic; ++n)
        if (PlateCurrentHarmonic(n, conductionDegrees) <= kAbsentHarmonic)
            absent.push_back(Ordinal(n));
    if (absent.empty()) return {};
    if (absent.size() == kHighestHarmonic - 1)
        return "At " + TrimmedText(conductionDegrees, 1) +
               " degrees (class A) the tube makes no harmonic current in this model: the "
               "harmonics are judged on the network's attenuation alone.";
    std::string list;
    for (const std::string& ordinal : absent)
        list += (list.empty() ? "" : ", ") + ordinal;
    return "At " + TrimmedText(conductionDegrees, 1) + " degrees the tube makes no " + list +
           " harmonic current in this model: those are judged on the network's attenuation "
           "alone.";
}

// ---- Stresses ---------------------------------------------------------------------------------

// The network walked from the load back to the plate at the design's power; C1 carries the
// design's swing.
BandStresses WalkStresses(const DesignState& s, double centre) {
    const NetworkStresses walked = WalkFromLoad(BuildTankNetwork(s), 2 * std::numbers::pi * centre,
                                                Complex{s.loadR, 0}, s.rfPower);
    return {.c1PeakVolts = s.peakSwing,
            .loadPeakVolts = walked.midPeakVolts,
            .l1Amperes = walked.l1Amperes,
            .l2Amperes = walked.l2Amperes};
}

// ---- One band ---------------------------------------------------------------------------------

class BandPlanner {
  public:
    BandPlanner(const DesignState& design, const BandPlanInputs& inputs, const Band& band)
        : inputs_(inputs), state_(design) {
        result_.band = band;
        result_.centre = std::sqrt(band.low * band.high);
        result_.designQ = design.piQ;
        state_.frequency = StoreSingle(result_.centre);
    }

    BandResult Plan() {
        if (!DesignAt(state_.piQ)) return result_;
        RaiseQForTheTuningCapacitor();
        if (!result_.designed) return result_;
        result_.q = state_.piQ;
        result_.l1 = state_.L1;
        result_.l2 = state_.L2;
        const bool branch = CentreBranch(state_);
        result_.centreTuning = Shares(RetuneAt(state_, result_.centre, branch));
        result_.edges = {Check(RetuneAt(state_, result_.band.low, branch)),
                         Check(RetuneAt(state_, result_.band.high, branch))};
        result_.harmonics = EstimateHarmonics(state_, result_.centre, inputs_);
        if (state_.rfPower > 0) result_.stresses = WalkStresses(state_, result_.centre);
        result_.efficiencyPercent = Efficiency();
        return result_;
    }

  private:
    // The losses are a ratio: worked out at a watt where the design has no power.
    std::optional<double> Efficiency() const {
        DesignState lossy = state_;
        if (!(lossy.rfPower > 0)) lossy.rfPower = 1;
        try {
            return AnalyzeTankLosses(lossy, inputs_.q).efficiencyPercent;
        } catch (const ArithmeticFault&) {
            return std::nullopt;
        }
    }

    double FixedPlateCapacitance() const {
        return inputs_.tubeCapacitance + inputs_.strayCapacitance + result_.band.tunePadder;
    }

    bool DesignAt(float q) {
        state_.piQ = q;
        try {
            result_.designed = ComponentCalculations(state_, SilentReporter());
        } catch (const ArithmeticFault&) {
            result_.designed = false;
        }
        if (!result_.designed)
            result_.shortfalls.push_back("The design cannot be calculated at " +
                                         Megahertz(result_.centre) + " with Q " +
                                         TrimmedText(q, 1) + ".");
        return result_.designed;
    }

    // The tuning capacitor's share of C1 at the band's high edge, where the least is needed,
    // with the coils of a design at `q`; below every minimum where nothing matches there.
    double TuneShareAtHighEdge(float q) {
        DesignState trial = state_;
        trial.piQ = q;
        try {
            if (!ComponentCalculations(trial, SilentReporter())) return -HUGE_VAL;
        } catch (const ArithmeticFault&) {
            return -HUGE_VAL;
        }
        const Tuning high = RetuneAt(trial, result_.band.high, CentreBranch(trial));
        return high.solvable ? high.c1 - FixedPlateCapacitance() : -HUGE_VAL;
    }

    // Where the tube and strays leave the tuning capacitor less than its minimum, the least Q
    // whose coils let it tune the whole band: at the high edge it then sits at its minimum. The
    // C1 a Q gives grows with it, so the Q is found by halving the interval.
    void RaiseQForTheTuningCapacitor() {
        const float designQ = state_.piQ;
        const auto reaches = [this](float q) {
            return TuneShareAtHighEdge(q) + kCapacitanceTolerance >= inputs_.tune.min;
        };
        if (reaches(designQ)) return;
        float low = designQ, high = designQ;
        do {
            low = high;
            high = StoreSingle(high * 1.5);
        } while (!reaches(high) && high < kMostWorkingQ);
        if (!reaches(high)) {
            result_.designed = false;
            result_.shortfalls.push_back(
                "No working Q up to " + TrimmedText(kMostWorkingQ, 0) +
                " lets the tuning capacitor reach its minimum of " + Picofarads(inputs_.tune.min) +
                " at " + Megahertz(result_.band.high) + ": the tube, strays and padder alone are " +
                Picofarads(FixedPlateCapacitance()) + ".");
            return;
        }
        while (std::nextafter(low, high) < high) {
            const float middle = StoreSingle((static_cast<double>(low) + high) / 2);
            if (middle <= low || middle >= high) break;
            (reaches(middle) ? high : low) = middle;
        }
        if (!DesignAt(high)) return;
        result_.qRaised = true;
        result_.notes.push_back("Q raised from " + TrimmedText(result_.designQ, 1) + " to " +
                                TrimmedText(high, 1) + ": tuning capacitor at its minimum");
    }

    // The variable capacitors' shares: padders, tube and strays taken off.
    Tuning Shares(Tuning tuning) const {
        if (!tuning.solvable) return tuning;
        tuning.tune = tuning.c1 - FixedPlateCapacitance();
        tuning.load -= result_.band.loadPadder;
        return tuning;
    }

    Tuning Check(Tuning tuning) {
        const std::string where = Megahertz(tuning.frequency) + ": ";
        if (!tuning.solvable) {
            result_.shortfalls.push_back(
                where + "no capacitance makes the band's coils present the plate load");
            return tuning;
        }
        tuning = Shares(tuning);
        CheckAgainst(tuning.tune, inputs_.tune, where + "the tuning capacitor");
        CheckAgainst(tuning.load, inputs_.load, where + "the loading capacitor");
        return tuning;
    }

    void CheckAgainst(double needed, const CapacitorRange& range, const std::string& what) {
        if (auto shortfall = RangeShortfall(needed, range, what))
            result_.shortfalls.push_back(*shortfall);
    }

    const BandPlanInputs& inputs_;
    DesignState state_;
    BandResult result_;
};

}  // namespace

std::optional<std::string> RangeShortfall(double needed, const CapacitorRange& range,
                                          const std::string& what) {
    if (needed > range.max + kCapacitanceTolerance)
        return what + " needs " + Picofarads(needed) + ", " + Picofarads(needed - range.max) +
               " above its maximum of " + Picofarads(range.max);
    if (needed < range.min - kCapacitanceTolerance)
        return what + " needs " + Picofarads(needed) + ", " + Picofarads(range.min - needed) +
               " below its minimum of " + Picofarads(range.min);
    return std::nullopt;
}

std::vector<Band> DefaultBands() {
    return {{"160 m", 1.8e6, 2.0e6},   {"80 m", 3.5e6, 4.0e6},     {"40 m", 7.0e6, 7.3e6},
            {"30 m", 10.1e6, 10.15e6}, {"20 m", 14.0e6, 14.35e6},  {"17 m", 18.068e6, 18.168e6},
            {"15 m", 21.0e6, 21.45e6}, {"12 m", 24.89e6, 24.99e6}, {"10 m", 28.0e6, 29.7e6}};
}

double PowerScaledHarmonicLimitDbc(double watts) {
    return -std::min(43 + 10 * std::log10(watts), 50.0);
}

std::vector<std::string> BandPlanInputProblems(const DesignState& design,
                                               const BandPlanInputs& inputs) {
    std::vector<std::string> problems;
    if (!(design.plateR > 0) || !(design.intermediateR > 0) || !(design.loadR > 0) ||
        !(design.piQ > 0))
        problems.push_back(
            "The design needs its plate, intermediate and load resistances and "
            "its Q first.");
    if (!(inputs.tubeCapacitance >= 0) || !std::isfinite(inputs.tubeCapacitance))
        problems.push_back("The tube's output capacitance must be 0 pF or more.");
    if (!(inputs.strayCapacitance >= 0) || !std::isfinite(inputs.strayCapacitance))
        problems.push_back("The stray capacitance must be 0 pF or more.");
    CheckRange(inputs.tune, "tuning", problems);
    CheckRange(inputs.load, "loading", problems);
    if (inputs.bands.empty()) problems.push_back("Choose at least one band.");
    for (const Band& band : inputs.bands)
        CheckBand(band, problems);
    if (!(inputs.conductionDegrees > 0 && inputs.conductionDegrees <= 360))
        problems.push_back("The conduction angle must be above 0 and at most 360 degrees.");
    if (!(inputs.limitDbc < 0) || !std::isfinite(inputs.limitDbc))
        problems.push_back("The harmonic limit must be below the carrier (a negative dBc).");
    if (!IsUsableQ(inputs.q.coil) || !IsUsableQ(inputs.q.capacitor))
        problems.push_back("The coil and capacitor Q must be above 0.");
    return problems;
}

double PlateCurrentHarmonic(int n, double conductionDegrees) {
    // Cosine pulses of half-angle a: the Fourier integrals of (cos t - cos a) cos nt over
    // -a..a, the fundamental's being a - sin a cos a.
    const double a = conductionDegrees * std::numbers::pi / 360;
    const double fundamental = a - std::sin(a) * std::cos(a);
    const double harmonic = std::sin((n - 1) * a) / (n - 1) + std::sin((n + 1) * a) / (n + 1) -
                            2 * std::cos(a) * std::sin(n * a) / n;
    return std::fabs(harmonic / fundamental);
}

BandPlan PlanBands(const DesignState& design, const BandPlanInputs& inputs) {
    BandPlan plan;
    plan.inputs = inputs;
    for (const Band& band : inputs.bands)
        plan.bands.push_back(BandPlanner(design, inputs, band).Plan());
    if (const std::string note = AbsentHarmonicsNote(inputs.conductionDegrees); !note.empty())
        plan.notes.push_back(note);
    return plan;
}

}  // namespace varo
