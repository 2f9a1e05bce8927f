// What holds for the trackers of every kind alike.

#include "platform/window/cmenu.h"
#include "shapefixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbtracker/vexarctracker.h"
#include "vexdb/dbtracker/vexboxtracker.h"
#include "vexdb/dbtracker/vexcircletracker.h"
#include "vexdb/dbtracker/vexpolylinetracker.h"
#include "vexdb/dbtracker/vexrecttracker.h"

namespace {

using Type = CVexDbEntityTracker::TrackerType;

struct Kind {
    const char* name;
    CVexDbEntity* (*make)();
    Type type;
    CVexGePoint2d sizingGrip; // one that reshapes, and where a drag takes it
    CVexGePoint2d to;
    bool isDivided = false;  // by its menu
    bool takesTyped = false; // what is typed during a drag counts as a click
};

// Each covers (10, 10) to (20, 20), the box and the rectangle up to (20, 16).
const Kind kKinds[] = {
    {"line",
     [] {
         return static_cast<CVexDbEntity*>(new CVexDbLine({10, 10}, {20, 20}));
     },
     Type::TrackerLine,
     {20, 20},
     {25, 22},
     true},
    {"arc",
     [] {
         return static_cast<CVexDbEntity*>(
             new CVexDbArc(CVexGePoint2d(10, 10), 10.0, 0.0, std::numbers::pi / 2.0));
     },
     Type::TrackerArc,
     {10, 20},
     {0, 10},
     true},
    {"circle",
     [] {
         return static_cast<CVexDbEntity*>(new CVexDbCircle({15, 15}, 5.0));
     },
     Type::TrackerCircle,
     {20, 15},
     {25, 15},
     true},
    {"box",
     [] {
         return static_cast<CVexDbEntity*>(new CVexDbBox({10, 10}, CVexGeVector2d(10, 6)));
     },
     Type::TrackerBox,
     {20, 16},
     {25, 22}},
    {"rectangle",
     [] {
         return static_cast<CVexDbEntity*>(new CVexDbRect({10, 10}, {20, 16}));
     },
     Type::TrackerRect,
     {20, 16},
     {25, 22}},
    {"polyline",
     [] {
         auto* const polyline = new CVexDbPolyline(0, nullptr);
         polyline->SetVertexes({{10, 10}, {15, 20}, {20, 20}}, false);
         polyline->SetBulgeAt(0, 0.25);
         return static_cast<CVexDbEntity*>(polyline);
     },
     Type::TrackerPolyline,
     {20, 20},
     {25, 22},
     true,
     true},
};

std::ostream& operator<<(std::ostream& out, const Kind& kind)
{
    return out << kind.name;
}

class EachKindTest : public ShapeTrackerTest, public testing::WithParamInterface<Kind> {
protected:
    EachKindTest()
    {
        CVexDbEntityTracker::m_Menu = makePopupMenus();
        entity = select(GetParam().make());
    }
    ~EachKindTest() override { CVexDbEntityTracker::m_Menu = CMenu(); }
    void dragGrip()
    {
        const auto [from, to] = std::pair(GetParam().sizingGrip, GetParam().to);
        drag(from, to);
    }
    int choose(unsigned id)
    {
        backend.chooseNext(id);
        const CVexGePoint2d at = GetParam().sizingGrip;
        return tracker().TrackMenu(&display, px(at.x, at.y));
    }

