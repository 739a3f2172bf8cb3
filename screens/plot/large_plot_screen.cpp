#include "screens/plot/large_plot_screen.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"
#include "platform/textfile.h"
#include "model/pictures/large_plot.h"

namespace varo {

namespace {

constexpr double kNudgeFactor = 1.03;
constexpr int kMarkedHarmonics = 3;
constexpr float kReadoutRowY = 7400;
constexpr float kReadoutRowStep = 200;
constexpr float kReadoutHeaderY = 7390;
constexpr float kReturnShownDownTo = -100;
constexpr float kVswrShownUpTo = 1000;

struct ReadoutColumn {
    float x;
    const char* header;  // nullptr: the column has none (the row label's)
};
// The row label and the frequency share the "Frequency:" header.
constexpr std::array<ReadoutColumn, 8> kReadoutColumns{{{2600, "Frequency:"},
                                                        {3100, nullptr},
                                                        {3800, "Transmission:"},
                                                        {5000, "Angle:"},
                                                        {5800, "Return:"},
                                                        {6800, "VSWR:"},
                                                        {7600, "Impedance:"},
                                                        {8700, "Z angle:"}}};
constexpr std::array<const char*, 5> kHarmonicLabels = {"Fund.", "2nd", "3rd", "4th", "5th"};

// A text set where a white point has put the pen.
void PrintAt(Surface& surface, float x, float y, std::string text) {
    surface.Point(x, y, 1, kWhite);
    surface.Text(x, y, std::move(text));
}

std::vector<float> Span(const std::array<float, kSweepPoints>& values, int last) {
    return {values.begin(), values.begin() + (last + 1)};
}

// A figure rounded to `places` decimals, in plain text.
std::string Rounded(double value, int places) {
    const double scale = std::pow(10.0, places);
    const double rounded = std::round(value * scale) / scale;
    return PlainText(rounded == 0 ? 0.0 : rounded);
}

std::string OhmsText(double ohms) {
    if (std::fabs(ohms) >= 1000) return Rounded(ohms / 1000, 3) + " k\u03A9";
    return Rounded(ohms, 2) + " \u03A9";
}

std::string HertzText(double hertz) {
    if (hertz >= 1e6) return Rounded(hertz / 1e6, 4) + " MHz";
    if (hertz >= 1e3) return Rounded(hertz / 1e3, 3) + " kHz";
    return Rounded(hertz, 1) + " Hz";
}

// The usual impedance angle: positive for an inductive input.
float UsualZAngle(float storedAngle) {
    return 0.0f - storedAngle;
}

std::size_t NearestIndex(const std::vector<float>& frequencies, float frequency) {
    std::size_t best = 0;
    double bestDistance = INFINITY;
    const double logF = std::log(static_cast<double>(frequency));
    for (std::size_t i = 0; i < frequencies.size(); ++i) {
        if (!(frequencies[i] > 0)) continue;
        const double distance = std::fabs(std::log(static_cast<double>(frequencies[i])) - logF);
        if (distance < bestDistance) {
            bestDistance = distance;
            best = i;
        }
    }
    return best;
}

std::string OverlayLine(const char* name, const std::optional<OverlayCurve>& curve,
                        float frequency) {
    if (!curve || curve->frequency.empty()) return {};
    const std::size_t i = NearestIndex(curve->frequency, frequency);
    return std::string("\nOverlay ") + name + ": " + Rounded(curve->value[i], 2) + " dB";
}

}  // namespace

SweepCopy SweepCopy::Of(const DesignState& s) {
    const int last = std::clamp<int>(s.sweepIntervals, -1, kSweepPoints - 1);
    return {Span(s.sweepFrequency, last), Span(s.sweepTransmission, last),
            Span(s.sweepPhase, last),     Span(s.sweepReturn, last),
            Span(s.sweepVswr, last),      Span(s.sweepZMagnitude, last),
            Span(s.sweepZAngle, last)};
}

std::string LargePlotSummary(const DesignState& s) {
    const float inputTermination = s.plateR * s.genMultiplier;
    return "    Frequency: " + FormatHz(s.frequency) +
           "       Input termination: " + FormatNumber(inputTermination) + " ohms" +
           "       Midpoint: " + FormatNumber(s.intermediateR) + "ohms" +
           "       Output termination: " + FormatNumber(s.loadR) + "ohms" +
           "       PI-net Q: " + FormatNumber(s.piQ);
}

LargePlotResults ComputeLargePlot(DesignState& state, Reporter& reporter) {
    LargePlotResults results;
    results.gridFrequencies = BuildGridFrequencies(state);
    RunGuarded(reporter, [&] { SweepRoutine(state, reporter); });
    results.harmonics = AnalyzeHarmonicsAsLaidOut(state);
    results.sweep = SweepCopy::Of(state);
    results.sweepStart = state.sweepStart;
    results.sweepStop = state.sweepStop;
    results.referenceOhms = state.sourceR;
    return results;
}

void DrawLargePlot(Surface& surface, const DesignState& state, const LargePlotResults& results,
                   float screenHeightTwips) {
    DrawLargePlotChart(surface, state, results.gridFrequencies);
    ShowLargeReadout(surface, state, results.harmonics, screenHeightTwips);
}

std::vector<std::string> ReadoutRowTexts(const HarmonicRow& row) {
    const LadderResult& r = row.result;
    const float angle =
        r.transmissionPhase > 0 ? r.transmissionPhase - 360.0f : r.transmissionPhase;
    const std::string returnText =
        r.returnDb < kReturnShownDownTo ? std::string("< -100 ") : FormatNumber(r.returnDb);
    const std::string vswrText = r.vswr > kVswrShownUpTo ? "> 1000" : FormatNumber(r.vswr);
    const int label = std::clamp(row.n, 1, static_cast<int>(kHarmonicLabels.size())) - 1;
    return {kHarmonicLabels[label],
            FormatHz(row.frequency),
            FormatNumber(r.transmissionDb) + "dB",
            FormatNumber(angle),
            returnText + "dB",
            vswrText,
            FormatNumber(r.zMagnitude),
            FormatNumber(UsualZAngle(r.zAngle))};
}

void ShowLargeReadout(Surface& surface, const DesignState& state,
                      const std::vector<HarmonicRow>& harmonics, float screenHeightTwips) {
    surface.SetFont(kDefaultSurfaceFont, kDefaultSurfacePointSize);
    const float headerY = static_cast<float>(
        kReadoutHeaderY + (screenHeightTwips > 0 ? 9000.0 / screenHeightTwips : 0.0));
    for (const ReadoutColumn& column : kReadoutColumns)
        if (column.header != nullptr) PrintAt(surface, column.x, headerY, column.header);
    for (const HarmonicRow& row : harmonics) {
        const float y = kReadoutRowY + kReadoutRowStep * static_cast<float>(row.n);
        const std::vector<std::string> texts = ReadoutRowTexts(row);
        for (std::size_t i = 0; i < texts.size(); ++i)
            PrintAt(surface, kReadoutColumns[i].x, y, texts[i]);
        if (row.n <= kMarkedHarmonics)
            MarkLargePlotHarmonic(surface, state, row.frequency, row.result.transmissionDb);
    }
}

bool NudgeComponent(DesignState& state, Nudge nudge, Reporter& reporter) {
    const bool capacitor = nudge == Nudge::CapacitorDown || nudge == Nudge::CapacitorUp;
    const bool up = nudge == Nudge::CapacitorUp || nudge == Nudge::InductorUp;
    float& part = capacitor ? state.C3 : state.L2;
    const double changed = up ? part * kNudgeFactor : part / kNudgeFactor;
    try {
        part = StoreSingle(changed);
    } catch (const ArithmeticFault&) {
        reporter.ShowMessage(std::string(capacitor ? "C3" : "L2") +
                             " cannot be changed any further; it keeps its value.");
        return false;
    }
    SetupLadder(state);
    if (nudge == Nudge::InductorUp) RunGuarded(reporter, [&] { SweepRoutine(state, reporter); });
    return true;
}

std::string NudgedPartsText(const DesignState& state) {
    return "C3 (CL): " + FormatFarad(state.C3) + "\nL2 (LL): " + FormatHenry(state.L2);
}

std::optional<float> CursorFrequency(const LargePlotResults& results, float logicalX) {
    const PlotArea& area = kLargePlotFrame.area;
    if (!(logicalX >= area.left && logicalX <= area.right)) return std::nullopt;
    if (!(results.sweepStart > 0) || !(results.sweepStop > results.sweepStart)) return std::nullopt;
    const double logStart = std::log(static_cast<double>(results.sweepStart));
    const double logStop = std::log(static_cast<double>(results.sweepStop));
    const double fraction = (logicalX - area.left) / area.width();
    return static_cast<float>(std::exp(logStart + fraction * (logStop - logStart)));
}

std::string CursorReadoutText(const LargePlotResults& results, float logicalX) {
    const auto frequency = CursorFrequency(results, logicalX);
    if (!frequency || results.sweep.size() == 0) return {};
    const SweepCopy& s = results.sweep;
    const std::size_t i = NearestIndex(s.frequency, *frequency);
    return HertzText(*frequency) + "\nTransmission: " + Rounded(s.transmission[i], 2) +
           " dB\nReturn loss re " + OhmsText(results.referenceOhms) + ": " +
           Rounded(0.0 - s.returnDb[i], 2) + " dB\nVSWR: " + Rounded(s.vswr[i], 3) +
           "\n|Zin|: " + OhmsText(s.zMagnitude[i]) +
           "\nZ angle: " + Rounded(UsualZAngle(s.zAngle[i]), 1) + "\u00B0" +
           OverlayLine("S21", results.overlays[0], *frequency) +
           OverlayLine("S11", results.overlays[1], *frequency);
}

void BuildSweepCsv(const LargePlotResults& results, FileText& text) {
    const std::string reference = PlainText(results.referenceOhms);
    text.Line({"Frequency (Hz),Transmission (dB),Phase (deg),Return re ", reference,
               " ohms (dB),VSWR re ", reference, " ohms,|Zin| (ohms),Z angle (deg)"});
    const SweepCopy& s = results.sweep;
    for (std::size_t i = 0; i < s.size(); ++i)
        text.Line({PlainText(s.frequency[i]), ",", PlainText(s.transmission[i]), ",",
                   PlainText(s.phase[i]), ",", PlainText(s.returnDb[i]), ",", PlainText(s.vswr[i]),
                   ",", PlainText(s.zMagnitude[i]), ",", PlainText(UsualZAngle(s.zAngle[i]))});
}

}  // namespace varo
