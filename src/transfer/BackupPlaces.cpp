#include "transfer/BackupPlaces.h"

#include "app/DataFolder.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A link on the way would lead out of the folder.
bool isReachedByLink(const Root& root, const QString& folder, const QString& name)
{
    for (qsizetype cut = name.indexOf(u'/'); cut >= 0; cut = name.indexOf(u'/', cut + 1))
        if (root.files.isLink(FileDirPath::join(folder, name.left(cut))))
            return true;
    return root.files.isLink(FileDirPath::join(folder, name));
}

std::optional<RestoreObstacle> linkInTheWay(const Root& root, const RestorePlan& plan)
{
    for (const RestoredFile& file : plan.files)
        if (isReachedByLink(root, restoreFolder(root, file.picture), file.name))
            return RestoreObstacle{RestoreObstacle::Kind::Linked, file.name};
    for (const QString& folder : plan.folders)
        if (isReachedByLink(root, restoreFolder(root, false), folder))
            return RestoreObstacle{RestoreObstacle::Kind::Linked, folder};
    return {};
}

} // namespace

QString restoreFolder(const Root& root, bool picture)
{
    return dataFolder(root, picture ? u"Resource"_s : u"Playlisten"_s);
}

std::variant<RestorePlan, RestoreObstacle> planRestoreHere(const Root& root, const std::vector<ArchiveEntry>& entries,
                                                           qint64 archiveSize, qint64 room)
{
    auto planned = planRestore(entries, archiveSize, room);
    if (const auto* const plan = std::get_if<RestorePlan>(&planned))
        if (const std::optional<RestoreObstacle> link = linkInTheWay(root, *plan))
            return *link;
    return planned;
}

} // namespace orvantine
