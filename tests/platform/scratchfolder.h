#pragma once

#include "platform/base/cstring.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

/// A folder of its own for one test, gone with everything in it at the end.
class CScratchFolder {
public:
    CScratchFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "vextest-XXXXXX").string();
        m_path = mkdtemp(name.data());
    }
    ~CScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    CScratchFolder(const CScratchFolder&) = delete;
    CScratchFolder& operator=(const CScratchFolder&) = delete;

    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const
    {
        return m_path / name;
    }
    /// Names of everything in it, hidden files too, sorted.
    [[nodiscard]] std::vector<std::string> names() const
    {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
            found.push_back(entry.path().filename().string());
        }
        std::sort(found.begin(), found.end());
        return found;
    }

private:
    std::filesystem::path m_path;
};

inline void putBytes(const std::filesystem::path& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

/// The file's bytes; "(none)" when it cannot be opened.
inline std::string bytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return "(none)";
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline CString wide(const std::filesystem::path& path)
{
    return CString::fromUtf8(path.string());
}
