#include "desktop/qt/window/MenuBuilder.h"

#include "desktop/qt/widgets/Theme.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Captions end in blanks, which a menu needs no more.
QString shownCaption(const QString& caption)
{
    const qsizetype tab = caption.indexOf(u'\t');
    const QString text = caption.left(tab);
    const QString keys = tab < 0 ? QString() : caption.mid(tab);
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ')
        --end;
    return text.left(end) + keys;
}

/// Commands that have a mark show an empty box while it is off.
void showMark(QAction& action, const MenuItem& item, bool isSwitch)
{
    action.setCheckable(item.Checked.value() || isSwitch);
    action.setChecked(item.Checked.value());
}

/// Icons are read when a menu is first opened: the window is on the screen sooner.
void giveIcons(const QMenu& menu)
{
    const QList<QAction*> actions = menu.actions();
    for (QAction* action : actions) {
        const QString name = action->data().toString();
        if (!name.isEmpty())
            action->setIcon(Theme::icon(name));
    }
}

} // namespace

void MenuBuilder::fill(QMenuBar& bar, const std::vector<MenuEntry>& entries)
{
    addEntries(entries, &bar, nullptr);
}

void MenuBuilder::fill(QMenu& popup, const std::vector<MenuEntry>& entries)
{
    addEntries(entries, nullptr, &popup);
}

void MenuBuilder::addEntries(const std::vector<MenuEntry>& entries, QMenuBar* bar, QMenu* popup)
{
    // The menus that are open for entries, by the level of the entries that they take.
    QMenu* open[3] = {nullptr, popup, nullptr};
    for (const MenuEntry& entry : entries) {
        QMenu* const parent = open[entry.level];
        if (entry.level == 0 && popup != nullptr) {
            popup->setObjectName(entry.item->fullName());
            QObject::connect(popup, &QMenu::aboutToShow, popup, [popup] { giveIcons(*popup); });
        } else if (entry.submenu) {
            QMenu* const menu = new QMenu(parent != nullptr ? static_cast<QWidget*>(parent) : bar);
            if (parent != nullptr)
                parent->addMenu(menu);
            else if (bar != nullptr)
                bar->addMenu(menu);
            follow(*menu, *entry.item);
            open[entry.level + 1] = menu;
        } else if (parent != nullptr) {
            addCommand(*parent, entry);
        }
    }
}

void MenuBuilder::follow(QMenu& menu, MenuItem& item)
{
    menu.setObjectName(item.fullName());
    menu.menuAction()->setObjectName(item.fullName());
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu] { giveIcons(menu); });
    m_bindings.follow(item.Caption, [&menu](const QString& caption) { menu.setTitle(shownCaption(caption)); });
    const auto enable = [&menu, &item](bool) {
        menu.setEnabled(item.Enabled.value() && (item.Twin == nullptr || item.Twin->Enabled.value()));
    };
    m_bindings.follow(item.Enabled, enable);
    if (item.Twin != nullptr)
        m_bindings.follow(item.Twin->Enabled, enable);
    m_bindings.follow(item.Visible, [&menu](bool visible) { menu.menuAction()->setVisible(visible); });
}

QAction* MenuBuilder::addCommand(QMenu& menu, const MenuEntry& entry)
{
    MenuItem& item = *entry.item;
    const bool isSwitch = entry.isSwitch;
    QAction* const action = menu.addAction(QString());
    action->setObjectName(item.fullName());
    action->setSeparator(entry.separator);
    action->setData(entry.icon.toString());
    action->setMenuRole(QAction::NoRole);
    m_bindings.follow(item.Visible, [action](bool visible) { action->setVisible(visible); });
    if (entry.separator)
        return action;

    if (!item.Shortcut.isEmpty())
        action->setShortcut(QKeySequence(item.Shortcut, QKeySequence::PortableText));
    m_bindings.follow(item.Caption, [action](const QString& caption) { action->setText(shownCaption(caption)); });
    m_bindings.follow(item.Enabled, [action, &item](bool) { action->setEnabled(item.available()); });
    if (item.Twin != nullptr)
        m_bindings.follow(item.Twin->Enabled, [action, &item](bool) { action->setEnabled(item.available()); });
    m_bindings.follow(item.Checked, [action, &item, isSwitch](bool) { showMark(*action, item, isSwitch); });
    QObject::connect(action, &QAction::triggered, action, [action, &item, isSwitch] {
        showMark(*action, item, isSwitch);
        item.press();
    });
    return action;
}

} // namespace orvantine
