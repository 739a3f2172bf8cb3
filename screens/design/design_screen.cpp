#include "screens/design/design_screen.h"

#include <array>

#include "core/numtext.h"
#include "screens/design/schematic.h"
#include "screens/design/small_plot.h"

namespace varo {

namespace {

constexpr float kC1X = 4800;
constexpr float kC2X = 6200;
constexpr float kC3X = 7800;
constexpr float kVoltageRowY = 7200;
constexpr float kCurrentRowY = 7400;
constexpr float kL1CurrentX = 5350;
constexpr float kL2CurrentX = 6950;
constexpr float kInductorCurrentY = 5700;
constexpr float kTotalPhaseX = 4800;
constexpr float kTotalPhaseY = 7700;

// The component table under the entry column.
constexpr float kValuesHeaderY = 6420;
constexpr float kValuesFirstRowY = 6660;
constexpr float kValuesRowStep = 220;
constexpr float kValuesNameX = 250;
constexpr float kValuesValueX = 800;
constexpr float kValuesReactanceX = 1900;

constexpr const char* kSurfaceFont = "Arial";
constexpr float kSurfacePointSize = 8;

struct ComponentRow {
    const char* name;
    std::string value;
    float reactance;
};

void DrawComponentTable(Surface& surface, const ComponentValues& parts) {
    surface.SetFont(kSurfaceFont, kSurfacePointSize, true);
    surface.Text(kValuesNameX, kValuesHeaderY, "Part");
    surface.Text(kValuesValueX, kValuesHeaderY, "Value");
    surface.Text(kValuesReactanceX, kValuesHeaderY, "Reactance");
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    const std::array<ComponentRow, 5> rows = {{{"C1", FormatFarad(parts.C1), parts.xC1},
                                               {"L1", FormatHenry(parts.L1), parts.xL1},
                                               {"C2", FormatFarad(parts.C2), parts.xC2},
                                               {"L2", FormatHenry(parts.L2), parts.xL2},
                                               {"C3", FormatFarad(parts.C3), parts.xC3}}};
    float y = kValuesFirstRowY;
    for (const ComponentRow& row : rows) {
        surface.Text(kValuesNameX, y, row.name);
        surface.Text(kValuesValueX, y, row.value);
        surface.Text(kValuesReactanceX, y, FormatNumber(row.reactance) + "ohms");
        y += kValuesRowStep;
    }
}

void DrawStressTexts(Surface& surface, const StressDisplay& stresses) {
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    for (const StressText& text : stresses.texts) {
        const ScreenPoint at = StressTextPlace(text);
        surface.Text(at.x, at.y, text.text);
    }
}

}  // namespace

ScreenPoint StressTextPlace(const StressText& text) {
    switch (text.part) {
        case StressPart::C1Voltage:
            return {kC1X, kVoltageRowY};
        case StressPart::C2Voltage:
            return {kC2X, kVoltageRowY};
        case StressPart::C3Voltage:
            return {kC3X, kVoltageRowY};
        case StressPart::C1Current:
            return {kC1X, kCurrentRowY};
        case StressPart::C2Current:
            return {kC2X, kCurrentRowY};
        case StressPart::C3Current:
            return {kC3X, kCurrentRowY};
        case StressPart::L1Current:
            return {kL1CurrentX, kInductorCurrentY};
        case StressPart::L2Current:
            return {kL2CurrentX, kInductorCurrentY};
        case StressPart::TotalPhase:
            return {kTotalPhaseX, kTotalPhaseY};
        case StressPart::Note:
            break;
    }
    return {kNoteX, kNoteTopY + static_cast<float>(text.noteLine) * kNoteLineStep};
}

void DrawDesignScreen(Surface& surface, const DesignState& state, const DesignResults& results) {
    surface.Clear();
    DrawSchematic(surface, state);
    DrawComponentTable(surface, results.components);
    DrawStressTexts(surface, results.stresses);
    DrawSmallPlot(surface, state, results);
}

std::string PhaseReadout(const DesignResults& results) {
    if (!results.phases) return {};
    return "Pi phase: " + FormatNumber(results.phases->piPhase) +
           "deg.\nL phase: " + FormatNumber(results.phases->lPhase) + "deg.";
}

}  // namespace varo
