#include "model/design_inputs.h"

#include <string>

#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"

namespace varo {

namespace {

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
    DesignField::Plate, kLeastPlateLoad, ".1",
    "The minimum input termination is .1 ohm and has been changed to that value"};
constexpr EntryLimit kFrequencyLimit{
    DesignField::Frequency, 10000.0f, "10k",
    "The minimum operating frequency is 10k Hz and has been changed to that value"};
constexpr EntryLimit kQLimit{
    DesignField::Q, kMinimumQ, "1.001",
    "The minimum PI-net Q value to be entered is 1.001 and has been changed to that value"};

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

}  // namespace

float ReadField(const DesignForm& form, DesignField field) {
    std::string text = form.Text(field);
    return ParseEngNumber(text);
}

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

}  // namespace varo
