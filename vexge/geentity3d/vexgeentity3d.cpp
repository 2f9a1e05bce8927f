#include "vexge/geentity3d/vexgeentity3d.h"

#include "vexge/geentity3d/vexgeline3d.h"
#include "vexge/geentity3d/vexgepolyline3d.h"

#include <memory>

CVexGeEntity3d* CVexGeEntity3d::copy() const
{
    switch (m_type) {
    case VexGe::kGeLine3d:
        return std::make_unique<CVexGeLine3d>(static_cast<const CVexGeLine3d&>(*this)).release();
    case VexGe::kGePolyline3d:
        return std::make_unique<CVexGePolyline3d>(static_cast<const CVexGePolyline3d&>(*this))
            .release();
    }
    return nullptr;
}

CVexGeEntity3d& CVexGeEntity3d::operator=(const CVexGeEntity3d& other)
{
    switch (other.m_type) {
    case VexGe::kGeLine3d:
        static_cast<CVexGeLine3d&>(*this) = static_cast<const CVexGeLine3d&>(other);
        break;
    case VexGe::kGePolyline3d:
        static_cast<CVexGePolyline3d&>(*this) = static_cast<const CVexGePolyline3d&>(other);
        break;
    }
    m_type = other.m_type;
    return *this;
}

bool CVexGeEntity3d::operator==(const CVexGeEntity3d& other) const
{
    return m_type == other.m_type && isEqualTo(other, kGeTol);
}
