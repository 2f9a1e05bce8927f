// The commands that end a set of entities: erase, explode. What a set is, for all that edit one.

#include "platform/device/cdc.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbtracker/vexropscope.h"
#include "vexdb/vexdbdatabase.h"

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
        eraseRecorded(*entity);
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
            eraseRecorded(*entity);
        }
    }
    return nullptr;
}
