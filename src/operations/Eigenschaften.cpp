#include "operations/Eigenschaften.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Help.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "catalogue/PlaylistTexts.h"
#include "metadata/frmID3.h"
#include "operations/RepairSource.h"
#include "platform/FileDirPath.h"
#include "playback/CoverArt.h"

#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

enum Key : int { SelectAll = 1, Copy = 3, Backspace = 8, Enter = 13, Cut = 24, Comma = 44, Dot = 46 };

/// What a date can be typed with; a comma types a dot, Enter goes on to the next field.
int dateKey(Root& root, TextBox& field, int key)
{
    switch (key) {
    case SelectAll:
    case Copy:
    case Cut:
    case Backspace:
    case Dot:
        return key;
    case Comma:
        return Dot;
    case Enter:
        field.SendTab();
        return 0;
    default:
        break;
    }
    if (key >= u'0' && key <= u'9')
        return key;
    root.services.messages.beep();
    return 0;
}

bool keepsFocus(Root& root, TextBox& field)
{
    field.Text = completedDate(field.Text, root.services.events.now().date().year());
    return !hasFormOfDate(field.Text);
}

/// Where the entry that is shown stands now.
struct Place
{
    /// 0 where the filter hides it.
    int row = 0;
    int number = 0;
    /// As it is now, for a hidden one as it was.
    RowIdentity entry;
};

/// A row that the filter hides keeps its entry, unless that is another one by now.
bool isHidden(const Root& root)
{
    const Eigenschaften& form = *root.eigenschaften;
    if (!isFiltered(root))
        return false;
    for (int row = 1; row <= root.LListView1.count(); ++row)
        if (numberOf(root, row) == form.number)
            return false;
    const auto stored = [&](char letter) { return indexValue(root, databaseFile(root), form.number, letter); };
    return withoutControls(stored(EntryKey::Name)) == form.shown.name && stored(EntryKey::Path) == form.shown.path;
}

/// Nothing where the entry has gone.
std::optional<Place> placeOf(const Root& root)
{
    const Eigenschaften& form = *root.eigenschaften;
    if (const int row = rowOf(root, form.shown, root.LListView1.selectedRow()); row > 0)
        return Place{.row = row, .number = numberOf(root, row), .entry = identityOf(root, row)};
    return isHidden(root) ? std::optional(Place{.number = form.number, .entry = form.shown}) : std::nullopt;
}

/// A save or another command may have changed the entry since: what was not typed over stays as it is now.
void followEntry(Eigenschaften& form, const RowIdentity& entry)
{
    if (form.tPlaylistname.Text == form.shown.name)
        form.tPlaylistname.Text = entry.name;
    if (form.tPlayliste.Text == form.shown.path)
        form.tPlayliste.Text = entry.path;
}

/// Tells what is wrong with the fields; true if nothing is.
bool accepts(Root& root, const RowIdentity& entry)
{
    Eigenschaften& form = *root.eigenschaften;
    const auto refuse = [&root](const QString& text) {
        Command(root).tell({.text = text, .title = u" Eigenschaften"_s, .icon = MessageIcon::Critical});
        return false;
    };
    if (readsAsEmpty(form.tPlaylistname.Text))
        return refuse(u"Bitte geben Sie eine korrekte Bezeichnung für diese Wiedergabeliste ein.   "_s);
    if (!Dateiexistenz::FileExists(root, form.tPlayliste.Text)) {
        refuse(u"Die eingetragene Wiedergabeliste konnte nicht gefunden werden.   "_s);
        form.tPlayliste.Text = entry.path;
        return false;
    }
    return true;
}

void takeNameAndPath(Root& root, int row)
{
    Eigenschaften& form = *root.eigenschaften;
    ListView& list = root.LListView1;
    const bool open = rowInSight(root) == row;
    if (open)
        root.tPlaylisteinträge.Caption = form.tPlaylistname.Text.value();
    // The tracks that are shown are those of the old file: the next click reads the new one.
    if (open && playlistPath(root, row) != form.tPlayliste.Text)
        list.Tag = u"0"_s;
    list.setSubItem(row, CatalogueItem::Name, form.tPlaylistname.Text);
    list.setSubItem(row, CatalogueItem::Path, form.tPlayliste.Text);
    // It was looked for before.
    markMissing(root, row, false);
}

void takeDescriptionAndDate(Root& root, const Place& place)
{
    Eigenschaften& form = *root.eigenschaften;
    TextBox& description = form.tBeschreibung;
    // The window shows what is told of the selected row.
    const bool seen = place.row > 0 && place.row == root.LListView1.selectedRow();
    if (seen && !isHint(description.Text))
        root.LSoundCaption.Caption = description.Text.value();
    if (seen)
        root.tDatum.Caption = form.tDatum.Text.value();
    if (description.Text.value().contains(u"Audiodateien ihrer Playlisten hinzu"_s))
        description.Text = QString();

    const QString database = databaseFile(root);
    writeIndexValue(root, database, place.number, EntryKey::Name, form.tPlaylistname.Text);
    writeIndexValue(root, database, place.number, EntryKey::Path, form.tPlayliste.Text);
    writeIndexValue(root, database, place.number, EntryKey::Description, description.Text);
    writeIndexValue(root, database, place.number, EntryKey::Date, form.tDatum.Text);

    if (seen && description.Text.value().isEmpty())
        showHintForDescription(root);
    else if (seen && !isHint(description.Text))
        root.LSoundCaption.Tag = u"1"_s;
}

} // namespace

