#include "shapefixture.h"
#include "tests/vexdb/polylinewords.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbtracker/vexpolylinetracker.h"

#include <initializer_list>

namespace {

/// A polyline of the drawing, selected.
class PolylineGripTest : public ShapeTrackerTest {
protected:
    CVexDbPolyline& put(std::initializer_list<Corner> corners, bool closed = false)
    {
        auto* const made = new CVexDbPolyline(0, database.get());
        setCorners(*made, corners, closed);
        polyline = ShapeTrackerTest::select(made);
        return *made;
    }
    CVexPolylineTracker& marker() { return static_cast<CVexPolylineTracker&>(tracker()); }
    /// Where the mark stands: its diagonals, in XOR and not taken off.
    std::vector<std::vector<CPoint>> marks()
    {
        std::vector<std::vector<CPoint>> found;
        for (const VexStroke& stroke : leftOver()) {
            const bool isDiagonal = stroke.points.size() == 2 &&
                                    stroke.points[0].x != stroke.points[1].x &&
                                    stroke.points[0].y != stroke.points[1].y;
            if (stroke.color == kHandle && isDiagonal) {
                found.push_back(stroke.points);
            }
        }
        return found;
    }

    CVexDbPolyline* polyline = nullptr;
};

TEST_F(PolylineGripTest, TheFirstGripTakesThePolylineAlong)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}});
    dragBackAndForth({10, 10}, {12, 13});
    EXPECT_EQ("12,13 22,13 b1 22,23", wordsOf(*polyline));
    EXPECT_EQ(std::vector<int>{kUndoMove}, newestStep());
    expectNothingLeftOver();
}

TEST_F(PolylineGripTest, AVertexIsDraggedByItsGrip)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}, {30, 20}});
    dragBackAndForth({20, 10}, {25, 12});
    EXPECT_EQ("10,10 25,12 b1 20,20 30,20", wordsOf(*polyline));
    EXPECT_EQ(std::vector<int>{kUndoMovePoint}, newestStep());
    EXPECT_EQ(1, newest().index);
    EXPECT_POINT(20, 10, newest().point);
    dragBackAndForth({30, 20}, {30, 25}); // behind the grip of the arc's middle
    EXPECT_EQ("10,10 25,12 b1 20,20 30,25", wordsOf(*polyline));
    EXPECT_EQ(3, newest().index);
    expectNothingLeftOver();
}

TEST_F(PolylineGripTest, TheMiddleOfAnArcBendsIt)
{
    put({{10, 10, 1}, {20, 10}, {30, 10}});
    dragBackAndForth({15, 5}, {15, 7.5});
    EXPECT_EQ("10,10 b0.5 20,10 30,10", wordsOf(*polyline));
    EXPECT_EQ(std::vector<int>{kUndoChangeBulge}, newestStep());
    EXPECT_EQ(0, newest().index);
    EXPECT_EQ(1.0, newest().vector.x);
}

TEST_F(PolylineGripTest, AcrossTheChordTheArcFollowsThePointer)
{
    put({{10, 10, 1}, {20, 10}, {30, 10}});
    drag({15, 5}, {15, 15});
    EXPECT_EQ("10,10 b-1 20,10 30,10", wordsOf(*polyline));
    drag({15, 15}, {15, 7});
    EXPECT_EQ("10,10 b0.6 20,10 30,10", wordsOf(*polyline));
    drag({15, 7}, {15, 10}); // on the chord itself
    EXPECT_EQ("10,10 20,10 30,10", wordsOf(*polyline));
}

TEST_F(PolylineGripTest, TheClosingArcGoesToTheFirstVertex)
{
    put({{10, 10}, {20, 10}, {20, 20}, {10, 20, 1}}, true);
    dragBackAndForth({5, 15}, {7.5, 15});
    EXPECT_EQ("10,10 20,10 20,20 10,20 b0.5 closed", wordsOf(*polyline));
    EXPECT_EQ(3, newest().index);
}

