// Random polylines broken and exploded, and joined again from pieces in any order and direction.

#include "tests/session/sessionfixture.h"
#include "tests/vexdb/randompolylines.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpolylineedits.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"

#include <string>

namespace {

constexpr std::uint64_t kSeed = 20261125;

/// A chain as its segments: from vertex to vertex, with the bulge of the travel.
struct Segments {
    std::vector<CVexGePoint2d> points;
    std::vector<double> bulges;

    explicit Segments(const CVexGePolyline2d& chain)
    {
        const std::size_t count = chain.numVerts() - (chain.isClosed() ? 0u : 1u);
        for (std::size_t i = 0; i < count; ++i) {
            points.push_back(chain.vertices()[i]);
            bulges.push_back(chain.bulges()[i]);
        }
        points.push_back(chain.vertices()[count % chain.numVerts()]);
    }
    [[nodiscard]] std::size_t count() const { return bulges.size(); }
    [[nodiscard]] bool isRing() const { return points.front().distanceTo(points.back()) < 1e-6; }
    [[nodiscard]] Segments reversed() const
    {
        Segments turned(*this);
        std::ranges::reverse(turned.points);
        std::ranges::reverse(turned.bulges);
        for (double& bulge : turned.bulges) {
            bulge = -bulge;
        }
        return turned;
    }
    /// Whether both are the same way, a ring from wherever it starts.
    [[nodiscard]] bool isWayOf(const Segments& other, double tol) const
    {
        for (std::size_t shift = 0; shift < (isRing() ? count() : 1); ++shift) {
            if (isWayFrom(shift, other, tol)) {
                return true;
            }
        }
        return false;
    }

private:
    [[nodiscard]] bool isWayFrom(std::size_t shift, const Segments& other, double tol) const
    {
        bool same = count() == other.count();
        for (std::size_t i = 0; same && i < count(); ++i) {
            const std::size_t at = (i + shift) % count();
            same = points[at].distanceTo(other.points[i]) <= tol &&
                   points[at + 1].distanceTo(other.points[i + 1]) <= tol &&
                   std::fabs(bulges[at] - other.bulges[i]) <= tol;
        }
        return same;
    }
};

class PolylineJoinPropertyTest : public SessionTest {
protected:
    void putAny()
    {
        CVexDbObjectId id;
        polyline = new CVexDbPolyline(0, database.get());
        polyline->SetGeometry(random.chain());
        database->addEntity(polyline, id);
        whole = std::make_unique<Segments>(polyline->gePolyline());
        undo().clear();
        start = bytes();
    }
    /// Breaks the polyline, or what has come off it, at some of its vertices.
    VexEntitySet breakApart()
    {
        VexEntitySet pieces;
        CVexDbPolyline* rest = polyline;
        for (int left = 1 + random.below(5); left > 0; --left) {
            const int vertex = 1 + random.below(static_cast<int>(rest->NumVerts()));
            CVexDbPolyline* const tail = handler().CommandBreakPolyline(rest, vertex, true);
            if (tail != nullptr) {
                addRecorded(tail);
                pieces.insert(tail);
                rest = random.below(2) == 0 ? tail : rest;
            }
        }
        return pieces;
    }
    void expectUndoGivesTheStart()
    {
        const std::vector<std::byte> end = bytes();
        while (undo().Undo()) {
        }
        EXPECT_TRUE(start == bytes());
        while (undo().Redo()) {
        }
        EXPECT_TRUE(end == bytes());
    }

