#include "JournalTest.h"
#include "desktop/posix/JournalNotes.h"
#include "desktop/posix/RecoveryStore.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

#include <fcntl.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class UndoJournalTest : public JournalTest
{
};

TEST_F(UndoJournalTest, WhatAKilledCommandWroteIsPutBack)
{
    const QByteArray database = "[TagInfo]\r\na=b\r\n[Index]\r\n" + QByteArray(9'000, 'i');
    m_world.put("dat", database);
    m_world.put("liste", "eins\r\n");
    const timespec before = m_world.info("dat").st_mtim;
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 26, 8'990, {}));
        for (int i = 0; i < 100; ++i)
            EXPECT_TRUE(files.appendBytes(at(u"dat"_s), "1a=000\r\n"));
        EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 11, 3, "anders"));
        EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 0, 1, "("));
        EXPECT_TRUE(files.writeBytes(at(u"liste"_s), "zwei\r\n"));
        EXPECT_TRUE(files.appendBytes(at(u"liste"_s), "drei\r\n"));
    });
    EXPECT_NE(m_world.bytes("dat"), database);
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), database);
    EXPECT_EQ(m_world.bytes("liste"), "eins\r\n");
    EXPECT_EQ(m_world.info("dat").st_mtim.tv_sec, before.tv_sec);
    EXPECT_EQ(m_world.info("dat").st_mtim.tv_nsec, before.tv_nsec);
}

TEST_F(UndoJournalTest, WhatAKilledCommandRemovedOrMadeIsPutBack)
{
    m_world.put("weg.m3u", "eins\r\n");
    ASSERT_EQ(::chmod(m_world.native("weg.m3u").c_str(), 0640), 0);
    m_world.put("bak", "alt");
    m_world.put("dat", "neu");
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"weg.m3u"_s), "anders\r\n"));
        EXPECT_TRUE(files.copy(at(u"weg.m3u"_s), at(u"weg.bak"_s)));
        EXPECT_TRUE(files.remove(at(u"weg.m3u"_s)));
        EXPECT_TRUE(files.remove(at(u"bak"_s)));
        EXPECT_TRUE(files.copy(at(u"dat"_s), at(u"bak"_s)));
    });
    startAgain();
    EXPECT_EQ(m_world.bytes("weg.m3u"), "eins\r\n");
    EXPECT_EQ(m_world.info("weg.m3u").st_mode & 07777U, 0640U);
    EXPECT_EQ(m_world.bytes("bak"), "alt");
    EXPECT_FALSE(QFile::exists(at(u"weg.bak"_s)));
}

TEST_F(UndoJournalTest, WhatACommandDidToItsEndStays)
{
    m_world.put("a", "alt");
    {
        PosixFiles files({.recoveryFolder = m_world.recovery()});
        const WholeChange outer(files);
        {
            const WholeChange inner(files);
            EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neu"));
        }
        EXPECT_TRUE(files.appendBytes(at(u"b"_s), "neu"));
    }
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "neu");
    EXPECT_EQ(m_world.bytes("b"), "neu");
}

TEST_F(UndoJournalTest, ChangesFromTheEndToTheHeadNoteTheFileOnce)
{
    QByteArray database;
    for (int i = 0; i < 10'000; ++i)
        database += QByteArray::number(100'000 + i) + "=eins\r\n";
    m_world.put("dat", database);
    dieAfter([&](PosixFiles& files) {
        for (qint64 at = 9'000; at >= 0; at -= 100)
            EXPECT_TRUE(
                files.replaceBytes(m_world.folder() + u"/dat"_s, at * 13 + 7, 4, at % 200 == 0 ? "zwei!" : "eine"));
        EXPECT_TRUE(files.appendBytes(m_world.folder() + u"/dat"_s, "ende=1\r\n"));
        EXPECT_TRUE(files.replaceBytes(m_world.folder() + u"/dat"_s, 60'000, 4, {}));
    });
    EXPECT_LT(QFile(m_world.recovery() + u"/Undo"_s).size(), database.size() + 50'000);
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), database);
}

TEST_F(UndoJournalTest, AnInnerEndDoesNotEndTheCommand)
{
    m_world.put("a", "alt");
    m_world.put("b", "alt");
    dieAfter([&](PosixFiles& files) {
        {
            const WholeChange inner(files);
            EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neu"));
        }
        EXPECT_TRUE(files.writeBytes(at(u"b"_s), "neu"));
    });
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "alt");
    EXPECT_EQ(m_world.bytes("b"), "alt");
}

TEST_F(UndoJournalTest, AnotherFileOfThatNameIsLeftAlone)
{
    m_world.put("a", "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neu")); });
    m_world.put("b", "eines anderen");
    ASSERT_EQ(::rename(m_world.native("b").c_str(), m_world.native("a").c_str()), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "eines anderen");
}

