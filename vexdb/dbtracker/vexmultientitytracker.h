#pragma once

#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexge/gemath/vexgevector2d.h"

#include <memory>
#include <vector>

/// Shows a whole selection while it is moved, copied, rotated, mirrored or scaled, and commits it.
/// Its copies are transformed by the difference to the last position, never rebuilt.
class VEXDB_EXPORT CVexMultiEntityTracker : public CVexDbEntityTracker {
public:
    CVexMultiEntityTracker(CWnd* window, const std::vector<CVexDbObjectId>* entities,
                           VexDb::TransFormOption option);
    /// Frees every copy that was not given to the database.
    ~CVexMultiEntityTracker() override;

    void SetMultiEntity(std::vector<CVexDbObjectId>* entities) override;
    void UndrawOrigin() override;
    void DrawCurrent() override;
    int TrackHandle(CWnd* window, CPoint device, int grip) override;
    // Each works on the difference between the old and the new vector.
    void MoveEntity(CVexDbEntity* entity) override;
    void RotateEntity(CVexDbEntity* entity) override;
    void MirrorEntity(CVexDbEntity* entity) override;
    void ScaleEntity(CVexDbEntity* entity) override;
    CVexDbEntity* CopyEntity(CVexDbEntity* entity) override;
    /// Takes the whole transform, done once from the sources, into the drawing.
    bool ControlEnd(int grip) override;

    /// A commit adds the copies and leaves the sources.
    void SetKeepOrigin(bool keep) { m_keepOrigin = keep; }
    /// Kept for callers; nothing depends on it.
    void SetUndrawRubber(bool undraw) { m_undrawRubber = undraw; }
    /// The copies become the sources.
    void SetCurrentToOrigin();
    /// Brings the copies from where they stand to the end of the band and shows them.
    void TransForm();
    /// Turns by twice the way of the mirror line: un-mirroring and mirroring again in one.
    void MirrorRotateEntity(CVexDbEntity* entity);
    /// The copies stand where the sources are, with no way behind them.
    void CopyOriginToCurrent();
    /// Records each source's transform as one undo step and takes the copies over.
    void CopyCurrentToOrigin();
    void ClearCopyedArray();
    /// What is transformed, oldest first; not owned.
    [[nodiscard]] const std::vector<CVexDbEntity*>& sources() const { return m_sources; }

protected:
    [[nodiscard]] bool showsBand(int) const override { return false; } // it goes with the copies
    void beginPicture(int grip) override;
    void followMove(int grip) override;
    void liftPicture() override;
    void restorePicture(bool band, bool copy) override;

private:
    void forgetWay();
    void advanceScale();
    void transformCopies();
    void paintCopies();
    void paintOn(CDC& dc);
    void showDrawing();
    void addCopies();

    std::vector<CVexDbEntity*> m_sources; // not owned
    std::vector<CVexDbEntity*> m_copies;
    bool m_copiesGiven = false;                              // the database owns them
    std::vector<std::unique_ptr<CVexDbEntity>> m_ownSources; // copies that became sources
    bool m_picturePainted = false;
    bool m_keepOrigin = false;
    bool m_undrawRubber = false;
    CVexGeVector2d m_oldVector;      // drawing units: where the copies stood before this step
    CVexGeVector2d m_newVector;      // drawing units: where they stand then
    double m_accumulatedScale = 1.0; // of the copies; for a mirror, whether they are mirrored
    double m_stepFactor = 1.0;
};
