#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Theme.h"
#include "transfer/Trackcopy.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int IconSize = 32;

} // namespace

void buildTrackcopy(FormWindow& window)
{
    auto& form = static_cast<Trackcopy&>(window.form());

    auto* const icon = new QLabel(&window);
    icon->setPixmap(Theme::listIcon(u"Icon_2"_s).pixmap(IconSize));
    QLabel* const track = window.addLabel(form.tTrackname);
    QFont heading = window.font();
    heading.setBold(true);
    heading.setPointSizeF(heading.pointSizeF() * 1.2);
    track->setFont(heading);
    auto* const head = new QHBoxLayout;
    head->setSpacing(12);
    head->addWidget(icon, 0, Qt::AlignTop);
    head->addWidget(track, 1);
    window.content().addLayout(head);
    window.content().addWidget(window.addLabel(form.LHinweis));

    QListWidget* const lists = window.addListBox(form.LListen, u"Wiedergabelisten"_s);
    lists->setMinimumSize(360, 220);
    window.content().addWidget(lists, 1);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({}, {ready, cancel});
    lists->setFocus();
}

} // namespace orvantine
