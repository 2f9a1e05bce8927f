#include "vexdb/dbobject/dbentity/vexdbentity.h"

#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbcurve.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbobject/dbentity/vexdbentitypool.h"
#include "vexdb/dbobject/dbentity/vexdbnamedrecord.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbspatialindex.h"

#include <memory>

namespace {

/// The record of `table` with the name of `foreign`, else the one named `fallback`.
CVexDbObjectId sameNamed(const CVexDbTable& table, const CVexDbObjectId& foreign,
                         const wchar_t* fallback)
{
    CVexDbObjectId id;
    const auto* record = static_cast<const CVexDbTableRecord*>(foreign.getPObject());
    const bool known = record != nullptr && table.getAt(record->name(), id, false);
    return known ? id : namedRecord(table, fallback);
}

} // namespace

CVexDbEntity::CVexDbEntity(CVexDbDatabase* database) : CVexDbObject(database)
{
    setObjectStatus(kStatusEntity);
    takeCurrentProperties();
}

CVexDbEntity::CVexDbEntity(const CVexDbEntity& other)
    : CVexDbObject(other), m_dbEntity(other.m_dbEntity), m_highlighted(other.m_highlighted),
      m_undrawing(other.m_undrawing), m_highlightDrawing(other.m_highlightDrawing),
      m_gripsStale(other.m_gripsStale), m_rectStale(other.m_rectStale),
      m_gripPoints(other.m_gripPoints), m_boundary(other.m_boundary),
      m_lineWeight(other.m_lineWeight), m_layer(other.m_layer), m_lineType(other.m_lineType),
      m_color(other.m_color), m_xdata(other.m_xdata), m_entityRect(other.m_entityRect)
{
    holdXData(m_xdata);
}

CVexDbEntity::~CVexDbEntity()
{
    if (m_moved && database() != nullptr) {
        database()->spatialIndexes().forget(*this);
    }
    if (m_isLastMade && database() != nullptr) {
        database()->commandHandler().forgetEntity(this);
    }
    ClearXData();
}

void* CVexDbEntity::operator new(std::size_t size)
{
    return CVexDbEntityPool::take(size);
}

void CVexDbEntity::operator delete(void* memory, std::size_t size) noexcept
{
    CVexDbEntityPool::give(memory, size);
}

void CVexDbEntity::noteMoved()
{
    if (database() != nullptr) {
        m_moved = true;
        database()->spatialIndexes().noteMoved(*this);
    }
}

bool CVexDbEntity::trueExtents(CVexGePoint2d& /*min*/, CVexGePoint2d& /*max*/) const
{
    return false;
}

bool CVexDbEntity::isVisiable() const
{
    const CVexDbLayerTableRecord* layer = layerRecord();
    return CVexDbObject::isVisiable() && layer != nullptr && !layer->isOff();
}

void CVexDbEntity::setDatabase(CVexDbDatabase* newDatabase)
{
    CVexDbDatabase* const before = database();
    if (m_isLastMade && before != nullptr && newDatabase != before) {
        before->commandHandler().forgetEntity(this);
    }
    CVexDbObject::setDatabase(newDatabase);
    if (before == nullptr) {
        SetEntProperty();
    } else if (newDatabase != nullptr && newDatabase != before) {
        SetEntPropertyToThis();
    }
}

/// What SetEntProperty does for an entity that no record lists yet.
void CVexDbEntity::takeCurrentProperties()
{
    if (const CVexDbDatabase* drawing = database()) {
        changeWeight(drawing->currentLineWeight());
        m_color = drawing->currentColor().getPObject();
        m_lineType = drawing->currentLinetype().getPObject();
        m_layer = drawing->currentLayer().getPObject();
    }
}

void CVexDbEntity::SetEntProperty()
{
    if (CVexDbDatabase* drawing = database()) {
        setLineWeight(drawing->currentLineWeight(), false);
        setColor(drawing->currentColor(), false);
        setLineType(drawing->currentLinetype(), false);
        setLayer(drawing->currentLayer());
    }
    m_dbEntity = false;
    m_boundary = 0;
    m_undrawing = false;
    m_highlightDrawing = false;
    m_highlighted = false;
    ClearXData();
}

void CVexDbEntity::SetEntPropertyToThis()
{
    if (database() == nullptr) {
        return;
    }
    bindByNames(*this);
    if (!textStyle().isNull()) {
        setTextStyle(sameNamed(database()->textStyles(), textStyle(),
                               CVexDbTextStyleTableRecord::kStandard));
    }
}

