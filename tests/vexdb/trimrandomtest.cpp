// Random curves and cutters: what is kept and what is taken make up the curve of before, and the
// answers are those of the plainest way to find them.

#include "tests/vexdb/trimfixture.h"

#include <algorithm>
#include <optional>
#include <random>

namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

/// A stretch of a curve, by its places along it in drawing units; over the start of a circle the
/// second is less than the first.
using Stretch = std::pair<double, double>;

class TrimRandomTest : public CutTest {
protected:
    static constexpr unsigned kSeed = 20261121;
    static constexpr int kCases = 20000;

    double number(double range)
    {
        return std::uniform_real_distribution<double>(-range, range)(m_random);
    }
    /// On a coarse grid, where much coincides.
    double step(int range) { return std::uniform_int_distribution<int>(-range, range)(m_random); }
    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    CVexGePoint2d point() { return coarse ? CVexGePoint2d(step(6), step(6)) : freePoint(); }
    CVexGePoint2d freePoint() { return {number(20), number(20)}; }
    double radius() { return coarse ? 1.0 + below(5) : 0.5 + std::fabs(number(15)); }
    double angle() { return coarse ? step(4) * kTurn / 4 : number(kTurn); }

    std::unique_ptr<CVexDbEntity> curve(int kind)
    {
        switch (kind) {
        case 0: return std::make_unique<CVexDbLine>(point(), point());
        case 1: return std::make_unique<CVexDbArc>(point(), radius(), angle(), angle());
        case 2: return std::make_unique<CVexDbCircle>(point(), radius());
        default: return std::make_unique<CVexDbBox>(point(), radius(), radius(), angle());
        }
    }
    std::vector<std::unique_ptr<CVexDbEntity>> curves()
    {
        std::vector<std::unique_ptr<CVexDbEntity>> made;
        for (int rest = 1 + below(6); rest > 0; --rest) {
            made.push_back(curve(below(4)));
        }
        return made;
    }
    static Entities pointersTo(const std::vector<std::unique_ptr<CVexDbEntity>>& owners)
    {
        Entities entities;
        for (const auto& owner : owners) {
            entities.push_back(owner.get());
        }
        return entities;
    }

    bool coarse = false;

private:
    std::mt19937_64 m_random{kSeed};
};

double swept(double from, double to)
{
    const double angle = std::fmod(to - from, kTurn);
    return angle < 0.0 ? angle + kTurn : angle;
}

/// Places along a line, an arc or a circle.
struct Track {
    explicit Track(CVexDbEntity& entity) : curve(static_cast<CVexDbCurve&>(entity))
    {
        closed = curve.classType() == VexDb::kCircle;
        if (curve.classType() == VexDb::kLine) {
            const auto& line = static_cast<CVexDbLine&>(curve).geLine();
            origin = line.startPoint();
            length = line.length();
            return;
        }
        const auto& arc = static_cast<const CVexGeCircArc2d&>(*curve.geCurve());
        isRound = true;
        origin = arc.center();
        radius = arc.radius();
        start = arc.startAng();
        length = closed ? kTurn * radius : radius * swept(start, arc.endAng());
    }
    [[nodiscard]] double placeOf(const CVexGePoint2d& point) const
    {
        return isRound ? radius * swept(start, origin.angleTo(point)) : origin.distanceTo(point);
    }
    /// A point at a place, or beside it where that counts at the same place.
    [[nodiscard]] CVexGePoint2d pointAt(double place, double aside) const
    {
        if (isRound) {
            return origin + CVexGeVector2d(start + place / radius) * (radius * (1.0 + aside));
        }
        const CVexGeVector2d way = static_cast<CVexDbLine&>(curve).geLine().direction();
        return origin + way * place + way.perpVector() * aside;
    }

    CVexDbCurve& curve;
    bool closed = false;
    bool isRound = false;
    CVexGePoint2d origin; // or the centre
    double radius = 0.0;
    double start = 0.0;
    double length = 0.0;
};

/// The places of all hits, each asked of the entity itself; none when two are too near each other,
/// an end or the pick for a plain answer.
std::optional<std::vector<double>> plainCuts(const Track& track,
                                             const std::vector<CVexDbEntity*>& by, double pick)
{
    constexpr double kPlain = 0.05;
    std::vector<double> places;
    CVexDbEntity::PointList points;
    int count = 0;
    for (CVexDbEntity* cutter : by) {
        if (track.curve.intersectWith(*cutter, count, points, CVexGeEntity2d::kExtendNone,
                                      kGeEpsilon)) {
            for (const CVexGePoint2d& point : points) {
                places.push_back(track.placeOf(point));
            }
        }
    }
    std::ranges::sort(places);
    std::vector<double> marks = places;
    marks.insert(marks.end(), {pick, 0.0, track.length});
    std::ranges::sort(marks);
    for (std::size_t i = 1; i < marks.size(); ++i) {
        if (marks[i] - marks[i - 1] < kPlain) {
            return std::nullopt;
        }
    }
    return places;
}

