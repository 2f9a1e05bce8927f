#include "vexdb/dbtracker/vexdbentitytracker.h"

#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

CMenu CVexDbEntityTracker::m_Menu;

namespace {

CDC* viewContext(CVexDbDatabase& database)
{
    const CVexDbDisplayTableRecord* view = database.displays().getCurrentRecord();
    return view == nullptr ? nullptr : view->GetCurrentDC();
}

} // namespace

CVexDbEntityTracker::CVexDbEntityTracker(CWnd* window)
{
    SetDefault();
    m_window = window;
}

CVexDbEntityTracker::CVexDbEntityTracker(CWnd* window, CVexDbDatabase* database, bool createMode)
    : CVexDbEntityTracker(window)
{
    m_database = database;
    m_createMode = createMode;
    if (database != nullptr) {
        m_handler = &database->commandHandler();
        m_dc = viewContext(*database);
    }
}

CVexDbEntityTracker::CVexDbEntityTracker(CWnd* window, CVexDbEntity* entity,
                                         VexDb::TransFormOption option, bool createMode)
    : CVexDbEntityTracker(window, entity == nullptr ? nullptr : entity->database(), createMode)
{
    m_entity = entity;
    m_transform = option;
    if (!createMode && entity != nullptr && m_dc != nullptr) {
        entity->UnDraw(m_dc);
        CVexDbEntityTracker::DrawGripBox(false);
    }
}

CVexDbEntityTracker::CVexDbEntityTracker(CWnd* window, const std::vector<CVexDbObjectId>* entities,
                                         VexDb::TransFormOption option)
    : CVexDbEntityTracker(
          window, entities == nullptr || entities->empty() ? nullptr : entities->front().database(),
          false)
{
    m_transform = option;
    m_multiMode = true;
}

CVexDbEntityTracker::~CVexDbEntityTracker()
{
    dropCurrent();
    CVexDbEntityTracker::UnDrawGripBox();
    if (!m_createMode && !m_multiMode && m_entity != nullptr && m_dc != nullptr) {
        m_entity->Draw(m_dc);
    }
}

void CVexDbEntityTracker::SetDefault()
{
    m_type = TrackerPlain;
    m_createMode = false;
    m_transform = VexDb::TransFormNone;
    m_gripsShown = false;
    m_bandDrawn = false;
    m_currentShown = false;
    m_snapped = false;
    m_positionGiven = false;
    m_highlightNeedsRedraw = false;
    m_start = m_end = m_previous = m_position = CPoint();
    m_exactStart = m_exact = CVexGePoint2d();
    m_rubberColor = 0x00ffff;
    m_handleSize = CSize(8, 8);
    m_handleColor = 0xffff00;
    m_validRect = CRect();
    m_penWidth = 1;
    m_entity = nullptr;
    m_previousEntity = nullptr;
    m_gripPoints = nullptr;
    m_option = 0;
    m_typed = {};
    m_typedLength = 0;
    m_consumed = false;
    m_done = false;
    m_movedByKeys = false;
}

void CVexDbEntityTracker::dropCurrent()
{
    delete m_current;
    m_current = nullptr;
    m_currentShown = false;
}

bool CVexDbEntityTracker::IsValidPos(CPoint device) const
{
    return m_validRect.IsRectEmpty() || m_validRect.PtInRect(device);
}
