#include "tests/vexge/offsetwalk.h"

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

namespace {

using Chain = CVexGePolyline2d;
using Point = CVexGePoint2d;
using Points = std::vector<Point>;

constexpr double kClip = 0.002;
constexpr double kVertex = 0.05;
constexpr int kMostSteps = 20000;

/// Calls `visit` with the line or arc of a segment; false for a segment of another kind.
template <class Visit>
bool withSegment(const Chain& chain, std::size_t i, const Visit& visit)
{
    CVexGeLine2d line;
    CVexGeCircArc2d arc;
    if (chain.getLineSegAt(static_cast<unsigned>(i), line)) {
        visit(line);
        return true;
    }
    if (chain.getArcSegAt(static_cast<unsigned>(i), arc)) {
        visit(arc);
        return true;
    }
    return false;
}

Points hitsOf(const CVexGeLine2d& segment, const CVexGeLine2d& line)
{
    Point at;
    return segment.intersectWith(line, at, CVexGeEntity2d::kExtendNone) ? Points{at} : Points{};
}

Points pairOfHits(const CVexGeCircArc2d& arc, const auto& curve)
{
    int count = 0;
    Point at[2];
    arc.intersectWith(curve, count, at[0], at[1], CVexGeEntity2d::kExtendNone);
    return {at, at + count};
}

Points hitsOf(const CVexGeLine2d& segment, const CVexGeCircArc2d& arc)
{
    return pairOfHits(arc, segment);
}

Points hitsOf(const CVexGeCircArc2d& segment, const auto& curve)
{
    return pairOfHits(segment, curve);
}

double sweepOf(const CVexGeCircArc2d& arc)
{
    const double run = arc.endAng() - arc.startAng();
    return run < 0.0 ? run + 2.0 * std::numbers::pi : run;
}

double travelAngle(const CVexGeCircArc2d& arc, double bulge, const Point& point)
{
    constexpr double kTurn = 2.0 * std::numbers::pi;
    const double sweep = sweepOf(arc);
    const double angle = arc.center().angleTo(point);
    double run = bulge < 0.0 ? arc.endAng() - angle : angle - arc.startAng();
    run = run < 0.0 ? run + kTurn : run;
    return run <= sweep ? run : run - sweep > kTurn - run ? 0.0 : sweep;
}

double alongSegment(const CVexGeLine2d& line, double /*bulge*/, const Point& point)
{
    return line.startPoint().distanceTo(point);
}

double alongSegment(const CVexGeCircArc2d& arc, double bulge, const Point& point)
{
    return arc.radius() * travelAngle(arc, bulge, point);
}

const Point& heldWithin(const CVexGeLine2d& /*line*/, const Point& point)
{
    return point;
}

Point heldWithin(const CVexGeCircArc2d& arc, const Point& point)
{
    constexpr double kTurn = 2.0 * std::numbers::pi;
    const double sweep = sweepOf(arc);
    double run = arc.center().angleTo(point) - arc.startAng();
    run = run < 0.0 ? run + kTurn : run;
    if (run <= sweep) {
        return point;
    }
    return run - sweep > kTurn - run ? arc.startPoint() : arc.endPoint();
}

/// Arcs forgive 0.001 radians beyond their ends; what lies there is not on the chain.
bool isBetweenEnds(const auto& segment, const Point& point)
{
    return heldWithin(segment, point).isEqualTo(point, 0.001);
}

/// The hits of a curve with all segments of `chain`, which are the receivers.
Points hitsWith(const Chain& chain, const auto& curve)
{
    Points all;
    for (std::size_t k = 0; k < chain.numVerts(); ++k) {
        withSegment(chain, k, [&](const auto& receiver) {
            for (const Point& hit : hitsOf(receiver, curve)) {
                if (isBetweenEnds(receiver, hit) && isBetweenEnds(curve, hit)) {
                    all.push_back(hit);
                }
            }
        });
    }
    return all;
}

std::vector<double> runsOf(const Chain& chain, double& total)
{
    std::vector<double> runs;
    total = 0.0;
    for (std::size_t i = 0; i < chain.numVerts(); ++i) {
        runs.push_back(total);
        withSegment(chain, i, [&](const auto& segment) { total += segment.length(); });
    }
    return runs;
}

/// The hits of `chain` with `other` by parameter.
Chain::ParamMap hitsByParam(const Chain& chain, const Chain& other)
{
    Chain::ParamMap result;
    double total = 0.0;
    const std::vector<double> runs = runsOf(chain, total);
    for (std::size_t i = 0; i < chain.numVerts(); ++i) {
        withSegment(chain, i, [&](const auto& segment) {
            Points hits = hitsWith(other, segment);
            chain.CheckSameIntPoints(hits);
            for (const Point& hit : hits) {
                const double bulge = chain.getBulgeAt(static_cast<unsigned>(i));
                const double run = runs[i] + alongSegment(segment, bulge, hit);
                const double param = std::clamp(run / total, 0.0, 1.0);
                result.emplace(std::trunc(param * 1e8) / 1e8, hit);
            }
        });
    }
    return result;
}

/// The bulges before and after a cut of a segment.
std::pair<double, double> splitBulge(const Point& start, const Point& end, double bulge,
                                     const Point& cut)
{
    if (std::fabs(bulge) <= 0.001) {
        return {};
    }
    const CVexGeCircArc2d arc(start, end, bulge, true);
    const double run = travelAngle(arc, bulge, cut);
    const auto bulgeOf = [bulge](double angle) {
        return angle <= 0.001 ? 0.0 : std::copysign(std::tan(angle / 4.0), bulge);
    };
    return {bulgeOf(run), bulgeOf(sweepOf(arc) - run)};
}

struct Hit {
    double run = 0.0;
    std::size_t segment = 0;
    Point point;
};

/// A piece that loses its head step by step; lengths run from where it began.
struct Piece {
    Chain chain;
    std::vector<double> runs;
    std::size_t first = 0;

