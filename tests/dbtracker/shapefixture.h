#pragma once

#include "platform/base/cfile.h"
#include "trackerfixture.h"

#include <cstddef>
#include <numbers>

/// One entity of a kind that a test chooses, in the drawing and selected, as a person drags it.
class ShapeTrackerTest : public TrackerTest {
protected:
    static constexpr double kPi = std::numbers::pi;

    /// Adds `made` to the drawing, which owns it then, and selects it.
    template <class Shape>
    Shape* select(Shape* made)
    {
        made->setDatabase(database.get());
        CVexDbObjectId id;
        database->addEntity(made, id);
        handler().DoDragEntity(made, {});
        return made;
    }
    void drag(CVexGePoint2d from, CVexGePoint2d to)
    {
        moveAt((from.x + to.x) / 2, (from.y + to.y) / 2);
        releaseAt(to.x, to.y);
        handler().TrackTracker(&display, px(from.x, from.y));
    }
    /// A transform of the selected entity from (10, 10), ended by a click.
    int transform(VexDb::TransFormOption option, double x, double y)
    {
        tracker().SetTransOpt(option);
        tracker().SetStartPoint({10, 10}, false);
        clickAt(x, y);
        const int result = tracker().Track(&display, {0, 0}, -1);
        tracker().SetTransOpt(VexDb::TransFormNone);
        return result;
    }
    /// The drawing as a file keeps it, but for the last point.
    std::vector<std::byte> bytes()
    {
        database->setLastPoint({0, 0});
        CMemFile file{CString(L"drawing.zpl")};
        CArchive archive(&file, CArchive::store);
        EXPECT_TRUE(database->Save(archive) && file.Close());
        return file.bytes();
    }
    /// What the newest undo step holds, the newest record first.
    std::vector<int> newestStep()
    {
        std::vector<int> types;
        for (const tagUndoEditEntity& edit : undo().undoStack()) {
            types.push_back(edit.editType);
            if (!edit.continues) {
                break;
            }
        }
        return types;
    }
    /// The drag changes the drawing; back and forth again give the bytes of before and after.
    void dragBackAndForth(CVexGePoint2d from, CVexGePoint2d to)
    {
        const auto before = bytes();
        drag(from, to);
        const auto after = bytes();
        EXPECT_FALSE(before == after) << "nothing was dragged";
        EXPECT_TRUE(undo().Undo());
        EXPECT_TRUE(before == bytes()) << "taken back";
        EXPECT_TRUE(undo().Redo());
        EXPECT_TRUE(after == bytes()) << "done again";
    }
    void expectNothingLeftOver()
    {
        handler().ClearTracker(true);
        EXPECT_TRUE(leftOver().empty()) << leftOver().front();
    }
};

/// A shape outside of the drawing, as a command draws it from the corner or centre (10, 10).
template <class Shape, class Tracker>
class ShapeCreationTest : public ShapeTrackerTest {
protected:
    ShapeCreationTest() { drawer.SetStartPoint({10, 10}, true); }
    int track() { return drawer.Track(&display, {0, 0}); }
    /// What stands on the screen behind a move to a point.
    std::vector<VexStroke> shownAt(double x, double y)
    {
        std::vector<VexStroke> shown;
        moveAt(x, y);
        whileWaiting([&] { shown = leftOver(); });
        press(VK_ESCAPE);
        EXPECT_EQ(InputCancel, track());
        return shown;
    }

    Shape shape{database.get()};
    Tracker drawer{&display, &shape, VexDb::TransFormNone, true};
};

/// The strokes of a band among others.
inline std::vector<std::vector<CPoint>> bandsAmong(const std::vector<VexStroke>& strokes)
{
    std::vector<std::vector<CPoint>> bands;
    for (const VexStroke& stroke : strokes) {
        if (stroke.color == 0x00ffff) {
            bands.push_back(stroke.points);
        }
    }
    return bands;
}
