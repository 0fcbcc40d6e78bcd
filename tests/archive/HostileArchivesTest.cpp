#include "ForgedZip.h"
#include "support/DiskDesktop.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <unistd.h>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

constexpr auto Link = 0xa1ff0000U;
constexpr auto Device = 0x61b60000U;
constexpr auto Pipe = 0x11b60000U;

struct Hostile
{
    const char* name;
    QByteArray bytes;
};

ForgedEntry named(const QByteArray& name)
{
    return {.name = name};
}

/// A good entry first, so that a half of the work would show.
QByteArray withGood(ForgedEntry entry)
{
    return forgedZip({{.name = "Rock.m3u", .bytes = "/m/boese.mp3\r\n"}, std::move(entry)});
}

ForgedEntry with(const QByteArray& name, quint32 attributes)
{
    ForgedEntry entry = named(name);
    entry.attributes = attributes;
    return entry;
}

/// A field of large sizes: its own size, the packed one, the place.
QByteArray largeField(quint64 size, quint64 packed)
{
    QByteArray field("\1\0\x10\0", 4);
    for (const quint64 number : {size, packed})
        for (int i = 0; i < 8; ++i)
            field += static_cast<char>((number >> (8 * i)) & 0xff);
    return field;
}

QByteArray manyEntries(int count)
{
    std::vector<ForgedEntry> entries;
    entries.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        entries.push_back({.name = QByteArray::number(i), .bytes = ""});
    return forgedZip(entries);
}

std::vector<Hostile> hostileArchives()
{
    std::vector<Hostile> all;
    for (const char* name : {"../Orvantine.dat",
                             "a/../../x",
                             "a/../x",
                             "..\\x",
                             "a\\..\\..\\x",
                             "/x",
                             "/etc/x",
                             "C:\\x",
                             "C:x",
                             "c:/x",
                             "//h/x",
                             "\\\\host\\x",
                             ".",
                             "..",
                             "./x",
                             "a/./x",
                             "a//x",
                             "a\nb",
                             "a\r\nb",
                             "a\tb",
                             "a*b",
                             "a?b",
                             "a:b",
                             "a|b",
                             "\x1b[2J"})
        all.push_back({name, withGood(named(name))});
    all.push_back({"no name", withGood(named(""))});
    all.push_back({"NUL in the name", withGood(named(QByteArray("Rock2.m3u\0.jpg", 14)))});
    all.push_back({"NUL that hides a way out", withGood(named(QByteArray("gut\0/../../x", 12)))});
    for (const QByteArray& name : {QByteArray("Rock2.m3u\0.jpg", 14), QByteArray("\0", 1), QByteArray("a\1b")}) {
        ForgedEntry old = named(name);
        old.flags = 0;
        all.push_back({"control character of an old code page", withGood(old)});
    }
    all.push_back({"256 bytes", withGood(named(QByteArray(256, 'x')))});
    all.push_back({"65535 bytes", withGood(named(QByteArray(65535, 'x')))});
    all.push_back({"name that is no UTF-8", withGood(named("a\xff\xfe"
                                                           "b"))});
    all.push_back({"one name twice", withGood(named("Rock.m3u"))});
    all.push_back({"case twins", withGood(named("ROCK.M3U"))});
    all.push_back({"file and folder", forgedZip({named("x"), with("x/", 0x41ed0000)})});
    all.push_back({"file below a file", forgedZip({named("x"), named("x/y")})});
    all.push_back({"link", withGood(with("link", Link))});
    all.push_back({"file through a link", forgedZip({with("weg", Link), named("weg/x")})});
    all.push_back({"device", withGood(with("geraet", Device))});
    all.push_back({"pipe", withGood(with("rohr", Pipe))});
    all.push_back({"folder with bytes", withGood(with("ordner/", 0x41ed0000))});

    ForgedEntry entry = named("a.m3u");
    entry.crc = 17;
    all.push_back({"wrong checksum", withGood(entry)});
    entry = named("a.m3u");
    entry.localCrc = 17;
    all.push_back({"checksums that differ", withGood(entry)});
    entry = named("a.m3u");
    entry.size = entry.localSize = 4;
    all.push_back({"size too small", withGood(entry)});
    entry = named("a.m3u");
    entry.size = 6;
    all.push_back({"size too large", withGood(entry)});
    entry = {.name = "a.m3u", .bytes = QByteArray(5000, 'a'), .method = 8};
    entry.size = 4999;
    all.push_back({"more than told", withGood(entry)});
    entry.size = 5001;
    all.push_back({"less than told", withGood(entry)});
    entry = named("a.m3u");
    entry.localSize = 4000000000U;
    all.push_back({"sizes that differ", withGood(entry)});
    entry = named("a.m3u");
    entry.localName = "../x";
    all.push_back({"names that differ", withGood(entry)});
    entry = named("a.m3u");
    entry.flags |= 1U;
    all.push_back({"encrypted", withGood(entry)});
    entry = named("a.m3u");
    entry.method = 99;
    all.push_back({"unknown method", withGood(entry)});
    entry = named("a.m3u");
    entry.size = entry.packedSize = 0xffffffff;
    entry.extra = largeField(quint64{10} << 30, 5);
    all.push_back({"large size that is a lie", withGood(entry)});
    entry.extra = largeField(~quint64{0}, ~quint64{0});
    all.push_back({"largest size", withGood(entry)});
    entry.extra = QByteArray("\1\0\4\0\1\1\1\1", 8);
    all.push_back({"field too short for its sizes", withGood(entry)});
    entry = named("a.m3u");
    entry.offset = 4000000000U;
    all.push_back({"place beyond the end", withGood(entry)});
    entry.offset = 0;
    all.push_back({"two entries at one place", withGood(entry)});
    all.push_back({"bomb", withGood({.name = "bombe.m3u", .bytes = QByteArray(65 << 20, '\0'), .method = 8})});
    all.push_back({"many entries", manyEntries(20001)});

    const QByteArray good = forgedZip({{.name = "Rock.m3u", .bytes = "/m/boese.mp3\r\n"}});
    all.push_back({"nothing", ""});
    all.push_back({"no archive", "[Index]\r\n1b=Boese\r\n"});
    all.push_back({"cut at the end", good.chopped(1)});
    all.push_back({"cut in the middle", good.first(good.size() / 2)});
    all.push_back({"end alone", good.last(22)});
    all.push_back({"count too large", forgedZip({named("a.m3u")}, {.count = 7})});
    all.push_back({"directory beyond the end", forgedZip({named("a.m3u")}, {.directoryOffset = 100000})});
    all.push_back({"directory too large", forgedZip({named("a.m3u")}, {.directorySize = 100000})});
    return all;
}

