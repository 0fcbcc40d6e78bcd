#include "Measure.h"
#include "desktop/media/MpvEngine.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <clocale>
#include <cstdio>

namespace {

/// The floor of the starts: an empty window, told like the program's own.
int showBareWindow()
{
    QWidget window;
    window.resize(900, 600);
    window.show();
    QTimer::singleShot(0, [] { std::fputs("window visible\n", stderr); });
    return QApplication::exec();
}

/// The floor of playing: the player library in an event loop, one track.
int playBare(const QByteArray& track)
{
    std::setlocale(LC_NUMERIC, "C");
    orvantine::MpvEngine engine({}, [](const orvantine::MpvNews&) {});
    if (!engine.start())
        return 1;
    engine.load(track, 1);
    return QApplication::exec();
}

} // namespace

/// Prints one row per speed or memory target; 1 if one falls short.
int main(int argc, char** argv)
{
    using namespace orvantine::bench;
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (argc == 2 && QByteArrayView(argv[1]) == "--bare-window")
        return showBareWindow();
    if (argc == 3 && QByteArrayView(argv[1]) == "--bare-player")
        return playBare(argv[2]);
    std::vector<Row> rows = catalogueRows();
    for (const auto& more : {checkRows(), searchRows(), tagRows(), transferRows(), viewRows(), programRows()})
        rows.insert(rows.end(), more.begin(), more.end());
    print(rows);
    return std::all_of(rows.begin(), rows.end(), [](const Row& row) { return row.holds(); }) ? 0 : 1;
}
