#include "platform/base/cfile.h"
#include "platform/base/vexfields.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbobject/vexdbblocktablerecord.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"

#include <array>
#include <memory>
#include <utility>

namespace {

// Status bits that say what an object is; a file cannot make a line a dimension.
constexpr int kKindBits = kStatusEntity | kStatusCompoundObject | kStatusDimension;

CString blockText(const wchar_t* format, std::uint32_t number, const CVexDbBlockTableRecord& block)
{
    CString text;
    text.Format(format, number, block.getName());
    return text;
}

// Reads an entity as what it was announced; null when the file ends in it or it is something else.
std::unique_ptr<CVexDbEntity> readEntity(std::unique_ptr<CVexDbEntity> entity,
                                         VexDb::ClassType type, CVexDbDatabase& database,
                                         CVexDbLoadContext& context)
{
    const int kind = entity->status() & kKindBits;
    const std::uint64_t start = database.file()->GetPosition();
    if (!entity->read()) {
        return nullptr;
    }
    if (entity->classType() != type) {
        context.fault(L"An entity's class differs from the one announced.", start);
        return nullptr;
    }
    if ((entity->status() & kKindBits) != kind) {
        context.fault(L"An entity's status does not fit its class.", start);
        entity->resetObjectStatus(kKindBits);
        entity->setObjectStatus(kind);
    }
    return entity;
}

} // namespace

bool CVexDbBlockTableRecord::save()
{
    return CVexDbTableRecord::save() && saveSet(m_entities) && saveSet(m_attribDefinitions);
}

bool CVexDbBlockTableRecord::saveSet(const CVexDbIdSet& set)
{
    CFile& out = *file();
    // Erased entities are not written. They are few, and to count them first would take a walk of
    // its own over all: the count is put right behind the entities.
    const std::uint64_t countAt = out.GetPosition();
    auto count = static_cast<std::uint32_t>(set.size());
    CVexFieldWriter{out}(count);
    const bool saved = set.visitObjects([&](CVexDbObject& object) {
        if (object.isErased()) {
            --count;
            return true;
        }
        storeLittle(out.give(sizeof(VexDb::ClassType)), object.classType());
        return object.save();
    });
    if (count != set.size()) {
        std::array<std::byte, sizeof count> bytes = {};
        storeLittle(bytes.data(), count);
        out.Rewrite(countAt, bytes.data(), bytes.size());
    }
    return saved && !out.failed();
}

// The record adds itself, before its entities: they enter the drawing through the current block.
// After a failure it stays in the table with the entities that were whole.
bool CVexDbBlockTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    CVexDbDatabase& drawing = *database();
    if (classType() != VexDb::kBlockTableRecord) {
        // Mended here: the block stays in the table even when the reading ends in it.
        drawing.loading()->fault(L"A block has the class of something else.");
        setClassType(VexDb::kBlockTableRecord);
    }
    CVexDbBlockTableRecord* before = nullptr;
    if (drawing.blocks().getRecord(m_name, before, false) && !drawing.loading()->isOurs(before)) {
        drawing.loading()->fault(blockText(L"%u blocks are named '%s'.", 2, *this));
    }
    if (!drawing.blocks().add(this)) {
        drawing.loading()->fault(L"A block has no name.");
        file()->fail();
        return false;
    }
    drawing.blocks().setCurrentRecord(this);
    initDisplayRec();
    const VexDbDrawingSettings_tag& settings = drawing.settings();
    m_display->SetCurDispWin(settings.m_ptViewMin, settings.m_ptViewMax);
    return readEntities() && readAttribDefinitions();
}

bool CVexDbBlockTableRecord::readEntities()
{
    CFile& in = *file();
    CVexDbLoadContext& context = *database()->loading();
    CVexFieldReader fields(in);
    std::uint32_t count = 0;
    fields(count);
    if (count > in.remaining() / sizeof(VexDb::ClassType)) {
        context.fault(
            blockText(L"%u entities of block '%s' do not fit into the file.", count, *this));
        in.fail();
    }
    context.enterBlock();
    bool inStep = true;
    for (std::uint32_t i = 0; i < count && !in.failed(); ++i) {
        inStep = readNextEntity(fields, inStep);
    }
    context.leaveBlock();
    return !in.failed();
}

// `inStep` tells whether the one before could be made; the result, whether this one could.
bool CVexDbBlockTableRecord::readNextEntity(CVexFieldReader& fields, bool inStep)
{
    CVexDbLoadContext& context = *database()->loading();
    VexDb::ClassType type = VexDb::kEntity;
    fields(type);
    if (fields.failed()) {
        return inStep;
    }
    std::unique_ptr<CVexDbEntity> made(makeEntityOfClass(type, database()));
    if (made) {
        if (auto entity = readEntity(std::move(made), type, *database(), context)) {
            context.keepEntity(*this, entity.release());
        }
        return true;
    }
    // Nothing is skipped for a class that cannot be made: the next four bytes are taken for a class
    // type again. Drawings with such entities have always been read so, and one report is enough.
    if (inStep) {
        CString what;
        what.Format(L"Entities of class %u cannot be read.", static_cast<std::uint32_t>(type));
        context.fault(what);
    }
    return false;
}

bool CVexDbBlockTableRecord::readAttribDefinitions()
{
    CFile& in = *file();
    std::uint32_t count = 0;
    CVexFieldReader fields(in);
    fields(count);
    // A class type stands before each definition in four bytes, and has always been read as two: no
    // file with attribute definitions comes back in step, so the reading ends here.
    if (count > 0) {
        database()->loading()->fault(
            blockText(L"%u attribute definitions of block '%s' cannot be read.", count, *this));
        in.fail();
    }
    return !in.failed();
}
