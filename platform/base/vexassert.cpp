#include "platform/base/vexassert.h"

#include <cstdio>
#include <cstdlib>

namespace {

void reportAndStop(const char* promise, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: broken promise: %s\n", file, line, promise);
#ifndef NDEBUG
    std::abort();
#endif
}

VexAssertHandler installedHandler = nullptr;

} // namespace

VexAssertHandler setVexAssertHandler(VexAssertHandler handler)
{
    const VexAssertHandler before = installedHandler;
    installedHandler = handler;
    return before;
}

void vexAssertFailed(const char* promise, const char* file, int line)
{
    (installedHandler != nullptr ? installedHandler : reportAndStop)(promise, file, line);
}
