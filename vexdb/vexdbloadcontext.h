#pragma once

#include "platform/base/cstring.h"
#include "vexdb/dbobject/vexdbobject.h"
#include "vexdb/vexdbloadreport.h"

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

class CVexDbBlockTableRecord;
class CVexDbColorTableRecord;
class CVexDbDatabase;
class CVexDbEntity;
class CVexDbLayerTableRecord;
class CVexDbLTypeTableRecord;
class CVexDbTable;
class CVexDbTableRecord;
class CVexDbTextStyleTableRecord;

/// What a running Read knows and a drawing at rest does not: which record a number of the file
/// stands for, which numbers are taken, and what was wrong. Alive only while CVexDbDatabase::Read
/// runs (CVexDbDatabase::loading()).
class VEXDB_EXPORT CVexDbLoadContext {
public:
    CVexDbLoadContext(CVexDbDatabase& database, VexDbLoadReport& report);
    ~CVexDbLoadContext();
    CVexDbLoadContext(const CVexDbLoadContext&) = delete;
    CVexDbLoadContext& operator=(const CVexDbLoadContext&) = delete;

    // The record that a file's number stands for, null when there is none (a fault, unless the
    // number is 0); the first holder of a number that the file repeats. Each table is complete
    // before anything refers to it.
    CVexDbColorTableRecord* colorByHardId(std::uint64_t hardId);
    CVexDbLTypeTableRecord* linetypeByHardId(std::uint64_t hardId);
    CVexDbLayerTableRecord* layerByHardId(std::uint64_t hardId);
    CVexDbTextStyleTableRecord* textStyleByHardId(std::uint64_t hardId);
    /// The colour record named by this number in decimal, null when there is none (a fault).
    CVexDbColorTableRecord* colorByIndex(int index);

    /// Called by CVexDbObject::read for each object, once its number is set from the file. A number
    /// that is 0, 2^63 or above, or held already is replaced and reported: a record's at once, an
    /// entity's at the end of the Read, when all others are known.
    void acceptNumber(CVexDbObject& object)
    {
        const std::uint64_t number = object.getCreatedTime();
        m_numberRefused = false;
        m_numberAscends = false;
        // A block's entities ascend, so nearly all of a file comes through here.
        if (m_inBlock && number > m_largestEntity && number < kNumberLimit) {
            m_largestEntity = number;
            m_numberAscends = true;
            return;
        }
        acceptRareNumber(object, number);
    }
    /// Records what makes no sense, with the file's present offset; Read then answers false.
    /// Reading goes on: a reader that cannot go on marks the file failed too.
    void fault(const CString& what);
    /// As fault, at an offset of the file.
    void fault(const CString& what, std::uint64_t offset);
    /// Records what a person should know although nothing is lost; Read's answer is as without it.
    void note(const CString& what);
    /// True once fault was called.
    [[nodiscard]] bool isDamaged() const { return m_damaged; }
    /// What fault was called with first.
    [[nodiscard]] const VexDbFault& firstFault() const { return m_firstFault; }

    // For Read itself and the block records.

    /// The records of another table follow; its numbers are judged by themselves.
    void enterTable();
    /// The entities of a block follow, until leaveBlock.
    void enterBlock() { m_inBlock = true; }
    void leaveBlock();
    /// True for a record that the fresh drawing had before the Read.
    [[nodiscard]] bool isOurs(const CVexDbTableRecord* record) const;
    /// Takes over an entity that was read whole, and counts it: enters it in the database, at the
    /// latest when the block ends, or keeps it until finish() when its number was refused.
    void keepEntity(CVexDbBlockTableRecord& block, CVexDbEntity* entity);
    /// Gives the entities kept back fresh numbers and enters them in their blocks, puts the counter
    /// of numbers above all that were read, and counts the records.
    void finish();

private:
    // A signed 64-bit number elsewhere must be able to hold one.
    static constexpr std::uint64_t kNumberLimit = std::uint64_t{1} << 63;

    // The records of one table by their number in the file, made at the first look.
    struct Index {
        const CVexDbTable& table;
        const wchar_t* name; // for messages
        std::unordered_map<std::uint64_t, CVexDbTableRecord*> records;
        std::uint64_t lastNumber = 0;
        CVexDbTableRecord* last = nullptr;
        bool made = false;
    };

    CVexDbTableRecord* recordByHardId(Index& index, std::uint64_t hardId);
    void makeIndex(Index& index);
    void acceptRareNumber(CVexDbObject& object, std::uint64_t number);
    void acceptRecordNumber(CVexDbObject& record, std::uint64_t number);
    bool entityHolds(std::uint64_t number);
    void enterRun();
    void makeRoomFor(std::uint64_t number);
    std::uint64_t freshNumber();
    [[nodiscard]] std::uint64_t largestNumber() const
    {
        return m_largestEntity > m_largestRecord ? m_largestEntity : m_largestRecord;
    }
    void noteReplaced(std::uint64_t number);

    CVexDbDatabase& m_database;
    VexDbLoadReport& m_report;
    bool m_damaged = false;
    VexDbFault m_firstFault;
    bool m_inBlock = false;
    bool m_numberRefused = false;     // of the object accepted last
    bool m_numberAscends = false;     // likewise: it is above those of all entities before it
    std::vector<CVexDbObject*> m_run; // entities of the current block with ascending numbers
    std::uint64_t m_largestEntity = 0;
    std::uint64_t m_largestRecord = 0;
    std::vector<CVexDbTableRecord*> m_ours; // records of the fresh drawing
    std::unordered_set<std::uint64_t> m_numbersOfTable;
    std::unordered_set<std::uint64_t> m_freshNumbers;
    std::unordered_map<const CVexDbObject*, std::uint64_t> m_numberInFile; // of replaced ones
    std::vector<std::pair<CVexDbBlockTableRecord*, CVexDbEntity*>> m_keptBack;
    Index m_colors;
    Index m_linetypes;
    Index m_layers;
    Index m_textStyles;
    std::unordered_map<int, CVexDbColorTableRecord*> m_colorsByIndex;
    int m_lastColorIndex = 0;
    CVexDbColorTableRecord* m_lastColor = nullptr;
};
