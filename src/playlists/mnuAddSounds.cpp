#include "playlists/mnuAddSounds.h"

#include "app/AudioTypes.h"
#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/DisabledButtons.h"
#include "app/IniFiles.h"
#include "app/PlaylistFile.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "playlists/AddPlayEntrys.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/SavePlayEntrys.h"
#include "transfer/FolderDialogs.h"

#include <QSet>

#include <algorithm>
#include <set>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The folder that sound files were taken from last; that of the database wins.
void takeStartFolder(Root& root)
{
    for (const QString& folder : {readSetting(root, u"Soundfiles"_s).text(),
                                  IniFiles::ReadValue(root, databaseFile(root), u"Options"_s, u"Soundfiles"_s)}) {
        if (folder.isEmpty() || !root.files.isFolder(folder))
            continue;
        root.tBrowseFolder.Text = FileDirPath::withoutSeparator(folder);
        root.tBrowseFolder.Tag = u"1"_s;
    }
}

/// The panels that tell of a long command; they look as before when it goes.
class ProgressPanels
{
public:
    ProgressPanels(Root& root, const QString& folder)
        : m_root(root), m_name(root.tDateiname.Caption), m_visible(root.pDateiname.Visible)
    {
        root.tCopyStatus.Caption = u"Sounddateien werden hinzugefügt."_s;
        root.pCopyStatus.Visible = true;
        root.tDateiname.Caption = folder;
        root.pDateiname.Visible = true;
    }
    ~ProgressPanels()
    {
        m_root.pCopyStatus.Visible = false;
        m_root.tCopyStatus.Caption = QString();
        m_root.tDateiname.Caption = m_name;
        m_root.pDateiname.Visible = m_visible;
    }
    ProgressPanels(const ProgressPanels&) = delete;
    ProgressPanels& operator=(const ProgressPanels&) = delete;

private:
    Root& m_root;
    QString m_name;
    bool m_visible;
};

void addAbsent(Root& root, const TrackList::Hold& hold, const QStringList& paths)
{
    qsizetype added = 0;
    // Required: the flag is the count of rows less one, so behind a single row the file is written at once.
    bool taken = true;
    while (added < paths.size() && root.LListView2.count() < 2 && hold.valid() && taken) {
        const int rows = root.LListView2.count();
        AddPlayEntrys(root, paths[added++], rows - 1);
        taken = root.LListView2.count() > rows || root.trackList.path().isEmpty();
    }
    if (hold.valid() && taken)
        AddPlayEntrys(root, paths.mid(added), true);
}

/// How many files of the folder stand in the list already.
qsizetype addFolder(Root& root, Command& command, const TrackList::Hold& hold)
{
    root.tBrowseFolder.Text = QString();
    root.tBrowseFolder.Tag = u"0"_s;
    if (!command.showModal(*root.ordner))
        return 0;
    const QString folder = root.tBrowseFolder.Text;
    if (root.tBrowseFolder.Tag != u"1"_s || folder.isEmpty() || !hold.valid())
        return 0;

    IniFiles::WriteValue(root, databaseFile(root), u"Options"_s, u"Soundfiles"_s, folder);
    const ReadText read = readPlaylist(root, root.trackList.path());
    // Of a list that cannot be read nobody knows what it holds.
    if (read.outcome == ReadOutcome::Failed)
        return 0;
    const QString& text = read.text;
    root.LMp3Files.Path = folder;
    root.LMp3Files.Pattern = AudioTypes::Pattern.toString();
    const QStringList names = root.files.list(root.LMp3Files.Path, root.LMp3Files.Pattern);
    QStringList absent;
    if (!names.isEmpty()) {
        command.wait();
        const ProgressPanels panels(root, folder);
        const QString start = FileDirPath::join(folder, {});
        absent = absentNames(text.chopped(std::min<qsizetype>(2, text.size())), start, names);
        QStringList paths;
        paths.reserve(absent.size());
        for (const QString& name : absent)
            paths.append(start + name);
        addAbsent(root, hold, paths);
    }
    command.endWait();
    if (hold.valid())
        setTrackCount(root, rowInSight(root));
    return names.size() - absent.size();
}

void addFile(Root& root, Command& command, const TrackList::Hold& hold)
{
    const std::optional<ChosenFile> chosen = command.openFile({.title = u" Sounddatei hinzufügen"_s,
                                                               .folder = root.tBrowseFolder.Text,
                                                               .fileName = {},
                                                               .filter = AudioTypes::Filter.toString(),
                                                               .defaultExtension = AudioTypes::Extension.toString()});
    if (!chosen || chosen->fileName.isEmpty() || !hold.valid())
        return;
    AddPlayEntrys(root, QStringList{FileDirPath::join(chosen->folder, chosen->fileName)});
}

} // namespace

void mnuAddSounds_Click(Root& root)
{
    Command command(root);
    if (wholeCount(root) == 0)
        return command.tell({.text =
                                 u"Bevor Sie Dateien einfügen können, müssen Sie eine Wiedergabeliste hinzufügen.    \n"
                                 u"Wählen Sie im Menü den Eintrag ''Neue Playliste'' oder ''Liste hinzufügen'' aus."_s,
                             .title = u" Sounddateien hinzufügen"_s,
                             .icon = MessageIcon::Critical});
    if (!openOwnTracks(root))
        return;
    const TrackList::Hold hold = root.trackList.hold();
    const bool folderMode = readSetting(root, u"FolderView"_s).isOrAbsent(1);
    takeStartFolder(root);
    root.LListView2.Enabled = false;
    root.LListView2.Visible = false;
    root.pStopPlayer.Click();
    if (!command.yield())
        return;

    qsizetype present = 0;
    if (folderMode)
        present = addFolder(root, command, hold);
    else
        addFile(root, command, hold);
    if (command.ended())
        return;

    // Required: the list is saved, whether something was added or not.
    if (hold.valid())
        SavePlayEntrys(root);
    root.LListView2.Visible = true;
    command.endWait();

    if (present > 0)
        command.tell(
            {.text = u"Es wurden %1 vorhandene Sounddateien nicht zur Playliste hinzugefügt.   "_s.arg(present),
             .title = u" Sounddateien hinzufügen"_s,
             .icon = MessageIcon::Information});
}

QStringList absentNames(const QString& text, const QString& start, const QStringList& names)
{
    const QString lowerText = text.toLower();
    const QString lowerStart = start.toLower();
    QSet<QString> wanted;
    std::set<qsizetype> lengths;
    QStringList lowerNames;
    lowerNames.reserve(names.size());
    for (const QString& name : names)
        lowerNames.append(name.toLower());

    // Wherever the start stands, one of the names may follow: each of their lengths is looked up once.
    QSet<QString> present;
    if (!start.isEmpty() && lowerText.contains(lowerStart)) {
        for (const QString& name : lowerNames) {
            wanted.insert(name);
            lengths.insert(name.size());
        }
        for (qsizetype at = lowerText.indexOf(lowerStart); at >= 0; at = lowerText.indexOf(lowerStart, at + 1)) {
            const QStringView rest = QStringView(lowerText).sliced(at + lowerStart.size());
            for (const qsizetype length : lengths) {
                if (length > rest.size())
                    break;
                const QString name = QString::fromRawData(rest.data(), length);
                if (const auto found = wanted.constFind(name); found != wanted.cend())
                    present.insert(*found);
            }
        }
    }
    QStringList absent;
    for (qsizetype i = 0; i < names.size(); ++i)
        if (!present.contains(lowerNames[i]))
            absent.append(names[i]);
    return absent;
}

} // namespace orvantine
