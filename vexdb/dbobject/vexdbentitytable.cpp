#include "vexdb/dbobject/vexdbentitytable.h"

#include "platform/base/vextext.h"

#include <algorithm>

namespace {

// Null for what has no key: the two abstract kinds, cobwebs and all that is no entity.
const wchar_t* keyOf(VexDb::ClassType type)
{
    switch (type) {
    case VexDb::kArc: return L"ARC";
    case VexDb::kCircle: return L"CIRCLE";
    case VexDb::kEllipse: return L"ELLIPSE";
    case VexDb::kEllipseArc: return L"ELLIPSEARC";
    case VexDb::kLine: return L"LINE";
    case VexDb::kPolyline: return L"POLYLINE";
    case VexDb::kSpline: return L"SPLINE";
    case VexDb::kCubicSpline: return L"CSPLINE";
    case VexDb::kSpiral: return L"SPIRAL";
    case VexDb::kBlockInsert: return L"INSERT";
    case VexDb::kHatch: return L"HATCH";
    case VexDb::kPoint: return L"POINT";
    case VexDb::kText: return L"TEXT";
    case VexDb::kRectangle: return L"RECT";
    case VexDb::kDimension:
    case VexDb::k2LineAngularDim:
    case VexDb::k3PointAngularDim:
    case VexDb::kAlignedDim:
    case VexDb::kDiametricDim:
    case VexDb::kHorizontalDim:
    case VexDb::kLeaderDim:
    case VexDb::kRadialDim:
    case VexDb::kVerticalDim: return L"DIMENSION";
    case VexDb::kBox: return L"BOX";
    case VexDb::kImage: return L"IMAGE";
    case VexDb::kSymbol: return L"SYMBOL";
    case VexDb::kAttribDefinition: return L"ATTDEF";
    case VexDb::kAttribute: return L"ATTRIB";
    case VexDb::kTextTable: return L"TEXTTABLE";
    default: return nullptr;
    }
}

} // namespace

CVexDbEntityTable::CVexDbEntityTable(CVexDbDatabase* database) : CVexDbTableWithCurrent(database)
{
    setClassType(VexDb::kEntityTable);
}

CVexDbEntityTable::~CVexDbEntityTable() = default;

bool CVexDbEntityTable::has(VexDb::ClassType type, wchar_t* key,
                            CVexDbEntityTableRecord*& record) const
{
    if (const wchar_t* found = keyOf(type)) {
        copyText(key, std::wstring_view(found).size() + 1, found);
    }
    return getRecord(key, record, false);
}

bool CVexDbEntityTable::addEntity(const CVexDbObjectId& id)
{
    return addUser(recordFor(id.getPObject()->classType()), id);
}

bool CVexDbEntityTable::addEntities(VexDb::ClassType type, std::span<CVexDbObject* const> entities)
{
    CVexDbEntityTableRecord* const record = recordFor(type);
    if (record != nullptr) {
        record->addRefEntities(entities);
    }
    return record != nullptr;
}

CVexDbEntityTableRecord* CVexDbEntityTable::recordFor(VexDb::ClassType type)
{
    if (type >= kEntityClasses) {
        return nullptr;
    }
    CVexDbEntityTableRecord*& known = m_byClass[type];
    if (known != nullptr) {
        return known;
    }
    wchar_t key[kKeyCapacity] = {};
    if (!has(type, key, known) && key[0] != L'\0') {
        auto* made = new CVexDbEntityTableRecord(database());
        made->setName(key);
        add(made);
        known = made;
    }
    return known;
}

bool CVexDbEntityTable::removeEntity(const CVexDbObjectId& id)
{
    wchar_t key[kKeyCapacity] = {};
    CVexDbEntityTableRecord* record = nullptr;
    has(id.getPObject()->classType(), key, record);
    return removeUser(record, id);
}

bool CVexDbEntityTable::mayRemove(const CVexDbTableRecord& record)
{
    return static_cast<const CVexDbEntityTableRecord&>(record).getNumEntity() == 0;
}

void CVexDbEntityTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    CVexDbTableWithCurrent::replaceReferences(before, after);
    for (const CVexDbObjectId entity : static_cast<CVexDbEntityTableRecord*>(before)->entitySet()) {
        static_cast<CVexDbEntityTableRecord*>(after)->addRefEntity(entity);
    }
}

void CVexDbEntityTable::detach(CVexDbTableRecord& record)
{
    std::replace(m_byClass.begin(), m_byClass.end(), static_cast<CVexDbEntityTableRecord*>(&record),
                 static_cast<CVexDbEntityTableRecord*>(nullptr));
}
