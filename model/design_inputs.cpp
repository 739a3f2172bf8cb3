#include "model/design_inputs.h"

#include <string>

#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"

namespace varo {

namespace {

constexpr float kMinimumQ = 1.001f;
constexpr double kAdjustStep = 1.01;
constexpr double kMinimumGeneratorOhms = 0.001;
constexpr double kSpinStep = 0.1;
constexpr double kSpinDivisor = 20.0;

// An entry with a lower limit: below it the value becomes the limit, the field shows
// `limitText` and `message` says so.
struct EntryLimit {
    DesignField field;
    float limit;
    std::string_view limitText;
    std::string_view message;
};

constexpr EntryLimit kLoadLimit{
    DesignField::NominalLoad, 0.1f, ".1",
    "Minimum output load has been changed to minimum-allowed value of .1 ohms"};
constexpr EntryLimit kPlateLimit{
    DesignField::Plate, 0.1f, ".1",
    "The minimum input termination is .1 ohm and has been changed to that value"};
constexpr EntryLimit kFrequencyLimit{
    DesignField::Frequency, 10000.0f, "10k",
    "The minimum operating frequency is 10k Hz and has been changed to that value"};
constexpr EntryLimit kQLimit{
    DesignField::Q, kMinimumQ, "1.001",
    "The minimum PI-net Q value to be entered is 1.001 and has been changed to that value"};

// Reads an entry with the engineering parser; the caller decides how to show it back.
float ReadField(const DesignForm& form, DesignField field) {
    std::string text = form.Text(field);
    return ParseEngNumber(text);
}

void RaiseToLimit(float& value, float limit, DesignForm& form, DesignField field,
                  std::string_view fieldText, Dialogs& dialogs, std::string_view message) {
    value = limit;
    form.SetText(field, fieldText);
    dialogs.ShowMessage(message);
}

// Reads the entry, shows it back with `format` (the Q entry passes none and keeps the user's
// text), then applies the lower limit.
void ValidateEntry(float& value, const EntryLimit& entry, std::string (*format)(float),
                   DesignForm& form, Dialogs& dialogs) {
    value = ReadField(form, entry.field);
    if (format) form.SetText(entry.field, format(value));
    if (value < entry.limit)
        RaiseToLimit(value, entry.limit, form, entry.field, entry.limitText, dialogs,
                     entry.message);
}

void ValidateIntermediate(DesignState& state, DesignForm& form, Dialogs& dialogs) {
    constexpr DesignField kField = DesignField::Intermediate;
    state.intermediateR = ReadField(form, kField);
    form.SetText(kField, FormatNumber(state.intermediateR));
    if (state.intermediateR <= 0)
        RaiseToLimit(state.intermediateR, state.loadR, form, kField, SignedText(state.loadR),
                     dialogs,
                     "The intermediate resistance has been changed from zero to" +
                         PlainText(state.loadR) + "ohms");
    if (state.intermediateR < state.loadR)
        RaiseToLimit(state.intermediateR, state.loadR, form, kField, SignedText(state.loadR),
                     dialogs,
                     "Minimum allowed intermediate resistance has been changed upward to be the "
                     "same as the load");
    // plateR still holds the previous design's value here: txtPlate is read afterwards.
    if (state.intermediateR > state.plateR)
        RaiseToLimit(state.intermediateR, state.plateR, form, kField, SignedText(state.plateR),
                     dialogs,
                     "The intermediate resistance has been changed downward to be the same as the "
                     "input");
}

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

float AdjustedValue(const DesignState& state, Adjustment which) {
    const bool isQ = which == Adjustment::QMinus || which == Adjustment::QPlus;
    return isQ ? state.piQ : state.intermediateR;
}

std::string GeneratorResistanceText(const DesignState& state) {
    return FormatNumber(StoreSingle(static_cast<double>(state.genMultiplier) * state.plateR));
}

}  // namespace

void ShowDesignInputs(const DesignState& state, DesignForm& form) {
    form.SetText(DesignField::Frequency, FormatHz(state.frequency));
    form.SetText(DesignField::Plate, FormatNumber(state.plateR));
    form.SetText(DesignField::NominalLoad, FormatNumber(state.loadR));
    form.SetText(DesignField::Q, PlainText(state.piQ));
    form.SetText(DesignField::Intermediate, FormatNumber(state.intermediateR));
}

void ValidateInputs(DesignState& state, DesignForm& form, Dialogs& dialogs) {
    ValidateEntry(state.loadR, kLoadLimit, FormatNumber, form, dialogs);
    ValidateIntermediate(state, form, dialogs);
    ValidateEntry(state.plateR, kPlateLimit, FormatNumber, form, dialogs);
    ValidateEntry(state.frequency, kFrequencyLimit, FormatHz, form, dialogs);
    ValidateEntry(state.piQ, kQLimit, nullptr, form, dialogs);
}

bool RecalculateDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       DesignView& view) {
    ValidateInputs(state, form, dialogs);
    DesignResults results;
    const bool succeeded = CalculateDesign(state, reporter, results);
    if (const auto q = view.LossQ()) results.losses = TankLossesOf(state, *q);
    view.ShowResults(results);
    return succeeded;
}

