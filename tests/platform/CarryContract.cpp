#include "FilesContract.h"

#include <algorithm>
#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// More than one piece, no two alike.
QByteArray longTrack()
{
    QByteArray bytes;
    for (int block = 0; block < 3 * 1024; ++block)
        bytes += QByteArray(1024, static_cast<char>('a' + block % 23));
    return bytes;
}

const CarryStep GoOn = [](qint64) { return true; };

} // namespace

// Carrying

TEST_P(FilesContract, CarriesAFileWithItsTimeAndOverwritesSilently)
{
    const QByteArray track = longTrack();
    ASSERT_TRUE(put(u"von.mp3"_s, track));
    ASSERT_TRUE(put(u"alt.mp3"_s, "alt"));
    ASSERT_TRUE(files().makeFolder(at(u"Stick"_s)));
    for (const QString& name : {u"Stick/neu.mp3"_s, u"alt.mp3"_s}) {
        ASSERT_TRUE(files().carry(at(u"von.mp3"_s), at(name), GoOn)) << name.toStdString();
        EXPECT_EQ(bytes(name), track) << name.toStdString();
        EXPECT_EQ(files().modified(at(name)), files().modified(at(u"von.mp3"_s))) << name.toStdString();
    }
    EXPECT_EQ(files().list(at(u"Stick"_s), u"*"_s), QStringList{u"neu.mp3"_s});
    EXPECT_EQ(files().list(at(QString()), u"*"_s), (QStringList{u"alt.mp3"_s, u"von.mp3"_s}));
}

TEST_P(FilesContract, AnEmptyFileIsCarriedToo)
{
    ASSERT_TRUE(put(u"leer.mp3"_s, {}));
    ASSERT_TRUE(files().carry(at(u"leer.mp3"_s), at(u"neu.mp3"_s), GoOn));
    EXPECT_EQ(bytes(u"neu.mp3"_s), QByteArray());
}

TEST_P(FilesContract, WhileItIsCarriedAFileStandsUnderAnotherNameAndTheOlderOneStays)
{
    const QByteArray track = longTrack();
    ASSERT_TRUE(put(u"von.mp3"_s, track));
    ASSERT_TRUE(put(u"nach.mp3"_s, "alt"));
    std::vector<qint64> told;
    ASSERT_TRUE(files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), [&](qint64 done) {
        EXPECT_EQ(bytes(u"nach.mp3"_s), "alt") << done;
        told.push_back(done);
        return true;
    }));
    EXPECT_EQ(bytes(u"nach.mp3"_s), track);
    ASSERT_GE(told.size(), 2U);
    EXPECT_EQ(told.front(), 0);
    EXPECT_EQ(told.back(), track.size());
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
}

TEST_P(FilesContract, AFileThatIsWholeIsSeenAsPartUntilTheLastStepIsTold)
{
    ASSERT_TRUE(put(u"von.mp3"_s, "Klang"));
    QStringList names;
    ASSERT_TRUE(files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), [&](qint64 done) {
        if (done == 5)
            names = files().list(at(QString()), u"*"_s);
        return true;
    }));
    EXPECT_EQ(names, (QStringList{u"nach.mp3.part"_s, u"von.mp3"_s}));
}

TEST_P(FilesContract, ACarriedFileThatIsStoppedLeavesNothingAndTheOlderOneStays)
{
    ASSERT_TRUE(put(u"von.mp3"_s, longTrack()));
    ASSERT_TRUE(put(u"nach.mp3"_s, "alt"));
    for (const qint64 stopAt : {qint64{0}, qint64{1}, qint64{3} << 20}) {
        EXPECT_FALSE(files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), [&](qint64 done) { return done < stopAt; }));
        EXPECT_EQ(bytes(u"nach.mp3"_s), "alt");
        EXPECT_EQ(files().list(at(QString()), u"*"_s), (QStringList{u"nach.mp3"_s, u"von.mp3"_s}));
        EXPECT_EQ(files().takeFault(), std::nullopt);
    }
}

