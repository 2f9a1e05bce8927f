#include "fuzz/fuzzsource.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgespline.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

// Bytes become vertices, bulges and distances, with the numbers that break algorithms among them,
// and go into offset, intersection, inside test and splines, closed and open.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kMostVertices = 24;
/// A spline has divisions by the length of its spans: more of the same, which only take time.
constexpr double kSplineReach = 100.0;

// Hands out numbers: mostly small ones on a grid, so that points coincide and segments overlap.
class NumberSource : public CFuzzSource {
public:
    using CFuzzSource::CFuzzSource;
    [[nodiscard]] double number()
    {
        switch (const std::uint8_t kind = byte()) {
        case 250: return std::numeric_limits<double>::quiet_NaN();
        case 251: return std::numeric_limits<double>::infinity();
        case 252: return -std::numeric_limits<double>::infinity();
        case 253: return 1e300 * (byte() - 128.0);
        case 254: return 1e-300 * byte();
        case 255: return anyDouble();
        default: return (kind - 125.0) / 4.0;
        }
    }
    [[nodiscard]] CVexGePoint2d point()
    {
        const double x = number();
        return {x, number()};
    }

private:
    double anyDouble()
    {
        std::uint8_t bytes[sizeof(double)] = {};
        std::generate(std::begin(bytes), std::end(bytes), [this] { return byte(); });
        double value = 0.0;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
};

CVexGePolyline2d chainFrom(NumberSource& source)
{
    CVexGePolyline2d chain;
    const std::size_t count = source.byte() % kMostVertices;
    const bool closed = (source.byte() & 1) != 0;
    for (std::size_t i = 0; i < count && !source.empty(); ++i) {
        const CVexGePoint2d vertex = source.point();
        const std::uint8_t bend = source.byte();
        chain.appendVertex(vertex, bend < 128 ? 0.0 : source.number() / 16.0);
    }
    chain.setClosed(closed);
    return chain;
}

void meet(const CVexGePolyline2d& a, const CVexGePolyline2d& b)
{
    for (const auto kind : {CVexGeEntity2d::kExtendNone, CVexGeEntity2d::kExtendThis,
                            CVexGeEntity2d::kExtendArg, CVexGeEntity2d::kExtendBoth}) {
        std::vector<CVexGePoint2d> points;
        CVexGePolyline2d::ParamMap byParam;
        int count = 0;
        a.intersectWith(b, count, points, kind);
        a.intersectWith(b, count, byParam, kind);
    }
}

void ask(const CVexGePolyline2d& chain, const CVexGePoint2d& point, double distance, bool bothSides)
{
    CVexGePolyline2d::PolylineList pieces;
    chain.offset(point, distance, pieces, bothSides);
    chain.isInsidePoint(point);
    chain.isOn(point);
    chain.pointAtParam(chain.paramAtPoint(chain.closestPointTo(point)));
    CVexGeVector2d away;
    chain.perpVecFromPoint(point, away);
    CVexGePoint2d onLine;
    chain.closestPointTo(CVexGeLine2d(point, CVexGePoint2d(1.0, 2.0)), onLine);
}

// Folds all but what is no number into the reach.
CVexGePoint2d inReach(const CVexGePoint2d& point)
{
    const auto folded = [](double value) {
        return std::isinf(value) ? std::copysign(kSplineReach, value)
                                 : std::fmod(value, kSplineReach);
    };
    return {folded(point.x), folded(point.y)};
}

void bend(const CVexGePolyline2d& chain, bool closed)
{
    CVexGeSpline fitted;
    CVexGeCSpline2d cubic;
    for (const CVexGePoint2d& vertex : chain.vertices()) {
        fitted.appendCtrlPt(vertex);
        cubic.appendCtrlPt(inReach(vertex), CVexGeCSpline2d::kReal);
    }
    CVexGePolyline2d out;
    fitted.getGePolyline(out);
    cubic.setClosed(closed);
    cubic.getGePolyline(out);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    NumberSource source(data, size, size);
    const CVexGePoint2d side = source.point();
    const double distance = source.number();
    const CVexGePolyline2d first = chainFrom(source);
    const CVexGePolyline2d second = chainFrom(source);
    ask(first, side, distance, second.isClosed());
    meet(first, second);
    bend(first, second.isClosed());
    return 0;
}
