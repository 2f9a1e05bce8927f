#include "platform/qt/vexqthatch.h"
#include "platform/qt/vexqtimagedc.h"

#include <array>
#include <gtest/gtest.h>

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kWhite = 0xffffff;

/// A square within a square, both run the same way: the inner one is gone round twice.
constexpr std::array<CPoint, 10> kTwiceRound = {{{10, 10},
                                                 {90, 10},
                                                 {90, 90},
                                                 {10, 90},
                                                 {10, 10},
                                                 {30, 30},
                                                 {70, 30},
                                                 {70, 70},
                                                 {30, 70},
                                                 {30, 30}}};

class AreaTest : public testing::Test {
protected:
    AreaTest() { dc->SelectObject(&noPen); }

    [[nodiscard]] int painted() const
    {
        int count = 0;
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x) {
                count += dc->GetPixel({x, y}) != kWhite ? 1 : 0;
            }
        }
        return count;
    }

    const CPen noPen{PS_NULL, 0, 0};
    std::unique_ptr<CVexQtImageDC> dc = CVexQtImageDC::create(QSize(100, 100));
};

TEST_F(AreaTest, FillModeDecidesWhatIsGoneRoundTwice)
{
    const CBrush red(kRed);
    dc->SelectObject(&red);
    dc->Polygon(kTwiceRound);
    EXPECT_EQ(kWhite, dc->GetPixel({50, 50}));
    EXPECT_EQ(kRed, dc->GetPixel({20, 50}));
    EXPECT_EQ(ALTERNATE, dc->SetPolyFillMode(WINDING));
    dc->Polygon(kTwiceRound);
    EXPECT_EQ(kRed, dc->GetPixel({50, 50}));
    EXPECT_EQ(WINDING, dc->SetPolyFillMode(7)); // refused
    EXPECT_EQ(WINDING, dc->GetPolyFillMode());
}

TEST_F(AreaTest, HatchIsLinesEveryEightPixelsWithNothingBetween)
{
    const CBrush hatched(HS_HORIZONTAL, kRed);
    dc->SelectObject(&hatched);
    dc->Rectangle(10, 10, 50, 30);
    for (int y = 0; y < 40; ++y) {
        EXPECT_EQ(y == 16 || y == 24 ? kRed : kWhite, dc->GetPixel({30, y})) << y;
    }
    EXPECT_EQ(kWhite, dc->GetPixel({8, 16}));
    EXPECT_EQ(kWhite, dc->GetPixel({52, 16}));
}

TEST_F(AreaTest, HatchDrawnTwiceInXorIsGone)
{
    for (const RasterOperation operation : {R2_XORPEN, R2_NOTXORPEN}) {
        const CBrush hatched(HS_DIAGCROSS, kRed);
        dc->SelectObject(&hatched);
        dc->SetROP2(operation);
        dc->Polygon(kTwiceRound);
        EXPECT_GT(painted(), 200) << operation;
        dc->Polygon(kTwiceRound);
        EXPECT_EQ(0, painted()) << operation;
    }
}

TEST_F(AreaTest, HatchOfAHugeAreaCostsWhatIsSeen)
{
    const CBrush hatched(HS_VERTICAL, kRed);
    dc->SelectObject(&hatched);
    dc->Rectangle(-1000000000, -1000000000, 1000000000, 1000000000);
    EXPECT_EQ(13 * 100, painted()); // columns 0, 8 to 96
    EXPECT_EQ(kRed, dc->GetPixel({8, 99}));
}

TEST_F(AreaTest, HatchFillsAnEllipseAndLeavesItsCorners)
{
    const CBrush hatched(HS_CROSS, kRed);
    dc->SelectObject(&hatched);
    dc->Ellipse(0, 0, 100, 100);
    EXPECT_EQ(kRed, dc->GetPixel({48, 50}));
    EXPECT_EQ(kRed, dc->GetPixel({50, 48}));
    EXPECT_EQ(kWhite, dc->GetPixel({8, 8}));
}

struct HatchRow {
    HatchStyle style;
    const char* name;
    std::vector<QLineF> lines;
};

TEST(HatchTest, StylesRunAsTheirNamesSay)
{
    const QPolygonF square({{1, 1}, {15, 1}, {15, 15}, {1, 15}});
    const HatchRow rows[] = {
        {HS_HORIZONTAL, "horizontal", {{1, 8, 15, 8}}},
        {HS_VERTICAL, "vertical", {{8, 1, 8, 15}}},
        {HS_FDIAGONAL, "falling", {{1, 9, 7, 15}, {1, 1, 15, 15}, {9, 1, 15, 7}}},
        {HS_BDIAGONAL, "rising", {{1, 7, 7, 1}, {1, 15, 15, 1}, {9, 15, 15, 9}}},
        {HS_CROSS, "cross", {{1, 8, 15, 8}, {8, 1, 8, 15}}},
    };
    for (const HatchRow& row : rows) {
        const QList<QLineF> lines = hatchLines(square, row.style, ALTERNATE, 8.0);
        ASSERT_EQ(static_cast<qsizetype>(row.lines.size()), lines.size()) << row.name;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            EXPECT_EQ(row.lines[static_cast<std::size_t>(i)], lines[i]) << row.name << i;
        }
    }
}

TEST(HatchTest, ModeDecidesWhatIsGoneRoundTwice)
{
    QPolygonF area;
    for (const CPoint& corner : kTwiceRound) {
        area.append(QPointF(corner.x, corner.y));
    }
    const QList<QLineF> around = hatchLines(area, HS_HORIZONTAL, ALTERNATE, 50.0);
    ASSERT_EQ(2, around.size());
    EXPECT_EQ(QLineF(10, 50, 30, 50), around[0]);
    EXPECT_EQ(QLineF(70, 50, 90, 50), around[1]);
    const QList<QLineF> whole = hatchLines(area, HS_HORIZONTAL, WINDING, 50.0);
    ASSERT_EQ(1, whole.size());
    EXPECT_EQ(QLineF(10, 50, 90, 50), whole[0]);
}

TEST(HatchTest, NothingAndASpeckHaveNoLines)
{
    EXPECT_TRUE(hatchLines({}, HS_CROSS, WINDING, 8.0).isEmpty());
    EXPECT_TRUE(hatchLines(QPolygonF({{1, 1}, {7, 1}, {7, 7}}), HS_CROSS, WINDING, 8.0).isEmpty());
}

} // namespace
