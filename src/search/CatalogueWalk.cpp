#include "search/CatalogueWalk.h"

#include "app/Command.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine {

WalkedFrom::WalkedFrom(Root& root) : m_root(root)
{
    if (const int row = root.LListView1.selectedRow(); row > 0)
        root.indexToKeep = numberOf(root, row);
    root.errorsToKeep = root.mnuErrorDisplay.Checked;
}

WalkedFrom::~WalkedFrom()
{
    m_root.indexToKeep.reset();
    m_root.errorsToKeep.reset();
}

bool openWalkedRow(Root& root, Command& command, int row, const std::function<void()>& behindReading)
{
    constexpr int Attempts = 2;
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        const QString path = openRow(root, row);
        if (!command.ended())
            behindReading();
        if (!command.yield())
            return false;
        if (root.trackList.isOf(path))
            break;
    }
    return true;
}

bool showsTracksOf(const Root& root, int row)
{
    return root.trackList.isOf(playlistPath(root, row)) && !root.trackList.showsListBefore();
}

} // namespace orvantine
