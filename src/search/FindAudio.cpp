#include "search/FindAudio.h"

#include "app/AudioTypes.h"
#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Help.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/NewPlayliste.h"
#include "platform/FileDirPath.h"
#include "playlists/AddPlayEntrys.h"
#include "playlists/GetPlayCounts.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/PlaylistText.h"
#include "playlists/SavePlayEntrys.h"
#include "playlists/TextDosConvert.h"
#include "playlists/TrackRow.h"
#include "search/IndexFiles.h"
#include "transfer/BrowseFolders2k.h"

#include <array>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct FoundFile
{
    QString folder;
    QString name;

    [[nodiscard]] QString path() const { return FileDirPath::join(folder, name); }
};

/// Names can hold a tab themselves: the file that stands there is meant.
FoundFile fileOf(const Root& root, const QString& line)
{
    const qsizetype first = line.indexOf(u'\t');
    for (qsizetype tab = first; tab >= 0 && line.count(u'\t') > 1; tab = line.indexOf(u'\t', tab + 1)) {
        FoundFile file{line.left(tab), line.mid(tab + 1)};
        if (Dateiexistenz::FileExists(root, file.path()))
            return file;
    }
    return {line.left(first), line.mid(first + 1)};
}

/// The form while it works. Cancel stops the work and leaves the form open.
class Working
{
public:
    Working(FindAudio& form, FindAudio::Work work) : m_form(form)
    {
        form.stopped = false;
        set(work);
    }
    ~Working() { set(FindAudio::Work::None); }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

private:
    void set(FindAudio::Work work)
    {
        m_form.work = work;
        const bool idle = work == FindAudio::Work::None;
        for (Control* control : {static_cast<Control*>(&m_form.TDrives), static_cast<Control*>(&m_form.bDurchsuchen),
                                 static_cast<Control*>(&m_form.LFindType), static_cast<Control*>(&m_form.bOnlyAudio),
                                 static_cast<Control*>(&m_form.Command1), static_cast<Control*>(&m_form.BReady)})
            control->Enabled = idle;
        m_form.LFileList.Enabled = work != FindAudio::Work::Add;
    }

    FindAudio& m_form;
};

void clearResults(FindAudio& form)
{
    for (ListBox* list : {&form.List1, &form.List2, &form.List3, &form.LFileList}) {
        list->Checked = QList<bool>();
        list->List = QStringList();
    }
    form.found = FindAudio::Heading;
    form.progress.Caption = QString();
}

bool arePlaylists(int type)
{
    return type == FindAudio::Playlists;
}

QString patternOf(const FindAudio& form)
{
    if (arePlaylists(form.LFindType.ListIndex))
        return u"*.m3u"_s;
    return form.bOnlyAudio.Value ? u"*.mp3"_s : AudioTypes::Pattern.toString();
}

/// All results start checked.
void addResults(FindAudio& form, const std::vector<WalkedFolder>& read)
{
    QStringList lines = form.LFileList.List;
    for (const WalkedFolder& folder : read) {
        for (const QString& name : folder.files)
            lines.append(folder.path + u'\t' + name);
        const std::array<ListBox*, 4> levels{nullptr, &form.List1, &form.List2, &form.List3};
        if (ListBox* const level = levels.at(static_cast<std::size_t>(folder.level)); level != nullptr)
            level->List = level->List.value() + QStringList{folder.path};
    }
    if (lines.size() == form.LFileList.List.value().size())
        return;
    QList<bool> marks = form.LFileList.Checked;
    marks.resize(lines.size(), true);
    form.LFileList.Checked = marks;
    form.LFileList.List = lines;
}

void tellResult(FindAudio& form, bool stopped)
{
    const qsizetype folders =
        form.List1.List.value().size() + form.List2.List.value().size() + form.List3.List.value().size() + 1;
    const qsizetype files = form.LFileList.List.value().size();
    const QString kind = arePlaylists(form.found) ? files == 1 ? u"Wiedergabeliste"_s : u"Wiedergabelisten"_s
                         : files == 1             ? u"Sounddatei"_s
                                                  : u"Sounddateien"_s;
    form.progress.Caption = u"%1%2 %3 in %4 gefunden."_s.arg(stopped ? u"Abgebrochen: "_s : QString())
                                .arg(files)
                                .arg(kind, folders == 1 ? u"einem Ordner"_s : u"%1 Ordnern"_s.arg(folders));
}

void Command1_Click(Root& root)
{
    constexpr int Levels = 3;
    constexpr double UntilMoreIsRead = 0.02;
    FindAudio& form = *root.findAudio;
    Command command(root, Changes::Both);
    const QString folder = FileDirPath::withoutSeparator(form.TDrives.Text);
    if (folder.isEmpty() || form.LFindType.ListIndex <= FindAudio::Heading)
        return command.tell({.text = u"Wählen Sie bitte einen Suchtypen aus der Auswahlliste. "_s,
                             .title = form.Caption.value() + u' ',
                             .icon = MessageIcon::Exclamation});
    clearResults(form);
    const Working working(form, FindAudio::Work::Scan);
    form.found = form.LFindType.ListIndex;
    form.LOrdner.Path = folder;
    form.LCheckFiles.Path = folder;
    form.LCheckFiles.Pattern = patternOf(form);
    form.progress.Caption = u"Die Ordner werden durchsucht ..."_s;
    const std::unique_ptr<FolderWalk> walk = root.services.walks.begin(folder, form.LCheckFiles.Pattern, Levels);
    while (!walk->done() && !form.stopped) {
        const std::vector<WalkedFolder> read = walk->take();
        addResults(form, read);
        if (read.empty() ? !command.pause(UntilMoreIsRead) : !command.yield())
            return;
    }
    tellResult(form, form.stopped);
}

