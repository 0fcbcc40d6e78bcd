#include "Measure.h"

#include "desktop/qt/widgets/ReportList.h"
#include "platform/ListView.h"

#include <QApplication>
#include <QPixmap>
#include <QScrollBar>
#include <QTreeView>

#include <algorithm>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds of the slowest of 200 steps through the whole list, drawing included.
double slowestScroll(QTreeView& view)
{
    constexpr int Steps = 200;
    view.resize(900, 600);
    view.show();
    QApplication::processEvents();
    QScrollBar* const bar = view.verticalScrollBar();
    double slowest = 0;
    for (int step = 0; step < Steps; ++step) {
        const double time = medianMilliseconds(1, [&] {
            bar->setValue(static_cast<int>(static_cast<qint64>(bar->maximum()) * step / Steps));
            (void)view.grab(); // draws whether the window is seen or not
        });
        slowest = std::max(slowest, time);
    }
    return slowest;
}

} // namespace

std::vector<Row> viewRows()
{
    constexpr int Rows = 100'000;
    ControlSet controls;
    ListView list(controls, u"LListView2");
    for (const QString& column : {u"ID"_s, u"Track"_s, u"Name"_s, u"Path"_s, u"Datei"_s})
        list.addColumn(column, column == u"ID"_s ? 0 : 3000);
    {
        const ListView::Batch together(list);
        for (int row = 1; row <= Rows; ++row) {
            ListItem item;
            item.Text = QString::number(row + 100);
            item.SmallIcon = u"Icon_2"_s;
            item.SubItems = {{.Text = QString::number(row), .ReportIcon = u"Icon_2"_s},
                             {.Text = u"Eine Band - Lied "_s + QString::number(row)},
                             {.Text = u"/musik/Album/Lied %1.mp3"_s.arg(row)},
                             {.Text = u"Lied %1.mp3"_s.arg(row)}};
            list.append(std::move(item));
        }
    }
    ReportList view(list);
    const double slowest = slowestScroll(view);
    QTreeView bare;
    bare.setUniformRowHeights(true);
    bare.setModel(&list);
    const double floor = slowestScroll(bare);
    return {{u"slowest of 200 scrolls over 100,000 rows"_s, u"ms"_s, slowest, floor, 33, false}};
}

} // namespace orvantine::bench
