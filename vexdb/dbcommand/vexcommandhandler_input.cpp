#include "platform/base/vextext.h"
#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexfoldedkey.h"
#include "vexdb/dbcommand/vexgridsnap.h"
#include "vexdb/dbcommand/vexinputscope.h"
#include "vexdb/dbcommand/vexprimitive.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/vexdbdatabase.h"

#include <numbers>
#include <string>

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

/// Waits for a point by mouse, by "x,y" in the message line, or for a key.
class PointInput : public VexPrimitive {
public:
    PointInput(CVexCommandHandler& handler, CWnd& window, CDC* dc, CVexGePoint2d& point,
               const CString& keys, wchar_t& key)
        : VexPrimitive(handler, window, InputPoint), m_dc(dc), m_point(point), m_keys(keys),
          m_key(key)
    {
    }

    void takeOff() override
    {
        m_hidden = handler().isBlipDrawn();
        handler().CheckBlipDraw(m_blip);
        if (m_dc != nullptr) {
            m_dc->SetROP2(R2_COPYPEN); // who paints now knows nothing of a blip
        }
    }
    void putBack() override
    {
        if (m_dc != nullptr) {
            m_dc->SetROP2(R2_XORPEN);
        }
        if (m_hidden) {
            CVexGePoint2d snapped;
            handler().CheckSnapPoint(m_blip, m_cursor, snapped);
        }
    }
    /// The blip goes before the raster operation does.
    void end() { handler().CheckBlipDraw(m_blip); }
    /// Return came with a text in the line that is no point.
    [[nodiscard]] bool refusedText() const { return m_refusedText; }

protected:
    VexVerdict onKey(unsigned key) override
    {
        if (key == VK_F4) {
            bool& gripSnap = database().settings().m_bGripSnap;
            gripSnap = !gripSnap;
            return VexVerdict::kSwallow;
        }
        if (!isEndKey(key)) {
            return VexVerdict::kTranslate;
        }
        takeLine();
        return VexVerdict::kSwallow;
    }

    VexVerdict onCharacter(const MSG& message) override
    {
        const wchar_t folded = foldedKey(static_cast<wchar_t>(message.wParam));
        if (m_keys.Find(folded) >= 0) {
            m_key = folded;
            answer(InputKeyword);
        } else {
            handler().CheckSnapChar(folded);
        }
        // The host echoes it; this input swallows the message itself.
        window().SendMessage(WM_CHAR, message.wParam, message.lParam);
        return VexVerdict::kSwallow;
    }

    VexVerdict onOther(const MSG& message) override
    {
        if (message.message == WM_RBUTTONDOWN) {
            answer(InputCancel);
            return VexVerdict::kSwallow;
        }
        if (message.message != WM_MOUSEMOVE && !isPress(message)) {
            return VexVerdict::kDispatch;
        }
        if (isInside(message)) {
            follow(message);
        }
        return VexVerdict::kSwallow;
    }

private:
    void takeLine()
    {
        handler().takeInputText();
        if (!handler().getInputValue(m_point)) {
            m_refusedText = !handler().getInputValue().IsEmpty();
            m_point = database().lastPoint();
        }
        answer(InputPoint);
    }

    void follow(const MSG& message)
    {
        CPoint device = pointOfLParam(message.lParam);
        window().SendMessage(WM_VEX_COORDINATE, reinterpret_cast<WPARAM>(&device), 0);
        const CVexDbDisplayTableRecord* view = database().displays().getCurrentRecord();
        if (view == nullptr) {
            return;
        }
        m_cursor = view->GetLogicalPoint(device);
        CVexGePoint2d snapped;
        const bool isSnapped = handler().CheckSnapPoint(m_blip, m_cursor, snapped);
        m_point = isSnapped ? snapped : m_cursor;
        if (!isPress(message)) {
            return;
        }
        const VexDbDrawingSettings_tag& settings = database().settings();
        if (settings.m_bGridSnap && !isSnapped) {
            m_point = roundedToGrid(m_point, settings.m_dGridStep);
        }
        answer(InputPoint);
    }

    CDC* m_dc;
    CVexGePoint2d& m_point;
    const CString& m_keys;
    wchar_t& m_key;
    CVexGePoint2d m_cursor;
    CVexGePoint2d m_blip;
    bool m_hidden = false;
    bool m_refusedText = false;
};

} // namespace

CDC* CVexCommandHandler::viewContext() const
{
    const CVexDbDisplayTableRecord* view =
        m_database == nullptr ? nullptr : m_database->displays().getCurrentRecord();
    if (view == nullptr || (view->getView() != nullptr && !CWnd::isLiving(view->getView()))) {
        return nullptr; // the context went with its window
    }
    return view->GetCurrentDC();
}

/// Whether an input may wait: somebody looks at a window of some size, and the command goes on.
bool CVexCommandHandler::canAsk() const
{
    const CWnd* display = GetDispWindow();
    if (m_inputLost || display == nullptr || m_database == nullptr ||
        m_database->displays().getCurrentRecord() == nullptr) {
        return false;
    }
    CRect client;
    display->GetClientRect(client);
    return !client.IsRectEmpty();
}

bool CVexCommandHandler::askBy(int prompt)
{
    if (isInputLost()) {
        return false;
    }
    SetPrompt(prompt);
    return canAsk();
}

