#include "screens/design/design_inputs.h"

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
    std::string_view control;
    float limit;
    std::string_view limitText;
    std::string_view message;
};

constexpr EntryLimit kLoadLimit{
    "txtNominalLoad", 0.1f, ".1",
    "Minimum output load has been changed to minimum-allowed value of .1 ohms"};
constexpr EntryLimit kPlateLimit{
    "txtPlate", 0.1f, ".1",
    "The minimum input termination is .1 ohm and has been changed to that value"};
constexpr EntryLimit kFrequencyLimit{
    "txtFrequency", 10000.0f, "10k",
    "The minimum operating frequency is 10k Hz and has been changed to that value"};
constexpr EntryLimit kQLimit{
    "txtQ", kMinimumQ, "1.001",
    "The minimum PI-net Q value to be entered is 1.001 and has been changed to that value"};

// Reads an entry with the engineering parser; the caller decides how to show it back.
float ReadField(const DesignForm& form, std::string_view control) {
    std::string text = form.FieldText(control);
    return ParseEngNumber(text);
}

void RaiseToLimit(float& value, float limit, DesignForm& form, std::string_view control,
                  std::string_view fieldText, Dialogs& dialogs, std::string_view message) {
    value = limit;
    form.SetFieldText(control, fieldText);
    dialogs.ShowMessage(message);
}

// Reads the entry, shows it back with `format` (the Q entry passes none and keeps the user's
// text), then applies the lower limit.
void ValidateEntry(float& value, const EntryLimit& entry, std::string (*format)(float),
                   DesignForm& form, Dialogs& dialogs) {
    value = ReadField(form, entry.control);
    if (format) form.SetFieldText(entry.control, format(value));
    if (value < entry.limit)
        RaiseToLimit(value, entry.limit, form, entry.control, entry.limitText, dialogs,
                     entry.message);
}

void ValidateIntermediate(DesignState& state, DesignForm& form, Dialogs& dialogs) {
    state.intermediateR = ReadField(form, "txtIntermediate");
    form.SetFieldText("txtIntermediate", FormatNumber(state.intermediateR));
    if (state.intermediateR <= 0)
        RaiseToLimit(state.intermediateR, state.loadR, form, "txtIntermediate",
                     SignedText(state.loadR), dialogs,
                     "The intermediate resistance has been changed from zero to" +
                         PlainText(state.loadR) + "ohms");
    if (state.intermediateR < state.loadR)
        RaiseToLimit(state.intermediateR, state.loadR, form, "txtIntermediate",
                     SignedText(state.loadR), dialogs,
                     "Minimum allowed intermediate resistance has been changed upward to be the "
                     "same as the load");
    // plateR still holds the previous design's value here: txtPlate is read afterwards.
    if (state.intermediateR > state.plateR)
        RaiseToLimit(state.intermediateR, state.plateR, form, "txtIntermediate",
                     SignedText(state.plateR), dialogs,
                     "The intermediate resistance has been changed downward to be the same as the "
                     "input");
}

std::string FaultMessage(const ArithmeticFault& fault) {
    return std::string("The network could not be analysed: ") + fault.what() +
           ". Please check the entries.";
}

// Steps one value by 1 %, computed in double and stored single; returns the field to show it in.
std::string_view ApplyAdjustment(DesignState& state, Adjustment which) {
    switch (which) {
        case Adjustment::QMinus:
            state.piQ = StoreSingle(state.piQ / kAdjustStep);
            if (state.piQ < kMinimumQ) state.piQ = kMinimumQ;
            return "txtQ";
        case Adjustment::QPlus:
            state.piQ = StoreSingle(state.piQ * kAdjustStep);
            return "txtQ";
        case Adjustment::IntermediateMinus:
            state.intermediateR = StoreSingle(state.intermediateR / kAdjustStep);
            return "txtIntermediate";
        case Adjustment::IntermediatePlus:
            state.intermediateR = StoreSingle(state.intermediateR * kAdjustStep);
            return "txtIntermediate";
    }
    return "txtQ";
}

float AdjustedValue(const DesignState& state, Adjustment which) {
    const bool isQ = which == Adjustment::QMinus || which == Adjustment::QPlus;
    return isQ ? state.piQ : state.intermediateR;
}

std::string GeneratorResistanceText(const DesignState& state) {
    return FormatNumber(StoreSingle(static_cast<double>(state.genMultiplier) * state.plateR));
}

}  // namespace

bool RunGuarded(Dialogs& dialogs, const std::function<void()>& step) {
    try {
        step();
        return true;
    } catch (const ArithmeticFault& fault) {
        dialogs.ShowMessage(FaultMessage(fault));
        return false;
    }
}

