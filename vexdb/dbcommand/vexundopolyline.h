#pragma once

#include "vexdb/dbcommand/vexundohandler.h"

/// What a record about a polyline's own edit keeps beside its numbers: the end of the chain, where
/// closing, opening or another start loses it. Null for every other edit.
std::shared_ptr<VexUndoData> keptOfPolyline(CVexDbEntity& entity, const tagUndoEditEntity& edit);
