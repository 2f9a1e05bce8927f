#include "platform/base/vextext.h"
#include "tests/file/bytes.h"
#include "vexdb/dbobject/vexdbfileblocks.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

template <class Block>
std::vector<std::byte> savedBlock(const Block& block)
{
    CMemFile file;
    EXPECT_TRUE(block.save(file));
    EXPECT_TRUE(file.Close());
    return file.bytes();
}

TEST(FileBlocksTest, FreshHeaderIsSignatureAndVersion)
{
    Bytes expected;
    expected.text("Z-Ply", 12).zeros(0x00de - 0x0018).text("1.001a", 8).zeros(0x543e - 0x00ee);
    ASSERT_EQ(0x543eu, expected.size());
    EXPECT_SAME_BYTES(expected.all(), savedBlock(VexDbFileHeader_tag()));
}

TEST(FileBlocksTest, HeaderFieldsStandAtTheirOffsets)
{
    VexDbFileHeader_tag header;
    copyText(header.m_szComputer, L"computer");
    copyText(header.m_szUser, L"user");
    copyText(header.m_szTitle, L"title");
    copyText(header.m_szDate, L"2026-03-14");
    copyText(header.m_szFolder, L"folder");
    copyText(header.m_szDescription, L"words");
    header.m_thumbnail[0] = std::byte{0x28};
    header.m_thumbnail[0x4f37] = std::byte{0x99};
    Bytes expected;
    expected.text("Z-Ply", 12).text("computer", 33).text("user", 33).text("title", 33);
    expected.text("1.001a", 8).text("2026-03-14", 12).text("folder", 256).text("words", 256);
    expected.u8(0x28).zeros(0x4f36).u8(0x99);
    EXPECT_SAME_BYTES(expected.all(), savedBlock(header));
}

// Every default of a fresh drawing, with the gaps.
Bytes freshSettings()
{
    Bytes block;
    block.u8(0).u8(1).u8(0).u8(0).u8(0).u8(0).u8(0).u8(4);       // 0x000
    block.u8(0).u8(3).u8(5).u8(5).u8(0).u8(0).u8(0).u8(0);       // 0x008
    block.u32(0).u16(0).zeros(2);                                // 0x010
    block.f64(1.0).f64(2.0).f64(1.0).f64(0.0).f64(1.0).f64(0.2); // 0x018
    block.f64(100.0);                                            // 0x048
    block.f64(0).f64(0).f64(0).f64(0).f64(420).f64(297);         // 0x050
    block.zeros(64);                                             // 0x080
    block.u16(256).zeros(2).i32(-1);                             // 0x0c0
    block.text("0", 81).text("ByLayer", 81).text("standard", 81).zeros(2);
    block.f64(0).f64(0).f64(420).f64(297); // 0x2b0
    block.zeros(0x1e0);
    return block;
}

TEST(FileBlocksTest, FreshSettingsHoldTheDefaults)
{
    ASSERT_EQ(0x4b0u, freshSettings().size());
    EXPECT_SAME_BYTES(freshSettings().all(), savedBlock(VexDbDrawingSettings_tag()));
}

TEST(FileBlocksTest, FreshDimensionSettingsHoldTheDefaults)
{
    Bytes expected;
    expected.text("arrow", 32).text("standard", 32);
    expected.u16(2).u16(1).u16(256).u16(256).u16(256).u16(2).u16(0).u16(1).u16(1).zeros(6);
    expected.f64(2.0).f64(2.0).f64(5.0).f64(7.0).f64(1.0).f64(0.5).f64(0.5).f64(0.005);
    expected.f64(1.0).f64(1.6);
    ASSERT_EQ(0xe8u, expected.size());
    EXPECT_SAME_BYTES(expected.all(), savedBlock(VexDbDimSettings_tag()));
}

using Settings = VexDbDrawingSettings_tag;

// One setting that is changed, and the byte of the file that then differs first.
struct SettingRow {
    const char* name;
    std::function<void(Settings&)> change;
    std::size_t offset;
};

