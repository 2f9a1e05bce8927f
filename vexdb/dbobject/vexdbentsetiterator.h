#pragma once

#include "vexdb/dbobject/vexdbidset.h"

#include <cstdint>

class CVexDbEntity;

/// Walks a set of identifiers in order of creation. A new one stands at the first element. It
/// survives insertion and removal: when the element that it stands at goes, it stands at the place
/// between that one's neighbours, so that a step leads to the right one of them and a getter
/// without a step to the next one.
class VEXDB_EXPORT CVexDbEntSetIterator {
public:
    explicit CVexDbEntSetIterator(const CVexDbIdSet* set);
    virtual ~CVexDbEntSetIterator();
    /// True positions at the first element; false leaves the position alone.
    void start(bool first);
    /// Forward, or back; behind the last element, or before the first, the walk is done, and a step
    /// the other way resumes it.
    void step(bool forward);
    [[nodiscard]] bool done() const;
    /// Null and false when done.
    bool getEntityId(CVexDbObjectId& id) const;
    /// Null and false when done, or for an erased entity unless `includeErased`.
    bool getEntity(CVexDbEntity*& entity, bool includeErased) const;
    /// Stands at this one; true when it is there, otherwise the walk is done.
    bool seek(const CVexDbObjectId& id);
    bool seek(const CVexDbEntity* entity);

private:
    enum class Place { kBefore, kAt, kBehind };
    void moveTo(CVexDbIdSet::const_iterator at) const;
    bool settle() const;
    CVexDbObject* current() const;

    const CVexDbIdSet* m_set;
    // Where the walk is in the set of `m_revision`; `m_key` says it again for a changed set.
    mutable CVexDbIdSet::const_iterator m_at;
    mutable std::uint64_t m_revision = 0;
    mutable std::uint64_t m_key = 0;
    mutable Place m_place = Place::kBefore;
};

/// Makes an iterator over `set` that the caller owns. False, with `out` as it was, for an empty
/// set.
bool newEntSetIterator(const CVexDbIdSet& set, CVexDbEntSetIterator*& out);
