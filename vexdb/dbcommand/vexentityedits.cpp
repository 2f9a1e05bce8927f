#include "vexdb/dbcommand/vexentityedits.h"

#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbcuts.h"
#include "vexdb/vexdbdatabase.h"

void addRecorded(CVexDbEntity* entity)
{
    if (entity == nullptr) {
        return;
    }
    CVexDbObjectId id;
    entity->database()->addEntity(entity, id);
    recordEdit(*entity, undoEditOf(*entity, kUndoCreate));
}

void eraseRecorded(CVexDbEntity& entity)
{
    recordEdit(entity, undoEditOf(entity, kUndoErase));
    entity.setErased(); // only the bit: undo brings the object back
}

void repaintSoon(const CVexCommandHandler& handler)
{
    if (CWnd* const display = handler.GetDispWindow(); display != nullptr) {
        display->Invalidate();
    }
}

void repaintNow(const CVexCommandHandler& handler)
{
    if (CWnd* const display = handler.GetDispWindow(); display != nullptr) {
        display->SendMessage(WM_PAINT, 0, 0);
    }
}
