#include "desktop/qt/window/MenuBuilder.h"

#include "desktop/qt/widgets/Theme.h"

#include <QAction>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QSet>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Captions end in blanks that only widened the old menus.
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
bool isSwitch(const QString& name)
{
    static const QSet<QString> names{
        u"mnuOrvmenu(1)"_s,    u"mnuOrvmenu(2)"_s,      u"mnuGridlines"_s,       u"mnuSuchDialog"_s,
        u"mnuDatumsanzeige"_s, u"mnuLautstärke"_s,      u"mnuPositionen"_s,      u"mnuCoverShow"_s,
        u"mnuTrackShow"_s,     u"mnuWiederholung(1)"_s, u"mnuWiederholung(2)"_s, u"mnuWiederholung(3)"_s,
        u"mnuAddSoundfiles"_s, u"mnuErrorDisplay"_s,    u"mnuLokalePlayliste"_s, u"mnuAllesWiedergeben"_s,
        u"mnuHandling(6)"_s,   u"mnuFavoriten"_s,       u"mnuFavoritenShow"_s};
    return names.contains(name);
}

QString iconNameOf(const QString& name)
{
    static const QHash<QString, QString> names{{u"mnuDurchsuchen"_s, u"document-import"_s},
                                               {u"mnuNeu"_s, u"document-new"_s},
                                               {u"mnuAddFolder"_s, u"folder-open"_s},
                                               {u"mnuAddCDs"_s, u"media-optical-audio"_s},
                                               {u"mnuAddSounds"_s, u"audio-x-generic"_s},
                                               {u"mnuEigenschaften"_s, u"document-properties"_s},
                                               {u"mnuUmbenennen"_s, u"edit-rename"_s},
                                               {u"mnuBeschriftung"_s, u"document-edit"_s},
                                               {u"mnuVerschiebung(1)"_s, u"go-up"_s},
                                               {u"mnuVerschiebung(2)"_s, u"go-down"_s},
                                               {u"mnuLöschen"_s, u"edit-delete"_s},
                                               {u"mnuWiedergabe"_s, u"media-playback-start"_s},
                                               {u"mnuSoundplayer(1)"_s, u"media-skip-forward"_s},
                                               {u"mnuSoundplayer(2)"_s, u"media-skip-backward"_s},
                                               {u"mnuSoundplayer(3)"_s, u"media-playback-pause"_s},
                                               {u"mnuSpeichernUnter"_s, u"document-export"_s},
                                               {u"mnuFolderCheck"_s, u"folder-music"_s},
                                               {u"mnuSpeichern"_s, u"document-save"_s},
                                               {u"mnuPackGo"_s, u"archive-insert"_s},
                                               {u"mnuBeenden"_s, u"application-exit"_s},
                                               {u"mnuEditCut"_s, u"edit-cut"_s},
                                               {u"mnuEditCopy"_s, u"edit-copy"_s},
                                               {u"mnuEditPaste"_s, u"edit-paste"_s},
                                               {u"mnuEditKill"_s, u"edit-delete"_s},
                                               {u"mnuSuchen"_s, u"edit-find"_s},
                                               {u"mnuSchriftarten"_s, u"preferences-desktop-font"_s},
                                               {u"mnuDateiEigenschaften"_s, u"document-properties"_s},
                                               {u"mnuMoveEntry(1)"_s, u"go-up"_s},
                                               {u"mnuMoveEntry(2)"_s, u"go-down"_s},
                                               {u"mnuEingangsordner"_s, u"folder-open"_s},
                                               {u"mnuGetIDTag"_s, u"document-edit"_s},
                                               {u"mnuFileKill"_s, u"edit-delete"_s},
                                               {u"mnuFileSave"_s, u"document-save"_s},
                                               {u"mnuUpdates"_s, u"internet-services"_s},
                                               {u"mnuOptionen"_s, u"configure"_s},
                                               {u"mnuHilfe"_s, u"help-contents"_s},
                                               {u"mnuTastenbefehle"_s, u"input-keyboard"_s},
                                               {u"mnuInfo"_s, u"help-about"_s},
                                               {u"mnuSpecials(1)"_s, u"media-playback-start"_s},
                                               {u"mnuSpecials(2)"_s, u"media-playback-stop"_s},
                                               {u"mnuFileProperties"_s, u"document-properties"_s},
                                               {u"mnxVerschieben(1)"_s, u"go-up"_s},
                                               {u"mnxVerschieben(2)"_s, u"go-down"_s},
                                               {u"mnxBearbeiten(1)"_s, u"folder-open"_s},
                                               {u"mnxBearbeiten(5)"_s, u"document-edit"_s},
                                               {u"mnxBearbeiten(6)"_s, u"edit-delete"_s}};
    return names.value(name);
}

void showMark(QAction& action, const MenuItem& item)
{
    action.setCheckable(item.Checked.value() || isSwitch(item.fullName()));
    action.setChecked(item.Checked.value());
}

/// Icons are read when a menu is first opened: the window is on the screen sooner.
void giveIcons(const QMenu& menu)
{
    const QList<QAction*> actions = menu.actions();
    for (QAction* action : actions) {
        const QString name = iconNameOf(action->objectName());
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
            addCommand(*parent, *entry.item, entry.separator);
        }
    }
}

void MenuBuilder::follow(QMenu& menu, MenuItem& item)
{
    menu.setObjectName(item.fullName());
    menu.menuAction()->setObjectName(item.fullName());
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [&menu] { giveIcons(menu); });
    m_bindings.follow(item.Caption, [&menu](const QString& caption) { menu.setTitle(shownCaption(caption)); });
    m_bindings.follow(item.Enabled, [&menu](bool enabled) { menu.setEnabled(enabled); });
    m_bindings.follow(item.Visible, [&menu](bool visible) { menu.menuAction()->setVisible(visible); });
}

QAction* MenuBuilder::addCommand(QMenu& menu, MenuItem& item, bool separator)
{
    QAction* const action = menu.addAction(QString());
    action->setObjectName(item.fullName());
    action->setSeparator(separator);
    action->setMenuRole(QAction::NoRole);
    m_bindings.follow(item.Visible, [action](bool visible) { action->setVisible(visible); });
    if (separator)
        return action;

    if (!item.Shortcut.isEmpty())
        action->setShortcut(QKeySequence(item.Shortcut, QKeySequence::PortableText));
    m_bindings.follow(item.Caption, [action](const QString& caption) { action->setText(shownCaption(caption)); });
    m_bindings.follow(item.Enabled, [action, &item](bool) { action->setEnabled(item.available()); });
    m_bindings.follow(item.Checked, [action, &item](bool) { showMark(*action, item); });
    QObject::connect(action, &QAction::triggered, action, [action, &item] {
        showMark(*action, item);
        if (item.available())
            item.Click();
    });
    return action;
}

} // namespace orvantine
