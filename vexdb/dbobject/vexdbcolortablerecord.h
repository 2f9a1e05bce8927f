#pragma once

#include "platform/device/vexdevicetypes.h"
#include "vexdb/dbobject/vexdbrefset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"

/// A colour of the drawing. Its name is its palette index in decimal, "0" to "256".
class VEXDB_EXPORT CVexDbColorTableRecord : public CVexDbTableRecord, public CVexDbLayerRefSet {
public:
    static constexpr const wchar_t* kByLayer = L"256";
    static constexpr int kByLayerIndex = 256;
    static constexpr int kByBlockIndex = 0;

    explicit CVexDbColorTableRecord(CVexDbDatabase* database);
    /// A copy is referred to by nothing.
    CVexDbColorTableRecord(const CVexDbColorTableRecord& other);
    ~CVexDbColorTableRecord() override;
    bool save() override;
    bool read() override;
    CVexDbColorTableRecord& operator=(const CVexDbColorTableRecord& other);

    [[nodiscard]] COLORREF getColor() const { return m_color; }
    void setColor(const unsigned long& color) { m_color = static_cast<COLORREF>(color); }
    [[nodiscard]] int red() const { return static_cast<int>(GetRValue(m_color)); }
    [[nodiscard]] int green() const { return static_cast<int>(GetGValue(m_color)); }
    [[nodiscard]] int blue() const { return static_cast<int>(GetBValue(m_color)); }
    /// Also keeps the index.
    void setName(wchar_t* name) override;
    using CVexDbTableRecord::setName;
    /// The name as a number.
    [[nodiscard]] int colorIndex() const { return m_index; }
    [[nodiscard]] bool isColorModified() const { return m_modified; }
    void setColorModified(bool modified) { m_modified = modified; }
    /// The natural name; empty until getNaturColorName or setColorName has set it.
    [[nodiscard]] CString getColorName() const { return CString(m_colorName); }
    void setColorName(const wchar_t* name);
    /// "red" and the like for the eight full colours, "ByBlock" and "ByLayer" for white under the
    /// indices 0 and 256, the index for the rest; kept as the natural name too.
    void getNaturColorName(CString& out);

private:
    void renewIndex();

    int m_index = 0; // the name, which drawing and saving would else parse for each entity
    wchar_t m_colorName[10] = {};
    COLORREF m_color = 0;
    bool m_modified = false;
};
