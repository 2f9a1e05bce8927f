#include "tests/undo/undofixture.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <random>

namespace {

class PolylineUndoTest : public UndoTest {
protected:
    using Bytes = std::vector<std::byte>;

    CVexDbPolyline& put(std::initializer_list<CVexGePoint2d> points,
                        std::initializer_list<double> bulges, bool closed)
    {
        CVexGePolyline2d chain;
        chain.set(std::vector<CVexGePoint2d>(points), std::vector<double>(bulges));
        chain.setClosed(closed);
        chain.setBulgeAt(chain.numVerts() - 1, *(bulges.end() - 1));
        polyline = addTo(drawing, new CVexDbPolyline(0, &drawing));
        polyline->SetGeometry(chain);
        return *polyline;
    }
    tagUndoEditEntity about(int type, int index = -1)
    {
        tagUndoEditEntity made = edit(polyline, type);
        made.index = index;
        return made;
    }
    /// Records, does, and goes back and forth twice by the bytes; each time the newest record has
    /// the number that is its inverse.
    template <class Edit>
    void thereAndBack(const tagUndoEditEntity& made, int inverse, const Edit& change)
    {
        const Bytes before = bytes();
        undo.AddUndo(&made);
        change();
        const Bytes after = bytes();
        ASSERT_NE(before, after);
        for (int turn = 0; turn < 2; ++turn) {
            EXPECT_TRUE(undo.Undo());
            EXPECT_EQ(before, bytes());
            EXPECT_EQ(inverse, undo.redoStack().front().editType);
            EXPECT_TRUE(undo.Redo());
            EXPECT_EQ(after, bytes());
            EXPECT_EQ(made.editType, undo.undoStack().front().editType);
        }
    }
    CVexDbPolyline& putZigzag(bool closed)
    {
        return put({{0, 0}, {10, 1}, {20, -2}, {30, 3}, {15, 25}}, {0, 0.5, -1, 0.25, 2}, closed);
    }

