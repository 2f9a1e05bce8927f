#include "vexge/geentity2d/vexgecspline2d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

constexpr double kDefaultDivFactor = 0.5;

} // namespace

CVexGeCSpline2d::CVexGeCSpline2d(double divFactor)
    : CVexGeChainCurve2d(VexGe::kGeCSpline2d), m_divFactor(divFactor)
{
}

CVexGeCSpline2d::CVexGeCSpline2d(const PointList& points) : CVexGeCSpline2d(kDefaultDivFactor)
{
    set(points);
}

CVexGeCSpline2d& CVexGeCSpline2d::operator=(const CVexGeCSpline2d& other)
{
    m_divFactor = other.m_divFactor;
    m_closedFlag = other.m_closedFlag;
    m_ctrlPoints = other.m_ctrlPoints;
    m_ctrlOptions = other.m_ctrlOptions;
    m_system = other.m_system;
    m_generated = other.m_generated;
    return *this;
}

void CVexGeCSpline2d::set(const PointList& points)
{
    set(points, OptionList());
}

void CVexGeCSpline2d::set(const PointList& points, const OptionList& options)
{
    m_ctrlPoints = points;
    m_ctrlOptions = options;
    m_ctrlOptions.resize(m_ctrlPoints.size(), 0);
    changed();
}

bool CVexGeCSpline2d::appendCtrlPt(const PointList* points, const OptionList* options)
{
    const std::size_t appended = points->size();
    for (std::size_t i = 0; i < appended; ++i) {
        appendCtrlPt((*points)[i], options != nullptr && i < options->size()
                                       ? (*options)[i]
                                       : static_cast<unsigned char>(0));
    }
    return true;
}

bool CVexGeCSpline2d::appendCtrlPt(const CVexGePoint2d& point, unsigned char option)
{
    return addCtrlPt(numCtrlVerts(), point, option);
}

bool CVexGeCSpline2d::addCtrlPt(unsigned index, const CVexGePoint2d& point, unsigned char option)
{
    if (index > numCtrlVerts()) {
        return false;
    }
    m_ctrlPoints.insert(m_ctrlPoints.begin() + index, point);
    m_ctrlOptions.insert(m_ctrlOptions.begin() + index, option);
    changed();
    return true;
}

bool CVexGeCSpline2d::setPointAt(unsigned index, const CVexGePoint2d& point, unsigned char option)
{
    if (index >= numCtrlVerts()) {
        return false;
    }
    m_ctrlPoints[index] = point;
    m_ctrlOptions[index] = option;
    changed();
    return true;
}

bool CVexGeCSpline2d::removeCtrlPtAt(unsigned index)
{
    if (index >= numCtrlVerts()) {
        return false;
    }
    m_ctrlPoints.erase(m_ctrlPoints.begin() + index);
    m_ctrlOptions.erase(m_ctrlOptions.begin() + index);
    changed();
    return true;
}

bool CVexGeCSpline2d::getCtrlPtAt(unsigned index, CVexGePoint2d& point, unsigned char& option) const
{
    if (!getCtrlPtAt(index, point)) {
        return false;
    }
    option = m_ctrlOptions[index];
    return true;
}

bool CVexGeCSpline2d::getCtrlPtAt(unsigned index, CVexGePoint2d& point) const
{
    if (index >= numCtrlVerts()) {
        return false;
    }
    point = m_ctrlPoints[index];
    return true;
}

unsigned char CVexGeCSpline2d::getCtrlOption(unsigned index) const
{
    return index < numCtrlVerts() ? m_ctrlOptions[index] : static_cast<unsigned char>(0);
}

bool CVexGeCSpline2d::setControlOption(unsigned index, unsigned char option)
{
    if (index >= numCtrlVerts()) {
        return false;
    }
    m_ctrlOptions[index] = option;
    changed();
    return true;
}

void CVexGeCSpline2d::reverse()
{
    std::reverse(m_ctrlPoints.begin(), m_ctrlPoints.end());
    std::reverse(m_ctrlOptions.begin(), m_ctrlOptions.end());
    changed();
}

bool CVexGeCSpline2d::closed() const
{
    return m_closedFlag || (!m_ctrlPoints.empty() && m_ctrlPoints.front().distanceTo(
                                                         m_ctrlPoints.back()) < kGeSplineClosedTol);
}

