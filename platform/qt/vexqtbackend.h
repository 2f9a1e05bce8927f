#pragma once

#include "platform/headless/vexheadless.h"

/// The scripted backend with pixels: image contexts are real rasters, so that pictures and
/// thumbnails can be made where no window is.
class VEXQT_EXPORT CVexQtBackend : public CVexHeadlessBackend {
public:
    /// A `CVexQtImageDC`, white at first; null when there is no memory for it.
    [[nodiscard]] std::unique_ptr<CDC> createImageDC(CSize size) override;
};
