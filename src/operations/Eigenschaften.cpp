#include "operations/Eigenschaften.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueDatabase.h"
#include "metadata/frmID3.h"
#include "operations/Properties.h"
#include "playback/CoverArt.h"
#include "playlists/ReadPlaylists.h"
#include "shell/MainWindow.h"

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

QString withoutQuotes(QString text)
{
    if (text.startsWith(u'"'))
        text.remove(0, 1);
    if (text.endsWith(u'"'))
        text.chop(1);
    return text;
}

/// Tells what is wrong with the fields; true if nothing is.
bool accepts(Root& root, int row)
{
    Eigenschaften& form = *root.eigenschaften;
    const auto refuse = [&root](const QString& text) {
        root.services.messages.show(text, u" Eigenschaften"_s, MessageIcon::Critical, MessageButtons::Ok);
        return false;
    };
    if (form.tPlaylistname.Text.value().isEmpty())
        return refuse(u"Bitte geben Sie eine korrekte Bezeichnung für diese Wiedergabeliste ein.   "_s);
    if (!Dateiexistenz::FileExists(root, form.tPlayliste.Text)) {
        refuse(u"Die eingetragene Wiedergabeliste konnte nicht gefunden werden.   "_s);
        form.tPlayliste.Text = root.LListView1.subItem(row, 2);
        return false;
    }
    return true;
}

/// The pictures of a playlist bear its name.
void movePictures(Root& root, const QString& from, const QString& to)
{
    // A name that would leave the folder never forms a path.
    if (FileDirPath::hasSeparator(from) || FileDirPath::hasSeparator(to))
        return;
    const QString folder = root.tDatenbank.Text.value() + u"Resource"_s;
    for (const QString& extension : {u".jpg"_s, u".gif"_s, u".bmp"_s}) {
        const QString old = FileDirPath::join(folder, from + extension);
        const QString moved = FileDirPath::join(folder, to + extension);
        if (!Dateiexistenz::FileExists(root, old) || !root.files.copy(old, moved))
            continue;
        // Names that differ in case alone are one file.
        if (root.files.nativePath(old) != root.files.nativePath(moved))
            root.files.remove(old);
    }
}

void takeNameAndPath(Root& root, int row)
{
    Eigenschaften& form = *root.eigenschaften;
    ListView& list = root.LListView1;
    const bool open = list.subItem(row, 2) == root.openPlaylist;
    if (open)
        root.tPlaylisteinträge.Caption = form.tPlaylistname.Text.value();
    // The tracks that are shown are those of the old file: the next click reads the new one.
    if (open && list.subItem(row, 2) != form.tPlayliste.Text)
        list.Tag = u"0"_s;
    list.setSubItem(row, 1, form.tPlaylistname.Text);
    list.setSubItem(row, 2, form.tPlayliste.Text);
}

void takeDescriptionAndDate(Root& root, int row)
{
    Eigenschaften& form = *root.eigenschaften;
    TextBox& description = form.tBeschreibung;
    if (!isHint(description.Text))
        root.LSoundCaption.Caption = description.Text.value();
    root.tDatum.Caption = form.tDatum.Text.value();
    if (description.Text.value().contains(u"Audiodateien ihrer Playlisten hinzu"_s))
        description.Text = QString();

    const QString database = databaseFile(root);
    writeIndexValue(root, database, row, 'b', form.tPlaylistname.Text);
    writeIndexValue(root, database, row, 'c', form.tPlayliste.Text);
    writeIndexValue(root, database, row, 'e', description.Text);
    writeIndexValue(root, database, row, 'f', form.tDatum.Text);

    if (description.Text.value().isEmpty())
        showHintForDescription(root);
    else if (!isHint(description.Text))
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
    form.BReady.Click = [&root] { Eigenschaften_BReady_Click(root); };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/1.9 Eigenschaften bearbeiten.htm"); };
}

void showEigenschaften(Root& root)
{
    Eigenschaften& form = *root.eigenschaften;
    const ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;
    const QString name = list.subItem(row, 1);
    form.tName.Caption = name;
    form.tTracks.Caption = list.subItem(row, 3) + u" Tracks"_s;
    form.tPlaylistname.Text = name;
    form.tPlayliste.Text = list.subItem(row, 2);
    form.tDatum.Text = root.tDatum.Caption.value();
    form.tBeschreibung.Text = indexValue(root, databaseFile(root), row, 'e');
    form.tAlbumCover.Text = coverFile(root, name);
    root.services.forms.show(form);
}

void Eigenschaften_BReady_Click(Root& root)
{
    Eigenschaften& form = *root.eigenschaften;
    const int row = root.LListView1.selectedRow();
    if (row == 0)
        return root.services.forms.unload(form);

    form.tPlayliste.Text = withoutQuotes(form.tPlayliste.Text);

    if (!accepts(root, row))
        return;

    {
        const WholeChange together(root.files);
        const QString old = root.LListView1.subItem(row, 1);
        if (old != form.tPlaylistname.Text)
            movePictures(root, old, form.tPlaylistname.Text);

        takeNameAndPath(root, row);
        takeDescriptionAndDate(root, row);
    }
    root.services.forms.unload(form);
}

void Eigenschaften_bFindPic_Click(Root& root)
{
    Eigenschaften& form = *root.eigenschaften;
    HelpDblClick(root);
    root.services.events.yield();
    const QString cover = coverFile(root, root.LListView1.subItem(root.LListView1.selectedRow(), 1));
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