int CVexCommandHandler::GetGePoint(int prompt, CVexGePoint2d& point)
{
    return GetGePoint(prompt, point, CString());
}

bool CVexCommandHandler::askPoint(int prompt, CVexGePoint2d& point)
{
    return GetGePoint(prompt, point) == InputPoint && !isInputLost();
}

int CVexCommandHandler::GetGePoint(int prompt, CVexGePoint2d& point, const CString& keys)
{
    wchar_t key = 0;
    return GetGePoint(prompt, point, keys, key);
}

int CVexCommandHandler::GetGePoint(int prompt, CVexGePoint2d& point, const CString& keys,
                                   wchar_t& key)
{
    const VexBusyScope busy(*this);
    if (!askBy(prompt)) {
        return InputCancel;
    }
    PointInput input(*this, *m_display, viewContext(), point, keys, key);
    VexInputScope scope(*this, *m_display);
    scope.showCursor(m_crossCursor);
    scope.setRaster(viewContext(), R2_XORPEN);
    scope.clearSnaps();
    runPump(*this, *m_display, input);
    input.end();
    noteAnswer(input.refusedText() ? InputString : input.result());
    return input.result();
}

int CVexCommandHandler::GetGePoint(int prompt, CVexGePoint2d& point, const CVexGePoint2d& base,
                                   wchar_t key)
{
    const VexBusyScope busy(*this);
    CVexDbEntityTracker tracker(m_display, m_database, true);
    const std::wstring keys(key == L'\0' ? 0 : 1, key);
    tracker.SetKeyWords(keys.c_str());
    const int result = trackFrom(tracker, base, prompt);
    if (result == InputPoint || result == InputTypedPoint) {
        point = m_database->lastPoint();
    }
    return result;
}

int CVexCommandHandler::GetGePoint(CVexGePoint2d& first, CVexGePoint2d& second)
{
    const VexBusyScope busy(*this);
    const int result = GetGePoint(VexDb::PromptCornerOne, first);
    return result == InputPoint ? GetGePoint(VexDb::PromptOtherCorner, second, first, L'\0')
                                : result;
}

int CVexCommandHandler::trackFrom(CVexDbEntityTracker& tracker, const CVexGePoint2d& start,
                                  int prompt)
{
    if (!canAsk()) {
        return InputCancel;
    }
    tracker.SetStartPoint(start, true);
    SetPrompt(prompt);
    const int result = tracker.Track(m_display, CPoint());
    noteAnswer(result);
    return result;
}

/// Copies what a tracker leaves, the text too: that of the record goes with its tracker.
void CVexCommandHandler::keepResult(int result, const Return_Struct& record)
{
    m_result = Return_Struct();
    m_result.type = result;
    if (result == InputString) {
        m_resultText = record.value.text == nullptr ? L"" : record.value.text;
        m_result.value.text = m_resultText.data();
    } else if (result == InputNumber || result == InputTypedPoint || result == InputKeyword) {
        m_result.value = record.value;
    }
}

/// What GetDistance and GetAngle share: the base, asked for when null, and a band from it.
int CVexCommandHandler::measure(int prompt, const CVexGePoint2d* base, CVexGePoint2d& from)
{
    const VexBusyScope busy(*this);
    const int asked = prompt == 0 ? VexDb::PromptFirstPoint : prompt;
    if (base != nullptr) {
        from = *base;
    } else if (GetGePoint(asked, from) == InputCancel) {
        return InputCancel;
    }
    CVexDbEntityTracker tracker(m_display, m_database, true);
    const int result =
        trackFrom(tracker, from, base == nullptr ? int(VexDb::PromptNextPoint) : asked);
    keepResult(result, tracker.resBuffer());
    return result;
}

double CVexCommandHandler::typedNumber(int result) const
{
    return result == InputNumber ? m_result.value.number : toNumber(m_resultText);
}

double CVexCommandHandler::distanceOf(int result, const CVexGePoint2d& from,
                                      CVexGePoint2d& end) const
{
    switch (result) {
    case InputPoint: end = m_database->lastPoint(); return from.distanceTo(end);
    case InputNumber:
    case InputString: return typedNumber(result);
    default: return -1.0; // a typed point too: only a click measures
    }
}

double CVexCommandHandler::GetDistance(int prompt, const CVexGePoint2d* base)
{
    CVexGePoint2d end;
    return GetDistance(prompt, base, end);
}

double CVexCommandHandler::GetDistance(int prompt, const CVexGePoint2d* base, CVexGePoint2d& end)
{
    CVexGePoint2d from;
    return distanceOf(measure(prompt, base, from), from, end);
}

double CVexCommandHandler::GetDistance(CVexGePoint2d& base, CVexGePoint2d& end)
{
    return distanceOf(measure(VexDb::PromptFirstPoint, nullptr, base), base, end);
}

double CVexCommandHandler::GetAngle(int prompt, const CVexGePoint2d* base)
{
    CVexGePoint2d from;
    const int result = measure(prompt, base, from);
    switch (result) {
    case InputPoint: return from.angleTo(m_database->lastPoint());
    case InputNumber:
    case InputString: return typedNumber(result) * kRadiansPerDegree;
    default: return 0.0;
    }
}
