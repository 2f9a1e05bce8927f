#include "tests/session/sessionfixture.h"

namespace {

TEST_F(SessionTest, ACommandStartedWhileOneWaitsRunsBehindIt)
{
    types(L"LINE\n").clicks(10, 10);
    bool asked = false;
    backend.setWhenDry([&] {
        if (!asked) {
            asked = true;
            session->start(hostNumberOf(VexDb::CmdLine));
            types(L"1,1\n2,2\n\n");
        }
    });
    run();
    ASSERT_EQ(1u, lines().size()); // the first one was cancelled, the second drew
    EXPECT_POINT(1.0, 1.0, lines()[0]->StartPoint());
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(SessionTest, UndoAskedForWhileACommandWaitsCancelsItFirst)
{
    types(L"LINE\n1,1\n2,2\n").moves(50, 50);
    bool asked = false;
    backend.setWhenDry([&] {
        if (!asked) {
            asked = true;
            EXPECT_TRUE(handler().isBusy());
            session->start(kHostUndo);
        }
    });
    run();
    EXPECT_TRUE(asked);
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(1u, undo().redoStack().size());
}

TEST_F(SessionTest, ASwitchWhileACommandWaitsLeavesItWaiting)
{
    types(L"LINE\n").clicks(10, 10);
    bool asked = false;
    backend.setWhenDry([&] {
        if (!asked) {
            asked = true;
            session->start(kHostOrtho);
            clicks(30, 12).key(VK_ESCAPE);
        }
    });
    run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(30.0, 10.0, lines()[0]->EndPoint());
}

TEST_F(SessionTest, AQuitDuringACommandComesBackToTheProgram)
{
    types(L"LINE\n").clicks(10, 10);
    MSG quit;
    quit.message = WM_QUIT;
    backend.postMessage(quit);
    run();
    EXPECT_EQ(1, quits);
    EXPECT_TRUE(session->quitAsked());
    EXPECT_TRUE(lines().empty());
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(SessionTest, TheDrawingMayBeClosedByARequestThatCancelsACommand)
{
    types(L"LINE\n").clicks(10, 10);
    bool asked = false;
    backend.setWhenDry([&] {
        if (!asked) {
            asked = true;
            session->whenIdle([this] { close(); });
            EXPECT_NE(nullptr, session) << "the command is still on the stack";
        }
    });
    run();
    EXPECT_EQ(nullptr, session);
    EXPECT_EQ(nullptr, database);
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(SessionTest, TheDrawingMayBeClosedByItsOwnTypedCommand)
{
    host.onCommand = [this](unsigned long number) {
        session->whenIdle([this] { close(); });
        return number == kHostNew;
    };
    types(L"new\n");
    run();
    EXPECT_EQ(std::vector<unsigned long>{kHostNew}, host.asked);
    EXPECT_EQ(nullptr, database);
}

TEST_F(SessionTest, WhatComesAfterTheDrawingWasClosedGoesNowhere)
{
    addLine(10, 10, 20, 10);
    clicks(12, 10);
    run();
    types(L"LINE\n").clicks(1, 1);
    close();
    run();
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(SessionTest, RequestsRunInTheOrderTheyCame)
{
    std::vector<int> order;
    types(L"LINE\n").clicks(10, 10);
    bool asked = false;
    backend.setWhenDry([&] {
        if (!asked) {
            asked = true;
            session->whenIdle([&] { order.push_back(1); });
            session->whenIdle([&] { order.push_back(2); });
        }
    });
    run();
    EXPECT_EQ((std::vector{1, 2}), order);
}

TEST_F(SessionTest, WhenNothingWaitsARequestRunsAtOnce)
{
    bool ran = false;
    session->whenIdle([&] { ran = true; });
    EXPECT_TRUE(ran);
}

TEST_F(SessionTest, AKeyOfTheMessageWindowIsNotTakenWhileACommandWaits)
{
    types(L"LINE\n");
    bool taken = true;
    backend.setWhenDry([&] { taken = session->onMessageKey(VK_RETURN); });
    run();
    EXPECT_FALSE(taken);
}

TEST_F(SessionTest, AnUnknownHostNumberIsRefused)
{
    types(L"SAVE\n");
    run();
    EXPECT_EQ(std::vector<unsigned long>{kHostSave}, host.asked);
    EXPECT_NE(-1, handler().getStrings().Find(L"Command 2032 is not available here."));
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(SessionTest, AHostIsToldOfEachChange)
{
    types(L"LINE\n1,1\n2,2\n\n");
    run();
    EXPECT_EQ(1, host.changes);
}

} // namespace
