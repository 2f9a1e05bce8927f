#pragma once

#include "vexdb/dbobject/vexdbrefset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"

#include <cstdint>

/// How text is set: by a vector font with an optional big font, or by a TrueType face. The names
/// of vector fonts are without extension.
class VEXDB_EXPORT CVexDbTextStyleTableRecord : public CVexDbTableRecord, public CVexDbRefSet {
public:
    static constexpr const wchar_t* kStandard = L"STANDARD";

    explicit CVexDbTextStyleTableRecord(CVexDbDatabase* database);
    CVexDbTextStyleTableRecord(const CVexDbTextStyleTableRecord& other);
    ~CVexDbTextStyleTableRecord() override;
    bool save() override;
    /// Whether the font can be vertical is taken from the file: it may not be on this machine.
    bool read() override;
    CVexDbTextStyleTableRecord& operator=(const CVexDbTextStyleTableRecord& other);

    [[nodiscard]] bool isVertical() const { return (m_flags & kVertical) != 0; }
    [[nodiscard]] bool isMirrorX() const { return (m_flags & kMirrorX) != 0; }
    [[nodiscard]] bool isMirrorY() const { return (m_flags & kMirrorY) != 0; }
    [[nodiscard]] bool isTTF() const { return (m_flags & kTrueType) != 0; }
    /// True when one of the two vector fonts has a vertical form.
    [[nodiscard]] bool isVerticalFont() const { return (m_flags & kVerticalFont) != 0; }
    /// With a font that cannot be vertical the style becomes horizontal whatever is asked.
    void setIsVertical(bool vertical) { setFlag(kVertical, vertical && isVerticalFont()); }
    void setMirrorX(bool mirrored) { setFlag(kMirrorX, mirrored); }
    void setMirrorY(bool mirrored) { setFlag(kMirrorY, mirrored); }
    void setIsTTF(bool trueType) { setFlag(kTrueType, trueType); }
    void resetFlag() { m_flags = 0; }

    [[nodiscard]] double textSize() const { return m_textSize; } // drawing units, 0 not fixed
    void setTextSize(double size) { m_textSize = size; }
    [[nodiscard]] double priorSize() const { return m_priorSize; }
    void setPriorSize(double size) { m_priorSize = size; }
    [[nodiscard]] double obliquingAngle() const { return m_obliquingAngle; }
    void setObliquingAngle(double angle) { m_obliquingAngle = angle; }
    [[nodiscard]] double widthFactor() const { return m_widthFactor; }
    void setWidthFactor(double factor) { m_widthFactor = factor; }

    // Each name as a text, or as a pointer into the record. The setters look whether the font on
    // this machine has a vertical form.
    [[nodiscard]] CString fileName() const { return CString(m_fileName); }
    void fileName(wchar_t*& out) { out = m_fileName; }
    void setFileName(const wchar_t* name);
    [[nodiscard]] CString bigFileName() const { return CString(m_bigFileName); }
    void bigFileName(wchar_t*& out) { out = m_bigFileName; }
    void setBigFileName(const wchar_t* name);
    /// The TrueType face; `face` points into the record.
    void font(wchar_t*& face, bool& bold, bool& italic, int& charset, int& pitchAndFamily);
    void setFont(const wchar_t* face, bool bold, bool italic, int charset, int pitchAndFamily);

private:
    static constexpr std::uint8_t kVertical = 0x01;
    static constexpr std::uint8_t kMirrorX = 0x02;
    static constexpr std::uint8_t kMirrorY = 0x04;
    static constexpr std::uint8_t kTrueType = 0x08;
    static constexpr std::uint8_t kVerticalFont = 0x10;
    void setFlag(std::uint8_t bit, bool on)
    {
        m_flags = static_cast<std::uint8_t>(on ? m_flags | bit : m_flags & ~bit);
    }
    void walkFields(auto& archive);

    std::uint8_t m_flags = 0;
    double m_textSize = 0.0;
    double m_widthFactor = 0.0;
    double m_obliquingAngle = 0.0;
    double m_priorSize = 0.0;
    wchar_t m_fileName[81] = {};
    wchar_t m_bigFileName[81] = {};
    wchar_t m_faceName[81] = {};
    bool m_bold = false;
    bool m_italic = false;
    std::int32_t m_charset = 0;
    std::int32_t m_pitchAndFamily = 0;
};
