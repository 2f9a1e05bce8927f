#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/gemath/vextruncate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
/// The most turns of an arc that are displayed, however far a damaged file puts its angles apart.
constexpr double kMostTurns = 100.0;

/// The angles of an arc's display vertices are a running sum, as the vertices of drawings on disk
/// were made: a whole turn in 100 steps ends a rounding error below the end and gets one vertex
/// more, the same as the last. Only who needs an angle to the last bit goes through the sum.
class RunningAngle {
public:
    RunningAngle(double first, double step) : m_step(step), m_angle(first) {}
    /// The angle of the vertex `index`, which never falls from call to call.
    double at(int index)
    {
        for (; m_index < index; ++m_index) {
            m_angle += m_step;
        }
        return m_angle;
    }

private:
    double m_step;
    double m_angle;
    int m_index = 0;
};

/// What is left of the arc behind the angle of its vertices, told by one division where that is far
/// enough from a whole number of steps.
int verticesBefore(double end, double first, double step)
{
    const double turn = std::min(end - first, kMostTurns * kGeTwoPi);
    if (!(step > 0.0 && turn > 0.0)) {
        return 0;
    }
    const double steps = turn / step;
    const double farthest = std::max(std::fabs(first), std::fabs(end)) + step;
    const double doubt = (steps + 2.0) * kEpsilon * farthest / step;
    const int whole = truncateSaturated(steps);
    if (steps - whole > doubt && steps - whole < 1.0 - doubt) {
        return whole + 1;
    }
    RunningAngle angle(first, step);
    int count = 0;
    while (count < whole + 2 && angle.at(count) < end) { // a wild angle does not grow by a step
        ++count;
    }
    return count;
}

/// Cosines and sines of the multiples of a display step.
struct StepTable {
    static constexpr int kStretches = 5;
    static constexpr int kLongestStretch = 32;

    int segments = 0;
    /// A quarter of a turn, where the table has room for it: an arc that starts on an axis comes
    /// to the next axis there, which is where a coordinate is next to an integer.
    int stretch = 1;
    static constexpr std::size_t kMost = std::size_t{kStretches} * kLongestStretch;
    std::array<double, kMost> cosine = {};
    std::array<double, kMost> sine = {};

    constexpr StepTable() = default;
    explicit StepTable(int segmentsOfTurn)
        : segments(segmentsOfTurn), stretch(std::clamp(segmentsOfTurn / 4, 1, kLongestStretch))
    {
        for (std::size_t i = 0; i < static_cast<std::size_t>(size()); ++i) {
            const double angle = static_cast<double>(i) * (kGeTwoPi / segments);
            cosine[i] = std::cos(angle);
            sine[i] = std::sin(angle);
        }
    }
    [[nodiscard]] int size() const { return kStretches * stretch; }
};

/// The table for a resolution; a program draws all its arcs with one.
const StepTable& stepTable(int segments)
{
    thread_local constinit StepTable table;
    if (table.segments != segments) {
        table = StepTable(segments);
    }
    return table;
}

/// Makes display vertices. A vertex is what the sine and cosine of its own angle tell: exact().
/// Those of a table are turned on from the first of them at a tenth of the cost, and only where
/// that leaves an integer in doubt is a vertex computed by itself.
class DisplayWalk {
public:
    DisplayWalk(const CVexGePoint2d& centre, double radius, double scale, const StepTable& table,
                double farthest)
        : m_centre(centre), m_radius(radius), m_scale(scale), m_table(table)
    {
        // The running angle is off by half an epsilon of itself for each step; the products and
        // sums of both ways, at their largest values, by fewer than 16 halves.
        constexpr double kTooVague = 0.25;
        constexpr double kFarthest = std::numeric_limits<int>::max() - 1.0;
        const double reach = std::fabs(radius * scale);
        const double across = std::max(std::fabs(centre.x * scale), std::fabs(centre.y * scale));
        m_doubt = kEpsilon * (table.size() * farthest * reach + 8.0 * (reach + across));
        m_mayTurn = reach + across < kFarthest && m_doubt < kTooVague;
        m_maySaturate = !(reach + across < kTruncateLimit);
    }

