#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "shell/Optionen.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QVBoxLayout* addGroup(FormWindow& window, QVBoxLayout& column, const QString& title)
{
    auto* const group = new QGroupBox(title, &window);
    auto* const layout = new QVBoxLayout(group);
    layout->setSpacing(6);
    column.addWidget(group);
    return layout;
}

void addPath(FormWindow& window, QVBoxLayout& group, Label& label, TextBox& text, Button& browse)
{
    QLineEdit* const field = window.addTextBox(text, QString(label.Caption.value()).remove(u'&').remove(u':'));
    auto* const row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(field, 1);
    QPushButton* const button = window.addButton(browse);
    button->setAutoDefault(false);
    row->addWidget(button);
    group.addSpacing(4);
    group.addWidget(window.addLabel(label, field));
    group.addLayout(row);
}

} // namespace

void buildOptionen(FormWindow& window)
{
    auto& form = static_cast<Optionen&>(window.form());
    auto* const left = new QVBoxLayout;
    auto* const right = new QVBoxLayout;
    for (QVBoxLayout* column : {left, right})
        column->setSpacing(12);

    QVBoxLayout* const adding = addGroup(window, *left, u"Hinzufügen"_s);
    for (CheckBox* box :
         {&form.bFolderView, &form.bLokalePlayliste, &form.bShowDialog, &form.bCheckEntrys, &form.bAutoTag})
        adding->addWidget(window.addCheckBox(*box));
    addPath(window, *adding, form.LSoundfiles, form.tSoundfiles, form.bSoundfiles);

    QVBoxLayout* const ripping = addGroup(window, *left, u"Musik von CD"_s);
    addPath(window, *ripping, form.LRipper, form.tRipper, form.bRipper);
    left->addStretch();

    QVBoxLayout* const showing = addGroup(window, *right, u"Anzeige und Wiedergabe"_s);
    for (CheckBox* box : {&form.bShowChange, &form.bShowDate, &form.bHelpDirekt})
        showing->addWidget(window.addCheckBox(*box));

    QVBoxLayout* const carrying = addGroup(window, *right, u"Übertragung und Sicherung"_s);
    for (CheckBox* box : {&form.bCreateFolder, &form.bUseCDBurner})
        carrying->addWidget(window.addCheckBox(*box));
    QComboBox* const strength = window.addComboBox(form.bZipCompress, u"Komprimierungsstärke"_s, false);
    auto* const row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(window.addLabel(form.LZipCompress, strength));
    row->addWidget(strength, 1);
    carrying->addLayout(row);

    QVBoxLayout* const starting = addGroup(window, *right, u"Start"_s);
    for (CheckBox* box : {&form.bLoadPlayer, &form.bNoUpdate})
        starting->addWidget(window.addCheckBox(*box));
    right->addStretch();

    auto* const columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    window.content().addLayout(columns, 1);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    for (QPushButton* button : {cancel, help})
        button->setAutoDefault(false);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({help}, {ready, cancel});
    window.findChild<QCheckBox*>(form.bFolderView.fullName())->setFocus();
}

} // namespace orvantine
