#include "vexdb/dbobject/vexdbltypetablerecord.h"

#include "platform/base/vexfields.h"
#include "platform/base/vexmachine.h"
#include "platform/base/vextext.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"
#include "vexge/gemath/vextruncate.h"

#include <algorithm>
#include <cmath>
#include <numeric>

CVexDbLTypeTableRecord::CVexDbLTypeTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kLinetypeTableRecord);
}

CVexDbLTypeTableRecord::CVexDbLTypeTableRecord(const CVexDbLTypeTableRecord& other)
    // NOLINTNEXTLINE(bugprone-copy-constructor-init): nothing refers to a copy
    : CVexDbTableRecord(other), CVexDbLayerRefSet(), m_dashes(other.m_dashes),
      m_patternLength(other.m_patternLength), m_count(other.m_count)
{
    setDescription(other.m_description);
}

CVexDbLTypeTableRecord::~CVexDbLTypeTableRecord() = default;

CVexDbLTypeTableRecord& CVexDbLTypeTableRecord::operator=(const CVexDbLTypeTableRecord& other)
{
    if (this != &other) {
        assignName(other);
        setDescription(other.m_description);
        m_dashes = other.m_dashes;
        m_patternLength = other.m_patternLength;
        m_count = other.m_count;
        m_pattern = {};
    }
    return *this;
}

bool CVexDbLTypeTableRecord::save()
{
    if (!CVexDbTableRecord::save()) {
        return false;
    }
    CVexFieldWriter fields(*file());
    fields(numDashes());
    for (int i = 0; i < numDashes(); ++i) {
        fields(dashLengthAt(i));
    }
    fields(m_patternLength, m_description);
    return !file()->failed();
}

bool CVexDbLTypeTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    CVexFieldReader fields(*file());
    std::uint32_t count = 0;
    fields(count);
    const std::uint64_t bytes = std::uint64_t{count} * sizeof(double);
    if (bytes > file()->remaining() || !CVexMachine::current().mayAllocate(bytes)) {
        if (CVexDbLoadContext* loading = database()->loading()) {
            loading->fault(L"A linetype counts more dashes than the file has room for.");
        }
        file()->fail();
        return false;
    }
    // Behind whatever was there: a record sized before it is read keeps those dashes in front.
    m_dashes.reserve(m_dashes.size() + count);
    for (std::uint32_t i = 0; i < count; ++i) {
        double dash = 0.0;
        fields(dash);
        m_dashes.push_back(dash);
    }
    m_count = static_cast<int>(count);
    fields(m_patternLength, m_description);
    return !file()->failed();
}

bool CVexDbLTypeTableRecord::getPattern(int*& out, double scale)
{
    out = nullptr;
    if (numDashes() < 2) {
        return false;
    }
    // Filled once: what is on screen keeps its dashes when the drawing's linetype scale changes,
    // until the record is replaced.
    if (m_pattern[0] == 0) {
        const double factor =
            database() == nullptr ? scale : database()->settings().m_dLinetypeScale * scale;
        const int used = std::min(numDashes(), kMostPatternDashes);
        for (int i = 0; i < used; ++i) {
            m_pattern[static_cast<std::size_t>(i)] =
                truncateSaturated(std::fabs(dashLengthAt(i)) * factor);
        }
    }
    out = m_pattern.data();
    return true;
}

void CVexDbLTypeTableRecord::setDescription(const wchar_t* text)
{
    copyText(m_description, text);
}

double CVexDbLTypeTableRecord::patternLength() const
{
    if (m_patternLength != 0.0) {
        return m_patternLength;
    }
    return std::accumulate(m_dashes.begin(), m_dashes.end(), 0.0,
                           [](double sum, double dash) { return sum + std::fabs(dash); });
}

int CVexDbLTypeTableRecord::numDashes() const
{
    return m_count != 0 ? m_count : static_cast<int>(m_dashes.size());
}

void CVexDbLTypeTableRecord::setNumDashes(int count)
{
    m_count = std::max(count, 0);
    m_dashes.resize(static_cast<std::size_t>(m_count));
    m_pattern = {};
}

double CVexDbLTypeTableRecord::dashLengthAt(int index) const
{
    const bool inside = index >= 0 && static_cast<std::size_t>(index) < m_dashes.size();
    return inside ? m_dashes[static_cast<std::size_t>(index)] : 0.0;
}

void CVexDbLTypeTableRecord::setDashLengthAt(int index, double length)
{
    if (index >= 0 && static_cast<std::size_t>(index) < m_dashes.size()) {
        m_dashes[static_cast<std::size_t>(index)] = length;
        m_pattern = {};
    }
}
