#pragma once

#include "vexdb/dbobject/vexdbtablerecord.h"

#include <cstdint>

/// One revision of a drawing. What its fields mean is the host's to say.
class VEXDB_EXPORT CVexDbRevisionTableRecord : public CVexDbTableRecord {
public:
    explicit CVexDbRevisionTableRecord(CVexDbDatabase* database);
    CVexDbRevisionTableRecord(const CVexDbRevisionTableRecord& other) = default;
    ~CVexDbRevisionTableRecord() override;
    bool save() override;
    bool read() override;
    CVexDbRevisionTableRecord& operator=(const CVexDbRevisionTableRecord& other);
    /// Names the record after the table's next number, "*S7"; `buffer` (81 characters) gets the
    /// name.
    void SetAutoName(wchar_t* buffer);

    [[nodiscard]] std::int32_t value() const { return m_value; }
    void setValue(std::int32_t value) { m_value = value; }
    // At most 81, 255 and 255 characters.
    [[nodiscard]] CString firstText() const { return CString(m_firstText); }
    void setFirstText(const wchar_t* text);
    [[nodiscard]] CString secondText() const { return CString(m_secondText); }
    void setSecondText(const wchar_t* text);
    [[nodiscard]] CString thirdText() const { return CString(m_thirdText); }
    void setThirdText(const wchar_t* text);

private:
    std::int32_t m_value = 0;
    wchar_t m_firstText[82] = {};
    wchar_t m_secondText[256] = {};
    wchar_t m_thirdText[256] = {};
};