TEST_P(FilesContract, CarryingAFileOntoItselfSucceedsAndChangesNothing)
{
    ASSERT_TRUE(put(u"von.mp3"_s, "Klang"));
    const auto before = files().stamp(at(u"von.mp3"_s));
    EXPECT_TRUE(files().carry(at(u"von.mp3"_s), at(u"VON.MP3"_s), GoOn));
    EXPECT_EQ(files().stamp(at(u"von.mp3"_s)), before);
}

TEST_P(FilesContract, WhatIsMissingOrAFolderIsNotCarried)
{
    ASSERT_TRUE(files().makeFolder(at(u"Ordner"_s)));
    EXPECT_FALSE(files().carry(at(u"fehlt.mp3"_s), at(u"nach.mp3"_s), GoOn));
    EXPECT_FALSE(files().carry(at(u"Ordner"_s), at(u"nach.mp3"_s), GoOn));
    EXPECT_EQ(files().takeFault(), std::nullopt);
    EXPECT_EQ(bytes(u"nach.mp3"_s), "<missing>");
}

TEST_P(FilesContract, NothingIsCarriedToAPlaceThatCannotBe)
{
    ASSERT_TRUE(put(u"von.mp3"_s, "Klang"));
    ASSERT_TRUE(files().makeFolder(at(u"Ordner"_s)));
    for (const QString& name : {u"fehlt/nach.mp3"_s, u"nach?.mp3"_s, u"Ordner"_s, u"a:b.mp3"_s}) {
        EXPECT_FALSE(files().carry(at(u"von.mp3"_s), at(name), GoOn)) << name.toStdString();
        EXPECT_NE(files().takeFault(), std::nullopt) << name.toStdString();
    }
    EXPECT_EQ(files().list(at(QString()), u"*"_s), QStringList{u"von.mp3"_s});
}

TEST_P(FilesContract, AForeignFileOfThePassingNameIsLeftAlone)
{
    ASSERT_TRUE(put(u"von.mp3"_s, "Klang"));
    ASSERT_TRUE(put(u"nach.mp3.part"_s, "fremd"));
    ASSERT_TRUE(files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), GoOn));
    EXPECT_EQ(bytes(u"nach.mp3"_s), "Klang");
    EXPECT_EQ(bytes(u"nach.mp3.part"_s), "fremd");
    EXPECT_EQ(files().list(at(QString()), u"*"_s), (QStringList{u"nach.mp3"_s, u"nach.mp3.part"_s, u"von.mp3"_s}));
}

TEST_P(FilesContract, CarriedBytesTakeThePlaceOfAnOlderListWhoseBytesAreKept)
{
    ASSERT_TRUE(put(u"Liste.m3u"_s, "alt\r\n"));
    const qsizetype before = m_world->kept().size();
    ASSERT_TRUE(files().carryBytes("neu\r\n", at(u"Liste.m3u"_s), GoOn));
    EXPECT_EQ(bytes(u"Liste.m3u"_s), "neu\r\n");
    EXPECT_EQ(m_world->kept().mid(before), QByteArrayList{"alt\r\n"});
}

TEST_P(FilesContract, TheSameBytesCarriedOnceMoreAreNotKept)
{
    ASSERT_TRUE(put(u"Liste.m3u"_s, "neu\r\n"));
    ASSERT_TRUE(files().carryBytes("neu\r\n", at(u"Liste.m3u"_s), GoOn));
    EXPECT_EQ(m_world->kept(), QByteArrayList());
}

TEST_P(FilesContract, AnOlderSoundFileIsReplacedWithoutBeingKept)
{
    ASSERT_TRUE(put(u"nach.mp3"_s, longTrack()));
    ASSERT_TRUE(put(u"von.mp3"_s, "Klang"));
    ASSERT_TRUE(files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), GoOn));
    EXPECT_EQ(bytes(u"nach.mp3"_s), "Klang");
    EXPECT_EQ(m_world->kept(), QByteArrayList());
}

