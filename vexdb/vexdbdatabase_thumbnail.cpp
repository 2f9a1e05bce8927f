#include "platform/base/vexfields.h"
#include "platform/base/vexmachine.h"
#include "platform/device/cdc.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <unordered_map>

namespace {

constexpr int kWidth = 160; // pixels
constexpr int kHeight = 120;
constexpr int kBitsPerPixel = 8;
constexpr std::size_t kInfoSize = 40;
constexpr std::size_t kPaletteColors = 256;
constexpr std::size_t kPixelsAt = kInfoSize + 4 * kPaletteColors;
// Rows are padded to whole 32-bit words.
constexpr int kRowBytes = ((kBitsPerPixel * kWidth + 31) & ~31) / 8;
constexpr int kImageBytes = kRowBytes * kHeight;
static_assert(kPixelsAt + kImageBytes + 16 == VexDbFileHeader_tag::kThumbnailSize);

constexpr double kBudgetSeconds = 0.5;
constexpr unsigned kEntitiesPerLook = 1024; // at the clock

constexpr int kCubeSteps = 6;  // shades of red, green and blue
constexpr int kCubeShade = 51; // between two of them
constexpr int kGreys = 40;     // fill the palette up, between black and white

/// A fixed palette, so that the same picture always gives the same bytes.
std::array<COLORREF, kPaletteColors> makePalette()
{
    std::array<COLORREF, kPaletteColors> palette{};
    std::size_t next = 0;
    for (int i = 0; i < kCubeSteps * kCubeSteps * kCubeSteps; ++i) {
        const int red = i / (kCubeSteps * kCubeSteps);
        const int green = i / kCubeSteps % kCubeSteps;
        const int blue = i % kCubeSteps;
        palette[next++] =
            RGB(static_cast<unsigned>(red * kCubeShade), static_cast<unsigned>(green * kCubeShade),
                static_cast<unsigned>(blue * kCubeShade));
    }
    for (int i = 1; i <= kGreys; ++i) {
        const auto grey = static_cast<unsigned>(i * 255 / (kGreys + 1));
        palette[next++] = RGB(grey, grey, grey);
    }
    return palette;
}

int distance(COLORREF a, COLORREF b)
{
    const auto square = [](unsigned p, unsigned q) {
        const int difference = static_cast<int>(p) - static_cast<int>(q);
        return difference * difference;
    };
    return square(GetRValue(a), GetRValue(b)) + square(GetGValue(a), GetGValue(b)) +
           square(GetBValue(a), GetBValue(b));
}

/// Nearest colours of the palette, each looked for once.
class PaletteMatcher {
public:
    explicit PaletteMatcher(const std::array<COLORREF, kPaletteColors>& palette)
        : m_palette(palette)
    {
    }
    std::byte indexOf(COLORREF color)
    {
        const auto [at, isNew] = m_known.try_emplace(color, std::byte{0});
        if (isNew) {
            at->second = static_cast<std::byte>(nearest(color));
        }
        return at->second;
    }

private:
    [[nodiscard]] std::size_t nearest(COLORREF color) const
    {
        std::size_t best = 0;
        for (std::size_t i = 1; i < m_palette.size(); ++i) {
            if (distance(color, m_palette[i]) < distance(color, m_palette[best])) {
                best = i;
            }
        }
        return best;
    }
    const std::array<COLORREF, kPaletteColors>& m_palette;
    std::unordered_map<COLORREF, std::byte> m_known;
};

// Maps the view's window onto the picture. False for a view without a window.
bool setPictureMapping(CDC& dc, const CRect& displayWindow)
{
    const CPoint origin{toLogical(displayWindow.left), toLogical(displayWindow.top)};
    const CSize extent{toLogical(displayWindow.Width()), toLogical(displayWindow.Height())};
    if (extent.cx == 0 || extent.cy == 0) {
        return false;
    }
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowOrg(origin);
    dc.SetWindowExt(extent);
    dc.SetViewportOrg(0, 0);
    // The height is not negated as in a window, so the picture stands on its head. Every drawing
    // that is in use holds it so, and what shows the pictures must see them all alike.
    dc.SetViewportExt(kWidth, kHeight);
    return true;
}

// False when the time is up before the last entity.
bool drawWithinBudget(CDC& dc, const CVexDbIdSet& set)
{
    const CVexMachine& machine = CVexMachine::current();
    const double start = machine.steadySeconds();
    unsigned drawn = 0;
    for (auto at = set.begin(); at != set.end(); ++at) {
        if (++drawn % kEntitiesPerLook == 0 && machine.steadySeconds() - start > kBudgetSeconds) {
            return false;
        }
        static_cast<CVexDbEntity*>(at.object())->Draw(&dc);
    }
    return machine.steadySeconds() - start <= kBudgetSeconds;
}

void storeInfo(std::byte* at)
{
    storeLittle(at, static_cast<std::uint32_t>(kInfoSize));
    storeLittle(at + 4, std::int32_t{kWidth});
    storeLittle(at + 8, std::int32_t{kHeight}); // positive: the bottom row comes first
    storeLittle(at + 12, std::uint16_t{1});     // planes
    storeLittle(at + 14, static_cast<std::uint16_t>(kBitsPerPixel));
    storeLittle(at + 20, static_cast<std::uint32_t>(kImageBytes)); // behind compression 0
}

void storePicture(CDC& dc, std::byte* thumbnail)
{
    storeInfo(thumbnail);
    static const std::array<COLORREF, kPaletteColors> palette = makePalette();
    std::byte* color = thumbnail + kInfoSize;
    for (const COLORREF each : palette) {
        color[0] = static_cast<std::byte>(GetBValue(each));
        color[1] = static_cast<std::byte>(GetGValue(each));
        color[2] = static_cast<std::byte>(GetRValue(each));
        color += 4;
    }
    dc.SetMapMode(MM_TEXT); // from here on a logical point is a pixel
    dc.SetWindowOrg(0, 0);
    dc.SetViewportOrg(0, 0);
    PaletteMatcher matcher(palette);
    for (int y = 0; y < kHeight; ++y) {
        std::byte* const row =
            thumbnail + kPixelsAt + std::ptrdiff_t{kRowBytes} * (kHeight - 1 - y);
        for (int x = 0; x < kWidth; ++x) {
            row[x] = matcher.indexOf(dc.GetPixel({x, y}));
        }
    }
}

} // namespace

void CVexDbDatabase::DrawThumnail()
{
    CVexDbDisplayTableRecord* const view = m_displays.getCurrentRecord();
    const std::unique_ptr<CDC> dc = CVexBackend::current().createImageDC({kWidth, kHeight});
    if (view == nullptr || dc == nullptr || !setPictureMapping(*dc, view->displayWindow()) ||
        !drawWithinBudget(*dc, *view->displayedIdSet())) {
        return;
    }
    std::fill(std::begin(m_header.m_thumbnail), std::end(m_header.m_thumbnail), std::byte{0});
    storePicture(*dc, m_header.m_thumbnail);
}
