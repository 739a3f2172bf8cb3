#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/chain_matrix.h"
#include "core/design_state.h"
#include "core/tank_losses.h"
#include "model/band_plan.h"
#include "model/retune.h"

namespace varo {

// "37-j22", "37+j22", "37-22j", "50", "1.2k+j300": a load impedance in ohms, with the real part
// above 0. Nothing where the text is no such impedance.
std::optional<Complex> ParseLoadImpedance(std::string_view text);

// The SWR circles a builder sizes parts for.
inline constexpr double kDefaultSwr = 2;
inline constexpr int kDefaultPhases = 36;

// The loads at `swr` around the resistance `r0`, `phases` of them evenly spaced in the phase of
// their reflection, the first at 0 degrees (the highest resistance).
std::vector<Complex> SwrCircle(double r0, double swr, int phases);

// One load with the network re-tuned for it at its frequency, and what the parts then stand at
// the design's power (all 0 without one): peak volts across C1 (the plate) and the loading
// capacitor, rms amperes in the coils, and the watts the tank loses with the parts' Q.
struct LoadCase {
    Complex zLoad;
    double frequency = 0;
    double phaseDegrees = 0;  // on an SWR circle; 0 for a single load or a file's point
    Tuning tuning;
    double c1PeakVolts = 0;
    double loadPeakVolts = 0;
    double l1Amperes = 0;
    double l2Amperes = 0;
    std::optional<double> lossWatts;  // none where the losses cannot be worked out
};

// The quantities a builder sizes parts by, in the order they are reported.
enum class LoadStress { C1Volts, LoadVolts, L1Amperes, L2Amperes, LossWatts };
inline constexpr int kLoadStresses = 5;
double StressOf(const LoadCase& load, LoadStress stress);

struct WorstCase {
    int index = -1;  // into LoadRange::loads; -1 where no load was matched
    double value = 0;
};

struct CapacitanceSpan {
    double min = 0;
    double max = 0;
};

struct LoadRange {
    std::vector<LoadCase> loads;
    std::array<WorstCase, kLoadStresses> worst{};
    // The ranges of C1 and the loading capacitance that match every load that can be matched.
    std::optional<CapacitanceSpan> c1Cover, loadCover;
    int unmatched = 0;       // loads no positive capacitances match
    bool withPower = false;  // the design has an RF power: the stresses and losses mean something

    const WorstCase& Worst(LoadStress stress) const { return worst[static_cast<int>(stress)]; }
};

// Where a load range is worked out: the design's coils fixed, C1 and the loading capacitance
// re-tuned for each load at the design's power; the losses with the parts' Q.
struct LoadRangeInputs {
    std::vector<Complex> loads;       // ohms
    std::vector<double> frequencies;  // Hz, one per load; empty: all at the design's frequency
    std::vector<double> phases;       // degrees, one per load on an SWR circle; else empty
    TankQ q;
};

// The design must have its components calculated (a design that succeeded).
LoadRange AnalyzeLoadRange(const DesignState& design, const LoadRangeInputs& inputs);

// The SWR circle around the design's load resistance at its frequency.
LoadRangeInputs SwrCircleInputs(const DesignState& design, double swr, int phases, TankQ q);

// The same circle for each band a plan designed, at the band's centre with its coils and Q; the
// capacitances are the whole C1 and loading capacitance, as for the design.
struct BandLoadRange {
    std::string band;
    double centre = 0;
    LoadRange range;
    std::vector<std::string> shortfalls;  // where the cover leaves the capacitors' ranges
};
std::vector<BandLoadRange> AnalyzeBandLoadRanges(const DesignState& design, const BandPlan& plan,
                                                 double swr, int phases);

// What a load range is asked for: an SWR circle around the design's load resistance, one load
// impedance at the design's frequency, or measured loads each at its own frequency.
struct LoadRangeRequest {
    enum class Kind { SwrCircle, Impedance, Measured };
    Kind kind = Kind::SwrCircle;
    double swr = kDefaultSwr;
    int phases = kDefaultPhases;
    Complex impedance;
    std::vector<Complex> measuredLoads;       // ohms
    std::vector<double> measuredFrequencies;  // Hz, one per load
};

// The most phases a circle is worked out at.
inline constexpr int kMostPhases = 3600;

// Sentences naming what cannot be worked out with; empty when the request can be.
std::vector<std::string> LoadRangeProblems(const DesignState& design,
                                           const LoadRangeRequest& request);

struct LoadRangeResult {
    LoadRangeRequest request;
    LoadRange range;
    std::vector<BandLoadRange> bands;  // an SWR circle per band, where a plan was made
};

// The request must have passed LoadRangeProblems; `plan` may be null.
LoadRangeResult AnalyzeLoadRequest(const DesignState& design, const LoadRangeRequest& request,
                                   TankQ q, const BandPlan* plan);

}  // namespace varo
