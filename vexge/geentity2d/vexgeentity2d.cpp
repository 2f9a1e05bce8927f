#include "vexge/geentity2d/vexgeentity2d.h"

bool CVexGeEntity2d::isInsidePoint(const CVexGePoint2d& /*point*/) const
{
    return false;
}

bool CVexGeEntity2d::operator==(const CVexGeEntity2d& other) const
{
    return m_type == other.m_type && isEqualTo(other, kGeTol);
}
