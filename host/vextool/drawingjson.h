#pragma once

#include "host/vextool/jsonfields.h"

#include <functional>
#include <string>

class CVexDbDatabase;

/// Every record and entity that is not erased, in the order in which they can be made again:
/// settings, those of dimensions, plane and project, linetypes, colours, layers, text styles,
/// symbols, then each block and its entities, last what is current.
void writeObjects(CVexDbDatabase& database, const std::function<void(const JsonObject&)>& sink);

/// Makes what one line of JSON describes in the drawing. Records are matched by name, colours by
/// index, and "block" lines choose where the entities behind them go. Empty on success, else what
/// is wrong, and then the drawing is as it was.
std::string makeObject(CVexDbDatabase& database, const std::string& line);
