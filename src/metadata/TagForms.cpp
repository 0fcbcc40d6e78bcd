#include "metadata/TagForms.h"

#include "app/Command.h"
#include "app/Root.h"
#include "metadata/Mp3HeaderReader.h"
#include "metadata/frmID3.h"

#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

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
    std::optional<WriteFault> fault;
    {
        // Without the new tag the old one stays.
        const PartChange alone(root.files);
        WriteMp3Tag(root);
        root.services.tags.EraseID3V2(file);
        fault = root.files.takeFault();
    }
    if (fault)
        root.files.noteFault(*fault);
    Command command(root);
    if (command.yield())
        root.services.forms.unload(form);
}

} // namespace orvantine
