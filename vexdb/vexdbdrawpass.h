#pragma once

#include "platform/base/vexexport.h"

#include <optional>

/// What one drawing pass changes about every entity it draws, without changing the entities. The
/// database holds one; an entity asks it when it makes its pen.
struct CVexDbDrawPass {
    /// Colour index that stands in for each entity's own; nothing on a screen.
    std::optional<int> colorIndex;
};

/// The index that paper shows everything in: an index of 255 draws in the layer's colour.
inline constexpr int kPrintedColorIndex = 255;

/// Puts an override into a pass for a scope and what stood there back at its end.
class VEXDB_EXPORT CVexDbDrawPassScope {
public:
    CVexDbDrawPassScope(CVexDbDrawPass& pass, std::optional<int> colorIndex)
        : m_pass(pass), m_before(pass)
    {
        m_pass.colorIndex = colorIndex;
    }
    ~CVexDbDrawPassScope() { m_pass = m_before; }
    CVexDbDrawPassScope(const CVexDbDrawPassScope&) = delete;
    CVexDbDrawPassScope& operator=(const CVexDbDrawPassScope&) = delete;

private:
    CVexDbDrawPass& m_pass;
    const CVexDbDrawPass m_before;
};
