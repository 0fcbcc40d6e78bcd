#include "catalogue/mnuLaden.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/FormResize.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/NewPlayliste.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString DoublesSetting = u"CheckEntrys"_s;

/// Puts the stored texts into a row; one that was refused has no place and is passed over.
void fillRow(Root& root, int row, const CatalogueEntry& entry)
{
    ListView& list = root.LListView1;
    list.setText(row, entry.id);
    list.setSubItem(row, CatalogueItem::Name, withoutControls(entry.name));
    list.setSubItem(row, CatalogueItem::Path, entry.path);
    list.setSubItem(row, CatalogueItem::Tracks, entry.tracks);
    const bool missing = !Dateiexistenz::FileExists(root, entry.path);
    markMissing(root, row, missing);
    if (missing)
        ++root.missingPlaylists;
}

/// False if the program has ended.
bool loadRows(Root& root, Command& command)
{
    const QString database = databaseFile(root);
    int rows = 0;
    for (int number = 1; number <= MostPlaylists; ++number) {
        const CatalogueEntry entry = readEntry(root, database, number);
        if (entry.name.isEmpty())
            continue;
        QString path = entry.path;
        // Required: one that was refused takes a number all the same.
        (void)NewPlayliste(root, path, entry.name);
        ++rows;
        if (!command.yield())
            return false;
        fillRow(root, rows, entry);
        if (!command.yield())
            return false;
    }
    return true;
}

} // namespace

void mnuLaden_Click(Root& root)
{
    ListView& list = root.LListView1;
    Command command(root);
    command.wait(Wait::All, MousePointer::ArrowHourglass);
    list.clear();
    beginRowKeys(root);
    if (isFiltered(root))
        setFiltered(root, false);
    root.nAnzeige.Caption = u"(0)"_s;
    root.missingPlaylists = 0;
    const int failedReads = root.services.profiles.failedReads();
    const bool missing = !Dateiexistenz::FileExists(root, databaseFile(root)) &&
                         root.files.readBytes(databaseFile(root)).outcome == ReadOutcome::Missing;
    if (!command.yield() || !loadRows(root, command)) {
        // Half a catalogue: nothing that comes behind the end of the program stores it.
        root.databaseDoubted = true;
        return;
    }
    // While a killed command is not put back the file may hold half of it.
    root.databaseDoubted =
        root.services.profiles.failedReads() != failedReads || root.files.trouble() == FilesTrouble::Unfinished;
    root.databaseAwaited = missing && list.count() == 0;
    if (root.databaseDoubted)
        showQuietly(
            root, u"Die Datenbank konnte nicht ganz gelesen werden. Bis zum nächsten Laden bleibt sie, wie sie ist."_s);

    if (list.count() > 0) {
        if (!command.pause(1.0))
            return;
        openRow(root, list.count());
    }

    if (!command.yield())
        return;
    command.endWait();
    Form_Resize(root);
    if (!command.yield())
        return;

    if (root.missingPlaylists != 0 && readSetting(root, u"Error"_s).isOrAbsent(1))
        command.tell({.text = u"Es wurden "_s + QString::number(root.missingPlaylists) +
                              u" nicht vorhandene Playlisten in der Datenbank gefunden.    \n"_s +
                              u"Überprüfen Sie bitte die Datenbankeinträge oder die Quelldateien."_s,
                      .title = u" Wiedergabelisten überprüfen"_s,
                      .icon = MessageIcon::Exclamation});
}

void GetLoadListe(Root& root)
{
    mnuLaden_Click(root);
}

DoublesUnasked::DoublesUnasked(Root& root)
    : m_root(root), m_before(root.services.settings.value(Hive::CurrentUser, settingsKey(), DoublesSetting))
{
    writeSetting(root, DoublesSetting, qint16{0});
}

DoublesUnasked::~DoublesUnasked()
{
    SettingsStore& settings = m_root.services.settings;
    if (m_before)
        settings.setValue(Hive::CurrentUser, settingsKey(), DoublesSetting, *m_before);
    else
        settings.removeValue(Hive::CurrentUser, settingsKey(), DoublesSetting);
}

} // namespace orvantine
