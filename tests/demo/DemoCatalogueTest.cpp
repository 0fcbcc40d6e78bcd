#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace orvantine {

using namespace Qt::StringLiterals;

using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

QByteArray read(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// The output; a failed call fails the test.
QString make(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(ORVANTINE_MAKE_DEMO), arguments);
    EXPECT_TRUE(process.waitForFinished(100'000));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return QString::fromUtf8(process.readAllStandardOutput());
}

/// Every file below a folder with a digest of its content.
QMap<QString, QByteArray> digests(const QString& folder)
{
    QMap<QString, QByteArray> found;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        found[path] = QCryptographicHash::hash(read(path), QCryptographicHash::Sha256);
    }
    return found;
}

class DemoCatalogue : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        folder = new QTemporaryDir;
        make({folder->path()});
        const QStringList lines =
            QString::fromUtf8(read(folder->filePath(u"demo.tsv"_s))).split(u'\n', Qt::SkipEmptyParts);
        for (const QString& line : lines.mid(1))
            tracks << line.split(u'\t');
        const auto entries = read(folder->filePath(u"data/Orvanten Manager/Orvantine.dat"_s)).split('\n');
        for (const QByteArray& entry : entries)
            database[QString::fromUtf8(entry.left(entry.indexOf('=')))] =
                QString::fromUtf8(entry.mid(entry.indexOf('=') + 1)).chopped(entry.isEmpty() ? 0 : 1);
    }

    static void TearDownTestSuite()
    {
        delete folder;
        folder = nullptr;
    }

    static QStringList playlistPaths()
    {
        QStringList paths;
        for (int number = 1; database.contains(QString::number(number) + u'b'); ++number)
            paths << database[QString::number(number) + u'c'];
        return paths;
    }

    enum Column { List, Name, Position, Frequency, Seconds, Kind, Artist, Title, Path };

    static inline QTemporaryDir* folder = nullptr;
    static inline QList<QStringList> tracks;
    static inline QMap<QString, QString> database;
};

TEST_F(DemoCatalogue, HoldsTwelvePlaylistsOfWhichOneIsMissing)
{
    QStringList missing;
    for (const QString& path : playlistPaths())
        if (!QFile::exists(path))
            missing << QFileInfo(path).fileName();
    EXPECT_EQ(playlistPaths().size(), 12);
    EXPECT_THAT(missing, ElementsAre(u"Sommer 2019.m3u"_s));
}

TEST_F(DemoCatalogue, HoldsOneListInEachForeignForm)
{
    QMap<QString, int> count;
    for (const QString& path : playlistPaths())
        ++count[QFileInfo(path).suffix()];
    EXPECT_EQ(count, (QMap<QString, int>{{u"m3u"_s, 10}, {u"nml"_s, 1}, {u"pls"_s, 1}}));
}

TEST_F(DemoCatalogue, HoldsOneListWithTheHostsLineEnds)
{
    QStringList host;
    for (const QString& path : playlistPaths())
        if (QFile::exists(path) && !read(path).contains('\r'))
            host << QFileInfo(path).fileName();
    EXPECT_THAT(host, ElementsAre(u"Vom alten Rechner.m3u"_s));
}

TEST_F(DemoCatalogue, HoldsThreeMissingTracksAndAllOthersAreThere)
{
    int missing = 0;
    for (const QStringList& track : tracks) {
        EXPECT_EQ(QFile::exists(track[Path]), track[Kind] != u"missing") << track[Path].toStdString();
        missing += track[Kind] == u"missing";
    }
    EXPECT_EQ(missing, 3);
    EXPECT_EQ(tracks.size(), 154);
}

TEST_F(DemoCatalogue, GivesEveryTrackItsOwnTone)
{
    QSet<QString> tones;
    for (const QStringList& track : tracks)
        tones << track[Frequency];
    EXPECT_EQ(tones.size(), tracks.size());
}

TEST_F(DemoCatalogue, HoldsConstantAndVariableBitRatesAndWaves)
{
    QMap<QByteArray, int> forms;
    for (const QStringList& track : tracks) {
        if (track[Kind] == u"missing")
            continue;
        const QByteArray start = read(track[Path]).left(200);
        const QByteArray form = start.startsWith("RIFF") ? "wave"
                                : start.contains("Xing") ? "variable"
                                : start.contains("Info") ? "constant"
                                                         : "?";
        EXPECT_TRUE(track[Kind].startsWith(form == "wave"       ? u"wav"_s
                                           : form == "variable" ? u"vbr"_s
                                                                : u"cbr"_s))
            << track[Path].toStdString();
        ++forms[form];
    }
    EXPECT_THAT(forms.keys(), ElementsAre("constant", "variable", "wave"));
}

TEST_F(DemoCatalogue, TagsEveryMp3InWindows1252)
{
    for (const QStringList& track : tracks) {
        if (!track[Path].endsWith(u".mp3") || track[Kind] == u"missing")
            continue;
        const QByteArray tag = read(track[Path]).right(128);
        EXPECT_TRUE(tag.startsWith("TAG" + track[Title].toLatin1().left(30))) << track[Path].toStdString();
        EXPECT_EQ(tag[125], 0);
        EXPECT_EQ(int{tag[126]}, QFileInfo(track[Path]).fileName().left(2).toInt());
    }
}

TEST_F(DemoCatalogue, HoldsCoversInThreeForms)
{
    QMap<QString, QByteArray> starts{{u"jpg"_s, "\xFF\xD8"}, {u"gif"_s, "GIF8"}, {u"bmp"_s, "BM"}};
    QSet<QString> forms;
    const QDir covers(folder->filePath(u"data/Orvanten Manager/Resource"_s));
    for (const QFileInfo& cover : covers.entryInfoList(QDir::Files)) {
        forms << cover.suffix();
        EXPECT_TRUE(read(cover.filePath()).startsWith(starts[cover.suffix()])) << cover.filePath().toStdString();
    }
    EXPECT_THAT(forms, UnorderedElementsAre(u"jpg"_s, u"gif"_s, u"bmp"_s));
}

TEST_F(DemoCatalogue, MarksOneFavourite)
{
    int favourites = 0;
    for (int number = 1; number <= 12; ++number)
        favourites += database[QString::number(number) + u'g'] == u"1";
    EXPECT_EQ(favourites, 1);
}

TEST_F(DemoCatalogue, StaysAsItIsWhenMadeAgain)
{
    const auto before = digests(folder->path());
    EXPECT_EQ(make({folder->path()}), u"Demo catalogue stands in "_s + folder->path() + u'\n');
    EXPECT_EQ(digests(folder->path()), before);
}

TEST_F(DemoCatalogue, ComesOutTheSameWhenMadeAnew)
{
    const QTemporaryDir small;
    make({u"--small"_s, small.path()});
    const auto before = digests(small.path());
    make({u"--small"_s, u"--fresh"_s, small.path()});
    EXPECT_EQ(digests(small.path()), before);
}

TEST_F(DemoCatalogue, LeavesAFolderOfSomeoneElseAlone)
{
    const QTemporaryDir foreign;
    QFile file(foreign.filePath(u"Brief.txt"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Lieber Hans");
    file.close();

    QProcess process;
    process.start(QStringLiteral(ORVANTINE_MAKE_DEMO), {u"--fresh"_s, foreign.path()});
    ASSERT_TRUE(process.waitForFinished(100'000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(digests(foreign.path()).size(), 1);
    EXPECT_EQ(read(file.fileName()), "Lieber Hans");
}

} // namespace

} // namespace orvantine
