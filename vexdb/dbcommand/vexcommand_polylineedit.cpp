#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpolylineedits.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinesegment.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexselectiontracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgetol.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr wchar_t kYes = L'Y';
constexpr wchar_t kBreakKey = L'B';
constexpr unsigned kLeastFilleted = 3; // vertices
constexpr double kLeastRadius = 0.001; // drawing units
constexpr double kFilletTolerance = 0.1;

template <class Curve>
CVexDbPolyline* convert(const CVexDbEntity& source)
{
    return new CVexDbPolyline(static_cast<const Curve&>(source), true);
}

/// What can become a polyline.
struct Conversion {
    VexDb::ClassType type;
    CVexDbPolyline* (*make)(const CVexDbEntity& source);
};

constexpr std::array kConversions = {
    Conversion{VexDb::kLine, &convert<CVexDbLine>},
    Conversion{VexDb::kArc, &convert<CVexDbArc>},
};

/// A value for as long as a question waits.
template <class Value>
class Meanwhile {
public:
    Meanwhile(Value& place, Value value) : m_place(place), m_before(std::exchange(place, value)) {}
    ~Meanwhile() { m_place = m_before; }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;

private:
    Value& m_place;
    Value m_before;
};

/// A cursor for as long as a question waits that shows none of its own.
class CursorScope {
public:
    explicit CursorScope(VexCursor cursor) : m_before(SetCursor(cursor)) {}
    ~CursorScope() { SetCursor(m_before); }
    CursorScope(const CursorScope&) = delete;
    CursorScope& operator=(const CursorScope&) = delete;

private:
    VexCursor m_before;
};

/// The vertex that is nearer, along the segment that `point` is nearest to.
unsigned cornerNear(const CVexDbPolyline& polyline, const CVexGePoint2d& point)
{
    const CVexGePolyline2d& chain = polyline.gePolyline();
    int segment = 0;
    const CVexGePoint2d closest = chain.closestPointTo(point, segment, kGeEpsilon);
    const auto at = static_cast<unsigned>(segment);
    const auto whole = VexPolylineSegment::of(chain, at); // in the direction of travel
    const bool isNearStart = !whole || whole->along(closest) < whole->length() / 2.0;
    return isNearStart ? at : (at + 1) % chain.numVerts();
}

} // namespace

/// One polyline that is picked, converted where need be, and edited as a key says.
class CVexCommandHandler::PolylineEdit {
public:
    explicit PolylineEdit(CVexCommandHandler& handler) : m_handler(handler) {}

    /// The polyline, which stands in the drawing; null when none was picked.
    CVexDbEntity* run()
    {
        CVexDbEntity* picked = nullptr;
        if (m_handler.GetEntity(VexDb::PromptSelectEntities, picked, &m_pick) != InputPoint ||
            picked == nullptr || !take(*picked)) {
            return nullptr;
        }
        // No key at all means break, Escape too: the question has always been answered so.
        wchar_t key = L'\0';
        if (m_handler.GetKeyWord(VexDb::PromptPolylineEdit, L"OCBJF", key) != InputPoint) {
            key = kBreakKey;
        }
        if (!m_handler.isInputLost()) {
            act(key);
            finish();
        }
        return m_polyline;
    }

private:
    bool take(CVexDbEntity& picked)
    {
        if (picked.classType() == VexDb::kPolyline) {
            m_polyline = static_cast<CVexDbPolyline*>(&picked);
            return true;
        }
        const auto* const row =
            std::ranges::find(kConversions, picked.classType(), &Conversion::type);
        if (row == kConversions.end()) {
            MessageBoxW(L"Select Polyline, Line, Arc, Sprial, Spline", L"", MB_OK);
            return false;
        }
        // Only another key keeps the curve as it is: Enter converts it, and so does Escape, which
        // people press to leave the question at its default.
        wchar_t key = L'\0';
        const int result = m_handler.GetKeyWord(VexDb::PromptConvertToPolyline, L"YNyn", key);
        if (m_handler.isInputLost() || (result == InputPoint && key != kYes)) {
            return false;
        }
        m_polyline = row->make(picked);
        const VexUndoGroup step(m_handler.m_database->undoHandler());
        eraseRecorded(picked);
        addRecorded(m_polyline);
        return true;
    }

