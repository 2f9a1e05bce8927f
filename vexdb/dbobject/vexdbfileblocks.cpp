#include "vexdb/dbobject/vexdbfileblocks.h"

#include "platform/base/vexfields.h"
#include "platform/base/vextext.h"

#include <algorithm>
#include <array>
#include <span>

namespace {

// What a member takes in the file, and its form there.

template <class T>
struct FieldForm {
    static constexpr std::size_t kSize = sizeof(T);
    static void store(std::byte* at, const T& value) { storeLittle(at, value); }
    static void load(const std::byte* at, T& value) { value = loadLittle<T>(at); }
};

template <std::size_t N>
struct FieldForm<wchar_t[N]> {
    static constexpr std::size_t kSize = 2 * N;
    static void store(std::byte* at, const wchar_t (&text)[N]) { storeText(at, N, text); }
    static void load(const std::byte* at, wchar_t (&text)[N]) { loadText(at, N, text); }
};

template <std::size_t N>
struct FieldForm<std::byte[N]> {
    static constexpr std::size_t kSize = N;
    static void store(std::byte* at, const std::byte (&bytes)[N]) { std::copy_n(bytes, N, at); }
    static void load(const std::byte* at, std::byte (&bytes)[N]) { std::copy_n(at, N, bytes); }
};

template <>
struct FieldForm<VexXY> {
    static constexpr std::size_t kSize = 16;
    static void store(std::byte* at, const VexXY& pair)
    {
        storeLittle(at, pair.x);
        storeLittle(at + 8, pair.y);
    }
    static void load(const std::byte* at, VexXY& pair)
    {
        pair.x = loadLittle<double>(at);
        pair.y = loadLittle<double>(at + 8);
    }
};

/// One member of a block: where it stands in the file, and how it gets there and back.
template <class Block>
struct Row {
    std::size_t offset;
    std::size_t size;
    void (*store)(std::byte* at, const Block& block);
    void (*load)(const std::byte* at, Block& block);
};

template <class T>
struct MemberOf;
template <class Block, class Field>
struct MemberOf<Field Block::*> {
    using BlockType = Block;
    using FieldType = Field;
};

template <auto kMember>
constexpr auto row(std::size_t offset)
{
    using Block = typename MemberOf<decltype(kMember)>::BlockType;
    using Form = FieldForm<typename MemberOf<decltype(kMember)>::FieldType>;
    return Row<Block>{offset, Form::kSize,
                      [](std::byte* at, const Block& block) { Form::store(at, block.*kMember); },
                      [](const std::byte* at, Block& block) { Form::load(at, block.*kMember); }};
}

/// True when the rows stand in order, do not overlap and end within `total` bytes.
template <class Rows>
constexpr bool rowsFit(const Rows& rows, std::size_t total)
{
    std::size_t end = 0;
    for (const auto& each : rows) {
        if (each.offset < end) {
            return false;
        }
        end = each.offset + each.size;
    }
    return end <= total;
}

template <class Block>
bool saveRows(CFile& file, const Block& block, std::span<const Row<Block>> rows)
{
    std::byte* const at = file.give(Block::kFileSize);
    std::fill_n(at, Block::kFileSize, std::byte{0}); // the gaps are zeros
    for (const Row<Block>& each : rows) {
        each.store(at + each.offset, block);
    }
    return !file.failed();
}

// All of the block or nothing: one that the file ends in leaves the settings as they were.
template <class Block>
bool readRows(CFile& file, Block& block, std::span<const Row<Block>> rows)
{
    const std::byte* const at = file.take(Block::kFileSize);
    if (at == nullptr) {
        return false;
    }
    for (const Row<Block>& each : rows) {
        each.load(at + each.offset, block);
    }
    return true;
}

// The offsets are the format: a row may be added in a gap, none may move.

using Header = VexDbFileHeader_tag;
constexpr std::array kHeaderRows = {
    row<&Header::m_szSignature>(0x0000), row<&Header::m_szComputer>(0x0018),
    row<&Header::m_szUser>(0x005a),      row<&Header::m_szTitle>(0x009c),
    row<&Header::m_szVersion>(0x00de),   row<&Header::m_szDate>(0x00ee),
    row<&Header::m_szFolder>(0x0106),    row<&Header::m_szDescription>(0x0306),
    row<&Header::m_thumbnail>(0x0506),
};
static_assert(rowsFit(kHeaderRows, Header::kFileSize) && Header::kFileSize == 0x543e);

using Settings = VexDbDrawingSettings_tag;
constexpr std::array kSettingsRows = {
    row<&Settings::m_bOrtho>(0x000),
    row<&Settings::m_nGridDivisions>(0x001),
    row<&Settings::m_bGripSnap>(0x002),
    row<&Settings::m_bGridVisible>(0x003),
    row<&Settings::m_bPolarReadout>(0x004),
    row<&Settings::m_bGridSnap>(0x005),
    row<&Settings::m_nReserved6>(0x006),
    row<&Settings::m_nReserved7>(0x007),
    row<&Settings::m_nReserved8>(0x008),
    row<&Settings::m_nPointStyle>(0x009),
    row<&Settings::m_nPointSize>(0x00a),
    row<&Settings::m_nPickBox>(0x00b),
    row<&Settings::m_bSnapIntersection>(0x00c),
    row<&Settings::m_bSnapCenter>(0x00d),
    row<&Settings::m_bSnapNearest>(0x00e),
    row<&Settings::m_bGridPointSnap>(0x00f),
    row<&Settings::m_nReserved10>(0x010),
    row<&Settings::m_nCurrentSpace>(0x014),
    row<&Settings::m_dLinetypeScale>(0x018),
    row<&Settings::m_dTextHeight>(0x020),
    row<&Settings::m_dGridStep>(0x028),
    row<&Settings::m_dReserved30>(0x030),
    row<&Settings::m_dReserved38>(0x038),
    row<&Settings::m_dZoomStep>(0x040),
    row<&Settings::m_dScalePercent>(0x048),
    row<&Settings::m_ptBlockBase>(0x050),
    row<&Settings::m_ptLimitsMin>(0x060),
    row<&Settings::m_ptLimitsMax>(0x070),
    row<&Settings::m_ptExtentsMin>(0x080),
    row<&Settings::m_ptExtentsMax>(0x090),
    row<&Settings::m_ptViewMin>(0x0a0),
    row<&Settings::m_ptViewMax>(0x0b0),
    row<&Settings::m_nColorIndex>(0x0c0),
    row<&Settings::m_nLineWeight>(0x0c4),
    row<&Settings::m_szLayer>(0x0c8),
    row<&Settings::m_szLinetype>(0x16a),
    row<&Settings::m_szTextStyle>(0x20c),
    row<&Settings::m_ptPaperMin>(0x2b0),
    row<&Settings::m_ptPaperMax>(0x2c0), // the 0x1e0 bytes behind it are reserved
};
static_assert(rowsFit(kSettingsRows, Settings::kFileSize) && Settings::kFileSize == 0x4b0);

using DimSettings = VexDbDimSettings_tag;
constexpr std::array kDimSettingsRows = {
    row<&DimSettings::m_szArrowBlock>(0x00),   row<&DimSettings::m_szTextStyle>(0x40),
    row<&DimSettings::m_nAngularPlaces>(0x80), row<&DimSettings::m_nAngularReserved>(0x82),
    row<&DimSettings::m_nLineColor>(0x84),     row<&DimSettings::m_nExtensionColor>(0x86),
    row<&DimSettings::m_nTextColor>(0x88),     row<&DimSettings::m_nLinearPlaces>(0x8a),
    row<&DimSettings::m_nReserved8c>(0x8c),    row<&DimSettings::m_nReserved8e>(0x8e),
    row<&DimSettings::m_nSuppressZeros>(0x90), row<&DimSettings::m_dArrowSize>(0x98),
    row<&DimSettings::m_dReservedA0>(0xa0),    row<&DimSettings::m_dReservedA8>(0xa8),
    row<&DimSettings::m_dReservedB0>(0xb0),    row<&DimSettings::m_dLengthFactorB8>(0xb8),
    row<&DimSettings::m_dReservedC0>(0xc0),    row<&DimSettings::m_dReservedC8>(0xc8),
    row<&DimSettings::m_dReservedD0>(0xd0),    row<&DimSettings::m_dReservedD8>(0xd8),
    row<&DimSettings::m_dReservedE0>(0xe0),
};
static_assert(rowsFit(kDimSettingsRows, DimSettings::kFileSize) && DimSettings::kFileSize == 0xe8);

} // namespace