TEST_F(UndoJournalTest, WhatSomebodyElseHasWrittenSinceStays)
{
    for (const char* since : {"von Hand", "neue", "ne", "nlu"}) {
        m_world.put("a.dat", "alt");
        dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a.dat"_s), "neu")); });
        m_world.put("a.dat", since);
        startAgain();
        const bool torn = QByteArray(since) == "nlu";
        EXPECT_EQ(m_world.bytes("a.dat"), torn ? "alt" : since) << since;
    }
}

TEST_F(UndoJournalTest, AWriteThatWasCutOffIsPutBack)
{
    const QByteArray old(50'000, 'a');
    for (const QByteArray& fresh : {QByteArray(40'000, 'b'), QByteArray(60'000, 'b'), QByteArray(), old + "b"}) {
        for (const qsizetype cut : {qsizetype{0}, qsizetype{1}, qsizetype{8192}, fresh.size() / 2, fresh.size()}) {
            m_world.put("a", old);
            dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a"_s), fresh)); });
            // What a write leaves that came so far: what goes beyond the old end comes first, what is cut off last.
            const qsizetype done = std::min(cut, fresh.size());
            QByteArray torn = fresh.size() > old.size() ? old + fresh.mid(old.size()) : old;
            torn.replace(0, done, fresh.first(done));
            m_world.put("a", torn);
            startAgain();
            EXPECT_EQ(m_world.bytes("a"), old) << fresh.size() << " cut at " << cut;
        }
    }
}

TEST_F(UndoJournalTest, AFailingStepPutsTheWholeChangeBack)
{
    m_world.put("dat", "alt");
    m_world.put("weg", "auch alt");
    ASSERT_EQ(::mkdir(m_world.native("ordner").c_str(), 0700), 0);
    PosixFiles& files = m_world.files();
    {
        WholeChange change(files);
        EXPECT_TRUE(files.appendBytes(at(u"dat"_s), " und mehr"));
        EXPECT_TRUE(files.remove(at(u"weg"_s)));
        EXPECT_TRUE(files.writeBytes(at(u"frisch"_s), "neu"));
        EXPECT_FALSE(files.writeBytes(at(u"ordner"_s), "x")) << "a folder is no file";
        EXPECT_TRUE(change.failed());
        EXPECT_FALSE(files.appendBytes(at(u"dat"_s), "nicht mehr"));
        EXPECT_FALSE(change.end());
    }
    EXPECT_EQ(m_world.bytes("dat"), "alt");
    EXPECT_EQ(m_world.bytes("weg"), "auch alt");
    EXPECT_FALSE(QFile::exists(at(u"frisch"_s)));
    EXPECT_TRUE(files.takeFault());
    EXPECT_TRUE(files.appendBytes(at(u"dat"_s), "!"));
    EXPECT_EQ(m_world.bytes("dat"), "alt!");
    EXPECT_FALSE(files.takeFault());
}

TEST_F(UndoJournalTest, NothingThereToCopyOrToRemoveIsNoFault)
{
    PosixFiles& files = m_world.files();
    WholeChange change(files);
    EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neu"));
    EXPECT_FALSE(files.copy(at(u"nichts"_s), at(u"b"_s)));
    EXPECT_FALSE(files.remove(at(u"nichts"_s)));
    EXPECT_TRUE(change.end());
    EXPECT_EQ(m_world.bytes("a"), "neu");
    EXPECT_FALSE(files.takeFault());
}

TEST_F(UndoJournalTest, APartThatFailsIsPutBackAlone)
{
    m_world.put("dat", "alt");
    m_world.put("liste", "eins");
    ASSERT_EQ(::mkdir(m_world.native("ordner").c_str(), 0700), 0);
    PosixFiles& files = m_world.files();
    {
        WholeChange change(files);
        EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "neu"));
        {
            const PartChange part(files);
            EXPECT_TRUE(files.writeBytes(at(u"liste"_s), "zwei"));
            EXPECT_TRUE(files.appendBytes(at(u"dat"_s), " dazu"));
            EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 0, 1, "N"));
            EXPECT_FALSE(files.writeBytes(at(u"ordner"_s), "x"));
        }
        EXPECT_FALSE(change.failed());
        EXPECT_EQ(m_world.bytes("dat"), "neu");
        EXPECT_EQ(m_world.bytes("liste"), "eins");
        EXPECT_TRUE(files.appendBytes(at(u"dat"_s), "er"));
        EXPECT_TRUE(change.end());
    }
    EXPECT_EQ(m_world.bytes("dat"), "neuer");
    EXPECT_FALSE(files.takeFault());
}

