#pragma once

#include <array>
#include <memory>
#include <optional>

#include "core/coil_physics.h"
#include "core/design_state.h"
#include "core/reporter.h"
#include "core/tank_losses.h"
#include "model/design_form.h"
#include "model/design_results.h"
#include "platform/dialogs.h"

namespace varo {

// A coil as wound on the inductor screen (or named to varo-cli), and the inductance it was
// wound for.
struct WoundCoil {
    Winding winding;
    float woundFor = 0;  // henries
};

// The 1 % adjust buttons.
enum class Adjustment { QMinus, QPlus, IntermediateMinus, IntermediatePlus };

// The large plot's buttons that change an L-section part by a factor of 1.03.
enum class Nudge { CapacitorDown, CapacitorUp, InductorDown, InductorUp };

// The design as a whole: the one DesignState of the run, the fixed sequences the screens and
// varo-cli run on it, and the results each sequence settled. Screens, report pages, file writers
// and varo-cli read results(); only the operations here compute. Each operation reports through
// the reporter and dialogs it is given, in the order the program always has, and returns false
// when a step faulted; results() then holds what the sequence could settle.
class Design {
  public:
    Design();

    DesignState& state() { return *state_; }
    const DesignState& state() const { return *state_; }
    const DesignResults& results() const { return results_; }

    // The coil and capacitor Q the tank's losses are worked out with; none for no losses.
    void SetLossQ(std::optional<TankQ> q);
    std::optional<TankQ> lossQ() const { return lossQ_; }

    // The coils as wound, L1 then L2. While the design still needs the inductance a coil was
    // wound for, and the wound coils' Q is chosen, the tank's losses take that coil's own Q
    // at the operating frequency instead of the coil Q. The band plan and the load range keep
    // the coil Q: a tapped coil's Q on other bands is not this one.
    void SetWoundCoil(TankPart coil, std::optional<WoundCoil> wound);
    const std::optional<WoundCoil>& woundCoil(TankPart coil) const;
    void UseWoundCoilQ(bool use);
    bool usesWoundCoilQ() const { return useWoundQ_; }
    // The wound coils' Q the design would take now (none for a coil not wound, wound for
    // another inductance, or without the wire's figures), chosen or not.
    std::array<std::optional<double>, 2> WoundCoilQ() const;

    // What the band plan is made for; none for no plan. Setting them plans at once, and each
    // later operation plans again, so results().bandPlan always describes the design as it now
    // is. Inputs that BandPlanInputProblems rejects leave no plan. The parts' Q are the loss Q's
    // (the defaults where no losses are asked for).
    void SetBandPlanInputs(std::optional<BandPlanInputs> inputs);
    const std::optional<BandPlanInputs>& bandPlanInputs() const { return bandInputs_; }

    // What the load range is worked out for; none for no load range. Like the band plan it
    // follows every later operation (and the plan itself: an SWR circle is worked out per band
    // too). A request LoadRangeProblems rejects leaves none. The parts' Q are the loss Q's.
    void SetLoadRange(std::optional<LoadRangeRequest> request);
    const std::optional<LoadRangeRequest>& loadRangeRequest() const { return loadRequest_; }

    // The design screen opens: the entries show the design, then what the screen works out on
    // load, without validating.
    bool Load(DesignForm& form, Reporter& reporter);
    // Accept: validate, recalculate, show the generator resistance in its entry.
    bool Accept(DesignForm& form, Dialogs& dialogs, Reporter& reporter);
    // An adjust button: validate, step the value, show it, recalculate.
    bool Adjust(DesignForm& form, Dialogs& dialogs, Reporter& reporter, Adjustment which);
    // The generator resistance typed: at least 1 mohm sets the multiplier and recalculates; a
    // smaller value is ignored. Returns whether a recalculation ran.
    bool GeneratorResistanceEntered(DesignForm& form, Dialogs& dialogs, Reporter& reporter);
    // The generator spinner moved: 0.1 per step into its entry, multiplier = entry / 20.
    bool GeneratorSpun(DesignForm& form, Dialogs& dialogs, Reporter& reporter, int position);
    // The intermediate spinner's entry changed: it becomes the intermediate entry, recalculate.
    bool IntermediateSpun(DesignForm& form, Dialogs& dialogs, Reporter& reporter);

    // ComponentCalculations and SetupLadder, as before a file is written or another screen
    // opens. Where that changed the design, the rest of the results follow in silence, so that
    // every view describes the design as it now is.
    bool RecomputeNetwork(Reporter& reporter);
    // ValidateInputs first: Print, Write Quarn, Exit.
    bool ValidateAndRecompute(DesignForm& form, Dialogs& dialogs, Reporter& reporter);

    // The large plot's redraw: the grid, a sweep and the readout's analyses of the ladder as it
    // stands (nudged parts kept).
    bool SweepAsLaidOut(Reporter& reporter);
    // Changes C3 or L2 and lays the ladder out again; the inductor's up button also sweeps. A
    // value that would leave the single-precision range is reported and kept. Returns whether
    // the part changed; the caller then redraws with SweepAsLaidOut.
    bool NudgePart(Nudge nudge, Reporter& reporter);

    // The large plot's knobs: sets C1, C2, L1 or L2 to its design value times `factor` (C2 with
    // C3 where the two share the midpoint) and lays the ladder out again, as NudgePart does;
    // the caller then redraws with SweepAsLaidOut. The design values are kept until the next
    // recalculation. Returns whether the part changed.
    bool TunePart(TankPart part, double factor, Reporter& reporter);
    // A part's value over its design value: 1 for a part neither tuned nor nudged.
    double TuningFactor(TankPart part) const;
    // Whether a knob or a nudge has moved any part from its design value.
    bool Tuned() const;
    // Every part back to its design value, the nudged C3 and L2 too; the caller redraws.
    void RestoreDesignValues();

  private:
    using PartValues = std::array<float, kTankParts>;
    static PartValues PartValuesOf(const DesignState& state);
    void KeepDesignValues();
    void SettleChangedParts();
    bool Recalculate(DesignForm& form, Dialogs& dialogs, Reporter& reporter);
    void Settle(DesignResults results);
    void SettleRest();
    void SettleLosses();
    void SettleBandPlan();
    void SettleLoadRange();

    std::unique_ptr<DesignState> state_;
    DesignResults results_;
    std::optional<TankQ> lossQ_;
    std::array<std::optional<WoundCoil>, 2> wound_;
    bool useWoundQ_ = false;
    std::optional<BandPlanInputs> bandInputs_;
    std::optional<LoadRangeRequest> loadRequest_;
    std::optional<PartValues> designValues_;  // from before the first knob step or nudge
};

}  // namespace varo
