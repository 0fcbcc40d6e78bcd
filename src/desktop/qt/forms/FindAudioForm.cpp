#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/LineList.h"
#include "search/FindAudio.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

void buildFindAudio(FormWindow& window)
{
    auto& form = static_cast<FindAudio&>(window.form());

    QLineEdit* const folder = window.addTextBox(form.TDrives, u"Ordner"_s);
    QPushButton* const browse = window.addButton(form.bDurchsuchen);
    QComboBox* const type = window.addComboBox(form.LFindType, u"Suchtyp"_s, false);
    QCheckBox* const onlyMp3 = window.addCheckBox(form.bOnlyAudio);
    QPushButton* const find = window.addButton(form.Command1);

    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);
    grid->addWidget(window.addLabel(form.startFolder, folder), 0, 0);
    grid->addWidget(folder, 0, 1);
    grid->addWidget(browse, 0, 2);
    grid->addWidget(window.addLabel(form.searchType, type), 1, 0);
    grid->addWidget(type, 1, 1);
    grid->addWidget(find, 1, 2);
    grid->addWidget(onlyMp3, 2, 1, 1, 2);
    window.content().addLayout(grid);

    auto* const results = new LineList(form.LFileList, &window);
    window.addControl(form.LFileList, results, u"Gefundene Dateien"_s);
    results->setMinimumSize(520, 240);
    window.content().addWidget(results, 1);
    QLabel* const progress = window.addStatus(form.progress);
    progress->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    window.content().addWidget(progress);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    for (QPushButton* button : {browse, help, cancel, ready})
        button->setAutoDefault(false);
    find->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({help}, {ready, cancel});
    folder->setFocus();
}

} // namespace orvantine
