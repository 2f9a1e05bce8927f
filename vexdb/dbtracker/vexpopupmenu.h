#pragma once

#include "platform/base/vexexport.h"

class CMenu;

/// What the rows of the trackers' popup menus do.
enum PopupId : unsigned {
    kPopupUnSelect = 30065,
    kPopupCopy = 30066,
    kPopupMove = 30067,
    kPopupRotate = 30068,
    kPopupScale = 30069,
    kPopupMirrorX = 30070,
    kPopupMirrorY = 30071,
    kPopupMirrorLine = 30072,
    kPopupExplode = 30073,
    kPopupErase = 30074,
    kPopupChangeStart = 30075,
    kPopupReverse = 30076,
    kPopupDivide = 30077,
    kPopupBreak = 30078,
    kPopupJoin = 30079,
    kPopupInsertVertex = 30080,
    kPopupDeleteVertex = 30081,
    kPopupLineArc = 30082,
    kPopupChangeParam = 30083,
    // The host's own menu for many entities; no tracker acts on these.
    kPopupGeneralCopy = 30113,
    kPopupGeneralMove = 30114,
    kPopupGeneralRotate = 30115,
    kPopupGeneralScale = 30116,
    kPopupGeneralMirror = 30117,
    kPopupGeneralErase = 30118,
    kPopupHatchProperties = 30120,
    kPopupTextProperties = 30121,
};

/// The six menus by index.
enum PopupMenuIndex : int {
    kPopupEntity = 0,
    kPopupPolyline = 1,
    kPopupCSpline = 2,
    kPopupText = 3,
    kPopupHatch = 4,
    kPopupGeneral = 5,
};

/// The menus with all their rows, for CVexDbEntityTracker::m_Menu.
VEXDB_EXPORT CMenu makePopupMenus();
