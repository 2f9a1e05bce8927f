#include "vexge/geentity3d/vexgepolyline3d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity3d/vexgeplane.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

CVexGePolyline3d::CVexGePolyline3d(const std::vector<CVexGePoint3d>& points)
    : CVexGeEntity3d(VexGe::kGePolyline3d), m_vertices(points)
{
}

CVexGePolyline3d& CVexGePolyline3d::operator=(const CVexGePolyline3d& other)
{
    m_vertices = other.m_vertices;
    m_closedFlag = other.m_closedFlag;
    return *this;
}

void CVexGePolyline3d::save(CFile* file) const
{
    CVexFieldWriter write{*file};
    write(static_cast<std::uint32_t>(m_vertices.size()), m_closedFlag);
    for (const CVexGePoint3d& vertex : m_vertices) {
        write(vertex);
    }
}

void CVexGePolyline3d::read(CFile* file)
{
    CVexFieldReader reader{*file};
    std::uint32_t count = 0;
    reader(count, m_closedFlag);
    constexpr std::uint64_t kVertexBytes = 24;
    const std::uint64_t held = std::min<std::uint64_t>(count, file->remaining() / kVertexBytes);
    if (held < count) {
        file->fail();
        count = 0;
    }
    setSize(count);
    for (std::uint32_t i = 0; i < count; ++i) {
        CVexGePoint3d vertex;
        reader(vertex);
        m_vertices.push_back(vertex);
    }
}

void CVexGePolyline3d::setSize(unsigned n)
{
    m_vertices.clear();
    m_vertices.reserve(n);
}

bool CVexGePolyline3d::appendVertex(const CVexGePoint3d& point)
{
    m_vertices.push_back(point);
    return true;
}

bool CVexGePolyline3d::addVertexAt(unsigned index, const CVexGePoint3d& point)
{
    if (index > numVerts()) {
        return false;
    }
    m_vertices.insert(m_vertices.begin() + index, point);
    return true;
}

bool CVexGePolyline3d::removeVertexAt(int first, int last)
{
    const int size = static_cast<int>(m_vertices.size());
    const int until = last == 0 ? first : last;
    if (first < 0 || until < first || first >= size) {
        return false;
    }
    m_vertices.erase(m_vertices.begin() + first, m_vertices.begin() + std::min(until + 1, size));
    return true;
}

void CVexGePolyline3d::reverse()
{
    std::reverse(m_vertices.begin(), m_vertices.end());
}

bool CVexGePolyline3d::changeStart(int index)
{
    const int size = static_cast<int>(m_vertices.size());
    if (index < 0 || index >= size) {
        return false;
    }
    if (index == size - 1) {
        reverse();
        return true;
    }
    if (!closed()) {
        return false;
    }
    if (!m_closedFlag) {
        m_vertices.pop_back(); // the chain merely returns to its start
    }
    std::rotate(m_vertices.begin(), m_vertices.begin() + index, m_vertices.end());
    if (!m_closedFlag) {
        m_vertices.push_back(m_vertices.front());
    }
    return true;
}

bool CVexGePolyline3d::appendPolyline(const CVexGePolyline3d* other, int& index)
{
    if (m_closedFlag || other->m_closedFlag || m_vertices.empty() || other->m_vertices.empty()) {
        return false;
    }
    std::vector<CVexGePoint3d> added = other->m_vertices;
    const CVexGePoint3d first = m_vertices.front();
    const CVexGePoint3d last = m_vertices.back();
    const bool atEnd =
        last.isEqualTo(added.front(), kGeTol) || last.isEqualTo(added.back(), kGeTol);
    const CVexGePoint3d& joint = atEnd ? last : first;
    if (!joint.isEqualTo(added.front(), kGeTol)) {
        if (!joint.isEqualTo(added.back(), kGeTol)) {
            return false;
        }
        std::reverse(added.begin(), added.end());
    }
    index = atEnd ? static_cast<int>(added.size()) - 1 : 0;
    if (atEnd) {
        m_vertices.insert(m_vertices.end(), added.begin() + 1, added.end());
    } else {
        m_vertices.insert(m_vertices.begin(), added.rbegin(), added.rend() - 1);
    }
    return true;
}

bool CVexGePolyline3d::appendPolyline(const CVexGeLine3d* line, int& index)
{
    const bool flag = m_closedFlag;
    m_closedFlag = false;
    const CVexGePolyline3d chain({line->start(), line->end()});
    int joint = 0;
    const bool joined = appendPolyline(&chain, joint);
    m_closedFlag = flag;
    if (joined) {
        index = joint == 0 ? 0 : static_cast<int>(m_vertices.size()) - 1;
    }
    return joined;
}

bool CVexGePolyline3d::getPointAt(unsigned index, CVexGePoint3d& out) const
{
    if (index >= numVerts()) {
        return false;
    }
    out = m_vertices[index];
    return true;
}

bool CVexGePolyline3d::closed(double tol) const
{
    return m_closedFlag ||
           (!m_vertices.empty() && m_vertices.front().distanceTo(m_vertices.back()) < tol);
}

bool CVexGePolyline3d::isEqualTo(const CVexGeEntity3d& other, double tol) const
{
    return other.isKindOf(VexGe::kGePolyline3d) &&
           isEqualTo(static_cast<const CVexGePolyline3d&>(other), tol);
}

bool CVexGePolyline3d::isEqualTo(const CVexGePolyline3d& other, double tol) const
{
    const auto near = [tol](const CVexGePoint3d& a, const CVexGePoint3d& b) {
        return std::fabs(a.x - b.x) <= tol && std::fabs(a.y - b.y) <= tol &&
               std::fabs(a.z - b.z) <= tol;
    };
    return m_closedFlag == other.m_closedFlag &&
           std::equal(m_vertices.begin(), m_vertices.end(), other.m_vertices.begin(),
                      other.m_vertices.end(), near);
}

bool CVexGePolyline3d::operator==(const CVexGePolyline3d& other) const
{
    return m_closedFlag == other.m_closedFlag &&
           std::equal(m_vertices.begin(), m_vertices.end(), other.m_vertices.begin(),
                      other.m_vertices.end(),
                      [](const CVexGePoint3d& a, const CVexGePoint3d& b) { return !(a != b); });
}

CVexGePolyline3d& CVexGePolyline3d::translateBy(const CVexGeVector3d& vector)
{
    for (CVexGePoint3d& vertex : m_vertices) {
        vertex.translateBy(vector);
    }
    return *this;
}

CVexGePolyline3d& CVexGePolyline3d::scaleBy(double factor, const CVexGePoint3d& centre)
{
    return scaleBy(factor, factor, factor, centre);
}

CVexGePolyline3d& CVexGePolyline3d::scaleBy(double fx, double fy, double fz,
                                            const CVexGePoint3d& centre)
{
    const CVexGePoint3d fixed(centre.x, centre.y, centre.z); // may be one of the vertices
    for (CVexGePoint3d& vertex : m_vertices) {
        vertex.scaleBy(fx, fy, fz, fixed);
    }
    return *this;
}

CVexGePolyline3d& CVexGePolyline3d::rotateBy(double angle, const CVexGeLine3d& axis)
{
    for (CVexGePoint3d& vertex : m_vertices) {
        vertex.rotateBy(angle, axis.end() - axis.start(), axis.start());
    }
    return *this;
}

CVexGePolyline3d& CVexGePolyline3d::mirror(const CVexGePlane& plane)
{
    for (CVexGePoint3d& vertex : m_vertices) {
        vertex.mirror(plane);
    }
    return *this;
}
