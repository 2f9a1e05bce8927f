#include "vexdb/dbobject/vexdblinetypefile.h"

#include "platform/base/cstdiofile.h"
#include "platform/base/vextext.h"
#include "vexdb/vexdbdatabase.h"

#include <cmath>
#include <utility>

namespace {

constexpr std::size_t kMostEntries = 10000;
constexpr std::size_t kMostMessages = 1000;

/// Takes the lines one by one and puts the entries together.
class Parser {
public:
    explicit Parser(VexDbLinetypeFile& out) : m_out(out) {}
    void line(CString text, int number)
    {
        if (text.Trim().IsEmpty() || text[0] == L';') {
            return;
        }
        if (text.Find(L'*') >= 0) {
            finish();
            head(text, number);
        } else if (m_headLine != 0 && text.Find(L"A,") >= 0) {
            pattern(text.Mid(text.Find(L"A,") + 2), number);
        } else {
            complain(number, L"is no part of a linetype");
        }
    }
    /// Ends the entry begun last.
    void finish()
    {
        if (m_headLine != 0) {
            complain(m_headLine, L"begins a linetype without a pattern");
            m_headLine = 0;
        }
    }

private:
    void head(const CString& text, int number)
    {
        const int comma = text.Find(L',');
        m_entry = {};
        m_entry.name = text.Mid(1, (comma < 0 ? text.GetLength() : comma) - 1);
        m_entry.description = comma < 0 ? CString() : text.Mid(comma + 1);
        if (m_entry.name.Trim().IsEmpty()) {
            complain(number, L"names no linetype");
        } else {
            m_headLine = number;
        }
    }
    void pattern(const CString& text, int number)
    {
        m_headLine = 0;
        if (!readDashes(text)) {
            complain(number, L"holds something else than 1 to 32 dash lengths");
        } else if (m_out.entries.size() == kMostEntries) {
            complain(number, L"is one linetype too many");
        } else {
            m_out.entries.push_back(std::move(m_entry));
        }
    }
    bool readDashes(const CString& text)
    {
        double total = 0.0;
        for (int from = 0; from < text.GetLength();) {
            int comma = text.Find(L',', from);
            comma = comma < 0 ? text.GetLength() : comma;
            CString piece = text.Mid(from, comma - from);
            from = comma + 1;
            if (!beginsNumber(piece.Trim()) ||
                m_entry.dashes.size() == CVexDbLTypeTableRecord::kMostPatternDashes) {
                return false;
            }
            m_entry.dashes.push_back(toNumber(piece.str()));
            total += std::fabs(m_entry.dashes.back());
        }
        return !m_entry.dashes.empty() && std::isfinite(total);
    }
    static bool beginsNumber(const CString& piece)
    {
        int at = piece[0] == L'-' || piece[0] == L'+' ? 1 : 0;
        at += piece[at] == L'.' ? 1 : 0;
        return piece[at] >= L'0' && piece[at] <= L'9';
    }
    void complain(int number, const wchar_t* what)
    {
        if (m_out.messages.size() < kMostMessages) {
            CString message;
            message.Format(L"Line %d %s; it is skipped.", number, what);
            m_out.messages.push_back(message);
        }
    }

    VexDbLinetypeFile& m_out;
    VexDbLinetypeEntry m_entry;
    int m_headLine = 0; // of an entry that waits for its pattern
};

VexDbLinetypeFile parse(CStdioFile& file)
{
    VexDbLinetypeFile parsed;
    Parser parser(parsed);
    CString line;
    while (file.ReadString(line)) {
        parser.line(line, file.lineNumber());
    }
    parser.finish();
    return parsed;
}

bool addLinetype(const VexDbLinetypeEntry& entry, CVexDbDatabase& database)
{
    auto record = std::make_unique<CVexDbLTypeTableRecord>(&database);
    record->setName(entry.name);
    if (database.linetypes().has(record->name())) {
        return false;
    }
    record->setDescription(entry.description);
    double total = 0.0;
    for (const double dash : entry.dashes) {
        record->setNumDashes(record->numDashes() + 1);
        record->setDashLengthAt(record->numDashes() - 1, dash);
        total += std::fabs(dash);
    }
    record->setPatternLength(total);
    if (!database.linetypes().add(record.get())) {
        return false; // a name that begins with a NUL is none
    }
    static_cast<void>(record.release()); // the table has it
    return true;
}

int addAll(VexDbLinetypeFile parsed, CVexDbDatabase& database, std::vector<CString>& messages)
{
    messages = std::move(parsed.messages);
    int added = 0;
    for (const VexDbLinetypeEntry& entry : parsed.entries) {
        added += addLinetype(entry, database) ? 1 : 0;
    }
    return added;
}

} // namespace

VexDbLinetypeFile parseLinetypes(std::vector<std::byte> text)
{
    CStdioFile file;
    return file.OpenText(std::move(text)) ? parse(file) : VexDbLinetypeFile();
}

int loadLinetypes(const CString& path, CVexDbDatabase& database, std::vector<CString>& messages)
{
    CStdioFile file;
    if (!file.Open(path)) {
        messages = {L"The linetype file '" + path + L"' cannot be read."};
        return -1;
    }
    return addAll(parse(file), database, messages);
}

int loadLinetypes(std::vector<std::byte> text, CVexDbDatabase& database,
                  std::vector<CString>& messages)
{
    return addAll(parseLinetypes(std::move(text)), database, messages);
}
