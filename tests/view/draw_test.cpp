#include "tests/view/viewfixture.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/vexdbcolortable.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/vexdbpagemapping.h"

#include <algorithm>
#include <vector>

namespace {

using Kind = VexStroke::Kind;

class DrawTest : public ViewTest {
protected:
    std::vector<Kind> kinds() const
    {
        std::vector<Kind> found;
        for (const VexStroke& stroke : dc.strokes()) {
            found.push_back(stroke.kind);
        }
        return found;
    }
};

/// Grips of a selected entity, as a stroke that no entity makes.
class PixelTracker : public CVexDbEntityTracker {
public:
    PixelTracker() : CVexDbEntityTracker(nullptr) {}
    void DrawGripBox(bool) override { getDC()->SetPixel(0, 0, RGB(1, 2, 3)); }
};

} // namespace

TEST_F(DrawTest, EntitiesThenGridThenTrackersThenOneBlockToTheWindow)
{
    show();
    settings().m_bGridVisible = true;
    settings().m_dGridStep = 1000.0; // one grid line each way, on the axes
    addLine({10.0, 10.0}, {20.0, 10.0});
    database->commandHandler().AddTracker(new PixelTracker);
    record->Draw(&dc);
    // The block comes first in the window's record; what the buffer holds follows it.
    EXPECT_EQ((std::vector{Kind::kBlit, Kind::kFill, Kind::kLine, Kind::kLine, Kind::kLine,
                           Kind::kLine, Kind::kLine, Kind::kPixel}),
              kinds());
    EXPECT_EQ((std::vector{CPoint(10, 287), CPoint(20, 287)}), dc.strokes()[2].points);
    EXPECT_EQ(static_cast<int>(SRCCOPY), dc.strokes()[0].rop);
    EXPECT_EQ((std::vector{CPoint(0, 0), CPoint(420, 297)}), dc.strokes()[0].points);
}

TEST_F(DrawTest, TheBufferTakesTheBackgroundOfTheWindowAndStaysInTheDatabase)
{
    show();
    dc.SetBkColor(RGB(10, 20, 30));
    COLORREF seen = 0;
    const CDC* drawnOn = nullptr;
    addProbe([&](CDC* memory) {
        seen = memory->GetBkColor();
        drawnOn = memory;
    });
    record->Draw(&dc);
    EXPECT_EQ(RGB(10, 20, 30), seen);
    ASSERT_NE(nullptr, database->buffer());
    EXPECT_NE(&dc, drawnOn);
    EXPECT_EQ(RGB(10, 20, 30), dc.strokes()[1].color); // the cleared buffer
}

TEST_F(DrawTest, EntitiesAreDrawnInTheOrderOfTheirCreation)
{
    show();
    std::vector<int> order;
    std::vector<ProbeEntity*> probes;
    for (int i = 0; i < 3; ++i) {
        probes.push_back(
            new ProbeEntity(database.get(), [&order, i](CDC*) { order.push_back(i); }));
    }
    add(probes[2]);
    add(probes[0]);
    add(probes[1]);
    record->DrawEntities(&dc);
    EXPECT_EQ((std::vector{0, 1, 2}), order);
}

TEST_F(DrawTest, WhatIsNotVisibleIsNotDrawn)
{
    show();
    int drawn = 0;
    addProbe([&](CDC*) { ++drawn; })->setInVisable();
    addProbe([&](CDC*) { ++drawn; })->setErased();
    addProbe([&](CDC*) { ++drawn; });
    record->DrawEntities(&dc);
    EXPECT_EQ(1, drawn);
}

TEST_F(DrawTest, APassSeesTheSetAsItStoodAtItsStart)
{
    show();
    std::vector<char> order;
    ProbeEntity* second = nullptr;
    addProbe([&](CDC*) {
        order.push_back('a');
        record->removeEntity(second->objectId());
        addProbe([&](CDC*) { order.push_back('d'); });
    });
    second = addProbe([&](CDC*) { order.push_back('b'); });
    addProbe([&](CDC*) { order.push_back('c'); });
    record->DrawEntities(&dc);
    EXPECT_EQ((std::vector{'a', 'c'}), order);
}

TEST_F(DrawTest, VisibleOnlyDrawsWhatTheWindowCrossesAndLosesNothing)
{
    show();
    addLine({10.0, 10.0}, {20.0, 20.0});
    addLine({410.0, 10.0}, {430.0, 10.0}); // half out
    addLine({500.0, 10.0}, {510.0, 10.0});
    record->setVisibleOnly(true);
    record->DrawEntities(&dc);
    EXPECT_EQ(2u, dc.strokes().size());
    EXPECT_EQ(3u, record->displayedIdSet()->size());
    record->PanWindow(&dc, 40000, 0);
    dc.clear();
    record->DrawEntities(&dc);
    EXPECT_EQ(2u, dc.strokes().size()); // the half and the far one
}

TEST_F(DrawTest, VisibleOnlyGoesByTheTrueWindowAndNotByWholeUnits)
{
    showSquare({0, 0, 10, 10}, 100);
    record->PanWindow(&dc, 50, 0); // half a unit: 0.5 to 10.5
    addLine({10.2, 1.0}, {10.2, 2.0});
    addLine({0.2, 1.0}, {0.2, 2.0});
    record->setVisibleOnly(true);
    dc.clear();
    record->DrawEntities(&dc);
    ASSERT_EQ(1u, dc.strokes().size());
    EXPECT_EQ(97, dc.strokes()[0].points[0].x);
}

