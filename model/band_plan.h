#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/design_state.h"
#include "core/tank_losses.h"
#include "model/fixed_text.h"
#include "model/retune.h"

namespace varo {

// One band the amplifier covers, with the fixed capacitance (a padder switched in with the band,
// farads) added to either variable capacitor there.
struct Band {
    std::string name;  // as builders say it: "160 m"
    double low = 0;    // Hz
    double high = 0;   // Hz
    double tunePadder = 0;
    double loadPadder = 0;
};

// 160 m to 10 m, the amateur HF bands.
std::vector<Band> DefaultBands();

// A variable capacitor's range, farads.
struct CapacitorRange {
    double min = 0;
    double max = 0;
};

// The conduction angle of each class as the plate-load helper names the classes (degrees).
inline constexpr double kClassAConduction = 360;
inline constexpr double kClassABConduction = 240;
inline constexpr double kClassBConduction = 180;
inline constexpr double kClassCConduction = 150;

// The spurious-emission limits a builder is held to, in dBc.
inline constexpr double kFixedHarmonicLimitDbc = -43;
// 43 + 10 log10(P / 1 W) dB below the carrier, or 50 dB, whichever is less strict.
double PowerScaledHarmonicLimitDbc(double watts);

// What the plan is made for, beside the design itself.
struct BandPlanInputs {
    double tubeCapacitance = 0;   // F, the tube's output capacitance, part of C1
    double strayCapacitance = 0;  // F, wiring and switch at the plate, part of C1
    CapacitorRange tune;          // the tuning capacitor, C1's variable share
    CapacitorRange load;          // the loading capacitor (C2, or C2 and C3 where they share the
                                  // midpoint)
    std::vector<Band> bands = DefaultBands();
    double conductionDegrees = kClassBConduction;
    double limitDbc = kFixedHarmonicLimitDbc;
    TankQ q;  // the parts' unloaded Q, for the efficiency
};

// Sentences naming each input that cannot be planned with; empty when every input is usable.
std::vector<std::string> BandPlanInputProblems(const DesignState& design,
                                               const BandPlanInputs& inputs);

struct HarmonicEstimate {
    int n = 0;
    double networkDb = 0;             // the network's load voltage per plate current, re. the
                                      // fundamental
    std::optional<double> currentDb;  // the tube's plate-current harmonic re. the fundamental;
                                      // none where the pulse holds none (class A, or class B's
                                      // odd harmonics)
    double outputDbc = 0;             // networkDb + currentDb, or networkDb alone without one
    double limitDbc = 0;
    double marginDb = 0;  // below the limit: positive passes
};

// At the band centre with the design's power and swing.
struct BandStresses {
    double c1PeakVolts = 0;    // the plate swing
    double loadPeakVolts = 0;  // across the loading capacitor
    double l1Amperes = 0;      // rms
    double l2Amperes = 0;      // rms, 0 without an L section
};

struct BandResult {
    Band band;
    double centre = 0;  // Hz, the geometric centre
    double designQ = 0;
    double q = 0;  // the working Q, raised where the tuning capacitor cannot go low enough
    bool qRaised = false;
    double l1 = 0, l2 = 0;  // H, the coils (taps) fixed for the band
    Tuning centreTuning;
    std::array<Tuning, 2> edges{};            // low, high
    std::vector<std::string> notes;           // what was done: "Q raised from 12 to 17.3: ..."
    std::vector<std::string> shortfalls;      // what the parts cannot do, with the pF missing
    std::vector<HarmonicEstimate> harmonics;  // 2 to 10 at the centre
    std::optional<BandStresses> stresses;     // with an RF power only
    std::optional<double> efficiencyPercent;  // the tank with the parts' Q, at the centre
    bool designed = false;  // false: the design's procedure failed; nothing else is set

    bool feasible() const { return designed && shortfalls.empty(); }
};

struct BandPlan {
    BandPlanInputs inputs;  // what the plan was made for
    std::vector<BandResult> bands;
    std::vector<std::string> notes;  // about the plan as a whole (harmonics the tube lacks)
};

// Plans every band: designs at the geometric centre with the design's own procedures, raises
// the working Q until the tuning capacitor can reach the C1 needed, fixes the coils, re-tunes C1
// and the loading capacitance at both edges, and estimates the harmonics and stresses at the
// centre. The inputs must have passed BandPlanInputProblems.
BandPlan PlanBands(const DesignState& design, const BandPlanInputs& inputs);

// What a capacitor of `range` lacks to reach `needed` (farads), as a sentence beginning with
// `what`; nothing where it reaches it.
std::optional<std::string> RangeShortfall(double needed, const CapacitorRange& range,
                                          const std::string& what);

// The n-th harmonic of a plate current flowing as cosine pulses of the given conduction angle,
// relative to the fundamental (amplitude ratio, 0 where the pulse holds none).
double PlateCurrentHarmonic(int n, double conductionDegrees);

}  // namespace varo
