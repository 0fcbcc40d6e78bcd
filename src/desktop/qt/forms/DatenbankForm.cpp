#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "transfer/Datenbank.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int FieldWidth = 440;

} // namespace

void buildDatenbank(FormWindow& window)
{
    auto& form = static_cast<Datenbank&>(window.form());

    QLineEdit* const folder = window.addTextBox(form.tDatabase, u"Datenbank-Ordner"_s);
    folder->setMinimumWidth(FieldWidth);
    QPushButton* const choose = window.addButton(form.bDurchsuchen);
    choose->setAccessibleName(u"Datenbank-Ordner aussuchen"_s);

    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(0, 1);
    grid->addWidget(window.addLabel(form.LHinweis), 0, 0, 1, 2);
    grid->addWidget(window.addLabel(form.LDatabase, folder), 1, 0, 1, 2);
    grid->addWidget(folder, 2, 0);
    grid->addWidget(choose, 2, 1);
    window.content().addLayout(grid);
    window.content().addStretch();

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    choose->setAutoDefault(false);
    help->setAutoDefault(false);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({help}, {ready, cancel});
    folder->setFocus();
}

} // namespace orvantine
