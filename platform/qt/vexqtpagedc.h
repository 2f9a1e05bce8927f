#pragma once

#include "platform/qt/vexqtdc.h"

class QPagedPaintDevice;

/// A context on a page: the sheet of a printer or of a PDF. Device units are the page's dots.
class VEXQT_EXPORT CVexQtPageDC : public CVexQtDC {
public:
    enum class Use { kPicture, kPrinter };

    /// `painter` is active on `page`; neither is owned. A printer's context says that it prints.
    CVexQtPageDC(QPainter& painter, const QPagedPaintDevice& page, Use use);

    [[nodiscard]] int GetDeviceCaps(int index) const override;
    [[nodiscard]] bool IsPrinting() const override { return m_use == Use::kPrinter; }

private:
    const QPagedPaintDevice& m_page;
    Use m_use;
};
