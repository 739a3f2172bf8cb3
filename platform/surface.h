#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace varo {

// Colours are 0xBBGGRR: blue in the high byte, red in the low byte.
using Colour = std::uint32_t;
inline constexpr Colour kBlack = 0x000000;
inline constexpr Colour kWhite = 0xFFFFFF;
inline constexpr Colour kRed = 0x0000FF;
inline constexpr Colour kBlue = 0xFF0000;

constexpr Colour RgbColour(int red, int green, int blue) {
    return static_cast<Colour>((blue & 0xFF) << 16 | (green & 0xFF) << 8 | (red & 0xFF));
}

// Line and point widths are in screen pixels of the original layout, where one pixel is
// kUnitsPerPixel logical units; replay scales them with the picture.
inline constexpr float kUnitsPerPixel = 15.0f;
// Font sizes are in points; a point is kUnitsPerPoint logical units (twips).
inline constexpr float kUnitsPerPoint = 20.0f;

struct DrawOp {
    enum class Kind { Clear, FillBox, OutlineBox, Line, Point, Arc, Text, LineWidth, Font };
    Kind kind = Kind::Clear;
    float x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // box corners, line ends; Point/Arc/Text use x1, y1
    float radius = 0;                      // Arc
    double startAngle = 0, endAngle = 0;   // Arc, radians, counter-clockwise from 3 o'clock
    Colour colour = kBlack;
    float width = 1;      // Point: dot width; LineWidth: the new pen width (pixels)
    std::string text{};   // Text: the text, top-left at (x1, y1); Font: the family
    float pointSize = 0;  // Font
    bool bold = false;    // Font
    bool operator==(const DrawOp&) const = default;
};

// A drawing surface in a screen's own logical units (X right, Y down). Drawing code emits
// operations; the desktop replays the list scaled to its widget, onto images and into tests.
// Drawing over what was there is the list growing; Clear empties it.
class Surface {
  public:
    Surface(float logicalWidth, float logicalHeight)
        : width_(logicalWidth), height_(logicalHeight) {}

    void Clear();
    void FillBox(float left, float top, float right, float bottom, Colour colour);
    void OutlineBox(float left, float top, float right, float bottom, Colour colour);
    void Line(float x1, float y1, float x2, float y2, Colour colour);
    void Point(float x, float y, float width, Colour colour);
    void Arc(float cx, float cy, float radius, double startAngle, double endAngle, Colour colour);
    void Text(float x, float y, std::string text, Colour colour = kBlack);
    void SetLineWidth(float width);
    void SetFont(std::string family, float pointSize, bool bold = false);

    float width() const { return width_; }
    float height() const { return height_; }
    const std::vector<DrawOp>& ops() const { return ops_; }

  private:
    float width_;
    float height_;
    std::vector<DrawOp> ops_;
};

}  // namespace varo
