#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <vector>

/// The points of one span of a cubic spline, from its chord and the tangents at its ends.
class VEXGE_EXPORT CSplineCurve {
public:
    /// The most divisions of a span, however long its chord.
    static constexpr int kMostSteps = 2'000'000;

    /// `divFactor` is the length of chord that a division covers; 0.5 when it is not above 0.
    explicit CSplineCurve(double divFactor);
    virtual ~CSplineCurve() = default;

    /// How many divisions a span along `chord` has when it sets none: whole units of its longer
    /// side over the division factor, so 0 for a span within one unit.
    [[nodiscard]] int stepsFor(const CVexGeVector2d& chord) const;
    /// Sets chord, start and end tangent; 0 `steps` for stepsFor.
    void set(const CVexGeVector2d& chord, const CVexGeVector2d& startTangent,
             const CVexGeVector2d& endTangent, int steps = 0);
    /// Appends the span's points to `out`, from `start`, which is left out for `skipStart`. One
    /// division when there are none.
    void generate(const CVexGePoint2d& start, std::vector<CVexGePoint2d>& out, bool skipStart);

private:
    double m_divFactor;
    int m_steps = 0;
    CVexGeVector2d m_a;
    CVexGeVector2d m_b;
    CVexGeVector2d m_c;
};
