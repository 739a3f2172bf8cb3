#include "model/pictures/report_pages.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "core/network.h"
#include "core/numtext.h"
#include "model/pictures/band_plan_page.h"
#include "model/pictures/design_picture.h"
#include "model/pictures/page_parts.h"
#include "model/pictures/schematic.h"
#include "model/pictures/small_plot.h"
#include "platform/system.h"

namespace varo {

namespace {

constexpr float kHeadingPoints = 10;
constexpr float kBodyPoints = kPageBodyPoints;
constexpr const char* kFont = kPageFont;
constexpr float kLineStep = kPageLineStep;

// The windows of the design screen's drawing that the report shows, in its twips.
constexpr LogicalRect kSchematicWindow{3900, 850, 4600, 7100};
// Wide enough for the harmonic table's "(ohms)", at the screen's right edge.
constexpr LogicalRect kPlotWindow{7650, 1000, 4350, 4450};
// The schematic stands right of its row captions, the plot right of it, both scaled alike.
constexpr float kGraphicsTop = 3900;
constexpr float kCaptionWidth = 1100;
constexpr float kGraphicsGap = 200;
constexpr float kGraphicsScale =
    (kPrintPageWidth - kCaptionWidth - kGraphicsGap) / (kSchematicWindow.width + kPlotWindow.width);
constexpr float kPlotLeft =
    kCaptionWidth + (kSchematicWindow.width + kGraphicsGap) * kGraphicsScale;

// ---- design report ----

void DrawSummary(Surface& page, const DesignState& state, const StressDisplay& stresses,
                 const std::optional<SectionPhases>& phases) {
    constexpr float kValueX = 2300;
    TextColumn column(page, 0, 620);
    column.Heading("Design");
    column.Row("Frequency:", FormatHz(state.frequency), kValueX);
    column.Row("Plate load:", WithUnit(state.plateR, "ohms"), kValueX);
    column.Row("Intermediate resistance:", WithUnit(state.intermediateR, "ohms"), kValueX);
    column.Row("Load resistance:", WithUnit(state.loadR, "ohms"), kValueX);
    column.Row("Pi-section Q:", FormatNumber(state.piQ), kValueX);
    column.Row("Generator resistance:", WithUnit(state.genMultiplier * state.plateR, "ohms"),
               kValueX);
    column.Row("Peak swing:", FormatNumber(state.peakSwing) + "V", kValueX);
    column.Row("RF power:", FormatNumber(state.rfPower) + "W", kValueX);
    column.Skip();
    if (phases) {
        column.Row("Pi phase:", FormatNumber(phases->piPhase) + "deg.", kValueX);
        column.Row("L phase:", FormatNumber(phases->lPhase) + "deg.", kValueX);
    }
    for (const StressText& text : stresses.texts)
        if (text.part == StressPart::TotalPhase) column.Line(text.text);
}

std::string StressTextOf(const StressDisplay& stresses, StressPart part) {
    for (const StressText& text : stresses.texts)
        if (text.part == part) return text.text;
    return {};
}

// The peak voltage across an inductor: its current times its reactance, where the current is
// shown at all.
std::string InductorVoltage(const StressDisplay& stresses, StressPart current, float amps,
                            float reactance) {
    if (StressTextOf(stresses, current).empty()) return {};
    return FormatNumber(static_cast<float>(amps * reactance * std::sqrt(2.0))) + "Vpeak";
}

struct TableRow {
    const char* part;
    std::string value;
    float reactance;
    std::string voltage;
    std::string current;
    TankPart tankPart;
    bool present;
};

void DrawComponentTable(Surface& page, const ComponentValues& parts, const StressDisplay& stresses,
                        const std::optional<TankLosses>& losses) {
    // Far enough apart for "3.021kVpeak" beside "13.124 Arms" in the print's font.
    constexpr std::array<float, 6> kColumnX{4300, 4750, 5800, 6950, 8250, 9400};
    float y = 620;
    page.SetFont(kFont, kHeadingPoints, true);
    page.Text(kColumnX[0], y, "Components and stresses");
    y += kLineStep + 40;
    page.SetFont(kFont, kBodyPoints, true);
    const std::array<const char*, 6> headers{"Part",    "Value",   "Reactance",
                                             "Voltage", "Current", "Loss"};
    for (std::size_t i = 0; i < headers.size() - (losses ? 0 : 1); ++i)
        page.Text(kColumnX[i], y, headers[i]);
    page.SetFont(kFont, kBodyPoints);
    using enum StressPart;
    // Without an L section its rows stand blank.
    const bool lSection = parts.lSection.has_value();
    const LSectionValues l = parts.lSection.value_or(LSectionValues{});
    const std::array<TableRow, 5> rows{{
        {"C1", FormatFarad(parts.C1), parts.xC1, StressTextOf(stresses, C1Voltage),
         StressTextOf(stresses, C1Current), TankPart::C1, true},
        {"L1", FormatHenry(parts.L1), parts.xL1,
         InductorVoltage(stresses, L1Current, stresses.iL1, parts.xL1),
         StressTextOf(stresses, L1Current), TankPart::L1, true},
        {"C2", FormatFarad(parts.C2), parts.xC2, StressTextOf(stresses, C2Voltage),
         StressTextOf(stresses, C2Current), TankPart::C2, true},
        {"L2", FormatHenry(l.L2), l.xL2, InductorVoltage(stresses, L2Current, stresses.iL2, l.xL2),
         StressTextOf(stresses, L2Current), TankPart::L2, lSection},
        {"C3", FormatFarad(l.C3), l.xC3, StressTextOf(stresses, C3Voltage),
         StressTextOf(stresses, C3Current), TankPart::C3, lSection},
    }};
    for (const TableRow& row : rows) {
        y += kLineStep;
        page.Text(kColumnX[0], y, row.part);
        if (!row.present) continue;
        const std::array<std::string, 4> cells{row.value, WithUnit(row.reactance, "ohms"),
                                               row.voltage, row.current};
        for (std::size_t i = 0; i < cells.size(); ++i)
            page.Text(kColumnX[i + 1], y, cells[i]);
        if (losses)
            page.Text(kColumnX[5], y,
                      FormatNumber(static_cast<float>(losses->Watts(row.tankPart))) + "W");
    }
}

void DrawLosses(Surface& page, const TankLosses& losses) {
    TextColumn column(page, 4300, 2400);
    column.Heading("Tank losses");
    column.Line("With coils of unloaded Q " + FormatNumber(static_cast<float>(losses.q.coil)) +
                "and capacitors of Q " + FormatNumber(static_cast<float>(losses.q.capacitor)) +
                ":");
    if (const std::string wound = WoundQNote(losses.q); !wound.empty())
        column.Line("but with " + wound + ":");
    column.Line("efficiency " + FormatNumber(static_cast<float>(losses.efficiencyPercent)) +
                "%, loss " + FormatNumber(static_cast<float>(losses.lossDb)) + "dB;");
    column.Line("the network takes in " + FormatNumber(static_cast<float>(losses.inputWatts)) +
                "W for " + FormatNumber(static_cast<float>(losses.loadWatts)) + "W into the load.");
}

// The explanatory block without its last two lines, which invite an entry on the screen.
void DrawNotes(Surface& page, const StressDisplay& stresses, float top) {
    page.SetFont(kFont, kBodyPoints);
    TextColumn column(page, kPlotLeft, top);
    for (const StressText& text : stresses.texts)
        if (text.part == StressPart::Note && text.noteLine < kGeneratorNoteLine - 1)
            column.Line(text.text);
}

float GraphicsY(float screenY, const LogicalRect& window) {
    return kGraphicsTop + (screenY - window.top) * kGraphicsScale;
}

void DrawRowCaptions(Surface& page) {
    page.SetFont(kFont, kBodyPoints, true);
    const std::array<std::pair<float, const char*>, 3> captions{{{kPiSectionRowY, "Pi section"},
                                                                 {kLSectionRowY, "L section"},
                                                                 {kNetworkRowY, "Pi-L network"}}};
    for (const auto& [rowY, caption] : captions)
        page.Text(0, GraphicsY(rowY, kSchematicWindow), caption,
                  TextAlign{HorizontalAlign::Left, VerticalAlign::Middle});
}

PagePlacement Place(Surface drawing, const LogicalRect& window, float left) {
    const LogicalRect target{left, kGraphicsTop, window.width * kGraphicsScale,
                             window.height * kGraphicsScale};
    return {std::move(drawing), window, target};
}

PagePlacement SchematicPlacement(const DesignState& state, const StressDisplay& stresses) {
    Surface drawing(kDesignScreenWidth, kDesignScreenHeight);
    DrawSchematic(drawing, state);
    drawing.SetFont(kFont, 8);
    for (const StressText& text : stresses.texts) {
        if (text.part == StressPart::Note) continue;
        const ScreenPoint at = StressTextPlace(text);
        drawing.Text(at.x, at.y, text.text);
    }
    return Place(std::move(drawing), kSchematicWindow, kCaptionWidth);
}

// On paper the small plot stands smaller than on the screen: of the frequency labels under it
// (between the frame and the harmonic table) that would run into each other, the later ones
// are left out.
void DropCrowdedFrequencyLabels(Surface& drawing) {
    const AverageGlyphMeasure measure;
    // One box per text, in drawing order: the n-th box is the n-th text drawn.
    const std::vector<TextBox> boxes = TextBoxes(drawing, measure);
    std::vector<TextBox> kept;
    std::vector<bool> crowded(boxes.size(), false);
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const TextBox& box = boxes[i];
        if (box.top < kSmallPlotFrame.area.bottom || box.top >= kHarmonicHeaderY - 100) continue;
        // Room between two texts: the page's fonts run wider than the average glyphs measured
        // here, by up to a third of a short label.
        const float gap = std::max((box.bottom - box.top) / 4, (box.right - box.left) / 3);
        crowded[i] = std::any_of(kept.begin(), kept.end(), [&](const TextBox& other) {
            return box.top < other.bottom && other.top < box.bottom &&
                   box.left < other.right + gap && other.left < box.right + gap;
        });
        if (!crowded[i]) kept.push_back(box);
    }
    std::size_t text = 0;
    drawing.Drop(
        [&](const DrawOp& op) { return op.kind == DrawOp::Kind::Text && crowded[text++]; });
}

PagePlacement PlotPlacement(const DesignState& state, const DesignResults& results) {
    Surface drawing(kDesignScreenWidth, kDesignScreenHeight);
    DrawSmallPlot(drawing, state, results);
    DropCrowdedFrequencyLabels(drawing);
    return Place(std::move(drawing), kPlotWindow, kPlotLeft);
}

}  // namespace

