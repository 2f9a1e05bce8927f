#include "platform/qt/vexqtpagedc.h"

#include <QPageLayout>
#include <QPagedPaintDevice>

CVexQtPageDC::CVexQtPageDC(QPainter& painter, const QPagedPaintDevice& page, Use use)
    : CVexQtDC(painter, QSize(page.width(), page.height()), Form::kPage), m_page(page), m_use(use)
{
}

int CVexQtPageDC::GetDeviceCaps(int index) const
{
    const QPageLayout layout = m_page.pageLayout();
    const int dotsPerInch = m_page.logicalDpiX();
    switch (index) {
    case PHYSICALWIDTH: return layout.fullRectPixels(dotsPerInch).width();
    case PHYSICALHEIGHT: return layout.fullRectPixels(dotsPerInch).height();
    case PHYSICALOFFSETX: return layout.paintRectPixels(dotsPerInch).left();
    case PHYSICALOFFSETY: return layout.paintRectPixels(dotsPerInch).top();
    default: return CVexQtDC::GetDeviceCaps(index);
    }
}
