#include "platform/base/cfilefind.h"

#include "platform/base/vexmachine.h"

#include <string>

bool CFileFind::FindFile(const CString& path)
{
    Close();
    const std::string name = path.utf8();
    if (name.find('\0') != std::string::npos) {
        return false; // the system would look for what stands before the NUL
    }
    VexFileStatus status;
    const int result = CVexMachine::current().files().status(name, status);
    if (result < 0 || status.kind == VexFileStatus::Kind::kMissing) {
        return false;
    }
    m_path = path;
    m_isFolder = status.kind == VexFileStatus::Kind::kFolder;
    return true;
}

CString CFileFind::GetFileName() const
{
    const std::wstring& path = m_path.str();
    const std::size_t last = path.find_last_not_of(L'/');
    if (last == std::wstring::npos) {
        return CString();
    }
    const std::size_t slash = path.find_last_of(L'/', last);
    const std::size_t first = slash == std::wstring::npos ? 0 : slash + 1;
    return CString(path.substr(first, last + 1 - first));
}

CString CFileFind::GetFileTitle() const
{
    const CString name = GetFileName();
    const int point = name.ReverseFind(L'.');
    return point < 0 ? name : name.Left(point);
}

void CFileFind::Close()
{
    m_path.Empty();
    m_isFolder = false;
}
