#include "vexdb/dbcommand/vexpolylineedits.h"

#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexfreeends.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinerecords.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cmath>
#include <memory>
#include <optional>

namespace {

constexpr unsigned kLeastClosed = 3; // vertices
constexpr double kShallowBulge = 0.01;

/// Opens a closed polyline at its start, which is repeated at the end, so that no segment is lost.
void openAtStart(CVexDbPolyline& polyline, const VexPolylineRecords& records)
{
    const unsigned count = polyline.NumVerts();
    const double closing = polyline.GetBulgeAt(count - 1);
    CVexGePoint2d start;
    double startWidth = CVexGePolyline2d::kNoWidth;
    double endWidth = CVexGePolyline2d::kNoWidth;
    polyline.GetPointAt(0, start);
    polyline.GetWidthsAt(0, startWidth, endWidth);
    records.bulge(count - 1, closing);
    records.opened();
    polyline.SetClosed(false);
    polyline.SetBulgeAt(count - 1, closing); // opening has computed another one
    polyline.AppendVertex(start, 0.0, startWidth, endWidth);
    records.added(count);
}

/// The vertices from `first` on as a new polyline with the same properties.
std::unique_ptr<CVexDbPolyline> tailOf(const CVexDbPolyline& polyline, unsigned first)
{
    const CVexGePolyline2d& chain = polyline.gePolyline();
    auto tail = std::make_unique<CVexDbPolyline>(chain.numVerts() - first, polyline.database());
    tail->CopyEntProperties(polyline);
    for (unsigned i = first; i < chain.numVerts(); ++i) {
        tail->AppendVertex(chain.vertices()[i], chain.bulges()[i], chain.startWidths()[i],
                           chain.endWidths()[i]);
    }
    return tail;
}

/// Joins an entity whose end meets one of the polyline's: false for any other.
bool append(CVexDbPolyline& polyline, const CVexDbEntity& other, int& side)
{
    switch (other.classType()) {
    case VexDb::kPolyline:
        return polyline.AppendPolyline(&static_cast<const CVexDbPolyline&>(other), side);
    case VexDb::kLine: return polyline.AppendPolyline(&static_cast<const CVexDbLine&>(other), side);
    case VexDb::kArc: return polyline.AppendPolyline(&static_cast<const CVexDbArc&>(other), side);
    default: return false;
    }
}

/// Records a join: the vertices that came, in front (`side` 0) or behind the `count` of before, and
/// the bulge of the old end, from which the first new segment leaves.
void recordJoin(const CVexDbPolyline& polyline, unsigned count, double endBulge, int side)
{
    const VexPolylineRecords records(polyline);
    const unsigned first = side == 0 ? 0 : count;
    if (side != 0) {
        records.bulge(count - 1, endBulge);
    }
    for (unsigned i = 0; i < polyline.NumVerts() - count; ++i) {
        records.added(first + i);
        records.bulge(first + i, 0.0);
    }
}

/// Joins the first entity that meets an end, from the place `from` on; its place, or none when
/// there is none.
std::optional<std::size_t> joinNext(CVexDbPolyline& polyline, const VexFreeEnds& ends,
                                    std::size_t from)
{
    const unsigned count = polyline.NumVerts();
    const double endBulge = polyline.GetBulgeAt(count - 1);
    for (const std::size_t place : ends.near(polyline, from)) {
        CVexDbEntity& other = *ends.at(place);
        int side = 0;
        if (&other != &polyline && append(polyline, other, side)) {
            eraseRecorded(other);
            recordJoin(polyline, count, endBulge, side);
            return place;
        }
    }
    return std::nullopt;
}

/// Joins what meets an end, in the order of the set, and takes it out of that. Again and again:
/// what meets no end yet may meet the end that another one has brought.
void joinAll(CVexDbPolyline& polyline, VexEntitySet& entities)
{
    VexFreeEnds ends(entities);
    for (bool goesOn = true; goesOn;) {
        goesOn = false;
        for (std::size_t from = 0; const auto place = joinNext(polyline, ends, from);) {
            entities.erase(ends.take(*place));
            from = *place + 1;
            goesOn = true;
        }
    }
}

} // namespace

