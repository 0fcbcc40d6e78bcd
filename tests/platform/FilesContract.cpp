#include "FilesContract.h"

namespace orvantine {

using namespace Qt::StringLiterals;

// Queries

TEST_P(FilesContract, ExistsIsTrueForFilesFoldersAndPatterns)
{
    ASSERT_TRUE(put(u"a.mp3"_s, "x"));
    ASSERT_TRUE(files().makeFolder(at(u"Resource"_s)));
    EXPECT_TRUE(files().exists(at(u"a.mp3"_s)));
    EXPECT_TRUE(files().exists(at(u"Resource"_s)));
    EXPECT_TRUE(files().exists(at(u"*.mp3"_s)));
    EXPECT_TRUE(files().exists(at(u"?.MP3"_s)));
    EXPECT_TRUE(files().exists(at(u"*.*"_s)));
    EXPECT_FALSE(files().exists(at(u"*.wma"_s)));
    EXPECT_FALSE(files().exists(at(u"??.mp3"_s)));
    EXPECT_FALSE(files().exists(at(u"b.mp3"_s)));
}

TEST_P(FilesContract, ExistsIsFalseForNothingAndForATrailingSeparator)
{
    ASSERT_TRUE(files().makeFolder(at(u"Resource"_s)));
    EXPECT_FALSE(files().exists(QString()));
    EXPECT_FALSE(files().exists(at(u"Resource/"_s)));
    EXPECT_FALSE(files().exists(at(u"Resource\\"_s)));
}

TEST_P(FilesContract, APatternCountsInTheLastPartOnly)
{
    ASSERT_TRUE(files().makeFolder(at(u"Resource"_s)));
    ASSERT_TRUE(put(u"Resource/a.jpg"_s, "x"));
    EXPECT_TRUE(files().exists(at(u"Resource/*.jpg"_s)));
    EXPECT_FALSE(files().exists(at(u"Res*/a.jpg"_s)));
}

TEST_P(FilesContract, NamesInAnswersForAFolderAsExistsDoes)
{
    ASSERT_TRUE(files().makeFolder(at(u"Künstler"_s)));
    ASSERT_TRUE(put(u"Künstler/Über.mp3"_s, "x"));
    ASSERT_TRUE(files().makeFolder(at(u"Künstler/Album"_s)));
    ASSERT_TRUE(put(u"Künstler/Album/a.mp3"_s, "x"));
    for (const QString& folder : {at(u"künstler"_s), at(u"fehlt"_s)}) {
        const auto isThere = files().namesIn(folder + u'/');
        for (const QString& name : {u"Über.mp3"_s, u"ÜBER.MP3"_s, u"U\u0308ber.mp3"_s, u"Album"_s, u"Album/a.mp3"_s,
                                    u"Album/"_s, u"*.mp3"_s, u"*.wma"_s, u"b.mp3"_s, u""_s, u"."_s, u".."_s})
            EXPECT_EQ(isThere(name), files().exists(folder + u'/' + name)) << (folder + u'/' + name).toStdString();
    }
}

TEST_P(FilesContract, FolderExistsIsTrueForFilesAsWell)
{
    ASSERT_TRUE(put(u"a.mp3"_s, "x"));
    ASSERT_TRUE(files().makeFolder(at(u"Resource"_s)));
    EXPECT_TRUE(files().folderExists(at(u"a.mp3"_s)));
    EXPECT_TRUE(files().folderExists(at(u"Resource"_s)));
    EXPECT_TRUE(files().folderExists(at(u"Resource/"_s)));
    EXPECT_TRUE(files().folderExists(at(u"Resource\\"_s)));
    EXPECT_FALSE(files().folderExists(at(u"fehlt"_s)));
    EXPECT_FALSE(files().folderExists(QString()));
}

TEST_P(FilesContract, IsFolderIsTrueForFoldersOnly)
{
    ASSERT_TRUE(put(u"a.mp3"_s, "x"));
    ASSERT_TRUE(files().makeFolder(at(u"Resource"_s)));
    EXPECT_TRUE(files().isFolder(at(u"Resource"_s)));
    EXPECT_FALSE(files().isFolder(at(u"a.mp3"_s)));
    EXPECT_FALSE(files().isFolder(at(u"fehlt"_s)));
}

TEST_P(FilesContract, BothSeparatorsAndEveryCaseNameTheSameFile)
{
    ASSERT_TRUE(files().makeFolder(at(u"Künstler"_s)));
    ASSERT_TRUE(put(u"Künstler/Über.mp3"_s, "x"));
    for (const QString& name : {u"Künstler\\Über.mp3"_s, u"künstler/über.mp3"_s, u"KÜNSTLER\\ÜBER.MP3"_s}) {
        EXPECT_TRUE(files().exists(at(name))) << name.toStdString();
        EXPECT_EQ(bytes(name), "x") << name.toStdString();
    }
}

TEST_P(FilesContract, TheOtherNormalFormNamesTheSameFile)
{
    ASSERT_TRUE(put(u"Ko\u0308ln.mp3"_s, "zerlegt"));
    ASSERT_TRUE(put(u"M\u00fcnchen.mp3"_s, "zusammen"));
    EXPECT_EQ(bytes(u"K\u00f6ln.mp3"_s), "zerlegt");
    EXPECT_EQ(bytes(u"Mu\u0308nchen.mp3"_s), "zusammen");
}

TEST_P(FilesContract, SharpSIsNotDoubleS)
{
    ASSERT_TRUE(put(u"Straße.mp3"_s, "x"));
    EXPECT_FALSE(files().exists(at(u"Strasse.mp3"_s)));
}

TEST_P(FilesContract, SizeIsThatOfAFile)
{
    ASSERT_TRUE(put(u"a.mp3"_s, "12345"));
    EXPECT_EQ(files().size(at(u"a.mp3"_s)), 5);
    EXPECT_EQ(files().size(at(u"b.mp3"_s)), std::nullopt);
}

TEST_P(FilesContract, EveryWriteGivesAnotherStamp)
{
    ASSERT_TRUE(put(u"a.dat"_s, "eins"));
    const std::optional<FileStamp> first = files().stamp(at(u"a.dat"_s));
    ASSERT_TRUE(first);
    EXPECT_EQ(files().stamp(at(u"a.dat"_s)), first);
    ASSERT_TRUE(put(u"a.dat"_s, "zwei"));
    EXPECT_NE(files().stamp(at(u"a.dat"_s)), first);
    EXPECT_EQ(files().stamp(at(u"fehlt"_s)), std::nullopt);
}

TEST_P(FilesContract, ListGivesTheMatchingFilesSortedIgnoringCase)
{
    for (const QString& name :
         {u"b.mp3"_s, u"A.mp3"_s, u"c.WMA"_s, u"Ä.wav"_s, u"d.txt"_s, u".versteckt.mp3"_s, u"ohne"_s})
        ASSERT_TRUE(put(name, "x"));
    ASSERT_TRUE(files().makeFolder(at(u"Ordner.mp3"_s)));
    const QString here = at(QString());
    EXPECT_EQ(files().list(here, u"*.mp3;*.wma; *.wav"_s),
              (QStringList{u"A.mp3"_s, u"b.mp3"_s, u"c.WMA"_s, u"Ä.wav"_s}));
    EXPECT_EQ(files().list(here, u"*.*"_s),
              (QStringList{u"A.mp3"_s, u"b.mp3"_s, u"c.WMA"_s, u"d.txt"_s, u"ohne"_s, u"Ä.wav"_s}));
    EXPECT_EQ(files().list(here, u"*.ogg"_s), QStringList());
    EXPECT_EQ(files().list(at(u"fehlt"_s), u"*.*"_s), QStringList());
}

TEST_P(FilesContract, FoldersAreSortedIgnoringCaseWithoutDotFolders)
{
    for (const QString& name : {u"b"_s, u"A"_s, u".git"_s, u"ö"_s})
        ASSERT_TRUE(files().makeFolder(at(name)));
    ASSERT_TRUE(put(u"datei"_s, "x"));
    EXPECT_EQ(files().folders(m_world->folder()), (QStringList{u"A"_s, u"b"_s, u"ö"_s}));
}

TEST_P(FilesContract, ANewFileIsFoundByEveryCaseAtOnce)
{
    EXPECT_FALSE(files().exists(at(u"NEU.MP3"_s)));
    ASSERT_TRUE(put(u"neu.mp3"_s, "x"));
    EXPECT_TRUE(files().exists(at(u"NEU.MP3"_s)));
    ASSERT_TRUE(files().remove(at(u"Neu.mp3"_s)));
    EXPECT_FALSE(files().exists(at(u"NEU.MP3"_s)));
}

// Reading

TEST_P(FilesContract, AMissingFileIsMissingAndAFolderIsNotReadable)
{
    ASSERT_TRUE(files().makeFolder(at(u"Ordner"_s)));
    ASSERT_TRUE(put(u"datei"_s, "x"));
    EXPECT_EQ(files().readBytes(at(u"fehlt"_s)).outcome, ReadOutcome::Missing);
    EXPECT_EQ(files().readBytes(at(u"fehlt/fehlt"_s)).outcome, ReadOutcome::Missing);
    EXPECT_EQ(files().readBytes(at(u"datei/fehlt"_s)).outcome, ReadOutcome::Missing);
    EXPECT_EQ(files().readBytes(at(u"Ordner"_s)).outcome, ReadOutcome::Failed);
    EXPECT_EQ(files().readText(at(u"Ordner"_s)).outcome, ReadOutcome::Failed);
    EXPECT_EQ(files().readPlaylist(at(u"Ordner"_s)).outcome, ReadOutcome::Failed);
}

TEST_P(FilesContract, AllBytesComeBack)
{
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    ASSERT_TRUE(put(u"alle"_s, all));
    EXPECT_EQ(bytes(u"alle"_s), all);
    ASSERT_TRUE(put(u"leer"_s, ""));
    EXPECT_EQ(bytes(u"leer"_s), "");
}

TEST_P(FilesContract, ReadTextTakesUtf8AndWindows1252AndDropsABom)
{
    ASSERT_TRUE(put(u"utf8"_s, "K\xc3\xb6ln\r\n"));
    ASSERT_TRUE(put(u"bom"_s, "\xef\xbb\xbfK\xc3\xb6ln\r\n"));
    ASSERT_TRUE(put(u"ansi"_s, "K\xf6ln \x80\r\n"));
    EXPECT_EQ(files().readText(at(u"utf8"_s)).text, u"Köln\r\n"_s);
    EXPECT_EQ(files().readText(at(u"bom"_s)).text, u"Köln\r\n"_s);
    EXPECT_EQ(files().readText(at(u"ansi"_s)).text, u"Köln €\r\n"_s);
    ASSERT_TRUE(put(u"beides"_s, "K\xc3\xb6ln\r\nK\xf6ln\r\n"));
    EXPECT_EQ(files().readText(at(u"beides"_s)).text, u"Köln\r\nKöln\r\n"_s);
}

TEST_P(FilesContract, ReadPlaylistLeavesAListWithCarriageReturnsAlone)
{
    const QByteArray list("a.mp3\r\nb.mp3\nc.mp3");
    ASSERT_TRUE(put(u"liste.m3u"_s, list));
    const ReadText read = files().readPlaylist(at(u"liste.m3u"_s));
    EXPECT_TRUE(read.done());
    EXPECT_EQ(read.text, u"a.mp3\r\nb.mp3\nc.mp3"_s);
    EXPECT_EQ(bytes(u"liste.m3u"_s), list);
}

TEST_P(FilesContract, AHostPlaylistThatCannotBeRewrittenIsReadAsIfItHadBeen)
{
    const QByteArray list("a.mp3\nb.mp3");
    ASSERT_TRUE(put(u"liste.m3u"_s, list));
    m_world->breakStore();
    for (int time = 1; time <= 2; ++time)
        EXPECT_EQ(files().readPlaylist(at(u"liste.m3u"_s)).text, u"a.mp3\r\nb.mp3\r\n"_s);
    EXPECT_EQ(bytes(u"liste.m3u"_s), list);
}

// What is no text

const QByteArrayList& noTexts()
{
    static const QByteArrayList all{
        QByteArray("ID3\4\0\0\0\0\0\0", 10),
        "\xff\xfb\x90\x64Lied.mp3\r\nLied.mp3\r\n",
        "RIFF$$$$WAVEfmt ",
        QByteArray("OggS\0", 5),
        "\xff\xd8\xff\xe0JFIF",
        "\x89PNG\r\n",
        "GIF89aaaaa\r\n",
        QByteArray("Lied.mp3\r\n\0", 11),
        "Lied.mp3\r\n\x1a",
        "Lied.mp3\n\x1b[31m\n",
        "Lied\x7f.mp3\r\n",
    };
    return all;
}

TEST_P(FilesContract, WhatIsNoTextIsReadAsNoPlaylistAndStays)
{
    for (const QByteArray& content : noTexts()) {
        ASSERT_TRUE(put(u"liste.m3u"_s, content));
        const ReadText read = files().readPlaylist(at(u"liste.m3u"_s));
        EXPECT_EQ(read.outcome, ReadOutcome::Failed) << content.toStdString();
        EXPECT_EQ(read.text, QString()) << content.toStdString();
        EXPECT_FALSE(files().mayHoldPlaylist(at(u"liste.m3u"_s))) << content.toStdString();
        EXPECT_EQ(bytes(u"liste.m3u"_s), content);
    }
}

TEST_P(FilesContract, NoPlaylistIsWrittenOrCopiedOverWhatIsNoText)
{
    ASSERT_TRUE(put(u"quelle.m3u"_s, "a.mp3\r\n"));
    for (const QByteArray& content : noTexts()) {
        ASSERT_TRUE(put(u"liste.m3u"_s, content));
        EXPECT_FALSE(files().writeText(at(u"liste.m3u"_s), u"b.mp3\r\n"_s)) << content.toStdString();
        EXPECT_FALSE(files().copyPlaylist(at(u"quelle.m3u"_s), at(u"liste.m3u"_s))) << content.toStdString();
        EXPECT_EQ(bytes(u"liste.m3u"_s), content);
    }
}

TEST_P(FilesContract, ATextOrNothingMayBecomeAPlaylist)
{
    ASSERT_TRUE(put(u"quelle.m3u"_s, "a.mp3\r\n"));
    for (const QByteArray& content : {QByteArray(), QByteArray("\ta.mp3\r\n"), QByteArray("K\xf6ln"),
                                      QByteArray("\xef\xbb\xbf#EXTM3U\n"), QByteArray("BM, RIFF, OggSammlung")}) {
        ASSERT_TRUE(put(u"liste.m3u"_s, content));
        EXPECT_TRUE(files().mayHoldPlaylist(at(u"liste.m3u"_s))) << content.toStdString();
        EXPECT_TRUE(files().writeText(at(u"liste.m3u"_s), u"b.mp3\r\n"_s)) << content.toStdString();
        EXPECT_TRUE(files().copyPlaylist(at(u"quelle.m3u"_s), at(u"liste.m3u"_s))) << content.toStdString();
        EXPECT_EQ(bytes(u"liste.m3u"_s), "a.mp3\r\n");
    }
    EXPECT_TRUE(files().mayHoldPlaylist(at(u"neu.m3u"_s)));
    EXPECT_TRUE(files().makeFolder(at(u"Ordner"_s)));
    EXPECT_FALSE(files().mayHoldPlaylist(at(u"Ordner"_s)));
}

// Writing

TEST_P(FilesContract, AWriteReplacesTheWholeFile)
{
    ASSERT_TRUE(put(u"a"_s, "ein langer Inhalt"));
    ASSERT_TRUE(put(u"a"_s, "kurz"));
    EXPECT_EQ(bytes(u"a"_s), "kurz");
    ASSERT_TRUE(put(u"a"_s, ""));
    EXPECT_EQ(bytes(u"a"_s), "");
    const QByteArray large(100'000, 'g');
    ASSERT_TRUE(put(u"a"_s, large));
    EXPECT_EQ(bytes(u"a"_s), large);
}

TEST_P(FilesContract, AWriteUnderAnotherCaseGoesToTheExistingFile)
{
    ASSERT_TRUE(put(u"Rock.m3u"_s, "alt"));
    ASSERT_TRUE(put(u"ROCK.M3U"_s, "neu"));
    EXPECT_EQ(bytes(u"Rock.m3u"_s), "neu");
    EXPECT_EQ(files().list(m_world->folder(), u"*.*"_s), QStringList{u"Rock.m3u"_s});
}

TEST_P(FilesContract, ANewFileGoesToTheFolderThatExistsUnderAnotherCase)
{
    ASSERT_TRUE(files().makeFolder(at(u"Playlisten"_s)));
    ASSERT_TRUE(put(u"PLAYLISTEN\\Neu.m3u"_s, "x"));
    EXPECT_EQ(files().list(at(u"Playlisten"_s), u"*.*"_s), QStringList{u"Neu.m3u"_s});
}

TEST_P(FilesContract, AWriteIntoAMissingFolderFails)
{
    EXPECT_FALSE(put(u"fehlt/a"_s, "x"));
    EXPECT_FALSE(files().folderExists(at(u"fehlt"_s)));
}

TEST_P(FilesContract, ANameThatNoDesktopTakesIsNotMade)
{
    for (const QString& name : {u"a:b"_s, u"a*"_s, u"a?"_s, u"a\"b"_s, u"a<b"_s, u"a>b"_s, u"a|b"_s, u"a\tb"_s,
                                u"a\nb"_s, u"a\u001fb"_s, u"."_s, u".."_s, u""_s, QString(u"a\0b"_s)}) {
        EXPECT_FALSE(put(name, "x")) << name.toStdString();
        EXPECT_FALSE(files().makeFolder(at(name))) << name.toStdString();
    }
    EXPECT_EQ(files().list(m_world->folder(), u"*.*"_s), QStringList());
    EXPECT_EQ(files().folders(m_world->folder()), QStringList());
}

TEST_P(FilesContract, APartOfDotsNeverFormsThePathOfANewFile)
{
    ASSERT_TRUE(files().makeFolder(at(u"Playlisten"_s)));
    EXPECT_FALSE(put(u"Playlisten/../ausbruch.m3u"_s, "x"));
    EXPECT_FALSE(put(u"Playlisten\\..\\ausbruch.m3u"_s, "x"));
    EXPECT_FALSE(put(u"Playlisten/./neu.m3u"_s, "x"));
    EXPECT_FALSE(files().exists(at(u"ausbruch.m3u"_s)));
}

TEST_P(FilesContract, AFolderIsNotWritten)
{
    ASSERT_TRUE(files().makeFolder(at(u"Ordner"_s)));
    EXPECT_FALSE(put(u"Ordner"_s, "x"));
    EXPECT_FALSE(files().appendBytes(at(u"ordner"_s), "x"));
    EXPECT_FALSE(files().copy(at(u"Ordner"_s), at(u"Kopie"_s)));
    EXPECT_FALSE(files().remove(at(u"Ordner"_s)));
    EXPECT_TRUE(files().isFolder(at(u"Ordner"_s)));
}

TEST_P(FilesContract, AppendAddsToTheEndAndCreates)
{
    ASSERT_TRUE(files().appendBytes(at(u"a"_s), "eins\r\n"));
    ASSERT_TRUE(files().appendBytes(at(u"A"_s), "zwei\r\n"));
    EXPECT_EQ(bytes(u"a"_s), "eins\r\nzwei\r\n");
}

TEST_P(FilesContract, ReplaceMovesWhatFollows)
{
    ASSERT_TRUE(put(u"a"_s, "0123456789"));
    ASSERT_TRUE(files().replaceBytes(at(u"a"_s), 2, 3, "abcdef"));
    EXPECT_EQ(bytes(u"a"_s), "01abcdef56789");
    ASSERT_TRUE(files().replaceBytes(at(u"a"_s), 2, 6, "x"));
    EXPECT_EQ(bytes(u"a"_s), "01x56789");
    ASSERT_TRUE(files().replaceBytes(at(u"a"_s), 0, 2, "ab"));
    EXPECT_EQ(bytes(u"a"_s), "abx56789");
    ASSERT_TRUE(files().replaceBytes(at(u"a"_s), 3, 5, ""));
    EXPECT_EQ(bytes(u"a"_s), "abx");
    ASSERT_TRUE(files().replaceBytes(at(u"a"_s), 3, 0, "ende"));
    EXPECT_EQ(bytes(u"a"_s), "abxende");
}

TEST_P(FilesContract, ReplaceOverManyPagesMovesWhatFollows)
{
    QByteArray expected;
    for (int i = 0; i < 20'000; ++i)
        expected += QByteArray::number(i) + ' ';
    ASSERT_TRUE(put(u"a"_s, expected));
    for (const auto& [offset, length, fresh] :
         {std::tuple(5000, 3, QByteArray("länger als vorher")), std::tuple(4000, 9000, QByteArray("kurz")),
          std::tuple(4094, 4, QByteArray("über")), std::tuple(0, 0, QByteArray(10'000, 'n'))}) {
        ASSERT_TRUE(files().replaceBytes(at(u"a"_s), offset, length, fresh));
        expected.replace(offset, length, fresh);
        EXPECT_EQ(bytes(u"a"_s), expected) << offset;
    }
}

TEST_P(FilesContract, ReplaceOutsideTheFileFails)
{
    ASSERT_TRUE(put(u"a"_s, "0123"));
    EXPECT_FALSE(files().replaceBytes(at(u"a"_s), 5, 0, "x"));
    EXPECT_FALSE(files().replaceBytes(at(u"a"_s), 2, 3, "x"));
    EXPECT_FALSE(files().replaceBytes(at(u"a"_s), -1, 1, "x"));
    EXPECT_FALSE(files().replaceBytes(at(u"a"_s), 1, -1, "x"));
    EXPECT_FALSE(files().replaceBytes(at(u"fehlt"_s), 0, 0, "x"));
    EXPECT_EQ(bytes(u"a"_s), "0123");
    EXPECT_FALSE(files().exists(at(u"fehlt"_s)));
}

TEST_P(FilesContract, ACopyOverwritesSilentlyAndKeepsTheTime)
{
    ASSERT_TRUE(put(u"quelle"_s, "neu"));
    ASSERT_TRUE(put(u"ziel"_s, "ein alter Inhalt"));
    ASSERT_TRUE(files().copy(at(u"Quelle"_s), at(u"ZIEL"_s)));
    EXPECT_EQ(bytes(u"ziel"_s), "neu");
    EXPECT_EQ(files().modified(at(u"ziel"_s)), files().modified(at(u"quelle"_s)));
    EXPECT_EQ(files().list(m_world->folder(), u"*.*"_s), (QStringList{u"quelle"_s, u"ziel"_s}));
}

TEST_P(FilesContract, ACopyOntoItselfSucceedsAndChangesNothing)
{
    ASSERT_TRUE(put(u"a"_s, "inhalt"));
    const std::optional<FileStamp> before = files().stamp(at(u"a"_s));
    EXPECT_TRUE(files().copy(at(u"a"_s), at(u"A"_s)));
    EXPECT_EQ(bytes(u"a"_s), "inhalt");
    EXPECT_EQ(files().stamp(at(u"a"_s)), before);
}

TEST_P(FilesContract, ACopyOfNothingLeavesTheTarget)
{
    ASSERT_TRUE(put(u"ziel"_s, "alt"));
    EXPECT_FALSE(files().copy(at(u"fehlt"_s), at(u"ziel"_s)));
    EXPECT_FALSE(files().copy(QString(), at(u"ziel"_s)));
    EXPECT_FALSE(files().copy(at(u"ziel"_s), QString()));
    EXPECT_EQ(bytes(u"ziel"_s), "alt");
}

// Old bytes

TEST_P(FilesContract, WhatIsWrittenOverOrRemovedIsKeptFirst)
{
    for (const QString& name : {u"liste.m3u"_s, u"ziel.xyz"_s, u"weg.mp3"_s, u"daten"_s, u"text.nml"_s, u"leer"_s})
        ASSERT_TRUE(put(name, name == u"leer"_s ? QByteArray() : name.toUtf8() + "\n"));
    ASSERT_TRUE(put(u"liste.m3u"_s, "neu"));
    ASSERT_TRUE(files().copy(at(u"liste.m3u"_s), at(u"ziel.xyz"_s)));
    ASSERT_TRUE(files().remove(at(u"weg.mp3"_s)));
    ASSERT_TRUE(files().replaceBytes(at(u"daten"_s), 0, 2, "DA"));
    ASSERT_TRUE(files().readPlaylist(at(u"text.nml"_s)).done());
    ASSERT_TRUE(files().remove(at(u"leer"_s)));
    EXPECT_EQ(m_world->kept(), (QByteArrayList{"liste.m3u\n", "ziel.xyz\n", "weg.mp3\n", "daten\n", "text.nml\n"}));
    // Nothing changes.
    ASSERT_TRUE(put(u"liste.m3u"_s, "neu"));
    ASSERT_TRUE(files().copy(at(u"liste.m3u"_s), at(u"ziel.xyz"_s)));
    EXPECT_EQ(m_world->kept().size(), 5);
}

TEST_P(FilesContract, WhatCannotBeKeptStays)
{
    ASSERT_TRUE(put(u"a"_s, "alt"));
    ASSERT_TRUE(put(u"quelle"_s, "neu"));
    m_world->breakStore();
    EXPECT_FALSE(put(u"a"_s, "neu"));
    EXPECT_FALSE(files().writeText(at(u"a"_s), u"neu"_s));
    EXPECT_FALSE(files().appendBytes(at(u"a"_s), "neu"));
    EXPECT_FALSE(files().replaceBytes(at(u"a"_s), 0, 1, "neu"));
    EXPECT_FALSE(files().copy(at(u"quelle"_s), at(u"a"_s)));
    EXPECT_FALSE(files().remove(at(u"a"_s)));
    EXPECT_EQ(bytes(u"a"_s), "alt");
    // Nothing is lost by these.
    EXPECT_TRUE(put(u"a"_s, "alt"));
    EXPECT_TRUE(put(u"b"_s, "neu"));
    EXPECT_TRUE(files().copy(at(u"quelle"_s), at(u"c"_s)));
}

TEST_P(FilesContract, WhatACommandChangesBitByBitIsKeptOnce)
{
    ASSERT_TRUE(put(u"daten"_s, "eins"));
    files().beginCommand();
    for (int change = 0; change < 5; ++change) {
        ASSERT_TRUE(files().replaceBytes(at(u"daten"_s), 0, 1, QByteArray::number(change)));
        ASSERT_TRUE(files().appendBytes(at(u"daten"_s), "+"));
    }
    EXPECT_EQ(m_world->kept(), QByteArrayList{"eins"});
    // Not what somebody else has written since.
    ASSERT_TRUE(put(u"daten"_s, "zwei"));
    ASSERT_TRUE(files().appendBytes(at(u"daten"_s), "+"));
    EXPECT_EQ(m_world->kept(), (QByteArrayList{"eins", "4ins+++++", "zwei"}));
    files().beginCommand();
    ASSERT_TRUE(files().appendBytes(at(u"daten"_s), "+"));
    ASSERT_TRUE(files().appendBytes(at(u"daten"_s), "+"));
    EXPECT_EQ(m_world->kept(), (QByteArrayList{"eins", "4ins+++++", "zwei", "zwei+"}));
}

TEST_P(FilesContract, AWholeChangeIsOneCommand)
{
    ASSERT_TRUE(put(u"daten"_s, "eins"));
    files().beginCommand();
    {
        const WholeChange together(files(), WholeChange::Events::Served);
        for (int change = 0; change < 3; ++change) {
            ASSERT_TRUE(files().appendBytes(at(u"daten"_s), "+"));
            files().beginCommand();
        }
    }
    EXPECT_EQ(m_world->kept(), QByteArrayList{"eins"});
}

TEST_P(FilesContract, MakeFolderMakesOneLevelOnce)
{
    EXPECT_FALSE(files().makeFolder(at(u"a/b"_s)));
    EXPECT_TRUE(files().makeFolder(at(u"a"_s)));
    EXPECT_FALSE(files().makeFolder(at(u"A"_s)));
    EXPECT_TRUE(files().makeFolder(at(u"a\\b\\"_s)));
    EXPECT_TRUE(files().isFolder(at(u"a/b"_s)));
}

TEST_P(FilesContract, RemoveTakesFilesOnce)
{
    ASSERT_TRUE(put(u"a"_s, "x"));
    EXPECT_TRUE(files().remove(at(u"A"_s)));
    EXPECT_FALSE(files().remove(at(u"a"_s)));
    EXPECT_EQ(bytes(u"a"_s), "<missing>");
}

TEST_P(FilesContract, EncodingGivesWhatDecodingTook)
{
    EXPECT_EQ(files().decode(files().encode(u"Größe – Ende"_s)), u"Größe – Ende"_s);
    EXPECT_EQ(files().decode("K\xf6ln"), u"Köln"_s);
}

} // namespace orvantine
