// The commands that transform a set of entities: move, copy, rotate, copy and rotate, scale,
// mirror.

#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbtracker/vexmultientitytracker.h"
#include "vexdb/dbtracker/vextransformedit.h"
#include "vexdb/vexdbdatabase.h"

#include <functional>
#include <numbers>
#include <optional>

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
constexpr wchar_t kYes = L'Y';

bool isByNumber(VexDb::TransFormOption option)
{
    return option == VexDb::TransFormRotate || option == VexDb::TransFormScale;
}

} // namespace

/// What these commands share: a set, a base point, and tracks from there that end by a click, a
/// typed target, or a typed angle or factor.
class CVexCommandHandler::Transform {
public:
    explicit Transform(CVexCommandHandler& handler) : m_handler(handler) {}

    bool askSet()
    {
        VexEntitySet entities;
        if (!m_handler.askSet(entities)) {
            return false;
        }
        m_ids.reserve(entities.size());
        for (const CVexDbEntity* entity : entities) {
            m_ids.push_back(entity->objectId());
        }
        return true;
    }
    bool askBase()
    {
        return m_handler.GetGePoint(VexDb::PromptBasePoint, m_base) == InputPoint &&
               !m_handler.isInputLost();
    }
    void keepSources(bool keep) { m_keepSources = keep; }
    /// Tracks the set from the base point; gives the tracker's InputResult.
    int track(VexDb::TransFormOption option, int prompt)
    {
        m_tracker = std::make_unique<CVexMultiEntityTracker>(m_handler.m_display, &m_ids, option);
        m_tracker->SetKeepOrigin(m_keepSources);
        return trackFrom(m_base, option, prompt);
    }
    /// Goes on with the copies that the last track has put into the drawing, from where it ended.
    int trackCopies(VexDb::TransFormOption option, int prompt)
    {
        m_tracker->SetCurrentToOrigin();
        m_tracker->SetKeepOrigin(false);
        m_tracker->SetTransOpt(option);
        return trackFrom(m_handler.m_database->lastPoint(), option, prompt);
    }
    /// Turns the set about the base point by what was typed in degrees, if that was the answer.
    void turnByTyped(int result)
    {
        const std::optional<double> degrees = m_tracker->typedNumber(result);
        if (degrees && *degrees != 0.0) {
            const CVexGeVector2d direction(*degrees * kRadiansPerDegree);
            change(VexDb::TransFormRotate, direction, 1.0, [&](CVexDbEntity& entity) {
                entity.RotateBy(direction.angle(), m_base); // the angle that a redo turns by, too
            });
        }
    }
    /// Scales it by a typed factor; one that is not above 0 is none.
    void scaleByTyped(int result)
    {
        const std::optional<double> factor = m_tracker->typedNumber(result);
        if (factor && *factor > 0.0) {
            change(VexDb::TransFormScale, {}, *factor,
                   [&](CVexDbEntity& entity) { entity.ScaleBy(*factor, m_base); });
        }
    }

private:
    int trackFrom(const CVexGePoint2d& start, VexDb::TransFormOption option, int prompt)
    {
        const int result = m_handler.trackFrom(*m_tracker, start, prompt);
        if (result == InputTypedPoint) {
            m_tracker->SetPos(m_tracker->resBuffer().value.point); // as if it had been clicked
            m_tracker->ControlEnd(0);
        } else if (result == InputNumber && !isByNumber(option)) {
            m_handler.noteAnswer(InputString); // a number alone names no target
        }
        return result;
    }

    /// Records and does one transform of all that the tracker has, as one undo step.
    void change(VexDb::TransFormOption option, const CVexGeVector2d& vector, double factor,
                const std::function<void(CVexDbEntity&)>& transform)
    {
        CVexUndoHandler& undo = m_handler.m_database->undoHandler();
        const VexUndoGroup step(undo);
        for (CVexDbEntity* entity : m_tracker->sources()) {
            if (entity->IsDbEntity()) {
                const tagUndoEditEntity edit =
                    transformEdit(option, *entity, m_base, vector, factor);
                undo.AddUndo(&edit);
            }
            changeOnScreen(*entity, transform);
        }
        repaintSoon(m_handler);
    }

