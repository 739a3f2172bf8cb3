#pragma once

#include <array>
#include <string_view>

#include "platform/field_form.h"

namespace varo {

// The design screen's text fields: the five design entries, the generator entries and the
// spinners' buddy entries.
enum class DesignField {
    Frequency,
    Plate,
    NominalLoad,
    Q,
    Intermediate,
    GeneratorOhms,          // generator resistance in ohms
    GeneratorSpinEntry,     // UpDown3's buddy
    IntermediateSpinEntry,  // UpDown1's buddy
    SpareSpinEntry,         // UpDown2's buddy, without a role of its own
};

inline constexpr std::array kDesignFields = {
    DesignField::Frequency,          DesignField::Plate,
    DesignField::NominalLoad,        DesignField::Q,
    DesignField::Intermediate,       DesignField::GeneratorOhms,
    DesignField::GeneratorSpinEntry, DesignField::IntermediateSpinEntry,
    DesignField::SpareSpinEntry};

// The control name each field carries on the screen.
constexpr std::string_view ControlName(DesignField field) {
    switch (field) {
        case DesignField::Frequency:
            return "txtFrequency";
        case DesignField::Plate:
            return "txtPlate";
        case DesignField::NominalLoad:
            return "txtNominalLoad";
        case DesignField::Q:
            return "txtQ";
        case DesignField::Intermediate:
            return "txtIntermediate";
        case DesignField::GeneratorOhms:
            return "txtRinputMult";
        case DesignField::GeneratorSpinEntry:
            return "txtRinputMultEntry";
        case DesignField::IntermediateSpinEntry:
            return "txtUpDown1";
        case DesignField::SpareSpinEntry:
            return "txtUpDown2";
    }
    return {};
}

// What the design screen's logic needs from the screen beside its fields: offering Accept.
// The Qt screen implements it over its widgets; tests and the command line over texts.
class DesignForm : public FieldForm<DesignField> {
  public:
    virtual void EnableAccept() {}
};

}  // namespace varo
