#include "vexdb/dbcommand/vexcreation.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbtracker/vexarctracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/gemath/vexgevector2d.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
constexpr double kFirstSweep = 0.1; // radians, until the first move
constexpr wchar_t kRadiusKey = L'R';

/// Beyond a turn the same direction: an arc that runs over itself can be neither drawn nor trimmed.
double withinTurn(double radians)
{
    return std::fabs(radians) > kGeTwoPi ? std::fmod(radians, kGeTwoPi) : radians;
}

/// Where an arc drawn from `begin` ended. It is kept counter-clockwise whichever way it was drawn,
/// so that may be its start.
CVexGePoint2d drawnEnd(const CVexDbArc& arc, const CVexGePoint2d& begin)
{
    const bool reversed = arc.EndPoint().distanceTo(begin) < arc.StartPoint().distanceTo(begin);
    return reversed ? arc.StartPoint() : arc.EndPoint();
}

} // namespace

/// The ways to an arc. Each asks what it needs and gives the new arc, the caller's, or null. The
/// last point is then the arc's end, where a continuation begins.
class CVexCommandHandler::ArcDialogue {
public:
    explicit ArcDialogue(CVexCommandHandler& handler) : m_handler(handler) {}

    /// The ways by three points, centre or radius, as the keys tell; `step` gets the one taken.
    CVexDbEntity* byKeywords(unsigned long& step)
    {
        CVexGePoint2d point;
        const int result = m_handler.GetGePoint(VexDb::PromptArcStart, point, L"C");
        if (m_handler.isInputLost() || result == InputCancel) {
            return nullptr;
        }
        if (result == InputPoint) {
            step = CVexArcTracker::kThreePoints;
            return overPoints(point);
        }
        step = CVexArcTracker::kEndAngle;
        CVexGePoint2d center;
        return askCenter(center) ? startOrRadius(center, step) : nullptr;
    }

    CVexDbEntity* byThreePoints()
    {
        CVexGePoint2d first;
        return m_handler.askPoint(VexDb::PromptStartPoint, first) ? overPoints(first) : nullptr;
    }

    CVexDbEntity* byCenter()
    {
        CVexGePoint2d center;
        CVexGePoint2d start;
        if (!askCenter(center) ||
            !isPlaced(m_handler.GetGePoint(VexDb::PromptStartPoint, start, center, L'\0'))) {
            return nullptr;
        }
        return fromStart(center, start);
    }

    CVexDbEntity* byRadius()
    {
        CVexGePoint2d center;
        double radius = 0.0;
        if (!askCenter(center) || !askRadius(center, radius)) {
            return nullptr;
        }
        // An angle of 0 is a cancel here and not behind the key: hosts that force this way count
        // on a start angle that was really given.
        const double angle = askStartAngle(center);
        return angle > 0.0 ? turned(center, radius, angle, CVexArcTracker::kEndAngleByRadius)
                           : nullptr;
    }

    /// Tangentially on from `previous`, where the last point is.
    CVexDbEntity* onwards(CVexDbEntity& previous)
    {
        const CVexGePoint2d start = m_handler.m_database->lastPoint();
        NewArc arc(m_handler);
        arc->set(start, start + CVexGeVector2d(0.5, 0.5), start + CVexGeVector2d(1.5, 0.5));
        arc.tracker().SetOption(CVexArcTracker::kTangent);
        arc.tracker().SetPrevEntity(&previous);
        return ended(arc.trackPoint(start, VexDb::PromptEndPoint), arc, start);
    }

private:
    using NewArc = Creation<CVexDbArc, CVexArcTracker>;

    bool askCenter(CVexGePoint2d& center)
    {
        return m_handler.askPoint(VexDb::PromptCenterPoint, center);
    }

    bool askRadius(const CVexGePoint2d& center, double& radius)
    {
        radius = m_handler.GetDistance(VexDb::PromptRadius, &center);
        return radius > 0.0;
    }

    /// Radians; a point that is typed gives its direction as a click there does. 0 on a cancel.
    double askStartAngle(const CVexGePoint2d& center)
    {
        const double angle = m_handler.GetAngle(VexDb::PromptStartAngle, &center);
        return m_handler.resultBuffer().type == InputTypedPoint
                   ? center.angleTo(m_handler.resultBuffer().value.point)
                   : angle;
    }