const SettingRow kSettingRows[] = {
    {"Ortho", [](Settings& s) { s.m_bOrtho = true; }, 0x000},
    {"GridDivisions", [](Settings& s) { s.m_nGridDivisions = 9; }, 0x001},
    {"GripSnap", [](Settings& s) { s.m_bGripSnap = true; }, 0x002},
    {"GridVisible", [](Settings& s) { s.m_bGridVisible = true; }, 0x003},
    {"PolarReadout", [](Settings& s) { s.m_bPolarReadout = true; }, 0x004},
    {"GridSnap", [](Settings& s) { s.m_bGridSnap = true; }, 0x005},
    {"PointStyle", [](Settings& s) { s.m_nPointStyle = 14; }, 0x009},
    {"PointSize", [](Settings& s) { s.m_nPointSize = 9; }, 0x00a},
    {"PickBox", [](Settings& s) { s.m_nPickBox = 9; }, 0x00b},
    {"SnapIntersection", [](Settings& s) { s.m_bSnapIntersection = true; }, 0x00c},
    {"SnapCenter", [](Settings& s) { s.m_bSnapCenter = true; }, 0x00d},
    {"SnapNearest", [](Settings& s) { s.m_bSnapNearest = true; }, 0x00e},
    {"GridPointSnap", [](Settings& s) { s.m_bGridPointSnap = true; }, 0x00f},
    {"CurrentSpace", [](Settings& s) { s.m_nCurrentSpace = 1; }, 0x014},
    {"LinetypeScale", [](Settings& s) { s.m_dLinetypeScale = 2.0; }, 0x01e},
    {"TextHeight", [](Settings& s) { s.m_dTextHeight = 4.0; }, 0x026},
    {"GridStep", [](Settings& s) { s.m_dGridStep = 2.0; }, 0x02e},
    {"ZoomStep", [](Settings& s) { s.m_dZoomStep = 0.4; }, 0x046},
    {"ScalePercent", [](Settings& s) { s.m_dScalePercent = 101.0; }, 0x04d},
    {"BlockBase", [](Settings& s) { s.m_ptBlockBase.set(2.0, 0.0); }, 0x057},
    {"LimitsMin", [](Settings& s) { s.m_ptLimitsMin.set(0.0, 2.0); }, 0x06f},
    {"LimitsMax", [](Settings& s) { s.m_ptLimitsMax.set(840.0, 297.0); }, 0x076},
    {"ExtentsMin", [](Settings& s) { s.m_ptExtentsMin.set(2.0, 0.0); }, 0x087},
    {"ExtentsMax", [](Settings& s) { s.m_ptExtentsMax.set(2.0, 0.0); }, 0x097},
    {"ViewMin", [](Settings& s) { s.m_ptViewMin.set(2.0, 0.0); }, 0x0a7},
    {"ViewMax", [](Settings& s) { s.m_ptViewMax.set(2.0, 0.0); }, 0x0b7},
    {"ColorIndex", [](Settings& s) { s.m_nColorIndex = 7; }, 0x0c0},
    {"LineWeight", [](Settings& s) { s.m_nLineWeight = 25; }, 0x0c4},
    {"Layer", [](Settings& s) { copyText(s.m_szLayer, L"P"); }, 0x0c8},
    {"Linetype", [](Settings& s) { copyText(s.m_szLinetype, L"P"); }, 0x16a},
    {"TextStyle", [](Settings& s) { copyText(s.m_szTextStyle, L"P"); }, 0x20c},
    {"PaperMin", [](Settings& s) { s.m_ptPaperMin.set(2.0, 0.0); }, 0x2b7},
    {"PaperMax", [](Settings& s) { s.m_ptPaperMax.set(840.0, 297.0); }, 0x2c6},
};

class SettingTest : public testing::TestWithParam<SettingRow> {};

TEST_P(SettingTest, StandsAtItsOffsetAndComesBack)
{
    Settings settings;
    GetParam().change(settings);
    const std::vector<std::byte> before = savedBlock(Settings());
    const std::vector<std::byte> after = savedBlock(settings);
    const auto first = std::mismatch(before.begin(), before.end(), after.begin()).first;
    EXPECT_EQ(GetParam().offset, static_cast<std::size_t>(first - before.begin()));
    Settings again;
    CMemFile file(after);
    EXPECT_TRUE(again.read(file));
    EXPECT_SAME_BYTES(after, savedBlock(again));
}

INSTANTIATE_TEST_SUITE_P(All, SettingTest, testing::ValuesIn(kSettingRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(FileBlocksTest, BlockThatEndsEarlyLeavesTheSettingsAsTheyWere)
{
    std::vector<std::byte> bytes(0x4af, std::byte{0xff});
    CMemFile file(bytes);
    Settings settings;
    EXPECT_FALSE(settings.read(file));
    EXPECT_SAME_BYTES(freshSettings().all(), savedBlock(settings));
}

TEST(FileBlocksTest, BytesBehindATextsEndAndInGapsAreNotRead)
{
    std::vector<std::byte> bytes = freshSettings().all();
    for (const std::size_t gap : {0x016u, 0x0c2u, 0x0ccu, 0x169u, 0x2aeu, 0x4afu}) {
        bytes[gap] = std::byte{0xcd};
    }
    CMemFile file(bytes);
    Settings settings;
    EXPECT_TRUE(settings.read(file));
    EXPECT_SAME_BYTES(freshSettings().all(), savedBlock(settings));
}

TEST(FileBlocksTest, NonFiniteNumbersComeBackBitByBit)
{
    Settings settings;
    settings.m_dLinetypeScale = std::bit_cast<double>(0x7ff80000deadbeefULL);
    settings.m_ptViewMax.set(-HUGE_VAL, 1e308);
    const std::vector<std::byte> bytes = savedBlock(settings);
    CMemFile file(bytes);
    Settings again;
    EXPECT_TRUE(again.read(file));
    EXPECT_SAME_BYTES(bytes, savedBlock(again));
}

} // namespace
