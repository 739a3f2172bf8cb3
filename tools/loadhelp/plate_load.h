#pragma once

#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/field_form.h"

namespace varo {

// The class-of-operation options, numbered as on the screen; None when no option is selected.
enum class ClassOption { None = 0, ClassA = 1, ClassAB = 2, ClassB = 3, ClassC = 4 };

// The helper's own results; the design keeps only what Accept copies into plateR.
struct LoadHelpState {
    float classFactor = 0;
    float newPlateLoad = 0;
};

// The helper screen's entries and the labels its logic writes.
enum class LoadHelpField { Voltage, Power, CurrentLoad, NewLoad, LimitNote };

// The control name each field carries on the screen.
constexpr std::string_view ControlName(LoadHelpField field) {
    switch (field) {
        case LoadHelpField::Voltage:
            return "txtVoltage";
        case LoadHelpField::Power:
            return "txtPower";
        case LoadHelpField::CurrentLoad:
            return "lblCurrentLoad";
        case LoadHelpField::NewLoad:
            return "lblLoad";
        case LoadHelpField::LimitNote:
            return "lblLoadNote";
    }
    return {};
}

// What the plate-load logic needs from its screen beside the fields. Setting an entry's text
// must not count as the user editing it, or the recalculation would clear the class it was run
// for.
class LoadHelpForm : public FieldForm<LoadHelpField> {
  public:
    virtual ClassOption SelectedClass() const = 0;
    virtual void ClearClassSelection() = 0;
    virtual void SetAcceptEnabled(bool /*enabled*/) {}       // cmdAccept
    virtual void SetClassChoiceEnabled(bool /*enabled*/) {}  // fraClass and its options
};

// A note when a plate load lies below what the design screen takes; empty otherwise.
std::string PlateLoadLimitNote(float ohms);

// K of a class option: 1.3, 1.6, 1.8, and 2.0 for class C or no choice.
float ClassFactorOf(ClassOption option);

// Reads and clamps swing and power, takes K from the options and computes the new plate load
// swing^2 / (K x P). Writes peakSwing and rfPower back into the design.
void RecalculateLoad(DesignState& state, LoadHelpState& help, LoadHelpForm& form, Dialogs& dialogs);

// Screen load: the current and new load texts, and the swing and power entries when known.
void ShowLoadHelpEntry(const DesignState& state, LoadHelpForm& form);

// A class option clicked (the form already shows it selected).
void OnClassOptionClicked(DesignState& state, LoadHelpState& help, LoadHelpForm& form,
                          Dialogs& dialogs, ClassOption option);

// Any edit of the swing or power entry: the class must be chosen again before Accept.
void OnLoadEntryEdited(LoadHelpForm& form);

// `cmdAccept`: recalculates and takes the new load as the design's plate load.
void AcceptPlateLoad(DesignState& state, LoadHelpState& help, LoadHelpForm& form, Dialogs& dialogs);

}  // namespace varo
