#include "metadata/frmID3.h"

#include "app/Root.h"
#include "metadata/Mp3HeaderReader.h"

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

void setUpTagForms(Root& root)
{
    frmID3V1& tag = *root.tagForm;
    tag.Load = [&root, &tag] {
        // The genre is never filled: each time the dialog begins without one.
        tag.ID3Genre.Text = QString();
        tag.txtMp3File.Caption = QString();
        ReadMp3Header(root);
    };
    tag.cmdUpdate.Click = [&root] { cmdUpdate_Click(root); };
    tag.cmdCancel.Click = [&root, &tag] { root.services.forms.unload(tag); };
    for (TextBox* field : {&tag.ID3Titel, &tag.ID3Interpret, &tag.ID3Album, &tag.ID3Kommentar})
        field->GotFocus = [field] { GetFocus(*field); };

    frmID3V2& other = *root.otherTagForm;
    other.Command1.Click = [&root, &other] { root.services.forms.unload(other); };
}

void cmdUpdate_Click(Root& root)
{
    frmID3V1& form = *root.tagForm;
    if (form.ID3Titel.Text.value().isEmpty() && form.ID3Interpret.Text.value().isEmpty())
        return;
    QString file = root.CurrentMp3File;
    if (file.size() >= 2 && file.startsWith(u'"') && file.endsWith(u'"'))
        file = file.mid(1, file.size() - 2);
    WriteMp3Tag(root);
    root.services.tags.EraseID3V2(file);
    root.services.events.yield();
    root.services.forms.unload(form);
}

void GetFocus(TextBox& field)
{
    field.SelStart = 0;
    field.SelLength = static_cast<int>(field.Text.value().size());
}

} // namespace orvantine