/// Every name below a folder, with what it is.
QString hashOf(const QString& folder)
{
    QStringList lines;
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        QFile file(path);
        const bool plain = walk.fileInfo().isFile() && file.open(QIODevice::ReadOnly);
        lines.append(
            path + u' ' +
            (plain ? QString::fromLatin1(QCryptographicHash::hash(file.readAll(), QCryptographicHash::Md5).toHex())
                   : u"-"_s));
    }
    lines.sort();
    return lines.join(u'\n');
}

class HostileArchives : public testing::Test
{
protected:
    HostileArchives()
    {
        for (const QString& name :
             {u"data/Playlisten"_s, u"data/Resource"_s, u"data/Burning"_s, u"program"_s, u"stick"_s})
            QDir().mkpath(at(name));
        put(u"program/Orvantine.dll"_s, "");
        put(u"data/Playlisten/Rock.m3u"_s, "/m/a.mp3\r\n\r\n");
        put(u"data/Resource/Rock.jpg"_s, "Bild");
        put(u"data/Orvantine.dat"_s, "[Index]\r\n1a=000\r\n1b=Rock\r\n1c=" +
                                         at(u"data/Playlisten/Rock.m3u"_s).toUtf8() + "\r\n1d=1\r\n1f=01.02.2003\r\n");
        machine.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
        machine.settings.createKey(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s);
        machine.settings.put(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"Error"_s, dwordSetting(0));
        machine.root.mnuErrorDisplay.Checked = false;
    }
    [[nodiscard]] QString at(const QString& name) const { return folder.path() + u'/' + name; }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << name.toStdString();
    }
    void restore(const QByteArray& archive)
    {
        put(u"stick/a.zip"_s, archive);
        machine.messages.answer(Answer::Ok);
        machine.choosers.open(at(u"stick/a.zip"_s));
        machine.root.mnuDbWiederherstellung.Click();
        QFile::remove(at(u"stick/a.zip"_s));
    }
    /// What lies outside of what the program keeps for itself.
    [[nodiscard]] QString disk() const
    {
        QStringList names = QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        names.removeAll(u"recovery"_s);
        return hashOf(at(u"data"_s)) + hashOf(at(u"stick"_s)) + hashOf(at(u"program"_s)) + names.join(u' ');
    }
    [[nodiscard]] bool refused() const
    {
        return machine.root.quietLine.Caption.value() ==
               u"Nichts wiederhergestellt: Die Datei ist beschädigt oder keine Sicherung."_s;
    }

    QTemporaryDir folder;
    DiskDesktop machine{folder.path()};
};

} // namespace

