#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexxy.h"

#include <cstddef>
#include <cstdint>

class CFile;

/// How many entities hold the list that a node heads. Copying a node's value copies no holder.
class VexXDataHolders {
public:
    VexXDataHolders() = default;
    VexXDataHolders(const VexXDataHolders&) {}
    VexXDataHolders& operator=(const VexXDataHolders&) { return *this; }
    [[nodiscard]] bool any() const { return m_count != 0; }
    void add() { ++m_count; }
    /// Gives how many are left.
    std::int32_t remove() { return m_count > 0 ? --m_count : 0; }

private:
    std::int32_t m_count = 0;
};

/// A typed value: what a tracker returns, and a node of an entity's extended data. In a list each
/// node comes from `new Return_Struct`, and the text of a string node from `new wchar_t[]`.
struct Return_Struct {
    /// The type whose value is a text that the node owns.
    static constexpr std::int32_t kString = 3007;

    std::int32_t type = 0;
    VexXDataHolders holders; // of the list that starts here
    Return_Struct* next = nullptr;
    union Value {
        std::byte bytes[24]; // what a file keeps, for every type but a string
        double number;
        VexXY point;
        wchar_t character;
        wchar_t* text; // ends with a NUL; null is an empty text
    } value = {};
};
static_assert(sizeof(Return_Struct::Value) == 24, "a file has 24 bytes for a value");

/// Counts one more holder of the list; null is allowed. The list may run on into one that is held
/// already: that one lives until both are let go.
VEXDB_EXPORT void holdXData(Return_Struct* head);
/// Counts one holder less and leaves the list alone.
VEXDB_EXPORT void letGoXData(Return_Struct* head);
/// Counts one holder less; the last one frees the nodes and their texts.
VEXDB_EXPORT void releaseXData(Return_Struct* head);
/// Whether a file's 16-bit counts can tell the list: at most 65535 nodes, each text of at most
/// 65535 UTF-16 units.
VEXDB_EXPORT bool xdataFits(const Return_Struct* head);
/// Writes the count and the nodes; a list that does not fit fails the file.
VEXDB_EXPORT bool saveXData(CFile& file, const Return_Struct* head);
/// Reads what saveXData wrote into a new list, which nobody holds yet; null for a count of 0, and
/// with false when the counts do not fit the file or memory is refused.
VEXDB_EXPORT bool readXData(CFile& file, Return_Struct*& head);
