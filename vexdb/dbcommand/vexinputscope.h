#pragma once

#include "platform/base/vexexport.h"
#include "platform/device/vexdevicetypes.h"
#include "platform/window/vexbackend.h"

#include <optional>

class CDC;
class CPen;
class CVexCommandHandler;
class CWnd;

/// What an input holds while it waits, given back on every way out: the capture, the raster
/// operation and pen of the view's context, the cursor. Its end also clears the one-shot snaps.
class VEXDB_EXPORT VexInputScope {
public:
    /// Captures the mouse for `window`. None is owned; the handler outlives the scope, and what is
    /// held of a window that is gone is not given back.
    VexInputScope(CVexCommandHandler& handler, CWnd& window);
    ~VexInputScope();
    VexInputScope(const VexInputScope&) = delete;
    VexInputScope& operator=(const VexInputScope&) = delete;

    void showCursor(VexCursor cursor);
    /// Strokes of `dc` (null: none) go by `operation` from here on.
    void setRaster(CDC* dc, int operation);
    void selectPen(CDC* dc, const CPen* pen);
    /// Clears the one-shot snaps at the end.
    void clearSnaps() { m_clearsSnaps = true; }

private:
    CVexCommandHandler& m_handler;
    CWnd& m_window;
    std::optional<VexCursor> m_cursor;
    CDC* m_rasterDc = nullptr;
    int m_raster = R2_COPYPEN;
    CDC* m_penDc = nullptr;
    const CPen* m_pen = nullptr;
    bool m_clearsSnaps = false;
};
