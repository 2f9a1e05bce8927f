#pragma once

#include "vexdb/dbobject/vexdbrefset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"

#include <array>
#include <vector>

/// A linetype: a list of dashes in drawing units, positive draws, negative skips, 0 a dot.
class VEXDB_EXPORT CVexDbLTypeTableRecord : public CVexDbTableRecord, public CVexDbLayerRefSet {
public:
    static constexpr const wchar_t* kContinuous = L"CONTINUOUS";
    static constexpr const wchar_t* kByLayer = L"ByLayer";
    static constexpr const wchar_t* kByBlock = L"ByBlock";
    /// More dashes than this take no part in drawing.
    static constexpr int kMostPatternDashes = 32;

    explicit CVexDbLTypeTableRecord(CVexDbDatabase* database);
    CVexDbLTypeTableRecord(const CVexDbLTypeTableRecord& other);
    ~CVexDbLTypeTableRecord() override;
    bool save() override;
    bool read() override;
    CVexDbLTypeTableRecord& operator=(const CVexDbLTypeTableRecord& other);

    /// The dashes in logical units, without signs: even entries draw and odd ones skip. `scale` is
    /// logical units a drawing unit; the drawing's linetype scale goes in too. False with null for
    /// fewer than two dashes: drawn solid. Computed once and kept, whatever scales come later.
    bool getPattern(int*& out, double scale);
    [[nodiscard]] CString getDescription() const { return CString(m_description); }
    void setDescription(const wchar_t* text);
    /// As set, or the sum of the lengths of the dashes when 0 is set.
    [[nodiscard]] double patternLength() const;
    void setPatternLength(double length) { m_patternLength = length; }
    [[nodiscard]] int numDashes() const;
    /// Keeps the dashes that fit and fills up with 0; a negative number counts as 0.
    void setNumDashes(int count);
    /// 0.0 outside of the list.
    [[nodiscard]] double dashLengthAt(int index) const;
    void setDashLengthAt(int index, double length);

private:
    std::vector<double> m_dashes;
    std::array<int, kMostPatternDashes> m_pattern = {};
    wchar_t m_description[81] = {};
    double m_patternLength = 0.0;
    int m_count = 0;
};