VexDbFileHeader_tag::VexDbFileHeader_tag()
    : m_szSignature(), m_szComputer(), m_szUser(), m_szTitle(), m_szVersion(), m_szDate(),
      m_szFolder(), m_szDescription(), m_thumbnail()
{
    copyText(m_szSignature, L"Z-Ply");
    copyText(m_szVersion, L"1.001a");
}

bool VexDbFileHeader_tag::save(CFile& file) const
{
    return saveRows<VexDbFileHeader_tag>(file, *this, kHeaderRows);
}

bool VexDbFileHeader_tag::read(CFile& file)
{
    return readRows<VexDbFileHeader_tag>(file, *this, kHeaderRows);
}

VexDbDrawingSettings_tag::VexDbDrawingSettings_tag()
    : m_bOrtho(false), m_nGridDivisions(1), m_bGripSnap(false), m_bGridVisible(false),
      m_bPolarReadout(false), m_bGridSnap(false), m_nReserved6(0), m_nReserved7(4), m_nReserved8(0),
      m_nPointStyle(3), m_nPointSize(5), m_nPickBox(5), m_bSnapIntersection(false),
      m_bSnapCenter(false), m_bSnapNearest(false), m_bGridPointSnap(false), m_nReserved10(0),
      m_nCurrentSpace(0), m_dLinetypeScale(1.0), m_dTextHeight(2.0), m_dGridStep(1.0),
      m_dReserved30(0.0), m_dReserved38(1.0), m_dZoomStep(0.2),
      m_dScalePercent(100.0), m_ptBlockBase{0.0, 0.0}, m_ptLimitsMin{0.0, 0.0},
      m_ptLimitsMax{420.0, 297.0}, m_ptExtentsMin{0.0, 0.0}, m_ptExtentsMax{0.0, 0.0},
      m_ptViewMin{0.0, 0.0}, m_ptViewMax{0.0, 0.0}, m_nColorIndex(256), m_nLineWeight(-1),
      m_szLayer(), m_szLinetype(),
      m_szTextStyle(), m_ptPaperMin{0.0, 0.0}, m_ptPaperMax{420.0, 297.0}
{
    copyText(m_szLayer, L"0");
    copyText(m_szLinetype, L"ByLayer");
    // In lower case although the record is "STANDARD": blocks written before a first save hold it
    // so, and Save puts the record's own name here.
    copyText(m_szTextStyle, L"standard");
}

