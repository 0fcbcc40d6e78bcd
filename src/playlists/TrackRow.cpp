#include "playlists/TrackRow.h"

#include "app/DataFolder.h"
#include "app/Quiet.h"
#include "app/TextLimits.h"
#include "metadata/TrackNames.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

ListItem itemOf(const TrackRow& row)
{
    constexpr int FirstId = 100;
    const QString icon = u"Icon_2"_s;
    ListItem item;
    item.Text = padded(row.number + FirstId, 3);
    item.Icon = icon;
    item.SmallIcon = icon;
    item.SubItems = {{.Text = padded(row.number, 2), .ReportIcon = icon},
                     {.Text = row.name},
                     {.Text = row.path, .ForeColor = row.missing ? Color::DarkRed : Color::ButtonText},
                     {.Text = FileDirPath::FileNameOf(row.path)}};
    return item;
}

void tellGrownList(Root& root)
{
    showQuietly(root, u"Nicht gespeichert: Die Playliste wurde inzwischen von einem anderen Programm geändert."_s);
}

QString fullPath(const QString& entry, const QString& playlistFolder)
{
    return FileDirPath::hasSeparator(entry) ? entry : playlistFolder + entry;
}

QString displayName(const Root& root, const QString& entry, const QString& path)
{
    QString known = storedTrackName(root, databaseFile(root), path);
    if (!known.isEmpty())
        return known;
    return FileDirPath::hasSeparator(entry) ? FileDirPath::titleOf(entry) : entry;
}

} // namespace orvantine
