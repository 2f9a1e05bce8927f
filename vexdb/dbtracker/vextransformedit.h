#pragma once

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"

/// What undo keeps of the transform `option` of `entity` by the band from `base` along `vector`
/// (drawing units); `factor` counts for a scaling only. `entity` is not transformed yet.
tagUndoEditEntity transformEdit(VexDb::TransFormOption option, CVexDbEntity& entity,
                                const CVexGePoint2d& base, const CVexGeVector2d& vector,
                                double factor);
