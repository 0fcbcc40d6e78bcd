#include "transfer/mnuDbWiederherstellung.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"
#include "transfer/DataTransfer.h"
#include "transfer/RestorePlan.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString folderFor(const Root& root, bool picture)
{
    return dataFolder(root, picture ? u"Resource"_s : u"Playlisten"_s);
}

/// What may be unpacked with something left for everything else.
qint64 roomFor(const Root& root)
{
    constexpr qint64 Reserve = qint64{64} * 1024 * 1024;
    const Volumes& volumes = root.services.volumes;
    const std::optional<quint64> free = volumes.freeBytes(volumes.rootOf(root.tDatenbank.Text.value()));
    if (!free || *free > static_cast<quint64>(MostRestoredBytes + Reserve))
        return MostRestoredBytes;
    return std::max<qint64>(static_cast<qint64>(*free) - Reserve, 0);
}

/// A link on the way would lead out of the folder.
bool isReachedByLink(const Root& root, const QString& folder, const QString& name)
{
    for (qsizetype cut = name.indexOf(u'/'); cut >= 0; cut = name.indexOf(u'/', cut + 1))
        if (root.files.isLink(FileDirPath::join(folder, name.left(cut))))
            return true;
    return root.files.isLink(FileDirPath::join(folder, name));
}

bool staysInside(const Root& root, const RestorePlan& plan)
{
    return std::none_of(plan.files.begin(), plan.files.end(),
                        [&root](const RestoredFile& file) {
                            return isReachedByLink(root, folderFor(root, file.picture), file.name);
                        }) &&
           std::none_of(plan.folders.begin(), plan.folders.end(),
                        [&root](const QString& name) { return isReachedByLink(root, folderFor(root, false), name); });
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
bool bringBack(Root& root, const OpenedArchive& archive, const RestorePlan& plan)
{
    WholeChange together(root.files);
    for (const QString& name : {u"Playlisten"_s, u"Resource"_s})
        ensureDataFolder(root, name);
    for (const QString& folder : plan.folders)
        makeFolders(root, folderFor(root, false), folder + u'/');
    for (const RestoredFile& file : plan.files) {
        const QString folder = folderFor(root, file.picture);
        makeFolders(root, folder, file.name);
        putInPlace(root, archive.unpackedFile(file.number), FileDirPath::join(folder, file.name));
    }
    if (plan.database)
        putInPlace(root, archive.unpackedFile(*plan.database), namedDatabaseFile(root));
    return together.end();
}

bool restoreFrom(Root& root, Command& command, const QString& path)
{
    const std::unique_ptr<OpenedArchive> archive = root.services.zip.open(path, MostRestoredEntries);
    const std::optional<RestorePlan> plan =
        archive ? planRestore(archive->entries(), archive->size(), roomFor(root)) : std::nullopt;
    if (!plan || !staysInside(root, *plan))
        return false;
    std::vector<std::size_t> numbers;
    for (const RestoredFile& file : plan->files)
        numbers.push_back(file.number);
    if (!archive->unpack(numbers, [&command](qint64, qint64) { return command.yield(); }) || command.ended())
        return false;
    if (!bringBack(root, *archive, *plan))
        return false;
    // Nothing of what is in sight goes over what was brought back.
    root.trackList.doubt();
    return true;
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
    const bool restored = restoreFrom(root, command, file->folder + file->name);
    if (command.ended() || !command.pause(1.0))
        return;
    writeSetting(root, u"ZipFolder"_s, file->folder);
    if (!reloadDatabase(root, command) || !command.yield())
        return;
    if (!restored)
        showQuietly(root, u"Nichts wiederhergestellt: Die Datei ist beschädigt oder keine Sicherung."_s);
    (void)transfer.unfreeze();
}

} // namespace orvantine
