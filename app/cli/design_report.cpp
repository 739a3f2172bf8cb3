#include "app/cli/design_report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>

#include "app/cli/json_writer.h"
#include "core/fault.h"
#include "core/numtext.h"

namespace varo::cli {

namespace {

std::string Padded(const std::string& label, const std::string& value) {
    std::string line = label;
    if (line.size() < 26) line.append(26 - line.size(), ' ');
    return line + value + "\n";
}

std::string InputsSection(const DesignInputs& s) {
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

// An L-section figure, blank where the design has no L section.
std::string LSectionText(const ComponentValues& parts, float LSectionValues::*which,
                         std::string (*format)(float)) {
    return parts.lSection ? format((*parts.lSection).*which) : std::string();
}

std::string ComponentsSection(const DesignResults& results) {
    const ComponentValues& s = results.components;
    return "Reactances (ohms)\n" + Padded("  XC1:", FormatNumber(s.xC1)) +
           Padded("  XL1:", FormatNumber(s.xL1)) + Padded("  XC2:", FormatNumber(s.xC2)) +
           Padded("  XL2:", LSectionText(s, &LSectionValues::xL2, FormatNumber)) +
           Padded("  XC3:", LSectionText(s, &LSectionValues::xC3, FormatNumber)) + "Components\n" +
           Padded("  C1:", FormatFarad(s.C1)) + Padded("  L1:", FormatHenry(s.L1)) +
           Padded("  C2:", FormatFarad(s.C2)) +
           Padded("  L2:", LSectionText(s, &LSectionValues::L2, FormatHenry)) +
           Padded("  C3:", LSectionText(s, &LSectionValues::C3, FormatFarad)) + "Phases\n" +
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
            FormatNumber(row.result.zMagnitude).c_str(),
            FormatNumber(UsualZAngle(row.result)).c_str());
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
    std::string which =
        "coil Q " + PlainText(losses->q.coil) + ", capacitor Q " + PlainText(losses->q.capacitor);
    if (const std::string wound = WoundQNote(losses->q); !wound.empty()) {
        which += "; ";
        which += wound;
    }
    std::string text = "Tank losses (" + which + ")\n" +
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
        .Number("l1Q", losses->q.CoilQ(TankPart::L1))
        .Bool("l1AsWound", losses->q.wound[0].has_value())
        .Number("l2Q", losses->q.CoilQ(TankPart::L2))
        .Bool("l2AsWound", losses->q.wound[1].has_value())
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
    const DesignResults& results = outcome.results;
    return InputsSection(results.inputs) + ComponentsSection(results) +
           StressSection(results.stresses) + HarmonicSection(results.harmonics) +
           LossesSection(results.losses);
}

// A figure that may be absent: null when it is (the writer turns a non-finite number to null).
void OptionalNumber(JsonWriter& json, std::string_view key, std::optional<float> value) {
    json.Number(key, value ? *value : std::numeric_limits<double>::quiet_NaN());
}

std::string DesignJson(const DesignOutcome& outcome) {
    const DesignResults& results = outcome.results;
    const DesignInputs& s = results.inputs;
    const ComponentValues& parts = results.components;
    const auto lSection = [&](float LSectionValues::*which) {
        return parts.lSection ? std::optional<float>((*parts.lSection).*which) : std::nullopt;
    };
    const auto phase = [&](float SectionPhases::*which) {
        return results.phases ? std::optional<float>((*results.phases).*which) : std::nullopt;
    };
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
        .Number("omega", parts.omega)
        .Number("inputQ", parts.inputQ)
        .Number("outputQ", parts.outputQ)
        .Number("xC1", parts.xC1)
        .Number("xL1", parts.xL1)
        .Number("xC2", parts.xC2);
    OptionalNumber(json, "xL2", lSection(&LSectionValues::xL2));
    OptionalNumber(json, "xC3", lSection(&LSectionValues::xC3));
    json.Number("C1", parts.C1).Number("L1", parts.L1).Number("C2", parts.C2);
    OptionalNumber(json, "L2", lSection(&LSectionValues::L2));
    OptionalNumber(json, "C3", lSection(&LSectionValues::C3));
    OptionalNumber(json, "piPhase", phase(&SectionPhases::piPhase));
    OptionalNumber(json, "lPhase", phase(&SectionPhases::lPhase));
    json.EndObject();
    const StressDisplay& stresses = results.stresses;
    json.BeginObject("stresses")
        .Number("vPlate", stresses.vPlate)
        .Number("vMid", stresses.vMid)
        .Number("vLoad", stresses.vLoad)
        .Number("iC1", stresses.iC1)
        .Number("iC2", stresses.iC2)
        .Number("iC3", stresses.iC3)
        .Number("iL1", stresses.iL1)
        .Number("iL2", stresses.iL2)
        .EndObject();
    json.BeginArray("harmonics");
    for (const auto& row : results.harmonics) {
        json.BeginObject()
            .Integer("n", row.n)
            .Number("frequency", row.frequency)
            .Number("transmissionDb", row.result.transmissionDb)
            .Number("phase", row.result.transmissionPhase)
            .Number("returnDb", row.result.returnDb)
            .Number("vswr", row.result.vswr)
            .Number("zMagnitude", row.result.zMagnitude)
            .Number("zAngle", UsualZAngle(row.result))
            .EndObject();
    }
    json.EndArray();
    AddLossesJson(json, results.losses);
    json.EndObject();
    return json.text();
}

}  // namespace varo::cli
