#pragma once

#include "platform/base/cpoint.h"

#include <utility>

/// An integer rectangle. Nothing sorts its sides but NormalizeRect: a view's window holds the
/// smaller y in `top`, a client rectangle the upper pixel row.
struct CRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr CRect() = default;
    constexpr CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    constexpr CRect(CPoint topLeft, CPoint bottomRight)
        : CRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y)
    {
    }

    /// Signed extents: right - left and bottom - top.
    [[nodiscard]] constexpr int Width() const { return right - left; }
    [[nodiscard]] constexpr int Height() const { return bottom - top; }
    [[nodiscard]] constexpr CSize Size() const { return {Width(), Height()}; }
    [[nodiscard]] constexpr CPoint TopLeft() const { return {left, top}; }
    [[nodiscard]] constexpr CPoint BottomRight() const { return {right, bottom}; }
    /// Integer division, so an odd sum falls towards zero.
    [[nodiscard]] constexpr CPoint CenterPoint() const
    {
        return {static_cast<int>((0LL + left + right) / 2),
                static_cast<int>((0LL + top + bottom) / 2)};
    }
    /// True when the rectangle has no area: a side of zero or negative length.
    [[nodiscard]] constexpr bool IsRectEmpty() const { return right <= left || bottom <= top; }
    [[nodiscard]] constexpr bool IsRectNull() const { return *this == CRect(); }
    /// Left and top count as inside, right and bottom do not.
    [[nodiscard]] constexpr bool PtInRect(CPoint point) const
    {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    constexpr void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    constexpr void SetRectEmpty() { *this = CRect(); }
    constexpr void OffsetRect(int dx, int dy)
    {
        *this = {left + dx, top + dy, right + dx, bottom + dy};
    }
    constexpr void InflateRect(int dx, int dy)
    {
        *this = {left - dx, top - dy, right + dx, bottom + dy};
    }
    constexpr void NormalizeRect()
    {
        if (left > right) {
            std::swap(left, right);
        }
        if (top > bottom) {
            std::swap(top, bottom);
        }
    }
    friend constexpr bool operator==(const CRect&, const CRect&) = default;
};