/// Takes the records of this drawing that bear the names of those of `source`.
void CVexDbEntity::bindByNames(const CVexDbEntity& source)
{
    const CVexDbColorTableRecord* color = source.Color();
    setColor(color == nullptr ? CVexDbColorTableRecord::kByLayerIndex : color->colorIndex(), true);
    setLineType(
        sameNamed(database()->linetypes(), source.LineTypeId(), CVexDbLTypeTableRecord::kByLayer),
        true);
    setLayer(sameNamed(database()->layers(), source.LayerId(), CVexDbLayerTableRecord::kBaseLayer));
}

void CVexDbEntity::CopyEntProperties(const CVexDbEntity& other)
{
    CVexDbEntity::operator=(other);
    m_boundary = other.m_boundary;
}

CVexDbEntity& CVexDbEntity::operator=(const CVexDbEntity& other)
{
    if (m_dbEntity && other.database() != database()) {
        // The records of one drawing must not list an entity of another.
        bindByNames(other);
        changeWeight(other.m_lineWeight);
        return *this;
    }
    setColor(other.ColorId(), true);
    setLineType(other.LineTypeId(), true);
    setLineWeight(other.m_lineWeight, true);
    setLayer(other.LayerId());
    return *this;
}

CVexDbLayerTableRecord* CVexDbEntity::layerRecord() const
{
    return static_cast<CVexDbLayerTableRecord*>(m_layer);
}

CVexDbLTypeTableRecord* CVexDbEntity::linetypeRecord() const
{
    return static_cast<CVexDbLTypeTableRecord*>(m_lineType);
}

CVexDbColorTableRecord* CVexDbEntity::Color() const
{
    return static_cast<CVexDbColorTableRecord*>(m_color);
}

CString CVexDbEntity::Layer() const
{
    return m_layer == nullptr ? CString() : layerRecord()->getName();
}

CString CVexDbEntity::LineType() const
{
    if (m_lineType == nullptr) {
        return {};
    }
    CString name = linetypeRecord()->getName();
    if (m_layer == nullptr || !(name == CVexDbLTypeTableRecord::kByLayer)) {
        return name;
    }
    const CVexDbObject* ofLayer = layerRecord()->getLinetypeId().getPObject();
    return ofLayer == nullptr ? CString(CVexDbLTypeTableRecord::kContinuous)
                              : static_cast<const CVexDbLTypeTableRecord*>(ofLayer)->getName();
}

int CVexDbEntity::ColorIndex() const
{
    constexpr int kOfLayerWithoutColor = 7;
    const int index =
        m_color == nullptr ? CVexDbColorTableRecord::kByLayerIndex : Color()->colorIndex();
    if (index != CVexDbColorTableRecord::kByLayerIndex || m_layer == nullptr) {
        return index;
    }
    const CVexDbObject* ofLayer = layerRecord()->getColorId().getPObject();
    return ofLayer == nullptr ? kOfLayerWithoutColor
                              : static_cast<const CVexDbColorTableRecord*>(ofLayer)->colorIndex();
}

/// Puts `record` into the slot; an entity of the database moves between the records' users.
template <class Record>
void CVexDbEntity::bind(CVexDbObject*& slot, CVexDbObject* record)
{
    const bool moves = isListed() && slot != record;
    if (moves && slot != nullptr) {
        static_cast<Record*>(slot)->removeRefEntity(objectId());
    }
    if (moves && record != nullptr) {
        static_cast<Record*>(record)->addRefEntity(objectId());
    }
    slot = record;
}

bool CVexDbEntity::setLayer(const CVexDbObjectId& id)
{
    bind<CVexDbLayerTableRecord>(m_layer, id.getPObject());
    return true;
}

bool CVexDbEntity::setLineType(const CVexDbObjectId& id, bool)
{
    bind<CVexDbLTypeTableRecord>(m_lineType, id.getPObject());
    return true;
}

bool CVexDbEntity::setColor(const CVexDbObjectId& id, bool)
{
    bind<CVexDbColorTableRecord>(m_color, id.getPObject());
    return true;
}

bool CVexDbEntity::setLayer(const CString& name)
{
    CVexDbObjectId id;
    return database() != nullptr && database()->layers().getAt(name, id, false) && setLayer(id);
}

bool CVexDbEntity::setLineType(const CString& name, bool)
{
    CVexDbObjectId id;
    if (database() != nullptr && database()->linetypes().getAt(name, id, false)) {
        setLineType(id, false);
    }
    // True for an unknown name too, unlike setLayer: a linetype that is not loaded yet is no error
    // to the commands, which go on with the one that the entity has.
    return true;
}

