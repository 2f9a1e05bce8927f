#include "vexdb/dbobject/vexdbvectorfont.h"

#include "platform/base/cfile.h"
#include "platform/base/vexfields.h"
#include "platform/base/vexmachine.h"

#include <cstdint>
#include <optional>

namespace {

// Of the modes byte in a font's description: the font can be set upright and vertical.
constexpr unsigned kDualOrientation = 0x02;

/// A compiled font, read from its front; every read past its end gives nothing.
class FontFile {
public:
    explicit FontFile(const CString& name)
    {
        CString path;
        path.Format(L"%s/%s.shx", _GetVectorFontPath(), name);
        m_open = !name.IsEmpty() && m_file.Open(path, CFile::modeRead);
    }
    [[nodiscard]] bool skipTo(std::uint64_t offset)
    {
        if (!m_open || offset < m_file.GetPosition() || offset > m_file.GetLength()) {
            return false;
        }
        std::uint64_t left = offset - m_file.GetPosition();
        while (left > 0) {
            const std::size_t step =
                left < CFile::kBufferSize ? static_cast<std::size_t>(left) : CFile::kBufferSize;
            if (m_file.take(step) == nullptr) {
                return false;
            }
            left -= step;
        }
        return true;
    }
    template <class T>
    std::optional<T> number()
    {
        const std::byte* at = m_open ? m_file.take(sizeof(T)) : nullptr;
        return at == nullptr ? std::nullopt : std::optional<T>(loadLittle<T>(at));
    }
    template <class T>
    std::optional<T> numberAt(std::uint64_t offset)
    {
        return skipTo(offset) ? number<T>() : std::nullopt;
    }

private:
    CFile m_file;
    bool m_open = false;
};

bool isDual(std::optional<std::uint8_t> modes)
{
    return modes && (*modes & kDualOrientation) != 0;
}

// The information block ends with above, below, modes and three bytes more.
bool isUnifontDual(FontFile& font)
{
    const auto length = font.numberAt<std::uint16_t>(0x1d);
    return length && *length >= 6 && isDual(font.numberAt<std::uint8_t>(0x1fu + *length - 4u));
}

// The description is the first shape behind the index; it ends with above, below, modes and one
// byte more.
bool isShapeFontDual(FontFile& font)
{
    const auto shapes = font.numberAt<std::uint16_t>(0x1c);
    const auto code = font.number<std::uint16_t>();
    const auto length = font.number<std::uint16_t>();
    if (!shapes || !code || !length || *length < 4) {
        return false;
    }
    const std::uint64_t data = 0x1eu + std::uint64_t{*shapes} * 4u;
    return isDual(font.numberAt<std::uint8_t>(data + *length - 2u));
}

} // namespace

CString _GetVectorFontPath()
{
    const CString module = CVexMachine::current().modulePath();
    // Either kind of path: the separator that comes last ends the folder.
    const int slash = module.ReverseFind(L'/');
    const int backslash = module.ReverseFind(L'\\');
    return module.Left((slash > backslash ? slash : backslash) + 1) + L"font";
}

bool isNormalVertical(const CString& name)
{
    FontFile font(name);
    const auto kind = font.numberAt<char>(11);
    if (!kind) {
        return false;
    }
    return *kind == 'u' ? isUnifontDual(font) : isShapeFontDual(font);
}

bool isBigVertical(const CString& name)
{
    FontFile font(name);
    const auto ranges = font.numberAt<std::uint16_t>(0x1d);
    if (!ranges) {
        return false;
    }
    const std::uint64_t entry = 0x1fu + std::uint64_t{*ranges} * 4u;
    const auto length = font.numberAt<std::uint16_t>(entry + 2u);
    const auto offset = font.number<std::uint32_t>();
    if (!length || !offset || !font.skipTo(*offset)) {
        return false;
    }
    // A name up to its NUL, above, a spare byte, modes.
    int behindName = 0;
    std::optional<std::uint8_t> byte;
    for (unsigned at = 0; at < *length && behindName <= 3; ++at) {
        byte = font.number<std::uint8_t>();
        if (!byte) {
            return false;
        }
        behindName += behindName > 0 || *byte == 0 ? 1 : 0;
    }
    return behindName == 4 && isDual(byte);
}
