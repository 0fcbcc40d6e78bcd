#include "transfer/mnuDbSicherungen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"
#include "transfer/BackupPlaces.h"
#include "transfer/DataTransfer.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString DateSetting = u"Backup"_s;

/// A date that tells of a backup which was not made would be taken for one.
void putDateBack(Root& root, const std::optional<SettingValue>& before)
{
    if (before)
        root.services.settings.setValue(Hive::CurrentUser, settingsKey(), DateSetting, *before);
    else
        root.services.settings.removeValue(Hive::CurrentUser, settingsKey(), DateSetting);
}

struct Backup
{
    bool done = false;
    QStringList leftOut;
    /// Why what was packed would not come back; or that there is nothing to pack.
    QString obstacle;
};

const QString DatabaseEntry = u"Orvantine.dat"_s;

QString textOf(const RestoreObstacle& obstacle)
{
    switch (obstacle.kind) {
    case RestoreObstacle::Kind::Unsound:
        return u"„%1“ ließe sich nicht zurücksichern."_s.arg(obstacle.entry);
    case RestoreObstacle::Kind::TooMuch:
    case RestoreObstacle::Kind::NoRoom:
        return u"Es ist mehr, als sich zurücksichern ließe."_s;
    case RestoreObstacle::Kind::Linked:
        return u"„%1“ ist eine Verknüpfung und ließe sich nicht zurücksichern."_s.arg(obstacle.entry);
    }
    return {};
}

Backup pack(Root& root, Command& command, const BackupFile& file)
{
    const bool hasDatabase = Dateiexistenz::FileExists(root, namedDatabaseFile(root));
    if (!hasDatabase && !root.files.isFolder(playlistFolder(root)))
        return {.done = false, .leftOut = {}, .obstacle = u"Der Datenbank-Ordner fehlt."_s};
    Backup backup;
    // Told is a copy of the database in "Playlisten" that goes again: the archive that comes of it is the same.
    ArchiveJob job{.archive = file.folder + file.name,
                   .trees = {{playlistFolder(root), true}, {dataFolder(root, u"Resource"_s), false}},
                   .compression = chosenCompression(root),
                   // What could not be brought back would spoil the whole of it.
                   .takes = isRestorableName,
                   .followsLinks = false};
    job.accepts = [&root, &backup](const std::vector<ArchiveEntry>& entries, qint64 size) {
        const auto planned = planRestoreHere(root, entries, size, MostRestoredBytes);
        if (const auto* const obstacle = std::get_if<RestoreObstacle>(&planned))
            backup.obstacle = textOf(*obstacle);
        return backup.obstacle.isEmpty();
    };
    if (hasDatabase)
        job.files = {{namedDatabaseFile(root), DatabaseEntry}};
    const ArchiveOutcome outcome = root.services.zip.add(job, [&command](qint64, qint64) { return command.yield(); });
    backup.done = outcome.done;
    backup.leftOut = outcome.leftOut;
    return backup;
}

/// Nothing where the program has ended.
std::optional<Backup> packAndNote(Root& root, Command& command, const BackupFile& file)
{
    if (!command.yield())
        return {};
    const std::optional<SettingValue> before =
        root.services.settings.value(Hive::CurrentUser, settingsKey(), DateSetting);
    writeSetting(root, u"ZipFolder"_s, file.folder);
    writeSetting(root, DateSetting, dateText(root.services.events.now().date()));
    if (!command.yield()) {
        putDateBack(root, before);
        return {};
    }
    Backup backup = pack(root, command, file);
    if (!backup.done || backup.leftOut.contains(DatabaseEntry))
        putDateBack(root, before);
    if (command.ended() || !command.yield() || !command.pause(1.0))
        return {};
    // One that an earlier restore has left.
    if (const QString copy = FileDirPath::join(playlistFolder(root), DatabaseEntry);
        Dateiexistenz::FileExists(root, copy))
        root.files.remove(copy);
    return backup;
}

void tellOutcome(Root& root, const Backup& backup)
{
    if (backup.done) {
        if (!backup.leftOut.isEmpty())
            showQuietly(root, u"Nicht in der Sicherung: "_s + backup.leftOut.join(u", "_s));
    } else if (!backup.obstacle.isEmpty()) {
        showQuietly(root, u"Keine Sicherung: "_s + backup.obstacle);
    } else if (const std::optional<WriteFault> fault = root.files.takeFault()) {
        root.files.noteFault(*fault);
    } else {
        showQuietly(root, u"Keine Sicherung: Die gewählte Datei ist kein vollständiges Archiv."_s);
    }
}

} // namespace

bool backUpData(Root& root)
{
    Command command(root);
    const std::optional<BackupFile> file = chooseBackupFile(root, command, BackupChoice::ToWrite);
    if (!file)
        return false;
    DataTransfer transfer(root, command);
    if (!transfer.freeze())
        return false;
    const std::optional<Backup> backup = packAndNote(root, command, *file);
    if (!backup)
        return false;
    tellOutcome(root, *backup);
    return transfer.unfreeze() && backup->done && backup->leftOut.isEmpty();
}

void mnuDbSicherungen_Click(Root& root)
{
    (void)backUpData(root);
}

} // namespace orvantine
