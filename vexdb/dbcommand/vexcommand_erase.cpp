// The commands that end a set of entities: erase, explode. What a set is, for all that edit one.

#include "platform/device/cdc.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbtracker/vexropscope.h"
#include "vexdb/vexdbdatabase.h"

namespace {

void eraseRecorded(CVexDbEntity& entity, CVexUndoHandler& undo)
{
    tagUndoEditEntity edit;
    edit.editType = kUndoErase;
    edit.entity = entity.objectId();
    undo.AddUndo(&edit);
    entity.setErased(); // only the bit: undo brings the object back
}

} // namespace

bool CVexCommandHandler::askSet(VexEntitySet& entities)
{
    dropInvisible(); // a layer may have been put off since
    if (m_trackers.empty()) {
        return GetEntities(VexDb::PromptSelectEntities, &entities) == InputPoint && !isInputLost();
    }
    GetSelectedEntity(entities);
    return !entities.empty();
}

bool CVexCommandHandler::takeSet(VexEntitySet& entities)
{
    const bool any = askSet(entities);
    ClearTracker(false);
    return any;
}

CVexDbEntity* CVexCommandHandler::CommandErase(unsigned long& /*step*/)
{
    VexEntitySet entities;
    if (!takeSet(entities)) {
        return nullptr;
    }
    CDC* const dc = viewContext();
    const VexRopScope asHole(dc, R2_MASKNOTPEN); // takes the strokes' bits off the screen
    const VexUndoGroup step(m_database->undoHandler());
    for (CVexDbEntity* entity : entities) {
        if (dc != nullptr) {
            entity->Draw(dc);
        }
        eraseRecorded(*entity, m_database->undoHandler());
    }
    return nullptr;
}

CVexDbEntity* CVexCommandHandler::CommandExplode(unsigned long& /*step*/)
{
    VexEntitySet entities;
    if (!takeSet(entities)) {
        return nullptr;
    }
    const VexUndoGroup step(m_database->undoHandler());
    for (CVexDbEntity* entity : entities) {
        if (const auto explode = entityKind(entity->classType()).explode; explode != nullptr) {
            explode(*entity);
            eraseRecorded(*entity, m_database->undoHandler());
        }
    }
    return nullptr;
}
