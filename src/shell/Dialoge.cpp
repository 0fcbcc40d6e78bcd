#include "shell/Dialoge.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/NewPlayliste.h"
#include "operations/DropOnCatalogue.h"
#include "platform/FileDirPath.h"
#include "transfer/BrowseFolders2k.h"

#include <limits>
#include <utility>
#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Cancel = 0;
constexpr int Back = 1;
constexpr int Next = 2;

/// A folder that becomes a playlist.
struct Source
{
    QString folder;
    QString name;
    qsizetype tracks = 0;
};

void showButtons(Dialoge& form)
{
    const bool done = form.page == Dialoge::Work && !form.working.value();
    form.bButton[Cancel].Enabled = !done;
    form.bButton[Back].Enabled = form.page == Dialoge::Folder || (done && form.firstList.isEmpty());
    form.bButton[Next].Enabled = form.page != Dialoge::Work || done;
    form.bLabel[Next].Caption = done ? u"Fertig"_s : u"Weiter"_s;
    form.bButton[Next].Caption = form.bLabel[Next].Caption.value();
    form.Label1.Visible = !done;
    form.Label2.Visible = !done;
    form.play.Visible = done && !form.firstList.isEmpty();
}

void goTo(Dialoge& form, int page)
{
    form.refusal.Caption = QString();
    form.page = page;
    showButtons(form);
}

/// The form while the lists are made.
class Working
{
public:
    explicit Working(Dialoge& form) : m_form(form)
    {
        form.stopped = false;
        form.firstList = QString();
        form.LFindDir.List = QStringList();
        form.working = true;
        goTo(form, Dialoge::Work);
    }
    ~Working()
    {
        m_form.working = false;
        showButtons(m_form);
        if (!m_form.stopped)
            m_form.bButton[Next].SetFocus();
    }
    Working(const Working&) = delete;
    Working& operator=(const Working&) = delete;

private:
    Dialoge& m_form;
};

/// A folder below the chosen one is called by its way there, since many albums have a "CD 1".
QString nameOf(const QString& start, const QString& folder)
{
    QString name = folder.mid(start.size());
    while (!name.isEmpty() && FileDirPath::hasSeparator(name.left(1)))
        name.remove(0, 1);
    if (name.isEmpty())
        return FileDirPath::FileNameOf(start);
    name.replace(u'\\', u'/');
    return withoutControls(name.replace(u"/"_s, u" - "_s));
}

/// Nothing where the form was left meanwhile.
std::optional<std::vector<Source>> findSources(Root& root, Command& command, const QString& start)
{
    constexpr int AllLevels = std::numeric_limits<int>::max();
    constexpr double UntilMoreIsRead = 0.02;
    Dialoge& form = *root.dialoge;
    std::vector<Source> sources;
    int folders = 0;
    const std::unique_ptr<FolderWalk> walk =
        root.services.walks.begin(start, AudioTypes::Pattern.toString(), form.bSubDir.Value ? AllLevels : 0);
    while (!walk->done() && !form.stopped) {
        const std::vector<WalkedFolder> read = walk->take();
        for (const WalkedFolder& one : read) {
            ++folders;
            const bool wanted = one.level == 0 ? form.bSndfiles.Value.value() : form.bSubDir.Value.value();
            if (wanted && !one.files.isEmpty())
                sources.push_back({one.path, nameOf(start, one.path), one.files.size()});
        }
        form.progress.Caption = u"%1 Ordner durchsucht, %2 mit Sounddateien."_s.arg(folders).arg(sources.size());
        if (read.empty() ? !command.pause(UntilMoreIsRead) : !command.yield())
            return {};
    }
    return sources;
}

QString counted(qsizetype number, const QString& one, const QString& many)
{
    return number == 1 ? u"1 "_s + one : QString::number(number) + u' ' + many;
}

struct Made
{
    int lists = 0;
    qsizetype tracks = 0;
    int left = 0;
};

