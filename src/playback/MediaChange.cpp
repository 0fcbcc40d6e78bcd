#include "playback/MediaChange.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Root.h"
#include "metadata/TrackNames.h"
#include "platform/FileDirPath.h"
#include "playback/PlaybackState.h"

#include <QLocale>

namespace orvantine {

using namespace Qt::StringLiterals;

void MediaChange(Root& root)
{
    constexpr qsizetype UsefulTag = 10; // two empty items still give the three characters of " - "
    constexpr Twips Margin = 1150;

    const MediaPlayer& player = root.services.mediaplayer;
    const QString url = player.currentSourceURL();
    const QString stored = storedTrackName(root, namedDatabaseFile(root), url);
    const QString name = FileDirPath::titleOf(url);
    if (name != root.tDateiname.Caption.value())
        root.pDateiname.Tag =
            QString::number(root.pDateiname.Tag.toDouble() + 0.5, 'f', QLocale::FloatingPointShortest);

    const QString tag = player.currentItemInfo(u"Artist"_s) + u" - "_s + player.currentItemInfo(u"Title"_s);
    if (tag.size() >= UsefulTag)
        root.tDateiname.Caption = tag;
    else
        root.tDateiname.Caption = stored.isEmpty() ? name : stored;

    root.pCopyStatus.Visible = false;
    root.pDateiname.Visible = true;
    showPlayback(root);
    if (!Command(root).yield())
        return;
    root.pDateiname.Width = root.Width.value() - Margin;
    root.pDateiname.Left = (root.Width.value() - root.pDateiname.Width.value()) / 2;
}

} // namespace orvantine
