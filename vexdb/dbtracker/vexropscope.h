#pragma once

#include "platform/device/cdc.h"

/// A raster operation for a scope; nothing without a context.
class VexRopScope {
public:
    VexRopScope(CDC* dc, int operation) : m_dc(dc)
    {
        if (m_dc != nullptr) {
            m_before = m_dc->SetROP2(operation);
        }
    }
    ~VexRopScope()
    {
        if (m_dc != nullptr) {
            m_dc->SetROP2(m_before);
        }
    }
    VexRopScope(const VexRopScope&) = delete;
    VexRopScope& operator=(const VexRopScope&) = delete;

private:
    CDC* m_dc;
    int m_before = R2_COPYPEN;
};
