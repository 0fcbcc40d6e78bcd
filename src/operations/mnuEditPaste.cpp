#include "operations/mnuEditPaste.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "operations/mnuEditCopy.h"
#include "platform/FileDirPath.h"
#include "playlists/AddPlayEntrys.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/PlaylistText.h"
#include "playlists/SavePlayEntrys.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int MostPasted = 20;

bool mayPaste(Command& command)
{
    return command.ask(
               {.text = u"Markieren Sie die Audiodateien im Explorer und klicken Sie mit der rechten Maustaste auf die "
                        u"Dateien und wählen Sie im Menü ''Senden an'' und den Eintrag ''Zwischenablage''.\n \n"
                        u"Möchten Sie die Audiodateien aus der Zwischenablage in diese Wiedergabeliste einfügen ? "_s,
                .title = u" Dateien aus der Zwischenablage"_s,
                .icon = MessageIcon::Exclamation,
                .buttons = MessageButtons::YesNo}) == Answer::Yes;
}

QStringList acceptedFiles(const Root& root, const QList<QStringView>& paths)
{
    QStringList files;
    bool accepted = false;
    for (const QStringView path : paths) {
        const QString file = path.toString();
        if (!Dateiexistenz::FileExists(root, file) || breaksLine(file))
            continue;
        // Required: case counts, and behind the first accepted file any other one that exists is added too.
        accepted = accepted || AudioTypes::isPasted(path);
        if (accepted)
            files += file;
    }
    return files;
}

QString clipboardText(const Root& root)
{
    const QStringList files = root.services.clipboard.files();
    return files.isEmpty() ? root.services.clipboard.text() : quotedForm(files);
}

} // namespace

void mnuEditPaste_Click(Root& root)
{
    const TrackList::Hold before = root.trackList.hold();
    Command command(root);
    if (!mayPaste(command) || !listIsActive(root) || !before.inSight())
        return;

    const QString text = clipboardText(root);
    const QStringList files = acceptedFiles(root, quotedPaths(text));
    if (files.isEmpty() || !openOwnTracks(root))
        return;
    const TrackList::Hold hold = root.trackList.hold();
    // The first file of an empty list is not one of a batch: a new playlist gets its file with it.
    AddPlayEntrys(root, files.front(), root.LListView2.count());
    if (command.ended() || !hold.valid())
        return;
    const QStringList others = files.mid(1);
    // A bare name lies in the playlist's folder, and nobody has looked for it there.
    AddPlayEntrys(root, others, std::all_of(others.begin(), others.end(), FileDirPath::hasSeparator));
    if (command.ended() || !hold.valid())
        return;
    SavePlayEntrys(root);
    // The read of a list without entries left the tracks out of sight.
    if (hold.inSight())
        root.LListView2.Visible = true;
}

QList<QStringView> quotedPaths(QStringView text)
{
    constexpr qsizetype Skipped = 3;
    QList<QStringView> paths;
    while (paths.size() < MostPasted) {
        if (text.startsWith(u'"'))
            text = text.sliced(1);
        const qsizetype end = text.indexOf(u'"');
        if (end < 0)
            break;
        paths += text.first(end);
        if (end + Skipped + 2 > text.size())
            break;
        text = text.sliced(end + Skipped);
    }
    return paths;
}

QString quotedForm(const QStringList& paths)
{
    QString text;
    for (const QString& path : paths)
        if (!path.contains(u'"'))
            text += (text.isEmpty() ? u"\""_s : u" \""_s) + path + u'"';
    return text;
}

} // namespace orvantine
