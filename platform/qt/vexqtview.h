#pragma once

#include "platform/device/vexdevicetypes.h"
#include "platform/qt/vexqtwindow.h"
#include "platform/window/vexbackend.h"

#include <QImage>
#include <QRect>

#include <functional>
#include <memory>

class CVexQtEventBackend;
class CVexQtImageDC;

/// A drawing view in a window. Its picture is kept as an image in device pixels, and its context
/// draws on that: strokes in XOR are exact, a repaint by the window system merely copies, and the
/// drawing is as sharp as the screen.
///
/// WM_SIZE is posted for each new size, and WM_PAINT for each Invalidate(): whoever answers them
/// draws the picture anew. WM_PAINT sent also brings the picture to the screen at once.
class VEXQT_EXPORT CVexQtView : public CView, public CVexQtWindow {
public:
    /// Makes its widget, which belongs to `parent`. The backend outlives the view.
    CVexQtView(CVexQtEventBackend& backend, QWidget* parent);
    ~CVexQtView() override;

    void GetClientRect(CRect& rect) const override;
    [[nodiscard]] CPoint ClientToScreen(CPoint client) const override { return toScreen(client); }
    [[nodiscard]] CPoint ScreenToClient(CPoint screen) const override { return toClient(screen); }
    [[nodiscard]] CString GetWindowText() const override { return m_text; }
    void SetWindowText(const CString& text) override { m_text = text; }
    /// The same for the view's whole life; the image under it changes with the size.
    [[nodiscard]] CDC* GetDC() override;
    void Invalidate() override;
    void SetFocus() override { focus(); }
    LRESULT SendMessage(unsigned message, WPARAM wParam, LPARAM lParam) override;

    /// Answers the view's messages, as a window procedure does.
    void setHandler(std::function<LRESULT(const MSG&)> handler) { m_handler = std::move(handler); }
    /// What the view shows behind a drawing, from the next drawing of it on.
    void setBackground(COLORREF color);
    /// The picture as it stands, device pixels.
    [[nodiscard]] const QImage& picture() const;

private:
    friend class CVexQtEventBackend;
    class Canvas;
    class Context;

    void showCursor(VexCursor cursor);
    /// Fits the image to the widget; true when its size has changed.
    bool fitImage();

    CVexQtEventBackend& m_backend;
    std::unique_ptr<Context> m_context;
    std::function<LRESULT(const MSG&)> m_handler;
    CString m_text;
};
