// Random polylines, lines and arcs, open and closed: what the edits promise of any of them.

#include "tests/vexdb/polylineeditfixture.h"
#include "tests/vexdb/polylinetangents.h"

#include <random>

namespace {

constexpr std::uint64_t kSeed = 20261121;
constexpr double kLastPick = 0.9989; // beyond it the kernel takes a parameter for the end

class PolylineRandomTest : public PolylineEditTest {
protected:
    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    double within(double from, double to)
    {
        return from + (to - from) * static_cast<double>(m_random() >> 11) / 9007199254740992.0;
    }
    CVexGePoint2d point() { return {within(-100, 100), within(-100, 100)}; }
    double bulge()
    {
        return below(2) == 0 ? 0.0 : (below(2) == 0 ? 1.0 : -1.0) * within(0.01, 1.5);
    }
    /// A new polyline in the drawing, of 3 to `most` vertices.
    CVexDbPolyline& any(int most)
    {
        CVexGePolyline2d chain;
        const int count = 3 + below(most - 2);
        for (int i = 0; i < count; ++i) {
            chain.appendVertex(point(), bulge());
        }
        const double closing = chain.bulges().back();
        chain.setClosed(below(2) == 0);
        chain.setBulgeAt(chain.numVerts() - 1, closing);
        polyline = add(new CVexDbPolyline(0, &drawing));
        polyline->SetGeometry(chain);
        return *polyline;
    }
    CVexDbEntity* anyCutter()
    {
        const CVexGePoint2d at = point();
        switch (below(4)) {
        case 0: return keep(std::make_unique<CVexDbCircle>(at, within(5, 60)));
        case 1:
            return keep(std::make_unique<CVexDbArc>(at, within(5, 60), within(0, 6), within(0, 6)));
        case 2: {
            auto other = std::make_unique<CVexDbPolyline>(0, &drawing);
            for (int i = 0; i < 5; ++i) {
                other->AppendVertex(point(), bulge(), -1, -1);
            }
            return keep(std::move(other));
        }
        default: return keep(std::make_unique<CVexDbLine>(at, point()));
        }
    }
    std::vector<CVexDbEntity*> anyCutters()
    {
        std::vector<CVexDbEntity*> cutters;
        for (int i = below(4); i >= 0; --i) {
            cutters.push_back(anyCutter());
        }
        return cutters;
    }
    CVexDbEntity* keep(std::unique_ptr<CVexDbEntity> made)
    {
        m_cutters.push_back(std::move(made));
        return m_cutters.back().get();
    }

private:
    std::mt19937_64 m_random{kSeed};
    std::vector<std::unique_ptr<CVexDbEntity>> m_cutters;
};

// Picks behind one cut after the other take each piece away in turn: what goes and what is kept
// make up the whole each time, and so do all that went.
TEST_F(PolylineRandomTest, TrimTakesAwayWhatLiesBetweenTheCutsAndKeepsTheRest)
{
    int trimmed = 0;
    for (int round = 0; round < 400; ++round) {
        const CVexGePolyline2d whole = any(round % 10 == 0 ? 200 : 12).gePolyline();
        std::vector<CVexDbEntity*> cutters = anyCutters();
        const double total = whole.length();
        double at = 0.0;
        double taken = 0.0;
        int pieces = 0;
        for (; at < kLastPick && pieces < 300; ++pieces) {
            CVexGePoint2d pick = whole.pointAtParam(at + 1e-5);
            polyline->SetGeometry(whole);
            std::unique_ptr<CVexDbEntity> other(polyline->Trim(pick, cutters, kGeEpsilon));
            double kept = polyline->length();
            if (other != nullptr) {
                kept += static_cast<CVexDbPolyline&>(*other).length();
            }
            if (polyline->gePolyline() == whole) {
                break;
            }
            const double gone = total - kept;
            ASSERT_GT(gone, 0.0) << "round " << round;
            taken += gone;
            at += gone / total;
            ++trimmed;
        }
        if (pieces > 0 && pieces < 300) {
            EXPECT_NEAR(total, taken, total * 1.5e-3) << "round " << round;
        }
    }
    EXPECT_LT(500, trimmed);
}

TEST_F(PolylineRandomTest, CutEndsLieOnTheCutterAndOnThePolyline)
{
    int cuts = 0;
    for (int round = 0; round < 300; ++round) {
        const CVexGePolyline2d whole = any(40).gePolyline();
        std::vector<CVexDbEntity*> cutters = {anyCutter()};
        CVexGePoint2d pick = whole.pointAtParam(within(0.01, 0.99));
        std::unique_ptr<CVexDbEntity> other(polyline->Trim(pick, cutters, kGeEpsilon));
        if (polyline->gePolyline() == whole) {
            continue;
        }
        const auto& vertices = polyline->gePolyline().vertices();
        const bool headKept = vertices.front().isEqualTo(whole.vertices().front(), 0.0);
        const CVexGePoint2d& cut = headKept ? vertices.back() : vertices.front();
        EXPECT_LE(cutters[0]->isOn(cut, 1e-6) != 0 ? 0.0 : 1.0, 0.0) << "round " << round;
        EXPECT_NE(0, whole.isOn(cut, 1e-6)) << "round " << round;
        ++cuts;
    }
    EXPECT_LT(100, cuts);
}

TEST_F(PolylineRandomTest, RoundsTouchTheirNeighbours)
{
    int rounds = 0;
    for (int round = 0; round < 600; ++round) {
        any(30);
        const int corner = below(static_cast<int>(polyline->NumVerts()));
        const unsigned before = polyline->NumVerts();
        const double radius = within(0.1, 20);
        polyline->Fillet(corner, radius, 0.1);
        if (polyline->NumVerts() == before) {
            continue;
        }
        ++rounds;
        const CVexGePolyline2d& chain = polyline->gePolyline();
        const auto index = static_cast<unsigned>(corner);
        CVexGeCircArc2d arc;
        ASSERT_TRUE(chain.getArcSegAt(index, arc));
        EXPECT_NEAR(radius, arc.radius(), 1e-6);
        const unsigned previous = index > 0 ? index - 1 : chain.numVerts() - 1;
        if (isSegment(chain, previous)) {
            EXPECT_LT(kinkAt(chain, index), 1e-6) << "round " << round;
        }
        if (isSegment(chain, index + 1)) {
            EXPECT_LT(kinkAt(chain, index + 1), 1e-6) << "round " << round;
        }
    }
    EXPECT_LT(200, rounds);
}

TEST_F(PolylineRandomTest, RoundingAllIsRoundingEachFromTheLast)
{
    for (int round = 0; round < 200; ++round) {
        const CVexGePolyline2d whole = any(round % 10 == 0 ? 200 : 20).gePolyline();
        const double radius = within(0.1, 10);
        polyline->Fillet(radius);
        CVexDbPolyline one(0, nullptr);
        one.SetGeometry(whole);
        for (int corner = static_cast<int>(whole.numVerts()) - 1; corner >= 0; --corner) {
            one.Fillet(corner, radius, 0.1);
        }
        EXPECT_TRUE(one.gePolyline() == polyline->gePolyline()) << "round " << round;
    }
}

TEST_F(PolylineRandomTest, PiecesOfAnExplosionJoinToTheCurveAgain)
{
    for (int round = 0; round < 60; ++round) {
        any(round % 10 == 0 ? 200 : 20);
        const CVexGePolyline2d& whole = polyline->gePolyline();
        polyline->Explode();
        CVexDbPolyline joined(0, nullptr);
        const auto& stack = drawing.undoHandler().undoStack();
        const std::size_t count = whole.numVerts() - (whole.isClosed() ? 0u : 1u);
        ASSERT_LE(count, stack.size());
        joined.AppendVertex(whole.vertices().front(), 0.0, -1, -1);
        for (std::size_t i = count; i-- > 0;) { // the oldest of this step lies deepest
            const CVexDbObject* piece = stack[i].entity.getPObject();
            int index = 0;
            const bool isLine = piece->classType() == VexDb::kLine;
            EXPECT_TRUE(isLine
                            ? joined.AppendPolyline(static_cast<const CVexDbLine*>(piece), index)
                            : joined.AppendPolyline(static_cast<const CVexDbArc*>(piece), index));
        }
        ASSERT_EQ(count + 1, joined.NumVerts());
        for (unsigned i = 0; i < count; ++i) {
            EXPECT_POINT_NEAR(whole.vertices()[i].x, whole.vertices()[i].y,
                              joined.gePolyline().vertices()[i], 1e-9);
            EXPECT_NEAR(whole.getBulgeAt(i), joined.GetBulgeAt(i), 1e-9);
        }
        EXPECT_NEAR(whole.length(), joined.length(), 1e-6);
    }
}

TEST_F(PolylineRandomTest, DividedSegmentsKeepTheCurve)
{
    for (int round = 0; round < 200; ++round) {
        const double before = any(40).length();
        polyline->DivideSegment(2 + below(5), below(static_cast<int>(polyline->NumVerts()) + 2),
                                false);
        EXPECT_NEAR(before, polyline->length(), 1e-5 * before) << "round " << round;
    }
}

TEST_F(PolylineRandomTest, ExtendedEndsLieOnTheBoundaryAndLengthenTheCurve)
{
    int extended = 0;
    for (int round = 0; round < 400; ++round) {
        const double before = any(12).length();
        std::vector<CVexDbEntity*> boundaries = {anyCutter(), anyCutter()};
        CVexGePoint2d pick = polyline->gePolyline().vertices().front();
        if (!polyline->Extend(pick, boundaries, kGeEpsilon)) {
            continue;
        }
        ++extended;
        const CVexGePoint2d end = polyline->gePolyline().vertices().front();
        EXPECT_GT(polyline->length(), before) << "round " << round;
        EXPECT_TRUE(boundaries[0]->isOn(end, 1e-6) != 0 || boundaries[1]->isOn(end, 1e-6) != 0)
            << "round " << round;
    }
    EXPECT_LT(60, extended);
}

} // namespace
