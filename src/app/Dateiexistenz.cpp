#include "app/Dateiexistenz.h"

#include "app/Root.h"

namespace orvantine::Dateiexistenz {

bool FileExists(const Root& root, const QString& path)
{
    return root.files.exists(path);
}

bool IsMissing(const Root& root, const QString& path)
{
    return !FileExists(root, path) && root.files.readBytes(path).outcome == ReadOutcome::Missing;
}

bool FolderExists(const Root& root, const QString& path)
{
    return root.files.folderExists(path);
}

} // namespace orvantine::Dateiexistenz
