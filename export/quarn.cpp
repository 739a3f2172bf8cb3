#include "export/quarn.h"

#include "core/fault.h"
#include "core/numtext.h"
#include "platform/system.h"

namespace varo {

namespace {

// Values Quarn expects in every file the program writes, whatever the design.
constexpr double kLosslessQ = 10000000.0;
constexpr double kGraphScaleValue = 0.000006;
constexpr float kElementTolerance = 5.0f;

float Times(float value, double factor) {
    return StoreSingle(static_cast<double>(value) * factor);
}

// Element lines for the ladder positions whose type Quarn knows; a position of any other type
// gets no line (so the step-up design's C3, whose position has no type, is absent).
void ElementLines(const DesignState& state, FileText& text) {
    for (int i = 1; i <= state.elementCount; ++i) {
        const int position = CheckedIndex(i, 1, kLadderPositions - 1);
        const float type = state.elementType[position];
        if (type == kSeriesInductor) {
            text.Line({PrintForm(1), FileForm(state.elementL[position]),
                       FileForm(kElementTolerance), FileForm(0.0f), FileForm(0.0f)});
        } else if (type == kShuntCapacitor) {
            text.Line({PrintForm(4), FileForm(0.0f), FileForm(0.0f),
                       FileForm(state.elementC[position]), FileForm(kElementTolerance)});
        }
    }
}

void MarkerLine(const DesignState& state, FileText& text) {
    text.Line({FileForm(Times(state.frequency, 1)), FileForm(Times(state.frequency, 2)),
               FileForm(Times(state.frequency, 3)), FileForm(Times(state.frequency, 4)),
               FileForm(Times(state.frequency, 5))});
}

}  // namespace

SaveDialogRequest QuarnSaveRequest() {
    return SaveDialogRequest{.title = "Write Quarn File",
                             .filter = "Quarn files (*.KVF)|*.KVF",
                             .filterIndex = 1,
                             .proposedName = {},
                             .overwritePrompt = true};
}

void BuildQuarnFile(const DesignState& state, std::string_view date, FileText& text) {
    const int order = state.elementCount;
    text.Line({"Quarn circuit file by VARO"});
    text.Line({"Untitled"});
    text.Line({date});
    text.Line({"* Expansion:"});
    text.Line({" (Expansion)"});
    text.Line({"* Family, order, stages, topology, Cauer:"});
    text.Line({PrintForm(11), PrintForm(order), PrintForm(order), "A", PrintForm(0)});
    text.Line({"* Width, center, Fstop normalized:"});
    text.Line({FileForm(state.frequency), PrintForm(0), PrintForm(0)});
    text.Line({"* Apass, Astop:"});
    text.Line({PrintForm(0), PrintForm(0)});
    text.Line({"* Rsource, Rload, Rratio, Rstandard:"});
    text.Line({FileForm(Times(state.plateR, state.genMultiplier)), FileForm(state.loadR),
               PrintForm(1), FileForm(state.plateR)});
    text.Line({"* Qind, Qcap:"});
    text.Line({FileForm(kLosslessQ), FileForm(kLosslessQ)});
    text.Line({"* Gj, Hj:"});
    for (int i = 1; i <= order; ++i)
        text.Line({"0   0"});
    text.Line({"* Element type, L, Ltolerance, C, Ctolerance"});
    ElementLines(state, text);
    text.Line({"* Lin or log, Fstart, Fstop, NrIntervals:"});
    text.Line({"2", FileForm(state.sweepStart), FileForm(state.sweepStop),
               PrintForm(static_cast<int>(state.sweepIntervals))});
    text.Line({"* Graph scales:"});
    text.Line({FileForm(-60.0f), PrintForm(0), FileForm(0.0f), FileForm(kGraphScaleValue),
               FileForm(7.0f), FileForm(Times(state.plateR, 2)),
               FileForm(static_cast<float>(state.graphDbPerDiv)),
               FileForm(static_cast<float>(state.graphDivisions))});
    text.Line({"* Limits Y/N:"});
    text.Line({"N"});
    text.Line({"* Markers Y/N:"});
    text.Line({"Y"});
    text.Line({"* Marker frequencies:"});
    MarkerLine(state, text);
    text.Line({"* M-derived zeros Y/N:"});
    text.Line({"N"});
}

std::string QuarnFileText(const DesignState& state, std::string_view date) {
    FileText text;
    BuildQuarnFile(state, date, text);
    return text.str();
}

bool WriteQuarnFile(const DesignState& state, const std::string& path, Dialogs& dialogs,
                    std::string_view date) {
    const auto failure = SaveFailure(path, [&] {
        WriteTextFile(path, [&](FileText& text) { BuildQuarnFile(state, date, text); });
    });
    if (!failure) return true;
    dialogs.BeepFailure(*failure);
    return false;
}

bool WriteQuarnFile(const DesignState& state, const std::string& path, Dialogs& dialogs) {
    return WriteQuarnFile(state, path, dialogs, TodayShortDate());
}

}  // namespace varo
