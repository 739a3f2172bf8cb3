#include "model/pictures/band_plan_page.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "model/pictures/band_chart.h"
#include "model/pictures/page_parts.h"

namespace varo {

namespace {

constexpr double kPico = 1e-12;
constexpr float kLeft = 0;
constexpr float kChartTop = 1500;
constexpr float kChartBottom = 5600;

std::string Pf(double farads) {
    return FixedText(farads / kPico, 1);
}

std::string InputsLine(const BandPlanInputs& inputs) {
    return "Tube " + Pf(inputs.tubeCapacitance) + " pF + stray " + Pf(inputs.strayCapacitance) +
           " pF; tuning " + Pf(inputs.tune.min) + "-" + Pf(inputs.tune.max) + " pF; loading " +
           Pf(inputs.load.min) + "-" + Pf(inputs.load.max) + " pF; conduction " +
           FixedText(inputs.conductionDegrees, 0) + " deg; limit " + FixedText(inputs.limitDbc, 1) +
           " dBc";
}

std::string EdgesLine(const BandResult& band) {
    std::string line;
    for (const Tuning& edge : band.edges) {
        line += (line.empty() ? "" : ";  ") + FixedText(edge.frequency / 1e6, 3) + " MHz: ";
        line += edge.solvable ? "tune " + Pf(edge.tune) + " pF, load " + Pf(edge.load) + " pF"
                              : "no match";
    }
    return line;
}

std::string WorstHarmonicLine(const BandResult& band) {
    if (band.harmonics.empty()) return {};
    const auto worst = std::min_element(band.harmonics.begin(), band.harmonics.end(),
                                        [](const HarmonicEstimate& a, const HarmonicEstimate& b) {
                                            return a.marginDb < b.marginDb;
                                        });
    std::string line = "Worst harmonic: " + std::to_string(worst->n) + " at " +
                       FixedText(worst->outputDbc, 1) + " dBc, margin " +
                       FixedText(worst->marginDb, 1) + " dB";
    if (band.stresses)
        line += ";  loading " + FixedText(band.stresses->loadPeakVolts, 0) + " Vpeak, L1 " +
                FixedText(band.stresses->l1Amperes, 2) + " Arms, L2 " +
                FixedText(band.stresses->l2Amperes, 2) + " Arms";
    if (band.efficiencyPercent)
        line += ";  efficiency " + FixedText(*band.efficiencyPercent, 1) + " %";
    return line;
}

void DrawBand(TextColumn& column, const BandResult& band) {
    column.Line(band.band.name + ":  " + (band.feasible() ? "feasible" : "NOT feasible") +
                (band.designed
                     ? ",  Q " + FixedText(band.q, 1) + ",  L1 " + FixedText(band.l1 * 1e6, 2) +
                           " uH,  L2 " + FixedText(band.l2 * 1e6, 2) + " uH"
                     : ""));
    if (band.designed) {
        column.Line("   " + EdgesLine(band));
        column.Line("   " + WorstHarmonicLine(band));
    }
    for (const std::string& note : band.notes)
        column.Line("   " + note);
    for (const std::string& shortfall : band.shortfalls)
        column.Line("   Short: " + shortfall);
}

}  // namespace

PrintPage BandPlanPage(const BandPlan& plan, int number, int count, const std::string& date) {
    Surface page(kPrintPageWidth, kPrintPageHeight);
    DrawPageTitle(page, "VARO - Band plan");
    page.SetFont(kPageFont, kPageBodyPoints);
    TextColumn top(page, kLeft, 1000);
    top.Line(InputsLine(plan.inputs));
    DrawBandChart(page, {kLeft, kChartTop, kPrintPageWidth, kChartBottom}, plan);
    page.SetFont(kPageFont, kPageBodyPoints);
    TextColumn column(page, kLeft, kChartBottom + 300);
    for (const BandResult& band : plan.bands)
        DrawBand(column, band);
    for (const std::string& note : plan.notes)
        column.Line(note);
    DrawPageFooter(page, number, count, date);
    PrintPage printed{kPrintPageWidth, kPrintPageHeight, {}};
    printed.placements.push_back(WholePage(std::move(page)));
    return printed;
}

}  // namespace varo