void ShowDesignInputs(const DesignState& state, DesignForm& form) {
    form.SetFieldText("txtFrequency", FormatHz(state.frequency));
    form.SetFieldText("txtPlate", FormatNumber(state.plateR));
    form.SetFieldText("txtNominalLoad", FormatNumber(state.loadR));
    form.SetFieldText("txtQ", PlainText(state.piQ));
    form.SetFieldText("txtIntermediate", FormatNumber(state.intermediateR));
}

void ValidateInputs(DesignState& state, DesignForm& form, Dialogs& dialogs) {
    ValidateEntry(state.loadR, kLoadLimit, FormatNumber, form, dialogs);
    ValidateIntermediate(state, form, dialogs);
    ValidateEntry(state.plateR, kPlateLimit, FormatNumber, form, dialogs);
    ValidateEntry(state.frequency, kFrequencyLimit, FormatHz, form, dialogs);
    ValidateEntry(state.piQ, kQLimit, nullptr, form, dialogs);
}

bool RecomputeNetwork(DesignState& state, Dialogs& dialogs, Reporter& reporter) {
    bool calculated = true;
    const bool ranThrough = RunGuarded(dialogs, [&] {
        calculated = ComponentCalculations(state, reporter);
        SetupLadder(state);
    });
    return calculated && ranThrough;
}

bool RecalculateDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                       DesignRedraw& redraw) {
    ValidateInputs(state, form, dialogs);
    bool succeeded = RecomputeNetwork(state, dialogs, reporter);
    bool swept = true;
    succeeded &= RunGuarded(dialogs, [&] {
        swept = SweepRoutine(state, reporter);
        ComputeSectionPhases(state);
    });
    // Redraw even after a fault, so the screen matches the state it now holds.
    succeeded &= RunGuarded(dialogs, [&] { redraw.DrawSchematic(); });
    succeeded &= RunGuarded(dialogs, [&] { redraw.ShowStresses(); });
    succeeded &= RunGuarded(dialogs, [&] { redraw.DrawSmallPlot(); });
    return succeeded && swept;
}

bool AdjustDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignRedraw& redraw, Adjustment which) {
    ValidateInputs(state, form, dialogs);
    std::string_view control;
    if (!RunGuarded(dialogs, [&] { control = ApplyAdjustment(state, which); })) return false;
    form.SetFieldText(control, FormatNumber(AdjustedValue(state, which)));
    return RecalculateDesign(state, form, dialogs, reporter, redraw);
}

bool AcceptDesign(DesignState& state, DesignForm& form, Dialogs& dialogs, Reporter& reporter,
                  DesignRedraw& redraw) {
    const bool succeeded = RecalculateDesign(state, form, dialogs, reporter, redraw);
    std::string text;
    if (!RunGuarded(dialogs, [&] { text = GeneratorResistanceText(state); })) return false;
    form.SetFieldText("txtRinputMult", text);
    return succeeded;
}

bool OnGeneratorResistanceChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                  Reporter& reporter, DesignRedraw& redraw) {
    const float ohms = ReadField(form, "txtRinputMult");
    if (ohms < kMinimumGeneratorOhms) return false;
    if (!RunGuarded(dialogs,
                    [&] { state.genMultiplier = StoreSingle(CheckedDivide(ohms, state.plateR)); }))
        return false;
    RecalculateDesign(state, form, dialogs, reporter, redraw);
    return true;
}

bool OnGeneratorSpinChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                            Reporter& reporter, DesignRedraw& redraw, int position) {
    form.SetFieldText("txtRinputMultEntry", PlainText(position * kSpinStep));
    const float entry = ReadField(form, "txtRinputMultEntry");
    std::string text;
    if (!RunGuarded(dialogs, [&] {
            state.genMultiplier = StoreSingle(entry / kSpinDivisor);
            text = GeneratorResistanceText(state);
        }))
        return false;
    form.SetFieldText("txtRinputMult", text);
    RecalculateDesign(state, form, dialogs, reporter, redraw);
    return true;
}

bool OnIntermediateSpinTextChanged(DesignState& state, DesignForm& form, Dialogs& dialogs,
                                   Reporter& reporter, DesignRedraw& redraw) {
    std::string text = form.FieldText("txtUpDown1");
    form.SetFieldText("txtIntermediate", text);
    state.intermediateR = ParseEngNumber(text);
    return RecalculateDesign(state, form, dialogs, reporter, redraw);
}

void OnDesignEntryEdited(DesignForm& form) {
    form.EnableButton("cmdDesign");
}

}  // namespace varo
