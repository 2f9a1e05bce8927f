#include "platform/qt/vexqtclip.h"
#include "platform/qt/vexqtimagedc.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

namespace {

constexpr int kFar = 1000000000;
constexpr COLORREF kBlack = 0;
constexpr COLORREF kWhite = 0xffffff;

class ClipTest : public testing::Test {
protected:
    std::unique_ptr<CVexQtImageDC> m_dc = CVexQtImageDC::create(QSize(200, 200));

    void line(CPoint from, CPoint to)
    {
        m_dc->MoveTo(from);
        m_dc->LineTo(to);
    }
    [[nodiscard]] int darkPixels() const
    {
        int count = 0;
        for (int y = 0; y < 200; ++y) {
            for (int x = 0; x < 200; ++x) {
                count += m_dc->image()->pixel(x, y) != qRgb(255, 255, 255) ? 1 : 0;
            }
        }
        return count;
    }
};

TEST_F(ClipTest, LineAcrossTheWholeRangeTakesThePixelsOfItsOwnEquation)
{
    line({-kFar, -500000000}, {kFar, 500000100}); // y = 50 + x / 2 within a thousandth
    for (int x = 0; x < 200; x += 2) {
        EXPECT_EQ(kBlack, m_dc->GetPixel({x, 50 + x / 2})) << x;
    }
    EXPECT_EQ(200, darkPixels()) << "one pixel a column";
}

TEST_F(ClipTest, LinesThatMissTheImageDrawNothing)
{
    line({-kFar, -5000}, {kFar, -5000});
    line({5000, -kFar}, {5000, kFar});
    line({-kFar, 0}, {0, kFar});
    line({kFar, kFar}, {kFar, kFar});
    EXPECT_EQ(0, darkPixels());
}

TEST_F(ClipTest, WideLineWhoseMiddleIsOutsideStillShowsItsEdge)
{
    const CPen wide(PS_GEOMETRIC, 400, kBlack);
    m_dc->SelectObject(&wide);
    line({-kFar, -150}, {kFar, -150}); // reaches down to y = 50
    EXPECT_EQ(kBlack, m_dc->GetPixel({100, 45}));
    EXPECT_EQ(kWhite, m_dc->GetPixel({100, 55}));
}

/// What dashes of 7 and gaps of 4 show `length` after their start; an edge's own pixel may be
/// either.
void expectDash(COLORREF shown, double length, int pixel)
{
    const double phase = std::fmod(length, 11.0);
    if (phase > 1.0 && phase < 6.0) {
        EXPECT_EQ(kBlack, shown) << pixel;
    } else if (phase > 8.0 && phase < 10.0) {
        EXPECT_EQ(kWhite, shown) << pixel;
    }
}

TEST_F(ClipTest, DashesOfALevelLineFromFarAwayStandWhereTheWholeLineHasThem)
{
    const std::array dashes{7, 4};
    for (const int width : {0, 5}) {
        const CPen pen(PS_GEOMETRIC_USERSTYLE, width, CBrush(kBlack), dashes);
        const CBrush white(kWhite);
        m_dc->FillRect(CRect(0, 0, 200, 200), &white);
        m_dc->SelectObject(&pen);
        line({-kFar, 30}, {kFar, 30});
        for (int x = 0; x < 200; ++x) {
            expectDash(m_dc->GetPixel({x, 30}), x + 10, x); // 10^9 = 11 * 90,909,090 + 10
        }
    }
}

TEST_F(ClipTest, DashesOfASlantedLineFromFarAwayStandWhereTheWholeLineHasThem)
{
    const std::array dashes{7, 4};
    const CPen pen(PS_GEOMETRIC_USERSTYLE, 3, CBrush(kBlack), dashes);
    m_dc->SelectObject(&pen);
    line({-300000000, -400000000}, {600000000, 800000000});
    for (int y = 0; y < 200; y += 4) {
        // 5 * 10^8 = 11 * 45,454,545 + 5, and 3 to 4 makes 5.
        expectDash(m_dc->GetPixel({y * 3 / 4, y}), y * 1.25 + 5, y);
    }
}

TEST_F(ClipTest, DashesRunOnRoundTheCornersOfAFarPolyline)
{
    const std::array dashes{20, 10};
    const CPen pen(PS_GEOMETRIC_USERSTYLE, 0, CBrush(kBlack), dashes);
    m_dc->SelectObject(&pen);
    const std::array<CPoint, 4> chain{CPoint(-5000000, -5000000), CPoint(-5000000, 100),
                                      CPoint(-100, 100), CPoint(190, 100)};
    m_dc->Polyline(chain);
    // 5,000,100 + 4,999,900 + 100 = 30 * 333,336 + 20 lie before x = 0, which thus ends a dash.
    EXPECT_EQ(kBlack, m_dc->GetPixel({15, 100}));
    EXPECT_EQ(kBlack, m_dc->GetPixel({25, 100}));
    EXPECT_EQ(kBlack, m_dc->GetPixel({45, 100}));
    for (const int x : {2, 5, 8, 32, 35, 38}) {
        EXPECT_EQ(kWhite, m_dc->GetPixel({x, 100})) << x;
    }
}

TEST_F(ClipTest, HugePolygonFillsTheImageOnlyWithASolidBrush)
{
    const std::array<CPoint, 3> triangle{CPoint(-kFar, -kFar), CPoint(kFar, -kFar),
                                         CPoint(0, kFar)};
    const CBrush hollow(BS_HOLLOW, 0), solid(RGB(9, 9, 9));
    m_dc->SelectObject(&hollow);
    m_dc->Polygon(triangle);
    EXPECT_EQ(0, darkPixels());
    m_dc->SelectObject(&solid);
    m_dc->Polygon(triangle);
    EXPECT_EQ(200 * 200, darkPixels());
}

TEST_F(ClipTest, HugeEllipseShowsTheStretchThatPassesTheImage)
{
    const CBrush grey(RGB(100, 100, 100));
    m_dc->SelectObject(&grey);
    m_dc->Ellipse(100, -500000000, kFar, 500000100);
    for (const int y : {0, 50, 199}) {
        EXPECT_EQ(kWhite, m_dc->GetPixel({98, y})) << y;
        EXPECT_EQ(kBlack, m_dc->GetPixel({100, y})) << y;
        EXPECT_EQ(RGB(100, 100, 100), m_dc->GetPixel({103, y})) << y;
    }
}

TEST_F(ClipTest, DensePatternIsSolidAndDoesNotHang)
{
    const std::array dashes{1, 1};
    const CPen pen(PS_GEOMETRIC_USERSTYLE, 0, CBrush(kBlack), dashes);
    m_dc->SetMapMode(MM_ISOTROPIC);
    m_dc->SetWindowExt(1000, 1000);
    m_dc->SetViewportExt(1, 1);
    m_dc->SelectObject(&pen);
    line({-2000000000, 50000}, {2000000000, 50000});
    EXPECT_EQ(200, darkPixels());
}

TEST_F(ClipTest, EnormousPensEndInTime)
{
    const std::array dashes{1, 1};
    for (const int width : {1999, 100000000, 2000000000}) {
        const CPen pen(PS_GEOMETRIC_USERSTYLE, width, CBrush(kBlack), dashes);
        m_dc->SelectObject(&pen);
        line({-kFar, 30}, {kFar, 50});
        line({10, 10}, {10, 20});
    }
    EXPECT_GT(darkPixels(), 0);
}

TEST_F(ClipTest, OutlineInXorIsWholeWhereItBegins)
{
    const CPen black(PS_GEOMETRIC, 5, kBlack), white(PS_GEOMETRIC, 5, kWhite);
    const CBrush hollow(BS_HOLLOW, 0), blank(kWhite);
    m_dc->SelectObject(&hollow);
    m_dc->SelectObject(&black);
    m_dc->Rectangle(50, 50, 100000, 100000);
    const int copied = darkPixels();
    m_dc->FillRect(CRect(0, 0, 200, 200), &blank);
    m_dc->SelectObject(&white);
    m_dc->SetROP2(R2_XORPEN);
    m_dc->Rectangle(50, 50, 100000, 100000);
    EXPECT_EQ(kBlack, m_dc->GetPixel({50, 50}));
    EXPECT_EQ(copied, darkPixels());
}

TEST(ClipChainTest, EachPieceTellsTheLengthBeforeIt)
{
    const QRectF box(0, 0, 10, 10);
    const QPolygonF chain{{-5, 5}, {5, 5}, {5, 20}, {8, 20}, {8, 0}};
    const auto runs = clipChain(chain, box);
    ASSERT_EQ(2U, runs.size());
    EXPECT_EQ((QPolygonF{{0, 5}, {5, 5}, {5, 10}}), runs[0].points);
    EXPECT_DOUBLE_EQ(5.0, runs[0].start);
    EXPECT_EQ((QPolygonF{{8, 10}, {8, 0}}), runs[1].points);
    EXPECT_DOUBLE_EQ(10.0 + 15.0 + 3.0 + 10.0, runs[1].start);
}

TEST(ClipChainTest, SegmentAlongTheEdgeCountsAndOneBesideItDoesNot)
{
    const QRectF box(0, 0, 10, 10);
    EXPECT_EQ(1U, clipChain({{2, 10}, {4, 10}}, box).size());
    EXPECT_EQ(0U, clipChain({{2, 10.5}, {4, 10.5}}, box).size());
    EXPECT_EQ(0U, clipChain({{-5, 6}, {6, 17}}, box).size());
}

TEST(ClipAreaTest, SquareOverTheCornerIsCutToTheBox)
{
    const QPolygonF cut = clipArea({{-5, -5}, {5, -5}, {5, 5}, {-5, 5}}, QRectF(0, 0, 10, 10));
    EXPECT_EQ(QRectF(0, 0, 5, 5), cut.boundingRect());
    EXPECT_TRUE(clipArea({{20, 20}, {30, 20}, {30, 30}}, QRectF(0, 0, 10, 10)).isEmpty());
}

TEST(EllipseOutlineTest, StaysShortHoweverLargeTheEllipse)
{
    const QRectF box(-100, -100, 400, 400);
    const QRectF vast(QPointF(100, -1e9), QPointF(2e9, 1e9));
    EXPECT_LT(ellipseOutline(vast, box).size(), 200);
    EXPECT_LT(ellipseOutline(QRectF(0, 0, 200, 200), box).size(), 200);
}

} // namespace