    [[nodiscard]] CPoint exact(double angle) const
    {
        return {truncateSaturated((m_centre.x + m_radius * std::cos(angle)) * m_scale),
                truncateSaturated((m_centre.y + m_radius * std::sin(angle)) * m_scale)};
    }

    /// Fills `out` with the vertices from `first` on, `count` of them, at most a table.
    void fill(RunningAngle& angle, int first, int count, CPoint* out)
    {
        constexpr int kFewest = 5; // fewer cost less one by one
        m_turning = m_mayTurn && count >= kFewest;
        m_firstX = m_turning ? m_radius * m_scale * std::cos(angle.at(first)) : 0.0;
        m_firstY = m_turning ? m_radius * m_scale * std::sin(angle.at(first)) : 0.0;
        if (turn(0, 1, out) && turn(0, count, out)) {
            return;
        }
        for (int row = 0; row < count; row += m_table.stretch) {
            out[row] = exact(angle.at(first + row)); // on an axis, as a rule
            const int end = std::min(row + m_table.stretch, count);
            const bool sure = turn(row + 1, end - row - 1, out + row + 1);
            for (int i = row + 1; !sure && i < end; ++i) {
                if (!turn(i, 1, out + i)) {
                    out[i] = exact(angle.at(first + i));
                }
            }
        }
    }

private:
    /// Turns the first direction on to `count` vertices from the table's row `row`. False when one
    /// of them comes too near to an integer to tell on which side of it the vertex lies.
    bool turn(int row, int count, CPoint* out) const
    {
        if (!m_turning) {
            return false;
        }
        const double* const cosine = m_table.cosine.data() + row;
        const double* const sine = m_table.sine.data() + row;
        const double lowX = m_centre.x * m_scale - m_doubt;
        const double lowY = m_centre.y * m_scale - m_doubt;
        const double highX = m_centre.x * m_scale + m_doubt;
        const double highY = m_centre.y * m_scale + m_doubt;
        int differing = 0;
        for (int i = 0; i < count; ++i) {
            const double x = m_firstX * cosine[i] - m_firstY * sine[i];
            const double y = m_firstY * cosine[i] + m_firstX * sine[i];
            out[i] = {static_cast<int>(lowX + x), static_cast<int>(lowY + y)};
            differing |=
                (out[i].x ^ static_cast<int>(highX + x)) | (out[i].y ^ static_cast<int>(highY + y));
        }
        for (int i = 0; m_maySaturate && i < count; ++i) {
            out[i] = {std::clamp(out[i].x, -kTruncateLimit, kTruncateLimit),
                      std::clamp(out[i].y, -kTruncateLimit, kTruncateLimit)};
        }
        return differing == 0;
    }

    CVexGePoint2d m_centre;
    double m_radius;
    double m_scale;
    const StepTable& m_table;
    double m_doubt; // logical units
    bool m_mayTurn;
    bool m_maySaturate;
    bool m_turning = false;
    double m_firstX = 0.0; // the direction of the table's row 0, logical units
    double m_firstY = 0.0;
};

} // namespace

void CVexGeCircArc2d::getGrVertexArray(std::vector<CPoint>& out, int segments, double scale) const
{
    const double end = notNegativeAngle(m_endAng);
    double start = notNegativeAngle(m_startAng);
    if (end < start) {
        start -= kGeTwoPi;
    }
    const double step = kGeTwoPi / segments;
    const int count = verticesBefore(end, start, step);
    const StepTable& table = stepTable(segments);
    DisplayWalk walk(m_center, m_radius, scale, table, std::max(std::fabs(start), std::fabs(end)));
    RunningAngle angle(start, step);
    out.resize(static_cast<std::size_t>(count) + 1);
    for (int made = 0; made < count; made += table.size()) {
        walk.fill(angle, made, std::min(table.size(), count - made), out.data() + made);
    }
    out.back() = walk.exact(end);
}
