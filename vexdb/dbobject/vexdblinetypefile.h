#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

#include <cstddef>
#include <vector>

class CVexDbDatabase;

/// One linetype of a linetype file.
struct VexDbLinetypeEntry {
    CString name;
    CString description;
    std::vector<double> dashes; // drawing units, at least one
};

/// What a linetype file holds, and its bad lines, each in a message with its number. An entry is
/// two lines, "*NAME,description" and "A,dash,dash,..."; a line beginning with ";" is a comment.
struct VEXDB_EXPORT VexDbLinetypeFile {
    std::vector<VexDbLinetypeEntry> entries;
    std::vector<CString> messages;
};

/// Reads the text of a linetype file.
VEXDB_EXPORT VexDbLinetypeFile parseLinetypes(std::vector<std::byte> text);
/// Adds the linetypes of a file that the drawing has no record of by name; gives their number, -1
/// when the file cannot be read. `messages` gets what was wrong with it.
VEXDB_EXPORT int loadLinetypes(const CString& path, CVexDbDatabase& database,
                               std::vector<CString>& messages);
/// The same from a text in memory.
VEXDB_EXPORT int loadLinetypes(std::vector<std::byte> text, CVexDbDatabase& database,
                               std::vector<CString>& messages);
