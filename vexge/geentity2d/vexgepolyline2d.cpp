#include "vexge/geentity2d/vexgepolyline2d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace {

/// A vertex in a file: point, bulge, start width, end width.
constexpr std::uint64_t kVertexBytes = 20 + 3 * 8;

} // namespace

CVexGePolyline2d::CVexGePolyline2d(const std::vector<CVexGePoint2d>& points) : CVexGePolyline2d()
{
    set(points);
}

CVexGePolyline2d& CVexGePolyline2d::operator=(const CVexGePolyline2d& other)
{
    m_vertices = other.m_vertices;
    m_bulges = other.m_bulges;
    m_endWidths = other.m_endWidths;
    m_startWidths = other.m_startWidths;
    m_closedFlag = other.m_closedFlag;
    return *this;
}

CVexGePolyline2d& CVexGePolyline2d::operator=(CVexGePolyline2d&& other) noexcept
{
    m_vertices = std::move(other.m_vertices);
    m_bulges = std::move(other.m_bulges);
    m_endWidths = std::move(other.m_endWidths);
    m_startWidths = std::move(other.m_startWidths);
    m_closedFlag = other.m_closedFlag;
    return *this;
}

CVexGePolyline2d& CVexGePolyline2d::operator=(const CVexGeCircArc2d& arc)
{
    arc.asPolyline(*this, 0);
    return *this;
}

void CVexGePolyline2d::save(CFile* file) const
{
    CVexFieldWriter fields{*file};
    fields(static_cast<std::uint32_t>(numVerts()), m_closedFlag);
    for (std::size_t i = 0; i < m_vertices.size(); ++i) {
        fields(m_vertices[i], m_bulges[i], m_startWidths[i], m_endWidths[i]);
    }
}

void CVexGePolyline2d::read(CFile* file)
{
    CVexFieldReader fields{*file};
    std::uint32_t count = 0;
    fields(count, m_closedFlag);
    if (count > file->remaining() / kVertexBytes) {
        file->fail(); // before anything is allocated for it
        count = 0;
    }
    setSize(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        CVexGePoint2d point;
        double bulge = 0.0;
        double startWidth = CVexGePolyline2d::kNoWidth;
        double endWidth = CVexGePolyline2d::kNoWidth;
        fields(point, bulge, startWidth, endWidth);
        appendVertex(point, bulge, startWidth, endWidth);
    }
}

void CVexGePolyline2d::setSize(unsigned n)
{
    m_vertices.clear();
    m_vertices.reserve(n);
    for (auto* values : {&m_bulges, &m_startWidths, &m_endWidths}) {
        values->clear();
        values->reserve(n);
    }
}

void CVexGePolyline2d::set(const std::vector<CVexGePoint2d>& points)
{
    set(points, std::vector<double>(points.size(), 0.0));
}

void CVexGePolyline2d::set(const std::vector<CVexGePoint2d>& points,
                           const std::vector<double>& bulges)
{
    m_vertices = points;
    m_bulges = bulges;
    m_bulges.resize(points.size(), 0.0);
    m_startWidths.assign(points.size(), kNoWidth);
    m_endWidths.assign(points.size(), kNoWidth);
}

bool CVexGePolyline2d::appendVertex(const CVexGePoint2d& point, double bulge, double startWidth,
                                    double endWidth)
{
    m_vertices.push_back(point);
    m_bulges.push_back(bulge);
    m_startWidths.push_back(startWidth);
    m_endWidths.push_back(endWidth);
    return true;
}

bool CVexGePolyline2d::addVertexAt(unsigned index, const CVexGePoint2d& point, double bulge,
                                   double startWidth, double endWidth)
{
    if (index > numVerts()) {
        return false;
    }
    m_vertices.insert(m_vertices.begin() + index, point);
    m_bulges.insert(m_bulges.begin() + index, bulge);
    m_startWidths.insert(m_startWidths.begin() + index, startWidth);
    m_endWidths.insert(m_endWidths.begin() + index, endWidth);
    return true;
}

bool CVexGePolyline2d::removeVertexAt(int first, int last)
{
    const int count = static_cast<int>(m_vertices.size());
    const int final = last == 0 ? first : last;
    if (first < 0 || final < first || first >= count) {
        return false;
    }
    const int stop = std::min(final, count - 1) + 1;
    const auto erase = [first, stop](auto& values) {
        values.erase(values.begin() + first, values.begin() + stop);
    };
    erase(m_vertices);
    erase(m_bulges);
    erase(m_startWidths);
    erase(m_endWidths);
    return true;
}

