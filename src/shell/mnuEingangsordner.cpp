#include "shell/mnuEingangsordner.h"

#include "app/Root.h"
#include "metadata/SelectedTrack.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void mnuEingangsordner_Click(Root& root)
{
    const QString folder = FileDirPath::FolderOf(selectedTrackPath(root));
    if (folder.isEmpty())
        return;
    root.services.launcher.start({.kind = LaunchKind::FileManager,
                                  .command = u"Explorer.exe "_s + folder,
                                  .target = FileDirPath::withoutSeparator(folder),
                                  .arguments = {}});
}

} // namespace orvantine