TEST_F(PolylineGripTest, AnArcWithoutWayBetweenItsEndsHasNoMiddleToDrag)
{
    put({{10, 10}, {20, 10, 1}, {20, 10}, {30, 10}});
    drag({20, 10}, {20, 15});
    EXPECT_EQ("10,10 20,15 b1 20,10 30,10", wordsOf(*polyline));
}

TEST_F(PolylineGripTest, WhatIsTypedDuringADragIsATarget)
{
    put({{10, 10}, {20, 10}, {30, 10}});
    moveAt(25, 15);
    type(L"20,18\n");
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(20, 10)));
    EXPECT_EQ("10,10 20,18 30,10", wordsOf(*polyline));
    moveAt(25, 15);
    type(L"5\n"); // to the right of where the grip was taken
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(20, 18)));
    EXPECT_EQ("10,10 25,18 30,10", wordsOf(*polyline));
    EXPECT_EQ(2u, undo().undoStack().size());
    expectNothingLeftOver();
}

TEST_F(PolylineGripTest, EnterDuringADragTakesWhatIsShown)
{
    put({{10, 10}, {20, 10}, {30, 10}});
    moveAt(25, 15);
    type(L"\n");
    EXPECT_EQ(InputEnter, tracker().Track(&display, px(20, 10)));
    EXPECT_EQ("10,10 25,15 30,10", wordsOf(*polyline));
    EXPECT_EQ(1u, undo().undoStack().size());
    expectNothingLeftOver();
}

TEST_F(PolylineGripTest, EnterBehindArrowKeysTakesTheirPlaceOnce)
{
    put({{10, 10}, {20, 10}, {30, 10}});
    moveAt(12, 10);
    arrow(VK_RIGHT);
    type(L"\n");
    EXPECT_EQ(InputEnter, tracker().Track(&display, px(10, 10)));
    EXPECT_EQ("12.1,10 22.1,10 32.1,10", wordsOf(*polyline));
    EXPECT_EQ(1u, undo().undoStack().size());
}

TEST_F(PolylineGripTest, TransformsGoByTheBand)
{
    put({{10, 10}, {20, 10, 0.5}, {20, 20}});
    EXPECT_EQ(InputPoint, transform(VexDb::TransFormRotate, 10, 20));
    EXPECT_EQ("10,10 10,20 b0.5 0,20", wordsOf(*polyline));
    undo().Undo();
    EXPECT_EQ(InputPoint, transform(VexDb::TransFormMirror, 20, 10));
    EXPECT_EQ("10,10 20,10 b-0.5 20,0", wordsOf(*polyline));
    undo().Undo();
    settings().m_dScalePercent = 10;
    EXPECT_EQ(InputPoint, transform(VexDb::TransFormScale, 15, 10));
    EXPECT_EQ("10,10 15,10 b0.5 15,15", wordsOf(*polyline));
    undo().Undo();
    EXPECT_EQ("10,10 20,10 b0.5 20,20", wordsOf(*polyline));
}

TEST_F(PolylineGripTest, ANumberForARotationOrAScalingStaysANumber)
{
    put({{10, 10}, {20, 10}});
    for (const auto option : {VexDb::TransFormRotate, VexDb::TransFormScale}) {
        tracker().SetTransOpt(option);
        tracker().SetStartPoint({10, 10}, false);
        type(L"2\n");
        EXPECT_EQ(InputNumber, tracker().Track(&display, {0, 0}, -1));
        type(L"\n"); // nor does a scaling without a way make it nothing
        EXPECT_EQ(InputEnter, tracker().Track(&display, {0, 0}, -1));
        EXPECT_EQ("10,10 20,10", wordsOf(*polyline));
    }
}

// The mark.

TEST_F(PolylineGripTest, TheMarkIsTwoDiagonalsAcrossTheGrip)
{
    put({{10, 10}, {20, 10}, {30, 10}});
    EXPECT_EQ(-1, marker().currentVertex());
    EXPECT_TRUE(marks().empty());
    marker().DrawSelBoxByProperty(1);
    EXPECT_EQ(1, marker().currentVertex());
    EXPECT_EQ(
        (std::vector<std::vector<CPoint>>{{{196, 304}, {204, 296}}, {{196, 296}, {204, 304}}}),
        marks());
    marker().DrawSelBoxByProperty();
    EXPECT_TRUE(marks().empty()) << "the second time takes it off";
}