QString lastWord(const Made& made, bool nothingFound, bool stopped)
{
    QString text = stopped ? u"Abgebrochen. "_s : QString();
    if (nothingFound && !stopped)
        return u"In diesem Ordner wurden keine Sounddateien gefunden. Gehen Sie zurück und wählen Sie einen anderen."_s;
    text += made.lists == 0
                ? u"Es wurde keine Wiedergabeliste hinzugefügt."_s
                : u"Hinzugefügt: %1 mit %2."_s.arg(counted(made.lists, u"Wiedergabeliste"_s, u"Wiedergabelisten"_s),
                                                   counted(made.tracks, u"Sounddatei"_s, u"Sounddateien"_s));
    if (made.left > 0)
        text += u' ' + counted(made.left, u"Ordner wurde"_s, u"Ordner wurden"_s) + u" nicht übernommen."_s;
    return text;
}

/// False if the program has ended.
bool addLists(Root& root, Command& command, const std::vector<Source>& sources, Made& made)
{
    Dialoge& form = *root.dialoge;
    int at = 0;
    for (const Source& source : sources) {
        ++at;
        form.progress.Caption = u"%1 von %2: %3"_s.arg(at).arg(sources.size()).arg(source.name);
        if (!command.yield())
            return false;
        // The save of the last list that found room has told that there is none any more.
        if (form.stopped || (made.lists == 0 ? !mayAddRow(root, command) : wholeCount(root) >= MostPlaylists))
            break;
        if (addFolderPlaylist(root, command, source.folder, source.name)) {
            ++made.lists;
            made.tracks += source.tracks;
            if (form.firstList.isEmpty())
                form.firstList = playlistPath(root, root.LListView1.count());
            form.LFindDir.List =
                form.LFindDir.List.value() + QStringList{u"%1 (%2)"_s.arg(source.name).arg(source.tracks)};
        }
        if (command.ended())
            return false;
    }
    made.left = static_cast<int>(sources.size()) - made.lists;
    return true;
}

void makeLists(Root& root)
{
    Dialoge& form = *root.dialoge;
    Command command(root);
    const QString start = FileDirPath::withoutSeparator(form.tOrdner.Text.value().trimmed());
    const Working working(form);
    const auto sources = findSources(root, command, start);
    Made made;
    if (!sources || !addLists(root, command, *sources, made))
        return;
    form.progress.Caption = lastWord(made, sources->empty(), form.stopped);
}

/// Why no lists can be made of what the page holds; "" where they can.
QString refusalOf(const Root& root)
{
    const Dialoge& form = *root.dialoge;
    const QString folder = form.tOrdner.Text.value().trimmed();
    if (folder.isEmpty() || !root.files.isFolder(folder))
        return u"Bitte wählen Sie einen Ordner, der vorhanden ist."_s;
    if (!form.bSubDir.Value && !form.bSndfiles.Value)
        return u"Bitte wählen Sie, was hinzugefügt werden soll: Unterordner, Sounds oder beides."_s;
    if (isFiltered(root))
        return u"Bitte zeigen Sie zuerst wieder alle Playlisten an, nicht nur die Favoriten."_s;
    // Another command has the lists, the start of the program above all.
    if (!root.loaded || !root.commands.admits(Changes::Both))
        return u"Bitte einen Moment Geduld: Das Programm ist noch beschäftigt."_s;
    return {};
}

void openFirstList(Root& root)
{
    const Dialoge& form = *root.dialoge;
    const QString path = form.firstList;
    const bool play = form.play.Value;
    for (int row = 1; row <= root.LListView1.count(); ++row) {
        if (path.isEmpty() || playlistPath(root, row) != path)
            continue;
        root.LListView1.select(row);
        root.LListView1.Click();
        if (play && !root.services.events.ended() && !root.pPausePlayer.Enabled.value())
            root.mnuWiedergabe.press();
        return;
    }
}

void Next_Click(Root& root)
{
    Dialoge& form = *root.dialoge;
    switch (form.page.value()) {
    case Dialoge::Greeting:
        return goTo(form, Dialoge::Folder);
    case Dialoge::Folder:
        form.refusal.Caption = refusalOf(root);
        if (form.refusal.Caption.value().isEmpty())
            runCommand(root, Changes::Both, [&root] { makeLists(root); });
        return;
    default:
        if (form.working.value())
            return;
        root.services.forms.unload(form);
        openFirstList(root);
    }
}

