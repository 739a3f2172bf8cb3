#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "core/design_state.h"
#include "core/network.h"
#include "core/reporter.h"
#include "core/tank_losses.h"
#include "model/band_plan.h"
#include "model/input_view.h"
#include "model/load_range.h"

namespace varo {

// One analysed harmonic (n = 1 is the fundamental).
struct HarmonicRow {
    int n = 0;
    float frequency = 0;
    LadderResult result;
};

// The design's inputs as the sequence used them.
struct DesignInputs {
    float frequency = 0, plateR = 0, intermediateR = 0, loadR = 0, piQ = 0;
    float peakSwing = 0, rfPower = 0, genMultiplier = 0;
    static DesignInputs Of(const DesignState& state);
    bool operator==(const DesignInputs&) const = default;
};

// The L section's parts and reactances.
struct LSectionValues {
    float L2 = 0, C3 = 0, xL2 = 0, xC3 = 0;
    bool operator==(const LSectionValues&) const = default;
};

// The parts and their reactances, as DesignState holds them.
struct ComponentValues {
    float omega = 0, inputQ = 0, outputQ = 0;
    float C1 = 0, L1 = 0, C2 = 0;
    float xC1 = 0, xL1 = 0, xC2 = 0;
    // None when the intermediate resistance equals the load: the state then still holds a
    // previous design's L2 and C3 reactances, which mean nothing for this one.
    std::optional<LSectionValues> lSection;
    static ComponentValues Of(const DesignState& state);
    bool operator==(const ComponentValues&) const = default;
};

struct SectionPhases {
    float piPhase = 0;
    float lPhase = 0;
};

// The swept response, one entry per swept frequency, copied out of the design when it was swept
// (an overlay read later writes its own frequencies into the design's sweep, never into this).
// Signs, in every output beyond the original's:
// - transmissionDb and returnDb as the ladder gives them: 0 dB or below for a passive network,
//   so the return is the plot's negative figure (-20 dB for a reflection of 0.1);
// - phaseDeg is the transmission phase as analysed;
// - zAngleDeg is the usual impedance angle, positive for an inductive input (the sweep stores
//   it so; the single-frequency LadderResult::zAngle has the opposite sign, see UsualZAngle).
// Return loss and VSWR are referred to referenceOhms.
struct SweepTable {
    std::vector<float> frequency, transmissionDb, phaseDeg, returnDb, vswr, zMagnitude, zAngleDeg;
    float start = 0, stop = 0;
    float referenceOhms = 0;
    static SweepTable Of(const DesignState& state);
    std::size_t size() const { return frequency.size(); }
};

// The usual impedance angle of one analysis: positive for an inductive input.
float UsualZAngle(const LadderResult& result);

// What one operation of the design settled. Every view of the design (design screen, large plot,
// printed report, files, varo-cli) reads this value; none of them computes or reports.
struct DesignResults {
    DesignInputs inputs;
    ComponentValues components;           // as the operation left them
    std::optional<SectionPhases> phases;  // none when they could not be worked out
    StressDisplay stresses;               // no texts when they could not be worked out
    std::vector<HarmonicRow> harmonics;   // fundamental and harmonics 2 to 5
    std::vector<float> gridFrequencies;   // log-axis grid lines between the sweep limits
    SweepTable sweep;
    std::optional<TankLosses> losses;  // the tank with real coil and capacitor Q, when asked for
    std::optional<BandPlan> bandPlan;  // every band of the amplifier, once a plan is asked for
    std::optional<LoadRangeResult> loadRange;  // the loads beyond a resistance, once asked for
    std::optional<InputView> input;  // what the tube sees, from the large plot's last redraw
};

// The building blocks of the design's sequences (see Design for the sequences themselves).

// RecalculateDesign after ValidateInputs: components, ladder, sweep, section phases, then what
// the displays work out in their order: stresses, then the small plot's grid and harmonic
// table (with its own ComponentCalculations and SetupLadder). A fault the engine does not
// handle itself is reported as one that keeps the network from being analysed. Returns false
// when any step faulted.
bool CalculateDesign(DesignState& state, Reporter& reporter, DesignResults& results);

// What the design screen works out when it opens, without validating: the harmonic table (its
// ComponentCalculations may report, as on every load), then in silence a sweep, the phases and
// the stresses so the first view is complete, then the small plot's grid and harmonic table.
DesignResults LoadDesignResults(DesignState& state, Reporter& reporter);

// ComponentCalculations then SetupLadder: what every consumer of the network runs first,
// because the phase calculation leaves the ladder holding the L section only.
bool RecomputeNetwork(DesignState& state, Reporter& reporter);

// The harmonic table's numbers: RecomputeNetwork, then the ladder analysed at n x frequency for
// n = 1 to 5, each frequency left in analysisFrequency. A network that cannot be analysed ends
// the list at the fault (the sweep has already told the user).
std::vector<HarmonicRow> AnalyzeHarmonics(DesignState& state, Reporter& reporter);
// The same rows from the ladder as it stands, so that hand-changed parts are kept.
std::vector<HarmonicRow> AnalyzeHarmonicsAsLaidOut(DesignState& state);

// BuildLogGrid, then its entries as a list; empty when the grid cannot be built.
std::vector<float> BuildGridFrequencies(DesignState& state);

// The tank's losses with the given Q at the components the state holds; nothing when the
// network cannot be analysed so (a zero load, a Q of 0, a fault on the way).
std::optional<TankLosses> TankLossesOf(const DesignState& state, TankQ q);

// Which coils the losses took as wound, with their Q: "L1 as wound, Q 668; L2 as wound, Q 412";
// empty when both took the coil Q.
std::string WoundQNote(const TankQ& q);

// Runs `step`; an arithmetic fault in it is reported instead of escaping. False after a fault.
bool RunGuarded(Reporter& reporter, const std::function<void()>& step);

// The one reporter that says nothing: for the work the layer does beyond the original's
// sequences, whose faults the next reporting step tells.
Reporter& SilentReporter();

}  // namespace varo
