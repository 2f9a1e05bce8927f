#include "vexdb/dbobject/vexdbobjectid.h"

#include "vexdb/dbobject/vexdbobject.h"

const CVexDbObjectId CVexDbObjectId::kNULL;

bool CVexDbObjectId::isVisiable() const
{
    return m_object->isVisiable();
}

CVexDbDatabase* CVexDbObjectId::database() const
{
    return m_object->database();
}

bool CVexDbObjectId::isErased() const
{
    return m_object->isErased();
}

bool CVexDbObjectId::save() const
{
    return m_object->save();
}

bool CVexDbObjectId::operator<(const CVexDbObjectId& other) const
{
    return m_object->getCreatedTime() < other.m_object->getCreatedTime();
}

bool CVexDbObjectId::operator==(std::uint64_t hardId) const
{
    return m_object->hardObjectId() == hardId;
}

bool CVexDbObjectId::operator<(std::uint64_t hardId) const
{
    return m_object->hardObjectId() < hardId;
}

bool CVexDbObjectId::operator>(std::uint64_t hardId) const
{
    return m_object->hardObjectId() > hardId;
}
