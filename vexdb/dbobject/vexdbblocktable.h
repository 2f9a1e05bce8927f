#pragma once

#include "vexdb/dbobject/vexdbblocktablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

#include <cstdint>

/// The blocks of a drawing; its current record takes new entities.
class VEXDB_EXPORT CVexDbBlockTable : public CVexDbTableWithCurrent<CVexDbBlockTableRecord> {
public:
    static constexpr const wchar_t* kModelSpace = L"MODEL_SPACE";
    static constexpr const wchar_t* kPaperSpace = L"PAPER_SPACE";

    explicit CVexDbBlockTable(CVexDbDatabase* database);
    ~CVexDbBlockTable() override;
    void initBlockTable(bool paperSpace);
    /// Makes the named block and its view current; true when it is there.
    bool SetCurentSpace(const wchar_t* name);
    /// The first entity of the current block with this hard identifier; else the null identifier.
    CVexDbObjectId getObjectId(std::uint64_t hardId) const;
    /// True for the names of the two spaces.
    [[nodiscard]] static bool isSpace(const wchar_t* name);

protected:
    /// A space keeps its name, and a block does not take the name of another view.
    [[nodiscard]] bool mayRename(const CVexDbTableRecord& record,
                                 const wchar_t* name) const override;
    /// Refuses the current block, the one whose view is current, and the two spaces.
    [[nodiscard]] bool mayRemove(const CVexDbTableRecord& record) override;
    /// A block that was filled before makes its entities ones of the drawing here.
    void onAdded(CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;
    void detach(CVexDbTableRecord& record) override;

private:
    void addSpace(const wchar_t* name);
};
