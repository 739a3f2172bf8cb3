#pragma once

#include <cstdint>
#include <string>
#include <string_view>
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

// The font a surface starts with, and goes back to when it is cleared.
inline constexpr const char* kDefaultSurfaceFont = "Arial";
inline constexpr float kDefaultSurfacePointSize = 8.0f;

struct SurfaceFont {
    std::string family = kDefaultSurfaceFont;
    float pointSize = kDefaultSurfacePointSize;
    bool bold = false;
    bool operator==(const SurfaceFont&) const = default;
};

// Which point of its text a Text operation's (x, y) names. The replay measures the text in its
// font and places it so; the default is the top-left corner.
enum class HorizontalAlign : std::uint8_t { Left, Centre, Right };
enum class VerticalAlign : std::uint8_t { Top, Middle, Baseline };
struct TextAlign {
    HorizontalAlign horizontal = HorizontalAlign::Left;
    VerticalAlign vertical = VerticalAlign::Top;
    bool operator==(const TextAlign&) const = default;
};
inline constexpr TextAlign kAlignMiddleRight{HorizontalAlign::Right, VerticalAlign::Middle};
inline constexpr TextAlign kAlignBaselineCentre{HorizontalAlign::Centre, VerticalAlign::Baseline};

struct DrawOp {
    enum class Kind { Clear, FillBox, OutlineBox, Line, Point, Arc, Text, LineWidth, Font, Disc };
    Kind kind = Kind::Clear;
    float x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // box corners, line ends; Point/Arc/Disc/Text: x1, y1
    float radius = 0;                      // Arc, Disc
    double startAngle = 0, endAngle = 0;   // Arc, radians, counter-clockwise from 3 o'clock
    Colour colour = kBlack;
    float width = 1;      // Point: dot width; LineWidth: the new pen width (pixels)
    std::string text{};   // Text: the text; Font: the family
    float pointSize = 0;  // Font
    bool bold = false;    // Font
    TextAlign align{};    // Text: the point of the text at (x1, y1)
    bool operator==(const DrawOp&) const = default;
};

// The advance width, line height and ascent (top of the line to the baseline) of a text, in
// logical units.
struct TextExtent {
    float width = 0;
    float height = 0;
    float ascent = 0;
};

// Measures text as the replay will set it, so that layout code can size and space labels.
class TextMeasure {
  public:
    virtual ~TextMeasure() = default;
    virtual TextExtent Measure(const SurfaceFont& font, std::string_view text) const = 0;
};

// For a surface no desktop measures: every glyph an average width of a sans-serif face.
class AverageGlyphMeasure final : public TextMeasure {
  public:
    TextExtent Measure(const SurfaceFont& font, std::string_view text) const override;
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
    // A dot `width` layout pixels across; a Disc is sized in logical units instead.
    void Point(float x, float y, float width, Colour colour);
    void Disc(float cx, float cy, float radius, Colour colour);
    void Arc(float cx, float cy, float radius, double startAngle, double endAngle, Colour colour);
    // Text with its top-left corner at (x, y), or the point of it that `align` names.
    void Text(float x, float y, std::string text, Colour colour = kBlack);
    void Text(float x, float y, std::string text, TextAlign align, Colour colour = kBlack);
    void SetLineWidth(float width);
    void SetFont(std::string family, float pointSize, bool bold = false);

    // The measure used by MeasureText; nullptr (the default) falls back to average glyphs.
    // The measure must outlive the surface's use of it.
    void SetTextMeasure(const TextMeasure* measure) { measure_ = measure; }
    // `text` in the font now in force, or in `font`, as the replay will set it.
    TextExtent MeasureText(std::string_view text) const { return MeasureText(font_, text); }
    TextExtent MeasureText(const SurfaceFont& font, std::string_view text) const;
    const SurfaceFont& font() const { return font_; }

    float width() const { return width_; }
    float height() const { return height_; }
    const std::vector<DrawOp>& ops() const { return ops_; }
    // Leaves out every operation `drop` picks, the rest kept in order.
    template <typename Predicate>
    void Drop(Predicate drop) {
        std::erase_if(ops_, drop);
    }

  private:
    float width_;
    float height_;
    std::vector<DrawOp> ops_;
    SurfaceFont font_;
    const TextMeasure* measure_ = nullptr;
};

// The area a text covers, in logical units.
struct TextBox {
    std::string text;
    float left = 0, top = 0, right = 0, bottom = 0;
    bool Overlaps(const TextBox& other) const;
};

// Every text of the display list with the box it is replayed into, in drawing order, measured
// in the font in force at that point of the list.
std::vector<TextBox> TextBoxes(const Surface& surface, const TextMeasure& measure);

}  // namespace varo
