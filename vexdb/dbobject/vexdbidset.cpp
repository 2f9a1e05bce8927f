#include "vexdb/dbobject/vexdbidset.h"

#include <algorithm>

CVexDbIdSet& CVexDbIdSet::operator=(const CVexDbIdSet& other)
{
    if (this != &other) {
        CVexDbIdSet copy(other);
        swap(copy);
    }
    return *this;
}

CVexDbIdSet& CVexDbIdSet::operator=(CVexDbIdSet&& other) noexcept
{
    if (this != &other) {
        swap(other);
        other.clear();
    }
    return *this;
}

std::pair<CVexDbIdSet::const_iterator, bool> CVexDbIdSet::insertSlow(CVexDbObject* object,
                                                                     std::uint64_t key)
{
    const const_iterator at = lower_bound(key);
    if (at != end() && at.object()->getCreatedTime() == key) {
        return {at, false};
    }
    ++m_size;
    ++m_revision;
    const const_iterator entered = insertAt(at, object, key);
    settleLastKey();
    return {entered, true};
}

/// The last block, or a new one that begins with `key`.
std::vector<CVexDbObject*>& CVexDbIdSet::blockWithRoom(std::uint64_t key)
{
    if (m_blocks.empty() || m_blocks.back().objects.size() == kBlockSize) {
        m_blocks.push_back({key, {}});
        if (m_blocks.size() > 1) {
            m_blocks.back().objects.reserve(kBlockSize); // the set grows: no steps on the way
        }
    }
    return m_blocks.back().objects;
}

void CVexDbIdSet::append(std::span<CVexDbObject* const> objects)
{
    const auto isNotBefore = [](const CVexDbObject* a, const CVexDbObject* b) {
        return a->getCreatedTime() >= b->getCreatedTime();
    };
    const bool ascends = std::ranges::adjacent_find(objects, isNotBefore) == objects.end();
    if (objects.empty() || !ascends || objects.front()->getCreatedTime() <= m_lastKey) {
        for (CVexDbObject* object : objects) {
            insert(CVexDbObjectId(object));
        }
        return;
    }
    m_lastKey = objects.back()->getCreatedTime();
    m_size += objects.size();
    m_revision += objects.size();
    while (!objects.empty()) {
        std::vector<CVexDbObject*>& block = blockWithRoom(objects.front()->getCreatedTime());
        const auto part = objects.first(std::min(kBlockSize - block.size(), objects.size()));
        block.insert(block.end(), part.begin(), part.end());
        objects = objects.subspan(part.size());
    }
}

CVexDbIdSet::const_iterator CVexDbIdSet::insertAt(const_iterator at, CVexDbObject* object,
                                                  std::uint64_t key)
{
    if (at == end()) {
        blockWithRoom(key).push_back(object);
        return const_iterator(m_blocks, m_blocks.size() - 1, m_blocks.back().objects.size() - 1);
    }
    std::size_t block = at.m_block;
    std::size_t slot = at.m_slot;
    if (m_blocks[block].objects.size() == kBlockSize) {
        std::vector<CVexDbObject*>& full = m_blocks[block].objects;
        const auto middle = full.begin() + kBlockSize / 2;
        Block upper{(*middle)->getCreatedTime(), {middle, full.end()}};
        full.erase(middle, full.end());
        m_blocks.insert(m_blocks.begin() + static_cast<std::ptrdiff_t>(block) + 1,
                        std::move(upper));
        if (slot >= kBlockSize / 2) {
            ++block;
            slot -= kBlockSize / 2;
        }
    }
    std::vector<CVexDbObject*>& objects = m_blocks[block].objects;
    objects.insert(objects.begin() + static_cast<std::ptrdiff_t>(slot), object);
    if (slot == 0) {
        m_blocks[block].firstKey = key;
    }
    return const_iterator(m_blocks, block, slot);
}

std::size_t CVexDbIdSet::erase(const CVexDbObjectId& id)
{
    const const_iterator at = find(id);
    if (at == end()) {
        return 0;
    }
    removeAt(at.m_block, at.m_slot);
    return 1;
}

CVexDbIdSet::const_iterator CVexDbIdSet::erase(const_iterator at)
{
    const std::uint64_t key = at.object()->getCreatedTime();
    removeAt(at.m_block, at.m_slot);
    return lower_bound(key);
}

