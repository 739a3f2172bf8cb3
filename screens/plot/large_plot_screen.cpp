#include "screens/plot/large_plot_screen.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "core/chain_matrix.h"
#include "core/fault.h"
#include "core/network.h"
#include "core/numtext.h"
#include "model/pictures/large_plot.h"
#include "platform/textfile.h"

namespace varo {

namespace {

constexpr int kMarkedHarmonics = 3;
constexpr float kReadoutRowY = 7400;
constexpr float kReadoutRowStep = 200;
constexpr float kReadoutHeaderY = 7390;
constexpr float kReturnShownDownTo = -100;
constexpr float kVswrShownUpTo = 1000;
constexpr double kKnobStepFactor = 1.002;

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

std::string LargePlotSummary(const DesignState& s) {
    const float inputTermination = s.plateR * s.genMultiplier;
    return "    Frequency: " + FormatHz(s.frequency) +
           "       Input termination: " + FormatNumber(inputTermination) + " ohms" +
           "       Midpoint: " + FormatNumber(s.intermediateR) + "ohms" +
           "       Output termination: " + FormatNumber(s.loadR) + "ohms" +
           "       PI-net Q: " + FormatNumber(s.piQ);
}

void DrawLargePlot(Surface& surface, const DesignState& state, const DesignResults& results,
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
            FormatNumber(UsualZAngle(r))};
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

std::string NudgedPartsText(const DesignState& state) {
    return "C3 (CL): " + FormatFarad(state.C3) + "\nL2 (LL): " + FormatHenry(state.L2);
}

std::optional<float> CursorFrequency(const SweepTable& sweep, float logicalX) {
    const PlotArea& area = kLargePlotFrame.area;
    if (!(logicalX >= area.left && logicalX <= area.right)) return std::nullopt;
    if (!(sweep.start > 0) || !(sweep.stop > sweep.start)) return std::nullopt;
    const double logStart = std::log(static_cast<double>(sweep.start));
    const double logStop = std::log(static_cast<double>(sweep.stop));
    const double fraction = (logicalX - area.left) / area.width();
    return static_cast<float>(std::exp(logStart + fraction * (logStop - logStart)));
}

std::optional<float> CursorX(const SweepTable& sweep, float frequency) {
    if (!(sweep.start > 0) || !(sweep.stop > sweep.start) || !(frequency > 0)) return std::nullopt;
    const PlotArea& area = kLargePlotFrame.area;
    const double fraction = std::log(frequency / static_cast<double>(sweep.start)) /
                            std::log(sweep.stop / static_cast<double>(sweep.start));
    return static_cast<float>(area.left + fraction * area.width());
}

std::optional<std::size_t> SweptIndexNear(const SweepTable& sweep, float frequency) {
    if (sweep.size() == 0) return std::nullopt;
    return NearestIndex(sweep.frequency, frequency);
}

std::string CursorReadoutText(const SweepTable& s, const OverlayCurves& overlays, float logicalX) {
    const auto frequency = CursorFrequency(s, logicalX);
    if (!frequency) return {};
    return CursorReadoutTextAt(s, overlays, *frequency);
}

std::string CursorReadoutTextAt(const SweepTable& s, const OverlayCurves& overlays,
                                float frequency) {
    if (s.size() == 0) return {};
    const std::size_t i = NearestIndex(s.frequency, frequency);
    // Every figure with the plot's own sign: return loss negative, as its scale and the overlay.
    return HertzText(frequency) + "\nTransmission: " + Rounded(s.transmissionDb[i], 2) +
           " dB\nReturn loss re " + OhmsText(s.referenceOhms) + ": " + Rounded(s.returnDb[i], 2) +
           " dB\nVSWR: " + Rounded(s.vswr[i], 3) + "\n|Zin|: " + OhmsText(s.zMagnitude[i]) +
           "\nZ angle: " + Rounded(s.zAngleDeg[i], 1) + "\u00B0" +
           OverlayLine("S21", overlays[0], frequency) + OverlayLine("S11", overlays[1], frequency);
}

double KnobFactor(int position) {
    return std::pow(kKnobStepFactor, position);
}

int KnobPosition(double factor) {
    if (!(factor > 0)) return 0;
    const long steps = std::lround(std::log(factor) / std::log(kKnobStepFactor));
    return static_cast<int>(std::clamp<long>(steps, -kKnobSteps, kKnobSteps));
}

std::string KnobValueText(const DesignState& state, TankPart part, double factor) {
    const bool inductor = part == TankPart::L1 || part == TankPart::L2;
    std::string value;
    if (inductor) {
        value = FormatHenry(PartOf(state, part));
    } else if (part == TankPart::C2 && state.intermediateR > state.loadR) {
        value = "C2 + C3 " + FormatFarad(state.C2 + state.C3);
    } else {
        value = FormatFarad(PartOf(state, part));
    }
    const double percent = (factor - 1) * 100;
    const std::string change = Rounded(percent, 1);
    return value + ", " + (percent > 0 && change != "0" ? "+" : "") + change + " %";
}

std::string TubeViewHeading(const DesignState& state) {
    return "What the tube sees at " + HertzText(state.frequency);
}

std::vector<std::string> TubeViewLines(const InputView& view) {
    const Complex z = view.operating.z, gamma = view.operating.gamma;
    const double angle = std::atan2(gamma.im, gamma.re) * 180 / std::numbers::pi;
    std::vector<std::string> lines{
        "Input impedance: " + Rounded(z.re, 1) + (z.im < 0 ? " - j" : " + j") +
            Rounded(std::fabs(z.im), 1) + " \u03A9",
        "Reflection re " + OhmsText(view.referenceOhms) + ": " +
            Rounded(std::sqrt(SquaredMagnitude(gamma)), 3) + " at " + Rounded(angle, 1) + "\u00B0",
        "VSWR: " +
            (std::isfinite(view.Vswr()) ? Rounded(view.Vswr(), 2) : std::string("infinite"))};
    if (view.plateCurrent && view.loadWatts) {
        lines.push_back("Plate current, fundamental: " + Rounded(*view.plateCurrent, 3) +
                        " A peak");
        lines.push_back("Power into the load: " + Rounded(*view.loadWatts, 1) + " W");
    } else {
        lines.push_back("Plate current and power: the design has no plate swing or RF power");
    }
    return lines;
}

}  // namespace varo
