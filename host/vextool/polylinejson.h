#pragma once

#include "host/vextool/jsonfields.h"

#include <memory>

class CVexDbDatabase;
class CVexDbEntity;

/// The row of polylines in entityjson.cpp. Each vertex is an object of its own, with its bulge and
/// its widths where it has them.
void writePolyline(CVexDbEntity& entity, JsonObject& object);
std::unique_ptr<CVexDbEntity> makePolyline(JsonFields& fields, CVexDbDatabase* database);
