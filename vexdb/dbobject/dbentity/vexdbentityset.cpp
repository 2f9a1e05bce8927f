#include "vexdb/dbobject/dbentity/vexdbentityset.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"

#include <functional>

bool VexByCreation::operator()(const CVexDbEntity* a, const CVexDbEntity* b) const
{
    // Two entities may bear one number (it comes from files); the address then only tells them
    // apart.
    if (a->getCreatedTime() != b->getCreatedTime()) {
        return a->getCreatedTime() < b->getCreatedTime();
    }
    return std::less<>()(a, b);
}
