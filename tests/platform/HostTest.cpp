#include "desktop/posix/LockInstance.h"
#include "desktop/posix/PosixVolumes.h"
#include "desktop/posix/XdgFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

// Folders

TEST(XdgFolders, TheEnvironmentNamesThem)
{
    const QTemporaryDir temp;
    const XdgFolders folders = xdgFolders({{u"HOME"_s, u"/home/ö/"_s},
                                           {u"XDG_DATA_HOME"_s, u"/daten//"_s},
                                           {u"XDG_CONFIG_HOME"_s, u"relativ"_s},
                                           {u"XDG_RUNTIME_DIR"_s, u"/run/user/1"_s},
                                           {u"TMPDIR"_s, temp.path() + u'/'}});
    EXPECT_EQ(folders.home, u"/home/ö"_s);
    EXPECT_EQ(folders.dataHome, u"/daten"_s);
    EXPECT_EQ(folders.configHome, u"/home/ö/.config"_s);
    EXPECT_EQ(folders.stateHome, u"/home/ö/.local/state"_s);
    EXPECT_EQ(folders.autostart, u"/home/ö/.config/autostart"_s);
    EXPECT_EQ(folders.runtime, u"/run/user/1"_s);
    EXPECT_EQ(folders.documents, u"/home/ö/Documents"_s);
    EXPECT_EQ(folders.music, u"/home/ö/Music"_s);
    EXPECT_EQ(folders.temp, temp.path());
}

TEST(XdgFolders, TheUsersOwnFoldersAreTaken)
{
    const QTemporaryDir config;
    QFile file(config.path() + u"/user-dirs.dirs"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# Kommentar\nXDG_MUSIC_DIR=\"$HOME/Mus\\ik \xc3\xb6/\"\nXDG_DOCUMENTS_DIR=\"/daten/Dokumente\"\n"
               "XDG_DOCUMENTS_DIR=\"relativ\"\nXDG_MUSIC_DIR=ohne\n\"\n");
    file.close();
    const XdgFolders folders = xdgFolders({{u"HOME"_s, u"/home/x"_s}, {u"XDG_CONFIG_HOME"_s, config.path()}});
    EXPECT_EQ(folders.music, u"/home/x/Musik ö"_s);
    EXPECT_EQ(folders.documents, u"/daten/Dokumente"_s);
}

TEST(XdgFolders, WithoutAHomeTheyLieBelowTheTemporaryFolder)
{
    for (const QMap<QString, QString>& environment :
         {QMap<QString, QString>(), QMap<QString, QString>{{u"HOME"_s, u""_s}, {u"TMPDIR"_s, u"/gibt/es/nicht"_s}}}) {
        const XdgFolders folders = xdgFolders(environment);
        EXPECT_EQ(folders.temp, u"/tmp"_s);
        EXPECT_EQ(folders.home, u"/tmp/orvanten-manager-"_s + QString::number(::getuid()));
        EXPECT_EQ(folders.dataHome, folders.home + u"/.local/share"_s);
        EXPECT_EQ(folders.runtime, QString());
    }
}

TEST(XdgFolders, TheStandardFoldersHaveNoTrailingSeparator)
{
    const StandardFolders folders =
        standardFolders(xdgFolders({{u"HOME"_s, u"/home/x"_s}, {u"TMPDIR"_s, u"/tmp"_s}}), u"/opt/orvantine/"_s);
    EXPECT_EQ(folders.program, u"/opt/orvantine"_s);
    EXPECT_EQ(folders.applicationData, u"/home/x/.local/share"_s);
    EXPECT_EQ(folders.documents, u"/home/x/Documents"_s);
    EXPECT_EQ(folders.music, u"/home/x/Music"_s);
    EXPECT_EQ(folders.windows, u"/home/x/.local/share/orvanten-manager/windows"_s);
    EXPECT_EQ(folders.temp, u"/tmp"_s);
}

