#pragma once

#include "platform/base/vexexport.h"

#include <cstddef>
#include <cstdint>
#include <string>

/// What a path leads to. `kind` is missing when nothing stands there.
struct VexFileStatus {
    enum class Kind { kMissing, kFile, kFolder, kOther };
    Kind kind = Kind::kMissing;
    std::uint64_t size = 0;
    unsigned mode = 0;        // permission bits
    bool writable = false;    // by this program, and not write-protected from everybody
    std::uint64_t device = 0; // with `inode`: two paths that lead to one file share both
    std::uint64_t inode = 0;
};

/// The file operations that the library asks of the system, each one call, so that a test can make
/// any of them fail. Paths are UTF-8. A negative result is the error number, negated.
class VEXPLATFORM_EXPORT CVexFileLayer {
public:
    /// For createNew: leave the permission bits to the system's habit.
    static constexpr unsigned kUsualMode = ~0u;

    virtual ~CVexFileLayer() = default;
    /// A handle for reading.
    virtual int openRead(const std::string& path);
    /// A handle for writing a new file that must not exist yet, with exactly these permission bits.
    virtual int createNew(const std::string& path, unsigned mode);
    /// Bytes read or written, at most `count`; 0 from read is the end.
    virtual std::int64_t read(int handle, void* buffer, std::size_t count);
    virtual std::int64_t write(int handle, const void* buffer, std::size_t count);
    virtual std::int64_t seek(int handle, std::int64_t offset);
    virtual int sync(int handle);
    /// Tells the system that these bytes may go to the disk now, so that a later sync has less to
    /// wait for. A hint: it does not wait, and nothing depends on it.
    virtual void startWriteback(int handle, std::int64_t offset, std::int64_t count);
    virtual int close(int handle);
    /// A second name for a file; on a system without links the caller falls back to a copy.
    virtual int link(const std::string& from, const std::string& to);
    virtual int rename(const std::string& from, const std::string& to);
    virtual int remove(const std::string& path);
    /// 0 also where the file system has nothing to sync of a folder.
    virtual int syncFolder(const std::string& folder);
    /// Follows links. A missing file is no error: the status says so.
    virtual int status(const std::string& path, VexFileStatus& status);
    /// The path with every link followed; a missing last component is allowed.
    virtual int resolve(const std::string& path, std::string& resolved);
};
