#include "vexdb/dbobject/vexdbentsetiterator.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"

CVexDbEntSetIterator::CVexDbEntSetIterator(const CVexDbIdSet* set) : m_set(set)
{
    start(true);
}

CVexDbEntSetIterator::~CVexDbEntSetIterator() = default;

void CVexDbEntSetIterator::start(bool first)
{
    if (first) {
        moveTo(m_set->begin());
    }
}

void CVexDbEntSetIterator::moveTo(CVexDbIdSet::const_iterator at) const
{
    m_at = at;
    m_revision = m_set->revision();
    m_place = at == m_set->end() ? Place::kBehind : Place::kAt;
    if (m_place == Place::kAt) {
        m_key = at.object()->getCreatedTime();
    }
}

// Brings m_at up to date with a changed set: to the element of m_key or, when that has gone, to the
// one behind it. True when it stands at the element that it stood at before.
bool CVexDbEntSetIterator::settle() const
{
    if (m_revision != m_set->revision()) {
        m_revision = m_set->revision();
        m_at = m_set->lower_bound(m_key);
    }
    return m_at != m_set->end() && m_at.object()->getCreatedTime() == m_key;
}

void CVexDbEntSetIterator::step(bool forward)
{
    if (m_place == Place::kBefore) {
        if (forward) {
            moveTo(m_set->begin());
        }
        return;
    }
    CVexDbIdSet::const_iterator next = m_set->end();
    if (m_place == Place::kAt) {
        const bool stands = settle();
        next = m_at;
        if (forward) {
            moveTo(stands ? ++next : next);
            return;
        }
    } else if (forward) {
        return;
    }
    if (next == m_set->begin()) {
        m_place = Place::kBefore;
    } else {
        moveTo(--next);
    }
}

bool CVexDbEntSetIterator::done() const
{
    if (m_place != Place::kAt) {
        return true;
    }
    settle();
    return m_at == m_set->end();
}

CVexDbObject* CVexDbEntSetIterator::current() const
{
    if (m_place != Place::kAt) {
        return nullptr;
    }
    if (!settle()) {
        moveTo(m_at);
    }
    return m_place == Place::kAt ? m_at.object() : nullptr;
}

bool CVexDbEntSetIterator::getEntityId(CVexDbObjectId& id) const
{
    id.setPObject(current());
    return !id.isNull();
}

bool CVexDbEntSetIterator::getEntity(CVexDbEntity*& entity, bool includeErased) const
{
    CVexDbObject* object = current();
    entity = object != nullptr && (includeErased || !object->isErased())
                 ? static_cast<CVexDbEntity*>(object)
                 : nullptr;
    return entity != nullptr;
}

bool CVexDbEntSetIterator::seek(const CVexDbObjectId& id)
{
    CVexDbIdSet::const_iterator at = m_set->find(id);
    if (at != m_set->end() && at.object() != id.getPObject()) {
        at = m_set->end(); // the source of a copy, with its number
    }
    moveTo(at);
    return m_place == Place::kAt;
}

bool CVexDbEntSetIterator::seek(const CVexDbEntity* entity)
{
    return seek(CVexDbObjectId(entity));
}

bool newEntSetIterator(const CVexDbIdSet& set, CVexDbEntSetIterator*& out)
{
    if (set.empty()) {
        return false;
    }
    out = new CVexDbEntSetIterator(&set);
    return true;
}