Eigenschaften::Eigenschaften() : Form(u"Eigenschaften"_s)
{
    Caption = u" Eigenschaften"_s;
    tName.Caption = u"<Wiedergabeliste>"_s;
    tTracks.Caption = u"Enthält 0 Tracks"_s;
    LPlaylistname.Caption = u"&Wiedergabeliste:"_s;
    LPlayliste.Caption = u"&Orvantinee:"_s;
    LBeschreibung.Caption = u"&Beschreibung:"_s;
    LDatum.Caption = u"&Datum:"_s;
    LAlbumCover.Caption = u"&Album CD-Cover:"_s;
    bFindPic.Caption = u"Aus&suchen ..."_s;
    BReady.Caption = u"&Übernehmen"_s;
    bAbbrechen.Caption = u"Abbrechen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
    // A date that is refused holds neither of the two up.
    bAbbrechen.CausesValidation = false;
    bHilfe.CausesValidation = false;
}

void setUpEigenschaften(Root& root)
{
    Eigenschaften& form = *root.eigenschaften;
    for (TextBox* field : {&form.tDatum, &form.tPlayliste, &form.tPlaylistname})
        field->GotFocus = [field] { GetFocus(*field); };
    form.tDatum.KeyPress = [&root, &form](int key) { return dateKey(root, form.tDatum, key); };
    form.tAlbumCover.KeyPress = [&root, &form](int key) {
        const int typed = dateKey(root, form.tAlbumCover, key);
        if (key == Enter)
            form.tBeschreibung.SetFocus();
        return typed;
    };
    form.tDatum.Validate = [&root, &form] { return keepsFocus(root, form.tDatum); };
    form.bFindPic.Click = [&root] { Eigenschaften_bFindPic_Click(root); };
    form.BReady.Click = [&root] {
        runCommand(root, Changes::Catalogue, [&root] { Eigenschaften_BReady_Click(root); });
    };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/1.9 Eigenschaften bearbeiten.htm"); };
}

void mnuEigenschaften_Click(Root& root)
{
    const int track = root.LListView2.selectedRow();
    if (!root.Visible.value() || track == 0 || !isTrackMissing(root, track))
        return showEigenschaften(root);
    // Only the repair changes tracks: the dialog may come up while another command waits.
    runCommand(root, Changes::Tracks, [&root, track] { repairSource(root, track); });
}

void showEigenschaften(Root& root)
{
    Eigenschaften& form = *root.eigenschaften;
    const ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;
    const QString name = playlistName(root, row);
    form.tName.Caption = name;
    form.tTracks.Caption = list.subItem(row, CatalogueItem::Tracks) + u" Tracks"_s;
    form.tPlaylistname.Text = name;
    form.tPlayliste.Text = playlistPath(root, row);
    form.shown = identityOf(root, row);
    form.number = numberOf(root, row);
    const int failedReads = root.services.profiles.failedReads();
    form.tDatum.Text = labelsTellOf(root, row)
                           ? root.tDatum.Caption.value()
                           : indexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Date);
    form.tBeschreibung.Text = indexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Description);
    form.doubted = root.services.profiles.failedReads() != failedReads;
    form.tAlbumCover.Text = coverFile(root, name);
    root.services.forms.show(form);
}

void Eigenschaften_BReady_Click(Root& root)
{
    Eigenschaften& form = *root.eigenschaften;
    const std::optional<Place> place = placeOf(root);
    if (!place)
        return root.services.forms.unload(form);

    followEntry(form, place->entry);
    form.tPlayliste.Text = FileDirPath::withoutQuotes(form.tPlayliste.Text);
    form.tPlaylistname.Text = withoutControls(form.tPlaylistname.Text);

    if (!accepts(root, place->entry))
        return;

    {
        WholeChange together(root.files);
        if (form.doubted)
            together.fail();
        if (place->entry.name != form.tPlaylistname.Text)
            renameCovers(root, place->entry.name, form.tPlaylistname.Text);

        if (place->row > 0)
            takeNameAndPath(root, place->row);
        takeDescriptionAndDate(root, *place);
    }
    root.services.forms.unload(form);
}

void Eigenschaften_bFindPic_Click(Root& root)
{
    Eigenschaften& form = *root.eigenschaften;
    const auto shownRow = [&] { return rowOf(root, form.shown, root.LListView1.selectedRow()); };
    // The picture would go to the selected playlist.
    const int row = shownRow();
    if (row == 0 || row != root.LListView1.selectedRow())
        return;
    HelpDblClick(root);
    if (!Command(root).yield())
        return;
    const int now = shownRow();
    const QString cover = now > 0 ? coverFile(root, playlistName(root, now)) : QString();
    if (!cover.isEmpty())
        form.tAlbumCover.Text = cover;
    form.tAlbumCover.SetFocus();
}

QString completedDate(const QString& text, int currentYear)
{
    constexpr int FirstOldYear = 50;
    const qsizetype length = text.size();
    const bool dotted = text.contains(u'.');
    const auto withCentury = [&text](const QString& dayAndMonth) {
        const QString year = text.right(2);
        return dayAndMonth + (leadingNumber(year) >= FirstOldYear ? u"19"_s : u"20"_s) + year;
    };
    if (length == 8 && dotted)
        return withCentury(text.left(6));
    if (length == 8)
        return text.left(2) + u'.' + text.mid(2, 2) + u'.' + text.right(4);
    if (length == 5 && text.indexOf(u'.') == 2)
        return text + u'.' + QString::number(currentYear);
    if (length == 6 && !dotted)
        return withCentury(text.left(2) + u'.' + text.mid(2, 2) + u'.');
    return text;
}

bool hasFormOfDate(const QString& text)
{
    return text.size() == 10 && text[2] == u'.' && text[5] == u'.';
}

} // namespace orvantine
