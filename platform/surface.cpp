#include "platform/surface.h"

#include <utility>

namespace varo {

void Surface::Clear() {
    ops_.clear();
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::Clear});
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
    ops_.push_back(DrawOp{
        .kind = DrawOp::Kind::Text, .x1 = x, .y1 = y, .colour = colour, .text = std::move(text)});
}

void Surface::SetLineWidth(float width) {
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::LineWidth, .width = width});
}

void Surface::SetFont(std::string family, float pointSize, bool bold) {
    ops_.push_back(DrawOp{.kind = DrawOp::Kind::Font,
                          .text = std::move(family),
                          .pointSize = pointSize,
                          .bold = bold});
}

}  // namespace varo