TEST_F(PolylineGripTest, TheMarkGoesToTheVertexThatIsNamed)
{
    put({{10, 10}, {20, 10}, {30, 10}});
    marker().DrawSelBoxByProperty(1);
    marker().DrawSelBoxByProperty(2);
    ASSERT_EQ(2u, marks().size());
    EXPECT_EQ(CPoint(296, 304), marks()[0][0]);
    for (const int none : {-1, 3, 1000}) {
        marker().DrawSelBoxByProperty(none);
        EXPECT_TRUE(marks().empty()) << none;
    }
}

TEST_F(PolylineGripTest, TheMarkFollowsItsVertexAndGoesWithTheSelection)
{
    put({{10, 10}, {20, 10}, {30, 10}});
    marker().DrawSelBoxByProperty(1);
    drag({20, 10}, {20, 15});
    ASSERT_EQ(2u, marks().size());
    EXPECT_EQ(CPoint(196, 254), marks()[0][0]);
    expectNothingLeftOver();
}

TEST_F(PolylineGripTest, ARepaintShowsTheMarkAgain)
{
    put({{10, 10}, {20, 10}, {30, 10}});
    marker().DrawSelBoxByProperty(1);
    dc.clear();
    handler().TrackerDraw(&dc);
    EXPECT_EQ(2u, marks().size());
    tracker().UnDrawGripBox();
    EXPECT_TRUE(marks().empty());
}

/// A regular polygon being drawn from (10, 10).
class PolygonCreationTest : public TrackerTest {
protected:
    /// What the band to a point makes of the option word.
    std::string draw(unsigned long option, double x, double y)
    {
        CVexDbPolyline polygon(0, database.get());
        CVexPolylineTracker drawer(&display, &polygon, VexDb::TransFormNone, true);
        drawer.SetOption(option);
        drawer.SetStartPoint({10, 10}, true);
        moveAt(30, 30);
        clickAt(x, y);
        EXPECT_EQ(InputPoint, drawer.Track(&display, {0, 0}));
        return wordsOf(polygon);
    }
};

TEST_F(PolygonCreationTest, TheOptionWordTellsKindAndSides)
{
    EXPECT_EQ("10,10 20,10 20,20 10,20", draw(10004, 20, 10));
    EXPECT_EQ("20,10 10,20 0,10 10,0", draw(20004, 20, 10));
    EXPECT_EQ("20,20 0,20 0,0 20,0", draw(30004, 20, 10));
}

TEST_F(PolygonCreationTest, ATriangleByItsEdgeLiesToTheLeftOfTheDrag)
{
    EXPECT_EQ("10,10 20,10 15,18.660254", draw(10003, 20, 10));
    EXPECT_EQ("10,10 10,20 1.339746,15", draw(10003, 10, 20));
}

TEST_F(PolygonCreationTest, AnotherOptionDoesNothing)
{
    for (const unsigned long option :
         {0ul, 4ul, 9999ul, 10000ul, 10002ul, 20000ul, 20002ul, 30001ul, 40004ul, 90005ul}) {
        EXPECT_EQ("", draw(option, 20, 10)) << option;
    }
}

TEST_F(PolygonCreationTest, WithoutALengthItHasNoSize)
{
    EXPECT_EQ("10,10 10,10 10,10", draw(10003, 10, 10));
    EXPECT_EQ("10,10 10,10 10,10", draw(20003, 10, 10));
}

/// A band of a polyline being drawn from (10, 10), the answers to what is typed.
class PolylineBandTest : public TrackerTest {
protected:
    PolylineBandTest()
    {
        line.set({10, 10}, {11, 10});
        drawer.SetStartPoint({10, 10}, true);
        drawer.SetKeyWords(L"U");
    }
    int track(std::wstring_view typed)
    {
        moveAt(30, 20);
        type(typed);
        return drawer.Track(&display, {0, 0});
    }

    CVexDbLine line{database.get()};
    CVexPolylineTracker drawer{&display, &line, VexDb::TransFormNone, true};
};