TEST_F(UndoJournalTest, AChangeWithAPartThatFailedIsPutBackAsAWhole)
{
    m_world.put("dat", "alt");
    ASSERT_EQ(::mkdir(m_world.native("ordner").c_str(), 0700), 0);
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "neu"));
        {
            const PartChange part(files);
            EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "noch neuer"));
            EXPECT_FALSE(files.writeBytes(at(u"ordner"_s), "x"));
        }
        EXPECT_TRUE(files.appendBytes(at(u"dat"_s), "er"));
    });
    EXPECT_EQ(m_world.bytes("dat"), "neuer");
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), "alt");
}

TEST_F(UndoJournalTest, WithoutAPlaceOfOnesOwnNothingIsChanged)
{
    m_world.put("a", "alt");
    const auto refuses = [this](const QString& recovery) {
        PosixFiles files({.recoveryFolder = recovery});
        EXPECT_EQ(files.trouble(), FilesTrouble::NoSafePlace) << recovery.toStdString();
        EXPECT_FALSE(files.writeBytes(at(u"a"_s), "neu"));
        EXPECT_FALSE(files.appendBytes(at(u"b"_s), "neu"));
        EXPECT_FALSE(files.remove(at(u"a"_s)));
        EXPECT_EQ(files.takeFault(), WriteFault::NoSafePlace);
        EXPECT_EQ(m_world.bytes("a"), "alt");
        EXPECT_FALSE(QFile::exists(at(u"b"_s)));
    };
    refuses({});
    QDir(m_world.folder()).mkdir(u"ziel"_s);
    ASSERT_TRUE(QFile::link(at(u"ziel"_s), at(u"verweis"_s)));
    refuses(at(u"verweis"_s));
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(m_world.native("ziel").c_str(), 65534, 65534), 0);
        refuses(at(u"ziel"_s));
    }
}

TEST_F(UndoJournalTest, AJournalThatOthersCouldHaveWrittenIsNotBelieved)
{
    m_world.put("a", "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neu")); });
    const QByteArray journal = (m_world.recovery() + u"/Undo"_s).toUtf8();
    ASSERT_EQ(::chmod(journal.constData(), 0666), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "neu");
    ASSERT_EQ(::chmod(journal.constData(), 0600), 0);
    ASSERT_EQ(::chmod(m_world.recovery().toUtf8().constData(), 0777), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "neu");
    ASSERT_EQ(::chmod(m_world.recovery().toUtf8().constData(), 0700), 0);
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "alt");
}

TEST_F(UndoJournalTest, OneFlippedBitNeverMakesAFileThatNeverWas)
{
    const QByteArray old = "[Index]\r\n1a=000\r\n";
    m_world.put("a", old);
    m_world.put("fremd", "fremd");
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.replaceBytes(at(u"a"_s), 9, 8, {}));
        EXPECT_TRUE(files.appendBytes(at(u"a"_s), "1a=001\r\n"));
    });
    const QByteArray after = m_world.bytes("a");
    QFile journal(m_world.recovery() + u"/Undo"_s);
    ASSERT_TRUE(journal.open(QIODevice::ReadOnly));
    const QByteArray whole = journal.readAll();
    journal.close();
    for (qsizetype bit = 0; bit < whole.size() * 8; bit += 7) {
        QByteArray damaged = whole;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        ASSERT_TRUE(journal.open(QIODevice::WriteOnly | QIODevice::Truncate));
        journal.write(damaged);
        journal.close();
        m_world.put("a", after);
        startAgain();
        EXPECT_TRUE(m_world.bytes("a") == old || m_world.bytes("a") == after) << bit;
    }
    EXPECT_EQ(m_world.bytes("fremd"), "fremd");
}

TEST_F(UndoJournalTest, AReturnThatIsBrokenOffGoesOnAtTheNextStart)
{
    m_world.put("a", "alt");
    m_world.put("weg", "auch alt");
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neuer"));
        EXPECT_TRUE(files.remove(at(u"weg"_s)));
        EXPECT_TRUE(files.writeBytes(at(u"frisch"_s), "neu"));
    });
    QFile journal(m_world.recovery() + u"/Undo"_s);
    ASSERT_TRUE(journal.open(QIODevice::ReadOnly));
    const QByteArray whole = journal.readAll();
    journal.close();
    // It dies in front of the last step of all: everything is put back, and the notes still stand.
    for (const char* half : {"alt", "alter", "neter", "neuer"}) {
        startAgain();
        m_world.put("a", half);
        ASSERT_TRUE(journal.open(QIODevice::WriteOnly | QIODevice::Truncate));
        journal.write(whole);
        journal.close();
        startAgain();
        EXPECT_EQ(m_world.bytes("a"), "alt") << half;
        EXPECT_EQ(m_world.bytes("weg"), "auch alt");
        EXPECT_FALSE(QFile::exists(at(u"frisch"_s)));
    }
}

