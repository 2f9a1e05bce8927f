#include "tests/dbtracker/trackerfixture.h"

namespace {

/// Three selected lines.
class TrackerListTest : public TrackerTest {
protected:
    TrackerListTest()
    {
        for (const double y : {10.0, 20.0, 30.0}) {
            chosen.push_back(selectLine({10, y}, {20, y}));
        }
    }
    /// The entities of the trackers, in their order.
    [[nodiscard]] std::vector<CVexDbEntity*> listed()
    {
        std::vector<CVexDbEntity*> entities;
        for (const CVexDbEntityTracker* tracker : handler().trackers()) {
            entities.push_back(tracker->GetEntity());
        }
        return entities;
    }

    std::vector<CVexDbLine*> chosen;
};

TEST_F(TrackerListTest, TheOrderOfSelectingStaysWhenOneLeaves)
{
    handler().DeleteTracker(chosen[1]);
    EXPECT_EQ((std::vector<CVexDbEntity*>{chosen[0], chosen[2]}), listed());
    handler().DoDragEntity(chosen[1], {});
    EXPECT_EQ((std::vector<CVexDbEntity*>{chosen[0], chosen[2], chosen[1]}), listed());
    EXPECT_EQ(3u, handler().selectedEntities().size());
}

TEST_F(TrackerListTest, OneThatLeavesTwiceLeavesOnce)
{
    handler().DeleteTracker(chosen[1]);
    handler().DeleteTracker(chosen[1]);
    EXPECT_EQ(2u, handler().trackers().size());
    EXPECT_EQ(2u, handler().selectedEntities().size());
}

TEST_F(TrackerListTest, OfTwoForOneEntityTheFirstLeaves)
{
    auto* const twin = new CVexDbEntityTracker(&display, chosen[0], VexDb::TransFormNone, false);
    handler().AddTracker(twin);
    handler().DeleteTracker(chosen[0]);
    EXPECT_EQ((std::vector<CVexDbEntity*>{chosen[1], chosen[2], chosen[0]}), listed());
    EXPECT_EQ(twin, handler().trackers().back());
    handler().RemoveTracker(twin);
    EXPECT_EQ(2u, handler().trackers().size());
}

TEST_F(TrackerListTest, AForgottenEntityLosesAllItsTrackers)
{
    handler().AddTracker(new CVexDbEntityTracker(&display, chosen[0], VexDb::TransFormNone, false));
    handler().forgetEntity(chosen[0]);
    EXPECT_EQ((std::vector<CVexDbEntity*>{chosen[1], chosen[2]}), listed());
}

TEST_F(TrackerListTest, ATrackerThatIsGoneIsRemovedByNobody)
{
    CVexDbEntityTracker* const gone = handler().trackers().front();
    handler().DeleteTracker(chosen[0]);
    handler().RemoveTracker(gone);
    handler().RemoveTracker(nullptr);
    EXPECT_EQ(2u, handler().trackers().size());
}

TEST_F(TrackerListTest, WhatIsInvisibleIsDropped)
{
    chosen[0]->setInVisable();
    chosen[2]->setInVisable();
    handler().dropInvisible();
    EXPECT_EQ((std::vector<CVexDbEntity*>{chosen[1]}), listed());
    EXPECT_EQ(1u, handler().selectedEntities().size());
}

TEST_F(TrackerListTest, AnEmptiedSelectionCountsAsNone)
{
    for (CVexDbLine* line : chosen) {
        line->setErased();
    }
    type(L"\n");
    unsigned long step = 0;
    handler().DoCommand(VexDb::CmdMove, step);
    EXPECT_EQ(L"P35: ", line());
}

} // namespace
