#include "tests/vexdb/polylineeditfixture.h"

#include <iterator>

namespace {

constexpr double kQuarter = 0.41421356237309503; // the bulge of a quarter circle

// Half circles below and above the x axis, then a straight segment.
constexpr auto kWave = {Corner{0, 0, 1}, Corner{10, 0, -1}, Corner{20, 0}, Corner{30, 0}};
constexpr auto kSteps = {Corner{0, 0}, Corner{10, 0}, Corner{10, 10}, Corner{20, 10}};
constexpr auto kSquare = {Corner{0, 0}, Corner{10, 0}, Corner{10, 10}, Corner{0, 10}};

struct TrimCase {
    const char* name;
    std::initializer_list<Corner> corners;
    bool closed;
    std::vector<CVexGeLine2d> cutters;
    CVexGePoint2d pick;
    const char* left;
    const char* records;
};

void PrintTo(const TrimCase& row, std::ostream* out)
{
    *out << row.name;
}

CVexGeLine2d uprightLine(double x)
{
    return {CVexGePoint2d(x, -50), CVexGePoint2d(x, 50)};
}

CVexGeLine2d levelLine(double y)
{
    return {CVexGePoint2d(-50, y), CVexGePoint2d(50, y)};
}

const CVexGeLine2d kThroughBottom({5, -5}, CVexGePoint2d(5, 5)); // of the square

const TrimCase kCases[] = {
    {"HeadWithinTheFirstSegment",
     kSteps,
     false,
     {uprightLine(5)},
     {2, 0},
     "5,0 10,0 10,10 20,10",
     "18[0]@0,0"},
    {"HeadWithAVertex",
     kSteps,
     false,
     {levelLine(5)},
     {2, 0},
     "10,5 10,10 20,10",
     "27[0]@0,0 18[0]@10,0"},
    {"HeadWithinACounterClockwiseArc",
     kWave,
     false,
     {uprightLine(5)},
     {1, -3},
     "5,-5 b0.414214 10,0 b-1 20,0 30,0",
     "18[0]@0,0 15[0]=1"},
    {"HeadWithinAClockwiseArc",
     kWave,
     false,
     {uprightLine(15)},
     {1, -3},
     "15,5 b-0.414214 20,0 30,0",
     "15[0]=1 27[0]@0,0 18[0]@10,0 15[0]=-1"},
    {"TailWithinTheLastSegment",
     kSteps,
     false,
     {uprightLine(15)},
     {18, 10},
     "0,0 10,0 10,10 15,10",
     "18[3]@20,10"},
    {"TailWithVertices",
     kSteps,
     false,
     {uprightLine(5)},
     {18, 10},
     "0,0 5,0",
     "27[3]@20,10 27[2]@10,10 18[1]@10,0"},
    {"TailWithinAClockwiseArc",
     kWave,
     false,
     {uprightLine(15)},
     {28, 0},
     "0,0 b1 10,0 b-0.414214 15,5",
     "27[3]@30,0 18[2]@20,0 15[1]=-1"},
    {"TailWithinACounterClockwiseArcTakesABulgeAway", // the vertex left keeps the one it had
     kWave,
     false,
     {uprightLine(5)},
     {28, 0},
     "0,0 b0.414214 5,-5 b-1",
     "27[3]@30,0 27[2]@20,0 18[1]@10,0 15[0]=1"},
    {"PieceBetweenTwoCuts",
     kWave,
     false,
     {uprightLine(25), uprightLine(5)},
     {15, 4},
     "0,0 b0.414214 5,-5 b-1 and 25,0 30,0",
     "27[3]@30,0 27[2]@20,0 18[1]@10,0 15[0]=1"},
    {"PieceOfOneArc",
     kWave,
     false,
     {levelLine(3)}, // at 11 and 19
     {15, 5},
     "0,0 b1 10,0 b-0.162278 11,3 and 19,3 b-0.162278 20,0 30,0",
     "27[3]@30,0 18[2]@20,0 15[1]=-1"},
    {"ClosedWithOneCutBeforeIt",
     kSquare,
     true,
     {kThroughBottom},
     {2, 0},
     "5,0 10,0 10,10 0,10 0,0",
     "15[3]=0 17 26[4] 18[0]@0,0"},
    {"ClosedWithOneCutBehindIt",
     kSquare,
     true,
     {kThroughBottom},
     {8, 0},
     "0,0 5,0",
     "15[3]=0 17 26[4] 27[4]@0,0 27[3]@0,10 27[2]@10,10 18[1]@10,0"},
    {"ClosedBetweenTwoCuts",
     kSquare,
     true,
     {uprightLine(5)},
     {10, 5},
     "0,0 5,0 and 5,10 0,10 0,0",
     "15[3]=0 17 26[4] 27[4]@0,0 27[3]@0,10 27[2]@10,10 18[1]@10,0"},
    {"ClosedOnItsClosingSegment",
     kSquare,
     true,
     {levelLine(5)},
     {0, 2},
     "0,0 10,0 10,10 0,10 0,5",
     "15[3]=0 17 26[4] 18[4]@0,0"},
};

class PolylineTrimTableTest : public PolylineEditTest,
                              public testing::WithParamInterface<TrimCase> {};

TEST_P(PolylineTrimTableTest, LeavesRecordsAndComesBack)
{
    const TrimCase& row = GetParam();
    put(row.corners, row.closed);
    std::vector<CVexDbEntity*> cutters;
    for (const CVexGeLine2d& line : row.cutters) {
        cutters.push_back(cutter(line.startPoint(), line.endPoint()));
    }
    editThereAndBack([&] {
        EXPECT_EQ(row.left, trim(row.pick, cutters));
        EXPECT_EQ(row.records, records());
    });
}

INSTANTIATE_TEST_SUITE_P(Steps, PolylineTrimTableTest, testing::ValuesIn(kCases),
                         [](const auto& row) { return std::string(row.param.name); });

using PolylineTrimTest = PolylineEditTest;

TEST_F(PolylineTrimTest, ClosingArcKeepsItsBulgeAndWidthsAndOneUndoClosesItAgain)
{
    put({{0, 0}, {10, 0, 1}, {10, 10, 0.25, 2, 3}}, true);
    editThereAndBack([&] {
        EXPECT_EQ("5,0 10,0 b1 10,10 b0.25 0,0", trim({2, 0}, {cutter({5, -1}, {5, 1})}));
        double start = 0;
        double end = 0;
        EXPECT_TRUE(polyline->GetWidthsAt(2, start, end));
        EXPECT_EQ(2.0, start);
        EXPECT_EQ(3.0, end);
    });
}

TEST_F(PolylineTrimTest, FillOfAClosedOneNoLongerShowsButStaysStored)
{
    put(kSquare, true).SetFill(true);
    trim({2, 0}, {cutter({5, -5}, {5, 5})});
    EXPECT_FALSE(polyline->IsFill());
    drawing.undoHandler().Undo();
    EXPECT_TRUE(polyline->IsFill());
}

TEST_F(PolylineTrimTest, WithoutACutNothingIsTouched)
{
    put(kSquare, true);
    const std::vector<std::byte> before = saved(*polyline);
    EXPECT_EQ("0,0 10,0 10,10 0,10 closed", trim({2, 0}, {upright(20)}));
    EXPECT_EQ("0,0 10,0 10,10 0,10 closed", trim({2, 0}, {}));
    EXPECT_EQ(before, saved(*polyline));
    EXPECT_EQ("", records());
}

TEST_F(PolylineTrimTest, CutNearAVertexTakesTheVertex)
{
    put(kSteps);
    EXPECT_EQ("10,0 10,10 20,10", trim({2, 0}, {cutter({9.9995, -5}, {9.9995, 5})}));
    EXPECT_POINT(10, 0, polyline->gePolyline().vertices().front());
}

TEST_F(PolylineTrimTest, CutNearTheEndIsWithinItsSegmentAndNotTheEnd)
{
    // By its parameter, 0.9995, the kernel would take the end for it.
    put({{0, 0}, {1000, 0}, {2000, 0}});
    EXPECT_EQ("0,0 1000,0 1999,0", trim({1999.8, 0}, {upright(1999)}));
}

TEST_F(PolylineTrimTest, CutAtAnEndTakesNothingOff)
{
    put(kSteps);
    EXPECT_EQ("0,0 10,0 10,10 20,10", trim({5, 0}, {upright(0), upright(20)}));
    EXPECT_EQ("", records());
    EXPECT_EQ("5,0 10,0 10,10 20,10", trim({2, 0}, {upright(0), upright(5)}));
}

TEST_F(PolylineTrimTest, PickOnTheOnlyCutLosesTheStart)
{
    put(kSteps);
    EXPECT_EQ("5,0 10,0 10,10 20,10", trim({5, 0}, {upright(5)}));
}

TEST_F(PolylineTrimTest, PickOnAMiddleCutLosesThePiecesOnBothSides)
{
    put(kSteps);
    EXPECT_EQ("0,0 2,0 and 15,10 20,10", trim({6, 0}, {upright(2), upright(6), upright(15)}));
}

TEST_F(PolylineTrimTest, BothPassagesThroughACrossingAreCut)
{
    put({{0, 0}, {10, 10}, {10, 0}, {0, 10}}); // crosses itself at 5,5
    EXPECT_EQ("0,0 5,5 and 5,5 0,10", trim({10, 5}, {cutter({4, 5}, {6, 5})}));
}

TEST_F(PolylineTrimTest, BothEndsOfAClockwiseArcAreCutByItsChord)
{
    put({{10, -10}, {10, 0, -1}, {20, 0}, {20, -10}});
    EXPECT_EQ("10,-10 10,0 b-1 and 20,0 20,-10", trim({15, 5}, {level(0)}));
}

TEST_F(PolylineTrimTest, LineThatPassesTheEndOfALargeArcDoesNotCutIt)
{
    put({{100, 0, kQuarter}, {0, 100}, {10, 100}});
    EXPECT_EQ("100,0 b0.414214 0,100 10,100", trim({5, 100}, {cutter({-0.05, 95}, {-0.05, 105})}));
}

TEST_F(PolylineTrimTest, PolylineThatPassesTheEndOfALargeArcDoesNotCutTheSegmentBesideIt)
{
    // The kernel's arc forgives the hit at -0.05,100 beyond its end, where the next segment is
    // nearer than the vertex: no cut may stand beside the polyline.
    put({{100, 0, kQuarter}, {0, 100}, {-10, 101}});
    EXPECT_EQ("100,0 b0.414214 0,100 -10,101",
              trim({-5, 100.5}, {otherPolyline({{-0.05, 95}, {-0.05, 100.001}})}));
    EXPECT_EQ("", records());
}

TEST_F(PolylineTrimTest, PolylinesCutWithTheirOwnSegmentsOnClockwiseArcsToo)
{
    put(kWave);
    EXPECT_EQ("0,0 b1 10,0 b-0.162278 11,3 and 19,3 b-0.162278 20,0 30,0",
              trim({15, 5}, {otherPolyline({{5, 3}, {25, 3}, {25, 20}})}));
}

TEST_F(PolylineTrimTest, CirclesCut)
{
    put({{0, 0}, {10, 0}, {20, 0}});
    CVexDbCircle circle(CVexGePoint2d(10, 0), 5);
    EXPECT_EQ("0,0 5,0 and 15,0 20,0", trim({11, 0}, {&circle}));
}

TEST_F(PolylineTrimTest, ItselfIsNoCutter)
{
    put({{0, 0}, {10, 10}, {10, 0}, {0, 10}});
    EXPECT_EQ("0,0 10,10 10,0 0,10", trim({10, 5}, {polyline}));
}

TEST_F(PolylineTrimTest, TheRestSharesThePropertiesAndIsAThingOfItsOwn)
{
    put(kSteps).setLayer(CString(L"PipeLine"));
    polyline->setColor(5, false);
    trim({10, 5}, {upright(5), upright(15)});
    ASSERT_NE(nullptr, rest);
    EXPECT_TRUE(rest->LayerId() == polyline->LayerId() && rest->ColorId() == polyline->ColorId());
    EXPECT_TRUE(rest->objectId() == rest.get());
    EXPECT_FALSE(rest->IsDbEntity());
    EXPECT_TRUE(rest->ownerId().isNull());
    EXPECT_EQ(CRect(1500, 1000, 2000, 1000), *rest->GetEntityRect());
    EXPECT_EQ(CRect(0, 0, 500, 0), *polyline->GetEntityRect());
}

TEST_F(PolylineTrimTest, PolylinesWithoutSegmentsAreLeftAlone)
{
    put({{5, 0}});
    EXPECT_EQ("5,0", trim({5, 0}, {upright(5)}));
    put({});
    EXPECT_EQ("", trim({5, 0}, {upright(5)}));
    EXPECT_FALSE(extend({5, 0}, {upright(5)}));
    EXPECT_EQ("", records());
}

} // namespace
