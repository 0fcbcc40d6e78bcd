#include "BenchDesktop.h"
#include "Measure.h"
#include "Syncs.h"

#include "app/IniFiles.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuL_schen.h"
#include "catalogue/mnuLaden.h"
#include "catalogue/mnuSpeichern.h"
#include "operations/mnuFileKill.h"
#include "operations/mnuMoveEntry.h"
#include "operations/mnuSortierung.h"
#include "operations/mnuVerschiebung.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/mnuAddSounds.h"
#include "transfer/FolderDialogs.h"

#include <QDir>
#include <QFile>
#include <QHash>

#include <dirent.h>
#include <sys/stat.h>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int TagKeys = 100'000;
constexpr int ManyTracks = 32'767;

void addRow(Root& root, const QString& name, const QString& path)
{
    ListItem row;
    row.Text = u"000"_s;
    row.SubItems = {{.Text = name}, {.Text = path}, {.Text = u"0"_s}};
    root.LListView1.append(std::move(row));
}

Row openLargeList()
{
    BenchDesktop desktop;
    const QStringList tracks = makeTracks(desktop.path(u"musik"_s), ManyTracks);
    const QString list = desktop.path(u"data/Playlisten/Alles.m3u"_s);
    layOut(list, tracks.join(u"\r\n"_s).toUtf8() + "\r\n");
    layOut(desktop.database(), tagInfoSection(TagKeys, tracks) + "[Index]\r\n1b=Alles\r\n1f=01.01.2026\r\n");
    addRow(desktop.root, u"Alles"_s, list);
    desktop.root.LListView1.select(1);

    QHash<QString, QString> names;
    for (const QString& track : tracks)
        names.insert(track, u"Eine Band - Lied"_s);
    qsizetype found = 0;
    const double floor = medianMilliseconds(5, [&] {
        QFile file(list);
        if (!file.open(QIODevice::ReadOnly))
            return;
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u"\r\n"_s);
        for (const QString& line : lines) {
            struct stat status = {};
            if (::stat(QFile::encodeName(line).constData(), &status) == 0)
                found += names.value(line).size();
        }
    });
    const double open = medianMilliseconds(5, [&] {
        QString path = list;
        GetPlayEntrys(desktop.root, path);
    });
    if (desktop.root.LListView2.count() != ManyTracks || found == 0)
        qFatal("the large list was not opened");
    return {u"open 32,767 tracks in 300 folders, 100,000 TagInfo keys"_s, u"ms"_s, open, floor, 3, true};
}

/// Opens the file and puts lines at its end, one write each.
void appendLines(const QString& path, const QList<QByteArray>& lines)
{
    QFile file(path);
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered))
        qFatal("the file cannot be opened");
    for (const QByteArray& line : lines)
        file.write(line);
}

/// Names of a folder, a look at each, and one line a name at the end of a file.
void listLookAndAppend(const QByteArray& folder, const QString& target)
{
    QList<QByteArray> lines;
    DIR* const listing = ::opendir(folder.constData());
    if (listing == nullptr)
        qFatal("the folder cannot be read");
    while (const dirent* entry = ::readdir(listing)) {
        const QByteArray path = folder + '/' + entry->d_name;
        struct stat status = {};
        if (::stat(path.constData(), &status) == 0 && S_ISREG(status.st_mode))
            lines.append(path + "\r\n");
    }
    ::closedir(listing);
    appendLines(target, lines);
}

Row addFolder()
{
    constexpr int NewFiles = 10'000;
    BenchDesktop desktop;
    const QString folder = desktop.path(u"neu"_s);
    QDir().mkpath(folder);
    for (int file = 0; file < NewFiles; ++file)
        layOut(u"%1/%2 - Ein Lied mit Namen.mp3"_s.arg(folder).arg(file, 5, 10, QLatin1Char('0')), {});
    const QString list = desktop.path(u"data/Playlisten/Liste.m3u"_s);
    layOut(desktop.database(), "[Index]\r\n1b=Liste\r\n1f=01.01.2026\r\n");
    addRow(desktop.root, u"Liste"_s, list);
    desktop.root.LListView1.select(1);
    // The list is empty each time.
    const auto prepare = [&] {
        QFile::remove(list);
        layOut(list, {});
        QString path = list;
        GetPlayEntrys(desktop.root, path);
        desktop.forms.whileModal(u"Ordner"_s, [&folder](Form& form) {
            auto& dialog = static_cast<Ordner&>(form);
            dialog.LTreeview.SelectedFolder = folder;
            dialog.LTreeview.Change();
            dialog.BReady.Click();
        });
    };
    const double time = medianMilliseconds(
        9, [&desktop] { mnuAddSounds_Click(desktop.root); }, prepare);
    if (desktop.root.LListView2.count() != NewFiles)
        qFatal("the folder was not added");
    const QString target = desktop.path(u"anhang"_s);
    const double floor = medianMilliseconds(
        9, [&] { listLookAndAppend(QFile::encodeName(folder), target); }, [&target] { layOut(target, {}); });
    return {u"add a folder of 10,000 files to a list"_s, u"ms"_s, time, floor, 2, true};
}

