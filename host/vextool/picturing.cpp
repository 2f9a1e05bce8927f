#include "host/vextool/picturing.h"

#include "platform/qt/vexqtbackend.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <cmath>

namespace {

void widen(std::optional<VexExtents>& extents, const CVexGePoint2d& point, double farthest)
{
    // Also leaves out what is no number.
    if (!(std::fabs(point.x) <= farthest && std::fabs(point.y) <= farthest)) {
        return;
    }
    if (!extents) {
        extents = VexExtents{point.x, point.y, point.x, point.y};
        return;
    }
    extents->left = std::min(extents->left, point.x);
    extents->bottom = std::min(extents->bottom, point.y);
    extents->right = std::max(extents->right, point.x);
    extents->top = std::max(extents->top, point.y);
}

void widen(std::optional<VexExtents>& extents, const CVexDbRect& box, double farthest)
{
    widen(extents, box.LeftTop(), farthest);
    widen(extents, box.RightBottom(), farthest);
}

/// The outer rectangle of a polyline is of its vertices alone: its arcs would stand outside of the
/// picture.
void widenByArcs(std::optional<VexExtents>& extents, const CVexGePolyline2d& chain, double farthest)
{
    CVexGeCircArc2d arc;
    for (unsigned i = 0; i < chain.numVerts(); ++i) {
        if (chain.getArcSegAt(i, arc)) {
            CVexDbArc drawn(arc.center(), arc.radius(), arc.startAng(), arc.endAng());
            widen(extents, drawn.GetOutRect(), farthest);
        }
    }
}

} // namespace

std::optional<VexExtents> drawingExtents(CVexDbDatabase& database, double farthest)
{
    std::optional<VexExtents> extents;
    const CVexDbIdSet& shown = *database.displays().getCurrentRecord()->displayedIdSet();
    for (auto at = shown.begin(); at != shown.end(); ++at) {
        if (at.object()->isVisiable()) {
            auto& entity = *static_cast<CVexDbEntity*>(at.object());
            widen(extents, entity.GetOutRect(), farthest);
            if (entity.classType() == VexDb::kPolyline) {
                widenByArcs(extents, static_cast<CVexDbPolyline&>(entity).gePolyline(), farthest);
            }
        }
    }
    return extents;
}

PictureBackend::PictureBackend()
    : m_backend(std::make_unique<CVexQtBackend>()), m_before(CVexBackend::install(m_backend.get()))
{
}

PictureBackend::~PictureBackend()
{
    CVexBackend::install(m_before);
}
