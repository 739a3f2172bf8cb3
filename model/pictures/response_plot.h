#pragma once

#include <array>
#include <optional>
#include <vector>

#include "core/design_state.h"
#include "platform/surface.h"

namespace varo {

// Colours shared by every response plot (0xBBGGRR).
inline constexpr Colour kPlotBackground = 0xFFFFEE;
inline constexpr Colour kPlotOutline = 0x663333;
inline constexpr Colour kPlotGrid = 0xAAAAAA;
inline constexpr Colour kTransmissionCurve = kRed;
inline constexpr Colour kReturnCurve = kBlue;
// Saved curves drawn over a design: transmission light blue, return orange.
inline constexpr Colour kOverlayTransmission = RgbColour(0x99, 0x99, 0xFF);
inline constexpr Colour kOverlayReturn = RgbColour(0xFF, 0x66, 0x11);

// The plot area in a screen's logical units: 0 dB on the top edge, the floor on the bottom, the
// sweep's start and stop frequencies on the left and right edges.
struct PlotArea {
    float left, top, right, bottom;
    float width() const { return right - left; }
    float height() const { return bottom - top; }
};

struct CurveStyle {
    Colour line;
    // A first point marked with a dot of this colour (one layout pixel); none when not set.
    std::optional<Colour> firstDot;
};

// A dot in a dot: a ring of the outer colour around the inner one.
struct MarkerStyle {
    float outerWidth;
    Colour outer;
    float innerWidth;
    Colour inner;
};

struct PlotLabelStyle {
    const char* font;
    float pointSize;
    // Crowded frequency labels shrink down to this size before they are moved apart.
    float smallestPointSize;
    float gap;            // between a dB label and the frame, and between neighbouring labels
    float frequencyRowY;  // top of the frequency labels' row, under the plot
};

// Everything that tells one response plot from another: where it lies and how it draws.
struct PlotFrame {
    PlotArea area;
    float fillOverhang;     // the background reaches this far above and below the area,
    float outlineOverhang;  // and the outline this far, so the 0 dB and floor lines show
    CurveStyle transmission;
    CurveStyle returnLoss;
    MarkerStyle marker;
    // Curves keep X as mapped; markers and overlays are always held inside the area.
    bool clampCurveX;
    PlotLabelStyle labels;
};

// Log-frequency and dB mapping onto a plot area; curves, markers and overlays share it.
class PlotScale {
  public:
    // Nothing when the limits cannot give a finite mapping.
    static std::optional<PlotScale> From(const PlotArea& area, float sweepStart, float sweepStop,
                                         float floorDb, float topDb = 0);
    // The design's sweep limits, 0 dB at the top and plotFloorDb at the bottom.
    static std::optional<PlotScale> From(const PlotArea& area, const DesignState& state);

    // Plot coordinates, in single precision, held inside the area.
    float X(float frequency) const;
    float Y(float db) const;
    // X as mapped; only a frequency that has no logarithm is put on an edge.
    float UnclampedX(float frequency) const;

  private:
    PlotScale(const PlotArea& area, double logStart, double logSpan, double topDb, double dbSpan)
        : area_(area), logStart_(logStart), logSpan_(logSpan), topDb_(topDb), dbSpan_(dbSpan) {}
    double MappedX(float frequency) const;

    PlotArea area_;
    double logStart_;
    double logSpan_;
    double topDb_;
    double dbSpan_;
};

// The background, then its outline.
void DrawPlotFrame(Surface& surface, const PlotFrame& frame);

// Horizontal lines from the top edge down, each step one unit short of an exact division, so
// the last line falls just above the bottom edge; each labelled with its dB value at its left.
void DrawDbGrid(Surface& surface, const PlotFrame& frame, int divisions, float floorDb);

// A vertical line at each grid frequency, labelled under the plot (on a white strip) with the
// frequency, centred on its line; crowded labels are set smaller, on the same baseline, and
// then moved just apart.
void DrawFrequencyGrid(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
                       const std::vector<float>& gridFrequencies);

// One swept curve, points 0 to sweepIntervals, each joined to the one before.
void DrawCurve(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
               const DesignState& state, const std::array<float, kSweepPoints>& values,
               const CurveStyle& style);
// Transmission, then return.
void DrawResponseCurves(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
                        const DesignState& state);

// The frame's marker on a point of the plot, held inside the area.
void MarkPlotPoint(Surface& surface, const PlotFrame& frame, const PlotScale& scale,
                   float frequency, float db);

// A saved curve over the plot: frequencies from sweepFrequency and values from `values`, points
// 0 to lastIndex, between topDb at the top and floorDb at the bottom, in a pen two pixels wide,
// light blue for curve 0 (transmission), orange for curve 1 (return). Frequencies are placed on
// the current sweep's scale and held inside the area like the values.
void DrawOverlay(Surface& surface, const PlotFrame& frame, const DesignState& state,
                 const std::array<float, kSweepPoints>& values, int lastIndex, float topDb,
                 float floorDb, int curve);

}  // namespace varo