Row saveCatalogue()
{
    BenchDesktop desktop;
    layOut(desktop.database(), tagInfoSection(TagKeys, {}) + "[Index]\r\n");
    for (int row = 1; row <= MostPlaylists; ++row)
        addRow(desktop.root, u"Liste %1"_s.arg(row), desktop.path(u"data/Playlisten/Liste %1.m3u"_s.arg(row)));
    const auto save = [&desktop] {
        // A full catalogue is told at each save.
        desktop.messages.answer(Answer::Ok);
        mnuSpeichern_Click(desktop.root);
    };
    save();
    int run = 0;
    const double time = medianMilliseconds(
        9, save, [&] { desktop.root.LListView1.setSubItem(1, 1, u"Liste mit Namen %1"_s.arg(++run)); });

    const int syncs = syncsOf(save);
    const double floor = savingFloor(desktop.database(), syncs);
    return {u"whole save of 160 rows, 100,000 TagInfo keys"_s + told(syncs), u"ms"_s, time, floor, 2, true};
}

Row readValue()
{
    constexpr int Reads = 20'000;
    BenchDesktop desktop;
    layOut(desktop.database(), tagInfoSection(TagKeys, {}));
    QStringList keys;
    QHash<QString, QString> table;
    for (int i = 0; i < Reads; ++i) {
        keys.append(u"/musik/archiv/Album/Lied %1.mp3"_s.arg(i * 5));
        table.insert(keys.back(), u"Eine Band - Lied"_s);
    }
    const QString database = desktop.database();
    qsizetype length = 0;
    const double time = medianMilliseconds(9, [&] {
        for (const QString& key : keys)
            length += IniFiles::ReadValue(desktop.root, database, u"TagInfo"_s, key).size();
    });
    const QByteArray native = QFile::encodeName(database);
    const double floor = medianMilliseconds(9, [&] {
        for (const QString& key : keys) {
            struct stat status = {};
            if (::stat(native.constData(), &status) == 0)
                length += table.value(key).size();
        }
    });
    if (length == 0)
        qFatal("no value was read");
    return {u"one ReadValue from the cache"_s, u"us"_s, time * 1000 / Reads, floor * 1000 / Reads, 2, false};
}

Row writeValue()
{
    constexpr int Writes = 20;
    BenchDesktop desktop;
    const QByteArray text = tagInfoSection(160'000, {}) + "[Index]\r\n";
    layOut(desktop.database(), text);
    int number = 0;
    const auto write = [&] {
        for (int i = 0; i < Writes; ++i)
            IniFiles::WriteValue(desktop.root, desktop.database(), u"TagInfo"_s,
                                 u"/musik/archiv/Album/Lied %1.mp3"_s.arg(i * 5000 + 1),
                                 u"Band - Lied "_s + QString::number(++number));
    };
    const double time = medianMilliseconds(5, write);
    const int syncs = syncsOf(write) / Writes;
    // On average half of the file lies behind the key.
    const QString bare = desktop.path(u"bloss"_s);
    layOut(bare, text);
    const double floor = medianMilliseconds(5, [&] {
        for (int i = 0; i < Writes; ++i) {
            QFile file(bare);
            if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) || !file.seek(text.size() / 2))
                qFatal("the file cannot be opened");
            file.write(text.last(text.size() / 2));
            for (int sync = 0; sync < syncs; ++sync)
                syncLine(bare);
        }
    });
    return {
        u"one WriteValue of a key in a 10 MB file"_s + told(syncs), u"ms"_s, time / Writes, floor / Writes, 10, false};
}

/// A full catalogue on the disk and in the list, beside many keys of other sections.
void layOutFullCatalogue(BenchDesktop& desktop)
{
    const QString list = desktop.path(u"data/Playlisten/Liste.m3u"_s);
    layOut(list, "lied.mp3\r\n\r\n");
    QByteArray index = "[Index]\r\n";
    for (int row = 1; row <= MostPlaylists; ++row) {
        const QByteArray number = QByteArray::number(row);
        index += number + "b=Liste " + number + "\r\n" + number + "c=" + list.toUtf8() + "\r\n" + number + "d=1\r\n" +
                 number + "e=Text\r\n" + number + "f=01.01.2026\r\n";
        addRow(desktop.root, u"Liste %1"_s.arg(row), list);
    }
    layOut(desktop.database(), tagInfoSection(TagKeys, {}) + index);
}

