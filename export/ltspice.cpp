#include "export/ltspice.h"

#include "export/reported_write.h"

#include <cstdint>

#include "core/fault.h"
#include "core/numtext.h"
#include "export/reported_write.h"

namespace varo {

namespace {

constexpr std::string_view kWriteFailed = "We could not write the LTspice schematic file";

// Writes the blocks of the schematic at the placement cursor. Every block starts at
// (placeX, placeY) and moves placeX on by its own width; placeY stays 0.
class SchematicWriter {
  public:
    SchematicWriter(const DesignState& state, FileText& text) : state_(state), text_(text) {}

    void Heading() {
        text_.Line({"Version 4"});
        // Only one sheet size number is written; LTspice accepts it.
        text_.Line({"SHEET 1 ", PrintForm(1000)});
    }

    void SourceBlock() {
        text_.Line({"SYMBOL voltage ", X(0), Y(64), "R0"});
        text_.Line({"WINDOW 123 24 132 Left 0"});
        text_.Line({"SYMATTR InstName Vgen"});
        text_.Line({"SYMATTR Value AC", SignedText(SourceAmplitude())});
        text_.Line({"SYMBOL res", X(208), Y(-16), "R90"});
        text_.Line({"WINDOW 0 0 56 Vbottom 0"});
        text_.Line({"WINDOW 3 32 56 Vtop 0"});
        text_.Line({"SYMATTR InstName Rgen"});
        text_.Line({"SYMATTR Value ", SignedText(GeneratorR())});
        Wire(0, 80, 0, 0);
        Wire(0, 0, 112, 0);
        Wire(192, 0, 224, 0);
        Wire(0, 160, 0, 224);
        Flag(0, 224);
        CommentBlock();
        Advance(224);
    }

    void Capacitor(float farads) {
        const std::string valueText = FormatFarad(farads);
        ++instanceCounter_;
        text_.Line({"SYMBOL cap ", X(32), Y(80), "R0"});
        text_.Line({"SYMATTR InstName C", std::to_string(instanceCounter_)});
        text_.Line({"SYMATTR Value ", valueText});
        Wire(0, 0, 96, 0);
        Wire(48, 0, 48, 80);
        Wire(48, 144, 48, 224);
        Flag(48, 224);
        Advance(96);
    }

    void Inductor(float henries) {
        const std::string valueText = FormatHenry(henries);
        ++instanceCounter_;
        text_.Line({"SYMBOL ind ", X(32), Y(16), "R270"});
        text_.Line({"WINDOW 0 32 56 Vtop 0"});
        text_.Line({"WINDOW 3 5 56 Vbottom 0"});
        text_.Line({"SYMATTR InstName L", std::to_string(instanceCounter_)});
        text_.Line({"SYMATTR Value ", valueText});
        Wire(0, 0, 48, 0);
        Wire(128, 0, 176, 0);
        Advance(176);
    }

    // The ground wire starts at the resistor's upper pin (y + 72), so it runs along the whole
    // resistor; LTspice users of the program's files expect exactly this drawing.
    void LoadResistor() {
        text_.Line({"SYMBOL res ", X(112), Y(56), "R0"});
        text_.Line({"SYMATTR InstName Rload"});
        text_.Line({"SYMATTR Value", PrintForm(state_.loadR)});
        Wire(0, 0, 128, 0);
        Wire(128, 0, 128, 72);
        Wire(128, 72, 128, 224);
        Flag(128, 224);
    }

  private:
    // The source drives Rgen and the network input in series, so that the network input sees
    // the designed peak swing.
    float SourceAmplitude() const {
        const float vgenRatio = StoreSingle(CheckedDivide(
            static_cast<double>(GeneratorR()) + state_.plateR, static_cast<double>(state_.plateR)));
        return StoreSingle(static_cast<double>(state_.peakSwing) * vgenRatio);
    }

    float GeneratorR() const {
        return StoreSingle(static_cast<double>(state_.genMultiplier) * state_.plateR);
    }

