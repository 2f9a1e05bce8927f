#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include "platform/base/vexfields.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbobject/vexdbproperty.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace {

constexpr int kPolylineStatus = kStatusEntity | kStatusCompoundObject;
/// The most vertices for which a constructor makes room beforehand; more may follow.
constexpr unsigned long kMostReserved = 1'000'000;

// Kinds of property rows: a count to be read, a coordinate and a value of the selected vertex.
constexpr int kCountRow = 2;
constexpr int kCoordinateRow = 3;
constexpr int kValueRow = 4;

/// The way from the middle of the chord of an arc segment to the middle of the arc.
CVexGeVector2d sagitta(const CVexGeVector2d& chord, double bulge)
{
    return chord.perpVector() * (-bulge / 2.0);
}

/// A box that grows.
struct Extents {
    CVexGePoint2d& min;
    CVexGePoint2d& max;

    /// Takes all in that is not farther than `reach` from `point`.
    void include(const CVexGePoint2d& point, double reach)
    {
        min.set(std::min(min.x, point.x - reach), std::min(min.y, point.y - reach));
        max.set(std::max(max.x, point.x + reach), std::max(max.y, point.y + reach));
    }
    /// Takes an arc segment in, its circle when it is more than half of one, and the slack by which
    /// it meets others beyond its ends. False when the circle is no number.
    bool includeArc(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge)
    {
        const CVexGeVector2d chord = end - start;
        const double bend = std::fabs(bulge);
        const double radius = chord.length() * (1.0 / bend + bend) / 4.0;
        if (!std::isfinite(radius)) {
            return false;
        }
        if (bend > 1.0) {
            const double aside = (1.0 / bulge - bulge) / 4.0;
            include(start + chord * 0.5 + chord.perpVector() * aside, radius * (1.0 + kGeAngleTol));
            return true;
        }
        const double slack = radius * kGeAngleTol;
        const CVexGeVector2d out = sagitta(chord, bulge);
        for (const CVexGePoint2d& corner : {start, end, start + out, end + out}) {
            include(corner, slack);
        }
        return true;
    }
};

void addRow(std::vector<Property>& rows, const wchar_t* name, const double& value, int kind)
{
    CString text;
    text.Format(L"%f", value);
    _makePropertyList(rows, name, text, reinterpret_cast<std::uintptr_t>(&value), kind);
}

} // namespace

CVexDbPolyline::CVexDbPolyline(unsigned long reserve, CVexDbDatabase* database)
    : CVexDbCurveOf(database, VexDb::kPolyline, kPolylineStatus)
{
    m_geometry.setSize(static_cast<unsigned>(std::min(reserve, kMostReserved)));
}

CVexDbPolyline::CVexDbPolyline(const CVexDbPolyline& other) = default;

CVexDbPolyline::CVexDbPolyline(const CVexDbLine& line, bool) : CVexDbPolyline(2, line.database())
{
    CopyEntProperties(line);
    m_geometry.appendVertex(line.StartPoint());
    m_geometry.appendVertex(line.EndPoint());
    changed();
}

CVexDbPolyline::CVexDbPolyline(const CVexDbArc& arc, bool) : CVexDbPolyline(0, arc.database())
{
    CopyEntProperties(arc);
    m_geometry = arc.geArc();
    changed();
}

CVexDbPolyline::CVexDbPolyline(const CVexDbCircle& circle, bool)
    : CVexDbPolyline(0, circle.database())
{
    CopyEntProperties(circle);
    m_geometry = circle.geCircle();
    changed();
}

CVexDbPolyline::CVexDbPolyline(const CVexDbCircle& circle, int segments, bool)
    : CVexDbPolyline(0, circle.database())
{
    CopyEntProperties(circle);
    const int count = std::max(segments, 2);
    const double sweep = 2.0 * std::numbers::pi / count;
    const double bulge = std::tan(sweep / 4.0);
    for (int i = 0; i < count; ++i) {
        m_geometry.appendVertex(circle.Center() + CVexGeVector2d(sweep * i) * circle.Radius(),
                                bulge);
    }
    m_geometry.setClosed(true);
    m_geometry.setBulgeAt(m_geometry.numVerts() - 1, bulge); // closing computes one of its own
    changed();
}

CVexDbPolyline::~CVexDbPolyline() = default;

CVexDbPolyline& CVexDbPolyline::operator=(const CVexDbPolyline& other)
{
    CVexDbCurveOf::operator=(other);
    m_fill = other.m_fill;
    m_fillMode = other.m_fillMode;
    return *this;
}

