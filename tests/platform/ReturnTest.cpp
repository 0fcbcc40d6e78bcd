#include "JournalTest.h"
#include "desktop/posix/InPlace.h"
#include "platform/HostText.h"

#include <algorithm>
#include <cerrno>
#include <limits>

#include <fcntl.h>
#include <sys/resource.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// What the next start does with files that have gone on since the program died.
class ReturnTest : public JournalTest
{
protected:
    /// As a loss of power does: another run of the system, and the last notes never reached the disk.
    void losePower(std::size_t lostNotes)
    {
        std::vector<JournalNote> standing = notes();
        ASSERT_GT(standing.size(), lostNotes);
        standing.resize(standing.size() - lostNotes);
        for (JournalNote& note : standing)
            note.boot += 1;
        putNotes(standing);
    }
    void dieInAHalfList()
    {
        m_world.put("liste", "eins zwei drei");
        dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.appendBytes(at(u"liste"_s), " vier")); });
    }
};

TEST_F(ReturnTest, AFileWhoseDiskIsAwayIsPutBackWhenItIsThereAgain)
{
    ASSERT_EQ(::mkdir(m_world.native("stick").c_str(), 0700), 0);
    m_world.put("stick/liste", "alt");
    m_world.put("dat", "alt");
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"stick/liste"_s), "halb"));
        EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "halb"));
    });
    std::vector<JournalNote> standing = notes();
    for (JournalNote& note : standing)
        note.folderDevice += note.path.endsWith("/liste") ? 1U : 0U;
    putNotes(standing);
    ASSERT_EQ(::rename(m_world.native("stick").c_str(), m_world.native("weg").c_str()), 0);
    {
        PosixFiles files({.recoveryFolder = m_world.recovery()});
        EXPECT_EQ(files.trouble(), std::nullopt) << "what lies elsewhere is not held up";
        EXPECT_EQ(files.waiting(), QStringList(at(u"stick/liste"_s)));
        EXPECT_EQ(m_world.bytes("dat"), "alt");
        EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "neu"));
        // It comes back while the program runs: until the next start it stays as it is.
        ASSERT_EQ(::rename(m_world.native("weg").c_str(), m_world.native("stick").c_str()), 0);
        EXPECT_FALSE(files.writeBytes(at(u"stick/liste"_s), "neu"));
        EXPECT_EQ(m_world.bytes("stick/liste"), "halb");
        ASSERT_EQ(::rename(m_world.native("stick").c_str(), m_world.native("weg").c_str()), 0);
    }
    startAgain();
    ASSERT_EQ(::rename(m_world.native("weg").c_str(), m_world.native("stick").c_str()), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("stick/liste"), "alt");
    EXPECT_EQ(m_world.bytes("dat"), "neu");
    PosixFiles files({.recoveryFolder = m_world.recovery()});
    EXPECT_EQ(files.waiting(), QStringList());
    EXPECT_TRUE(files.writeBytes(at(u"stick/liste"_s), "neu"));
}

TEST_F(ReturnTest, ANoteOfAPlaceThatNoFileReachesIsIgnored)
{
    m_world.put("dat", "alt");
    for (const qint64 far : {std::numeric_limits<qint64>::max(), qint64{1} << 62}) {
        JournalNote before;
        before.path = at(u"dat"_s).toUtf8();
        before.offset = far;
        before.bytes = "alt";
        JournalNote longer = before;
        longer.offset = 0;
        longer.length = far;
        EXPECT_TRUE(decodedNotes(encodedNote(before)).empty());
        EXPECT_TRUE(decodedNotes(encodedNote(longer)).empty());
        ASSERT_TRUE(QDir().mkpath(m_world.recovery()));
        ASSERT_EQ(::chmod(m_world.recovery().toUtf8().constData(), 0700), 0);
        putNotes({before, longer});
        startAgain();
        EXPECT_EQ(m_world.bytes("dat"), "alt");
    }
}

TEST_F(ReturnTest, SomeMegabytesArePutBackWithTheSmallFilesBesideThem)
{
    const QByteArray old((3 << 20) + 7, 'a');
    m_world.put("gross", old);
    m_world.put("klein", "alt");
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"klein"_s), "neu"));
        EXPECT_TRUE(files.writeBytes(at(u"gross"_s), QByteArray(2 << 20, 'b')));
        EXPECT_TRUE(files.appendBytes(at(u"klein"_s), " und mehr"));
        EXPECT_TRUE(files.appendBytes(at(u"gross"_s), QByteArray(2 << 20, 'c')));
    });
    ASSERT_EQ(notes().size(), 6U) << "each file as it was, and its two steps";
    startAgain();
    EXPECT_EQ(m_world.bytes("klein"), "alt");
    EXPECT_EQ(m_world.bytes("gross"), old);
}

