#pragma once

#include <numbers>

inline constexpr double kGeTwoPi = 2.0 * std::numbers::pi;

/// Angles of an arc nearer than this, in radians, are the same; the slack of an arc at its ends.
inline constexpr double kGeAngleTol = 0.001;

/// A negative angle with one turn added; others as they are.
constexpr double notNegativeAngle(double angle)
{
    return angle < 0.0 ? angle + kGeTwoPi : angle;
}