    explicit Piece(Chain whole) : chain(std::move(whole))
    {
        double total = 0.0;
        runs = runsOf(chain, total);
    }
    [[nodiscard]] const Point& vertex(std::size_t i) const { return chain.vertices()[i]; }
    [[nodiscard]] double bulge(std::size_t i) const { return chain.bulges()[i]; }
    [[nodiscard]] std::size_t left() const { return chain.numVerts() - first; }
    [[nodiscard]] double param(double run) const
    {
        return (run - runs[first]) / (runs.back() - runs[first]);
    }
    [[nodiscard]] Hit at(std::size_t i, const Point& point) const
    {
        double run = runs[i];
        withSegment(chain, i,
                    [&](const auto& segment) { run += alongSegment(segment, bulge(i), point); });
        return {run, i, point};
    }
    [[nodiscard]] std::optional<std::pair<Hit, Hit>> span(const CVexGeCircArc2d& circle) const
    {
        std::optional<std::pair<Hit, Hit>> found;
        for (std::size_t i = first; i < chain.numVerts(); ++i) {
            withSegment(chain, i, [&](const auto& segment) {
                for (const Point& point : hitsOf(segment, circle)) {
                    if (!isBetweenEnds(segment, point)) {
                        continue;
                    }
                    const Hit hit = at(i, point);
                    if (!found) {
                        found.emplace(hit, hit);
                    } else if (hit.run < found->first.run) {
                        found->first = hit;
                    } else if (hit.run > found->second.run) {
                        found->second = hit;
                    }
                }
            });
        }
        return found;
    }
    [[nodiscard]] Chain head(const Hit& hit) const
    {
        Chain result;
        for (std::size_t i = first; i < hit.segment; ++i) {
            result.appendVertex(vertex(i), bulge(i));
        }
        const std::size_t i = hit.segment;
        result.appendVertex(vertex(i),
                            splitBulge(vertex(i), vertex(i + 1), bulge(i), hit.point).first);
        result.appendVertex(hit.point);
        return result;
    }
    bool removeHead(const Hit& hit)
    {
        if (!(hit.run > runs[first])) {
            return false;
        }
        const auto i = static_cast<unsigned>(hit.segment);
        chain.setBulgeAt(i, splitBulge(vertex(i), vertex(i + 1), bulge(i), hit.point).second);
        chain.setPointAt(i, hit.point);
        runs[i] = hit.run;
        first = i;
        return true;
    }
    [[nodiscard]] Chain rest() const
    {
        Chain result = chain;
        if (first > 0) {
            result.removeVertexAt(0, static_cast<int>(first) - 1);
        }
        return result;
    }
};

Point closestOfPair(const CVexGeLine2d& own, const auto& source, Point& onSource)
{
    return own.closestPointTo(source, onSource);
}

Point closestOfPair(const CVexGeCircArc2d& own, const CVexGeLine2d& source, Point& onSource)
{
    Point onOwn;
    onSource = source.closestPointTo(own, onOwn);
    return onOwn;
}

Point closestOfPair(const CVexGeCircArc2d& own, const CVexGeCircArc2d& source, Point& onSource)
{
    return own.closestPointTo(source, onSource);
}

/// With the ends of arcs in place of points beyond them.
Point heldToEnds(const auto& own, const auto& source, const Point& onOwn, Point& onSource)
{
    if (isBetweenEnds(own, onOwn) && isBetweenEnds(source, onSource)) {
        return onOwn;
    }
    const Point ownEnd = heldWithin(own, onOwn);
    const Point besideOwn = heldWithin(source, source.closestPointTo(ownEnd));
    const Point sourceEnd = heldWithin(source, onSource);
    const Point besideSource = heldWithin(own, own.closestPointTo(sourceEnd));
    const bool atSource = besideSource.distanceTo(sourceEnd) < ownEnd.distanceTo(besideOwn);
    onSource = atSource ? sourceEnd : besideOwn;
    return atSource ? besideSource : ownEnd;
}

bool tooShort(const CVexGeLine2d& line)
{
    return line.length() < kClip;
}

bool tooShort(const CVexGeCircArc2d& /*arc*/)
{
    return false;
}

/// The clipping of one raw chain.
class Clipper {
public:
    Clipper(const Chain& source, double dist) : m_source(source), m_dist(dist) {}

