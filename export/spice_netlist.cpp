#include "export/spice_netlist.h"

#include "core/fault.h"
#include "core/numtext.h"
#include "core/tank_network.h"
#include "export/reported_write.h"

namespace varo {

namespace {

constexpr std::string_view kWriteFailed = "We could not write the SPICE netlist file";

// Values in plain numbers with "E" exponents: SPICE reads a trailing "M" as milli, so the
// engineering texts of the screens would mislead it.
std::string Value(float v) {
    return PlainText(v);
}

float GeneratorR(const DesignState& s) {
    return StoreSingle(static_cast<double>(s.genMultiplier) * s.plateR);
}

// As in the LTspice schematic: the swing scaled by (Rgen + plate load) / plate load, so that a
// matched network input sees the designed peak swing.
float SourceAmplitude(const DesignState& s) {
    const float ratio = StoreSingle(CheckedDivide(static_cast<double>(GeneratorR(s)) + s.plateR,
                                                  static_cast<double>(s.plateR)));
    return StoreSingle(static_cast<double>(s.peakSwing) * ratio);
}

void Comments(const DesignState& s, FileText& text) {
    text.Line({"* VARO pi-L network: ", Value(s.frequency), " Hz, plate load ", Value(s.plateR),
               " ohms, load ", Value(s.loadR), " ohms"});
    text.Line({"* Intermediate ", Value(s.intermediateR), " ohms, pi-section Q ", Value(s.piQ),
               ", peak plate swing ", Value(s.peakSwing), " V, RF power ", Value(s.rfPower), " W"});
    text.Line(
        {"* Rgen is the generator resistance; Vgen is the peak plate swing times"
         " (Rgen + plate load) / plate load"});
    if (LSectionStepsUp(s))
        text.Line(
            {"* C3 across the load is left out of VARO's own analysis, so VARO's curves"
             " differ from this simulation"});
}

void Components(const DesignState& s, FileText& text) {
    text.Line({"C1 plate 0 ", Value(s.C1)});
    text.Line({"L1 plate mid ", Value(s.L1)});
    text.Line({"C2 mid 0 ", Value(s.C2)});
    if (s.intermediateR > s.loadR) {
        text.Line({"C3 mid 0 ", Value(s.C3)});
        text.Line({"L2 mid load ", Value(s.L2)});
    } else if (LSectionStepsUp(s)) {
        text.Line({"L2 mid load ", Value(s.L2)});
        text.Line({"C3 load 0 ", Value(s.C3)});
    }
}

// Without an L section the load hangs on the midpoint.
std::string_view LoadNode(const DesignState& s) {
    return s.intermediateR == s.loadR ? "mid" : "load";
}

}  // namespace

SaveDialogRequest SpiceNetlistSaveRequest() {
    return SaveDialogRequest{.title = "VARO Design - write SPICE netlist",
                             .filter = "SPICE netlists (*.cir)|*.cir",
                             .filterIndex = 1,
                             .proposedName = "Default.cir",
                             .overwritePrompt = true};
}

void BuildSpiceNetlist(const DesignState& s, FileText& text) {
    Comments(s, text);
    // An amplitude of 0 (no swing entered yet) would simulate nothing at all.
    const float amplitude = SourceAmplitude(s);
    if (amplitude == 0) text.Line({"* No peak plate swing entered: Vgen drives 1 V"});
    text.Line({"Vgen gen 0 DC 0 AC ", amplitude == 0 ? "1" : Value(amplitude)});
    text.Line({"Rgen gen plate ", Value(GeneratorR(s))});
    Components(s, text);
    text.Line({"Rload ", LoadNode(s), " 0 ", Value(s.loadR)});
    const double frequency = s.frequency;
    text.Line({".ac dec 1000 ", PlainText(frequency * 0.5), " ", PlainText(frequency * 4)});
    text.Line({".end"});
}

std::string SpiceNetlistText(const DesignState& state) {
    FileText text;
    BuildSpiceNetlist(state, text);
    return text.str();
}

bool WriteSpiceNetlist(const DesignState& state, const std::string& path, Dialogs& dialogs) {
    return WriteOrReport(
        path, [&](FileText& text) { BuildSpiceNetlist(state, text); }, dialogs, kWriteFailed);
}

}  // namespace varo
