#include "editingfixture.h"
#include "tests/vexdb/polylinewords.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpolylineedits.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"

#include <random>

namespace {

/// Polylines by chance, the same in each run.
class RandomPolylineTest : public EditingTest {
protected:
    int pick(int low, int high) { return std::uniform_int_distribution(low, high)(m_chance); }
    double place() { return pick(0, 4000) / 100.0; }
    CVexGePoint2d point() { return {place(), place()}; }
    double bulge() { return pick(0, 1) == 0 ? 0.0 : pick(-150, 150) / 100.0; }
    CVexDbPolyline* draw(int most, bool closed = false)
    {
        std::vector<CVexGePoint2d> points = {point()};
        const auto count = static_cast<std::size_t>(pick(3, most));
        while (points.size() < count) {
            const CVexGePoint2d next = point();
            if (next.distanceTo(points.back()) > 1.0) {
                points.push_back(next);
            }
        }
        auto* const polyline = add(new CVexDbPolyline(0, database.get()));
        polyline->SetVertexes(points, closed);
        for (unsigned i = 0; i + 1 < polyline->NumVerts(); ++i) {
            polyline->SetBulgeAt(i, bulge());
        }
        return polyline;
    }
    unsigned vertexOf(const CVexDbPolyline& polyline)
    {
        return static_cast<unsigned>(pick(0, static_cast<int>(polyline.NumVerts()) - 1));
    }
    /// One edit by chance, a step of its own where it changes anything.
    void editOnce(CVexDbPolyline& polyline)
    {
        const unsigned at = vertexOf(polyline);
        switch (pick(0, 8)) {
        case 0: flipRecorded(polyline, at); break;
        case 1: insertRecorded(polyline, at, point()); break;
        case 2: removeRecorded(polyline, at); break;
        case 3: reverseRecorded(polyline); break;
        case 4: changeStartRecorded(polyline, at); break;
        case 5: closeRecorded(polyline); break;
        case 6: openRecorded(polyline); break;
        case 7: polyline.DivideSegment(pick(2, 3), static_cast<int>(at), true); break;
        default: polyline.Fillet(static_cast<int>(at), place() / 20.0, 0.1); break;
        }
    }
    void breakAndAdd(CVexDbPolyline& polyline)
    {
        const VexUndoGroup step(undo());
        addRecorded(
            handler().CommandBreakPolyline(&polyline, static_cast<int>(vertexOf(polyline)), true));
    }

private:
    std::mt19937 m_chance{20};
};

TEST_F(RandomPolylineTest, FiftyEditsGoBackToTheByteAndForthAgain)
{
    for (int round = 0; round < 20; ++round) {
        undo().clear();
        CVexDbPolyline* const polyline = draw(30, round % 2 == 0);
        start = bytes();
        for (int i = 0; i < 50; ++i) {
            editOnce(*polyline);
        }
        EXPECT_GT(undo().undoStack().size(), 30u);
        expectExactUndo();
    }
}

TEST_F(RandomPolylineTest, BreaksAmongTheEditsGoBackToo)
{
    for (int round = 0; round < 20; ++round) {
        undo().clear();
        CVexDbPolyline* const polyline = draw(60, round % 2 == 0);
        start = bytes();
        for (int i = 0; i < 5; ++i) {
            editOnce(*polyline);
            breakAndAdd(*polyline);
        }
        expectExactUndo();
    }
}

TEST_F(RandomPolylineTest, ThePiecesOfABreakJoinToTheCurve)
{
    for (int round = 0; round < 50; ++round) {
        CVexDbPolyline* const whole = draw(200);
        const std::string before = wordsOf(*whole);
        CVexDbPolyline* const tail = handler().CommandBreakPolyline(
            whole, pick(1, static_cast<int>(whole->NumVerts()) - 2), false);
        ASSERT_NE(nullptr, tail);
        add(tail);
        VexEntitySet pieces = {tail};
        handler().CommandJoinPolyline(whole, pieces, false);
        EXPECT_EQ(before, wordsOf(*whole)) << round;
    }
}

TEST_F(RandomPolylineTest, WhatWasExplodedJoinsToTheCurve)
{
    for (int round = 0; round < 20; ++round) {
        CVexDbPolyline* const whole = draw(60);
        whole->SetBulgeAt(0, 0.0); // the first piece tells the direction
        const std::size_t before = view->displayedIdSet()->size();
        whole->Explode();
        std::vector<CVexDbEntity*> made;
        for (const CVexDbObjectId& id : *view->displayedIdSet()) {
            made.push_back(static_cast<CVexDbEntity*>(id.getPObject()));
        }
        made.erase(made.begin(), made.begin() + static_cast<std::ptrdiff_t>(before));
        ASSERT_EQ(VexDb::kLine, made.front()->classType());
        CVexDbPolyline joined(static_cast<const CVexDbLine&>(*made.front()), true);
        VexEntitySet pieces(made.begin() + 1, made.end());
        handler().CommandJoinPolyline(&joined, pieces, false);
        EXPECT_TRUE(pieces.empty()) << round;
        EXPECT_TRUE(joined.gePolyline().isEqualTo(whole->gePolyline(), 1e-6))
            << wordsOf(joined) << "\n"
            << wordsOf(*whole);
    }
}

// Single edits.

class RecordedEditTest : public EditingTest {
protected:
    CVexDbPolyline& put(std::initializer_list<Corner> corners, bool closed = false)
    {
        auto* const polyline = add(new CVexDbPolyline(0, database.get()));
        setCorners(*polyline, corners, closed);
        start = bytes();
        return *polyline;
    }
};

TEST_F(RecordedEditTest, WhatChangesNothingIsNotRecorded)
{
    CVexDbPolyline& open = put({{5, 30}, {15, 30}});
    EXPECT_FALSE(closeRecorded(open));
    EXPECT_FALSE(openRecorded(open));
    EXPECT_FALSE(changeStartRecorded(open, 0));
    EXPECT_FALSE(changeStartRecorded(open, 2));
    EXPECT_FALSE(insertRecorded(open, 3, {1, 1}));
    EXPECT_FALSE(removeRecorded(open, 1));
    EXPECT_FALSE(flipRecorded(open, 1));
    EXPECT_FALSE(flipRecorded(open, 7));
    expectUntouched();
}

TEST_F(RecordedEditTest, AppendingIsInsertingBehindTheLast)
{
    CVexDbPolyline& open = put({{5, 30}, {15, 30}});
    EXPECT_TRUE(insertRecorded(open, 2, {20, 30}));
    EXPECT_EQ("5,30 15,30 20,30", wordsOf(open));
    expectExactUndo();
}

TEST_F(RecordedEditTest, APolylineOutsideTheDrawingIsNotRecorded)
{
    CVexDbPolyline loose(0, database.get());
    setCorners(loose, {{5, 30}, {15, 30}, {15, 35}});
    EXPECT_TRUE(closeRecorded(loose));
    EXPECT_TRUE(reverseRecorded(loose));
    EXPECT_TRUE(flipRecorded(loose, 0));
    loose.DivideSegment(3, 1, true);
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(RecordedEditTest, OneThatReturnsToItsStartByItsPointsMayStartElsewhere)
{
    CVexDbPolyline& ring = put({{5, 30}, {15, 30, 0.5}, {15, 35}, {5, 30}});
    EXPECT_TRUE(changeStartRecorded(ring, 1));
    EXPECT_EQ("15,30 b0.5 15,35 5,30 15,30 b0.5", wordsOf(ring));
    expectExactUndo();
}

} // namespace
