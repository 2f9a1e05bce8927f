#include "platform/base/cfile.h"

#include "platform/base/vexassert.h"
#include "platform/base/vexfilecopy.h"
#include "platform/base/vexmachine.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

// What goes to the disk at a time while a file is written: larger than a buffer, for each request
// costs the system some time of its own.
constexpr std::uint64_t kWritebackSize = std::uint64_t{1} << 21;

} // namespace

CFile::CFile() = default;

CFile::~CFile()
{
    CFile::Abort();
}

bool CFile::Open(const CString& path, unsigned flags)
{
    Abort();
    const std::string name = path.utf8();
    // The full path, as long as the working folder is the one that the caller meant.
    m_path = CString::fromUtf8(fullPath(name));
    forgetState();
    int result = -EINVAL; // writing into a file as it stands is no way to keep a drawing whole
    if (name.find('\0') == std::string::npos) {
        if ((flags & modeCreate) != 0) {
            result = openForCreating(name);
        } else if ((flags & modeWrite) == 0) {
            result = openForReading(name);
        }
    }
    if (result < 0) {
        fail(-result);
    }
    return result >= 0;
}

int CFile::openForReading(const std::string& path)
{
    CVexFileLayer& files = CVexMachine::current().files();
    VexFileStatus status;
    if (const int result = files.status(path, status); result < 0) {
        return result;
    }
    switch (status.kind) {
    case VexFileStatus::Kind::kMissing: return -ENOENT;
    case VexFileStatus::Kind::kFolder: return -EISDIR;
    case VexFileStatus::Kind::kOther: return -EINVAL;
    case VexFileStatus::Kind::kFile: break;
    }
    const int handle = files.openRead(path);
    if (handle >= 0) {
        m_handle = handle;
        start(Mode::kReading, status.size);
    }
    return handle;
}

std::size_t CFile::Read(void* buffer, std::size_t count)
{
    auto* to = static_cast<std::byte*>(buffer);
    std::size_t done = 0;
    while (done < count && m_mode == Mode::kReading && !m_failed) {
        if (m_next == m_limit && !fill(1)) {
            break;
        }
        const std::size_t part = std::min(count - done, static_cast<std::size_t>(m_limit - m_next));
        std::memcpy(to + done, m_next, part);
        m_next += part;
        done += part;
    }
    return done;
}

bool CFile::Write(const void* buffer, std::size_t count)
{
    if (m_mode != Mode::kWriting) {
        fail(EBADF);
    }
    const auto* from = static_cast<const std::byte*>(buffer);
    while (count > 0 && !m_failed) {
        if (m_next == m_limit && !flush()) {
            break;
        }
        const std::size_t part = std::min(count, static_cast<std::size_t>(m_limit - m_next));
        std::memcpy(m_next, from, part);
        m_next += part;
        from += part;
        count -= part;
    }
    return !m_failed;
}

bool CFile::Rewrite(std::uint64_t offset, const void* bytes, std::size_t count)
{
    if (m_mode != Mode::kWriting) {
        fail(EBADF);
    }
    if (m_failed) {
        return false;
    }
    VEX_ASSERT(offset + count <= GetPosition(), "Rewrite changes what was written before");
    // What has left the buffer, then what still stands in it.
    const auto* from = static_cast<const std::byte*>(bytes);
    const std::uint64_t base = std::max(m_base, offset);
    const std::size_t gone = std::min(count, static_cast<std::size_t>(base - offset));
    if (const int result = gone == 0 ? 0 : writeOver(offset, from, gone); result < 0) {
        fail(-result);
        return false;
    }
    std::copy(from + gone, from + count, m_buffer.data() + (base - m_base));
    return true;
}

bool CFile::Close()
{
    if (m_mode == Mode::kClosed) {
        return false;
    }
    if (m_mode == Mode::kReading) {
        closeHandle();
        stop();
        return !m_failed;
    }
    const int result = m_failed || !flush() ? -m_error : commit();
    if (result < 0) {
        fail(-result);
    }
    discard();
    stop();
    return !m_failed;
}

void CFile::Abort()
{
    discard();
    if (m_mode != Mode::kClosed) {
        stop();
    }
}

void CFile::fail(int error)
{
    if (!m_failed) {
        m_failed = true;
        m_error = error;
    }
    m_limit = m_next; // sends every take and give to its slow way
}

void CFile::start(Mode mode, std::uint64_t length)
{
    forgetState();
    m_buffer.resize(kBufferSize);
    m_next = m_buffer.data();
    m_limit = mode == Mode::kWriting ? m_next + kBufferSize : m_next;
    m_length = length;
    m_mode = mode;
}

