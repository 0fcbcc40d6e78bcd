#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Surfaces.h"
#include "transfer/Kopieren.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

namespace {

constexpr int TextWidth = 320;

} // namespace

void buildKopieren(FormWindow& window)
{
    auto& form = static_cast<Kopieren&>(window.form());

    auto* const spinner = new Spinner(&window);
    spinner->setObjectName(form.pAnimations.fullName());
    window.bindings().follow(form.pAnimations.Running, [spinner](bool running) { spinner->setRunning(running); });
    QLabel* const text = window.addStatus(form.Label2);
    text->setMinimumWidth(TextWidth);
    auto* const row = new QHBoxLayout;
    row->setSpacing(16);
    row->addWidget(spinner, 0, Qt::AlignTop);
    row->addWidget(text, 1);
    window.content().addLayout(row);
    window.content().addStretch();

    QLabel* const escape = window.addLabel(form.bEscTaste);
    escape->setWordWrap(false);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    window.setCancel(cancel);
    window.addButtons({escape}, {cancel});
    cancel->setFocus();
}

} // namespace orvantine
