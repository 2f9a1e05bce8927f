#include "host/vextool/picturing.h"

#include "platform/qt/vexqtbackend.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
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

} // namespace

std::optional<VexExtents> drawingExtents(CVexDbDatabase& database, double farthest)
{
    std::optional<VexExtents> extents;
    const CVexDbIdSet& shown = *database.displays().getCurrentRecord()->displayedIdSet();
    for (auto at = shown.begin(); at != shown.end(); ++at) {
        if (at.object()->isVisiable()) {
            const CVexDbRect box = static_cast<CVexDbEntity*>(at.object())->GetOutRect();
            widen(extents, box.LeftTop(), farthest);
            widen(extents, box.RightBottom(), farthest);
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
