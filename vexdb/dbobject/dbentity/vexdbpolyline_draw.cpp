#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cmath>

namespace {

/// Strokes the segments of one chain, in order.
class SegmentPen {
public:
    SegmentPen(CDC& dc, CPoint start, bool fills) : m_dc(dc), m_fills(fills)
    {
        m_dc.MoveTo(start);
        keepCorner(start);
    }
    /// The corners of the area that a fill covers: the start and the ends of straight segments.
    [[nodiscard]] const std::vector<CPoint>& corners() const { return m_corners; }

    void segment(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge)
    {
        if (std::fabs(bulge) > kGeStraightBulge) {
            arc(start, end, bulge);
        } else {
            m_dc.LineTo(toLogical(end));
            keepCorner(toLogical(end));
        }
    }
    /// Goes where the pen is behind a segment that is stroked.
    void pass(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge)
    {
        if (!(std::fabs(bulge) > kGeStraightBulge)) {
            m_dc.MoveTo(toLogical(end));
            return;
        }
        // Where its last stroke ended, which rounding may have set beside the vertex.
        CVexGeCircArc2d(start, end, bulge, true)
            .getGrVertexArray(m_vertices, _wArcRes, _dDispScale);
        m_dc.MoveTo(bulge < 0.0 ? m_vertices.front() : m_vertices.back());
    }
    void close(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge)
    {
        m_fills = false; // the corner that it ends at is the first one
        segment(start, end, bulge);
    }

private:
    void keepCorner(CPoint corner)
    {
        if (m_fills) {
            m_corners.push_back(corner);
        }
    }
    void arc(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge)
    {
        const CVexGeCircArc2d arc(start, end, bulge, true);
        arc.getGrVertexArray(m_vertices, _wArcRes, _dDispScale);
        m_dc.MoveTo(m_vertices.front());
        if (isXor()) { // single strokes would take back the pixel where each meets the last
            m_dc.Polyline(m_vertices);
            m_dc.MoveTo(m_vertices.back());
        } else {
            for (std::size_t i = 1; i < m_vertices.size(); ++i) {
                m_dc.LineTo(m_vertices[i]);
            }
        }
        if (bulge < 0.0) { // its arc runs against the travel: on to the end of the segment
            m_dc.MoveTo(m_vertices.front());
        }
    }

    [[nodiscard]] bool isXor() const
    {
        const int operation = m_dc.GetROP2();
        return operation == R2_XORPEN || operation == R2_NOTXORPEN;
    }

    CDC& m_dc;
    bool m_fills;
    std::vector<CPoint> m_corners;
    std::vector<CPoint> m_vertices; // of the arc at hand, kept so that each needs no memory
};

} // namespace

void CVexDbPolyline::Draw(CDC* dc)
{
    const CVexDbPenFrame frame(*this, dc);
    if (!frame || NumVerts() == 0) {
        return;
    }
    const PointList& vertices = m_geometry.vertices();
    const std::vector<double>& bulges = m_geometry.bulges();
    // A reader expects a wide stroke. Widths are not this class's to draw: the segment that ends at
    // a vertex with a start width is left out, and the pen stays where it was, so that the next
    // straight segment begins there. Drawings with widths have looked so since ever.
    const auto isStroked = [&](std::size_t vertex) {
        return !(m_geometry.startWidths()[vertex] > 0.0);
    };
    SegmentPen pen(*dc, toLogical(vertices.front()), IsFill());
    for (std::size_t i = 1; i < vertices.size(); ++i) {
        if (isStroked(i)) {
            pen.segment(vertices[i - 1], vertices[i], bulges[i - 1]);
        }
    }
    if (IsClosed() && isStroked(0)) {
        pen.close(vertices.back(), vertices.front(), bulges.back());
    }
    FillArea(dc, pen.corners());
}

bool CVexDbPolyline::DrawSegments(CDC* dc, unsigned first, unsigned last)
{
    const PointList& vertices = m_geometry.vertices();
    const std::vector<double>& bulges = m_geometry.bulges();
    const unsigned count = NumVerts();
    const unsigned segments = IsClosed() || count == 0 ? count : count - 1;
    const unsigned end = last < segments ? last + 1 : segments;
    bool isAlone = !IsFill();
    for (unsigned i = first; i <= end && count > 0; ++i) {
        isAlone = isAlone && !(m_geometry.startWidths()[i % count] > 0.0);
    }
    const CVexDbPenFrame frame(*this, isAlone ? dc : nullptr);
    if (!frame || first >= end) {
        return isAlone;
    }
    SegmentPen pen(*dc, toLogical(vertices[first]), false);
    if (first > 0) {
        pen.pass(vertices[first - 1], vertices[first], bulges[first - 1]);
    }
    for (unsigned i = first; i < end; ++i) {
        pen.segment(vertices[i], vertices[(i + 1) % count], bulges[i]);
    }
    return true;
}

void CVexDbPolyline::FillArea(CDC* dc, std::span<const CPoint> points) const
{
    if (!IsFill()) {
        return;
    }
    const COLORREF color = dc->GetCurrentPen()->color();
    const CVexDbBrushFrame brush(
        *dc, m_fillMode == 0 ? CBrush(color) : CBrush(static_cast<HatchStyle>(m_fillMode), color));
    const int before = dc->SetPolyFillMode(WINDING);
    dc->Polygon(points);
    dc->SetPolyFillMode(before);
}
