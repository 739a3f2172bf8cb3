#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"

namespace varo {

namespace {

double RmsVoltage(double resistance, double power) {
    return CheckedSqrt(resistance * power);
}

// Current through a capacitor across the rms voltage v: v over its reactance.
double CapacitorCurrent(const DesignState& s, double v, double capacitance) {
    const double reactance = CheckedDivide(1.0, 2 * s.pi * s.frequency * capacitance);
    return CheckedDivide(v, reactance);
}

// Current through an inductor between the phasors `from` at 0 degrees and `to` at `degrees`.
double InductorCurrent(const DesignState& s, double from, double to, double degrees,
                       double inductance) {
    const double radians = CheckedDivide(degrees, 45 / std::atan(1.0));
    const double re = from - to * std::cos(radians);
    const double im = 0 - to * std::sin(radians);
    const double voltage = CheckedSqrt(re * re + im * im);
    return CheckedDivide(voltage, inductance * 8 * std::atan(1.0) * s.frequency);
}

std::string Amperes(float current) {
    return FormatNumber(current) + "Arms";
}

std::string PeakVolts(float rms, const char* unit) {
    return FormatNumber(StoreSingle(rms * std::sqrt(2.0))) + unit;
}

void AddVoltageTexts(const DesignState& s, std::vector<StressText>& texts) {
    // The voltage at C1 is the entered peak plate swing.
    if (s.vPlate > 0) texts.push_back({StressPart::C1Voltage, FormatNumber(s.peakSwing) + "Vpeak"});
    if (s.vMid > 0) texts.push_back({StressPart::C2Voltage, PeakVolts(s.vMid, "Vpeak")});
    if (s.intermediateR < s.loadR && s.vLoad > 0)
        texts.push_back({StressPart::C3Voltage, PeakVolts(s.vLoad, "Veak")});
}

void AddCapacitorCurrentTexts(const DesignState& s, std::vector<StressText>& texts) {
    if (s.iC1 > 0) texts.push_back({StressPart::C1Current, Amperes(s.iC1)});
    if (s.intermediateR < s.loadR) {
        texts.push_back({StressPart::C3Current, Amperes(s.iC3)});
        texts.push_back({StressPart::C2Current, Amperes(s.iC2)});
    } else if (s.intermediateR > s.loadR) {
        // C3 stands in parallel with C2 and is shown merged into it.
        const float merged = StoreSingle(static_cast<double>(s.iC3) + s.iC2);
        texts.push_back({StressPart::C2Current, Amperes(merged)});
    } else if (s.intermediateR == s.loadR) {
        texts.push_back({StressPart::C2Current, Amperes(s.iC2)});
    }
}

// Inductor currents exist only with RF power; a missing inductor (zero value) gets no text.
void AddInductorCurrents(const DesignState& s, StressDisplay& display) {
    if (!(s.rfPower > 0)) return;
    if (s.L1 != 0) {
        display.iL1 = StoreSingle(InductorCurrent(s, s.vPlate, s.vMid, s.piPhase, s.L1));
        display.texts.push_back({StressPart::L1Current, Amperes(display.iL1)});
    }
    if (s.L2 != 0) {
        display.iL2 = StoreSingle(InductorCurrent(s, s.vMid, s.vLoad, s.lPhase, s.L2));
        display.texts.push_back({StressPart::L2Current, Amperes(display.iL2)});
    }
}

void AddExplanationLine(std::vector<StressText>& texts, int line, std::string text) {
    texts.push_back({StressPart::Note, std::move(text), line});
}

void AddExplanation(const DesignState& s, std::vector<StressText>& texts) {
    if (s.vPlate > 0) {
        AddExplanationLine(texts, 0, "Stresses shown are based on a peak");
        AddExplanationLine(texts, 1,
                           "plate voltage swing of " + FormatNumber(s.peakSwing) + " volts");
        AddExplanationLine(texts, 2,
                           "and an RF power level of " + FormatNumber(s.rfPower) + " watts");
    }
    const float generatorR = StoreSingle(static_cast<double>(s.genMultiplier) * s.plateR);
    AddExplanationLine(texts, 3, "The transmission plot is based on a generator");
    AddExplanationLine(texts, 4, "output impedance of " + FormatNumber(generatorR) + " ohms.");
    AddExplanationLine(texts, 5, "You may enter a new generator output");
    AddExplanationLine(texts, kGeneratorNoteLine, "impedance here:");
}

}  // namespace

void ComputeStresses(DesignState& state, Reporter& reporter) {
    state.vPlate = 0;
    state.vMid = 0;
    state.vLoad = 0;
    // Without RF power the C1 current stays at 1.
    state.iC1 = 1;
    state.iC2 = 0;
    state.iC3 = 0;
    if (state.rfPower <= 0) {
        reporter.CloseAllFiles();
        return;
    }
    state.vPlate = StoreSingle(RmsVoltage(state.plateR, state.rfPower));
    state.vMid = StoreSingle(RmsVoltage(state.intermediateR, state.rfPower));
    state.vLoad = StoreSingle(RmsVoltage(state.loadR, state.rfPower));
    state.iC1 = StoreSingle(CapacitorCurrent(state, state.vPlate, state.C1));
    state.iC2 = StoreSingle(CapacitorCurrent(state, state.vMid, state.C2));
    state.iC3 = 0;
    // Only a C3 at the midpoint is counted; across the load its current is shown as zero.
    if (state.C3 > 0 && state.intermediateR > state.loadR) {
        state.iC3 = StoreSingle(CapacitorCurrent(state, state.vMid, state.C3));
    }
}

StressDisplay ShowStresses(DesignState& state, Reporter& reporter) {
    ComputeStresses(state, reporter);
    StressDisplay display;
    display.vPlate = state.vPlate;
    display.vMid = state.vMid;
    display.vLoad = state.vLoad;
    display.iC1 = state.iC1;
    display.iC2 = state.iC2;
    display.iC3 = state.iC3;
    AddVoltageTexts(state, display.texts);
    AddCapacitorCurrentTexts(state, display.texts);
    AddInductorCurrents(state, display);
    display.totalPhase = StoreSingle(static_cast<double>(state.lPhase) + state.piPhase);
    display.texts.push_back(
        {StressPart::TotalPhase, "Total phase: " + FormatNumber(display.totalPhase) + "deg."});
    AddExplanation(state, display.texts);
    return display;
}

}  // namespace varo
