#include "vexdb/dbobject/vexdblayertablerecord.h"

#include "platform/base/vexfields.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"

namespace {

// `other`, a record of whichever drawing, when it stands in `table`; else the record there that has
// its name, null without one.
CVexDbObject* namesake(const CVexDbTable& table, CVexDbObject* other)
{
    auto* found = static_cast<CVexDbTableRecord*>(other);
    if (found != nullptr && found->table() != &table) {
        const CString name = found->getName();
        found = nullptr;
        table.getRecord(name, found, false);
    }
    return found;
}

CVexDbObject* recordOfNumber(const CVexDbTable& table, std::uint64_t hardId)
{
    CVexDbObjectId id;
    return table.getAt(hardId, id, false) ? id.getPObject() : nullptr;
}

} // namespace

CVexDbLayerTableRecord::CVexDbLayerTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kLayerTableRecord);
}

// No entity is on a copy, and no linetype knows of it until its table takes it in.
CVexDbLayerTableRecord::CVexDbLayerTableRecord(const CVexDbLayerTableRecord& other)
    // NOLINTNEXTLINE(bugprone-copy-constructor-init): nothing refers to a copy
    : CVexDbTableRecord(other), CVexDbRefSet(), m_layerStatus(other.m_layerStatus),
      m_color(other.m_color), m_linetype(other.m_linetype), m_weight(other.m_weight)
{
}

CVexDbLayerTableRecord::~CVexDbLayerTableRecord()
{
    if (database() != nullptr && !database()->isClosing()) {
        leaveUsers(); // a working copy, or one that came from a bad file
    }
}

CVexDbLayerTableRecord& CVexDbLayerTableRecord::operator=(const CVexDbLayerTableRecord& other)
{
    if (this == &other || database() == nullptr) {
        return *this;
    }
    assignName(other);
    m_layerStatus = other.m_layerStatus;
    m_weight = other.m_weight;
    bindTo(other.m_color, other.m_linetype);
    return *this;
}

void CVexDbLayerTableRecord::bindTo(CVexDbObject* color, CVexDbObject* linetype)
{
    m_color = namesake(database()->colors(), color);
    setLinetypeId(CVexDbObjectId(namesake(database()->linetypes(), linetype)));
}

// All colours are asked: one that the layer had when it was read goes on counting it when the layer
// is given another.
void CVexDbLayerTableRecord::leaveUsers()
{
    for (const auto& [name, color] : database()->colors().records()) {
        static_cast<CVexDbColorTableRecord&>(*color).removeLayerId(objectId());
    }
    if (m_linetype != nullptr) {
        static_cast<CVexDbLTypeTableRecord*>(m_linetype)->removeLayerId(objectId());
    }
}

bool CVexDbLayerTableRecord::save()
{
    if (!CVexDbTableRecord::save()) {
        return false;
    }
    const auto number = [](CVexDbObject* record) {
        return record == nullptr ? std::uint64_t{0} : record->hardObjectId();
    };
    CVexFieldWriter{*file()}(m_layerStatus, number(m_color), number(m_linetype), m_weight);
    return !file()->failed();
}

bool CVexDbLayerTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    std::uint64_t color = 0;
    std::uint64_t linetype = 0;
    CVexFieldReader{*file()}(m_layerStatus, color, linetype, m_weight);
    if (file()->failed()) {
        return false;
    }
    resolve(color, linetype);
    return true;
}

void CVexDbLayerTableRecord::resolve(std::uint64_t colorNumber, std::uint64_t linetypeNumber)
{
    if (CVexDbLoadContext* loading = database()->loading()) {
        m_color = loading->colorByHardId(colorNumber);
        setLinetypeId(CVexDbObjectId(loading->linetypeByHardId(linetypeNumber)));
    } else {
        m_color = recordOfNumber(database()->colors(), colorNumber);
        setLinetypeId(CVexDbObjectId(recordOfNumber(database()->linetypes(), linetypeNumber)));
    }
    if (m_color != nullptr) {
        static_cast<CVexDbColorTableRecord*>(m_color)->addLayerId(objectId());
    }
}

void CVexDbLayerTableRecord::setName(wchar_t* name)
{
    wchar_t own[kNameCapacity];
    std::copy(std::begin(m_name), std::end(m_name), own);
    const bool isBase = CString(m_name) == kBaseLayer;
    CVexDbTableRecord::setName(name);
    if (isBase) {
        std::copy(std::begin(own), std::end(own), m_name);
    }
}

COLORREF CVexDbLayerTableRecord::getColorValue() const
{
    return getColor(getColorId());
}

void CVexDbLayerTableRecord::setLinetypeId(const CVexDbObjectId& id)
{
    if (m_linetype != nullptr) {
        static_cast<CVexDbLTypeTableRecord*>(m_linetype)->removeLayerId(objectId());
    }
    m_linetype = id.getPObject();
    if (m_linetype != nullptr) {
        static_cast<CVexDbLTypeTableRecord*>(m_linetype)->addLayerId(objectId());
    }
}
