#include "host/vextool/commands.h"
#include "host/vextool/drawingio.h"
#include "platform/base/vextext.h"

#include <cstring>
#include <vector>

namespace {

bool readWhole(const std::string& path, std::vector<std::byte>& bytes)
{
    CFile file;
    bool stands = file.Open(CString::fromUtf8(path), CFile::modeRead);
    if (stands) {
        bytes.resize(file.GetLength());
        stands = file.Read(bytes.data(), bytes.size()) == bytes.size();
    }
    if (!stands) {
        complain("cannot read '" + path + "': " + reasonOf(file));
    }
    return stands;
}

// Only the header is rewritten, so that whatever else is in the drawing stays byte for byte. Its
// texts come back padded with zeros: what stood behind them in memory goes too.
bool scrubHeader(std::vector<std::byte>& bytes)
{
    if (bytes.size() < VexDbFileHeader_tag::kFileSize) {
        return false;
    }
    VexDbFileHeader_tag header;
    CMemFile source({bytes.begin(), bytes.begin() + VexDbFileHeader_tag::kFileSize});
    if (!header.read(source) || CString(header.m_szSignature) != CString(L"Z-Ply")) {
        return false;
    }
    copyText(header.m_szComputer, L"");
    copyText(header.m_szUser, L"");
    copyText(header.m_szFolder, L"");
    CMemFile target;
    if (!header.save(target) || !target.Close()) {
        return false;
    }
    std::memcpy(bytes.data(), target.bytes().data(), VexDbFileHeader_tag::kFileSize);
    return true;
}

} // namespace

ExitCode runScrub(const Options& options)
{
    if (options.output.empty() && !options.inPlace) {
        complain("scrub: name an output with -o, or give --in-place");
        return kExitUsage;
    }
    std::vector<std::byte> bytes;
    if (!readWhole(options.input, bytes)) {
        return kExitUnreadable;
    }
    if (!scrubHeader(bytes)) {
        complain("'" + options.input + "' is not a drawing");
        return kExitUnreadable;
    }
    return writeWhole(options.inPlace ? options.input : options.output, bytes);
}
