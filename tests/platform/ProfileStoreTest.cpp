#include "TempWorld.h"

#include "platform/ProfileStore.h"

#include <fcntl.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class ProfileStoreTest : public testing::Test
{
protected:
    [[nodiscard]] QString value(const QString& section, const QString& key)
    {
        return m_store.value(m_file, section, key);
    }
    bool set(const QString& section, const QString& key, const QString& value)
    {
        return m_store.setValue(m_file, section, key, value);
    }
    void put(const QByteArray& bytes) const { m_world.put("Orvantine.dat", bytes); }
    [[nodiscard]] QByteArray bytes() const { return m_world.bytes("Orvantine.dat"); }

    TempWorld m_world;
    ProfileStore m_store{m_world.files()};
    QString m_file = m_world.folder() + u"/Orvantine.dat"_s;
};

// Reading

TEST_F(ProfileStoreTest, AMissingFileSectionOrKeyGivesNothing)
{
    EXPECT_EQ(value(u"Index"_s, u"1b"_s), QString());
    put("[Index]\r\n1a=000\r\n");
    EXPECT_EQ(value(u"Index"_s, u"1b"_s), QString());
    EXPECT_EQ(value(u"Options"_s, u"1a"_s), QString());
    EXPECT_EQ(m_store.keys(m_file, u"Options"_s), QStringList());
}

TEST_F(ProfileStoreTest, AFileWhoseLinesEndInCrAloneIsNotReadAndNotChanged)
{
    for (const QByteArray& text : {"[Index]\r1b=Erste\r1c=/Erste.m3u\r"_ba, "\r[Index]"_ba, "[A]\r \r1=x"_ba}) {
        put(text);
        const int failed = m_store.failedReads();
        EXPECT_EQ(value(u"Index"_s, u"1b"_s), QString());
        EXPECT_EQ(m_store.failedReads(), failed + 1);
        EXPECT_FALSE(set(u"Index"_s, u"1b"_s, u"Neu"_s));
        EXPECT_FALSE(m_store.removeSection(m_file, u"Index"_s));
        EXPECT_EQ(bytes(), text);
    }
    const int failed = m_store.failedReads();
    for (const QByteArray& text : {"[A]\r"_ba, "[A] \r \r\t"_ba, "[A]"_ba, ""_ba, "[A]\r1=x\r\n[Index]\r\n"_ba}) {
        put(text);
        EXPECT_EQ(value(u"A"_s, u"2"_s), QString());
        EXPECT_TRUE(set(u"Index"_s, u"1b"_s, u"Neu"_s)) << text.toStdString();
        EXPECT_EQ(value(u"Index"_s, u"1b"_s), u"Neu"_s) << text.toStdString();
    }
    EXPECT_EQ(m_store.failedReads(), failed);
}

TEST_F(ProfileStoreTest, WhileItIsHeldSteadyTheFileIsNotAskedAgain)
{
    put("[A]\r\n1=alt\r\n");
    {
        const ProfileStore::Steady steady(m_store, m_file);
        put("[A]\r\n1=neuer\r\n");
        EXPECT_EQ(value(u"A"_s, u"1"_s), u"alt"_s);
    }
    EXPECT_EQ(value(u"A"_s, u"1"_s), u"neuer"_s);
}

TEST_F(ProfileStoreTest, SectionAndKeyAreFoundIgnoringCase)
{
    put("[TagInfo]\r\n/Musik/K\xc3\xb6ln \xc3\x9c.mp3=Titel\r\n");
    EXPECT_EQ(value(u"TAGINFO"_s, u"/MUSIK/KÖLN ü.MP3"_s), u"Titel"_s);
    EXPECT_EQ(value(u"taginfo"_s, u"/musik/köln Ü.mp3"_s), u"Titel"_s);
}

TEST_F(ProfileStoreTest, TheFirstEqualsSignSplitsAndBlanksAroundAreDropped)
{
    put("[A]\r\n a b \t=  c = d \t\r\n  [ B ] \r\n\tk=v\r\n");
    EXPECT_EQ(value(u"A"_s, u"a b"_s), u"c = d"_s);
    EXPECT_EQ(value(u" A "_s, u" a b "_s), u"c = d"_s);
    EXPECT_EQ(value(u"B"_s, u"k"_s), u"v"_s);
}

