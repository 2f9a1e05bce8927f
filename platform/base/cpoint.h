#pragma once

/// An integer size, in the units of whoever uses it.
struct CSize {
    int cx = 0;
    int cy = 0;

    constexpr CSize() = default;
    constexpr CSize(int width, int height) : cx(width), cy(height) {}
    friend constexpr bool operator==(const CSize&, const CSize&) = default;
};

/// An integer point: device pixels (y down) or logical hundredths of a drawing unit (y up).
struct CPoint {
    int x = 0;
    int y = 0;

    constexpr CPoint() = default;
    constexpr CPoint(int xAt, int yAt) : x(xAt), y(yAt) {}
    void Offset(int dx, int dy)
    {
        x += dx;
        y += dy;
    }
    friend constexpr bool operator==(const CPoint&, const CPoint&) = default;
    friend constexpr CPoint operator+(CPoint a, CPoint b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr CPoint operator-(CPoint a, CPoint b) { return {a.x - b.x, a.y - b.y}; }
};