/// What the pick leaves of a curve with these cuts.
std::vector<Stretch> plainRest(const std::vector<double>& cuts, const Track& track, double pick)
{
    const auto behind = std::ranges::upper_bound(cuts, pick);
    if (cuts.size() < (track.closed ? 2u : 1u)) {
        return {{0.0, track.length}};
    }
    if (track.closed) {
        return {{behind == cuts.end() ? cuts.front() : *behind,
                 behind == cuts.begin() ? cuts.back() : *std::prev(behind)}};
    }
    std::vector<Stretch> rest;
    if (behind != cuts.begin()) {
        rest.emplace_back(0.0, *std::prev(behind));
    }
    if (behind != cuts.end()) {
        rest.emplace_back(*behind, track.length);
    }
    return rest;
}

/// How long the piece is that a pick takes out of a curve with enough cuts.
double plainPiece(const std::vector<double>& cuts, const Track& track, double pick)
{
    const auto behind = std::ranges::upper_bound(cuts, pick);
    const double overStart = track.closed ? cuts.back() - track.length : 0.0;
    const double overEnd = track.length + (track.closed ? cuts.front() : 0.0);
    return (behind == cuts.end() ? overEnd : *behind) -
           (behind == cuts.begin() ? overStart : *std::prev(behind));
}

/// Where an entity that was cut lies on the curve of before.
Stretch stretchOf(const CVexDbEntity& entity, const Track& track)
{
    if (entity.classType() == VexDb::kCircle) {
        return {0.0, track.length};
    }
    CVexGePoint2d start, end;
    if (entity.classType() == VexDb::kLine) {
        static_cast<const CVexDbLine&>(entity).geLine().getPoints(start, end);
    } else {
        start = static_cast<const CVexDbArc&>(entity).StartPoint();
        end = static_cast<const CVexDbArc&>(entity).EndPoint();
    }
    Stretch stretch(track.placeOf(start), track.placeOf(end));
    if (track.length - stretch.first < kGeTol && !track.closed) {
        stretch.first = 0.0; // rounding takes an arc's own start for just before it
    }
    return stretch;
}

TEST_F(TrimRandomTest, KeptIsWhatThePlainWayKeepsAndWithWhatIsTakenTheWhole)
{
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    int split = 0, shortened = 0, opened = 0;
    for (int i = 0; i < kCases; ++i) {
        const auto victim = curve(below(3));
        auto before = std::unique_ptr<CVexDbEntity>(victim->CopyEntity(true));
        const Track track(*before);
        const auto owners = curves();
        Entities cutters = pointersTo(owners);
        const double place = (0.5 + number(0.5)) * track.length;
        const auto cuts = plainCuts(track, cutters, place);
        if (!cuts) {
            continue;
        }
        CVexGePoint2d pick = track.pointAt(place, number(0.2));
        const std::unique_ptr<CVexDbEntity> rest(victim->Trim(pick, cutters, kGeEpsilon));
        std::vector<Stretch> kept;
        if (!victim->isErased()) {
            kept.push_back(stretchOf(*victim, track));
        }
        if (rest != nullptr) {
            kept.push_back(stretchOf(*rest, track));
        }
        const std::vector<Stretch> plain = plainRest(*cuts, track, place);
        ASSERT_EQ(plain.size(), kept.size()) << "case " << i;
        double length = 0.0;
        for (std::size_t k = 0; k < kept.size(); ++k) {
            ASSERT_NEAR(plain[k].first, kept[k].first, 1e-6) << "case " << i;
            ASSERT_NEAR(plain[k].second, kept[k].second, 1e-6) << "case " << i;
            length +=
                static_cast<CVexDbCurve&>(k == 0 && !victim->isErased() ? *victim : *rest).length();
        }
        const double taken = track.length - length;
        const bool cut = cuts->size() >= (track.closed ? 2u : 1u);
        ASSERT_NEAR(cut ? plainPiece(*cuts, track, place) : 0.0, taken, 1e-6) << "case " << i;
        split += kept.size() == 2 ? 1 : 0;
        shortened += cut && !track.closed ? 1 : 0;
        opened += cut && track.closed ? 1 : 0;
    }
    EXPECT_GT(split, kCases / 40);
    EXPECT_GT(shortened, kCases / 10);
    EXPECT_GT(opened, kCases / 20);
}

