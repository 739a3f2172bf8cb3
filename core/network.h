#pragma once

#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/reporter.h"

namespace varo {

// Derives omega, the pi-section Q split, the five reactances and the five component values from
// the inputs. On an arithmetic fault it closes all files, raises piQ to
// Int(sqrt(plateR/intermediateR) + 1), reports, and returns normally. Returns false after a fault.
bool ComponentCalculations(DesignState& state, Reporter& reporter);

// Lays the network out as the analysis ladder and sets the sweep and graph settings.
void SetupLadder(DesignState& state);

// Sets piPhase and lPhase by analysing each section alone at the operating frequency. Leaves the
// ladder holding the L section only; the next SetupLadder rewrites it. Throws ArithmeticFault
// (with the inputs restored) if the analysis faults.
void ComputeSectionPhases(DesignState& state);

// One analysis of the ladder at one frequency.
struct LadderResult {
    float transmissionPhase = 0;
    float transmissionDb = 0;
    float returnDb = 0;
    float vswr = 0;
    float zMagnitude = 0;
    float zAngle = 0;  // negative of the usual impedance angle, except when Re(Zin) is 0
};

// Analyses the ladder at `frequency`. With elementCount 0 the result is left untouched. Throws
// ArithmeticFault; it has no handler of its own.
void AnalyzeLadder(const DesignState& state, float previousFrequency, float previousPhase,
                   float frequency, LadderResult& result);

// Fills the sweep arrays over sweepStart..sweepStop. On a fault it reports "Sweep error checker"
// and returns false, the arrays keeping what was stored before the fault.
bool SweepRoutine(DesignState& state, Reporter& reporter);

// ---- Stresses ------------------------------------------------------------------------------

// Component voltages and capacitor currents at rfPower. Throws ArithmeticFault (a zero
// capacitance makes the reactance a division by zero).
void ComputeStresses(DesignState& state, Reporter& reporter);

// The part of the network, or the line of the explanatory block, that a stress text belongs to.
// Where each stands is the screen's business.
enum class StressPart {
    C1Voltage,
    C2Voltage,
    C3Voltage,
    C1Current,
    C2Current,  // with C3 merged into it when C3 stands at the midpoint
    C3Current,
    L1Current,
    L2Current,
    TotalPhase,
    Note,  // a line of the explanatory block
};

// The explanatory block: three stress lines (shown only with RF power), then four generator
// lines; the last ("impedance here:") is where the generator entry goes.
inline constexpr int kNoteLines = 7;
inline constexpr int kGeneratorNoteLine = 6;

struct StressText {
    StressPart part;
    std::string text;
    int noteLine = 0;  // for StressPart::Note, 0 to kNoteLines - 1
    bool operator==(const StressText&) const = default;
};

struct StressDisplay {
    // RMS voltages at the plate, the midpoint and the load, and the capacitor currents.
    float vPlate = 0, vMid = 0, vLoad = 0;
    float iC1 = 0, iC2 = 0, iC3 = 0;
    float iL1 = 0;
    float iL2 = 0;
    float totalPhase = 0;
    std::vector<StressText> texts;  // stress texts, total phase, explanatory block, in order
};

// Runs ComputeStresses, then the inductor currents, and returns the texts to show.
StressDisplay ShowStresses(DesignState& state, Reporter& reporter);

}  // namespace varo
