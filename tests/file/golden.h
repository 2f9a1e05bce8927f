#pragma once

#include "tests/file/bytes.h"
#include "tests/file/filetest.h"

#include <cstdint>
#include <string_view>

// A drawing file laid out by hand. What a drawing numbers for itself, its records and entities, is
// asked of it; all else is written out.

/// The three fixed blocks and the plane of a fresh drawing that DESK-7, mara saves as plan.zpl.
inline Bytes goldenHead()
{
    Bytes file;
    file.text("Z-Ply", 12).text("DESK-7", 33).text("mara", 33).text("plan", 33);
    file.text("1.001a", 8).text("2026-03-14", 12).text("/home/mara/pipes", 256).zeros(512);
    file.zeros(0x4f38);
    file.u8(0).u8(1).zeros(5).u8(4).u8(0).u8(3).u8(5).u8(5).zeros(4);
    file.zeros(8).f64(1.0).f64(2.0).f64(1.0).f64(0.0).f64(1.0).f64(0.2).f64(100.0);
    file.f64(0).f64(0).f64(0).f64(0).f64(420).f64(297).zeros(64).u16(256).zeros(2).i32(-1);
    // Saved, the text style has its record's name, in capitals.
    file.text("0", 81).text("ByLayer", 81).text("STANDARD", 81).zeros(2);
    file.f64(0).f64(0).f64(420).f64(297).zeros(0x1e0);
    file.text("arrow", 32).text("standard", 32);
    file.u16(2).u16(1).u16(256).u16(256).u16(256).u16(2).u16(0).u16(1).u16(1).zeros(6);
    file.f64(2.0).f64(2.0).f64(5.0).f64(7.0).f64(1.0).f64(0.5).f64(0.5).f64(0.005).f64(1.0);
    file.f64(1.6);
    file.f64(0.0).f64(0.0).f64(1.0).f64(0.0);
    return file;
}

inline Bytes goldenColor(CVexDbDatabase& drawing, std::string_view name, std::uint32_t color)
{
    Bytes record;
    const std::wstring key(name.begin(), name.end());
    record.object(numberOf(drawing.colors(), key.c_str()), 45, 0).text(name, 81);
    return record.zeros(20).u32(color).u8(0); // no natural name, not modified
}

inline Bytes goldenLinetype(CVexDbDatabase& drawing, std::string_view name,
                            std::initializer_list<double> dashes, double length,
                            std::string_view description)
{
    Bytes record;
    const std::wstring key(name.begin(), name.end());
    record.object(numberOf(drawing.linetypes(), key.c_str()), 47, 0).text(name, 81);
    record.u32(static_cast<std::uint32_t>(dashes.size()));
    for (const double dash : dashes) {
        record.f64(dash);
    }
    return record.f64(length).text(description, 81);
}

inline Bytes goldenLayer(CVexDbDatabase& drawing, std::string_view name, const wchar_t* color)
{
    Bytes record;
    const std::wstring key(name.begin(), name.end());
    record.object(numberOf(drawing.layers(), key.c_str()), 46, 0).text(name, 81).u16(0);
    record.u64(numberOf(drawing.colors(), color));
    return record.u64(numberOf(drawing.linetypes(), L"CONTINUOUS")).i32(0);
}

/// The tables of a fresh drawing up to the block table.
inline Bytes goldenTables(CVexDbDatabase& drawing)
{
    Bytes file;
    file.u16(9); // names sort by 16-bit units: "256" before "3"
    file << goldenColor(drawing, "0", 0xffffff) << goldenColor(drawing, "1", 0x0000ff)
         << goldenColor(drawing, "2", 0x00ffff) << goldenColor(drawing, "256", 0xffffff)
         << goldenColor(drawing, "3", 0x00ff00) << goldenColor(drawing, "4", 0xffff00)
         << goldenColor(drawing, "5", 0xff0000) << goldenColor(drawing, "6", 0xff00ff)
         << goldenColor(drawing, "7", 0xffffff);
    file.u16(0).u16(4);
    file << goldenLinetype(drawing, "ByBlock", {0.0}, 0.0, "")
         << goldenLinetype(drawing, "ByLayer", {0.0}, 0.0, "")
         << goldenLinetype(drawing, "CONTINUOUS", {0.0}, 0.0, "______________________________")
         << goldenLinetype(drawing, "Hidden", {1.0, -0.5}, 1.5, "- - - - - - - -");
    file.u16(0).u16(4);
    file << goldenLayer(drawing, "0", L"7") << goldenLayer(drawing, "Dimension", L"3")
         << goldenLayer(drawing, "PipeLine", L"1") << goldenLayer(drawing, "WeldNum", L"7");
    file.u16(0).u16(1);
    file.object(numberOf(drawing.textStyles(), L"STANDARD"), 49, 0).text("STANDARD", 81);
    file.u8(0).zeros(32).text("KOSDICES", 81).text("KOSDICHS", 81);
    file.zeros(162).u8(0).u8(0).i32(0).i32(0); // the system font's 172 bytes
    file.u16(0);
    file.u16(0).u32(0).u16(0);                           // symbols
    file.text("", 81).text("", 81).u16(0).u32(0).u16(0); // project information
    file.u16(0).u32(0).u16(0);                           // revisions
    return file;
}

/// The block table with the model space; `entities` holds each behind its class type.
inline Bytes goldenBlocks(CVexDbDatabase& drawing, std::uint32_t count, const Bytes& entities)
{
    Bytes file;
    file.u16(1);
    file.object(numberOf(drawing.blocks(), L"MODEL_SPACE"), 42, 1).text("MODEL_SPACE", 81);
    file.u32(count) << entities;
    return file.u32(0).u16(0);
}

inline std::vector<std::byte> goldenDrawing(CVexDbDatabase& drawing, std::uint32_t count,
                                            const Bytes& entities)
{
    Bytes file;
    file << goldenHead() << goldenTables(drawing) << goldenBlocks(drawing, count, entities);
    return file.all();
}

/// Class type, object and entity record of an entity on layer "0", by layer in all, without
/// extended data: what stands before the fields of its class.
inline Bytes goldenEntity(CVexDbDatabase& drawing, std::uint64_t number, std::uint32_t classType,
                          unsigned status = 4)
{
    Bytes record;
    record.u32(classType).object(number, classType, status);
    record.u64(numberOf(drawing.layers(), L"0")).u64(numberOf(drawing.linetypes(), L"ByLayer"));
    return record.i32(256).i32(-1).u16(0);
}
