#include "desktop/posix/LockInstance.h"
#include "siblings/versandhilfe/SendToEntries.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

class SendTo : public testing::Test
{
protected:
    // None of the host's programs is found.
    SendTo() { qputenv("PATH", QFile::encodeName(m_folder.filePath(u"bin"_s))); }
    ~SendTo() override { qputenv("PATH", m_hostPath); }

    /// The program that tells the file managers of new entries: it notes what it is started with, and ends like this.
    void installUpdater(const QByteArray& end) const
    {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"bin"_s));
        QFile file(m_folder.filePath(u"bin/update-desktop-database"_s));
        const QByteArray notes = QFile::encodeName(m_folder.filePath(u"notes"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) &&
                    file.write("#!/bin/sh\necho \"$#\" \"$1\" >> '" + notes + "'\n" + end + "\n") > 0);
        file.close();
        ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    /// Files below the folder with the rights of their owner, sorted.
    [[nodiscard]] std::string tree() const
    {
        QStringList all;
        QDirIterator walk(m_folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QFileInfo file(walk.next());
            all +=
                QDir(m_folder.path()).relativeFilePath(file.filePath()) + (file.isExecutable() ? u" x"_s : QString());
        }
        all.sort();
        return all.join(u'\n').toStdString();
    }
    [[nodiscard]] QByteArray bytes(const QString& name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(missing)");
    }
    [[nodiscard]] SendToEntries entries(const QString& program = u"/opt/o m/Versandhilfe.dll"_s) const
    {
        return {m_folder.filePath(u"data"_s), m_folder.filePath(u"config"_s), program};
    }

    const QByteArray m_hostPath = qgetenv("PATH");
    QTemporaryDir m_folder;
};

TEST_F(SendTo, InstallsAnEntryForEachFileManagerAndStartedAgainRemovesThem)
{
    EXPECT_FALSE(entries().installed());
    EXPECT_TRUE(entries().install());
    EXPECT_TRUE(entries().installed());
    EXPECT_EQ("config/caja/scripts/Senden an Orvanten Manager x\n"
              "data/Thunar/sendto/orvanten-manager.desktop\n"
              "data/applications/orvanten-manager-senden.desktop\n"
              "data/kio/servicemenus/orvanten-manager-senden.desktop x\n"
              "data/nautilus/scripts/Senden an Orvanten Manager x\n"
              "data/nemo/actions/orvanten-manager-senden.nemo_action",
              tree());
    EXPECT_TRUE(entries().remove());
    EXPECT_EQ("", tree());
}

TEST_F(SendTo, ThePathOfTheProgramIsQuotedForEachOfThem)
{
    ASSERT_TRUE(entries(u"/o m/$x`'100%\\\"/V.dll"_s).install());
    EXPECT_TRUE(bytes(u"data/applications/orvanten-manager-senden.desktop"_s)
                    .contains("\nExec=\"/o m/\\\\$x\\\\`'100%%\\\\\\\\\\\\\"/V.dll\" --senden %F\n"));
    EXPECT_TRUE(bytes(u"data/nautilus/scripts/Senden an Orvanten Manager"_s)
                    .contains("\nexec '/o m/$x`'\\''100%\\\"/V.dll' --senden \"$@\"\n"));
}

TEST_F(SendTo, FoldersKeepTheirOwnProgram)
{
    ASSERT_TRUE(entries().install());
    EXPECT_FALSE(bytes(u"data/applications/orvanten-manager-senden.desktop"_s).contains("inode/directory"));
    EXPECT_TRUE(bytes(u"data/kio/servicemenus/orvanten-manager-senden.desktop"_s).contains("inode/directory"));
}

TEST_F(SendTo, AFileOfSomebodyElseStays)
{
    const QString own = u"data/nautilus/scripts/Senden an Orvanten Manager"_s;
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"data/nautilus/scripts"_s));
    QFile file(m_folder.filePath(own));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("mein") == 4);
    file.close();
    EXPECT_FALSE(entries().installed());
    EXPECT_TRUE(entries().install());
    EXPECT_EQ("mein", bytes(own).toStdString());
    EXPECT_TRUE(entries().remove());
    EXPECT_EQ("mein", bytes(own).toStdString());
    EXPECT_EQ(own.toStdString(), tree());
}

TEST_F(SendTo, TheDesktopHearsOfTheEntriesThatCameAndWent)
{
    const QByteArray told = "1 " + QFile::encodeName(m_folder.filePath(u"data/applications"_s)) + '\n';
    installUpdater("exit 0");
    EXPECT_TRUE(entries().install());
    EXPECT_EQ(told.toStdString(), bytes(u"notes"_s).toStdString());
    EXPECT_TRUE(entries().remove());
    EXPECT_EQ((told + told).toStdString(), bytes(u"notes"_s).toStdString());
}

TEST_F(SendTo, ADesktopThatCannotBeToldIsNoFailure)
{
    installUpdater("echo laut; echo laut >&2; exit 1");
    EXPECT_TRUE(entries().install());
    EXPECT_TRUE(entries().remove());
}

TEST_F(SendTo, WithoutAHomeNothingIsInstalled)
{
    const SendToEntries nowhere(QString(), QString(), u"/V.dll"_s);
    EXPECT_FALSE(nowhere.install());
    EXPECT_FALSE(nowhere.installed());
}

