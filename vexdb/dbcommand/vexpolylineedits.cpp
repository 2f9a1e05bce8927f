#include "vexdb/dbcommand/vexpolylineedits.h"

#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcuts.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinerecords.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cmath>
#include <memory>

namespace {

constexpr unsigned kLeastClosed = 3; // vertices
constexpr double kShallowBulge = 0.01;
constexpr double kNoWidth = -1.0;

/// Opens a closed polyline at its start, which is repeated at the end, so that no segment is lost.
void openAtStart(CVexDbPolyline& polyline, const VexPolylineRecords& records)
{
    const unsigned count = polyline.NumVerts();
    const double closing = polyline.GetBulgeAt(count - 1);
    CVexGePoint2d start;
    double startWidth = kNoWidth;
    double endWidth = kNoWidth;
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
    case VexDb::kPolyline: {
        const auto& chain = static_cast<const CVexDbPolyline&>(other);
        // A lone vertex would join without a segment, and leave its bulge behind.
        return chain.NumVerts() > 1 && polyline.AppendPolyline(&chain, side);
    }
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

/// Joins what meets an end now, and takes it out of the set; true when anything did.
bool joinOnce(CVexDbPolyline& polyline, VexEntitySet& entities)
{
    bool joined = false;
    for (auto at = entities.begin(); at != entities.end();) {
        CVexDbEntity& other = **at;
        const unsigned count = polyline.NumVerts();
        const double endBulge = polyline.GetBulgeAt(count - 1);
        int side = 0;
        if (&other == &polyline || !append(polyline, other, side)) {
            ++at;
            continue;
        }
        eraseRecorded(other);
        recordJoin(polyline, count, endBulge, side);
        at = entities.erase(at);
        joined = true;
    }
    return joined;
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
    const bool done = polyline.AddVertexAt(before, point, 0.0, kNoWidth, kNoWidth);
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

void addRecorded(CVexDbEntity* entity)
{
    if (entity == nullptr) {
        return;
    }
    CVexDbObjectId id;
    entity->database()->addEntity(entity, id);
    recordEdit(*entity, undoEditOf(*entity, kUndoCreate));
}

void eraseRecorded(CVexDbEntity& entity)
{
    recordEdit(entity, undoEditOf(entity, kUndoErase));
    entity.setErased(); // only the bit: undo brings the object back
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
    for (unsigned i = first + 1; i < polyline->NumVerts(); ++i) {
        records.removed(first + 1, polyline->gePolyline(), i);
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
        // Again and again: what meets no end yet may meet the end that another one has brought.
        while (joinOnce(*polyline, entities)) {
        }
    }
    polyline->setGripPoints();
    return InputPoint;
}
