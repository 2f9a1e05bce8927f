#pragma once

#include "vexdb/dbtracker/vexdbentitytracker.h"

struct tagUndoEditEntity;

/// The tracker of one entity with a working copy: creating, the four transforms and the drag of a
/// grip are the same for every kind. A kind adds how a grip and a new position reshape the copy,
/// and how a grip's drag is recorded.
class VEXDB_EXPORT CVexCurveTracker : public CVexDbEntityTracker {
public:
    using CVexDbEntityTracker::CVexDbEntityTracker;

    int TrackHandle(CWnd* window, CPoint device, int grip) override;
    // By the band, on the geometry of the entity.
    void MoveEntity(CVexDbEntity* entity) override;
    void RotateEntity(CVexDbEntity* entity) override;
    void MirrorEntity(CVexDbEntity* entity) override;
    /// By the band's length divided by the scale percent of the drawing.
    void ScaleEntity(CVexDbEntity* entity) override;
    CVexDbEntity* CopyEntity(CVexDbEntity* entity) override;
    bool ControlEnd(int grip) override;
    /// Strokes the entity in XOR.
    void DrawOrgEntity();

protected:
    /// A creation shows its working copy alone; a transform and a grip's drag have a band.
    [[nodiscard]] bool showsBand(int grip) const override;
    /// Fills in how a drag of `grip` is undone; `edit` is the move by the band already. Several
    /// records may be made: all but the last are added here. False when the drag changed nothing,
    /// and nothing is recorded.
    virtual bool recordGrip(int grip, tagUndoEditEntity& edit) = 0;

private:
    void record(int grip);
    void takeOver();
};

/// The tracker of the kind `Shape`: the constructors of `Base`, and the type set behind them.
template <class Shape, CVexDbEntityTracker::TrackerType kType, class Base = CVexCurveTracker>
class VEXDB_EXPORT CVexTrackerOf : public Base {
public:
    explicit CVexTrackerOf(CWnd* window) : Base(window) { this->m_type = kType; }
    CVexTrackerOf(CWnd* window, CVexDbDatabase* database, bool createMode)
        : Base(window, database, createMode)
    {
        this->m_type = kType;
    }
    CVexTrackerOf(CWnd* window, CVexDbEntity* entity, VexDb::TransFormOption option,
                  bool createMode)
        : Base(window, entity, option, createMode)
    {
        this->m_type = kType;
    }

protected:
    /// The entity or its working copy, as what it is.
    static Shape& shapeOf(CVexDbEntity* entity) { return static_cast<Shape&>(*entity); }
};