TEST(XdgFolders, FontsOfTheWindowsFolderIsTheUsersFontFolder)
{
    const QTemporaryDir home;
    const XdgFolders folders = xdgFolders({{u"HOME"_s, home.path()}});
    EXPECT_TRUE(prepareWindowsFolder(folders));
    EXPECT_TRUE(prepareWindowsFolder(folders));
    QFile font(standardFolders(folders, u"/opt"_s).windows + u"/FONTS/Orvantine.ttf"_s);
    ASSERT_TRUE(font.open(QIODevice::WriteOnly));
    EXPECT_TRUE(QFile::exists(folders.dataHome + u"/fonts/Orvantine.ttf"_s));
}

TEST(XdgFolders, AnUnusableDataFolderIsNoFault)
{
    EXPECT_FALSE(prepareWindowsFolder(xdgFolders({{u"HOME"_s, u"/dev/null/x"_s}})));
}

// Volumes

class Volume : public testing::Test
{
protected:
    QStringList m_asked;
    PosixVolumes m_volumes{{{u"d:"_s, u"/"_s}}, [this](const QString& path) -> std::optional<VolumeInfo> {
                               m_asked += path;
                               return VolumeInfo{u"/"_s, m_type, 5, 10};
                           }};
    QString m_type = u"ext4"_s;
};

TEST_F(Volume, TheRootOfAPathIsTheMountPointOfItsNearestExistingAncestor)
{
    EXPECT_EQ(m_volumes.rootOf(u"/usr/gibt es nicht/auch nicht.mp3"_s), u"/"_s);
    EXPECT_EQ(m_asked, QStringList{u"/usr"_s});
}

TEST_F(Volume, AFolderOfAStickIsARootWhetherItIsMountedOrNot)
{
    EXPECT_EQ(m_volumes.rootOf(u"/media/ö/STICK/Musik/a.mp3"_s), u"/media/ö/STICK"_s);
    EXPECT_EQ(m_volumes.rootOf(u"/media/ö/STICK"_s), u"/media/ö/STICK"_s);
    EXPECT_EQ(m_volumes.rootOf(u"/media/ö\\STICK\\"_s), u"/media/ö/STICK"_s);
    EXPECT_EQ(m_volumes.rootOf(u"/run/media/ö/STICK/x"_s), u"/run/media/ö/STICK"_s);
    EXPECT_EQ(m_volumes.rootOf(u"/mnt/nas/x"_s), u"/mnt/nas"_s);
    EXPECT_EQ(m_volumes.rootOf(u"/mnt/nas/../usb"_s), u"/mnt/usb"_s);
    EXPECT_EQ(m_asked, QStringList());
    EXPECT_EQ(m_volumes.rootOf(u"/media"_s), u"/"_s);
}

TEST_F(Volume, ADriveIsItsFirstThreeCharacters)
{
    EXPECT_EQ(m_volumes.rootOf(u"C:\\Musik\\a.mp3"_s), u"C:\\"_s);
    EXPECT_EQ(m_volumes.rootOf(u"C:"_s), u"C:"_s);
    EXPECT_EQ(m_volumes.rootOf(QString()), QString());
    EXPECT_EQ(m_volumes.fileSystem(u"C:\\"_s), QString());
    EXPECT_EQ(m_volumes.fileSystem(u"D:\\"_s), u"EXT4"_s);
}

TEST_F(Volume, TheFileSystemOfASticksIsFat32)
{
    EXPECT_EQ(m_volumes.fileSystem(u"/"_s), u"EXT4"_s);
    m_type = u"vfat"_s;
    EXPECT_EQ(m_volumes.fileSystem(u"/"_s), u"FAT32"_s);
    m_type = u"msdos"_s;
    EXPECT_EQ(m_volumes.fileSystem(u"/"_s), u"FAT32"_s);
}

TEST_F(Volume, AVolumeThatIsNotThereHasNoSize)
{
    EXPECT_EQ(m_volumes.freeBytes(u"/"_s), 5U);
    EXPECT_EQ(m_volumes.totalBytes(u"/"_s), 10U);
    EXPECT_EQ(m_volumes.freeBytes(u"/media/niemand/NICHTS"_s), std::nullopt);
    EXPECT_EQ(m_volumes.totalBytes(u"/media/niemand/NICHTS"_s), std::nullopt);
    EXPECT_EQ(m_volumes.fileSystem(u"/media/niemand/NICHTS"_s), QString());
    EXPECT_EQ(m_volumes.fileSystem(QString()), QString());
}

