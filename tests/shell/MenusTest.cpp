#include "shell/Menus.h"
#include "playlists/PlaylistText.h"
#include "shell/CommandTable.h"

#include "support/DesktopTest.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Menus : public DesktopTest
{
protected:
    /// Level, name and caption of each line, with its shortcut and start state.
    [[nodiscard]] static std::string printed(const std::vector<MenuEntry>& entries)
    {
        QStringList all;
        for (const MenuEntry& entry : entries) {
            const MenuItem& item = *entry.item;
            QString line = QString(entry.level * 2, u' ') + item.fullName();
            if (entry.separator) {
                all += line + u" -"_s;
                continue;
            }
            line += u" \""_s + item.Caption.value() + u'"';
            if (!item.Shortcut.isEmpty())
                line += u' ' + item.Shortcut;
            if (!item.Enabled.value())
                line += u" disabled"_s;
            if (!item.Visible.value())
                line += u" hidden"_s;
            if (item.Checked.value())
                line += u" marked"_s;
            if (entry.submenu)
                line += u" ..."_s;
            all += line;
        }
        return lines(all);
    }
};

} // namespace

TEST_F(Menus, TheBarIsThisTree)
{
    EXPECT_EQ(R"(mnuVorgänge "&Vorgänge " ...
  mnuHinzufügen "&Hinzufügen " ...
    mnuDurchsuchen "Liste hinzufügen ... " Ctrl+N
    mnuNeu "Neue Playliste ... " Ctrl+L
    mnuAddFolder "Ordner durchsuchen ... " Ctrl+O
    mnuAddChanges "Wechseldatenträger ... " disabled
    Trennung0X -
    mnuAddCDs "AudioCD Ripper ... "
    Trennung0 -
    mnuAddSounds "Sounddateien ... "
  mnuEigenschaften "&Eigenschaften "
  mnuUmbenennen "&Umbenennen "
  mnuBeschriftung "Bes&chriftung "
  mnuVerschieben "&Verschieben " ...
    mnuVerschiebung(1) "Höher (Alt+Up) "
    mnuVerschiebung(2) "Tiefer  (Alt+Down) "
    mnuVerschiebung(3) -
    mnuVerschiebung(4) "Positionieren ... "
  mnuÜbertragen "Ü&bertragen" ...
    mnuHandling(1) "&Vollständige Playliste kopieren "
    mnuHandling(2) "&Audio CD-Rom brennen "
    mnuHandling(3) "&Bluetooth-Übertragung "
    mnuHandling(4) "&Sounddatei kopieren "
    mnuHandling(5) -
    mnuHandling(6) "&Unterordner (Interpreten) "
    mnuHandling(7) "&Ordner auswählen ... "
  mnuLöschen "&Löschen "
  Trennung1 -
  mnuWiedergabe "&Wiedergabe starten " Ctrl+P
  mnuSoundplayerExt "S&oundwiedergabe " ...
    mnuSoundplayer(1) "&Nächster Track "
    mnuSoundplayer(2) "&Vorheriger Track "
    mnuSoundplayer(3) "&Pause "
    mnuSoundplayer(4) "&Weiterspielen " disabled hidden
  Trennung10 -
  mnuFavoritenShow "&Nur Favoriten anzeigen ... " disabled
  mnuFavoriten "Playliste &favoritisieren " Ctrl+I
  Trennung3 -
  mnuSpeichernUnter "&Playliste speichern unter ... "
  Trennung4 -
  mnuFolderCheck "Medienordner zuweisen ... "
  mnuCheckPlaylists "Playlisten überprüfen ... "
  Trennung5 -
  mnuWiederherstellen "Datenbank wiederherstellen ... "
  mnuSpeichern "Datenbank speichern ... " Ctrl+S
  mnuLaden "Datenbank einlesen ... " hidden
  Trennung6 -
  mnuPackGo "P&ack and Go ..."
  mnuDbWiederherstellung "&Wiederherstellungen ... "
  mnuDbSicherungen "Sicherungskopien ... "
  Trennung7 -
  mnuBeenden "B&eenden "
mnuBearbeiten "&Bearbeiten " ...
  mnuEditCut "&Ausschneiden " Ctrl+X disabled
  mnuEditCopy "&Kopieren " Ctrl+C
  mnuEditPaste "&Einfügen " Ctrl+V
  mnuEditKill "&Löschen "
  Trennung11 -
  mnuSuchen "&Suchen ... " Ctrl+F
mnuAnsicht "&Ansicht " ...
  TagIDs "&TagID speichern" disabled
  Trennung21 -
  mnuOrvantenmenu "Orvantenmenü" ...
    mnuOrvmenu(1) "Vollständigen Path zeigen "
    mnuOrvmenu(2) "Nur Dateiname anzeigen "
  mnuGridlines "&Gitternetzlinien " marked
  Trennung22 -
  mnuSuchDialog "&Suchdialog "
  mnuDatumsanzeige "&Erstellungsdatum "
  mnuLautstärke "L&autstärke-Anzeige "
  mnuPositionen "&Listen-Positionen "
  Trennung23 -
  mnuCoverShow "&Cover-Anzeige "
  mnuTrackShow "&Track-Anzeige " marked
  Trennung24 -
  mnuSchriftarten "&Schriftarten "
mnuVerwaltung "&Verwaltung " ...
  mnuDateiEigenschaften "&Datei-Eigenschaften ... "
  Trennung31 -
  mnuMoveEntrys "&Einträge verschieben " ...
    mnuMoveEntry(1) "Aufwärts "
    mnuMoveEntry(2) "Abwärts "
  mnuSortieren "&Playliste sortieren " ...
    mnuSortierung(1) "&Namen sortieren "
    mnuSortierung(2) "&Dateinamen sortieren "
    mnuSortierung(3) "&Track-Nr. sortieren "
  mnuWiederholungen "&Wiederholungen " ...
    mnuWiederholung(1) "&Playliste wiederholen "
    mnuWiederholung(2) "&Sounddatei wiederholen " disabled
    mnuWiederholung(3) "&Keine Wiederholung "
  Trennung32 -
  mnuOpenMediaplayer "&Win-Mediaplayer senden " ...
    mnuOpenMediaplayerEx(1) "&Sounddatei ... "
    mnuOpenMediaplayerEx(2) "&Playliste ... "
  mnuEingangsordner "&Eingangsordner öffnen ... "
  mnuCopyTrack "&Kopiere Trackinformation "
  mnuSetFileName "&Filename als Soundname "
  mnuSetTagName "&Tag-ID als Soundname "
  mnuGetIDTag "&Mp3-Tag bearbeiten ... "
  Trennung33 -
  mnuFileKill "&Sounddatei entfernen "
  mnuFileSave "P&layliste speichern "
mnuExtras "&Extras " ...
  mnuSpaltenReset "&Spaltenbreiten zurücksetzen "
  mnuRecycle "O&rdner für Playlisten aufräumen "
  mnuDeleteDatabase "Da&tenbank und Playlisten löschen"
  Trennung41 -
  mnuSendtoInstall "F&unktion 'Senden an' hinzufügen "
  mnuAddSoundfiles "&Hinzufügen zeigt Verzeichnisse "
  mnuErrorDisplay "&Fehlermeldungen anzeigen "
  mnuLokalePlayliste "&Playlisten lokal speichern "
  mnuAllesWiedergeben "&Alle Playlisten abspielen " marked
  Trennung42 -
  mnuDatabase "&Datenbank-Ordner ... "
  mnuUpdates "&Internet-Updates ... "
  Trennung43 -
  mnuOptionen "&Optionen ... "
  Trennung44 -
  mnuFassungen "Früh&ere Fassungen ... "
mnuHelp "&?" ...
  mnuHilfe "&Hilfethemen " F1
  mnuTastenbefehle "&Tastaturbefehle ... "
  Trennung81 -
  mnuInfo "&Info ... ")",
              printed(menuBar(root())));
}

