// What the program offers for curves beside the numbered commands: parallels and fills.

#include "platform/base/vextext.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"

#include <cmath>
#include <list>
#include <memory>
#include <vector>

namespace {

using Made = std::vector<std::unique_ptr<CVexDbEntity>>;

/// The parallels of `curve` on the side of `side`: a polyline may fall apart into several.
Made parallelsOf(CVexDbEntity& curve, CVexGePoint2d side, double distance)
{
    Made made;
    if (curve.classType() == VexDb::kPolyline) {
        std::list<CVexDbPolyline*> pieces;
        static_cast<CVexDbPolyline&>(curve).Offset(side, pieces, distance, false);
        for (CVexDbPolyline* const piece : pieces) {
            made.emplace_back(piece);
        }
    } else if (CVexDbEntity* one = nullptr; curve.getOffset(side, one, distance)) {
        made.emplace_back(one);
    }
    return made;
}

} // namespace

/// A distance, Enter for the last one; false when nobody gave one.
bool CVexCommandSession::askOffsetDistance()
{
    CString question;
    question.Format(L"Specify offset distance, Enter for %g: ", m_offsetDistance);
    handler().Prompt(question);
    CString text;
    if (handler().GetString(-1, text) != InputPoint || handler().isInputLost()) {
        return false;
    }
    if (!text.IsEmpty()) {
        const double typed = toNumber(text.str());
        if (!(typed > 0.0) || !std::isfinite(typed)) {
            handler().refuse(L"The distance must be above 0.");
            return false;
        }
        m_offsetDistance = typed;
    }
    return true;
}

/// Curve after curve is picked, then the side on which its parallel goes. Each is an undo step.
void CVexCommandSession::offsetCurves()
{
    const VexBusyScope busy(handler());
    handler().ClearTracker(true);
    if (!askOffsetDistance()) {
        return;
    }
    CVexDbEntity* curve = nullptr;
    while (askEntity(L"Select curve to offset, Enter when done: ", curve)) {
        CVexGePoint2d side;
        handler().Prompt(L"Specify a point on the side to offset to: ");
        if (handler().GetGePoint(-1, side) != InputPoint || handler().isInputLost()) {
            return;
        }
        const VexUndoGroup step(m_database.undoHandler());
        Made made = parallelsOf(*curve, side, m_offsetDistance);
        if (made.empty()) {
            handler().refuse(L"There is no parallel at this distance.");
        }
        for (auto& parallel : made) {
            addRecorded(parallel.release());
        }
        redraw();
    }
}

/// Fills closed polylines, or empties them: each is replaced by one that is the other way. So an
/// undo needs no more than the two of them, and a fill lies over what was drawn before.
void CVexCommandSession::fillOutlines()
{
    const VexBusyScope busy(handler());
    handler().ClearTracker(true);
    CVexDbEntity* outline = nullptr;
    while (askEntity(L"Select closed polyline to fill or empty, Enter when done: ", outline)) {
        auto* const polyline = outline->classType() == VexDb::kPolyline
                                   ? static_cast<CVexDbPolyline*>(outline)
                                   : nullptr;
        if (polyline == nullptr || !polyline->Closed()) {
            handler().refuse(L"Only a closed polyline can be filled.");
            continue;
        }
        auto* const other = static_cast<CVexDbPolyline*>(polyline->CopyEntity(true));
        other->SetFill(!polyline->IsFill());
        const VexUndoGroup step(m_database.undoHandler());
        eraseRecorded(*polyline);
        addRecorded(other);
        redraw();
    }
}

bool CVexCommandSession::askEntity(const wchar_t* prompt, CVexDbEntity*& entity)
{
    entity = nullptr;
    handler().Prompt(prompt);
    return handler().GetEntity(-1, entity, nullptr) == InputPoint && entity != nullptr &&
           !handler().isInputLost();
}
