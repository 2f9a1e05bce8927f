#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace {

double turned(double bulge)
{
    return bulge == 0.0 ? bulge : -bulge; // a straight segment stays +0
}

/// The angles of the arc about `centre` that leaves `from` in the direction of `tangent` and ends
/// at `to`, as an arc stores it.
CVexGeCircArc2d continuingArc(const CVexGePoint2d& centre, const CVexGePoint2d& from,
                              const CVexGePoint2d& tangent, const CVexGePoint2d& to)
{
    const double between = notNegativeAngle(from.angleTo(to) - from.angleTo(tangent));
    const bool leavesCounterClockwise = between < std::numbers::pi;
    CVexGeCircArc2d arc(centre, centre.distanceTo(from));
    arc.setAngles(centre.angleTo(leavesCounterClockwise ? from : to),
                  centre.angleTo(leavesCounterClockwise ? to : from));
    return arc;
}

/// An arc that continues `last` smoothly from its end `from` to `to`; a nearly straight one when
/// none does.
CVexGeCircArc2d closingArc(const CVexGeCircArc2d& last, const CVexGePoint2d& from,
                           const CVexGePoint2d& to)
{
    const double quarter = std::numbers::pi / 2.0;
    const CVexGePoint2d& centre = last.center();
    const bool atEnd = from.isEqualTo(last.endPoint(), kGeTol);
    const double heading = from.angleTo(centre) + (atEnd ? -quarter : quarter);
    const CVexGePoint2d tangent = from + CVexGeVector2d(heading) * centre.distanceTo(from);
    const CVexGeLine2d chord(from, to);
    CVexGeLine2d bisector;
    chord.getPerpLine(chord.midPoint(), bisector);
    CVexGePoint2d meeting;
    if (CVexGeLine2d(from, centre)
            .intersectWith(bisector, meeting, CVexGeEntity2d::kExtendBoth, kGeEpsilon)) {
        return continuingArc(meeting, from, tangent, to);
    }
    return {from, to, 0.001, true};
}

/// Rotates `values`, whose last stands for its first, so that `index` comes first and last.
template <class T>
void startReturningAt(std::vector<T>& values, int index)
{
    std::vector<T> result(values.begin() + index, values.end());
    result.back() = values.front();
    result.insert(result.end(), values.begin() + 1, values.begin() + index + 1);
    values = std::move(result);
}

} // namespace

void CVexGePolyline2d::reverse()
{
    // The widths stay where they are: a width belongs to its place in the list, and whoever turns a
    // tapered chain sets them anew.
    if (m_vertices.empty()) {
        return;
    }
    std::reverse(m_vertices.begin(), m_vertices.end());
    std::reverse(m_bulges.begin(), m_bulges.end() - 1);
    std::transform(m_bulges.begin(), m_bulges.end(), m_bulges.begin(), turned);
}

bool CVexGePolyline2d::changeStart(int index)
{
    const int count = static_cast<int>(m_vertices.size());
    if (index < 0 || index >= count) {
        return false;
    }
    if (index == count - 1) {
        // The last vertex reverses the chain instead of rotating it, open or closed: for an open
        // one that is the only other start there is, and the edit command offers it as such.
        reverse();
        return true;
    }
    if (!closed()) {
        return false;
    }
    if (!m_closedFlag) {
        // The last vertex repeats the first: it gives its place to the old start, and the new start
        // is repeated at the end.
        startReturningAt(m_vertices, index);
        startReturningAt(m_bulges, index);
        return true;
    }
    std::rotate(m_vertices.begin(), m_vertices.begin() + index, m_vertices.end());
    std::rotate(m_bulges.begin(), m_bulges.begin() + index, m_bulges.end());
    return true;
}

void CVexGePolyline2d::setClosed(bool flag)
{
    const std::size_t count = m_vertices.size();
    if (count < 2) {
        return;
    }
    m_closedFlag = flag;
    const double bulge = m_bulges[count - 2];
    if (!hasBulges() || std::fabs(bulge) <= kGeSetClosedTol) {
        return;
    }
    // Opening computes the bulge too: an open chain keeps the one it would close with, and closing
    // it again brings the same shape back.
    const CVexGePoint2d& last = m_vertices.back();
    const CVexGeCircArc2d before(m_vertices[count - 2], last, bulge, true);
    const CVexGeCircArc2d arc = closingArc(before, last, m_vertices.front());
    const bool leavesAtStart = last.isEqualTo(arc.startPoint(), kGeSetClosedArcTol);
    m_bulges.back() = leavesAtStart ? arc.bulge() : -arc.bulge();
}

