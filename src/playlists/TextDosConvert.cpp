#include "playlists/TextDosConvert.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayCounts.h"
#include "playlists/PlaylistText.h"
#include "playlists/TrackRow.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Entries as they go to the disk: those that lie beside the playlist by their name alone, unless that reads as a
/// comment.
QString ownEntries(const Root& root, const QString& path, const QString& text)
{
    const auto isNeighbour = root.files.namesIn(FileDirPath::FolderOf(path));
    return normalisedEntries(text, [&](const QString& line) {
        const QString name = FileDirPath::FileNameOf(line);
        return isNeighbour(name) && !name.startsWith(u'#') ? name : line;
    });
}

/// The entries, unless the text has lines that are none of them.
std::optional<QString> allOrNothing(const QString& entries, const QString& text)
{
    return entryLines(entries) == entryLines(text) ? std::optional(entries) : std::nullopt;
}

/// The text with its last line closed. One that holds line feeds of its own is several lines, and stays unclosed.
QString closed(const QString& text)
{
    const qsizetype start = text.lastIndexOf(u'\r') + 1;
    const bool lineFeedFirst = start > 0 && text.mid(start, 1) == u"\n"_s;
    const QString tail = text.mid(lineFeedFirst ? start + 1 : start);
    return tail.isEmpty() || tail.contains(u'\n') ? text : text + u"\r\n"_s;
}

} // namespace

bool TextDosConvert(Root& root, const QString& path)
{
    const bool stands = Dateiexistenz::FileExists(root, path);
    if (stands)
        (void)convertPlaylist(root, path);
    return stands;
}

ConvertedList convertPlaylist(Root& root, const QString& path)
{
    constexpr int ShortestList = 10;

    if (!Dateiexistenz::FileExists(root, path))
        return {.lines = {}, .entries = QString()};
    const ReadText read = readPlaylist(root, path);
    if (!read.done())
        return {};
    const QString out = ownEntries(root, path, read.text);
    if (out.size() < ShortestList)
        return {.lines = {}, .entries = allOrNothing(out, read.text)};

    {
        const PartChange alone(root.files);
        writePlaylist(root, path, out + u"\r\n"_s);
    }
    Command command(root);
    if (!command.yield())
        return {};

    const ReadText again = readPlaylist(root, path);
    if (!again.done())
        return {};
    const QStringView kept = QStringView(again.text).chopped(std::min<qsizetype>(2, again.text.size()));
    const QString lines = linesForField(kept, GetPlayCounts(root, path));
    root.trackList.setLines(lines, path);
    if (!command.yield())
        return {};
    // A file that could not be rewritten still holds what is not an entry.
    return {.lines = lines, .entries = kept == out ? std::optional(out) : std::nullopt};
}

std::optional<QString> entriesOfFile(Root& root, const QString& path)
{
    const ReadText read = readPlaylist(root, path);
    if (read.outcome == ReadOutcome::Failed)
        return {};
    const QString text = closed(read.text);
    return allOrNothing(ownEntries(root, path, text), text);
}

bool copyToOtherFolder(Root& root, const QString& from, const QString& to)
{
    const QStringList entries = entriesOfFile(root, from).value_or(QString()).split(u"\r\n"_s, Qt::SkipEmptyParts);
    const QString folder = FileDirPath::FolderOf(from);
    // Lines of other kinds of lists have no separator either, and stay.
    const auto liesBeside = [&root, &folder](const QString& entry) {
        return !FileDirPath::hasSeparator(entry) &&
               (AudioTypes::isDropped(entry) || Dateiexistenz::FileExists(root, fullPath(entry, folder)));
    };
    if (from.endsWith(u".nml"_s, Qt::CaseInsensitive) || std::none_of(entries.begin(), entries.end(), liesBeside))
        return copyPlaylist(root, from, to);
    QString text;
    for (const QString& entry : entries)
        text += (liesBeside(entry) ? fullPath(entry, folder) : entry) + u"\r\n"_s;
    return writePlaylist(root, to, text + u"\r\n"_s);
}

} // namespace orvantine
