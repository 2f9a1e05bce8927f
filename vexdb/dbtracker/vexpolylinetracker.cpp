#include "vexdb/dbtracker/vexpolylinetracker.h"

#include "platform/device/cdc.h"
#include "platform/device/vexdeviceobjects.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbtracker/vexexactly.h"
#include "vexdb/dbtracker/vexropscope.h"

#include <cmath>
#include <numbers>

namespace {

constexpr int kWhole = 0; // the first vertex takes the polyline along
constexpr int kLeastSides = 3;

/// A regular polygon: where it stands, how large it is, and the angle of its first vertex.
struct Polygon {
    CVexGePoint2d centre;
    double radius;
    double first;
};

/// To the left of the side from `start` along `side`.
Polygon onEdge(const CVexGePoint2d& start, CVexGeVector2d side, double angle)
{
    const double radius = side.length() / 2.0 / std::fabs(std::sin(angle / 2.0));
    side.normalize(kGeTol).rotateBy((std::numbers::pi - angle) / 2.0);
    const CVexGePoint2d centre = start + side * radius;
    return {centre, radius, centre.angleTo(start)};
}

} // namespace

CVexPolylineTracker::~CVexPolylineTracker()
{
    if (m_mark) {
        strokeMark(*m_mark);
    }
}

// A walk, not a search by place: grips may lie on one another.
std::optional<CVexPolylineTracker::Spot> CVexPolylineTracker::spotOf(const CVexDbPolyline& polyline,
                                                                     int grip)
{
    int at = 0;
    for (unsigned vertex = 0; vertex < polyline.NumVerts(); ++vertex) {
        if (at++ == grip) {
            return Spot{vertex, false};
        }
        if (polyline.SegType(vertex) == CVexGePolyline2d::kArc && at++ == grip) {
            return Spot{vertex, true};
        }
    }
    return std::nullopt;
}

void CVexPolylineTracker::UpdateEntity(CVexDbEntity* copy, int grip)
{
    if (grip == kWhole) {
        MoveEntity(copy);
        return;
    }
    CVexDbPolyline& shape = shapeOf(copy);
    if (const auto spot = spotOf(shape, grip); spot && spot->isMiddle) {
        bend(shape, spot->vertex);
    } else if (spot) {
        shape.SetPointAt(spot->vertex, endPoint());
    }
}

/// The arc follows the pointer to its side of the chord. A positive bulge runs counter-clockwise
/// and so swells to the right.
void CVexPolylineTracker::bend(CVexDbPolyline& polyline, unsigned segment) const
{
    CVexGePoint2d from;
    CVexGePoint2d to;
    polyline.GetPointAt(segment, from);
    polyline.GetPointAt((segment + 1) % polyline.NumVerts(), to);
    const CVexGeVector2d chord = to - from;
    const CVexGeVector2d way = endPoint() - (from + chord * 0.5);
    const double bulge = 2.0 * way.length() / chord.length();
    const bool isLeft = chord.perpVector().dotProduct(way) > 0.0;
    if (std::isfinite(bulge)) {
        polyline.SetBulgeAt(segment, isLeft ? -bulge : bulge);
    }
}

void CVexPolylineTracker::CheckCreateOption(CVexDbEntity* copy, CPoint& position)
{
    const CVexGePoint2d to = exactAt(position);
    switch (copy->classType()) {
    case VexDb::kArc:
        VexArcBand{m_option, startPoint(), to, m_arcPoint, m_previousEntity}.shape(
            static_cast<CVexDbArc&>(*copy));
        break;
    case VexDb::kLine: static_cast<CVexDbLine&>(*copy).setEndPoint(to); break;
    case VexDb::kPolyline: shapePolygon(shapeOf(copy), to); break;
    default: break;
    }
}

void CVexPolylineTracker::shapePolygon(CVexDbPolyline& polyline, const CVexGePoint2d& to) const
{
    const auto sides = static_cast<int>(m_option % kByEdge);
    if (m_option <= kByEdge || sides < kLeastSides) {
        return;
    }
    const double angle = 2.0 * std::numbers::pi / sides;
    const CVexGeVector2d band = to - startPoint();
    Polygon polygon{startPoint(), band.length(), band.angle()};
    switch (m_option - static_cast<unsigned long>(sides)) {
    case kByEdge: polygon = onEdge(startPoint(), band, angle); break;
    case kInscribed: break;
    case kCircumscribed:
        polygon.radius /= std::cos(angle / 2.0);
        polygon.first += angle / 2.0;
        break;
    default: return;
    }
    std::vector<CVexGePoint2d> corners;
    for (int i = 0; i < sides; ++i) {
        corners.push_back(polygon.centre +
                          CVexGeVector2d(i * angle + polygon.first) * polygon.radius);
    }
    polyline.SetVertexes(corners, false); // the command closes it
}

