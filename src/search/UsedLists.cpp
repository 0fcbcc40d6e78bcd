#include "search/UsedLists.h"

#include "app/DataFolder.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"

namespace orvantine {

std::optional<UsedLists> UsedLists::read(const Root& root)
{
    ProfileStore& profiles = root.services.profiles;
    const int failedReads = profiles.failedReads();
    UsedLists used;
    for (int number = 1; number <= MostPlaylists; ++number)
        used.m_paths += indexValue(root, databaseFile(root), number, EntryKey::Path);
    if (root.databaseDoubted || profiles.failedReads() != failedReads)
        return {};
    QStringList paths = used.m_paths;
    for (int row = 1; row <= root.LListView1.count(); ++row)
        paths += playlistPath(root, row);
    for (const QString& path : std::as_const(paths)) {
        used.m_compared += FileDirPath::compared(path);
        if (const std::optional<FileStamp> stamp = root.files.stamp(path))
            used.m_files += {stamp->device, stamp->inode};
    }
    return used;
}

bool UsedLists::contains(const Root& root, const QString& path) const
{
    if (m_compared.contains(FileDirPath::compared(path)))
        return true;
    const std::optional<FileStamp> stamp = root.files.stamp(path);
    return stamp && m_files.contains({stamp->device, stamp->inode});
}

} // namespace orvantine
