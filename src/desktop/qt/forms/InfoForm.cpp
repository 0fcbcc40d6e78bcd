#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Emblem.h"
#include "shell/Info.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

void buildInfo(FormWindow& window)
{
    auto& form = static_cast<Info&>(window.form());

    auto* const name = window.addLabel(form.RName);
    QFont heading = window.font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.5);
    name->setFont(heading);

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(4);
    texts->addWidget(name);
    texts->addWidget(window.addLabel(form.RVersion));
    texts->addSpacing(10);
    auto* const about = window.addLabel(form.RWerbung);
    about->setMinimumWidth(330);
    texts->addWidget(about);
    texts->addSpacing(10);
    auto* const contact = window.addLabel(form.RContact);
    contact->setTextInteractionFlags(Qt::TextSelectableByMouse);
    texts->addWidget(contact);
    texts->addStretch();

    auto* const row = new QHBoxLayout;
    row->setSpacing(20);
    row->addWidget(new Emblem(112, &window), 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    window.content().addLayout(row, 1);

    QPushButton* const mail = window.addButton(form.BMail);
    QPushButton* const page = window.addButton(form.BWebseite);
    QPushButton* const cancel = window.addButton(form.BAbbrechen);
    cancel->setDefault(true);
    cancel->setFocus();
    window.setCancel(cancel);
    window.addButtons({mail, page}, {cancel});
    window.layout()->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace orvantine
