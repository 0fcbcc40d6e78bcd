#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "search/FolderCheck.h"

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

void buildFolderCheck(FormWindow& window)
{
    auto& form = static_cast<FolderCheck&>(window.form());

    // The two prompts are the same, so that the fields say themselves which is which.
    QLineEdit* const old = window.addTextBox(form.tFolderOld, u"Alter Speicherordner"_s);
    QLineEdit* const fresh = window.addTextBox(form.tFolderNew, u"Neuer Speicherordner"_s);
    old->setPlaceholderText(u"Alter Ordner"_s);
    fresh->setPlaceholderText(u"Neuer Ordner"_s);
    fresh->setMinimumWidth(FieldWidth);
    QPushButton* const choose = window.addButton(form.bOrdner);
    choose->setAccessibleName(u"Neuen Speicherordner aussuchen"_s);

    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(0, 1);
    grid->addWidget(window.addLabel(form.LFolderOld, old), 0, 0, 1, 2);
    grid->addWidget(old, 1, 0, 1, 2);
    grid->addWidget(window.addLabel(form.LFolderNew, fresh), 2, 0, 1, 2);
    grid->addWidget(fresh, 3, 0);
    grid->addWidget(choose, 3, 1);
    window.content().addLayout(grid);
    QLabel* const preview = window.addLabel(form.LVorschau);
    // The window keeps its size while the words change.
    preview->setMinimumHeight(2 * preview->fontMetrics().lineSpacing());
    preview->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    window.content().addWidget(preview);
    window.content().addStretch();

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    choose->setAutoDefault(false);
    help->setAutoDefault(false);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({help}, {ready, cancel});
    old->setFocus();
}

} // namespace orvantine
