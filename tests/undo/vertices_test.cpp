#include "tests/undo/undofixture.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <array>
#include <deque>
#include <random>

namespace {

/// Steps of so many vertices that the polyline is not edited record by record any more.
class LongPolylineUndoTest : public UndoTest {
protected:
    static constexpr unsigned kLong = 300;

    /// A zigzag with bends, and spare words and widths that no two vertices share.
    CVexDbPolyline& put(double bend = 0.3)
    {
        CVexGePolyline2d chain;
        for (unsigned i = 0; i < kLong; ++i) {
            CVexGePoint2d point(10.0 * i, i % 2 == 0 ? 0.0 : 10.0);
            point.tag = static_cast<std::int32_t>(i);
            chain.appendVertex(point, i % 3 == 0 ? bend : 0.0);
        }
        auto* const made = addTo(drawing, new CVexDbPolyline(0, &drawing));
        made->SetGeometry(chain);
        return *made;
    }
    static std::vector<std::byte> shapeOf(const CVexDbPolyline& polyline)
    {
        CMemFile file{CString(L"shape")};
        polyline.gePolyline().save(&file);
        return file.bytes();
    }
    /// The step goes back and forth twice by the bytes.
    void expectThereAndBack(const std::vector<std::byte>& before)
    {
        const auto after = bytes();
        ASSERT_FALSE(before == after);
        for (int turn = 0; turn < 2; ++turn) {
            EXPECT_TRUE(undo.Undo());
            EXPECT_TRUE(undo.undoStack().empty()) << "it is one step";
            EXPECT_TRUE(before == bytes());
            EXPECT_TRUE(undo.Redo());
            EXPECT_TRUE(after == bytes());
        }
    }
};

TEST_F(LongPolylineUndoTest, RoundedCornersComeBackByteForByte)
{
    CVexDbPolyline& polyline = put();
    const auto before = bytes();
    polyline.Fillet(1.0);
    EXPECT_EQ(2 * kLong - 2, polyline.NumVerts());
    expectThereAndBack(before);
}

TEST_F(LongPolylineUndoTest, ATrimmedHeadComesBackByteForByte)
{
    CVexDbPolyline& polyline = put();
    const auto before = bytes();
    CVexDbLine cutter({2904, -50}, CVexGePoint2d(2904, 50));
    std::vector<CVexDbEntity*> cutters = {&cutter};
    CVexGePoint2d pick(0, 0);
    polyline.Trim(pick, cutters, kGeEpsilon);
    EXPECT_EQ(10u, polyline.NumVerts());
    expectThereAndBack(before);
}

TEST_F(LongPolylineUndoTest, WidthsOfVerticesThatStayAreKept)
{
    CVexDbPolyline& polyline = put(0.0);
    polyline.SetWidthsAt(299, 3.0, 4.0);
    polyline.Fillet(1.0);
    undo.Undo();
    double start = 0.0;
    double end = 0.0;
    EXPECT_TRUE(polyline.GetWidthsAt(299, start, end));
    EXPECT_EQ(3.0, start);
    EXPECT_EQ(4.0, end);
}

TEST_F(LongPolylineUndoTest, PiecesOfAJoinComeBackAndTheirVerticesGo)
{
    CVexDbPolyline& polyline = put();
    VexEntitySet pieces;
    for (int i = 0; i < 40; ++i) { // at both ends by turns
        const double x = i % 2 == 0 ? 2990.0 + 5.0 * i : -5.0 * (i - 1);
        const double y = i == 0 ? 10.0 : 0.0;
        const double on = i % 2 == 0 ? 10.0 : -10.0;
        pieces.insert(addLine({x, y}, {x + on, 0.0}));
    }
    const auto before = bytes();
    drawing.commandHandler().CommandJoinPolyline(&polyline, pieces, true);
    EXPECT_EQ(kLong + 40, polyline.NumVerts());
    expectThereAndBack(before);
}

/// A step against the same records one by one, each a step of its own.
class StepAgainstRecordsTest : public LongPolylineUndoTest {
protected:
    using Records = std::deque<tagUndoEditEntity>;

    tagUndoEditEntity any(unsigned count)
    {
        constexpr std::array kTypes = {
            kUndoAddVertex,    kUndoRemoveVertex, kUndoChangeBulge,  kUndoMovePoint, kUndoAddVertex,
            kUndoRemoveVertex, kUndoAddVertex,    kUndoRemoveVertex, kUndoReverse,   kUndoMove};
        tagUndoEditEntity made;
        // The last two kinds are rare, as they end what a run of vertices has gathered.
        made.editType = kTypes[m_random() % (m_random() % 20 == 0 ? 10 : 8)];
        made.index = static_cast<std::int32_t>(m_random() % (count + 3)); // some do not exist
        made.point.set(static_cast<double>(m_random() % 1000), static_cast<double>(m_random() % 9));
        made.point.tag = static_cast<std::int32_t>(m_random() % 100);
        made.vector.set(static_cast<double>(m_random() % 100) / 64.0, 0.5);
        return made;
    }
    /// Undoes the records about `first` and `second` by turns; what they have become.
    Records undone(const Records& records, const CVexDbPolyline& first,
                   const CVexDbPolyline& second, bool asOneStep)
    {
        undo.clear();
        for (std::size_t i = 0; i < records.size(); ++i) {
            tagUndoEditEntity made = records[i];
            made.entity = (i / 70 % 2 == 0 ? first : second).objectId();
            made.continues = asOneStep && i > 0;
            undo.AddUndo(&made);
        }
        EXPECT_TRUE(undo.Undo());
        EXPECT_EQ(asOneStep, undo.undoStack().empty());
        while (undo.Undo()) {
        }
        return undo.redoStack();
    }

    std::mt19937_64 m_random{31};
};

TEST_F(StepAgainstRecordsTest, GivesTheSameShapesAndTheSameRecords)
{
    for (int round = 0; round < 20; ++round) {
        Records records;
        for (int i = 0; i < 500; ++i) {
            records.push_back(any(kLong));
        }
        const std::array<CVexDbPolyline*, 4> of = {&put(), &put(), &put(), &put()};
        const Records step = undone(records, *of[0], *of[1], true);
        const Records single = undone(records, *of[2], *of[3], false);
        ASSERT_TRUE(shapeOf(*of[0]) == shapeOf(*of[2])) << "round " << round;
        ASSERT_TRUE(shapeOf(*of[1]) == shapeOf(*of[3])) << "round " << round;
        ASSERT_EQ(step.size(), single.size());
        for (std::size_t i = 0; i < step.size(); ++i) {
            ASSERT_EQ(single[i].editType, step[i].editType) << i;
            ASSERT_EQ(single[i].point.x, step[i].point.x) << i;
            ASSERT_EQ(single[i].point.tag, step[i].point.tag) << i;
            ASSERT_EQ(single[i].vector.x, step[i].vector.x) << i;
        }
    }
}

} // namespace
