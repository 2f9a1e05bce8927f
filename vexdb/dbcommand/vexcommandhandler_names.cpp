#include "platform/base/cstdiofile.h"
#include "platform/base/vextext.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/vexdbdatabase.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kModulePathLength = 127; // the path is read into 128 characters with its NUL
constexpr const wchar_t* kDelimiters = L"\t ";

CString commandFilePath()
{
    CString module;
    _GetModulePath(module);
    const CString path(module.str().substr(0, kModulePathLength));
    return path.Left(path.ReverseFind(L'/')) + L"/VexDb.cmd";
}

std::vector<CString> tokensOf(const CString& line)
{
    std::vector<CString> tokens;
    const std::wstring& text = line.str();
    for (std::size_t at = text.find_first_not_of(kDelimiters); at != std::wstring::npos;) {
        const std::size_t end = text.find_first_of(kDelimiters, at);
        tokens.emplace_back(text.substr(at, end - at));
        at = text.find_first_not_of(kDelimiters, end);
    }
    return tokens;
}

} // namespace

unsigned long CVexCommandHandler::getCommandId(const CString& name) const
{
    CString key(name);
    const auto found = m_commands.find(key.MakeUpper());
    return found == m_commands.end() ? 0 : found->second;
}

int CVexCommandHandler::addCommand(const CString& line)
{
    const std::vector<CString> tokens = tokensOf(line);
    if (!tokens.empty()) {
        // A message carries 32 bits: what is beyond stops at the largest number.
        const auto number = static_cast<std::uint32_t>(toInteger(tokens.front().str()));
        for (std::size_t at = 1; at < tokens.size(); ++at) {
            CString name(tokens[at]);
            m_commands.emplace(name.MakeUpper(), number);
        }
    }
    return static_cast<int>(m_commands.size());
}

int CVexCommandHandler::LoadCommandFrom()
{
    CStdioFile file;
    if (!file.Open(commandFilePath())) {
        return static_cast<int>(m_commands.size());
    }
    CString line;
    while (file.ReadString(line)) {
        // What no ';' ends defines nothing: the cut is unconditional.
        if (!line.IsEmpty() && line[0] != L';') {
            addCommand(line.Left(line.Find(L';')));
        }
    }
    return static_cast<int>(m_commands.size());
}