TEST_F(Menus, ThePopUpOfTheTracksIsThisTree)
{
    EXPECT_EQ(R"(mnuSpecial "Spezial " hidden ...
  mnuSpecials(1) "Soundtrack abspielen "
  mnuSpecials(2) "Soundtrack stoppen "
  mnuFileProperties "&Eigenschaften"
  mnxVerschiebung "T&rack verschieben " ...
    mnxVerschieben(1) "Aufwärts "
    mnxVerschieben(2) "Abwärts "
  Trennung82 -
  mnxBearbeiten(0) "&Win-Mediaplayer senden " ...
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
  mnxSpecials(3) "N&ummer sortieren ")",
              printed(trackPopup(root())));
}

TEST_F(Menus, EveryCommandHasAHandlerButThoseThatNeverHaveOne)
{
    // These are never pressed: they stay disabled.
    const QStringList without{u"mnuAddChanges"_s, u"mnuEditCut"_s, u"TagIDs"_s};
    for (const auto& entries : {menuBar(root()), trackPopup(root())})
        for (const MenuEntry& entry : entries) {
            const MenuItem& item = *entry.item;
            EXPECT_TRUE(entry.separator || !item.Caption.value().trimmed().isEmpty()) << item.fullName().toStdString();
            const bool bare = entry.submenu || entry.separator || without.contains(item.fullName());
            EXPECT_EQ(!bare, static_cast<bool>(item.Click)) << item.fullName().toStdString();
        }
}