TEST_F(ProfileStoreTest, OnePairOfEqualQuotesIsDropped)
{
    put("[A]\r\n1=\"x y\"\r\n2='x'\r\n3=\"x'\r\n4=\"\"x\"\"\r\n5=\"\r\n6=\"\"\r\n7= \" x \" \r\n");
    EXPECT_EQ(value(u"A"_s, u"1"_s), u"x y"_s);
    EXPECT_EQ(value(u"A"_s, u"2"_s), u"x"_s);
    EXPECT_EQ(value(u"A"_s, u"3"_s), u"\"x'"_s);
    EXPECT_EQ(value(u"A"_s, u"4"_s), u"\"x\""_s);
    EXPECT_EQ(value(u"A"_s, u"5"_s), u"\""_s);
    EXPECT_EQ(value(u"A"_s, u"6"_s), QString());
    EXPECT_EQ(value(u"A"_s, u"7"_s), u" x "_s);
}

TEST_F(ProfileStoreTest, CommentsAndLinesWithoutEqualsSignAreNotSeen)
{
    put("k=davor\r\n[A]\r\n;c=1\r\nohne\r\n=leer\r\n[offen=2\r\n\r\nk=v\r\n");
    EXPECT_EQ(m_store.keys(m_file, u"A"_s), QStringList{u"k"_s});
    EXPECT_EQ(value(u"A"_s, u"k"_s), u"v"_s);
    EXPECT_EQ(value(u""_s, u"k"_s), QString());
}

TEST_F(ProfileStoreTest, BothLineEndsAndAnOpenLastLineAreRead)
{
    put("[A]\nx=1\n[B]\r\ny=2\r\nz=3");
    EXPECT_EQ(value(u"A"_s, u"x"_s), u"1"_s);
    EXPECT_EQ(value(u"B"_s, u"y"_s), u"2"_s);
    EXPECT_EQ(value(u"B"_s, u"z"_s), u"3"_s);
}

TEST_F(ProfileStoreTest, ABomIsPassedOver)
{
    put("\xef\xbb\xbf[A]\r\nk=v\r\n");
    EXPECT_EQ(value(u"A"_s, u"k"_s), u"v"_s);
}

TEST_F(ProfileStoreTest, Windows1252IsRead)
{
    put("[Rename]\r\nK\xf6ln.m3u=M\xfcnchen \x80\r\n");
    EXPECT_EQ(value(u"Rename"_s, u"köln.m3u"_s), u"München €"_s);
}

TEST_F(ProfileStoreTest, OfASectionOrKeyThatStandsTwiceTheFirstIsRead)
{
    put("[A]\r\nk=1\r\nk=2\r\n[B]\r\n[a]\r\nk=3\r\nl=4\r\n");
    EXPECT_EQ(value(u"A"_s, u"k"_s), u"1"_s);
    EXPECT_EQ(value(u"A"_s, u"l"_s), QString());
    EXPECT_EQ(m_store.keys(m_file, u"A"_s), QStringList{u"k"_s});
    ASSERT_TRUE(set(u"A"_s, u"k"_s, u"5"_s));
    EXPECT_EQ(bytes(), "[A]\r\nk=5\r\nk=2\r\n[B]\r\n[a]\r\nk=3\r\nl=4\r\n");
    ASSERT_TRUE(m_store.removeKey(m_file, u"A"_s, u"k"_s));
    EXPECT_EQ(value(u"A"_s, u"k"_s), u"2"_s);
    ASSERT_TRUE(m_store.removeSection(m_file, u"A"_s));
    EXPECT_EQ(bytes(), "[B]\r\n[a]\r\nk=3\r\nl=4\r\n");
    EXPECT_EQ(value(u"A"_s, u"k"_s), u"3"_s);
}

TEST_F(ProfileStoreTest, TheWholeValueComesBack)
{
    const QString text(5000, u'x');
    ASSERT_TRUE(set(u"A"_s, u"k"_s, text));
    EXPECT_EQ(value(u"A"_s, u"k"_s), text);
}

// Writing

