#pragma once

#include "platform/base/crect.h"
#include "platform/base/vexexport.h"
#include "platform/device/vexdeviceobjects.h"
#include "platform/device/vexdevicetypes.h"

#include <memory>

class CDC;
class CWnd;

/// A memory context with a bitmap of a window's client size and the mapping of the target that it
/// is made for. When either cannot be made, ok() is false and all work goes to the target itself.
class VEXDB_EXPORT CVexOffScreenDC {
public:
    virtual ~CVexOffScreenDC();
    CVexOffScreenDC(const CVexOffScreenDC&) = delete;
    CVexOffScreenDC& operator=(const CVexOffScreenDC&) = delete;
    /// The memory context, owned here, or the target when there is none.
    [[nodiscard]] CDC* GetDC() const { return m_ok ? m_memory.get() : m_target; }
    [[nodiscard]] bool ok() const { return m_ok; }

protected:
    /// Neither argument is owned. A null window has no client area, so nothing can be made for it.
    CVexOffScreenDC(CDC& target, CWnd* view);
    /// Copies the client area from one context to another; both have the same mapping.
    bool copyClient(CDC& to, CDC& from, DWORD rop) const;
    /// The client area in logical units of `dc`, never smaller than its pixels.
    [[nodiscard]] CRect clientOn(const CDC& dc) const;
    [[nodiscard]] CDC& target() const { return *m_target; }
    /// From here on all work goes to the target.
    void giveUp() { m_ok = false; }

private:
    CDC* m_target;
    CRect m_client; // device pixels
    std::unique_ptr<CDC> m_memory;
    std::unique_ptr<CBitmap> m_bitmap;
    CBitmap* m_oldBitmap = nullptr;
    bool m_ok = false;
};

/// The buffer in which a view is painted before it goes to the window in one block.
class VEXDB_EXPORT CVexBuffDC : public CVexOffScreenDC {
public:
    /// Starts cleared.
    CVexBuffDC(CDC& target, CWnd* view);
    /// Takes over the mapping of `dc` and copies the client area to it. Nothing for a null `dc`, or
    /// when the strokes stand on the target already.
    void VexBitBlt(CDC* dc, DWORD rop);
    /// Fills the client area with the target's background colour.
    void ClearRect();
};

/// The context for highlighting: starts as a copy of what the target shows, and its destructor puts
/// the result back in one block, so that nothing flickers. The target must outlive it.
class VEXDB_EXPORT CVexMemDC : public CVexOffScreenDC {
public:
    CVexMemDC(CDC& target, CWnd* view);
    ~CVexMemDC() override;
};
