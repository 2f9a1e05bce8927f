#include "platform/base/vexfields.h"
#include "platform/headless/vexheadless.h"
#include "tests/file/sampledrawing.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;
constexpr std::size_t kPixelsAt = 40 + 1024;

/// A context with pixels, as small as a picture needs it: it draws horizontal and vertical lines.
class CPixelDC : public CDC {
public:
    CPixelDC() : m_pixels(kPixels, 0xffffff) {}
    std::unique_ptr<CDC> CreateCompatibleDC() override { return nullptr; }
    std::unique_ptr<CBitmap> CreateCompatibleBitmap(int, int) override { return nullptr; }

protected:
    void deviceLine(CPoint from, CPoint to) override
    {
        const int steps = std::max(std::abs(to.x - from.x), std::abs(to.y - from.y));
        for (int i = 0; i <= steps && steps < 10000; ++i) {
            devicePixel({from.x + (to.x - from.x) * i / std::max(steps, 1),
                         from.y + (to.y - from.y) * i / std::max(steps, 1)},
                        GetCurrentPen()->color());
        }
    }
    void devicePolyline(std::span<const CPoint>) override {}
    void devicePolygon(std::span<const CPoint>) override {}
    void deviceRectangle(const CRect&) override {}
    void deviceEllipse(const CRect&) override {}
    void deviceFill(const CRect&, COLORREF) override {}
    void devicePixel(CPoint at, COLORREF color) override
    {
        if (at.x >= 0 && at.x < kWidth && at.y >= 0 && at.y < kHeight) {
            m_pixels[indexOf(at)] = color;
        }
    }
    COLORREF devicePixelAt(CPoint at) const override { return m_pixels[indexOf(at)]; }
    bool deviceBlit(const CRect&, CDC&, CPoint, DWORD) override { return false; }

private:
    static constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;

    static std::size_t indexOf(CPoint at)
    {
        return static_cast<std::size_t>(at.y) * kWidth + static_cast<std::size_t>(at.x);
    }

    std::vector<COLORREF> m_pixels;
};

class CPixelBackend : public CVexHeadlessBackend {
public:
    std::unique_ptr<CDC> createImageDC(CSize size) override
    {
        EXPECT_EQ(kWidth, size.cx);
        EXPECT_EQ(kHeight, size.cy);
        return std::make_unique<CPixelDC>();
    }
};

class ThumbnailTest : public FileTest {
protected:
    /// Shows 0 to 160 by 0 to 120 drawing units: one a pixel.
    ThumbnailTest()
    {
        drawing.displays().getCurrentRecord()->SetCurDispWin({0.0, 0.0}, {160.0, 120.0});
    }
    ~ThumbnailTest() override { CVexBackend::install(m_before); }
    [[nodiscard]] const std::byte* picture() { return drawing.FileInfo()->m_thumbnail; }
    /// Colour of the pixel at column and row of the stored picture, its bottom row first.
    COLORREF stored(int x, int y)
    {
        const std::byte index = picture()[kPixelsAt + static_cast<std::size_t>(y * kWidth + x)];
        const std::byte* entry = picture() + 40 + 4 * std::to_integer<std::size_t>(index);
        return RGB(std::to_integer<unsigned>(entry[2]), std::to_integer<unsigned>(entry[1]),
                   std::to_integer<unsigned>(entry[0]));
    }
    [[nodiscard]] bool isBlank()
    {
        return std::all_of(picture(), picture() + VexDbFileHeader_tag::kThumbnailSize,
                           [](std::byte each) { return each == std::byte{0}; });
    }

    CVexDbDatabase drawing{false};
    CPixelBackend backend;

private:
    CVexBackend* m_before = CVexBackend::install(&backend);
};

TEST_F(ThumbnailTest, IsABitmapOf256ColoursBottomUp)
{
    drawing.DrawThumnail();
    Bytes info;
    info.u32(40).i32(160).i32(120).u16(1).u16(8).u32(0).u32(19200).zeros(16);
    EXPECT_SAME_BYTES(info.all(), std::vector<std::byte>(picture(), picture() + 40));
    EXPECT_EQ(0xffffffu, stored(0, 0));
    EXPECT_EQ(0xffffffu, stored(159, 119));
    Bytes tail;
    tail.zeros(16);
    EXPECT_SAME_BYTES(tail.all(), std::vector<std::byte>(picture() + 20264, picture() + 0x4f38));
}

TEST_F(ThumbnailTest, ShowsTheViewWithTheDrawingsBottomOnTop)
{
    // The mapping does not turn y up, so the drawing's row 10 is the picture's row 10 from the top.
    addTo(drawing, new CVexDbLine({20.0, 10.0}, {60.0, 10.0}))->setColor(1, true);
    drawing.DrawThumnail();
    EXPECT_EQ(0x0000ffu, stored(40, 119 - 10));
    EXPECT_EQ(0xffffffu, stored(40, 119 - 11));
    EXPECT_EQ(0xffffffu, stored(40, 10));
    EXPECT_EQ(0xffffffu, stored(61, 119 - 10));
}

TEST_F(ThumbnailTest, TakesTheNearestColourOfItsFixedPalette)
{
    auto* line = addTo(drawing, new CVexDbLine({20.0, 10.0}, {60.0, 10.0}));
    auto* color = new CVexDbColorTableRecord(&drawing);
    color->setName(CString(L"40"));
    color->setColor(RGB(250, 60, 100));
    drawing.colors().add(color);
    line->setColor(color, true);
    drawing.DrawThumnail();
    EXPECT_EQ(RGB(255, 51, 102), stored(40, 119 - 10)); // multiples of 51
}

TEST_F(ThumbnailTest, ErasedEntitiesAreNotInThePicture)
{
    addTo(drawing, new CVexDbLine({20.0, 10.0}, {60.0, 10.0}))->setErased();
    drawing.DrawThumnail();
    EXPECT_EQ(0xffffffu, stored(40, 119 - 10));
}

TEST_F(ThumbnailTest, BackendWithoutPixelsLeavesThePictureOfBefore)
{
    drawing.DrawThumnail();
    const std::vector<std::byte> before(picture(), picture() + VexDbFileHeader_tag::kThumbnailSize);
    CVexHeadlessBackend blind;
    CVexBackend* const sighted = CVexBackend::install(&blind);
    addTo(drawing, new CVexDbLine({20.0, 10.0}, {60.0, 10.0}));
    drawing.DrawThumnail();
    CVexBackend::install(sighted);
    EXPECT_SAME_BYTES(
        before, std::vector<std::byte>(picture(), picture() + VexDbFileHeader_tag::kThumbnailSize));
}

TEST_F(ThumbnailTest, DrawingThatTakesTooLongLeavesThePictureOfBefore)
{
    for (int i = 0; i < 3000; ++i) {
        addTo(drawing, new CVexDbLine({20.0, 10.0}, {60.0, 10.0}));
    }
    machine.steadyStep = 0.3; // two looks at the clock are within the budget, three are not
    drawing.DrawThumnail();
    EXPECT_TRUE(isBlank());
    machine.steadyStep = 0.1;
    drawing.DrawThumnail();
    EXPECT_FALSE(isBlank());
}

TEST_F(ThumbnailTest, SavesInARowGiveTheSamePicture)
{
    fillSample(drawing);
    const std::vector<std::byte> first = saved(drawing);
    EXPECT_SAME_BYTES(first, saved(drawing));
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, first));
    EXPECT_EQ(0, std::memcmp(picture(), again.FileInfo()->m_thumbnail,
                             VexDbFileHeader_tag::kThumbnailSize));
    EXPECT_FALSE(isBlank());
}

} // namespace
