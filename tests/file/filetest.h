#pragma once

#include "platform/base/cfile.h"
#include "tests/file/bytes.h"
#include "tests/platform/standinmachine.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"
#include "vexdb/vexdbdatabase.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

/// Drawings in memory on a machine whose clock, names and first identifier are known.
class FileTest : public testing::Test {
protected:
    static constexpr const wchar_t* kPath = L"/home/mara/pipes/plan.zpl";

    FileTest() { CVexDbObject::NextHardID = 0; }

    /// The drawing as a file; empty when it was not saved.
    std::vector<std::byte> saved(CVexDbDatabase& drawing, const wchar_t* path = kPath)
    {
        CMemFile file{CString(path)};
        CArchive archive(&file, CArchive::store);
        if (!drawing.Save(archive) || !file.Close()) {
            return {};
        }
        return file.bytes();
    }
    bool read(CVexDbDatabase& drawing, const std::vector<std::byte>& bytes)
    {
        CMemFile file(bytes, CString(kPath));
        CArchive archive(&file, CArchive::load);
        return drawing.Read(archive);
    }

    CStandInMachine machine;
    CVexMachineScope scope{machine};
};

/// Gives an entity over to the drawing's current block.
template <class Entity>
Entity* addTo(CVexDbDatabase& drawing, Entity* entity)
{
    CVexDbObjectId id;
    drawing.addEntity(entity, id);
    return entity;
}

/// The entities of a block, in drawing order.
inline std::vector<CVexDbEntity*> entitiesOf(CVexDbDatabase& drawing,
                                             const wchar_t* block = CVexDbBlockTable::kModelSpace)
{
    std::vector<CVexDbEntity*> entities;
    CVexDbBlockTableRecord* record = nullptr;
    if (drawing.blocks().getRecord(block, record, false)) {
        for (const CVexDbObjectId& id : *record->entitySet()) {
            entities.push_back(static_cast<CVexDbEntity*>(id.getPObject()));
        }
    }
    return entities;
}

/// The number of a record, which references in a file use.
inline std::uint64_t numberOf(CVexDbTable& table, const wchar_t* name)
{
    CVexDbTableRecord* record = nullptr;
    return table.getRecord(name, record, false) ? record->hardObjectId() : 0;
}

/// An entity's extended data: a text and a number.
inline void giveXData(CVexDbEntity& entity, const std::wstring& text, double number)
{
    auto* first = new Return_Struct;
    first->type = Return_Struct::kString;
    first->value.text = new wchar_t[text.size() + 1];
    std::copy_n(text.c_str(), text.size() + 1, first->value.text);
    auto* second = new Return_Struct;
    second->type = 3004;
    second->value.number = number;
    first->next = second;
    entity.SetXData(first);
}

inline std::string toText(const std::vector<CString>& lines)
{
    std::string text;
    for (const CString& line : lines) {
        text += line.utf8() + "\n";
    }
    return text;
}

#define EXPECT_WHOLE(drawing) EXPECT_EQ("", toText((drawing).selfCheck()))