TEST_F(UndoJournalTest, ALargeCopyThatWasBrokenOffLeavesNothing)
{
    const QByteArray large(17 << 20, 'x');
    m_world.put("quelle", large);
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.copy(at(u"quelle"_s), at(u"ziel"_s))); });
    EXPECT_EQ(m_world.bytes("ziel"), large);
    const QByteArray scratch = scratchName(QByteArray::fromStdString(m_world.native("ziel")));
    m_world.put(scratch.sliced(scratch.lastIndexOf('/') + 1), "halb");
    startAgain();
    EXPECT_FALSE(QFile::exists(at(u"ziel"_s)));
    EXPECT_EQ(QDir(m_world.folder()).entryList(QDir::Files | QDir::Hidden), QStringList{u"quelle"_s});
}

TEST_F(UndoJournalTest, ASecondProgramPutsNothingBackBesideARunningOne)
{
    m_world.put("a", "alt");
    PosixFiles running({.recoveryFolder = m_world.recovery()});
    const WholeChange change(running);
    EXPECT_TRUE(running.writeBytes(at(u"a"_s), "neu"));
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "neu");
}

TEST_F(UndoJournalTest, ADamagedJournalPutsNothingBack)
{
    m_world.put("a", "alt");
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a"_s), "neu")); });
    QFile journal(m_world.recovery() + u"/Undo"_s);
    ASSERT_TRUE(journal.open(QIODevice::ReadWrite));
    const QByteArray whole = journal.readAll();
    ASSERT_GT(whole.size(), 100);
    for (const QByteArray& bytes : {whole.first(whole.size() - 1), whole.first(60),
                                    QByteArray(whole).replace("alt", "ALT"), QByteArray(5000, '\xff')}) {
        ASSERT_TRUE(journal.resize(0) && journal.seek(0));
        journal.write(bytes);
        journal.flush();
        startAgain();
        EXPECT_EQ(m_world.bytes("a"), "neu");
    }
    // The journal is used again afterwards.
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"a"_s), "noch neuer")); });
    startAgain();
    EXPECT_EQ(m_world.bytes("a"), "neu");
}

TEST_F(UndoJournalTest, OldBytesAreKeptWhateverTheEnding)
{
    PosixFiles& files = m_world.files();
    for (const char* name : {"ersetzt.m3u", "weg.pls", "Bild.JPG", "dat", "lied.mp3"})
        m_world.put(name, QByteArray("alt ") + name);
    EXPECT_TRUE(files.writeBytes(at(u"ersetzt.m3u"_s), "neu"));
    EXPECT_TRUE(files.remove(at(u"weg.pls"_s)));
    EXPECT_TRUE(files.copy(at(u"dat"_s), at(u"Bild.JPG"_s)));
    EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "neu"));
    EXPECT_TRUE(files.remove(at(u"lied.mp3"_s)));
    QByteArrayList names = kept();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (QByteArrayList{"Bild.JPG", "dat", "ersetzt.m3u", "lied.mp3", "weg.pls"}));
    EXPECT_TRUE(files.writeBytes(at(u"ersetzt.m3u"_s), "neu")) << "nothing changes";
    EXPECT_EQ(kept().size(), 5);
}

TEST_F(UndoJournalTest, AFileThatCannotBeReadIsNotRemoved)
{
    m_world.put("liste.m3u", "eins.mp3\r\n");
    ASSERT_EQ(::chmod(m_world.native("liste.m3u").c_str(), 0), 0);
    // Root reads it all the same, and keeps it.
    EXPECT_EQ(m_world.files().remove(at(u"liste.m3u"_s)), ::geteuid() == 0);
    EXPECT_EQ(m_world.kept().size(), ::geteuid() == 0 ? 1 : 0);
}

