#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbtracker/vexpolylinetracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgetol.h"

#include <cmath>

namespace {

constexpr unsigned long kByArcs = 100; // the step that begins with a three-point arc
constexpr double kFirstBulge = 0.1;    // until the first move
/// What bends no more is straight: the tracker's arc along a tangent, too, whose bulge is 0.001 but
/// for what rounding adds.
constexpr double kLeastBulge = 0.001 + 1e-8;
constexpr double kMeetingTol = 0.01; // of an arc's end and the vertex that it belongs to

} // namespace

/// A polyline vertex by vertex: the tracker works on one of two bands, a line and an arc, and what
/// is accepted becomes a segment.
class CVexCommandHandler::PolylineDialogue {
public:
    explicit PolylineDialogue(CVexCommandHandler& handler)
        : m_handler(handler), m_polyline(std::make_unique<CVexDbPolyline>(0, handler.m_database)),
          m_lineBand(handler.m_database), m_arcBand(handler.m_database),
          m_tracker(handler.m_display, &m_lineBand, VexDb::TransFormNone, true)
    {
        m_tracker.SetKeyWords(L"ALPUWO");
        m_tracker.SetBackground(&m_segments);
    }

    /// The new polyline, the caller's; null when it was given up or has no segment.
    CVexDbEntity* run(bool byArcs)
    {
        if (!begin(byArcs)) {
            return nullptr;
        }
        int result = InputPoint;
        while (result != InputEnter && result != InputCancel) {
            if (result == InputPoint) {
                takePoint(m_handler.m_database->lastPoint());
            } else if (result == InputKeyword) {
                result = takeKey(m_tracker.resBuffer().value.character);
            }
            result = result == InputEnter ? result : track();
        }
        // The accepted segments go off the screen; what becomes of them is the host's to draw.
        repaintSoon(m_handler);
        return result == InputEnter && last() > 0 ? handOver() : nullptr;
    }

private:
    bool begin(bool byArcs)
    {
        CVexGePoint2d start;
        if (!m_handler.askPoint(VexDb::PromptStartPoint, start)) {
            return false;
        }
        m_handler.m_database->setLastPoint(start);
        if (!byArcs) {
            return true;
        }
        CVexGePoint2d second;
        if (!isPlaced(m_handler.GetGePoint(VexDb::PromptSecondPoint, second, start, L'\0'))) {
            return false;
        }
        append(start);
        drawArcsFrom(start, CVexPolylineTracker::kSecondPoint);
        m_handler.m_database->setLastPoint(second);
        return true;
    }

    int track()
    {
        const int result = m_handler.trackFrom(m_tracker, m_from, m_prompt);
        return result == InputLost || m_handler.isInputLost() ? int(InputCancel) : result;
    }

    void takePoint(const CVexGePoint2d& point)
    {
        if (!m_isArc) {
            endLine(point);
        } else if (m_tracker.GetOption() == CVexPolylineTracker::kSecondPoint) {
            takeSecondPoint(point);
        } else {
            endArc(point);
        }
    }

    void endLine(const CVexGePoint2d& point)
    {
        append(point);
        if (last() > 0) {
            m_polyline->SetBulgeAt(last() - 1, 0.0);
            keepSegment(m_lineBand);
        }
        drawLinesFrom(point);
    }

    void takeSecondPoint(const CVexGePoint2d& point)
    {
        // Until the first move the arc ends beside its second point; on one line with it three
        // points are no arc.
        const CVexGePoint2d right = point + CVexGeVector2d::kXAxis;
        m_arcBand.set(m_from, point,
                      areOnOneLine(m_from, point, right) ? point + CVexGeVector2d::kYAxis : right);
        m_tracker.SetArcPoint(point);
        m_second = point;
        m_tracker.SetOption(CVexPolylineTracker::kThreePoints);
        m_prompt = VexDb::PromptEndPoint;
    }

    /// The arc is complete; the next one is drawn in the same way.
    void endArc(const CVexGePoint2d& point)
    {
        const bool isTangent = m_tracker.GetOption() == CVexPolylineTracker::kTangent;
        if (leadsTo(point) && (isTangent || !areOnOneLine(m_from, m_second, point))) {
            m_polyline->SetBulgeAt(last(), drawnBulge());
            keepSegment(m_arcBand);
        } else {
            showStraightTo(point);
            keepSegment(m_lineBand);
        }
        append(point);
        drawArcsFrom(point,
                     isTangent ? CVexPolylineTracker::kTangent : CVexPolylineTracker::kSecondPoint);
    }

    /// No arc leads to `end`, and the band is left as some arc of before: what is seen, and what
    /// the next arc goes on from, becomes the straight segment that is stored.
    void showStraightTo(const CVexGePoint2d& end)
    {
        m_tracker.DrawOrgEntity(); // the second time in XOR: off the screen
        m_lineBand.set(m_from, end);
        m_tracker.SetEntity(&m_lineBand);
        m_tracker.DrawOrgEntity();
    }

    [[nodiscard]] static bool meets(const CVexGePoint2d& a, const CVexGePoint2d& b)
    {
        return a.distanceTo(b) <= kMeetingTol;
    }