TEST_F(ProfileStoreTest, TheFirstWriteMakesTheFile)
{
    EXPECT_TRUE(set(u"Index"_s, u"1a"_s, u"000"_s));
    EXPECT_EQ(bytes(), "[Index]\r\n1a=000\r\n");
    EXPECT_TRUE(set(u"Index"_s, u"1b"_s, u""_s));
    EXPECT_EQ(bytes(), "[Index]\r\n1a=000\r\n1b=\r\n");
}

TEST_F(ProfileStoreTest, EveryKeyIsInTheFileAtOnce)
{
    put("[TagInfo]\r\n/a.mp3=A\r\n[Index]\r\n1a=alt\r\n");
    QByteArray expected = "[TagInfo]\r\n/a.mp3=A\r\n";
    ASSERT_TRUE(m_store.removeSection(m_file, u"Index"_s));
    EXPECT_EQ(bytes(), expected);
    expected += "[Index]\r\n";
    for (int row = 1; row <= 160; ++row) {
        for (const QChar column : u"abcdefg"_s) {
            const QString key = QString::number(row) + column;
            ASSERT_TRUE(set(u"Index"_s, key, u"Zeile ä "_s + key));
            expected += key.toLatin1() + "=Zeile \xc3\xa4 " + key.toLatin1() + "\r\n";
            ASSERT_EQ(bytes(), expected);
        }
    }
}

TEST_F(ProfileStoreTest, AnUnknownLineAnOrderAndACommentSurvive)
{
    put("; Kopf\r\n\r\n[A]\r\nx=1\r\n; mitten\r\nkein Wert\r\ny = \"2\"\r\n\r\n\r\n[B]\nz=3\n");
    ASSERT_TRUE(set(u"a"_s, u"X"_s, u"neu"_s));
    EXPECT_EQ(bytes(), "; Kopf\r\n\r\n[A]\r\nx=neu\r\n; mitten\r\nkein Wert\r\ny = \"2\"\r\n\r\n\r\n[B]\nz=3\n");
    ASSERT_TRUE(set(u"A"_s, u"n"_s, u"4"_s));
    EXPECT_EQ(bytes(), "; Kopf\r\n\r\n[A]\r\nx=neu\r\n; mitten\r\nkein Wert\r\ny = \"2\"\r\nn=4\r\n\r\n\r\n[B]\nz=3\n");
    ASSERT_TRUE(m_store.removeKey(m_file, u"A"_s, u"x"_s));
    ASSERT_TRUE(set(u"A"_s, u"y"_s, u"5"_s));
    ASSERT_TRUE(set(u"B"_s, u"z"_s, u"6"_s));
    EXPECT_EQ(bytes(), "; Kopf\r\n\r\n[A]\r\n; mitten\r\nkein Wert\r\ny =5\r\nn=4\r\n\r\n\r\n[B]\nz=6\n");
    EXPECT_EQ(value(u"A"_s, u"n"_s), u"4"_s);
    EXPECT_EQ(value(u"B"_s, u"z"_s), u"6"_s);
}

TEST_F(ProfileStoreTest, AnOpenLastLineGetsItsLineEndFirst)
{
    put("[A]\r\nx=1");
    ASSERT_TRUE(set(u"A"_s, u"y"_s, u"2"_s));
    EXPECT_EQ(bytes(), "[A]\r\nx=1\r\ny=2\r\n");
    EXPECT_EQ(value(u"A"_s, u"y"_s), u"2"_s);
    put("[A]");
    ASSERT_TRUE(set(u"A"_s, u"y"_s, u"2"_s));
    EXPECT_EQ(bytes(), "[A]\r\ny=2\r\n");
    ASSERT_TRUE(set(u"A"_s, u"z"_s, u"3"_s));
    ASSERT_TRUE(set(u"A"_s, u"y"_s, u"zwei"_s));
    EXPECT_EQ(bytes(), "[A]\r\ny=zwei\r\nz=3\r\n");
    put("Text");
    ASSERT_TRUE(set(u"B"_s, u"y"_s, u"2"_s));
    EXPECT_EQ(bytes(), "Text\r\n[B]\r\ny=2\r\n");
}

TEST_F(ProfileStoreTest, AnEqualValueIsNotWritten)
{
    put("[A]\r\nx=1\r\ny= \"2\" \r\n");
    const struct stat before = m_world.info("Orvantine.dat");
    EXPECT_TRUE(set(u"A"_s, u"X"_s, u"1"_s));
    EXPECT_TRUE(set(u"A"_s, u"y"_s, u"\"2\""_s));
    const struct stat after = m_world.info("Orvantine.dat");
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(after.st_ctim.tv_nsec, before.st_ctim.tv_nsec);
}