    RandomPolylines random{kSeed};
    CVexDbPolyline* polyline = nullptr;
    std::unique_ptr<Segments> whole;
    std::vector<std::byte> start;
};

TEST_F(PolylineJoinPropertyTest, PiecesOfBreaksJoinToTheCurveWhicheverWayTheyRun)
{
    std::size_t made = 0;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        putAny();
        VexEntitySet pieces = breakApart();
        made += pieces.size();
        for (CVexDbEntity* piece : pieces) {
            if (random.below(2) == 0) {
                reverseRecorded(static_cast<CVexDbPolyline&>(*piece));
            }
        }
        const std::vector<std::byte> apart = bytes();
        handler().CommandJoinPolyline(polyline, pieces, true);
        EXPECT_TRUE(pieces.empty());
        EXPECT_TRUE(Segments(polyline->gePolyline()).isWayOf(*whole, 0.0));
        undo().Undo();
        EXPECT_TRUE(apart == bytes());
        undo().Redo();
        expectUndoGivesTheStart();
        polyline->Erase();
    }
    EXPECT_LT(500u, made);
    EXPECT_TRUE(database->selfCheck().empty());
}

// The breaks lose nothing: what the pieces are long is what the curve was.
TEST_F(PolylineJoinPropertyTest, PiecesOfBreaksAreTogetherAsLongAsTheCurve)
{
    for (int round = 0; round < 400; ++round) {
        putAny();
        const double before = polyline->length();
        double after = 0.0;
        const VexEntitySet pieces = breakApart();
        for (CVexDbEntity* piece : pieces) {
            after += static_cast<CVexDbPolyline*>(piece)->length();
        }
        // Closed, what is left would bend by the bulge of a segment that it no longer has.
        EXPECT_TRUE(pieces.empty() || polyline->gePolyline().bulges().back() == 0.0);
        EXPECT_NEAR(before, after + polyline->length(), 1e-9 * before) << "round " << round;
        expectUndoGivesTheStart();
        polyline->Erase();
    }
}

TEST_F(PolylineJoinPropertyTest, PiecesOfBreaksKeepTheWidthsOfTheirVertices)
{
    for (int round = 0; round < 300; ++round) {
        putAny();
        for (unsigned i = 0; i < polyline->NumVerts(); ++i) {
            polyline->SetWidthsAt(i, random.within(0, 5), random.within(0, 5));
        }
        const CVexGePolyline2d before = polyline->gePolyline();
        VexEntitySet pieces = breakApart();
        pieces.insert(polyline);
        for (CVexDbEntity* piece : pieces) {
            const CVexGePolyline2d& chain = static_cast<CVexDbPolyline*>(piece)->gePolyline();
            for (unsigned i = 0; i < chain.numVerts(); ++i) {
                const int was = before.isVertex(chain.vertices()[i], 0.0);
                ASSERT_LE(0, was) << "round " << round;
                const auto at = static_cast<std::size_t>(was);
                EXPECT_EQ(before.startWidths()[at], chain.startWidths()[i]) << "round " << round;
                EXPECT_EQ(before.endWidths()[at], chain.endWidths()[i]) << "round " << round;
            }
            piece->Erase();
        }
    }
}

TEST_F(PolylineJoinPropertyTest, LinesAndArcsOfAnExplosionJoinToTheCurve)
{
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        putAny();
        polyline->Explode();
        VexEntitySet pieces;
        for (const tagUndoEditEntity& edit : undo().undoStack()) {
            pieces.insert(static_cast<CVexDbEntity*>(edit.entity.getPObject()));
        }
        ASSERT_EQ(whole->count(), pieces.size());
        // Any of them is where it starts; the kernel's arcs run one way, so it may run backwards.
        const auto first = std::next(pieces.begin(), random.below(static_cast<int>(pieces.size())));
        const bool isLine = (*first)->classType() == VexDb::kLine;
        CVexDbPolyline joined = isLine
                                    ? CVexDbPolyline(static_cast<const CVexDbLine&>(**first), true)
                                    : CVexDbPolyline(static_cast<const CVexDbArc&>(**first), true);
        pieces.erase(first);
        handler().CommandJoinPolyline(&joined, pieces, true);
        EXPECT_TRUE(pieces.empty());
        const Segments way(joined.gePolyline());
        EXPECT_TRUE(way.isWayOf(*whole, 1e-6) || way.reversed().isWayOf(*whole, 1e-6));
        expectUndoGivesTheStart();
        polyline->Erase();
    }
    EXPECT_TRUE(database->selfCheck().empty());
}

} // namespace
