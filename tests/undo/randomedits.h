#pragma once

#include "tests/undo/undofixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

/// Edits a drawing at random as a person would, mixed with undo and redo. The same seed gives the
/// same edits on every machine.
class RandomEdits {
public:
    RandomEdits(CVexDbDatabase& drawing, std::uint64_t seed)
        : m_drawing(drawing), m_undo(drawing.undoHandler()), m_random(seed)
    {
    }
    virtual ~RandomEdits() = default;
    RandomEdits(const RandomEdits&) = delete;
    RandomEdits& operator=(const RandomEdits&) = delete;

    void addAtStart(int count)
    {
        for (int i = 0; i < count; ++i) {
            add();
        }
    }
    /// One single edit, one group, one block, or an undo or redo; gives the number of edits made.
    int step()
    {
        switch (below(8)) {
        case 0: m_undo.Undo(); return 0;
        case 1: m_undo.Redo(); return 0;
        case 2: return group();
        case 3: return block();
        default: return edit(false);
        }
    }

protected:
    virtual double coordinate(double range) = 0;
    /// Changes the shape of an entity, recorded; `continues` is for the record.
    virtual void reshape(CVexDbEntity& entity, bool continues) = 0;

    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    CVexGePoint2d point(double range) { return {coordinate(range), coordinate(range)}; }
    CVexGeVector2d vector(double range) { return {coordinate(range), coordinate(range)}; }
    double unit() // in [0, 1), by whole numbers: the standard's own differ from library to library
    {
        return static_cast<double>(m_random() >> 11) / 9007199254740992.0;
    }
    tagUndoEditEntity about(const CVexDbEntity& entity, int type, bool continues)
    {
        tagUndoEditEntity record;
        record.entity = entity.objectId();
        record.editType = type;
        record.continues = continues;
        return record;
    }
    void push(const tagUndoEditEntity& record) { m_undo.AddUndo(&record); }
    void move(CVexDbEntity& entity, CVexGeVector2d by, bool continues)
    {
        tagUndoEditEntity record = about(entity, kUndoMove, continues);
        record.vector = by;
        push(record);
        entity.TranslateBy(by);
    }
    void mirror(CVexDbEntity& entity, CVexGePoint2d at, CVexGeVector2d along, bool continues)
    {
        tagUndoEditEntity record = about(entity, kUndoMirror, continues);
        record.point = at;
        record.vector = along;
        push(record);
        entity.Mirror(CVexGeLine2d(at, along));
    }
    void scale(CVexDbEntity& entity, CVexGePoint2d at, double fx, double fy, bool continues)
    {
        tagUndoEditEntity record = about(entity, kUndoScale, continues);
        record.point = at;
        record.vector.set(fx, fy);
        push(record);
        entity.ScaleBy(fx, fy, at);
    }
    void moveEnd(CVexDbLine& line, CVexGePoint2d target, bool continues)
    {
        tagUndoEditEntity record = about(line, kUndoMovePoint, continues);
        record.index = below(2);
        record.vector = target - (record.index == 0 ? line.StartPoint() : line.EndPoint());
        push(record);
        record.index == 0 ? line.setStartPoint(target) : line.setEndPoint(target);
    }
    void resize(CVexDbBox& box, double width, double height, bool continues)
    {
        tagUndoEditEntity record = about(box, kUndoMovePoint, continues);
        record.vector.set(box.Width(), box.Height());
        push(record);
        box.Set(box.BasePoint(), CVexGeVector2d(width, height), box.Rotation());
    }
    void setSides(CVexDbRect& rect, CVexGePoint2d leftTop, CVexGePoint2d rightBottom,
                  bool continues)
    {
        tagUndoEditEntity record = about(rect, kUndoChangeSize, continues);
        record.point = rect.LeftTop();
        record.vector = rect.RightBottom().asVector();
        push(record);
        rect.setLeftTop(leftTop);
        rect.setRightBottom(rightBottom);
    }

