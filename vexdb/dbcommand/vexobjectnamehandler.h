#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

#include <vector>

/// Display names of the object classes and of the polyline types.
class VEXDB_EXPORT CVexObjectNameHandler {
public:
    // Each fills its table and gives its size. The names are the system's own: the path is not
    // looked at.
    int LoadName(const CString& path);
    int LoadType(const CString& path);
    /// The name of a VexDb::ClassType; empty for an index outside the table.
    [[nodiscard]] CString getName(int index) const;
    [[nodiscard]] CString getPolyType(int index) const;

private:
    std::vector<CString> m_names;
    std::vector<CString> m_types;
};
