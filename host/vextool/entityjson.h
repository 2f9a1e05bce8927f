#pragma once

#include "host/vextool/jsonfields.h"

#include <string>

class CVexDbDatabase;
class CVexDbEntity;

/// The entity with its properties, its shape and its extended data. A class that has no row here
/// comes with its number as kind, and cannot be made again.
JsonObject entityObject(CVexDbEntity& entity);
/// Puts an entity into the current block; false when there is no such kind. What is wrong with the
/// fields stays in them, and nothing is made then.
bool makeEntity(CVexDbDatabase& database, const std::string& kind, JsonFields& fields);