    void turnEnd(CVexDbArc& arc, double angle, bool continues)
    {
        tagUndoEditEntity record = about(arc, kUndoChangeAngle, continues);
        record.index = below(2);
        record.point.x = record.index == 0 ? arc.StartAngle() : arc.EndAngle();
        record.vector = CVexGeVector2d(record.point.x);
        push(record);
        record.index == 0 ? arc.setStartAngle(angle) : arc.setEndAngle(angle);
    }
    template <class Round>
    void resize(Round& entity, double radius, bool continues)
    {
        tagUndoEditEntity record = about(entity, kUndoChangeSize, continues);
        record.vector.x = entity.Radius();
        push(record);
        entity.setRadius(radius);
    }
    /// Trims an arc or circle at a line through its centre; what is left over joins the drawing in
    /// the same step.
    template <class Round>
    void trim(Round& entity)
    {
        const CVexGeVector2d across = vector(10) * 100.0;
        CVexDbLine cutter(entity.Center() - across, entity.Center() + across);
        std::vector<CVexDbEntity*> cutters{&cutter};
        CVexGePoint2d pick = entity.Center() + vector(10);
        if (CVexDbEntity* const rest = entity.Trim(pick, cutters, kGeEpsilon); rest != nullptr) {
            m_all.push_back(addTo(m_drawing, rest));
            push(about(*rest, kUndoCreate, true));
        }
    }

private:
    CVexDbEntity& add()
    {
        const CVexGePoint2d at = point(400);
        const CVexGeVector2d size = vector(40);
        CVexDbEntity* made = nullptr;
        switch (below(5)) {
        case 0: made = new CVexDbLine(at, at + size); break;
        case 1: made = new CVexDbBox(at, size.x, size.y, 0.0); break;
        case 2: made = new CVexDbArc(at, std::fabs(size.x) + 1.0, size.y, size.x); break;
        case 3: made = new CVexDbCircle(at, std::fabs(size.x) + 1.0); break;
        default: made = new CVexDbRect(at, at + size); break;
        }
        m_all.push_back(addTo(m_drawing, made));
        return *made;
    }
    CVexDbEntity& any()
    {
        return *m_all[static_cast<std::size_t>(below(static_cast<int>(m_all.size())))];
    }
    int group()
    {
        const VexUndoGroup open(m_undo);
        return editSome();
    }
    int block()
    {
        const CVexDbEntity& marked = any();
        push(about(marked, kUndoBlockBegin, false));
        const int made = editSome();
        push(about(marked, kUndoBlockEnd, false));
        return made;
    }
    int editSome()
    {
        int made = 0;
        for (int rest = below(6); rest > 0; --rest) {
            made += edit(below(2) == 0);
        }
        return made;
    }
    int edit(bool continues)
    {
        const int kind = below(16);
        if (kind == 0) {
            push(about(add(), below(2) == 0 ? kUndoCreate : kUndoAddToOwner, continues));
            return 1;
        }
        CVexDbEntity& entity = any();
        if (entity.isErased()) {
            return 0; // nobody can pick it
        }
        if (kind == 1) {
            erase(entity, continues);
        } else if (kind < 5) {
            changeProperty(entity, continues);
        } else {
            reshape(entity, continues);
        }
        return 1;
    }
    void erase(CVexDbEntity& entity, bool continues)
    {
        switch (below(3)) {
        case 0:
            entity.setErased();
            push(about(entity, kUndoErase, continues));
            break;
        case 1:
            push(about(entity, kUndoErase, continues));
            entity.Erase();
            break;
        default:
            push(about(entity, kUndoRemoveFromOwner, continues));
            entity.Erase();
            break;
        }
    }
    template <class Table>
    CVexDbObjectId anyOf(Table& table)
    {
        auto at = table.records().begin();
        std::advance(at, below(table.size()));
        return CVexDbObjectId(at->second.get());
    }
    void changeProperty(CVexDbEntity& entity, bool continues)
    {
        const int type = kUndoChangeLayer + below(4);
        tagUndoEditEntity record = about(entity, type, continues);
        switch (type) {
        case kUndoChangeLayer:
            record.other = entity.LayerId();
            entity.setLayer(anyOf(m_drawing.layers()));
            break;
        case kUndoChangeLinetype:
            record.other = entity.LineTypeId();
            entity.setLineType(anyOf(m_drawing.linetypes()), true);
            break;
        case kUndoChangeColor:
            record.other = entity.ColorId();
            entity.setColor(anyOf(m_drawing.colors()), true);
            break;
        default:
            record.weight = entity.LineWeight();
            entity.setLineWeight(static_cast<VexDb::LineWeight>(below(200)), true);
            break;
        }
        push(record);
    }