    void clip(const Chain& chain, const Chain& other, Chain::PolylineList& out)
    {
        Chain::ParamMap cuts = hitsByParam(chain, other);
        for (const auto& [param, hit] : hitsByParam(chain, chain)) {
            if (chain.isVertex(hit, kVertex) < 0) {
                cuts.emplace(param, hit);
            }
        }
        if (cuts.empty()) {
            m_candidates.push_back(chain);
        } else {
            sortPieces(cutAt(chain, cuts));
            trimAtContacts();
        }
        trimNear(out);
    }

private:
    static std::vector<Chain> cutAt(const Chain& chain, const Chain::ParamMap& cuts)
    {
        double total = 0.0;
        std::vector<double> params = runsOf(chain, total);
        for (double& param : params) {
            param /= total;
        }
        params.back() = 1.0;
        std::vector<Chain> pieces(1);
        unsigned next = 0;
        for (const auto& [param, cut] : cuts) {
            for (; next < chain.numVerts() && params[next] < param; ++next) {
                pieces.back().appendVertex(chain.vertices()[next], chain.getBulgeAt(next));
            }
            Chain& piece = pieces.back();
            std::pair<double, double> parts;
            if (piece.numVerts() > 0) {
                const unsigned last = piece.numVerts() - 1;
                if (next < chain.numVerts()) {
                    parts = splitBulge(piece.vertices()[last], chain.vertices()[next],
                                       piece.getBulgeAt(last), cut);
                }
                piece.setBulgeAt(last, parts.first);
            }
            piece.appendVertex(cut);
            pieces.emplace_back();
            pieces.back().appendVertex(cut, parts.second);
        }
        for (; next < chain.numVerts(); ++next) {
            pieces.back().appendVertex(chain.vertices()[next], chain.getBulgeAt(next));
        }
        return pieces;
    }

