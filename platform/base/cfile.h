#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A binary file, read from front to back or written from front to back, buffered. The first
/// failure sticks: every later read, write and Close then fails too, so a long record asks once.
///
/// A file opened for creating is written beside its target (links followed, mode kept) and takes
/// the target's name only in Close, after every byte is on the disk. Until then, and whenever
/// anything fails, the old file stands under its name untouched.
class VEXPLATFORM_EXPORT CFile {
public:
    enum OpenFlags : unsigned { modeRead = 0x0000, modeWrite = 0x0001, modeCreate = 0x1000 };
    static constexpr std::size_t kBufferSize = std::size_t{1} << 18;

    CFile();
    /// A file still open for creating is given up: the target keeps what it had.
    virtual ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// Opens for reading (modeRead) or for creating (modeCreate | modeWrite). False on failure,
    /// with the system's error number in error().
    virtual bool Open(const CString& path, unsigned flags);
    /// Bytes read into `buffer`; fewer than `count` only at the end (which is no failure) or when
    /// the file has failed.
    std::size_t Read(void* buffer, std::size_t count);
    /// False when the file has failed; then nothing is known of what was written.
    bool Write(const void* buffer, std::size_t count);
    /// Puts other bytes in the place of some that were written, `offset` from the file's beginning;
    /// the position stays. For a count that stands before what it counts. False when the file has
    /// failed.
    bool Rewrite(std::uint64_t offset, const void* bytes, std::size_t count);
    /// Ends the file. For a created one: write out, sync, keep the old file as backupPath() when
    /// one is set, rename over the target, sync the folder. True when all bytes stand under the
    /// target's name (also when only the last sync failed, which syncFailed() then says).
    virtual bool Close();
    /// Ends the file and removes what was written; the target keeps what it had.
    virtual void Abort();

    /// The full path of what was given to Open; for a memory file, the name it was made with.
    [[nodiscard]] CString GetFilePath() const { return m_path; }
    /// Bytes read or written so far.
    [[nodiscard]] std::uint64_t GetPosition() const
    {
        return m_base + static_cast<std::uint64_t>(m_next - m_buffer.data());
    }
    /// For a file being read, its whole length.
    [[nodiscard]] std::uint64_t GetLength() const { return m_length; }
    /// For a file being read: what is left of it, otherwise 0. Every count that a file holds is
    /// tested on this.
    [[nodiscard]] std::uint64_t remaining() const
    {
        return m_mode == Mode::kReading ? m_length - GetPosition() : 0;
    }
    [[nodiscard]] bool isOpen() const { return m_mode != Mode::kClosed; }
    [[nodiscard]] bool isWriting() const { return m_mode == Mode::kWriting; }
    [[nodiscard]] bool failed() const { return m_failed; }
    /// The system's error number of the first failure; 0 when the file merely ended too early.
    [[nodiscard]] int error() const { return m_error; }
    /// True after a Close that stands, but whose folder could not be synced.
    [[nodiscard]] bool syncFailed() const { return m_syncFailed; }
    /// Marks the file failed, as a reader does that met nonsense.
    void fail(int error = 0);

    /// Where Close keeps the file that the new one replaces; empty keeps none.
    void setBackupPath(const CString& path) { m_backupPath = path; }
    [[nodiscard]] const CString& backupPath() const { return m_backupPath; }

    /// The next `count` bytes (at most kBufferSize) for reading in place, valid until the next
    /// call; null, and failed, when fewer are left.
    const std::byte* take(std::size_t count)
    {
        if (static_cast<std::size_t>(m_limit - m_next) >= count && m_mode == Mode::kReading) {
            const std::byte* here = m_next;
            m_next += count;
            return here;
        }
        return takeSlow(count);
    }
    /// As take, but null, and nothing happens, when the buffer does not hold as many.
    const std::byte* takeHeld(std::size_t count)
    {
        if (static_cast<std::size_t>(m_limit - m_next) < count || m_mode != Mode::kReading) {
            return nullptr;
        }
        const std::byte* here = m_next;
        m_next += count;
        return here;
    }
    /// Room for the next `count` bytes (at most kBufferSize), to be filled at once; when the file
    /// has failed, room that goes nowhere.
    std::byte* give(std::size_t count)
    {
        if (static_cast<std::size_t>(m_limit - m_next) >= count && m_mode == Mode::kWriting) {
            std::byte* here = m_next;
            m_next += count;
            return here;
        }
        return giveSlow(count);
    }

protected:
    enum class Mode { kClosed, kReading, kWriting };
    /// Starts the buffer in a mode; `length` is that of a file to be read.
    void start(Mode mode, std::uint64_t length);
    /// Reads up to `count` bytes; 0 at the end, negative error number on failure.
    virtual std::int64_t readSome(std::byte* buffer, std::size_t count);
    /// Writes all of it, or gives the negative error number.
    virtual int writeAll(const std::byte* buffer, std::size_t count);
    /// Writes all of it over bytes that writeAll has written, or gives the negative error number.
    virtual int writeOver(std::uint64_t offset, const std::byte* buffer, std::size_t count);
    /// Hands the buffer to writeAll.
    bool flush();
    /// Closes the buffer; the position keeps its value.
    void stop();

    CString m_path;

private:
    const std::byte* takeSlow(std::size_t count);
    std::byte* giveSlow(std::size_t count);
    std::byte* scratch(std::size_t count);
    bool fill(std::size_t wanted);
    void forgetState();
    int openForReading(const std::string& path);
    int openForCreating(const std::string& path);
    int createTemporary(unsigned mode);
    int commit();
    int closeHandle();
    int keepBackup();
    void discard();

    std::vector<std::byte> m_buffer;
    std::byte* m_next = nullptr;
    std::byte* m_limit = nullptr;
    std::uint64_t m_base = 0; // file offset of the buffer's first byte
    std::uint64_t m_length = 0;
    Mode m_mode = Mode::kClosed;
    bool m_failed = false;
    bool m_syncFailed = false;
    int m_error = 0;
    int m_handle = -1;
    CString m_backupPath;
    std::string m_target;    // links followed
    std::string m_temporary; // what is being written, beside the target
};

/// A file in memory: written into or read from a vector of bytes.
class VEXPLATFORM_EXPORT CMemFile : public CFile {
public:
    /// A file to write; bytes() has its content after Close.
    explicit CMemFile(const CString& name = CString());
    /// A file to read.
    explicit CMemFile(std::vector<std::byte> bytes, const CString& name = CString());
    ~CMemFile() override;
    /// Starts over in memory: modeRead reads bytes() from the front, modeCreate begins anew.
    bool Open(const CString& name, unsigned flags) override;
    bool Close() override;
    void Abort() override;
    [[nodiscard]] const std::vector<std::byte>& bytes() const { return m_bytes; }

protected:
    std::int64_t readSome(std::byte* buffer, std::size_t count) override;
    int writeAll(const std::byte* buffer, std::size_t count) override;
    int writeOver(std::uint64_t offset, const std::byte* buffer, std::size_t count) override;

private:
    std::vector<std::byte> m_bytes;
    std::size_t m_read = 0;
};
