#pragma once

#include "platform/base/cfile.h"
#include "platform/base/vexexport.h"
#include "vexge/gemath/vexxy.h"

#include <cstddef>
#include <cstdint>

// The three fixed blocks at the head of a drawing file, also the live settings of a database. What
// stands where in the file is told once, in vexdbfileblocks.cpp, as a table of offsets.

struct VEXDB_EXPORT VexDbFileHeader_tag {
    static constexpr std::size_t kFileSize = 0x543e;
    static constexpr std::size_t kThumbnailSize = 0x4f38;

    wchar_t m_szSignature[12];
    wchar_t m_szComputer[33];
    wchar_t m_szUser[33];
    wchar_t m_szTitle[33];
    wchar_t m_szVersion[8];
    wchar_t m_szDate[12];
    wchar_t m_szFolder[256];
    wchar_t m_szDescription[256];
    std::byte m_thumbnail[kThumbnailSize];

    /// A fresh drawing's header: signature and version, all else empty.
    VexDbFileHeader_tag();
    bool save(CFile& file) const;
    bool read(CFile& file);
};

struct VEXDB_EXPORT VexDbDrawingSettings_tag {
    static constexpr std::size_t kFileSize = 0x4b0;

    bool m_bOrtho; // input and read-out held to the axes from the last point
    std::uint8_t m_nGridDivisions;
    bool m_bGripSnap;
    bool m_bGridVisible;
    bool m_bPolarReadout; // read-out as distance and angle
    bool m_bGridSnap;
    std::uint8_t m_nReserved6;
    std::uint8_t m_nReserved7;
    std::uint8_t m_nReserved8;
    std::uint8_t m_nPointStyle; // shape of point entities
    std::uint8_t m_nPointSize;  // pixels
    std::uint8_t m_nPickBox;    // pixels
    bool m_bSnapIntersection;
    bool m_bSnapCenter;
    bool m_bSnapNearest;
    bool m_bGridPointSnap;
    std::uint32_t m_nReserved10;
    std::uint16_t m_nCurrentSpace; // 0 model, 1 paper
    double m_dLinetypeScale;       // multiplies dash lengths
    double m_dTextHeight;          // drawing units
    double m_dGridStep;            // drawing units
    double m_dReserved30;
    double m_dReserved38;
    double m_dZoomStep;
    double m_dScalePercent; // divisor of tracker percentages
    VexXY m_ptBlockBase;
    VexXY m_ptLimitsMin;
    VexXY m_ptLimitsMax;
    VexXY m_ptExtentsMin;
    VexXY m_ptExtentsMax;
    VexXY m_ptViewMin; // last display window, drawing units
    VexXY m_ptViewMax;
    std::int16_t m_nColorIndex;
    std::int32_t m_nLineWeight; // VexDb::LineWeight
    wchar_t m_szLayer[81];
    wchar_t m_szLinetype[81];
    wchar_t m_szTextStyle[81];
    VexXY m_ptPaperMin;
    VexXY m_ptPaperMax;

    /// The defaults of a fresh drawing.
    VexDbDrawingSettings_tag();
    bool save(CFile& file) const;
    bool read(CFile& file);
};

struct VEXDB_EXPORT VexDbDimSettings_tag {
    static constexpr std::size_t kFileSize = 0xe8;

    wchar_t m_szArrowBlock[32];
    wchar_t m_szTextStyle[32];
    std::int16_t m_nAngularPlaces;
    std::int16_t m_nAngularReserved;
    std::int16_t m_nLineColor;
    std::int16_t m_nExtensionColor;
    std::int16_t m_nTextColor;
    std::int16_t m_nLinearPlaces;
    std::int16_t m_nReserved8c;
    std::int16_t m_nReserved8e;
    std::int16_t m_nSuppressZeros;
    double m_dArrowSize;
    double m_dReservedA0;
    double m_dReservedA8;
    double m_dReservedB0;
    double m_dLengthFactorB8;
    double m_dReservedC0;
    double m_dReservedC8;
    double m_dReservedD0;
    double m_dReservedD8;
    double m_dReservedE0;

    VexDbDimSettings_tag();
    bool save(CFile& file) const;
    bool read(CFile& file);
};
