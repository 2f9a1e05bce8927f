#include "tests/view/viewfixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbspatialindex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace {

/// A drawing of a few hundred random entities in a window of 1000 by 1000 pixels, one unit each.
class IndexTest : public ViewTest {
protected:
    static constexpr std::size_t kCount = 600;

    IndexTest() { showSquare({0, 0, 1000, 1000}, 1000); }

    double any(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    CVexGePoint2d anyPoint(double reach = 1500.0)
    {
        return {any(-reach, reach), any(-reach, reach)};
    }

    CVexDbEntity* anyPolyline(const CVexGePoint2d& at, double size)
    {
        auto* made = new CVexDbPolyline(0, nullptr);
        for (int i = 0; i < 4; ++i) {
            const CVexGePoint2d vertex(at.x + any(-size, size), at.y + any(-size, size));
            made->AppendVertex(vertex, i % 2 == 0 ? any(-3.0, 3.0) : 0.0, -1.0, -1.0);
        }
        made->SetClosed(m_random() % 2 == 0);
        return made;
    }
    CVexDbEntity* addAny()
    {
        const CVexGePoint2d at = anyPoint();
        const double size = std::exp(any(-3.0, 7.5));
        const CVexGePoint2d other(at.x + any(-size, size), at.y + any(-size, size));
        CVexDbEntity* made = nullptr;
        switch (m_random() % 7) {
        case 6: made = new CVexDbCircle(at, size); break;
        case 5: made = new CVexDbArc(at, size, any(-6.3, 6.3), any(-6.3, 6.3)); break;
        case 4: made = anyPolyline(at, size); break;
        case 0: made = new CVexDbBox(at, size, size / 2.0, any(0.0, 6.0)); break;
        case 1: made = new CVexDbRect(at, other); break;
        case 2: made = new CVexDbPoint(at); break;
        default: made = new CVexDbLine(at, other); break;
        }
        made->setDatabase(database.get());
        add(made);
        m_all.push_back(made);
        return made;
    }
    void fill()
    {
        for (std::size_t i = 0; i < kCount; ++i) {
            addAny();
        }
    }
    CVexDbEntity& anyOf() { return *m_all[m_random() % m_all.size()]; }

    void editAny()
    {
        CVexDbEntity& entity = anyOf();
        switch (m_random() % 8) {
        case 0: entity.TranslateBy({any(-300.0, 300.0), any(-300.0, 300.0)}); break;
        case 1: entity.RotateBy(any(0.0, 6.0), anyPoint()); break;
        case 2: entity.ScaleBy(any(0.2, 3.0), anyPoint()); break;
        case 3: entity.setErased(); break;
        case 4: entity.resetObjectStatus(kStatusErased); break;
        case 5: entity = anyOf(); break;
        case 6: database->removeEntity(&entity); break;
        default: addAny(); break;
        }
    }

    /// What a walk over everything finds.
    template <class Accept>
    std::vector<const CVexDbObject*> walk(Accept&& accept)
    {
        std::vector<const CVexDbObject*> found;
        record->displayedIdSet()->visitObjects([&](CVexDbObject& object) {
            auto& entity = static_cast<CVexDbEntity&>(object);
            if (entity.isVisiable() && accept(entity)) {
                found.push_back(&entity);
            }
            return true;
        });
        return found;
    }
    static std::vector<const CVexDbObject*> listOf(const CVexDbIdSet& set)
    {
        std::vector<const CVexDbObject*> list;
        for (const CVexDbObjectId& id : set) {
            list.push_back(id.getPObject());
        }
        return list;
    }
    void expectQueriesOfAWalk()
    {
        const CVexGePoint2d p = anyPoint();
        const double side = std::exp(any(-2.0, 6.0));
        const CVexGePoint2d q(p.x + any(-side, side), p.y + any(-side, side));
        CVexDbIdSet found;
        record->selectEntityByWin(p, q, found);
        EXPECT_EQ(walk([&](CVexDbEntity& entity) {
                      CVexGePoint2d a(p);
                      CVexGePoint2d b(q);
                      return entity.checkInside(a, b);
                  }),
                  listOf(found));
        record->selectEntityByCross(p, q, found);
        EXPECT_EQ(walk([&](CVexDbEntity& entity) {
                      CVexGePoint2d a(p);
                      CVexGePoint2d b(q);
                      return entity.checkInsideOrCross(a, b);
                  }),
                  listOf(found));
        expectPickOfAWalk(p);
        expectPickOfAWalk(anyOf().getGripPoint(0));
    }
    void expectPickOfAWalk(const CVexGePoint2d& p)
    {
        const double half = settings().m_nPickBox * record->xScale() / 100.0 / 2.0;
        const auto hits = walk([&](CVexDbEntity& entity) { return entity.isOn(p, half) != 0; });
        CVexDbObjectId id;
        EXPECT_EQ(!hits.empty(), record->selectEntity(p, id));
        EXPECT_EQ(hits.empty() ? nullptr : hits.front(), id.getPObject());
    }

    std::mt19937 m_random{20261121};
    std::vector<CVexDbEntity*> m_all;
};

} // namespace

TEST_F(IndexTest, AnswersAreThoseOfAWalkWhateverIsEdited)
{
    fill();
    for (int round = 0; round < 400; ++round) {
        expectQueriesOfAWalk();
        editAny();
    }
}