    CVexDbDatabase& m_drawing;
    CVexUndoHandler& m_undo;
    std::mt19937_64 m_random;
    std::vector<CVexDbEntity*> m_all; // that were ever made
};

/// Edits that lose no bit: all coordinates lie on a grid of 1/1024, mirrors along the axes.
class ExactEdits : public RandomEdits {
public:
    using RandomEdits::RandomEdits;

protected:
    double coordinate(double range) override
    {
        const int steps = static_cast<int>(range) * 1024;
        return (below(2 * steps + 1) - steps) / 1024.0;
    }
    void reshape(CVexDbEntity& entity, bool continues) override
    {
        switch (below(8)) {
        case 0:
        case 1: mirror(entity, point(200), {0.0, coordinate(100)}, continues); break;
        case 2: mirror(entity, point(200), {coordinate(100), 0.0}, continues); break;
        case 3:
            if (below(20) == 0) { // rare: nothing but undo brings a collapsed shape back
                scale(entity, point(100), 0.0, below(2), continues);
                break;
            }
            [[fallthrough]];
        case 4: move(entity, vector(60), continues); break;
        default: reshapeOwn(entity, continues); break;
        }
    }

private:
    void reshapeOwn(CVexDbEntity& entity, bool continues)
    {
        switch (entity.classType()) {
        case VexDb::kLine: moveEnd(static_cast<CVexDbLine&>(entity), point(400), continues); break;
        case VexDb::kBox:
            resize(static_cast<CVexDbBox&>(entity), coordinate(40), coordinate(40), continues);
            break;
        case VexDb::kArc: reshapeArc(static_cast<CVexDbArc&>(entity), continues); break;
        case VexDb::kCircle:
            below(2) == 0 ? trim(static_cast<CVexDbCircle&>(entity))
                          : resize(static_cast<CVexDbCircle&>(entity), radius(), continues);
            break;
        default:
            setSides(static_cast<CVexDbRect&>(entity), point(400), point(400), continues);
            break;
        }
    }
    void reshapeArc(CVexDbArc& arc, bool continues)
    {
        switch (below(4)) {
        case 0: resize(arc, radius(), continues); break;
        case 1: turnEnd(arc, coordinate(8), continues); break;
        default: trim(arc); break;
        }
    }
    double radius() { return std::fabs(coordinate(40)) + 1.0; }
};

/// Turns, scales and moves by any numbers; what comes back has lost the last digits.
class FreeEdits : public RandomEdits {
public:
    using RandomEdits::RandomEdits;

protected:
    double coordinate(double range) override { return (2.0 * unit() - 1.0) * range; }
    void reshape(CVexDbEntity& entity, bool continues) override
    {
        const CVexDbRect rect = entity.GetOutRect();
        const CVexGePoint2d middle((rect.LeftTop().x + rect.RightBottom().x) / 2.0,
                                   (rect.LeftTop().y + rect.RightBottom().y) / 2.0);
        const double size = rect.LeftTop().distanceTo(rect.RightBottom());
        const CVexGePoint2d near = middle + vector(50);
        switch (below(4)) {
        case 0: { // larger and smaller in turn, so that no digits go by size alone
            const double factor = size > 60.0 ? 0.4 + unit() / 2.0 : 1.1 + unit();
            scale(entity, near, factor, below(2) == 0 ? factor : factor * 0.9, continues);
            break;
        }
        case 1: move(entity, point(400) - middle, continues); break; // and back into sight
        case 2: mirror(entity, near, vector(10), continues); break;
        default: rotate(entity, near, continues); break;
        }
    }

private:
    void rotate(CVexDbEntity& entity, CVexGePoint2d at, bool continues)
    {
        const double angle = 6.3 * unit();
        tagUndoEditEntity record = about(entity, kUndoRotate, continues);
        record.point = at;
        record.vector = CVexGeVector2d(angle);
        push(record);
        entity.RotateBy(angle, at);
    }
};
