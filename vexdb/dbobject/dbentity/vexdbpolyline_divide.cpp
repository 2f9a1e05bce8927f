#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinerecords.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinesegment.h"

void CVexDbPolyline::DivideSegment(int n, int segment, bool)
{
    const auto count = static_cast<int>(NumVerts());
    const bool isClosing = m_geometry.isClosed() && segment == count;
    const int index = isClosing ? count - 1 : segment;
    if (n < 2 || index < 0 || index >= count) {
        return;
    }
    const auto first = static_cast<unsigned>(index);
    const auto whole = VexPolylineSegment::of(m_geometry, first);
    if (!whole) {
        return;
    }
    const VexPolylineRecords records(*this);
    const double piece = whole->length() / n;
    const double bulge = whole->isArc() ? whole->bulgeOf(piece) : 0.0;
    for (int k = 1; k < n; ++k) {
        const unsigned at = first + static_cast<unsigned>(k);
        if (m_geometry.addVertexAt(at, whole->pointAt(k * piece), bulge)) {
            records.added(at);
            records.bulge(at, 0.0);
        }
    }
    records.bulge(first, whole->bulge());
    m_geometry.setBulgeAt(first, bulge);
    changed();
}