TEST_F(PolylineBandTest, ATypedPointCountsAsAClick)
{
    EXPECT_EQ(InputPoint, track(L"20.0625,13\n"));
    EXPECT_LINE(10, 10, 20.0625, 13, line);
    EXPECT_POINT(20.0625, 13, lastPoint());
    EXPECT_EQ(InputPoint, track(L"5<90\n"));
    EXPECT_LINE(10, 10, 10, 15, line);
}

TEST_F(PolylineBandTest, ANumberGoesToTheRight)
{
    EXPECT_EQ(InputPoint, track(L"7.5\n"));
    EXPECT_LINE(10, 10, 17.5, 10, line);
    EXPECT_POINT(17.5, 10, lastPoint());
    EXPECT_EQ(InputPoint, track(L"-2\n"));
    EXPECT_LINE(10, 10, 8, 10, line);
}

TEST_F(PolylineBandTest, ATypedPlaceIsNotRoundedToTheGrid)
{
    settings().m_bGridSnap = true;
    settings().m_dGridStep = 5;
    EXPECT_EQ(InputPoint, track(L"21,13\n"));
    EXPECT_LINE(10, 10, 21, 13, line);
    EXPECT_EQ(InputPoint, track(L"7\n"));
    EXPECT_LINE(10, 10, 17, 10, line);
}

TEST_F(PolylineBandTest, EnterTakesThePlaceAndStaysAnEnter)
{
    EXPECT_EQ(InputEnter, track(L"\n"));
    EXPECT_LINE(10, 10, 30, 20, line);
    EXPECT_POINT(30, 20, lastPoint());
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(PolylineBandTest, TextsKeysAndCancelsAreTheCommandsToTake)
{
    EXPECT_EQ(InputString, track(L"ZZ\n"));
    EXPECT_EQ(InputKeyword, track(L"u"));
    EXPECT_EQ(L'U', drawer.resBuffer().value.character);
    moveAt(20, 20);
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, drawer.Track(&display, {0, 0}));
    EXPECT_LINE(10, 10, 11, 10, line);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(PolylineBandTest, AnAcceptedBandStaysOnScreen)
{
    EXPECT_EQ(InputPoint, track(L"20,10\n"));
    ASSERT_EQ(1u, leftOver().size());
    EXPECT_EQ((std::vector{px(10, 10), px(20, 10)}), leftOver()[0].points);
}

TEST_F(PolylineBandTest, TheCommandMaySwapTheBandForAnArc)
{
    CVexDbArc arc(database.get());
    arc.set({10, 10}, {11, 10}, 0.1);
    drawer.SetEntity(&arc);
    drawer.SetOption(CVexPolylineTracker::kThreePoints);
    drawer.SetArcPoint({15, 15});
    EXPECT_EQ(InputPoint, track(L"20,10\n"));
    EXPECT_POINT(15, 10, arc.Center());
    drawer.SetPrevEntity(&line); // ends at (11, 10), along x
    drawer.SetStartPoint({11, 10}, true);
    drawer.SetOption(CVexPolylineTracker::kTangent);
    EXPECT_EQ(InputPoint, track(L"16,15\n"));
    EXPECT_POINT(11, 15, arc.Center());
}

TEST_F(PolylineBandTest, BeforeItsSecondPointAnArcIsNotReshapedNorSeen)
{
    CVexDbArc arc(database.get());
    arc.set({10, 10}, {11, 10}, 0.1);
    drawer.SetEntity(&arc);
    EXPECT_EQ(InputPoint, track(L"20,10\n"));
    EXPECT_POINT(10.5, 12.475, arc.Center());
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(PolylineBandTest, APolylineHasATrackerOfItsKind)
{
    CVexDbPolyline polyline(0, database.get());
    const std::unique_ptr<CVexDbEntityTracker> made(
        handler().CreateTracker(&display, &polyline, VexDb::TransFormNone, true));
    ASSERT_NE(nullptr, made);
    EXPECT_EQ(CVexDbEntityTracker::TrackerPolyline, made->TrackType());
}

} // namespace