TEST_F(ProfileStoreTest, AKeyThatTheFormCannotHoldIsNotStored)
{
    put("[A]\r\nx=1\r\n");
    for (const QString& key : {u""_s, u"  "_s, u"a=b"_s, u"a\rb"_s, u"a\nb"_s, u"a\0b"_s, u";a"_s, u" ;a"_s, u"[a"_s}) {
        EXPECT_FALSE(set(u"A"_s, key, u"v"_s)) << key.toStdString();
        EXPECT_EQ(value(u"A"_s, key), QString()) << key.toStdString();
    }
    for (const QString& section : {u""_s, u" "_s, u"a]b"_s, u"a\nb"_s})
        EXPECT_FALSE(set(section, u"k"_s, u"v"_s)) << section.toStdString();
    EXPECT_EQ(bytes(), "[A]\r\nx=1\r\n");
}

TEST_F(ProfileStoreTest, AValueIsCutAtItsFirstLineEndOrNul)
{
    ASSERT_TRUE(set(u"A"_s, u"1"_s, u"a\rb"_s));
    ASSERT_TRUE(set(u"A"_s, u"2"_s, u"a\nb"_s));
    ASSERT_TRUE(set(u"A"_s, u"3"_s, u"a\0b"_s));
    ASSERT_TRUE(set(u"A"_s, u"4"_s, u"\r\n[Index]"_s));
    EXPECT_EQ(bytes(), "[A]\r\n1=a\r\n2=a\r\n3=a\r\n4=\r\n");
}

TEST_F(ProfileStoreTest, ARemovedKeyOrSectionIsGone)
{
    put("[A]\r\nx=1\r\ny=2\r\nz=3\r\n[B]\r\nx=4\r\n");
    EXPECT_TRUE(m_store.removeKey(m_file, u"a"_s, u"Y"_s));
    EXPECT_EQ(bytes(), "[A]\r\nx=1\r\nz=3\r\n[B]\r\nx=4\r\n");
    EXPECT_EQ(value(u"A"_s, u"z"_s), u"3"_s);
    EXPECT_EQ(value(u"A"_s, u"y"_s), QString());
    EXPECT_TRUE(m_store.removeKey(m_file, u"A"_s, u"y"_s));
    EXPECT_TRUE(m_store.removeSection(m_file, u"A"_s));
    EXPECT_EQ(bytes(), "[B]\r\nx=4\r\n");
    EXPECT_EQ(value(u"B"_s, u"x"_s), u"4"_s);
    EXPECT_TRUE(m_store.removeSection(m_file, u"A"_s));
}

TEST_F(ProfileStoreTest, RemovingFromAMissingFileMakesNone)
{
    EXPECT_TRUE(m_store.removeKey(m_file, u"A"_s, u"y"_s));
    EXPECT_TRUE(m_store.removeSection(m_file, u"A"_s));
    EXPECT_FALSE(m_world.files().exists(m_file));
}

TEST_F(ProfileStoreTest, IndexGoesToTheEndWhenItIsWritten)
{
    put("[Options]\r\na=1\r\n[Index]\r\n1a=000\r\n; bleibt dabei\r\n[TagInfo]\r\nt=x\r\nu=y");
    ASSERT_TRUE(set(u"Index"_s, u"1a"_s, u"000"_s));
    EXPECT_TRUE(bytes().startsWith("[Options]\r\na=1\r\n[Index]")); // nothing was to be written
    ASSERT_TRUE(set(u"Index"_s, u"1b"_s, u"Rock"_s));
    EXPECT_EQ(bytes(),
              "[Options]\r\na=1\r\n[TagInfo]\r\nt=x\r\nu=y\r\n[Index]\r\n1a=000\r\n; bleibt dabei\r\n1b=Rock\r\n");
    ASSERT_TRUE(set(u"Finder"_s, u"01"_s, u"Text"_s));
    ASSERT_TRUE(set(u"TagInfo"_s, u"v"_s, u"z"_s));
    EXPECT_EQ(bytes(), "[Options]\r\na=1\r\n[TagInfo]\r\nt=x\r\nu=y\r\nv=z\r\n[Finder]\r\n01=Text\r\n"
                       "[Index]\r\n1a=000\r\n; bleibt dabei\r\n1b=Rock\r\n");
    EXPECT_EQ(value(u"Index"_s, u"1b"_s), u"Rock"_s);
    EXPECT_EQ(value(u"TagInfo"_s, u"u"_s), u"y"_s);
}

