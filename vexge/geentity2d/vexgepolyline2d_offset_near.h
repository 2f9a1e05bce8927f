#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d_offset.h"
#include "vexge/geentity2d/vexgewinding.h"

#include <algorithm>
#include <cmath>

// How near a segment of an offset piece and one of the source come to each other.

// The closest points of a segment of a piece and one of the source, as the curves themselves find
// them, an arc up to 0.001 radians beyond its ends. A line looks for an arc, not the arc for the
// line: an arc does not look at the line's ends.
inline CVexGePoint2d closestOfPair(const CVexGeLine2d& own, const CVexGeLine2d& source,
                                   CVexGePoint2d& onSource)
{
    return own.closestPointTo(source, onSource, kGeEpsilon);
}

inline CVexGePoint2d closestOfPair(const CVexGeLine2d& own, const CVexGeCircArc2d& source,
                                   CVexGePoint2d& onSource)
{
    return own.closestPointTo(source, onSource, kGeEpsilon);
}

inline CVexGePoint2d closestOfPair(const CVexGeCircArc2d& own, const CVexGeLine2d& source,
                                   CVexGePoint2d& onSource)
{
    CVexGePoint2d onOwn;
    onSource = source.closestPointTo(own, onOwn, kGeEpsilon);
    return onOwn;
}

inline CVexGePoint2d closestOfPair(const CVexGeCircArc2d& own, const CVexGeCircArc2d& source,
                                   CVexGePoint2d& onSource)
{
    return own.closestPointTo(source, onSource, kGeEpsilon);
}

/// Of closest points that were found for a segment of a piece and one of the source: that on the
/// piece, and the other in `onSource`. Where one lies beyond an end of its arc, which is no place
/// of the chain, the end takes its place.
template <class Own, class Source>
CVexGePoint2d heldToEnds(const Own& own, const Source& source, const CVexGePoint2d& onOwn,
                         CVexGePoint2d& onSource)
{
    if (isBetweenEnds(own, onOwn) && isBetweenEnds(source, onSource)) {
        return onOwn;
    }
    const CVexGePoint2d ownEnd = heldWithin(own, onOwn);
    const CVexGePoint2d besideOwn = heldWithin(source, source.closestPointTo(ownEnd, kGeEpsilon));
    const CVexGePoint2d sourceEnd = heldWithin(source, onSource);
    const CVexGePoint2d besideSource = heldWithin(own, own.closestPointTo(sourceEnd, kGeEpsilon));
    const bool atSource = besideSource.distanceTo(sourceEnd) < ownEnd.distanceTo(besideOwn);
    onSource = atSource ? sourceEnd : besideOwn;
    return atSource ? besideSource : ownEnd;
}

/// What a bound may be off by from rounding.
inline constexpr double kBoundSlack = 1e-6;

inline double squaredDistance(const CVexGeLine2d& line, const CVexGePoint2d& point)
{
    const CVexGeVector2d run = line.endPoint() - line.startPoint();
    const CVexGeVector2d way = point - line.startPoint();
    const double size = run.lengthSqrd();
    const double along = size > 0.0 ? std::clamp(way.dotProduct(run) / size, 0.0, 1.0) : 0.0;
    return (way - run * along).lengthSqrd();
}

inline bool mayCross(const CVexGeLine2d& a, const CVexGeLine2d& b)
{
    const auto straddles = [](const CVexGeLine2d& line, const CVexGeLine2d& other) {
        const double first = doubledArea(line.startPoint(), line.endPoint(), other.startPoint());
        const double second = doubledArea(line.startPoint(), line.endPoint(), other.endPoint());
        return !(first > 0.0 && second > 0.0) && !(first < 0.0 && second < 0.0);
    };
    return straddles(a, b) && straddles(b, a);
}

// Whether the two certainly keep `reach` between them: a bound that needs no direction to be found,
// which spares nearly all pairs the search for their closest points.
inline bool surelyApart(const CVexGeLine2d& a, const CVexGeLine2d& b, double reach)
{
    const double far = (reach + kBoundSlack) * (reach + kBoundSlack);
    return squaredDistance(a, b.startPoint()) > far && squaredDistance(a, b.endPoint()) > far &&
           squaredDistance(b, a.startPoint()) > far && squaredDistance(b, a.endPoint()) > far &&
           !mayCross(a, b);
}

inline bool surelyApart(const CVexGeLine2d& line, const CVexGeCircArc2d& arc, double reach)
{
    const CVexGePoint2d& centre = arc.center();
    const double nearest = std::sqrt(squaredDistance(line, centre));
    const double farthest =
        std::max(centre.distanceTo(line.startPoint()), centre.distanceTo(line.endPoint()));
    return std::max(nearest - arc.radius(), arc.radius() - farthest) > reach + kBoundSlack;
}

inline bool surelyApart(const CVexGeCircArc2d& arc, const CVexGeLine2d& line, double reach)
{
    return surelyApart(line, arc, reach);
}

inline bool surelyApart(const CVexGeCircArc2d& a, const CVexGeCircArc2d& b, double reach)
{
    const double centres = a.center().distanceTo(b.center());
    const double outside = centres - a.radius() - b.radius();
    const double within = std::fabs(a.radius() - b.radius()) - centres;
    return std::max(outside, within) > reach + kBoundSlack;
}

inline bool surelyApart(const CVexGeLine2d& line, const CVexGePoint2d& point, double reach)
{
    return squaredDistance(line, point) > (reach + kBoundSlack) * (reach + kBoundSlack);
}

inline bool surelyApart(const CVexGeCircArc2d& arc, const CVexGePoint2d& point, double reach)
{
    return std::fabs(arc.center().distanceTo(point) - arc.radius()) > reach + kBoundSlack;
}

inline bool tooShort(const CVexGeLine2d& line)
{
    return line.length() < kOffsetClipTol;
}

inline bool tooShort(const CVexGeCircArc2d& /*arc*/)
{
    return false;
}
