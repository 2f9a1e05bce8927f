#include "vexdb/dbobject/vexdbdisplaytable.h"

#include "vexdb/vexdbdatabase.h"

namespace {

void takeOverWindow(CVexDbDisplayTableRecord& from, CVexDbDisplayTableRecord& to)
{
    CView* view = nullptr;
    CDC* dc = nullptr;
    if (to.getView() == nullptr && from.getView(view, dc)) {
        to.setView(view, dc);
    }
}

} // namespace

CVexDbDisplayTable::CVexDbDisplayTable(CVexDbDatabase* database) : CVexDbTypedTable(database)
{
    setClassType(VexDb::kDisplayTable);
}

CVexDbDisplayTable::~CVexDbDisplayTable() = default;

void CVexDbDisplayTable::setCurrentRecord(CVexDbDisplayTableRecord* record)
{
    m_previous = m_current;
    m_current = record;
    if (m_previous != nullptr && m_current != nullptr) {
        takeOverWindow(*m_previous, *m_current);
    }
}

bool CVexDbDisplayTable::setCurrentRecord(const wchar_t* name)
{
    CVexDbDisplayTableRecord* record = nullptr;
    if (!getRecord(name, record, false)) {
        return false;
    }
    setCurrentRecord(record);
    return true;
}

bool CVexDbDisplayTable::addEntity(const CVexDbObjectId& id)
{
    if (m_current != nullptr) {
        m_current->addEntity(id);
    }
    return true;
}

void CVexDbDisplayTable::initDisplayTable()
{
    const VexDbDrawingSettings_tag& settings = database()->settings();
    auto* model = new CVexDbDisplayTableRecord(database());
    model->setName(CString(CVexDbBlockTable::kModelSpace));
    model->setLimits(settings.m_ptLimitsMin, settings.m_ptLimitsMax);
    add(model);
    setCurrentRecord(model);
    m_previous = nullptr;
}

bool CVexDbDisplayTable::mayRemove(const CVexDbTableRecord& record)
{
    return !CVexDbBlockTable::isSpace(record.name()) && &record != m_current;
}

void CVexDbDisplayTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    auto* view = static_cast<CVexDbDisplayTableRecord*>(after);
    takeOverWindow(static_cast<CVexDbDisplayTableRecord&>(*before), *view);
    if (m_current == before) {
        m_current = view;
    }
    if (m_previous == before) {
        m_previous = view;
    }
    CVexDbBlockTableRecord* block = nullptr;
    if (database()->blocks().getRecord(after->name(), block, false) &&
        block->displayRecord() == before) {
        block->setDisplayRecord(view);
        block->showEntities();
    }
}

void CVexDbDisplayTable::detach(CVexDbTableRecord& record)
{
    if (m_previous == &record) {
        m_previous = nullptr;
    }
    CVexDbBlockTableRecord* block = nullptr;
    if (database()->blocks().getRecord(record.name(), block, false) &&
        block->displayRecord() == &record) {
        block->setDisplayRecord(nullptr); // it gets a new view when it becomes current
    }
}
