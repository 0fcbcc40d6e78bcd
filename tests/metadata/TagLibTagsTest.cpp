#include "desktop/tags/TagLibTags.h"
#include "TrackBytes.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/tags/Id3v1.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace orvantine::test {

using namespace Qt::StringLiterals;

namespace {

namespace fs = std::filesystem;

/// The library over a folder of the disk.
class TagLibTagsTest : public testing::Test
{
protected:
    ~TagLibTagsTest() override
    {
        std::error_code ignored;
        fs::remove_all(folder.path().toStdString(), ignored);
    }

    [[nodiscard]] QString path(const QString& name) const { return folder.path() + u'/' + name; }
    [[nodiscard]] std::string native(const QByteArray& name) const
    {
        return folder.path().toStdString() + '/' + name.toStdString();
    }
    void put(const QByteArray& name, const QByteArray& bytes) const
    {
        std::ofstream file(native(name), std::ios::binary);
        file.write(bytes.constData(), bytes.size());
        ASSERT_TRUE(file.good()) << name.toStdString();
    }
    [[nodiscard]] QByteArray bytes(const QByteArray& name) const { return fileBytes(native(name)); }
    [[nodiscard]] static QByteArray fileBytes(const std::string& path)
    {
        std::ifstream file(path, std::ios::binary);
        return QByteArray::fromStdString(std::string(std::istreambuf_iterator<char>(file), {}));
    }
    [[nodiscard]] struct stat info(const QByteArray& name) const
    {
        struct stat result = {};
        EXPECT_EQ(0, ::lstat(native(name).c_str(), &result)) << name.toStdString();
        return result;
    }
    /// All names of the folder, sorted: a forgotten temporary file would show.
    [[nodiscard]] std::string names() const
    {
        std::vector<std::string> found;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder.path().toStdString()))
            found.push_back(entry.path().filename().string());
        std::sort(found.begin(), found.end());
        std::string all;
        for (const std::string& name : found)
            all += (all.empty() ? "" : " ") + name;
        return all;
    }
    /// Whether reading a file leaves the record as it was.
    [[nodiscard]] bool leavesTheRecord(const QString& name)
    {
        Mp3Record record;
        std::memset(static_cast<void*>(&record), 'q', sizeof record);
        const Mp3Record before = record;
        tags.Mp3FileInfo(path(name), record);
        return std::memcmp(&record, &before, sizeof record) == 0;
    }

    QTemporaryDir folder;
    QTemporaryDir recovery;
    PosixFiles files{{.recoveryFolder = recovery.path()}};
    TagLibTags tags{files};
};

template <std::size_t Width>
void set(char (&field)[Width], const QByteArray& text)
{
    std::memcpy(field, text.leftJustified(Width, ' ', true).constData(), Width);
}

template <std::size_t Width>
std::string trimmed(const char (&field)[Width])
{
    return QByteArray(field, Width).trimmed().toStdString();
}

QByteArray littleEndian(qsizetype number)
{
    QByteArray bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

/// 16 bits, one channel; `texts` are the names of fields and their texts, each closed by a NUL.
QByteArray wave(int hertz, int seconds, const QByteArray& texts)
{
    QByteArray list;
    const QList<QByteArray> fields = texts.split('\0');
    for (const QByteArray& field : fields) {
        if (field.isEmpty())
            continue;
        const QByteArray text = field.mid(4) + QByteArray(field.size() % 2 == 0 ? 2 : 1, '\0');
        list += field.left(4) + littleEndian(text.size()) + text;
    }
    if (!list.isEmpty())
        list = "LIST" + littleEndian(list.size() + 4) + "INFO" + list;
    const qsizetype bytes = qsizetype{hertz} * seconds * 2;
    const QByteArray body = "WAVEfmt " + littleEndian(16) + "\1\0\1\0"_ba + littleEndian(hertz) +
                            littleEndian(hertz * 2) + "\2\0\20\0"_ba + "data" + littleEndian(bytes) +
                            QByteArray(bytes, '\0') + list;
    return "RIFF" + littleEndian(body.size()) + body;
}

Mp3Record someRecord()
{
    Mp3Record record;
    set(record.title, "Titel");
    set(record.artist, "Interpret");
    set(record.comment, "Kommentar");
    record.trackFlagA = record.trackFlagB = 2;
    record.track = 5;
    record.genre = 3;
    return record;
}

} // namespace

