#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/field_form.h"

namespace varo {

// The gauge value that means "no wire gauge entered".
inline constexpr float kNoGauge = -100.0f;

// Percent-fill result colours (0xBBGGRR): light red from 100 % up, light grey below.
inline constexpr unsigned kFillWarningColour = 0x6666FF;
inline constexpr unsigned kFillNormalColour = 0xEEEEEE;

inline constexpr std::int16_t kInches = 1;
inline constexpr std::int16_t kCentimetres = 2;

// The winding measures (always in inches, whatever unit is shown) and the results of one
// calculation.
struct CoilState {
    float coilDiameter = 0;           // 0 = not given
    float coilLength = 0;             // 0 = not given
    float coilTurns = 0;              // 0 = not given
    std::int16_t unitSystem = 0;      // 1 inches, 2 centimetres; 0 is shown as inches
    std::int16_t inductorChoice = 0;  // 1 = L1, 2 = L2
    float targetInductance = 0;       // henries
    float actualGauge = kNoGauge;

    float turnsPerInch = 0;
    float wireLengthInches = 0;
    float wireLengthFeet = 0;
    float quarterWaveKHz = 0;
    float criticalGauge = 0;
    float wireDiameter = 0;  // inches; 0 without a gauge
    float wireArea = 0;      // square inches
    float wireResistance = 0;
    float percentFill = 0;

    bool unitsLocked = false;    // the unit choice is fixed once a calculation has run
    bool fillMarkedRed = false;  // the wire does not fit the pitch
};

// The inductor screen's entries, and the result label the calculation itself empties.
enum class CoilField { Diameter, Length, Turns, Gauge, WireDiameterResult };

// The control name each field carries on the screen.
constexpr std::string_view ControlName(CoilField field) {
    switch (field) {
        case CoilField::Diameter:
            return "txtFormDiameter";
        case CoilField::Length:
            return "txtFormLength";
        case CoilField::Turns:
            return "txtTurns";
        case CoilField::Gauge:
            return "txtActualGauge";
        case CoilField::WireDiameterResult:
            return "Label15";
    }
    return {};
}

// What the coil calculation needs from its screen beside the fields.
class CoilForm : public FieldForm<CoilField> {
  public:
    virtual void FocusGaugeEntry() {}
};

bool IsCentimetreMode(const CoilState& state);

// An entry's text changed: parse it into its field; a diameter or length typed in centimetres is
// held in inches. The turns and the gauge have no unit; a result label is no entry.
void OnWindingEntryChanged(CoilState& state, CoilField entry, std::string text);

// Solves the missing winding measure from the other two and the target inductance, then derives
// pitch, wire length, critical gauge and, with a gauge, wire diameter and percent fill. Shows at
// most one message; returns true when it ran through without one.
bool ComputeCoil(CoilState& state, CoilForm& form, Dialogs& dialogs);

// Forgets the winding, the target and every result. The unit choice and its lock stay.
void ClearCoil(CoilState& state);

}  // namespace varo