namespace {

/// Which end of a chain a curve joins, and with which of its own ends.
enum class Joint { kNone, kEndToStart, kEndToEnd, kStartToStart, kStartToEnd };

Joint jointOf(const CVexGePoint2d& first, const CVexGePoint2d& last, const CVexGePoint2d& start,
              const CVexGePoint2d& end)
{
    return last.isEqualTo(start, kGeTol)    ? Joint::kEndToStart
           : last.isEqualTo(end, kGeTol)    ? Joint::kEndToEnd
           : first.isEqualTo(start, kGeTol) ? Joint::kStartToStart
           : first.isEqualTo(end, kGeTol)   ? Joint::kStartToEnd
                                            : Joint::kNone;
}

/// Appends vertex `index` of `from` to `to`, with `bulge` for its own.
void appendVertexOf(CVexGePolyline2d& to, const CVexGePolyline2d& from, unsigned index,
                    double bulge, bool exchangesWidths)
{
    CVexGePoint2d point;
    double startWidth = 0.0;
    double endWidth = 0.0;
    from.getPointAt(index, point);
    from.getWidthsAt(index, startWidth, endWidth);
    if (exchangesWidths) {
        std::swap(startWidth, endWidth);
    }
    to.appendVertex(point, bulge, startWidth, endWidth);
}

/// Appends `tail` to `chain`, but for the end that both share.
void appendTail(CVexGePolyline2d& chain, const CVexGePolyline2d& tail, bool backward)
{
    const unsigned count = tail.numVerts();
    const unsigned last = chain.numVerts() - 1;
    if (!backward) {
        chain.setBulgeAt(last, tail.getBulgeAt(0));
        for (unsigned k = 1; k < count; ++k) {
            appendVertexOf(chain, tail, k, tail.getBulgeAt(k), false);
        }
        return;
    }
    chain.setBulgeAt(last, turned(tail.getBulgeAt(count - 2)));
    for (unsigned k = count - 1; k-- > 0;) {
        const unsigned before = k > 0 ? k - 1 : 0; // the first one has none and repeats
        appendVertexOf(chain, tail, k, turned(tail.getBulgeAt(before)), true);
    }
}

/// `head`, but for the end that both share, and then `chain`.
CVexGePolyline2d joinedBehind(const CVexGePolyline2d& head, const CVexGePolyline2d& chain,
                              bool backward)
{
    const unsigned count = head.numVerts();
    CVexGePolyline2d joined;
    joined.setSize(count + chain.numVerts());
    // At the front it is the head that runs on forwards whose widths are exchanged, and one that is
    // turned round keeps them as stored. Drawings hold chains that were joined so.
    for (unsigned k = 1; k < count; ++k) {
        if (backward) {
            const unsigned at = count - k;
            appendVertexOf(joined, head, at, turned(head.getBulgeAt(at - 1)), false);
        } else {
            appendVertexOf(joined, head, k - 1, head.getBulgeAt(k - 1), true);
        }
    }
    for (unsigned k = 0; k < chain.numVerts(); ++k) {
        appendVertexOf(joined, chain, k, chain.getBulgeAt(k), false);
    }
    return joined;
}

} // namespace

bool CVexGePolyline2d::appendPolyline(const CVexGePolyline2d* other, int& index)
{
    if (m_closedFlag || other->m_closedFlag || m_vertices.empty() || other->m_vertices.empty()) {
        return false;
    }
    if (other == this) {
        const CVexGePolyline2d twin(*other);
        return appendPolyline(&twin, index);
    }
    const Joint joint = jointOf(m_vertices.front(), m_vertices.back(), other->m_vertices.front(),
                                other->m_vertices.back());
    switch (joint) {
    case Joint::kNone: return false;
    case Joint::kEndToStart:
    case Joint::kEndToEnd:
        appendTail(*this, *other, joint == Joint::kEndToEnd);
        index = static_cast<int>(other->numVerts()) - 1;
        break;
    case Joint::kStartToStart:
    case Joint::kStartToEnd:
        *this = joinedBehind(*other, *this, joint == Joint::kStartToStart);
        index = 0;
        break;
    }
    return true;
}

bool CVexGePolyline2d::appendSegment(const CVexGePoint2d& start, const CVexGePoint2d& end,
                                     double bulge, int& index)
{
    if (m_vertices.empty()) {
        return false;
    }
    const Joint joint = jointOf(m_vertices.front(), m_vertices.back(), start, end);
    if (joint == Joint::kNone) {
        return false;
    }
    if (joint == Joint::kEndToStart || joint == Joint::kEndToEnd) {
        const bool forward = joint == Joint::kEndToStart;
        m_bulges.back() = forward ? bulge : turned(bulge);
        appendVertex(forward ? end : start);
        index = static_cast<int>(m_vertices.size()) - 1;
        return true;
    }
    const bool backward = joint == Joint::kStartToStart;
    addVertexAt(0, backward ? end : start, backward ? turned(bulge) : bulge);
    index = 0;
    return true;
}

bool CVexGePolyline2d::appendPolyline(const CVexGeLine2d* line, int& index)
{
    return appendSegment(line->startPoint(), line->endPoint(), 0.0, index);
}

bool CVexGePolyline2d::appendPolyline(const CVexGeCircArc2d* arc, int& index)
{
    return appendSegment(arc->startPoint(), arc->endPoint(), arc->bulge(), index);
}
