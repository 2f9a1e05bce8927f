#include "tests/session/scriptedtest.h"

namespace {

/// Parallels, fills and menus as lines of a script.
class CurveScriptTest : public ScriptedTest {
protected:
    CVexDbPolyline& last()
    {
        CVexDbPolyline* found = nullptr;
        for (const CVexDbObjectId& id : *view().displayedIdSet()) {
            if (id.getPObject()->isVisiable()) {
                found = static_cast<CVexDbPolyline*>(id.getPObject());
            }
        }
        return *found;
    }
};

TEST_F(CurveScriptTest, APolylineIsOffsetToBothSidesStepByStep)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L""});
    plays(
        {L"OFFSET", L"2", L"@click 30,10", L"@click 30,20", L"@click 30,10", L"@click 30,5", L""});
    EXPECT_EQ(
        (std::vector<std::string>{"10,10 50,10 50,40", "10,12 48,12 48,40", "10,8 52,8 52,40"}),
        seen());
    plays({L"U"});
    EXPECT_EQ(2u, seen().size());
    plays({L"U", L"REDO", L"REDO"});
    EXPECT_EQ(3u, seen().size());
}

TEST_F(CurveScriptTest, EnterOffsetsByTheLastDistance)
{
    addLine(10, 10, 50, 10);
    plays({L"OFFSET 3", L"@click 30,10", L"@click 30,20", L""});
    plays({L"OFFSET", L"", L"@click 30,13", L"@click 30,20", L""});
    ASSERT_EQ(3u, lines().size());
    EXPECT_POINT(10.0, 13.0, lines()[1]->StartPoint());
    EXPECT_POINT(10.0, 16.0, lines()[2]->StartPoint());
    EXPECT_EQ(lines()[0]->LayerId(), lines()[2]->LayerId());
}

TEST_F(CurveScriptTest, WhatHasNoParallelIsLeftAsItIs)
{
    plays({L"CIRCLE 50,50 5"});
    EXPECT_EQ(L"it was refused", refusalOf({L"OFFSET 7", L"@click 55,50", L"@click 51,50", L""}));
    EXPECT_EQ(1u, seen().size());
    EXPECT_EQ(L"it is not a valid answer", refusalOf({L"OFFSET -2"}));
}

TEST_F(CurveScriptTest, AClosedPolylineIsFilledAndEmptied)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L"O", L"FILL", L"@click 30,10", L""});
    EXPECT_EQ((std::vector<std::string>{"10,10 50,10 50,40 closed"}), seen());
    EXPECT_TRUE(last().IsFill());
    plays({L"FILL", L"@click 30,10", L""});
    EXPECT_FALSE(last().IsFill());
    plays({L"U"});
    EXPECT_TRUE(last().IsFill());
    plays({L"U"});
    EXPECT_FALSE(last().IsFill());
    EXPECT_EQ(1u, seen().size());
}

TEST_F(CurveScriptTest, AnOpenPolylineIsNotFilled)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L""});
    EXPECT_EQ(L"it was refused", refusalOf({L"FILL", L"@click 30,10", L""}));
    EXPECT_FALSE(last().IsFill());
}

TEST_F(CurveScriptTest, AMenuActionChoosesTheRowAndAnswersItsQuestion)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L"", L"@click 30,10"});
    plays({L"@menu 10,10 Divide = 4"});
    EXPECT_EQ((std::vector<std::string>{"10,10 20,10 30,10 40,10 50,10 50,40"}), seen());
    plays({L"@menu 30,10 insert vertex", L"30,20"});
    EXPECT_EQ((std::vector<std::string>{"10,10 20,10 30,20 30,10 40,10 50,10 50,40"}), seen());
    plays({L"@menu 10,10 Reverse Polyline"});
    EXPECT_EQ((std::vector<std::string>{"50,40 50,10 40,10 30,10 30,20 20,10 10,10"}), seen());
}

TEST_F(CurveScriptTest, AMenuActionWithoutMenuOrRowIsRefused)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L"", L"@click 30,10"});
    EXPECT_EQ(L"no menu with such a row came up", refusalOf({L"@menu 10,10 Change Param"}));
    EXPECT_EQ(L"no menu with such a row came up", refusalOf({L"@menu 200,200 Divide"}));
    EXPECT_EQ(L"@menu wants a position x,y and a row", refusalOf({L"@menu 10,10"}));
    backend.chooseNext(kPopupReverse); // and the person has the menus again
    plays({L"@rclick 10,10"});
    EXPECT_EQ((std::vector<std::string>{"50,40 50,10 10,10"}), seen());
}

} // namespace
