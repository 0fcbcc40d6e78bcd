#include "app/CopyToAppDataDir.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString DataCopyTried = u"DataCopyTried"_s;

} // namespace

void CopyToAppDataDir(Root& root)
{
    if (readSetting(root, u"NoDataCopy"_s).present)
        return;

    // What an earlier try has copied may have been changed by the user since.
    const bool again = readSetting(root, DataCopyTried).present;
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
        for (const QString& file : root.files.list(root.LMp3Files.Path, root.LMp3Files.Pattern)) {
            const QString copy = FileDirPath::join(target, file);
            if (!again || !Dateiexistenz::FileExists(root, copy))
                stands = root.files.copy(FileDirPath::join(root.LMp3Files.Path, file), copy) && stands;
        }
    }
    root.LMp3Files.Path = formerPath;
    root.LMp3Files.Pattern = formerPattern;

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
