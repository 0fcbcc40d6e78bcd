#include "TempWorld.h"

#include <QFileInfo>

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const CarryStep GoOn = [](qint64) { return true; };

class Carrying : public testing::Test
{
protected:
    [[nodiscard]] QString at(const QString& name) const { return m_world.folder() + u'/' + name; }
    [[nodiscard]] QStringList names() { return m_world.files().list(m_world.folder(), u"*"_s); }

    TempWorld m_world;
};

/// What is written beyond so many bytes fails, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limited{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limited);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before = {};
};

} // namespace

TEST_F(Carrying, ADiskThatIsFullAfterSomeBytesKeepsTheOlderFileAndNoPart)
{
    m_world.put("von.mp3", QByteArray(5 << 20, 'x'));
    m_world.put("nach.mp3", "alt");
    for (const rlim_t room : {rlim_t{1}, rlim_t{4096}, rlim_t{3} << 20}) {
        const FullDisk full(room);
        EXPECT_FALSE(m_world.files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), GoOn));
        EXPECT_EQ(m_world.files().takeFault(), WriteFault::Disk);
    }
    EXPECT_EQ(m_world.bytes("nach.mp3"), "alt");
    EXPECT_EQ(names(), (QStringList{u"nach.mp3"_s, u"von.mp3"_s}));
}

TEST_F(Carrying, ASourceThatBecomesShorterMeanwhileIsNotTakenForWhole)
{
    m_world.put("von.mp3", QByteArray(5 << 20, 'x'));
    bool cut = false;
    EXPECT_FALSE(m_world.files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), [&](qint64) {
        return std::exchange(cut, true) || ::truncate(m_world.native("von.mp3").c_str(), 1 << 20) == 0;
    }));
    EXPECT_EQ(m_world.files().takeFault(), WriteFault::Disk);
    EXPECT_EQ(names(), QStringList{u"von.mp3"_s});
}

TEST_F(Carrying, ASourceThatIsWrittenMeanwhileIsNotTakenForWhole)
{
    m_world.put("von.mp3", QByteArray(5 << 20, 'x'));
    bool written = false;
    EXPECT_FALSE(m_world.files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), [&](qint64) {
        const timespec times[2] = {{0, UTIME_OMIT}, {1'000'000, 0}};
        return std::exchange(written, true) || ::utimensat(AT_FDCWD, m_world.native("von.mp3").c_str(), times, 0) == 0;
    }));
    EXPECT_EQ(names(), QStringList{u"von.mp3"_s});
}

TEST_F(Carrying, AWriteProtectedFileStaysAndTheModeOfAnotherIsKept)
{
    m_world.put("von.mp3", "Klang");
    m_world.put("fest.mp3", "alt");
    m_world.put("nach.mp3", "alt");
    ASSERT_EQ(::chmod(m_world.native("fest.mp3").c_str(), 0444), 0);
    ASSERT_EQ(::chmod(m_world.native("nach.mp3").c_str(), 0640), 0);
    EXPECT_FALSE(m_world.files().carry(at(u"von.mp3"_s), at(u"fest.mp3"_s), GoOn));
    EXPECT_EQ(m_world.files().takeFault(), WriteFault::NoRights);
    EXPECT_TRUE(m_world.files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), GoOn));
    EXPECT_EQ(m_world.bytes("fest.mp3"), "alt");
    EXPECT_EQ(m_world.bytes("nach.mp3"), "Klang");
    EXPECT_EQ(m_world.info("nach.mp3").st_mode & 0777U, 0640U);
}

TEST_F(Carrying, ALinkStaysALinkAndItsFileIsReplaced)
{
    m_world.put("von.mp3", "Klang");
    m_world.put("wirklich.mp3", "alt");
    ASSERT_EQ(::symlink("wirklich.mp3", m_world.native("nach.mp3").c_str()), 0);
    EXPECT_TRUE(m_world.files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), GoOn));
    EXPECT_EQ(m_world.bytes("wirklich.mp3"), "Klang");
    EXPECT_TRUE(QFileInfo(at(u"nach.mp3"_s)).isSymLink());
}

TEST_F(Carrying, NamesOfTheFullLengthAndNamesThatAreNotUtf8AreCarried)
{
    for (const QByteArray& name : {QByteArray(255, 'n'), QByteArray("\xC3\xA4").repeated(125) + "x.mp3",
                                   QByteArray("K\xFChn.mp3"), QByteArray("Punkte...")}) {
        m_world.put(name, "Klang");
        ASSERT_EQ(::mkdir(m_world.native("Stick").c_str(), 0700), 0);
        const QString text = m_world.files().list(m_world.folder(), u"*"_s).constFirst();
        EXPECT_TRUE(m_world.files().carry(at(text), at(u"Stick/"_s + text), GoOn)) << name.constData();
        EXPECT_EQ(m_world.files().readBytes(at(u"Stick/"_s + text)).bytes, "Klang") << name.constData();
        EXPECT_EQ(m_world.files().list(at(u"Stick"_s), u"*"_s), QStringList{text}) << name.constData();
        std::filesystem::remove_all(m_world.native("Stick"));
        std::filesystem::remove(m_world.native(name));
    }
}