TEST_F(TagLibTagsTest, FillsTheRecordAndOnlyItsOwnFields)
{
    put("a.mp3", id3v2(500) + sound(384) + id3v1Tag("Titel", "Interpret", "Album", "1999", "Wort", 12));
    Mp3Record record;
    std::memset(static_cast<void*>(&record), 'q', sizeof record);
    Mp3Record expected = record;
    tags.Mp3FileInfo(path(u"a.mp3"_s), record);

    set(expected.title, "Titel");
    set(expected.artist, "Interpret");
    set(expected.album, "Album");
    set(expected.year, "1999");
    set(expected.comment, "Wort");
    expected.track = 0;
    expected.genre = 12;
    expected.bitRate = 128;
    expected.playingTime = 10;
    EXPECT_EQ(0, std::memcmp(&record, &expected, sizeof record));
}

TEST_F(TagLibTagsTest, AReadableFileWithoutATagGivesBlankTextsAndTrackNought)
{
    put("a.mp3", sound(384));
    put("leer.mp3", {});
    put("text.mp3", "no sound");
    Mp3Record record = someRecord();
    tags.Mp3FileInfo(path(u"a.mp3"_s), record);
    EXPECT_EQ("", trimmed(record.title));
    EXPECT_EQ(0, record.track);
    EXPECT_EQ(128, record.bitRate);
    for (const QString& name : {u"leer.mp3"_s, u"text.mp3"_s}) {
        record = someRecord();
        tags.Mp3FileInfo(path(name), record);
        EXPECT_EQ("", trimmed(record.artist)) << name.toStdString();
        EXPECT_EQ(0, record.track);
        EXPECT_EQ(-1, record.bitRate);
        EXPECT_EQ(-1, record.playingTime);
    }
}

TEST_F(TagLibTagsTest, AFileThatCannotBeReadLeavesTheRecordAsItWas)
{
    put("a.mp3", sound() + id3v1Tag("T", "A"));
    put("b.wav", sound() + id3v1Tag("T", "A"));
    put("c.WMA", sound() + id3v1Tag("T", "A"));
    put("d.mp3", "RIFF\x24\0\0\0WAVEfmt "_ba + sound() + id3v1Tag("T", "A"));
    put("e.mp3", "\x30\x26\xb2\x75\x8e\x66\xcf\x11"_ba + sound() + id3v1Tag("T", "A"));
    fs::create_directory(native("f.mp3"));
    ASSERT_EQ(0, ::mkfifo(native("g.mp3").c_str(), 0600));
    fs::create_symlink("nowhere", native("h.mp3"));

    for (const QString& name : {u"a.mp3"_s, u"b.wav"_s, u"c.WMA"_s, u"d.mp3"_s, u"e.mp3"_s})
        EXPECT_FALSE(leavesTheRecord(name)) << name.toStdString();
    for (const QString& name :
         {u"f.mp3"_s, u"g.mp3"_s, u"h.mp3"_s, u"missing.mp3"_s, u"a.mp3/x.mp3"_s, u"\"a.mp3\""_s, u"*.mp3"_s})
        EXPECT_TRUE(leavesTheRecord(name)) << name.toStdString();
    Mp3Record record;
    tags.Mp3FileInfo({}, record);
    tags.Mp3FileInfo(u"/dev/zero"_s, record);
    EXPECT_EQ(0, record.bitRate);
}

