#include "tests/session/sessionfixture.h"

namespace {

TEST_F(SessionTest, TypedLineCommandDrawsAChainUntilEnter)
{
    types(L"LINE\n").clicks(10, 10).types(L"5<90\n20,20\n\n");
    run();
    ASSERT_EQ(2u, lines().size());
    EXPECT_POINT(10.0, 10.0, lines()[0]->StartPoint());
    EXPECT_POINT(10.0, 15.0, lines()[0]->EndPoint());
    EXPECT_POINT(10.0, 15.0, lines()[1]->StartPoint());
    EXPECT_POINT(20.0, 20.0, lines()[1]->EndPoint());
}

TEST_F(SessionTest, EachSegmentIsAnUndoStepOfItsOwn)
{
    types(L"l\n1,1\n2,2\n3,3\n\n");
    run();
    ASSERT_EQ(2u, undo().undoStack().size());
    EXPECT_EQ(kUndoCreate, undo().undoStack().front().editType);
    EXPECT_FALSE(undo().undoStack().front().continues);
    session->undo();
    EXPECT_EQ(1u, lines().size());
    session->redo();
    EXPECT_EQ(2u, lines().size());
}

TEST_F(SessionTest, HistoryHoldsEachPromptWithItsAnswer)
{
    types(L"LINE\n1,1\n4,5\n\n");
    run();
    EXPECT_EQ(std::wstring(L"LINE\nSpecify start point: 1,1\nSpecify end point: 4,5\n"
                           L"Specify end point: "),
              handler().getStrings().str());
    EXPECT_EQ(std::wstring(), message.GetWindowText().str());
}

TEST_F(SessionTest, APolarAnswerCountsAsInvalidInTheHistoryAndStillDraws)
{
    // The history holds a point prompt to "x,y"; the tracker takes more. A script does not stop.
    types(L"LINE\n1,1\n5<90\n\n");
    run();
    EXPECT_NE(-1, handler().getStrings().Find(L"Specify end point: 5<90\nInvalid input."));
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(1.0, 6.0, lines()[0]->EndPoint());
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(SessionTest, EscapeDropsTheSegmentThatIsBeingDrawn)
{
    types(L"LINE\n1,1\n2,2\n").key(VK_ESCAPE);
    run();
    EXPECT_EQ(1u, lines().size());
    EXPECT_FALSE(handler().isBusy());
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(SessionTest, TheBandIsStrokedInXorAndTakenOffAgain)
{
    types(L"LINE\n").clicks(10, 10).moves(20, 10).moves(20, 20).key(VK_ESCAPE);
    run();
    int strokes = 0;
    for (const VexStroke& stroke : display.recording().strokes()) {
        // From the start (40, 1148) to the first position (80, 1148).
        if (stroke.rop == R2_XORPEN && stroke.points.size() == 2 &&
            stroke.points[0] == CPoint(40, 1148) && stroke.points[1] == CPoint(80, 1148)) {
            ++strokes;
        }
    }
    EXPECT_GE(strokes, 2);
    EXPECT_EQ(0, strokes % 2);
}

TEST_F(SessionTest, BackspaceNeverEatsThePrompt)
{
    types(L"LINE\n").types(L"\b\b9\b5,5\n").types(L"6,7\n\n");
    run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(5.0, 5.0, lines()[0]->StartPoint());
    EXPECT_NE(-1, handler().getStrings().Find(L"Specify start point: 5,5\n"));
}

TEST_F(SessionTest, BackspaceTakesTypedCharactersBackWhileNothingWaits)
{
    types(L"LX\b\n1,1\n2,2\n\n");
    run();
    EXPECT_EQ(1u, lines().size());
}

TEST_F(SessionTest, TheReadOutFollowsTheMouse)
{
    moves(10, 20);
    run();
    EXPECT_EQ(std::wstring(L"10.000000, 20.000000"), coordinates.GetWindowText().str());
}

TEST_F(SessionTest, OrthoHoldsADrawnSegmentToItsAxis)
{
    key(VK_F1 + 7).types(L"LINE\n").clicks(10, 10).clicks(30, 12).key(VK_ESCAPE);
    run();
    EXPECT_NE(-1, handler().getStrings().Find(L"Ortho: on"));
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(30.0, 10.0, lines()[0]->EndPoint());
}

TEST_F(SessionTest, ComposedTextIsTypedText)
{
    types(L"LINE\n");
    backend.setComposition(L"3,4");
    display.PostMessage(WM_IME_COMPOSITION, 0, kCompositionResult);
    types(L"\n5,5\n\n");
    run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(3.0, 4.0, lines()[0]->StartPoint());
}

TEST_F(SessionTest, WheelZoomsUnderTheMouseWhileACommandGoesOn)
{
    const double before = view().xScale();
    types(L"LINE\n1,1\n");
    display.PostMessage(WM_MOUSEWHEEL, static_cast<WPARAM>(kWheelNotch) << 16,
                        MAKELPARAM(840, 594));
    types(L"4,5\n\n");
    run();
    EXPECT_NEAR(before * 0.8, view().xScale(), 0.02);
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(4.0, 5.0, lines()[0]->EndPoint());
}

TEST_F(SessionTest, MiddleButtonPansWhileACommandGoesOn)
{
    const int left = view().window().left;
    types(L"LINE\n1,1\n");
    display.PostMessage(WM_MBUTTONDOWN, 0, MAKELPARAM(100, 100));
    display.PostMessage(WM_MOUSEMOVE, 0, MAKELPARAM(140, 100));
    display.PostMessage(WM_MBUTTONUP, 0, MAKELPARAM(140, 100));
    types(L"4,5\n\n");
    run();
    EXPECT_EQ(left - 40 * 25, view().window().left); // 25 logical units a pixel
    EXPECT_EQ(1u, lines().size());
}

TEST_F(SessionTest, EnterRepeatsWhatAMenuStarted)
{
    session->start(hostNumberOf(VexDb::CmdLine)); // nothing answers: it is cancelled
    types(L"\n1,1\n2,2\n\n");
    run();
    EXPECT_EQ(1u, lines().size());
}

TEST_F(SessionTest, ACommandWithoutABodySaysSo)
{
    types(L"ellipse\n");
    run();
    EXPECT_EQ(std::wstring(L"ellipse\nELLIPSE is not available yet."),
              handler().getStrings().str());
    EXPECT_EQ(1u, handler().refusals());
}

} // namespace
