#include "operations/TrackPaths.h"

#include "app/Columns.h"
#include "platform/FileDirPath.h"
#include "platform/ListView.h"

namespace orvantine {

QSet<QString> pathsOf(const ListView& tracks)
{
    QSet<QString> paths;
    paths.reserve(tracks.count());
    for (int row = 1; row <= tracks.count(); ++row)
        paths.insert(FileDirPath::compared(tracks.subItem(row, TrackItem::Path)));
    return paths;
}

} // namespace orvantine
