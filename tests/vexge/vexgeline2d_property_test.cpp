#include "tests/vexge/geallocations.h"
#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <rapidcheck/gtest.h>

namespace {

/// A coordinate of a drawing, in steps of a hundredth.
double coordinate()
{
    return *rc::gen::inRange(-100000, 100001) / 100.0;
}

CVexGePoint2d point()
{
    const double x = coordinate();
    return {x, coordinate()};
}

CVexGeLine2d line()
{
    const CVexGePoint2d start = point();
    return {start, point()};
}

double angle()
{
    return *rc::gen::inRange(-720, 721) / 100.0;
}

} // namespace

RC_GTEST_PROP(LineProperty, RigidEditsKeepTheLength, ())
{
    CVexGeLine2d moved = line();
    const double length = moved.length();
    const CVexGePoint2d centre = point();
    moved.rotateBy(angle(), centre).translateBy(centre.asVector()).mirror(line());
    RC_ASSERT(std::fabs(moved.length() - length) < 1e-8);
}

RC_GTEST_PROP(LineProperty, PointAndParameterAnswerEachOther, ())
{
    const CVexGeLine2d any = line();
    RC_PRE(any.length() > 1.0);
    const CVexGePoint2d on = any.pointAtParam(*rc::gen::inRange(0, 1001) / 1000.0);
    const double param = any.paramAtPoint(on, kGeEpsilon);
    RC_ASSERT(param >= 0.0);
    RC_ASSERT(any.pointAtParam(param).distanceTo(on) < 1e-9);
}

RC_GTEST_PROP(LineProperty, AHitLiesOnBothLines, ())
{
    const CVexGeLine2d a = line(), b = line();
    CVexGePoint2d hit;
    RC_PRE(a.intersectWith(b, hit, CVexGeEntity2d::kExtendNone, kGeEpsilon));
    RC_ASSERT(a.isOn(hit, kGeEpsilon) != 0 && b.isOn(hit, kGeEpsilon) != 0);
    CVexGePoint2d there;
    RC_ASSERT(a.closestPointTo(b, there).distanceTo(there) == 0.0);
}

RC_GTEST_PROP(LineProperty, NoSampledPairIsNearerThanTheClosest, ())
{
    const CVexGeLine2d a = line(), b = line();
    const double closest = a.distanceTo(b);
    for (int i = 0; i <= 10; ++i) {
        const CVexGePoint2d sample = a.pointAtParam(i / 10.0);
        RC_ASSERT(b.distanceTo(sample) >= closest - 1e-9);
    }
}

RC_GTEST_PROP(LineProperty, OffsetKeepsItsDistance, ())
{
    const CVexGeLine2d source = line();
    const CVexGePoint2d side = point();
    CVexGeVector2d across;
    RC_PRE(source.length() > 1.0 && source.perpVecFromPoint(side, across));
    RC_PRE(across.length() > 0.01);
    CVexGeLine2d moved = source;
    moved.offset(side, 2.0);
    CVexGeVector2d gap;
    RC_ASSERT(source.perpVecFromPoint(moved.startPoint(), gap));
    RC_ASSERT(std::fabs(gap.length() - 2.0) < 1e-6);
    RC_ASSERT(gap.dotProduct(across) > 0.0);
}

RC_GTEST_PROP(MatrixProperty, TheInverseUndoesATransform, ())
{
    const CVexGePoint2d centre = point(), source = point();
    CVexGeMatrix2d matrix = CVexGeMatrix2d::rotation(angle(), centre);
    matrix.setToScaling(*rc::gen::inRange(1, 100) / 10.0, 3.0, centre);
    const CVexGePoint2d there = CVexGePoint2d(source).transformBy(matrix);
    RC_ASSERT(CVexGePoint2d(there).transformBy(matrix.inverse()).distanceTo(source) < 1e-6);
}

TEST(LineMemoryTest, QueriesTakeNoHeap)
{
    const CVexGeLine2d a(CVexGePoint2d(0, 0), CVexGePoint2d(10, 0));
    const CVexGeLine2d b(CVexGePoint2d(4, 1), CVexGePoint2d(6, 9));
    const CVexGeCircArc2d arc(CVexGePoint2d(0, 20), 3);
    CVexGePoint2d out;
    CVexGeVector2d across;
    const std::size_t before = allocationCount();
    a.intersectWith(b, out, CVexGeEntity2d::kExtendBoth, kGeEpsilon);
    a.closestPointTo(b, out);
    a.closestPointTo(arc, out);
    a.distanceTo(b);
    a.isOn({5, 0}, kGeEpsilon);
    a.paramAtPoint({5, 0});
    a.perpVecFromPoint({5, 7}, across);
    CVexGeLine2d(a).rotateBy(1.0, {3, 3}).mirror(b).offset({9, 9}, 1.0);
    EXPECT_EQ(before, allocationCount());
    const std::vector<int> one(1);
    EXPECT_EQ(before + 1, allocationCount()); // the count does count
}
