#include "app/CopyToAppDataDir.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

#include <memory>
#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString DataCopyTried = u"DataCopyTried"_s;

/// The files of a folder; nothing where it cannot be read. One that is missing has none.
std::optional<QStringList> filesOf(Root& root, Command& command, const QString& folder, const QString& pattern)
{
    constexpr double UntilMoreIsRead = 0.02;
    if (const QStringList files = root.files.list(folder, pattern); !files.isEmpty() || !root.files.isFolder(folder))
        return files;
    // A list that fails is empty too; a walk leaves a folder out that it cannot read.
    const std::unique_ptr<FolderWalk> walk = root.services.walks.begin(folder, pattern, 0);
    while (!walk->done()) {
        if (const std::vector<WalkedFolder> read = walk->take(); !read.empty())
            return read.front().files;
        if (!command.pause(UntilMoreIsRead))
            break;
    }
    return {};
}

} // namespace

void CopyToAppDataDir(Root& root)
{
    // Where the settings cannot be read it may have been done long ago.
    const std::optional<Setting> moved = readForCertain(root, u"NoDataCopy"_s);
    const std::optional<Setting> tried = readForCertain(root, DataCopyTried);
    if (!moved || moved->present || !tried)
        return;

    // What an earlier try has copied may have been changed by the user since.
    const bool again = tried->present;
    bool stands = true;
    for (const QString& name : {u"Orvantine.dat"_s, u"Orvantine.bak"_s}) {
        const QString target = FileDirPath::join(userFolder(root), name);
        if (!Dateiexistenz::FileExists(root, target) && Dateiexistenz::FileExists(root, programFile(root, name)))
            stands = root.files.copy(programFile(root, name), target) && stands;
    }

    Command command(root);
    command.wait();

    const QString formerPath = root.LMp3Files.Path;
    const QString formerPattern = root.LMp3Files.Pattern;
    for (const QString& name : dataFolderNames()) {
        ensureDataFolder(root, name);
        root.LMp3Files.Path = programFile(root, name);
        root.LMp3Files.Pattern = u"*.*"_s;
        const QString target = dataFolder(root, name);
        const std::optional<QStringList> files = filesOf(root, command, root.LMp3Files.Path, root.LMp3Files.Pattern);
        if (command.ended())
            break;
        stands = stands && files;
        for (const QString& file : files.value_or(QStringList())) {
            const QString copy = FileDirPath::join(target, file);
            if (!again || !Dateiexistenz::FileExists(root, copy))
                stands = root.files.copy(FileDirPath::join(root.LMp3Files.Path, file), copy) && stands;
        }
    }
    root.LMp3Files.Path = formerPath;
    root.LMp3Files.Pattern = formerPattern;

    if (command.ended())
        return;
    command.endWait();
    // The next start tries again.
    if (!stands) {
        writeSetting(root, DataCopyTried, qint16{1});
        return;
    }
    if (again)
        Registry::DeleteValue(root, Hive::CurrentUser, settingsKey(), DataCopyTried);
    writeSetting(root, u"NoDataCopy"_s, qint16{1});
    command.tell({.text = u"Datenbanken wurden vom Installationsordner in den Benutzerordner kopiert. Die "
                          u"Datenbank und Playlisten befinden sich nun im AppData-Roaming Verzeichnis."_s,
                  .title = root.Caption.value() + u' ',
                  .icon = MessageIcon::Exclamation});
}

} // namespace orvantine
