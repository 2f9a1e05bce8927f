#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"

#include <algorithm>
#include <array>

namespace {

// Editing commands act on the selection, noun first; all others start from a clean one.
constexpr int kFirstEditing = 22;
constexpr int kLastEditing = 35;

bool keepsSelection(VexDb::CommandID id)
{
    return id >= kFirstEditing && id <= kLastEditing;
}

} // namespace

const CVexCommandHandler::CommandRow* CVexCommandHandler::commandOf(VexDb::CommandID id)
{
    static constexpr std::array kCommands = {
        CommandRow{VexDb::CmdLine, L"LINE", &CVexCommandHandler::CommandLine},
        CommandRow{VexDb::CmdArc, L"ARC", &CVexCommandHandler::CommandArc},
        CommandRow{VexDb::CmdCircle, L"CIRCLE", &CVexCommandHandler::CommandCircle},
        CommandRow{VexDb::CmdEllipse, L"ELLIPSE", nullptr},
        CommandRow{VexDb::CmdEllipseArc, L"ELLIPSEARC", nullptr},
        CommandRow{VexDb::CmdPolyline, L"POLYLINE", &CVexCommandHandler::CommandPolyline},
        CommandRow{VexDb::CmdArcPolyline, L"ARCPOLYLINE", &CVexCommandHandler::CommandArcPolyline},
        CommandRow{VexDb::CmdPolygon, L"POLYGON", &CVexCommandHandler::CommandPolygon},
        CommandRow{VexDb::CmdPolyStar, L"POLYSTAR", &CVexCommandHandler::CommandPolyStar},
        CommandRow{VexDb::CmdSpiral, L"SPIRAL", nullptr},
        CommandRow{VexDb::CmdSpline, L"SPLINE", nullptr},
        CommandRow{VexDb::CmdCSpline, L"CSPLINE", nullptr},
        CommandRow{VexDb::CmdCobweb, L"COBWEB", nullptr},
        CommandRow{VexDb::CmdHatch, L"HATCH", nullptr},
        CommandRow{VexDb::CmdText, L"TEXT", nullptr},
        CommandRow{VexDb::CmdRect, L"RECT", &CVexCommandHandler::CommandRect},
        CommandRow{VexDb::CmdBox, L"BOX", &CVexCommandHandler::CommandBox},
        CommandRow{VexDb::CmdDim, L"DIM", nullptr},
        CommandRow{VexDb::CmdErase, L"ERASE", &CVexCommandHandler::CommandErase},
        CommandRow{VexDb::CmdArray, L"ARRAY", nullptr},
        CommandRow{VexDb::CmdCopy, L"COPY", &CVexCommandHandler::CommandCopy},
        CommandRow{VexDb::CmdCopyRotate, L"COPYROTATE", &CVexCommandHandler::CommandCopyRotate},
        CommandRow{VexDb::CmdMirror, L"MIRROR", &CVexCommandHandler::CommandMirror},
        CommandRow{VexDb::CmdRotate, L"ROTATE", &CVexCommandHandler::CommandRotate},
        CommandRow{VexDb::CmdScale, L"SCALE", &CVexCommandHandler::CommandScale},
        CommandRow{VexDb::CmdMove, L"MOVE", &CVexCommandHandler::CommandMove},
        CommandRow{VexDb::CmdExplode, L"EXPLODE", &CVexCommandHandler::CommandExplode},
        CommandRow{VexDb::CmdExtend, L"EXTEND", &CVexCommandHandler::CommandExtend},
        CommandRow{VexDb::CmdTrim, L"TRIM", &CVexCommandHandler::CommandTrim},
        CommandRow{VexDb::CmdPolylineEdit, L"POLYLINEEDIT",
                   &CVexCommandHandler::CommandPolylineedit},
    };
    const auto row = std::ranges::find(kCommands, id, &CommandRow::id);
    return row == kCommands.end() ? nullptr : &*row;
}

CVexDbEntity* CVexCommandHandler::DoCommand(VexDb::CommandID id, unsigned long& step)
{
    if (isBusy() || m_database == nullptr) {
        return nullptr;
    }
    const VexBusyScope busy(*this);
    if (!keepsSelection(id)) {
        ClearTracker(false);
    }
    const CommandRow* row = commandOf(id);
    if (row == nullptr) {
        return nullptr;
    }
    if (row->run == nullptr) {
        refuse(CString(row->name) + L" is not available yet.");
        return nullptr;
    }
    return (this->*row->run)(step);
}

bool CVexCommandHandler::RunCommand(unsigned long number)
{
    if (number != 0) {
        m_lastCommand = number; // before it runs: it may be the one that closes the drawing
        if (CWnd* display = GetDispWindow(); display != nullptr) {
            display->SendMessage(WM_COMMAND, number, 0);
        }
    }
    return true;
}

void CVexCommandHandler::SetLastCommand(unsigned long number)
{
    m_lastCommand = number;
    appendToHistory(m_inputText);
    endLine();
}