bool VexDbDrawingSettings_tag::save(CFile& file) const
{
    return saveRows<VexDbDrawingSettings_tag>(file, *this, kSettingsRows);
}

bool VexDbDrawingSettings_tag::read(CFile& file)
{
    return readRows<VexDbDrawingSettings_tag>(file, *this, kSettingsRows);
}

VexDbDimSettings_tag::VexDbDimSettings_tag()
    : m_szArrowBlock(), m_szTextStyle(), m_nAngularPlaces(2), m_nAngularReserved(1),
      m_nLineColor(256), m_nExtensionColor(256), m_nTextColor(256), m_nLinearPlaces(2),
      m_nReserved8c(0), m_nReserved8e(1), m_nSuppressZeros(1), m_dArrowSize(2.0),
      m_dReservedA0(2.0), m_dReservedA8(5.0), m_dReservedB0(7.0), m_dLengthFactorB8(1.0),
      m_dReservedC0(0.5), m_dReservedC8(0.5), m_dReservedD0(0.005), m_dReservedD8(1.0),
      m_dReservedE0(1.6)
{
    copyText(m_szArrowBlock, L"arrow");
    copyText(m_szTextStyle, L"standard");
}

bool VexDbDimSettings_tag::save(CFile& file) const
{
    return saveRows<VexDbDimSettings_tag>(file, *this, kDimSettingsRows);
}

bool VexDbDimSettings_tag::read(CFile& file)
{
    return readRows<VexDbDimSettings_tag>(file, *this, kDimSettingsRows);
}
