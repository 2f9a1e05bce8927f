// The operations on vertices: the geometry's own, and the grips anew.

#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <utility>

void CVexDbPolyline::SetGeometry(const CVexGePolyline2d& geometry)
{
    m_geometry = geometry;
    changed();
}

void CVexDbPolyline::SetVertexes(const std::vector<CVexGePoint2d>& points, bool closed)
{
    CVexGePolyline2d chain(points);
    chain.setClosed(closed);
    m_geometry = std::move(chain);
    changed();
}

bool CVexDbPolyline::AppendVertex(const CVexGePoint2d& point, double bulge, double startWidth,
                                  double endWidth)
{
    const bool done = m_geometry.appendVertex(point, bulge, startWidth, endWidth);
    changed();
    return done;
}

bool CVexDbPolyline::AddVertexAt(unsigned index, const CVexGePoint2d& point, double bulge,
                                 double startWidth, double endWidth)
{
    const bool done = m_geometry.addVertexAt(index, point, bulge, startWidth, endWidth);
    changed();
    return done;
}

bool CVexDbPolyline::RemoveVertexAt(int index)
{
    return RemoveVertexAt(index, 0);
}

bool CVexDbPolyline::RemoveVertexAt(int first, int last)
{
    const bool done = m_geometry.removeVertexAt(first, last);
    changed();
    return done;
}

bool CVexDbPolyline::SetBulgeAt(unsigned index, double bulge)
{
    const bool done = m_geometry.setBulgeAt(index, bulge);
    changed();
    return done;
}

bool CVexDbPolyline::SetPointAt(unsigned index, const CVexGePoint2d& point)
{
    const bool done = m_geometry.setPointAt(index, point);
    changed();
    return done;
}

bool CVexDbPolyline::SetWidthsAt(unsigned index, double startWidth, double endWidth)
{
    const bool done = m_geometry.setWidthsAt(index, startWidth, endWidth);
    changed();
    return done;
}

void CVexDbPolyline::SetClosed(bool closed)
{
    m_geometry.setClosed(closed);
    changed();
}

bool CVexDbPolyline::ChangeStart(int index)
{
    const bool done = m_geometry.changeStart(index);
    changed();
    return done;
}

void CVexDbPolyline::Reverse()
{
    m_geometry.reverse();
    changed();
}

bool CVexDbPolyline::AppendPolyline(const CVexDbPolyline* other, int& index)
{
    if (other == nullptr || other == this) {
        return false;
    }
    const bool done = m_geometry.appendPolyline(&other->m_geometry, index);
    changed();
    return done;
}

bool CVexDbPolyline::AppendPolyline(const CVexDbLine* line, int& index)
{
    const bool done = line != nullptr && m_geometry.appendPolyline(&line->geLine(), index);
    changed();
    return done;
}

bool CVexDbPolyline::AppendPolyline(const CVexDbArc* arc, int& index)
{
    const bool done = arc != nullptr && m_geometry.appendPolyline(&arc->geArc(), index);
    changed();
    return done;
}

double CVexDbPolyline::SegParamAtParam(double param, int& segment) const
{
    return m_geometry.segParamAtParam(param, segment);
}

double CVexDbPolyline::ParamAtSegParam(int segment, double param) const
{
    return m_geometry.paramAtSegParam(segment, param);
}

bool CVexDbPolyline::GetArcSegAt(unsigned index, CVexGeCircArc2d& out) const
{
    return m_geometry.getArcSegAt(index, out);
}

bool CVexDbPolyline::GetLineSegAt(unsigned index, CVexGeLine2d& out) const
{
    return m_geometry.getLineSegAt(index, out);
}

double CVexDbPolyline::GetBulgeAt(unsigned index) const
{
    double bulge = 0.0;
    m_geometry.getBulgeAt(index, bulge);
    return bulge;
}

bool CVexDbPolyline::GetBulgeAt(unsigned index, double& out) const
{
    return m_geometry.getBulgeAt(index, out);
}

bool CVexDbPolyline::GetPointAt(unsigned index, CVexGePoint2d& out) const
{
    return m_geometry.getPointAt(index, out);
}

bool CVexDbPolyline::GetWidthsAt(unsigned index, double& startWidth, double& endWidth) const
{
    return m_geometry.getWidthsAt(index, startWidth, endWidth);
}

bool CVexDbPolyline::HasBulge() const
{
    return m_geometry.hasBulges();
}

bool CVexDbPolyline::HasWidth() const
{
    return m_geometry.hasWidth();
}

bool CVexDbPolyline::IsOnlyLines() const
{
    return m_geometry.isOnlyLines();
}

bool CVexDbPolyline::OnSegAt(unsigned index, const CVexGePoint2d& point, double& param,
                             double tol) const
{
    return m_geometry.onSegAt(index, point, param, tol);
}

int CVexDbPolyline::SegType(unsigned index) const
{
    return m_geometry.segType(index);
}

int CVexDbPolyline::IsVertex(const CVexGePoint2d& point, double tol) const
{
    return m_geometry.isVertex(point, tol);
}
