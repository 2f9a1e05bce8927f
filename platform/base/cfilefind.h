#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

/// Looks whether a file or folder stands at a path (no patterns).
class VEXPLATFORM_EXPORT CFileFind {
public:
    /// True when something stands at `path`; links are followed.
    bool FindFile(const CString& path);
    /// Of the path found last: name with extension, name without, and whether it is a folder.
    [[nodiscard]] CString GetFileName() const;
    [[nodiscard]] CString GetFileTitle() const;
    [[nodiscard]] bool IsDirectory() const { return m_isFolder; }
    void Close();

private:
    CString m_path;
    bool m_isFolder = false;
};
