#pragma once

#include "platform/headless/vexrecordingdc.h"
#include "tests/file/bytes.h"
#include "tests/vexge/geasserts.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

/// A fresh drawing that is the active one, and a context where a pixel is a logical unit.
class EntityTest : public testing::Test {
protected:
    EntityTest() { _gpDatabase = &drawing; }
    ~EntityTest() override { _gpDatabase = nullptr; }

    /// Puts a new entity into the drawing, which owns it from then on.
    template <class Entity>
    Entity* add(Entity* entity)
    {
        CVexDbObjectId id;
        drawing.addEntity(entity, id);
        return entity;
    }
    CVexDbLine* addLine(CVexGePoint2d start, CVexGePoint2d end)
    {
        return add(new CVexDbLine(start, end));
    }
    CVexDbLayerTableRecord& layer(const wchar_t* name)
    {
        CVexDbLayerTableRecord* record = nullptr;
        EXPECT_TRUE(drawing.layers().getRecord(name, record, false));
        return *record;
    }
    CVexDbLTypeTableRecord& linetype(const wchar_t* name)
    {
        CVexDbLTypeTableRecord* record = nullptr;
        EXPECT_TRUE(drawing.linetypes().getRecord(name, record, false));
        return *record;
    }
    CVexDbColorTableRecord& color(const wchar_t* name)
    {
        CVexDbColorTableRecord* record = nullptr;
        EXPECT_TRUE(drawing.colors().getRecord(name, record, false));
        return *record;
    }
    /// What `entity` writes into a file.
    std::vector<std::byte> saved(CVexDbEntity& entity)
    {
        CMemFile file;
        drawing.setFile(&file);
        EXPECT_TRUE(entity.save());
        drawing.setFile(nullptr);
        file.Close();
        return file.bytes();
    }
    /// Whether `entity` reads itself from these bytes.
    bool reads(CVexDbEntity& entity, const std::vector<std::byte>& bytes)
    {
        CMemFile file(bytes);
        drawing.setFile(&file);
        const bool whole = entity.read();
        drawing.setFile(nullptr);
        return whole;
    }
    /// The bytes in front of a class's own fields, by the drawing's defaults, without extended
    /// data.
    Bytes head(CVexDbEntity& entity, VexDb::ClassType type)
    {
        Bytes bytes;
        bytes.object(entity.getCreatedTime(), type, 0x04);
        bytes.u64(layer(L"0").getCreatedTime()).u64(linetype(L"ByLayer").getCreatedTime());
        bytes.i32(256).i32(-1);
        return bytes;
    }

    CVexDbDatabase drawing{false};
    CVexRecordingDC dc;
};

/// The strokes in words, one a line: "line 0,0 10,5".
inline std::string inWords(const std::vector<VexStroke>& strokes)
{
    static constexpr const char* kNames[] = {"line",    "polyline", "polygon", "rectangle",
                                             "ellipse", "fill",     "pixel",   "blit"};
    std::ostringstream text;
    for (const VexStroke& stroke : strokes) {
        text << kNames[static_cast<int>(stroke.kind)];
        for (const CPoint& point : stroke.points) {
            text << ' ' << point.x << ',' << point.y;
        }
        text << '\n';
    }
    return text.str();
}

/// Names and values of a group of property rows: "Width=4.000000".
inline std::string inWords(const std::vector<Property>& rows)
{
    std::ostringstream text;
    for (const Property& row : rows) {
        text << row.name.utf8() << '=' << row.value.utf8() << '\n';
    }
    return text.str();
}

/// Points in words: "1,2 3,2.5".
inline std::string inWords(const std::vector<CVexGePoint2d>& points)
{
    std::ostringstream text;
    const char* gap = "";
    for (const CVexGePoint2d& point : points) {
        text << gap << point.x << ',' << point.y;
        gap = " ";
    }
    return text.str();
}