TEST_F(ReturnTest, AFolderThatSomebodyRemovedFromADiskThatIsThereHoldsNothingUp)
{
    ASSERT_EQ(::mkdir(m_world.native("ordner").c_str(), 0700), 0);
    m_world.put("ordner/liste", "alt");
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.remove(at(u"ordner/liste"_s)));
        EXPECT_TRUE(files.writeBytes(at(u"ordner/andere"_s), "neu"));
    });
    std::filesystem::remove_all(m_world.native("ordner"));
    PosixFiles files({.recoveryFolder = m_world.recovery()});
    EXPECT_EQ(files.trouble(), std::nullopt);
    EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "neu"));
}

TEST_F(ReturnTest, BehindALossOfPowerAFileThatNobodyTouchedIsPutBack)
{
    dieInAHalfList();
    losePower(1);
    m_world.put("liste", "eins zwei drei??? vier und mehr");
    startAgain();
    EXPECT_EQ(m_world.bytes("liste"), "eins zwei drei");
    EXPECT_EQ(kept().count("liste"), 2) << "what was found is kept as well";
}

TEST_F(ReturnTest, WhatWasWrittenAfterTheEndOfThatRunStays)
{
    dieInAHalfList();
    losePower(1);
    const timespec anHourAgo[2] = {{0, UTIME_OMIT}, {::time(nullptr) - 3600, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, journal().constData(), anHourAgo, 0), 0);
    m_world.put("liste", "von Hand");
    m_world.put("liste", "von Hand geschrieben");
    startAgain();
    EXPECT_EQ(m_world.bytes("liste"), "von Hand geschrieben");
}

TEST_F(ReturnTest, AFileThatACommandMadeAndSomebodyFilledStays)
{
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"frisch"_s), "neu")); });
    losePower(1);
    m_world.put("frisch", "von Hand");
    startAgain();
    EXPECT_EQ(m_world.bytes("frisch"), "von Hand");
}

TEST_F(ReturnTest, WhatNobodyCouldExplainIsNotedBeforeItGoes)
{
    m_world.put("weg", "auch alt");
    m_world.put("liste", "eins zwei drei");
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.remove(at(u"weg"_s)));
        EXPECT_TRUE(files.appendBytes(at(u"liste"_s), " vier"));
    });
    losePower(1);
    m_world.put("liste", "eins zwei drei, gar nicht erklärt");
    const QByteArray obstacle = scratchName(QByteArray::fromStdString(m_world.native("weg")));
    ASSERT_EQ(::mkdir(obstacle.constData(), 0700), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("liste"), "eins zwei drei");
    ASSERT_FALSE(notes().empty());
    EXPECT_EQ(notes().back().kind, JournalNote::Kind::Found);
    EXPECT_EQ(notes().back().bytes, ", gar nicht erklärt");
    // It was cut off in the middle, and the system started once more long after.
    m_world.put("liste", "eins zwei drei, gar n");
    losePower(0);
    const timespec anHourAgo[2] = {{0, UTIME_OMIT}, {::time(nullptr) - 3600, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, journal().constData(), anHourAgo, 0), 0);
    ASSERT_EQ(::rmdir(obstacle.constData()), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("weg"), "auch alt");
    EXPECT_TRUE(notes().empty());
}

TEST_F(ReturnTest, TheSameBytesUnderAnotherInodeAreStillOurs)
{
    m_world.put("a", "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a"_s), "halb")); });
    m_world.put("b", "halb");
    ASSERT_EQ(::rename(m_world.native("b").c_str(), m_world.native("a").c_str()), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "alt");
}

TEST_F(ReturnTest, ALargeFileThatSomebodyPutInThePlaceOfACopyStays)
{
    m_world.put("quelle", QByteArray(17 << 20, 'x'));
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.copy(at(u"quelle"_s), at(u"ziel"_s))); });
    const timespec times[2] = {{0, UTIME_OMIT}, m_world.info("ziel").st_mtim};
    m_world.put("von Hand", QByteArray(17 << 20, 'y'));
    ASSERT_EQ(::utimensat(AT_FDCWD, m_world.native("von Hand").c_str(), times, 0), 0);
    ASSERT_EQ(::rename(m_world.native("von Hand").c_str(), m_world.native("ziel").c_str()), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("ziel").left(3), "yyy");
}

TEST_F(ReturnTest, AFileIsNeverGivenItsNameOverAnother)
{
    m_world.put("a", "unser");
    m_world.put("b", "eines anderen");
    const QByteArray a = QByteArray::fromStdString(m_world.native("a"));
    const QByteArray b = QByteArray::fromStdString(m_world.native("b"));
    EXPECT_FALSE(placeAnew(a, b));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(m_world.bytes("b"), "eines anderen");
    ASSERT_EQ(::unlink(b.constData()), 0);
    EXPECT_TRUE(placeAnew(a, b));
    EXPECT_EQ(m_world.bytes("b"), "unser");
}

