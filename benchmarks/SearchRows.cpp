#include "BenchDesktop.h"
#include "Measure.h"

#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuLaden.h"
#include "search/FindAudio.h"
#include "search/IndexFiles.h"
#include "search/Suchen.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int Runs = 3;
constexpr int TracksOfList = 1000;

/// A full catalogue of lists with 1,000 tracks each, over 32,000 files that are there.
class SearchDesktop : public BenchDesktop
{
public:
    SearchDesktop()
    {
        const QStringList tracks = makeTracks(path(u"musik"_s), 32'000);
        QByteArray index = "[Index]\r\n";
        for (int number = 1; number <= MostPlaylists; ++number) {
            lists += path(u"data/Playlisten/Liste %1.m3u"_s.arg(number));
            const QStringList own = tracks.mid((number - 1) * TracksOfList % tracks.size(), TracksOfList);
            layOut(lists.last(), own.join(u"\r\n"_s).toUtf8() + "\r\n\r\n");
            index +=
                u"%1b=Liste %1\r\n%1c=%2\r\n%1d=1000\r\n%1f=01.01.2026\r\n"_s.arg(number).arg(lists.last()).toUtf8();
        }
        layOut(database(), index);
        mnuLaden_Click(root);
        root.Visible = true;
        root.mnuErrorDisplay.Checked = false;
    }

    /// What any walk over the lists does at least: reads them and looks whether each track is there.
    void readAll() const
    {
        qsizetype found = 0;
        for (const QString& list : lists) {
            QFile file(list);
            if (!file.open(QIODevice::ReadOnly))
                qFatal("a list could not be read");
            for (const QByteArray& line : file.readAll().split('\n'))
                if (!line.trimmed().isEmpty() && QFile::exists(QString::fromUtf8(line.trimmed())))
                    ++found;
        }
        if (found != MostPlaylists * TracksOfList)
            qFatal("not every track was found");
    }

    QStringList lists;
};

void searchInVain(SearchDesktop& desktop)
{
    Suchen& form = *desktop.root.suchen;
    desktop.messages.answer(Answer::Ok);
    form.Text1.Text = u"nirgends zu finden"_s;
    form.Text1.Change();
    form.CSuchen.Click();
    if (desktop.messages.take().size() != 1)
        qFatal("the search did not end with its box");
}

std::vector<Row> search()
{
    SearchDesktop desktop;
    if (!desktop.root.mnuSuchen.press())
        qFatal("the search did not open");
    const double time = medianMilliseconds(Runs, [&] { searchInVain(desktop); });
    const double floor = medianMilliseconds(Runs, [&] { desktop.readAll(); });
    return {{u"full search in vain through 160,000 tracks"_s, u"ms"_s, time, floor, 1000, false},
            longestWait(desktop.events, [&] { searchInVain(desktop); })};
}

std::vector<Row> indexRun()
{
    SearchDesktop desktop;
    const auto run = [&] {
        desktop.root.Tag = u"0"_s;
        SetIndexFile(desktop.root);
    };
    const double time = medianMilliseconds(Runs, run);
    const double floor = medianMilliseconds(Runs, [&] { desktop.readAll(); });
    return {{u"index of 160,000 tracks"_s, u"ms"_s, time, floor, 1000, false}, longestWait(desktop.events, run)};
}

/// 2,500 folders on three levels with 20 tracks each.
void makeTree(const QString& folder)
{
    constexpr int Outer = 50;
    constexpr int Inner = 49;
    constexpr int Files = 20;
    for (int outer = 0; outer < Outer; ++outer)
        for (int inner = 0; inner <= Inner; ++inner) {
            QString path = u"%1/Band %2"_s.arg(folder).arg(outer);
            if (inner > 0)
                path += u"/Album %1"_s.arg(inner);
            QDir().mkpath(path);
            for (int file = 0; file < Files; ++file)
                layOut(u"%1/Lied %2.mp3"_s.arg(path).arg(file), {});
        }
}

std::vector<Row> scan()
{
    BenchDesktop desktop;
    mnuLaden_Click(desktop.root);
    desktop.root.Visible = true;
    const QString folder = desktop.path(u"sammlung"_s);
    makeTree(folder);
    constexpr qsizetype Files = 50'000;
    FindAudio& form = *desktop.root.findAudio;
    form.TDrives.Text = folder;
    form.LFindType.ListIndex = FindAudio::NamesAndFolders;
    form.bOnlyAudio.Value = true;
    const auto scanned = [&] {
        form.Command1.Click();
        if (form.LFileList.List.value().size() != Files)
            qFatal("not every track was found");
    };
    const double time = medianMilliseconds(Runs, scanned);
    qsizetype found = 0;
    const double floor = medianMilliseconds(Runs, [&] {
        QDirIterator walk(folder, {u"*.mp3"_s}, QDir::Files, QDirIterator::Subdirectories);
        for (found = 0; walk.hasNext(); ++found)
            walk.next();
    });
    if (found != Files)
        qFatal("the plain walk did not find every track");
    return {{u"scan of 50,000 files in 2,500 folders"_s, u"ms"_s, time, floor, 1.5, true},
            longestWait(desktop.events, scanned)};
}

} // namespace

std::vector<Row> searchRows()
{
    std::vector<Row> rows;
    for (const std::vector<Row>& more : {search(), indexRun(), scan()})
        rows.insert(rows.end(), more.begin(), more.end());
    return rows;
}

} // namespace orvantine::bench
