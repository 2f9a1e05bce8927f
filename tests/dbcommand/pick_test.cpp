#include "commandfixture.h"

namespace {

class GetEntityTest : public CommandTest {
protected:
    int ask(bool wantsPoint = true)
    {
        return handler().GetEntity(36, entity, wantsPoint ? &pick : nullptr);
    }
    CVexDbEntity* entity = nullptr;
    CVexGePoint2d pick{7, 8};
};

TEST_F(GetEntityTest, AClickOnAnEntityTakesAndHighlightsIt)
{
    CVexDbLine* line = addLine({10, 197}, {50, 197});
    CVexDbLine* other = addLine({10, 100}, {50, 100});
    dc.clear();
    click({30, 101});
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(line, entity);
    EXPECT_EQ(line, database->lastEntity());
    EXPECT_NE(other, database->lastEntity());
    EXPECT_POINT(30, 196, pick);
    EXPECT_EQ(1u, dc.strokes().size());
    EXPECT_EQ(L"P36: ", message.GetWindowText().str());
    expectReleased();
}

TEST_F(GetEntityTest, AMissTellsItsPointAndStaysInTheLoop)
{
    addLine({10, 197}, {50, 197});
    click({300, 200});
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(nullptr, entity);
    EXPECT_POINT(300, 97, pick);
}

TEST_F(GetEntityTest, ThePickPointIsOptional)
{
    addLine({10, 197}, {50, 197});
    click({30, 100});
    EXPECT_EQ(InputPoint, ask(false));
    EXPECT_NE(nullptr, entity);
}

TEST_F(GetEntityTest, TheKeyLTakesTheLastEntity)
{
    CVexDbLine* line = addLine({10, 197}, {50, 197});
    press('L');
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(line, entity);
    EXPECT_POINT(7, 8, pick);
    expectReleased();
}

TEST_F(GetEntityTest, WithoutALastEntityTheKeyStaysInTheLoop)
{
    press('L');
    press(VK_RETURN);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(nullptr, entity);
    EXPECT_EQ(1, received(WM_KEYDOWN)); // it went to the window
}

TEST_F(GetEntityTest, AnErasedLastEntityIsNotTaken)
{
    addLine({10, 197}, {50, 197})->setErased();
    press('L');
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(nullptr, entity);
}

TEST_F(GetEntityTest, ALastEntityThatLeavesMeanwhileIsNotTaken)
{
    CVexDbLine* line = addLine({10, 197}, {50, 197});
    whileWaiting([&] { database->removeEntity(line); });
    press('L');
    press(VK_RETURN);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(nullptr, entity);
}

TEST_F(GetEntityTest, ReturnSpaceEscapeAndBreakWithoutAnEntityGiveZero)
{
    for (const unsigned end : {VK_RETURN, VK_SPACE, VK_ESCAPE, VK_CANCEL}) {
        entity = reinterpret_cast<CVexDbEntity*>(&pick);
        press(end);
        EXPECT_EQ(InputCancel, ask());
        EXPECT_EQ(nullptr, entity);
    }
    expectReleased();
}

TEST_F(GetEntityTest, WhileItWaitsItShowsThePickCursor)
{
    VexCursor cursor = VexCursor::kArrow;
    CWnd* captured = nullptr;
    handler().SetSelCursor(VexCursor::kPickBox);
    whileWaiting([&] {
        cursor = backend.cursor();
        captured = GetCapture();
    });
    press(VK_ESCAPE);
    ask();
    EXPECT_EQ(VexCursor::kPickBox, cursor);
    EXPECT_EQ(&display, captured);
}

TEST_F(GetEntityTest, MovesAndTheRightButtonGoToTheWindow)
{
    moveTo({30, 100});
    mouse(WM_RBUTTONDOWN, {30, 100});
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(1, received(WM_MOUSEMOVE));
    EXPECT_EQ(1, received(WM_RBUTTONDOWN));
    EXPECT_EQ(0, received(WM_VEX_COORDINATE));
}

TEST_F(GetEntityTest, APressOutsideTheWindowIsIgnored)
{
    addLine({-50, 197}, {50, 197});
    click({-5, 100});
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_POINT(7, 8, pick);
}

TEST_F(GetEntityTest, ALostCaptureGivesOneWithoutAnEntity)
{
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(nullptr, entity);
    expectReleased();
}

TEST_F(GetEntityTest, AnEmptyWindowEndsItAtOnce)
{
    map({0, 0});
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(1u, backend.queued());
    EXPECT_EQ(L"", line());
}

class GetEntitiesTest : public CommandTest {
protected:
    GetEntitiesTest()
    {
        first = addLine({10, 197}, {50, 197});
        second = addLine({10, 147}, {50, 147});
    }
    int ask() { return handler().GetEntities(35, &entities); }
    CVexDbLine* first;
    CVexDbLine* second;
    VexEntitySet entities;
};

TEST_F(GetEntitiesTest, ClicksCollectUntilReturn)
{
    click({30, 100});
    click({30, 150});
    press(VK_RETURN);
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ((VexEntitySet{first, second}), entities);
    EXPECT_EQ(L"P35: ", line());
    expectReleased();
}

TEST_F(GetEntitiesTest, ACallersSetIsAddedTo)
{
    entities.insert(second);
    click({30, 100});
    press(VK_RETURN);
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ((VexEntitySet{first, second}), entities);
}

TEST_F(GetEntitiesTest, WhatTheCallerHasIsEnough)
{
    entities.insert(second);
    press(VK_RETURN);
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(1u, entities.size());
}

TEST_F(GetEntitiesTest, NothingSelectedGivesMinusOne)
{
    press(VK_RETURN);
    EXPECT_EQ(-1, ask());
}

TEST_F(GetEntitiesTest, EscapeEmptiesTheCallersSetToo)
{
    entities.insert(second);
    click({30, 100});
    press(VK_ESCAPE);
    EXPECT_EQ(-1, ask());
    EXPECT_TRUE(entities.empty());
    expectReleased();
}

TEST_F(GetEntitiesTest, ALostCaptureSelectsNothing)
{
    click({30, 100});
    EXPECT_EQ(-1, ask());
    EXPECT_TRUE(entities.empty());
    expectReleased();
}

TEST_F(GetEntitiesTest, WithoutASetNothingRuns)
{
    click({30, 100});
    EXPECT_EQ(-1, handler().GetEntities(35, nullptr));
    EXPECT_EQ(1u, backend.queued());
}

TEST_F(GetEntitiesTest, WhatIsPickedIsHighlighted)
{
    dc.clear();
    std::size_t strokes = 0;
    click({30, 100});
    whileWaiting([&] { strokes = dc.strokes().size(); });
    press(VK_RETURN);
    ask();
    EXPECT_EQ(1u, strokes);
}

} // namespace
