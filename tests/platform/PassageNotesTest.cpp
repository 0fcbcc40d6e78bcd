#include "JournalTest.h"
#include "desktop/posix/InPlace.h"

#include <csignal>
#include <random>

#include <fcntl.h>
#include <sys/resource.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// What is noted of a large file of which little is changed.
class PassageNotes : public JournalTest
{
protected:
    [[nodiscard]] static QByteArray numbered(int lines)
    {
        QByteArray text;
        for (int line = 0; line < lines; ++line)
            text += QByteArray::number(100'000 + line) + "=eins\r\n";
        return text;
    }
    [[nodiscard]] qint64 noted() const { return QFile(m_world.recovery() + u"/Undo"_s).size(); }
};

TEST_F(PassageNotes, OfAFewBytesInTheMiddleOnlyTheyAreNoted)
{
    const QByteArray database = numbered(50'000);
    m_world.put("dat", database);
    const timespec before = m_world.info("dat").st_mtim;
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 300'007, 4, "zwei"));
        EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 300'008, 2, "WE"));
    });
    EXPECT_LT(noted(), 1'500);
    EXPECT_EQ(m_world.bytes("dat").mid(300'007, 4), "zWEi");
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), database);
    EXPECT_EQ(m_world.info("dat").st_mtim.tv_sec, before.tv_sec);
    EXPECT_EQ(m_world.info("dat").st_mtim.tv_nsec, before.tv_nsec);
}

TEST_F(PassageNotes, WhatIsChangedOutsideOfThemIsNotedThen)
{
    const QByteArray database = numbered(1'000);
    const std::function<void(PosixFiles&)> steps[] = {
        [this](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 9'000, 4, "drei")); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 20, 4, "drei")); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 4'998, 4, "drei")); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'002, 4, "drei")); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'000, 4, "laenger")); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 40, 9, {})); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.appendBytes(at(u"dat"_s), "ende=1\r\n")); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.writeBytes(at(u"dat"_s), "ganz neu\r\n")); },
        [this](PosixFiles& files) { EXPECT_TRUE(files.remove(at(u"dat"_s))); },
    };
    for (const auto& step : steps) {
        m_world.put("dat", database);
        dieAfter([&](PosixFiles& files) {
            EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'000, 4, "zwei"));
            step(files);
        });
        startAgain();
        EXPECT_EQ(m_world.bytes("dat"), database) << &step - steps;
    }
}

TEST_F(PassageNotes, WhateverIsChangedInWhateverOrderIsPutBack)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const QByteArray database = numbered(200);
        m_world.put("dat", database);
        dieAfter([&](PosixFiles& files) {
            std::mt19937 random(seed);
            const auto below = [&random](qint64 bound) {
                return std::uniform_int_distribution<qint64>(0, bound)(random);
            };
            QByteArray now = database;
            for (int step = 0; step < 8; ++step) {
                const qint64 offset = below(now.size());
                const qint64 length = std::min<qint64>(below(30), now.size() - offset);
                const bool stays = below(2) > 0;
                const QByteArray fresh(stays ? length : below(30), static_cast<char>('a' + step));
                now.replace(offset, length, fresh);
                // A whole file is written where it differs.
                EXPECT_TRUE(below(3) == 0 ? files.writeBytes(at(u"dat"_s), now)
                                          : files.replaceBytes(at(u"dat"_s), offset, length, fresh));
                EXPECT_EQ(m_world.bytes("dat"), now) << seed;
            }
        });
        startAgain();
        EXPECT_EQ(m_world.bytes("dat"), database) << seed;
    }
}

TEST_F(PassageNotes, AStepThatWasDoneInPartIsPutBack)
{
    const QByteArray database = numbered(1'000);
    m_world.put("dat", database);
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'000, 10, "0123456789")); });
    const int file = ::open(m_world.native("dat").c_str(), O_WRONLY);
    ASSERT_GE(file, 0);
    EXPECT_EQ(::pwrite(file, database.constData() + 5'003, 7, 5'003), 7);
    ::close(file);
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), database);
}

