#include "vexdb/dbobject/vexdbsymboltablerecord.h"

#include "platform/base/vexfields.h"
#include "platform/base/vexmachine.h"
#include "vexdb/dbobject/vexdbautoname.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"

void CVexDbSymPoint::save(CFile* file) const
{
    CVexGePoint2d::save(file);
    CVexFieldWriter{*file}(flag);
}

void CVexDbSymPoint::read(CFile* file)
{
    CVexGePoint2d::read(file);
    CVexFieldReader{*file}(flag);
}

CVexDbSymbolTableRecord::CVexDbSymbolTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kSymbolTableRecord);
    setInVisable();
}

CVexDbSymbolTableRecord::CVexDbSymbolTableRecord(const CVexDbSymbolTableRecord& other)
    // NOLINTNEXTLINE(bugprone-copy-constructor-init): nothing refers to a copy
    : CVexDbTableRecord(other), CVexDbRefSet(), m_points(other.m_points), m_base(other.m_base)
{
}

CVexDbSymbolTableRecord::~CVexDbSymbolTableRecord() = default;

CVexDbSymbolTableRecord& CVexDbSymbolTableRecord::operator=(const CVexDbSymbolTableRecord& other)
{
    if (this != &other) {
        assignName(other);
        m_points = other.m_points;
        m_base = other.m_base;
    }
    return *this;
}

bool CVexDbSymbolTableRecord::save()
{
    if (!CVexDbTableRecord::save()) {
        return false;
    }
    CVexFieldWriter fields(*file());
    fields(m_base, static_cast<std::uint32_t>(m_points.size()));
    for (const CVexDbSymPoint& point : m_points) {
        point.save(file());
    }
    return !file()->failed();
}

bool CVexDbSymbolTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    std::uint32_t count = 0;
    CVexFieldReader{*file()}(m_base, count);
    if (std::uint64_t{count} * CVexDbSymPoint::kFileSize > file()->remaining() ||
        !CVexMachine::current().mayAllocate(count * sizeof(CVexDbSymPoint))) {
        if (CVexDbLoadContext* loading = database()->loading()) {
            loading->fault(L"A symbol counts more points than the file has room for.");
        }
        file()->fail();
        return false;
    }
    m_points.resize(count);
    for (CVexDbSymPoint& point : m_points) {
        point.read(file());
    }
    return !file()->failed();
}

CVexDbSymPoint CVexDbSymbolTableRecord::GetPointAt(unsigned long index) const
{
    return index < m_points.size() ? m_points[index] : CVexDbSymPoint();
}

void CVexDbSymbolTableRecord::SetAutoName(wchar_t* buffer)
{
    formatAutoName(buffer, database()->symbols().GetNextName());
    setName(buffer);
}
