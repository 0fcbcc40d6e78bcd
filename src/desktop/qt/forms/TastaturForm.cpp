#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "shell/Tastatur.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Key and text in two columns, which a screen reader tells cell by cell.
QTreeWidget* addKeys(FormWindow& window, ListBox& control, const QString& name)
{
    auto* const table = new QTreeWidget(&window);
    table->setHeaderLabels({u"Taste"_s, u"Wirkung"_s});
    table->setRootIsDecorated(false);
    table->setUniformRowHeights(true);
    table->setAlternatingRowColors(true);
    for (const QString& line : control.List.value()) {
        auto* const row = new QTreeWidgetItem(table, line.split(u'\t'));
        row->setData(0, Qt::AccessibleTextRole, QString(line).replace(u"\t"_s, u": "_s));
    }
    if (table->topLevelItemCount() > 0)
        table->setCurrentItem(table->topLevelItem(0));
    table->header()->setSectionsMovable(false);
    table->resizeColumnToContents(0);
    table->resizeColumnToContents(1);
    window.addControl(control, table, name);
    const int rows = table->sizeHintForRow(0) * (table->topLevelItemCount() + 1);
    table->setMinimumHeight(rows + table->header()->sizeHint().height() / 2);
    table->setMinimumWidth(table->columnWidth(0) + table->columnWidth(1) + 40);
    return table;
}

QLabel* addHeading(FormWindow& window, Label& control, QWidget* table)
{
    QLabel* const heading = window.addLabel(control, table);
    QFont bold = window.font();
    bold.setBold(true);
    heading->setFont(bold);
    return heading;
}

} // namespace

void buildTastatur(FormWindow& window)
{
    auto& form = static_cast<Tastatur&>(window.form());
    QTreeWidget* const keys = addKeys(window, form.LKeys, form.LHeading.Caption);
    QTreeWidget* const more = addKeys(window, form.LMoreKeys, form.LMoreHeading.Caption);
    auto* const columns = new QHBoxLayout;
    columns->setSpacing(16);
    for (const auto& [heading, table] : {std::pair{&form.LHeading, keys}, std::pair{&form.LMoreHeading, more}}) {
        auto* const column = new QVBoxLayout;
        column->addWidget(addHeading(window, *heading, table));
        column->addWidget(table, 1);
        columns->addLayout(column, 1);
    }
    window.content().addLayout(columns, 1);
    QPushButton* const close = window.addButton(form.bAbbrechen);
    close->setDefault(true);
    window.setCancel(close);
    window.addButtons({}, {close});
    keys->setFocus();
}

} // namespace orvantine
