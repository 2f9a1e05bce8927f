#pragma once

#include "platform/headless/vexheadless.h"
#include "tests/platform/scratchfolder.h"
#include "tests/platform/standinmachine.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#define EXPECT_POINT(expectedX, expectedY, point)                                                  \
    do {                                                                                           \
        const CVexGePoint2d shown = (point);                                                       \
        EXPECT_NEAR(expectedX, shown.x, 1e-12);                                                    \
        EXPECT_NEAR(expectedY, shown.y, 1e-12);                                                    \
    } while (false)

/// A drawing with its windows in memory, and a user who types, moves and clicks by queueing
/// messages. One pixel is one drawing unit, (0, 0) left below, until showSquare maps it otherwise.
class CommandTest : public testing::Test {
protected:
    static constexpr int kWidth = 420;
    static constexpr int kHeight = 297;

    CommandTest();
    ~CommandTest() override;

    CVexCommandHandler& handler() { return database->commandHandler(); }
    VexDbDrawingSettings_tag& settings() { return database->settings(); }

    void map(CSize size);
    /// Shows `units` (whole drawing units, square) in a square window of `pixels`.
    void showSquare(CRect units, int pixels);

    CVexDbLine* addLine(CVexGePoint2d start, CVexGePoint2d end);

    // What the user does, in the order in which the pumps will see it.
    void post(unsigned kind, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        backend.postMessage({&display, kind, wParam, lParam, {}});
    }
    void mouse(unsigned kind, CPoint device) { post(kind, 0, MAKELPARAM(device.x, device.y)); }
    void moveTo(CPoint device) { mouse(WM_MOUSEMOVE, device); }
    void click(CPoint device) { mouse(WM_LBUTTONDOWN, device); }
    void press(unsigned key) { post(WM_KEYDOWN, key); }
    void type(std::wstring_view text);
    /// Runs `look` while the pump waits, between the messages around it.
    void whileWaiting(std::function<void()> look);
    [[nodiscard]] int received(unsigned kind) const;
    [[nodiscard]] std::wstring line() const { return message.GetWindowText().str(); }
    [[nodiscard]] std::wstring told() const { return history.GetWindowText().str(); }
    /// The pump has given everything back.
    void expectReleased();

    CVexHeadlessBackend backend;
    CScratchFolder folder;
    CStandInMachine machine;
    CVexMachineScope machineInForce{machine};
    CVexMemoryWindow display{{kWidth, kHeight}};
    CVexMemoryWindow message;
    CVexMemoryWindow history;
    CVexRecordingDC& dc = display.recording();
    std::unique_ptr<CVexPromptHandler> prompts;
    std::unique_ptr<CVexDbDatabase> database;
    CVexDbDisplayTableRecord* view = nullptr;

private:
    LRESULT onDisplay(const MSG& sent);

    std::vector<std::function<void()>> m_looks;
    std::size_t m_nextLook = 0;
};
