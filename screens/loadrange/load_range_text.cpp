#include "screens/loadrange/load_range_text.h"

#include <cmath>

#include "model/fixed_text.h"

namespace varo {

namespace {

constexpr double kPico = 1e-12;

struct StressText {
    const char* name;
    const char* unit;
    int decimals;
};
// In the order of LoadStress.
constexpr std::array<StressText, kLoadStresses> kStressTexts{{{"C1 voltage", "Vpeak", 0},
                                                              {"loading voltage", "Vpeak", 0},
                                                              {"L1 current", "Arms", 2},
                                                              {"L2 current", "Arms", 2},
                                                              {"tank loss", "W", 1}}};

bool OnCircle(const LoadRangeResult& result) {
    return result.request.kind == LoadRangeRequest::Kind::SwrCircle;
}

// Where a load stands: its phase on a circle, else its number and, when measured, frequency.
// The table's first column is narrower: the phase, the frequency measured at, or the number.
std::string Where(const LoadRangeResult& result, const LoadRange& range, int index, bool onCircle) {
    const LoadCase& load = range.loads[index];
    if (onCircle) return TrimmedText(load.phaseDegrees, 1) + " deg";
    std::string where = std::string("point ") + std::to_string(index + 1);
    if (result.request.kind == LoadRangeRequest::Kind::Measured)
        where += std::string(", ") + FixedText(load.frequency / 1e6, 3) + " MHz";
    return where;
}

std::string FirstCell(const LoadRangeResult& result, int index) {
    const LoadCase& load = result.range.loads[index];
    if (OnCircle(result)) return TrimmedText(load.phaseDegrees, 1);
    if (result.request.kind == LoadRangeRequest::Kind::Measured)
        return FixedText(load.frequency / 1e6, 3) + " MHz";
    return std::to_string(index + 1);
}

std::string StressCell(const LoadRange& range, const LoadCase& load, LoadStress stress) {
    if (!range.withPower || (stress == LoadStress::LossWatts && !load.lossWatts)) return "-";
    return FixedText(StressOf(load, stress), kStressTexts[static_cast<int>(stress)].decimals);
}

std::string SpanText(const CapacitanceSpan& span) {
    return FixedText(span.min / kPico, 1) + " to " + FixedText(span.max / kPico, 1) + " pF";
}

void AppendRange(std::string& text, const LoadRangeResult& result, const LoadRange& range,
                 bool onCircle, const std::string& indent) {
    for (int s = 0; s < kLoadStresses; ++s) {
        const WorstCase& worst = range.worst[s];
        if (worst.index < 0) continue;
        const StressText& stress = kStressTexts[s];
        text += indent + "Worst " + stress.name + ": " + FixedText(worst.value, stress.decimals) +
                " " + stress.unit + " at " + Where(result, range, worst.index, onCircle) + "\n";
    }
    if (range.c1Cover && range.loadCover)
        text += indent + "C1 " + SpanText(*range.c1Cover) + ", loading " +
                SpanText(*range.loadCover) + "\n";
    if (range.unmatched > 0)
        text += indent + std::to_string(range.unmatched) + " of " +
                std::to_string(range.loads.size()) + " loads cannot be matched with these coils.\n";
}

}  // namespace

std::string FirstColumnHeading(const LoadRangeResult& result) {
    return OnCircle(result) ? "Phase" : "Point";
}

std::vector<LoadRowText> LoadRows(const LoadRangeResult& result) {
    std::vector<LoadRowText> rows;
    const LoadRange& range = result.range;
    for (int k = 0; k < static_cast<int>(range.loads.size()); ++k) {
        const LoadCase& load = range.loads[k];
        LoadRowText row;
        row.matched = load.tuning.solvable;
        row.cells = {FirstCell(result, k), FixedText(load.zLoad.re, 2),
                     FixedText(load.zLoad.im, 2)};
        if (!row.matched) {
            row.cells.push_back(load.tuning.problem);
            rows.push_back(std::move(row));
            continue;
        }
        row.cells.push_back(FixedText(load.tuning.c1 / kPico, 1));
        row.cells.push_back(FixedText(load.tuning.load / kPico, 1));
        for (int s = 0; s < kLoadStresses; ++s)
            row.cells.push_back(StressCell(range, load, static_cast<LoadStress>(s)));
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string LoadRangeSummary(const LoadRangeResult& result) {
    std::string text;
    AppendRange(text, result, result.range, OnCircle(result), "");
    if (!result.range.withPower)
        text += "The design has no RF power: the stresses and losses need one.\n";
    for (const BandLoadRange& band : result.bands) {
        text += band.band + " (" + FixedText(band.centre / 1e6, 3) + " MHz):\n";
        AppendRange(text, result, band.range, true, "  ");
        for (const std::string& shortfall : band.shortfalls)
            text += std::string("  Short: ") + shortfall + "\n";
    }
    return text;
}

}  // namespace varo
