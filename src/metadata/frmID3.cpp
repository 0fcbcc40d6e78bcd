#include "metadata/frmID3.h"

namespace orvantine {

using namespace Qt::StringLiterals;

frmID3V1::frmID3V1() : Form(u"frmID3V1"_s)
{
    Caption = u" ID3V1 Tag ändern"_s;
    LTitel.Caption = u"Titel"_s;
    LInterpret.Caption = u"Interpret"_s;
    LAlbum.Caption = u"Album"_s;
    LKommentar.Caption = u"Kommentar"_s;
    LJahr.Caption = u"Jahr"_s;
    LGenre.Caption = u"Genre-Nr"_s;
    LTrack.Caption = u"Track #"_s;
    cmdUpdate.Caption = u"&Speichern"_s;
    cmdCancel.Caption = u"&Abbrechen"_s;
}

frmID3V2::frmID3V2() : Form(u"frmID3V2"_s)
{
    Caption = u" ID3V2 anzeigen"_s;
    LGenre.Caption = u"Genre:"_s;
    LTrack.Caption = u"Track #:"_s;
    LEncoder.Caption = u"Encoded von:"_s;
    Command1.Caption = u"&Schließen"_s;
}

void GetFocus(TextBox& field)
{
    field.SelStart = 0;
    field.SelLength = static_cast<int>(field.Text.value().size());
}

} // namespace orvantine
