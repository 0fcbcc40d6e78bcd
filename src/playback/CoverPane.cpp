#include "playback/CoverPane.h"

#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"

namespace orvantine {

void showCoverPane(Root& root, bool on)
{
    root.pCoverBack.Visible = on;
    fitDescription(root);
}

void fitDescription(Root& root)
{
    constexpr Twips Margin = 855;
    const Twips cover = root.pCoverBack.Visible.value() ? root.pCoverBack.Width.value() : 0;
    root.LSoundCaption.Width = root.xpFrame1.Width.value() - (Margin + cover);
}

void showCover(Root& root)
{
    const QString cover = coverFile(root, root.tPlaylisteinträge.Caption);
    root.pCovers.Picture = QString();
    if (cover.isEmpty())
        return;
    root.pCovers.Picture = cover;
    // The command itself would look for the cover of the selected row, and have one chosen where that has none.
    showCoverPane(root, true);
    root.mnuCoverShow.Checked = true;
}

void showRowCover(Root& root, int row)
{
    const QString cover = coverFile(root, playlistName(root, row));
    root.pCovers.Picture = cover;
    if (root.pCoverBack.Visible.value() == cover.isEmpty())
        showCoverPane(root, !cover.isEmpty());
}

} // namespace orvantine
