#include "app/FreeSpace.h"

#include "app/Root.h"

namespace orvantine::FreeSpace {

using namespace Qt::StringLiterals;

QString VolumeType(const Root& root, const QString& volume)
{
    return root.services.volumes.fileSystem(volume).toUpper();
}

QString FreeBytes(const Root& root, const QString& volume)
{
    // Required: nothing on the stick's file system; the callers have values of their own for that.
    if (VolumeType(root, volume) == u"FAT32"_s)
        return {};
    const std::optional<quint64> bytes = root.services.volumes.freeBytes(volume);
    return bytes ? QString::number(*bytes) : QString();
}

QString TotalBytes(const Root& root, const QString& volume)
{
    const std::optional<quint64> bytes = root.services.volumes.totalBytes(volume);
    return bytes ? QString::number(*bytes) : QString();
}

} // namespace orvantine::FreeSpace
