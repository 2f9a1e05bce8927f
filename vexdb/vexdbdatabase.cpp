#include "vexdb/vexdbdatabase.h"

#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbspatialindex.h"
#include "vexdb/vexmemdc.h"

CVexDbDatabase::CVexDbDatabase(bool paperSpace)
    : m_spatialIndexes(std::make_unique<CVexDbSpatialIndexes>()), m_layers(nullptr),
      m_colors(nullptr), m_linetypes(nullptr), m_blocks(nullptr), m_displays(nullptr),
      m_textStyles(nullptr), m_symbols(nullptr), m_entities(nullptr), m_projectInfos(nullptr),
      m_revisions(nullptr), m_commandHandler(std::make_unique<CVexCommandHandler>(nullptr)),
      m_undoHandler(std::make_unique<CVexUndoHandler>())
{
    InitDatabase(paperSpace);
}

CVexDbDatabase::~CVexDbDatabase()
{
    // From here on nothing that dies tells anything else of it.
    m_isClosing = true;
    for (const auto& [name, record] : m_displays.records()) {
        CWnd* view = static_cast<CVexDbDisplayTableRecord*>(record.get())->getView();
        if (view != nullptr && GetCapture() == view) {
            ReleaseCapture(); // a command that waits in this view ends
        }
    }
    m_commandHandler->markInputLost();
    m_commandHandler->ClearTracker(false);
    m_undoHandler->clear();
    if (_gpDatabase == this) {
        _gpDatabase = nullptr;
    }
}

// Each table looks up records of those made before it: a layer names its colour and its linetype,
// and a block needs the settings' limits for its view.
void CVexDbDatabase::InitDatabase(bool paperSpace)
{
    m_activeDC = nullptr;
    m_buffer.reset();
    m_file = nullptr;
    m_plane = CVexGePlane::kXYPlane;
    for (CVexDbTable* table : std::initializer_list<CVexDbTable*>{
             &m_layers, &m_colors, &m_linetypes, &m_textStyles, &m_blocks, &m_displays, &m_symbols,
             &m_entities, &m_projectInfos, &m_revisions}) {
        table->setDatabase(this);
    }
    m_commandHandler->SetDatabase(this);
    m_lastPoint = CVexGePoint2d::kOrigin;
    m_lastEntity = nullptr;
    m_linetypes.initLinetypeTable();
    m_colors.initColorTable();
    m_layers.initLayerTable();
    m_textStyles.initTextStyleTable();
    m_blocks.initBlockTable(paperSpace);
}

CVexDbObjectId CVexDbDatabase::LayerTable() const
{
    return m_layers.objectId();
}

CVexDbObjectId CVexDbDatabase::BlockTable() const
{
    return m_blocks.objectId();
}

CVexDbObjectId CVexDbDatabase::LinetypeTable() const
{
    return m_linetypes.objectId();
}

CVexDbObjectId CVexDbDatabase::ColorTable() const
{
    return m_colors.objectId();
}

CVexDbObjectId CVexDbDatabase::DisplayTable() const
{
    return m_displays.objectId();
}

CVexDbObjectId CVexDbDatabase::TextStyleTable() const
{
    return m_textStyles.objectId();
}

CVexDbObjectId CVexDbDatabase::SymbolTable() const
{
    return m_symbols.objectId();
}

CVexDbObjectId CVexDbDatabase::EntityTable() const
{
    return m_entities.objectId();
}

CVexDbObjectId CVexDbDatabase::ProjectInfoTable() const
{
    return m_projectInfos.objectId();
}

CVexDbObjectId CVexDbDatabase::RevisionTable() const
{
    return m_revisions.objectId();
}

void CVexDbDatabase::setCurrentLayer(const CVexDbObjectId& id)
{
    if (!id.isNull()) {
        m_layers.setCurrentRecord(static_cast<CVexDbLayerTableRecord*>(id.getPObject()));
    }
}

void CVexDbDatabase::setCurrentLinetype(const CVexDbObjectId& id)
{
    if (!id.isNull()) {
        m_linetypes.setCurrentRecord(static_cast<CVexDbLTypeTableRecord*>(id.getPObject()));
    }
}

void CVexDbDatabase::setCurrentColor(const CVexDbObjectId& id)
{
    if (!id.isNull()) {
        m_colors.setCurrentRecord(static_cast<CVexDbColorTableRecord*>(id.getPObject()));
    }
}

void CVexDbDatabase::setCurrentTextStyle(const CVexDbObjectId& id)
{
    if (!id.isNull()) {
        m_textStyles.setCurrentRecord(static_cast<CVexDbTextStyleTableRecord*>(id.getPObject()));
    }
}

void CVexDbDatabase::retire(std::unique_ptr<CVexDbObject> object)
{
    const CVexDbObject* address = object.get();
    m_retired[address] = std::move(object);
}

void CVexDbDatabase::reclaim(const CVexDbObject& object)
{
    // What another drawing retired may come into this one.
    CVexDbDatabase* const other = object.database() == this ? nullptr : object.database();
    for (CVexDbDatabase* keeper : {this, other}) {
        if (keeper == nullptr || keeper->m_retired.empty()) {
            continue;
        }
        if (auto back = keeper->m_retired.extract(&object)) {
            static_cast<void>(back.mapped().release()); // its new owner has it
        }
    }
}

void CVexDbDatabase::setBuffer(std::unique_ptr<CVexBuffDC> buffer)
{
    m_buffer = std::move(buffer);
}

void CVexDbDatabase::Draw()
{
    CView* view = nullptr;
    CDC* dc = nullptr;
    CVexDbDisplayTableRecord* current = m_displays.getCurrentRecord();
    if (current != nullptr && current->getView(view, dc) && dc != nullptr) {
        current->Draw(dc);
    }
}

void CVexDbDatabase::DrawEntities(VexDb::ClassType type)
{
    wchar_t key[CVexDbEntityTable::kKeyCapacity] = {};
    CVexDbEntityTableRecord* record = nullptr;
    if (m_activeDC == nullptr || !m_entities.has(type, key, record)) {
        return;
    }
    const CVexDbIdSet& drawn = record->entitySet();
    for (auto at = drawn.begin(); at != drawn.end(); ++at) {
        static_cast<CVexDbEntity*>(at.object())->Draw(m_activeDC);
    }
}
