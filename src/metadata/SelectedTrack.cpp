#include "metadata/SelectedTrack.h"

#include "app/Columns.h"
#include "app/Root.h"

namespace orvantine {

QString trackPath(const Root& root, int row)
{
    return root.LListView2.subItem(row, TrackItem::Path);
}

QString selectedTrackPath(const Root& root)
{
    return trackPath(root, root.LListView2.selectedRow());
}

} // namespace orvantine
