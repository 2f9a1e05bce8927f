#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_hits.h"
#include "vexge/geentity2d/vexgepolyline2d_offset.h"
#include "vexge/geentity2d/vexgewinding.h"

namespace {

CVexGeCircArc2d wholeCircle(const CVexGeCircArc2d& arc)
{
    CVexGeCircArc2d circle(arc);
    circle.setAngles(0.0, kGeTwoPi);
    return circle;
}

} // namespace

void VexGeOffsetCorner::resolve()
{
    if (m_prev.isArc()) {
        m_cur.isArc() ? arcToArc() : arcToLine();
    } else {
        m_cur.isArc() ? lineToArc() : lineToLine();
    }
}

void VexGeOffsetCorner::lineToLine()
{
    const CVexGeLine2d& prev = m_prev.line();
    const CVexGeLine2d& cur = m_cur.line();
    if (prev.isParallelTo(cur, kGeEpsilon)) {
        m_chain.push(prev.endPoint(), 0.0);
        return;
    }
    CVexGePoint2d crossing;
    if (!prev.intersectWith(cur, crossing, CVexGeEntity2d::kExtendBoth, kOffsetJoinTol)) {
        return; // the chain turns back on itself: the spike is left out
    }
    const bool onPrev = m_prev.holds(crossing, kOffsetJoinTol);
    const bool onCur = m_cur.holds(crossing, kOffsetJoinTol);
    const auto nearerToEnd = [&crossing](const CVexGeLine2d& line) {
        return crossing.distanceTo(line.endPoint()) < crossing.distanceTo(line.startPoint());
    };
    const bool beyondPrev = !onPrev && nearerToEnd(prev);
    const bool beforeCur = !onCur && !nearerToEnd(cur);
    if ((onPrev && onCur) || (beyondPrev && beforeCur)) {
        m_chain.push(crossing, 0.0);
        return;
    }
    m_chain.push(prev.endPoint(), 0.0);
    m_chain.push(cur.startPoint(), 0.0);
}

std::optional<VexGeOffsetCorner::Crossing>
VexGeOffsetCorner::crossingWithLine(const CVexGeLine2d& line, const CVexGeCircArc2d& arc) const
{
    int count = 0;
    CVexGePoint2d hits[2];
    arc.intersectWith(line, count, hits[0], hits[1], CVexGeEntity2d::kExtendBoth, kGeEpsilon);
    const CVexGePoint2d end = m_prev.end();
    std::optional<Crossing> best;
    for (int i = 0; i < count; ++i) {
        const Crossing crossing{hits[i], m_prev.holds(hits[i], kGeEpsilon),
                                m_cur.holds(hits[i], kGeEpsilon)};
        if (!best || (crossing.onBoth() && !best->onBoth()) ||
            (crossing.onBoth() == best->onBoth() &&
             end.distanceTo(crossing.point) < end.distanceTo(best->point))) {
            best = crossing;
        }
    }
    return best;
}

std::optional<VexGeOffsetCorner::Crossing> VexGeOffsetCorner::crossingOfArcs() const
{
    const CVexGePoint2d end = m_prev.end();
    const VexGeHits bounded =
        hitsOf(m_prev.arc(), m_cur.arc(), CVexGeEntity2d::kExtendNone, kGeEpsilon);
    std::optional<Crossing> best;
    for (const CVexGePoint2d& hit : bounded) {
        if (isBetweenEnds(m_prev.arc(), hit) && isBetweenEnds(m_cur.arc(), hit) &&
            (!best || end.distanceTo(hit) < end.distanceTo(best->point))) {
            best = Crossing{hit, true, true};
        }
    }
    if (best) {
        return best;
    }
    for (const CVexGePoint2d& hit : hitsOf(wholeCircle(m_prev.arc()), wholeCircle(m_cur.arc()),
                                           CVexGeEntity2d::kExtendBoth, kGeEpsilon)) {
        if (!best || end.distanceTo(hit) < end.distanceTo(best->point)) {
            best = Crossing{hit, m_prev.holds(hit, kGeEpsilon), m_cur.holds(hit, kGeEpsilon)};
        }
    }
    return best;
}

void VexGeOffsetCorner::trimPrev(const Crossing& crossing)
{
    m_prev.setEnd(crossing.point, crossing.onPrev);
    m_chain.bulges.back() = m_prev.signedBulge();
}

void VexGeOffsetCorner::trimCur(const Crossing& crossing)
{
    m_cur.setStart(crossing.point, crossing.onCur);
}

void VexGeOffsetCorner::lineToArc()
{
    const CVexGePoint2d end = m_prev.end();
    if (end.isEqualTo(m_cur.start(), kOffsetJoinTol)) {
        m_chain.push(end, m_cur.signedBulge());
        return;
    }
    const auto crossing = crossingWithLine(m_prev.line(), m_cur.arc());
    if (!crossing) {
        fillet(m_cur.signedBulge());
        return;
    }
    if (crossing->onOne()) {
        m_chain.push(end, 0.0);
        m_chain.push(m_cur.start(), m_cur.signedBulge());
        return;
    }
    trimCur(*crossing);
    m_chain.push(crossing->point, m_cur.signedBulge());
}

void VexGeOffsetCorner::arcToLine()
{
    const CVexGePoint2d end = m_prev.end();
    if (m_cur.start().isEqualTo(end, kOffsetJoinTol)) {
        m_chain.push(end, 0.0);
        return;
    }
    const auto crossing = crossingWithLine(m_cur.line(), m_prev.arc());
    if (!crossing) {
        fillet(0.0);
        return;
    }
    if (crossing->onOne()) {
        m_chain.push(end, 0.0);
        m_chain.push(m_cur.start(), 0.0);
        return;
    }
    trimPrev(*crossing);
    m_chain.push(crossing->point, 0.0);
}

void VexGeOffsetCorner::arcToArc()
{
    if (m_cur.start().isEqualTo(m_prev.end(), kOffsetJoinTol)) {
        m_chain.push(m_cur.start(), m_cur.signedBulge());
        return;
    }
    const auto crossing = crossingOfArcs();
    if (!crossing || crossing->onOne()) {
        fillet(m_inputBulge);
        return;
    }
    trimPrev(*crossing);
    trimCur(*crossing);
    m_chain.push(crossing->point, m_cur.signedBulge());
}

bool VexGeOffsetCorner::filletIsClockwise() const
{
    const CVexGePoint2d end = m_prev.end();
    const CVexGePoint2d start = m_cur.start();
    const bool clockwise = winding(end, start, m_cur.thirdPoint()) == 0;
    // The third point is on the wrong side of the two ends where `cur` bends back by more than the
    // corner turns. The arc would then run the long way round the vertex, across the source, and
    // the clipping would drop the whole chain for it.
    const double run = notNegativeAngle(m_vertex.angleTo(start) - m_vertex.angleTo(end));
    const double sweep = clockwise ? kGeTwoPi - run : run;
    return sweep > kGeTwoPi / 2.0 + kGeAngleTol ? !clockwise : clockwise;
}

void VexGeOffsetCorner::fillet(double bulgeAtStart)
{
    const CVexGePoint2d end = m_prev.end();
    const CVexGePoint2d start = m_cur.start();
    const bool clockwise = filletIsClockwise();
    const CVexGeCircArc2d corner(m_vertex, m_dist, m_vertex.angleTo(end), m_vertex.angleTo(start),
                                 CVexGeVector2d::kXAxis, clockwise);
    m_chain.push(end, clockwise ? -corner.bulge() : corner.bulge());
    m_chain.push(start, bulgeAtStart);
}