void CVexDbIdSet::removeAt(std::size_t block, std::size_t slot)
{
    std::vector<CVexDbObject*>& objects = m_blocks[block].objects;
    objects.erase(objects.begin() + static_cast<std::ptrdiff_t>(slot));
    --m_size;
    ++m_revision;
    if (objects.empty()) {
        m_blocks.erase(m_blocks.begin() + static_cast<std::ptrdiff_t>(block));
    } else {
        m_blocks[block].firstKey = objects.front()->getCreatedTime();
        joinSmall(block);
    }
    settleLastKey();
}

void CVexDbIdSet::joinSmall(std::size_t block)
{
    const auto joined = [this](std::size_t first) {
        return first + 1 < m_blocks.size() &&
               m_blocks[first].objects.size() + m_blocks[first + 1].objects.size() <= kJoinedSize;
    };
    if (!joined(block)) {
        if (block == 0 || !joined(block - 1)) {
            return;
        }
        --block;
    }
    std::vector<CVexDbObject*>& lower = m_blocks[block].objects;
    const std::vector<CVexDbObject*>& upper = m_blocks[block + 1].objects;
    lower.insert(lower.end(), upper.begin(), upper.end());
    m_blocks.erase(m_blocks.begin() + static_cast<std::ptrdiff_t>(block) + 1);
}

void CVexDbIdSet::settleLastKey()
{
    m_lastKey = m_blocks.empty() ? 0 : m_blocks.back().objects.back()->getCreatedTime();
}

CVexDbIdSet::const_iterator CVexDbIdSet::find(const CVexDbObjectId& id) const
{
    if (id.isNull()) {
        return end();
    }
    const std::uint64_t key = id.getPObject()->getCreatedTime();
    const const_iterator at = lower_bound(key);
    return at != end() && at.object()->getCreatedTime() == key ? at : end();
}

CVexDbIdSet::const_iterator CVexDbIdSet::normalized(std::size_t block, std::size_t slot) const
{
    return slot == m_blocks[block].objects.size() ? const_iterator(m_blocks, block + 1, 0)
                                                  : const_iterator(m_blocks, block, slot);
}

CVexDbIdSet::const_iterator CVexDbIdSet::lower_bound(std::uint64_t createdTime) const
{
    const auto behind = std::upper_bound(
        m_blocks.begin(), m_blocks.end(), createdTime,
        [](std::uint64_t key, const Block& block) { return key < block.firstKey; });
    if (behind == m_blocks.begin()) {
        return begin();
    }
    const auto block = static_cast<std::size_t>(behind - m_blocks.begin()) - 1;
    const std::vector<CVexDbObject*>& objects = m_blocks[block].objects;
    const auto at = std::lower_bound(objects.begin(), objects.end(), createdTime,
                                     [](const CVexDbObject* object, std::uint64_t key) {
                                         return object->getCreatedTime() < key;
                                     });
    return normalized(block, static_cast<std::size_t>(at - objects.begin()));
}

CVexDbIdSet::const_iterator CVexDbIdSet::upper_bound(std::uint64_t createdTime) const
{
    const_iterator at = lower_bound(createdTime);
    if (at != end() && at.object()->getCreatedTime() == createdTime) {
        ++at;
    }
    return at;
}

void CVexDbIdSet::clear()
{
    m_blocks.clear();
    m_size = 0;
    m_lastKey = 0;
    ++m_revision;
}

void CVexDbIdSet::swap(CVexDbIdSet& other) noexcept
{
    m_blocks.swap(other.m_blocks);
    std::swap(m_size, other.m_size);
    std::swap(m_lastKey, other.m_lastKey);
    // Above both: an iterator that watched either set sees the change.
    m_revision = other.m_revision = std::max(m_revision, other.m_revision) + 1;
}

bool operator==(const CVexDbIdSet& a, const CVexDbIdSet& b)
{
    return a.m_size == b.m_size && std::equal(a.begin(), a.end(), b.begin());
}

bool CVexDbIdSet::isSound() const
{
    std::size_t count = 0;
    std::uint64_t last = 0;
    for (const Block& block : m_blocks) {
        if (block.objects.empty() || block.objects.size() > kBlockSize ||
            block.firstKey != block.objects.front()->getCreatedTime()) {
            return false;
        }
        for (const CVexDbObject* object : block.objects) {
            if (count++ != 0 && object->getCreatedTime() <= last) {
                return false;
            }
            last = object->getCreatedTime();
        }
    }
    return count == m_size && m_lastKey == last;
}
