#include "JournalTest.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// What stands in the way of a return, and what happens until it is gone.
class StuckJournalTest : public JournalTest
{
protected:
    /// A list is gone, and a folder bears the name under which it would come back.
    void dieAndBlock()
    {
        m_world.put("dat", "alt");
        m_world.put("weg", "auch alt");
        dieAfter([&](PosixFiles& files) {
            EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "halb"));
            EXPECT_TRUE(files.remove(at(u"weg"_s)));
        });
        m_obstacle = scratchName(QByteArray::fromStdString(m_world.native("weg")));
        ASSERT_EQ(::mkdir(m_obstacle.constData(), 0700), 0);
    }
    void clearTheWay() { ASSERT_EQ(::rmdir(m_obstacle.constData()), 0); }
    /// Refused until the start behind.
    void expectRefusal(PosixFiles& files)
    {
        EXPECT_EQ(files.trouble(), FilesTrouble::Unfinished);
        EXPECT_FALSE(files.writeBytes(at(u"neu"_s), "neu"));
        EXPECT_FALSE(QFile::exists(at(u"neu"_s)));
    }

    QByteArray m_obstacle;
};

TEST_F(StuckJournalTest, WhatWasReadWhileItWasHalfDoneIsNeverWrittenBack)
{
    dieAndBlock();
    {
        PosixFiles files({.recoveryFolder = m_world.recovery()});
        const QByteArray read = files.readBytes(at(u"weg"_s)).bytes;
        clearTheWay();
        files.beginCommand();
        EXPECT_FALSE(files.writeBytes(at(u"dat"_s), read + "x"));
        expectRefusal(files);
    }
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), "alt");
    EXPECT_EQ(m_world.bytes("weg"), "auch alt");
}

TEST_F(StuckJournalTest, BeforeTheFirstReadTheReturnIsTriedAgain)
{
    dieAndBlock();
    PosixFiles files({.recoveryFolder = m_world.recovery()});
    EXPECT_EQ(files.trouble(), FilesTrouble::Unfinished);
    clearTheWay();
    files.beginCommand();
    EXPECT_EQ(files.trouble(), std::nullopt);
    EXPECT_EQ(m_world.bytes("weg"), "auch alt");
    EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "neu"));
}

TEST_F(StuckJournalTest, AJournalThatCouldNotBeOpenedIsNeitherUsedNorDropped)
{
    m_world.put("dat", "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "halb")); });
    const QByteArray folder = m_world.recovery().toUtf8();
    const QByteArray second = folder + "/zweiter Name";
    const std::vector<std::pair<std::function<void()>, std::function<void()>>> obstacles = {
        {[&] { ::chmod(folder.constData(), 0755); }, [&] { ::chmod(folder.constData(), 0700); }},
        {[&] { ::link(journal().constData(), second.constData()); }, [&] { ::unlink(second.constData()); }},
        {[&] { ::chmod(journal().constData(), 0644); }, [&] { ::chmod(journal().constData(), 0600); }},
    };
    for (const auto& [block, clear] : obstacles) {
        block();
        PosixFiles files({.recoveryFolder = m_world.recovery()});
        (void)files.readBytes(at(u"dat"_s));
        clear();
        expectRefusal(files);
        EXPECT_EQ(m_world.bytes("dat"), "halb");
    }
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), "alt");
}

TEST_F(StuckJournalTest, AJournalThatAnotherProgramHeldAtTheStartIsNotDropped)
{
    m_world.put("dat", "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "halb")); });
    Descriptor other(::open(journal().constData(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(::flock(other.get(), LOCK_EX), 0);
    PosixFiles files({.recoveryFolder = m_world.recovery()});
    (void)files.readBytes(at(u"dat"_s));
    other.close();
    expectRefusal(files);
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), "alt");
}

TEST_F(StuckJournalTest, WithoutAFreeDescriptorAtTheStartTheJournalStays)
{
    m_world.put("dat", "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "halb")); });
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none = {0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    PosixFiles files({.recoveryFolder = m_world.recovery()});
    (void)files.readBytes(at(u"dat"_s));
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    expectRefusal(files);
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), "alt");
}

TEST_F(StuckJournalTest, AJournalThatCameWhileTheProgramRanIsNotDropped)
{
    m_world.put("dat", "alt");
    {
        PosixFiles files({.recoveryFolder = m_world.recovery()});
        dieAfter([&](PosixFiles& other) { EXPECT_TRUE(other.writeBytes(at(u"dat"_s), "halb")); });
        EXPECT_FALSE(files.writeBytes(at(u"dat"_s), "neu"));
        expectRefusal(files);
    }
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), "alt");
}

TEST_F(StuckJournalTest, APartInsideAFailedChangeDoesNothing)
{
    m_world.put("dat", "alt");
    ASSERT_EQ(::mkdir(m_world.native("ordner").c_str(), 0700), 0);
    {
        WholeChange change(m_world.files());
        EXPECT_TRUE(m_world.files().replaceBytes(at(u"dat"_s), 0, 1, "neu"));
        EXPECT_FALSE(m_world.files().writeBytes(at(u"ordner"_s), "x"));
        {
            const PartChange part(m_world.files());
            EXPECT_FALSE(m_world.files().appendBytes(at(u"dat"_s), " dazu"));
        }
        EXPECT_TRUE(change.failed());
    }
    EXPECT_EQ(m_world.bytes("dat"), "alt");
}

} // namespace
} // namespace orvantine
