#include "vexge/geentity2d/vexgecspline2d_curve.h"

#include "vexge/gemath/vextruncate.h"

#include <algorithm>
#include <cstdlib>

CSplineCurve::CSplineCurve(double divFactor) : m_divFactor(divFactor > 0.0 ? divFactor : 0.5)
{
}

int CSplineCurve::stepsFor(const CVexGeVector2d& chord) const
{
    const int units =
        std::max(std::abs(truncateSaturated(chord.x)), std::abs(truncateSaturated(chord.y)));
    return std::min(truncateSaturated(units / m_divFactor), kMostSteps);
}

void CSplineCurve::set(const CVexGeVector2d& chord, const CVexGeVector2d& startTangent,
                       const CVexGeVector2d& endTangent, int steps)
{
    m_a = chord;
    m_b = startTangent;
    m_c = endTangent;
    m_steps = steps == 0 ? stepsFor(chord) : steps;
}

void CSplineCurve::generate(const CVexGePoint2d& start, std::vector<CVexGePoint2d>& out,
                            bool skipStart)
{
    if (m_steps == 0) {
        m_steps = 1;
    }
    const CVexGePoint2d from(start.x, start.y); // may stand in `out`
    if (!skipStart) {
        out.push_back(from);
    }
    for (int i = 1; i <= m_steps; ++i) {
        const double t = static_cast<double>(i) / m_steps;
        const double along = t * t * (3.0 - 2.0 * t);
        const double leaving = t * (t - 1.0) * (t - 1.0);
        const double arriving = t * t * (t - 1.0);
        out.push_back(from + m_a * along + m_b * leaving + m_c * arriving);
    }
}
