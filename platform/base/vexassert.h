#pragma once

#include "platform/base/vexexport.h"

/// What a failed VEX_ASSERT calls: the broken promise in words, and where it stands.
using VexAssertHandler = void (*)(const char* promise, const char* file, int line);

/// Installs `handler` for the whole process and returns the one before; null brings back the
/// default, which writes the promise to standard error and, in a build without NDEBUG, aborts.
VEXPLATFORM_EXPORT VexAssertHandler setVexAssertHandler(VexAssertHandler handler);

/// Calls the installed handler.
VEXPLATFORM_EXPORT void vexAssertFailed(const char* promise, const char* file, int line);

/// A promise between our own functions. Input from outside is answered, never asserted.
#define VEX_ASSERT(condition, promise)                                                             \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            vexAssertFailed(promise, __FILE__, __LINE__);                                          \
        }                                                                                          \
    } while (false)
