#include "host/vexdraft/savemark.h"

namespace {

bool isSameEdit(const tagUndoEditEntity& a, const tagUndoEditEntity& b)
{
    return a.editType == b.editType && a.entity == b.entity && a.index == b.index &&
           a.index2 == b.index2 && a.point.x == b.point.x && a.point.y == b.point.y &&
           a.vector.x == b.vector.x && a.vector.y == b.vector.y;
}

} // namespace

void SaveMark::saved(const CVexUndoHandler& undo)
{
    m_reachable = true;
    m_depth = undo.undoStack().size();
    m_newest = m_depth > 0 ? undo.undoStack().front() : tagUndoEditEntity();
    m_newest.data = nullptr; // the stack's own
}

void SaveMark::changed(const CVexUndoHandler& undo)
{
    // An edit after an undo took away the way back to what was saved.
    if (undo.undoStack().size() + undo.redoStack().size() < m_depth) {
        m_reachable = false;
    }
}

bool SaveMark::isModified(const CVexUndoHandler& undo) const
{
    if (!m_reachable || undo.undoStack().size() != m_depth) {
        return true;
    }
    return m_depth > 0 && !isSameEdit(undo.undoStack().front(), m_newest);
}