    /// Whether the arc band joins the last vertex and `end`, in either direction.
    [[nodiscard]] bool leadsTo(const CVexGePoint2d& end) const
    {
        const CVexGePoint2d first = m_arcBand.StartPoint();
        const CVexGePoint2d second = m_arcBand.EndPoint();
        return m_from.distanceTo(end) > kGeTol && ((meets(first, m_from) && meets(second, end)) ||
                                                   (meets(first, end) && meets(second, m_from)));
    }

    /// The bulge of the arc band from the last vertex on. An arc is stored counter-clockwise: one
    /// that does not start at the vertex runs clockwise.
    [[nodiscard]] double drawnBulge() const
    {
        const double size = m_arcBand.Bulge();
        if (!(std::fabs(size) > kLeastBulge)) {
            return 0.0;
        }
        return meets(m_arcBand.StartPoint(), m_from) ? size : -size;
    }

    /// What a key asks for: InputEnter ends the vertices, InputKeyword goes on.
    int takeKey(wchar_t key)
    {
        switch (key) {
        case L'A': drawArcsFrom(vertex(), CVexPolylineTracker::kTangent); break;
        case L'P': drawArcsFrom(vertex(), CVexPolylineTracker::kSecondPoint); break;
        case L'L':
            if (m_isArc) {
                drawLinesFrom(vertex());
            }
            break;
        case L'U': takeBack(); break;
        case L'O': m_polyline->SetClosed(true); return InputEnter;
        default: break; // W was never given a meaning: it is taken, and the band goes on
        }
        return InputKeyword;
    }

    /// Takes the last segment back. What is drawn next is as the segment before: a line, or an arc
    /// on from an arc.
    void takeBack()
    {
        if (m_segments.empty()) {
            if (m_tracker.GetOption() == CVexPolylineTracker::kThreePoints) {
                drawArcsFrom(vertex(), CVexPolylineTracker::kSecondPoint);
            }
            return;
        }
        m_tracker.SetEntity(m_segments.back().get());
        m_tracker.DrawOrgEntity(); // the second time in XOR: off the screen
        m_segments.pop_back();
        m_polyline->RemoveVertexAt(static_cast<int>(last()));
        m_polyline->SetBulgeAt(last(), 0.0);
        notePrevious();
        const bool isArc = !m_segments.empty() && m_segments.back()->classType() == VexDb::kArc;
        if (isArc) {
            drawArcsFrom(vertex(), CVexPolylineTracker::kTangent);
        } else {
            drawLinesFrom(vertex());
        }
    }

    void drawLinesFrom(const CVexGePoint2d& start)
    {
        m_isArc = false;
        m_lineBand.set(start, start + CVexGeVector2d(1.0, 0.0));
        m_tracker.SetOption(CVexPolylineTracker::kSecondPoint);
        goOnFrom(start, m_lineBand, VexDb::PromptPolylineLine);
    }

    void drawArcsFrom(const CVexGePoint2d& start, unsigned long option)
    {
        m_isArc = true;
        m_arcBand.set(start, start + CVexGeVector2d(1.0, 0.0), kFirstBulge);
        m_tracker.SetOption(option);
        goOnFrom(start, m_arcBand,
                 option == CVexPolylineTracker::kTangent ? VexDb::PromptPolylineArcNext
                                                         : VexDb::PromptPolylineArcFirst);
    }

    void goOnFrom(const CVexGePoint2d& start, CVexDbEntity& band, VexDb::PromptId prompt)
    {
        m_from = start;
        m_prompt = prompt;
        m_tracker.SetEntity(&band);
        m_handler.m_database->setLastPoint(start); // a second point that was dropped is none
    }

    /// The band as it was accepted stays on screen, and the next arc goes on from it.
    void keepSegment(CVexDbEntity& band)
    {
        m_segments.emplace_back(band.CopyEntity(true));
        notePrevious();
    }

    void notePrevious()
    {
        m_tracker.SetPrevEntity(m_segments.empty() ? nullptr : m_segments.back().get());
    }

    void append(const CVexGePoint2d& point) { m_polyline->AppendVertex(point, 0.0); }

    [[nodiscard]] unsigned last() const { return m_polyline->NumVerts() - 1; }
    [[nodiscard]] CVexGePoint2d vertex() const
    {
        CVexGePoint2d point;
        m_polyline->GetPointAt(last(), point);
        return point;
    }

    CVexDbEntity* handOver()
    {
        return m_handler.acceptMade(*m_polyline) ? m_polyline.release() : nullptr;
    }

    CVexCommandHandler& m_handler;
    std::unique_ptr<CVexDbPolyline> m_polyline;
    CVexDbLine m_lineBand;
    CVexDbArc m_arcBand;
    CVexPolylineTracker::Segments m_segments;
    bool m_isArc = false;
    CVexGePoint2d m_from;   // the start of the present segment
    CVexGePoint2d m_second; // of a three-point arc
    int m_prompt = VexDb::PromptPolylineLine;
    CVexPolylineTracker m_tracker; // goes first: it holds the others
};

CVexDbEntity* CVexCommandHandler::CommandPolyline(unsigned long& step)
{
    return PolylineDialogue(*this).run(step == kByArcs);
}

CVexDbEntity* CVexCommandHandler::CommandArcPolyline(unsigned long& step)
{
    step = kByArcs;
    return CommandPolyline(step);
}
