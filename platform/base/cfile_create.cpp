#include "platform/base/cfile.h"
#include "platform/base/vexfilecopy.h"
#include "platform/base/vexmachine.h"

#include <cerrno>

namespace {

// Permission bits for what replaces `target`, or why nothing may.
int modeForReplacing(const VexFileStatus& target, unsigned& mode)
{
    switch (target.kind) {
    case VexFileStatus::Kind::kMissing: mode = CVexFileLayer::kUsualMode; return 0;
    case VexFileStatus::Kind::kFolder: return -EISDIR;
    case VexFileStatus::Kind::kOther: return -EINVAL; // a device must not become a plain file
    case VexFileStatus::Kind::kFile: break;
    }
    // Renaming would ask only the folder, and so replace a file that this user may not write.
    mode = target.mode;
    return target.writable ? 0 : -EACCES;
}

bool isSameFile(const VexFileStatus& a, const VexFileStatus& b)
{
    return b.kind != VexFileStatus::Kind::kMissing && a.device == b.device && a.inode == b.inode;
}

} // namespace

int CFile::openForCreating(const std::string& path)
{
    CVexFileLayer& files = CVexMachine::current().files();
    VexFileStatus target;
    unsigned mode = 0;
    int result = files.resolve(path, m_target);
    if (result >= 0) {
        result = files.status(m_target, target);
    }
    if (result >= 0) {
        result = modeForReplacing(target, mode);
    }
    if (result >= 0) {
        result = createTemporary(mode);
    }
    if (result >= 0) {
        start(Mode::kWriting, 0);
    }
    return result;
}

int CFile::createTemporary(unsigned mode)
{
    int handle = -EEXIST;
    for (int i = 0; handle == -EEXIST && i < kMostTemporaryNames; ++i) {
        m_temporary = temporaryBeside(m_target);
        handle = CVexMachine::current().files().createNew(m_temporary, mode);
    }
    if (handle < 0) {
        m_temporary.clear(); // not ours to remove
        return handle;
    }
    m_handle = handle;
    return 0;
}

// The order is the promise: the bytes are on the disk before the file has its name, and the backup
// stands before the target changes.
int CFile::commit()
{
    CVexFileLayer& files = CVexMachine::current().files();
    int result = syncHandle(files, m_handle);
    const int closed = closeHandle();
    if (result >= 0) {
        result = closed;
    }
    if (result >= 0) {
        result = keepBackup();
    }
    if (result >= 0) {
        result = files.rename(m_temporary, m_target);
    }
    if (result >= 0) {
        m_temporary.clear();
        m_syncFailed = files.syncFolder(folderOf(m_target)) < 0;
    }
    return result;
}

int CFile::keepBackup()
{
    if (m_backupPath.IsEmpty()) {
        return 0;
    }
    CVexFileLayer& files = CVexMachine::current().files();
    const std::string path = m_backupPath.utf8();
    if (path.find('\0') != std::string::npos) {
        return -EINVAL; // the system would replace what stands before the NUL
    }
    VexFileStatus target;
    VexFileStatus backup;
    int result = files.status(m_target, target);
    if (result < 0 || target.kind == VexFileStatus::Kind::kMissing) {
        return result;
    }
    result = files.status(path, backup);
    if (result < 0 || path == m_target || isSameFile(target, backup)) {
        return result; // a file that is its own backup is not put in its own place
    }
    result = keepUnderName(files, m_target, path, target.mode);
    if (result >= 0 && folderOf(path) != folderOf(m_target)) {
        result = files.syncFolder(folderOf(path));
    }
    return result;
}

void CFile::discard()
{
    closeHandle();
    if (!m_temporary.empty()) {
        CVexMachine::current().files().remove(m_temporary);
        m_temporary.clear();
    }
}
