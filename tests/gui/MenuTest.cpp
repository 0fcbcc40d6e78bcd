#include "desktop/qt/window/MainWindow.h"
#include "playlists/PlaylistText.h"
#include "support/FakeDesktop.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

MenuItem& itemOf(Root& root, const QAction& action)
{
    const QString full = action.objectName();
    const qsizetype bracket = full.indexOf(u'(');
    const int index = bracket < 0 ? Control::NoIndex : full.mid(bracket + 1).chopped(1).toInt();
    return dynamic_cast<MenuItem&>(*root.controls.find(full.left(bracket), index));
}

/// A line an action: indent, caption with its blanks, shortcut, start states.
void print(Root& root, const QList<QAction*>& actions, int level, QStringList& lines)
{
    for (QAction* action : actions) {
        const MenuItem& item = itemOf(root, *action);
        QString line = QString(2 * level, u' ');
        if (action->isSeparator()) {
            lines.append(line + u"-"_s);
            continue;
        }
        line += u"%1 \"%2\""_s.arg(item.fullName(), item.Caption.value());
        if (!action->shortcut().isEmpty())
            line += u' ' + action->shortcut().toString(QKeySequence::PortableText);
        if (!item.Enabled.value())
            line += u" disabled"_s;
        if (!action->isVisible())
            line += u" hidden"_s;
        if (action->isChecked())
            line += u" marked"_s;
        lines.append(line);
        QString shown = item.Caption.value();
        while (shown.endsWith(u' '))
            shown.chop(1);
        EXPECT_EQ(action->text().toStdString(), shown.toStdString());
        if (action->menu() != nullptr)
            print(root, action->menu()->actions(), level + 1, lines);
    }
}

