#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Emblem.h"
#include "desktop/qt/widgets/Surfaces.h"
#include "shell/Dialoge.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int PageWidth = 440;

QVBoxLayout* addPage(QStackedWidget& pages, PictureBox& control)
{
    auto* const page = new QWidget(&pages);
    page->setObjectName(control.fullName());
    page->setMinimumWidth(PageWidth);
    auto* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    pages.addWidget(page);
    return layout;
}

void fillGreeting(FormWindow& window, Dialoge& form, QVBoxLayout* layout)
{
    auto* const title = new QLabel(u"Herzlich willkommen"_s, &window);
    title->setTextFormat(Qt::PlainText);
    QFont heading = window.font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.4);
    title->setFont(heading);
    layout->addWidget(title);
    layout->addWidget(window.addLabel(form.RCaption));
    layout->addStretch();
    layout->addWidget(window.addCheckBox(form.tips));
}

void fillFolder(FormWindow& window, Dialoge& form, QVBoxLayout* layout)
{
    QLineEdit* const folder = window.addTextBox(form.tOrdner, u"Ordner"_s);
    auto* const row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(window.addLabel(form.LOrdner, folder));
    row->addWidget(folder, 1);
    row->addWidget(window.addButton(form.bOrdner));
    layout->addWidget(window.addLabel(form.RHinweis));
    layout->addLayout(row);
    layout->addWidget(window.addCheckBox(form.bSubDir));
    layout->addWidget(window.addCheckBox(form.bSndfiles));
    layout->addStretch();
    layout->addWidget(window.addStatus(form.refusal));
    window.bindings().follow(form.page, [folder](int page) {
        if (page == Dialoge::Folder)
            folder->setFocus();
    });
}

void fillWork(FormWindow& window, Dialoge& form, QVBoxLayout* layout)
{
    auto* const spinner = new Spinner(&window);
    window.bindings().follow(form.working, [spinner](bool working) {
        spinner->setRunning(working);
        spinner->setVisible(working);
    });
    QListWidget* const found = window.addListBox(form.LFindDir, u"Hinzugefügte Wiedergabelisten"_s);
    found->setMinimumHeight(90);
    window.bindings().follow(form.LFindDir.List, [found](const QStringList& lines) {
        found->setVisible(!lines.isEmpty());
        found->scrollToBottom();
    });
    layout->addWidget(window.addLabel(form.Label1));
    layout->addWidget(spinner, 0, Qt::AlignHCenter);
    layout->addWidget(window.addStatus(form.progress));
    layout->addWidget(found, 1);
    layout->addWidget(window.addCheckBox(form.play));
    layout->addWidget(window.addLabel(form.Label2));
    layout->addStretch();
}

} // namespace

void buildDialoge(FormWindow& window)
{
    auto& form = static_cast<Dialoge&>(window.form());
    auto* const pages = new QStackedWidget(&window);
    fillGreeting(window, form, addPage(*pages, form.Picture[1]));
    fillFolder(window, form, addPage(*pages, form.Picture[2]));
    fillWork(window, form, addPage(*pages, form.Picture[3]));
    window.bindings().follow(form.page, [pages](int page) { pages->setCurrentIndex(page); });

    auto* const row = new QHBoxLayout;
    row->setSpacing(20);
    auto* const emblem = new Emblem(112, &window);
    emblem->setObjectName(form.Picture[0].fullName());
    row->addWidget(emblem, 0, Qt::AlignTop);
    row->addWidget(pages, 1);
    window.content().addLayout(row, 1);

    QPushButton* const cancel = window.addButton(form.bButton[0]);
    QPushButton* const back = window.addButton(form.bButton[1]);
    QPushButton* const next = window.addButton(form.bButton[2]);
    next->setDefault(true);
    next->setFocus();
    for (QPushButton* button : {cancel, back})
        button->setAutoDefault(false);
    window.setCancel(cancel, FormWindow::NoCancel::Goes);
    window.addButtons({}, {back, next, cancel});
    window.setMinimumSize(640, 360);
}

} // namespace orvantine
