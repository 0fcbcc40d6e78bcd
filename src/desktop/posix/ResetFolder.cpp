#include "desktop/posix/ResetFolder.h"

#include "desktop/posix/PosixFiles.h"
#include "desktop/posix/XdgFolders.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString resetFolder(const XdgFolders& folders)
{
    return folders.stateHome.isEmpty() ? QString() : folders.stateHome + u"/Orvanten Manager/reset"_s;
}

void settleReset(const XdgFolders& folders)
{
    if (const QString folder = resetFolder(folders); !folder.isEmpty())
        (void)PosixFiles({.recoveryFolder = folder});
}

} // namespace orvantine