bool closeRecorded(CVexDbPolyline& polyline)
{
    if (polyline.NumVerts() < kLeastClosed || polyline.IsClosed()) {
        return false;
    }
    VexPolylineRecords(polyline).closed();
    polyline.SetClosed(true);
    return true;
}

bool openRecorded(CVexDbPolyline& polyline)
{
    if (!polyline.IsClosed()) {
        return false;
    }
    VexPolylineRecords(polyline).opened();
    polyline.SetClosed(false);
    return true;
}

bool reverseRecorded(CVexDbPolyline& polyline)
{
    VexPolylineRecords(polyline).reversed();
    polyline.Reverse();
    return true;
}

bool changeStartRecorded(CVexDbPolyline& polyline, unsigned vertex)
{
    const bool isLast = vertex + 1 == polyline.NumVerts();
    if (vertex == 0 || vertex >= polyline.NumVerts() || !(isLast || polyline.Closed())) {
        return false;
    }
    VexPolylineRecords(polyline).startChanges(vertex);
    return polyline.ChangeStart(static_cast<int>(vertex));
}

bool insertRecorded(CVexDbPolyline& polyline, unsigned before, const CVexGePoint2d& point)
{
    const bool done = polyline.AddVertexAt(before, point, 0.0);
    if (done) {
        VexPolylineRecords(polyline).added(before);
    }
    return done;
}

bool removeRecorded(CVexDbPolyline& polyline, unsigned vertex)
{
    constexpr unsigned kLeast = 2; // or there is nothing left to see or to grip
    if (vertex >= polyline.NumVerts() || polyline.NumVerts() <= kLeast) {
        return false;
    }
    VexPolylineRecords(polyline).removed(vertex, polyline.gePolyline(), vertex);
    return polyline.RemoveVertexAt(static_cast<int>(vertex));
}

bool flipRecorded(CVexDbPolyline& polyline, unsigned segment)
{
    const bool isOpenEnd = !polyline.IsClosed() && segment + 1 >= polyline.NumVerts();
    if (segment >= polyline.NumVerts() || isOpenEnd) {
        return false;
    }
    const double before = polyline.GetBulgeAt(segment);
    VexPolylineRecords(polyline).bulge(segment, before);
    return polyline.SetBulgeAt(segment, std::fabs(before) > kGeStraightBulge ? 0.0 : kShallowBulge);
}

CVexDbPolyline* CVexCommandHandler::CommandBreakPolyline(CVexDbPolyline* polyline, int index,
                                                         bool /*group*/)
{
    const unsigned count = polyline->NumVerts();
    const auto first = static_cast<unsigned>(index);
    // Either part has a segment, or it would be nothing to see. The closing segment is the last
    // one of a polyline that is opened for this.
    const unsigned segments = polyline->IsClosed() ? count : count - 1;
    if (index <= 0 || first >= count || first >= segments) {
        return nullptr;
    }
    const VexPolylineRecords records(*polyline);
    if (polyline->IsClosed()) {
        openAtStart(*polyline, records);
    }
    std::unique_ptr<CVexDbPolyline> tail = tailOf(*polyline, first);
    const CVexGePolyline2d& chain = polyline->gePolyline();
    for (unsigned i = first + 1; i < chain.numVerts(); ++i) {
        records.bulge(first + 1, chain.getBulgeAt(i)); // two each, whatever the segment is
        records.removed(first + 1, chain.vertices()[i]);
    }
    polyline->RemoveVertexAt(index + 1, static_cast<int>(polyline->NumVerts()) - 1);
    // The bulge of the segment that went would be the closing one, should the rest be closed.
    if (const double bulge = polyline->GetBulgeAt(first); bulge != 0.0) {
        records.bulge(first, bulge);
        polyline->SetBulgeAt(first, 0.0);
    }
    return tail.release();
}

int CVexCommandHandler::CommandJoinPolyline(CVexDbPolyline* polyline, VexEntitySet& entities,
                                            bool /*group*/)
{
    if (polyline->NumVerts() > 0) {
        const VexUndoGroup step(m_database->undoHandler());
        joinAll(*polyline, entities);
    }
    polyline->setGripPoints();
    return InputPoint;
}
