#include "model/design.h"

#include <string>
#include <vector>

#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"
#include "model/design_inputs.h"

namespace varo {

namespace {

constexpr double kAdjustStep = 1.01;
constexpr double kMinimumGeneratorOhms = 0.001;
constexpr double kSpinStep = 0.1;
constexpr double kSpinDivisor = 20.0;
constexpr double kNudgeFactor = 1.03;

// Steps one value by 1 %, computed in double and stored single; returns the field to show it in.
DesignField ApplyAdjustment(DesignState& state, Adjustment which) {
    switch (which) {
        case Adjustment::QMinus:
            state.piQ = StoreSingle(state.piQ / kAdjustStep);
            if (state.piQ < kMinimumQ) state.piQ = kMinimumQ;
            return DesignField::Q;
        case Adjustment::QPlus:
            state.piQ = StoreSingle(state.piQ * kAdjustStep);
            return DesignField::Q;
        case Adjustment::IntermediateMinus:
            state.intermediateR = StoreSingle(state.intermediateR / kAdjustStep);
            return DesignField::Intermediate;
        case Adjustment::IntermediatePlus:
            state.intermediateR = StoreSingle(state.intermediateR * kAdjustStep);
            return DesignField::Intermediate;
    }
    return DesignField::Q;
}

std::string GeneratorResistanceText(const DesignState& state) {
    return FormatNumber(StoreSingle(static_cast<double>(state.genMultiplier) * state.plateR));
}

}  // namespace

Design::Design() : state_(std::make_unique<DesignState>()) {
    InitialiseConstants(*state_);
}

void Design::SetLossQ(std::optional<TankQ> q) {
    lossQ_ = q;
    SettleLosses();
    SettleBandPlan();
    SettleLoadRange();
}

void Design::Settle(DesignResults results) {
    results_ = std::move(results);
    designValues_.reset();
    SettleLosses();
    SettleBandPlan();
    SettleLoadRange();
}

void Design::SetBandPlanInputs(std::optional<BandPlanInputs> inputs) {
    bandInputs_ = std::move(inputs);
    SettleBandPlan();
    SettleLoadRange();
}

void Design::SetLoadRange(std::optional<LoadRangeRequest> request) {
    loadRequest_ = std::move(request);
    SettleLoadRange();
}

void Design::SettleLoadRange() {
    results_.loadRange.reset();
    if (!loadRequest_ || !LoadRangeProblems(*state_, *loadRequest_).empty()) return;
    const BandPlan* plan = results_.bandPlan ? &*results_.bandPlan : nullptr;
    results_.loadRange = AnalyzeLoadRequest(*state_, *loadRequest_, lossQ_.value_or(TankQ{}), plan);
}

void Design::SettleBandPlan() {
    results_.bandPlan.reset();
    if (!bandInputs_) return;
    BandPlanInputs inputs = *bandInputs_;
    inputs.q = lossQ_.value_or(TankQ{});
    if (BandPlanInputProblems(*state_, inputs).empty())
        results_.bandPlan = PlanBands(*state_, inputs);
}

void Design::SetWoundCoil(TankPart coil, std::optional<WoundCoil> wound) {
    wound_[coil == TankPart::L2 ? 1 : 0] = wound;
    SettleLosses();
}

const std::optional<WoundCoil>& Design::woundCoil(TankPart coil) const {
    return wound_[coil == TankPart::L2 ? 1 : 0];
}

void Design::UseWoundCoilQ(bool use) {
    useWoundQ_ = use;
    SettleLosses();
}

std::array<std::optional<double>, 2> Design::WoundCoilQ() const {
    std::array<std::optional<double>, 2> q;
    const float needed[2] = {state_->L1, state_->L2};
    for (int i = 0; i < 2; ++i) {
        if (!wound_[i] || wound_[i]->woundFor != needed[i]) continue;
        if (const auto built = AnalyzeCoil(wound_[i]->winding, state_->frequency)) q[i] = built->q;
    }
    return q;
}

void Design::SettleLosses() {
    results_.losses.reset();
    if (!lossQ_) return;
    TankQ q = *lossQ_;
    if (useWoundQ_) q.wound = WoundCoilQ();
    results_.losses = TankLossesOf(*state_, q);
}

bool Design::Recalculate(DesignForm& form, Dialogs& dialogs, Reporter& reporter) {
    ValidateInputs(*state_, form, dialogs);
    DesignResults results;
    const bool succeeded = CalculateDesign(*state_, reporter, results);
    Settle(std::move(results));
    return succeeded;
}

bool Design::Load(DesignForm& form, Reporter& reporter) {
    ShowDesignInputs(*state_, form);
    try {
        form.SetText(DesignField::GeneratorOhms, GeneratorResistanceText(*state_));
    } catch (const ArithmeticFault&) {
        // A multiplier out of range leaves the entry as it was until Accept reports on it.
    }
    Settle(LoadDesignResults(*state_, reporter));
    return true;
}

bool Design::Accept(DesignForm& form, Dialogs& dialogs, Reporter& reporter) {
    const bool succeeded = Recalculate(form, dialogs, reporter);
    std::string text;
    if (!RunGuarded(reporter, [&] { text = GeneratorResistanceText(*state_); })) return false;
    form.SetText(DesignField::GeneratorOhms, text);
    return succeeded;
}

bool Design::Adjust(DesignForm& form, Dialogs& dialogs, Reporter& reporter, Adjustment which) {
    ValidateInputs(*state_, form, dialogs);
    DesignField field = DesignField::Q;
    if (!RunGuarded(reporter, [&] { field = ApplyAdjustment(*state_, which); })) return false;
    const float stepped = field == DesignField::Q ? state_->piQ : state_->intermediateR;
    form.SetText(field, FormatNumber(stepped));
    return Recalculate(form, dialogs, reporter);
}

bool Design::GeneratorResistanceEntered(DesignForm& form, Dialogs& dialogs, Reporter& reporter) {
    const float ohms = ReadField(form, DesignField::GeneratorOhms);
    if (ohms < kMinimumGeneratorOhms) return false;
    if (!RunGuarded(reporter, [&] {
            state_->genMultiplier = StoreSingle(CheckedDivide(ohms, state_->plateR));
        }))
        return false;
    Recalculate(form, dialogs, reporter);
    return true;
}

bool Design::GeneratorSpun(DesignForm& form, Dialogs& dialogs, Reporter& reporter, int position) {
    form.SetText(DesignField::GeneratorSpinEntry, PlainText(position * kSpinStep));
    const float entry = ReadField(form, DesignField::GeneratorSpinEntry);
    std::string text;
    if (!RunGuarded(reporter, [&] {
            state_->genMultiplier = StoreSingle(entry / kSpinDivisor);
            text = GeneratorResistanceText(*state_);
        }))
        return false;
    form.SetText(DesignField::GeneratorOhms, text);
    Recalculate(form, dialogs, reporter);
    return true;
}

bool Design::IntermediateSpun(DesignForm& form, Dialogs& dialogs, Reporter& reporter) {
    std::string text = form.Text(DesignField::IntermediateSpinEntry);
    form.SetText(DesignField::Intermediate, text);
    state_->intermediateR = ParseEngNumber(text);
    return Recalculate(form, dialogs, reporter);
}

bool Design::RecomputeNetwork(Reporter& reporter) {
    const bool succeeded = varo::RecomputeNetwork(*state_, reporter);
    const bool unchanged = DesignInputs::Of(*state_) == results_.inputs &&
                           ComponentValues::Of(*state_) == results_.components;
    if (!unchanged) SettleRest();
    return succeeded;
}

bool Design::ValidateAndRecompute(DesignForm& form, Dialogs& dialogs, Reporter& reporter) {
    ValidateInputs(*state_, form, dialogs);
    return RecomputeNetwork(reporter);
}

// The rest of the sequence from the network as it stands, without computing the parts again:
// what a recomputation that changed the design leaves the views to describe.
void Design::SettleRest() {
    DesignResults results;
    Reporter& silent = SilentReporter();
    RunGuarded(silent, [&] {
        SweepRoutine(*state_, silent);
        ComputeSectionPhases(*state_);
        results.phases = SectionPhases{state_->piPhase, state_->lPhase};
    });
    RunGuarded(silent, [&] { results.stresses = ShowStresses(*state_, silent); });
    RunGuarded(silent, [&] { SetupLadder(*state_); });
    results.gridFrequencies = BuildGridFrequencies(*state_);
    results.harmonics = AnalyzeHarmonicsAsLaidOut(*state_);
    results.components = ComponentValues::Of(*state_);
    results.inputs = DesignInputs::Of(*state_);
    results.sweep = SweepTable::Of(*state_);
    Settle(std::move(results));
}

bool Design::SweepAsLaidOut(Reporter& reporter) {
    results_.gridFrequencies = BuildGridFrequencies(*state_);
    bool swept = false;
    RunGuarded(reporter, [&] { swept = SweepRoutine(*state_, reporter); });
    results_.harmonics = AnalyzeHarmonicsAsLaidOut(*state_);
    results_.sweep = SweepTable::Of(*state_);
    const LoadRangeResult* range = results_.loadRange ? &*results_.loadRange : nullptr;
    results_.input = InputViewOf(*state_, results_.sweep.frequency, range);
    return swept;
}

bool Design::NudgePart(Nudge nudge, Reporter& reporter) {
    const bool capacitor = nudge == Nudge::CapacitorDown || nudge == Nudge::CapacitorUp;
    const bool up = nudge == Nudge::CapacitorUp || nudge == Nudge::InductorUp;
    float& part = capacitor ? state_->C3 : state_->L2;
    const double changed = up ? part * kNudgeFactor : part / kNudgeFactor;
    float nudged = 0;
    try {
        nudged = StoreSingle(changed);
    } catch (const ArithmeticFault&) {
        reporter.ShowMessage(std::string(capacitor ? "C3" : "L2") +
                             " cannot be changed any further; it keeps its value.");
        return false;
    }
    KeepDesignValues();
    part = nudged;
    SetupLadder(*state_);
    if (nudge == Nudge::InductorUp) RunGuarded(reporter, [&] { SweepRoutine(*state_, reporter); });
    SettleChangedParts();
    return true;
}

// A changed part stays in the design until the next recalculation: its values, the stresses it
// brings (worked out on a copy, the design's own figures untouched) and losses.
void Design::SettleChangedParts() {
    results_.components = ComponentValues::Of(*state_);
    auto scratch = std::make_unique<DesignState>(*state_);
    RunGuarded(SilentReporter(),
               [&] { results_.stresses = ShowStresses(*scratch, SilentReporter()); });
    SettleLosses();
}

Design::PartValues Design::PartValuesOf(const DesignState& state) {
    PartValues values{};
    for (int i = 0; i < kTankParts; ++i)
        values[i] = PartOf(state, static_cast<TankPart>(i));
    return values;
}

void Design::KeepDesignValues() {
    if (!designValues_) designValues_ = PartValuesOf(*state_);
}

bool Design::TunePart(TankPart part, double factor, Reporter& reporter) {
    // A design that could not be worked out has no value to turn from.
    const double designValue =
        designValues_ ? (*designValues_)[static_cast<int>(part)] : PartOf(*state_, part);
    if (!(designValue > 0)) return false;
    KeepDesignValues();
    // Where C3 stands beside C2 at the midpoint the two are one loading capacitor: the knob
    // turns both.
    std::vector<TankPart> parts{part};
    if (part == TankPart::C2 && state_->intermediateR > state_->loadR)
        parts.push_back(TankPart::C3);
    std::vector<float> tuned;
    for (const TankPart moved : parts) {
        try {
            tuned.push_back(StoreSingle((*designValues_)[static_cast<int>(moved)] * factor));
        } catch (const ArithmeticFault&) {
            reporter.ShowMessage(std::string(TankPartName(moved)) +
                                 " cannot be changed any further; it keeps its value.");
            return false;
        }
    }
    for (std::size_t i = 0; i < parts.size(); ++i)
        PartOf(*state_, parts[i]) = tuned[i];
    RunGuarded(reporter, [&] { SetupLadder(*state_); });
    SettleChangedParts();
    return true;
}

double Design::TuningFactor(TankPart part) const {
    const double value = PartOf(*state_, part);
    if (!designValues_) return 1;
    const double designValue = (*designValues_)[static_cast<int>(part)];
    return designValue != 0 ? value / designValue : 1;
}

bool Design::Tuned() const {
    return designValues_ && *designValues_ != PartValuesOf(*state_);
}

void Design::RestoreDesignValues() {
    if (!designValues_) return;
    for (int i = 0; i < kTankParts; ++i)
        PartOf(*state_, static_cast<TankPart>(i)) = (*designValues_)[i];
    RunGuarded(SilentReporter(), [&] { SetupLadder(*state_); });
    SettleChangedParts();
}

}  // namespace varo
