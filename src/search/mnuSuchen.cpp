#include "search/mnuSuchen.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/ShowTrackInfo.h"
#include "playlists/GetPlayEntrys.h"
#include "search/CatalogueWalk.h"
#include "search/Dialogsuche.h"
#include "search/Suchen.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString section()
{
    return u"Finder"_s;
}

/// Required: the number stands behind a "0", whatever its length.
QString keyOf(qsizetype number)
{
    return u'0' + QString::number(number);
}

bool stands(const QString& text, const QString& in)
{
    return in.contains(text, Qt::CaseInsensitive);
}

bool isCancelled(const Root& root)
{
    return root.suchen->CAbbrechen.Tag.toInt() == 1;
}

void enableSearch(Suchen& form)
{
    form.CSuchen.Enabled = !form.searching && !form.Text1.Text.value().isEmpty();
}

/// The dialog while the search is at work.
class Searching
{
public:
    explicit Searching(Suchen& form) : m_form(form) { set(true); }
    ~Searching() { end(); }
    Searching(const Searching&) = delete;
    Searching& operator=(const Searching&) = delete;

    void end()
    {
        set(false);
        m_form.progress.Caption = QString();
    }

private:
    void set(bool on)
    {
        m_form.searching = on;
        m_form.OVorwärts.Enabled = !on;
        m_form.ORückwärts.Enabled = !on;
        enableSearch(m_form);
    }

    Suchen& m_form;
};

/// The search display, off again on every way.
class Display
{
public:
    explicit Display(Root& root) : m_root(root) { Dialogsuche(root, true); }
    ~Display() { Dialogsuche(m_root, false); }
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;

private:
    Root& m_root;
};

/// Fills the history. Texts that could not be read must not be taken for none.
void readHistory(Root& root)
{
    Suchen& form = *root.suchen;
    const int failedReads = root.services.profiles.failedReads();
    form.Text1.List = QStringList();
    LoadFindText(root);
    form.historyDoubted = root.services.profiles.failedReads() != failedReads;
}

void keepText(Root& root, const QString& text)
{
    ComboBox& history = root.suchen->Text1;
    if (root.suchen->historyDoubted)
        readHistory(root);
    if (FindExact(root, text) < 0) {
        QStringList texts = history.List;
        texts.append(text);
        history.List = texts;
    }
    if (!history.List.value().isEmpty() && !root.suchen->historyDoubted)
        SaveFindText(root);
}

void tellProgress(Root& root, int row)
{
    const int left = root.LListView1.count() - row;
    const QString rest = left == 0   ? u"die letzte Playliste"_s
                         : left == 1 ? u"noch eine Playliste"_s
                                     : u"noch %1 Playlisten"_s.arg(left);
    root.suchen->progress.Caption = u"Durchsucht wird „%1“, %2."_s.arg(playlistName(root, row), rest);
}

/// What a click on the row shows besides its tracks, unless another row was clicked meanwhile.
void showRow(Root& root, int row)
{
    if (root.LListView1.selectedRow() != row)
        return;
    root.LListView1.EnsureVisible(row);
    root.mnuFavoriten.Checked = isFavourite(root, numberOf(root, row));
}

void searchPaths(Root& root, const QString& text)
{
    for (int row = 1; row <= root.LListView1.count(); ++row) {
        if (!stands(text, playlistPath(root, row)))
            continue;
        openRow(root, row);
        if (!root.services.events.ended())
            showRow(root, row);
        return;
    }
}

enum class Found { Nothing, Hit, Ended };

Found searchTracks(Root& root, Command& command, const QString& text)
{
    for (int row = 1; row <= root.LListView1.count(); ++row) {
        tellProgress(root, row);
        // The reading shows the list's cover.
        if (!openWalkedRow(root, command, row, [&root] { Dialogsuche(root, true); }))
            return Found::Ended;
        // Cancel wins over a hit of the same list.
        if (isCancelled(root))
            return Found::Nothing;
        const int hit = showsTracksOf(root, row) ? ListViewFind(root.LListView2, text) : 0;
        if (hit == 0)
            continue;
        showRow(root, row);
        root.LListView2.select(hit);
        root.LListView2.EnsureVisible(hit);
        showSelectedTrack(root);
        return root.services.events.ended() ? Found::Ended : Found::Hit;
    }
    return Found::Nothing;
}

