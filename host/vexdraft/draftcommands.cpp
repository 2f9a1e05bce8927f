#include "host/vexdraft/draftcommands.h"

namespace {

constexpr unsigned long kLine = hostNumberOf(VexDb::CmdLine);
constexpr unsigned long kErase = hostNumberOf(VexDb::CmdErase);
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
};

constexpr unsigned long kFile[] = {kHostNew,    kHostOpen, kGap,     kHostSave,
                                   kHostSaveAs, kGap,      kHostQuit};
constexpr unsigned long kEdit[] = {kHostUndo,           kHostRedo, kGap,  kHostSelectAll,
                                   kHostClearSelection, kGap,      kErase};
constexpr unsigned long kView[] = {
    kHostZoomExtents,  kHostZoomAll,  kHostZoomWindow, kHostZoomIn,  kHostZoomOut,
    kHostZoomPrevious, kGap,          kHostPan,        kHostRedraw,  kGap,
    kHostGrid,         kHostGridSnap, kHostOrtho,      kHostGripSnap};
constexpr unsigned long kDraw[] = {kLine};
constexpr unsigned long kTools[] = {
    kHostNew,         kHostOpen,       kHostSave,   kGap,         kHostUndo,
    kHostRedo,        kErase,          kGap,        kLine,        kGap,
    kHostZoomExtents, kHostZoomWindow, kHostZoomIn, kHostZoomOut, kHostZoomPrevious,
    kHostPan,
};
constexpr unsigned long kSwitches[] = {kHostGrid, kHostGridSnap, kHostOrtho, kHostGripSnap};

constexpr std::array kMenus = {DraftMenu{"&File", kFile}, DraftMenu{"&Edit", kEdit},
                               DraftMenu{"&View", kView}, DraftMenu{"&Draw", kDraw}};

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
