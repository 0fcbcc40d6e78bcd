#include "DiskWorld.h"
#include "support/Nobody.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

INSTANTIATE_TEST_SUITE_P(Libzip, ArchiveContract,
                         testing::Values(ArchiveFactory{"Libzip", [] { return std::make_unique<DiskWorld>(); }}),
                         ArchiveContract::nameOf);

class LibzipArchiveTest : public testing::Test
{
protected:
    [[nodiscard]] QString at(const QString& name) const { return world.folder() + u'/' + name; }
    void put(const QString& name, const QByteArray& bytes)
    {
        QDir().mkpath(at(name).left(at(name).lastIndexOf(u'/')));
        ASSERT_TRUE(world.files().writeBytes(at(name), bytes));
    }
    [[nodiscard]] QByteArray bytes(const QString& name) { return world.files().readBytes(at(name)).bytes; }
    ArchiveOutcome add(const QString& archive, const QString& folder, const ArchiveProgress& progress = {},
                       Compression compression = Compression::Strong)
    {
        return world.zip().add(
            {.archive = at(archive), .trees = {{at(folder), true}}, .compression = compression, .takes = {}}, progress);
    }
    [[nodiscard]] QStringList names(const QString& archive)
    {
        QStringList result;
        if (const auto opened = world.zip().open(at(archive), 100000))
            for (const ArchiveEntry& entry : opened->entries())
                result.append(entry.name);
        result.sort();
        return result;
    }
    [[nodiscard]] QStringList everything() const
    {
        return QDir(world.folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot | QDir::System);
    }

    [[nodiscard]] bool giveToNobody() const
    {
        return fake::giveToNobody(world.folder()) && fake::giveToNobody(QFileInfo(world.recovery()).path());
    }

    DiskWorld world;
};

TEST_F(LibzipArchiveTest, HiddenFilesGoInAsWell)
{
    put(u"eins/.Rock.m3u"_s, "x");
    EXPECT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    EXPECT_EQ(QStringList{u".Rock.m3u"_s}, names(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, PipesAndLinksToFoldersAreLeftOutAndLinksToFilesFollowed)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"zwei/Jazz.m3u"_s, "y");
    ASSERT_EQ(0, ::mkfifo(at(u"eins/Rohr"_s).toUtf8().constData(), 0600));
    ASSERT_EQ(0, ::symlink("../zwei", at(u"eins/Ordner"_s).toUtf8().constData()));
    ASSERT_EQ(0, ::symlink("../zwei/Jazz.m3u", at(u"eins/Datei.m3u"_s).toUtf8().constData()));
    ASSERT_EQ(0, ::symlink("nirgends", at(u"eins/Leer"_s).toUtf8().constData()));
    const ArchiveOutcome outcome = add(u"a.zip"_s, u"eins"_s);
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(QStringList(), outcome.leftOut);
    EXPECT_EQ((QStringList{u"Datei.m3u"_s, u"Rock.m3u"_s}), names(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, WhereLinksAreNotFollowedEachIsNamed)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"zwei/Jazz.m3u"_s, "y");
    ASSERT_EQ(0, ::symlink("../zwei", at(u"eins/Ordner"_s).toUtf8().constData()));
    ASSERT_EQ(0, ::symlink("../zwei/Jazz.m3u", at(u"eins/Datei.m3u"_s).toUtf8().constData()));
    const ArchiveOutcome outcome = world.zip().add({.archive = at(u"a.zip"_s),
                                                    .trees = {{at(u"eins"_s), true}},
                                                    .compression = {},
                                                    .takes = {},
                                                    .followsLinks = false},
                                                   {});
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ((QStringList{u"Datei.m3u"_s, u"Ordner"_s}), outcome.leftOut);
    EXPECT_EQ(QStringList{u"Rock.m3u"_s}, names(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, AFolderThatCannotBeOpenedIsNamed)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"zwei/Jazz.m3u"_s, "y");
    ASSERT_EQ(0, ::chmod(at(u"zwei"_s).toUtf8().constData(), 0));
    const ArchiveJob job{.archive = at(u"a.zip"_s),
                         .trees = {{at(u"eins"_s), true}, {at(u"zwei/"_s), true}},
                         .compression = {},
                         .takes = {}};
    ASSERT_TRUE(giveToNobody());
    EXPECT_EXIT(fake::exitAsNobody([&] {
                    const ArchiveOutcome outcome = world.zip().add(job, {});
                    return outcome.done && outcome.leftOut == QStringList{u"zwei/"_s};
                }),
                testing::ExitedWithCode(0), "");
    ::chmod(at(u"zwei"_s).toUtf8().constData(), 0700);
}

