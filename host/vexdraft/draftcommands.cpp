#include "host/vexdraft/draftcommands.h"

namespace {

constexpr unsigned long kLine = hostNumberOf(VexDb::CmdLine);
constexpr unsigned long kArc = hostNumberOf(VexDb::CmdArc);
constexpr unsigned long kCircle = hostNumberOf(VexDb::CmdCircle);
constexpr unsigned long kRectangle = hostNumberOf(VexDb::CmdRect);
constexpr unsigned long kBox = hostNumberOf(VexDb::CmdBox);
constexpr unsigned long kPolyline = hostNumberOf(VexDb::CmdPolyline);
constexpr unsigned long kArcPolyline = hostNumberOf(VexDb::CmdArcPolyline);
constexpr unsigned long kPolygon = hostNumberOf(VexDb::CmdPolygon);
constexpr unsigned long kPolyStar = hostNumberOf(VexDb::CmdPolyStar);
constexpr unsigned long kPolylineEdit = hostNumberOf(VexDb::CmdPolylineEdit);
constexpr unsigned long kErase = hostNumberOf(VexDb::CmdErase);
constexpr unsigned long kMove = hostNumberOf(VexDb::CmdMove);
constexpr unsigned long kCopy = hostNumberOf(VexDb::CmdCopy);
constexpr unsigned long kRotate = hostNumberOf(VexDb::CmdRotate);
constexpr unsigned long kCopyRotate = hostNumberOf(VexDb::CmdCopyRotate);
constexpr unsigned long kScale = hostNumberOf(VexDb::CmdScale);
constexpr unsigned long kMirror = hostNumberOf(VexDb::CmdMirror);
constexpr unsigned long kTrim = hostNumberOf(VexDb::CmdTrim);
constexpr unsigned long kExtend = hostNumberOf(VexDb::CmdExtend);
constexpr unsigned long kExplode = hostNumberOf(VexDb::CmdExplode);
constexpr unsigned long kGap = 0;

constexpr std::array kCommands = {
    DraftCommand{kHostNew, "&New", "Begin an empty drawing", "Ctrl+N", "new"},
    DraftCommand{kHostOpen, "&Open…", "Open a drawing", "Ctrl+O", "open"},
    DraftCommand{kHostSave, "&Save", "Save the drawing", "Ctrl+S", "save"},
    DraftCommand{kHostSaveAs, "Save &As…", "Save the drawing under another name", "Ctrl+Shift+S",
                 ""},
    DraftCommand{kHostQuit, "&Quit", "Leave the program", "Ctrl+Q", ""},
    DraftCommand{kHostUndo, "&Undo", "Take the last step back", "Ctrl+Z", "undo"},
    DraftCommand{kHostRedo, "&Redo", "Do again what was undone", "Ctrl+Y", "redo"},
    DraftCommand{kHostSelectAll, "Select &All", "Select every visible entity", "Ctrl+A", ""},
    DraftCommand{kHostClearSelection, "Select &None", "Drop the selection", "", ""},
    DraftCommand{kErase, "&Erase", "Erase what is selected", "Del", "erase"},
    DraftCommand{kHostZoomExtents, "Zoom &Extents", "Show the whole drawing", "Ctrl+0", "extents"},
    DraftCommand{kHostZoomAll, "Zoom &Limits", "Show the limits of the drawing", "", ""},
    DraftCommand{kHostZoomWindow, "Zoom &Window", "Show a rectangle", "", "window"},
    DraftCommand{kHostZoomIn, "Zoom &In", "Show less, larger", "Ctrl++", "in"},
    DraftCommand{kHostZoomOut, "Zoom &Out", "Show more, smaller", "Ctrl+-", "out"},
    DraftCommand{kHostZoomPrevious, "Zoom &Previous", "Show what was shown before", "", "previous"},
    DraftCommand{kHostPan, "P&an", "Move the view by two points", "", "pan"},
    DraftCommand{kHostRedraw, "&Redraw", "Draw the view anew", "Ctrl+R", ""},
    DraftCommand{kHostGrid, "GRID", "Show the grid", "F7", "", true},
    DraftCommand{kHostGridSnap, "SNAP", "Round points to the grid", "F9", "", true},
    DraftCommand{kHostOrtho, "ORTHO", "Hold points to the axes", "F8", "", true},
    DraftCommand{kHostGripSnap, "GRIP", "Snap to the grips of entities", "F4", "", true},
    DraftCommand{kLine, "&Line", "Draw straight lines", "", "line"},
    DraftCommand{kArc, "&Arc", "Draw an arc by three points, or C for its centre", "", "arc"},
    DraftCommand{kHostArcContinue, "Arc O&nwards", "Go on tangentially from the last line or arc",
                 "", ""},
    DraftCommand{kCircle, "&Circle", "Draw a circle by centre and radius", "", "circle"},
    DraftCommand{kRectangle, "&Rectangle", "Draw a rectangle by two corners", "", "rectangle"},
    DraftCommand{kBox, "&Box", "Draw a rectangle by two corners and its angle", "", "box"},
    DraftCommand{kPolyline, "&Polyline", "Draw lines and arcs in one piece", "", "polyline"},
    DraftCommand{kArcPolyline, "Arc Pol&yline", "Draw a polyline that begins with an arc", "",
                 "arcpolyline"},
    DraftCommand{kPolygon, "Poly&gon", "Draw a regular polygon", "", "polygon"},
    DraftCommand{kPolyStar, "&Star", "Draw a star", "", "star"},
    DraftCommand{kPolylineEdit, "E&dit Polyline", "Close, open, break, join or round a polyline",
                 "", "editpolyline"},
    DraftCommand{kHostOffset, "O&ffset", "Draw parallels to curves", "", "offset"},
    DraftCommand{kHostFill, "Fi&ll", "Fill closed polylines, or empty them", "", "fill"},
    DraftCommand{kMove, "&Move", "Move entities", "", "move"},
    DraftCommand{kCopy, "&Copy", "Copy entities to one place after another", "", "copy"},
    DraftCommand{kRotate, "&Rotate", "Turn entities about a point", "", "rotate"},
    DraftCommand{kCopyRotate, "C&opy and Rotate", "Copy entities and turn the copies", "", ""},
    DraftCommand{kScale, "&Scale", "Make entities larger or smaller", "", "scale"},
    DraftCommand{kMirror, "M&irror", "Mirror entities about a line", "", "mirror"},
    DraftCommand{kTrim, "&Trim", "Cut curves off at others", "", "trim"},
    DraftCommand{kExtend, "&Extend", "Lengthen curves up to others", "", "extend"},
    DraftCommand{kExplode, "E&xplode", "Take entities apart into their pieces", "", "explode"},
};

constexpr unsigned long kFile[] = {kHostNew,    kHostOpen, kGap,     kHostSave,
                                   kHostSaveAs, kGap,      kHostQuit};
constexpr unsigned long kEdit[] = {kHostUndo,           kHostRedo, kGap,  kHostSelectAll,
                                   kHostClearSelection, kGap,      kErase};
constexpr unsigned long kView[] = {
    kHostZoomExtents,  kHostZoomAll,  kHostZoomWindow, kHostZoomIn,  kHostZoomOut,
    kHostZoomPrevious, kGap,          kHostPan,        kHostRedraw,  kGap,
    kHostGrid,         kHostGridSnap, kHostOrtho,      kHostGripSnap};
constexpr unsigned long kDraw[] = {kLine,      kArc,      kHostArcContinue, kCircle,
                                   kGap,       kPolyline, kArcPolyline,     kGap,
                                   kRectangle, kBox,      kPolygon,         kPolyStar};
constexpr unsigned long kModify[] = {kMove,    kCopy, kRotate,       kCopyRotate, kScale,
                                     kMirror,  kGap,  kTrim,         kExtend,     kHostOffset,
                                     kExplode, kGap,  kPolylineEdit, kHostFill};
constexpr unsigned long kTools[] = {
    kHostNew,
    kHostOpen,
    kHostSave,
    kGap,
    kHostUndo,
    kHostRedo,
    kErase,
    kGap,
    kLine,
    kArc,
    kCircle,
    kRectangle,
    kBox,
    kPolyline,
    kArcPolyline,
    kPolygon,
    kPolyStar,
    kGap,
    kMove,
    kCopy,
    kRotate,
    kScale,
    kMirror,
    kTrim,
    kExtend,
    kHostOffset,
    kExplode,
    kGap,
    kPolylineEdit,
    kHostFill,
    kGap,
    kHostZoomExtents,
    kHostZoomWindow,
    kHostZoomIn,
    kHostZoomOut,
    kHostZoomPrevious,
    kHostPan,
};
constexpr unsigned long kSwitches[] = {kHostGrid, kHostGridSnap, kHostOrtho, kHostGripSnap};

constexpr std::array kMenus = {DraftMenu{"&File", kFile}, DraftMenu{"&Edit", kEdit},
                               DraftMenu{"&View", kView}, DraftMenu{"&Draw", kDraw},
                               DraftMenu{"&Modify", kModify}};

} // namespace

std::span<const DraftCommand> draftCommands()
{
    return kCommands;
}

std::span<const DraftMenu> draftMenus()
{
    return kMenus;
}

std::span<const unsigned long> draftTools()
{
    return kTools;
}

std::span<const unsigned long> draftSwitches()
{
    return kSwitches;
}
