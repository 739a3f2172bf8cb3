#include "model/pictures/design_picture.h"

#include <array>
#include <cmath>
#include <limits>
#include <optional>

#include "core/numtext.h"
#include "model/fixed_text.h"
#include "model/pictures/response_plot.h"
#include "model/pictures/schematic.h"
#include "model/pictures/small_plot.h"

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

// The component table under the entry column, with each part's loss beside its reactance.
constexpr float kValuesHeaderY = 6420;
constexpr float kValuesFirstRowY = 6660;
constexpr float kValuesRowStep = 220;
constexpr float kValuesNameX = 250;
constexpr float kValuesValueX = 700;
constexpr float kValuesReactanceX = 1650;
constexpr float kValuesLossX = 2750;
constexpr float kValuesWoundQX = 3550;  // a wound coil's own Q, when the losses take it
constexpr float kLossSummaryY = kValuesFirstRowY + 5 * kValuesRowStep + 20;

// What the stresses need, under the total phase.
constexpr float kStressHintX = 4800;
constexpr float kStressHintY = 7950;
constexpr Colour kHintColour = RgbColour(0x99, 0x00, 0x00);

// The small plot's legend, above its frame so the plot itself stays as it is drawn.
constexpr float kLegendY = 700;
constexpr float kLegendNoteY = 930;
constexpr float kLegendSwatch = 250;
constexpr float kLegendReturnX = 9700;

constexpr const char* kSurfaceFont = "Arial";
constexpr float kSurfacePointSize = 8;
constexpr float kLegendNotePointSize = 7;
constexpr float kNotePointSize = 7.5f;

struct ComponentRow {
    const char* name;
    std::string value;
    float reactance;
    TankPart part;
    bool present;
};

std::string Trimmed(std::string text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// A loss figure in single precision; one that single precision cannot hold reads as a dash.
std::string LossFigure(double value, const char* unit) {
    if (!std::isfinite(value) || std::abs(value) > std::numeric_limits<float>::max()) return "-";
    return WithUnit(static_cast<float>(value), unit);
}

// "Q 590" beside a coil whose own Q, as wound, the losses took.
void DrawWoundQ(Surface& surface, const std::optional<TankLosses>& losses, TankPart part, float y) {
    if (!losses || (part != TankPart::L1 && part != TankPart::L2)) return;
    const auto& wound = losses->q.wound[part == TankPart::L2 ? 1 : 0];
    if (wound) surface.Text(kValuesWoundQX, y, "Q " + FixedText(*wound, 0));
}

void DrawComponentTable(Surface& surface, const DesignResults& results) {
    const ComponentValues& parts = results.components;
    // Without an L section its rows stand blank.
    const bool lSection = parts.lSection.has_value();
    const LSectionValues l = parts.lSection.value_or(LSectionValues{});
    surface.SetFont(kSurfaceFont, kSurfacePointSize, true);
    surface.Text(kValuesNameX, kValuesHeaderY, "Part");
    surface.Text(kValuesValueX, kValuesHeaderY, "Value");
    surface.Text(kValuesReactanceX, kValuesHeaderY, "Reactance");
    if (results.losses) surface.Text(kValuesLossX, kValuesHeaderY, "Loss");
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    const std::array<ComponentRow, 5> rows = {
        {{"C1", FormatFarad(parts.C1), parts.xC1, TankPart::C1, true},
         {"L1", FormatHenry(parts.L1), parts.xL1, TankPart::L1, true},
         {"C2", FormatFarad(parts.C2), parts.xC2, TankPart::C2, true},
         {"L2", FormatHenry(l.L2), l.xL2, TankPart::L2, lSection},
         {"C3", FormatFarad(l.C3), l.xC3, TankPart::C3, lSection}}};
    float y = kValuesFirstRowY;
    for (const ComponentRow& row : rows) {
        surface.Text(kValuesNameX, y, row.name);
        if (row.present) {
            surface.Text(kValuesValueX, y, row.value);
            surface.Text(kValuesReactanceX, y, WithUnit(row.reactance, "ohms"));
            if (results.losses)
                surface.Text(kValuesLossX, y, LossFigure(results.losses->Watts(row.part), "W"));
            DrawWoundQ(surface, results.losses, row.part, y);
        }
        y += kValuesRowStep;
    }
}

void DrawLossSummary(Surface& surface, const std::optional<TankLosses>& losses) {
    if (!losses) return;
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    surface.Text(kValuesNameX, kLossSummaryY,
                 "Tank efficiency: " + LossFigure(losses->efficiencyPercent, "%") + ", loss " +
                     LossFigure(losses->lossDb, "dB"));
    const char* sign = losses->zInImag < 0 ? " -j" : " +j";
    surface.Text(kValuesNameX, kLossSummaryY + kValuesRowStep,
                 "Lossy input: " + Trimmed(LossFigure(losses->zInReal, "")) + sign +
                     LossFigure(std::abs(losses->zInImag), "ohms"));
}

void DrawStressHint(Surface& surface, const DesignState& state) {
    if (state.rfPower > 0 && state.peakSwing > 0) return;
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    surface.Text(kStressHintX, kStressHintY,
                 "Stresses need an RF power and a peak swing:", kHintColour);
    surface.Text(kStressHintX, kStressHintY + kValuesRowStep,
                 "enter them with \"Plate load help\".", kHintColour);
}

void DrawLegendEntry(Surface& surface, float x, Colour colour, const char* caption) {
    surface.SetLineWidth(2);
    surface.Line(x, kLegendY + 100, x + kLegendSwatch, kLegendY + 100, colour);
    surface.SetLineWidth(1);
    surface.Text(x + kLegendSwatch + 60, kLegendY, caption);
}

void DrawPlotLegend(Surface& surface) {
    surface.SetFont(kSurfaceFont, kSurfacePointSize);
    DrawLegendEntry(surface, kSmallPlotLeft, kTransmissionCurve, "Transmission");
    DrawLegendEntry(surface, kLegendReturnX, kReturnCurve, "Return loss");
    surface.SetFont(kSurfaceFont, kLegendNotePointSize);
    surface.Text(kSmallPlotLeft, kLegendNoteY, "Return loss and VSWR refer to the plate load.");
}

void DrawStressTexts(Surface& surface, const StressDisplay& stresses) {
    for (const StressText& text : stresses.texts) {
        // The explanatory block a little smaller, so its longest line fits the corner.
        surface.SetFont(kSurfaceFont,
                        text.part == StressPart::Note ? kNotePointSize : kSurfacePointSize);
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
    DrawComponentTable(surface, results);
    DrawLossSummary(surface, results.losses);
    DrawStressTexts(surface, results.stresses);
    DrawStressHint(surface, state);
    DrawPlotLegend(surface);
    DrawSmallPlot(surface, state, results);
}

std::string PhaseReadout(const DesignResults& results) {
    if (!results.phases) return {};
    return "Pi phase: " + WithUnit(results.phases->piPhase, "deg.") +
           "\nL phase: " + WithUnit(results.phases->lPhase, "deg.");
}

std::string WithUnit(float value, const char* unit) {
    std::string text = Trimmed(FormatNumber(value));
    if (*unit != '\0') text += std::string(" ") + unit;
    return text;
}

}  // namespace varo
