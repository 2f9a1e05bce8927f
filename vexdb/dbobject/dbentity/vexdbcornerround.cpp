#include "vexdb/dbobject/dbentity/vexdbcornerround.h"

#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

using Segment = VexPolylineSegment;

/// Segments whose directions differ by less, in radians, meet without a corner.
constexpr double kSmooth = 0.01;
/// A segment that is shorter than the round needs by no more than this is long enough.
constexpr double kLengthSlack = 1e-9;
/// An offset circle of a smaller radius is a point, to which all of the arc is equally far.
constexpr double kPointRadius = 1e-9;

double cross(const CVexGeVector2d& a, const CVexGeVector2d& b)
{
    return a.x * b.y - a.y * b.x;
}

/// The places beside a segment where the centre of a round may stand: at a distance from it on one
/// side of the travel. Beside a straight segment a line, beside an arc a circle.
struct CentreLine {
    const Segment& segment;
    CVexGePoint2d point;      // of the line, or the circle's centre
    CVexGeVector2d direction; // of the line
    double radius = 0.0;      // below 0 where the round is larger than the arc that it touches

    /// `distance` above 0 is to the left of the travel.
    CentreLine(const Segment& beside, double distance) : segment(beside)
    {
        if (beside.isArc()) {
            point = beside.center();
            radius = beside.radius() - distance * beside.turn();
        } else {
            direction = beside.directionAt(0.0);
            point = beside.from() + direction.perpVector() * distance;
        }
    }
    /// How far along the segment the round about `centre` touches it.
    [[nodiscard]] double touchOf(const CVexGePoint2d& centre) const
    {
        if (!segment.isArc()) {
            return (centre - segment.from()).dotProduct(direction);
        }
        return segment.along(point + (centre - point) * (segment.radius() / radius));
    }
};

/// The places that two lines of centres share, at most two.
struct Centres {
    std::array<CVexGePoint2d, 2> points;
    int count = 0;

    void add(const CVexGePoint2d& point) { points[static_cast<std::size_t>(count++)] = point; }
    [[nodiscard]] auto begin() const { return points.begin(); }
    [[nodiscard]] auto end() const { return points.begin() + count; }
};

Centres centresOfLines(const CentreLine& a, const CentreLine& b)
{
    Centres centres;
    const double turn = cross(a.direction, b.direction);
    centres.add(a.point + a.direction * (cross(b.point - a.point, b.direction) / turn));
    return centres;
}

/// The points beside `foot`, on the way `along`, whose squared distance from it is `square`.
Centres besideFoot(const CVexGePoint2d& foot, const CVexGeVector2d& along, double square)
{
    Centres centres;
    if (square >= 0.0) {
        const CVexGeVector2d half = along * std::sqrt(square);
        centres.add(foot + half);
        centres.add(foot - half);
    }
    return centres;
}

Centres centresOfLineAndCircle(const CentreLine& line, const CentreLine& circle)
{
    const double along = (circle.point - line.point).dotProduct(line.direction);
    const CVexGePoint2d foot = line.point + line.direction * along;
    const double gap = foot.distanceTo(circle.point);
    const double radius = std::fabs(circle.radius);
    return besideFoot(foot, line.direction, (radius - gap) * (radius + gap));
}

Centres centresOfCircles(const CentreLine& a, const CentreLine& b)
{
    const CVexGeVector2d way = b.point - a.point;
    const double apart = way.length();
    if (!(apart > 0.0)) {
        return {};
    }
    const double along = ((a.radius - b.radius) * (a.radius + b.radius) / apart + apart) / 2.0;
    const double radius = std::fabs(a.radius);
    return besideFoot(a.point + way * (along / apart), way.perpVector() / apart,
                      (radius - along) * (radius + along));
}

Centres centresOf(const CentreLine& a, const CentreLine& b)
{
    if (!a.segment.isArc()) {
        return b.segment.isArc() ? centresOfLineAndCircle(a, b) : centresOfLines(a, b);
    }
    return b.segment.isArc() ? centresOfCircles(a, b) : centresOfLineAndCircle(b, a);
}

