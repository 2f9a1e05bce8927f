#pragma once

#include "vexdb/dbcommand/vexundohandler.h"

#include <cstddef>

/// Tells whether a drawing stands as it was saved last, by its undo stack: undoing back to the
/// saved state makes it unchanged again. Whenever it cannot be sure it says changed.
class SaveMark {
public:
    /// The drawing has just been saved, or is fresh.
    void saved(const CVexUndoHandler& undo);
    /// To be called after each change.
    void changed(const CVexUndoHandler& undo);
    /// The state of no file: a recovered drawing.
    void neverSaved() { m_reachable = false; }
    [[nodiscard]] bool isModified(const CVexUndoHandler& undo) const;

private:
    std::size_t m_depth = 0;
    tagUndoEditEntity m_newest; // when m_depth is above 0
    bool m_reachable = true;
};
