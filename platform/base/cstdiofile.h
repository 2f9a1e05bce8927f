#pragma once

#include "platform/base/cfile.h"
#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

/// A text file read line by line. A byte order mark decides UTF-16 (either end) or UTF-8; without
/// one the bytes are UTF-8, and a byte that is not becomes U+FFFD.
class VEXPLATFORM_EXPORT CStdioFile {
public:
    /// False when the file cannot be opened or is larger than `kMostBytes`.
    bool Open(const CString& path);
    /// The same on text that is already in memory.
    bool OpenText(std::vector<std::byte> bytes);
    /// The next line without its end (LF, CR LF or CR); false behind the last one.
    bool ReadString(CString& line);
    /// Number of the line read last, from 1.
    [[nodiscard]] int lineNumber() const { return m_lineNumber; }
    void Close();

    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

private:
    std::wstring m_text;
    std::size_t m_next = 0;
    int m_lineNumber = 0;
};