    void act(wchar_t key)
    {
        struct Row {
            wchar_t key;
            void (PolylineEdit::*act)();
        };
        static constexpr std::array kRows = {
            Row{L'O', &PolylineEdit::open},
            Row{L'C', &PolylineEdit::close},
            Row{kBreakKey, &PolylineEdit::breakApart},
            Row{L'J', &PolylineEdit::join},
            Row{L'F', &PolylineEdit::fillet},
        };
        const auto* const row = std::ranges::find(kRows, key, &Row::key);
        if (row != kRows.end()) {
            (this->*row->act)();
        }
    }

    void finish()
    {
        m_polyline->setGripPoints();
        m_polyline->OnCurveChanged();
        repaintSoon(m_handler);
    }

    void close() { closeRecorded(*m_polyline); }
    void open() { openRecorded(*m_polyline); }

    void breakApart()
    {
        CVexGePoint2d point;
        {
            const Meanwhile snapping(m_handler.m_database->settings().m_bGripSnap, true);
            if (!m_handler.askPoint(VexDb::PromptBreakPoint, point)) {
                return;
            }
        }
        const VexUndoGroup step(m_handler.m_database->undoHandler());
        addRecorded(
            m_handler.CommandBreakPolyline(m_polyline, m_polyline->IsVertex(point, kGeTol), true));
    }

    void join()
    {
        if (m_polyline->IsClosed()) {
            MessageBoxW(L"Can not join with Closed Polyline", L"", MB_OK);
            return;
        }
        VexEntitySet entities;
        if (m_handler.GetEntities(VexDb::PromptSelectEntities, &entities) == InputPoint &&
            !m_handler.isInputLost()) {
            m_handler.CommandJoinPolyline(m_polyline, entities, true);
        }
    }

    void fillet()
    {
        double radius = 0.0;
        if (m_polyline->NumVerts() >= kLeastFilleted && askRadius(radius)) {
            filletPicked(radius);
        }
    }

    /// The radius, measured from the corner that the polyline was picked at.
    bool askRadius(double& radius)
    {
        CVexGePoint2d corner;
        m_polyline->GetPointAt(cornerNear(*m_polyline, m_pick), corner);
        const CursorScope cross(m_handler.m_crossCursor);
        radius = m_handler.GetDistance(VexDb::PromptRadius, &corner);
        return radius > kLeastRadius && !m_handler.isInputLost();
    }

    /// Rounds corner after corner, until a pick goes beside the polyline, or all of them by a key.
    /// Each pick is an undo step. Return picks at the last point, as in every question for a point,
    /// and does not end this one; scripts repeat a corner by it.
    void filletPicked(double radius)
    {
        const Meanwhile picking(m_handler.m_crossCursor, _cursorSelect);
        CVexGePoint2d point;
        int result = askCorner(point);
        for (; result == InputPoint; result = askCorner(point)) {
            const unsigned corner = cornerNear(*m_polyline, point);
            m_polyline->Fillet(static_cast<int>(corner), radius, kFilletTolerance);
            m_polyline->setGripPoints();
            repaintNow(m_handler);
        }
        if (result == InputKeyword) {
            m_polyline->Fillet(radius);
        }
    }

    /// The place of a pick, an InputResult; InputLost for one beside the polyline, too.
    int askCorner(CVexGePoint2d& point)
    {
        const int result = m_handler.GetGePoint(VexDb::PromptFilletPoint, point, L"A");
        const bool picks = result == InputPoint;
        return picks && (m_handler.isInputLost() || !isNear(point)) ? int(InputLost) : result;
    }

    /// Within the pick box, whose size is not brought to drawing units here: who fillets corner
    /// after corner points roughly, and beside the polyline means at a distance from it.
    [[nodiscard]] bool isNear(const CVexGePoint2d& point) const
    {
        CVexDbDatabase& drawing = *m_handler.m_database;
        const CVexDbDisplayTableRecord* const view = drawing.displays().getCurrentRecord();
        return view != nullptr && m_polyline->gePolyline().distanceTo(point) <=
                                      drawing.settings().m_nPickBox * view->xScale();
    }

    CVexCommandHandler& m_handler;
    CVexDbPolyline* m_polyline = nullptr; // the drawing's
    CVexGePoint2d m_pick;
};

CVexDbEntity* CVexCommandHandler::CommandPolylineedit(unsigned long& /*step*/)
{
    ClearTracker(false);
    return PolylineEdit(*this).run();
}