    CVexDbPolyline* polyline = nullptr;
};

TEST_F(PolylineUndoTest, BulgeIsSwapped)
{
    putZigzag(false);
    tagUndoEditEntity made = about(kUndoChangeBulge, 1);
    made.vector.x = 0.5;
    thereAndBack(made, kUndoChangeBulge, [&] { polyline->SetBulgeAt(1, -0.75); });
}

TEST_F(PolylineUndoTest, PointIsSwappedWithItsSpareWord)
{
    putZigzag(false);
    CVexGePoint2d marked(20, -2);
    marked.tag = 77;
    polyline->SetPointAt(2, marked);
    tagUndoEditEntity made = about(kUndoMovePoint, 2);
    made.point = marked;
    thereAndBack(made, kUndoMovePoint, [&] { polyline->SetPointAt(2, {5, 5}); });
}

TEST_F(PolylineUndoTest, AddedVertexGoesAndComesBack)
{
    putZigzag(false);
    thereAndBack(about(kUndoAddVertex, 2), kUndoRemoveVertex, [&] {
        polyline->AddVertexAt(2, {1, 2}, 0, -1, -1);
    });
}

TEST_F(PolylineUndoTest, RemovedStraightVertexComesBackWithoutWidths)
{
    putZigzag(false);
    tagUndoEditEntity made = about(kUndoRemoveVertex, 0);
    made.point = CVexGePoint2d(0, 0);
    thereAndBack(made, kUndoAddVertex, [&] { polyline->RemoveVertexAt(0); });
    polyline->SetWidthsAt(1, 3, 4); // 20,-2 by now
    tagUndoEditEntity wide = about(kUndoRemoveVertex, 1);
    undo.AddUndo(&wide);
    polyline->RemoveVertexAt(1);
    undo.Undo();
    double start = 0;
    double end = 0;
    EXPECT_TRUE(polyline->GetWidthsAt(1, start, end));
    EXPECT_TRUE(start == -1.0 && end == -1.0);
}

TEST_F(PolylineUndoTest, RecordOfARemovalForgetsThePointOnceItIsBack)
{
    putZigzag(false);
    tagUndoEditEntity made = about(kUndoRemoveVertex, 1);
    made.point = CVexGePoint2d(10, 1);
    undo.AddUndo(&made);
    polyline->RemoveVertexAt(1);
    undo.Undo();
    EXPECT_POINT(0, 0, undo.redoStack().front().point);
}

TEST_F(PolylineUndoTest, ClosingComesBackWithTheBulgeThatItComputed)
{
    putZigzag(false); // the segment before the last is an arc: closing bends the last one
    thereAndBack(about(kUndoClose), kUndoOpen, [&] { polyline->SetClosed(true); });
}

TEST_F(PolylineUndoTest, OpeningComesBackWithTheClosingBulge)
{
    putZigzag(true);
    thereAndBack(about(kUndoOpen), kUndoClose, [&] { polyline->SetClosed(false); });
}

TEST_F(PolylineUndoTest, ClosingBulgeComesBackByARecordOfItsOwnToo)
{
    // As where the record of the closing is made afterwards, when the bulge has gone.
    putZigzag(false);
    const Bytes before = bytes();
    tagUndoEditEntity bulge = about(kUndoChangeBulge, 4);
    bulge.vector.x = 2;
    undo.AddUndo(&bulge);
    polyline->SetClosed(true);
    tagUndoEditEntity closing = about(kUndoClose);
    closing.continues = true;
    undo.AddUndo(&closing);
    const Bytes after = bytes();
    for (int turn = 0; turn < 2; ++turn) {
        undo.Undo();
        EXPECT_EQ(before, bytes());
        undo.Redo();
        EXPECT_EQ(after, bytes());
    }
}

TEST_F(PolylineUndoTest, ReversalIsReversed)
{
    putZigzag(false);
    thereAndBack(about(kUndoReverse), kUndoReverse, [&] { polyline->Reverse(); });
}

TEST_F(PolylineUndoTest, StartOfAClosedOneGoesBackFromEveryVertex)
{
    for (int start = 1; start < 5; ++start) { // 1 goes back by 4, which ChangeStart would reverse
        putZigzag(true);
        thereAndBack(about(kUndoChangeStart, start), kUndoChangeStart,
                     [&] { EXPECT_TRUE(polyline->ChangeStart(start)); });
    }
}

TEST_F(PolylineUndoTest, StartOfOneThatReturnsToItsStartGoesBackToo)
{
    for (int start = 1; start < 5; ++start) {
        // The end is not quite the start, and has a bulge that no segment uses: both are lost.
        put({{0, 0}, {10, 1}, {20, -2}, {30, 3}, {0.0005, 0.0005}}, {0.1, 0.5, -1, 0.25, 2}, false);
        thereAndBack(about(kUndoChangeStart, start), kUndoChangeStart,
                     [&] { EXPECT_TRUE(polyline->ChangeStart(start)); });
    }
}

TEST_F(PolylineUndoTest, StartThatWasNotChangedChangesNothing)
{
    putZigzag(false);
    const Bytes before = bytes();
    for (const int index : {0, 2, 9, -1}) {
        tagUndoEditEntity made = about(kUndoChangeStart, index);
        undo.AddUndo(&made);
        EXPECT_TRUE(undo.Undo());
        EXPECT_EQ(before, bytes());
    }
}

TEST_F(PolylineUndoTest, VerticesThatDoNotExistAreLeftAlone)
{
    putZigzag(false);
    const Bytes before = bytes();
    for (const int type : {kUndoChangeBulge, kUndoMovePoint, kUndoAddVertex, kUndoRemoveVertex}) {
        for (const int index : {-1, 99}) {
            tagUndoEditEntity made = about(type, index);
            undo.AddUndo(&made);
            EXPECT_TRUE(undo.Undo());
            EXPECT_TRUE(undo.Redo());
            EXPECT_TRUE(undo.Undo());
            EXPECT_EQ(before, bytes()) << type << ' ' << index;
        }
    }
}

TEST_F(PolylineUndoTest, CommonEditsAreThoseOfEveryEntity)
{
    putZigzag(true);
    const CVexGePolyline2d before = polyline->gePolyline();
    move(polyline, {3, 4});
    mirror(polyline, {0, 0}, {0, 1});
    rotate(polyline, {1, 2}, 0.7);
    scale(polyline, {0, 0}, 2, 2);
    EXPECT_EQ(VexDb::kEntity, static_cast<VexDb::ClassType>(undo.undoStack().front().classType));
    while (undo.Undo()) {
    }
    EXPECT_TRUE(before.isEqualTo(polyline->gePolyline(), 1e-9));
}

TEST_F(PolylineUndoTest, GripsFollow)
{
    putZigzag(false);
    tagUndoEditEntity made = about(kUndoMovePoint, 0);
    made.point = CVexGePoint2d(0, 0);
    undo.AddUndo(&made);
    polyline->SetPointAt(0, {5, 5});
    EXPECT_POINT(5, 5, polyline->getGripPoint(0));
    undo.Undo();
    EXPECT_POINT(0, 0, polyline->getGripPoint(0));
}

/// Edits one polyline as the commands do, each edit a step.
class PolylineRandomUndoTest : public PolylineUndoTest {
protected:
    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    double within(double from, double to)
    {
        return from + (to - from) * static_cast<double>(m_random() >> 11) / 9007199254740992.0;
    }
    CVexGePoint2d point() { return {within(-100, 100), within(-100, 100)}; }
    int vertex() { return below(static_cast<int>(polyline->NumVerts())); }
    void putAny()
    {
        CVexGePolyline2d chain;
        for (int count = 3 + below(30); count > 0; --count) {
            chain.appendVertex(point(), below(2) == 0 ? 0.0 : within(-1.5, 1.5));
        }
        chain.setClosed(below(2) == 0);
        polyline = addTo(drawing, new CVexDbPolyline(0, &drawing));
        polyline->SetGeometry(chain);
    }
    void cut(bool extend)
    {
        CVexDbLine line(point(), point());
        CVexDbCircle circle(point(), within(5, 60));
        std::vector<CVexDbEntity*> others = {&line, &circle};
        CVexGePoint2d pick = point();
        if (extend) {
            polyline->Extend(pick, others, kGeEpsilon);
        } else {
            delete polyline->Trim(pick, others, kGeEpsilon);
        }
    }
    void movePoint()
    {
        tagUndoEditEntity made = about(kUndoMovePoint, vertex());
        polyline->GetPointAt(static_cast<unsigned>(made.index), made.point);
        undo.AddUndo(&made);
        polyline->SetPointAt(static_cast<unsigned>(made.index), point());
    }
    void bend()
    {
        tagUndoEditEntity made = about(kUndoChangeBulge, vertex());
        made.vector.x = polyline->GetBulgeAt(static_cast<unsigned>(made.index));
        undo.AddUndo(&made);
        polyline->SetBulgeAt(static_cast<unsigned>(made.index), within(-2, 2));
    }
    void changeStart()
    {
        const tagUndoEditEntity made = about(kUndoChangeStart, vertex());
        if (polyline->Closed() || made.index + 1 == static_cast<int>(polyline->NumVerts())) {
            undo.AddUndo(&made);
            polyline->ChangeStart(made.index);
        }
    }
    void turnClosed()
    {
        const bool isClosed = polyline->IsClosed();
        const tagUndoEditEntity made = about(isClosed ? kUndoOpen : kUndoClose);
        undo.AddUndo(&made);
        polyline->SetClosed(!isClosed);
    }
    void editOnce()
    {
        switch (below(12)) {
        case 0:
        case 1: cut(false); break;
        case 2: cut(true); break;
        case 3: polyline->DivideSegment(2 + below(4), vertex(), false); break;
        case 4: polyline->Fillet(within(0.1, 3)); break;
        case 5:
        case 6: polyline->Fillet(vertex(), within(0.1, 20), 0.1); break;
        case 7: turnClosed(); break;
        case 8: changeStart(); break;
        case 9: bend(); break;
        case 10: movePoint(); break;
        default:
            undo.AddUndo(&static_cast<const tagUndoEditEntity&>(about(kUndoReverse)));
            polyline->Reverse();
            break;
        }
    }

private:
    std::mt19937_64 m_random{20261121};
};

TEST_F(PolylineRandomUndoTest, FiftyEditsComeBackByteForByteAndGoForthAgain)
{
    for (int round = 0; round < 40; ++round) {
        putAny();
        undo.clear();
        const Bytes before = bytes();
        for (int i = 0; i < 50; ++i) {
            editOnce();
        }
        const Bytes after = bytes();
        for (int turn = 0; turn < 2; ++turn) {
            while (undo.Undo()) {
            }
            ASSERT_EQ(before, bytes()) << "round " << round;
            while (undo.Redo()) {
            }
            ASSERT_EQ(after, bytes()) << "round " << round;
        }
    }
}

} // namespace