TEST_F(ReturnTest, ALinkThatWasRemovedStandsAgain)
{
    m_world.put("ziel", "alt");
    ASSERT_EQ(::symlink("ziel", m_world.native("verweis").c_str()), 0);
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.remove(at(u"verweis"_s)));
        EXPECT_TRUE(files.writeBytes(at(u"verweis"_s), "eine Datei"));
    });
    startAgain();
    EXPECT_EQ(std::filesystem::read_symlink(m_world.native("verweis")), "ziel");
    EXPECT_EQ(m_world.bytes("ziel"), "alt");
    // Written through, then removed.
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"verweis"_s), "neu"));
        EXPECT_TRUE(files.remove(at(u"verweis"_s)));
    });
    startAgain();
    EXPECT_EQ(std::filesystem::read_symlink(m_world.native("verweis")), "ziel");
    EXPECT_EQ(m_world.bytes("ziel"), "alt");
}

TEST_F(ReturnTest, ALargeFileThatWasRemovedComesBackFromTheStore)
{
    const QByteArray large(20 << 20, 'x');
    m_world.put("gross", large);
    ASSERT_EQ(::chmod(m_world.native("gross").c_str(), 0640), 0);
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.remove(at(u"gross"_s))); });
    EXPECT_LT(QFile(QString::fromUtf8(journal())).size(), 10'000);
    startAgain();
    EXPECT_TRUE(m_world.bytes("gross") == large);
    EXPECT_EQ(m_world.info("gross").st_mode & 0777U, 0640U);
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.remove(at(u"gross"_s)));
        EXPECT_TRUE(files.writeBytes(at(u"gross"_s), "klein"));
    });
    startAgain();
    EXPECT_TRUE(m_world.bytes("gross") == large);
}

TEST_F(ReturnTest, OneFileUnderTwoNamesIsPutBackOnce)
{
    m_world.put("a", "alt");
    ASSERT_EQ(::link(m_world.native("a").c_str(), m_world.native("b").c_str()), 0);
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"a"_s), "eins"));
        EXPECT_TRUE(files.writeBytes(at(u"b"_s), "zwei!"));
        EXPECT_TRUE(files.appendBytes(at(u"a"_s), "drei"));
    });
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "alt");
    EXPECT_EQ(m_world.bytes("b"), "alt");
}

TEST_F(ReturnTest, AFileThatWasRemovedAndMadeAnewHasItsRightsBack)
{
    m_world.put("a", "alt");
    ASSERT_EQ(::chmod(m_world.native("a").c_str(), 0606), 0);
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.remove(at(u"a"_s)));
        EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neu"));
    });
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "alt");
    EXPECT_EQ(m_world.info("a").st_mode & 0777U, 0606U);
}

TEST_F(ReturnTest, AFileOfSomebodyElseThatMayBeWrittenIsPutBackToo)
{
    m_world.put("a", "alt");
    ASSERT_EQ(::chmod(m_world.native("a").c_str(), 0666), 0);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(m_world.native("a").c_str(), 65534, 65534), 0);
    }
    {
        PosixFiles files({.recoveryFolder = m_world.recovery()});
        WholeChange change(files);
        EXPECT_TRUE(files.writeBytes(at(u"a"_s), "halb"));
        change.fail();
    }
    EXPECT_EQ(m_world.bytes("a"), "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a"_s), "halb")); });
    EXPECT_EQ(m_world.bytes("a"), "halb");
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "alt");
}

TEST_F(ReturnTest, AJournalThatWasDeletedIsMadeAnew)
{
    m_world.put("a", "alt");
    EXPECT_TRUE(m_world.files().writeBytes(at(u"a"_s), "neu"));
    ASSERT_EQ(::unlink(journal().constData()), 0);
    EXPECT_TRUE(m_world.files().writeBytes(at(u"a"_s), "noch neuer"));
    EXPECT_TRUE(QFile::exists(QString::fromUtf8(journal())));
    {
        WholeChange change(m_world.files());
        EXPECT_TRUE(m_world.files().writeBytes(at(u"a"_s), "halb"));
        ASSERT_EQ(::unlink(journal().constData()), 0);
        EXPECT_FALSE(m_world.files().writeBytes(at(u"a"_s), "ganz"));
    }
    EXPECT_EQ(m_world.bytes("a"), "noch neuer");
}

TEST_F(ReturnTest, AHostListThatWouldBecomeTooLongIsNoPlaylist)
{
    const QByteArray lines(LargestPlaylist / 2 + 1, '\n');
    m_world.put("liste.m3u", lines);
    EXPECT_EQ(m_world.files().readPlaylist(at(u"liste.m3u"_s)).outcome, ReadOutcome::Failed);
    EXPECT_EQ(m_world.info("liste.m3u").st_size, lines.size());
}

TEST_F(ReturnTest, AFolderThatCannotBeListedProvesNoFileMissing)
{
    EXPECT_EQ(m_world.files().readBytes(at(u"fehlt"_s)).outcome, ReadOutcome::Missing);
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none = {0, before.rlim_max};
    m_world.put("neu im Ordner", "x");
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const ReadOutcome outcome = m_world.files().readBytes(at(u"fehlt"_s)).outcome;
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(outcome, ReadOutcome::Failed);
}

} // namespace
} // namespace orvantine