    void sortPieces(const std::vector<Chain>& pieces)
    {
        for (const Chain& piece : pieces) {
            if (piece.numVerts() < 2) {
                continue;
            }
            const auto onSource = [&](const Point& vertex) { return m_source.isOn(vertex) != 0; };
            if (!contact(piece, 0)) {
                m_candidates.push_back(piece);
            } else if (std::all_of(piece.vertices().begin(), piece.vertices().end(), onSource)) {
                m_touching.push_back(piece);
            }
        }
    }

    [[nodiscard]] std::optional<Point> contact(const Chain& chain, std::size_t first) const
    {
        Points hits;
        for (std::size_t i = first; i < chain.numVerts() && hits.empty(); ++i) {
            withSegment(chain, i, [&](const auto& segment) { hits = hitsWith(m_source, segment); });
        }
        return hits.empty() ? std::nullopt : std::optional(hits.front());
    }

    void trimAtContacts()
    {
        for (; !m_touching.empty(); m_touching.pop_front()) {
            Piece piece(m_touching.front());
            bool kept = true;
            while (kept && piece.left() > 1) {
                const auto point = contact(piece.chain, piece.first);
                if (!point) {
                    m_candidates.push_back(piece.rest());
                    break;
                }
                kept = ++m_steps < kMostSteps && trimAtContact(piece, *point);
            }
        }
    }

    [[nodiscard]] bool keepsDistance(const Point& end, const Point& cut) const
    {
        const Point nearest = m_source.closestPointTo(end);
        return m_dist + kClip < nearest.distanceTo(end) || m_dist + kClip < nearest.distanceTo(cut);
    }

    bool trimAtContact(Piece& piece, const Point& point)
    {
        const CVexGeCircArc2d circle(point, m_dist);
        const auto span = piece.span(circle);
        if (!span) {
            return false;
        }
        double low = piece.param(span->first.run);
        double high = piece.param(span->second.run);
        if (std::fabs(low - high) < 0.001) {
            if (low <= kClip || 1.0 - high <= kClip) {
                return false;
            }
            const bool inside = circle.isInside(piece.vertex(piece.first));
            (inside ? low : high) = inside ? -1.0 : 1.1;
        }
        if (low <= kClip && 1.0 - high <= kClip) {
            return false;
        }
        if (low > kClip) {
            if (!keepsDistance(piece.vertex(piece.first), span->first.point)) {
                return false;
            }
            m_touching.push_back(piece.head(span->first));
            if (high > 1.0) {
                return false;
            }
        }
        return 1.0 - high > kClip &&
               keepsDistance(piece.chain.vertices().back(), span->second.point) &&
               piece.removeHead(span->second);
    }

    void trimNear(Chain::PolylineList& out)
    {
        for (; !m_candidates.empty(); m_candidates.pop_front()) {
            Piece piece(m_candidates.front());
            bool kept = true;
            while (kept && piece.left() > 1) {
                const auto near = firstNear(piece);
                if (!near) {
                    out.push_back(std::make_unique<Chain>(piece.rest()));
                    break;
                }
                kept = ++m_steps < kMostSteps && trimAtNear(piece, *near);
            }
        }
    }

    [[nodiscard]] std::optional<Point> firstNear(const Piece& piece) const
    {
        std::optional<Point> near;
        for (std::size_t i = piece.first; i < piece.chain.numVerts() && !near; ++i) {
            near = nearVertex(piece.vertex(i));
            if (!near) {
                near = nearSegment(piece, i);
            }
        }
        return near;
    }