/// A copy of the list in "Playlisten". Nothing where it would take the place of
/// another file.
std::optional<QString> localCopy(Root& root, const QString& path, const QString& title)
{
    const std::optional<QString> local = playlistFile(root, title);
    if (!local || !entriesOfFile(root, path) || Dateiexistenz::FileExists(root, *local))
        return {};
    ensurePlaylistFolder(root);
    return copyToOtherFolder(root, path, *local) ? local : std::nullopt;
}

/// Takes one list into the catalogue. False if the loop ends.
bool addPlaylist(Root& root, Command& command, const FoundFile& file, bool& added)
{
    if (!mayAddRow(root, command))
        return false;
    if (FileDirPath::isSameFile(FileDirPath::withoutSeparator(file.folder), playlistFolder(root)) ||
        breaksLine(file.path()) || isUsedByAnother(root, 0, file.path()))
        return true;
    const QString title = FileDirPath::titleOf(file.name);
    const std::optional<QString> local =
        root.mnuLokalePlayliste.Checked ? localCopy(root, file.path(), title) : std::nullopt;
    QString path = local.value_or(file.path());
    if (NewPlayliste(root, path, title)) {
        added = true;
        const int row = root.LListView1.count();
        setTrackCount(root, row, GetPlayCounts(root, path));
    } else if (local && !command.ended()) {
        root.files.remove(*local);
    }
    return !command.ended();
}

/// Asks for a file that the catalogue holds already. Nothing if the loop ends.
std::optional<bool> mayAddTrack(Root& root, Command& command, const FoundFile& file)
{
    const bool nameOnly = root.findAudio->LFindType.ListIndex == FindAudio::NamesOnly;
    const std::optional<Answer> answer = command.ask(
        {.text = u"Die Sounddatei ist bereits in einer Wiedergabeliste vorhanden. \nMöchten ''"_s +
                 (nameOnly ? file.name + u"'' trotzdem hinzufügen ?"_s : file.path() + u"'' hinzufügen ?"_s),
         .title = u" Vorhandene Sounddatei"_s,
         .icon = MessageIcon::Exclamation,
         .buttons = MessageButtons::YesNoCancel});
    if (!answer || answer == Answer::Cancel)
        return {};
    return answer == Answer::Yes;
}

QStringList checkedLines(const FindAudio& form)
{
    QStringList lines;
    const QStringList& all = form.LFileList.List.value();
    const QList<bool>& marks = form.LFileList.Checked.value();
    for (qsizetype i = 0; i < all.size(); ++i)
        if (marks.value(i, true))
            lines.append(all[i]);
    return lines;
}

/// The tracks in sight are those of the file, and all of them.
bool showsAllOf(const Root& root, const QString& path)
{
    return root.trackList.isOf(path) && root.trackList.content() == TrackList::Content::Own;
}

/// Brings the list back into sight that was open when the finder came up. False where it has gone, cannot be read
/// whole, or the program has ended.
bool openBoundList(Root& root, const Command& command)
{
    const FindAudio& form = *root.findAudio;
    if (form.listPath.isEmpty())
        return false;
    if (!root.trackList.isOf(form.listPath)) {
        const int row = rowOf(root, form.row, 0);
        if (row == 0)
            return false;
        openRow(root, row);
    }
    return !command.ended() && openOwnTracks(root) && root.trackList.isOf(form.listPath);
}

/// Shown together; none of them is written before the save. Where another list is opened in the wait, they are added
/// once more.
std::optional<TrackList::Hold> addAndSave(Root& root, Command& command, const QStringList& files)
{
    for (const bool waits : {true, false}) {
        if (!openBoundList(root, command))
            return {};
        const TrackList::Hold hold = root.trackList.hold();
        AddPlayEntrys(root, files);
        if (waits && !command.pause(1.0))
            return {};
        if (!hold.valid())
            continue;
        SavePlayEntrys(root);
        return hold;
    }
    return {};
}

void addPlaylists(Root& root, Command& command)
{
    bool added = false;
    for (const QString& line : checkedLines(*root.findAudio))
        if (!command.yield() || root.findAudio->stopped || !addPlaylist(root, command, fileOf(root, line), added))
            break;
    if (!added || !command.pause(1.0))
        return;
    const int row = root.LListView1.count();
    openRow(root, row);
    if (command.ended())
        return;
    if (showsAllOf(root, playlistPath(root, row)))
        setTrackCount(root, row);
    root.mnuSpeichern.Click();
}