class HandedOver : public testing::Test
{
protected:
    /// Runs in another thread while the events of the first instance are served.
    void aside(const std::function<void()>& work)
    {
        std::atomic<bool> ended = false;
        std::thread other([&] {
            work();
            ended = true;
        });
        while (!ended)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        other.join();
        QCoreApplication::processEvents();
    }
    LockInstance::Handing hand(const QStringList& paths)
    {
        LockInstance::Handing handed = LockInstance::Handing::Nobody;
        aside([&] {
            LockInstance sender(m_folder.path(), u"/tmp"_s);
            handed = sender.hand(u"Orvanten Manager"_s, paths);
        });
        return handed;
    }

    int m_count = 0;
    std::vector<char*> m_arguments{nullptr};
    QCoreApplication m_application{m_count, m_arguments.data()};
    QTemporaryDir m_folder;
    LockInstance first{m_folder.path(), u"/tmp"_s};
};

TEST_F(HandedOver, TheRunningProgramGetsTheFilesWhateverTheirNames)
{
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    QStringList got;
    first.TakesFiles = [] { return true; };
    first.Handed = [&got](const QStringList& paths) { got = paths; };
    const QStringList paths{u"/m/eins.mp3"_s, u"/m/ü % \n zwei.mp3"_s, u"/m/"_s + QString(5000, u'w')};
    EXPECT_EQ(hand(paths), LockInstance::Handing::Taken);
    EXPECT_EQ(got.join(u'|').toStdString(), paths.join(u'|').toStdString());
}

TEST_F(HandedOver, FilesWaitUntilTheProgramCanTakeThem)
{
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    QStringList got;
    bool busy = true;
    int asked = 0;
    int activations = 0;
    first.Activated = [&activations] { ++activations; };
    first.TakesFiles = [&] {
        ++asked;
        return !busy;
    };
    first.Handed = [&got](const QStringList& paths) { got += u"["_s + paths.join(u'|') + u"]"_s; };
    EXPECT_EQ(hand({u"/m/eins.mp3"_s}), LockInstance::Handing::Taken);
    EXPECT_EQ(hand({u"/m/zwei.mp3"_s, u"/m/drei.mp3"_s}), LockInstance::Handing::Taken);
    EXPECT_EQ(activations, 2) << "the window comes to the front all the same";
    const int before = asked;
    while (asked <= before)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(got, QStringList());
    busy = false;
    while (got.isEmpty())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(got.join(u' ').toStdString(), "[/m/eins.mp3|/m/zwei.mp3|/m/drei.mp3]");
}

TEST_F(HandedOver, ALaterInstanceHandsOverWhatItWasStartedForAndItsLeaveToComeToTheFront)
{
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    QStringList got;
    QByteArray token;
    first.Activated = [&token] { token = qgetenv("XDG_ACTIVATION_TOKEN"); };
    first.TakesFiles = [] { return true; };
    first.Handed = [&got](const QStringList& paths) { got += paths; };
    bool answered = false;
    aside([&] {
        LockInstance second(m_folder.path(), u"/tmp"_s, {.paths = {u"/m/eins ö.mp3"_s}, .token = "a b\n%_TIME7"});
        answered = !second.acquire(u"Orvanten Manager"_s) && second.activateOther();
    });
    EXPECT_TRUE(answered);
    EXPECT_EQ(got.join(u'|').toStdString(), "/m/eins ö.mp3");
    EXPECT_EQ(token.toStdString(), "a b\n%_TIME7");
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    aside([&] {
        LockInstance third(m_folder.path(), u"/tmp"_s, {.paths = {}, .token = "noch einer"});
        answered = !third.acquire(u"Orvanten Manager"_s) && third.activateOther();
    });
    EXPECT_TRUE(answered);
    EXPECT_EQ(token.toStdString(), "noch einer");
}

TEST_F(HandedOver, TheFirstInstanceTakesWhatItWasStartedForWhenItCan)
{
    LockInstance started(m_folder.path(), u"/tmp"_s, {.paths = {u"/m/eins.mp3"_s}, .token = {}});
    ASSERT_TRUE(started.acquire(u"Orvanten Manager"_s));
    QStringList got;
    started.Handed = [&got](const QStringList& paths) { got += paths; };
    bool loaded = false;
    started.TakesFiles = [&loaded] { return std::exchange(loaded, true); };
    while (got.isEmpty())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(got.join(u'|').toStdString(), "/m/eins.mp3");
}

TEST_F(HandedOver, WithoutAProgramNobodyTakesThem)
{
    EXPECT_EQ(hand({u"/m/eins.mp3"_s}), LockInstance::Handing::Nobody);
}

TEST_F(HandedOver, AnOfferWithoutAnEndIsHungUpOn)
{
    ASSERT_TRUE(first.acquire(u"Orvanten Manager"_s));
    int handed = 0;
    first.TakesFiles = [] { return true; };
    first.Handed = [&handed](const QStringList&) { ++handed; };
    bool hungUp = false;
    aside([&] {
        QLocalSocket socket;
        socket.connectToServer(m_folder.path() + u"/orvanten-manager.socket"_s);
        ASSERT_TRUE(socket.waitForConnected(5000));
        socket.write("nehmen\n" + QByteArray(16 << 20, 'w'));
        hungUp = socket.waitForDisconnected(5000) || socket.state() == QLocalSocket::UnconnectedState;
    });
    EXPECT_TRUE(hungUp);
    EXPECT_EQ(handed, 0);
}

} // namespace
} // namespace orvantine
