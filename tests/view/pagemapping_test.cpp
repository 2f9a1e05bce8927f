#include "tests/view/viewfixture.h"
#include "vexdb/vexdbpagemapping.h"

#include <limits>

namespace {

/// A printer of 10 pixels a millimetre with a printable area of 2000 by 2970 pixels.
class PageMappingTest : public testing::Test {
protected:
    PageMappingTest()
    {
        printer.setPrinting(true);
        printer.setDeviceCap(LOGPIXELSX, 254);
        printer.setDeviceCap(LOGPIXELSY, 254);
        printer.setDeviceCap(VERTRES, 2970);
    }
    CPoint onPaper(CPoint logical) const
    {
        printer.LPtoDP(&logical);
        return logical;
    }
    CVexRecordingDC printer{{2000, 2970}};
};

} // namespace

TEST_F(PageMappingTest, AHundredUnitsAreAHundredMillimetresAtFullSize)
{
    ASSERT_TRUE(setPageMapping(printer, {0.0, 0.0}, 1.0));
    EXPECT_EQ(CPoint(0, 2970), onPaper({0, 0}));
    EXPECT_EQ(CPoint(1000, 1970), onPaper({10000, 10000}));
}

TEST_F(PageMappingTest, TheCornerOfTheDrawingFallsOnTheCornerOfThePaper)
{
    ASSERT_TRUE(setPageMapping(printer, {5000.0, -250.0}, 0.02)); // 1:50
    EXPECT_EQ(CPoint(0, 2970), onPaper({500000, -25000}));
    EXPECT_EQ(CPoint(200, 2870), onPaper({600000, 25000})); // 1000 by 500 units further
}

TEST_F(PageMappingTest, AnEnlargedDrawingIsAsExact)
{
    ASSERT_TRUE(setPageMapping(printer, {0.0, 0.0}, 50.0)); // 50:1, five pixels a logical unit
    EXPECT_EQ(CPoint(2000, 2970), onPaper({400, 0}));
    EXPECT_EQ(CPoint(5, 2965), onPaper({1, 1}));
}

TEST_F(PageMappingTest, ScalesThatMakeNoSenseSetNothing)
{
    for (const double scale : {0.0, -1.0, 1e-300, 1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(setPageMapping(printer, {0.0, 0.0}, scale)) << scale;
    }
    printer.setDeviceCap(LOGPIXELSY, 0);
    EXPECT_FALSE(setPageMapping(printer, {0.0, 0.0}, 1.0));
    EXPECT_EQ(MM_TEXT, printer.GetMapMode());
}

TEST(WindowMappingTest, TheMapModeIsSetWithTheWindow)
{
    CVexRecordingDC screen({100, 100});
    setWindowMapping(screen, CRect(0, 0, 2000, 1000), CRect(0, 0, 100, 50));
    EXPECT_EQ(MM_ISOTROPIC, screen.GetMapMode());
    CPoint corner(2000, 1000);
    screen.LPtoDP(&corner);
    EXPECT_EQ(CPoint(100, 0), corner); // in the text mode it would be (2000, 950)
}
