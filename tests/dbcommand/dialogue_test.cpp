#include "creationfixture.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"

namespace {

/// What a creating command asks, and a person's answers to all of it.
struct Dialogue {
    const char* name;
    VexDb::CommandID id;
    unsigned long step;
    std::vector<const wchar_t*> answers;
    unsigned long stepAfter;
    const wchar_t* history; // but for the last line, where the command leaves it in place
    const wchar_t* lastLine;
};

std::ostream& operator<<(std::ostream& out, const Dialogue& dialogue)
{
    return out << dialogue.name;
}

class DialogueTest : public CreationTest, public testing::WithParamInterface<Dialogue> {
protected:
    /// A line that ends where the last point is, so that there is something to go on from.
    void SetUp() override
    {
        before = addLine({0, 0}, {20, 20});
        handler().setLastEntity(before);
        database->setLastPoint({20, 20});
    }
    void answer(std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            type(GetParam().answers[i]);
        }
    }
    std::unique_ptr<CVexDbEntity> run()
    {
        step = GetParam().step;
        return make<CVexDbEntity>(GetParam().id, step);
    }
    /// Nothing was made, nothing is held, and what was there stands.
    void expectNothingMade()
    {
        EXPECT_EQ(nullptr, run());
        EXPECT_EQ(before, handler().lastEntity());
        EXPECT_EQ(1, view->displayedIdSet()->size());
        EXPECT_EQ(0u, backend.queued());
        EXPECT_TRUE(database->undoHandler().undoStack().empty());
        expectReleased();
    }

    CVexDbLine* before = nullptr;
    unsigned long step = 0;
};

TEST_P(DialogueTest, AsksInItsOrderAndGivesTheEntityToItsCaller)
{
    answer(GetParam().answers.size());
    const std::unique_ptr<CVexDbEntity> made = run();
    ASSERT_NE(nullptr, made);
    EXPECT_EQ(GetParam().history, told());
    EXPECT_EQ(GetParam().lastLine, line());
    EXPECT_EQ(GetParam().stepAfter, step);
    EXPECT_EQ(made.get(), handler().lastEntity());
    EXPECT_EQ(0u, handler().refusals());
    expectReleased();
}

TEST_P(DialogueTest, WhatItMakesHasTheCurrentPropertiesAndIsInNoDrawingYet)
{
    answer(GetParam().answers.size());
    const std::unique_ptr<CVexDbEntity> made = run();
    ASSERT_NE(nullptr, made);
    EXPECT_EQ(database.get(), made->database());
    EXPECT_EQ(database->currentLayer(), made->LayerId());
    EXPECT_FALSE(made->IsDbEntity());
    EXPECT_EQ(1, view->displayedIdSet()->size());
    EXPECT_TRUE(database->undoHandler().undoStack().empty()); // the host's to record
}

TEST_P(DialogueTest, EscapeAtAnyPromptMakesNothing)
{
    for (std::size_t given = 0; given < GetParam().answers.size(); ++given) {
        SCOPED_TRACE(given);
        answer(given);
        press(VK_ESCAPE);
        expectNothingMade();
    }
}

TEST_P(DialogueTest, TheRightButtonAtAnyPromptMakesNothing)
{
    for (std::size_t given = 0; given < GetParam().answers.size(); ++given) {
        SCOPED_TRACE(given);
        answer(given);
        mouse(WM_RBUTTONDOWN, {50, 50});
        expectNothingMade();
    }
}

TEST_P(DialogueTest, TheLossOfTheCaptureAtAnyPromptMakesNothing)
{
    for (std::size_t given = 0; given < GetParam().answers.size(); ++given) {
        SCOPED_TRACE(given);
        answer(given);
        expectNothingMade();
    }
}

TEST_P(DialogueTest, ACommandThatIsToEndAsksNothingMore)
{
    for (std::size_t given = 0; given < GetParam().answers.size(); ++given) {
        SCOPED_TRACE(given);
        answer(given);
        whileWaiting([this] {
            handler().markInputLost();
            ReleaseCapture();
        });
        expectNothingMade();
    }
}

TEST_P(DialogueTest, ACancelLeavesNoStrokeOnTheScreen)
{
    for (std::size_t given = 0; given < GetParam().answers.size(); ++given) {
        SCOPED_TRACE(given);
        dc.clear();
        answer(given);
        moveTo({100, 100});
        moveTo({120, 90});
        press(VK_ESCAPE);
        run();
        const auto& strokes = dc.strokes();
        for (const VexStroke& stroke : strokes) {
            EXPECT_EQ(0, std::count(strokes.begin(), strokes.end(), stroke) % 2);
        }
    }
}

const Dialogue kDialogues[] = {
    {"Line", VexDb::CmdLine, 0, {L"1,1\n", L"4,5\n"}, 0, L"Start point: 1,1", L"End point: 4,5"},
    {"LineChained", VexDb::CmdLine, 1, {L"4,5\n"}, 1, L"", L"End point: 4,5"},
    {"Circle", VexDb::CmdCircle, 0, {L"10,10\n", L"5\n"}, 0, L"P4: 10,10\nP9: 5", L""},
    {"ArcPoints",
     VexDb::CmdArc,
     0,
     {L"10,10\n", L"20,20\n", L"30,10\n"},
     100,
     L"P21: 10,10\nP6: 20,20",
     L"End point: 30,10"},
    {"ArcCentre",
     VexDb::CmdArc,
     0,
     {L"C", L"10,10\n", L"15,10\n", L"90\n"},
     200,
     L"P21: C\nInvalid input.\nP4: 10,10\nP22: 15,10",
     L"P8: 90"},
    {"ArcRadius",
     VexDb::CmdArc,
     0,
     {L"C", L"10,10\n", L"R", L"5\n", L"30\n", L"90\n"},
     300,
     L"P21: C\nInvalid input.\nP4: 10,10\nP22: R\nInvalid input.\nP9: 5\nP7: 30",
     L"P8: 90"},
    {"ArcForcedPoints",
     VexDb::CmdArc,
     100,
     {L"10,10\n", L"20,20\n", L"30,10\n"},
     100,
     L"Start point: 10,10\nP6: 20,20",
     L"End point: 30,10"},
    {"ArcForcedCentre",
     VexDb::CmdArc,
     200,
     {L"10,10\n", L"15,10\n", L"90\n"},
     200,
     L"P4: 10,10\nStart point: 15,10",
     L"P8: 90"},
    {"ArcForcedRadius",
     VexDb::CmdArc,
     300,
     {L"10,10\n", L"5\n", L"30\n", L"90\n"},
     300,
     L"P4: 10,10\nP9: 5\nP7: 30",
     L"P8: 90"},
    {"ArcContinued", VexDb::CmdArc, 400, {L"30,20\n"}, 400, L"", L"End point: 30,20"},
    {"Box",
     VexDb::CmdBox,
     0,
     {L"10,10\n", L"40,30\n", L"30\n"},
     0,
     L"P12: 10,10\nP13: 40,30\nP39: 30",
     L""},
    {"Rect", VexDb::CmdRect, 0, {L"10,10\n", L"40,30\n"}, 0, L"P12: 10,10\nP13: 40,30", L""},
};

INSTANTIATE_TEST_SUITE_P(Creating, DialogueTest, testing::ValuesIn(kDialogues),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
