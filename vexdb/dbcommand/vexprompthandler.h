#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "vexdb/dbcommand/vexpromptid.h"

#include <vector>

/// What kind of answer a prompt takes; typed text is validated by it.
enum PromptKind : int {
    PromptKindNone = 0,
    PromptKindReal = 1,
    PromptKindText = 2,
    PromptKindPoint = 3,
    PromptKindInteger = 4,
};

/// Every prompt and message line of the command layer, read from a message file whose n-th data
/// line is prompt n.
class VEXDB_EXPORT CVexPromptHandler {
public:
    /// Reads the file at `path`; an empty path reads none.
    explicit CVexPromptHandler(const CString& path);
    virtual ~CVexPromptHandler();

    /// Appends the lines of a message file and gives the table's size, entry 0 included. A file
    /// that cannot be opened shows a message box and adds nothing.
    int LoadPrompt(const CString& path);
    /// A copy; the empty text for an id outside the table.
    [[nodiscard]] CString getPrompt(int id) const;
    /// Kind of a prompt, as a PromptKind.
    [[nodiscard]] static int getPromptKind(VexDb::PromptId id);
    /// Size of the table after loading; 0 if no file was named.
    [[nodiscard]] int count() const { return m_count; }

private:
    std::vector<CString> m_prompts; // entry 0 is always empty
    int m_count = 0;
};

/// The table that every new command handler takes, set by the host, which owns it.
extern VEXDB_EXPORT CVexPromptHandler* _hPROMPT;
