#include "vexdb/dbcommand/vexundohandler.h"

CVexUndoHandler::~CVexUndoHandler()
{
    clear();
}

int CVexUndoHandler::AddUndo(const tagUndoEditEntity& edit)
{
    if (!edit.entity.isNull()) {
        m_undo.push_front(edit);
    }
    return static_cast<int>(m_undo.size());
}

void CVexUndoHandler::clear()
{
    for (const tagUndoEditEntity& edit : m_undo) {
        delete[] static_cast<wchar_t*>(edit.data);
    }
    m_undo.clear();
}
