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
    for (const QString& path : std::as_const(used.m_paths))
        used.m_compared += FileDirPath::compared(path);
    for (int row = 1; row <= root.LListView1.count(); ++row)
        used.m_compared += FileDirPath::compared(playlistPath(root, row));
    return used;
}

bool UsedLists::contains(const QString& path) const
{
    return m_compared.contains(FileDirPath::compared(path));
}

} // namespace orvantine
