#pragma once

#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"

#include <cmath>
#include <deque>
#include <numbers>
#include <utility>

inline constexpr double kDegree = std::numbers::pi / 180.0;

/// Short ways to make what cuts and what is cut, and to say what came of it in words.
class CutTest : public EntityTest {
protected:
    using Entities = std::vector<CVexDbEntity*>;

    /// An entity outside the drawing, kept as long as the test.
    template <class Entity, class... Args>
    Entity* make(Args&&... args)
    {
        auto made = std::make_unique<Entity>(std::forward<Args>(args)...);
        Entity* const entity = made.get();
        m_made.push_back(std::move(made));
        return entity;
    }
    CVexDbLine* makeLine(CVexGePoint2d start, CVexGePoint2d end)
    {
        return make<CVexDbLine>(start, end);
    }
    CVexDbLine* upright(double x) { return makeLine({x, -50}, {x, 50}); }
    /// A line from near the centre outwards: it cuts a circle round the origin at `degrees`.
    CVexDbLine* spoke(double degrees, double length = 100)
    {
        const CVexGeVector2d direction(degrees * kDegree);
        return makeLine(CVexGePoint2d() + direction, CVexGePoint2d() + direction * length);
    }
    CVexDbCircle* makeCircle(CVexGePoint2d center, double radius)
    {
        return make<CVexDbCircle>(center, radius);
    }
    CVexDbArc* makeArc(CVexGePoint2d center, double radius, double from, double to) // degrees
    {
        return make<CVexDbArc>(center, radius, from * kDegree, to * kDegree);
    }
    CVexDbArc* addArc(double radius, double from, double to) // about the origin, degrees
    {
        return add(new CVexDbArc(CVexGePoint2d(), radius, from * kDegree, to * kDegree));
    }
    CVexDbCircle* addCircle(double radius) // about the origin
    {
        return add(new CVexDbCircle(CVexGePoint2d(), radius));
    }
    static CVexGePoint2d polar(double radius, double degrees)
    {
        return {radius * std::cos(degrees * kDegree), radius * std::sin(degrees * kDegree)};
    }
    /// Trims as the command does. A part left over is kept as long as the test.
    CVexDbEntity* trim(CVexDbEntity& entity, CVexGePoint2d pick, Entities cutters)
    {
        CVexDbEntity* const rest = entity.Trim(pick, cutters, kGeEpsilon);
        if (rest != nullptr) {
            m_made.emplace_back(rest);
        }
        return rest;
    }
    bool extend(CVexDbEntity& entity, CVexGePoint2d pick, Entities boundaries)
    {
        return entity.Extend(pick, boundaries, kGeEpsilon);
    }
    /// What a pick leaves: the entity, unless it is erased, then the part left over.
    std::string leftBy(CVexDbEntity& entity, CVexGePoint2d pick, Entities cutters)
    {
        const CVexDbEntity* const rest = trim(entity, pick, std::move(cutters));
        std::string words = entity.isErased() ? "" : shapeOf(entity);
        if (rest != nullptr) {
            words += (words.empty() ? "" : " and ") + shapeOf(*rest);
        }
        return words;
    }
    /// "line 0,0 6,0", "arc 0,0 r10 from 270 to 30", "circle 0,0 r10": six digits, degrees.
    static std::string shapeOf(const CVexDbEntity& entity)
    {
        std::ostringstream words;
        switch (entity.classType()) {
        case VexDb::kLine: {
            const auto& line = static_cast<const CVexDbLine&>(entity);
            words << "line " << word(line.StartPoint()) << ' ' << word(line.EndPoint());
            break;
        }
        case VexDb::kArc: {
            const auto& arc = static_cast<const CVexDbArc&>(entity);
            words << "arc " << word(arc.Center()) << " r" << word(arc.Radius()) << " from "
                  << word(arc.StartAngle() / kDegree) << " to " << word(arc.EndAngle() / kDegree);
            break;
        }
        case VexDb::kCircle: {
            const auto& circle = static_cast<const CVexDbCircle&>(entity);
            words << "circle " << word(circle.Center()) << " r" << word(circle.Radius());
            break;
        }
        default: words << "another kind"; break;
        }
        return words.str();
    }
    const std::deque<tagUndoEditEntity>& undoStack() { return drawing.undoHandler().undoStack(); }

private:
    static std::string word(double number)
    {
        constexpr double kMillion = 1e6;
        std::ostringstream text;
        text << std::round(number * kMillion) / kMillion + 0.0; // no minus before a zero
        return text.str();
    }
    static std::string word(const CVexGePoint2d& point)
    {
        return word(point.x) + "," + word(point.y);
    }

    std::vector<std::unique_ptr<CVexDbEntity>> m_made;
};
