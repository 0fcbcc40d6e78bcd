#include "shell/Menus.h"

#include "app/Command.h"
#include "app/FeatureTips.h"
#include "app/Root.h"
#include "shell/CommandTable.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

std::vector<MenuEntry> entriesOf(const std::vector<CommandRow>& rows)
{
    std::vector<MenuEntry> entries;
    entries.reserve(rows.size());
    for (const CommandRow& row : rows)
        entries.push_back({.item = row.item,
                           .level = row.level,
                           .submenu = row.shown.testFlag(Shown::Submenu),
                           .separator = QStringView(row.caption) == Line,
                           .isSwitch = row.shown.testFlag(Shown::Switch),
                           .icon = row.icon});
    return entries;
}

void run(Root& root, const CommandRow& row, const QString& name)
{
    const auto steps = [&root, &row] {
        const bool goesOn = row.tip == 0 ? !root.services.events.ended()
                                         : ShowFeatureTip(root, row.tip, row.shownTip != 0 ? row.shownTip : row.tip);
        if (goesOn)
            row.run(root, row.index);
    };
    runCommand(root, row.changes, steps, name);
}

/// The caption as it is spoken: without mnemonic, shortcut and dots.
QString nameOf(const char16_t* caption)
{
    QString name = QString::fromUtf16(caption).remove(u'&').section(u" (Alt"_s, 0, 0);
    while (name.endsWith(u' ') || name.endsWith(u'.'))
        name.chop(1);
    return name;
}

void setUp(Root& root, const std::vector<CommandRow>& rows)
{
    QString submenu;
    for (const CommandRow& row : rows) {
        if (row.level == 1 || row.shown.testFlag(Shown::Submenu))
            submenu = row.level == 1 && row.shown.testFlag(Shown::Submenu) ? nameOf(row.caption) + u": "_s : QString();
        row.item->Caption = QString::fromUtf16(row.caption);
        row.item->Shortcut = QString::fromUtf16(row.shortcut);
        row.item->Enabled = !row.start.testFlag(Start::Disabled);
        row.item->Visible = !row.start.testFlag(Start::Hidden);
        row.item->Checked = row.start.testFlag(Start::Marked);
        row.item->Twin = row.twin;
        if (row.run != nullptr)
            row.item->Click = [&root, row, name = submenu + nameOf(row.caption)] { run(root, row, name); };
        if (row.shown.testFlag(Shown::NeedsPlaylist))
            root.playlistCommands.push_back(row.item);
    }
}

} // namespace

void setUpMenus(Root& root)
{
    root.playlistCommands.clear();
    setUp(root, barRows(root));
    setUp(root, popupRows(root));
}

std::vector<MenuEntry> menuBar(Root& root)
{
    return entriesOf(barRows(root));
}

std::vector<MenuEntry> trackPopup(Root& root)
{
    return entriesOf(popupRows(root));
}

} // namespace orvantine
