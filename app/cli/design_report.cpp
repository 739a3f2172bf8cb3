#include "app/cli/design_report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>

#include "app/cli/json_writer.h"
#include "core/fault.h"
#include "core/numtext.h"

namespace varo::cli {

namespace {

// The impedance angle with the usual sign (positive for an inductive input), as the sweep
// stores it.
float UsualZAngle(const HarmonicRow& row) {
    return -row.result.zAngle;
}

std::string Padded(const std::string& label, const std::string& value) {
    std::string line = label;
    if (line.size() < 26) line.append(26 - line.size(), ' ');
    return line + value + "\n";
}

std::string InputsSection(const DesignState& s) {
    return "Inputs\n" + Padded("  Frequency (Hz):", FormatHz(s.frequency)) +
           Padded("  Plate load (ohms):", FormatNumber(s.plateR)) +
           Padded("  Intermediate (ohms):", FormatNumber(s.intermediateR)) +
           Padded("  Load (ohms):", FormatNumber(s.loadR)) +
           Padded("  Pi-section Q:", FormatNumber(s.piQ)) +
           Padded("  Peak plate swing (V):", FormatNumber(s.peakSwing)) +
           Padded("  RF power (W):", FormatNumber(s.rfPower)) +
           Padded("  Generator (ohms):",
                  FormatNumber(StoreSingle(static_cast<double>(s.genMultiplier) * s.plateR)));
}

std::string PhaseText(const std::optional<SectionPhases>& phases, float SectionPhases::*which) {
    return phases ? FormatNumber((*phases).*which) + "deg." : std::string();
}

std::string ComponentsSection(const DesignResults& results) {
    const ComponentValues& s = results.components;
    return "Reactances (ohms)\n" + Padded("  XC1:", FormatNumber(s.xC1)) +
           Padded("  XL1:", FormatNumber(s.xL1)) + Padded("  XC2:", FormatNumber(s.xC2)) +
           Padded("  XL2:", FormatNumber(s.xL2)) + Padded("  XC3:", FormatNumber(s.xC3)) +
           "Components\n" + Padded("  C1:", FormatFarad(s.C1)) +
           Padded("  L1:", FormatHenry(s.L1)) + Padded("  C2:", FormatFarad(s.C2)) +
           Padded("  L2:", FormatHenry(s.L2)) + Padded("  C3:", FormatFarad(s.C3)) + "Phases\n" +
           Padded("  Pi section:", PhaseText(results.phases, &SectionPhases::piPhase)) +
           Padded("  L section:", PhaseText(results.phases, &SectionPhases::lPhase));
}

std::string StressSection(const StressDisplay& stresses) {
    std::string text = "Stresses and notes\n";
    for (const auto& placed : stresses.texts)
        text += "  " + placed.text + "\n";
    return text;
}

std::string HarmonicSection(const std::vector<HarmonicRow>& rows) {
    std::string text = "Harmonics\n";
    char line[200];
    static const char* const kLabels[] = {"", "Fund", "2nd", "3rd", "4th", "5th"};
    std::snprintf(line, sizeof line, "  %-5s %-12s %12s %10s %12s %10s %14s %10s\n", "",
                  "Frequency", "Trans. (dB)", "Angle", "Return (dB)", "VSWR", "|Zin| (ohms)",
                  "Z angle");
    text += line;
    for (const auto& row : rows) {
        std::snprintf(
            line, sizeof line, "  %-5s %-12s %12s %10s %12s %10s %14s %10s\n", kLabels[row.n],
            FormatHz(row.frequency).c_str(), FormatNumber(row.result.transmissionDb).c_str(),
            FormatNumber(row.result.transmissionPhase).c_str(),
            FormatNumber(row.result.returnDb).c_str(), FormatNumber(row.result.vswr).c_str(),
            FormatNumber(row.result.zMagnitude).c_str(), FormatNumber(UsualZAngle(row)).c_str());
        text += line;
    }
    return text;
}

struct PartName {
    TankPart part;
    const char* name;
};
constexpr PartName kPartNames[] = {{TankPart::L1, "L1"},
                                   {TankPart::L2, "L2"},
                                   {TankPart::C1, "C1"},
                                   {TankPart::C2, "C2"},
                                   {TankPart::C3, "C3"}};

std::string LossesSection(const std::optional<TankLosses>& losses) {
    if (!losses) return {};
    const auto number = [](double value) { return FormatNumber(StoreSingle(value)); };
    std::string text = "Tank losses (coil Q " + PlainText(losses->q.coil) + ", capacitor Q " +
                       PlainText(losses->q.capacitor) + ")\n" +
                       Padded("  Efficiency (%):", number(losses->efficiencyPercent)) +
                       Padded("  Loss (dB):", number(losses->lossDb));
    for (const auto& [part, name] : kPartNames)
        text += Padded(std::string("  ") + name + " (W):", number(losses->Watts(part)));
    const char* sign = losses->zInImag < 0 ? " -j" : " +j";
    return text + Padded("  Input impedance (ohms):",
                         number(losses->zInReal) + sign + number(std::abs(losses->zInImag)));
}

void AddLossesJson(JsonWriter& json, const std::optional<TankLosses>& losses) {
    if (!losses) return;
    json.BeginObject("losses")
        .Number("coilQ", losses->q.coil)
        .Number("capacitorQ", losses->q.capacitor)
        .Number("efficiencyPercent", losses->efficiencyPercent)
        .Number("lossDb", losses->lossDb)
        .BeginObject("watts");
    for (const auto& [part, name] : kPartNames)
        json.Number(name, losses->Watts(part));
    json.EndObject().Number("zInReal", losses->zInReal).Number("zInImag", losses->zInImag);
    json.EndObject();
}

}  // namespace

std::string DesignReportText(const DesignOutcome& outcome) {
    const DesignState& s = *outcome.state;
    return InputsSection(s) + ComponentsSection(outcome.results) +
           StressSection(outcome.results.stresses) + HarmonicSection(outcome.results.harmonics) +
           LossesSection(outcome.losses);
}

std::string DesignJson(const DesignOutcome& outcome) {
    const DesignState& s = *outcome.state;
    const ComponentValues& parts = outcome.results.components;
    JsonWriter json;
    json.BeginObject()
        .BeginObject("inputs")
        .Number("frequency", s.frequency)
        .Number("plateR", s.plateR)
        .Number("intermediateR", s.intermediateR)
        .Number("loadR", s.loadR)
        .Number("piQ", s.piQ)
        .Number("peakSwing", s.peakSwing)
        .Number("rfPower", s.rfPower)
        .Number("genMultiplier", s.genMultiplier)
        .EndObject();
    json.BeginArray("messages");
    for (const auto& message : outcome.messages)
        json.String({}, message);
    json.EndArray();
    json.BeginObject("derived")
        .Number("omega", s.omega)
        .Number("inputQ", s.inputQ)
        .Number("outputQ", s.outputQ)
        .Number("xC1", parts.xC1)
        .Number("xL1", parts.xL1)
        .Number("xC2", parts.xC2)
        .Number("xL2", parts.xL2)
        .Number("xC3", parts.xC3)
        .Number("C1", parts.C1)
        .Number("L1", parts.L1)
        .Number("C2", parts.C2)
        .Number("L2", parts.L2)
        .Number("C3", parts.C3)
        .Number("piPhase", s.piPhase)
        .Number("lPhase", s.lPhase)
        .EndObject();
    json.BeginObject("stresses")
        .Number("vPlate", s.vPlate)
        .Number("vMid", s.vMid)
        .Number("vLoad", s.vLoad)
        .Number("iC1", s.iC1)
        .Number("iC2", s.iC2)
        .Number("iC3", s.iC3)
        .Number("iL1", outcome.results.stresses.iL1)
        .Number("iL2", outcome.results.stresses.iL2)
        .EndObject();
    json.BeginArray("harmonics");
    for (const auto& row : outcome.results.harmonics) {
        json.BeginObject()
            .Integer("n", row.n)
            .Number("frequency", row.frequency)
            .Number("transmissionDb", row.result.transmissionDb)
            .Number("phase", row.result.transmissionPhase)
            .Number("returnDb", row.result.returnDb)
            .Number("vswr", row.result.vswr)
            .Number("zMagnitude", row.result.zMagnitude)
            .Number("zAngle", UsualZAngle(row))
            .EndObject();
    }
    json.EndArray();
    AddLossesJson(json, outcome.losses);
    json.EndObject();
    return json.text();
}

std::string SweepCsv(const DesignState& s) {
    std::string csv = "frequency,transmission,phase,return,vswr,zMagnitude,zAngle\n";
    const int last = std::min<int>(s.sweepIntervals, kSweepPoints - 1);
    for (int i = 0; i <= last; ++i) {
        csv += JsonNumber(s.sweepFrequency[i]) + "," + JsonNumber(s.sweepTransmission[i]) + "," +
               JsonNumber(s.sweepPhase[i]) + "," + JsonNumber(s.sweepReturn[i]) + "," +
               JsonNumber(s.sweepVswr[i]) + "," + JsonNumber(s.sweepZMagnitude[i]) + "," +
               JsonNumber(s.sweepZAngle[i]) + "\n";
    }
    return csv;
}

}  // namespace varo::cli
