#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbtracker/vexarctracker.h"
#include "vexdb/dbtracker/vexboxtracker.h"
#include "vexdb/dbtracker/vexcircletracker.h"
#include "vexdb/dbtracker/vexlinetracker.h"
#include "vexdb/dbtracker/vexpolylinetracker.h"
#include "vexdb/dbtracker/vexrecttracker.h"

#include <algorithm>
#include <array>

namespace {

using MakeTracker = CVexDbEntityTracker* (*)(CWnd*, CVexDbEntity*, VexDb::TransFormOption, bool);

template <class Tracker>
CVexDbEntityTracker* make(CWnd* window, CVexDbEntity* entity, VexDb::TransFormOption option,
                          bool createMode)
{
    return new Tracker(window, entity, option, createMode);
}

struct Kind {
    VexDb::ClassType type;
    MakeTracker make;
};

// A kind of entity that can be gripped joins with a row.
constexpr std::array kKinds = {
    Kind{VexDb::kArc, &make<CVexArcTracker>},
    Kind{VexDb::kCircle, &make<CVexCircleTracker>},
    Kind{VexDb::kLine, &make<CVexLineTracker>},
    Kind{VexDb::kPolyline, &make<CVexPolylineTracker>},
    Kind{VexDb::kRectangle, &make<CVexRectTracker>},
    Kind{VexDb::kBox, &make<CVexBoxTracker>},
};

} // namespace

CVexDbEntityTracker* CVexCommandHandler::CreateTracker(CWnd* window, CVexDbEntity* entity,
                                                       VexDb::TransFormOption option,
                                                       bool createMode)
{
    if (entity == nullptr) {
        return nullptr;
    }
    const auto* const kind = std::ranges::find(kKinds, entity->classType(), &Kind::type);
    return kind == kKinds.end() ? nullptr : kind->make(window, entity, option, createMode);
}

void CVexCommandHandler::DoDragEntity(CVexDbEntity* entity, CPoint /*point*/)
{
    if (entity == nullptr || m_selected.contains(entity)) {
        return;
    }
    CVexDbEntityTracker* const tracker =
        CreateTracker(m_display, entity, VexDb::TransFormNone, false);
    if (tracker != nullptr) {
        tracker->SetKeyWords(L"");
        AddTracker(tracker);
    }
}

void CVexCommandHandler::TrackTracker(CWnd* window, CPoint point)
{
    if (isBusy()) {
        return;
    }
    const VexBusyScope busy(*this);
    // A copy: the host's answers to what a drag sends may change the selection.
    for (CVexDbEntityTracker* tracker : std::vector(m_trackers.all())) {
        const int grip = tracker->HitTest(point);
        if (grip >= 0) {
            tracker->Track(window, point, grip);
            return; // one drag moves one entity, though grips may lie on one another
        }
    }
}