    void changeOnScreen(CVexDbEntity& entity, const std::function<void(CVexDbEntity&)>& transform)
    {
        CDC* const dc = m_tracker->getDC();
        if (dc != nullptr) {
            entity.UnDraw(dc);
        }
        transform(entity);
        entity.setGripPoints();
        entity.OnCurveChanged();
        if (dc != nullptr) {
            entity.Draw(dc);
        }
    }

    CVexCommandHandler& m_handler;
    std::vector<CVexDbObjectId> m_ids;
    CVexGePoint2d m_base;
    bool m_keepSources = false;
    std::unique_ptr<CVexMultiEntityTracker> m_tracker;
};

CVexDbEntity* CVexCommandHandler::CommandMove(unsigned long& /*step*/)
{
    Transform move(*this);
    if (move.askSet() && move.askBase()) {
        move.track(VexDb::TransFormMove, VexDb::PromptNextPoint);
    }
    return nullptr;
}

// All copies are placed from one base point, each an undo step of its own.
CVexDbEntity* CVexCommandHandler::CommandCopy(unsigned long& /*step*/)
{
    Transform copy(*this);
    if (!copy.askSet() || !copy.askBase()) {
        return nullptr;
    }
    copy.keepSources(true);
    int result = InputPoint;
    while (result != InputCancel && result != InputEnter && result != InputLost) {
        result = copy.track(VexDb::TransFormCopy, VexDb::PromptNextPoint);
    }
    return nullptr;
}

CVexDbEntity* CVexCommandHandler::CommandRotate(unsigned long& /*step*/)
{
    Transform turn(*this);
    if (turn.askSet() && turn.askBase()) {
        turn.turnByTyped(turn.track(VexDb::TransFormRotate, VexDb::PromptRotation));
    }
    return nullptr;
}

CVexDbEntity* CVexCommandHandler::CommandCopyRotate(unsigned long& /*step*/)
{
    Transform copy(*this);
    if (!copy.askSet() || !copy.askBase()) {
        return nullptr;
    }
    const VexUndoGroup step(m_database->undoHandler());
    copy.keepSources(true);
    if (!isPlaced(copy.track(VexDb::TransFormCopy, VexDb::PromptNextPoint)) || isInputLost()) {
        return nullptr;
    }
    // The mouse turns the copies about the place where they were put, a typed angle about the first
    // base point: who types angles places copies round a centre, which is that base.
    copy.turnByTyped(copy.trackCopies(VexDb::TransFormRotate, VexDb::PromptRotation));
    return nullptr;
}

CVexDbEntity* CVexCommandHandler::CommandScale(unsigned long& /*step*/)
{
    Transform scale(*this);
    if (scale.askSet() && scale.askBase()) {
        scale.scaleByTyped(scale.track(VexDb::TransFormScale, VexDb::PromptScaleFactor));
    }
    return nullptr;
}

CVexDbEntity* CVexCommandHandler::CommandMirror(unsigned long& /*step*/)
{
    Transform mirror(*this);
    if (!mirror.askSet()) {
        return nullptr;
    }
    // Y alone gives the sources up. Every other end, Return and Escape too, keeps them and goes on:
    // who wants out presses Escape at the next question.
    wchar_t key = 0;
    const bool replaces =
        GetKeyWord(VexDb::PromptKeepSource, L"YNyn", key) == InputPoint && key == kYes;
    if (mirror.askBase()) {
        mirror.keepSources(!replaces);
        mirror.track(VexDb::TransFormMirror, VexDb::PromptNextPoint);
    }
    return nullptr;
}
