#include "platform/device/vexdeviceobjects.h"
#include "tests/vexdb/polylinefixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"

namespace {

/// Divides a full turn into fewer segments for display, so that strokes can be counted by hand.
class CoarseArcs {
public:
    explicit CoarseArcs(std::uint16_t segments) : m_before(_wArcRes) { _wArcRes = segments; }
    ~CoarseArcs() { _wArcRes = m_before; }
    CoarseArcs(const CoarseArcs&) = delete;
    CoarseArcs& operator=(const CoarseArcs&) = delete;

private:
    std::uint16_t m_before;
};

class PolylineDrawTest : public PolylineTest {
protected:
    std::string drawn()
    {
        dc.clear();
        polyline.Draw(&dc);
        return inWords(dc.strokes());
    }
    const CoarseArcs coarse{4}; // an arc has a vertex each quarter turn from its start
};

TEST_F(PolylineDrawTest, StraightSegmentsAreStrokedInOrder)
{
    make({{0, 0}, {10, 0}, {10.009, -5.009}});
    EXPECT_EQ("line 0,0 1000,0\nline 1000,0 1000,-500\n", drawn()); // truncated towards zero
    make({{0, 0}, {10, 0}, {0, 5}}, true);
    EXPECT_EQ("line 0,0 1000,0\nline 1000,0 0,500\nline 0,500 0,0\n", drawn());
}

TEST_F(PolylineDrawTest, NothingIsDrawnWithoutVerticesOrVisibility)
{
    EXPECT_EQ("", drawn());
    make({{3, 4}});
    EXPECT_EQ("", drawn());
    make({{0, 0}, {10, 0}});
    polyline.setInVisable();
    EXPECT_EQ("", drawn());
    polyline.Draw(nullptr);
}

TEST_F(PolylineDrawTest, ArcIsStrokedAlongItsDisplayVertices)
{
    make({{10, 0, 1}, {-10, 0}, {-20, 0}});
    EXPECT_EQ("line 1000,0 0,1000\nline 0,1000 -1000,0\nline -1000,0 -2000,0\n", drawn());
}

TEST_F(PolylineDrawTest, ClockwiseArcIsStrokedFromItsFarEndAndThePenGoesOnThere)
{
    make({{-10, 0, -1}, {10, 0}, {20, 0}});
    EXPECT_EQ("line 1000,0 0,1000\nline 0,1000 -1000,0\nline 1000,0 2000,0\n", drawn());
}

TEST_F(PolylineDrawTest, ClosingSegmentHasTheLastVertexsBulge)
{
    make({{-10, 0}, {10, 0, 1}}, true);
    EXPECT_EQ("line -1000,0 1000,0\nline 1000,0 0,1000\nline 0,1000 -1000,0\n", drawn());
}

TEST_F(PolylineDrawTest, BulgeOfAThousandthIsStraight)
{
    make({{10, 0, 0.001}, {-10, 0, -0.001}, {10, 0}});
    EXPECT_EQ("line 1000,0 -1000,0\nline -1000,0 1000,0\n", drawn());
    make({{10, 0, -0.0011}, {-10, 0}}); // an arc, and a clockwise one begins at its far end
    EXPECT_EQ(0u, drawn().find("line -1000,0 "));
}

TEST_F(PolylineDrawTest, StartWidthLeavesTheSegmentBeforeItUnstroked)
{
    make({{0, 0}, {10, 0, 0, 2, 2}});
    EXPECT_EQ("", drawn());
    make({{0, 0, 0, 2, 2}, {10, 0}}); // its own segment ends at a vertex without
    EXPECT_EQ("line 0,0 1000,0\n", drawn());
    make({{0, 0}, {10, 0, 0, 0, 2}});
    EXPECT_EQ("line 0,0 1000,0\n", drawn());
}

TEST_F(PolylineDrawTest, PenStaysBeforeAnUnstrokedSegment)
{
    // A reader expects the next stroke to begin at 10,0. The pen did not go there, and drawings
    // with widths show the straight way from 0,0.
    make({{0, 0}, {10, 0, 0, 2, 2}, {10, 10}});
    EXPECT_EQ("line 0,0 1000,1000\n", drawn());
    make({{0, 0}, {10, 0, 1, 2, 2}, {-10, 0}}); // an arc begins where it stands
    EXPECT_EQ("line 1000,0 0,1000\nline 0,1000 -1000,0\n", drawn());
}

TEST_F(PolylineDrawTest, StartWidthOfTheFirstVertexLeavesTheClosingSegmentUnstroked)
{
    make({{0, 0, 0, 1, 1}, {10, 0}, {0, 10}}, true);
    EXPECT_EQ("line 0,0 1000,0\nline 1000,0 0,1000\n", drawn());
}

TEST_F(PolylineDrawTest, FillIsAPolygonInTheColourOfThePen)
{
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.setColor(1, true);
    polyline.Draw(&dc);
    EXPECT_EQ("line 0,0 1000,0\nline 1000,0 0,1000\nline 0,1000 0,0\n"
              "polygon 0,0 1000,0 0,1000\n",
              inWords(dc.strokes()));
    const VexStroke& area = dc.strokes().back();
    EXPECT_EQ(BS_SOLID, area.brushStyle);
    EXPECT_EQ(RGB(255, 0, 0), area.brushColor);
    EXPECT_EQ(RGB(255, 0, 0), area.color);
    EXPECT_EQ(WINDING, area.polyFillMode);
    EXPECT_EQ(ALTERNATE, dc.GetPolyFillMode());
}

TEST_F(PolylineDrawTest, FillGivesTheBrushBack)
{
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    polyline.SetFill(true);
    const CBrush mine(RGB(1, 2, 3));
    dc.SelectObject(&mine);
    dc.SetPolyFillMode(WINDING);
    polyline.Draw(&dc);
    EXPECT_EQ(&mine, dc.GetCurrentBrush());
    EXPECT_EQ(WINDING, dc.GetPolyFillMode());
}

TEST_F(PolylineDrawTest, FillModeIsTheHatchStyle)
{
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.SetFillMode(HS_CROSS);
    polyline.Draw(&dc);
    EXPECT_EQ(BS_HATCHED, dc.strokes().back().brushStyle);
    EXPECT_EQ(HS_CROSS, dc.strokes().back().hatch);
    EXPECT_EQ(dc.strokes().back().color, dc.strokes().back().brushColor);
    for (const int mode : {-1, 6, 1000000}) { // no such lines: the area stays empty
        polyline.SetFillMode(mode);
        polyline.Draw(&dc);
        EXPECT_EQ(BS_HOLLOW, dc.strokes().back().brushStyle) << mode;
    }
}

TEST_F(PolylineDrawTest, FillWithArcsCoversThePolygonOfTheStraightParts)
{
    make({{0, 0}, {10, 0, 1}, {10, 10}, {0, 10, -0.5}}, true);
    polyline.SetFill(true);
    polyline.Draw(&dc);
    EXPECT_EQ(VexStroke::Kind::kPolygon, dc.strokes().back().kind);
    const std::vector<CPoint> corners = {{0, 0}, {1000, 0}, {0, 1000}}; // 10,10 ends an arc
    EXPECT_EQ(corners, dc.strokes().back().points);
}

TEST_F(PolylineDrawTest, UnstrokedSegmentsGiveTheFillNoCorner)
{
    make({{0, 0}, {10, 0}, {10, 10, 0, 2, 2}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.Draw(&dc);
    const std::vector<CPoint> corners = {{0, 0}, {1000, 0}, {0, 1000}};
    EXPECT_EQ(corners, dc.strokes().back().points);
}

TEST_F(PolylineDrawTest, ErasedAndHighlightedFillsTakeThatPensColour)
{
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.setColor(1, true);
    dc.SetBkColor(RGB(0, 0, 90));
    polyline.UnDraw(&dc);
    EXPECT_EQ(RGB(0, 0, 90), dc.strokes().back().brushColor);
    polyline.HighlightDraw(&dc);
    EXPECT_EQ(PS_DOT, dc.strokes().back().penStyle);
    EXPECT_EQ(RGB(255, 0, 0), dc.strokes().back().brushColor);
}

TEST_F(PolylineDrawTest, FillAreaAloneFillsForAFilledOneOnly)
{
    const std::vector<CPoint> corners = {{0, 0}, {5, 0}, {0, 5}};
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    polyline.FillArea(&dc, corners);
    EXPECT_TRUE(dc.strokes().empty());
    polyline.SetFill(true);
    polyline.FillArea(&dc, corners);
    EXPECT_EQ("polygon 0,0 5,0 0,5\n", inWords(dc.strokes()));
}

TEST_F(PolylineDrawTest, DrawingMakesNoEntityForItsArcs)
{
    make({{10, 0, 1}, {-10, 0, -1}, {10, 0, 0.5}, {0, 7}});
    const CVexDbLine before(&drawing);
    polyline.Draw(&dc);
    const CVexDbLine after(&drawing); // numbers are drawn by whatever is made in between
    EXPECT_EQ(before.getCreatedTime() + 1, after.getCreatedTime());
}

TEST_F(PolylineDrawTest, CoordinatesBeyondTheIntegersAreHeld)
{
    make({{1e300, 0}, {-1e300, 0, 0.5}, {-1e300, 1}});
    polyline.SetBulgeAt(1, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ("line 1000000000,0 -1000000000,0\nline -1000000000,0 -1000000000,100\n", drawn());
}

} // namespace
