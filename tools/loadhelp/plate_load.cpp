#include "tools/loadhelp/plate_load.h"

#include "core/fault.h"
#include "core/numtext.h"
#include "model/design_inputs.h"

namespace varo {

namespace {

// An entry held between two limits, each with the message that names it.
struct ClampedEntry {
    float minimum;
    std::string_view belowMessage;
    float maximum;
    std::string_view aboveMessage;
};

constexpr ClampedEntry kSwingEntry{
    1.0f, "Voltage level has been reset to the minimum-allowed value of 1 volt", 100000.0f,
    "Maximum peak voltage swing is 100k volts and has been changed to that value"};
constexpr ClampedEntry kPowerEntry{
    1.0f, "Power level has been reset to the minimum-allowed value of 1 watt", 10000000.0f,
    "Power level has been reset to the maximum-allowed value of 10000k watts"};

std::string LoadText(std::string_view lead, float ohms) {
    return std::string(lead) + FormatNumber(ohms) + " ohms";
}

// The new load, and beside it what the design screen would make of it.
void ShowNewLoad(LoadHelpForm& form, float ohms) {
    form.SetText(LoadHelpField::NewLoad, LoadText("New plate load: ", ohms));
    form.SetText(LoadHelpField::LimitNote, PlateLoadLimitNote(ohms));
}

// Parses the entry and clamps it. The lower test is written as "not at least" so that a value
// that is no number at all takes the minimum.
float ReadClamped(std::string text, const ClampedEntry& entry, Dialogs& dialogs) {
    float value = ParseEngNumber(text);
    if (!(value >= entry.minimum)) {
        value = entry.minimum;
        dialogs.ShowMessage(entry.belowMessage);
    }
    if (value > entry.maximum) {
        value = entry.maximum;
        dialogs.ShowMessage(entry.aboveMessage);
    }
    return value;
}

float PlateLoad(float swing, float classFactor, float power) {
    const double swingSquared = static_cast<double>(swing) * swing;
    return StoreSingle(CheckedDivide(swingSquared, static_cast<double>(classFactor) * power));
}

}  // namespace

float ClassFactorOf(ClassOption option) {
    switch (option) {
        case ClassOption::ClassA:
            return 1.3f;
        case ClassOption::ClassAB:
            return 1.6f;
        case ClassOption::ClassB:
            return 1.8f;
        case ClassOption::ClassC:
        case ClassOption::None:
            break;
    }
    return 2.0f;
}

void RecalculateLoad(DesignState& state, LoadHelpState& help, LoadHelpForm& form,
                     Dialogs& dialogs) {
    state.peakSwing = ReadClamped(form.Text(LoadHelpField::Voltage), kSwingEntry, dialogs);
    form.SetText(LoadHelpField::Voltage, FormatNumber(state.peakSwing));
    state.rfPower = ReadClamped(form.Text(LoadHelpField::Power), kPowerEntry, dialogs);
    form.SetText(LoadHelpField::Power, FormatNumber(state.rfPower));
    help.classFactor = ClassFactorOf(form.SelectedClass());
    form.SetText(LoadHelpField::Power, FormatNumber(state.rfPower));
    try {
        help.newPlateLoad = PlateLoad(state.peakSwing, help.classFactor, state.rfPower);
    } catch (const ArithmeticFault& fault) {
        // Unreachable with the limits above; kept so a future change cannot crash the screen.
        dialogs.ShowMessage(std::string("The plate load could not be computed: ") + fault.what() +
                            ".");
        return;
    }
    ShowNewLoad(form, help.newPlateLoad);
}

std::string PlateLoadLimitNote(float ohms) {
    if (!(ohms < kLeastPlateLoad)) return {};
    return "Below the design screen's least plate load, .1 ohms: the design cannot be worked "
           "out with it.";
}

void ShowLoadHelpEntry(const DesignState& state, LoadHelpForm& form) {
    form.SetText(LoadHelpField::CurrentLoad, LoadText("Current plate load: ", state.plateR));
    ShowNewLoad(form, state.plateR);
    if (state.peakSwing > 0) form.SetText(LoadHelpField::Voltage, FormatNumber(state.peakSwing));
    if (state.rfPower > 0) form.SetText(LoadHelpField::Power, FormatNumber(state.rfPower));
}

void OnClassOptionClicked(DesignState& state, LoadHelpState& help, LoadHelpForm& form,
                          Dialogs& dialogs, ClassOption option) {
    help.classFactor = ClassFactorOf(option);
    RecalculateLoad(state, help, form, dialogs);
    ShowNewLoad(form, help.newPlateLoad);
    form.SetAcceptEnabled(true);
}

void OnLoadEntryEdited(LoadHelpForm& form) {
    form.SetClassChoiceEnabled(true);
    form.ClearClassSelection();
    form.SetAcceptEnabled(false);
    form.SetText(LoadHelpField::NewLoad, "");
    form.SetText(LoadHelpField::LimitNote, "");
}

void AcceptPlateLoad(DesignState& state, LoadHelpState& help, LoadHelpForm& form,
                     Dialogs& dialogs) {
    RecalculateLoad(state, help, form, dialogs);
    state.plateR = help.newPlateLoad;
}

}  // namespace varo
