#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint3d.h"
#include "vexge/gemath/vexgetol.h"
#include "vexge/gemath/vexgevector3d.h"

#include <cstdint>

class CFile;

namespace VexGe {

/// The kind of a curve in space.
enum Entity3DId : std::int32_t {
    kGeLine3d = 1,
    kGePolyline3d = 2,
};

} // namespace VexGe

/// A bounded curve in space with a parameter that runs from 0 to 1; the counterpart of
/// CVexGeEntity2d for hosts that keep pipework in three dimensions.
class VEXGE_EXPORT CVexGeEntity3d {
public:
    /// Which of the two is taken as unbounded, as in CVexGeEntity2d::Intersect.
    enum Intersect : std::int32_t {
        kExtendNone = 0,
        kExtendThis = 1,
        kExtendArg = 2,
        kExtendBoth = 3,
    };

    virtual ~CVexGeEntity3d() = default;

    /// Same kind and same geometry within `tol`.
    virtual bool isEqualTo(const CVexGeEntity3d& other, double tol = kGeTol) const = 0;
    virtual void save(CFile* file) const = 0;
    virtual void read(CFile* file) = 0;

    [[nodiscard]] VexGe::Entity3DId type() const { return m_type; }
    [[nodiscard]] bool isKindOf(VexGe::Entity3DId kind) const { return m_type == kind; }
    /// A new curve of the same class and geometry, owned by the caller; null for a kind that has no
    /// class.
    [[nodiscard]] CVexGeEntity3d* copy() const;
    /// Assigns as the class of `other` does: both must be of one class. So a concrete class assigns
    /// its own fields in its own operator= and never calls this one.
    CVexGeEntity3d& operator=(const CVexGeEntity3d& other);
    /// Same kind, and equal within kGeTol.
    bool operator==(const CVexGeEntity3d& other) const;
    bool operator!=(const CVexGeEntity3d& other) const { return !(*this == other); }

protected:
    explicit constexpr CVexGeEntity3d(VexGe::Entity3DId kind) : m_type(kind) {}
    constexpr CVexGeEntity3d(const CVexGeEntity3d&) = default;

private:
    VexGe::Entity3DId m_type;
};