bool CVexPolylineTracker::recordGrip(int grip, tagUndoEditEntity& edit)
{
    const CVexDbPolyline& before = shapeOf(m_entity);
    const CVexDbPolyline& after = shapeOf(m_current);
    const auto spot = spotOf(before, grip);
    if (grip == kWhole || !spot) {
        return spot.has_value(); // moved by the band, as it is filled in already
    }
    edit.index = static_cast<std::int32_t>(spot->vertex);
    if (spot->isMiddle) {
        edit.editType = kUndoChangeBulge;
        edit.vector = CVexGeVector2d(before.GetBulgeAt(spot->vertex), 0.0);
        return before.GetBulgeAt(spot->vertex) != after.GetBulgeAt(spot->vertex);
    }
    CVexGePoint2d to;
    edit.editType = kUndoMovePoint;
    edit.vector = CVexGeVector2d();
    before.GetPointAt(spot->vertex, edit.point);
    after.GetPointAt(spot->vertex, to);
    return !isSame(edit.point, to);
}

bool CVexPolylineTracker::asksSecondPoint() const
{
    return m_createMode && m_option == kSecondPoint && m_entity != nullptr &&
           m_entity->classType() == VexDb::kArc;
}

// There is no arc to be seen before its second point: the band alone follows the pointer then.
bool CVexPolylineTracker::showsBand(int grip) const
{
    return asksSecondPoint() || CVexCurveTracker::showsBand(grip);
}

void CVexPolylineTracker::DrawCurrent()
{
    if (!asksSecondPoint()) {
        CVexCurveTracker::DrawCurrent();
    }
}

void CVexPolylineTracker::strokeBackground()
{
    if (m_background == nullptr || m_dc == nullptr) {
        return;
    }
    const VexRopScope asBand(m_dc, bandRaster(*m_dc));
    for (const auto& segment : *m_background) {
        segment->Draw(m_dc);
    }
}

/// Whether a typed number is an angle or a factor, and not a distance.
bool CVexPolylineTracker::wantsNumber() const
{
    return m_transform == VexDb::TransFormRotate || m_transform == VexDb::TransFormScale;
}

int CVexPolylineTracker::settleAnswer(int result, int grip)
{
    if (result == InputTypedPoint) {
        SetPos(m_result.value.point);
    } else if (result == InputNumber && !wantsNumber()) {
        SetPos(startPoint() + CVexGeVector2d(m_result.value.number, 0.0));
    } else {
        // Enter takes what is shown and stays an Enter, by which a command ends its vertices; even
        // behind arrow keys, whose place has been taken then. A scaling without way is none.
        const bool isNothing = m_transform != VexDb::TransFormNone && bandVector().length() == 0.0;
        if (result == InputEnter && !m_movedByKeys && !isNothing) {
            endAt(grip);
        }
        return result;
    }
    endAt(grip);
    return InputPoint;
}

void CVexPolylineTracker::DrawGripBox(bool erase)
{
    CVexCurveTracker::DrawGripBox(erase);
    m_mark.reset(); // the boxes were off the screen, and so was the mark
    if (m_gripsShown) {
        DrawSelBoxByProperty();
    }
}

void CVexPolylineTracker::UnDrawGripBox()
{
    if (m_gripsShown && m_mark) {
        DrawSelBoxByProperty();
    }
    CVexCurveTracker::UnDrawGripBox();
}

void CVexPolylineTracker::DrawSelBoxByProperty()
{
    CVexGePoint2d point;
    if (m_mark) {
        strokeMark(*m_mark);
        m_mark.reset();
    } else if (m_vertex >= 0 && m_entity != nullptr && m_dc != nullptr &&
               polyline().GetPointAt(static_cast<unsigned>(m_vertex), point)) {
        m_mark = gripBox(point);
        strokeMark(*m_mark);
    }
}

void CVexPolylineTracker::DrawSelBoxByProperty(int vertex)
{
    if (m_mark) {
        DrawSelBoxByProperty();
    }
    m_vertex = vertex;
    DrawSelBoxByProperty();
}

void CVexPolylineTracker::strokeMark(const CRect& box) const
{
    if (m_dc == nullptr) {
        return;
    }
    const VexRopScope xorPen(m_dc, R2_XORPEN);
    const CPen pen(PS_SOLID, m_penWidth, m_handleColor);
    const CPen* const before = m_dc->SelectObject(&pen);
    m_dc->MoveTo(box.left, box.top);
    m_dc->LineTo(box.right, box.bottom);
    m_dc->MoveTo(box.left, box.bottom);
    m_dc->LineTo(box.right, box.top);
    m_dc->SelectObject(before);
}
