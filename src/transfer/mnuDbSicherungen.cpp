#include "transfer/mnuDbSicherungen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"
#include "transfer/DataTransfer.h"
#include "transfer/RestorePlan.h"

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

ArchiveOutcome pack(Root& root, Command& command, const BackupFile& file)
{
    // Told is a copy of the database in "Playlisten" that goes again: the archive that comes of it is the same.
    ArchiveJob job{.archive = file.folder + file.name,
                   .trees = {{playlistFolder(root), true}, {dataFolder(root, u"Resource"_s), false}},
                   .compression = chosenCompression(root),
                   // What could not be brought back would spoil the whole of it.
                   .takes = isRestorableName};
    if (Dateiexistenz::FileExists(root, namedDatabaseFile(root)))
        job.files = {{namedDatabaseFile(root), u"Orvantine.dat"_s}};
    return root.services.zip.add(job, [&command](qint64, qint64) { return command.yield(); });
}

/// Nothing where the program has ended.
std::optional<ArchiveOutcome> packAndNote(Root& root, Command& command, const BackupFile& file)
{
    if (!command.yield())
        return {};
    writeSetting(root, u"ZipFolder"_s, file.folder);
    writeSetting(root, DateSetting, dateText(root.services.events.now().date()));
    if (!command.yield())
        return {};
    ArchiveOutcome outcome = pack(root, command, file);
    if (command.ended() || !command.yield() || !command.pause(1.0))
        return {};
    // One that an earlier restore has left.
    if (const QString copy = FileDirPath::join(playlistFolder(root), u"Orvantine.dat");
        Dateiexistenz::FileExists(root, copy))
        root.files.remove(copy);
    return outcome;
}

void tellOutcome(Root& root, const ArchiveOutcome& outcome)
{
    if (!outcome.done) {
        const std::optional<WriteFault> fault = root.files.takeFault();
        if (fault)
            root.files.noteFault(*fault);
        else
            showQuietly(root, u"Keine Sicherung: Die gewählte Datei ist kein vollständiges Archiv."_s);
    } else if (!outcome.leftOut.isEmpty()) {
        showQuietly(root, u"Nicht in der Sicherung: "_s + outcome.leftOut.join(u", "_s));
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
    const std::optional<SettingValue> before =
        root.services.settings.value(Hive::CurrentUser, settingsKey(), DateSetting);
    const std::optional<ArchiveOutcome> outcome = packAndNote(root, command, *file);
    if (!outcome || !outcome->done)
        putDateBack(root, before);
    if (!outcome)
        return false;
    tellOutcome(root, *outcome);
    return transfer.unfreeze() && outcome->done && outcome->leftOut.isEmpty();
}

void mnuDbSicherungen_Click(Root& root)
{
    (void)backUpData(root);
}

} // namespace orvantine