TEST_F(IndexTest, EverySetterThatMovesAnEntityIsFollowed)
{
    fill();
    CVexDbLine* const line = addLine({5000.0, 5000.0}, {5001.0, 5001.0});
    expectPickOfAWalk({5000.0, 5000.0});
    line->setEndPoint({7000.0, 5000.0});
    expectPickOfAWalk({6500.0, 5000.0});
    line->setStartPoint({7000.0, 9000.0});
    expectPickOfAWalk({7000.0, 8000.0});
    line->set({-4000.0, 0.0}, {-4000.0, 10.0});
    expectPickOfAWalk({-4000.0, 5.0});
    CVexDbObjectId id;
    EXPECT_TRUE(record->selectEntity(CVexGePoint2d(-4000.0, 5.0), id));
    EXPECT_EQ(line, id.getPObject());
    EXPECT_FALSE(record->selectEntity(CVexGePoint2d(7000.0, 8000.0), id));
}

TEST_F(IndexTest, TwoViewsThatShareEntitiesBothFollow)
{
    fill();
    CVexDbDisplayTableRecord second(database.get());
    second.setView(&window, &dc);
    second.MakeUpDisplayWindow(&dc);
    second.setEntityToMem(*record->displayedIdSet());
    CVexDbLine* const line = addLine({5000.0, 5000.0}, {5010.0, 5000.0});
    second.addEntity(line->objectId());
    CVexDbIdSet found;
    for (const double x : {5000.0, 8000.0, -9000.0}) {
        line->set({x, 0.0}, {x + 10.0, 0.0});
        for (CVexDbDisplayTableRecord* view : {record, &second}) {
            EXPECT_TRUE(view->selectEntityByWin(CVexGePoint2d(x - 1.0, -1.0),
                                                CVexGePoint2d(x + 11.0, 1.0), found));
            EXPECT_EQ((std::vector<const CVexDbObject*>{line}), listOf(found));
        }
    }
}

TEST_F(IndexTest, CoordinatesThatAreNoPlaceAreStillLookedAt)
{
    fill();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    addLine({nan, 0.0}, {10.0, 10.0});
    addLine({-infinity, 500.0}, {infinity, 500.0});
    addLine({-1e12, 501.0}, {1e12, 501.0});
    for (int round = 0; round < 50; ++round) {
        expectQueriesOfAWalk();
    }
    expectPickOfAWalk({500.0, 501.0});
    expectPickOfAWalk({nan, 500.0});
}

TEST_F(IndexTest, ARedrawStrokesWhatTheWindowShowsAndNothingThatItDoesNot)
{
    fill();
    CVexDbEntity& wide = *addLine({-1200.0, 1020.0}, {1500.0, 1020.0}); // 20 units above
    wide.setLineWeight(static_cast<VexDb::LineWeight>(5000), true);     // 50 units wide
    settings().m_bGridVisible = false;
    dc.clear();
    record->DrawEntities(&dc);
    const std::vector<VexStroke> near = dc.strokes();
    CVexDbIdSet all = *record->displayedIdSet();
    dc.clear();
    all.visitObjects([&](CVexDbObject& object) {
        if (object.isVisiable()) {
            static_cast<CVexDbEntity&>(object).Draw(&dc);
        }
        return true;
    });
    // The strokes left out are those of the walk in their order, each outside of the window.
    std::size_t next = 0;
    for (const VexStroke& stroke : dc.strokes()) {
        if (next < near.size() && near[next] == stroke) {
            ++next;
            continue;
        }
        CRect box(stroke.points.front(), stroke.points.front());
        for (const CPoint& point : stroke.points) {
            box = {std::min(box.left, point.x), std::min(box.top, point.y),
                   std::max(box.right, point.x), std::max(box.bottom, point.y)};
        }
        EXPECT_TRUE(box.right < 0 || box.bottom < 0 || box.left >= 1000 || box.top >= 1000)
            << box.left << " " << box.top << " " << box.right << " " << box.bottom;
    }
    EXPECT_EQ(near.size(), next);
    EXPECT_LT(near.size(), dc.strokes().size() / 2);
    const auto isWide = [](const VexStroke& stroke) { return stroke.penWidth == 5000; };
    EXPECT_EQ(1, std::ranges::count_if(near, isWide));
}

TEST_F(IndexTest, AChangeBehindTheViewsBackIsNoticed)
{
    fill();
    CVexDbLine* const line = addLine({5000.0, 5000.0}, {5010.0, 5000.0});
    CVexDbIdSet found;
    EXPECT_TRUE(
        record->selectEntityByWin(CVexGePoint2d(4999, 4999), CVexGePoint2d(5011, 5001), found));
    record->removeEntity(line->objectId());
    EXPECT_FALSE(
        record->selectEntityByWin(CVexGePoint2d(4999, 4999), CVexGePoint2d(5011, 5001), found));
    record->displayedIdSet()->insert(line->objectId()); // behind the view's back
    EXPECT_TRUE(
        record->selectEntityByWin(CVexGePoint2d(4999, 4999), CVexGePoint2d(5011, 5001), found));
    record->ClearDisplayedIdSet();
    EXPECT_FALSE(
        record->selectEntityByWin(CVexGePoint2d(4999, 4999), CVexGePoint2d(5011, 5001), found));
}
