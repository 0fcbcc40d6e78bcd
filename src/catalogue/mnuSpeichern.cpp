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
    const WholeChange together(root.files);
    IniFiles::DeleteSection(root, database, u"Index"_s);
    for (int row = 1; row <= list.count(); ++row) {
        list.setText(row, padded(row - 1, 3));
        list.Tag = QString::number(row);
        writeEntry(root, database, row, entryOf(root, row));
    }
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
