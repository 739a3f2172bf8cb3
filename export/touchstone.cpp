#include "export/touchstone.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numbers>

#include "core/fault.h"
#include "core/numtext.h"
#include "core/numtext_data.h"
#include "core/tank_network.h"
#include "export/reported_write.h"

namespace varo {

namespace {

constexpr std::string_view kWrongExtension =
    "A Touchstone file name ends in .s2p (two-port) or .s1p (one-port)";
constexpr std::string_view kWriteFailed = "We could not write the Touchstone file";

// The two-port's reference: what network analysers calibrate to.
constexpr double kTwoPortReference = 50;

bool EndsWithNoCase(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() &&
           std::equal(ending.begin(), ending.end(), text.end() - ending.size(), [](char a, char b) {
               return a == std::tolower(static_cast<unsigned char>(b));
           });
}

// Appends " magnitude angle", the angle in degrees.
void AppendMagnitudeAngle(std::string& line, Complex z) {
    const double magnitude = CheckedFinite(std::sqrt(SquaredMagnitude(z)));
    const double degrees = CheckedFinite(std::atan2(z.im, z.re)) * (180 / std::numbers::pi);
    line += ' ';
    AppendDataNumber(line, magnitude);
    line += ' ';
    AppendDataNumber(line, degrees);
}

void Heading(const DesignState& s, TouchstoneKind kind, FileText& text) {
    text.Line({"! VARO pi-L network: ", PlainText(s.frequency), " Hz, ", PlainText(s.plateR),
               " ohms to ", PlainText(s.loadR), " ohms, pi-section Q ", PlainText(s.piQ)});
    if (LSectionStepsUp(s))
        text.Line({"! C3 across the load is included; VARO's own analysis leaves it out"});
    if (kind == TouchstoneKind::TwoPort) {
        text.Line({"! Port 1: plate side, plate load ", PlainText(s.plateR), " ohms"});
        text.Line({"! Port 2: load side, load ", PlainText(s.loadR), " ohms"});
        const std::string reference = PlainText(kTwoPortReference);
        text.Line({"! Both ports referred to ", reference, " ohms"});
        text.Line({"# Hz S MA R ", reference});
    } else {
        text.Line({"! Input reflection, the load side terminated in ", PlainText(s.loadR),
                   " ohms, referred to the plate load"});
        text.Line({"# Hz S MA R ", PlainText(s.plateR)});
    }
}

// The one-port's figure is the reflection at port 1 with port 2 terminated in the load, referred
// to the plate load.
void AppendDataLine(std::string& line, float frequency, const ChainMatrix& t, const DesignState& s,
                    TouchstoneKind kind) {
    AppendDataNumber(line, frequency);
    if (kind == TouchstoneKind::TwoPort) {
        const SParameters p = ToSParameters(t, kTwoPortReference);
        for (const Complex& parameter : {p.s11, p.s21, p.s12, p.s22})
            AppendMagnitudeAngle(line, parameter);
        return;
    }
    const double loadR = s.loadR;
    const Complex plateR{s.plateR, 0};
    const Complex zin = (loadR * t.a + t.b) / (loadR * t.c + t.d);
    AppendMagnitudeAngle(line, (zin - plateR) / (zin + plateR));
}

}  // namespace

std::optional<TouchstoneKind> TouchstoneKindOf(std::string_view path) {
    if (EndsWithNoCase(path, ".s2p")) return TouchstoneKind::TwoPort;
    if (EndsWithNoCase(path, ".s1p")) return TouchstoneKind::OnePort;
    return std::nullopt;
}

SaveDialogRequest TouchstoneSaveRequest() {
    return SaveDialogRequest{
        .title = "VARO Design - export Touchstone",
        .filter = "Touchstone two-port (*.s2p)|*.s2p|Touchstone one-port (*.s1p)|*.s1p",
        .filterIndex = 1,
        .proposedName = "Default.s2p",
        .overwritePrompt = true};
}

void BuildTouchstone(const DesignState& s, TouchstoneKind kind, FileText& text) {
    Heading(s, kind, text);
    const TankNetwork network = BuildTankNetwork(s);
    const double coilInverseQ = CheckedDivide(1.0, s.inductorQ);
    const double capacitorInverseQ = CheckedDivide(1.0, s.capacitorQ);
    const int last = std::min<int>(s.sweepIntervals, kSweepPoints - 1);
    std::string line;  // one buffer for all lines
    for (int i = 0; i <= last; ++i) {
        const float frequency = s.sweepFrequency[i];
        const ChainMatrix t =
            TankChainMatrix(network, 2 * s.pi * frequency, coilInverseQ, capacitorInverseQ);
        line.clear();
        AppendDataLine(line, frequency, t, s, kind);
        text.Line({line});
    }
}

std::string TouchstoneText(const DesignState& state, TouchstoneKind kind) {
    FileText text;
    BuildTouchstone(state, kind, text);
    return text.str();
}

bool WriteTouchstoneFile(const DesignState& state, const std::string& path, Dialogs& dialogs) {
    const auto kind = TouchstoneKindOf(path);
    if (!kind) {
        dialogs.ShowMessage(kWrongExtension);
        return false;
    }
    return WriteOrReport(
        path, [&](FileText& text) { BuildTouchstone(state, *kind, text); }, dialogs, kWriteFailed);
}

}  // namespace varo