TEST_F(ProfileStoreTest, AnIndexThatStandsTwiceIsNotMoved)
{
    put("[Index]\r\n1a=erste\r\n[Index]\r\n1a=zweite\r\n");
    ASSERT_TRUE(set(u"Index"_s, u"1b"_s, u"x"_s));
    EXPECT_EQ(bytes(), "[Index]\r\n1a=erste\r\n1b=x\r\n[Index]\r\n1a=zweite\r\n");
    EXPECT_EQ(value(u"Index"_s, u"1a"_s), u"erste"_s);
}

TEST_F(ProfileStoreTest, ManyMixedChangesGiveWhatAFreshReadGives)
{
    quint32 random = 20261120;
    const auto next = [&random](quint32 below) {
        random = random * 1664525U + 1013904223U;
        return static_cast<int>((random >> 8U) % below);
    };
    const QStringList sections{u"Index"_s, u"TagInfo"_s, u"Größe"_s, u"Options"_s};
    for (int step = 0; step < 1000; ++step) {
        const QString section = sections[next(4)];
        const QString key = (next(2) == 0 ? u"Schlüssel "_s : u"k"_s) + QString::number(next(40));
        const int kind = next(20);
        if (kind == 0)
            ASSERT_TRUE(m_store.removeSection(m_file, section));
        else if (kind < 5)
            ASSERT_TRUE(m_store.removeKey(m_file, section, key));
        else
            ASSERT_TRUE(set(section, key, QString(next(30), u'v') + QString::number(step)));
        if (step % 10 != 0)
            continue;
        ProfileStore fresh(m_world.files());
        for (const QString& name : sections) {
            const QStringList keys = fresh.keys(m_file, name);
            ASSERT_EQ(m_store.keys(m_file, name), keys) << step;
            for (int i = 0; i < 40; ++i) {
                for (const QString& prefix : {u"SCHLÜSSEL "_s, u"K"_s}) {
                    const QString wanted = prefix + QString::number(i);
                    ASSERT_EQ(value(name, wanted), fresh.value(m_file, name, wanted)) << step << wanted.toStdString();
                }
            }
        }
    }
}

TEST_F(ProfileStoreTest, TheCodePageGoesForKeysAndValues)
{
    const QTemporaryDir recovery;
    PosixFiles ansi({.codePage = CodePage::Windows1252, .recoveryFolder = recovery.path()});
    ProfileStore store(ansi);
    ASSERT_TRUE(store.setValue(m_file, u"Rename"_s, u"Köln.m3u"_s, u"Größe Ω"_s));
    ASSERT_TRUE(store.setValue(m_file, u"Rename"_s, u"Ω"_s, u"1"_s));
    ASSERT_TRUE(store.setValue(m_file, u"Rename"_s, u"Ω"_s, u"2"_s));
    EXPECT_EQ(bytes(), "[Rename]\r\nK\xf6ln.m3u=Gr\xf6\xdf"
                       "e ?\r\n?=2\r\n");
    EXPECT_EQ(store.value(m_file, u"rename"_s, u"KÖLN.m3u"_s), u"Größe ?"_s);
}

// Others write as well

TEST_F(ProfileStoreTest, AnOutsideChangeIsSeenAtTheNextCall)
{
    for (int i = 0; i < 60; ++i) {
        const QByteArray number = QByteArray::number(1000 + i); // always of one size, within one tick of the clock
        put("[A]\r\nx=" + number + "\r\n");
        ASSERT_EQ(value(u"A"_s, u"x"_s), QString::fromLatin1(number));
    }
}