bool CVexGePolyline2d::setPointAt(unsigned index, const CVexGePoint2d& point)
{
    if (index >= numVerts()) {
        return false;
    }
    m_vertices[index] = point;
    return true;
}

bool CVexGePolyline2d::setBulgeAt(unsigned index, double bulge)
{
    if (index >= numVerts()) {
        return false;
    }
    m_bulges[index] = bulge;
    return true;
}

bool CVexGePolyline2d::setWidthsAt(unsigned index, double startWidth, double endWidth)
{
    if (index >= numVerts()) {
        return false;
    }
    m_startWidths[index] = startWidth;
    m_endWidths[index] = endWidth;
    return true;
}

bool CVexGePolyline2d::getPointAt(unsigned index, CVexGePoint2d& out) const
{
    if (index >= numVerts()) {
        return false;
    }
    out = m_vertices[index];
    return true;
}

bool CVexGePolyline2d::getBulgeAt(unsigned index, double& out) const
{
    if (index >= numVerts()) {
        return false;
    }
    out = m_bulges[index];
    return true;
}

bool CVexGePolyline2d::getWidthsAt(unsigned index, double& startWidth, double& endWidth) const
{
    if (index >= numVerts()) {
        return false;
    }
    startWidth = m_startWidths[index];
    endWidth = m_endWidths[index];
    return true;
}

bool CVexGePolyline2d::isEqualTo(const CVexGeEntity2d& other, const double& tol) const
{
    return other.isKindOf(VexGe::kGePolyline2d) &&
           isEqualTo(static_cast<const CVexGePolyline2d&>(other), tol);
}

bool CVexGePolyline2d::isEqualTo(const CVexGePolyline2d& other, const double& tol) const
{
    if (m_closedFlag != other.m_closedFlag || numVerts() != other.numVerts()) {
        return false;
    }
    const auto near = [tol](double a, double b) { return std::fabs(a - b) <= tol; };
    for (std::size_t i = 0; i < m_vertices.size(); ++i) {
        if (!near(m_vertices[i].x, other.m_vertices[i].x) ||
            !near(m_vertices[i].y, other.m_vertices[i].y) ||
            !near(m_bulges[i], other.m_bulges[i]) || !near(m_endWidths[i], other.m_endWidths[i]) ||
            !near(m_startWidths[i], other.m_startWidths[i])) {
            return false;
        }
    }
    return true;
}

bool CVexGePolyline2d::operator==(const CVexGePolyline2d& other) const
{
    if (m_closedFlag != other.m_closedFlag || numVerts() != other.numVerts()) {
        return false;
    }
    for (std::size_t i = 0; i < m_vertices.size(); ++i) {
        if (m_vertices[i] != other.m_vertices[i]) {
            return false;
        }
    }
    return m_bulges == other.m_bulges && m_endWidths == other.m_endWidths &&
           m_startWidths == other.m_startWidths;
}

CVexGePolyline2d& CVexGePolyline2d::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    // Bulges stay as they are, also when the factors differ: a chain of arcs remains one, and its
    // ends remain where the matrix puts them.
    return transformBy(CVexGeMatrix2d::scaling(fx, fy, centre));
}

CVexGePolyline2d& CVexGePolyline2d::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(factor, centre));
}

CVexGePolyline2d& CVexGePolyline2d::mirror(const CVexGeLine2d& line)
{
    for (double& bulge : m_bulges) {
        bulge = -bulge;
    }
    return transformBy(CVexGeMatrix2d::mirroring(line));
}

CVexGePolyline2d& CVexGePolyline2d::rotateBy(double angle, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::rotation(angle, centre));
}

CVexGePolyline2d& CVexGePolyline2d::translateBy(const CVexGeVector2d& vector)
{
    for (CVexGePoint2d& vertex : m_vertices) {
        vertex.translateBy(vector);
    }
    return *this;
}

CVexGePolyline2d& CVexGePolyline2d::transformBy(const CVexGeMatrix2d& matrix)
{
    for (CVexGePoint2d& vertex : m_vertices) {
        vertex.transformBy(matrix);
    }
    return *this;
}
