#include "vexdb/dbobject/dbentity/vexdbpolylinerecords.h"

#include "vexdb/dbobject/dbentity/vexdbcuts.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"

#include <cmath>

VexPolylineRecords::VexPolylineRecords(const CVexDbPolyline& polyline) : m_polyline(polyline)
{
    CVexDbDatabase* drawing = polyline.database() != nullptr ? polyline.database() : _gpDatabase;
    if (drawing != nullptr) {
        m_group.emplace(drawing->undoHandler());
    }
}

tagUndoEditEntity VexPolylineRecords::record(UndoEditType type) const
{
    return undoEditOf(m_polyline, type);
}

void VexPolylineRecords::add(const tagUndoEditEntity& edit) const
{
    // One that is not in the drawing yet has nothing to be undone: its creation will be.
    if (m_polyline.IsDbEntity()) {
        recordEdit(m_polyline, edit);
    }
}

void VexPolylineRecords::bulge(unsigned index, double before) const
{
    tagUndoEditEntity edit = record(kUndoChangeBulge);
    edit.index = static_cast<std::int32_t>(index);
    edit.vector.x = before;
    add(edit);
}

void VexPolylineRecords::moved(unsigned index, const CVexGePoint2d& before) const
{
    tagUndoEditEntity edit = record(kUndoMovePoint);
    edit.index = static_cast<std::int32_t>(index);
    edit.point = before;
    add(edit);
}

void VexPolylineRecords::added(unsigned index) const
{
    tagUndoEditEntity edit = record(kUndoAddVertex);
    edit.index = static_cast<std::int32_t>(index);
    add(edit);
}

void VexPolylineRecords::removed(unsigned index, const CVexGePolyline2d& chain,
                                 unsigned vertex) const
{
    // Not only of arcs: what counts as straight, or stands unused at an open end, has a bulge that
    // files keep.
    const double before = chain.getBulgeAt(vertex);
    if (before != 0.0 || std::signbit(before)) {
        bulge(index, before);
    }
    removed(index, chain.vertices()[vertex]);
}

void VexPolylineRecords::removed(unsigned index, const CVexGePoint2d& point) const
{
    tagUndoEditEntity edit = record(kUndoRemoveVertex);
    edit.index = static_cast<std::int32_t>(index);
    edit.point = point;
    add(edit);
}

void VexPolylineRecords::opened() const
{
    add(record(kUndoOpen));
}

void VexPolylineRecords::closed() const
{
    add(record(kUndoClose));
}

void VexPolylineRecords::reversed() const
{
    add(record(kUndoReverse));
}

void VexPolylineRecords::startChanges(unsigned index) const
{
    tagUndoEditEntity edit = record(kUndoChangeStart);
    edit.index = static_cast<std::int32_t>(index);
    add(edit);
}

void VexPolylineRecords::blockBegins() const
{
    add(record(kUndoBlockBegin));
}

void VexPolylineRecords::blockEnds() const
{
    add(record(kUndoBlockEnd));
}
