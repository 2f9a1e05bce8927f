#include "commandfixture.h"

#include <numbers>

namespace {

class MeasureTest : public CommandTest {
protected:
    const CVexGePoint2d base{100, 197};
    CVexGePoint2d point{7, 8};
};

TEST_F(MeasureTest, ABandedPointIsTheClick)
{
    click({110, 97});
    EXPECT_EQ(InputPoint, handler().GetGePoint(5, point, base, L'\0'));
    EXPECT_POINT(110, 200, point);
    EXPECT_POINT(110, 200, database->lastPoint());
    expectReleased();
}

TEST_F(MeasureTest, ABandedPointMayBeTypedFromItsBase)
{
    type(L"5<90\n");
    EXPECT_EQ(InputTypedPoint, handler().GetGePoint(5, point, {1, 1}, L'\0'));
    EXPECT_POINT(1, 6, point);
    type(L"2,3\n");
    EXPECT_EQ(InputTypedPoint, handler().GetGePoint(5, point, {1, 1}, L'\0'));
    EXPECT_POINT(2, 3, point);
}

TEST_F(MeasureTest, ItsOneKeyEndsABandedPoint)
{
    type(L"r");
    EXPECT_EQ(InputKeyword, handler().GetGePoint(22, point, base, L'R'));
    EXPECT_POINT(7, 8, point);
}

TEST_F(MeasureTest, ANumberOrACancelLeavesABandedPoint)
{
    type(L"5\n");
    EXPECT_EQ(InputNumber, handler().GetGePoint(5, point, base, L'\0'));
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, handler().GetGePoint(5, point, base, L'\0'));
    EXPECT_EQ(InputLost, handler().GetGePoint(5, point, base, L'\0'));
    EXPECT_POINT(7, 8, point);
    expectReleased();
}

TEST_F(MeasureTest, ADistanceIsClickedFromItsBase)
{
    click({130, 60}); // 30 across, 40 up
    CVexGePoint2d end;
    EXPECT_DOUBLE_EQ(50.0, handler().GetDistance(9, &base, end));
    EXPECT_POINT(130, 237, end);
    EXPECT_EQ(L"P9: ", line());
}

TEST_F(MeasureTest, WithoutABaseItIsAskedForFirst)
{
    click({100, 100});
    click({130, 60});
    EXPECT_DOUBLE_EQ(50.0, handler().GetDistance(9, nullptr));
    EXPECT_EQ(L"P9: ", told());
    EXPECT_EQ(L"P11: ", line());
}

TEST_F(MeasureTest, PromptZeroIsTheFirstPointsPrompt)
{
    click({130, 60});
    handler().GetDistance(0, &base);
    EXPECT_EQ(L"P10: ", line());
}

TEST_F(MeasureTest, BothEndsComeBackFromTheFormThatAsksForBoth)
{
    click({100, 100});
    click({130, 60});
    CVexGePoint2d from;
    CVexGePoint2d end;
    EXPECT_DOUBLE_EQ(50.0, handler().GetDistance(from, end));
    EXPECT_POINT(100, 197, from);
    EXPECT_POINT(130, 237, end);
    EXPECT_EQ(L"P10: ", told());
}

TEST_F(MeasureTest, ATypedNumberIsTheDistance)
{
    CVexGePoint2d end(1, 2);
    type(L"12.5\n");
    EXPECT_EQ(12.5, handler().GetDistance(9, &base, end));
    EXPECT_POINT(1, 2, end);
    EXPECT_EQ(int{InputNumber}, handler().resultBuffer().type);
    EXPECT_EQ(12.5, handler().resultBuffer().value.number);
}

TEST_F(MeasureTest, ATextIsReadAsFarAsItIsANumber)
{
    type(L"7mm\n");
    EXPECT_EQ(7.0, handler().GetDistance(9, &base));
    // The text outlives the tracker that it was typed into.
    EXPECT_EQ(L"7MM", std::wstring(handler().resultBuffer().value.text));
}

TEST_F(MeasureTest, ATypedPointIsNoDistance)
{
    type(L"3,4\n");
    EXPECT_EQ(-1.0, handler().GetDistance(9, &base));
    type(L"5<90\n");
    EXPECT_EQ(-1.0, handler().GetDistance(9, &base));
}

TEST_F(MeasureTest, EveryCancelOfADistanceIsMinusOne)
{
    press(VK_ESCAPE);
    EXPECT_EQ(-1.0, handler().GetDistance(9, nullptr));
    press(VK_ESCAPE);
    EXPECT_EQ(-1.0, handler().GetDistance(9, &base));
    press(VK_RETURN);
    EXPECT_EQ(-1.0, handler().GetDistance(9, &base));
    EXPECT_EQ(-1.0, handler().GetDistance(9, &base)); // the capture goes
    EXPECT_EQ(-1.0, handler().GetDistance(9, nullptr));
    expectReleased();
}

TEST_F(MeasureTest, AnAngleIsClickedFromItsBaseInRadians)
{
    click({100, 50});
    EXPECT_DOUBLE_EQ(std::numbers::pi / 2.0, handler().GetAngle(7, &base));
    click({150, 100});
    EXPECT_DOUBLE_EQ(0.0, handler().GetAngle(7, &base));
}

TEST_F(MeasureTest, ATypedAngleIsInDegrees)
{
    type(L"90\n");
    EXPECT_DOUBLE_EQ(std::numbers::pi / 2.0, handler().GetAngle(7, &base));
    type(L"-45deg\n");
    EXPECT_DOUBLE_EQ(-std::numbers::pi / 4.0, handler().GetAngle(7, &base));
}

TEST_F(MeasureTest, EveryCancelOfAnAngleIsZero)
{
    press(VK_ESCAPE);
    EXPECT_EQ(0.0, handler().GetAngle(7, &base));
    press(VK_ESCAPE);
    EXPECT_EQ(0.0, handler().GetAngle(0, nullptr));
    type(L"3,4\n");
    EXPECT_EQ(0.0, handler().GetAngle(7, &base));
    EXPECT_EQ(0.0, handler().GetAngle(7, &base));
    expectReleased();
}

TEST_F(MeasureTest, AnEmptyWindowCancelsAll)
{
    map({0, 0});
    EXPECT_EQ(InputCancel, handler().GetGePoint(5, point, base, L'\0'));
    EXPECT_EQ(-1.0, handler().GetDistance(9, &base));
    EXPECT_EQ(0.0, handler().GetAngle(7, &base));
}

} // namespace
