#pragma once

#include "tests/dbcommand/commandfixture.h"
#include "vexdb/dbcommand/vexinputresult.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbtracker/vexlinetracker.h"
#include "vexdb/dbtracker/vexpopupmenu.h"

#include <algorithm>
#include <ostream>
#include <vector>

/// A square window of 400 pixels that shows the drawing from (0, 0) to (40, 40): ten pixels a
/// drawing unit, on black. The user's positions are drawing units.
class TrackerTest : public CommandTest {
protected:
    static constexpr COLORREF kBand = 0x00ffff;
    static constexpr COLORREF kHandle = 0xffff00;

    TrackerTest()
    {
        showSquare({0, 0, 40, 40}, 400);
        dc.SetBkColor(0x000000);
        dc.clear();
    }

    static CPoint px(double x, double y)
    {
        return {static_cast<int>(x * 10.0 + 0.5), 400 - static_cast<int>(y * 10.0 + 0.5)};
    }
    void moveAt(double x, double y) { moveTo(px(x, y)); }
    void clickAt(double x, double y) { click(px(x, y)); }
    void releaseAt(double x, double y) { mouse(WM_LBUTTONUP, px(x, y)); }
    void rightClick() { mouse(WM_RBUTTONDOWN, px(1, 1)); }
    void arrow(unsigned key)
    {
        press(key);
        post(WM_KEYUP, key);
    }

    /// The strokes in XOR that no second one has taken off, in the order drawn.
    [[nodiscard]] std::vector<VexStroke> leftOver() const
    {
        std::vector<VexStroke> shown;
        for (const VexStroke& stroke : dc.strokes()) {
            if (stroke.rop != R2_XORPEN && stroke.rop != R2_NOTXORPEN) {
                continue;
            }
            const auto twin = std::ranges::find(shown, stroke);
            if (twin == shown.end()) {
                shown.push_back(stroke);
            } else {
                shown.erase(twin);
            }
        }
        return shown;
    }
    [[nodiscard]] std::vector<VexStroke> strokesOf(COLORREF color) const
    {
        std::vector<VexStroke> found;
        std::ranges::copy_if(dc.strokes(), std::back_inserter(found),
                             [&](const VexStroke& stroke) { return stroke.color == color; });
        return found;
    }
    CVexUndoHandler& undo() { return database->undoHandler(); }
    const tagUndoEditEntity& newest() { return undo().undoStack().front(); }
    [[nodiscard]] CVexGePoint2d lastPoint() const { return database->lastPoint(); }
    /// Selects a new line of the drawing; its tracker is the handler's.
    CVexDbLine* selectLine(CVexGePoint2d start, CVexGePoint2d end)
    {
        CVexDbLine* const line = addLine(start, end);
        handler().DoDragEntity(line, {});
        return line;
    }
    CVexDbEntityTracker& tracker() { return *handler().trackers().back(); }
};

inline std::ostream& operator<<(std::ostream& out, const CPoint& point)
{
    return out << "(" << point.x << ", " << point.y << ")";
}

inline std::ostream& operator<<(std::ostream& out, const VexStroke& stroke)
{
    out << "stroke rop " << stroke.rop << " colour " << std::hex << stroke.color << std::dec;
    for (const CPoint& point : stroke.points) {
        out << " " << point;
    }
    return out;
}

#define EXPECT_LINE(x1, y1, x2, y2, line)                                                          \
    do {                                                                                           \
        const CVexDbLine& looked = (line);                                                         \
        EXPECT_POINT(x1, y1, looked.StartPoint());                                                 \
        EXPECT_POINT(x2, y2, looked.EndPoint());                                                   \
    } while (false)
