#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexgridsnap.h"
#include "vexdb/dbobject/dbentity/vexdbcurve.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgevector2d.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace {

constexpr double kAperturePixels = 10.0; // half a side of the square around the cursor
constexpr double kSnapTol = 0.001;       // drawing units
constexpr int kBlipColor = 4;
constexpr std::uint8_t kBlipPixels = 10;

// The shapes of a point entity, one a kind of snap.
enum BlipStyle : std::uint8_t {
    kBlipCenter = 1,
    kBlipIntersection = 3,
    kBlipGrip = 6,
    kBlipNearest = 7,
    kBlipGridPoint = 8,
};

// What the last blip looked like, for the stroke that takes it off: one for the whole process, as
// there is one cursor.
std::uint8_t lastBlipStyle = 0;

bool crossesItself(const CVexDbEntity& entity)
{
    return entity.classType() == VexDb::kPolyline || entity.classType() == VexDb::kSpline ||
           entity.classType() == VexDb::kSpiral;
}

/// Looks for what the cursor may snap to. Each search gives its point in drawing units, or false.
class SnapFinder {
public:
    SnapFinder(CVexDbDatabase& database, CVexDbDisplayTableRecord& view,
               const CVexGePoint2d& cursor)
        : m_settings(database.settings()), m_view(view), m_cursor(cursor),
          m_half(kAperturePixels * view.xScale() / _dDispScale)
    {
    }

    bool gridPoint(CVexGePoint2d& out) const
    {
        const double fine = m_settings.m_dGridStep / (m_settings.m_nGridDivisions + 1);
        const std::optional<CVexGePoint2d> at = gridPointAt(m_cursor, fine);
        if (!at || std::fabs(at->x - m_cursor.x) > m_half ||
            std::fabs(at->y - m_cursor.y) > m_half) {
            return false;
        }
        out = *at;
        return true;
    }

    bool grip(CVexGePoint2d& out) const
    {
        CVexGePoint2d at;
        CVexDbEntity* entity = entityAtCursor();
        if (entity == nullptr || entity->GetGripNumber(m_cursor, m_view.xScale(), at) < 0) {
            return false;
        }
        out = at;
        return true;
    }

    bool intersection(CVexGePoint2d& out) const
    {
        CVexDbIdSet found;
        const CVexGeVector2d reach(m_half, m_half);
        m_view.selectEntityByCross(m_cursor - reach, m_cursor + reach, found);
        if (found.empty()) {
            return false;
        }
        const auto* first = static_cast<const CVexDbEntity*>(found.begin().object());
        if (found.size() > 1) {
            auto* second = static_cast<CVexDbEntity*>(std::next(found.begin()).object());
            return nearestCrossing(*first, *second, out);
        }
        // One alone can only cross itself.
        return crossesItself(*first) &&
               nearestCrossing(*first, *static_cast<CVexDbEntity*>(found.begin().object()), out);
    }

    bool center(CVexGePoint2d& out) const
    {
        const CVexDbEntity* entity = entityAtCursor();
        return entity != nullptr && entity->centerPoint(out);
    }

    bool nearest(CVexGePoint2d& out) const
    {
        CVexDbEntity* entity = entityAtCursor();
        if (entity == nullptr || !entity->IsCurveEntity()) {
            return false;
        }
        CVexGePoint2d cursor = m_cursor;
        CVexGeVector2d fromFoot;
        if (!static_cast<CVexDbCurve*>(entity)->PerpVecFromPoint(cursor, fromFoot, kSnapTol)) {
            return false;
        }
        out = m_cursor - fromFoot;
        return true;
    }

private:
    [[nodiscard]] CVexDbEntity* entityAtCursor() const
    {
        CVexDbObjectId id;
        return m_view.selectEntity(m_cursor, id) ? static_cast<CVexDbEntity*>(id.getPObject())
                                                 : nullptr;
    }

    bool nearestCrossing(const CVexDbEntity& first, CVexDbEntity& second, CVexGePoint2d& out) const
    {
        int count = 0;
        CVexDbEntity::PointList points;
        if (!first.intersectWith(second, count, points, CVexGeEntity2d::kExtendNone, kSnapTol) ||
            points.empty()) {
            return false;
        }
        // Of points equally near the earliest wins.
        out = *std::ranges::min_element(
            points, {}, [this](const CVexGePoint2d& point) { return point.distanceTo(m_cursor); });
        return true;
    }

