#include "vexdb/dbtracker/vexpopupmenu.h"

#include "platform/window/cmenu.h"

#include <array>
#include <span>

namespace {

struct Row {
    unsigned id; // 0: a line between groups
    const wchar_t* label;
};

constexpr Row kLine = {0, L""};

// What every entity offers.
constexpr std::array kCommon = {
    Row{kPopupUnSelect, L"UnSelect"},
    kLine,
    Row{kPopupCopy, L"Copy"},
    Row{kPopupMove, L"Move"},
    Row{kPopupRotate, L"Rotate"},
    Row{kPopupScale, L"Scale"},
    Row{kPopupMirrorX, L"Mirror X"},
    Row{kPopupMirrorY, L"Mirror Y"},
    Row{kPopupMirrorLine, L"Mirror by Line"},
    kLine,
    Row{kPopupExplode, L"Explode"},
    Row{kPopupErase, L"Erase"},
};

constexpr std::array kEntityRows = {
    kLine,
    Row{kPopupDivide, L"Divide"},
};

// Polylines and fit splines share them; which of them act is the tracker's to say.
constexpr std::array kPolylineRows = {
    kLine,
    Row{kPopupChangeStart, L"Change Start"},
    Row{kPopupReverse, L"Reverse Polyline"},
    Row{kPopupDivide, L"Divide"},
    Row{kPopupBreak, L"Break"},
    Row{kPopupJoin, L"Join"},
    Row{kPopupInsertVertex, L"Insert Vertex"},
    Row{kPopupDeleteVertex, L"Delete Vertex"},
    Row{kPopupLineArc, L"Line/Arc"},
    Row{kPopupChangeParam, L"Change Param"},
};

constexpr std::array kCSplineRows = {
    kLine,
    Row{kPopupInsertVertex, L"Insert Vertex"},
    Row{kPopupDeleteVertex, L"Delete Vertex"},
    Row{kPopupLineArc, L"Line/Arc"},
};

constexpr std::array kTextRows = {
    kLine,
    Row{kPopupTextProperties, L"Properties.."},
};

constexpr std::array kHatchRows = {
    kLine,
    Row{kPopupHatchProperties, L"Properties.."},
};

// Of the whole selection: the host shows this one and runs its own commands by it.
constexpr std::array kGeneralRows = {
    Row{kPopupGeneralCopy, L"Copy"},     Row{kPopupGeneralMove, L"Move"},
    Row{kPopupGeneralRotate, L"Rotate"}, Row{kPopupGeneralScale, L"Scale"},
    Row{kPopupGeneralMirror, L"Mirror"}, Row{kPopupGeneralErase, L"Erase"},
};

void append(CMenu& menu, std::span<const Row> rows)
{
    for (const Row& row : rows) {
        if (row.id == 0) {
            menu.appendSeparator();
        } else {
            menu.AppendMenu(row.id, row.label);
        }
    }
}

struct Popup {
    const wchar_t* name;
    std::span<const Row> common;
    std::span<const Row> own;
};

// By PopupMenuIndex.
constexpr std::array kPopups = {
    Popup{L"EntityPop", kCommon, kEntityRows}, Popup{L"Polyline", kCommon, kPolylineRows},
    Popup{L"CSpline", kCommon, kCSplineRows},  Popup{L"Text", kCommon, kTextRows},
    Popup{L"Hatch", kCommon, kHatchRows},      Popup{L"General", {}, kGeneralRows},
};

} // namespace

CMenu makePopupMenus()
{
    CMenu menus;
    for (const Popup& popup : kPopups) {
        CMenu& menu = menus.appendSubMenu(popup.name);
        append(menu, popup.common);
        append(menu, popup.own);
    }
    return menus;
}
