#include "platform/qt/vexqtdash.h"
#include "platform/qt/vexqtimagedc.h"

#include <array>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <span>

namespace {

constexpr int kSide = 200;
constexpr QRgb kBlack = qRgb(0, 0, 0);

using Pixels = std::set<std::pair<int, int>>;
using Stroke = std::function<void(CDC&)>;

Pixels darkPixels(const QImage& image)
{
    Pixels dark;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == kBlack) {
                dark.emplace(x, y);
            }
        }
    }
    return dark;
}

/// What a stroke with a pen darkens of a white image.
Pixels drawnBy(const CPen& pen, const Stroke& stroke)
{
    const auto dc = CVexQtImageDC::create(QSize(kSide, kSide));
    const CBrush hollow(BS_HOLLOW, 0);
    dc->SelectObject(&hollow);
    dc->SelectObject(&pen);
    stroke(*dc);
    return darkPixels(*dc->image());
}

CPen dashedPen(int width, std::vector<int> dashes)
{
    return {PS_GEOMETRIC_USERSTYLE, width, CBrush(0), dashes};
}

Stroke line(CPoint from, CPoint to)
{
    return [=](CDC& dc) {
        dc.MoveTo(from);
        dc.LineTo(to);
    };
}

bool isWithin(const Pixels& part, const Pixels& whole)
{
    return std::includes(whole.begin(), whole.end(), part.begin(), part.end());
}

// ---- the pixels of a solid line ----

/// Pixels of a line whose dashes leave no gap.
Pixels withoutGaps(QPointF from, QPointF to)
{
    QList<QPoint> pixels;
    appendDashPixels(std::array{from, to}, 0.0, VexQtChainEnd::kDrawn, {2.0, 0.0},
                     QRect(0, 0, kSide, kSide), pixels);
    Pixels found;
    for (const QPoint pixel : pixels) {
        if (QRect(0, 0, kSide, kSide).contains(pixel)) {
            EXPECT_TRUE(found.emplace(pixel.x(), pixel.y()).second) << "twice";
        }
    }
    return found;
}