    const VexDbDrawingSettings_tag& m_settings;
    CVexDbDisplayTableRecord& m_view;
    CVexGePoint2d m_cursor;
    double m_half; // drawing units
};

/// One kind of snap. `yields`: it does not look when another has snapped already.
struct Snap {
    bool wanted;
    bool yields;
    BlipStyle style;
    bool (SnapFinder::*find)(CVexGePoint2d&) const;
};

/// The point display settings of a blip, for a scope.
class BlipSettingsScope {
public:
    explicit BlipSettingsScope(VexDbDrawingSettings_tag& settings)
        : m_settings(settings), m_style(settings.m_nPointStyle), m_size(settings.m_nPointSize)
    {
        settings.m_nPointStyle = lastBlipStyle;
        settings.m_nPointSize = kBlipPixels;
    }
    ~BlipSettingsScope()
    {
        m_settings.m_nPointStyle = m_style;
        m_settings.m_nPointSize = m_size;
    }
    BlipSettingsScope(const BlipSettingsScope&) = delete;
    BlipSettingsScope& operator=(const BlipSettingsScope&) = delete;

private:
    VexDbDrawingSettings_tag& m_settings;
    std::uint8_t m_style;
    std::uint8_t m_size;
};

} // namespace

bool CVexCommandHandler::CheckSnapChar(wchar_t character)
{
    if (m_database == nullptr) {
        return false;
    }
    VexDbDrawingSettings_tag& settings = m_database->settings();
    switch (character) {
    case L'I': settings.m_bSnapIntersection = true; return true;
    case L'C': settings.m_bSnapCenter = true; return true;
    case L'N': settings.m_bSnapNearest = true; return true;
    default: return false;
    }
}

bool CVexCommandHandler::CheckSnapPoint(CVexGePoint2d& previous, const CVexGePoint2d& cursor,
                                        CVexGePoint2d& result)
{
    CheckBlipDraw(previous);
    CVexDbDisplayTableRecord* view =
        m_database == nullptr ? nullptr : m_database->displays().getCurrentRecord();
    if (view == nullptr) {
        return false;
    }
    const VexDbDrawingSettings_tag& settings = m_database->settings();
    // A grip does not ask whether a grid point has snapped: it replaces that, whose blip then stays
    // on screen until the next repaint.
    const std::array snaps = {
        Snap{settings.m_bGridVisible && settings.m_bGridPointSnap, false, kBlipGridPoint,
             &SnapFinder::gridPoint},
        Snap{settings.m_bGripSnap, false, kBlipGrip, &SnapFinder::grip},
        Snap{settings.m_bSnapIntersection, true, kBlipIntersection, &SnapFinder::intersection},
        Snap{settings.m_bSnapCenter, true, kBlipCenter, &SnapFinder::center},
        Snap{settings.m_bSnapNearest, true, kBlipNearest, &SnapFinder::nearest},
    };
    const SnapFinder finder(*m_database, *view, cursor);
    bool snapped = false;
    for (const Snap& snap : snaps) {
        CVexGePoint2d at;
        if (snap.wanted && !(snap.yields && snapped) && (finder.*snap.find)(at)) {
            result = previous = at;
            DrawBlip(at, viewContext(), snap.style);
            m_blipDrawn = snapped = true;
        }
    }
    return snapped;
}

void CVexCommandHandler::DrawBlip(const CVexGePoint2d& at, CDC* dc, int style)
{
    if (style != 0) {
        lastBlipStyle = static_cast<std::uint8_t>(style);
    }
    if (dc == nullptr || m_database == nullptr) {
        return;
    }
    const BlipSettingsScope blipSettings(m_database->settings());
    CVexDbPoint marker(m_database);
    marker.SetPosition(at);
    marker.setColor(kBlipColor, false);
    marker.Draw(dc);
}

void CVexCommandHandler::CheckBlipDraw(const CVexGePoint2d& previous)
{
    if (m_blipDrawn) {
        DrawBlip(previous, viewContext(), 0);
        m_blipDrawn = false;
    }
}
