#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"

#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include <array>

namespace {

template <class Entity>
CVexDbEntity* make(CVexDbDatabase* database)
{
    return new Entity(database);
}

template <>
CVexDbEntity* make<CVexDbPolyline>(CVexDbDatabase* database)
{
    return new CVexDbPolyline(0, database);
}

template <class Entity>
CVexDbEntity* copy(const CVexDbEntity& source)
{
    return new Entity(static_cast<const Entity&>(source));
}

bool always(const CVexDbCurve& /*curve*/)
{
    return true;
}

template <class Entity>
bool ifClosed(const CVexDbCurve& curve)
{
    return static_cast<const Entity&>(curve).Closed();
}

/// Adapts an operation of a concrete class to the table's row.
template <auto kOperation>
struct Call;

template <class Entity, class Result, class... Args, Result (Entity::*kOperation)(Args...)>
struct Call<kOperation> {
    static void on(CVexDbEntity& entity, Args... args)
    {
        (static_cast<Entity&>(entity).*kOperation)(args...);
    }
};

// A point has no size to scale: it stays where it stands, whatever the centre.
constexpr VexDbEntityTransforms kPointTransforms = {
    .transformBy = &Call<&CVexDbPoint::transformBy>::on,
    .translateBy = &Call<&CVexDbPoint::translateBy>::on,
    .rotateBy = &Call<&CVexDbPoint::rotateBy>::on,
    .mirror = &Call<&CVexDbPoint::mirror>::on,
};

// A rectangle parallel to the axes has no image under every matrix, so TransformBy is refused.
using ScaleRect = CVexDbRect& (CVexDbRect::*)(double, const CVexGePoint2d&);
using ScaleRectXY = CVexDbRect& (CVexDbRect::*)(double, double, const CVexGePoint2d&);
constexpr VexDbEntityTransforms kRectTransforms = {
    .translateBy = &Call<&CVexDbRect::translateBy>::on,
    .rotateBy = &Call<&CVexDbRect::rotateBy>::on,
    .scaleBy = &Call<static_cast<ScaleRect>(&CVexDbRect::scaleBy)>::on,
    .scaleByXY = &Call<static_cast<ScaleRectXY>(&CVexDbRect::scaleBy)>::on,
    .mirror = &Call<&CVexDbRect::mirror>::on,
};

template <class Entity>
constexpr VexDbEntityKind row(VexDb::ClassType type, bool (*isClosed)(const CVexDbCurve&),
                              const VexDbEntityTransforms& transforms = {},
                              void (*explode)(CVexDbEntity&) = nullptr)
{
    return {type, &make<Entity>, &copy<Entity>, isClosed, transforms, explode};
}

constexpr std::array kKinds = {
    row<CVexDbArc>(VexDb::kArc, nullptr),
    row<CVexDbCircle>(VexDb::kCircle, &always),
    row<CVexDbLine>(VexDb::kLine, nullptr),
    row<CVexDbPolyline>(VexDb::kPolyline, &ifClosed<CVexDbPolyline>, {},
                        &Call<&CVexDbPolyline::Explode>::on),
    row<CVexDbPoint>(VexDb::kPoint, nullptr, kPointTransforms),
    row<CVexDbRect>(VexDb::kRectangle, nullptr, kRectTransforms),
    row<CVexDbBox>(VexDb::kBox, &always),
};

constexpr std::size_t kClasses = VexDb::kNotSelected;
constexpr VexDbEntityKind kNoKind;

// The rows by class number: a file of a million entities asks a million times.
constexpr auto kByClass = [] {
    std::array<const VexDbEntityKind*, kClasses> byClass{};
    byClass.fill(&kNoKind);
    for (const VexDbEntityKind& kind : kKinds) {
        byClass[kind.type] = &kind;
    }
    return byClass;
}();

} // namespace

const VexDbEntityKind& entityKind(VexDb::ClassType type)
{
    return type < kClasses ? *kByClass[type] : kNoKind;
}

CVexDbEntity* makeEntityOfClass(VexDb::ClassType type, CVexDbDatabase* database)
{
    const VexDbEntityKind& kind = entityKind(type);
    return kind.make == nullptr ? nullptr : kind.make(database);
}