TEST_P(FilesContract, AListWhoseOldBytesCannotBeKeptStays)
{
    ASSERT_TRUE(put(u"Liste.m3u"_s, "alt\r\n"));
    m_world->breakStore();
    EXPECT_FALSE(files().carryBytes("neu\r\n", at(u"Liste.m3u"_s), GoOn));
    EXPECT_EQ(files().takeFault(), WriteFault::NoSafePlace);
    EXPECT_EQ(bytes(u"Liste.m3u"_s), "alt\r\n");
    EXPECT_EQ(files().list(at(QString()), u"*"_s), QStringList{u"Liste.m3u"_s});
}

TEST_P(FilesContract, NothingIsCarriedInsideAChangeThatCouldBePutBack)
{
    ASSERT_TRUE(put(u"von.mp3"_s, "Klang"));
    const WholeChange together(files());
    EXPECT_FALSE(files().carry(at(u"von.mp3"_s), at(u"nach.mp3"_s), GoOn));
    EXPECT_EQ(bytes(u"nach.mp3"_s), "<missing>");
}

TEST_P(FilesContract, AFolderIsSettledAndAMissingOneIsNot)
{
    ASSERT_TRUE(files().makeFolder(at(u"Stick"_s)));
    EXPECT_TRUE(files().settle(at(u"Stick"_s), GoOn));
    EXPECT_FALSE(files().settle(at(u"fehlt"_s), GoOn));
}

// Passing files

TEST_P(FilesContract, APrivateFolderIsMadeOnceAndEmptiedOneLevelDeep)
{
    const QString folder = files().privateFolder(at(u"PackFolder"_s));
    EXPECT_EQ(folder, at(u"PackFolder"_s));
    EXPECT_EQ(files().privateFolder(at(u"PackFolder"_s)), folder);
    ASSERT_TRUE(files().makeFolder(folder + u"/Liste"_s));
    ASSERT_TRUE(files().makeFolder(folder + u"/.versteckt"_s));
    for (const QString& name : {u"/Orvantine.dat"_s, u"/.x.mp3"_s, u"/Liste/a.mp3"_s, u"/.versteckt/.b.mp3"_s})
        ASSERT_TRUE(files().writeBytes(folder + name, "x"));
    int asked = 0;
    EXPECT_TRUE(files().emptyPrivate(folder, [&asked] { return ++asked > 0; }));
    EXPECT_EQ(asked, 2);
    EXPECT_TRUE(files().isFolder(folder));
    for (const QString& name : {u"/Orvantine.dat"_s, u"/.x.mp3"_s, u"/Liste"_s, u"/.versteckt"_s})
        EXPECT_FALSE(files().exists(folder + name)) << name.toStdString();
    EXPECT_EQ(m_world->kept(), QByteArrayList());
}

TEST_P(FilesContract, AFileInThePlaceOfAPrivateFolderStaysAndAnotherFolderIsGiven)
{
    ASSERT_TRUE(put(u"PackFolder"_s, "fremd"));
    const QString folder = files().privateFolder(at(u"PackFolder"_s));
    EXPECT_TRUE(folder.startsWith(at(u"PackFolder."_s))) << folder.toStdString();
    EXPECT_TRUE(files().isFolder(folder));
    EXPECT_EQ(bytes(u"PackFolder"_s), "fremd");
}

TEST_P(FilesContract, WhatIsNoPrivateFolderIsNotEmptied)
{
    EXPECT_FALSE(files().emptyPrivate(at(u"fehlt"_s), [] { return true; }));
    ASSERT_TRUE(put(u"Datei"_s, "x"));
    EXPECT_FALSE(files().emptyPrivate(at(u"Datei"_s), [] { return true; }));
    EXPECT_EQ(bytes(u"Datei"_s), "x");
}

} // namespace orvantine
