#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgecspline2d_curve.h"

#include <algorithm>
#include <cstddef>

// The curve of a cubic spline: solving its runs, the chain, and the control points' places on it.

namespace {

using PointList = CVexGeCSpline2d::PointList;

/// Expands the solved spans of a run into points. The divisions of all runs together are held
/// within bounds, so that a wild coordinate makes a coarse curve and not an endless one.
class SpanExpander {
public:
    SpanExpander(double divFactor, PointList& curve, std::vector<std::size_t>& places)
        : m_span(divFactor), m_curve(curve), m_places(places)
    {
    }

    /// Counts the divisions that the span between two points will want.
    void expect(const CVexGePoint2d& from, const CVexGePoint2d& to)
    {
        m_wanted += m_span.stepsFor(to - from);
    }
    void expand(const CVexGeCSplineSystem& system, const PointList& run)
    {
        for (std::size_t i = 0; i < system.chords.size(); ++i) {
            m_span.set(system.chords[i], system.mat[i], system.tangents[i],
                       stepsFor(system.chords[i]));
            m_span.generate(run[i], m_curve, !m_curve.empty());
            m_places.push_back(m_curve.size() - 1);
        }
    }
    /// A run of fewer than three points, whose spans stay straight.
    void copy(const PointList& run)
    {
        m_curve.insert(m_curve.end(), run.begin() + (m_curve.empty() ? 0 : 1), run.end());
        m_places.push_back(m_curve.size() - 1);
    }

private:
    [[nodiscard]] int stepsFor(const CVexGeVector2d& chord) const
    {
        const int steps = m_span.stepsFor(chord);
        if (m_wanted <= CSplineCurve::kMostSteps) {
            return steps;
        }
        return std::max(1, static_cast<int>(steps * (CSplineCurve::kMostSteps / m_wanted)));
    }

    CSplineCurve m_span;
    PointList& m_curve;
    std::vector<std::size_t>& m_places; // of the spans' ends
    double m_wanted = 0.0;
};

} // namespace

void CVexGeCSpline2d::generate() const
{
    if (m_closedFlag) {
        genClosed();
    } else {
        generate(m_ctrlPoints);
    }
}

void CVexGeCSpline2d::generate(const PointList& points) const
{
    m_system.generate(points);
}

void CVexGeCSpline2d::genClosed() const
{
    m_system.genClosed(m_ctrlPoints);
}

bool CVexGeCSpline2d::genCurve() const
{
    if (m_ctrlPoints.size() < 2) {
        return false;
    }
    if (!m_generated.valid) {
        makeCurve();
        m_generated.chain = CVexGePolyline2d(m_generated.curve);
        m_generated.valid = true;
    }
    return true;
}

void CVexGeCSpline2d::makeCurve() const
{
    PointList& curve = m_generated.curve;
    curve.clear();
    m_generated.places.assign(1, 0);
    SpanExpander expander(m_divFactor, curve, m_generated.places);
    const std::size_t count = m_ctrlPoints.size();
    const std::size_t last = m_closedFlag ? count : count - 1;
    for (std::size_t i = 0; i < last; ++i) {
        expander.expect(m_ctrlPoints[i], m_ctrlPoints[(i + 1) % count]);
    }
    if (!hasCtrlOption()) {
        generate();
        expander.expand(m_system, m_ctrlPoints);
        return;
    }
    // A closed curve with a corner anywhere also breaks at its first point, corner or not: the
    // runs begin there. Closed splines in drawings show that kink, and keep it.
    PointList run{m_ctrlPoints.front()};
    for (std::size_t i = 1; i <= last; ++i) {
        run.push_back(m_ctrlPoints[i % count]);
        if (i < last && !isCorner(static_cast<unsigned>(i))) {
            continue;
        }
        if (run.size() < 3) {
            expander.copy(run);
        } else {
            generate(run);
            expander.expand(m_system, run);
        }
        run.assign(1, m_ctrlPoints[i % count]);
    }
}

const CVexGePolyline2d& CVexGeCSpline2d::chain() const
{
    static const CVexGePolyline2d kNone;
    return genCurve() ? m_generated.chain : kNone;
}

int CVexGeCSpline2d::getCurve(PointList*& out) const
{
    if (!genCurve()) {
        return 0;
    }
    out = &m_generated.curve;
    return static_cast<int>(m_generated.curve.size());
}

bool CVexGeCSpline2d::getGePolyline(CVexGePolyline2d& out) const
{
    if (!genCurve()) {
        return false;
    }
    out = m_generated.chain;
    return true;
}

bool CVexGeCSpline2d::getSubGePolyline(CVexGePolyline2d& out, int from, int to) const
{
    if (!genCurve() || m_generated.curve.size() < 2) {
        return false;
    }
    const PointList& curve = m_generated.curve;
    const int stop = std::min(to, static_cast<int>(curve.size()) - 1) + 1;
    const int start = std::max(from, 0);
    out = start < stop ? CVexGePolyline2d(PointList(curve.begin() + start, curve.begin() + stop))
                       : CVexGePolyline2d();
    return true;
}

double CVexGeCSpline2d::length() const
{
    return genCurve() ? m_generated.chain.length() : -1.0;
}

double CVexGeCSpline2d::curvatureAtParam(double /*param*/) const
{
    return 0.0;
}

double CVexGeCSpline2d::curvatureAtPoint(CVexGePoint2d /*point*/, double /*tol*/) const
{
    return 0.0;
}

template <class Wanted>
void CVexGeCSpline2d::pushIndices(std::vector<unsigned long>& out, double tol,
                                  const Wanted& wanted) const
{
    const PointList& curve = m_generated.curve;
    std::size_t next = 0;
    for (unsigned i = 0; i < numCtrlVerts(); ++i) {
        if (!wanted(i)) {
            continue;
        }
        const std::size_t place = m_generated.places[i]; // the match is there at the latest
        while (next < place && !curve[next].isEqualTo(m_ctrlPoints[i], tol)) {
            ++next;
        }
        if (next <= place && curve[next].isEqualTo(m_ctrlPoints[i], tol)) {
            out.push_back(static_cast<unsigned long>(next));
            ++next;
        }
    }
}

bool CVexGeCSpline2d::getControlPtIndex(std::vector<unsigned long>& out) const
{
    out.clear();
    if (!genCurve()) {
        return false;
    }
    pushIndices(out, kGeTol, [](unsigned) { return true; });
    return true;
}

bool CVexGeCSpline2d::getRealControlPtIndex(std::vector<unsigned long>& out) const
{
    out.clear();
    if (!genCurve()) {
        return false;
    }
    pushIndices(out, m_divFactor / 2.0,
                [this](unsigned i) { return (m_ctrlOptions[i] & kReal) != 0; });
    return true;
}

bool CVexGeCSpline2d::getVertexControlPtIndex(std::vector<unsigned long>& out) const
{
    out.clear();
    if (!genCurve()) {
        return false;
    }
    // The ends of the curve stand in the list whatever their options, so a corner there is passed
    // over: it would come twice.
    const unsigned end = m_closedFlag ? numCtrlVerts() : numCtrlVerts() - 1;
    const auto last = static_cast<unsigned long>(m_generated.curve.size() - 1);
    pushIndices(out, m_divFactor / 2.0,
                [&](unsigned i) { return i > 0 && i < end && isCorner(i); });
    out.erase(std::remove_if(out.begin(), out.end(),
                             [last](unsigned long at) { return at == 0 || at == last; }),
              out.end());
    out.insert(out.begin(), 0UL);
    out.push_back(last);
    return true;
}
