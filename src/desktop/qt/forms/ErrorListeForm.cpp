#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/ReportList.h"
#include "search/ErrorListe.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

void buildErrorListe(FormWindow& window)
{
    auto& form = static_cast<ErrorListe&>(window.form());

    window.content().addWidget(window.addLabel(form.LHinweis));
    auto* const lines = new ReportList(form.LErrorView, &window);
    lines->setAccessibleName(u"Fehlende Dateien"_s);
    lines->setMinimumSize(720, 280);
    window.content().addWidget(lines, 1);
    QLabel* const meaning = window.addLabel(form.LFehler);
    meaning->setMinimumHeight(meaning->fontMetrics().lineSpacing());
    window.content().addWidget(meaning);
    QLabel* const count = window.addLabel(form.LAnzahl);
    QFont bold = window.font();
    bold.setBold(true);
    count->setFont(bold);
    window.content().addWidget(count);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const close = window.addButton(form.bAbbrechen);
    QPushButton* const help = window.addButton(form.bHilfe);
    ready->setAutoDefault(false);
    help->setAutoDefault(false);
    close->setDefault(true);
    window.setCancel(close);
    window.addButtons({help}, {ready, close});
    lines->setFocus();
}

} // namespace orvantine