TEST(MountedVolume, TheHostAnswersForATemporaryFolder)
{
    const QTemporaryDir folder;
    const PosixVolumes volumes;
    const QString root = volumes.rootOf(folder.path() + u"/fehlt/a.mp3"_s);
    EXPECT_TRUE(folder.path().startsWith(root));
    EXPECT_NE(volumes.fileSystem(root), QString());
    EXPECT_GT(volumes.totalBytes(root).value_or(0), 0U);
    EXPECT_LE(volumes.freeBytes(root).value_or(1), volumes.totalBytes(root).value_or(0));
}

// The one instance

class OneInstance : public testing::Test
{
protected:
    int m_count = 0;
    std::vector<char*> m_arguments{nullptr};
    QCoreApplication m_application{m_count, m_arguments.data()};
    QTemporaryDir m_folder;
};

TEST_F(OneInstance, OnlyTheFirstHoldsTheLock)
{
    {
        LockInstance first(m_folder.path(), u"/tmp"_s);
        EXPECT_TRUE(first.acquire(u"Orvanten Manager"_s));
        EXPECT_TRUE(first.acquire(u"Orvanten Manager"_s));
        LockInstance second(m_folder.path(), u"/tmp"_s);
        EXPECT_FALSE(second.acquire(u"Orvanten Manager"_s));
        LockInstance other(m_folder.path(), u"/tmp"_s);
        EXPECT_TRUE(other.acquire(u"Anderes"_s));
    }
    LockInstance later(m_folder.path(), u"/tmp"_s);
    EXPECT_TRUE(later.acquire(u"Orvanten Manager"_s));
}

TEST_F(OneInstance, TheLockOfAKilledHolderIsFree)
{
    const pid_t child = ::fork();
    if (child == 0) {
        LockInstance held(m_folder.path(), u"/tmp"_s);
        const bool done = held.acquire(u"Orvanten Manager"_s);
        ::kill(::getpid(), done ? SIGKILL : SIGTERM);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    ASSERT_EQ(WTERMSIG(status), SIGKILL);
    LockInstance next(m_folder.path(), u"/tmp"_s);
    EXPECT_TRUE(next.acquire(u"Orvanten Manager"_s));
    EXPECT_TRUE(QFile::exists(m_folder.path() + u"/orvanten-manager.socket"_s));
}

TEST_F(OneInstance, TheSecondCallsTheFirstToTheFront)
{
    LockInstance first(m_folder.path(), u"/tmp"_s);
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    int activations = 0;
    first.Activated = [&activations] { ++activations; };
    std::atomic<bool> ended = false;
    bool answered = false;
    std::thread loser([&] {
        LockInstance second(m_folder.path(), u"/tmp"_s);
        answered = !second.acquire(u"Orvanten Manager"_s) && second.activateOther();
        ended = true;
    });
    while (!ended)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    loser.join();
    QCoreApplication::processEvents();
    EXPECT_TRUE(answered);
    EXPECT_EQ(activations, 1);
}

TEST_F(OneInstance, WithoutAnAnswerTheSecondGivesUp)
{
    LockInstance nobody(m_folder.path(), u"/tmp"_s);
    EXPECT_FALSE(nobody.activateOther());
    LockInstance first(m_folder.path(), u"/tmp"_s);
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    LockInstance second(m_folder.path(), u"/tmp"_s);
    ASSERT_FALSE(second.acquire(u"Orvanten Manager"_s));
    EXPECT_FALSE(second.activateOther()); // nobody runs the first one's events meanwhile
}

TEST_F(OneInstance, TheLockOfOneThatEndsIsToBeHadBehindIt)
{
    auto first = std::make_unique<LockInstance>(m_folder.path(), u"/tmp"_s);
    ASSERT_TRUE(first->acquire(u"Orvanten Manager"_s));
    LockInstance second(m_folder.path(), u"/tmp"_s);
    EXPECT_FALSE(second.awaitEnd()) << "nothing was refused yet";
    ASSERT_FALSE(second.acquire(u"Orvanten Manager"_s));
    first.reset();
    EXPECT_FALSE(second.activateOther());
    EXPECT_TRUE(second.awaitEnd());
    EXPECT_TRUE(second.acquire(u"Orvanten Manager"_s));
}

TEST_F(OneInstance, OneThatLivesOnKeepsItsLock)
{
    LockInstance first(m_folder.path(), u"/tmp"_s);
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    LockInstance second(m_folder.path(), u"/tmp"_s, {}, std::chrono::milliseconds{50});
    ASSERT_FALSE(second.acquire(u"Orvanten Manager"_s));
    EXPECT_FALSE(second.awaitEnd());
    EXPECT_FALSE(second.acquire(u"Orvanten Manager"_s));
}

TEST_F(OneInstance, AFolderThatOthersCanWriteIsNotUsed)
{
    ASSERT_TRUE(QFile(m_folder.path()).setPermissions(QFile::Permissions(0x7777)));
    const QTemporaryDir temp;
    LockInstance first(m_folder.path(), temp.path());
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot), QStringList());
    LockInstance second(QString(), temp.path());
    EXPECT_FALSE(second.acquire(u"Orvanten Manager"_s));
}