TEST_F(ProfileStoreTest, AnOutsideChangeRightAfterAnOwnWriteIsSeen)
{
    for (int i = 0; i < 60; ++i) {
        const QByteArray own = QByteArray::number(1000 + i);
        const QByteArray other = QByteArray::number(5000 + i);
        ASSERT_TRUE(set(u"A"_s, u"x"_s, QString::fromLatin1(own)));
        ASSERT_EQ(bytes(), "[A]\r\nx=" + own + "\r\n");
        const int file = ::open(m_world.native("Orvantine.dat").c_str(), O_WRONLY | O_CLOEXEC);
        ASSERT_EQ(::pwrite(file, other.constData(), 4, 7), 4);
        ::close(file);
        ASSERT_EQ(value(u"A"_s, u"x"_s), QString::fromLatin1(other)) << i;
    }
}

/// A host whose times stand still while the test runs, as a stick's do for two seconds.
class StillTimes : public PosixFiles
{
public:
    explicit StillTimes(const QString& recovery) : PosixFiles({.recoveryFolder = recovery}) {}

    [[nodiscard]] std::optional<FileStamp> stamp(const QString& path) const override
    {
        std::optional<FileStamp> result = PosixFiles::stamp(path);
        if (result) {
            result->modifiedNanoseconds = m_now.toMSecsSinceEpoch() * 1'000'000;
            result->changedNanoseconds = 0;
        }
        return result;
    }

private:
    QDateTime m_now = QDateTime::currentDateTime();
};