TEST_F(TagLibTagsTest, AWaveIsReadByItsOwnTags)
{
    put("a.wav", wave(8000, 3, "IARTWir\0INAMLied\0\0IPRDAlbum\0ICMTWort\0\0ICRD2001-05\0IPRT7\0"_ba));
    for (const QString& name : {u"a.wav"_s, u"b.mp3"_s}) {
        if (name != u"a.wav"_s)
            fs::copy(native("a.wav"), native("b.mp3"));
        Mp3Record record = someRecord();
        tags.Mp3FileInfo(path(name), record);
        EXPECT_EQ("Lied", trimmed(record.title)) << name.toStdString();
        EXPECT_EQ("Wir", trimmed(record.artist)) << name.toStdString();
        EXPECT_EQ("Album", trimmed(record.album)) << name.toStdString();
        EXPECT_EQ("Wort", trimmed(record.comment)) << name.toStdString();
        EXPECT_EQ("2001", trimmed(record.year)) << name.toStdString();
        EXPECT_EQ(7, record.track) << name.toStdString();
        EXPECT_EQ(128, record.bitRate) << name.toStdString();
        EXPECT_EQ(3, record.playingTime) << name.toStdString();
    }
}

TEST_F(TagLibTagsTest, AWaveWithoutTagsIsBlank)
{
    put("a.wav", wave(8000, 3, {}));
    put("cut.wav", wave(8000, 3, {}).left(20));
    put("head.wma", "\x30\x26\xb2\x75\x8e\x66\xcf\x11"_ba);
    for (const QString& name : {u"a.wav"_s, u"cut.wav"_s, u"head.wma"_s}) {
        Mp3Record record = someRecord();
        record.bitRate = 192;
        record.playingTime = 100;
        tags.Mp3FileInfo(path(name), record);
        EXPECT_EQ("", trimmed(record.title)) << name.toStdString();
        EXPECT_EQ("", trimmed(record.artist)) << name.toStdString();
        EXPECT_EQ("", trimmed(record.comment)) << name.toStdString();
        EXPECT_EQ("", trimmed(record.year)) << name.toStdString();
        EXPECT_EQ(0, record.track) << name.toStdString();
        EXPECT_EQ(name == u"a.wav"_s ? 128 : 0, record.bitRate) << name.toStdString();
        EXPECT_EQ(name == u"a.wav"_s ? 3 : 0, record.playingTime) << name.toStdString();
    }
}

TEST_F(TagLibTagsTest, ReadingAWaveLeavesNoFileOpen)
{
    put("a.wav", wave(8000, 1, {}));
    put("b.wav", wave(8000, 2, {}));
    const auto open = [] { return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()); };
    const auto before = open();
    Mp3Record record;
    for (int i = 0; i < 20; ++i)
        tags.Mp3FileInfo(path(i % 2 == 0 ? u"a.wav"_s : u"b.wav"_s), record);
    EXPECT_EQ(2, record.playingTime);
    EXPECT_EQ(before, open());
}

TEST_F(TagLibTagsTest, AFileWithoutReadRightsLeavesTheRecordAsItWas)
{
    put("a.mp3", sound() + id3v1Tag("T", "A"));
    ASSERT_EQ(0, ::chmod(native("a.mp3").c_str(), 0));
    if (::access(native("a.mp3").c_str(), R_OK) == 0)
        GTEST_SKIP() << "the superuser may read everything";
    EXPECT_TRUE(leavesTheRecord(u"a.mp3"_s));
}

TEST_F(TagLibTagsTest, AChangedFileIsReadAnew)
{
    const auto title = [this] {
        Mp3Record record;
        tags.Mp3FileInfo(path(u"a.mp3"_s), record);
        return trimmed(record.title);
    };
    put("a.mp3", sound() + id3v1Tag("Eins", "A"));
    EXPECT_EQ("Eins", title());
    EXPECT_EQ("Eins", title());
    Mp3Record record = someRecord();
    set(record.title, "Zwei");
    EXPECT_TRUE(tags.WriteID3V1(path(u"a.mp3"_s), record));
    EXPECT_EQ("Zwei", title());
    // Gone between test and read.
    fs::remove(native("a.mp3"));
    EXPECT_TRUE(leavesTheRecord(u"a.mp3"_s));
}

