#include "tests/session/sessionfixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

/// A person who draws by script.
class DrawingTest : public SessionTest {
protected:
    DrawingTest() : player(*session) {}
    ~DrawingTest() override = default;

    bool plays(std::vector<CString> script) { return player.play(std::move(script)); }
    /// What can be seen, oldest first.
    std::vector<CVexDbEntity*> shown()
    {
        std::vector<CVexDbEntity*> found;
        for (const CVexDbObjectId& id : *view().displayedIdSet()) {
            if (id.getPObject()->isVisiable()) {
                found.push_back(static_cast<CVexDbEntity*>(id.getPObject()));
            }
        }
        return found;
    }
    /// The last thing drawn, which has to be of the class.
    template <class Entity>
    Entity& last(VexDb::ClassType type)
    {
        CVexDbEntity* const entity = shown().back();
        EXPECT_EQ(type, entity->classType());
        return *static_cast<Entity*>(entity);
    }
    std::wstring told() { return handler().getStrings().str(); }

    CVexScriptPlayer player;
};

TEST_F(DrawingTest, EachShapeIsAddedOnceAndIsAnUndoStepOfItsOwn)
{
    struct Row {
        const char* name;
        VexDb::ClassType type;
        std::vector<CString> script;
    };
    const Row rows[] = {
        {"circle", VexDb::kCircle, {L"CIRCLE 10,10 5"}},
        {"arc", VexDb::kArc, {L"ARC 30,10 20,20 10,10"}},
        {"rectangle", VexDb::kRectangle, {L"RECT 10,10 40,30"}},
        {"box", VexDb::kBox, {L"BOX 10,10 40,30 30"}},
        {"box kept upright", VexDb::kBox, {L"BOX 10,10 40,30", L""}},
    };
    std::size_t steps = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(plays(row.script));
        ASSERT_EQ(++steps, shown().size());
        EXPECT_EQ(row.type, shown().back()->classType());
        ASSERT_EQ(steps, undo().undoStack().size());
        EXPECT_EQ(kUndoCreate, undo().undoStack().back().editType);
        EXPECT_FALSE(undo().undoStack().back().continues);
        session->undo();
        EXPECT_EQ(steps - 1, shown().size());
        session->redo();
        EXPECT_EQ(steps, shown().size());
    }
}

TEST_F(DrawingTest, TheHistoryHoldsEachPromptWithItsAnswer)
{
    EXPECT_TRUE(plays({L"CIRCLE", L"10,10", L"5", L"BOX", L"1,1", L"4,5", L""}));
    EXPECT_EQ(std::wstring(L"CIRCLE\nSpecify centre point: 10,10\nSpecify radius: 5\n"
                           L"BOX\nSpecify first corner: 1,1\nSpecify opposite corner: 4,5\n"
                           L"Specify rotation angle in degrees: "),
              told());
    EXPECT_EQ(std::wstring(), message.GetWindowText().str());
}

TEST_F(DrawingTest, EscapeAtAnyPromptLeavesTheDrawingAsItWas)
{
    const std::vector<CString> dialogues[] = {{L"CIRCLE", L"10,10"},
                                              {L"ARC", L"C", L"10,10", L"R", L"5", L"30"},
                                              {L"ARC", L"10,10", L"20,20"},
                                              {L"BOX", L"10,10", L"40,30"},
                                              {L"RECT", L"10,10"}};
    for (const std::vector<CString>& dialogue : dialogues) {
        for (std::size_t given = 1; given <= dialogue.size(); ++given) {
            std::vector<CString> script(dialogue.begin(),
                                        dialogue.begin() + static_cast<int>(given));
            script.push_back(L"@key Escape");
            EXPECT_TRUE(plays(script)) << dialogue.front().utf8() << ' ' << given;
            EXPECT_TRUE(shown().empty());
            EXPECT_TRUE(undo().undoStack().empty());
            EXPECT_FALSE(handler().isBusy());
        }
    }
}

TEST_F(DrawingTest, AClickedCircleGoesThroughTheClick)
{
    EXPECT_TRUE(plays({L"circle", L"@click 100,100", L"@move 110,100", L"@click 130,140"}));
    const auto& circle = last<CVexDbCircle>(VexDb::kCircle);
    EXPECT_POINT(100.0, 100.0, circle.Center());
    EXPECT_DOUBLE_EQ(50.0, circle.Radius());
}

TEST_F(DrawingTest, AContinuationLeavesALineAlongItAndTheNextLineLeavesTheArc)
{
    // Enter at a start point takes the last point, where the arc was left.
    EXPECT_TRUE(plays(
        {L"LINE 30,160 330,160", L"", L"ARCCONTINUE 348,142", L"LINE", L"", L"348,100", L""}));
    ASSERT_EQ(3u, shown().size());
    const auto& arc = *static_cast<CVexDbArc*>(shown()[1]);
    ASSERT_EQ(VexDb::kArc, arc.classType());
    EXPECT_NEAR(330.0, arc.Center().x, 1e-9);
    EXPECT_NEAR(142.0, arc.Center().y, 1e-9);
    EXPECT_NEAR(18.0, arc.Radius(), 1e-9);
    EXPECT_NEAR(0.0, arc.StartAngle(), 1e-9);
    EXPECT_NEAR(kPi / 2, arc.EndAngle(), 1e-9);
    const auto& line = last<CVexDbLine>(VexDb::kLine);
    EXPECT_NEAR(348.0, line.StartPoint().x, 1e-9);
    EXPECT_NEAR(142.0, line.StartPoint().y, 1e-9);
}

