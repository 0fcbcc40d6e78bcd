#pragma once

#include "platform/Form.h"

namespace orvantine {

/// The tag dialog: it is loaded as the carrier of its fields and never shown.
struct frmID3V1 : Form
{
    frmID3V1();

    Label LTitel{controls, u"LTitel"};
    TextBox ID3Titel{controls, u"ID3Titel"};
    Label LInterpret{controls, u"LInterpret"};
    TextBox ID3Interpret{controls, u"ID3Interpret"};
    Label LAlbum{controls, u"LAlbum"};
    TextBox ID3Album{controls, u"ID3Album"};
    Label LKommentar{controls, u"LKommentar"};
    TextBox ID3Kommentar{controls, u"ID3Kommentar"};
    Label LJahr{controls, u"LJahr"};
    TextBox ID3Jahr{controls, u"ID3Jahr"};
    Label LGenre{controls, u"LGenre"};
    /// Never filled, so a save writes genre 0.
    TextBox ID3Genre{controls, u"ID3Genre"};
    Label LTrack{controls, u"LTrack"};
    TextBox ID3Track{controls, u"ID3Track"};
    Label ID3Bitrate{controls, u"ID3Bitrate"};
    Label txtMp3File{controls, u"txtMp3File"};
    Button cmdUpdate{controls, u"cmdUpdate"};
    Button cmdCancel{controls, u"cmdCancel"};
};

/// A display of the other kind of tag; nothing fills it.
struct frmID3V2 : Form
{
    frmID3V2();

    Label LGenre{controls, u"LGenre"};
    Label LTrack{controls, u"LTrack"};
    Label LEncoder{controls, u"LEncoder"};
    Button Command1{controls, u"Command1"};
};

/// Selects the whole text of a field.
void GetFocus(TextBox& field);

} // namespace orvantine
