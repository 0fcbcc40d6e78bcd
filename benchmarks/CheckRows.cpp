#include "BenchDesktop.h"
#include "Measure.h"
#include "Syncs.h"

#include "catalogue/CatalogueEntry.h"
#include "search/ErrorListe.h"
#include "search/FolderCheck.h"

#include <QElapsedTimer>
#include <QFile>

#include <algorithm>

#include <sys/stat.h>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int TracksOfList = 1000;

/// A full catalogue of lists with 1,000 tracks each.
void layOutCatalogue(BenchDesktop& desktop, const QStringList& tracks)
{
    QByteArray index = "[Index]\r\n";
    for (int number = 1; number <= MostPlaylists; ++number) {
        const QString list = desktop.path(u"data/Playlisten/Liste %1.m3u"_s.arg(number));
        const QStringList own = tracks.mid((number - 1) * TracksOfList % tracks.size(), TracksOfList);
        layOut(list, own.join(u"\r\n"_s).toUtf8() + "\r\n\r\n");
        index += u"%1b=Liste %1\r\n%1c=%2\r\n%1f=01.01.2026\r\n"_s.arg(number).arg(list).toUtf8();
    }
    layOut(desktop.database(), index);
}

Row listFaults()
{
    BenchDesktop desktop;
    const QStringList tracks = makeTracks(desktop.path(u"musik"_s), 32'000);
    layOutCatalogue(desktop, tracks);
    QFile::remove(tracks.first());
    ErrorListe& form = *desktop.root.errorListe;
    int faults = 0;
    const double time = medianMilliseconds(
        5, [&] { form.Load(); }, [&] { faults = form.LErrorView.count(); });
    if (faults == 0)
        qFatal("no fault was found");
    qsizetype found = 0;
    const double floor = medianMilliseconds(5, [&] {
        for (int look = 0; look < MostPlaylists * TracksOfList; ++look) {
            struct stat status = {};
            if (::stat(QFile::encodeName(tracks[look % tracks.size()]).constData(), &status) == 0)
                ++found;
        }
    });
    if (found == 0)
        qFatal("no track was found");
    return {u"list the faults of 160,000 tracks"_s, u"ms"_s, time, floor, 500, false};
}

/// Up to the box that tells the count: the reload behind it is another row.
Row remapFolders()
{
    constexpr int Runs = 5;
    BenchDesktop desktop;
    QStringList tracks;
    for (int track = 0; track < TracksOfList; ++track)
        tracks += u"/musik/archiv/Album %1/Ein Lied mit Namen %2.mp3"_s.arg(track / 10).arg(track);
    layOutCatalogue(desktop, tracks);
    desktop.root.mnuErrorDisplay.Checked = false;
    FolderCheck& form = *desktop.root.folderCheck;
    std::vector<double> times;
    int syncs = 0;
    for (int run = 0; run <= Runs; ++run) {
        QElapsedTimer clock;
        desktop.messages.answer(Answer::No);
        desktop.messages.script({Answer::Ok, {}, {}, {}, [&] {
                                     if (run > 0)
                                         times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
                                 }});
        desktop.forms.whileModal(u"FolderCheck"_s, [&](Form&) {
            form.tFolderOld.Text = run % 2 == 0 ? u"/musik/archiv"_s : u"/klang/sammlung"_s;
            form.tFolderNew.Text = run % 2 == 0 ? u"/klang/sammlung"_s : u"/musik/archiv"_s;
            clock.start();
            syncs = syncsOf([&form] { form.BReady.Click(); });
        });
        desktop.root.mnuFolderCheck.Click();
    }
    if (times.size() != Runs)
        qFatal("the folders were not re-mapped");
    std::sort(times.begin(), times.end());
    QList<QByteArray> texts;
    for (int number = 1; number <= MostPlaylists; ++number)
        texts += tracks.join(u"\r\n"_s).toUtf8();
    const double floor = medianMilliseconds(Runs, [&] {
        for (int number = 1; number <= MostPlaylists; ++number)
            layOut(desktop.path(u"anhang %1"_s.arg(number)), texts[number - 1]);
        for (int sync = 0; sync < syncs; ++sync)
            syncLine(desktop.path(u"anhang %1"_s.arg(sync % MostPlaylists + 1)));
    });
    return {u"re-map 160 lists of 1,000 tracks"_s + told(syncs), u"ms"_s, times[Runs / 2], floor, 150, false};
}

} // namespace

std::vector<Row> checkRows()
{
    return {listFaults(), remapFolders()};
}

} // namespace orvantine::bench
