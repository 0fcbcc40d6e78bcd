#pragma once

#include "platform/Choosers.h"

#include <QByteArray>
#include <QStringList>

namespace orvantine {

/// Where a folder chooser begins, and the places beside it.
struct FolderPlaces
{
    QString start;
    QStringList beside;
};

/// What stands in for the two roots of another desktop. Computer: the top of the file system, with the home folder and
/// the media that are mounted. Network: the folder of the user's network places, with the mounted network drives.
/// `mounts` is the host's table of mounts.
[[nodiscard]] FolderPlaces folderPlaces(FolderRoot root, const QByteArray& mounts);

/// The host's table of mounts at present.
[[nodiscard]] QByteArray mountTable();

} // namespace orvantine
