#include "platform/window/cmenu.h"

#include "platform/window/vexbackend.h"

#include <algorithm>

CMenu& CMenu::appendSubMenu(const CString& name)
{
    return m_subMenus.emplace_back(name);
}

CMenu* CMenu::GetSubMenu(int position)
{
    const auto index = static_cast<std::size_t>(position);
    return position < 0 || index >= m_subMenus.size() ? nullptr : &m_subMenus[index];
}

bool CMenu::EnableMenuItem(unsigned id, bool enabled)
{
    const auto row = std::ranges::find(m_items, id, &Item::id);
    if (id == 0 || row == m_items.end()) {
        return false;
    }
    row->enabled = enabled;
    return true;
}

bool CMenu::isEnabled(unsigned id) const
{
    const auto row = std::ranges::find(m_items, id, &Item::id);
    return id != 0 && row != m_items.end() && row->enabled;
}

unsigned CMenu::TrackPopupMenu(CPoint screen, CWnd* window) const
{
    return CVexBackend::current().chooseFrom(*this, screen, window);
}
