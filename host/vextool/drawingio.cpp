#include "host/vextool/drawingio.h"

#include "host/vextool/progress.h"

#include <cstring>
#include <iostream>
#include <unistd.h>

void complain(const std::string& text)
{
    // On a terminal a line of progress may stand there: the message takes its place.
    std::cerr << (isatty(STDERR_FILENO) != 0 ? "\r\033[K" : "") << "vextool: " << text << '\n';
}

void ToolMachine::report(const CString& message)
{
    if (!m_quiet) {
        complain(message.utf8());
    }
}

namespace {

constexpr std::string_view kSignature = "Z-Ply"; // in a file 16 bits a character

/// Whether the file's own head has the signature: a fresh header would say so of an empty file.
bool startsWithSignature(const std::string& path)
{
    CFile file;
    std::byte head[2 * kSignature.size()] = {};
    if (!file.Open(CString::fromUtf8(path), CFile::modeRead) ||
        file.Read(head, sizeof head) != sizeof head) {
        return false;
    }
    for (std::size_t i = 0; i < kSignature.size(); ++i) {
        const auto unit = static_cast<std::byte>(kSignature[i]);
        if (head[2 * i] != unit || head[2 * i + 1] != std::byte{0}) {
            return false;
        }
    }
    return true;
}

} // namespace

std::string reasonOf(const CFile& file)
{
    return file.error() != 0 ? std::strerror(file.error()) : "it ends too early";
}

LoadedDrawing loadDrawing(const std::string& path, bool quiet)
{
    LoadedDrawing drawing;
    const Progress progress("reading " + path, quiet);
    CFile file;
    if (!file.Open(CString::fromUtf8(path), CFile::modeRead)) {
        complain("cannot read '" + path + "': " + reasonOf(file));
        drawing.code = kExitUnreadable;
        return drawing;
    }
    drawing.hasSignature = startsWithSignature(path);
    drawing.database = std::make_unique<CVexDbDatabase>(false);
    _gpDatabase = drawing.database.get();
    CArchive archive(&file, CArchive::load);
    const bool whole = drawing.database->Read(archive);
    archive.Close();
    if (!whole && !drawing.hasSignature) {
        complain("'" + path + "' is not a drawing");
        drawing.database.reset();
        drawing.code = kExitUnreadable;
    } else if (!whole) {
        drawing.code = kExitFaults;
    }
    return drawing;
}

ExitCode writeWhole(const std::string& path, std::span<const std::byte> bytes)
{
    CFile file;
    const bool stands = file.Open(CString::fromUtf8(path), CFile::modeCreate | CFile::modeWrite) &&
                        file.Write(bytes.data(), bytes.size()) && file.Close();
    if (!stands) {
        complain("cannot write '" + path + "': " + reasonOf(file));
        return kExitUnwritable;
    }
    return kExitGood;
}