bool CVexDbEntity::setColor(CVexDbColorTableRecord* record, bool)
{
    return setColor(record == nullptr ? CVexDbObjectId() : record->objectId(), false);
}

bool CVexDbEntity::setColor(int index, bool)
{
    if (database() == nullptr || index < 0 || index > CVexDbColorTableRecord::kByLayerIndex) {
        return false;
    }
    CVexDbColorTable& colors = database()->colors();
    CString name;
    name.Format(L"%d", index);
    CVexDbColorTableRecord* record = nullptr;
    if (!colors.getRecord(name, record, false)) {
        auto made = std::make_unique<CVexDbColorTableRecord>(database());
        made->setColor(_getColorValueByIndex(index));
        made->setOwnerId(colors.objectId());
        made->setName(name);
        record = made.get();
        colors.add(made.release());
    }
    return setColor(record, false);
}

bool CVexDbEntity::setLineWeight(VexDb::LineWeight weight, bool)
{
    changeWeight(weight);
    return true;
}

void CVexDbEntity::SetXData(Return_Struct* head)
{
    holdXData(head);
    letGoXData(m_xdata);
    m_xdata = head;
}

void CVexDbEntity::ClearXData()
{
    releaseXData(m_xdata);
    m_xdata = nullptr;
}

void CVexDbEntity::Erase()
{
    OnErased();
    setErased();
    if (m_dbEntity && database() != nullptr) {
        database()->removeEntity(this);
    }
}

bool CVexDbEntity::OnErased()
{
    if (!m_dbEntity || database() == nullptr) {
        return true;
    }
    database()->commandHandler().DeleteTracker(this);
    return true;
}

CVexDbEntity* CVexDbEntity::CopyEntity(bool)
{
    const VexDbEntityKind& kind = entityKind(classType());
    CVexDbEntity* copy = kind.copy == nullptr ? nullptr : kind.copy(*this);
    if (copy != nullptr) {
        copy->detach();
    }
    return copy;
}

void CVexDbEntity::detach()
{
    takeFreshIdentity();
    m_dbEntity = false;
}

void CVexDbEntity::makeProperty()
{
    constexpr int kRecordRow = 0;
    const auto address = [](const CVexDbObject* record) {
        return reinterpret_cast<std::uintptr_t>(record);
    };
    const CString color = m_color == nullptr ? CString() : Color()->getName();
    CString weight;
    weight.Format(L"%d", static_cast<int>(m_lineWeight));
    std::vector<Property>& rows = properties()[L"General"];
    rows.emplace_back(L"Layer", Layer(), L"Change Layer", kRecordRow, address(m_layer));
    rows.emplace_back(L"Color", color, L"Change Color", kRecordRow, address(m_color));
    rows.emplace_back(L"LineType", LineType(), L"Change Linetype", kRecordRow, address(m_lineType));
    // The weight has no record behind it: the row carries the number itself.
    rows.emplace_back(L"LineWeight", weight, L"Change LineWeight", kRecordRow,
                      static_cast<std::uintptr_t>(m_lineWeight));
}

void CVexDbEntity::addShapeRow(const CString& name, const double& value)
{
    constexpr int kNumberRow = 1;
    CString text;
    text.Format(L"%f", value);
    _makePropertyList(properties()[L"Shape"], name, text, reinterpret_cast<std::uintptr_t>(&value),
                      kNumberRow);
}

CVexDbRect CVexDbEntity::GetOutRect()
{
    return CVexDbRect(database());
}

void CVexDbEntity::OnCurveChanged()
{
}

bool CVexDbEntity::IsCurveEntity() const
{
    return false;
}

bool CVexDbEntity::IsClosedCurve() const
{
    return false;
}

void CVexDbEntity::OnRectChanged()
{
}

int CVexDbEntity::IsBoundary() const
{
    return 0;
}

void CVexDbEntity::SetBoundary(int tag)
{
    m_boundary = tag;
}

CVexDbEntity* CVexDbEntity::Trim(CVexGePoint2d& /*pick*/, std::vector<CVexDbEntity*>& /*cutters*/,
                                 double /*tol*/)
{
    return nullptr;
}

bool CVexDbEntity::Extend(CVexGePoint2d& /*pick*/, std::vector<CVexDbEntity*>& /*boundaries*/,
                          double /*tol*/)
{
    return false;
}

bool CVexDbEntity::getOffset(CVexGePoint2d& /*side*/, CVexDbEntity*& /*result*/,
                             double /*distance*/)
{
    return false;
}
