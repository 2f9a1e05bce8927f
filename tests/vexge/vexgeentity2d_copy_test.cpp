#include "tests/vexge/geassertlog.h"
#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"
#include "vexge/geentity2d/vexgespiral.h"
#include "vexge/geentity2d/vexgespline.h"

#include <gmock/gmock.h>
#include <memory>
#include <typeinfo>
#include <utility>

namespace {

/// A line that says it is of another kind.
class Impostor : public CVexGeEntity2d {
public:
    explicit Impostor(int kind) : CVexGeEntity2d(static_cast<VexGe::EntityId>(kind)) {}
    bool isEqualTo(const CVexGeEntity2d&, const double&) const override { return true; }
    int isOn(const CVexGePoint2d&, const double&) const override { return 0; }
    Impostor& scaleBy(double, double, const CVexGePoint2d&) override { return *this; }
    Impostor& scaleBy(double, const CVexGePoint2d&) override { return *this; }
    Impostor& mirror(const CVexGeLine2d&) override { return *this; }
    Impostor& rotateBy(double, const CVexGePoint2d&) override { return *this; }
    Impostor& translateBy(const CVexGeVector2d&) override { return *this; }
    Impostor& transformBy(const CVexGeMatrix2d&) override { return *this; }
    double length() const override { return 0; }
    double length(double, double, double) const override { return 0; }
    double paramAtDist(double, double, bool, double) const override { return 0; }
    double paramAtPoint(CVexGePoint2d, double) const override { return 0; }
    double distAtParam(double) const override { return 0; }
    double distAtPoint(CVexGePoint2d, double) const override { return 0; }
    CVexGePoint2d pointAtDist(double) const override { return {}; }
    CVexGePoint2d pointAtParam(double) const override { return {}; }
    CVexGeVector2d normalAtParam(double) const override { return {}; }
    CVexGeVector2d normalAtPoint(CVexGePoint2d, double) const override { return {}; }
    CVexGePoint2d closestPointTo(const CVexGePoint2d&, double) const override { return {}; }
    CVexGePoint2d closestPointTo(const CVexGeLine2d&, CVexGePoint2d&, double) const override
    {
        return {};
    }
    double distanceTo(const CVexGeLine2d&, double) const override { return 0; }
    double distanceTo(const CVexGePoint2d&, double) const override { return 0; }
    double curvatureAtParam(double) const override { return 0; }
    double curvatureAtPoint(CVexGePoint2d, double) const override { return 0; }
    bool perpVecFromPoint(const CVexGePoint2d&, CVexGeVector2d&, double) const override
    {
        return false;
    }
    void save(CFile*) const override {}
    void read(CFile*) override {}
};

} // namespace

TEST(EntityCopyTest, AKindWithoutAClassIsAsserted)
{
    const GeAssertLog log;
    EXPECT_EQ(nullptr, Impostor(7).copy());
    EXPECT_EQ(nullptr, Impostor(0).copy());
    EXPECT_THAT(log.promises(), testing::ElementsAre("pEntity", "pEntity"));
}

TEST(EntityCopyTest, AssignmentTakesTheKindEvenWithoutAClass)
{
    Impostor a(0);
    const Impostor b(7);
    static_cast<CVexGeEntity2d&>(a) = static_cast<const CVexGeEntity2d&>(b);
    EXPECT_EQ(7, a.type());
}

TEST(EntityCopyTest, EqualityNeedsTheSameKind)
{
    const Impostor a(0), b(0), c(7);
    const CVexGeEntity2d& entity = a;
    EXPECT_TRUE(entity == b && !(entity != b));
    EXPECT_TRUE(entity != c && !(entity == c));
    EXPECT_FALSE(a.isInsidePoint({0, 0})); // not overridden: the base encloses nothing
}

TEST(EntityCopyTest, EachClassCopiesAndAssignsAsItself)
{
    const CVexGeCircArc2d arc(CVexGePoint2d(1, 2), 3);
    const CVexGePolyline2d chain(std::vector<CVexGePoint2d>{{0, 0}, {1, 0}, {1, 1}});
    const CVexGeRect2d rect(CVexGePoint2d(1, 2), 4, 3, 0.5);
    for (const CVexGeEntity2d* source :
         {static_cast<const CVexGeEntity2d*>(&chain), static_cast<const CVexGeEntity2d*>(&rect)}) {
        const std::unique_ptr<CVexGeEntity2d> copy(source->copy());
        ASSERT_NE(nullptr, copy);
        EXPECT_TRUE(*copy == *source);
        copy->translateBy({5, 5});
        EXPECT_FALSE(*copy == *source);
        *copy = *source;
        EXPECT_TRUE(*copy == *source);
    }
    const std::unique_ptr<CVexGeEntity2d> copy(static_cast<const CVexGeEntity2d&>(arc).copy());
    ASSERT_TRUE(copy && copy->isKindOf(VexGe::kGeCircArc2d));
    EXPECT_TRUE(static_cast<const CVexGeCircArc2d&>(*copy) == arc);
}

TEST(EntityCopyTest, EveryKindHasItsCase)
{
    const CVexGeCircArc2d arc;
    const CVexGeEllipArc2d ellipse;
    const CVexGeLine2d line;
    const CVexGePolyline2d chain;
    const CVexGeSpline spline;
    const CVexGeCSpline2d controlled(1.0);
    const CVexGeRect2d rect;
    const CVexGeSpiral spiral;
    const std::vector<std::pair<const CVexGeEntity2d*, int>> kinds = {
        {&arc, 1},    {&ellipse, 2},    {&line, 3}, {&chain, 4},
        {&spline, 5}, {&controlled, 6}, {&rect, 8}, {&spiral, 9}};
    for (const auto& [source, kind] : kinds) {
        const std::unique_ptr<CVexGeEntity2d> copy(source->copy());
        ASSERT_NE(nullptr, copy) << "kind " << kind;
        EXPECT_EQ(kind, copy->type());
        EXPECT_EQ(typeid(*source), typeid(*copy)) << "kind " << kind;
    }
}

TEST(EntityCopyTest, AnArcGoesIntoArcsAndPolylinesOnly)
{
    const CVexGeCircArc2d arc(CVexGePoint2d(1, 2), 3);
    CVexGeCircArc2d other;
    static_cast<CVexGeEntity2d&>(other) = arc;
    EXPECT_TRUE(other == arc);
    CVexGePolyline2d chain;
    static_cast<CVexGeEntity2d&>(chain) = arc;
    EXPECT_EQ(VexGe::kGePolyline2d, chain.type());
    EXPECT_EQ(2U, chain.numVerts());
    CVexGeLine2d line(CVexGePoint2d(1, 1), CVexGePoint2d(2, 2));
    static_cast<CVexGeEntity2d&>(line) = arc;
    EXPECT_EQ(VexGe::kGeLine2d, line.type());
    EXPECT_POINT(2, 2, line.endPoint());
}