void CSuchen_Click(Root& root)
{
    Suchen& form = *root.suchen;
    if (!form.CSuchen.Enabled)
        return;
    Command command(root);
    const int selected = root.LListView1.selectedRow();
    const RowIdentity playlist = identityOf(root, selected);
    const QString text = form.Text1.Text;
    keepText(root, text);

    Searching searching(form);
    const Display display(root);
    const WalkedFrom from(root);
    if (form.bIndexFinder.Value)
        return searchPaths(root, text);
    if (searchTracks(root, command, text) != Found::Nothing)
        return;
    // The dialog that was hidden keeps the checks of the tracks silent no more.
    if (!isCancelled(root))
        searching.end();
    if (const int row = selected > 0 ? rowOf(root, playlist, selected) : 0; row > 0) {
        openRow(root, row);
        if (command.ended())
            return;
        showRow(root, row);
    }
    if (!isCancelled(root))
        command.tell({.text = u"Die Suche nach ''"_s + text + u"'' wurde ergebnislos beendet.   "_s,
                      .title = u" Durchsuchen"_s,
                      .icon = MessageIcon::Information});
}

void load(Root& root)
{
    Suchen& form = *root.suchen;
    form.CAbbrechen.Tag = QString();
    form.Text1.ListIndex = -1;
    readHistory(root);
    form.Text1.Text = QString();
    form.OVorwärts.Value = true;
    form.ORückwärts.Value = false;
    form.bIndexFinder.Value = false;
    enableSearch(form);
}

void CAbbrechen_Click(Root& root)
{
    root.suchen->CAbbrechen.Tag = u"1"_s;
    root.suchen->Visible = false;
}

} // namespace

void setUpSuchen(Root& root)
{
    Suchen& form = *root.suchen;
    form.Load = [&root] { load(root); };
    form.Unload = [&root, &form] {
        form.CAbbrechen.Tag = u"1"_s;
        Dialogsuche(root, false);
    };
    form.Text1.Change = [&form] { enableSearch(form); };
    form.Text1.Click = form.Text1.Change;
    // The rows stay where they are while the search walks over them.
    form.CSuchen.Click = [&root] { runCommand(root, Changes::Both, [&root] { CSuchen_Click(root); }); };
    form.CAbbrechen.Click = [&root] { CAbbrechen_Click(root); };
}

void mnuSuchen_Click(Root& root)
{
    Suchen& form = *root.suchen;
    if (!form.searching) {
        root.services.forms.unload(form);
        root.services.forms.show(form);
    } else if (form.Visible) {
        root.services.forms.toFront(form);
    }
}

void mnuSuchDialog_Click(Root& root)
{
    // Required: the check says that the display is off.
    Dialogsuche(root, root.mnuSuchDialog.Checked);
}

void LoadFindText(Root& root)
{
    constexpr int Kept = 9;
    ComboBox& history = root.suchen->Text1;
    QStringList texts = history.List;
    for (int number = 1; number <= Kept; ++number)
        if (const QString text = IniFiles::ReadValue(root, databaseFile(root), section(), keyOf(number));
            !text.isEmpty())
            texts.append(text);
    history.List = texts;
}

void SaveFindText(Root& root)
{
    const QString database = databaseFile(root);
    const QStringList& texts = root.suchen->Text1.List.value();
    const WholeChange together(root.files);
    IniFiles::DeleteSection(root, database, section());
    for (qsizetype i = 0; i < texts.size(); ++i)
        IniFiles::WriteValue(root, database, section(), keyOf(i + 1), texts[i]);
}

int FindExact(const Root& root, const QString& text)
{
    const QStringList& texts = root.suchen->Text1.List.value();
    for (qsizetype i = 0; i < texts.size(); ++i)
        if (texts[i].compare(text, Qt::CaseInsensitive) == 0)
            return static_cast<int>(i);
    return -1;
}

int ListViewFind(const ListView& tracks, const QString& text)
{
    for (int row = 1; row <= tracks.count(); ++row) {
        const ListItem& item = tracks.item(row);
        const std::size_t cells = std::min<std::size_t>(item.SubItems.size(), TrackItem::Name);
        bool found = stands(text, item.Text);
        for (std::size_t cell = 0; cell < cells && !found; ++cell)
            found = stands(text, item.SubItems[cell].Text);
        if (found)
            return row;
    }
    return 0;
}

} // namespace orvantine
