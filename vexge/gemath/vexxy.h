#pragma once

/// A bare pair of coordinates in drawing units, for tables and interfaces that need no point.
struct VexXY {
    double x = 0.0;
    double y = 0.0;

    constexpr VexXY() = default;
    constexpr VexXY(double xAt, double yAt) : x(xAt), y(yAt) {}
    constexpr void set(double xAt, double yAt)
    {
        x = xAt;
        y = yAt;
    }
};
