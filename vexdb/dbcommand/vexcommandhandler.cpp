#include "vexdb/dbcommand/vexcommandhandler.h"

#include "platform/base/cstdiofile.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <utility>

namespace {

CWnd* living(CWnd* window)
{
    return CWnd::isLiving(window) ? window : nullptr;
}

} // namespace

CVexCommandHandler::CVexCommandHandler(CVexDbDatabase* database)
    : m_prompts(_hPROMPT), m_database(database)
{
    m_commandCount = LoadCommandFrom();
}

CVexCommandHandler::~CVexCommandHandler()
{
    setLastEntity(nullptr);
    ClearTracker(false);
    m_busy = 0;
    freeAbandoned();
}

void CVexCommandHandler::setMsgWindow(CWnd* history, CWnd* message)
{
    m_history = history;
    m_message = message;
}

CWnd* CVexCommandHandler::GetDispWindow() const
{
    return living(m_display);
}

CWnd* CVexCommandHandler::messageWindow() const
{
    return living(m_message);
}

CWnd* CVexCommandHandler::historyWindow() const
{
    return living(m_history);
}

void CVexCommandHandler::setLastEntity(CVexDbEntity* entity)
{
    // Only the entity that bears the mark tells its end: a host may delete what a command made.
    if (m_lastEntity != nullptr) {
        m_lastEntity->m_isLastMade = false;
    }
    m_lastEntity = entity;
    if (entity != nullptr) {
        entity->m_isLastMade = true;
    }
}

bool CVexCommandHandler::acceptMade(CVexDbEntity& entity)
{
    CVexGePoint2d min;
    CVexGePoint2d max;
    const bool hasPlace = entity.trueExtents(min, max);
    if (hasPlace) {
        setLastEntity(&entity);
    } else {
        refuse(L"This is too far out to be drawn.");
    }
    return hasPlace;
}

void CVexCommandHandler::leave()
{
    if (--m_busy == 0) {
        m_inputLost = false;
        freeAbandoned();
    }
}

bool CVexCommandHandler::takeQuit()
{
    return std::exchange(m_quitKept, false);
}

void CVexCommandHandler::clearSnaps()
{
    if (m_database == nullptr) {
        return;
    }
    VexDbDrawingSettings_tag& settings = m_database->settings();
    settings.m_bSnapIntersection = false;
    settings.m_bSnapCenter = false;
    settings.m_bSnapNearest = false;
}
