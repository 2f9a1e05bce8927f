// Random polylines with everything that a file keeps of them, laid out by hand and read back.

#include "tests/file/filetest.h"
#include "tests/vexdb/randompolylines.h"

namespace {

constexpr std::uint64_t kSeed = 20261124;

class PolylineRecordPropertyTest : public FileTest {
protected:
    /// A polyline with widths, tags, fill and mode by chance, also what is not shown: a fill of an
    /// open one, a bulge behind its end, a bulge of -0.
    CVexDbPolyline* addAny()
    {
        CVexGePolyline2d chain = random.chain(
            random.below(30) == 0 ? random.below(3) : random.count(), random.below(2) == 0);
        for (unsigned i = 0; i < chain.numVerts(); ++i) {
            CVexGePoint2d marked = chain.vertices()[i];
            marked.tag = random.below(3) == 0 ? random.below(1 << 30) - (1 << 29) : 0;
            chain.setPointAt(i, marked);
            if (random.below(2) == 0) {
                chain.setWidthsAt(i, random.within(-1, 5), random.within(-1, 5));
            }
            if (random.below(5) == 0) {
                chain.setBulgeAt(i, random.below(2) == 0 ? -0.0 : random.within(-1e-3, 1e-3));
            }
        }
        auto* const made = new CVexDbPolyline(0, &drawing);
        made->SetGeometry(chain);
        fills.push_back(chain.closed() && random.below(2) == 0);
        made->SetFill(fills.back());
        made->SetFillMode(random.below(9) - 1);
        return addTo(drawing, made);
    }
    /// What the class writes behind the fields that every entity has.
    static Bytes ownBytes(const CVexDbPolyline& polyline, bool fill)
    {
        const CVexGePolyline2d& chain = polyline.gePolyline();
        Bytes bytes;
        bytes.i32(static_cast<std::int32_t>(chain.numVerts())).u8(chain.isClosed() ? 1 : 0);
        for (std::size_t i = 0; i < chain.numVerts(); ++i) {
            const CVexGePoint2d& at = chain.vertices()[i];
            bytes.point(at.x, at.y, at.tag).f64(chain.bulges()[i]);
            bytes.f64(chain.startWidths()[i]).f64(chain.endWidths()[i]);
        }
        return bytes.u8(fill ? 1 : 0).i32(polyline.FillMode());
    }

    RandomPolylines random{kSeed};
    CVexDbDatabase drawing{false};
    std::vector<bool> fills;
};

TEST_F(PolylineRecordPropertyTest, EachStandsInTheFileFieldByField)
{
    std::vector<CVexDbPolyline*> polylines;
    for (int i = 0; i < 400; ++i) {
        polylines.push_back(addAny());
    }
    const std::vector<std::byte> file = saved(drawing);
    auto from = file.begin();
    for (std::size_t i = 0; i < polylines.size(); ++i) { // in the order in which they were made
        const Bytes own = ownBytes(*polylines[i], fills[i]);
        from = std::search(from, file.end(), own.all().begin(), own.all().end());
        ASSERT_TRUE(from != file.end()) << "polyline " << i;
        from += static_cast<std::ptrdiff_t>(own.size());
    }
}

TEST_F(PolylineRecordPropertyTest, WhatIsReadIsWhatWasSavedToTheByte)
{
    for (int i = 0; i < 400; ++i) {
        addAny();
    }
    const std::vector<std::byte> file = saved(drawing);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, file));
    EXPECT_WHOLE(again);
    EXPECT_SAME_BYTES(file, saved(again));
    const std::vector<CVexDbEntity*> before = entitiesOf(drawing);
    const std::vector<CVexDbEntity*> after = entitiesOf(again);
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto& source = static_cast<const CVexDbPolyline&>(*before[i]);
        const auto& copy = static_cast<const CVexDbPolyline&>(*after[i]);
        EXPECT_SAME_BYTES(ownBytes(source, fills[i]).all(), ownBytes(copy, fills[i]).all());
        EXPECT_EQ(source.IsFill(), copy.IsFill()) << i;
    }
}

// Wherever the file ends: what is whole is kept, the polyline that is cut off is not.
TEST_F(PolylineRecordPropertyTest, FileThatEndsWithinAPolylineKeepsTheOnesBefore)
{
    for (int i = 0; i < 12; ++i) {
        addAny();
    }
    const CVexDbPolyline& last = *addAny();
    const Bytes own = ownBytes(last, fills.back());
    const std::vector<std::byte> file = saved(drawing);
    const auto from = std::search(file.begin(), file.end(), own.all().begin(), own.all().end());
    ASSERT_TRUE(from != file.end());
    for (std::size_t kept = 0; kept < own.size(); kept += 1 + own.size() / 200) {
        const auto end = from + static_cast<std::ptrdiff_t>(kept);
        CVexDbDatabase cut(false);
        EXPECT_FALSE(read(cut, {file.begin(), end})) << kept;
        EXPECT_WHOLE(cut);
        EXPECT_EQ(12u, entitiesOf(cut).size()) << kept;
    }
}

} // namespace
