#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Labels.h"
#include "desktop/qt/widgets/Surfaces.h"
#include "transfer/Kopieren.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

namespace {

constexpr int TextWidth = 320;

/// What tells of the files: the one on its way, the bar, how much is done and how long it takes.
void addFiles(FormWindow& window, Kopieren& form)
{
    auto* const file = new ControlLabel(form.LDatei, TextLabel::Weight::Normal, &window);
    window.addControl(form.LDatei, file, {});
    auto* const bar = new QProgressBar(&window);
    bar->setTextVisible(false);
    window.addControl(form.pFortschritt, bar, QStringLiteral("Fortschritt"));
    window.bindings().follow(form.pFortschritt.Max, [bar](int most) { bar->setMaximum(most); });
    window.bindings().follow(form.pFortschritt.Value, [bar](int value) { bar->setValue(value); });
    QLabel* const amount = window.addLabel(form.LMenge);
    amount->setWordWrap(false);
    QLabel* const speed = window.addLabel(form.LTempo);
    speed->setWordWrap(false);
    speed->setAlignment(Qt::AlignRight);
    auto* const numbers = new QHBoxLayout;
    numbers->addWidget(amount);
    numbers->addStretch();
    numbers->addWidget(speed);
    window.content().addWidget(file);
    window.content().addWidget(bar);
    window.content().addLayout(numbers);
}

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
    addFiles(window, form);
    window.content().addStretch();

    QLabel* const escape = window.addLabel(form.bEscTaste);
    escape->setWordWrap(false);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    window.setCancel(cancel);
    window.addButtons({escape}, {cancel});
    cancel->setFocus();
}

} // namespace orvantine
