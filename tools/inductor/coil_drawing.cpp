#include "tools/inductor/coil_drawing.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/numtext.h"
#include "model/pictures/schematic.h"

namespace varo {

namespace {

constexpr Pen kSchematicStart{3000, 1500};

// The side view's frame: the coil is scaled to fit, centred in it.
constexpr float kViewLeft = 7900;
constexpr float kViewRight = 11300;
constexpr float kViewTop = 3700;
constexpr float kViewBottom = 5700;
constexpr float kDimensionGap = 250;
constexpr float kTickHalf = 80;
constexpr int kMostTurnsDrawn = 80;
constexpr Colour kCopper = RgbColour(0xB8, 0x73, 0x33);
constexpr Colour kFormer = RgbColour(0x99, 0x99, 0x99);
// The wires may overlap at most this far, so an absurd fill still stays on the drawing.
constexpr float kLargestFillShown = 200;

std::string Trimmed(std::string text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string MeasureText(float inches, const CoilState& winding) {
    const bool centimetres = IsCentimetreMode(winding);
    const float shown = centimetres ? static_cast<float>(inches * 2.54) : inches;
    return Trimmed(FormatNumber(shown)) + (centimetres ? " cm" : " in");
}

struct CoilOutline {
    float left, top, right, bottom;
};

CoilOutline FitCoil(const CoilState& winding) {
    const float scale = std::min((kViewRight - kViewLeft) / winding.coilLength,
                                 (kViewBottom - kViewTop) / winding.coilDiameter);
    const float width = winding.coilLength * scale;
    const float height = winding.coilDiameter * scale;
    const float left = (kViewLeft + kViewRight - width) / 2;
    const float top = (kViewTop + kViewBottom - height) / 2;
    return {left, top, left + width, top + height};
}

// Each turn's front half crosses the former slanting by half a pitch.
void DrawTurns(Surface& surface, const CoilOutline& coil, float turns) {
    const int drawn = std::clamp(static_cast<int>(std::ceil(turns)), 1, kMostTurnsDrawn);
    const float step = (coil.right - coil.left) / static_cast<float>(drawn);
    for (int turn = 0; turn < drawn; ++turn) {
        const float x = coil.left + static_cast<float>(turn) * step;
        surface.Line(x, coil.top, x + step / 2, coil.bottom, kCopper);
    }
}

void DrawDimensions(Surface& surface, const CoilOutline& coil, const CoilState& winding) {
    const float lengthY = coil.bottom + kDimensionGap;
    surface.Line(coil.left, lengthY, coil.right, lengthY, kBlack);
    for (float x : {coil.left, coil.right})
        surface.Line(x, lengthY - kTickHalf, x, lengthY + kTickHalf, kBlack);
    surface.Text((coil.left + coil.right) / 2, lengthY + kTickHalf,
                 MeasureText(winding.coilLength, winding),
                 TextAlign{HorizontalAlign::Centre, VerticalAlign::Top});

    const float diameterX = coil.left - kDimensionGap;
    surface.Line(diameterX, coil.top, diameterX, coil.bottom, kBlack);
    for (float y : {coil.top, coil.bottom})
        surface.Line(diameterX - kTickHalf, y, diameterX + kTickHalf, y, kBlack);
    surface.Text(diameterX - kTickHalf - 40, (coil.top + coil.bottom) / 2,
                 MeasureText(winding.coilDiameter, winding), kAlignMiddleRight);

    surface.Text((coil.left + coil.right) / 2, coil.top - kTickHalf,
                 Trimmed(FormatNumber(winding.coilTurns)) + " turns", kAlignBaselineCentre);
}

bool Drawable(float measure) {
    return std::isfinite(measure) && measure > 0;
}

}  // namespace

void DrawInductorSchematic(Surface& surface, const DesignState& state) {
    surface.SetLineWidth(1);
    Pen pen = kSchematicStart;
    DrawNetworkRow(surface, pen, state, kInductorScreenSymbols);
}

void DrawWindingSideView(Surface& surface, const CoilState& winding) {
    if (!Drawable(winding.coilLength) || !Drawable(winding.coilDiameter)) return;
    const CoilOutline coil = FitCoil(winding);
    surface.FillBox(coil.left, coil.top, coil.right, coil.bottom, kFormer);
    DrawTurns(surface, coil, winding.coilTurns);
    DrawDimensions(surface, coil, winding);
}

void DrawCrossSection(Surface& surface, float percentFill) {
    if (!Drawable(percentFill)) return;
    // The fill is the wire's diameter over the pitch.
    const float radius = kCrossSectionPitch / 2 * std::min(percentFill, kLargestFillShown) / 100;
    for (int wire = 0; wire < 3; ++wire) {
        surface.Disc(kCrossSectionFirstX + static_cast<float>(wire) * kCrossSectionPitch,
                     kCrossSectionY, radius, kBlue);
    }
    surface.Text(8000, 7600, "Cross-section detail");
}

void DrawInductorScreen(Surface& surface, const DesignState& state, const CoilState* winding) {
    surface.Clear();
    DrawInductorSchematic(surface, state);
    if (winding == nullptr) return;
    DrawWindingSideView(surface, *winding);
    DrawCrossSection(surface, winding->percentFill);
}

}  // namespace varo
