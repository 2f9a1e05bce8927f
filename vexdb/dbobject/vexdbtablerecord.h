#pragma once

#include "vexdb/dbobject/vexdbobject.h"

class CVexDbTable;

/// A named record of a table.
class VEXDB_EXPORT CVexDbTableRecord : public CVexDbObject {
public:
    /// Characters of a name with its NUL, in 16-bit units.
    static constexpr int kNameCapacity = 81;
    /// What every record takes in a file at least: the object and the name.
    static constexpr int kLeastFileSize = 13 + 2 * kNameCapacity;

    explicit CVexDbTableRecord(CVexDbDatabase* database);
    /// A copy has an identity of its own and stands in no table.
    CVexDbTableRecord(const CVexDbTableRecord& other);
    CVexDbTableRecord& operator=(const CVexDbTableRecord&) = delete;
    ~CVexDbTableRecord() override;
    /// The object's 13 bytes, then the name, 162 bytes.
    bool save() override;
    bool read() override;
    void makeProperty() override {}
    /// Takes the name, cut to 80 characters in the caller's own string.
    virtual void setName(wchar_t* name);
    /// The same for a text that stays as it is.
    void setName(const CString& name);
    [[nodiscard]] CString getName() const { return CString(m_name); }
    [[nodiscard]] const wchar_t* name() const { return m_name; }
    /// The table that holds the record; null for one not added yet and for a retired one.
    [[nodiscard]] CVexDbTable* table() const { return m_table; }

protected:
    /// Takes over the name, unless this record stands in a table; a concrete record's operator=
    /// takes the data too. Neither moves identity, owner, status or database.
    void assignName(const CVexDbTableRecord& other);

    wchar_t m_name[kNameCapacity] = {};

private:
    friend class CVexDbTable;
    CVexDbTable* m_table = nullptr;
};
