#pragma once

#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>
#include <vector>

// Chains for the tests of offsets: those that a draughtsman draws and those that strain the
// clipping.

namespace shapes {

struct Corner {
    double x;
    double y;
    double bulge = 0.0;
};

inline CVexGePolyline2d chain(const std::vector<Corner>& corners, bool closed)
{
    CVexGePolyline2d result;
    for (const Corner& corner : corners) {
        result.appendVertex({corner.x, corner.y}, corner.bulge);
    }
    if (closed) {
        const double last = corners.back().bulge;
        result.setClosed(true);
        result.setBulgeAt(result.numVerts() - 1, last); // as given, not as closing would bend it
    }
    return result;
}

/// Counter-clockwise from the lower left corner.
inline CVexGePolyline2d rectangle(double width, double height)
{
    return chain({{0, 0}, {width, 0}, {width, height}, {0, height}}, true);
}

/// Two half circles of radius `radius` joined by two lines of `length`, counter-clockwise.
inline CVexGePolyline2d slot(double length, double radius)
{
    return chain({{0, -radius}, {length, -radius, 1.0}, {length, radius}, {0, radius, 1.0}}, true);
}

/// A bar along the bottom with `teeth` teeth upwards, each `pitch` wide with a gap as wide.
inline CVexGePolyline2d comb(int teeth, double pitch, double height)
{
    std::vector<Corner> corners{{0, 0}, {pitch * (2 * teeth - 1), 0}};
    for (int i = teeth - 1; i >= 0; --i) {
        const double left = 2.0 * pitch * i;
        corners.push_back({left + pitch, pitch});
        corners.push_back({left + pitch, pitch + height});
        corners.push_back({left, pitch + height});
        corners.push_back({left, pitch});
    }
    corners[2] = {corners[1].x, corners[3].y}; // the outermost flank runs down to the bar's end
    corners.erase(corners.begin() + 3);
    corners.pop_back();
    return chain(corners, true);
}

inline CVexGePolyline2d star(int points, double outer, double inner)
{
    std::vector<Corner> corners;
    for (int i = 0; i < 2 * points; ++i) {
        const double angle = std::numbers::pi * i / points;
        const double radius = i % 2 == 0 ? outer : inner;
        corners.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return chain(corners, true);
}

/// A closed curve of `count` vertices about a circle of `radius` that swings by `swing`, `waves`
/// times round; with a `bulge` its segments are arcs that bend in turns.
inline CVexGePolyline2d wavyCircle(int count, double radius, double swing, int waves,
                                   double bulge = 0.0)
{
    std::vector<Corner> corners;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        const double here = radius + swing * std::sin(waves * angle);
        corners.push_back(
            {here * std::cos(angle), here * std::sin(angle), i % 2 == 0 ? bulge : -bulge});
    }
    return chain(corners, true);
}

/// A closed curve of `count` arcs, an even number, whose joints lie on a circle: they bend outwards
/// and inwards in turns, by `swing` radians at each joint, and pass into each other smoothly.
inline CVexGePolyline2d smoothWaves(int count, double radius, double swing)
{
    std::vector<Corner> corners;
    const double turn = std::numbers::pi / count; // half of what the chords turn by
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * turn * i;
        corners.push_back({radius * std::cos(angle), radius * std::sin(angle),
                           std::tan((turn + (i % 2 == 0 ? swing : -swing)) / 2.0)});
    }
    return chain(corners, true);
}

inline CVexGePolyline2d zigzag(int count, double step, double height)
{
    std::vector<Corner> corners;
    for (int i = 0; i < count; ++i) {
        corners.push_back({step * i, i % 2 == 0 ? 0.0 : height});
    }
    return chain(corners, false);
}

/// A rectangle with rounded corners, counter-clockwise from the end of the lower left round.
inline CVexGePolyline2d roundedRectangle(double width, double height, double radius)
{
    const double quarter = std::tan(std::numbers::pi / 8.0);
    return chain({{radius, 0},
                  {width - radius, 0, quarter},
                  {width, radius},
                  {width, height - radius, quarter},
                  {width - radius, height},
                  {radius, height, quarter},
                  {0, height - radius},
                  {0, radius, quarter}},
                 true);
}

/// Two rooms with a neck of 1.4 between them, its upper edge a unit shorter at both ends.
inline CVexGePolyline2d dumbbell()
{
    return chain({{0, 0},
                  {10, 0},
                  {10, 4.3},
                  {20, 4.3},
                  {20, 0},
                  {30, 0},
                  {30, 10},
                  {19, 10},
                  {19, 5.7},
                  {11, 5.7},
                  {11, 10},
                  {0, 10}},
                 true);
}

/// A point a little to the left of the middle of a segment, or to the right.
inline CVexGePoint2d beside(const CVexGePolyline2d& source, unsigned segment, bool left)
{
    const CVexGePoint2d& start = source.vertices()[segment];
    const CVexGePoint2d& end = source.vertices()[(segment + 1) % source.numVerts()];
    const CVexGeVector2d chord = end - start;
    const CVexGePoint2d onArc =
        start + chord * 0.5 - chord.perpVector() * (source.getBulgeAt(segment) / 2.0);
    return onArc + chord.perpVector().normal(0.0) * (left ? 0.1 : -0.1);
}

/// A case as the pictures show it: a chain, the side, the distance.
struct Case {
    const char* name;
    CVexGePolyline2d source;
    CVexGePoint2d side;
    double dist;
};

