#pragma once

#include "host/vextool/jsonfields.h"

#include <functional>
#include <string>

class CVexDbDatabase;
class CVexDbTableRecord;

/// What every record's line has: kind, name, identifier.
JsonObject recordObject(const char* kind, CVexDbTableRecord& record);
/// The settings of all kinds, then the records of all tables but the blocks'.
void writeRecords(CVexDbDatabase& database, const std::function<void(const JsonObject&)>& sink);
/// Makes or changes a record, the settings or what is current; false when there is no such kind.
/// What is wrong with the fields stays in them, and the drawing is as it was then.
bool makeRecord(CVexDbDatabase& database, const std::string& kind, JsonFields& fields);