void CFile::forgetState()
{
    m_failed = false;
    m_syncFailed = false;
    m_error = 0;
    m_base = 0;
    m_length = 0;
}

void CFile::stop()
{
    m_base = GetPosition();
    std::vector<std::byte>().swap(m_buffer);
    m_next = nullptr;
    m_limit = nullptr;
    m_mode = Mode::kClosed;
}

// Brings at least `wanted` bytes into the buffer. False at the end of the file, and on a failure.
bool CFile::fill(std::size_t wanted)
{
    const auto left = static_cast<std::size_t>(m_limit - m_next);
    m_base = GetPosition();
    std::memmove(m_buffer.data(), m_next, left);
    m_next = m_buffer.data();
    m_limit = m_next + left;
    while (static_cast<std::size_t>(m_limit - m_next) < wanted) {
        // A file that grows while it is read counts with the length that it was opened with.
        const auto held = static_cast<std::size_t>(m_limit - m_next);
        const std::uint64_t room = std::min<std::uint64_t>(kBufferSize - held, remaining() - held);
        if (room == 0) {
            return false;
        }
        const std::int64_t got = readSome(m_limit, static_cast<std::size_t>(room));
        if (got <= 0) {
            fail(static_cast<int>(-got)); // 0: it has become shorter
            return false;
        }
        m_limit += got;
    }
    return true;
}

const std::byte* CFile::takeSlow(std::size_t count)
{
    VEX_ASSERT(count <= kBufferSize, "take asks for no more than the buffer holds");
    if (m_mode != Mode::kReading) {
        fail(EBADF);
    }
    if (m_failed) {
        return nullptr;
    }
    if (count > kBufferSize || !fill(count)) {
        fail();
        return nullptr;
    }
    const std::byte* const here = m_next;
    m_next += count;
    return here;
}

std::byte* CFile::giveSlow(std::size_t count)
{
    VEX_ASSERT(count <= kBufferSize, "give asks for no more than the buffer holds");
    if (m_mode != Mode::kWriting) {
        fail(EBADF);
    } else if (count > kBufferSize) {
        fail(EINVAL);
    }
    if (m_failed || !flush()) {
        return scratch(count);
    }
    std::byte* const here = m_next;
    m_next += count;
    return here;
}

// Room that goes nowhere: the buffer of a file that has failed.
std::byte* CFile::scratch(std::size_t count)
{
    const std::uint64_t position = GetPosition();
    m_buffer.resize(std::max({count, kBufferSize, m_buffer.size()}));
    m_next = m_buffer.data();
    m_limit = m_next;
    m_base = position;
    return m_next;
}

bool CFile::flush()
{
    const int result =
        writeAll(m_buffer.data(), static_cast<std::size_t>(m_next - m_buffer.data()));
    if (result < 0) {
        fail(-result);
        return false;
    }
    m_base = GetPosition();
    m_next = m_buffer.data();
    m_limit = m_next + kBufferSize;
    return true;
}

std::int64_t CFile::readSome(std::byte* buffer, std::size_t count)
{
    return readSomeOf(CVexMachine::current().files(), m_handle, buffer, count);
}

int CFile::writeAll(const std::byte* buffer, std::size_t count)
{
    CVexFileLayer& files = CVexMachine::current().files();
    const int result = writeAllTo(files, m_handle, buffer, count);
    const std::uint64_t piece = m_base / kWritebackSize;
    if (result >= 0 && (m_base + count) / kWritebackSize > piece) {
        // The disk works while the next bytes are gathered; the sync at the end is then short.
        files.startWriteback(m_handle, static_cast<std::int64_t>(piece * kWritebackSize),
                             static_cast<std::int64_t>(kWritebackSize));
    }
    return result;
}

int CFile::writeOver(std::uint64_t offset, const std::byte* buffer, std::size_t count)
{
    CVexFileLayer& files = CVexMachine::current().files();
    std::int64_t result = files.seek(m_handle, static_cast<std::int64_t>(offset));
    if (result >= 0) {
        result = writeAllTo(files, m_handle, buffer, count);
    }
    if (result >= 0) {
        result = files.seek(m_handle, static_cast<std::int64_t>(m_base));
    }
    return result < 0 ? static_cast<int>(result) : 0;
}

int CFile::closeHandle()
{
    if (m_handle < 0) {
        return 0;
    }
    const int result = CVexMachine::current().files().close(m_handle);
    m_handle = -1;
    return result;
}
