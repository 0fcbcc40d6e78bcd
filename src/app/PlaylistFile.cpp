#include "app/PlaylistFile.h"

#include "app/DataFolder.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

#include <algorithm>

namespace orvantine {

bool isOwnFile(const Root& root, const QString& path)
{
    const QStringList own{databaseFile(root), backupFile(root), namedDatabaseFile(root), namedBackupFile(root)};
    return std::any_of(own.begin(), own.end(),
                       [&path](const QString& file) { return FileDirPath::isSameFile(path, file); });
}

ReadText readPlaylist(Root& root, const QString& path)
{
    return isOwnFile(root, path) ? ReadText() : root.files.readPlaylist(path);
}

bool writePlaylist(Root& root, const QString& path, const QString& text)
{
    return !isOwnFile(root, path) && root.files.writeText(path, text);
}

bool copyPlaylist(Root& root, const QString& from, const QString& to)
{
    return !isOwnFile(root, to) && root.files.copyPlaylist(from, to);
}

bool mayHoldPlaylist(const Root& root, const QString& path)
{
    return !isOwnFile(root, path) && root.files.mayHoldPlaylist(path);
}

} // namespace orvantine
