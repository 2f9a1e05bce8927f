#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <optional>

/// One segment of a polyline in its direction of travel, which the kernel's arcs do not know.
/// Lengths are drawing units, angles radians.
class VexPolylineSegment {
public:
    VexPolylineSegment(const CVexGePoint2d& from, const CVexGePoint2d& to, double bulge);
    /// Segment `index`; none for one without length or with one that is no number, and for the last
    /// vertex of an open chain.
    static std::optional<VexPolylineSegment> of(const CVexGePolyline2d& chain, unsigned index);

    [[nodiscard]] bool isArc() const { return m_turn != 0.0; }
    [[nodiscard]] const CVexGePoint2d& from() const { return m_from; }
    [[nodiscard]] const CVexGePoint2d& to() const { return m_to; }
    [[nodiscard]] double bulge() const { return m_bulge; }
    [[nodiscard]] double length() const { return m_length; }
    // Of an arc.
    [[nodiscard]] const CVexGePoint2d& center() const { return m_center; }
    [[nodiscard]] double radius() const { return m_radius; }
    /// 1 counter-clockwise, -1 clockwise, 0 for a straight segment.
    [[nodiscard]] double turn() const { return m_turn; }

    /// How far along the carrier `point` lies: below 0 before the start, above the length behind
    /// the end, on a circle whichever is nearer.
    [[nodiscard]] double along(const CVexGePoint2d& point) const;
    /// How far `point` lies beyond the end, or beyond the start against the travel; of a circle's
    /// rest all counts. Not above 0 for a point that no extension of that end reaches.
    [[nodiscard]] double beyond(const CVexGePoint2d& point, bool start) const;
    [[nodiscard]] CVexGePoint2d pointAt(double along) const;
    /// The unit vector of travel.
    [[nodiscard]] CVexGeVector2d directionAt(double along) const;
    /// The bulge of a part or an extension of this length on the same carrier, with its sign; a
    /// straight segment keeps the one it has.
    [[nodiscard]] double bulgeOf(double length) const;
    /// Calls `visit` with the kernel's line or arc and returns its answer.
    template <class Visit>
    auto visit(const Visit& visit) const
    {
        return isArc() ? visit(CVexGeCircArc2d(m_from, m_to, m_bulge, true))
                       : visit(CVexGeLine2d(m_from, m_to));
    }

private:
    /// The angle from the start to the direction of `point`, in [0, 2 pi).
    [[nodiscard]] double sweptTo(const CVexGePoint2d& point) const;
    [[nodiscard]] CVexGeVector2d spokeAt(double along) const;

    CVexGePoint2d m_from;
    CVexGePoint2d m_to;
    double m_bulge;
    double m_length = 0.0;
    double m_turn = 0.0;
    double m_radius = 0.0;
    CVexGePoint2d m_center;
    CVexGeVector2d m_direction; // of a straight one
};
