#include "app/DataFolder.h"

#include "app/Dateiexistenz.h"
#include "app/Others.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString ownFile(const Root& root, const QString& extension)
{
    return root.tDatenbank.Text.value() + root.services.start.stem + extension;
}

} // namespace

QString programFile(const Root& root, const QString& name)
{
    return FileDirPath::join(root.services.folders.program, name);
}

QString userFolder(const Root& root)
{
    return FileDirPath::join(SpecialFolder(root, Csidl::ApplicationData), u"Orvanten Manager");
}

QString databaseFile(const Root& root)
{
    return ownFile(root, u".dat"_s);
}

QString backupFile(const Root& root)
{
    return ownFile(root, u".bak"_s);
}

QString namedDatabaseFile(const Root& root)
{
    return root.tDatenbank.Text.value() + u"Orvantine.dat"_s;
}

QString namedBackupFile(const Root& root)
{
    return root.tDatenbank.Text.value() + u"Orvantine.bak"_s;
}

QString namedTemporaryFile(const Root& root)
{
    return root.tDatenbank.Text.value() + u"Orvantine.tmp"_s;
}

QString indexFile(const Root& root)
{
    return ownFile(root, u".idx"_s);
}

bool backUp(Root& root, const QString& file, const QString& backup)
{
    root.files.clearAttributes(backup);
    return root.files.copy(file, backup) && root.files.clearAttributes(backup);
}

bool backUpDatabase(Root& root)
{
    const QString database = databaseFile(root);
    if (Dateiexistenz::IsMissing(root, database))
        return true;
    const bool kept = backUp(root, database, backupFile(root));
    if (!kept)
        root.files.failWhole();
    return kept;
}

QString unnamedPlaylist(const Root& root)
{
    return ownFile(root, u".tmp"_s);
}

bool isUnnamed(const QString& path)
{
    return path.endsWith(u"tmp"_s);
}

QStringList dataFolderNames()
{
    return {u"Burning"_s, u"Playlisten"_s, u"Resource"_s};
}

QString dataFolder(const Root& root, const QString& name)
{
    return root.tDatenbank.Text.value() + name;
}

QString playlistFolder(const Root& root)
{
    return dataFolder(root, u"Playlisten"_s);
}

std::optional<QString> playlistFile(const Root& root, const QString& name)
{
    if (FileDirPath::hasSeparator(name) || name.contains(QChar(u'\0')))
        return {};
    return FileDirPath::join(playlistFolder(root), name + u".m3u"_s);
}

QString resourceFile(const Root& root, const QString& fileName)
{
    return FileDirPath::join(dataFolder(root, u"Resource"_s), fileName);
}

void ensureDataFolder(Root& root, const QString& name)
{
    const QString folder = dataFolder(root, name);
    if (!Dateiexistenz::FolderExists(root, folder))
        root.files.makeFolder(folder);
}

void ensurePlaylistFolder(Root& root)
{
    ensureDataFolder(root, u"Playlisten"_s);
}

} // namespace orvantine
