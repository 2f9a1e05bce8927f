#include "platform/qt/vexqtclip.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

/// How far a chord may leave its arc, pixels.
constexpr double kFlatness = 0.25;
/// Halvings of a quarter turn at most: 2^16 chords reach the flatness at a radius of 10^9.
constexpr int kMostHalvings = 16;

/// Parameters of a segment, 0 at its start and 1 at its end, between which it is inside.
struct Stretch {
    double from = 0.0;
    double to = 1.0;
    [[nodiscard]] bool isEmpty() const { return from > to; }
};

/// Cuts the stretch to where `at + t * step` is not below `low` nor above `high`.
void cut(Stretch& stretch, double at, double step, double low, double high)
{
    if (step == 0.0) {
        if (at < low || at > high) {
            stretch = {1.0, 0.0};
        }
        return;
    }
    const double first = (low - at) / step;
    const double second = (high - at) / step;
    stretch.from = std::max(stretch.from, std::min(first, second));
    stretch.to = std::min(stretch.to, std::max(first, second));
}

Stretch insideOf(const QRectF& box, QPointF start, QPointF step)
{
    Stretch stretch;
    cut(stretch, start.x(), step.x(), box.left(), box.right());
    cut(stretch, start.y(), step.y(), box.top(), box.bottom());
    return stretch;
}

/// One side of a box as a half plane: positive inside.
struct Side {
    double across, down, offset;
    [[nodiscard]] double distance(QPointF p) const
    {
        return across * p.x() + down * p.y() + offset;
    }
};

QPolygonF cutArea(const QPolygonF& area, const Side& side)
{
    QPolygonF kept;
    for (qsizetype i = 0; i < area.size(); ++i) {
        const QPointF from = area[i];
        const QPointF to = area[(i + 1) % area.size()];
        const double before = side.distance(from);
        const double after = side.distance(to);
        if (before >= 0.0) {
            kept.append(from);
        }
        if ((before >= 0.0) != (after >= 0.0)) {
            kept.append(from + (to - from) * (before / (before - after)));
        }
    }
    return kept;
}

/// An ellipse by its centre and half axes, walked a quarter turn at a time.
struct EllipseWalk {
    QPointF centre;
    double halfWidth = 0.0;
    double halfHeight = 0.0;
    QRectF box{};
    QPolygonF corners{};

    [[nodiscard]] QPointF at(double angle) const
    {
        return {centre.x() + halfWidth * std::cos(angle),
                centre.y() + halfHeight * std::sin(angle)};
    }

    /// Appends the end of the arc, and what is needed before it. Within a quarter turn the box of
    /// the ends holds the arc, so a box out of sight ends the halving.
    void walk(double from, double to, int halvings)
    {
        const QPointF start = at(from);
        const QPointF end = at(to);
        const QRectF bounds = QRectF(start, end).normalized();
        const bool inSight = bounds.left() <= box.right() && bounds.right() >= box.left() &&
                             bounds.top() <= box.bottom() && bounds.bottom() >= box.top();
        const double sag = std::max(halfWidth, halfHeight) * (1.0 - std::cos((to - from) / 2.0));
        if (!inSight || sag <= kFlatness || halvings == 0) {
            corners.append(end);
            return;
        }
        const double middle = (from + to) / 2.0;
        walk(from, middle, halvings - 1);
        walk(middle, to, halvings - 1);
    }
};

} // namespace

std::vector<VexQtRun> clipChain(const QPolygonF& chain, const QRectF& box)
{
    std::vector<VexQtRun> runs;
    double length = 0.0;
    bool open = false; // the last run ends at the start of the segment
    for (qsizetype i = 0; i + 1 < chain.size(); ++i) {
        const QPointF start = chain[i];
        const QPointF step = chain[i + 1] - start;
        const double extent = std::hypot(step.x(), step.y());
        const Stretch stretch = insideOf(box, start, step);
        if (stretch.isEmpty()) {
            open = false;
        } else {
            if (!open) {
                runs.push_back({{start + step * stretch.from}, length + extent * stretch.from});
            }
            open = stretch.to >= 1.0;
            runs.back().points.append(open ? chain[i + 1] : start + step * stretch.to);
        }
        length += extent;
    }
    return runs;
}

QPolygonF clipArea(const QPolygonF& area, const QRectF& box)
{
    const std::array sides{Side{1.0, 0.0, -box.left()}, Side{-1.0, 0.0, box.right()},
                           Side{0.0, 1.0, -box.top()}, Side{0.0, -1.0, box.bottom()}};
    QPolygonF kept = area;
    for (const Side& side : sides) {
        kept = cutArea(kept, side);
    }
    return kept;
}

QPolygonF ellipseOutline(const QRectF& bounds, const QRectF& box)
{
    EllipseWalk walk{bounds.center(), bounds.width() / 2.0, bounds.height() / 2.0, box};
    for (int quarter = 0; quarter < 4; ++quarter) {
        const double from = quarter * std::numbers::pi / 2.0;
        walk.walk(from, from + std::numbers::pi / 2.0, kMostHalvings);
    }
    return walk.corners;
}
