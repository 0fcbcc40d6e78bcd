#pragma once

#include "catalogue/CatalogueRows.h"
#include "platform/Form.h"

namespace orvantine {

struct Root;

/// What the catalogue knows of one playlist. Not modal: what is accepted goes to the entry that is shown, wherever its
/// row is by then or if the favourites' filter hides it, and nowhere if it is gone.
struct Eigenschaften : Form
{
    Eigenschaften();

    Label tName{controls, u"tName"};
    Label tTracks{controls, u"tTracks"};
    Label LPlaylistname{controls, u"LPlaylistname"};
    TextBox tPlaylistname{controls, u"tPlaylistname"};
    Label LPlayliste{controls, u"LPlayliste"};
    TextBox tPlayliste{controls, u"tPlayliste"};
    Label LBeschreibung{controls, u"LBeschreibung"};
    TextBox tBeschreibung{controls, u"tBeschreibung"};
    Label LDatum{controls, u"LDatum"};
    TextBox tDatum{controls, u"tDatum"};
    Label LAlbumCover{controls, u"LAlbumCover"};
    TextBox tAlbumCover{controls, u"tAlbumCover"};
    Button bFindPic{controls, u"bFindPic"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};

    /// The entry that is shown, and its number in section `Index`.
    RowIdentity shown;
    int number = 0;
    /// Not all of it could be read: what was left empty is not written back.
    bool doubted = false;
};

void setUpEigenschaften(Root& root);

/// Opens the properties of the selected playlist. Where the selected track's file is missing, it offers to find its
/// folder instead, for this track or for all of the list.
void mnuEigenschaften_Click(Root& root);

/// Fills the fields from the selected row and shows the form; with nothing selected it does neither.
void showEigenschaften(Root& root);

/// Checks the fields, moves the pictures of a list that gets another name, and writes name, path, description and
/// date. The form stays where a field is refused.
void Eigenschaften_BReady_Click(Root& root);

/// Chooses a picture for the playlist that is shown, as long as it is the selected one.
void Eigenschaften_bFindPic_Click(Root& root);

/// The short forms of a date, "ddmmyyyy", "ddmmyy", "dd.mm.yy" and "dd.mm", written out; any other text as it is.
[[nodiscard]] QString completedDate(const QString& text, int currentYear);

/// "dd.mm.yyyy" by its length and its dots; neither day nor month is looked at.
[[nodiscard]] bool hasFormOfDate(const QString& text);

} // namespace orvantine
