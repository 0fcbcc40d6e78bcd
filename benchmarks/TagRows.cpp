#include "BenchDesktop.h"
#include "Measure.h"
#include "Syncs.h"

#include "desktop/qt/widgets/ReportList.h"
#include "metadata/ShowTrackInfo.h"
#include "metadata/mnuSetTagName.h"

#include <QApplication>
#include <QFile>

#include <mpegfile.h>

#include <malloc.h>
#include <unistd.h>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int Tracks = 10'000;
constexpr int DistinctTracks = 100;

/// 26 seconds at 128 kbit/s between a leading tag and one at the end.
QByteArray track(int number)
{
    QByteArray frame = QByteArray::fromHex("fffb9044");
    frame.resize(417, '\x11');
    QByteArray tag = "TAG" + ("Lied " + QByteArray::number(number)).leftJustified(30, '\0') +
                     QByteArray("Eine Band").leftJustified(30, '\0');
    return "ID3\3" + QByteArray::fromHex("000000000800") + QByteArray(1024, '\0') + frame.repeated(1000) +
           tag.leftJustified(127, '\0') + '\x11';
}

/// As many names, each hundredth of one file: a list of tracks that fits the disk.
QStringList layOutTracks(const QString& folder)
{
    QStringList paths = makeTracks(folder, Tracks);
    for (int i = 0; i < Tracks; ++i) {
        if (i < DistinctTracks) {
            layOut(paths[i], track(i));
            continue;
        }
        const QByteArray path = QFile::encodeName(paths[i]);
        ::unlink(path.constData());
        if (::link(QFile::encodeName(paths[i % DistinctTracks]).constData(), path.constData()) != 0)
            qFatal("a track could not be laid out");
    }
    return paths;
}

/// A database without names, beside a full catalogue behind them.
QByteArray unnamed()
{
    QByteArray text = "[TagInfo]\r\n[Index]\r\n";
    for (int row = 1; row <= 160; ++row)
        text +=
            u"%1a=%2\r\n%1b=Liste %1\r\n%1c=/daten/Playlisten/Liste %1.m3u\r\n%1d=14\r\n%1e=\r\n%1f=01.01.2026\r\n%1g=\r\n"_s
                .arg(row)
                .arg(row - 1, 3, 10, QLatin1Char('0'))
                .toUtf8();
    return text;
}

/// Bytes of the heap that are in use.
double heapInUse()
{
    return static_cast<double>(::mallinfo2().uordblks);
}

std::vector<Row> setTagNames()
{
    BenchDesktop desktop;
    const QStringList paths = layOutTracks(desktop.path(u"musik"_s));
    layOut(desktop.database(), unnamed());
    ListView& list = desktop.root.LListView2;
    for (const QString& path : paths)
        list.append({.Text = u"001"_s, .SubItems = {{.Text = {}}, {.Text = {}}, {.Text = path}, {.Text = {}}}});
    list.select(1);
    ShowTrackInfo(desktop.root, 1, 1);

    const auto nameAll = [&] { mnuSetTagName_Click(desktop.root); };
    const auto unname = [&] { layOut(desktop.database(), unnamed()); };
    nameAll();
    unname();
    const int syncs = syncsOf(nameAll);
    qsizetype length = 0;
    const double floor = medianMilliseconds(3, [&] {
        for (const QString& path : paths) {
            TagLib::MPEG::File file(QFile::encodeName(path).constData());
            length += file.tag()->title().size();
            length += file.audioProperties()->lengthInSeconds();
        }
        for (int sync = 0; sync < syncs; ++sync)
            syncLine(desktop.path(u"anhang"_s));
    });
    const double time = medianMilliseconds(3, nameAll, unname);
    if (length == 0 || list.subItem(Tracks, 2) != u"Eine Band - Lied %1"_s.arg((Tracks - 1) % DistinctTracks))
        qFatal("the tracks were not named");

    // Everything is named by now: what a further pass leaves behind is lost.
    // The pretended desktop notes its calls: that is not the program's memory.
    nameAll();
    desktop.log.take();
    const double before = heapInUse();
    nameAll();
    desktop.log.take();
    const double grown = (heapInUse() - before) / 1024;

    for (const QString& column : {u"ID"_s, u"Track"_s, u"Name"_s, u"Path"_s, u"Datei"_s})
        list.addColumn(column, 3000);
    ReportList view(list);
    view.resize(900, 600);
    view.show();
    QApplication::processEvents();
    const auto nameInSight = [&] {
        nameAll();
        QApplication::processEvents();
    };
    const double seen = medianMilliseconds(3, nameInSight, unname);
    return {{u"mnuSetTagName over 10,000 tracks"_s + told(syncs), u"ms"_s, time, floor, 1.5, true},
            {u"mnuSetTagName over 10,000 tracks in a view"_s, u"ms"_s, seen, time, 1.2, true},
            {u"memory that a pass of mnuSetTagName leaves behind"_s, u"KB"_s, grown, std::nullopt, 16, false}};
}

} // namespace

std::vector<Row> tagRows()
{
    return setTagNames();
}

} // namespace orvantine::bench
