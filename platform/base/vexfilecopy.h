#pragma once

#include "platform/base/vexfilelayer.h"

#include <cstddef>
#include <cstdint>
#include <string>

// File operations of more than one call to the file layer. What a signal interrupted is asked
// again; a negative result is the error number, negated.

/// Bytes read, at most `count`; 0 is the end.
std::int64_t readSomeOf(CVexFileLayer& files, int handle, void* buffer, std::size_t count);
/// Writes all of it, however little the system takes at a time. 0 when it stands.
int writeAllTo(CVexFileLayer& files, int handle, const std::byte* buffer, std::size_t count);
int syncHandle(CVexFileLayer& files, int handle);
/// A copy of `from` under the new name `to`, on the disk; on failure no `to` is left.
int copyToNew(CVexFileLayer& files, const std::string& from, const std::string& to, unsigned mode);
/// Keeps `original` under a second name beside `name` and then puts that in the place of `name`,
/// so that what stood there goes only when the new one is whole. A link where the file system has
/// links, else a copy.
int keepUnderName(CVexFileLayer& files, const std::string& original, const std::string& name,
                  unsigned mode);

/// The path from the root: a relative one begins at the working folder. Links stay as they are.
std::string fullPath(const std::string& path);
/// Folder of a path, for a plain name ".".
std::string folderOf(const std::string& path);
/// A fresh hidden name in the folder of `path`, of this process; it differs at each call.
std::string temporaryBeside(const std::string& path);
/// How many such names are tried when an ended process has left files of the same names.
constexpr int kMostTemporaryNames = 100;
