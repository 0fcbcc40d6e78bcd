#include "shell/Menus.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

enum Start : unsigned { Plain = 0, Disabled = 1, Hidden = 2, Marked = 4 };

struct Row
{
    int level = 1;
    MenuItem* item = nullptr;
    QString caption;
    QString shortcut;
    unsigned start = Plain;
    bool submenu = false;
};

constexpr bool Submenu = true;

/// Level, control, caption, shortcut, start state. A caption "-" is a separator.
std::vector<Row> barRows(Root& r)
{
    const QString line = u"-"_s;
    return {
        {0, &r.mnuVorgänge, u"&Vorgänge "_s, {}, Plain, Submenu},
        {1, &r.mnuHinzufügen, u"&Hinzufügen "_s, {}, Plain, Submenu},
        {2, &r.mnuDurchsuchen, u"Liste hinzufügen ... "_s, u"Ctrl+N"_s},
        {2, &r.mnuNeu, u"Neue Playliste ... "_s, u"Ctrl+L"_s},
        {2, &r.mnuAddFolder, u"Ordner durchsuchen ... "_s, u"Ctrl+O"_s},
        {2, &r.mnuAddChanges, u"Wechseldatenträger ... "_s, {}, Disabled},
        {2, &r.Trennung0X, line},
        {2, &r.mnuAddCDs, u"AudioCD Ripper ... "_s},
        {2, &r.Trennung0, line},
        {2, &r.mnuAddSounds, u"Sounddateien ... "_s},
        {1, &r.mnuEigenschaften, u"&Eigenschaften "_s},
        {1, &r.mnuUmbenennen, u"&Umbenennen "_s},
        {1, &r.mnuBeschriftung, u"Bes&chriftung "_s},
        {1, &r.mnuVerschieben, u"&Verschieben "_s, {}, Plain, Submenu},
        {2, &r.mnuVerschiebung[1], u"Höher (Alt+Up) "_s},
        {2, &r.mnuVerschiebung[2], u"Tiefer  (Alt+Down) "_s},
        {2, &r.mnuVerschiebung[3], line},
        {2, &r.mnuVerschiebung[4], u"Positionieren ... "_s},
        {1, &r.mnuÜbertragen, u"Ü&bertragen"_s, {}, Plain, Submenu},
        {2, &r.mnuHandling[1], u"&Vollständige Playliste kopieren "_s},
        {2, &r.mnuHandling[2], u"&Audio CD-Rom brennen "_s},
        {2, &r.mnuHandling[3], u"&Bluetooth-Übertragung "_s},
        {2, &r.mnuHandling[4], u"&Sounddatei kopieren "_s},
        {2, &r.mnuHandling[5], line},
        {2, &r.mnuHandling[6], u"&Unterordner (Interpreten) "_s},
        {2, &r.mnuHandling[7], u"&Ordner auswählen ... "_s},
        {1, &r.mnuLöschen, u"&Löschen "_s},
        {1, &r.Trennung1, line},
        {1, &r.mnuWiedergabe, u"&Wiedergabe starten "_s, u"Ctrl+P"_s},
        {1, &r.mnuSoundplayerExt, u"S&oundwiedergabe "_s, {}, Plain, Submenu},
        {2, &r.mnuSoundplayer[1], u"&Nächster Track "_s},
        {2, &r.mnuSoundplayer[2], u"&Vorheriger Track "_s},
        {2, &r.mnuSoundplayer[3], u"&Pause "_s},
        {2, &r.mnuSoundplayer[4], u"&Weiterspielen "_s, {}, Disabled | Hidden},
        {1, &r.Trennung10, line},
        {1, &r.mnuFavoritenShow, u"&Nur Favoriten anzeigen ... "_s, {}, Disabled},
        {1, &r.mnuFavoriten, u"Playliste &favoritisieren "_s, u"Ctrl+I"_s},
        {1, &r.Trennung3, line},
        {1, &r.mnuSpeichernUnter, u"&Playliste speichern unter ... "_s},
        {1, &r.Trennung4, line},
        {1, &r.mnuFolderCheck, u"Medienordner zuweisen ... "_s},
        {1, &r.mnuCheckPlaylists, u"Playlisten überprüfen ... "_s},
        {1, &r.Trennung5, line},
        {1, &r.mnuWiederherstellen, u"Datenbank wiederherstellen ... "_s},
        {1, &r.mnuSpeichern, u"Datenbank speichern ... "_s, u"Ctrl+S"_s},
        {1, &r.mnuLaden, u"Datenbank einlesen ... "_s, {}, Hidden},
        {1, &r.Trennung6, line},
        {1, &r.mnuPackGo, u"P&ack and Go ..."_s},
        {1, &r.mnuDbWiederherstellung, u"&Wiederherstellungen ... "_s},
        {1, &r.mnuDbSicherungen, u"Sicherungskopien ... "_s},
        {1, &r.Trennung7, line},
        {1, &r.mnuBeenden, u"B&eenden "_s},

        {0, &r.mnuBearbeiten, u"&Bearbeiten "_s, {}, Plain, Submenu},
        {1, &r.mnuEditCut, u"&Ausschneiden "_s, u"Ctrl+X"_s, Disabled},
        {1, &r.mnuEditCopy, u"&Kopieren "_s, u"Ctrl+C"_s},
        {1, &r.mnuEditPaste, u"&Einfügen "_s, u"Ctrl+V"_s},
        {1, &r.mnuEditKill, u"&Löschen "_s},
        {1, &r.Trennung11, line},
        {1, &r.mnuSuchen, u"&Suchen ... "_s, u"Ctrl+F"_s},

        {0, &r.mnuAnsicht, u"&Ansicht "_s, {}, Plain, Submenu},
        {1, &r.TagIDs, u"&TagID speichern"_s, {}, Disabled},
        {1, &r.Trennung21, line},
        {1, &r.mnuOrvantenmenu, u"Orvantenmenü"_s, {}, Plain, Submenu},
        {2, &r.mnuOrvmenu[1], u"Vollständigen Path zeigen "_s},
        {2, &r.mnuOrvmenu[2], u"Nur Dateiname anzeigen "_s},
        {1, &r.mnuGridlines, u"&Gitternetzlinien "_s, {}, Marked},
        {1, &r.Trennung22, line},
        {1, &r.mnuSuchDialog, u"&Suchdialog "_s},
        {1, &r.mnuDatumsanzeige, u"&Erstellungsdatum "_s},
        {1, &r.mnuLautstärke, u"L&autstärke-Anzeige "_s},
        {1, &r.mnuPositionen, u"&Listen-Positionen "_s},
        {1, &r.Trennung23, line},
        {1, &r.mnuCoverShow, u"&Cover-Anzeige "_s},
        {1, &r.mnuTrackShow, u"&Track-Anzeige "_s, {}, Marked},
        {1, &r.Trennung24, line},
        {1, &r.mnuSchriftarten, u"&Schriftarten "_s},

        {0, &r.mnuVerwaltung, u"&Verwaltung "_s, {}, Plain, Submenu},
        {1, &r.mnuDateiEigenschaften, u"&Datei-Eigenschaften ... "_s},
        {1, &r.Trennung31, line},
        {1, &r.mnuMoveEntrys, u"&Einträge verschieben "_s, {}, Plain, Submenu},
        {2, &r.mnuMoveEntry[1], u"Aufwärts "_s},
        {2, &r.mnuMoveEntry[2], u"Abwärts "_s},
        {1, &r.mnuSortieren, u"&Playliste sortieren "_s, {}, Plain, Submenu},
        {2, &r.mnuSortierung[1], u"&Namen sortieren "_s},
        {2, &r.mnuSortierung[2], u"&Dateinamen sortieren "_s},
        {2, &r.mnuSortierung[3], u"&Track-Nr. sortieren "_s},
        {1, &r.mnuWiederholungen, u"&Wiederholungen "_s, {}, Plain, Submenu},
        {2, &r.mnuWiederholung[1], u"&Playliste wiederholen "_s},
        {2, &r.mnuWiederholung[2], u"&Sounddatei wiederholen "_s, {}, Disabled},
        {2, &r.mnuWiederholung[3], u"&Keine Wiederholung "_s},
        {1, &r.Trennung32, line},
        {1, &r.mnuOpenMediaplayer, u"&Win-Mediaplayer senden "_s, {}, Plain, Submenu},
        {2, &r.mnuOpenMediaplayerEx[1], u"&Sounddatei ... "_s},
        {2, &r.mnuOpenMediaplayerEx[2], u"&Playliste ... "_s},
        {1, &r.mnuEingangsordner, u"&Eingangsordner öffnen ... "_s},
        {1, &r.mnuCopyTrack, u"&Kopiere Trackinformation "_s},
        {1, &r.mnuSetFileName, u"&Filename als Soundname "_s},
        {1, &r.mnuSetTagName, u"&Tag-ID als Soundname "_s},
        {1, &r.mnuGetIDTag, u"&Mp3-Tag bearbeiten ... "_s},
        {1, &r.Trennung33, line},
        {1, &r.mnuFileKill, u"&Sounddatei entfernen "_s},
        {1, &r.mnuFileSave, u"P&layliste speichern "_s},

        {0, &r.mnuExtras, u"&Extras "_s, {}, Plain, Submenu},
        {1, &r.mnuSpaltenReset, u"&Spaltenbreiten zurücksetzen "_s},
        {1, &r.mnuRecycle, u"O&rdner für Playlisten aufräumen "_s},
        {1, &r.mnuDeleteDatabase, u"Da&tenbank und Playlisten löschen"_s},
        {1, &r.Trennung41, line},
        {1, &r.mnuSendtoInstall, u"F&unktion 'Senden an' hinzufügen "_s},
        {1, &r.mnuAddSoundfiles, u"&Hinzufügen zeigt Verzeichnisse "_s},
        {1, &r.mnuErrorDisplay, u"&Fehlermeldungen anzeigen "_s},
        {1, &r.mnuLokalePlayliste, u"&Playlisten lokal speichern "_s},
        {1, &r.mnuAllesWiedergeben, u"&Alle Playlisten abspielen "_s, {}, Marked},
        {1, &r.Trennung42, line},
        {1, &r.mnuDatabase, u"&Datenbank-Ordner ... "_s},
        {1, &r.mnuUpdates, u"&Internet-Updates ... "_s},
        {1, &r.Trennung43, line},
        {1, &r.mnuOptionen, u"&Optionen ... "_s},

        {0, &r.mnuHelp, u"&?"_s, {}, Plain, Submenu},
        {1, &r.mnuHilfe, u"&Hilfethemen "_s, u"F1"_s},
        {1, &r.mnuTastenbefehle, u"&Tastaturbefehle ... "_s},
        {1, &r.Trennung81, line},
        {1, &r.mnuInfo, u"&Info ... "_s},
    };
}

