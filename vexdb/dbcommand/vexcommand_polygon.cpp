// The commands that make closed polylines of equal parts: polygon, star.

#include "platform/base/vextext.h"
#include "vexdb/dbcommand/vexcreation.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbtracker/vexpolylinetracker.h"

#include <numbers>

namespace {

constexpr int kUsualSides = 4;
constexpr int kUsualArms = 5;
constexpr int kMostArms = 100'000; // a number beyond is a slip of the hand, and fills the memory
constexpr wchar_t kInscribedKey = L'I';

/// The number that a text begins with; `usual` for no text.
int countOf(const CString& text, int usual)
{
    return text.IsEmpty() ? usual : toInteger(text.str());
}

/// The tips lie on `outer`, the corners between them on `inner`; all in the centre for 0.
std::vector<CVexGePoint2d> starAround(const CVexGePoint2d& centre, int arms, double inner,
                                      double outer)
{
    const double step = 2.0 * std::numbers::pi / arms;
    std::vector<CVexGePoint2d> points;
    for (int i = 0; i < arms; ++i) {
        points.push_back(centre + CVexGeVector2d(i * step) * outer);
        points.push_back(inner > 0.0 ? centre + CVexGeVector2d(i * step + step / 2.0) * inner
                                     : centre);
    }
    return points;
}

} // namespace

/// Where a polygon stands and which way it is drawn: `step` becomes the way, an option word of the
/// tracker. False for a cancel.
bool CVexCommandHandler::askPolygon(CVexGePoint2d& point, unsigned long& step)
{
    const int result = GetGePoint(VexDb::PromptPolygonCenter, point, L"E");
    if (result == InputKeyword) {
        step = CVexPolylineTracker::kByEdge;
        return askPoint(VexDb::PromptEdgeStart, point);
    }
    if (result == InputCancel || isInputLost()) {
        return false;
    }
    // Everything but the one key means circumscribed, Return and Escape too.
    wchar_t key = L'\0';
    const int answered = GetKeyWord(VexDb::PromptPolygonMode, L"IO", key);
    step = answered == InputPoint && key == kInscribedKey ? CVexPolylineTracker::kInscribed
                                                          : CVexPolylineTracker::kCircumscribed;
    return !isInputLost();
}

CVexDbEntity* CVexCommandHandler::CommandPolygon(unsigned long& step)
{
    CString text;
    CVexGePoint2d point;
    if (GetString(VexDb::PromptSideCount, text) == InputCancel || isInputLost() ||
        !askPolygon(point, step)) {
        return nullptr;
    }
    // A count that the option word cannot hold is no polygon, as one below 3 is none.
    const int sides = countOf(text, kUsualSides);
    const bool fits = sides >= 0 && sides <= CVexPolylineTracker::kMostSides;
    Creation<CVexDbPolyline, CVexPolylineTracker> polygon(
        *this, std::make_unique<CVexDbPolyline>(0, m_database));
    polygon.tracker().SetOption(step + (fits ? static_cast<unsigned long>(sides) : 0));
    const int result = polygon.track(
        point, step == CVexPolylineTracker::kByEdge ? VexDb::PromptEdgeEnd : VexDb::PromptRadius);
    if (result == InputCancel || polygon->NumVerts() == 0) {
        return nullptr;
    }
    polygon->SetClosed(true);
    polygon.showAnew(); // the closing side was not drawn yet
    return polygon.handOver();
}

CVexDbEntity* CVexCommandHandler::CommandPolyStar(unsigned long& /*step*/)
{
    CString text;
    CVexGePoint2d centre;
    if (GetString(VexDb::PromptArmCount, text) == InputCancel ||
        !askPoint(VexDb::PromptCenterPoint, centre)) {
        return nullptr;
    }
    const int arms = countOf(text, kUsualArms);
    const double inner = GetDistance(VexDb::PromptInnerRadius, &centre);
    if (isInputLost()) {
        return nullptr;
    }
    const double outer = GetDistance(VexDb::PromptOuterRadius, &centre);
    if (!(outer > 0.0) || arms < 1 || arms > kMostArms) {
        return nullptr;
    }
    auto star = std::make_unique<CVexDbPolyline>(0, m_database);
    star->SetVertexes(starAround(centre, arms, inner, outer), true);
    return acceptMade(*star) ? star.release() : nullptr;
}
