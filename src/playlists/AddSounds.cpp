#include "playlists/AddSounds.h"

#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "operations/TrackListOperations.h"
#include "playlists/AddTracks.h"
#include "playlists/ReadPlaylists.h"
#include "playlists/SavePlaylists.h"
#include "shell/FeatureTips.h"
#include "shell/MainWindow.h"
#include "transfer/FolderDialogs.h"

#include <QScopedValueRollback>
#include <QSet>

#include <algorithm>
#include <set>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString selectedPlaylist(const Root& root)
{
    return root.LListView1.subItem(root.LListView1.selectedRow(), 2);
}

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

/// The tracks of the playlist are the ones in sight. While a chooser is up the sequence may open another list.
bool stillShown(const Root& root, const QString& playlist)
{
    return selectedPlaylist(root) == playlist && mayWriteSelected(root);
}

void addAbsent(Root& root, const QStringList& paths)
{
    const int read = root.currentRead;
    qsizetype added = 0;
    // Required: the flag is the count of rows less one, so behind a single row the file is written at once.
    while (added < paths.size() && root.LListView2.count() < 2 && root.currentRead == read)
        AddPlayEntrys(root, paths[added++], root.LListView2.count() - 1);
    if (root.currentRead == read)
        AddPlayEntrys(root, paths.mid(added), true);
}

/// How many files of the folder stand in the list already.
qsizetype addFolder(Root& root, const QString& playlist)
{
    root.tBrowseFolder.Text = QString();
    root.tBrowseFolder.Tag = u"0"_s;
    root.services.forms.showModal(*root.ordner);
    const QString folder = root.tBrowseFolder.Text;
    if (root.tBrowseFolder.Tag != u"1"_s || folder.isEmpty() || !stillShown(root, playlist))
        return 0;

    IniFiles::WriteValue(root, databaseFile(root), u"Options"_s, u"Soundfiles"_s, folder);
    const QString text = root.files.readPlaylist(playlist).text;
    root.LMp3Files.Path = folder;
    root.LMp3Files.Pattern = u"*.mp3;*.wma;*.wav"_s;
    const QStringList names = root.files.list(root.LMp3Files.Path, root.LMp3Files.Pattern);
    QStringList absent;
    if (!names.isEmpty()) {
        root.Pointer = MousePointer::Hourglass;
        root.LListView2.Enabled = false;
        const ProgressPanels panels(root, folder);
        DisabledButtons(root, 1);
        const QString start = FileDirPath::join(folder, {});
        absent = absentNames(text.chopped(std::min<qsizetype>(2, text.size())), start, names);
        QStringList paths;
        paths.reserve(absent.size());
        for (const QString& name : absent)
            paths.append(start + name);
        addAbsent(root, paths);
    }
    root.LListView2.Enabled = true;
    root.Pointer = MousePointer::Default;
    DisabledButtons(root, 0);
    if (mayWriteSelected(root))
        root.LListView1.setSubItem(root.LListView1.selectedRow(), 3, QString::number(root.LListView2.count()));
    return names.size() - absent.size();
}

void addFile(Root& root, const QString& playlist)
{
    const std::optional<ChosenFile> chosen =
        root.services.choosers.openFile({.title = u" Sounddatei hinzufügen"_s,
                                         .folder = root.tBrowseFolder.Text,
                                         .fileName = {},
                                         .filter = u"Sounddateien|*.mp3; *.wma; *.wav|Alle Dateitypen|*.*"_s,
                                         .defaultExtension = u"mp3"_s});
    if (!chosen || chosen->fileName.isEmpty() || !stillShown(root, playlist))
        return;
    AddPlayEntrys(root, QStringList{FileDirPath::join(chosen->folder, chosen->fileName)});
}

} // namespace

void mnuAddSounds_Click(Root& root)
{
    if (!mayChangeTracks(root))
        return;
    const QScopedValueRollback running(root.changingTracks, true);

    ShowFeatureTip(root, 112);
    if (root.LListView1.count() == 0) {
        root.services.messages.show(
            u"Bevor Sie Dateien einfügen können, müssen Sie eine Wiedergabeliste hinzufügen.    \n"
            u"Wählen Sie im Menü den Eintrag ''Neue Playliste'' oder ''Liste hinzufügen'' aus."_s,
            u" Sounddateien hinzufügen"_s, MessageIcon::Critical, MessageButtons::Ok);
        return;
    }
    if (!showSelectedTracks(root))
        return;
    const bool folderMode = readSetting(root, u"FolderView"_s).isOrAbsent(1);
    takeStartFolder(root);
    root.LListView2.Enabled = false;
    root.LListView2.Visible = false;
    root.pStopPlayer.Click();
    root.services.events.yield();

    const QString playlist = selectedPlaylist(root);
    qsizetype present = 0;
    if (folderMode)
        present = addFolder(root, playlist);
    else
        addFile(root, playlist);

    // Required: the list is saved, whether something was added or not.
    SavePlayEntrys(root);
    root.LListView2.Enabled = true;
    root.LListView2.Visible = true;
    DisabledButtons(root, 0);

    if (present > 0)
        root.services.messages.show(
            u"Es wurden %1 vorhandene Sounddateien nicht zur Playliste hinzugefügt.   "_s.arg(present),
            u" Sounddateien hinzufügen"_s, MessageIcon::Information, MessageButtons::Ok);
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