bool isPointCircle(const CentreLine& line)
{
    return line.segment.isArc() && std::fabs(line.radius) < kPointRadius;
}

/// Whether the kernel sees a part of `segment` with this length as what it is, or not at all: a
/// flat arc would count as straight, and no longer touch the round.
bool keepsShape(const Segment& segment, double length)
{
    return !segment.isArc() || length < kGeTol ||
           std::fabs(segment.bulgeOf(length)) > kGeStraightBulge;
}

/// The round about `centre`; `side` is 1 for one that turns to the left, -1 to the right.
std::optional<VexCornerRound> roundAbout(const CVexGePoint2d& centre, const CentreLine& first,
                                         const CentreLine& second, double radius, double side)
{
    const Segment& in = first.segment;
    const Segment& out = second.segment;
    double leaves = first.touchOf(centre);
    double meets = second.touchOf(centre);
    const bool fits = leaves >= -kLengthSlack && leaves < in.length() && meets > 0.0 &&
                      meets <= out.length() + kLengthSlack;
    if (!fits) {
        return std::nullopt;
    }
    leaves = std::max(leaves, 0.0);
    meets = std::min(meets, out.length());
    VexCornerRound round;
    round.start = leaves > 0.0 ? in.pointAt(leaves) : in.from();
    round.end = meets < out.length() ? out.pointAt(meets) : out.to();
    round.firstRest = leaves;
    round.secondRest = out.length() - meets;
    const CVexGeVector2d from = in.directionAt(leaves);
    const CVexGeVector2d to = out.directionAt(meets);
    const double sweep = notNegativeAngle(side * std::atan2(cross(from, to), from.dotProduct(to)));
    round.bulge = side * std::tan(sweep / 4.0);
    const bool isSeen = std::fabs(round.bulge) > kGeStraightBulge &&
                        round.start.distanceTo(round.end) >= kGeTol &&
                        keepsShape(in, round.firstRest) && keepsShape(out, round.secondRest);
    if (!isSeen) {
        return std::nullopt;
    }
    const double startAngle = centre.angleTo(round.start);
    const double endAngle = centre.angleTo(round.end);
    round.arc.set(centre, radius);
    round.arc.setAngles(side > 0.0 ? startAngle : endAngle, side > 0.0 ? endAngle : startAngle);
    return round;
}

/// What a round takes off the two segments.
double cutOff(const VexCornerRound& round, const Segment& first, const Segment& second)
{
    return first.length() - round.firstRest + second.length() - round.secondRest;
}

/// Of the rounds on one side the one that stays nearest to the corner goes to `best`.
void offerRounds(const Segment& first, const Segment& second, double radius, double side,
                 std::optional<VexCornerRound>& best)
{
    const CentreLine a(first, side * radius);
    const CentreLine b(second, side * radius);
    if (isPointCircle(a) || isPointCircle(b)) {
        return;
    }
    for (const CVexGePoint2d& centre : centresOf(a, b)) {
        const auto round = roundAbout(centre, a, b, radius, side);
        if (round && (!best || cutOff(*round, first, second) < cutOff(*best, first, second))) {
            best = round;
        }
    }
}

} // namespace

std::optional<VexCornerRound> roundCorner(const VexPolylineSegment& first,
                                          const VexPolylineSegment& second, double radius)
{
    const CVexGeVector2d arrives = first.directionAt(first.length());
    const CVexGeVector2d leaves = second.directionAt(0.0);
    const double turn = cross(arrives, leaves);
    std::optional<VexCornerRound> best;
    if (!(radius > 0.0)) {
        return best;
    }
    if (std::fabs(turn) > kSmooth) {
        offerRounds(first, second, radius, turn > 0.0 ? 1.0 : -1.0, best);
    } else if (arrives.dotProduct(leaves) < 0.0 && (first.isArc() || second.isArc())) {
        // A cusp: the way turns back, and the arcs tell by their bend on which side there is room.
        offerRounds(first, second, radius, 1.0, best);
        offerRounds(first, second, radius, -1.0, best);
    }
    return best;
}
