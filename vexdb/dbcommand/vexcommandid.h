#pragma once

#include <cstdint>

namespace VexDb {

/// What DoCommand executes. Numbers in between are reserved: DoCommand does nothing for them.
enum CommandID : std::int32_t {
    CmdLine = 1,
    CmdArc = 2,
    CmdCircle = 3,
    CmdEllipse = 4,
    CmdEllipseArc = 5,
    CmdPolyline = 6,
    CmdArcPolyline = 7,
    CmdPolygon = 8,
    CmdPolyStar = 9,
    CmdSpiral = 10,
    CmdSpline = 11,
    CmdCSpline = 12,
    CmdCobweb = 13,
    CmdHatch = 15,
    CmdText = 16,
    CmdRect = 17,
    CmdBox = 18,
    CmdDim = 19,
    CmdErase = 24,
    CmdArray = 25,
    CmdCopy = 26,
    CmdCopyRotate = 27,
    CmdMirror = 28,
    CmdRotate = 29,
    CmdScale = 30,
    CmdMove = 31,
    CmdExplode = 32,
    CmdExtend = 33,
    CmdTrim = 34,
    CmdPolylineEdit = 36,
};

} // namespace VexDb