TEST_F(Menus, EveryCommandHasTheTipThatIsToldForIt)
{
    QMap<QString, int> told{{u"mnuDurchsuchen"_s, 110},
                            {u"mnuNeu"_s, 111},
                            {u"mnuAddSounds"_s, 112},
                            {u"mnuAddFolder"_s, 113},
                            {u"mnuOpenMediaplayerEx(1)"_s, 310},
                            {u"mnuOpenMediaplayerEx(2)"_s, 310},
                            {u"mnuCopyTrack"_s, 311},
                            {u"mnuEingangsordner"_s, 312},
                            {u"mnuGetIDTag"_s, 411},
                            {u"mnuSpaltenReset"_s, 510},
                            {u"mnuRecycle"_s, 511},
                            {u"mnuAddSoundfiles"_s, 512},
                            {u"mnuErrorDisplay"_s, 513},
                            {u"mnuLokalePlayliste"_s, 514},
                            {u"mnuAllesWiedergeben"_s, 515},
                            {u"mnuVerschiebung(1)"_s, 711},
                            {u"mnuVerschiebung(2)"_s, 711},
                            {u"mnuVerschiebung(4)"_s, 711},
                            {u"mnuCheckPlaylists"_s, 714},
                            {u"mnuDateiEigenschaften"_s, 715},
                            {u"mnuSendtoInstall"_s, 719},
                            {u"mnuHandling(6)"_s, 115},
                            {u"mnuHandling(7)"_s, 114},
                            {u"mnuDbSicherungen"_s, 712},
                            {u"mnuDbWiederherstellung"_s, 713},
                            {u"mnuWiederherstellen"_s, 720},
                            {u"mnuDeleteDatabase"_s, 510}};
    // These show theirs by themselves.
    const QStringList apart{u"mnuSetTagName"_s, u"mnuEigenschaften"_s, u"mnuPackGo"_s};
    for (const CommandRow& row : barRows(root())) {
        const QString name = row.item->fullName();
        EXPECT_TRUE(apart.contains(name) || row.tip == told.take(name)) << name.toStdString();
    }
    EXPECT_EQ("", lines(told.keys()));
    for (const CommandRow& row : popupRows(root())) {
        const auto twin = [&row](const CommandRow& bar) { return bar.item == row.twin; };
        const std::vector<CommandRow> bar = barRows(root());
        const auto found = std::find_if(bar.begin(), bar.end(), twin);
        EXPECT_TRUE(found == bar.end() || found->tip == row.tip) << row.item->fullName().toStdString();
    }
}

} // namespace orvantine::fake
