#pragma once

#include "platform/base/vexexport.h"
#include "vexdb/dbobject/vexdbfetch.h"
#include "vexdb/dbobject/vexdbobject.h"
#include "vexdb/dbobject/vexdbobjectid.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

/// A set of identifiers in order of creation, the collection used throughout. Inside are contiguous
/// blocks of object addresses, so a million identifiers take 8 bytes each: appending the newest is
/// O(1), inserting or erasing in the middle moves one block. Two objects with one created time
/// count as equal, and the first stays. Identifiers are never null, and an object keeps its created
/// time while it stands in a set; iterators are invalidated by every change (CVexDbEntSetIterator
/// is the one that survives).
class VEXDB_EXPORT CVexDbIdSet {
    // `firstKey` stands beside the directory, so that finding a block touches no object.
    struct Block {
        std::uint64_t firstKey = 0;
        std::vector<CVexDbObject*> objects; // never empty
    };

public:
    class const_iterator {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = CVexDbObjectId;
        using difference_type = std::ptrdiff_t;
        using pointer = const CVexDbObjectId*;
        using reference = CVexDbObjectId;

        const_iterator() = default;
        CVexDbObjectId operator*() const { return CVexDbObjectId(object()); }
        /// The object itself, without a handle in between.
        [[nodiscard]] CVexDbObject* object() const { return (*m_blocks)[m_block].objects[m_slot]; }
        const_iterator& operator++()
        {
            if (++m_slot == (*m_blocks)[m_block].objects.size()) {
                ++m_block;
                m_slot = 0;
            }
            return *this;
        }
        const_iterator operator++(int)
        {
            const_iterator before = *this;
            ++*this;
            return before;
        }
        const_iterator& operator--()
        {
            if (m_slot == 0) {
                m_slot = (*m_blocks)[--m_block].objects.size();
            }
            --m_slot;
            return *this;
        }
        const_iterator operator--(int)
        {
            const_iterator before = *this;
            --*this;
            return before;
        }
        friend bool operator==(const const_iterator&, const const_iterator&) = default;

    private:
        friend class CVexDbIdSet;
        const_iterator(const std::vector<Block>& blocks, std::size_t block, std::size_t slot)
            : m_blocks(&blocks), m_block(block), m_slot(slot)
        {
        }

        const std::vector<Block>* m_blocks = nullptr;
        std::size_t m_block = 0;
        std::size_t m_slot = 0;
    };
    using iterator = const_iterator;
    using value_type = CVexDbObjectId;

    CVexDbIdSet() = default;
    CVexDbIdSet(const CVexDbIdSet& other) = default;
    CVexDbIdSet(CVexDbIdSet&& other) noexcept { swap(other); }
    CVexDbIdSet& operator=(const CVexDbIdSet& other);
    CVexDbIdSet& operator=(CVexDbIdSet&& other) noexcept;
    ~CVexDbIdSet() = default;

    /// Puts `id` at its place; false when an object with its created time is there already.
    std::pair<const_iterator, bool> insert(const CVexDbObjectId& id)
    {
        CVexDbObject* object = id.getPObject();
        const std::uint64_t key = object->getCreatedTime();
        // What is made is added: nearly every identifier is the newest.
        if (key > m_lastKey && !m_blocks.empty() && m_blocks.back().objects.size() < kBlockSize) {
            std::vector<CVexDbObject*>& objects = m_blocks.back().objects;
            objects.push_back(object);
            m_lastKey = key;
            ++m_size;
            ++m_revision;
            return {const_iterator(m_blocks, m_blocks.size() - 1, objects.size() - 1), true};
        }
        return insertSlow(object, key);
    }
    /// As inserting them one after the other; quick where they ascend from above the last one.
    void append(std::span<CVexDbObject* const> objects);
    /// Removes what equals it; 1 when it was there.
    std::size_t erase(const CVexDbObjectId& id);
    /// Gives the place behind it.
    const_iterator erase(const_iterator at);
    /// What equals it: the same object, or one of the same created time.
    [[nodiscard]] const_iterator find(const CVexDbObjectId& id) const;
    [[nodiscard]] std::size_t count(const CVexDbObjectId& id) const
    {
        return find(id) == end() ? 0 : 1;
    }
    [[nodiscard]] bool contains(const CVexDbObjectId& id) const { return find(id) != end(); }
    /// The first identifier whose created time is not below (above) `createdTime`.
    [[nodiscard]] const_iterator lower_bound(std::uint64_t createdTime) const;
    [[nodiscard]] const_iterator upper_bound(std::uint64_t createdTime) const;
    [[nodiscard]] const_iterator begin() const { return const_iterator(m_blocks, 0, 0); }
    [[nodiscard]] const_iterator end() const
    {
        return const_iterator(m_blocks, m_blocks.size(), 0);
    }
    /// Calls `visit` with each object in order, until it answers false; true when it never did. The
    /// objects to come are fetched into the cache meanwhile: for walks over the whole drawing,
    /// which leave the set as it is.
    template <class Visit>
    bool visitObjects(Visit&& visit) const
    {
        for (const Block& block : m_blocks) {
            if (!visitFetched(block.objects, visit)) {
                return false;
            }
        }
        return true;
    }
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] bool empty() const { return m_size == 0; }
    void clear();
    void swap(CVexDbIdSet& other) noexcept;
    /// Changes with every insertion and removal; an iterator that survives changes watches it.
    [[nodiscard]] std::uint64_t revision() const { return m_revision; }
    VEXDB_EXPORT friend bool operator==(const CVexDbIdSet& a, const CVexDbIdSet& b);
    /// True when the blocks, their keys and the order are what they should be.
    [[nodiscard]] bool isSound() const;

private:
    // A power of two, so that a block grown by appending wastes nothing.
    static constexpr std::size_t kBlockSize = 512;
    // Two neighbours are joined when they fill less than this together: well below a full block, so
    // that a set at the border does not split and join in turns.
    static constexpr std::size_t kJoinedSize = 256;

    std::vector<CVexDbObject*>& blockWithRoom(std::uint64_t key);
    std::pair<const_iterator, bool> insertSlow(CVexDbObject* object, std::uint64_t key);
    const_iterator insertAt(const_iterator at, CVexDbObject* object, std::uint64_t key);
    void removeAt(std::size_t block, std::size_t slot);
    void joinSmall(std::size_t block);
    void settleLastKey();
    [[nodiscard]] const_iterator normalized(std::size_t block, std::size_t slot) const;

    std::vector<Block> m_blocks;
    std::size_t m_size = 0;
    std::uint64_t m_lastKey = 0; // of the last object; 0 when empty
    std::uint64_t m_revision = 0;
};