Pixels paintedSolid(QPointF from, QPointF to)
{
    QImage image(kSide, kSide, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QPen pen(Qt::black, 1.0);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawLine(from, to);
    painter.end();
    return darkPixels(image);
}

TEST(DashTest, PixelsOfALineAreThoseThatThePainterGivesTheSolidLine)
{
    std::mt19937 random(11);
    const auto coordinate = [&] { return static_cast<int>(random() % 330) - 65; };
    for (int i = 0; i < 3000; ++i) {
        const QPointF from(coordinate(), coordinate()), to(coordinate(), coordinate());
        ASSERT_EQ(paintedSolid(from, to), withoutGaps(from, to))
            << from.x() << ' ' << from.y() << " to " << to.x() << ' ' << to.y();
    }
}

TEST(DashTest, PixelsOfACutLineWithFractionsAreThePaintersToo)
{
    std::mt19937 random(12);
    const auto coordinate = [&] { return static_cast<double>(random() % 330000) / 1000.0 - 65.0; };
    for (int i = 0; i < 3000; ++i) {
        const QPointF from(coordinate(), coordinate()), to(coordinate(), coordinate());
        ASSERT_EQ(paintedSolid(from, to), withoutGaps(from, to))
            << from.x() << ' ' << from.y() << " to " << to.x() << ' ' << to.y();
    }
}

// ---- one pixel wide ----

struct LineRow {
    const char* name;
    CPoint from, to;
};

constexpr LineRow kLines[] = {
    {"level", {10, 40}, {150, 40}},     {"level, leftwards", {150, 40}, {10, 40}},
    {"upright", {40, 10}, {40, 150}},   {"upright, upwards", {40, 150}, {40, 10}},
    {"diagonal", {10, 10}, {150, 150}}, {"flat slope", {10, 20}, {190, 71}},
    {"steep slope", {90, 190}, {21, 3}}};

TEST(ThinDashTest, DashesAreTheSolidLineWithoutItsGaps)
{
    const CPen solid(PS_SOLID, 0, 0);
    for (const int width : {0, 1}) {
        for (const LineRow& row : kLines) {
            const Pixels dashes = drawnBy(dashedPen(width, {7, 4}), line(row.from, row.to));
            const Pixels whole = drawnBy(solid, line(row.from, row.to));
            EXPECT_TRUE(isWithin(dashes, whole)) << row.name;
            EXPECT_NEAR(7.0 / 11.0,
                        static_cast<double>(dashes.size()) / static_cast<double>(whole.size()),
                        0.03)
                << row.name;
        }
    }
}

TEST(ThinDashTest, LevelLineShowsEachDashAndGapToThePixel)
{
    const Pixels dashes = drawnBy(dashedPen(0, {7, 4}), line({10, 40}, {31, 40}));
    const Pixels leftwards = drawnBy(dashedPen(0, {7, 4}), line({31, 40}, {10, 40}));
    EXPECT_EQ(7U + 7U, dashes.size());
    for (int x = 10; x <= 31; ++x) {
        EXPECT_EQ((x - 10) % 11 < 7, dashes.contains({x, 40})) << x;
        EXPECT_EQ((31 - x) % 11 < 7, leftwards.contains({x, 40})) << x;
    }
}

TEST(ThinDashTest, DiagonalLineCountsTrueLength)
{
    // A step is 1.414 long: a dash of 14 has 10 steps, as has a gap.
    const Pixels dashes = drawnBy(dashedPen(0, {14, 14}), line({10, 10}, {69, 69}));
    for (int i = 0; i < 60; ++i) {
        const int tenth = i / 10;
        if (i % 10 != 0 && i % 10 != 9) {
            EXPECT_EQ(tenth % 2 == 0, dashes.contains({10 + i, 10 + i})) << i;
        }
    }
}

TEST(ThinDashTest, DotsAreNotLostBetweenThePixelsOfADiagonal)
{
    const Pixels dots = drawnBy(dashedPen(0, {0, 5}), line({0, 0}, {149, 149}));
    EXPECT_NEAR(149.0 * 1.4142 / 5.0, static_cast<double>(dots.size()), 1.0);
}

TEST(ThinDashTest, RectangleCarriesItsDashesRoundTheCorners)
{
    const Stroke box = [](CDC& dc) { dc.Rectangle(CRect(10, 10, 110, 60)); };
    const Pixels dashes = drawnBy(dashedPen(0, {30, 10}), box);
    EXPECT_TRUE(isWithin(dashes, drawnBy(CPen(PS_SOLID, 0, 0), box)));
    // The corner lies 100 from the start, in the dash from 80 to 110.
    EXPECT_TRUE(dashes.contains({110, 10}));
    EXPECT_TRUE(dashes.contains({110, 19}));
    EXPECT_FALSE(dashes.contains({110, 20}));
    EXPECT_FALSE(dashes.contains({110, 29}));
    EXPECT_TRUE(dashes.contains({110, 30}));
    EXPECT_EQ(230U, dashes.size()) << "300 round: 7 whole dashes and 20 of the eighth";
}

TEST(ThinDashTest, PolylineGoesOnWithItsPatternAndItsEndIsDrawn)
{
    const std::array<CPoint, 3> corners{CPoint(10, 10), CPoint(25, 10), CPoint(25, 30)};
    const Stroke chain = [&](CDC& dc) { dc.Polyline(corners); };
    const Pixels dashes = drawnBy(dashedPen(0, {20, 10}), chain);
    EXPECT_TRUE(isWithin(dashes, drawnBy(CPen(PS_SOLID, 0, 0), chain)));
    EXPECT_TRUE(dashes.contains({25, 14})) << "15 and 5 make the first dash";
    EXPECT_FALSE(dashes.contains({25, 15}));
    EXPECT_FALSE(dashes.contains({25, 24}));
    EXPECT_TRUE(dashes.contains({25, 25}));
    EXPECT_TRUE(dashes.contains({25, 30}));
}

TEST(ThinDashTest, NoPixelIsDrawnTwice)
{
    const std::array<CPoint, 5> corners{CPoint(10, 10), CPoint(150, 10), CPoint(150, 90),
                                        CPoint(190, 190), CPoint(30, 150)};
    for (const Stroke& stroke : {Stroke([&](CDC& dc) { dc.Polyline(corners); }),
                                 Stroke([&](CDC& dc) { dc.Polygon(corners); }),
                                 Stroke([](CDC& dc) { dc.Rectangle(CRect(20, 20, 90, 70)); }),
                                 Stroke([](CDC& dc) { dc.Rectangle(CRect(-900, 20, 90, 70)); }),
                                 Stroke([](CDC& dc) { dc.Rectangle(CRect(20, 20, 900, 70)); }),
                                 Stroke([](CDC& dc) { dc.Ellipse(CRect(20, 20, 90, 70)); })}) {
        QImage image(kSide, kSide, QImage::Format_RGB32);
        image.fill(Qt::white);
        CVexQtImageDC dc(image);
        const CBrush hollow(BS_HOLLOW, 0);
        const CPen white(PS_GEOMETRIC_USERSTYLE, 0, CBrush(RGB(255, 255, 255)), std::array{9, 4});
        dc.SelectObject(&hollow);
        dc.SelectObject(&white);
        dc.SetROP2(R2_XORPEN);
        stroke(dc);
        EXPECT_EQ(drawnBy(dashedPen(0, {9, 4}), stroke), darkPixels(*dc.image()));
    }
}

TEST(ThinDashTest, AreaIsFilledUnderItsDashes)
{
    const auto dc = CVexQtImageDC::create(QSize(kSide, kSide));
    const CBrush red(RGB(255, 0, 0));
    const CPen pen = dashedPen(0, {10, 10});
    dc->SelectObject(&red);
    dc->SelectObject(&pen);
    dc->Rectangle(CRect(20, 20, 100, 80));
    EXPECT_EQ(RGB(255, 0, 0), dc->GetPixel({50, 50}));
    EXPECT_EQ(0U, dc->GetPixel({25, 20}));
    EXPECT_EQ(RGB(255, 0, 0), dc->GetPixel({35, 20})) << "the gap shows the area";
}

TEST(ThinDashTest, EllipseIsOnePixelWideAllRound)
{
    const Stroke ellipse = [](CDC& dc) { dc.Ellipse(CRect(20, 30, 180, 170)); };
    for (const auto& [x, y] : drawnBy(dashedPen(0, {1000, 1}), ellipse)) {
        const double across = (x - 100) / 80.0, down = (y - 100) / 70.0;
        EXPECT_NEAR(1.0, std::hypot(across, down), 0.02) << x << ' ' << y;
    }
    EXPECT_GT(drawnBy(dashedPen(0, {1000, 1}), ellipse).size(), 400U);
    EXPECT_LT(drawnBy(dashedPen(0, {1000, 1}), ellipse).size(), 440U) << "8 times 53";
}

TEST(ThinDashTest, StrokeOfNoLengthIsADot)
{
    EXPECT_EQ((Pixels{{30, 40}}), drawnBy(dashedPen(0, {5, 5}), line({30, 40}, {30, 40})));
}

// ---- three pixels wide ----

TEST(WideDashTest, DashesAreAsThickAsTheSolidLine)
{
    for (const LineRow& row : std::span(kLines).first(5)) { // a slanted dash has edges of its own
        const CPen solid(PS_GEOMETRIC, 3, 0);
        const Pixels whole = drawnBy(solid, line(row.from, row.to));
        const Pixels dashes = drawnBy(dashedPen(3, {9, 6}), line(row.from, row.to));
        EXPECT_TRUE(isWithin(dashes, whole)) << row.name;
        EXPECT_NEAR(0.6, static_cast<double>(dashes.size()) / static_cast<double>(whole.size()),
                    0.04)
            << row.name;
    }
}

TEST(WideDashTest, LevelAndUprightDashesAreThreePixelsAcrossAndTrueInLength)
{
    const Pixels level = drawnBy(dashedPen(3, {9, 6}), line({10, 40}, {100, 40}));
    const Pixels upright = drawnBy(dashedPen(3, {9, 6}), line({40, 10}, {40, 100}));
    EXPECT_EQ(6U * 9U * 3U, level.size());
    EXPECT_EQ(6U * 9U * 3U, upright.size());
    for (int across = 39; across <= 41; ++across) {
        EXPECT_TRUE(level.contains({10, across}) && level.contains({18, across})) << across;
        EXPECT_FALSE(level.contains({19, across}) || level.contains({24, across})) << across;
        EXPECT_TRUE(upright.contains({across, 25})) << across;
    }
}

} // namespace