// Ends on ends, touches, doubles, whole turns of arcs: nothing without length is left, and no arc
// that the kernel would take for a whole turn.
TEST_F(TrimRandomTest, NothingWithoutLengthAndNoWholeTurnIsLeftWhereMuchCoincides)
{
    SCOPED_TRACE(testing::Message() << "seed " << kSeed);
    coarse = true;
    int changed = 0;
    const auto expectSound = [](const CVexDbEntity& entity, int i) {
        if (entity.classType() == VexDb::kLine) {
            EXPECT_GT(static_cast<const CVexDbLine&>(entity).geLine().length(), kGeTol) << i;
        } else if (entity.classType() == VexDb::kArc) {
            const auto& arc = static_cast<const CVexDbArc&>(entity);
            const double run = std::fabs(arc.EndAngle() - arc.StartAngle());
            EXPECT_GT(run, 0.001) << i;
            EXPECT_GT(std::fabs(run - kTurn), 0.001) << i;
            EXPECT_GT(arc.geArc().length(), kGeTol) << i;
        }
    };
    for (int i = 0; i < kCases; ++i) {
        const auto victim = curve(below(3));
        const double length = static_cast<CVexDbCurve&>(*victim).length();
        const auto owners = curves();
        Entities cutters = pointersTo(owners);
        CVexGePoint2d pick = below(2) == 0 ? point() : freePoint();
        const std::string before = shapeOf(*victim);
        const bool extending = below(3) == 0;
        bool moved = false;
        std::unique_ptr<CVexDbEntity> rest;
        if (extending) {
            moved = victim->Extend(pick, cutters, kGeEpsilon);
        } else {
            rest.reset(victim->Trim(pick, cutters, kGeEpsilon));
            moved = rest != nullptr || shapeOf(*victim) != before;
        }
        if (!moved) {
            EXPECT_EQ(before, shapeOf(*victim));
            continue;
        }
        ++changed;
        double kept = 0.0;
        for (CVexDbEntity* entity : {victim.get(), rest.get()}) {
            if (entity != nullptr && !entity->isErased()) {
                expectSound(*entity, i);
                kept += static_cast<CVexDbCurve*>(entity)->length();
            }
        }
        EXPECT_TRUE(extending || kept < length - kGeTol / 2) << i;
    }
    EXPECT_GT(changed, kCases / 5);
}

TEST_F(TrimRandomTest, LinesExtendToTheHitNearestThePick)
{
    int moved = 0;
    for (int i = 0; i < kCases; ++i) {
        CVexDbLine line(point(), point());
        const CVexGeLine2d before = line.geLine();
        const auto owners = curves();
        Entities boundaries = pointersTo(owners);
        CVexGePoint2d pick = freePoint();
        const CVexGePoint2d foot = before.closestPointTo(pick);
        const bool atStart =
            foot.distanceTo(before.startPoint()) < foot.distanceTo(before.endPoint());
        std::optional<CVexGePoint2d> target;
        CVexDbEntity::PointList points;
        int count = 0;
        for (CVexDbEntity* boundary : boundaries) {
            points.clear();
            line.intersectWith(*boundary, count, points, CVexGeEntity2d::kExtendThis, kGeEpsilon);
            for (const CVexGePoint2d& hit : points) {
                if (before.isOn(hit, kGeEpsilon) == 0 &&
                    (!target || hit.distanceTo(pick) < target->distanceTo(pick))) {
                    target = hit;
                }
            }
        }
        ASSERT_EQ(target.has_value(), line.Extend(pick, boundaries, kGeEpsilon)) << i;
        if (target) {
            ++moved;
            const CVexGePoint2d end = atStart ? line.StartPoint() : line.EndPoint();
            ASSERT_EQ(0.0, end.distanceTo(*target)) << i;
        }
    }
    EXPECT_GT(moved, kCases / 4);
}

TEST_F(TrimRandomTest, ArcsExtendToTheNearerOfTheFirstAndLastHit)
{
    int moved = 0;
    for (int i = 0; i < kCases; ++i) {
        CVexDbArc arc(point(), radius(), angle(), angle());
        const CVexGeCircArc2d before = arc.geArc();
        const CVexDbCircle turn(arc.Center(), arc.Radius());
        const auto owners = curves();
        Entities boundaries = pointersTo(owners);
        const bool atStart = below(2) == 0;
        CVexGePoint2d pick = atStart ? before.startPoint() : before.endPoint();
        std::vector<double> angles;
        CVexDbEntity::PointList points;
        int count = 0;
        for (CVexDbEntity* boundary : boundaries) {
            points.clear();
            turn.intersectWith(*boundary, count, points, CVexGeEntity2d::kExtendNone, kGeEpsilon);
            for (const CVexGePoint2d& hit : points) {
                if (before.isOn(hit, kGeEpsilon) == 0) {
                    angles.push_back(before.center().angleTo(hit));
                }
            }
        }
        ASSERT_EQ(!angles.empty(), arc.Extend(pick, boundaries, kGeEpsilon)) << i;
        if (angles.empty()) {
            continue;
        }
        ++moved;
        const CVexGeVector2d now(atStart ? before.startAng() : before.endAng());
        const auto [first, last] = std::ranges::minmax(angles);
        const bool takesLast =
            now.angleTo(CVexGeVector2d(last)) < now.angleTo(CVexGeVector2d(first));
        ASSERT_EQ(takesLast ? last : first, atStart ? arc.StartAngle() : arc.EndAngle()) << i;
    }
    EXPECT_GT(moved, kCases / 4);
}

} // namespace
