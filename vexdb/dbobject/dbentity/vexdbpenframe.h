#pragma once

#include "platform/device/cdc.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"

/// The frame of every entity's Draw: its pen in, and the one before back on every way out. False
/// for an entity that does not show, and without a context; nothing is selected then.
class CVexDbPenFrame {
public:
    CVexDbPenFrame(CVexDbEntity& entity, CDC* dc)
        : m_entity(entity), m_dc(dc != nullptr && entity.isVisiable() ? dc : nullptr),
          m_before(m_dc == nullptr ? nullptr : entity.setPen(m_dc))
    {
    }
    ~CVexDbPenFrame()
    {
        if (m_dc != nullptr) {
            m_entity.RemovePen(m_dc, m_before);
        }
    }
    CVexDbPenFrame(const CVexDbPenFrame&) = delete;
    CVexDbPenFrame& operator=(const CVexDbPenFrame&) = delete;
    explicit operator bool() const { return m_dc != nullptr; }

private:
    CVexDbEntity& m_entity;
    CDC* m_dc;
    const CPen* m_before;
};

/// A brush that is selected for a scope.
class CVexDbBrushFrame {
public:
    CVexDbBrushFrame(CDC& dc, BrushStyle style, COLORREF color)
        : CVexDbBrushFrame(dc, CBrush(style, color))
    {
    }
    CVexDbBrushFrame(CDC& dc, const CBrush& brush)
        : m_dc(dc), m_brush(brush), m_before(dc.SelectObject(&m_brush))
    {
    }
    ~CVexDbBrushFrame() { m_dc.SelectObject(m_before); }
    CVexDbBrushFrame(const CVexDbBrushFrame&) = delete;
    CVexDbBrushFrame& operator=(const CVexDbBrushFrame&) = delete;

private:
    CDC& m_dc;
    const CBrush m_brush;
    const CBrush* m_before;
};
