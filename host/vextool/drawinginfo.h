#pragma once

#include "host/vextool/drawingjson.h"

#include <string>

/// Header texts, tables, counts by class, extents and settings of a drawing.
JsonObject drawingInfo(CVexDbDatabase& database);
/// The same for a person to read.
std::string infoText(const JsonObject& info);
