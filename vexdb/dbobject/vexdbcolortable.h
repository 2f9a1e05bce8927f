#pragma once

#include "vexdb/dbobject/vexdbcolortablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

#include <array>

/// The colours that a drawing uses: a named subset of the palette.
class VEXDB_EXPORT CVexDbColorTable : public CVexDbTableWithCurrent<CVexDbColorTableRecord> {
public:
    explicit CVexDbColorTable(CVexDbDatabase* database);
    ~CVexDbColorTable() override;
    void initColorTable();
    using CVexDbTypedTable<CVexDbColorTableRecord>::getRecord;
    /// The first record, in key order, of this colour.
    bool getRecord(unsigned long color, CVexDbColorTableRecord*& record, bool) const;
    // For the colour of the entity that `id` stands for.
    bool addRefEntity(const CVexDbObjectId& id);
    bool removeEntity(const CVexDbObjectId& id);

protected:
    [[nodiscard]] bool mayRemove(const CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;

private:
    void addDefault(int index);
};

/// The palette: 256 colours, "by layer" at 256, and an end entry.
constexpr int kPaletteSize = 258;
extern VEXDB_EXPORT const std::array<COLORREF, kPaletteSize> _dwColorIndex;
/// The palette's colour; outside of it, its end entry.
VEXDB_EXPORT COLORREF _getColorValueByIndex(int index);
/// The first index from 0 to 256 of this colour, else 0.
VEXDB_EXPORT int _getColorIndexByValue(COLORREF color);
/// The colour of a colour record; colour "7" for a null identifier.
VEXDB_EXPORT COLORREF getColor(const CVexDbObjectId& id);
