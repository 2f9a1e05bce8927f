#pragma once

#include "host/vextool/jsonfields.h"

class CVexDbDatabase;

/// How the drawing is drawn and edited; what is current stands in a line of its own, behind the
/// records that it names.
JsonObject settingsObject(CVexDbDatabase& database);
JsonObject dimSettingsObject(CVexDbDatabase& database);
JsonObject planeObject(CVexDbDatabase& database);
JsonObject projectObject(CVexDbDatabase& database);
JsonObject currentObject(CVexDbDatabase& database);
/// Take over the members that are there. With a wrong one they change nothing.
void makeSettings(CVexDbDatabase& database, JsonFields& fields);
void makeDimSettings(CVexDbDatabase& database, JsonFields& fields);
void makePlane(CVexDbDatabase& database, JsonFields& fields);
void makeProject(CVexDbDatabase& database, JsonFields& fields);
void makeCurrent(CVexDbDatabase& database, JsonFields& fields);
