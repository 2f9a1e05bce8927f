#include "vexdb/dbobject/dbentity/vexdbpointmarker.h"

#include "platform/device/cdc.h"

#include <array>
#include <cstddef>

namespace {

enum class Outline { kNone, kPixel, kCircle, kSquare, kDiamond, kTriangleToTop, kTriangleToBottom };

// What stands inside an outline, or alone.
enum Inside : unsigned { kNothing = 0, kPlus = 1, kCross = 2, kRing = 4 };

struct Shape {
    Outline outline;
    unsigned inside;
};

constexpr std::array<Shape, 15> kShapes = {{
    {Outline::kPixel, kNothing},
    {Outline::kCircle, kNothing},
    {Outline::kNone, kPlus},
    {Outline::kNone, kCross},
    {Outline::kTriangleToTop, kNothing},
    {Outline::kSquare, kNothing},
    {Outline::kDiamond, kNothing},
    {Outline::kTriangleToBottom, kNothing},
    {Outline::kCircle, kRing},
    {Outline::kNone, kPlus | kCross},
    {Outline::kCircle, kPlus},
    {Outline::kCircle, kCross},
    {Outline::kSquare, kPlus},
    {Outline::kSquare, kCross},
    {Outline::kDiamond, kCross},
}};

/// The middle by integer halves of width and height.
CPoint middleOf(const CRect& box)
{
    return {box.left + box.Width() / 2, box.top + box.Height() / 2};
}

void drawOutline(CDC& dc, Outline outline, CPoint position, const CRect& box)
{
    const CPoint middle = middleOf(box);
    const CPoint upper(middle.x, box.top);
    const CPoint lower(middle.x, box.bottom);
    switch (outline) {
    case Outline::kNone: break;
    case Outline::kPixel: dc.SetPixel(position, dc.GetCurrentPen()->color()); break;
    case Outline::kCircle: dc.Ellipse(box); break;
    case Outline::kSquare: dc.Rectangle(box); break;
    case Outline::kDiamond:
        dc.Polygon(
            std::array{upper, CPoint(box.right, middle.y), lower, CPoint(box.left, middle.y)});
        break;
    case Outline::kTriangleToTop:
        dc.Polygon(std::array{upper, CPoint(box.left, box.bottom), box.BottomRight()});
        break;
    case Outline::kTriangleToBottom:
        dc.Polygon(std::array{CPoint(box.right, box.top), box.TopLeft(), lower});
        break;
    }
}

void drawStroke(CDC& dc, CPoint from, CPoint to)
{
    dc.MoveTo(from);
    dc.LineTo(to);
}

void drawInside(CDC& dc, unsigned inside, const CRect& box)
{
    const CPoint middle = middleOf(box);
    if ((inside & kRing) != 0) {
        const CSize half(box.Width() / 4, box.Height() / 4);
        dc.Ellipse(middle.x - half.cx, middle.y - half.cy, middle.x + half.cx, middle.y + half.cy);
    }
    if ((inside & kPlus) != 0) {
        drawStroke(dc, CPoint(box.left, middle.y), CPoint(box.right, middle.y));
        drawStroke(dc, CPoint(middle.x, box.top), CPoint(middle.x, box.bottom));
    }
    if ((inside & kCross) != 0) {
        drawStroke(dc, box.TopLeft(), box.BottomRight());
        drawStroke(dc, CPoint(box.right, box.top), CPoint(box.left, box.bottom));
    }
}

} // namespace

void drawPointMarker(CDC& dc, int shape, CPoint position, const CRect& box, bool filled)
{
    if (shape < 0 || static_cast<std::size_t>(shape) >= kShapes.size()) {
        return;
    }
    const Shape& drawn = kShapes[static_cast<std::size_t>(shape)];
    drawOutline(dc, drawn.outline, position, box);
    if (!filled || drawn.outline == Outline::kNone) {
        drawInside(dc, drawn.inside, box);
    }
}
