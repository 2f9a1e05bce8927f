#pragma once

#include "platform/headless/vexheadless.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

/// Puts a headless backend of its own in force for a scope.
class HeadlessScope {
public:
    HeadlessScope() : m_before(CVexBackend::install(&backend)) {}
    ~HeadlessScope() { CVexBackend::install(m_before); }
    HeadlessScope(const HeadlessScope&) = delete;
    HeadlessScope& operator=(const HeadlessScope&) = delete;

    CVexHeadlessBackend backend;

private:
    CVexBackend* m_before;
};

/// A line that the drawing owns.
inline CVexDbLine* addLine(CVexDbDatabase& drawing, double x = 0.0)
{
    auto* line = new CVexDbLine(CVexGePoint2d(x, 0.0), CVexGePoint2d(x + 1.0, 1.0));
    CVexDbObjectId id;
    drawing.addEntity(line, id);
    return line;
}

/// The record of a name; null when there is none.
template <class Table>
auto* recordNamed(Table& table, const wchar_t* name)
{
    std::remove_pointer_t<decltype(table.getCurrentRecord())>* record = nullptr;
    table.getRecord(name, record, false);
    return record;
}

/// A record under a name, held by the table.
template <class Record>
Record* addRecord(CVexDbTypedTable<Record>& table, const wchar_t* name)
{
    auto* record = new Record(table.database());
    record->setName(CString(name));
    table.add(record);
    return record;
}

/// What a table or record writes.
template <class Object>
std::vector<std::byte> savedBytes(CVexDbDatabase& drawing, Object& object)
{
    CMemFile file;
    file.Open(L"drawing", CFile::modeCreate | CFile::modeWrite);
    drawing.setFile(&file);
    const bool saved = object.save();
    file.Close();
    drawing.setFile(nullptr);
    return saved ? file.bytes() : std::vector<std::byte>();
}

/// Reads a table or record from bytes; true when that went well and all of them were used.
template <class Object>
bool readBytes(CVexDbDatabase& drawing, Object& object, const std::vector<std::byte>& bytes)
{
    CMemFile file(bytes);
    file.Open(L"drawing", CFile::modeRead);
    drawing.setFile(&file);
    const bool read = object.read();
    const bool used = file.remaining() == 0;
    drawing.setFile(nullptr);
    return read && used;
}
