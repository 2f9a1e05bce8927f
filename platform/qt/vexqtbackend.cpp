#include "platform/qt/vexqtbackend.h"

#include "platform/qt/vexqtimagedc.h"

std::unique_ptr<CDC> CVexQtBackend::createImageDC(CSize size)
{
    return CVexQtImageDC::create(QSize(size.cx, size.cy));
}
