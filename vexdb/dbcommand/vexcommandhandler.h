#pragma once

#include "platform/base/vexexport.h"

#include <vector>

class CDC;
class CVexDbDatabase;
class CVexDbEntity;

/// What keeps a selected entity's grips on screen.
class VEXDB_EXPORT CVexDbEntityTracker {
public:
    virtual ~CVexDbEntityTracker() = default;
    [[nodiscard]] virtual CVexDbEntity* GetEntity() const = 0;
    virtual void Draw(CDC* dc) = 0;
};

/// The trackers of the selected entities, in the order of selection.
class VEXDB_EXPORT CVexCommandHandler {
public:
    CVexCommandHandler() = default;
    virtual ~CVexCommandHandler();
    CVexCommandHandler(const CVexCommandHandler&) = delete;
    CVexCommandHandler& operator=(const CVexCommandHandler&) = delete;
    void SetDatabase(CVexDbDatabase* database) { m_database = database; }
    [[nodiscard]] CVexDbDatabase* database() const { return m_database; }
    /// Takes ownership.
    void AddTracker(CVexDbEntityTracker* tracker);
    /// Drops and frees it.
    void RemoveTracker(CVexDbEntityTracker* tracker);
    /// Drops and frees those of one entity, without drawing.
    void RemoveTrackersOf(const CVexDbEntity* entity);
    /// Frees all without drawing.
    void ClearTrackers();
    /// Draws every tracker's grips.
    void TrackerDraw(CDC* dc);
    [[nodiscard]] const std::vector<CVexDbEntityTracker*>& trackers() const { return m_trackers; }

private:
    std::vector<CVexDbEntityTracker*> m_trackers;
    CVexDbDatabase* m_database = nullptr;
};
