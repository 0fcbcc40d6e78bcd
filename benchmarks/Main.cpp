#include "Measure.h"

#include <QApplication>

#include <algorithm>

/// Prints one row per speed or memory target; 1 if one falls short.
int main(int argc, char** argv)
{
    using namespace orvantine::bench;
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    std::vector<Row> rows = catalogueRows();
    for (const auto& more : {tagRows(), viewRows(), programRows()})
        rows.insert(rows.end(), more.begin(), more.end());
    print(rows);
    return std::all_of(rows.begin(), rows.end(), [](const Row& row) { return row.holds(); }) ? 0 : 1;
}
