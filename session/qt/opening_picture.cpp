#include "session/qt/opening_picture.h"

#include <cmath>
#include <numbers>

namespace varo {

namespace {

constexpr float kRail = 1040;  // the rail runs this far below the top line
constexpr float kWire = 160;
constexpr float kTurnRadius = 80;
constexpr int kPictureTurns = 4;
constexpr float kCapacitorWidth = 400;
constexpr float kPlateHalfWidth = 120;
constexpr float kPlateGap = 120;
constexpr float kTubeWidth = 1200;
constexpr float kTubeRadius = 190;

void DrawRails(Surface& surface, float x, float y, float length) {
    surface.Line(x, y, x + length, y, kBlack);
    surface.Line(x, y + kRail, x + length, y + kRail, kBlack);
}

void PictureWire(Surface& surface, float& x, float y) {
    DrawRails(surface, x, y, kWire);
    x += kWire;
}

// A triode: plate, grid and cathode inside the envelope; plate to the top line, cathode to the
// rail, grid lead out to the left.
void PictureTube(Surface& surface, float& x, float y) {
    const float cx = x + kTubeWidth / 2;
    const float cy = y + kRail / 2;
    surface.Arc(cx, cy, kTubeRadius, 0, 6.2, kBlack);
    surface.Line(cx - 80, cy - 100, cx + 80, cy - 100, kBlack);
    surface.Line(cx, cy - 100, cx, y, kBlack);
    for (float left : {-90.0f, -20.0f, 50.0f})
        surface.Line(cx + left, cy, cx + left + 40, cy, kBlack);
    surface.Line(cx - kTubeRadius - 150, cy, cx - 90, cy, kBlack);
    surface.Line(cx - 80, cy + 100, cx + 80, cy + 100, kBlack);
    surface.Line(cx, cy + 100, cx, y + kRail, kBlack);
    DrawRails(surface, cx, y, x + kTubeWidth - cx);
    x += kTubeWidth;
}

void PictureCapacitor(Surface& surface, float& x, float y) {
    const float cx = x + kCapacitorWidth / 2;
    const float upperPlate = y + (kRail - kPlateGap) / 2;
    const float lowerPlate = upperPlate + kPlateGap;
    DrawRails(surface, x, y, kCapacitorWidth);
    surface.Line(cx, y, cx, upperPlate, kBlack);
    surface.Line(cx - kPlateHalfWidth, upperPlate, cx + kPlateHalfWidth, upperPlate, kBlack);
    surface.Line(cx - kPlateHalfWidth, lowerPlate, cx + kPlateHalfWidth, lowerPlate, kBlack);
    surface.Line(cx, lowerPlate, cx, y + kRail, kBlack);
    x += kCapacitorWidth;
    PictureWire(surface, x, y);
    PictureWire(surface, x, y);
}

void PictureInductor(Surface& surface, float& x, float y) {
    for (int k = 0; k < kPictureTurns; ++k)
        surface.Arc(x + kTurnRadius * static_cast<float>(2 * k + 1), y, kTurnRadius, 0,
                    std::numbers::pi, kBlack);
    const float turns = 2 * kTurnRadius * kPictureTurns;
    surface.Line(x, y + kRail, x + turns, y + kRail, kBlack);
    x += turns;
    PictureWire(surface, x, y);
}

// The load end: a lead down from the top line with three short rungs, on to the rail.
void PictureEnd(Surface& surface, float x, float y) {
    surface.Line(x, y, x, y + 350, kBlack);
    for (float drop : {350.0f, 410.0f, 470.0f})
        surface.Line(x - 30, y + drop, x + 30, y + drop, kBlack);
    surface.Line(x, y + 470, x, y + kRail, kBlack);
}

}  // namespace

void DrawOpeningPanels(Surface& surface) {
    surface.FillBox(3500, 2500, 5900, 4500, RgbColour(0xEE, 0xFF, 0xFF));
    surface.OutlineBox(3500, 2500, 5900, 4500, kOpeningPanelOutline);
    surface.FillBox(6200, 2500, 7850, 4500, RgbColour(0xFF, 0xFF, 0xE6));
    surface.OutlineBox(6200, 2500, 7850, 4500, kOpeningPanelOutline);
}

void DrawNetworkPicture(Surface& surface) {
    const float y = 3000;
    float x = 2400;
    surface.SetLineWidth(2);
    PictureTube(surface, x, y);
    PictureCapacitor(surface, x, y);
    PictureInductor(surface, x, y);
    PictureCapacitor(surface, x, y);
    PictureWire(surface, x, y);
    PictureWire(surface, x, y);
    PictureCapacitor(surface, x, y);
    PictureInductor(surface, x, y);
    PictureEnd(surface, x, y);
}

void DrawTitleImage(Surface& surface) {
    constexpr Colour kBackground = RgbColour(0x33, 0x33, 0x66);
    constexpr Colour kWave = RgbColour(0xFF, 0xB0, 0x30);
    surface.Clear();
    surface.FillBox(0, 0, kTitleImageWidth, kTitleImageHeight, kBackground);
    surface.SetFont("Arial", 28, true);
    surface.Text(170, 170, "VARO", kWhite);
    // Two and a half cycles of carrier, as a polyline.
    constexpr float kWaveLeft = 1950, kWaveRight = 2830, kWaveY = 500, kAmplitude = 230;
    constexpr int kSegments = 60;
    constexpr double kCycles = 2.5;
    surface.SetLineWidth(2);
    float fromX = kWaveLeft;
    float fromY = kWaveY;
    for (int i = 1; i <= kSegments; ++i) {
        const double phase = 2 * std::numbers::pi * kCycles * i / kSegments;
        const float toX = kWaveLeft + (kWaveRight - kWaveLeft) * static_cast<float>(i) / kSegments;
        const float toY = kWaveY - kAmplitude * static_cast<float>(std::sin(phase));
        surface.Line(fromX, fromY, toX, toY, kWave);
        fromX = toX;
        fromY = toY;
    }
    surface.SetLineWidth(1);
    surface.Line(170, 860, 2830, 860, RgbColour(0xEE, 0xFF, 0xFF));
}

}  // namespace varo
