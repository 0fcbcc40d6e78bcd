#include "catalogue/mnuSpeichern.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/IniFiles.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/NewPlayliste.h"
#include "catalogue/mnuLaden.h"
#include "platform/FileDirPath.h"

#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// False if a copy was due and could not be made: the extras of the rows come from it.
bool backUpOnceADay(Root& root)
{
    const QString database = databaseFile(root);
    // A disk that does not answer is no proof that there is none.
    if (!Dateiexistenz::FileExists(root, database))
        return root.files.readBytes(database).outcome == ReadOutcome::Missing;
    const std::optional<QDateTime> changed = root.files.modified(database);
    const QString today = dateText(root.services.events.now().date());
    WholeChange together(root.files);
    bool kept = true;
    if (!changed || dateText(changed->date()) != today)
        kept = backUp(root, database, backupFile(root));
    if (kept && !Dateiexistenz::FileExists(root, backupFile(root)))
        kept = backUp(root, database, backupFile(root));
    return together.end() && kept;
}

/// A row as it is stored. Required: the extras stay with the position, as the copy of the old order has them.
CatalogueEntry entryOf(const Root& root, int row)
{
    CatalogueEntry entry = readEntry(root, backupFile(root), row);
    entry.id = padded(row - 1, 3);
    takeCells(root, row, entry);
    return entry;
}

void writeRows(Root& root)
{
    const QString database = databaseFile(root);
    ListView& list = root.LListView1;
    const bool awaited = root.databaseAwaited;
    WholeChange together(root.files);
    IniFiles::DeleteSection(root, database, u"Index"_s);
    for (int row = 1; row <= list.count(); ++row) {
        list.setText(row, padded(row - 1, 3));
        list.Tag = QString::number(row);
        writeEntry(root, database, row, entryOf(root, row));
    }
    // The file that it made has gone again.
    if (!together.end() && awaited)
        root.databaseAwaited = true;
}

/// The number of the last entry in the database.
int lastNumber(const Root& root)
{
    int number = MostPlaylists;
    while (number > 0 && indexValue(root, databaseFile(root), number, EntryKey::Name).isEmpty())
        --number;
    return number;
}

bool hasPath(const Root& root, const QString& path, int last)
{
    for (int number = 1; number <= last; ++number)
        if (FileDirPath::isSameFile(indexValue(root, databaseFile(root), number, EntryKey::Path), path))
            return true;
    return false;
}

/// Stores the rows behind those of a database that has come to stand since the catalogue was loaded without one. False
/// if not all of them have room, or it could not be read or written.
bool storeBehind(Root& root)
{
    const QString database = databaseFile(root);
    const int failedReads = root.services.profiles.failedReads();
    const int last = lastNumber(root);
    std::vector<CatalogueEntry> entries;
    for (int row = 1; row <= root.LListView1.count(); ++row) {
        if (hasPath(root, playlistPath(root, row), last))
            continue;
        CatalogueEntry& entry = entries.emplace_back();
        takeCells(root, row, entry);
    }
    if (root.services.profiles.failedReads() != failedReads || last + static_cast<int>(entries.size()) > MostPlaylists)
        return false;
    root.databaseAwaited = false;
    WholeChange together(root.files);
    int number = last;
    for (CatalogueEntry& entry : entries) {
        entry.id = padded(number, 3);
        writeEntry(root, database, ++number, entry);
    }
    root.databaseAwaited = !together.end();
    return !root.databaseAwaited;
}

/// True if nothing is left for the save to do.
bool joinForeign(Root& root, Command& command)
{
    if (!IniFiles::isForeign(root))
        return false;
    ProfileStore& profiles = root.services.profiles;
    const int failedReads = profiles.failedReads();
    const bool empty = profiles.keys(databaseFile(root), u"Index"_s).isEmpty();
    const bool read = profiles.failedReads() == failedReads;
    // One without a catalogue takes the rows as they are.
    if (read && empty) {
        root.databaseAwaited = false;
        return false;
    }
    // The extras of its rows come from the copy at the next save.
    const bool stored = read && backUpOnceADay(root) && storeBehind(root);
    command.endWait();
    if (!stored) {
        showQuietly(root, u"Nicht gespeichert: Es gibt inzwischen eine andere Datenbank."_s);
        return true;
    }
    const DoublesUnasked unasked(root);
    root.mnuLaden.Click();
    if (!command.ended())
        showQuietly(root, u"Die Datenbank ist wieder da. Ihre Wiedergabelisten stehen vor den neuen."_s);
    return true;
}

} // namespace

void mnuSpeichern_Click(Root& root)
{
    ListView& list = root.LListView1;
    if (root.databaseDoubted)
        showQuietly(root, u"Nicht gespeichert: Die Datenbank konnte nicht ganz gelesen werden."_s);
    if (!isWholeCatalogue(root))
        return;

    Command command(root);
    command.wait();
    if (!command.yield())
        return;

    if (joinForeign(root, command))
        return;
    const bool kept = backUpOnceADay(root);

    if (root.LListView2.count() > 0) {
        if (readSetting(root, u"AutoTag"_s).is(1)) {
            root.mnuSpeichern.Tag = u"1"_s;
            root.mnuSetTagName.Click();
            root.mnuSpeichern.Tag = QString();
        }
        if (!command.yield())
            return;
    }

    if (list.count() >= MostPlaylists) {
        // Required: told at each save of a full catalogue; the save goes on.
        if (!tellLimit(command))
            return;
        command.endWait();
    }

    if (kept)
        writeRows(root);

    showTrackHeading(root);
    if (root.mnuPositionen.Checked.value())
        root.tSoundzahl.Visible = true;
    root.sAnzeige[0].Width = root.xpFrame1.Width.value();

    list.Tag = u"0"_s;
    command.endWait();
    if (!command.yield())
        return;

    if (root.mnuLokalePlayliste.Checked.value())
        root.mnuFileSave.Click();
    command.lastYield();
}

void writeCatalogueRows(Root& root)
{
    if (isWholeCatalogue(root))
        writeRows(root);
}

void SaveDatabase(Root& root)
{
    mnuSpeichern_Click(root);
}

} // namespace orvantine
