#include "host/vexdraft/draftstart.h"

#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexpopupmenu.h"
#include "vexdb/dbtracker/vexselectiontracker.h"

DraftStart::DraftStart()
    : m_machineScope(m_machine), m_backendBefore(CVexBackend::install(&m_backend)),
      m_prompts(findMessageFile())
{
    // Every command handler takes these when its drawing is made.
    _hPROMPT = &m_prompts;
    _cursorSelect = VexCursor::kPickBox;
    CVexDbEntityTracker::m_Menu = makePopupMenus();
}

DraftStart::~DraftStart()
{
    _hPROMPT = nullptr;
    CVexBackend::install(m_backendBefore);
}
