#include "vexge/geentity2d/vexgepolyline2d_offset_free.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The farthest corner of a strip, in distances from its vertex: the root of 2, rounded up.
constexpr double kStripReach = 1.42;
/// Distances below this are of the size of the tolerances.
constexpr double kLeastDist = 0.01;
/// Coordinates up to this leave rounding errors far below the tolerances.
constexpr double kMostCoordinate = 1e6;
/// Below this square of the sine between two segments their crossing is not sharp.
constexpr double kLeastSineSqrd = 1e-10;
/// Segments of a block, and steps over which segments are followed one by one.
constexpr std::size_t kMostInBlock = 16;
constexpr std::size_t kMostSteps = 2 * kMostInBlock;
// The square of the tolerance for "on a segment" at a corner, and what is surely within or beyond.
constexpr double kSurelyOn = 0.999 * kOffsetJoinTol * kOffsetJoinTol;
constexpr double kSurelyOff = 1.001 * kOffsetJoinTol * kOffsetJoinTol;

int quadrantOf(const CVexGeVector2d& way)
{
    return (way.x < 0.0 ? 1 : 0) + (way.y < 0.0 ? 2 : 0);
}

/// A segment of the source moved sideways.
struct Moved {
    CVexGePoint2d start;
    CVexGePoint2d end;
    CVexGeVector2d run;
};

/// As below where the two run on nearly straight and the formula loses digits: by the lines' own
/// tests, and only with a crossing that stays beside the end.
bool straightCornerOf(const Moved& prev, const Moved& cur, CVexGePoint2d& corner)
{
    const CVexGeLine2d prevLine(prev.start, prev.end);
    const CVexGeLine2d curLine(cur.start, cur.end);
    corner = prev.end;
    if (prevLine.isParallelTo(curLine, kGeEpsilon)) {
        return true;
    }
    return prevLine.intersectWith(curLine, corner, CVexGeEntity2d::kExtendBoth, kOffsetJoinTol) &&
           corner.isEqualTo(prev.end, kGeTol) && prevLine.isOn(corner, kOffsetJoinTol) != 0 &&
           curLine.isOn(corner, kOffsetJoinTol) != 0;
}

/// What the corner table for two lines answers with: their crossing, or the end of the first when
/// they are parallel. False where the answer is another one or not sure.
bool cornerOf(const Moved& prev, const Moved& cur, CVexGePoint2d& corner)
{
    // The formula is that of CVexGeLine2d::intersectWith, term by term: the result has its bits.
    const CVexGeVector2d p13 = prev.start - cur.start;
    const double turn = prev.run.x * cur.run.y - prev.run.y * cur.run.x;
    const double turnSqrd = turn * turn;
    if (!(turnSqrd > kLeastSineSqrd * prev.run.lengthSqrd() * cur.run.lengthSqrd() &&
          turnSqrd > 2.0 * kGeParallelDenominator)) {
        return straightCornerOf(prev, cur, corner);
    }
    const double param = (cur.run.x * p13.y - cur.run.y * p13.x) / turn;
    corner = prev.start + prev.run * param;
    // On the inner side the crossing lies on both, on the outer one beyond both or, so near that it
    // counts as on them, on both. Anything between is left to the tables.
    const CVexGeVector2d beyond = corner - prev.end;
    const CVexGeVector2d before = corner - cur.start;
    const bool isBeyond = beyond.dotProduct(prev.run) > 0.0;
    const bool isBefore = before.dotProduct(cur.run) < 0.0;
    const double beyondSqrd = beyond.lengthSqrd();
    const double beforeSqrd = before.lengthSqrd();
    return ((!isBeyond || beyondSqrd < kSurelyOn) && (!isBefore || beforeSqrd < kSurelyOn)) ||
           (isBeyond && isBefore && beyondSqrd > kSurelyOff && beforeSqrd > kSurelyOff);
}

} // namespace

VexGeFreeOffset::VexGeFreeOffset(const CVexGePolyline2d& source, double dist)
    : m_points(source.vertices()), m_bulges(source.bulges()), m_closed(source.isClosed()),
      m_dist(dist)
{
}

bool VexGeFreeOffset::isFree()
{
    return m_points.size() > 2 && m_dist >= kLeastDist && m_dist <= kMostCoordinate &&
           isStraight(m_bulges) && measureRuns() && turnsGently() && strayNowhere();
}

bool VexGeFreeOffset::measureRuns()
{
    const std::size_t count = m_closed ? m_points.size() : m_points.size() - 1;
    m_runs.resize(count);
    double least = m_dist;
    double most = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const CVexGePoint2d& start = m_points[i];
        const CVexGeVector2d way = m_points[i + 1 < m_points.size() ? i + 1 : 0] - start;
        m_runs[i] = {way, way.length()};
        least = std::min(least, m_runs[i].length);
        most = std::max(most, std::max(std::fabs(start.x), std::fabs(start.y)));
    }
    return least > 1.001 * kOffsetVertexTol && most + m_runs.back().length <= kMostCoordinate;
}