TEST_F(TagLibTagsTest, NamesOf255BytesAndNamesThatAreNotUtf8Work)
{
    const QByteArray longest = QByteArray(251, 'n') + ".mp3";
    const QByteArray odd = "M\xfcller.mp3";
    for (const QByteArray& name : {longest, odd}) {
        put(name, id3v2() + sound(384));
        const QString text = path(QString::fromLatin1(name));
        EXPECT_TRUE(tags.WriteID3V1(text, someRecord())) << name.toStdString();
        EXPECT_TRUE(tags.EraseID3V2(text));
        EXPECT_EQ(sound(384) + id3v1Bytes(someRecord()), bytes(name));
        Mp3Record record;
        tags.Mp3FileInfo(text, record);
        EXPECT_EQ("Interpret", trimmed(record.artist));
        EXPECT_EQ(5, record.track);
    }
    EXPECT_EQ(odd.toStdString() + " " + longest.toStdString(), names());
}

TEST_F(TagLibTagsTest, WritingKeepsTimesModeAndAttributesAndLeavesNoOtherFile)
{
    put("a.mp3", id3v2(1100000) + sound(500));
    const timespec times[2] = {{.tv_sec = 1000000000, .tv_nsec = 123456789},
                               {.tv_sec = 900000000, .tv_nsec = 987654321}};
    ASSERT_EQ(0, ::chmod(native("a.mp3").c_str(), 0640));
    const bool attributes = ::setxattr(native("a.mp3").c_str(), "user.rating", "8", 1, 0) == 0;
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, native("a.mp3").c_str(), times, 0));

    EXPECT_TRUE(tags.WriteID3V1(path(u"a.mp3"_s), someRecord()));
    EXPECT_EQ(id3v2(1100000) + sound(500) + id3v1Bytes(someRecord()), bytes("a.mp3"));
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, native("a.mp3").c_str(), times, 0));
    EXPECT_TRUE(tags.EraseID3V2(path(u"a.mp3"_s)));

    const struct stat after = info("a.mp3");
    EXPECT_EQ(0640U, after.st_mode & 07777U);
    EXPECT_EQ(times[1].tv_sec, after.st_mtim.tv_sec);
    EXPECT_EQ(times[1].tv_nsec, after.st_mtim.tv_nsec);
    EXPECT_EQ(times[0].tv_sec, after.st_atim.tv_sec);
    EXPECT_EQ(times[0].tv_nsec, after.st_atim.tv_nsec);
    std::array<char, 8> value{};
    const ssize_t length = ::getxattr(native("a.mp3").c_str(), "user.rating", value.data(), value.size());
    EXPECT_EQ(attributes ? 1 : -1, length);
    EXPECT_EQ(sound(500) + id3v1Bytes(someRecord()), bytes("a.mp3"));
    EXPECT_EQ("a.mp3", names());
}

TEST_F(TagLibTagsTest, WritingTheSameTwiceDoesNotTouchTheFile)
{
    put("a.mp3", id3v2() + sound());
    EXPECT_TRUE(tags.WriteID3V1(path(u"a.mp3"_s), someRecord()));
    EXPECT_TRUE(tags.EraseID3V2(path(u"a.mp3"_s)));
    const struct stat before = info("a.mp3");
    EXPECT_TRUE(tags.WriteID3V1(path(u"a.mp3"_s), someRecord()));
    EXPECT_TRUE(tags.EraseID3V2(path(u"a.mp3"_s)));
    EXPECT_EQ(before.st_ino, info("a.mp3").st_ino);
    EXPECT_EQ(before.st_ctim.tv_nsec, info("a.mp3").st_ctim.tv_nsec);
}

TEST_F(TagLibTagsTest, ALinkStaysALinkAndItsFileIsWritten)
{
    fs::create_directory(native("sub"));
    put("sub/a.mp3", sound());
    fs::create_symlink("sub/a.mp3", native("link.mp3"));
    EXPECT_TRUE(tags.WriteID3V1(path(u"link.mp3"_s), someRecord()));
    EXPECT_TRUE(S_ISLNK(info("link.mp3").st_mode));
    EXPECT_TRUE(S_ISREG(info("sub/a.mp3").st_mode));
    EXPECT_EQ(sound() + id3v1Bytes(someRecord()), bytes("sub/a.mp3"));
    EXPECT_EQ("link.mp3 sub", names());
}