std::vector<Row> popupRows(Root& r)
{
    const QString line = u"-"_s;
    return {
        {0, &r.mnuSpecial, u"Spezial "_s, {}, Hidden, Submenu},
        {1, &r.mnuSpecials[1], u"Soundtrack abspielen "_s},
        {1, &r.mnuSpecials[2], u"Soundtrack stoppen "_s},
        {1, &r.mnuFileProperties, u"&Eigenschaften"_s},
        {1, &r.mnxVerschiebung, u"T&rack verschieben "_s, {}, Plain, Submenu},
        {2, &r.mnxVerschieben[1], u"Aufwärts "_s},
        {2, &r.mnxVerschieben[2], u"Abwärts "_s},
        {1, &r.Trennung82, line},
        {1, &r.mnxBearbeiten[0], u"&Win-Mediaplayer senden "_s, {}, Plain, Submenu},
        {2, &r.mnxBearbeitenEx[1], u"&Sounddatei ... "_s},
        {2, &r.mnxBearbeitenEx[2], u"&Playliste ... "_s},
        {1, &r.mnxBearbeiten[1], u"&Eingangsordner öffnen ... "_s},
        {1, &r.mnxBearbeiten[2], u"&Kopiere Trackinformation "_s},
        {1, &r.mnxBearbeiten[3], u"&Filename als Soundname "_s},
        {1, &r.mnxBearbeiten[4], u"&Tag-ID als Soundname "_s},
        {1, &r.mnxBearbeiten[5], u"&Mp3-Tag bearbeiten ... "_s},
        {1, &r.mnxBearbeiten[6], u"&Sounddatei entfernen "_s},
        {1, &r.mnxSpecials[1], u"&Namen sortieren "_s},
        {1, &r.mnxSpecials[2], u"&Dateinamen sortieren "_s},
        {1, &r.mnxSpecials[3], u"N&ummer sortieren "_s},
    };
}

std::vector<MenuEntry> entriesOf(const std::vector<Row>& rows)
{
    std::vector<MenuEntry> entries;
    entries.reserve(rows.size());
    for (const Row& row : rows)
        entries.push_back({row.item, row.level, row.submenu, row.caption == u"-"_s});
    return entries;
}

void setUp(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        row.item->Caption = row.caption;
        row.item->Shortcut = row.shortcut;
        row.item->Enabled = (row.start & Disabled) == 0;
        row.item->Visible = (row.start & Hidden) == 0;
        row.item->Checked = (row.start & Marked) != 0;
    }
}

} // namespace

void setUpMenus(Root& root)
{
    setUp(barRows(root));
    setUp(popupRows(root));
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
