#include "vexdb/dbobject/dbentity/vexdbcornerround.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinerecords.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinesegment.h"

#include <algorithm>
#include <vector>

namespace {

using Segment = VexPolylineSegment;

/// How far the ends of two curves may lie apart that share an end.
constexpr double kSharedEndTol = 1e-6;
/// How far a segment, as computed, may miss its corner where all corners are rounded.
constexpr double kFilletAllTol = 0.1;

struct Vertex {
    CVexGePoint2d point;
    double bulge = 0.0;
    double startWidth = CVexGePolyline2d::kNoWidth;
    double endWidth = CVexGePolyline2d::kNoWidth;
};

std::vector<Vertex> verticesOf(const CVexGePolyline2d& chain)
{
    std::vector<Vertex> vertices(chain.numVerts());
    for (unsigned i = 0; i < chain.numVerts(); ++i) {
        Vertex& vertex = vertices[i];
        vertex.point = chain.vertices()[i];
        vertex.bulge = chain.getBulgeAt(i);
        chain.getWidthsAt(i, vertex.startWidth, vertex.endWidth);
    }
    return vertices;
}

/// A corner that is rounded: the vertex that comes before it is the round's start, the corner
/// itself becomes the round's end and keeps the widths of the segment that follows.
struct RoundedCorner {
    VexCornerRound round;
    bool firstIsArc = false;
    bool secondIsArc = false;
    double firstBulge = 0.0; // of what is left
    double secondBulge = 0.0;
};

bool startsNear(const Segment& segment, double tol)
{
    return segment.pointAt(0.0).distanceTo(segment.from()) <= tol;
}

bool endsNear(const Segment& segment, double tol)
{
    return segment.pointAt(segment.length()).distanceTo(segment.to()) <= tol;
}

std::optional<RoundedCorner> rounded(const Vertex& before, const Vertex& corner,
                                     const CVexGePoint2d& after, double radius, double tol)
{
    if (before.point.distanceTo(corner.point) < kGeTol || corner.point.distanceTo(after) < kGeTol) {
        return std::nullopt;
    }
    const Segment first(before.point, corner.point, before.bulge);
    const Segment second(corner.point, after, corner.bulge);
    if (!endsNear(first, tol) || !startsNear(second, tol)) {
        return std::nullopt;
    }
    const auto round = roundCorner(first, second, radius);
    if (!round) {
        return std::nullopt;
    }
    return RoundedCorner{*round, first.isArc(), second.isArc(), first.bulgeOf(round->firstRest),
                         second.bulgeOf(round->secondRest)};
}

/// What rounding corner `index` changes, in the order in which it is done. `before` is the number
/// of the vertex before the corner once the new one is there.
void record(const VexPolylineRecords& records, const RoundedCorner& done, unsigned index,
            unsigned before, const Vertex& corner, double firstBulge)
{
    records.added(index);
    records.bulge(index, 0.0);
    records.moved(index + 1, corner.point);
    if (done.secondIsArc) {
        records.bulge(index + 1, corner.bulge);
    }
    if (done.firstIsArc) {
        records.bulge(before, firstBulge);
    }
}

/// Rounds one corner of `chain`; false when it stays.
bool roundOne(CVexGePolyline2d& chain, unsigned index, double radius, double tol,
              const VexPolylineRecords& records)
{
    const unsigned count = chain.numVerts();
    const bool isEnd = index == 0 || index + 1 == count;
    if (index >= count || count < 2 || (isEnd && !chain.isClosed())) {
        return false;
    }
    const unsigned before = index > 0 ? index - 1 : count - 1;
    const unsigned after = index + 1 < count ? index + 1 : 0;
    const Vertex previous{chain.vertices()[before], chain.getBulgeAt(before)};
    const Vertex corner{chain.vertices()[index], chain.getBulgeAt(index)};
    const auto done = rounded(previous, corner, chain.vertices()[after], radius, tol);
    if (!done) {
        return false;
    }
    // The new vertex stands before the corner, so that the corner's widths stay with the segment
    // that follows, and come back when this is undone.
    const unsigned beforeNow = before < index ? before : before + 1;
    record(records, *done, index, beforeNow, corner, previous.bulge);
    chain.addVertexAt(index, done->round.start, done->round.bulge);
    chain.setPointAt(index + 1, done->round.end);
    chain.setBulgeAt(index + 1, done->secondBulge);
    chain.setBulgeAt(beforeNow, done->firstBulge);
    return true;
}

/// Rounds the corners of `chain` from the last down to vertex 1, the chain made anew in one go.
void roundDownToOne(CVexGePolyline2d& chain, double radius, const VexPolylineRecords& records)
{
    std::vector<Vertex> vertices = verticesOf(chain);
    std::vector<Vertex> tail; // what is done, the last vertex first
    tail.reserve(2 * vertices.size());
    std::size_t corner = vertices.size();
    if (!chain.isClosed()) {
        tail.push_back(vertices[--corner]);
    }
    while (corner-- > 1) {
        Vertex& before = vertices[corner - 1];
        Vertex here = vertices[corner];
        const CVexGePoint2d after = tail.empty() ? vertices.front().point : tail.back().point;
        const auto done = rounded(before, here, after, radius, kFilletAllTol);
        if (done) {
            const auto index = static_cast<unsigned>(corner);
            record(records, *done, index, index - 1, here, before.bulge);
            here.point = done->round.end;
            here.bulge = done->secondBulge;
            before.bulge = done->firstBulge;
        }
        tail.push_back(here);
        if (done) {
            tail.push_back({done->round.start, done->round.bulge});
        }
    }
    tail.push_back(vertices.front());
    chain.setSize(static_cast<unsigned>(tail.size()));
    std::for_each(tail.rbegin(), tail.rend(), [&chain](const Vertex& vertex) {
        chain.appendVertex(vertex.point, vertex.bulge, vertex.startWidth, vertex.endWidth);
    });
}

/// A curve as a segment that travels from or to one of its own ends.
Segment travelling(const CVexGeLine2d& line, bool forwards)
{
    return forwards ? Segment(line.startPoint(), line.endPoint(), 0.0)
                    : Segment(line.endPoint(), line.startPoint(), 0.0);
}

Segment travelling(const CVexGeCircArc2d& arc, bool forwards)
{
    return forwards ? Segment(arc.startPoint(), arc.endPoint(), arc.bulge())
                    : Segment(arc.endPoint(), arc.startPoint(), -arc.bulge());
}

template <class First, class Second>
bool isFilletable(const First& first, const Second& second, double radius, CVexGeCircArc2d& arc,
                  int& code)
{
    for (code = 0; code < 4; ++code) {
        const Segment in = travelling(first, code == 0 || code == 1);
        const Segment out = travelling(second, code == 0 || code == 2);
        if (!(in.to().distanceTo(out.from()) < kSharedEndTol)) {
            continue;
        }
        const auto round = roundCorner(in, out, radius);
        if (round) {
            arc = round->arc;
        }
        return round.has_value();
    }
    code = 0;
    return false;
}

} // namespace

