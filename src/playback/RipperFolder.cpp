#include "playback/RipperFolder.h"

#include "app/AudioTypes.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

#include <algorithm>
#include <cstdlib>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int SecondsBetween = 5;

/// Stands in LRipper.Tag, with the folder: LRipper shows others too.
struct Look
{
    int second = 0;
    qsizetype seen = 0;
    /// How many files the user knows of.
    qsizetype told = 0;
    QString folder;
};

int second(const Root& root)
{
    return static_cast<int>(root.services.events.secondsOfDay());
}

qsizetype filesNow(const Root& root, const QString& folder)
{
    return root.files.list(folder, AudioTypes::Pattern.toString()).size();
}

Look lastLook(const Root& root)
{
    const QString& tag = root.LRipper.Tag;
    const auto part = [&tag](int index) { return tag.section(u' ', index, index); };
    return {.second = part(0).toInt(),
            .seen = part(1).toLongLong(),
            .told = part(2).toLongLong(),
            .folder = tag.section(u' ', 3)};
}

void note(Root& root, const Look& look)
{
    root.LRipper.Tag = u"%1 %2 %3 %4"_s.arg(look.second).arg(look.seen).arg(look.told).arg(look.folder);
}

} // namespace

void beginRipperWatch(Root& root, const QString& folder)
{
    root.LRipper.Path = FileDirPath::withoutSeparator(folder);
    root.LRipper.Pattern = AudioTypes::Pattern.toString();
    const qsizetype files = filesNow(root, root.LRipper.Path);
    note(root, {.second = second(root), .seen = files, .told = files, .folder = root.LRipper.Path});
}

void watchRipperFolder(Root& root)
{
    Look look = lastLook(root);
    if (look.folder.isEmpty())
        return;
    // Also behind midnight.
    if (std::abs(second(root) - look.second) < SecondsBetween)
        return;
    look.second = second(root);
    const qsizetype files = filesNow(root, look.folder);
    if (files == look.seen && files > look.told) {
        const qsizetype added = files - look.told;
        showQuietly(root, u"Vom CD-Ripper: %1 in „%2“. Hinzufügen mit „Sounddateien ...“."_s.arg(
                              added == 1 ? u"eine neue Sounddatei"_s : u"%1 neue Sounddateien"_s.arg(added),
                              FileDirPath::FileNameOf(look.folder)));
        look.told = files;
    }
    look.seen = files;
    look.told = std::min(look.told, files);
    note(root, look);
}

} // namespace orvantine
