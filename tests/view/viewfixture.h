#pragma once

#include "platform/headless/vexheadless.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbviewprocess.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>

/// An entity whose drawing a test supplies; no point hits it.
class ProbeEntity : public CVexDbEntity {
public:
    ProbeEntity(CVexDbDatabase* database, std::function<void(CDC*)> onDraw)
        : CVexDbEntity(database), m_onDraw(std::move(onDraw))
    {
        setClassType(VexDb::kLine);
    }
    using CVexDbEntity::Draw;
    using CVexDbEntity::operator=;
    void Draw(CDC* dc) override { m_onDraw(dc); }
    [[nodiscard]] int isOn(const CVexGePoint2d&, const double&) const override { return 0; }
    bool checkInsideOrCross(CVexGePoint2d&, CVexGePoint2d&) override { return true; }
    bool checkInside(CVexGePoint2d&, CVexGePoint2d&) override { return true; }
    bool intersectWith(CVexDbEntity&, int&, PointList&, Intersect, double) const override
    {
        return false;
    }
    bool intersectWith(const CVexGeEllipArc2d&, int&, PointList&, Intersect, double) const override
    {
        return false;
    }
    bool intersectWith(const CVexGeCircArc2d&, int&, PointList&, Intersect, double) const override
    {
        return false;
    }
    bool intersectWith(const CVexGeLine2d&, int&, PointList&, Intersect, double) const override
    {
        return false;
    }

private:
    std::function<void(CDC*)> m_onDraw;
};

/// A fresh drawing (limits 420 by 297) in a memory window of 420 by 297 pixels: 100 logical units,
/// one drawing unit, a pixel.
class ViewTest : public testing::Test {
protected:
    ViewTest()
    {
        CVexBackend::install(&backend);
        CVexDbViewProcess::current().reset();
        database = std::make_unique<CVexDbDatabase>(false);
        record = database->displays().getCurrentRecord();
    }
    ~ViewTest() override
    {
        database.reset();
        CVexBackend::install(nullptr);
    }

    /// Gives the view its window, made `size` large, and maps it.
    void show(CSize size = {420, 297})
    {
        window.resize(size);
        dc.resize(size);
        record->setView(&window, &dc);
        record->MakeUpDisplayWindow(&dc);
        dc.clear();
    }
    /// Shows `units` (whole drawing units) in a square window of `pixels`.
    void showSquare(CRect units, int pixels)
    {
        show({pixels, pixels});
        record->SetCurDispWin(CVexGePoint2d(units.left, units.top),
                              CVexGePoint2d(units.right, units.bottom));
        record->MakeUpDisplayWindow(&dc);
    }
    CVexDbLine* addLine(CVexGePoint2d start, CVexGePoint2d end)
    {
        auto* line = new CVexDbLine(database.get());
        line->setStartPoint(start);
        line->setEndPoint(end);
        add(line);
        return line;
    }
    ProbeEntity* addProbe(std::function<void(CDC*)> onDraw)
    {
        auto* probe = new ProbeEntity(database.get(), std::move(onDraw));
        add(probe);
        return probe;
    }
    void add(CVexDbEntity* entity)
    {
        CVexDbObjectId id;
        database->addEntity(entity, id);
    }
    VexDbDrawingSettings_tag& settings() { return database->settings(); }

    CVexHeadlessBackend backend;
    CVexMemoryWindow window{{420, 297}};
    CVexRecordingDC& dc = window.recording();
    std::unique_ptr<CVexDbDatabase> database;
    CVexDbDisplayTableRecord* record = nullptr;
};

inline std::ostream& operator<<(std::ostream& out, const CRect& rect)
{
    return out << "(" << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom
               << ")";
}
inline std::ostream& operator<<(std::ostream& out, const CPoint& point)
{
    return out << "(" << point.x << ", " << point.y << ")";
}