/// Told pauses pass in no time here.
Row moveRow()
{
    BenchDesktop desktop;
    layOutFullCatalogue(desktop);
    desktop.root.LListView1.select(MostPlaylists / 2);
    bool up = false;
    const auto move = [&] {
        up = !up;
        // A full catalogue is told at each save.
        desktop.messages.answer(Answer::Ok);
        mnuVerschiebung_Click(desktop.root, up ? 1 : 2);
    };
    const double time = medianMilliseconds(9, move);
    if (desktop.root.LListView1.subItem(MostPlaylists / 2 - 1, 1).isEmpty())
        qFatal("no row was moved");
    const int syncs = syncsOf(move);
    const double floor = savingFloor(desktop.database(), syncs);
    return {u"one move in 160 rows, 100,000 TagInfo keys"_s + told(syncs), u"ms"_s, time, floor, 100, false};
}

Row removalRow()
{
    BenchDesktop desktop;
    layOutFullCatalogue(desktop);
    const auto removal = [&] {
        desktop.root.LListView1.select(1);
        desktop.messages.answer(Answer::Ok);
        mnuL_schen(desktop.root);
    };
    const double time = medianMilliseconds(9, removal);
    const int syncs = syncsOf(removal);
    if (desktop.root.LListView1.count() != MostPlaylists - 11)
        qFatal("no row was removed");
    const double floor = savingFloor(desktop.database(), syncs);
    return {u"one removal from 160 rows, 100,000 TagInfo keys"_s + told(syncs), u"ms"_s, time, floor, 100, false};
}

Row reloadCatalogue()
{
    BenchDesktop desktop;
    layOutFullCatalogue(desktop);
    const double time = medianMilliseconds(9, [&] { mnuLaden_Click(desktop.root); });
    if (desktop.root.LListView1.count() != MostPlaylists)
        qFatal("the catalogue was not loaded");
    const double floor = medianMilliseconds(9, [&] {
        QFile file(desktop.database());
        if (file.open(QIODevice::ReadOnly))
            (void)QString::fromUtf8(file.readAll()).split(u"\r\n"_s).size();
    });
    return {u"reload of 160 rows beside 100,000 TagInfo keys"_s, u"ms"_s, time, floor, 200, false};
}

/// The longest list that can be shown, open in a catalogue of its own.
void openLongestList(BenchDesktop& desktop)
{
    const QStringList tracks = makeTracks(desktop.path(u"musik"_s), ManyTracks);
    QString list = desktop.path(u"data/Playlisten/Alles.m3u"_s);
    layOut(list, tracks.join(u"\r\n"_s).toUtf8() + "\r\n");
    layOut(desktop.database(), "[Index]\r\n1b=Alles\r\n1f=01.01.2026\r\n");
    addRow(desktop.root, u"Alles"_s, list);
    desktop.root.LListView1.select(1);
    GetPlayEntrys(desktop.root, list);
    if (desktop.root.LListView2.count() != ManyTracks)
        qFatal("the large list was not opened");
}

/// Numbers are compared as texts, so that each run has rows to move.
Row sortTracks()
{
    BenchDesktop desktop;
    openLongestList(desktop);
    const double time = medianMilliseconds(5, [&] {
        desktop.messages.answer(Answer::No);
        mnuSortierung_Click(desktop.root, 3);
    });
    return {u"sort of 32,767 tracks"_s, u"ms"_s, time, std::nullopt, 150, false};
}

Row moveTrack()
{
    BenchDesktop desktop;
    openLongestList(desktop);
    desktop.root.LListView2.select(ManyTracks / 2);
    bool up = false;
    const double time = medianMilliseconds(9, [&] {
        up = !up;
        mnuMoveEntry_Click(desktop.root, up ? 1 : 2);
    });
    return {u"one move in 32,767 tracks"_s, u"ms"_s, time, std::nullopt, 50, false};
}

/// Told pauses pass in no time here; the list is read again, which has a target of its own.
Row removeTrack()
{
    BenchDesktop desktop;
    openLongestList(desktop);
    const double reading = medianMilliseconds(5, [&] {
        QString path = desktop.root.LListView1.subItem(1, 2);
        GetPlayEntrys(desktop.root, path);
    });
    desktop.root.LListView2.select(ManyTracks / 2);
    const double time = medianMilliseconds(5, [&] {
        desktop.messages.answer(Answer::Ok);
        mnuFileKill_Click(desktop.root);
    });
    return {
        u"one removal from 32,767 tracks beside the reading anew"_s, u"ms"_s, time - reading, std::nullopt, 50, false};
}

} // namespace

std::vector<Row> catalogueRows()
{
    return {openLargeList(), addFolder(),  saveCatalogue(), moveRow(),   removalRow(), reloadCatalogue(),
            readValue(),     writeValue(), sortTracks(),    moveTrack(), removeTrack()};
}

} // namespace orvantine::bench
