#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/SortList.h"
#include "desktop/qt/widgets/Theme.h"
#include "operations/Positionen.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize LeastSize{560, 440};

} // namespace

void buildPositionen(FormWindow& window)
{
    auto& form = static_cast<Positionen&>(window.form());

    QLabel* const hint = window.addLabel(form.sHilfe);
    SortList* const list = window.addSortList(form.LSortView, u"Reihenfolge der Playlisten"_s);
    QLabel* const count = window.addLabel(form.sPlaylisten);
    QPalette dim = count->palette();
    dim.setColor(QPalette::WindowText, Theme::dimText(dim));
    count->setPalette(dim);
    window.content().addWidget(hint);
    window.content().addWidget(list, 1);
    window.content().addWidget(count);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({help}, {ready, cancel});
    list->setFocus();
    window.setMinimumSize(LeastSize);
}

} // namespace orvantine
