#include "ArchiveContract.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

std::string ArchiveContract::content(const QString& archive)
{
    const std::unique_ptr<OpenedArchive> opened = open(archive);
    if (!opened)
        return "<none>";
    std::vector<std::size_t> numbers;
    for (std::size_t i = 0; i < opened->entries().size(); ++i)
        if (opened->entries()[i].kind == ArchiveEntry::Kind::File)
            numbers.push_back(i);
    EXPECT_TRUE(opened->unpack(numbers, [](qint64, qint64) { return true; }));
    QStringList lines;
    for (std::size_t i = 0; i < opened->entries().size(); ++i) {
        const ArchiveEntry& entry = opened->entries()[i];
        if (entry.kind == ArchiveEntry::Kind::Folder)
            lines.append(entry.name);
        else
            lines.append(entry.name + u": "_s + QString::fromUtf8(bytes(opened->unpackedFile(i))));
    }
    lines.sort();
    return lines.join(u'\n').toStdString();
}

TEST_P(ArchiveContract, TheTreeBelowAFolderGoesInUnderNamesRelativeToIt)
{
    put(u"Playlisten/Rock.m3u"_s, "/musik/a.mp3\r\n");
    put(u"Playlisten/Über/Ärger.m3u"_s, "/musik/b.mp3\r\n");
    ASSERT_TRUE(files().makeFolder(at(u"Playlisten/leer"_s)));
    EXPECT_TRUE(add(u"a.zip"_s, {u"Playlisten"_s}).done);
    EXPECT_EQ("Rock.m3u: /musik/a.mp3\r\n\nleer/\nÜber/\nÜber/Ärger.m3u: /musik/b.mp3\r\n", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, ATrailingSeparatorOfTheFolderIsAllowed)
{
    put(u"Playlisten/Rock.m3u"_s, "x");
    EXPECT_TRUE(add(u"a.zip"_s, {u"Playlisten/"_s}).done);
    EXPECT_EQ("Rock.m3u: x", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, FoldersGetNoEntriesOfTheirOwnWhereNobodyWantsThem)
{
    put(u"Resource/alt/Rock.jpg"_s, "Bild");
    EXPECT_TRUE(add(u"a.zip"_s, {u"Resource"_s}, false).done);
    EXPECT_EQ("alt/Rock.jpg: Bild", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, AnArchiveThatStandsIsAddedToAndEntriesOfOneNameAreReplaced)
{
    put(u"eins/Rock.m3u"_s, "alt");
    put(u"eins/Jazz.m3u"_s, "bleibt");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    put(u"zwei/Rock.m3u"_s, "neu");
    EXPECT_TRUE(add(u"a.zip"_s, {u"zwei"_s}).done);
    EXPECT_EQ("Jazz.m3u: bleibt\nRock.m3u: neu", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, AnEntryIsReplacedWhateverTheCaseOfItsName)
{
    put(u"eins/Ärger.m3u"_s, "alt");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    put(u"zwei/ÄRGER.M3U"_s, "neu");
    EXPECT_TRUE(add(u"a.zip"_s, {u"zwei"_s}).done);
    EXPECT_EQ("ÄRGER.M3U: neu", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, OfTwoFilesWithOneNameTheLaterOneStays)
{
    put(u"eins/Rock.m3u"_s, "frueher");
    put(u"zwei/Rock.m3u"_s, "spaeter");
    EXPECT_TRUE(add(u"a.zip"_s, {u"eins"_s, u"zwei"_s}).done);
    EXPECT_EQ("Rock.m3u: spaeter", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, AFileGoesInUnderANameOfItsOwnAndBeforeOneOfTheTrees)
{
    put(u"eins/Orvantine.dat"_s, "alt");
    put(u"Daten"_s, "neu");
    const ArchiveJob job{.archive = at(u"a.zip"_s),
                         .trees = {{at(u"eins"_s), true}},
                         .compression = {},
                         .takes = {},
                         .files = {{at(u"Daten"_s), u"Orvantine.dat"_s}, {at(u"fehlt"_s), u"fehlt"_s}}};
    EXPECT_TRUE(m_world->zip().add(job, {}).done);
    EXPECT_EQ("Orvantine.dat: neu", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, AFolderThatDoesNotExistHasNoFiles)
{
    put(u"eins/Rock.m3u"_s, "x");
    EXPECT_TRUE(add(u"a.zip"_s, {u"eins"_s, u"fehlt"_s}).done);
    EXPECT_EQ("Rock.m3u: x", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, NothingToTakeMakesNoArchive)
{
    ASSERT_TRUE(files().makeFolder(at(u"leer"_s)));
    EXPECT_FALSE(add(u"a.zip"_s, {u"leer"_s}).done);
    EXPECT_FALSE(files().exists(at(u"a.zip"_s)));
}

TEST_P(ArchiveContract, AFileThatIsNoWholeArchiveIsLeftAlone)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"a.zip"_s, "kein Archiv");
    EXPECT_FALSE(add(u"a.zip"_s, {u"eins"_s}).done);
    EXPECT_EQ("kein Archiv", bytes(at(u"a.zip"_s)));
    put(u"leer.zip"_s, "");
    EXPECT_FALSE(add(u"leer.zip"_s, {u"eins"_s}).done);
    EXPECT_EQ("", bytes(at(u"leer.zip"_s)));
}

TEST_P(ArchiveContract, ATruncatedArchiveIsLeftAlone)
{
    put(u"eins/Rock.m3u"_s, "x");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    const QByteArray torn = bytes(at(u"a.zip"_s)).chopped(5);
    put(u"a.zip"_s, torn);
    EXPECT_FALSE(add(u"a.zip"_s, {u"eins"_s}).done);
    EXPECT_EQ(torn, bytes(at(u"a.zip"_s)));
    EXPECT_EQ("<none>", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, TheArchiveItselfIsLeftOut)
{
    put(u"eins/Rock.m3u"_s, "x");
    ASSERT_TRUE(add(u"eins/a.zip"_s, {u"eins"_s}).done);
    EXPECT_TRUE(add(u"eins/a.zip"_s, {u"eins"_s}).done);
    EXPECT_EQ("Rock.m3u: x", content(u"eins/a.zip"_s));
}

TEST_P(ArchiveContract, AStopLeavesTheOlderArchive)
{
    put(u"eins/Rock.m3u"_s, "alt");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    const QByteArray before = bytes(at(u"a.zip"_s));
    put(u"eins/Rock.m3u"_s, "neu");
    const ArchiveJob job{.archive = at(u"a.zip"_s), .trees = {{at(u"eins"_s), true}}, .compression = {}, .takes = {}};
    EXPECT_FALSE(m_world->zip().add(job, [](qint64, qint64) { return false; }).done);
    EXPECT_EQ(before, bytes(at(u"a.zip"_s)));
}

TEST_P(ArchiveContract, TheLastBeatOfTheProgressTellsThatAllIsDone)
{
    put(u"eins/Rock.m3u"_s, "alt");
    qint64 last = -1;
    qint64 all = 0;
    const ArchiveJob job{.archive = at(u"a.zip"_s), .trees = {{at(u"eins"_s), true}}, .compression = {}, .takes = {}};
    EXPECT_TRUE(m_world->zip()
                    .add(job,
                         [&](qint64 done, qint64 total) {
                             last = done;
                             all = total;
                             return true;
                         })
                    .done);
    EXPECT_EQ(last, all);
    EXPECT_GT(all, 0);
}

TEST_P(ArchiveContract, AFileThatIsNotTakenIsNamed)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"eins/sub/Nicht.m3u"_s, "y");
    const ArchiveJob job{.archive = at(u"a.zip"_s),
                         .trees = {{at(u"eins"_s), false}},
                         .compression = Compression::Simple,
                         .takes = [](const QString& name) { return name != u"sub/Nicht.m3u"_s; }};
    const ArchiveOutcome outcome = m_world->zip().add(job, {});
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(QStringList{u"sub/Nicht.m3u"_s}, outcome.leftOut);
    EXPECT_EQ("Rock.m3u: x", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, AFolderThatIsNotTakenIsNamedOnceWithAllThatIsInIt)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"eins/sub/Nicht.m3u"_s, "y");
    const ArchiveJob job{.archive = at(u"a.zip"_s),
                         .trees = {{at(u"eins"_s), true}},
                         .compression = Compression::Simple,
                         .takes = [](const QString& name) { return name != u"sub/"_s; }};
    const ArchiveOutcome outcome = m_world->zip().add(job, {});
    EXPECT_TRUE(outcome.done);
    EXPECT_EQ(QStringList{u"sub/"_s}, outcome.leftOut);
    EXPECT_EQ("Rock.m3u: x", content(u"a.zip"_s));
}

TEST_P(ArchiveContract, AnArchiveThatIsNotAcceptedNeverTakesThePlaceOfTheOlderOne)
{
    put(u"eins/Rock.m3u"_s, "alt");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    const QByteArray before = bytes(at(u"a.zip"_s));
    put(u"zwei/Jazz.m3u"_s, "neu");
    ArchiveJob job{.archive = at(u"a.zip"_s), .trees = {{at(u"zwei"_s), true}}, .compression = {}, .takes = {}};
    QStringList asked;
    qint64 size = 0;
    bool accepted = false;
    job.accepts = [&](const std::vector<ArchiveEntry>& entries, qint64 bytes) {
        for (const ArchiveEntry& entry : entries)
            asked.append(entry.name);
        size = bytes;
        return accepted;
    };
    EXPECT_FALSE(m_world->zip().add(job, {}).done);
    EXPECT_EQ(before, bytes(at(u"a.zip"_s)));
    EXPECT_EQ((QStringList{u"Rock.m3u"_s, u"Jazz.m3u"_s}), asked);
    EXPECT_FALSE(files().takeFault());
    accepted = true;
    EXPECT_TRUE(m_world->zip().add(job, {}).done);
    EXPECT_EQ(files().size(at(u"a.zip"_s)), size);
}

TEST_P(ArchiveContract, WhatIsNoArchiveIsNoFaultOfTheDisk)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"a.zip"_s, "kein Archiv");
    EXPECT_FALSE(add(u"a.zip"_s, {u"eins"_s}).done);
    EXPECT_FALSE(open(u"a.zip"_s));
    EXPECT_FALSE(files().takeFault());
}

TEST_P(ArchiveContract, TheTimeOfAFileIsKept)
{
    const QDateTime time(QDate(2003, 2, 1), QTime(13, 14, 15));
    put(u"eins/Rock.m3u"_s, "x");
    m_world->setModified(at(u"eins/Rock.m3u"_s), time);
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    const std::unique_ptr<OpenedArchive> opened = open(u"a.zip"_s);
    ASSERT_TRUE(opened);
    ASSERT_EQ(1U, opened->entries().size());
    EXPECT_EQ(time, opened->entries()[0].modified);
    ASSERT_TRUE(opened->unpack({0}, {}));
    EXPECT_EQ(time, files().modified(opened->unpackedFile(0)));
}

TEST_P(ArchiveContract, TheSizesOfEntriesAreKnownBeforeTheyAreUnpacked)
{
    put(u"eins/Rock.m3u"_s, "12345");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    const std::unique_ptr<OpenedArchive> opened = open(u"a.zip"_s);
    ASSERT_TRUE(opened);
    EXPECT_EQ(5, opened->entries().at(0).size);
    EXPECT_GT(opened->entries().at(0).packedSize, 0);
    EXPECT_EQ(files().size(at(u"a.zip"_s)), opened->size());
}

TEST_P(ArchiveContract, WhatWasUnpackedGoesWithTheArchive)
{
    put(u"eins/Rock.m3u"_s, "x");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    std::unique_ptr<OpenedArchive> opened = open(u"a.zip"_s);
    ASSERT_TRUE(opened);
    ASSERT_TRUE(opened->unpack({0}, {}));
    const QString file = opened->unpackedFile(0);
    EXPECT_EQ("x", bytes(file));
    opened.reset();
    EXPECT_FALSE(files().exists(file));
}

TEST_P(ArchiveContract, AnArchiveWithMoreEntriesThanAllowedIsNotOpened)
{
    put(u"eins/Rock.m3u"_s, "x");
    put(u"eins/Jazz.m3u"_s, "y");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    EXPECT_TRUE(open(u"a.zip"_s, 2));
    EXPECT_FALSE(open(u"a.zip"_s, 1));
}

TEST_P(ArchiveContract, AMissingArchiveAndAFolderAreNone)
{
    ASSERT_TRUE(files().makeFolder(at(u"ordner.zip"_s)));
    put(u"eins/Rock.m3u"_s, "x");
    EXPECT_FALSE(open(u"fehlt.zip"_s));
    EXPECT_FALSE(open(u"ordner.zip"_s));
    EXPECT_FALSE(add(u"ordner.zip"_s, {u"eins"_s}).done);
    EXPECT_FALSE(add(u"fehlt/a.zip"_s, {u"eins"_s}).done);
}

TEST_P(ArchiveContract, OnlyFilesOfTheArchiveAreUnpacked)
{
    put(u"eins/sub/Rock.m3u"_s, "x");
    ASSERT_TRUE(add(u"a.zip"_s, {u"eins"_s}).done);
    const std::unique_ptr<OpenedArchive> opened = open(u"a.zip"_s);
    ASSERT_TRUE(opened);
    ASSERT_EQ(2U, opened->entries().size());
    EXPECT_FALSE(opened->unpack({7}, {}));
    const std::size_t folder = opened->entries()[0].kind == ArchiveEntry::Kind::Folder ? 0 : 1;
    EXPECT_FALSE(opened->unpack({folder}, {}));
}

} // namespace orvantine