inline std::vector<Case> allCases()
{
    const double quarter = std::tan(std::numbers::pi / 8.0);
    std::vector<Case> cases;
    const auto add = [&](const char* name, CVexGePolyline2d source, CVexGePoint2d side,
                         double dist) {
        cases.push_back({name, std::move(source), side, dist});
    };
    CVexGePolyline2d clockwise = rectangle(20, 10);
    clockwise.reverse();
    add("rectangle-out", rectangle(20, 10), {10, -3}, 2);
    add("rectangle-in", rectangle(20, 10), {10, 3}, 2);
    add("rectangle-clockwise-out", clockwise, {10, -3}, 2);
    add("rectangle-clockwise-in", clockwise, {10, 3}, 2);
    add("rectangle-in-too-deep", rectangle(20, 10), {10, 3}, 6);
    add("rectangle-returning-in", chain({{0, 0}, {20, 0}, {20, 10}, {0, 10}, {0, 0}}, false),
        {10, 3}, 2);
    add("l-shape-in", chain({{0, 0}, {20, 0}, {20, 6}, {6, 6}, {6, 16}, {0, 16}}, true), {10, 1},
        2);
    add("l-shape-out", chain({{0, 0}, {20, 0}, {20, 6}, {6, 6}, {6, 16}, {0, 16}}, true), {10, -1},
        2);
    add("dumbbell-in", dumbbell(), {5, 1}, 2);
    add("zigzag-up", zigzag(9, 4, 6), beside(zigzag(9, 4, 6), 0, true), 1.5);
    add("zigzag-down", zigzag(9, 4, 6), beside(zigzag(9, 4, 6), 0, false), 1.5);
    add("zigzag-deep", zigzag(9, 4, 6), beside(zigzag(9, 4, 6), 0, true), 4);
    add("steps", chain({{0, 0}, {5, 0}, {5, 1}, {10, 1}, {10, 2}, {15, 2}}, false), {2, 3}, 2);
    add("arc-to-centre", chain({{0, 0}, {6, 0, quarter}, {12, 6}, {12, 12}}, false), {5, 3}, 2);
    add("arc-from-centre", chain({{0, 0}, {6, 0, quarter}, {12, 6}, {12, 12}}, false), {5, -3}, 2);
    add("arc-to-centre-too-tight", chain({{0, 0}, {5, 0, 1.0}, {5, 10}, {0, 10}}, false), {2, 1},
        6);
    add("small-round-away", roundedRectangle(20, 10, 1), {10, -3}, 2);
    add("rounded-out", roundedRectangle(20, 12, 4), {10, -3}, 2);
    add("rounded-in", roundedRectangle(20, 12, 4), {10, 3}, 2);
    add("rounded-in-beyond-radius", roundedRectangle(20, 12, 2), {10, 1}, 3);
    add("slot-out", slot(10, 4), {5, -6}, 2);
    add("slot-in", slot(10, 4), {5, -2}, 2);
    add("comb-out", comb(5, 4, 10), {5, -3}, 1);
    add("comb-in", comb(5, 4, 10), {5, 1}, 1);
    add("comb-out-closing-gaps", comb(5, 4, 10), {5, -3}, 2.5);
    const auto addBoth = [&](const char* out, const char* in, const CVexGePolyline2d& source,
                             double dist) {
        add(out, source, beside(source, 0, false), dist);
        add(in, source, beside(source, 0, true), dist);
    };
    addBoth("star-out", "star-in", star(7, 12, 6), 1);
    addBoth("star-out-deep", "star-in-deep", star(7, 12, 6), 3);
    addBoth("wavy-lines-out", "wavy-lines-in", wavyCircle(100, 50, 3, 12), 2);
    addBoth("wavy-lines-out-deep", "wavy-lines-in-deep", wavyCircle(100, 50, 3, 12), 25);
    addBoth("wavy-arcs-out", "wavy-arcs-in", wavyCircle(60, 50, 3, 6, 0.3), 2);
    addBoth("wavy-arcs-out-deep", "wavy-arcs-in-deep", wavyCircle(60, 50, 3, 6, 0.3), 25);
    addBoth("scallops-out", "scallops-in", wavyCircle(16, 20, 0, 1, 0.5), 1.5);
    add("figure-of-eight", chain({{0, 0}, {10, 10}, {20, 0}, {20, 10}, {10, 0}, {0, 10}}, true),
        {10, -3}, 1);
    add("open-self-crossing", chain({{0, 0}, {20, 0}, {20, 10}, {5, 10}, {5, -8}}, false), {15, 4},
        1.5);
    add("s-of-arcs", chain({{0, 0, 1.0}, {0, 10, -1.0}, {0, 20}}, false), {-2, 4}, 2);
    add("circle-out", chain({{-5, 0, 1.0}, {5, 0, 1.0}}, true), {0, -9}, 2);
    add("circle-in", chain({{-5, 0, 1.0}, {5, 0, 1.0}}, true), {0, -2}, 2);
    add("touching-squares",
        chain({{0, 0}, {10, 0}, {10, 10}, {20, 10}, {20, 20}, {10, 20}, {10, 10}, {0, 10}}, true),
        {5, 1}, 2);
    add("u-channel", chain({{0, 20}, {0, 0}, {6, 0}, {6, 20}}, false), {3, 10}, 2);
    add("u-channel-narrow", chain({{0, 20}, {0, 0}, {6, 0}, {6, 20}}, false), {3, 1}, 4);
    add("teardrop", chain({{0, 0}, {10, -4, 1.5}, {10, 4}}, true), {5, -1}, 1);
    return cases;
}

} // namespace shapes
