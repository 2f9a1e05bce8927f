#include "tests/view/viewfixture.h"
#include "vexdb/dbobject/vexdbentsetiterator.h"

using SelectTest = ViewTest;

TEST_F(SelectTest, TheFourArgumentFormTakesEveryVisibleEntity)
{
    show();
    CVexDbLine* first = addLine({0.0, 0.0}, {1.0, 1.0});
    addLine({0.0, 0.0}, {2.0, 2.0})->setErased();
    CVexDbLine* third = addLine({900.0, 900.0}, {901.0, 901.0});
    CVexDbIdSet set;
    set.insert(first->objectId());
    // The points play no part: callers filter by their own tests afterwards.
    EXPECT_TRUE(record->selectEntity(CVexGePoint2d(5, 5), CVexGePoint2d(6, 6), set, false));
    ASSERT_EQ(2u, set.size());
    EXPECT_EQ(first, (*set.begin()).getPObject());
    EXPECT_TRUE(set.contains(third->objectId()));
}

TEST_F(SelectTest, APickTakesTheFirstEntityWithinHalfThePickBox)
{
    show(); // pick box 5 pixels, so 2.5 units
    addLine({0.0, 50.0}, {100.0, 50.0})->setInVisable();
    CVexDbLine* lower = addLine({0.0, 50.0}, {100.0, 50.0});
    CVexDbLine* upper = addLine({0.0, 52.0}, {100.0, 52.0});
    CVexDbObjectId id;
    ASSERT_TRUE(record->selectEntity(CVexGePoint2d(50.0, 52.0), id));
    EXPECT_EQ(lower, id.getPObject()); // nearer is the other, but this one is older
    ASSERT_TRUE(record->selectEntity(CVexGePoint2d(50.0, 54.4), id));
    EXPECT_EQ(upper, id.getPObject());
    EXPECT_FALSE(record->selectEntity(CVexGePoint2d(50.0, 54.6), id));
    EXPECT_EQ(upper, id.getPObject()); // kept where nothing was hit
}

TEST_F(SelectTest, APixelPicksWhatIsDrawnThere)
{
    show();
    CVexDbLine* line = addLine({0.0, 50.0}, {100.0, 50.0});
    CVexDbObjectId id;
    EXPECT_TRUE(record->selectEntity(CPoint(30, 297 - 51), id));
    EXPECT_EQ(line, id.getPObject());
    EXPECT_FALSE(record->selectEntity(CPoint(30, 50), id));
}

TEST_F(SelectTest, WithoutAScaleAPickFindsNothing)
{
    addLine({0.0, 297.0}, {100.0, 297.0});
    CVexDbObjectId id;
    EXPECT_FALSE(record->selectEntity(CPoint(0, 0), id));
    EXPECT_FALSE(record->selectEntity(CVexGePoint2d(0.0, 297.0), id));
    EXPECT_TRUE(id.isNull());
}

TEST_F(SelectTest, AWindowTakesWhatLiesInsideAndACrossingWhatItTouches)
{
    show();
    CVexDbLine* inside = addLine({20.0, 20.0}, {30.0, 30.0});
    CVexDbLine* across = addLine({30.0, 30.0}, {90.0, 30.0});
    addLine({80.0, 80.0}, {90.0, 90.0});
    CVexDbIdSet set;
    EXPECT_TRUE(record->selectEntityByWin(CVexGePoint2d(50, 50), CVexGePoint2d(10, 10), set));
    ASSERT_EQ(1u, set.size());
    EXPECT_EQ(inside, (*set.begin()).getPObject());
    EXPECT_TRUE(record->selectEntityByCross(CVexGePoint2d(10, 50), CVexGePoint2d(50, 10), set));
    ASSERT_EQ(2u, set.size());
    EXPECT_EQ(across, (*++set.begin()).getPObject());
}

TEST_F(SelectTest, AnEmptySelectionIsFalseAndClearsTheSet)
{
    show();
    CVexDbLine* line = addLine({20.0, 20.0}, {30.0, 30.0});
    CVexDbIdSet set;
    set.insert(line->objectId());
    EXPECT_FALSE(record->selectEntityByWin(CVexGePoint2d(0, 0), CVexGePoint2d(10, 10), set));
    EXPECT_TRUE(set.empty());
    EXPECT_FALSE(record->selectEntityByCross(CVexGePoint2d(0, 0), CVexGePoint2d(10, 10), set));
}

TEST_F(SelectTest, PixelCornersSelectAsTheirPointsDo)
{
    show();
    addLine({20.0, 20.0}, {30.0, 30.0});
    addLine({30.0, 30.0}, {90.0, 30.0});
    CVexDbIdSet set;
    EXPECT_TRUE(record->selectEntityByWin(CPoint(10, 287), CPoint(50, 247), set));
    EXPECT_EQ(1u, set.size());
    EXPECT_TRUE(record->selectEntityByCross(CPoint(10, 287), CPoint(50, 247), set));
    EXPECT_EQ(2u, set.size());
}

TEST_F(SelectTest, TheViewsOwnSetMayBeTheOutput)
{
    show();
    addLine({20.0, 20.0}, {30.0, 30.0});
    addLine({80.0, 80.0}, {90.0, 90.0});
    EXPECT_TRUE(record->selectEntityByWin(CVexGePoint2d(0, 0), CVexGePoint2d(50, 50),
                                          *record->displayedIdSet()));
    EXPECT_EQ(1u, record->displayedIdSet()->size());
    EXPECT_TRUE(
        record->selectEntity(CVexGePoint2d(), CVexGePoint2d(), *record->displayedIdSet(), false));
    EXPECT_EQ(1u, record->displayedIdSet()->size());
}

TEST_F(SelectTest, TheShownSetIsTakenOverWholeAndWalked)
{
    CVexDbLine* first = addLine({0.0, 0.0}, {1.0, 1.0});
    CVexDbLine* second = addLine({0.0, 0.0}, {2.0, 2.0});
    CVexDbIdSet set;
    set.insert(second->objectId());
    record->setEntityToMem(set);
    record->addEntity(first->objectId());
    record->addEntity(CVexDbObjectId());
    CVexDbEntSetIterator* made = nullptr;
    ASSERT_TRUE(record->newIterator(made, true));
    const std::unique_ptr<CVexDbEntSetIterator> iterator(made);
    CVexDbObjectId id;
    ASSERT_TRUE(iterator->getEntityId(id));
    EXPECT_EQ(first, id.getPObject()); // drawing order, not the order of entering
    record->setEntityToMem(*record->displayedIdSet());
    EXPECT_EQ(2u, record->displayedIdSet()->size());
}

TEST_F(SelectTest, AnEmptyViewHasNoIterator)
{
    addLine({0.0, 0.0}, {1.0, 1.0});
    record->ClearDisplayedIdSet();
    CVexDbEntSetIterator* iterator = nullptr;
    EXPECT_FALSE(record->newIterator(iterator, true));
    EXPECT_EQ(nullptr, iterator);
}
