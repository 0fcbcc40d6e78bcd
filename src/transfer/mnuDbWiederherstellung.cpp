#include "transfer/mnuDbWiederherstellung.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"
#include "transfer/BackupPlaces.h"
#include "transfer/DataTransfer.h"

#include <algorithm>
#include <limits>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Bytes that may be taken of a volume with something left for everything else.
qint64 roomOn(const Root& root, const QString& volume)
{
    constexpr qint64 Reserve = qint64{64} * 1024 * 1024;
    const std::optional<quint64> free = root.services.volumes.freeBytes(volume);
    constexpr auto Most = std::numeric_limits<qint64>::max();
    return free && *free < static_cast<quint64>(Most) ? std::max<qint64>(static_cast<qint64>(*free) - Reserve, 0)
                                                      : Most;
}

/// What may be unpacked: it stands twice for a while, in the folder it is unpacked to and in its place.
qint64 roomFor(const Root& root, const OpenedArchive& archive)
{
    const Volumes& volumes = root.services.volumes;
    const QString target = volumes.rootOf(root.tDatenbank.Text.value());
    const QString unpacked = volumes.rootOf(archive.unpackedFile(0));
    const qint64 room = std::min(roomOn(root, target), roomOn(root, unpacked));
    return target == unpacked ? room / 2 : room;
}

void makeFolders(Root& root, const QString& folder, const QString& name)
{
    for (qsizetype cut = name.indexOf(u'/'); cut >= 0; cut = name.indexOf(u'/', cut + 1))
        root.files.makeFolder(FileDirPath::join(folder, name.left(cut)));
}

/// As a restore of old, over a file that is write-protected too.
void putInPlace(Root& root, const QString& from, const QString& to)
{
    root.files.clearAttributes(to);
    root.files.copy(from, to);
}

/// All of it, or nothing.
bool bringBack(Root& root, Command& command, const OpenedArchive& archive, const RestorePlan& plan)
{
    WholeChange together(root.files, WholeChange::Events::Served);
    for (const QString& name : {u"Playlisten"_s, u"Resource"_s})
        ensureDataFolder(root, name);
    for (const QString& folder : plan.folders)
        makeFolders(root, restoreFolder(root, false), folder + u'/');
    for (const RestoredFile& file : plan.files) {
        const QString folder = restoreFolder(root, file.picture);
        makeFolders(root, folder, file.name);
        putInPlace(root, archive.unpackedFile(file.number), FileDirPath::join(folder, file.name));
        if (!command.yield())
            together.fail();
        if (together.failed())
            break;
    }
    if (plan.database && !together.failed())
        putInPlace(root, archive.unpackedFile(*plan.database), namedDatabaseFile(root));
    return together.end();
}

QString textOf(const RestoreObstacle& obstacle)
{
    switch (obstacle.kind) {
    case RestoreObstacle::Kind::Unsound:
        return u"Die Datei ist beschädigt oder keine Sicherung."_s;
    case RestoreObstacle::Kind::TooMuch:
        return u"Die Datei enthält mehr, als eine Sicherung fasst."_s;
    case RestoreObstacle::Kind::NoRoom:
        return u"Der freie Platz reicht nicht."_s;
    case RestoreObstacle::Kind::Linked:
        return u"„%1“ ist hier eine Verknüpfung."_s.arg(obstacle.entry);
    }
    return {};
}

/// Why the last step failed: the disk says so, or else it is the archive.
QString reasonNow(Root& root)
{
    const std::optional<WriteFault> fault = root.files.takeFault();
    return fault ? reasonOf(*fault) : textOf({RestoreObstacle::Kind::Unsound, {}});
}

/// "" if all of it is in its place, else why nothing is.
QString restoreFrom(Root& root, Command& command, const QString& path)
{
    // What failed earlier is none of this.
    (void)root.files.takeFault();
    const std::unique_ptr<OpenedArchive> archive = root.services.zip.open(path, MostRestoredEntries);
    if (!archive)
        return reasonNow(root);
    const auto planned = planRestoreHere(root, archive->entries(), archive->size(), roomFor(root, *archive));
    if (const auto* const obstacle = std::get_if<RestoreObstacle>(&planned))
        return textOf(*obstacle);
    const auto& plan = std::get<RestorePlan>(planned);
    std::vector<std::size_t> numbers;
    for (const RestoredFile& file : plan.files)
        numbers.push_back(file.number);
    if (!archive->unpack(numbers, [&command](qint64, qint64) { return command.yield(); }))
        return reasonNow(root);
    if (!bringBack(root, command, *archive, plan))
        return reasonOf(root.files.takeFault().value_or(WriteFault::Disk));
    // Nothing of what is in sight goes over what was brought back.
    root.trackList.doubt();
    return {};
}

} // namespace

void mnuDbWiederherstellung_Click(Root& root)
{
    Command command(root);
    const std::optional<Answer> answer =
        command.ask({.text = u"Eine Sicherungsdatei mit Datenbank und Playlisten zurücksichern.    \n"
                             u"Dabei werden alle vorhandenen Einträge überschrieben und \n"
                             u"durch den gesicherten und älteren Datenbestand ersetzt.\n"
                             u"\n"
                             u"Möchten Sie jetzt wirklich mit dem Vorgang fortfahren ?"_s,
                     .title = u" Datenrücksicherungen"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::OkCancel});
    if (answer != Answer::Ok)
        return;
    const std::optional<BackupFile> file = chooseBackupFile(root, command, BackupChoice::ToRead);
    if (!file)
        return;
    DataTransfer transfer(root, command);
    if (!transfer.freeze())
        return;
    const QString obstacle = restoreFrom(root, command, file->folder + file->name);
    if (command.ended() || !command.pause(1.0))
        return;
    writeSetting(root, u"ZipFolder"_s, file->folder);
    if (!reloadDatabase(root, command) || !command.yield())
        return;
    if (!obstacle.isEmpty())
        showQuietly(root, u"Nichts wiederhergestellt: "_s + obstacle);
    (void)transfer.unfreeze();
}

} // namespace orvantine