PrintDocument DesignReportDocument(const DesignState& state, const DesignResults& results,
                                   const std::string& date) {
    const StressDisplay& stresses = results.stresses;

    Surface text(kPrintPageWidth, kPrintPageHeight);
    DrawPageTitle(text, "VARO - Pi-L network design");
    DrawSummary(text, state, stresses, results.phases);
    DrawComponentTable(text, results.components, stresses, results.losses);
    if (results.losses) DrawLosses(text, *results.losses);
    DrawRowCaptions(text);
    DrawNotes(text, stresses, GraphicsY(kPlotWindow.top + kPlotWindow.height, kPlotWindow) + 300);
    const int pages = results.bandPlan ? 2 : 1;
    DrawPageFooter(text, 1, pages, date);

    PrintPage page{kPrintPageWidth, kPrintPageHeight, {}};
    page.placements.push_back(WholePage(std::move(text)));
    page.placements.push_back(SchematicPlacement(state, stresses));
    page.placements.push_back(PlotPlacement(state, results));
    PrintDocument document{"VARO design report", {std::move(page)}};
    // The band plan, once one has been made, on a page of its own.
    if (results.bandPlan) document.pages.push_back(BandPlanPage(*results.bandPlan, 2, 2, date));
    return document;
}

bool PrintDesignReport(const DesignState& state, const DesignResults& results, Dialogs& dialogs) {
    return PrintReported(DesignReportDocument(state, results, TodayShortDate()), dialogs,
                         "The design report could not be printed.");
}

}  // namespace varo