    CVexDbEntity* overPoints(const CVexGePoint2d& first)
    {
        CVexGePoint2d second;
        if (!isPlaced(m_handler.GetGePoint(VexDb::PromptSecondPoint, second, first, L'\0'))) {
            return nullptr;
        }
        NewArc arc(m_handler);
        // Beside the chord: on one line with it three points are no arc.
        arc->set(first, second, second + (second - first).perpVector());
        arc.tracker().SetOption(CVexArcTracker::kThreePoints);
        arc.tracker().SetArcPoint(second);
        const int result = arc.trackPoint(first, VexDb::PromptEndPoint);
        if (isPlaced(result) && areOnOneLine(first, second, arc.tracker().GetPos())) {
            m_handler.refuse(L"Three points on one line make no arc.");
            return nullptr;
        }
        return ended(result, arc, first);
    }

    CVexDbEntity* ended(int result, NewArc& arc, const CVexGePoint2d& begin)
    {
        if (result == InputCancel) {
            return nullptr;
        }
        m_handler.m_database->setLastPoint(drawnEnd(arc.entity(), begin));
        return arc.handOver();
    }

    CVexDbEntity* startOrRadius(const CVexGePoint2d& center, unsigned long& step)
    {
        CVexGePoint2d start;
        const int result =
            m_handler.GetGePoint(VexDb::PromptArcCenterStart, start, center, kRadiusKey);
        if (isPlaced(result)) {
            return fromStart(center, start);
        }
        if (result != InputKeyword) {
            return nullptr;
        }
        step = CVexArcTracker::kEndAngleByRadius;
        double radius = 0.0;
        if (!askRadius(center, radius)) {
            return nullptr;
        }
        // 0 is as good an angle as any other here; only the answer itself tells a cancel from it.
        const double angle = askStartAngle(center);
        const int answer = m_handler.resultBuffer().type;
        return answer == InputCancel || answer == InputLost ? nullptr
                                                            : turned(center, radius, angle, step);
    }

    CVexDbEntity* fromStart(const CVexGePoint2d& center, const CVexGePoint2d& start)
    {
        const double radius = center.distanceTo(start);
        return radius > 0.0
                   ? turned(center, radius, center.angleTo(start), CVexArcTracker::kEndAngle)
                   : nullptr;
    }

    /// The arc round `center` from a start angle: its end angle is tracked, or typed in degrees.
    CVexDbEntity* turned(const CVexGePoint2d& center, double radius, double startAngle,
                         unsigned long option)
    {
        NewArc arc(m_handler);
        const double begin = withinTurn(startAngle);
        arc->set(center, radius, begin, begin + kFirstSweep);
        arc.tracker().SetOption(option);
        const int result = arc.track(center, VexDb::PromptEndAngle);
        if (result == InputCancel) {
            return nullptr;
        }
        if (const auto degrees = arc.typedNumber(result); degrees) {
            arc->setEndAngle(withinTurn(*degrees * kRadiansPerDegree));
            arc.tracker().DrawOrgEntity();
        } else if (result == InputTypedPoint) {
            arc.takeTypedPoint(); // towards which the arc ends, as by a click
        }
        m_handler.m_database->setLastPoint(arc->EndPoint());
        return arc.handOver();
    }

    CVexCommandHandler& m_handler;
};

CVexDbEntity* CVexCommandHandler::CommandArc(unsigned long& step)
{
    ArcDialogue dialogue(*this);
    switch (step) {
    case CVexArcTracker::kThreePoints: return dialogue.byThreePoints();
    case CVexArcTracker::kEndAngle: return dialogue.byCenter();
    case CVexArcTracker::kEndAngleByRadius: return dialogue.byRadius();
    case CVexArcTracker::kTangent:
        // One that was undone is not there to go on from.
        if (m_lastEntity != nullptr && !m_lastEntity->isErased()) {
            return dialogue.onwards(*m_lastEntity);
        }
        step = 0;
        [[fallthrough]];
    default: return dialogue.byKeywords(step);
    }
}