class RecoveryStoreTest : public testing::Test
{
protected:
    /// A copy of `size` bytes that was made so many days ago.
    void layOut(const QByteArray& path, int daysAgo, qint64 size, char content)
    {
        const QByteArray bytes(1, content);
        const QByteArray copy = QCryptographicHash::hash(bytes + path, QCryptographicHash::Sha256).toHex() + "-x";
        QFile file(folder.filePath(QString::fromUtf8(copy)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == 1 && file.resize(size));
        QFile contents(folder.filePath(u"Contents"_s));
        ASSERT_TRUE(contents.open(QIODevice::Append));
        contents.write(QByteArray::number(::time(nullptr) - qint64{daysAgo} * 86400) + '\t' + copy + '\t' + path +
                       '\n');
        names << copy;
    }
    [[nodiscard]] bool stands(int copy) const { return QFile::exists(folder.filePath(QString::fromUtf8(names[copy]))); }

    QTemporaryDir folder;
    QByteArrayList names;
};

TEST_F(RecoveryStoreTest, CopiesOlderThanNinetyDaysGoButTheNewestOfAPath)
{
    layOut("/a.m3u", 200, 10, 'a');
    layOut("/a.m3u", 95, 10, 'b');
    layOut("/b.m3u", 91, 10, 'c');
    layOut("/b.m3u", 1, 10, 'd');
    RecoveryStore store(folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/c.m3u", "neu"));
    EXPECT_FALSE(stands(0));
    EXPECT_TRUE(stands(1));
    EXPECT_FALSE(stands(2));
    EXPECT_TRUE(stands(3));
}

TEST_F(RecoveryStoreTest, BeyondTwoHundredMegabytesTheOldestGo)
{
    constexpr qint64 Megabyte = 1 << 20;
    layOut("/a.m3u", 30, 90 * Megabyte, 'a');
    layOut("/a.m3u", 20, 90 * Megabyte, 'b');
    layOut("/a.m3u", 10, 90 * Megabyte, 'c');
    layOut("/b.m3u", 5, 250 * Megabyte, 'd');
    RecoveryStore store(folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/c.m3u", "neu"));
    EXPECT_FALSE(stands(0));
    EXPECT_FALSE(stands(1));
    EXPECT_TRUE(stands(2)) << "the newest of its path";
    EXPECT_TRUE(stands(3)) << "the newest of its path";
}

TEST_F(RecoveryStoreTest, OneContentIsKeptOnceAndGoesWithItsLastEntry)
{
    RecoveryStore store(folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/a/x.m3u", "eins"));
    ASSERT_TRUE(store.keep("/b/x.m3u", "eins"));
    EXPECT_EQ(QDir(folder.path()).entryList({u"*-x.m3u"_s}, QDir::Files).size(), 1);
}

TEST_F(RecoveryStoreTest, ADamagedTableOfContentsHarmsNothing)
{
    QFile contents(folder.filePath(u"Contents"_s));
    ASSERT_TRUE(contents.open(QIODevice::WriteOnly));
    contents.write("x\ty\n1\t../../etc/passwd\t/a\n\t\t\n" + QByteArray(1000, '\xff'));
    contents.close();
    RecoveryStore store(folder.path().toUtf8());
    EXPECT_TRUE(store.keep("/c.m3u", "neu"));
    EXPECT_TRUE(QFile::exists(u"/etc/passwd"_s));
}

TEST_F(RecoveryStoreTest, ALineThatWasCutOffSpoilsNoOther)
{
    QFile contents(folder.filePath(u"Contents"_s));
    ASSERT_TRUE(contents.open(QIODevice::ReadWrite));
    contents.write("1700000000\tabc");
    contents.flush();
    RecoveryStore store(folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/c.m3u", "neu"));
    ASSERT_TRUE(contents.seek(0));
    EXPECT_TRUE(contents.readAll().split('\n').value(1).endsWith("-c.m3u\t/c.m3u"));
}

TEST_F(RecoveryStoreTest, ALongTableOfContentsLosesNoNewEntry)
{
    QFile contents(folder.filePath(u"Contents"_s));
    ASSERT_TRUE(contents.open(QIODevice::WriteOnly));
    contents.write(QByteArray("1700000000\tgone\t/a/long/path/of/a/list.m3u\n").repeated(400'000));
    contents.close();
    layOut("/b.m3u", 1, 10, 'b');
    RecoveryStore store(folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/c.m3u", "neu"));
    ASSERT_TRUE(contents.open(QIODevice::ReadOnly));
    EXPECT_LT(contents.size(), 1000);
    EXPECT_TRUE(contents.readAll().contains("/b.m3u"));
}

TEST_F(RecoveryStoreTest, WithoutAFolderNothingIsKept)
{
    EXPECT_FALSE(RecoveryStore(QByteArray()).keep("/a.m3u", "x"));
    EXPECT_FALSE(RecoveryStore("/dev/null/x").keep("/a.m3u", "x"));
}

} // namespace
} // namespace orvantine
