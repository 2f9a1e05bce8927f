#include "platform/base/vexmachine.h"
#include "platform/base/vextext.h"
#include "platform/device/cdc.h"
#include "platform/window/vexbackend.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <iconv.h>

double _dDispScale = 100.0;
std::uint16_t _wArcRes = 100;

bool _GetModulePath(CString& out)
{
    out = CVexMachine::current().modulePath();
    return true;
}

bool _isDigitValue(CString text)
{
    const std::wstring& all = text.Trim().str();
    return std::all_of(all.begin(), all.end(),
                       [](wchar_t character) { return character >= L'0' && character <= L'9'; });
}

namespace {

// By the code alone, so that the answer is the same in every locale: beyond ASCII all but the signs
// of the Latin supplement counts as a letter.
bool isLetter(wchar_t character)
{
    const auto code = static_cast<std::uint32_t>(character);
    const bool isAscii = (code >= L'A' && code <= L'Z') || (code >= L'a' && code <= L'z');
    return isAscii || (code >= 0xc0 && code != 0xd7 && code != 0xf7 && !isWhiteSpace(character));
}

/// A converter of the C library, closed at the end.
class CodePage {
public:
    explicit CodePage(unsigned number)
    {
        constexpr unsigned kUtf8 = 65001;
        const std::string name =
            number == 0 || number == kUtf8 ? "UTF-8" : "CP" + std::to_string(number);
        m_converter = iconv_open(name.c_str(), "UTF-8");
        // NOLINTNEXTLINE(performance-no-int-to-ptr): how the C library says that it has none
        if (m_converter == reinterpret_cast<iconv_t>(-1)) {
            m_converter = iconv_open("UTF-8", "UTF-8"); // a page that this machine does not know
        }
    }
    ~CodePage() { iconv_close(m_converter); }
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
    /// Appends one character, or a question mark for one that the page lacks.
    void append(std::wstring_view character, std::string& out)
    {
        std::string from = CString(character).utf8();
        char* next = from.data();
        std::size_t left = from.size();
        char bytes[16];
        char* at = bytes;
        std::size_t room = sizeof bytes;
        const bool done =
            iconv(m_converter, &next, &left, &at, &room) != static_cast<std::size_t>(-1);
        out.append(done ? std::string_view(bytes, sizeof bytes - room) : std::string_view("?"));
    }

private:
    iconv_t m_converter;
};

} // namespace

bool _isNumericValue(CString text)
{
    const std::wstring& all = text.Trim().str();
    return std::none_of(all.begin(), all.end(), isLetter);
}

char* _ConvertUnicodeToAnsi(const wchar_t* text, unsigned codePage)
{
    CodePage page(codePage);
    std::string converted;
    const std::wstring_view all(text == nullptr ? L"" : text);
    for (std::size_t i = 0; i < all.size(); ++i) {
        page.append(all.substr(i, 1), converted);
    }
    char* out = new char[converted.size() + 1];
    std::copy_n(converted.c_str(), converted.size() + 1, out);
    return out;
}

bool _getPixelInofo(CDC* dc, int radius, CPoint centre, CPoint& found)
{
    if (dc == nullptr) {
        return false;
    }
    const COLORREF background = dc->GetBkColor();
    for (int x = centre.x - radius; x < centre.x + radius; ++x) {
        for (int y = centre.y - radius; y < centre.y + radius; ++y) {
            if (dc->GetPixel(CPoint(x, y)) == background) {
                found = CPoint(x, y);
                return true;
            }
        }
    }
    return false;
}

int _FindFolderDlg(CWnd* parent, CString& out, const wchar_t* title, const CString& start)
{
    if (parent == nullptr) {
        return 0;
    }
    return CVexBackend::current().chooseFolder(parent, title, start, out) ? 1 : 0;
}
