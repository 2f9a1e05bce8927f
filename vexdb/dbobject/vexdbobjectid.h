#pragma once

#include "platform/base/vexexport.h"

#include <cstdint>

class CVexDbDatabase;
class CVexDbObject;

/// A bare handle of a database object: valid exactly as long as the object lives, never owning it.
/// Identifiers order by creation, so every set of them iterates in drawing order. The ordering
/// operators need two objects: a null identifier is no legal operand of them.
class VEXDB_EXPORT CVexDbObjectId {
public:
    static const CVexDbObjectId kNULL;

    constexpr CVexDbObjectId() = default;
    constexpr CVexDbObjectId(const CVexDbObject* object)
        : m_object(const_cast<CVexDbObject*>(object))
    {
    }
    constexpr CVexDbObjectId(const CVexDbObjectId&) = default;
    constexpr CVexDbObjectId& operator=(const CVexDbObjectId&) = default;
    virtual ~CVexDbObjectId() = default;
    /// Forwards to the object; not for a null identifier.
    virtual bool isVisiable() const;

    [[nodiscard]] constexpr bool isNull() const { return m_object == nullptr; }
    void setNull() { m_object = nullptr; }
    void setPObject(CVexDbObject* object) { m_object = object; }
    [[nodiscard]] constexpr CVexDbObject* getPObject() const { return m_object; }
    /// Forward to the object; not for a null identifier.
    [[nodiscard]] CVexDbDatabase* database() const;
    [[nodiscard]] bool isErased() const;
    /// Writes the object; an identifier has no file form of its own.
    bool save() const;

    friend constexpr bool operator==(const CVexDbObjectId& a, const CVexDbObjectId& b)
    {
        return a.m_object == b.m_object;
    }
    friend constexpr bool operator==(const CVexDbObjectId& a, const CVexDbObject* b)
    {
        return a.m_object == b;
    }
    bool operator<(const CVexDbObjectId& other) const;
    bool operator>(const CVexDbObjectId& other) const { return other < *this; }
    bool operator>=(const CVexDbObjectId& other) const { return !(*this < other); }
    bool operator<=(const CVexDbObjectId& other) const { return !(other < *this); }

    // Against a number it is the hard identifier that counts, not the address.
    bool operator==(std::uint64_t hardId) const;
    bool operator<(std::uint64_t hardId) const;
    bool operator>(std::uint64_t hardId) const;
    bool operator<=(std::uint64_t hardId) const { return !(*this > hardId); }
    bool operator>=(std::uint64_t hardId) const { return !(*this < hardId); }

private:
    CVexDbObject* m_object = nullptr;
};
