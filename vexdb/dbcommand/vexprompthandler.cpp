#include "vexdb/dbcommand/vexprompthandler.h"

#include "platform/base/cstdiofile.h"
#include "platform/window/vexbackend.h"

#include <algorithm>
#include <array>
#include <span>

CVexPromptHandler* _hPROMPT = nullptr;

namespace {

constexpr std::array kReal = {7, 8, 9, 14, 27, 28, 33, 34, 39, 41};
constexpr std::array kPoint = {1,  2,  3,  4,  5,  6,  10, 11, 12, 13,
                               18, 19, 21, 22, 23, 24, 25, 26, 30, 38};
constexpr std::array kInteger = {15, 32};
constexpr std::array kText = {29, 47, 51, 54};

bool holds(std::span<const int> ids, int id)
{
    return std::ranges::find(ids, id) != ids.end();
}

} // namespace

CVexPromptHandler::CVexPromptHandler(const CString& path)
{
    if (!path.IsEmpty()) {
        m_count = LoadPrompt(path);
    }
}

CVexPromptHandler::~CVexPromptHandler() = default;

int CVexPromptHandler::LoadPrompt(const CString& path)
{
    if (m_prompts.empty()) {
        m_prompts.emplace_back(); // data lines count from 1
    }
    CStdioFile file;
    if (!file.Open(path)) {
        MessageBoxW(L"Loading message file fail.", L"", MB_OK);
        return static_cast<int>(m_prompts.size());
    }
    CString line;
    while (file.ReadString(line)) {
        // What no ';' ends is an empty prompt that keeps its number: the cut is unconditional.
        if (!line.IsEmpty() && line[0] != L';') {
            m_prompts.push_back(line.Left(line.Find(L';')));
        }
    }
    return static_cast<int>(m_prompts.size());
}

CString CVexPromptHandler::getPrompt(int id) const
{
    const auto index = static_cast<std::size_t>(id);
    return id < 0 || index >= m_prompts.size() ? CString() : m_prompts[index];
}

int CVexPromptHandler::getPromptKind(VexDb::PromptId id)
{
    if (holds(kReal, id)) {
        return PromptKindReal;
    }
    if (holds(kPoint, id)) {
        return PromptKindPoint;
    }
    if (holds(kInteger, id)) {
        return PromptKindInteger;
    }
    return holds(kText, id) ? PromptKindText : PromptKindNone;
}
