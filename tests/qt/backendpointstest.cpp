#include "platform/headless/vexrecordingdc.h"
#include "platform/qt/vexqtbackend.h"
#include "platform/qt/vexqtimagedc.h"
#include "tests/qt/qtstrokes.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"

#include <gtest/gtest.h>

namespace {

using Kind = VexStroke::Kind;

/// A Qt context that notes the device points on their way to the painter.
class ListeningDC : public CVexQtImageDC {
public:
    using CVexQtImageDC::CVexQtImageDC;

    struct Heard {
        Kind kind;
        std::vector<CPoint> points;
        friend bool operator==(const Heard&, const Heard&) = default;
    };
    std::vector<Heard> heard;

protected:
    void deviceLine(CPoint from, CPoint to) override
    {
        heard.push_back({Kind::kLine, {from, to}});
        CVexQtImageDC::deviceLine(from, to);
    }
    void devicePolyline(std::span<const CPoint> points) override
    {
        heard.push_back({Kind::kPolyline, {points.begin(), points.end()}});
        CVexQtImageDC::devicePolyline(points);
    }
    void devicePolygon(std::span<const CPoint> points) override
    {
        if (!m_inRectangle) { // which comes to the painter as a polygon
            heard.push_back({Kind::kPolygon, {points.begin(), points.end()}});
        }
        CVexQtImageDC::devicePolygon(points);
    }
    void deviceRectangle(const CRect& rect) override
    {
        heard.push_back({Kind::kRectangle, {rect.TopLeft(), rect.BottomRight()}});
        m_inRectangle = true;
        CVexQtImageDC::deviceRectangle(rect);
        m_inRectangle = false;
    }
    void deviceFill(const CRect& rect, COLORREF color) override
    {
        heard.push_back({Kind::kFill, {rect.TopLeft(), rect.BottomRight()}});
        CVexQtImageDC::deviceFill(rect, color);
    }
    bool deviceBlit(const CRect& target, CDC& source, CPoint from, DWORD operation) override
    {
        heard.push_back({Kind::kBlit, {target.TopLeft(), target.BottomRight()}});
        return CVexQtImageDC::deviceBlit(target, source, from, operation);
    }
    void deviceEllipse(const CRect& rect) override
    {
        heard.push_back({Kind::kEllipse, {rect.TopLeft(), rect.BottomRight()}});
        CVexQtImageDC::deviceEllipse(rect);
    }
    void devicePixel(CPoint point, COLORREF color) override
    {
        heard.push_back({Kind::kPixel, {point}});
        CVexQtImageDC::devicePixel(point, color);
    }

private:
    bool m_inRectangle = false;
};

void mapYUp(CDC& dc)
{
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowOrg(-37, 11);
    dc.SetViewportOrg(3, 150);
    dc.SetWindowExt(317, 211);
    dc.SetViewportExt(200, -150);
}

struct MappingRow {
    const char* name;
    int mode;
    CSize window, viewport;
};

constexpr MappingRow kMappings[] = {
    {"a pixel a unit", MM_TEXT, {1, 1}, {1, 1}},
    {"y up", MM_ISOTROPIC, {317, 211}, {200, -150}},
    {"x and y turned", MM_ISOTROPIC, {317, 211}, {-200, -150}},
    {"turned by the window", MM_ISOTROPIC, {-317, -211}, {200, 150}},
    {"far out", MM_ISOTROPIC, {1, 1}, {7000000, -7000000}},
};

/// What one picture, mapped as the row tells, brought to a backend of each kind.
struct Brought {
    std::vector<ListeningDC::Heard> recorded;
    std::vector<ListeningDC::Heard> heard;
};

template <class Draw>
Brought broughtBy(const MappingRow& row, CPoint viewportOrg, Draw&& draw)
{
    CVexRecordingDC recording;
    QImage image = motley(200, 150);
    ListeningDC listening(image);
    for (CDC* dc : {static_cast<CDC*>(&recording), static_cast<CDC*>(&listening)}) {
        dc->SetMapMode(row.mode);
        dc->SetWindowOrg(-37, 11);
        dc->SetViewportOrg(viewportOrg.x, viewportOrg.y);
        dc->SetWindowExt(row.window);
        dc->SetViewportExt(row.viewport);
        draw(*dc);
    }
    Brought brought;
    for (const VexStroke& stroke : recording.strokes()) {
        brought.recorded.push_back({stroke.kind, stroke.points});
    }
    brought.heard = listening.heard;
    return brought;
}

TEST(BackendPointsTest, RecordingAndQtGetTheSameDevicePoints)
{
    for (const MappingRow& row : kMappings) {
        auto [recorded, heard] = broughtBy(row, {3, 150}, [&](CDC& dc) {
            const RandomStrokes strokes(42);
            strokes.draw(dc);
            const CBrush brush(RGB(1, 2, 3));
            dc.FillRect(CRect(90, 80, 10, 20), &brush);
            EXPECT_TRUE(dc.BitBlt(10, 20, -30, 40, &dc, 5, 5, SRCCOPY)) << row.name;
        });
        ASSERT_GT(recorded.size(), heard.size());
        recorded.resize(heard.size()); // behind it, what the recorded block brought
        EXPECT_EQ(62U, recorded.size()) << row.name;
        EXPECT_EQ(Kind::kBlit, recorded.back().kind) << row.name;
        EXPECT_EQ(recorded, heard) << row.name;
    }
}

TEST(BackendPointsTest, ArcsAndCirclesComeToTheSameDevicePoints)
{
    CVexDbDatabase drawing(false);
    CVexDbArc arc({0.3, -0.2}, 1.234, 5.5, 0.75);
    CVexDbCircle circle({0.006, 0.0}, 1.006); // its outline begins a unit off its start
    arc.setDatabase(&drawing);
    circle.setDatabase(&drawing);
    for (const MappingRow& row : kMappings) {
        const auto [recorded, heard] = broughtBy(row, {0, 0}, [&](CDC& dc) {
            arc.Draw(&dc);
            circle.Draw(&dc);
            dc.AngleArc(10, 20, 80, 30.0F, 200.0F);
        });
        ASSERT_GE(recorded.size(), 3U) << row.name;
        EXPECT_EQ(Kind::kPolyline, recorded.front().kind) << row.name;
        EXPECT_EQ(recorded, heard) << row.name;
    }
}

TEST(BackendPointsTest, FilledPolylineWithArcsComesToTheSameDevicePoints)
{
    CVexDbDatabase drawing(false);
    CVexDbPolyline polyline(0, &drawing);
    polyline.SetVertexes({{0.1, 0.2}, {2.5, 0.0}, {2.5, 1.7}, {0.0, 1.1}, {-0.4, 0.6}}, true);
    polyline.SetBulgeAt(1, 0.7);
    polyline.SetBulgeAt(3, -0.4);
    polyline.SetWidthsAt(4, 0.5, 0.5);
    polyline.SetFill(true);
    for (const MappingRow& row : kMappings) {
        const auto [recorded, heard] = broughtBy(row, {0, 0}, [&](CDC& dc) { polyline.Draw(&dc); });
        EXPECT_GT(recorded.size(), 40U) << row.name;
        EXPECT_EQ(Kind::kPolygon, recorded.back().kind) << row.name;
        EXPECT_EQ(recorded, heard) << row.name;
    }
}

TEST(BackendPointsTest, PixelOfAPointIsThePixelThatTheMappingNames)
{
    const auto dc = CVexQtImageDC::create(QSize(200, 150));
    mapYUp(*dc);
    CPoint device(100, 50);
    dc->LPtoDP(&device);
    dc->SetPixel(100, 50, RGB(250, 0, 0));
    EXPECT_EQ(RGB(250, 0, 0), dc->GetPixel({100, 50}));
    EXPECT_EQ(qRgb(250, 0, 0), dc->image()->pixel(device.x, device.y));
}

TEST(QtBackendTest, ImageContextHasPixelsAndMessagesStayScripted)
{
    CVexQtBackend backend;
    const auto dc = backend.createImageDC(CSize(160, 120));
    ASSERT_NE(nullptr, dc);
    EXPECT_EQ(0xffffffU, dc->GetPixel({159, 119}));
    EXPECT_EQ(0xffffffffU, dc->GetPixel({160, 119}));
    EXPECT_EQ(160, dc->GetDeviceCaps(HORZRES));
    EXPECT_EQ(nullptr, backend.createImageDC(CSize(0, 120)));
    backend.answerNext(IDCANCEL);
    EXPECT_EQ(IDCANCEL, backend.messageBox(CString(L"text"), CString(L"caption"), MB_OKCANCEL));
}

} // namespace