TEST_F(DrawTest, PaperShowsEveryEntityInColour255WithoutChangingOne)
{
    show();
    std::optional<int> seen;
    ProbeEntity* probe = addProbe([&](CDC*) { seen = database->drawPass().colorIndex; });
    const CVexDbObjectId color = probe->ColorId();
    const int colors = database->colors().size();
    CVexRecordingDC printer;
    printer.setPrinting(true);
    record->MakeUpDisplayWindow(&printer);
    record->Draw(&printer);
    EXPECT_EQ(255, seen);
    EXPECT_FALSE(database->drawPass().colorIndex.has_value());
    EXPECT_EQ(color, probe->ColorId());
    EXPECT_EQ(colors, database->colors().size());
    record->Draw(&dc);
    EXPECT_FALSE(seen.has_value());
}

TEST_F(DrawTest, AColourThatTheProgramAskedForHoldsOnPaperToo)
{
    show();
    std::optional<int> seen;
    addProbe([&](CDC*) { seen = database->drawPass().colorIndex; });
    CVexRecordingDC printer;
    printer.setPrinting(true);
    const CVexDbDrawPassScope mono(database->drawPass(), 7);
    record->DrawEntities(&printer);
    EXPECT_EQ(7, seen);
    record->DrawEntities(&dc);
    EXPECT_EQ(7, seen);
}

TEST_F(DrawTest, APrintedLineHasTheColourOfItsLayer)
{
    show();
    CVexDbLine* line = addLine({10.0, 10.0}, {20.0, 10.0});
    line->setLayer(CString(L"PipeLine")); // red
    line->setColor(3, false);             // green
    CVexRecordingDC printer;
    printer.setPrinting(true);
    record->MakeUpDisplayWindow(&printer);
    record->Draw(&printer);
    ASSERT_EQ(2u, printer.strokes().size());
    EXPECT_EQ(Kind::kFill, printer.strokes()[0].kind);
    EXPECT_EQ(RGB(255, 255, 255), printer.strokes()[0].color);
    EXPECT_EQ(RGB(255, 0, 0), printer.strokes()[1].color);
    record->Draw(&dc);
    EXPECT_EQ(RGB(0, 255, 0), dc.strokes().back().color);
}

TEST_F(DrawTest, PaperIsClearedAsAWholeUnderAMappingOfTheProgramsOwn)
{
    show();
    CVexRecordingDC printer({1000, 800});
    printer.setPrinting(true);
    setPageMapping(printer, {5000.0, 5000.0}, 1.0);
    record->Draw(&printer);
    ASSERT_EQ(1u, printer.strokes().size());
    EXPECT_EQ((std::vector{CPoint(0, 0), CPoint(1000, 800)}), printer.strokes()[0].points);
}

TEST_F(DrawTest, DrawingChangesNoSavedSetting)
{
    show();
    addLine({10.0, 10.0}, {500.0, 10.0});
    settings().m_bGridVisible = true;
    record->setVisibleOnly(true);
    CMemFile before, after;
    settings().save(before);
    record->Draw(&dc);
    record->HighlightDraw(&dc);
    settings().save(after);
    before.Close();
    after.Close();
    EXPECT_EQ(VexDbDrawingSettings_tag::kFileSize, before.bytes().size());
    EXPECT_EQ(before.bytes(), after.bytes());
}

TEST_F(DrawTest, OneEntityIsDrawnOnTheViewsContext)
{
    show();
    CVexDbObject* line = addLine({1.0, 0.0}, {5.0, 0.0});
    record->DrawEntity(line);
    EXPECT_EQ((std::vector{CPoint(1, 297), CPoint(5, 297)}), dc.strokes().at(0).points);
    CVexDbObject* none = nullptr;
    record->DrawEntity(none);
    EXPECT_EQ(1u, dc.strokes().size());
}

TEST_F(DrawTest, WithoutAContextOrAViewNothingIsDrawn)
{
    addProbe([](CDC*) { FAIL(); });
    record->Draw(nullptr);
    record->DrawEntities(nullptr);
    record->DrawGrid(nullptr);
    record->HighlightDraw(nullptr);
    record->Draw(&dc);
    record->HighlightDraw(&dc);
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(DrawTest, HighlightsAreDottedOverThePictureInOneBlock)
{
    show();
    addLine({10.0, 10.0}, {20.0, 10.0})->setColor(3, false);
    record->HighlightDraw(&dc);
    EXPECT_EQ(Kind::kBlit, dc.strokes().front().kind);
    const VexStroke& stroke = dc.strokes().back();
    EXPECT_EQ((std::vector{CPoint(10, 287), CPoint(20, 287)}), stroke.points);
    EXPECT_EQ(PS_DOT, stroke.penStyle);
    EXPECT_EQ(1, stroke.penWidth);
    EXPECT_EQ(RGB(0, 255, 0), stroke.color);
}

TEST_F(DrawTest, HighlightsOfVisibleOnlyLoseNothingEither)
{
    show();
    addLine({10.0, 10.0}, {20.0, 20.0});
    addLine({500.0, 10.0}, {510.0, 10.0});
    record->setVisibleOnly(true);
    record->HighlightDraw(&dc);
    EXPECT_EQ(1, std::ranges::count(kinds(), Kind::kLine));
    EXPECT_EQ(2u, record->displayedIdSet()->size());
}