CVexDbPolyline& CVexDbPolyline::operator=(const CVexDbEntity& other)
{
    if (other.classType() == classType()) {
        *this = static_cast<const CVexDbPolyline&>(other);
    }
    CopyEntProperties(other);
    return *this;
}

bool CVexDbPolyline::save()
{
    return saveRecord([this](CFile& out) {
        m_geometry.save(&out);
        CVexFieldWriter{out}(m_fill, m_fillMode);
    });
}

bool CVexDbPolyline::read()
{
    return readRecord([this](CFile& in) {
        m_geometry.read(&in);
        CVexFieldReader{in}(m_fill, m_fillMode);
    });
}

void CVexDbPolyline::changed()
{
    markGripsStale();
    clearVertexCache();
}

void CVexDbPolyline::setGripPoints()
{
    PointList& grips = beginGrips();
    const PointList& vertices = m_geometry.vertices();
    grips.reserve(vertices.size());
    for (unsigned i = 0; i < m_geometry.numVerts(); ++i) {
        grips.push_back(vertices[i]);
        if (m_geometry.segType(i) == CVexGePolyline2d::kArc) {
            const CVexGeVector2d chord = vertices[(i + 1) % vertices.size()] - vertices[i];
            grips.push_back(vertices[i] + chord * 0.5 + sagitta(chord, m_geometry.getBulgeAt(i)));
        }
    }
    storeEntityRect();
}

CVexDbRect CVexDbPolyline::GetOutRect()
{
    // The box of the vertices: arcs may swell out of it, here as in the kernel. What has to find
    // every stroke asks trueExtents.
    return m_geometry.getOutRect();
}

// What GetOutRect tells, without a rectangle entity for it.
CRect CVexDbPolyline::computeEntityRect()
{
    CVexGePoint2d min;
    CVexGePoint2d max;
    m_geometry.getMinMaxpoint(min, max);
    return {toLogical(min), toLogical(max)};
}

bool CVexDbPolyline::trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    const PointList& vertices = m_geometry.vertices();
    if (!extentsOf(vertices, min, max)) {
        return false;
    }
    Extents extents{min, max};
    const std::size_t segments = IsClosed() ? vertices.size() : vertices.size() - 1;
    for (std::size_t i = 0; i < segments; ++i) {
        const double bulge = m_geometry.bulges()[i];
        const bool isArc = std::fabs(bulge) > kGeStraightBulge;
        if (isArc && !extents.includeArc(vertices[i], vertices[(i + 1) % vertices.size()], bulge)) {
            return false;
        }
    }
    return true;
}

void CVexDbPolyline::makeProperty()
{
    CVexDbCurve::makeProperty();
    properties()[L"Shape"] = vertexProperties(0);
}

std::vector<Property> CVexDbPolyline::vertexProperties(unsigned vertex) const
{
    std::vector<Property> rows;
    CString count;
    count.Format(L"%d", static_cast<int>(NumVerts()));
    _makePropertyList(rows, L"Point Count", count, 0, kCountRow);
    if (vertex < NumVerts()) {
        const CVexGePoint2d& point = m_geometry.vertices()[vertex];
        addRow(rows, L"Bulge", m_geometry.bulges()[vertex], kValueRow);
        addRow(rows, L"Point X", point.x, kCoordinateRow);
        addRow(rows, L"Point Y", point.y, kCoordinateRow);
        addRow(rows, L"Start Width", m_geometry.startWidths()[vertex], kValueRow);
        addRow(rows, L"End Width", m_geometry.endWidths()[vertex], kValueRow);
    }
    return rows;
}

bool CVexDbPolyline::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return std::ranges::any_of(
               m_geometry.vertices(),
               [&](const CVexGePoint2d& vertex) { return IsInsideRect(a, b, vertex); }) ||
           isCrossedByRect(a, b);
}

bool CVexDbPolyline::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return std::ranges::all_of(m_geometry.vertices(), [&](const CVexGePoint2d& vertex) {
        return IsInsideRect(a, b, vertex);
    });
}

int CVexDbPolyline::Offset(const CVexGePoint2d& side, std::list<CVexDbPolyline*>& out,
                           double distance, bool bothSides) const
{
    CVexGePolyline2d::PolylineList chains;
    m_geometry.offset(side, distance, chains, bothSides);
    for (const auto& chain : chains) {
        auto offset = std::make_unique<CVexDbPolyline>(0, database());
        offset->CopyEntProperties(*this);
        offset->SetGeometry(*chain);
        out.push_back(offset.release());
    }
    return static_cast<int>(out.size());
}

void CVexDbPolyline::SetFill(bool fill)
{
    m_fill = fill && Closed();
}

bool CVexDbPolyline::IsFill() const
{
    return m_fill && Closed();
}
