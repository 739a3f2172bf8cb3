#include "tools/inductor/coil.h"

#include <cmath>

#include "core/fault.h"
#include "core/numtext.h"

namespace varo {

namespace {

constexpr double kCentimetresPerInch = 2.54;
constexpr float kMaximumTurns = 1000.0f;
// Wheeler's single-layer formula in inches and microhenries; the 1e6 turns henries into them.
constexpr double kWheelerDiameterTerm = 1.8e7;  // 18 x 1e6
constexpr double kWheelerLengthTerm = 4e7;      // 40 x 1e6
constexpr double kWheelerHalfDiameter = 9e6;    // 9 x 1e6
constexpr double kPiForWire = 3.14159;
constexpr double kGaugeZeroDiameter = 0.327;  // inches; the diameter shrinks 10.2 times per 20
constexpr double kGaugeRatio = 10.2;
constexpr double kCopperOhmSquareInchPerFoot = 8.1e-6;
constexpr double kQuarterWaveKHzFeet = 246000.0;

constexpr std::string_view kNegativeLengthMessage =
    "For that diameter and turn specification,\r\nthe length is negative.";
constexpr std::string_view kTwoEntriesMessage =
    "We need exactly two entries; enter only two of these:\r\n   Diameter\r\n   Length\r\n"
    "   Number of turns";

enum class Solution { Solved, NothingToSolve, NegativeLength };

bool IsBlank(const std::string& text) {
    return text.find_first_not_of(' ') == std::string::npos;
}

// No gauge: the wire results are cleared so nothing from an earlier gauge shows through.
void ForgetGauge(CoilState& state, CoilForm& form) {
    state.actualGauge = kNoGauge;
    form.SetText(CoilField::WireDiameterResult, "");
    state.wireDiameter = 0;
    state.wireArea = 0;
    state.wireResistance = 0;
    state.percentFill = 0;
}

// Diameter and length are held in inches whatever unit they are typed in.
float HeldInInches(const CoilState& state, float shown) {
    return state.unitSystem == kCentimetres ? StoreSingle(shown / kCentimetresPerInch) : shown;
}

// A computed measure is shown in the display unit and read back from what is shown, so the value
// used from here on is exactly the displayed one.
void ShowComputedMeasure(CoilState& state, CoilForm& form, CoilField entry, double inches) {
    float shown = StoreSingle(inches);
    if (IsCentimetreMode(state)) shown = StoreSingle(shown * kCentimetresPerInch);
    form.SetText(entry, FormatNumber(shown));
    OnWindingEntryChanged(state, entry, form.Text(entry));
}

double TurnsFor(double henries, double diameter, double length) {
    return CheckedSqrt(CheckedDivide(
        henries * kWheelerLengthTerm * length + henries * kWheelerDiameterTerm * diameter,
        diameter * diameter));
}

double DiameterFor(double henries, double turns, double length) {
    const double microhenries = henries * 1e6;
    const double root = CheckedSqrt(81.0 * microhenries * microhenries +
                                    40.0 * turns * turns * length * 1e6 * henries);
    return CheckedDivide(henries * kWheelerHalfDiameter + root, turns * turns);
}

double LengthFor(double henries, double diameter, double turns) {
    return CheckedDivide(
        diameter * diameter * turns * turns - henries * kWheelerDiameterTerm * diameter,
        henries * kWheelerLengthTerm);
}

Solution SolveMissingMeasure(CoilState& state, CoilForm& form) {
    const double henries = state.targetInductance;
    const bool hasDiameter = state.coilDiameter > 0;
    const bool hasLength = state.coilLength > 0;
    const bool hasTurns = state.coilTurns > 0;
    if (hasDiameter && hasLength) {
        state.coilTurns = StoreSingle(TurnsFor(henries, state.coilDiameter, state.coilLength));
    } else if (hasLength && hasTurns) {
        ShowComputedMeasure(state, form, CoilField::Diameter,
                            DiameterFor(henries, state.coilTurns, state.coilLength));
    } else if (hasDiameter && hasTurns) {
        ShowComputedMeasure(state, form, CoilField::Length,
                            LengthFor(henries, state.coilDiameter, state.coilTurns));
        if (!(state.coilLength > 0)) return Solution::NegativeLength;
    } else {
        // Fewer than two measures: there is nothing to solve from.
        return Solution::NothingToSolve;
    }
    return Solution::Solved;
}

void ComputeWinding(CoilState& state) {
    state.turnsPerInch = StoreSingle(CheckedDivide(state.coilTurns, state.coilLength));
    const double circumference = kPiForWire * state.coilDiameter;
    const double pitch = CheckedDivide(1.0, state.turnsPerInch);
    state.wireLengthInches =
        StoreSingle(state.coilTurns * CheckedSqrt(circumference * circumference + pitch * pitch));
    state.wireLengthFeet = StoreSingle(state.wireLengthInches / 12.0);
    state.quarterWaveKHz = StoreSingle(CheckedDivide(kQuarterWaveKHzFeet, state.wireLengthFeet));
    // The gauge whose diameter equals the pitch, rounded down after adding 1.
    const double gauge = 20.0 * (CheckedLog(kGaugeZeroDiameter) + CheckedLog(state.turnsPerInch)) /
                             CheckedLog(kGaugeRatio) +
                         1.0;
    state.criticalGauge = StoreSingle(std::floor(gauge));
}

void ComputeWire(CoilState& state) {
    if (state.actualGauge != kNoGauge) {
        const double shrink = CheckedFinite(std::pow(kGaugeRatio, state.actualGauge / 20.0));
        state.wireDiameter = StoreSingle(CheckedDivide(kGaugeZeroDiameter, shrink));
        const double diameter = state.wireDiameter;
        state.wireArea = StoreSingle(std::atan(1.0) * diameter * diameter);
        state.wireResistance = StoreSingle(
            CheckedDivide(state.wireLengthFeet * kCopperOhmSquareInchPerFoot, state.wireArea));
    }
    state.percentFill =
        StoreSingle(static_cast<double>(state.wireDiameter) * 100.0 * state.turnsPerInch);
}

std::string TooManyTurnsMessage(float turns) {
    return "Turns = " + PlainText(turns) + "\r\n" + "We cannot accommodate greater than 1000 turns";
}

// The checks and calculations that can stop with a message; returns the message, or empty.
std::string RunCoilSteps(CoilState& state, CoilForm& form) {
    switch (SolveMissingMeasure(state, form)) {
        case Solution::NegativeLength:
            return std::string(kNegativeLengthMessage);
        case Solution::NothingToSolve:
            return std::string(kTwoEntriesMessage);
        case Solution::Solved:
            break;
    }
    if (state.coilTurns > kMaximumTurns) return TooManyTurnsMessage(state.coilTurns);
    ComputeWinding(state);
    ComputeWire(state);
    return {};
}

}  // namespace

bool IsCentimetreMode(const CoilState& state) {
    return state.unitSystem == kCentimetres;
}

void OnWindingEntryChanged(CoilState& state, CoilField entry, std::string text) {
    const float value = ParseEngNumber(text);
    switch (entry) {
        case CoilField::Diameter:
            state.coilDiameter = HeldInInches(state, value);
            break;
        case CoilField::Length:
            state.coilLength = HeldInInches(state, value);
            break;
        case CoilField::Turns:
            state.coilTurns = value;
            break;
        case CoilField::Gauge:
            state.actualGauge = value;
            break;
        case CoilField::WireDiameterResult:
            break;
    }
}

bool ComputeCoil(CoilState& state, CoilForm& form, Dialogs& dialogs) {
    state.unitsLocked = true;
    if (IsBlank(form.Text(CoilField::Gauge)) || state.actualGauge == kNoGauge)
        ForgetGauge(state, form);
    std::string message;
    try {
        message = RunCoilSteps(state, form);
    } catch (const ArithmeticFault& fault) {
        message = std::string("The winding could not be computed: ") + fault.what() +
                  ". Please check the entries.";
    }
    if (!message.empty()) {
        dialogs.ShowMessage(message);
        return false;
    }
    state.fillMarkedRed = state.percentFill >= 100.0f;
    if (state.fillMarkedRed) form.FocusGaugeEntry();
    return true;
}

void ClearCoil(CoilState& state) {
    const std::int16_t unitSystem = state.unitSystem;
    const std::int16_t inductorChoice = state.inductorChoice;
    const bool unitsLocked = state.unitsLocked;
    state = CoilState{};
    state.unitSystem = unitSystem;
    state.inductorChoice = inductorChoice;
    state.unitsLocked = unitsLocked;
}

}  // namespace varo
