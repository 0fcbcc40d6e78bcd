#pragma once

#include "platform/Bindings.h"
#include "shell/Menus.h"

#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace orvantine {

/// Draws commands as menus. Every action and menu carries its control's name as object name, follows the control's
/// caption, mark and states, and hands a press to the control's handler; the mark is the handler's to flip.
class MenuBuilder
{
public:
    /// Fills the bar with the menus of level 0.
    void fill(QMenuBar& bar, const std::vector<MenuEntry>& entries);
    /// Fills a pop-up: the entry of level 0 names it.
    void fill(QMenu& popup, const std::vector<MenuEntry>& entries);

private:
    void addEntries(const std::vector<MenuEntry>& entries, QMenuBar* bar, QMenu* popup);
    void follow(QMenu& menu, MenuItem& item);
    QAction* addCommand(QMenu& menu, const MenuEntry& entry);

    Bindings m_bindings;
};

} // namespace orvantine
