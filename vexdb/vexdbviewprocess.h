#pragma once

#include "platform/base/crect.h"
#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"

/// What all views of the process share. It stays between drawings, as a status bar and a screen do.
struct VEXDB_EXPORT CVexDbViewProcess {
    /// Client area that the last mapping of any view was made for.
    CRect lastClient;
    /// The read-out's last value for a plain mouse movement, drawing units.
    CVexGePoint2d lastReadout;

    static CVexDbViewProcess& current();
    /// Back to the state of a process that has just started.
    void reset() { *this = CVexDbViewProcess(); }
};