TEST_F(ProfileStoreTest, AnOutsideChangeUnderTheSameTimeAndSizeIsSeen)
{
    StillTimes still(m_world.recovery());
    ProfileStore store(still);
    for (int i = 0; i < 20; ++i) {
        const int file = ::open(m_world.native("Orvantine.dat").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        const QByteArray content = "[A]\r\nx=" + QByteArray::number(100 + i) + "\r\n";
        ASSERT_EQ(::pwrite(file, content.constData(), static_cast<std::size_t>(content.size()), 0), content.size());
        ::close(file);
        ASSERT_EQ(store.value(m_file, u"A"_s, u"x"_s), QString::number(100 + i));
        ASSERT_TRUE(store.setValue(m_file, u"A"_s, u"x"_s, QString::number(500 + i)));
        ASSERT_EQ(bytes(), "[A]\r\nx=" + QByteArray::number(500 + i) + "\r\n");
    }
}

TEST_F(ProfileStoreTest, ARemovedFileReadsAsEmptyAndIsMadeAgain)
{
    ASSERT_TRUE(set(u"A"_s, u"x"_s, u"1"_s));
    ::unlink(m_world.native("Orvantine.dat").c_str());
    EXPECT_EQ(value(u"A"_s, u"x"_s), QString());
    ASSERT_TRUE(set(u"A"_s, u"y"_s, u"2"_s));
    EXPECT_EQ(bytes(), "[A]\r\ny=2\r\n");
}

TEST_F(ProfileStoreTest, AFileOfAnotherCaseIsTheSameFile)
{
    ASSERT_TRUE(set(u"A"_s, u"x"_s, u"1"_s));
    const QString other = m_world.folder() + u"\\ORVANTINE.DAT"_s;
    EXPECT_EQ(m_store.value(other, u"A"_s, u"x"_s), u"1"_s);
    ASSERT_TRUE(m_store.setValue(other, u"A"_s, u"x"_s, u"2"_s));
    EXPECT_EQ(value(u"A"_s, u"x"_s), u"2"_s);
}

// What is no database

TEST_F(ProfileStoreTest, AFolderIsNeitherReadNorWritten)
{
    ASSERT_TRUE(m_world.files().makeFolder(m_file));
    EXPECT_EQ(value(u"A"_s, u"x"_s), QString());
    EXPECT_FALSE(set(u"A"_s, u"x"_s, u"1"_s));
    EXPECT_FALSE(m_store.removeKey(m_file, u"A"_s, u"x"_s));
    EXPECT_FALSE(m_store.removeSection(m_file, u"A"_s));
    EXPECT_TRUE(m_world.files().isFolder(m_file));
}

TEST_F(ProfileStoreTest, AnEmptyFileTakesItsFirstKey)
{
    put("");
    EXPECT_EQ(value(u"A"_s, u"x"_s), QString());
    EXPECT_TRUE(set(u"A"_s, u"x"_s, u"1"_s));
    EXPECT_EQ(bytes(), "[A]\r\nx=1\r\n");
}

TEST_F(ProfileStoreTest, ABinaryFileKeepsItsBytes)
{
    QByteArray binary;
    for (int i = 0; i < 100'000; ++i)
        binary += static_cast<char>((i % 40'000 * (i % 40'000)) >> 3);
    binary.replace('[', ' ');
    put(binary);
    EXPECT_EQ(value(u"A"_s, u"x"_s), QString());
    ASSERT_TRUE(set(u"A"_s, u"x"_s, u"1"_s));
    EXPECT_TRUE(bytes().startsWith(binary));
    EXPECT_EQ(value(u"A"_s, u"x"_s), u"1"_s);
}

TEST_F(ProfileStoreTest, NulBytesAreKeptAndCutAValueOnReading)
{
    const QByteArray old("[A]\r\n\0\0x=1\0y\r\nz=2\0zwei\r\n", 24);
    put(old);
    EXPECT_EQ(value(u"A"_s, u"z"_s), u"2"_s);
    ASSERT_TRUE(set(u"A"_s, u"neu"_s, u"3"_s));
    EXPECT_EQ(bytes(), old + "neu=3\r\n");
}

TEST_F(ProfileStoreTest, AHugeFileIsLeftAlone)
{
    put("[A]\r\nx=1\r\n");
    ASSERT_EQ(::truncate(m_world.native("Orvantine.dat").c_str(), off_t{1} << 30), 0);
    EXPECT_EQ(value(u"A"_s, u"x"_s), QString());
    EXPECT_FALSE(set(u"A"_s, u"x"_s, u"2"_s));
    EXPECT_FALSE(m_store.removeSection(m_file, u"A"_s));
    EXPECT_EQ(m_world.info("Orvantine.dat").st_size, off_t{1} << 30);
    ASSERT_EQ(::truncate(m_world.native("Orvantine.dat").c_str(), 10), 0);
    EXPECT_EQ(bytes(), "[A]\r\nx=1\r\n");
}

TEST_F(ProfileStoreTest, AFileWithoutRightsIsNeverEmptied)
{
    put("[A]\r\nx=1\r\n");
    ASSERT_EQ(::chmod(m_world.native("Orvantine.dat").c_str(), 0), 0);
    EXPECT_FALSE(set(u"A"_s, u"x"_s, u"2"_s));
    EXPECT_FALSE(set(u"B"_s, u"x"_s, u"2"_s));
    ASSERT_EQ(::chmod(m_world.native("Orvantine.dat").c_str(), 0600), 0);
    EXPECT_EQ(bytes(), "[A]\r\nx=1\r\n");
    EXPECT_EQ(value(u"A"_s, u"x"_s), u"1"_s); // what could not be written was not kept in memory either
}

TEST_F(ProfileStoreTest, AMillionKeysAndAHugeLineAreRead)
{
    QByteArray many("[A]\n");
    for (int i = 0; i < 1'000'000; ++i)
        many += 'k' + QByteArray::number(i) + "=v\n";
    many += "lang=" + QByteArray(10'000'000, 'x') + "\n[B]\ny=1\n";
    put(many);
    EXPECT_EQ(value(u"A"_s, u"k999999"_s), u"v"_s);
    EXPECT_EQ(value(u"A"_s, u"lang"_s).size(), 10'000'000);
    EXPECT_EQ(value(u"B"_s, u"y"_s), u"1"_s);
}

TEST_F(ProfileStoreTest, ManySectionsAndManyRepeatedKeysAreRead)
{
    QByteArray many;
    for (int i = 0; i < 100'000; ++i)
        many += '[' + QByteArray::number(i) + "]\nk=" + QByteArray::number(i) + '\n';
    many += "[A]\n";
    for (int i = 0; i < 100'000; ++i)
        many += "k=" + QByteArray::number(i) + '\n';
    for (int i = 0; i < 100'000; ++i)
        many += "[A]\n";
    put(many);
    EXPECT_EQ(value(u"99999"_s, u"k"_s), u"99999"_s);
    EXPECT_EQ(value(u"A"_s, u"k"_s), u"0"_s);
    EXPECT_EQ(m_store.keys(m_file, u"A"_s), QStringList{u"k"_s});
}

} // namespace
} // namespace orvantine
