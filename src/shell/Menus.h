#pragma once

#include "platform/Controls.h"

#include <vector>

namespace orvantine {

struct Root;

/// One line of the menu tree as it is drawn.
struct MenuEntry
{
    MenuItem* item = nullptr;
    /// 0 for the menus of the bar, 1 for their entries, 2 for the entries of a submenu.
    int level = 0;
    bool submenu = false;
    bool separator = false;
    /// The command has a mark, and shows an empty box while it is off.
    bool isSwitch = false;
    /// Name in the icon theme; empty for none.
    QStringView icon;
};

/// Gives every command its caption, shortcut, start state and handler, from the one table of commands.
void setUpMenus(Root& root);

/// The menu bar from the left to the right, each menu from top to bottom.
[[nodiscard]] std::vector<MenuEntry> menuBar(Root& root);

/// The pop-up of the track list.
[[nodiscard]] std::vector<MenuEntry> trackPopup(Root& root);

} // namespace orvantine