TEST_F(DrawingTest, EnterRepeatsAContinuationSoThatArcsChain)
{
    EXPECT_TRUE(plays({L"LINE 0,100 20,100", L"", L"AC 30,110", L"", L"40,120"}));
    ASSERT_EQ(3u, shown().size());
    const auto& second = last<CVexDbArc>(VexDb::kArc);
    EXPECT_NEAR(40.0, second.Center().x, 1e-9);
    EXPECT_NEAR(110.0, second.Center().y, 1e-9);
    EXPECT_POINT(second.StartPoint().x, second.StartPoint().y, database->lastPoint());
}

TEST_F(DrawingTest, AContinuationOfNothingAsksLikeAnArc)
{
    EXPECT_TRUE(plays({L"ARCCONTINUE 30,10 20,20 10,10"}));
    EXPECT_NEAR(10.0, last<CVexDbArc>(VexDb::kArc).Radius(), 1e-9);
    EXPECT_NE(-1,
              handler().getStrings().Find(L"Specify start point of arc or [C = centre]: 30,10"));
}

TEST_F(DrawingTest, TheWaysToAnArcHaveNamesOfTheirOwn)
{
    struct Row {
        const wchar_t* script;
        const wchar_t* asked;
    };
    const Row rows[] = {
        {L"ARCPOINTS 30,10 20,20 10,10", L"Specify start point: 30,10"},
        {L"ARCCENTER 20,10 30,10 180", L"Specify start point: 30,10"},
        {L"ARCRADIUS 20,10 10 360 180", L"Specify start angle in degrees: 360"},
        {L"ARC C 20,10 R 10 0 180", L"Specify start point of arc or [R = radius]: R"},
    };
    for (const Row& row : rows) {
        EXPECT_TRUE(plays({row.script})) << CString(row.script).utf8();
        EXPECT_NE(-1, handler().getStrings().Find(row.asked));
        const auto& arc = last<CVexDbArc>(VexDb::kArc);
        EXPECT_NEAR(30.0, arc.StartPoint().x, 1e-9);
        EXPECT_NEAR(10.0, arc.EndPoint().x, 1e-9);
    }
    EXPECT_EQ(std::size(rows), shown().size());
}

TEST_F(DrawingTest, ABoxIsTurnedByATypedAngleAndKeptByEnter)
{
    EXPECT_TRUE(plays({L"BOX 10,10 40,30 30", L"BOX 10,10 40,30", L"@move 60,90", L""}));
    ASSERT_EQ(2u, shown().size());
    EXPECT_NEAR(kPi / 6, static_cast<CVexDbBox*>(shown()[0])->Rotation(), 1e-12);
    EXPECT_EQ(0.0, last<CVexDbBox>(VexDb::kBox).Rotation());
}

TEST_F(DrawingTest, TheWheelTurnsInTheMiddleOfAnyOfThem)
{
    types(L"CIRCLE\n10,10\n");
    display.PostMessage(WM_MOUSEWHEEL, static_cast<WPARAM>(kWheelNotch) << 16,
                        MAKELPARAM(840, 594));
    types(L"5\n");
    run();
    EXPECT_DOUBLE_EQ(5.0, last<CVexDbCircle>(VexDb::kCircle).Radius());
}

TEST_F(DrawingTest, ANamedLayerTakesWhatComes)
{
    auto* const steel = new CVexDbLayerTableRecord(database.get());
    steel->setName(CString(L"Steel"));
    ASSERT_TRUE(database->layers().add(steel));
    const int changes = host.changes;
    EXPECT_TRUE(plays({L"CIRCLE 10,10 5", L"@layer Steel", L"CIRCLE 20,10 5"}));
    EXPECT_NE(steel->objectId(), shown()[0]->LayerId());
    EXPECT_EQ(steel->objectId(), shown()[1]->LayerId());
    EXPECT_GT(host.changes, changes);
}

TEST_F(DrawingTest, ALayerThatIsNotThereEndsTheScript)
{
    EXPECT_FALSE(plays({L"@layer Nowhere", L"CIRCLE 10,10 5"}));
    ASSERT_EQ(1u, player.refusals().size());
    EXPECT_EQ(1, player.refusals()[0].line);
    EXPECT_EQ(std::wstring(L"there is no layer of that name"), player.refusals()[0].why.str());
    EXPECT_TRUE(shown().empty());
}

TEST_F(DrawingTest, ALayerAtTheEndOfAScriptEndsItToo)
{
    EXPECT_TRUE(plays({L"CIRCLE 10,10 5", L"@layer 0"}));
    EXPECT_TRUE(player.isOver());
}

} // namespace
