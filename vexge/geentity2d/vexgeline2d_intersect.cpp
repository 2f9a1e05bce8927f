#include "vexge/geentity2d/vexgeline2d.h"

#include <cmath>
#include <memory>

namespace {

bool isPoint(const CVexGeVector2d& run)
{
    return std::fabs(run.x) < kGeParallelDenominator && std::fabs(run.y) < kGeParallelDenominator;
}

} // namespace

bool CVexGeLine2d::contains(const CVexGeLine2d& other, double tol) const
{
    return isOn(other.m_start, tol) != 0 && isOn(other.m_end, tol) != 0;
}

bool CVexGeLine2d::intersectWith(const CVexGeLine2d& other, CVexGePoint2d& out, Intersect kind,
                                 double tol) const
{
    if (contains(other, kGeContainedTol) || other.contains(*this, kGeContainedTol)) {
        return false;
    }
    const CVexGeVector2d p21 = m_end - m_start;
    const CVexGeVector2d p43 = other.m_end - other.m_start;
    if (isPoint(p43) || isPoint(p21)) {
        return false;
    }
    // The cross product squared is the denominator of P. Bourke's shortest way between two lines,
    // d2121 d4343 - d4321^2, without the digits that the difference loses: parallel lines of any
    // length have none. The threshold is absolute, so two very short segments count as parallel at
    // any angle.
    const CVexGeVector2d p13 = m_start - other.m_start;
    const double turn = p21.x * p43.y - p21.y * p43.x;
    if (turn * turn <= kGeParallelDenominator) {
        return false;
    }
    const double param = (p43.x * p13.y - p43.y * p13.x) / turn;
    out = m_start + p21 * param;
    switch (kind) {
    case kExtendNone: return isOn(out, tol) != 0 && other.isOn(out, tol) != 0;
    case kExtendThis: return other.isOn(out, tol) != 0;
    case kExtendArg: return isOn(out, tol) != 0;
    case kExtendBoth: return true;
    }
    return false;
}

bool CVexGeLine2d::intersectWith(const CVexGeLine2d& other, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect kind, double tol) const
{
    CVexGePoint2d crossing;
    if (!intersectWith(other, crossing, kind, tol)) {
        return false;
    }
    count = 1;
    out.push_back(crossing);
    return true;
}

bool CVexGeLine2d::overlap(const CVexGeLine2d& line, CVexGeLine2d*& out, double tol) const
{
    if (!isColinearTo(line, tol)) {
        return false;
    }
    const auto give = [&out](const CVexGePoint2d& start, const CVexGePoint2d& end) {
        out = std::make_unique<CVexGeLine2d>(start, end).release();
        return true;
    };
    const bool startOnLine = line.isOn(m_start, tol) != 0;
    const bool endOnLine = line.isOn(m_end, tol) != 0;
    if (*this == line || CVexGeLine2d(m_end, m_start) == line) {
        return give(m_start, m_end);
    }
    if (contains(line, tol)) {
        return give(line.m_start, line.m_end);
    }
    if (startOnLine && endOnLine) {
        return give(m_start, m_end);
    }
    for (const CVexGePoint2d* shared : {&line.m_start, &line.m_end}) {
        if (isOn(*shared, tol) == 0) {
            continue;
        }
        if (startOnLine || endOnLine) {
            return give(startOnLine ? m_start : m_end, *shared);
        }
    }
    return false;
}
