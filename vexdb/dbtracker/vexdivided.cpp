#include "vexdb/dbtracker/vexdivided.h"

#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <algorithm>
#include <memory>

namespace {

template <class Curve>
CVexDbEntity* divided(int count, const Curve& curve)
{
    auto polyline = std::make_unique<CVexDbPolyline>(curve, true);
    polyline->DivideSegment(std::min(count, kMostParts), 0, true);
    return polyline.release();
}

} // namespace

CVexDbEntity* dividedInto(int count, const CVexDbLine& line)
{
    return divided(count, line);
}

CVexDbEntity* dividedInto(int count, const CVexDbArc& arc)
{
    return divided(count, arc);
}

CVexDbEntity* dividedInto(int count, const CVexDbCircle& circle)
{
    return std::make_unique<CVexDbPolyline>(circle, std::min(count, kMostParts), true).release();
}
