#include "creationfixture.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

class BoxCommandTest : public CreationTest {
protected:
    std::unique_ptr<CVexDbBox> run() { return make<CVexDbBox>(VexDb::CmdBox); }
    static void expectBox(const CVexDbBox& box, double width, double height, double rotation)
    {
        EXPECT_POINT(10, 20, box.BasePoint());
        EXPECT_NEAR(width, box.Width(), 1e-12);
        EXPECT_NEAR(height, box.Height(), 1e-12);
        EXPECT_NEAR(rotation, box.Rotation(), 1e-12);
    }
    static CVexGePoint2d diagonal(const CVexDbBox& box)
    {
        CVexGePoint2d corner;
        box.GetDiagonPoint(corner);
        return corner;
    }
};

TEST_F(BoxCommandTest, ATypedAngleTurnsTheBoxByDegrees)
{
    type(L"10,20\n40,60\n30\n");
    const auto box = run();
    ASSERT_NE(nullptr, box);
    expectBox(*box, 30, 40, kPi / 6);
    // (30, 40) turned by 30 degrees
    EXPECT_POINT(10 + 15 * std::sqrt(3.0) - 20, 20 + 15 + 20 * std::sqrt(3.0), diagonal(*box));
    EXPECT_EQ(1, display.invalidations());
}

TEST_F(BoxCommandTest, EnterKeepsTheBoxAsItStoodHoweverThePointerTurnedIt)
{
    type(L"10,20\n40,60\n");
    moveTo({100, 100});
    type(L"\n");
    const auto box = run();
    ASSERT_NE(nullptr, box);
    expectBox(*box, 30, 40, 0.0);
    EXPECT_POINT(40, 60, diagonal(*box));
    EXPECT_EQ(box.get(), handler().lastEntity());
}

TEST_F(BoxCommandTest, AClickTurnsTheBoxTowardsIt)
{
    type(L"10,20\n40,60\n");
    moveTo({100, 100});
    click({10, 177}); // straight above the corner
    const auto box = run();
    ASSERT_NE(nullptr, box);
    expectBox(*box, 30, 40, kPi / 2);
    EXPECT_POINT(-30, 50, diagonal(*box));
}

TEST_F(BoxCommandTest, ATypedPointTurnsTheBoxTowardsIt)
{
    const wchar_t* const answers[] = {L"10,20\n40,60\n10,120\n", L"10,20\n40,60\n5<90\n"};
    for (const wchar_t* answer : answers) {
        type(answer);
        const auto box = run();
        ASSERT_NE(nullptr, box);
        expectBox(*box, 30, 40, kPi / 2);
    }
}

TEST_F(BoxCommandTest, ClicksSizeItWithTheSignsOfTheDrag)
{
    click({10, 277});
    moveTo({100, 100});
    click({5, 280}); // 5 to the left, 3 below
    type(L"\n");
    const auto box = run();
    ASSERT_NE(nullptr, box);
    expectBox(*box, -5, -3, 0.0);
    EXPECT_POINT(5, 17, diagonal(*box));
}

TEST_F(BoxCommandTest, ATypedCornerCountsAfterArrowKeysToo)
{
    type(L"10,20\n");
    moveTo({100, 100});
    press(VK_RIGHT);
    post(WM_KEYUP, VK_RIGHT);
    type(L"40,60\n\n");
    const auto box = run();
    ASSERT_NE(nullptr, box);
    expectBox(*box, 30, 40, 0.0);
}

TEST_F(BoxCommandTest, ATextThatIsNoAngleTurnsNothing)
{
    type(L"10,20\n40,60\nwide\n");
    const auto box = run();
    ASSERT_NE(nullptr, box);
    expectBox(*box, 30, 40, 0.0);
}

TEST_F(BoxCommandTest, ANumberAloneIsNoCornerAndIsRefused)
{
    type(L"10,20\n5\n\n");
    const auto box = run();
    ASSERT_NE(nullptr, box);
    expectBox(*box, 1, 1, 0.0); // as it began
    EXPECT_EQ(L"P12: 10,20\nP13: 5\nInvalid input.\nP39: ", told());
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(BoxCommandTest, TurningIsRecordedNowhere)
{
    type(L"10,20\n40,60\n30\n");
    const auto box = run();
    EXPECT_TRUE(database->undoHandler().undoStack().empty());
}

TEST_F(BoxCommandTest, TheTurningBoxIsOnScreenOnceAtATime)
{
    click({10, 277});
    click({40, 237});
    moveTo({100, 200});
    std::size_t strokesOn = 0;
    whileWaiting([&] {
        // What was stroked an odd number of times is what shows.
        const auto& strokes = dc.strokes();
        for (const VexStroke& stroke : strokes) {
            strokesOn += std::count(strokes.begin(), strokes.end(), stroke) % 2;
        }
    });
    press(VK_ESCAPE);
    EXPECT_EQ(nullptr, run());
    EXPECT_EQ(5u, strokesOn); // the band and the four sides
}

} // namespace
