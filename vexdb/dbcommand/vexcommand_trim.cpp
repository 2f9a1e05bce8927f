// The commands that end curves at others: trim and extend.

#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgetol.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace {

using Boundaries = std::vector<CVexDbEntity*>;

const CVexGePoint2d kNoPick(std::numeric_limits<double>::quiet_NaN(), 0.0);
constexpr std::array kNeverTrimmed = {VexDb::kSpiral, VexDb::kSpline, VexDb::kBox};
constexpr std::array kNeverExtended = {VexDb::kSpiral, VexDb::kBox, VexDb::kCircle, VexDb::kSpline,
                                       VexDb::kEllipse};

/// Trims one entity. What a cut through the middle leaves over goes into the drawing, too.
bool trim(CVexDbEntity& entity, CVexGePoint2d& pick, Boundaries& boundaries)
{
    addRecorded(entity.Trim(pick, boundaries, kGeEpsilon));
    return true;
}

bool extend(CVexDbEntity& entity, CVexGePoint2d& pick, Boundaries& boundaries)
{
    return entity.Extend(pick, boundaries, kGeEpsilon);
}

} // namespace

struct CVexCommandHandler::CutRule {
    VexDb::PromptId boundaryPrompt;
    const wchar_t* boundaryRefusal;
    std::span<const VexDb::ClassType> excluded;
    const wchar_t* refusal;
    bool (*cut)(CVexDbEntity&, CVexGePoint2d& pick, Boundaries&); // false: nothing to show
};

CVexDbEntity* CVexCommandHandler::CommandTrim(unsigned long& /*step*/)
{
    cutAtBoundaries({VexDb::PromptTrimBoundary, L"Selected entity cannot be a trim boundary.",
                     kNeverTrimmed, L"Selected entity cannot be trimed.", &trim});
    return nullptr;
}

CVexDbEntity* CVexCommandHandler::CommandExtend(unsigned long& /*step*/)
{
    cutAtBoundaries({VexDb::PromptExtendBoundary, L"Selected entity cannot be a extend boundary.",
                     kNeverExtended, L"Selected entity cannot be Extended.", &extend});
    return nullptr;
}

// Each pick is an undo step: who trims twenty ends and spoils the last one takes back that one.
void CVexCommandHandler::cutAtBoundaries(const CutRule& rule)
{
    const std::vector<std::unique_ptr<CVexDbEntity>> copies = askBoundaries(rule);
    if (copies.empty()) {
        return;
    }
    Boundaries boundaries(copies.size());
    std::ranges::transform(copies, boundaries.begin(), &std::unique_ptr<CVexDbEntity>::get);
    CVexDbEntity* entity = nullptr;
    CVexGePoint2d pick = kNoPick;
    while (GetEntity(VexDb::PromptSelectEntities, entity, &pick) == InputPoint &&
           entity != nullptr) {
        if (cutOne(rule, *entity, pick, boundaries)) {
            repaintNow(*this);
        }
        pick = kNoPick;
    }
}

/// Copies of the boundaries: one that is trimmed itself still cuts the others where it was.
std::vector<std::unique_ptr<CVexDbEntity>> CVexCommandHandler::askBoundaries(const CutRule& rule)
{
    VexEntitySet picked;
    CVexDbEntity* entity = nullptr;
    while (GetEntity(rule.boundaryPrompt, entity, nullptr) == InputPoint && entity != nullptr) {
        if (entity->IsCurveEntity()) {
            picked.insert(entity);
        } else {
            MessageBoxW(rule.boundaryRefusal, L"", MB_OK);
        }
    }
    std::vector<std::unique_ptr<CVexDbEntity>> copies;
    for (CVexDbEntity* boundary : picked) {
        if (CVexDbEntity* const copy = boundary->CopyEntity(true); copy != nullptr) {
            copies.emplace_back(copy);
        }
    }
    return copies;
}

/// True when the view has something else to show.
bool CVexCommandHandler::cutOne(const CutRule& rule, CVexDbEntity& entity, CVexGePoint2d& pick,
                                Boundaries& boundaries)
{
    const bool excluded =
        !entity.IsCurveEntity() ||
        std::ranges::find(rule.excluded, entity.classType()) != rule.excluded.end();
    if (excluded) {
        MessageBoxW(rule.refusal, L"", MB_OK);
        return false;
    }
    if (!std::isfinite(pick.x)) { // taken by key, which tells no piece or end
        refuse(L"Click the piece or end that is meant.");
        return false;
    }
    const VexUndoGroup step(m_database->undoHandler());
    return rule.cut(entity, pick, boundaries);
}
