#include "shell/HandedFiles.h"

#include "app/AudioTypes.h"
#include "app/Root.h"

namespace orvantine {

bool takesFiles(const Root& root)
{
    return root.loaded && !root.services.events.ended() && root.commands.idle();
}

void takeHandedFiles(Root& root, const QStringList& paths)
{
    if (!takesFiles(root))
        return;
    QStringList lists;
    QStringList tracks;
    for (const QString& path : paths)
        (AudioTypes::isDropped(path) && !root.files.isFolder(path) ? tracks : lists).append(path);
    if (!tracks.isEmpty())
        root.LListView2.Drop(tracks);
    if (!lists.isEmpty() && !root.services.events.ended())
        root.LListView1.Drop(lists);
}

} // namespace orvantine