TEST_F(TagLibTagsTest, WhatMustNotBeWrittenStays)
{
    const QByteArray track = id3v2() + sound();
    put("protected.mp3", track);
    ASSERT_EQ(0, ::chmod(native("protected.mp3").c_str(), 0444));
    put("b.wav", track);
    put("c.wma", track);
    put("d.mp3", "RIFF" + sound());
    put("text.mp3", "no sound");
    put("empty.mp3", {});
    fs::create_directory(native("folder.mp3"));
    ASSERT_EQ(0, ::mkfifo(native("fifo.mp3").c_str(), 0600));
    const std::string before = names();

    for (const QString& name : {u"protected.mp3"_s, u"b.wav"_s, u"c.wma"_s, u"d.mp3"_s, u"text.mp3"_s, u"empty.mp3"_s,
                                u"folder.mp3"_s, u"fifo.mp3"_s, u"missing.mp3"_s, u""_s}) {
        EXPECT_FALSE(tags.WriteID3V1(path(name), someRecord())) << name.toStdString();
        EXPECT_FALSE(tags.EraseID3V2(path(name))) << name.toStdString();
    }
    EXPECT_EQ(before, names());
    EXPECT_EQ(track, bytes("protected.mp3"));
    EXPECT_EQ(track, bytes("b.wav"));
    EXPECT_EQ(track, bytes("c.wma"));
    EXPECT_EQ("RIFF" + sound(), bytes("d.mp3"));
    EXPECT_EQ("no sound", bytes("text.mp3"));
    EXPECT_EQ("", bytes("empty.mp3"));
}

TEST_F(TagLibTagsTest, ABrokenLeadingTagStaysAndTheOtherKindIsWritten)
{
    const QByteArray track = id3v2(100, 1 << 27) + sound();
    put("broken.mp3", track);
    EXPECT_FALSE(tags.EraseID3V2(path(u"broken.mp3"_s)));
    EXPECT_EQ(track, bytes("broken.mp3"));
    EXPECT_TRUE(tags.WriteID3V1(path(u"broken.mp3"_s), someRecord()));
    EXPECT_EQ(track + id3v1Bytes(someRecord()), bytes("broken.mp3"));
    EXPECT_FALSE(tags.EraseID3V2(path(u"broken.mp3"_s)));
    EXPECT_EQ(track + id3v1Bytes(someRecord()), bytes("broken.mp3"));
}

TEST_F(TagLibTagsTest, AFullDiskLeavesTheOldFileWhole)
{
    const QByteArray track = id3v2(3000) + sound(200);
    put("a.mp3", track);
    rlimit old = {};
    ASSERT_EQ(0, ::getrlimit(RLIMIT_FSIZE, &old));
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const qsizetype room :
         {qsizetype{0}, qsizetype{1}, qsizetype{4096}, track.size() - 1, track.size(), track.size() + 127}) {
        const rlimit limit{.rlim_cur = static_cast<rlim_t>(room), .rlim_max = old.rlim_max};
        ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &limit));
        const bool done = tags.WriteID3V1(path(u"a.mp3"_s), someRecord());
        ASSERT_EQ(0, ::setrlimit(RLIMIT_FSIZE, &old));
        EXPECT_FALSE(done) << room;
        EXPECT_EQ(track, bytes("a.mp3")) << room;
        EXPECT_EQ("a.mp3", names());
    }
    std::signal(SIGXFSZ, handler);
    EXPECT_TRUE(tags.WriteID3V1(path(u"a.mp3"_s), someRecord()));
    EXPECT_EQ(track + id3v1Bytes(someRecord()), bytes("a.mp3"));
}

