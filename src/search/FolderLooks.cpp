#include "search/FolderLooks.h"

#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

namespace orvantine {

bool FolderLooks::exists(const QString& path)
{
    const QString folder = FileDirPath::FolderOf(path);
    const QString name = FileDirPath::FileNameOf(path);
    if (folder.isEmpty() || name.isEmpty())
        return Dateiexistenz::FileExists(m_root, path);
    auto known = m_folders.find(folder);
    if (known == m_folders.end())
        known = m_folders.emplace(folder, m_root.files.namesIn(folder)).first;
    return known->second(name);
}

} // namespace orvantine