bool VexGeFreeOffset::turnsGently() const
{
    // Between its corners a segment has to be longer than what the strips of its neighbours reach
    // along it, so that strips which are two apart lie apart, and no offset segment turns round.
    // With t the tangent of half the turn: length * cos(turn) > dist * (kStripReach + t).
    bool gentle = true;
    const std::size_t corners = m_runs.size();
    for (std::size_t i = m_closed ? 0 : 1; i < corners; ++i) {
        const Run& prev = m_runs[i > 0 ? i - 1 : corners - 1];
        const Run& cur = m_runs[i];
        const double dot = prev.way.dotProduct(cur.way);
        const double cross = std::fabs(prev.way.x * cur.way.y - prev.way.y * cur.way.x);
        const double sum = prev.length * cur.length + dot; // t is cross / sum
        const double reach = m_dist * std::max(prev.length, cur.length);
        gentle &= dot > 0.0 && dot * sum > 1.001 * reach * (kStripReach * sum + cross);
    }
    return gentle;
}

VexGeBox VexGeFreeOffset::boxOf(std::size_t from, std::size_t to) const
{
    const CVexGePoint2d& last = m_points[wrapped(to)];
    VexGeBox box{last.x, last.y, last.x, last.y};
    for (std::size_t i = from; i < to; ++i) {
        box.include({m_points[i].x, m_points[i].y, m_points[i].x, m_points[i].y});
    }
    return box;
}

void VexGeFreeOffset::makeBlocks()
{
    m_blocks.reserve(m_runs.size() / 4 + 8);
    std::size_t quadrantRun = 0;
    int quadrant = quadrantOf(m_runs.front().way);
    Block block;
    for (std::size_t i = 1; i < m_runs.size(); ++i) {
        const int here = quadrantOf(m_runs[i].way);
        if (here != quadrant || i - block.from == kMostInBlock) {
            block.to = i;
            m_blocks.push_back(block);
            quadrantRun += here != quadrant ? 1 : 0;
            block = {i, i, quadrantRun};
            quadrant = here;
        }
    }
    block.to = m_runs.size();
    m_blocks.push_back(block);
}

bool VexGeFreeOffset::strayNowhere()
{
    makeBlocks();
    std::vector<VexGeBox> boxes;
    boxes.reserve(m_blocks.size());
    for (const Block& block : m_blocks) {
        boxes.push_back(boxOf(block.from, block.to).grownBy(1.001 * kStripReach * m_dist));
    }
    const std::vector<VexGeBox> reaches = boxes;
    const VexGeSegmentIndex index(std::move(boxes));
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        const bool meets = index.search(
            reaches[i], i, [&](std::size_t k) { return !blocksApart(m_blocks[i], m_blocks[k]); });
        if (meets) {
            return false;
        }
    }
    return true;
}

bool VexGeFreeOffset::blocksApart(const Block& a, const Block& b) const
{
    if (a.quadrantRun == b.quadrantRun) {
        return true; // all run ahead along any of them: the strips follow each other
    }
    const double reach = 2.002 * kStripReach * m_dist;
    const VexGeBox target = boxOf(b.from, b.to).grownBy(reach);
    for (std::size_t i = a.from; i < a.to; ++i) {
        const VexGeBox own = boxOf(i, i + 1);
        if (own.apartFrom(target)) {
            continue;
        }
        for (std::size_t k = b.from; k < b.to; ++k) {
            if (!own.apartFrom(boxOf(k, k + 1).grownBy(reach)) && !segmentsApart(i, k)) {
                return false;
            }
        }
    }
    return true;
}

bool VexGeFreeOffset::segmentsApart(std::size_t a, std::size_t b) const
{
    const std::size_t steps = b - a;
    return runsAhead(a, steps) || (m_closed && runsAhead(b, m_runs.size() - steps));
}

bool VexGeFreeOffset::runsAhead(std::size_t first, std::size_t steps) const
{
    if (steps > kMostSteps) {
        return false;
    }
    // Strips of segments none of which turns back on the first follow each other along it.
    const CVexGeVector2d& way = m_runs[first].way;
    for (std::size_t i = 1; i <= steps; ++i) {
        if (!(way.dotProduct(m_runs[wrapped(first + i)].way) >= 0.0)) {
            return false;
        }
    }
    return true;
}

std::vector<CVexGePoint2d> VexGeFreeOffset::rawChain(int side) const
{
    const auto moved = [&](std::size_t i) {
        const Run& run = m_runs[i];
        const CVexGeVector2d way = run.way.perpVector() * (m_dist * side / run.length);
        Moved result{m_points[i] + way, m_points[wrapped(i + 1)] + way, {}};
        result.run = result.end - result.start;
        return result;
    };
    std::vector<CVexGePoint2d> out;
    out.reserve(m_runs.size() + 1);
    const Moved first = moved(0);
    Moved prev = first;
    CVexGePoint2d corner = first.start;
    out.push_back(corner);
    for (std::size_t i = 1; i <= m_runs.size(); ++i) {
        if (i == m_runs.size() && !m_closed) {
            corner = prev.end;
        } else {
            const Moved cur = i < m_runs.size() ? moved(i) : first;
            if (!cornerOf(prev, cur, corner)) {
                return {};
            }
            prev = cur;
        }
        out.push_back(corner);
    }
    if (m_closed) {
        out.front() = corner;
    }
    return out;
}
