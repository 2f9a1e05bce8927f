#pragma once

#include <gtest/gtest.h>

/// Checks a point or vector of the plane by coordinate, to the bit: its own == forgives 1e-6.
#define EXPECT_POINT(expectedX, expectedY, point)                                                  \
    do {                                                                                           \
        const auto vexPoint = (point);                                                             \
        EXPECT_EQ(static_cast<double>(expectedX), vexPoint.x) << "x of " #point;                   \
        EXPECT_EQ(static_cast<double>(expectedY), vexPoint.y) << "y of " #point;                   \
    } while (false)

/// Checks a point or vector of the plane by coordinate, each within `tol`.
#define EXPECT_POINT_NEAR(expectedX, expectedY, point, tol)                                        \
    do {                                                                                           \
        const auto vexPoint = (point);                                                             \
        EXPECT_NEAR(static_cast<double>(expectedX), vexPoint.x, tol) << "x of " #point;            \
        EXPECT_NEAR(static_cast<double>(expectedY), vexPoint.y, tol) << "y of " #point;            \
    } while (false)

/// Checks a point or vector in space by coordinate, each within `tol`.
#define EXPECT_POINT3D_NEAR(expectedX, expectedY, expectedZ, point, tol)                           \
    do {                                                                                           \
        const auto vexPoint = (point);                                                             \
        EXPECT_NEAR(static_cast<double>(expectedX), vexPoint.x, tol) << "x of " #point;            \
        EXPECT_NEAR(static_cast<double>(expectedY), vexPoint.y, tol) << "y of " #point;            \
        EXPECT_NEAR(static_cast<double>(expectedZ), vexPoint.z, tol) << "z of " #point;            \
    } while (false)
