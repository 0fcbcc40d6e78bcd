#include "platform/PlaylistWalk.h"

#include "platform/FileDirPath.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace orvantine {

namespace {

QStringList closedLines(QString text)
{
    const bool hostText = !text.contains(u'\r') && text.contains(u'\n');
    if (hostText)
        return text.split(u'\n');
    QStringList lines = text.remove(u'\n').split(u'\r');
    lines.removeLast();
    return lines;
}

} // namespace

bool isPlaylistPath(const QString& path)
{
    const QString name = FileDirPath::FileNameOf(path);
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot < 0)
        return false;
    static const QStringList endings{u"m3u"_s, u"m3u8"_s, u"pls"_s, u"txt"_s, u"tmp"_s};
    return endings.contains(name.mid(dot + 1), Qt::CaseInsensitive);
}

QList<PlaylistEntry> playlistEntries(const QString& playlistPath, const QString& text)
{
    const QString folder = FileDirPath::FolderOf(playlistPath);
    QList<PlaylistEntry> entries;
    for (const QString& line : closedLines(text)) {
        if (line.isEmpty() || line.front() == u'#')
            continue;
        const QString inFolder = folder + line;
        entries.append({.sourceURL = FileDirPath::hasSeparator(line) ? line : inFolder,
                        .path = FileDirPath::isAbsolute(line) ? line : inFolder});
    }
    return entries;
}

QList<PlaylistEntry> entriesToPlay(Files& files, const QString& url, const QString& playlist)
{
    if (!isPlaylistPath(url) && url != playlist)
        return {{.sourceURL = url, .path = url}};
    return playlistEntries(url, files.readPlaylist(url).text);
}

bool isPlayable(const Files& files, const PlaylistEntry& entry)
{
    return !isPlaylistPath(entry.path) && files.size(entry.path).has_value();
}

} // namespace orvantine
