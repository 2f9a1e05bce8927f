#pragma once

#include "host/vextool/jsonfields.h"

struct Return_Struct;

/// The nodes of a list: each with its type, and its text or its 24 bytes in hexadecimal.
JsonObject xdataOut(const Return_Struct* head);
/// The list of the member "xdata", held by nobody yet; null for none. A node that is wrong is told
/// to `fields`.
Return_Struct* xdataIn(JsonFields& fields);
