#pragma once

#include "app/RunningCommands.h"
#include "platform/Controls.h"

#include <QFlags>

#include <vector>

namespace orvantine {

struct Root;

/// How a command is at the start, if not enabled, seen and without a mark.
enum class Start : unsigned { Disabled = 1, Hidden = 2, Marked = 4 };
Q_DECLARE_FLAGS(Starts, Start)
Q_DECLARE_OPERATORS_FOR_FLAGS(Starts)

enum class Shown : unsigned {
    /// Holds the rows of the next level.
    Submenu = 1,
    /// Shows an empty box while it is off.
    Switch = 2,
    /// Off while the catalogue is empty.
    NeedsPlaylist = 4
};
Q_DECLARE_FLAGS(Showing, Shown)
Q_DECLARE_OPERATORS_FOR_FLAGS(Showing)

/// The caption of a separator.
inline constexpr char16_t Line[] = u"-";

/// All that is known of one command.
struct CommandRow
{
    int level = 1;
    MenuItem* item = nullptr;
    const char16_t* caption = u"";
    const char16_t* shortcut = u"";
    Starts start;
    /// Null for one that nothing answers to yet: it cannot be pressed.
    void (*run)(Root& root, int index) = nullptr;
    int index = 0;
    /// Asked before `run`. A command that changes tracks in one case alone asks there.
    Changes changes = Changes::Nothing;
    /// The first-use tip that is shown in front; 0 for none.
    int tip = 0;
    /// Whose texts the tip has; 0 for its own.
    int shownTip = 0;
    Showing shown;
    const char16_t* icon = u"";
    /// The command of the menu bar that a row of the pop-up stands for.
    MenuItem* twin = nullptr;
};

/// A handler without an index.
template <void (*Handler)(Root&)>
void plain(Root& root, int)
{
    Handler(root);
}

/// The menu bar from the left to the right, each menu from top to bottom.
[[nodiscard]] std::vector<CommandRow> barRows(Root& root);
/// Those of its last three menus.
[[nodiscard]] std::vector<CommandRow> managementRows(Root& root);

/// The pop-up of the track list.
[[nodiscard]] std::vector<CommandRow> popupRows(Root& root);

} // namespace orvantine
