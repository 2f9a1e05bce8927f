#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

#include <cstddef>
#include <vector>

class CWnd;

/// A menu as data: rows that can be chosen, and menus below it. A value: a copy is a menu of its
/// own.
class VEXPLATFORM_EXPORT CMenu {
public:
    /// A row; the id 0 stands for a line between groups of rows.
    struct Item {
        unsigned id = 0;
        CString label;
        bool enabled = true;
    };

    CMenu() = default;
    explicit CMenu(const CString& name) : m_name(name) {}

    [[nodiscard]] const CString& name() const { return m_name; }
    void AppendMenu(unsigned id, const CString& label) { m_items.push_back({id, label, true}); }
    void appendSeparator() { m_items.push_back({}); }
    /// Puts a menu below this one, behind those that are there. The reference holds until the next.
    CMenu& appendSubMenu(const CString& name);
    /// Null where there is none.
    [[nodiscard]] CMenu* GetSubMenu(int position);
    [[nodiscard]] std::size_t subMenuCount() const { return m_subMenus.size(); }
    [[nodiscard]] const std::vector<Item>& items() const { return m_items; }
    /// False when this menu has no such row.
    bool EnableMenuItem(unsigned id, bool enabled);
    /// False for a row that is greyed or not there.
    [[nodiscard]] bool isEnabled(unsigned id) const;
    /// Shows this menu at a screen point and gives the id chosen, or 0.
    unsigned TrackPopupMenu(CPoint screen, CWnd* window) const;

private:
    CString m_name;
    std::vector<Item> m_items;
    std::vector<CMenu> m_subMenus;
};
