#include "app/Direkthilfe.h"
#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Emblem.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

namespace {

constexpr int TextWidth = 400;

} // namespace

void buildDirekthilfe(FormWindow& window)
{
    auto& form = static_cast<Direkthilfe&>(window.form());

    auto* const heading = new QLabel(&window);
    heading->setTextFormat(Qt::PlainText);
    heading->setWordWrap(true);
    QFont large = window.font();
    large.setBold(true);
    large.setPointSizeF(large.pointSizeF() * 1.3);
    heading->setFont(large);
    window.bindings().follow(form.Caption, [heading](const QString& caption) {
        heading->setText(caption.section(u'\r', 1));
        heading->setVisible(!heading->text().isEmpty());
    });

    QLabel* const text = window.addLabel(form.RText);
    text->setMinimumWidth(TextWidth);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // The window never is narrower, so the text is seen to its end.
    text->setMinimumHeight(text->heightForWidth(TextWidth));
    form.RText.Height = twipsOf(text->heightForWidth(TextWidth));
    QLabel* const number = window.addLabel(form.RHelpID);
    number->setEnabled(false);
    number->setAlignment(Qt::AlignRight | Qt::AlignTop);

    auto* const problem = new QHBoxLayout;
    problem->addWidget(window.addLabel(form.RProblem), 1);
    problem->addWidget(number);
    auto* const texts = new QVBoxLayout;
    texts->setSpacing(8);
    texts->addWidget(heading);
    texts->addLayout(problem);
    texts->addWidget(text);
    texts->addStretch(1);
    texts->addWidget(window.addCheckBox(form.BHelpShow));
    texts->addWidget(window.addCheckBox(form.BHelpDisabled));

    auto* const row = new QHBoxLayout;
    row->setSpacing(20);
    auto* const picture = new Emblem(64, &window);
    picture->setObjectName(form.Picture.fullName());
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    window.content().addLayout(row, 1);

    QPushButton* const ready = window.addButton(form.BReady);
    ready->setDefault(true);
    ready->setFocus();
    // However it is closed, the command goes on.
    window.setCancel(ready);
    window.addButtons({}, {ready});
    window.bindings().follow(form.Height, [&window](Twips height) { window.setMinimumHeight(pixelsOf(height)); });
}

} // namespace orvantine