TEST_F(OneInstance, WhoeverWorksOnAFolderOfDataKeepsOthersOffWhateverTheirDesktop)
{
    const QTemporaryDir data;
    const QTemporaryDir otherState;
    const QString link = m_folder.path() + u"/link"_s;
    ASSERT_TRUE(QFile::link(data.path(), link));
    {
        LockInstance first(m_folder.path(), m_folder.path());
        ASSERT_TRUE(first.acquireFolder(data.path() + u'/'));
        LockInstance second(otherState.path(), m_folder.path());
        EXPECT_TRUE(second.acquire(u"Orvanten Manager"_s));
        EXPECT_FALSE(second.acquireFolder(data.path()));
        EXPECT_FALSE(second.acquireFolder(link));
        EXPECT_TRUE(second.acquireFolder(otherState.path()));
        // Nothing of it is left among the user's files.
        EXPECT_EQ(QDir(data.path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot),
                  QStringList());
    }
    LockInstance later(otherState.path(), m_folder.path());
    EXPECT_TRUE(later.acquireFolder(data.path()));
}

TEST_F(OneInstance, TheHolderOfTheFolderIsCalledToTheFront)
{
    const QTemporaryDir data;
    const QTemporaryDir otherState;
    LockInstance first(m_folder.path(), m_folder.path());
    ASSERT_TRUE(first.acquireFolder(data.path()));
    int activations = 0;
    first.Activated = [&activations] { ++activations; };
    std::atomic<bool> ended = false;
    bool answered = false;
    std::thread loser([&] {
        LockInstance second(otherState.path(), m_folder.path());
        answered = !second.acquireFolder(data.path()) && second.activateOther();
        ended = true;
    });
    while (!ended)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    loser.join();
    QCoreApplication::processEvents();
    EXPECT_TRUE(answered);
    EXPECT_EQ(activations, 1);
}

TEST_F(OneInstance, AStateFolderThatIsNotThereYetIsMadeForItsUserAlone)
{
    const QString state = m_folder.path() + u"/state/Orvanten Manager"_s;
    LockInstance first(state, u"/dev/null"_s);
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    EXPECT_TRUE(QFile::exists(state + u"/orvanten-manager.lock"_s));
    EXPECT_EQ(QFile::permissions(state) & QFile::Permissions(0x77), QFile::Permissions());
}

TEST_F(OneInstance, WithoutAnyFolderTheProgramStartsAllTheSame)
{
    LockInstance first(QString(), u"/dev/null"_s);
    EXPECT_TRUE(first.acquire(u"Orvanten Manager"_s));
    EXPECT_FALSE(first.activateOther());
}

} // namespace
} // namespace orvantine
