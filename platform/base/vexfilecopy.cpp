#include "platform/base/vexfilecopy.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace {

constexpr std::size_t kCopyBlock = std::size_t{1} << 16;

int copyBytes(CVexFileLayer& files, int from, int to)
{
    std::array<std::byte, kCopyBlock> block = {};
    for (;;) {
        const std::int64_t got = readSomeOf(files, from, block.data(), block.size());
        if (got <= 0) {
            return static_cast<int>(got);
        }
        const int written = writeAllTo(files, to, block.data(), static_cast<std::size_t>(got));
        if (written < 0) {
            return written;
        }
    }
}

int copyToHandle(CVexFileLayer& files, int from, int to)
{
    int result = copyBytes(files, from, to);
    if (result == 0) {
        result = syncHandle(files, to);
    }
    const int closed = files.close(to);
    return result < 0 ? result : closed;
}

bool meansNoLinksHere(int result)
{
    return result == -EPERM || result == -EOPNOTSUPP || result == -EMLINK || result == -EXDEV ||
           result == -ENOSYS;
}

int linkOrCopy(CVexFileLayer& files, const std::string& from, const std::string& to, unsigned mode)
{
    const int linked = files.link(from, to);
    return meansNoLinksHere(linked) ? copyToNew(files, from, to, mode) : linked;
}

// At most `most` bytes of UTF-8, never ending inside a character.
std::string shortened(std::string text, std::size_t most)
{
    if (text.size() > most) {
        while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xc0) == 0x80) {
            --most;
        }
        text.resize(most);
    }
    return text;
}

} // namespace

std::int64_t readSomeOf(CVexFileLayer& files, int handle, void* buffer, std::size_t count)
{
    std::int64_t got = -EINTR;
    while (got == -EINTR) {
        got = files.read(handle, buffer, count);
    }
    return got;
}

int writeAllTo(CVexFileLayer& files, int handle, const std::byte* buffer, std::size_t count)
{
    while (count > 0) {
        const std::int64_t put = files.write(handle, buffer, count);
        if (put == -EINTR) {
            continue;
        }
        if (put <= 0) {
            return put == 0 ? -EIO : static_cast<int>(put); // taking nothing would never end
        }
        buffer += put;
        count -= static_cast<std::size_t>(put);
    }
    return 0;
}

int syncHandle(CVexFileLayer& files, int handle)
{
    int result = -EINTR;
    while (result == -EINTR) {
        result = files.sync(handle);
    }
    return result;
}

int copyToNew(CVexFileLayer& files, const std::string& from, const std::string& to, unsigned mode)
{
    const int source = files.openRead(from);
    if (source < 0) {
        return source;
    }
    const int target = files.createNew(to, mode);
    const int result = target < 0 ? target : copyToHandle(files, source, target);
    files.close(source);
    if (target >= 0 && result < 0) {
        files.remove(to);
    }
    return result;
}

int keepUnderName(CVexFileLayer& files, const std::string& original, const std::string& name,
                  unsigned mode)
{
    std::string second;
    int result = -EEXIST;
    for (int i = 0; result == -EEXIST && i < kMostTemporaryNames; ++i) {
        second = temporaryBeside(name);
        result = linkOrCopy(files, original, second, mode);
    }
    if (result < 0) {
        return result;
    }
    result = files.rename(second, name);
    if (result < 0) {
        files.remove(second);
    }
    return result;
}

std::string fullPath(const std::string& path)
{
    const std::filesystem::path given(path);
    std::error_code error;
    std::filesystem::path full = std::filesystem::current_path(error);
    if (error || path.empty() || given.is_absolute()) {
        return path;
    }
    // The working folder has no links in it, so the dots at the beginning go by name; those behind
    // a folder stay, for that may be a link.
    auto part = given.begin();
    for (; part != given.end() && (*part == "." || *part == ".."); ++part) {
        if (*part == "..") {
            full = full.parent_path();
        }
    }
    for (; part != given.end(); ++part) {
        full /= *part;
    }
    return full.string();
}

std::string folderOf(const std::string& path)
{
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string temporaryBeside(const std::string& path)
{
    static std::atomic<unsigned> made = 0;
    constexpr std::size_t kMostOfName = 200; // a file system takes names of 255 bytes
    const std::size_t slash = path.find_last_of('/');
    const std::size_t name = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(0, name) + "." + shortened(path.substr(name), kMostOfName) + "." +
           std::to_string(getpid()) + "-" + std::to_string(++made) + ".tmp";
}