void addTracks(Root& root, Command& command)
{
    if (!openBoundList(root, command))
        return;
    const PlaylistIndex index(root);
    QStringList waiting;
    for (const QString& line : checkedLines(*root.findAudio)) {
        if (!command.yield())
            return;
        if (root.findAudio->stopped)
            break;
        const FoundFile file = fileOf(root, line);
        if (index.CheckPlaylistFile(file.path()) == 1) {
            const std::optional<bool> wanted = mayAddTrack(root, command, file);
            if (!wanted)
                break;
            if (!*wanted)
                continue;
        }
        waiting.append(file.path());
    }
    if (command.ended())
        return;
    const std::optional<TrackList::Hold> hold = addAndSave(root, command, waiting);
    if (!hold || command.ended() || !hold->valid())
        return;
    const int row = rowInSight(root);
    if (row == 0) {
        // The filter hides its row: what stands beside the tracks is another's.
        root.trackList.doubt();
        (void)ownTracks(root);
        return;
    }
    const QString path = openRow(root, row);
    if (!command.ended() && showsAllOf(root, path))
        setTrackCount(root, row);
}

void BReady_Click(Root& root)
{
    FindAudio& form = *root.findAudio;
    if (!form.BReady.Enabled)
        return;
    Command command(root);
    const bool playlists = arePlaylists(form.found == FindAudio::Heading ? form.LFindType.ListIndex : form.found);
    if (form.LFileList.List.value().isEmpty())
        return command.tell({.text = playlists ? u"In diesem Ordner konnten keine Wiedergabelisten gefunden werden. "_s
                                               : u"In diesem Ordner konnten keine Sounddateien gefunden werden. "_s,
                             .title = form.Caption.value() + u' ',
                             .icon = MessageIcon::Exclamation});
    {
        const Working working(form, FindAudio::Work::Add);
        if (playlists)
            addPlaylists(root, command);
        else
            addTracks(root, command);
    }
    if (!command.ended())
        root.services.forms.unload(form);
}

void bDurchsuchen_Click(Root& root)
{
    FindAudio& form = *root.findAudio;
    const QString folder = BrowseFolders(root, FolderRoot::Computer);
    if (folder.isEmpty())
        return;
    clearResults(form);
    form.TDrives.Text = folder;
}

/// Files of one kind are not taken for those of the other.
void LFindType_Click(FindAudio& form)
{
    if (form.found != FindAudio::Heading && arePlaylists(form.found) != arePlaylists(form.LFindType.ListIndex))
        clearResults(form);
}

void load(Root& root)
{
    FindAudio& form = *root.findAudio;
    clearResults(form);
    const bool inSight = root.trackList.content() != TrackList::Content::None;
    const int row = inSight ? rowInSight(root) : root.LListView1.selectedRow();
    form.row = row > 0 ? identityOf(root, row) : RowIdentity();
    form.listPath = inSight ? root.trackList.path() : selectedPlaylist(root);
    form.TDrives.Text = QString();
    form.LFindType.ListIndex = FindAudio::Heading;
    form.bOnlyAudio.Value = true;
}

} // namespace

FindAudio::FindAudio() : Form(u"FindAudio"_s)
{
    Caption = u" Ordner durchsuchen"_s;
    startFolder.Caption = u"&Ordner:"_s;
    bDurchsuchen.Caption = u"&Durchsuchen ..."_s;
    searchType.Caption = u"&Suchtyp:"_s;
    LFindType.List = QStringList{u"Suchtyp auswählen ..."_s, u"Wiedergabelisten hinzufügen "_s,
                                 u"Dateinamen und Ordner hinzufügen"_s, u"Nur Dateinamen hinzufügen "_s};
    bOnlyAudio.Caption = u"&Nur Mp3-Audiodateien suchen "_s;
    Command1.Caption = u"FINDEN"_s;
    BReady.Caption = u"OK"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
    for (Control* hidden :
         {static_cast<Control*>(&LOrdner), static_cast<Control*>(&List1), static_cast<Control*>(&List2),
          static_cast<Control*>(&List3), static_cast<Control*>(&LCheckFiles)})
        hidden->Visible = false;
}

void setUpFindAudio(Root& root)
{
    FindAudio& form = *root.findAudio;
    form.Load = [&root] { load(root); };
    form.Unload = [&form] {
        form.stopped = true;
        clearResults(form);
    };
    form.LFindType.Click = [&form] { LFindType_Click(form); };
    form.bDurchsuchen.Click = [&root] { bDurchsuchen_Click(root); };
    form.Command1.Click = [&root] {
        if (root.findAudio->Command1.Enabled)
            Command1_Click(root);
    };
    form.BReady.Click = [&root] { runCommand(root, Changes::Both, [&root] { BReady_Click(root); }); };
    form.bAbbrechen.Click = [&root, &form] {
        if (form.work != FindAudio::Work::None)
            form.stopped = true;
        else
            root.services.forms.unload(form);
    };
    form.bHilfe.Click = [&root] { showHelp(root, u"/1.8 Ordner durchsuchen.htm"); };
}

} // namespace orvantine
