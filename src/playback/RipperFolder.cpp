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

/// Stands in LRipper.Tag.
struct Look
{
    int second = 0;
    qsizetype seen = 0;
    /// How many files the user knows of.
    qsizetype told = 0;
};

int second(const Root& root)
{
    return static_cast<int>(root.services.events.secondsOfDay());
}

qsizetype filesNow(const Root& root)
{
    return root.files.list(root.LRipper.Path, root.LRipper.Pattern).size();
}

Look lastLook(const Root& root)
{
    const QStringList parts = root.LRipper.Tag.split(u' ');
    return {.second = parts.value(0).toInt(), .seen = parts.value(1).toLongLong(), .told = parts.value(2).toLongLong()};
}

void note(Root& root, const Look& look)
{
    root.LRipper.Tag = u"%1 %2 %3"_s.arg(look.second).arg(look.seen).arg(look.told);
}

} // namespace

void beginRipperWatch(Root& root, const QString& folder)
{
    root.LRipper.Path = FileDirPath::withoutSeparator(folder);
    root.LRipper.Pattern = AudioTypes::Pattern.toString();
    const qsizetype files = filesNow(root);
    note(root, {.second = second(root), .seen = files, .told = files});
}

void watchRipperFolder(Root& root)
{
    if (root.LRipper.Path.isEmpty())
        return;
    Look look = lastLook(root);
    // Also behind midnight.
    if (std::abs(second(root) - look.second) < SecondsBetween)
        return;
    look.second = second(root);
    const qsizetype files = filesNow(root);
    if (files == look.seen && files > look.told) {
        const qsizetype added = files - look.told;
        showQuietly(root, u"Vom CD-Ripper: %1 in „%2“. Hinzufügen mit „Sounddateien ...“."_s.arg(
                              added == 1 ? u"eine neue Sounddatei"_s : u"%1 neue Sounddateien"_s.arg(added),
                              FileDirPath::FileNameOf(root.LRipper.Path)));
        look.told = files;
    }
    look.seen = files;
    look.told = std::min(look.told, files);
    note(root, look);
}

} // namespace orvantine