TEST_F(LibzipArchiveTest, AnArchiveThatMayNotBeReadIsAFaultOfTheDisk)
{
    put(u"eins/a.mp3"_s, "Klang");
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    ASSERT_EQ(0, ::chmod(at(u"a.zip"_s).toUtf8().constData(), 0));
    ASSERT_TRUE(giveToNobody());
    EXPECT_EXIT(fake::exitAsNobody([&] {
                    return !add(u"a.zip"_s, u"eins"_s).done && world.files().takeFault() == WriteFault::NoRights;
                }),
                testing::ExitedWithCode(0), "");
    EXPECT_EXIT(fake::exitAsNobody([&] {
                    return !world.zip().open(at(u"a.zip"_s), 10) && world.files().takeFault() == WriteFault::NoRights;
                }),
                testing::ExitedWithCode(0), "");
}

TEST_F(LibzipArchiveTest, WhatIsNoRegularFileIsNoArchive)
{
    ASSERT_EQ(0, ::mkfifo(at(u"a.zip"_s).toUtf8().constData(), 0600));
    EXPECT_FALSE(world.zip().open(at(u"a.zip"_s), 10));
    EXPECT_FALSE(world.files().takeFault());
}

TEST_F(LibzipArchiveTest, UnpackingTellsADamagedArchiveFromAFullDisk)
{
    put(u"eins/a.mp3"_s, QByteArray(4 << 20, 'a'));
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    EXPECT_EXIT(
        {
            const auto opened = world.zip().open(at(u"a.zip"_s), 10);
            rlimit most = {};
            most.rlim_cur = most.rlim_max = 1U << 20U;
            ::signal(SIGXFSZ, SIG_IGN);
            ::setrlimit(RLIMIT_FSIZE, &most);
            const bool done = opened->unpack({0}, {});
            ::_exit(!done && world.files().takeFault() == WriteFault::NoRoom ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
    QByteArray spoilt = bytes(u"a.zip"_s);
    spoilt[spoilt.size() / 2] = 'X';
    ASSERT_TRUE(world.files().writeBytes(at(u"a.zip"_s), spoilt));
    const auto opened = world.zip().open(at(u"a.zip"_s), 10);
    ASSERT_TRUE(opened);
    EXPECT_FALSE(opened->unpack({0}, {}));
    EXPECT_FALSE(world.files().takeFault());
}

TEST_F(LibzipArchiveTest, AFileThatVanishesMeanwhileIsLeftOutAndNamed)
{
    put(u"eins/a.mp3"_s, "a");
    put(u"eins/b.mp3"_s, "b");
    ArchiveJob job{.archive = at(u"a.zip"_s), .trees = {{at(u"eins"_s), true}}, .compression = {}, .takes = {}};
    // The first one is found in order by then.
    job.takes = [this](const QString& name) {
        return name != u"b.mp3"_s || ::unlink(at(u"eins/a.mp3"_s).toUtf8().constData()) == 0;
    };
    const ArchiveOutcome outcome = world.zip().add(job, {});
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(QStringList{u"a.mp3"_s}, outcome.leftOut);
    EXPECT_EQ(QStringList{u"b.mp3"_s}, names(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, OfTwoFilesWhoseNamesDifferInCaseTheSecondIsLeftOutAndNamed)
{
    put(u"eins/Rock.m3u"_s, "eins");
    QFile twin(at(u"eins/rock.m3u"_s));
    ASSERT_TRUE(twin.open(QIODevice::WriteOnly));
    twin.close();
    const ArchiveOutcome outcome = add(u"a.zip"_s, u"eins"_s);
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(QStringList{u"rock.m3u"_s}, outcome.leftOut);
    EXPECT_EQ(QStringList{u"Rock.m3u"_s}, names(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, ANameThatIsNotUtf8IsTakenAsTheOldCodePage)
{
    put(u"eins/Rock.m3u"_s, "x");
    ASSERT_EQ(
        0, ::rename(at(u"eins/Rock.m3u"_s).toUtf8().constData(), (at(u"eins/"_s).toUtf8() + "\xdc.m3u").constData()));
    EXPECT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    EXPECT_EQ(QStringList{u"Ü.m3u"_s}, names(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, WhatDoesNotShrinkIsStoredAndTheRestDeflated)
{
    const QByteArray same(100000, 'a');
    put(u"eins/a.mp3"_s, same);
    put(u"eins/b.JPG"_s, same);
    put(u"eins/c.m3u"_s, same);
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    const auto opened = world.zip().open(at(u"a.zip"_s), 10);
    ASSERT_TRUE(opened);
    for (const ArchiveEntry& entry : opened->entries()) {
        if (entry.name == u"c.m3u"_s)
            EXPECT_LT(entry.packedSize, 1000);
        else
            EXPECT_EQ(entry.packedSize, 100000) << entry.name.toStdString();
    }
}

TEST_F(LibzipArchiveTest, AHigherLevelPacksBetterThanTheLowest)
{
    QByteArray text;
    for (int i = 0; i < 20000; ++i)
        text += "/musik/Band " + QByteArray::number(i * 7919 % 1000) + "/Lied " + QByteArray::number(i) + ".mp3\r\n";
    put(u"eins/c.m3u"_s, text);
    QList<qint64> sizes;
    for (const Compression level : {Compression::Simple, Compression::Moderate, Compression::Strong}) {
        const QString archive = u"%1.zip"_s.arg(static_cast<int>(level));
        ASSERT_TRUE(add(archive, u"eins"_s, {}, level).done);
        sizes.append(world.files().size(at(archive)).value_or(0));
    }
    EXPECT_GT(sizes[0], sizes[1]);
    EXPECT_GT(sizes[0], sizes[2]);
}

TEST_F(LibzipArchiveTest, AnotherProgramFindsTheArchiveInOrder)
{
    const QString unzip = QStandardPaths::findExecutable(u"unzip"_s);
    if (unzip.isEmpty())
        GTEST_SKIP() << "no unzip here";
    put(u"eins/Über.m3u"_s, "Text\r\n");
    put(u"eins/sub/b.mp3"_s, "Klang");
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    EXPECT_EQ(0, QProcess::execute(unzip, {u"-tqq"_s, at(u"a.zip"_s)}));
}

TEST_F(LibzipArchiveTest, ABadEntryOfTheOlderArchiveLeavesItAsItIs)
{
    put(u"eins/a.mp3"_s, "Klang, der bleibt");
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    QByteArray spoilt = bytes(u"a.zip"_s);
    const qsizetype place = spoilt.indexOf("Klang");
    ASSERT_GT(place, 0);
    spoilt[place] = 'X';
    ASSERT_TRUE(world.files().writeBytes(at(u"a.zip"_s), spoilt));
    put(u"zwei/b.mp3"_s, "neu");
    EXPECT_FALSE(add(u"a.zip"_s, u"zwei"_s).done);
    EXPECT_FALSE(world.files().takeFault());
    EXPECT_EQ(spoilt, bytes(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, NothingIsLeftBesideTheArchive)
{
    put(u"eins/a.mp3"_s, "Klang");
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    EXPECT_FALSE(add(u"b.zip"_s, u"eins"_s, [](qint64, qint64) { return false; }).done);
    EXPECT_EQ((QStringList{u"a.zip"_s, u"eins"_s}), everything());
}

TEST_F(LibzipArchiveTest, AWriteProtectedArchiveStays)
{
    put(u"eins/a.mp3"_s, "Klang");
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    const QByteArray before = bytes(u"a.zip"_s);
    ASSERT_EQ(0, ::chmod(at(u"a.zip"_s).toUtf8().constData(), 0444));
    put(u"eins/b.mp3"_s, "mehr");
    EXPECT_FALSE(add(u"a.zip"_s, u"eins"_s).done);
    EXPECT_EQ(WriteFault::NoRights, world.files().takeFault());
    EXPECT_EQ(before, bytes(u"a.zip"_s));
}

TEST_F(LibzipArchiveTest, TheFaultOfAFullDiskIsTold)
{
    // A file may not grow beyond this: the disk says so in the middle of the work.
    put(u"eins/a.mp3"_s, QByteArray(4 << 20, 'a'));
    EXPECT_EXIT(
        {
            rlimit most = {};
            most.rlim_cur = most.rlim_max = 1U << 20U;
            ::signal(SIGXFSZ, SIG_IGN);
            ::setrlimit(RLIMIT_FSIZE, &most);
            const bool done = add(u"a.zip"_s, u"eins"_s).done;
            ::_exit(!done && world.files().takeFault() && !world.files().exists(at(u"a.zip"_s)) ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(LibzipArchiveTest, WithoutAPlaceOfTheUsersOwnNothingIsUnpacked)
{
    put(u"eins/a.mp3"_s, "Klang");
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    LibzipArchive homeless(world.files(), {});
    const auto opened = homeless.open(at(u"a.zip"_s), 10);
    ASSERT_TRUE(opened);
    EXPECT_FALSE(opened->unpack({0}, {}));
    EXPECT_EQ(WriteFault::NoRights, world.files().takeFault());
}

TEST_F(LibzipArchiveTest, WhatAKilledProgramHasUnpackedGoesBeforeTheNext)
{
    put(u"eins/a.mp3"_s, "Klang");
    ASSERT_TRUE(add(u"a.zip"_s, u"eins"_s).done);
    ASSERT_TRUE(QDir().mkpath(world.recovery() + u"/Unpacked"_s));
    const QString stale = world.recovery() + u"/Unpacked/17"_s;
    ASSERT_TRUE(world.files().writeBytes(stale, "alt"));
    const auto opened = world.zip().open(at(u"a.zip"_s), 10);
    ASSERT_TRUE(opened && opened->unpack({0}, {}));
    EXPECT_FALSE(world.files().exists(stale));
    EXPECT_TRUE(world.files().exists(opened->unpackedFile(0)));
}

} // namespace orvantine
