#pragma once

#include "vexdb/dbobject/vexdbtablerecord.h"

#include <cstdint>

/// Free information about the project. What its fields mean is the host's to say.
class VEXDB_EXPORT CVexDbProjectInfoTableRecord : public CVexDbTableRecord {
public:
    explicit CVexDbProjectInfoTableRecord(CVexDbDatabase* database);
    CVexDbProjectInfoTableRecord(const CVexDbProjectInfoTableRecord& other) = default;
    ~CVexDbProjectInfoTableRecord() override;
    bool save() override;
    bool read() override;
    CVexDbProjectInfoTableRecord& operator=(const CVexDbProjectInfoTableRecord& other);
    /// Names the record after the table's next number, "*S7"; `buffer` (81 characters) gets the
    /// name.
    void SetAutoName(wchar_t* buffer);

    [[nodiscard]] std::int32_t firstValue() const { return m_firstValue; }
    void setFirstValue(std::int32_t value) { m_firstValue = value; }
    [[nodiscard]] std::int32_t secondValue() const { return m_secondValue; }
    void setSecondValue(std::int32_t value) { m_secondValue = value; }
    [[nodiscard]] CString text() const { return CString(m_text); }
    void setText(const wchar_t* text);

private:
    std::int32_t m_firstValue = 0;
    std::int32_t m_secondValue = 0;
    wchar_t m_text[81] = {};
};