TEST_F(HostileArchives, AGoodOneIsTakenSoThatTheOthersAreRefusedForTheirFaults)
{
    restore(forgedZip({{.name = "Rock.m3u", .bytes = "/m/gut.mp3\r\n\r\n"},
                       {.name = "sub/Jazz.m3u", .bytes = QByteArray(5000, 'a'), .method = 8},
                       {.name = "Rock.jpg", .bytes = "neues Bild"}}));
    EXPECT_FALSE(refused());
    QFile list(at(u"data/Playlisten/Rock.m3u"_s));
    ASSERT_TRUE(list.open(QIODevice::ReadOnly));
    EXPECT_EQ("/m/gut.mp3\r\n\r\n", list.readAll());
    EXPECT_TRUE(QFile::exists(at(u"data/Playlisten/sub/Jazz.m3u"_s)));
}

TEST_F(HostileArchives, WhatPacksAsWellAsTheMethodCanIsNoBomb)
{
    // A picture of one colour.
    const QByteArray picture(3 << 20, '\0');
    restore(forgedZip({{.name = "Rock.bmp", .bytes = picture, .method = 8}}));
    EXPECT_FALSE(refused());
    EXPECT_EQ(picture.size(), QFileInfo(at(u"data/Resource/Rock.bmp"_s)).size());
}

TEST_F(HostileArchives, NoneOfThemChangesAnything)
{
    machine.root.mnuLaden.Click();
    const QString before = disk();
    const std::vector<Hostile> archives = hostileArchives();
    EXPECT_GE(archives.size(), 60U);
    for (const Hostile& hostile : archives) {
        SCOPED_TRACE(QByteArray(hostile.name).toPercentEncoding(" ").toStdString());
        machine.root.quietLine.Caption = QString();
        restore(hostile.bytes);
        EXPECT_TRUE(refused());
        EXPECT_EQ(before.toStdString(), disk().toStdString());
        EXPECT_EQ("0", machine.root.Tag.toStdString());
    }
    EXPECT_FALSE(QFile::exists(at(u"recovery/Unpacked"_s)));
}

TEST_F(HostileArchives, EveryCutOfAGoodOneIsRefused)
{
    machine.root.mnuLaden.Click();
    const QString before = disk();
    const QByteArray good = forgedZip({{.name = "Rock.m3u", .bytes = "/m/boese.mp3\r\n"}});
    for (qsizetype length = 0; length < good.size(); ++length) {
        restore(good.first(length));
        ASSERT_EQ(before.toStdString(), disk().toStdString()) << length;
    }
}

TEST_F(HostileArchives, ALinkThatStandsInTheFoldersIsNotWrittenThrough)
{
    put(u"stick/fremd.txt"_s, "fremd");
    QDir().mkpath(at(u"stick/fremd"_s));
    ASSERT_EQ(0, ::symlink("../../stick/fremd.txt", at(u"data/Playlisten/Link.m3u"_s).toUtf8().constData()));
    ASSERT_EQ(0, ::symlink("../../stick/fremd", at(u"data/Resource/alt"_s).toUtf8().constData()));
    machine.root.mnuLaden.Click();
    const QString before = disk();
    for (const QByteArray name : {"Link.m3u", "LINK.M3U", "alt/x.jpg"}) {
        machine.root.quietLine.Caption = QString();
        restore(withGood(named(name)));
        EXPECT_EQ(u"Nichts wiederhergestellt: „%1“ ist hier eine Verknüpfung."_s.arg(QString::fromUtf8(name)),
                  machine.root.quietLine.Caption.value());
        EXPECT_EQ(before.toStdString(), disk().toStdString()) << name.toStdString();
    }
}

} // namespace orvantine::fake
