#include "platform/surface.h"

#include <utility>

namespace varo {

namespace {

// Arial's digits and capitals average a little over half an em; a line is 1.15 em high, 0.9 em
// of it above the baseline.
constexpr float kAverageGlyphEms = 0.6f;
constexpr float kLineEms = 1.15f;
constexpr float kAscentEms = 0.9f;

TextBox PlacedBox(const DrawOp& op, const TextExtent& extent) {
    float left = op.x1;
    if (op.align.horizontal == HorizontalAlign::Centre) left -= extent.width / 2;
    if (op.align.horizontal == HorizontalAlign::Right) left -= extent.width;
    float top = op.y1;
    if (op.align.vertical == VerticalAlign::Middle) top -= extent.height / 2;
    if (op.align.vertical == VerticalAlign::Baseline) top -= extent.ascent;
    return TextBox{op.text, left, top, left + extent.width, top + extent.height};
}

}  // namespace

TextExtent AverageGlyphMeasure::Measure(const SurfaceFont& font, std::string_view text) const {
    const float em = font.pointSize * kUnitsPerPoint;
    return {static_cast<float>(text.size()) * em * kAverageGlyphEms, em * kLineEms,
            em * kAscentEms};
}

void Surface::Clear() {
    ops_.clear();
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::Clear});
    font_ = SurfaceFont{};
}

void Surface::FillBox(float left, float top, float right, float bottom, Colour colour) {
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::FillBox,
                          .x1 = left,
                          .y1 = top,
                          .x2 = right,
                          .y2 = bottom,
                          .colour = colour});
}

void Surface::OutlineBox(float left, float top, float right, float bottom, Colour colour) {
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::OutlineBox,
                          .x1 = left,
                          .y1 = top,
                          .x2 = right,
                          .y2 = bottom,
                          .colour = colour});
}

void Surface::Line(float x1, float y1, float x2, float y2, Colour colour) {
    ops_.push_back(DrawOp{
        .kind = DrawOp::Kind::Line, .x1 = x1, .y1 = y1, .x2 = x2, .y2 = y2, .colour = colour});
}

void Surface::Point(float x, float y, float width, Colour colour) {
    ops_.push_back(
        DrawOp{.kind = DrawOp::Kind::Point, .x1 = x, .y1 = y, .colour = colour, .width = width});
}

void Surface::Disc(float cx, float cy, float radius, Colour colour) {
    ops_.push_back(
        DrawOp{.kind = DrawOp::Kind::Disc, .x1 = cx, .y1 = cy, .radius = radius, .colour = colour});
}

void Surface::Arc(float cx, float cy, float radius, double startAngle, double endAngle,
                  Colour colour) {
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::Arc,
                          .x1 = cx,
                          .y1 = cy,
                          .radius = radius,
                          .startAngle = startAngle,
                          .endAngle = endAngle,
                          .colour = colour});
}

void Surface::Text(float x, float y, std::string text, Colour colour) {
    Text(x, y, std::move(text), TextAlign{}, colour);
}

void Surface::Text(float x, float y, std::string text, TextAlign align, Colour colour) {
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::Text,
                          .x1 = x,
                          .y1 = y,
                          .colour = colour,
                          .text = std::move(text),
                          .align = align});
}

void Surface::SetLineWidth(float width) {
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::LineWidth, .width = width});
}

void Surface::SetFont(std::string family, float pointSize, bool bold) {
    font_ = SurfaceFont{family, pointSize, bold};
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::Font,
                          .text = std::move(family),
                          .pointSize = pointSize,
                          .bold = bold});
}

TextExtent Surface::MeasureText(const SurfaceFont& font, std::string_view text) const {
    static const AverageGlyphMeasure fallback;
    return (measure_ != nullptr ? *measure_ : fallback).Measure(font, text);
}

bool TextBox::Overlaps(const TextBox& other) const {
    return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
}

std::vector<TextBox> TextBoxes(const Surface& surface, const TextMeasure& measure) {
    std::vector<TextBox> boxes;
    SurfaceFont font;
    for (const DrawOp& op : surface.ops()) {
        if (op.kind == DrawOp::Kind::Font) font = SurfaceFont{op.text, op.pointSize, op.bold};
        if (op.kind == DrawOp::Kind::Text)
            boxes.push_back(PlacedBox(op, measure.Measure(font, op.text)));
    }
    return boxes;
}

}  // namespace varo
