#include "platform/base/vexfilelayer.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr unsigned kPermissionBits = 0777;
constexpr unsigned kAnyoneWrites = 0222;
constexpr int kMostLinks = 40; // as many as the system itself follows

int failure()
{
    return -errno;
}

int answer(int result)
{
    return result < 0 ? failure() : result;
}

VexFileStatus::Kind kindOf(const struct stat& found)
{
    if (S_ISREG(found.st_mode)) {
        return VexFileStatus::Kind::kFile;
    }
    return S_ISDIR(found.st_mode) ? VexFileStatus::Kind::kFolder : VexFileStatus::Kind::kOther;
}

int realPath(const std::string& path, std::string& resolved)
{
    const std::unique_ptr<char, decltype(&std::free)> found(realpath(path.c_str(), nullptr),
                                                            &std::free);
    if (!found) {
        return failure();
    }
    resolved = found.get();
    return 0;
}

// Where a symbolic link leads, as it is written in it.
int linkTarget(const std::string& path, std::string& target)
{
    std::array<char, PATH_MAX> text = {};
    const ssize_t length = readlink(path.c_str(), text.data(), text.size());
    if (length < 0) {
        return failure();
    }
    if (static_cast<std::size_t>(length) == text.size()) {
        return -ENAMETOOLONG;
    }
    target.assign(text.data(), static_cast<std::size_t>(length));
    return 0;
}

// A path whose last component may be missing: its folder with every link followed, and the name.
int realFolder(const std::string& path, std::string& folder, std::string& name)
{
    const std::size_t slash = path.find_last_of('/');
    name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.empty()) {
        return -ENOENT;
    }
    const std::string before = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int result = realPath(before, folder);
    if (result == 0 && folder.back() != '/') {
        folder += '/';
    }
    return result;
}

} // namespace

int CVexFileLayer::openRead(const std::string& path)
{
    // Not to wait: a pipe that took the place of a file must not hold the caller.
    return answer(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
}

int CVexFileLayer::createNew(const std::string& path, unsigned mode)
{
    const bool usual = mode == kUsualMode;
    const mode_t bits = usual ? 0666 : mode & kPermissionBits;
    const int handle = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, bits);
    if (handle < 0) {
        return failure();
    }
    // The system takes its mask off what open was asked for; the exact bits need a second call.
    if (!usual && fchmod(handle, bits) != 0) {
        const int result = failure();
        ::close(handle);
        ::unlink(path.c_str());
        return result;
    }
    return handle;
}

std::int64_t CVexFileLayer::read(int handle, void* buffer, std::size_t count)
{
    const ssize_t done = ::read(handle, buffer, count);
    return done < 0 ? failure() : done;
}

std::int64_t CVexFileLayer::write(int handle, const void* buffer, std::size_t count)
{
    const ssize_t done = ::write(handle, buffer, count);
    return done < 0 ? failure() : done;
}

std::int64_t CVexFileLayer::seek(int handle, std::int64_t offset)
{
    const off_t position = ::lseek(handle, offset, SEEK_SET);
    return position < 0 ? failure() : position;
}

void CVexFileLayer::startWriteback(int handle, std::int64_t offset, std::int64_t count)
{
    static_cast<void>(sync_file_range(handle, offset, count, SYNC_FILE_RANGE_WRITE));
}

int CVexFileLayer::sync(int handle)
{
    return answer(fsync(handle));
}

int CVexFileLayer::close(int handle)
{
    // The handle is gone even when a signal came in between; closing it again could hit another.
    const int result = answer(::close(handle));
    return result == -EINTR ? 0 : result;
}

int CVexFileLayer::link(const std::string& from, const std::string& to)
{
    return answer(::link(from.c_str(), to.c_str()));
}

int CVexFileLayer::rename(const std::string& from, const std::string& to)
{
    return answer(::rename(from.c_str(), to.c_str()));
}

int CVexFileLayer::remove(const std::string& path)
{
    return answer(::unlink(path.c_str()));
}

int CVexFileLayer::syncFolder(const std::string& folder)
{
    const int handle = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return failure();
    }
    const int result = answer(fsync(handle));
    ::close(handle);
    return result == -EINVAL ? 0 : result;
}

int CVexFileLayer::status(const std::string& path, VexFileStatus& status)
{
    status = VexFileStatus();
    struct stat found = {};
    if (stat(path.c_str(), &found) != 0) {
        return errno == ENOENT ? 0 : failure();
    }
    status.kind = kindOf(found);
    status.size = static_cast<std::uint64_t>(found.st_size);
    status.mode = found.st_mode & kPermissionBits;
    // The superuser may write everything: what nobody may write was protected on purpose.
    status.writable = (status.mode & kAnyoneWrites) != 0 &&
                      faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
    status.device = found.st_dev;
    status.inode = found.st_ino;
    return 0;
}

int CVexFileLayer::resolve(const std::string& path, std::string& resolved)
{
    std::string next = path;
    for (int i = 0; i < kMostLinks; ++i) {
        const int whole = realPath(next, resolved);
        if (whole != -ENOENT) {
            return whole;
        }
        std::string folder;
        std::string name;
        if (const int result = realFolder(next, folder, name); result < 0) {
            return result;
        }
        std::string target;
        if (linkTarget(folder + name, target) < 0) {
            resolved = folder + name; // no link: it is the file that is missing
            return 0;
        }
        next = !target.empty() && target.front() == '/' ? target : folder + target;
    }
    return -ELOOP;
}
