#include "platform/qt/vexqtimagedc.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"

#include <gtest/gtest.h>

namespace {

/// How many pixels of an empty image a polyline of two small bends lights.
int pixelsOf(int operation, int penWidth)
{
    CVexDbDatabase drawing(false);
    CVexDbPolyline polyline(0, &drawing);
    polyline.SetVertexes({{0.2, 0.2}, {0.4, 0.2}, {0.5, 0.3}, {0.5, 0.5}, {0.6, 0.6}}, false);
    polyline.SetBulgeAt(1, 0.41421356);
    polyline.SetBulgeAt(3, -0.41421356);
    QImage image(80, 80, QImage::Format_RGB32);
    image.fill(Qt::black);
    CVexQtImageDC dc(image);
    const CPen pen(PS_SOLID, penWidth, RGB(255, 255, 255));
    dc.SelectObject(&pen);
    dc.SetROP2(operation);
    dc.SetBkColor(0);
    polyline.Draw(&dc);
    int lit = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            lit += image.pixel(x, y) == qRgb(0, 0, 0) ? 0 : 1;
        }
    }
    return lit;
}

// Each of its strokes, a pixel or two long, begins where the last one ended: of single ones in XOR
// the second would put out what the first has lit.
TEST(BandTest, SmallArcsOfAPolylineAreWholeInXor)
{
    const int plain = pixelsOf(R2_COPYPEN, 0);
    EXPECT_GT(plain, 60);
    EXPECT_GE(pixelsOf(R2_XORPEN, 0), plain - 6); // where its segments meet
}

} // namespace
