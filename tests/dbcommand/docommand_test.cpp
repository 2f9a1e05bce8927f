#include "commandfixture.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"

namespace {

class DoCommandTest : public CommandTest {
protected:
    CVexDbEntity* run(int id, unsigned long step = 0)
    {
        return handler().DoCommand(static_cast<VexDb::CommandID>(id), step);
    }
    CVexDbLine* select()
    {
        CVexDbLine* line = addLine({10, 10}, {50, 10});
        handler().AddTracker(new CVexDbEntityTracker(&display, line, VexDb::TransFormNone, false));
        return line;
    }
};

TEST_F(DoCommandTest, ReservedNumbersGiveNullAndSayNothing)
{
    for (const int id : {-1, 0, 14, 20, 21, 22, 23, 35, 37, 1000}) {
        EXPECT_EQ(nullptr, run(id)) << id;
    }
    EXPECT_EQ(L"", told());
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(DoCommandTest, OnlyTheEditingRangeKeepsTheSelection)
{
    for (const int id : {22, 23, 25, 34, 35}) {
        select();
        run(id);
        EXPECT_EQ(1u, handler().selectedEntities().size()) << id;
        handler().ClearTracker(false);
    }
    for (const int id : {2, 14, 20, 21, 36, 1000}) {
        select();
        run(id);
        EXPECT_TRUE(handler().selectedEntities().empty()) << id;
        EXPECT_TRUE(handler().trackers().empty()) << id;
    }
}

TEST_F(DoCommandTest, ACommandThatIsNotThereYetSaysSo)
{
    EXPECT_EQ(nullptr, run(VexDb::CmdEllipse));
    EXPECT_EQ(L"ELLIPSE is not available yet.", told());
    EXPECT_EQ(1u, handler().refusals());
    run(VexDb::CmdArray);
    EXPECT_EQ(L"ELLIPSE is not available yet.\nARRAY is not available yet.", told());
}

TEST_F(DoCommandTest, EveryNumberOfTheEnumerationIsKnown)
{
    for (const int id : {4, 5, 10, 11, 12, 13, 15, 16, 19, 25}) {
        const unsigned long before = handler().refusals();
        EXPECT_EQ(nullptr, run(id));
        EXPECT_EQ(before + 1, handler().refusals()) << id;
    }
    // Those that are there ask, and end with the queue that has no answers.
    for (const int id : {1, 2, 3, 6, 7, 8, 9, 17, 18, 24, 26, 27, 28, 29, 30, 31, 32, 33, 34, 36}) {
        const unsigned long before = handler().inputSerial();
        EXPECT_EQ(nullptr, run(id));
        EXPECT_EQ(before + 1, handler().inputSerial()) << id;
    }
}

TEST_F(DoCommandTest, ASecondCommandInsideOneGivesNullAndTouchesNothing)
{
    CVexDbEntity* inner = addLine({0, 0}, {1, 1});
    bool wasBusy = false;
    whileWaiting([&] {
        wasBusy = handler().isBusy();
        inner = run(VexDb::CmdLine);
    });
    press(VK_ESCAPE);
    EXPECT_EQ(nullptr, run(VexDb::CmdLine));
    EXPECT_TRUE(wasBusy);
    EXPECT_EQ(nullptr, inner);
    EXPECT_EQ(L"Start point: ", line()); // the outer one's prompt was not pushed away
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(DoCommandTest, TrackersDroppedByACommandLeaveTheirPictureAlone)
{
    select();
    dc.clear();
    run(VexDb::CmdArc);
    EXPECT_TRUE(dc.strokes().empty()); // the grips stay until the next repaint
}

TEST_F(DoCommandTest, ATrackerDeletedWhileBusyShowsItsEntityAgain)
{
    CVexDbLine* line = select();
    const VexBusyScope busy(handler());
    dc.clear();
    handler().DeleteTracker(line);
    ASSERT_FALSE(dc.strokes().empty());
    EXPECT_EQ(R2_COPYPEN, dc.strokes().back().rop); // the last stroke is the plain line
    EXPECT_TRUE(handler().trackers().empty());
}

TEST_F(DoCommandTest, ALostInputStaysLostUntilTheCommandEnds)
{
    const VexBusyScope busy(handler());
    CVexGePoint2d point(7, 8);
    EXPECT_EQ(InputPoint, handler().GetGePoint(3, point)); // the queue is dry: the capture goes
    EXPECT_POINT(7, 8, point);
    EXPECT_TRUE(handler().isInputLost());
    const unsigned long serial = handler().inputSerial();
    display.setHandler(nullptr);
    click({1, 1});
    double number = 5;
    CString text = L"kept";
    wchar_t key = 0;
    CVexDbEntity* entity = nullptr;
    VexEntitySet entities;
    CVexGePoint2d base;
    EXPECT_EQ(InputCancel, handler().GetGePoint(3, point));
    EXPECT_EQ(InputCancel, handler().GetGePoint(5, point, base, L'\0'));
    EXPECT_EQ(InputCancel, handler().GetReal(9, L'\0', number));
    EXPECT_EQ(InputCancel, handler().GetString(29, text));
    EXPECT_EQ(InputCancel, handler().GetKeyWord(16, L"E", key));
    EXPECT_EQ(InputCancel, handler().GetEntity(36, entity, nullptr));
    EXPECT_EQ(InputLost, handler().GetEntities(35, &entities));
    EXPECT_EQ(-1.0, handler().GetDistance(0, nullptr));
    EXPECT_EQ(0.0, handler().GetAngle(0, &base));
    EXPECT_EQ(serial, handler().inputSerial()); // none of them pumped
    EXPECT_EQ(1u, backend.queued());
    EXPECT_EQ(L"Start point: ", line()); // or prompted
}

TEST_F(DoCommandTest, TheLostMarkGoesWithTheLastBlockingCall)
{
    {
        const VexBusyScope outer(handler());
        {
            const VexBusyScope inner(handler());
            handler().markInputLost();
        }
        EXPECT_TRUE(handler().isInputLost());
    }
    EXPECT_FALSE(handler().isInputLost());
    handler().markInputLost(); // with nothing running there is nothing to end
    EXPECT_FALSE(handler().isInputLost());
}

TEST_F(DoCommandTest, AHostEndsACommandByMarkAndEscape)
{
    bool ran = false;
    whileWaiting([&] {
        handler().markInputLost();
        ran = true;
        post(WM_KEYDOWN, VK_ESCAPE);
    });
    EXPECT_EQ(nullptr, run(VexDb::CmdLine));
    EXPECT_TRUE(ran);
    expectReleased();
}

TEST_F(DoCommandTest, AQuitDuringACommandEndsItAndIsKeptForTheHost)
{
    post(WM_QUIT);
    type(L"1,1");
    EXPECT_EQ(nullptr, run(VexDb::CmdLine));
    EXPECT_EQ(3u, backend.queued()); // what comes behind is not the command's any more
    EXPECT_TRUE(handler().takeQuit());
    EXPECT_FALSE(handler().takeQuit());
    expectReleased();
}

TEST_F(DoCommandTest, TheLastEntityIsForgottenWhereverItDies)
{
    auto made = std::make_unique<CVexDbLine>(database.get());
    handler().setLastEntity(made.get());
    const auto copy = std::make_unique<CVexDbLine>(*made);
    made.reset();
    EXPECT_EQ(nullptr, handler().lastEntity());
    CVexDbLine* line = addLine({0, 0}, {1, 1});
    handler().setLastEntity(line);
    database->removeEntity(line);
    EXPECT_EQ(nullptr, handler().lastEntity());
}

TEST_F(DoCommandTest, OnlyTheLastEntityOfAllThatWereMadeTellsItsEnd)
{
    auto first = std::make_unique<CVexDbLine>(database.get());
    auto second = std::make_unique<CVexDbLine>(database.get());
    handler().setLastEntity(first.get());
    handler().setLastEntity(second.get());
    first.reset();
    EXPECT_EQ(second.get(), handler().lastEntity());
    second->setDatabase(nullptr); // out of this drawing: none of its business
    EXPECT_EQ(nullptr, handler().lastEntity());
    handler().setLastEntity(nullptr);
}

TEST_F(DoCommandTest, AnEntityMayOutliveTheDrawingThatMadeItLast)
{
    auto other = std::make_unique<CVexDbDatabase>(false);
    CVexDbLine made(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1));
    made.setDatabase(other.get());
    other->commandHandler().setLastEntity(&made);
    other.reset();
    SUCCEED(); // under the memory checker: the line does not call the handler that is gone
}

TEST_F(DoCommandTest, ATrackerGoesItselfAlsoWithoutAnEntity)
{
    CVexDbLine* line = select();
    auto* band = new CVexDbEntityTracker(&display, database.get(), true);
    auto* second = new CVexDbEntityTracker(&display, line, VexDb::TransFormNone, false);
    handler().AddTracker(band);
    handler().AddTracker(second);
    handler().RemoveTracker(band);
    EXPECT_TRUE(handler().selectedEntities().contains(line));
    CVexDbEntityTracker* const first = handler().trackers().front();
    handler().RemoveTracker(second);
    EXPECT_EQ(std::vector{first}, handler().trackers());
}

// A host closes its window inside a message that the input hands on.
class ClosedWindowTest : public DoCommandTest {
protected:
    ClosedWindowTest()
    {
        handler().SetDispWindow(closing.get());
        view->setView(closing.get(), closing->GetDC());
        display.setHandler([this](const MSG& sent) {
            if (sent.message == WM_COMMAND || sent.message == WM_TIMER) {
                closing.reset();
            }
            return LRESULT(0);
        });
        addLine({10, 197}, {50, 197});
        settings().m_bGripSnap = true;
        moveTo({48, 100}); // a blip is on
    }
    std::unique_ptr<CVexMemoryWindow> closing =
        std::make_unique<CVexMemoryWindow>(CSize{kWidth, kHeight});
};

TEST_F(ClosedWindowTest, EveryInputEndsWithoutTouchingIt)
{
    CVexGePoint2d point;
    CVexDbEntity* entity = nullptr;
    double number = 5.0;
    wchar_t key = 0;
    const std::vector<std::function<int()>> inputs = {
        [&] { return handler().GetGePoint(3, point); },
        [&] { return handler().GetEntity(36, entity, nullptr); },
        [&] { return handler().GetReal(9, L'\0', number); },
        [&] { return handler().GetKeyWord(47, L"YN", key) + 1; },
    };
    for (const unsigned last : {unsigned{WM_COMMAND}, unsigned{WM_TIMER}}) {
        for (const auto& input : inputs) {
            closing = std::make_unique<CVexMemoryWindow>(CSize{kWidth, kHeight});
            handler().SetDispWindow(closing.get());
            view->setView(closing.get(), closing->GetDC());
            moveTo({48, 100});
            post(last);
            EXPECT_EQ(1, input());
            EXPECT_EQ(nullptr, closing);
            EXPECT_EQ(nullptr, GetCapture());
        }
    }
}

TEST_F(ClosedWindowTest, NothingMoreIsAskedInIt)
{
    post(WM_COMMAND);
    EXPECT_EQ(nullptr, run(VexDb::CmdLine));
    EXPECT_EQ(nullptr, handler().GetDispWindow());
    type(L"1,1");
    EXPECT_EQ(nullptr, run(VexDb::CmdLine));
    EXPECT_EQ(3u, backend.queued());
    EXPECT_TRUE(handler().RunCommand(7));
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(DoCommandTest, TheHandlerMayDieWithASelectionAndInTheMiddleOfNothing)
{
    select();
    handler().ClearTracker(false);
    select();
    database.reset(); // under the leak checker: neither tracker stays behind
    SUCCEED();
}

} // namespace