TEST_F(PassageNotes, AFileThatSomebodyHasWrittenSinceStays)
{
    const QByteArray database = numbered(1'000);
    for (const QByteArray& theirs : {database.first(4'000), database + "theirs=1\r\n"}) {
        m_world.put("dat", database);
        dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'000, 4, "zwei")); });
        m_world.put("dat", theirs);
        startAgain();
        EXPECT_EQ(m_world.bytes("dat"), theirs);
    }
}

TEST_F(PassageNotes, BehindAPartThatFailedTheRestIsNotedAnew)
{
    const QByteArray database = numbered(1'000);
    for (const bool twice : {false, true}) {
        m_world.put("dat", database);
        dieAfter([&](PosixFiles& files) {
            EXPECT_TRUE(!twice || files.replaceBytes(at(u"dat"_s), 5'000, 4, "zwei"));
            const QByteArray before = m_world.bytes("dat");
            files.beginPart();
            EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'001, 2, "ZZ"));
            EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 7'000, 4, "laenger"));
            files.failWhole();
            EXPECT_FALSE(files.endPart());
            EXPECT_EQ(m_world.bytes("dat"), before);
            EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'003, 2, "YY"));
            EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 3'000, 4, {}));
        });
        startAgain();
        EXPECT_EQ(m_world.bytes("dat"), database) << twice;
    }
}

TEST_F(PassageNotes, NotesThatContradictOneAnotherPutNothingBack)
{
    const QByteArray database = numbered(1'000);
    m_world.put("dat", database);
    dieAfter([&](PosixFiles& files) { EXPECT_TRUE(files.replaceBytes(at(u"dat"_s), 5'000, 4, "zwei")); });
    const QByteArray now = m_world.bytes("dat");
    std::vector<JournalNote> wrong = notes();
    ASSERT_EQ(2U, wrong.size());
    // Where nothing was noted of the end of the file a step cannot move it.
    wrong[1].bytes = "laenger";
    putNotes(wrong);
    startAgain();
    EXPECT_EQ(m_world.bytes("dat"), now);
}

TEST_F(PassageNotes, OfAListInWhichOneLineIsAnotherOnlyThatIsNoted)
{
    const QByteArray list = numbered(50'000);
    m_world.put("a.m3u", list);
    m_world.put("a.bak", list);
    const ino_t inode = m_world.info("a.m3u").st_ino;
    QByteArray moved = list;
    moved.replace(300'000, 26, list.mid(300'013, 13) + list.mid(300'000, 13));
    dieAfter([&](PosixFiles& files) {
        EXPECT_TRUE(files.writeBytes(at(u"a.m3u"_s), moved));
        EXPECT_TRUE(files.copy(at(u"a.m3u"_s), at(u"a.bak"_s)));
        EXPECT_LT(noted(), 3'000);
        EXPECT_EQ(m_world.bytes("a.m3u"), moved);
        EXPECT_EQ(m_world.bytes("a.bak"), moved);
    });
    startAgain();
    EXPECT_EQ(m_world.bytes("a.m3u"), list);
    EXPECT_EQ(m_world.bytes("a.bak"), list);
    EXPECT_EQ(m_world.info("a.m3u").st_ino, inode);
}

TEST_F(PassageNotes, AWriteInTheMiddleThatFailsCutsNothingOff)
{
    const QByteArray database = numbered(10'000);
    m_world.put("dat", database);
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr rlimit limit{60'000, 60'000};
        std::signal(SIGXFSZ, SIG_IGN);
        const Descriptor file(::open(m_world.native("dat").c_str(), O_RDWR));
        const bool limited = ::setrlimit(RLIMIT_FSIZE, &limit) == 0;
        const bool failed = !replaceTail(file, 80'000, QByteArrayView(database).sliced(80'000, 4), {"zwei", {}});
        ::_exit(limited && failed && errno == EFBIG ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(m_world.bytes("dat"), database);
}

TEST(CommonEnds, AreCountedToTheByte)
{
    const QByteArray text(10'000, 'x');
    for (const qsizetype place : {0, 1, 4'095, 4'096, 4'097, 9'999}) {
        QByteArray other = text;
        other[place] = 'y';
        EXPECT_EQ(commonFront(text, other), place);
        EXPECT_EQ(commonBack(text, other), 9'999 - place);
    }
    EXPECT_EQ(commonFront(text, text), 10'000);
    EXPECT_EQ(commonBack(text, text + "x"), 10'000);
    EXPECT_EQ(commonFront(text, {}), 0);
    EXPECT_EQ(commonBack({}, text), 0);
}

} // namespace

} // namespace orvantine
