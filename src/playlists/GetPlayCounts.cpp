#include "playlists/GetPlayCounts.h"

#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "playlists/PlaylistText.h"

namespace orvantine {

int GetPlayCounts(Root& root, const QString& path)
{
    if (!Dateiexistenz::FileExists(root, path))
        return 0;
    const int count = countEntries(readPlaylist(root, path).text);
    Command command(root);
    return command.yield() ? count : 0;
}

} // namespace orvantine