void CVexGeCSpline2d::setClosed(bool flag)
{
    m_closedFlag = flag;
    if (flag && m_ctrlPoints.size() > 1 &&
        m_ctrlPoints.front().isEqualTo(m_ctrlPoints.back(), kGeTol)) {
        m_ctrlPoints.pop_back();
        m_ctrlOptions.pop_back();
    }
    changed();
}

bool CVexGeCSpline2d::isCorner(unsigned index) const
{
    return (m_ctrlOptions[index] & kCorner) != 0;
}

bool CVexGeCSpline2d::hasCtrlOption() const
{
    return std::any_of(m_ctrlOptions.begin(), m_ctrlOptions.end(),
                       [](unsigned char option) { return (option & kCorner) != 0; });
}

int CVexGeCSpline2d::numRealCtrlVerts() const
{
    return static_cast<int>(
        std::count_if(m_ctrlOptions.begin(), m_ctrlOptions.end(),
                      [](unsigned char option) { return (option & kReal) != 0; }));
}

void CVexGeCSpline2d::clearRealControl()
{
    for (unsigned i = 1; i + 1 < numCtrlVerts(); ++i) {
        if (!isCorner(i)) {
            m_ctrlOptions[i] = 0;
        }
    }
    changed();
}

void CVexGeCSpline2d::asPolyline(CVexGePolyline2d& out) const
{
    out = CVexGePolyline2d(m_ctrlPoints);
    out.setClosed(m_closedFlag);
}

bool CVexGeCSpline2d::isEqualTo(const CVexGeEntity2d& other, const double& tol) const
{
    if (!other.isKindOf(VexGe::kGeCSpline2d)) {
        return false;
    }
    const auto& spline = static_cast<const CVexGeCSpline2d&>(other);
    return std::equal(m_ctrlPoints.begin(), m_ctrlPoints.end(), spline.m_ctrlPoints.begin(),
                      spline.m_ctrlPoints.end(),
                      [tol](const CVexGePoint2d& a, const CVexGePoint2d& b) {
                          return a.isEqualTo(b, tol);
                      }) &&
           m_ctrlOptions == spline.m_ctrlOptions;
}

CVexGeCSpline2d& CVexGeCSpline2d::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(fx, fy, centre));
}

CVexGeCSpline2d& CVexGeCSpline2d::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(factor, centre));
}

CVexGeCSpline2d& CVexGeCSpline2d::mirror(const CVexGeLine2d& line)
{
    return transformBy(CVexGeMatrix2d::mirroring(line));
}

CVexGeCSpline2d& CVexGeCSpline2d::rotateBy(double angle, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::rotation(angle, centre));
}

CVexGeCSpline2d& CVexGeCSpline2d::translateBy(const CVexGeVector2d& vector)
{
    for (CVexGePoint2d& point : m_ctrlPoints) {
        point.translateBy(vector);
    }
    changed();
    return *this;
}

CVexGeCSpline2d& CVexGeCSpline2d::transformBy(const CVexGeMatrix2d& matrix)
{
    for (CVexGePoint2d& point : m_ctrlPoints) {
        point.transformBy(matrix);
    }
    changed();
    return *this;
}

void CVexGeCSpline2d::save(CFile* file) const
{
    CVexFieldWriter fields{*file};
    fields(m_closedFlag, static_cast<std::uint32_t>(numCtrlVerts()));
    for (const CVexGePoint2d& point : m_ctrlPoints) {
        fields(point);
    }
    for (const unsigned char option : m_ctrlOptions) {
        fields(option);
    }
}

void CVexGeCSpline2d::read(CFile* file)
{
    constexpr std::uint64_t kPointBytes = 20 + 1;
    CVexFieldReader fields{*file};
    std::uint32_t count = 0;
    fields(m_closedFlag, count);
    if (count > file->remaining() / kPointBytes) {
        file->fail(); // before anything is allocated for it
        count = 0;
    }
    m_ctrlPoints.assign(count, CVexGePoint2d());
    m_ctrlOptions.assign(count, 0);
    for (CVexGePoint2d& point : m_ctrlPoints) {
        fields(point);
    }
    for (unsigned char& option : m_ctrlOptions) {
        fields(option);
    }
    changed();
}
