#pragma once

#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"

#include <memory>
#include <optional>
#include <utility>

/// What a creating command has in hand: the entity that it makes, with the current properties and
/// not in the drawing yet, and the tracker that shows it while the person shapes it. Both go
/// unless the entity is handed over.
template <class Entity, class Tracker>
class CVexCommandHandler::Creation {
public:
    explicit Creation(CVexCommandHandler& handler)
        : Creation(handler, std::make_unique<Entity>(handler.m_database))
    {
    }
    /// With an entity that was made otherwise, in the drawing's database.
    Creation(CVexCommandHandler& handler, std::unique_ptr<Entity> entity)
        : m_handler(handler), m_entity(std::move(entity)),
          m_tracker(handler.m_display, m_entity.get(), VexDb::TransFormNone, true)
    {
    }
    Creation(const Creation&) = delete;
    Creation& operator=(const Creation&) = delete;

    Entity* operator->() const { return m_entity.get(); }
    [[nodiscard]] Entity& entity() const { return *m_entity; }
    [[nodiscard]] Tracker& tracker() { return m_tracker; }

    /// Shows the entity from `start` until it is answered: an InputResult, a loss being a cancel.
    int track(const CVexGePoint2d& start, int prompt)
    {
        const int result = m_handler.trackFrom(m_tracker, start, prompt);
        return result == InputLost || m_handler.isInputLost() ? int(InputCancel) : result;
    }
    /// The same where the prompt asks for a point: a typed one shapes the entity, too.
    int trackPoint(const CVexGePoint2d& start, int prompt)
    {
        const int result = track(start, prompt);
        if (result == InputTypedPoint) {
            takeTypedPoint();
        } else if (result == InputNumber) {
            m_handler.noteAnswer(InputString); // a number alone names no point
        }
        return result;
    }
    /// Shapes the entity as a click at the point that was typed would have done.
    void takeTypedPoint()
    {
        const CVexGePoint2d typed = m_tracker.resBuffer().value.point;
        m_tracker.SetPos(typed);
        CPoint position = toLogical(typed);
        m_tracker.CheckCreateOption(m_entity.get(), position);
        m_tracker.DrawOrgEntity();
    }
    /// The number that was typed for an answer; nothing for any other answer.
    [[nodiscard]] std::optional<double> typedNumber(int result) const
    {
        return m_tracker.typedNumber(result);
    }
    /// The entity has changed in a way that the tracker did not draw.
    void showAnew() const { repaintSoon(m_handler); }
    /// The entity is the last one made, and the caller's from here on. Null for one that numbers
    /// beyond all measure have given no place in a drawing.
    Entity* handOver() { return m_handler.acceptMade(*m_entity) ? m_entity.release() : nullptr; }

private:
    CVexCommandHandler& m_handler;
    std::unique_ptr<Entity> m_entity;
    Tracker m_tracker; // goes first: it holds the entity
};