class Menus : public testing::Test
{
protected:
    [[nodiscard]] QMenu* popup() const { return window.findChild<QMenu*>(u"mnuSpecial"_s); }
    [[nodiscard]] QAction* action(const QString& name) const { return window.findChild<QAction*>(name); }
    /// Every action of the bar and the pop-up that is a command.
    [[nodiscard]] QList<QAction*> commands() const
    {
        QList<QAction*> found;
        const QList<QAction*> all = window.findChildren<QAction*>();
        for (QAction* one : all)
            if (one->menu() == nullptr && !one->isSeparator() && one->objectName().startsWith(u"mn"_s))
                found.append(one);
        return found;
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    MainWindow window{root};
};

TEST_F(Menus, ATwinThatIsOffTakesItsEntryOfThePopUpWithIt)
{
    struct Case
    {
        MenuItem& twin;
        QString entry;
    };
    for (const Case& c :
         {Case{root.mnuDateiEigenschaften, u"mnuFileProperties"_s}, Case{root.mnuMoveEntry[1], u"mnxVerschieben(1)"_s},
          Case{root.mnuMoveEntrys, u"mnxVerschiebung"_s}, Case{root.mnuOpenMediaplayer, u"mnxBearbeiten(0)"_s}}) {
        SCOPED_TRACE(c.entry.toStdString());
        c.twin.Enabled = true;
        const QMenu* const menu = popup()->findChild<QMenu*>(c.entry);
        const auto enabled = [&] { return menu != nullptr ? menu->isEnabled() : action(c.entry)->isEnabled(); };
        EXPECT_TRUE(enabled());
        c.twin.Enabled = false;
        EXPECT_FALSE(enabled());
        c.twin.Enabled = true;
        EXPECT_TRUE(enabled());
    }
}

TEST_F(Menus, TheBarIsTheTreeAsItIsTold)
{
    QStringList lines;
    print(root, window.menuBar()->actions(), 0, lines);
    EXPECT_EQ((lines.join(u'\n') + u'\n').toStdString(), R"(mnuVorgänge "&Vorgänge "
  mnuHinzufügen "&Hinzufügen "
    mnuDurchsuchen "Liste hinzufügen ... " Ctrl+N
    mnuNeu "Neue Playliste ... " Ctrl+L
    mnuAddFolder "Ordner durchsuchen ... " Ctrl+O
    mnuAddChanges "Wechseldatenträger ... " disabled
    -
    mnuAddCDs "AudioCD Ripper ... "
    -
    mnuAddSounds "Sounddateien ... "
  mnuEigenschaften "&Eigenschaften "
  mnuUmbenennen "&Umbenennen "
  mnuBeschriftung "Bes&chriftung "
  mnuVerschieben "&Verschieben "
    mnuVerschiebung(1) "Höher (Alt+Up) "
    mnuVerschiebung(2) "Tiefer  (Alt+Down) "
    -
    mnuVerschiebung(4) "Positionieren ... "
  mnuÜbertragen "Ü&bertragen"
    mnuHandling(1) "&Vollständige Playliste kopieren "
    mnuHandling(2) "&Audio CD-Rom brennen "
    mnuHandling(3) "&Bluetooth-Übertragung "
    mnuHandling(4) "&Sounddatei kopieren "
    -
    mnuHandling(6) "&Unterordner (Interpreten) "
    mnuHandling(7) "&Ordner auswählen ... "
  mnuLöschen "&Löschen "
  -
  mnuWiedergabe "&Wiedergabe starten " Ctrl+P
  mnuSoundplayerExt "S&oundwiedergabe "
    mnuSoundplayer(1) "&Nächster Track "
    mnuSoundplayer(2) "&Vorheriger Track "
    mnuSoundplayer(3) "&Pause "
    mnuSoundplayer(4) "&Weiterspielen " disabled hidden
  -
  mnuFavoritenShow "&Nur Favoriten anzeigen ... " disabled
  mnuFavoriten "Playliste &favoritisieren " Ctrl+I
  -
  mnuSpeichernUnter "&Playliste speichern unter ... "
  -
  mnuFolderCheck "Medienordner zuweisen ... "
  mnuCheckPlaylists "Playlisten überprüfen ... "
  -
  mnuWiederherstellen "Datenbank wiederherstellen ... "
  mnuSpeichern "Datenbank speichern ... " Ctrl+S
  mnuLaden "Datenbank einlesen ... " hidden
  -
  mnuPackGo "P&ack and Go ..."
  mnuDbWiederherstellung "&Wiederherstellungen ... "
  mnuDbSicherungen "Sicherungskopien ... "
  -
  mnuBeenden "B&eenden "
mnuBearbeiten "&Bearbeiten "
  mnuEditCut "&Ausschneiden " Ctrl+X disabled
  mnuEditCopy "&Kopieren " Ctrl+C
  mnuEditPaste "&Einfügen " Ctrl+V
  mnuEditKill "&Löschen "
  -
  mnuSuchen "&Suchen ... " Ctrl+F
mnuAnsicht "&Ansicht "
  TagIDs "&TagID speichern" disabled
  -
  mnuOrvantenmenu "Orvantenmenü"
    mnuOrvmenu(1) "Vollständigen Path zeigen "
    mnuOrvmenu(2) "Nur Dateiname anzeigen "
  mnuGridlines "&Gitternetzlinien " marked
  -
  mnuSuchDialog "&Suchdialog "
  mnuDatumsanzeige "&Erstellungsdatum "
  mnuLautstärke "L&autstärke-Anzeige "
  mnuPositionen "&Listen-Positionen "
  -
  mnuCoverShow "&Cover-Anzeige "
  mnuTrackShow "&Track-Anzeige " marked
  -
  mnuSchriftarten "&Schriftarten "
mnuVerwaltung "&Verwaltung "
  mnuDateiEigenschaften "&Datei-Eigenschaften ... "
  -
  mnuMoveEntrys "&Einträge verschieben "
    mnuMoveEntry(1) "Aufwärts "
    mnuMoveEntry(2) "Abwärts "
  mnuSortieren "&Playliste sortieren "
    mnuSortierung(1) "&Namen sortieren "
    mnuSortierung(2) "&Dateinamen sortieren "
    mnuSortierung(3) "&Track-Nr. sortieren "
  mnuWiederholungen "&Wiederholungen "
    mnuWiederholung(1) "&Playliste wiederholen "
    mnuWiederholung(2) "&Sounddatei wiederholen " disabled
    mnuWiederholung(3) "&Keine Wiederholung "
  -
  mnuOpenMediaplayer "&Win-Mediaplayer senden "
    mnuOpenMediaplayerEx(1) "&Sounddatei ... "
    mnuOpenMediaplayerEx(2) "&Playliste ... "
  mnuEingangsordner "&Eingangsordner öffnen ... "
  mnuCopyTrack "&Kopiere Trackinformation "
  mnuSetFileName "&Filename als Soundname "
  mnuSetTagName "&Tag-ID als Soundname "
  mnuGetIDTag "&Mp3-Tag bearbeiten ... "
  -
  mnuFileKill "&Sounddatei entfernen "
  mnuFileSave "P&layliste speichern "
mnuExtras "&Extras "
  mnuSpaltenReset "&Spaltenbreiten zurücksetzen "
  mnuRecycle "O&rdner für Playlisten aufräumen "
  mnuDeleteDatabase "Da&tenbank und Playlisten löschen"
  -
  mnuSendtoInstall "F&unktion 'Senden an' hinzufügen "
  mnuAddSoundfiles "&Hinzufügen zeigt Verzeichnisse "
  mnuErrorDisplay "&Fehlermeldungen anzeigen "
  mnuLokalePlayliste "&Playlisten lokal speichern "
  mnuAllesWiedergeben "&Alle Playlisten abspielen " marked
  -
  mnuDatabase "&Datenbank-Ordner ... "
  mnuUpdates "&Internet-Updates ... "
  -
  mnuOptionen "&Optionen ... "
  -
  mnuFassungen "Früh&ere Fassungen ... "
mnuHelp "&?"
  mnuHilfe "&Hilfethemen " F1
  mnuTastenbefehle "&Tastaturbefehle ... "
  -
  mnuInfo "&Info ... "
)");
}

TEST_F(Menus, ThePopUpOfTheTracksIsTheTreeAsItIsTold)
{
    QStringList lines;
    print(root, popup()->actions(), 0, lines);
    EXPECT_EQ((lines.join(u'\n') + u'\n').toStdString(), R"(mnuSpecials(1) "Soundtrack abspielen "
mnuSpecials(2) "Soundtrack stoppen "
mnuFileProperties "&Eigenschaften"
mnxVerschiebung "T&rack verschieben "
  mnxVerschieben(1) "Aufwärts "
  mnxVerschieben(2) "Abwärts "
-
mnxBearbeiten(0) "&Win-Mediaplayer senden "
  mnxBearbeitenEx(1) "&Sounddatei ... "
  mnxBearbeitenEx(2) "&Playliste ... "
mnxBearbeiten(1) "&Eingangsordner öffnen ... "
mnxBearbeiten(2) "&Kopiere Trackinformation "
mnxBearbeiten(3) "&Filename als Soundname "
mnxBearbeiten(4) "&Tag-ID als Soundname "
mnxBearbeiten(5) "&Mp3-Tag bearbeiten ... "
mnxBearbeiten(6) "&Sounddatei entfernen "
mnxSpecials(1) "&Namen sortieren "
mnxSpecials(2) "&Dateinamen sortieren "
mnxSpecials(3) "N&ummer sortieren "
)");
}

TEST_F(Menus, EveryEnabledCommandReachesItsHandlerOnceAndKeepsItsMark)
{
    int pressed = 0;
    const QList<QAction*> all = commands();
    for (QAction* command : all) {
        MenuItem& item = itemOf(root, *command);
        EXPECT_EQ(command->isEnabled(), item.available() && item.Visible.value()) << item.fullName().toStdString();
        if (!command->isEnabled())
            continue;
        int calls = 0;
        item.Click = [&calls] { ++calls; };
        const bool marked = item.Checked.value();
        command->trigger();
        EXPECT_EQ(calls, 1) << item.fullName().toStdString();
        EXPECT_EQ(command->isChecked(), marked) << item.fullName().toStdString();
        ++pressed;
    }
    EXPECT_GT(pressed, 20);
}

TEST_F(Menus, EveryEnabledCommandCanBePressedInAnEmptyCatalogue)
{
    desktop.start();
    const QList<QAction*> all = commands();
    for (QAction* command : all)
        if (command->isEnabled() && command->objectName() != u"mnuBeenden"_s)
            command->trigger();
    EXPECT_FALSE(desktop.events().ended());
    action(u"mnuBeenden"_s)->trigger();
    EXPECT_TRUE(desktop.events().ended());
}

TEST_F(Menus, AMarkFollowsTheControl)
{
    QAction* const grid = action(u"mnuGridlines"_s);
    grid->trigger();
    EXPECT_FALSE(root.mnuGridlines.Checked.value());
    EXPECT_FALSE(grid->isChecked());
    root.mnuGridlines.Checked = true;
    EXPECT_TRUE(grid->isChecked());
}

TEST_F(Menus, ACommandWithoutAHandlerIsDisabledWhateverItsStateSays)
{
    MenuItem& item = root.mnuEditCut;
    item.Click = nullptr;
    item.Enabled = true;
    EXPECT_FALSE(action(u"mnuEditCut"_s)->isEnabled());
}

TEST_F(Menus, ADisabledMenuTakesItsShortcutsWithIt)
{
    int calls = 0;
    root.mnuSuchen.Click = [&calls] { ++calls; };
    root.mnuSuchen.Enabled = false;
    root.mnuSuchen.Enabled = true;
    root.Visible = true;
    window.activateWindow();
    QApplication::setActiveWindow(&window);
    QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(calls, 1);
    root.mnuBearbeiten.Enabled = false;
    QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(calls, 1);
}

TEST_F(Menus, ACaptionShowsTheKeysThatStandBehindItsTab)
{
    root.mnuBeenden.Caption = u"B&eenden \tAlt+Q"_s;
    EXPECT_EQ(action(u"mnuBeenden"_s)->text(), u"B&eenden\tAlt+Q"_s);
}

} // namespace

} // namespace orvantine