TEST_F(Carrying, AFolderWithoutRightsIsNoPlace)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser has all rights";
    m_world.put("von.mp3", "Klang");
    ASSERT_EQ(::mkdir(m_world.native("Stick").c_str(), 0500), 0);
    EXPECT_FALSE(m_world.files().carry(at(u"von.mp3"_s), at(u"Stick/nach.mp3"_s), GoOn));
    EXPECT_EQ(m_world.files().takeFault(), WriteFault::NoRights);
}

TEST_F(Carrying, ATargetThatVanishesMeanwhileIsAFaultOfThatFile)
{
    m_world.put("von.mp3", QByteArray(2 << 20, 'x'));
    ASSERT_EQ(::mkdir(m_world.native("Stick").c_str(), 0700), 0);
    EXPECT_FALSE(m_world.files().carry(at(u"von.mp3"_s), at(u"Stick/nach.mp3"_s), [&](qint64) {
        std::filesystem::remove_all(m_world.native("Stick"));
        return true;
    }));
    EXPECT_EQ(m_world.files().takeFault(), WriteFault::NoSuchPlace);
    EXPECT_EQ(names(), QStringList{u"von.mp3"_s});
}

TEST_F(Carrying, WhatAKilledProgramHadOnItsWayGoesAtTheNextStart)
{
    m_world.put("von.mp3", QByteArray(2 << 20, 'x'));
    m_world.put("nach.mp3", "alt");
    m_world.put("anderes.mp3.part", "fremd");
    const pid_t child = ::fork();
    if (child == 0) {
        PosixFiles files({.recoveryFolder = m_world.recovery(), .carriesBeside = false});
        files.carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), [](qint64 done) {
            if (done > 0)
                ::raise(SIGKILL);
            return true;
        });
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(names(), (QStringList{u"anderes.mp3.part"_s, u"nach.mp3"_s, u"nach.mp3.part"_s, u"von.mp3"_s}));
    const PosixFiles next({.recoveryFolder = m_world.recovery()});
    EXPECT_EQ(names(), (QStringList{u"anderes.mp3.part"_s, u"nach.mp3"_s, u"von.mp3"_s}));
    EXPECT_EQ(m_world.bytes("nach.mp3"), "alt");
}

TEST_F(Carrying, ASecondProgramLeavesAPartAloneThatIsOnItsWay)
{
    m_world.put("von.mp3", QByteArray(2 << 20, 'x'));
    EXPECT_TRUE(m_world.files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), [&](qint64) {
        const PosixFiles second({.recoveryFolder = m_world.recovery()});
        return true;
    }));
    EXPECT_EQ(m_world.bytes("nach.mp3").size(), 2 << 20);
}

TEST_F(Carrying, WithoutAThreadOfItsOwnTheStepsAreTheSame)
{
    TempWorld world({.carriesBeside = false});
    world.put("von.mp3", QByteArray(20 << 20, 'x'));
    std::vector<qint64> told;
    EXPECT_TRUE(world.files().carry(world.folder() + u"/von.mp3"_s, world.folder() + u"/nach.mp3"_s, [&](qint64 done) {
        told.push_back(done);
        return true;
    }));
    EXPECT_EQ(world.bytes("nach.mp3"), world.bytes("von.mp3"));
    EXPECT_EQ(told.size(), 22U);
}

TEST_F(Carrying, APrivateFolderIsNeverALinkNorOneThatOthersMayWrite)
{
    ASSERT_EQ(::mkdir(m_world.native("fremd").c_str(), 0700), 0);
    m_world.put("fremd/Brief.txt", "wichtig");
    ASSERT_EQ(::symlink("fremd", m_world.native("PackFolder").c_str()), 0);
    const QString first = m_world.files().privateFolder(at(u"PackFolder"_s));
    EXPECT_NE(first, at(u"PackFolder"_s));
    EXPECT_FALSE(m_world.files().emptyPrivate(at(u"PackFolder"_s), [] { return true; }));
    EXPECT_EQ(m_world.bytes("fremd/Brief.txt"), "wichtig");

    ASSERT_EQ(::mkdir(m_world.native("offen").c_str(), 0700), 0);
    ASSERT_EQ(::chmod(m_world.native("offen").c_str(), 0777), 0);
    const QString beside = m_world.files().privateFolder(at(u"offen"_s));
    EXPECT_NE(beside, at(u"offen"_s));
    // What a run leaves there goes with the next.
    EXPECT_EQ(m_world.files().privateFolder(at(u"offen"_s)), beside);
    EXPECT_FALSE(m_world.files().emptyPrivate(at(u"offen"_s), [] { return true; }));
}

TEST_F(Carrying, AnEmptiedFolderLosesItsLinksAndNotWhatTheyLeadTo)
{
    const QString folder = m_world.files().privateFolder(at(u"PackFolder"_s));
    ASSERT_EQ(::mkdir(m_world.native("fremd").c_str(), 0700), 0);
    m_world.put("fremd/Brief.txt", "wichtig");
    ASSERT_EQ(::symlink("../fremd", m_world.native("PackFolder/Ordner").c_str()), 0);
    ASSERT_EQ(::symlink("../fremd/Brief.txt", m_world.native("PackFolder/Datei").c_str()), 0);
    EXPECT_TRUE(m_world.files().emptyPrivate(folder, [] { return true; }));
    EXPECT_EQ(m_world.bytes("fremd/Brief.txt"), "wichtig");
    EXPECT_TRUE(std::filesystem::is_empty(m_world.native("PackFolder")));
}

} // namespace orvantine