    [[nodiscard]] std::optional<Point> nearVertex(const Point& vertex) const
    {
        std::optional<Point> near;
        for (std::size_t s = 0; s < m_source.numVerts() && !near; ++s) {
            withSegment(m_source, s, [&](const auto& segment) {
                const Point foot = heldWithin(segment, segment.closestPointTo(vertex, 0.001));
                if (!tooShort(segment) && foot.distanceTo(vertex) < m_dist - kClip) {
                    near = foot;
                }
            });
        }
        return near;
    }

    [[nodiscard]] std::optional<Point> nearSegment(const Piece& piece, std::size_t i) const
    {
        std::optional<Point> near;
        double lowest = 0.0;
        const auto offer = [&](const auto& own, const auto& segment) {
            Point there;
            Point here = closestOfPair(own, segment, there);
            if (tooShort(own) || tooShort(segment) || !(here.distanceTo(there) < m_dist - kClip)) {
                return;
            }
            here = heldToEnds(own, segment, here, there);
            const double run = piece.at(i, here).run;
            if (here.distanceTo(there) < m_dist - kClip && (!near || run < lowest)) {
                lowest = run;
                near = there;
            }
        };
        withSegment(piece.chain, i, [&](const auto& own) {
            for (std::size_t s = 0; s < m_source.numVerts(); ++s) {
                withSegment(m_source, s, [&](const auto& segment) { offer(own, segment); });
            }
        });
        return near;
    }

    bool trimAtNear(Piece& piece, const Point& sourcePoint)
    {
        const CVexGeCircArc2d circle(sourcePoint, m_dist);
        const auto span = piece.span(circle);
        if (!span) {
            return false;
        }
        double low = piece.param(span->first.run);
        double high = piece.param(span->second.run);
        if (std::fabs(low - high) < kClip) {
            const bool startInside = circle.isInside(piece.vertex(piece.first));
            const bool endInside = circle.isInside(piece.chain.vertices().back());
            if (low <= kClip ? endInside : 1.0 - high <= kClip && startInside) {
                return false;
            }
            if (low > kClip && 1.0 - high > kClip) {
                (startInside ? low : high) = startInside ? -1.0 : 1.0000001;
            }
        } else if (low <= kClip && 1.0 - high <= kClip) {
            return false;
        }
        const bool hasTail = 1.0 - high > kClip;
        if (low > kClip) {
            Chain head = piece.head(span->first);
            if (head.length() > kClip) {
                m_candidates.push_back(std::move(head));
            }
        }
        return hasTail && piece.removeHead(span->second);
    }

    const Chain& m_source;
    double m_dist;
    int m_steps = 0;
    std::deque<Chain> m_candidates;
    std::deque<Chain> m_touching;
};

/// Opens the steps that come before the clipping: they hold no segment against far ones.
class Source : public Chain {
public:
    explicit Source(const Chain& source) : Chain(source) {}
    [[nodiscard]] Chain rawChain(double dist, int side) const
    {
        Points points = vertices();
        std::vector<double> bent = bulges();
        checkLocalSelfIntersect(points, bent, dist, side);
        getOffsetPoly(points, bent, dist, side);
        Chain result;
        result.set(points, bent);
        return result;
    }
};

} // namespace

CVexGePolyline2d::PolylineList plainwalk::offsetPieces(const CVexGePolyline2d& source,
                                                       const CVexGePoint2d& side, double dist,
                                                       bool bothSides)
{
    const Source from(source);
    const int direction = source.getoffsetDirection(side, dist);
    const Chain here = from.rawChain(dist, direction);
    const Chain other = from.rawChain(dist, -direction);
    CVexGePolyline2d::PolylineList out;
    Clipper(source, dist).clip(here, other, out);
    if (bothSides) {
        Clipper(source, dist).clip(other, here, out);
    }
    return out;
}