    // Fixed positions below the drawing. The sweep runs from half to four times the operating
    // frequency; the lower bound is a double and the upper a single, which is why the upper one
    // turns to exponent form first.
    void CommentBlock() {
        const double lowerBound = static_cast<double>(state_.frequency) * 0.5;
        const float upperBound = StoreSingle(static_cast<double>(state_.frequency) * 4);
        text_.Line({"TEXT 0 288 Left 0 ", " !.AC DEC 1000 ", PrintForm(lowerBound),
                    PrintForm(upperBound)});
        text_.Line({"TEXT 0 352 Left 0 ", " ;Power level: ", PrintForm(state_.rfPower), " watts"});
        text_.Line({"TEXT 0 384 Left 0 ", " ;Frequency: ", FormatHz(state_.frequency)});
        text_.Line({"TEXT 0 416 Left 0 ", " ;Network Zin: ", FormatNumber(state_.plateR)});
        text_.Line(
            {"TEXT 0 448 Left 0 ", " ;Network output termination: ", PrintForm(state_.loadR)});
        // The note says Rgen is the generator impedance the user entered on the design screen.
        text_.Line({"TEXT 0 480 Left 0 ",
                    " ;Rgen is generator internal impedance as "
                    "specified"});
        text_.Line({"TEXT 0 512 Left 0 ", " ;Vgen is based on sum of Rgen and network Zin"});
        text_.Line({"TEXT 0 576 Left 0 ", " ;Drawn by VARO"});
    }

    std::string X(int offset) const {
        return PrintForm(StoreSingle(static_cast<double>(placeX_) + offset));
    }
    std::string Y(int offset) const {
        return PrintForm(StoreSingle(static_cast<double>(placeY_) + offset));
    }
    void Wire(int x1, int y1, int x2, int y2) { text_.Line({"WIRE ", X(x1), Y(y1), X(x2), Y(y2)}); }
    void Flag(int x, int y) { text_.Line({"FLAG ", X(x), Y(y), "0"}); }
    void Advance(int width) { placeX_ = StoreSingle(static_cast<double>(placeX_) + width); }

    const DesignState& state_;
    FileText& text_;
    float placeX_ = 0;
    float placeY_ = 0;
    // One counter for capacitors and inductors alike, so instance names follow the ladder
    // position (C1, L2, C3, L4, C5) rather than the design's element names.
    std::int16_t instanceCounter_ = 0;
};

// The L section decides what follows L1: nothing but C2 when there is none; C2, L2 and C3 across
// the load when it steps up; C3 merged into C2 at the midpoint, then L2, when it steps down.
void WriteElements(const DesignState& state, SchematicWriter& schematic) {
    schematic.Capacitor(state.C1);
    schematic.Inductor(state.L1);
    if (state.intermediateR < state.loadR) {
        schematic.Capacitor(state.C2);
        schematic.Inductor(state.L2);
        schematic.Capacitor(state.C3);
    } else if (state.intermediateR == state.loadR) {
        schematic.Capacitor(state.C2);
    } else {
        schematic.Capacitor(StoreSingle(static_cast<double>(state.C2) + state.C3));
        schematic.Inductor(state.L2);
    }
}

}  // namespace

SaveDialogRequest LTspiceSaveRequest(std::string& spiceDefaultName) {
    if (spiceDefaultName.empty()) spiceDefaultName = "Default.ASC";
    const std::size_t stemLength = spiceDefaultName.size() > 4 ? spiceDefaultName.size() - 4 : 0;
    return SaveDialogRequest{.title = "VARO Design - write LTspice schematic",
                             .filter = "LTspice schematic files (*.ASC) | *.ASC",
                             .filterIndex = 1,
                             .proposedName = spiceDefaultName.substr(0, stemLength) + ".ASC",
                             .overwritePrompt = true};
}

void BuildLTspiceSchematic(const DesignState& state, FileText& text) {
    SchematicWriter schematic(state, text);
    schematic.Heading();
    schematic.SourceBlock();
    WriteElements(state, schematic);
    schematic.LoadResistor();
}

std::string LTspiceSchematicText(const DesignState& state) {
    FileText text;
    BuildLTspiceSchematic(state, text);
    return text.str();
}

bool WriteLTspiceSchematic(const DesignState& state, const std::string& path, Dialogs& dialogs) {
    return WriteOrReport(
        path, [&](FileText& text) { BuildLTspiceSchematic(state, text); }, dialogs, kWriteFailed);
}

}  // namespace varo
