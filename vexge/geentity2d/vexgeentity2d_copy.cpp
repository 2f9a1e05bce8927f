#include "platform/base/vexassert.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeentity2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"
#include "vexge/geentity2d/vexgespiral.h"
#include "vexge/geentity2d/vexgespline.h"

#include <memory>
#include <type_traits>

namespace {

/// Calls `visit` with a null pointer of the class that `kind` stands for. False, with no call, for
/// a kind that has no class. This is the one list of the kernel's curves.
template <class Visit>
bool visitKind(VexGe::EntityId kind, const Visit& visit)
{
    switch (kind) {
    case VexGe::kGeCircArc2d: visit(static_cast<CVexGeCircArc2d*>(nullptr)); return true;
    case VexGe::kGeEllipArc2d: visit(static_cast<CVexGeEllipArc2d*>(nullptr)); return true;
    case VexGe::kGeLine2d: visit(static_cast<CVexGeLine2d*>(nullptr)); return true;
    case VexGe::kGePolyline2d: visit(static_cast<CVexGePolyline2d*>(nullptr)); return true;
    case VexGe::kGeSpline: visit(static_cast<CVexGeSpline*>(nullptr)); return true;
    case VexGe::kGeCSpline2d: visit(static_cast<CVexGeCSpline2d*>(nullptr)); return true;
    case VexGe::kGeRect2d: visit(static_cast<CVexGeRect2d*>(nullptr)); return true;
    case VexGe::kGeSpiral: visit(static_cast<CVexGeSpiral*>(nullptr)); return true;
    default: return false;
    }
}

} // namespace

CVexGeEntity2d* CVexGeEntity2d::copy() const
{
    CVexGeEntity2d* result = nullptr;
    const bool known = visitKind(m_type, [&](auto* kind) {
        using Curve = std::remove_pointer_t<decltype(kind)>;
        result = std::make_unique<Curve>(static_cast<const Curve&>(*this)).release();
    });
    VEX_ASSERT(known, "pEntity");
    return result;
}

CVexGeEntity2d& CVexGeEntity2d::operator=(const CVexGeEntity2d& other)
{
    visitKind(other.m_type, [&](auto* kind) {
        using Curve = std::remove_pointer_t<decltype(kind)>;
        static_cast<Curve&>(*this) = static_cast<const Curve&>(other);
    });
    m_type = other.m_type;
    return *this;
}

CVexGeEntity2d& CVexGeEntity2d::operator=(const CVexGeCircArc2d& arc)
{
    if (isKindOf(VexGe::kGeCircArc2d)) {
        static_cast<CVexGeCircArc2d&>(*this) = arc;
    } else if (isKindOf(VexGe::kGePolyline2d)) {
        static_cast<CVexGePolyline2d&>(*this) = arc;
    }
    return *this;
}
