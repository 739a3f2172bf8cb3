#include "tools/loadhelp/swing_panel.h"

#include <cmath>

namespace varo {

namespace {

constexpr Colour kPanelFill = RgbColour(0xFA, 0xFA, 0xFA);
constexpr Colour kNearBlack = RgbColour(0x11, 0x11, 0x11);
constexpr Colour kLevelBlue = RgbColour(0, 0, 0xFF);

constexpr float kPanelLeft = 8500;
constexpr float kPanelRight = 11000;
constexpr float kPanelTop = 2000;
constexpr float kPanelBottom = 4000;
constexpr int kLastAngle = 360;
// The sine is taken of a / 24 radians: about two and a half cycles across the panel.
constexpr double kAngleDivisor = 24;
constexpr float kSwingAmplitude = 800;

constexpr float kLineLeft = 8700;
constexpr float kLineRight = 10700;
constexpr float kArrowX = 9800;
constexpr float kArrowLength = 500;
constexpr float kHeadLength = 150;
constexpr float kHeadHalfWidth = 30;

void DrawWaveform(Surface& surface) {
    float lastX = kPanelLeft;
    float lastY = kSupplyY;
    for (int angle = 1; angle <= kLastAngle; ++angle) {
        const float x =
            static_cast<float>(angle) * (kPanelRight - kPanelLeft) / kLastAngle + kPanelLeft;
        const float y =
            kSupplyY - kSwingAmplitude * static_cast<float>(std::sin(angle / kAngleDivisor));
        surface.Line(lastX, lastY, x, y, kNearBlack);
        lastX = x;
        lastY = y;
    }
}

// An arrow whose head touches `tipY`; its shaft runs away from the tip in `direction` (-1 up,
// +1 down).
void DrawArrow(Surface& surface, float tipY, float direction) {
    surface.Line(kArrowX, tipY, kArrowX, tipY + direction * kArrowLength, kLevelBlue);
    const float headY = tipY + direction * kHeadLength;
    surface.Line(kArrowX - kHeadHalfWidth, headY, kArrowX, tipY, kLevelBlue);
    surface.Line(kArrowX + kHeadHalfWidth, headY, kArrowX, tipY, kLevelBlue);
}

}  // namespace

void DrawSwingPanel(Surface& surface) {
    surface.FillBox(kPanelLeft, kPanelTop, kPanelRight, kPanelBottom, kPanelFill);
    surface.OutlineBox(kPanelLeft, kPanelTop, kPanelRight, kPanelBottom, kNearBlack);
    DrawWaveform(surface);
    surface.Line(kLineLeft, kSupplyY, kLineRight, kSupplyY, kLevelBlue);
    surface.Line(kLineLeft, kZeroVoltY, kLineRight, kZeroVoltY, kLevelBlue);
    DrawArrow(surface, kSupplyY, -1);
    DrawArrow(surface, kZeroVoltY, +1);
}

}  // namespace varo