    CVexDbEntity* entity = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Kinds, EachKindTest, testing::ValuesIn(kKinds),
                         [](const auto& of) { return std::string(of.param.name); });

TEST_P(EachKindTest, HasATrackerOfItsOwn)
{
    EXPECT_EQ(GetParam().type, tracker().TrackType());
    EXPECT_TRUE(tracker().gripsShown());
    EXPECT_EQ((VexEntitySet{entity}), handler().selectedEntities());
}

TEST_P(EachKindTest, AClickOffTheGripsLeavesItPassive)
{
    releaseAt(1, 1);
    EXPECT_EQ(InputCancel, tracker().Track(&display, px(1, 39)));
    EXPECT_EQ(1u, backend.queued());
}

TEST_P(EachKindTest, EveryWayOutOfADragTakesBandAndCopyOff)
{
    std::vector<std::pair<int, std::function<void()>>> ways = {
        {InputCancel, [this] { press(VK_ESCAPE); }},
        {InputCancel, [this] { rightClick(); }},
        {InputString, [this] { type(L"x\n"); }},
        {InputLost, [] {}},
    };
    if (!GetParam().takesTyped) {
        ways.insert(ways.begin(), {{InputCancel, [this] { type(L"\n"); }},
                                   {InputTypedPoint, [this] { type(L"9,9\n"); }},
                                   {InputNumber, [this] { type(L"9\n"); }}});
    }
    const auto before = bytes();
    const std::size_t shown = leftOver().size();
    for (const auto& [result, leave] : ways) {
        const CVexGePoint2d at = GetParam().sizingGrip;
        moveAt(22, 23);
        leave();
        EXPECT_EQ(result, tracker().Track(&display, px(at.x, at.y)));
        EXPECT_EQ(shown, leftOver().size()) << result << ": the grips alone";
        EXPECT_TRUE(before == bytes()) << result;
        EXPECT_TRUE(undo().undoStack().empty()) << result;
        expectReleased();
    }
}

TEST_P(EachKindTest, ARepaintInTheMiddleOfADragLeavesNothingBehind)
{
    display.setHandler([this](const MSG& sent) {
        if (sent.message == WM_PAINT) {
            EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
            EXPECT_TRUE(bandsAmong(leftOver()).empty());
        }
        return LRESULT(0);
    });
    moveAt(22, 23);
    post(WM_PAINT);
    dragGrip();
    EXPECT_EQ(1, received(WM_PAINT));
    expectNothingLeftOver();
}

TEST_P(EachKindTest, ADragIsOneStepThatGoesBackAndForth)
{
    dragBackAndForth(GetParam().sizingGrip, GetParam().to);
    EXPECT_FALSE(undo().undoStack().back().continues);
    EXPECT_TRUE(undo().Undo());
    EXPECT_FALSE(undo().Undo()) << "one step";
}

TEST_P(EachKindTest, TheGripsFollowADrag)
{
    dragGrip();
    const CVexGePoint2d to = GetParam().to;
    EXPECT_GE(tracker().HitTest(px(to.x, to.y)), 0);
    EXPECT_TRUE(tracker().gripsShown());
    expectNothingLeftOver();
}

TEST_P(EachKindTest, OutsideTheDrawingItIsChangedWithoutARecord)
{
    const std::unique_ptr<CVexDbEntity> loose(GetParam().make());
    loose->setDatabase(database.get());
    handler().ClearTracker(true);
    const std::unique_ptr<CVexDbEntityTracker> grips(
        handler().CreateTracker(&display, loose.get(), VexDb::TransFormNone, false));
    const auto [from, to] = std::pair(GetParam().sizingGrip, GetParam().to);
    releaseAt(to.x, to.y);
    EXPECT_EQ(InputPoint, grips->Track(&display, px(from.x, from.y)));
    EXPECT_GE(grips->HitTest(px(to.x, to.y)), 0);
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_P(EachKindTest, ItsMenuOffersWhatCanBeDoneToIt)
{
    EXPECT_EQ(0, choose(0));
    ASSERT_EQ(1u, backend.shownMenus().size());
    std::vector<unsigned> enabled;
    for (const CMenu::Item& item : backend.shownMenus()[0].items()) {
        if (item.id != 0 && item.enabled) {
            enabled.push_back(item.id);
        }
    }
    std::vector<unsigned> expected = {kPopupUnSelect, kPopupCopy,      kPopupMove,
                                      kPopupRotate,   kPopupScale,     kPopupMirrorX,
                                      kPopupMirrorY,  kPopupMirrorLine};
    if (GetParam().type == Type::TrackerPolyline) {
        EXPECT_EQ(backend.shownMenus()[0].name(), L"Polyline");
        expected.insert(expected.end(), {kPopupExplode, kPopupErase, kPopupChangeStart,
                                         kPopupReverse, kPopupDivide, kPopupBreak, kPopupJoin,
                                         kPopupInsertVertex, kPopupDeleteVertex, kPopupLineArc});
    } else {
        EXPECT_EQ(backend.shownMenus()[0].name(), L"EntityPop");
        expected.push_back(kPopupErase);
        if (GetParam().isDivided) {
            expected.push_back(kPopupDivide);
        }
    }
    EXPECT_EQ(expected, enabled);
}

TEST_P(EachKindTest, ItsMenuCopiesIt)
{
    clickAt(30, 30);
    EXPECT_EQ(static_cast<int>(kPopupCopy), choose(kPopupCopy));
    const auto* const copy = static_cast<CVexDbEntity*>(database->lastEntity());
    ASSERT_NE(entity, copy);
    EXPECT_EQ(entity->classType(), copy->classType());
    EXPECT_EQ((std::vector<int>{kUndoCreate}), newestStep());
    EXPECT_TRUE(undo().Undo());
    EXPECT_FALSE(copy->isVisiable());
}

TEST_P(EachKindTest, EachChangeByItsMenuIsOneStepThatGoesBack)
{
    const std::pair<unsigned, std::function<void()>> rows[] = {
        {kPopupMove, [this] { clickAt(30.5, 30.25); }},
        {kPopupMove, [this] { type(L"30.5,31\n"); }},
        {kPopupRotate, [this] { type(L"30\n"); }},
        {kPopupScale, [this] { type(L"2\n"); }},
        {kPopupMirrorX, [] {}},
        {kPopupMirrorY, [] {}},
        {kPopupMirrorLine, [this] { type(L"30,31\n"); }},
        {kPopupErase, [] {}},
    };
    for (const auto& [id, answer] : rows) {
        const CVexDbRect before = entity->GetOutRect();
        answer();
        choose(id);
        ASSERT_EQ(1u, undo().undoStack().size()) << id;
        EXPECT_TRUE(undo().Undo()) << id;
        EXPECT_NEAR(0.0, entity->GetOutRect().LeftTop().distanceTo(before.LeftTop()), 0.011) << id;
        EXPECT_NEAR(0.0, entity->GetOutRect().RightBottom().distanceTo(before.RightBottom()), 0.011)
            << id;
        EXPECT_TRUE(entity->isVisiable());
    }
}

/// Each class is made in the ways of the base.
template <class Tracker>
class TrackerClassTest : public ShapeTrackerTest {
};
using TrackerClasses = testing::Types<CVexLineTracker, CVexArcTracker, CVexCircleTracker,
                                      CVexBoxTracker, CVexRectTracker, CVexPolylineTracker>;
TYPED_TEST_SUITE(TrackerClassTest, TrackerClasses);

TYPED_TEST(TrackerClassTest, KnowsItsTypeHoweverItIsMade)
{
    const Kind& kind = kKinds[std::is_same_v<TypeParam, CVexLineTracker>     ? 0
                              : std::is_same_v<TypeParam, CVexArcTracker>    ? 1
                              : std::is_same_v<TypeParam, CVexCircleTracker> ? 2
                              : std::is_same_v<TypeParam, CVexBoxTracker>    ? 3
                              : std::is_same_v<TypeParam, CVexRectTracker>   ? 4
                                                                             : 5];
    const std::unique_ptr<CVexDbEntity> entity(kind.make());
    entity->setDatabase(this->database.get());
    TypeParam ofWindow(&this->display);
    TypeParam ofDrawing(&this->display, this->database.get(), true);
    const TypeParam ofEntity(&this->display, entity.get(), VexDb::TransFormMove, true);
    for (const CVexDbEntityTracker* made :
         std::initializer_list<const CVexDbEntityTracker*>{&ofWindow, &ofDrawing, &ofEntity}) {
        EXPECT_EQ(kind.type, made->TrackType());
    }
    EXPECT_EQ(InputCancel, ofWindow.Track(&this->display, {0, 0}));
    EXPECT_EQ(VexDb::TransFormMove, ofEntity.transOpt());
}

TYPED_TEST(TrackerClassTest, WithoutAnEntityItIsABand)
{
    TypeParam band(&this->display, this->database.get(), true);
    band.SetStartPoint({5, 5}, true);
    this->moveAt(8, 8);
    this->clickAt(9, 9);
    EXPECT_EQ(InputPoint, band.Track(&this->display, {0, 0}));
    EXPECT_POINT(9.0, 9.0, this->lastPoint());
}

} // namespace
