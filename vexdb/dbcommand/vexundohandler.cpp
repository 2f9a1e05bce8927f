#include "vexdb/dbcommand/vexundohandler.h"

#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundoclasses.h"
#include "vexdb/dbcommand/vexundovertices.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <utility>

CVexUndoHandler::CVexUndoHandler() = default;
CVexUndoHandler::~CVexUndoHandler() = default;

void CVexUndoHandler::clear()
{
    m_undo.clear();
    m_redo.clear();
    m_current = {};
    m_groupRecords = 0;
    m_endIsOwed = false;
}

int CVexUndoHandler::AddUndo(const tagUndoEditEntity* edit)
{
    if (m_undoing) {
        return 0;
    }
    if (edit != nullptr && !m_redoing) {
        m_redo.clear();
        m_current = *edit;
        pushNew();
    } else if (edit == nullptr && classifyByEntity()) {
        m_undo.push_front(m_current);
    }
    return static_cast<int>(m_undo.size());
}

/// Pushes the current record, a new edit, unless its entity does not classify.
void CVexUndoHandler::pushNew()
{
    tagUndoEditEntity& edit = m_current;
    if (!classifyByEntity()) {
        m_endIsOwed = m_groups == 0 && (m_endIsOwed || !edit.continues);
        edit = {};
        return;
    }
    if (m_groups > 0) {
        edit.continues = m_groupRecords++ > 0;
    } else if (m_endIsOwed) {
        edit.continues = false;
    }
    m_endIsOwed = false;
    keepWhatIsLost();
    m_undo.push_front(std::exchange(edit, {}));
}

int CVexUndoHandler::AddRedo()
{
    if (m_redoing) {
        return 0;
    }
    const VexUndoClass* row = undoClass(m_current.classType);
    const bool isCommon = m_current.classType == VexDb::kEntity;
    if (isCommon ? MakeUndoEntity() : row != nullptr && (this->*row->make)()) {
        m_redo.push_front(m_current);
    }
    return static_cast<int>(m_redo.size());
}

bool CVexUndoHandler::classifyByEntity()
{
    const CVexDbObject* entity = m_current.entity.getPObject();
    const VexUndoClass* row = entity == nullptr ? nullptr : undoClass(entity->classType());
    return row != nullptr && (this->*row->make)();
}

bool CVexUndoHandler::Undo()
{
    return step(false);
}

bool CVexUndoHandler::Redo()
{
    return step(true);
}

bool CVexUndoHandler::step(bool redo)
{
    std::deque<tagUndoEditEntity>& from = redo ? m_redo : m_undo;
    if (from.empty() || m_undoing || m_redoing) {
        return false;
    }
    CVexDbDatabase* const drawing = from.front().entity.database();
    if (drawing != nullptr && drawing->commandHandler().isBusy()) {
        return false;
    }
    (redo ? m_redoing : m_undoing) = true;
    bool ok = false;
    bool inBlock = false;
    do {
        m_current = from.front();
        ok = applyCurrent(redo, inBlock);
        if (!ok) {
            break;
        }
        from.pop_front();
        if (!redo) {
            AddRedo();
            continue;
        }
        AddUndo(nullptr);
        // Forwards the oldest record, which ends a step, comes first: whether the step goes on is
        // told by the record that follows, not by the one just done.
        if (!from.empty()) {
            m_current = from.front();
        }
    } while ((m_current.continues || inBlock) && !from.empty());
    finishStep(drawing);
    return ok;
}

/// Applies the current record unless it is a mark; `inBlock` follows the marks of blocks, which
/// come in the other order when redoing.
bool CVexUndoHandler::applyCurrent(bool redo, bool& inBlock)
{
    switch (m_current.editType) {
    case kUndoMark: return true;
    case kUndoBlockBegin: inBlock = redo; return true;
    case kUndoBlockEnd: inBlock = !redo; return true;
    default: break;
    }
    if (m_vertices != nullptr && !isAboutVertices() && !isPresenceOfAnother()) {
        m_vertices.reset(); // the polyline is whole for whatever comes
    }
    if (m_current.classType == VexDb::kEntity) {
        return UndoEntity(redo);
    }
    const VexUndoClass* row = undoClass(m_current.classType);
    return row == nullptr || (this->*row->apply)(redo);
}

void CVexUndoHandler::finishStep(CVexDbDatabase* drawing)
{
    m_vertices.reset();
    m_undoing = false;
    m_redoing = false;
    m_current = {};
    m_groupRecords = 0; // what an open group records from here on is a step of its own
    m_endIsOwed = false;
    if (drawing != nullptr) {
        drawing->commandHandler().dropInvisible();
    }
    if (CWnd::isLiving(m_view)) {
        m_view->Invalidate();
    }
}

int CVexUndoHandler::UndoPop()
{
    int dropped = 0;
    for (bool stopped = false; !stopped && !m_undo.empty(); ++dropped) {
        stopped = m_undo.front().editType == kUndoStop;
        m_undo.pop_front();
    }
    m_groupRecords = std::max(0, m_groupRecords - dropped);
    return dropped;
}

void CVexUndoHandler::openGroup()
{
    if (m_groups++ == 0) {
        m_groupRecords = 0;
        m_endIsOwed = false;
    }
}

void CVexUndoHandler::closeGroup()
{
    --m_groups;
}
