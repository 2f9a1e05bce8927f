#pragma once

#include <cstdint>

namespace VexDb {

/// What an object is. The numbers go into drawing files.
enum ClassType : std::uint32_t {
    kEntity = 0,
    kCurve = 1,
    kArc = 2,
    kCircle = 3,
    kEllipse = 4,
    kEllipseArc = 5,
    kLine = 6,
    kPolyline = 7,
    kSpline = 8,
    kCubicSpline = 9,
    kSpiral = 10,
    kCobweb = 11,
    kBlockInsert = 12,
    kHatch = 13,
    kPoint = 14,
    kText = 15,
    kRectangle = 16,
    kDimension = 17,
    k2LineAngularDim = 18,
    k3PointAngularDim = 19,
    kAlignedDim = 20,
    kDiametricDim = 21,
    kHorizontalDim = 22,
    kLeaderDim = 23,
    kRadialDim = 24,
    kVerticalDim = 25,
    kBox = 26,
    kImage = 27,
    kSymbol = 28,
    kAttribDefinition = 29,
    kAttribute = 30,
    kTextTable = 31,
    kBlockTable = 32,
    kColorTable = 33,
    kDisplayTable = 34,
    kLayerTable = 35,
    kEntityTable = 36,
    kLinetypeTable = 37,
    kSymbolTable = 38,
    kTextStyleTable = 39,
    kProjectInfoTable = 40,
    kRevisionTable = 41,
    kBlockTableRecord = 42,
    kColorTableRecord = 43,
    kDisplayTableRecord = 44,
    kEntityTableRecord = 45,
    kLayerTableRecord = 46,
    kLinetypeTableRecord = 47,
    kSymbolTableRecord = 48,
    kTextStyleTableRecord = 49,
    kProjectInfoTableRecord = 50,
    kRevisionTableRecord = 51,
    kCommandHandler = 52,
    kUndoHandler = 53,
    kNotSelected = 54,
};

/// Line weight in hundredths of a millimetre, or one of the special values.
enum LineWeight : std::int32_t {
    kLineWeightByLayer = -1,
    kLineWeightByBlock = -2,
    kLineWeightDefault = -3,
};

} // namespace VexDb

/// Bits of an object's one status byte; they go into drawing files.
enum ObjectStatus : std::uint8_t {
    kStatusInvisible = 0x01,
    kStatusErased = 0x02,
    kStatusEntity = 0x04,
    kStatusHasAttribute = 0x08,
    kStatusCompoundObject = 0x10,
    kStatusUseNesting = 0x20,
    kStatusAttribute = 0x40,
    kStatusDimension = 0x80,
};
