#pragma once

#include "vexdb/dbcommand/vexcommandsession.h"

#include <QKeySequence>

#include <array>
#include <span>

/// A numbered command as menus, tool bar and shortcuts offer it.
struct DraftCommand {
    unsigned long number;
    const char* text;
    const char* tip;
    const char* shortcut;
    const char* icon; // empty for none
    bool isSwitch = false;
};

/// A menu: its commands in order, 0 for a line between groups.
struct DraftMenu {
    const char* title;
    std::span<const unsigned long> numbers;
};

std::span<const DraftCommand> draftCommands();
std::span<const DraftMenu> draftMenus();
/// The tool bar, as a menu is told.
std::span<const unsigned long> draftTools();
/// The switches of the status bar.
std::span<const unsigned long> draftSwitches();