bool CVexDbPolyline::IsFilletable(const CVexGeLine2d& first, const CVexGeLine2d& second,
                                  double radius, CVexGeCircArc2d& arc, int& code)
{
    return isFilletable(first, second, radius, arc, code);
}

bool CVexDbPolyline::IsFilletable(const CVexGeLine2d& first, const CVexGeCircArc2d& second,
                                  double radius, CVexGeCircArc2d& arc, int& code)
{
    return isFilletable(first, second, radius, arc, code);
}

bool CVexDbPolyline::IsFilletable(const CVexGeCircArc2d& first, const CVexGeLine2d& second,
                                  double radius, CVexGeCircArc2d& arc, int& code)
{
    return isFilletable(first, second, radius, arc, code);
}

bool CVexDbPolyline::IsFilletable(const CVexGeCircArc2d& first, const CVexGeCircArc2d& second,
                                  double radius, CVexGeCircArc2d& arc, int& code)
{
    return isFilletable(first, second, radius, arc, code);
}

void CVexDbPolyline::Fillet(int index, double radius, double tol)
{
    const VexPolylineRecords records(*this);
    if (index >= 0 && roundOne(m_geometry, static_cast<unsigned>(index), radius, tol, records)) {
        changed();
    }
}

void CVexDbPolyline::Fillet(double radius)
{
    const VexPolylineRecords records(*this);
    records.blockBegins();
    if (NumVerts() > 1) {
        roundDownToOne(m_geometry, radius, records);
        if (m_geometry.isClosed()) {
            roundOne(m_geometry, 0, radius, kFilletAllTol, records);
        }
        changed();
    }
    records.blockEnds();
}