void LoadDesignScreen(DesignState& state, DesignForm& form, Reporter& reporter, DesignView& view) {
    ShowDesignInputs(state, form);
    try {
        form.SetText(DesignField::GeneratorOhms, GeneratorResistanceText(state));
    } catch (const ArithmeticFault&) {
        // A multiplier out of range leaves the entry as it was until Accept reports on it.
    }
    DesignResults results = LoadDesignResults(state, reporter);
    if (const auto q = view.LossQ()) results.losses = TankLossesOf(state, *q);
    view.ShowResults(results);
}

bool AdjustDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignView& view, Adjustment which) {
    ValidateInputs(state, form, dialogs);
    DesignField field = DesignField::Q;
    if (!RunGuarded(reporter, [&] { field = ApplyAdjustment(state, which); })) return false;
    form.SetText(field, FormatNumber(AdjustedValue(state, which)));
    return RecalculateDesign(state, form, dialogs, reporter, view);
}

bool AcceptDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignView& view) {
    const bool succeeded = RecalculateDesign(state, form, dialogs, reporter, view);
    std::string text;
    if (!RunGuarded(reporter, [&] { text = GeneratorResistanceText(state); })) return false;
    form.SetText(DesignField::GeneratorOhms, text);
    return succeeded;
}

bool OnGeneratorResistanceChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                  Reporter& reporter, DesignView& view) {
    const float ohms = ReadField(form, DesignField::GeneratorOhms);
    if (ohms < kMinimumGeneratorOhms) return false;
    if (!RunGuarded(reporter,
                    [&] { state.genMultiplier = StoreSingle(CheckedDivide(ohms, state.plateR)); }))
        return false;
    RecalculateDesign(state, form, dialogs, reporter, view);
    return true;
}

bool OnGeneratorSpinChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                            Reporter& reporter, DesignView& view, int position) {
    form.SetText(DesignField::GeneratorSpinEntry, PlainText(position * kSpinStep));
    const float entry = ReadField(form, DesignField::GeneratorSpinEntry);
    std::string text;
    if (!RunGuarded(reporter, [&] {
            state.genMultiplier = StoreSingle(entry / kSpinDivisor);
            text = GeneratorResistanceText(state);
        }))
        return false;
    form.SetText(DesignField::GeneratorOhms, text);
    RecalculateDesign(state, form, dialogs, reporter, view);
    return true;
}

bool OnIntermediateSpinTextChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                   Reporter& reporter, DesignView& view) {
    std::string text = form.Text(DesignField::IntermediateSpinEntry);
    form.SetText(DesignField::Intermediate, text);
    state.intermediateR = ParseEngNumber(text);
    return RecalculateDesign(state, form, dialogs, reporter, view);
}

void OnDesignEntryEdited(DesignForm& form) {
    form.EnableAccept();
}

}  // namespace varo
