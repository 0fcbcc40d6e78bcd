#include "BenchDesktop.h"
#include "Measure.h"

#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuLaden.h"
#include "transfer/RestorePlan.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <memory>
#include <numeric>

#include <fcntl.h>
#include <unistd.h>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

namespace {

constexpr int Lists = 12;
constexpr int TracksOfList = 12;
constexpr qsizetype AllBytes = qsizetype{514} << 20;

/// 144 tracks of 514 MB together.
QStringList makeSounds(const BenchDesktop& desktop)
{
    constexpr int Tracks = Lists * TracksOfList;
    QStringList sounds;
    QDir().mkpath(desktop.path(u"musik"_s));
    for (int track = 1; track <= Tracks; ++track) {
        sounds += desktop.path(u"musik/Lied %1.mp3"_s.arg(track));
        layOut(sounds.last(), QByteArray(AllBytes / Tracks, static_cast<char>(track)));
    }
    return sounds;
}

void layOutCatalogue(BenchDesktop& desktop, const QStringList& sounds)
{
    QByteArray index = "[Index]\r\n";
    for (int number = 1; number <= Lists; ++number) {
        const QString list = desktop.path(u"data/Playlisten/Liste %1.m3u"_s.arg(number));
        const QStringList own = sounds.mid((number - 1) * TracksOfList, TracksOfList);
        layOut(list, own.join(u"\r\n"_s).toUtf8() + "\r\n\r\n");
        index += u"%1b=Liste %1\r\n%1c=%2\r\n%1d=%3\r\n%1f=01.01.2026\r\n"_s.arg(number)
                     .arg(list)
                     .arg(TracksOfList)
                     .toUtf8();
    }
    layOut(desktop.database(), index);
}

bool sync(const QString& path, int flags)
{
    const int file = ::open(QFile::encodeName(path).constData(), flags | O_CLOEXEC);
    const bool done = file >= 0 && ::fsync(file) == 0;
    ::close(file);
    return done;
}

/// What `cp` does, with a sync for each file and each folder.
void copyPlainly(const QStringList& sounds, const QString& target)
{
    constexpr std::size_t Piece = 1 << 20;
    const std::unique_ptr<char[]> piece(new char[Piece]);
    for (int number = 1; number <= Lists; ++number) {
        const QString folder = target + u"/Liste %1"_s.arg(number);
        QDir().mkpath(folder);
        const QStringList own = sounds.mid((number - 1) * TracksOfList, TracksOfList);
        for (const QString& sound : own) {
            const QString copy = folder + u'/' + sound.section(u'/', -1);
            const int from = ::open(QFile::encodeName(sound).constData(), O_RDONLY | O_CLOEXEC);
            const int to = ::open(QFile::encodeName(copy).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
            for (ssize_t count = ::read(from, piece.get(), Piece); count > 0; count = ::read(from, piece.get(), Piece))
                if (::write(to, piece.get(), static_cast<std::size_t>(count)) != count)
                    qFatal("a track could not be copied");
            if (::fsync(to) != 0)
                qFatal("a track could not be synced");
            ::close(from);
            ::close(to);
        }
        if (!sync(folder, O_RDONLY | O_DIRECTORY))
            qFatal("a folder could not be synced");
    }
}

Row packIntoFolder()
{
    constexpr int Runs = 3;
    BenchDesktop desktop;
    const QStringList sounds = makeSounds(desktop);
    layOutCatalogue(desktop, sounds);
    desktop.volumes.set(desktop.folder, {});
    desktop.services.folders.temp = desktop.path(u"tmp"_s);
    QDir().mkpath(desktop.path(u"tmp"_s));
    const QString target = desktop.path(u"stick"_s);
    const auto clear = [&target] {
        QDir(target).removeRecursively();
        QDir().mkpath(target);
    };
    mnuLaden_Click(desktop.root);
    desktop.root.Visible = true;
    const double time = medianMilliseconds(
        Runs,
        [&] {
            desktop.messages.answer(Answer::No);
            desktop.messages.answer(Answer::Cancel);
            desktop.choosers.chooseFolder(target);
            desktop.messages.answer(Answer::Ok);
            desktop.root.mnuPackGo.Click();
        },
        clear);
    if (!QFile::exists(target + u"/Liste 12/Lied 144.mp3"_s))
        qFatal("nothing was packed");
    const double floor = medianMilliseconds(
        Runs, [&] { copyPlainly(sounds, target); }, clear);
    return {u"Pack and Go of 514 MB into a folder"_s, u"ms"_s, time, floor, 1.3, true};
}

/// As the program does it, on a thread of its own.
Row carryBeside()
{
    constexpr int Runs = 3;
    BenchDesktop desktop;
    const QStringList sounds = makeSounds(desktop);
    PosixFiles files({.recoveryFolder = desktop.path(u"beside"_s)});
    const QString target = desktop.path(u"stick"_s);
    const auto clear = [&target] {
        QDir(target).removeRecursively();
        QDir().mkpath(target);
    };
    qsizetype asked = 0;
    const CarryStep goOn = [&asked](qint64) { return ++asked > 0; };
    const double time = medianMilliseconds(
        Runs,
        [&] {
            for (int number = 1; number <= Lists; ++number) {
                const QString folder = target + u"/Liste %1"_s.arg(number);
                files.makeFolder(folder);
                const QStringList own = sounds.mid((number - 1) * TracksOfList, TracksOfList);
                for (const QString& sound : own)
                    if (!files.carry(sound, folder + u'/' + sound.section(u'/', -1), goOn))
                        qFatal("a track could not be carried");
                files.settle(folder, goOn);
            }
        },
        clear);
    const double floor = medianMilliseconds(
        Runs, [&] { copyPlainly(sounds, target); }, clear);
    return {u"carry 514 MB in 144 files"_s, u"ms"_s, time, floor, 1.3, true};
}

/// A full catalogue: lists of 100 tracks each.
class BackupDesktop : public BenchDesktop
{
public:
    BackupDesktop()
    {
        constexpr int TracksEach = 100;
        QByteArray index = "[Index]\r\n";
        for (int number = 1; number <= MostPlaylists; ++number) {
            const QString list = path(u"data/Playlisten/Liste %1.m3u"_s.arg(number));
            QByteArray tracks;
            for (int track = 1; track <= TracksEach; ++track)
                tracks += u"/musik/Album %1/Lied %2.mp3\r\n"_s.arg(number).arg(track).toUtf8();
            layOut(list, tracks + "\r\n");
            index += u"%1b=Liste %1\r\n%1c=%2\r\n%1d=100\r\n%1f=01.01.2026\r\n"_s.arg(number).arg(list).toUtf8();
        }
        layOut(database(), index);
        root.mnuErrorDisplay.Checked = false;
        mnuLaden_Click(root);
        root.Visible = true;
    }

    [[nodiscard]] QString archive() const { return path(u"Sicherung.zip"_s); }
    void backUp()
    {
        choosers.save(archive());
        root.mnuDbSicherungen.Click();
    }
    void restore()
    {
        messages.answer(Answer::Ok);
        choosers.open(archive());
        root.mnuDbWiederherstellung.Click();
    }
    /// Every list is another one than in the archive.
    void spoil() const
    {
        for (int number = 1; number <= MostPlaylists; ++number)
            layOut(path(u"data/Playlisten/Liste %1.m3u"_s.arg(number)), "anders\r\n");
    }
};

/// The archive alone, without all that the command looks after.
void packPlainly(BackupDesktop& desktop)
{
    const ArchiveJob job{.archive = desktop.path(u"Boden.zip"_s),
                         .trees = {{desktop.path(u"data/Playlisten"_s), true}},
                         .compression = Compression::Strong,
                         .takes = {}};
    if (!desktop.zip.add(job, {}).done)
        qFatal("the floor was not packed");
}

/// Each file unpacked, written over the present one and synced.
void unpackPlainly(BackupDesktop& desktop)
{
    const std::unique_ptr<OpenedArchive> archive = desktop.zip.open(desktop.archive(), MostRestoredEntries);
    if (!archive)
        qFatal("the backup cannot be opened");
    std::vector<std::size_t> numbers(archive->entries().size());
    std::iota(numbers.begin(), numbers.end(), std::size_t{0});
    if (!archive->unpack(numbers, {}))
        qFatal("the backup cannot be unpacked");
    for (const std::size_t number : numbers) {
        const QString list = desktop.path(u"data/Playlisten/"_s + archive->entries()[number].name);
        QFile from(archive->unpackedFile(number));
        if (!from.open(QIODevice::ReadOnly))
            qFatal("an unpacked file is not there");
        layOut(list, from.readAll());
        if (!sync(list, O_RDONLY))
            qFatal("a file could not be synced");
    }
}

std::vector<Row> backupAndRestore()
{
    constexpr int Runs = 3;
    BackupDesktop desktop;
    const double packed = medianMilliseconds(
        Runs, [&] { desktop.backUp(); }, [&] { QFile::remove(desktop.archive()); });
    const double packedFloor = medianMilliseconds(
        Runs, [&] { packPlainly(desktop); }, [&] { QFile::remove(desktop.path(u"Boden.zip"_s)); });
    if (!QFile::exists(desktop.archive()))
        qFatal("nothing was packed");
    const double restored = medianMilliseconds(
        Runs, [&] { desktop.restore(); }, [&] { desktop.spoil(); });
    if (QFileInfo(desktop.path(u"data/Playlisten/Liste 160.m3u"_s)).size() < 1000)
        qFatal("nothing was restored");
    const double restoredFloor = medianMilliseconds(
        Runs, [&] { unpackPlainly(desktop); }, [&] { desktop.spoil(); });
    desktop.spoil();
    return {{u"backup of 160 lists"_s, u"ms"_s, packed, packedFloor, 1.5, true},
            {u"restore of 160 lists"_s, u"ms"_s, restored, restoredFloor, 300, false},
            longestWait(desktop.events, [&] { desktop.restore(); })};
}

} // namespace

std::vector<Row> transferRows()
{
    std::vector<Row> rows = backupAndRestore();
    rows.insert(rows.begin(), {packIntoFolder(), carryBeside()});
    return rows;
}

} // namespace orvantine::bench
