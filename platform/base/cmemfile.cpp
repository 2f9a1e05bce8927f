#include "platform/base/cfile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

CMemFile::CMemFile(const CString& name)
{
    m_path = name;
    start(Mode::kWriting, 0);
}

CMemFile::CMemFile(std::vector<std::byte> bytes, const CString& name) : m_bytes(std::move(bytes))
{
    m_path = name;
    start(Mode::kReading, m_bytes.size());
}

CMemFile::~CMemFile() = default;

bool CMemFile::Open(const CString& name, unsigned flags)
{
    Abort();
    m_path = name;
    if ((flags & modeCreate) != 0) {
        m_bytes.clear();
        start(Mode::kWriting, 0);
    } else if ((flags & modeWrite) != 0) {
        fail(EINVAL); // refused for files on the disk too
        return false;
    } else {
        m_read = 0;
        start(Mode::kReading, m_bytes.size());
    }
    return true;
}

bool CMemFile::Close()
{
    if (!isOpen()) {
        return false;
    }
    if (isWriting() && !failed()) {
        flush();
    }
    stop();
    return !failed();
}

void CMemFile::Abort()
{
    if (isWriting()) {
        m_bytes.clear();
    }
    if (isOpen()) {
        stop();
    }
}

std::int64_t CMemFile::readSome(std::byte* buffer, std::size_t count)
{
    const std::size_t part = std::min(count, m_bytes.size() - m_read);
    std::memcpy(buffer, m_bytes.data() + m_read, part);
    m_read += part;
    return static_cast<std::int64_t>(part);
}

int CMemFile::writeAll(const std::byte* buffer, std::size_t count)
{
    try {
        m_bytes.insert(m_bytes.end(), buffer, buffer + count);
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    } catch (const std::length_error&) {
        return -ENOMEM;
    }
    return 0;
}

int CMemFile::writeOver(std::uint64_t offset, const std::byte* buffer, std::size_t count)
{
    std::copy_n(buffer, count, m_bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    return 0;
}