void load(const Root& root, Dialoge& form)
{
    // Closed and opened again before the work has come to its end.
    if (form.working.value())
        return;
    form.stopped = false;
    form.firstList = QString();
    form.LFindDir.List = QStringList();
    form.progress.Caption = QString();
    form.bSubDir.Value = true;
    form.bSndfiles.Value = true;
    form.play.Value = true;
    form.tipsAtFirst = !readSetting(root, u"HelpDirekt"_s).is(1);
    form.tips.Value = form.tipsAtFirst;
    form.tOrdner.Text = root.files.isFolder(root.services.folders.music) ? root.services.folders.music : QString();
    goTo(form, Dialoge::Greeting);
}

} // namespace

Dialoge::Dialoge() : Form(u"Dialoge"_s)
{
    Caption = u" Herzlich Willkommen"_s;
    bLabel[Cancel].Caption = u"Abbruch"_s;
    bLabel[Back].Caption = u"Zurück"_s;
    bLabel[Next].Caption = u"Weiter"_s;
    for (int i = Cancel; i <= Next; ++i)
        bButton[i].Caption = bLabel[i].Caption.value();
    RCaption.Caption = u"Möglicherweise haben Sie auch schon festgestellt, dass es gar nicht so leicht ist seine "
                       u"Musiklisten übersichtlich in einem Programm zu verwalten. Diese Zeiten sind jedoch vorbei, "
                       u"denn mit der Orvantenverwaltung von Verdanis haben Sie eine übersichtliche und unerhört gute "
                       u"Listenverwaltung."_s;
    RHinweis.Caption = u"Es können automatische Wiedergabelisten erzeugt werden. Geben Sie einen Ordner an, indem Sie "
                       u"die Sounddateien speichern. Unterverzeichnisse werden anschließend als Wiedergabeliste "
                       u"hinzugefügt."_s;
    LOrdner.Caption = u"&Ordner:"_s;
    bOrdner.Caption = u"&Durchsuchen ..."_s;
    bSubDir.Caption = u"Unterordner in neue Playliste hinzufügen "_s;
    bSndfiles.Caption = u"Sounds in seperate Playliste einfügen "_s;
    Label1.Caption = u"Bitte haben Sie einen kleinen Moment Geduld. Die Sounddateien werden im ausgewählten Ordner "
                     u"überprüft und Ihre Wiedergabelisten werden jetzt zusammengestellt."_s;
    Label2.Caption = u"Wenn Sie den Vorgang abbrechen, dann werden die Playlisten unvollständig in den Orvanten "
                     u"Manager hinzugefügt."_s;
    tips.Caption = u"&Tipps vor den Befehlen anzeigen (später unter Extras, Optionen)"_s;
    play.Caption = u"&Die erste Wiedergabeliste gleich abspielen"_s;
}

void setUpDialoge(Root& root)
{
    Dialoge& form = *root.dialoge;
    form.Load = [&root, &form] { load(root, form); };
    form.Unload = [&root, &form] {
        form.stopped = true;
        if (form.tips.Value == std::exchange(form.tipsAtFirst, form.tips.Value.value()))
            return;
        writeSetting(root, u"HelpDirekt"_s, static_cast<qint16>(form.tips.Value.value() ? 0 : 1));
    };
    form.bButton[Cancel].Click = [&root, &form] {
        if (form.working.value())
            form.stopped = true;
        else
            root.services.forms.unload(form);
    };
    form.bButton[Back].Click = [&form] {
        if (form.bButton[Back].Enabled.value())
            goTo(form, form.page == Dialoge::Work ? Dialoge::Folder : Dialoge::Greeting);
    };
    form.bButton[Next].Click = [&root] { Next_Click(root); };
    form.bOrdner.Click = [&root, &form] {
        const QString folder = BrowseFolders(root, FolderRoot::Computer);
        if (!folder.isEmpty())
            form.tOrdner.Text = folder;
    };
}

} // namespace orvantine
