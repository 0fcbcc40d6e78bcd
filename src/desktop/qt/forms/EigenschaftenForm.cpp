#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Theme.h"
#include "operations/Eigenschaften.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int FieldWidth = 440;
constexpr int DateWidth = 130;
constexpr int IconSize = 32;

/// Which playlist it is: its icon, name and number of tracks.
QLayout* makeHead(FormWindow& window, Eigenschaften& form)
{
    auto* const icon = new QLabel(&window);
    icon->setPixmap(Theme::listIcon(u"Icon_1"_s).pixmap(IconSize));

    QLabel* const name = window.addLabel(form.tName);
    QFont heading = window.font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.2);
    name->setFont(heading);

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(name);
    texts->addWidget(window.addLabel(form.tTracks));

    auto* const head = new QHBoxLayout;
    head->setSpacing(12);
    head->addWidget(icon, 0, Qt::AlignTop);
    head->addLayout(texts, 1);
    return head;
}

} // namespace

void buildEigenschaften(FormWindow& window)
{
    auto& form = static_cast<Eigenschaften&>(window.form());
    window.content().addLayout(makeHead(window, form));
    window.content().addSpacing(4);

    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    const auto addField = [&](Label& label, TextBox& field, const QString& name) {
        const int row = grid->rowCount();
        QLineEdit* const edit = window.addTextBox(field, name);
        grid->addWidget(window.addLabel(label, edit), row, 0);
        return edit;
    };
    const auto place = [&](QLineEdit* edit, int columns, Qt::Alignment alignment = {}) {
        grid->addWidget(edit, grid->rowCount() - 1, 1, 1, columns, alignment);
    };
    QLineEdit* const name = addField(form.LPlaylistname, form.tPlaylistname, u"Wiedergabeliste"_s);
    name->setMinimumWidth(FieldWidth);
    place(name, 2);
    place(addField(form.LPlayliste, form.tPlayliste, u"Pfad der Wiedergabeliste"_s), 2);
    QLineEdit* const description = addField(form.LBeschreibung, form.tBeschreibung, u"Beschreibung"_s);
    place(description, 2);
    // A path is known by its end, a description by its beginning.
    const auto showBeginning = [description] {
        if (!description->hasFocus())
            description->setCursorPosition(0);
    };
    QObject::connect(description, &QLineEdit::textChanged, description, showBeginning);
    showBeginning();
    QLineEdit* const date = addField(form.LDatum, form.tDatum, u"Datum"_s);
    date->setFixedWidth(DateWidth);
    place(date, 2, Qt::AlignLeft);
    grid->addWidget(
        window.addRefusal(date, u"Bitte ein Datum der Form TT.MM.JJJJ eingeben, zum Beispiel 21.06.2026."_s),
        grid->rowCount(), 1, 1, 2);
    place(addField(form.LAlbumCover, form.tAlbumCover, u"Album CD-Cover"_s), 1);
    QPushButton* const find = window.addButton(form.bFindPic);
    find->setAccessibleName(u"CD-Cover auswählen"_s);
    grid->addWidget(find, grid->rowCount() - 1, 2);
    window.content().addLayout(grid);
    window.content().addStretch();

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    find->setAutoDefault(false);
    help->setAutoDefault(false);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({help}, {ready, cancel});
    name->setFocus();
}

} // namespace orvantine
