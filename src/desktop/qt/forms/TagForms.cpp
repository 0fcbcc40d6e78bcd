#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "metadata/frmID3.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int FieldWidth = 320;

} // namespace

void buildTagForm(FormWindow& window)
{
    auto& form = static_cast<frmID3V1&>(window.form());

    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    const auto addField = [&](Label& label, TextBox& field) {
        const int row = grid->rowCount();
        QLineEdit* const edit = window.addTextBox(field, label.Caption);
        edit->setMinimumWidth(FieldWidth);
        grid->addWidget(window.addLabel(label, edit), row, 0);
        grid->addWidget(edit, row, 1);
    };
    addField(form.LTitel, form.ID3Titel);
    addField(form.LInterpret, form.ID3Interpret);
    addField(form.LAlbum, form.ID3Album);
    addField(form.LKommentar, form.ID3Kommentar);
    addField(form.LJahr, form.ID3Jahr);
    addField(form.LGenre, form.ID3Genre);
    addField(form.LTrack, form.ID3Track);
    grid->addWidget(window.addLabel(form.ID3Bitrate), grid->rowCount(), 1);
    window.content().addLayout(grid);
    window.content().addWidget(window.addLabel(form.txtMp3File));

    QPushButton* const save = window.addButton(form.cmdUpdate);
    QPushButton* const cancel = window.addButton(form.cmdCancel);
    save->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({}, {save, cancel});
}

void buildOtherTagForm(FormWindow& window)
{
    auto& form = static_cast<frmID3V2&>(window.form());
    for (Label* label : {&form.LGenre, &form.LTrack, &form.LEncoder})
        window.content().addWidget(window.addLabel(*label));
    window.content().addStretch();

    QPushButton* const close = window.addButton(form.Command1);
    close->setDefault(true);
    window.setCancel(close);
    window.addButtons({}, {close});
}

} // namespace orvantine