TEST_F(TagLibTagsTest, TheTagsThatGoAreKeptFirstAndTheSoundIsNot)
{
    const QByteArray oldTag = id3v1Tag("Alt", "Wer", "Album", "1999", "Wort", 12);
    put("a.mp3", id3v2(3000) + sound(200) + oldTag);
    EXPECT_TRUE(tags.WriteID3V1(path(u"a.mp3"_s), someRecord()));
    EXPECT_TRUE(tags.EraseID3V2(path(u"a.mp3"_s)));
    EXPECT_EQ(sound(200) + id3v1Bytes(someRecord()), bytes("a.mp3"));

    const QDir store(recovery.path());
    const QStringList ends = store.entryList({u"*-a.mp3.%1"_s.arg(id3v2(3000).size() + sound(200).size())});
    const QStringList heads = store.entryList({u"*-a.mp3.0"_s});
    ASSERT_EQ(1, ends.size());
    ASSERT_EQ(1, heads.size());
    EXPECT_EQ(2, store.entryList({u"*-a.mp3*"_s}).size());
    EXPECT_EQ(oldTag, fileBytes(store.filePath(ends.front()).toStdString()));
    EXPECT_EQ(id3v2(3000), fileBytes(store.filePath(heads.front()).toStdString()));
}

TEST_F(TagLibTagsTest, TagsThatCannotBeKeptStay)
{
    const QByteArray track = id3v2(3000) + sound(200) + id3v1Tag("Alt", "Wer", "Album", "1999", "Wort", 12);
    put("a.mp3", track);
    ASSERT_TRUE(QDir(recovery.path()).mkdir(u"Contents"_s));
    EXPECT_FALSE(tags.WriteID3V1(path(u"a.mp3"_s), someRecord()));
    EXPECT_FALSE(tags.EraseID3V2(path(u"a.mp3"_s)));
    EXPECT_EQ(track, bytes("a.mp3"));
    EXPECT_EQ("a.mp3", names());
}

TEST_F(TagLibTagsTest, AProcessThatDiesWhileItWritesLeavesTheOldFileWhole)
{
    const QByteArray track = id3v2(3000) + sound(500);
    put("a.mp3", track);
    for (const qsizetype room : {qsizetype{0}, qsizetype{65536}, track.size() - 10, track.size() + 100}) {
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            // The signal ends the child at this very byte.
            const rlimit limit{.rlim_cur = static_cast<rlim_t>(room), .rlim_max = RLIM_INFINITY};
            const rlimit noCore{};
            ::setrlimit(RLIMIT_CORE, &noCore);
            ::setrlimit(RLIMIT_FSIZE, &limit);
            std::signal(SIGXFSZ, SIG_DFL);
            // A process of its own, which settles what the one before has left.
            PosixFiles own({.recoveryFolder = recovery.path()});
            TagLibTags(own).WriteID3V1(path(u"a.mp3"_s), someRecord());
            ::_exit(0);
        }
        int status = 0;
        ASSERT_EQ(child, ::waitpid(child, &status, 0));
        EXPECT_TRUE(WIFSIGNALED(status)) << room;
        EXPECT_EQ(track, bytes("a.mp3")) << room;
    }
    // What the dead left behind stands in nobody's way at the next start.
    PosixFiles next({.recoveryFolder = recovery.path()});
    EXPECT_TRUE(TagLibTags(next).WriteID3V1(path(u"a.mp3"_s), someRecord()));
    EXPECT_EQ(track + id3v1Bytes(someRecord()), bytes("a.mp3"));
    EXPECT_EQ(QStringList{u"a.mp3"_s}, files.list(folder.path(), u"*"_s));
}

TEST_F(TagLibTagsTest, HundredsOfReadsNeedNoMoreMemoryThanTwo)
{
    put("a.mp3", id3v2(100000) + sound(384) + id3v1Tag("Eins", "A"));
    put("b.mp3", sound(384) + id3v1Tag("Zwei", "B"));
    const auto inUse = [this](int reads) {
        Mp3Record record;
        for (int i = 0; i < reads; ++i)
            tags.Mp3FileInfo(path(i % 2 == 0 ? u"a.mp3"_s : u"b.mp3"_s), record);
        return ::mallinfo2().uordblks;
    };
    const std::size_t before = inUse(2);
    EXPECT_EQ(before, inUse(500));
}

} // namespace orvantine::test
