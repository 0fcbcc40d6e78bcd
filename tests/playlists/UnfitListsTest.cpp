#include "catalogue/CatalogueWorld.h"

#include "playlists/SavePlayEntrys.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// "Liste" as the test lays it out, and "Zuletzt", which is open after the start.
class UnfitLists : public CatalogueWorld
{
protected:
    void startWith(const QByteArray& text)
    {
        setting(u"Error"_s, dwordSetting(0));
        put(list, text);
        putDatabase(indexRow(1, {.name = u"Liste"_s, .path = list}) +
                    indexRow(2, {.name = u"Zuletzt"_s, .path = putList(u"Zuletzt"_s, {putTrack(u"a"_s)})}));
        start();
    }

    const QString list = u"/l/liste.m3u"_s;
};

} // namespace

TEST_F(UnfitLists, AReadOnlyListOfTheHostShowsItsOwnRowsAndIsNotSaved)
{
    startWith("/m/eins.mp3\n/m/zwei.mp3\n");
    desktop.memory()->setReadOnly(list);
    click(1);
    ASSERT_EQ(2, tracks().count());
    EXPECT_EQ("/m/eins.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ("/m/zwei.mp3", tracks().subItem(2, 3).toStdString());
    EXPECT_EQ(TrackList::Content::Stale, root().trackList.content());
    desktop.memory()->setReadOnly(list, false);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/eins.mp3\n/m/zwei.mp3\n", bytes(list).toStdString());
}

TEST_F(UnfitLists, AListThatCannotBeKeptIsShownAndStays)
{
    startWith("#k\n/m/eins.mp3\n/m/zwei.mp3\n");
    desktop.memory()->breakStore();
    click(1);
    EXPECT_EQ("/m/eins.mp3", tracks().subItem(2, 3).toStdString());
    SavePlayEntrys(root());
    EXPECT_EQ("#k\n/m/eins.mp3\n/m/zwei.mp3\n", bytes(list).toStdString());
}

TEST_F(UnfitLists, AFileThatIsNoTextHasNoRowsAndIsNotSaved)
{
    const QByteArray sound("ID3\3\0\nLied eins\nLied zwei\n", 26);
    startWith(sound);
    click(1);
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ(TrackList::Content::Stale, root().trackList.content());
    SavePlayEntrys(root());
    EXPECT_EQ(sound.toStdString(), bytes(list).toStdString());
}

TEST_F(UnfitLists, OneOldLineDoesNotSpoilTheOtherNamesOnTheDisk)
{
    startWith("/m/Gr\xC3\xBC\xC3\x9F\x65.mp3\r\n/m/B\xE4r.mp3\r\n#k\r\n/m/\xC3\x96l.mp3\r\n");
    click(1);
    EXPECT_EQ("/m/Grüße.mp3\r\n/m/Bär.mp3\r\n/m/Öl.mp3\r\n\r\n", bytes(list).toStdString());
    EXPECT_EQ("/m/Grüße.mp3", tracks().subItem(1, 3).toStdString());
}

TEST_F(UnfitLists, AListOfAnotherEndingThatTheReadRewritesIsKeptFirst)
{
    const QByteArray before = "#k\r\n/m/eins.mp3\r\n/m/zwei.mp3\r\n";
    const QString other = u"/l/Titel.mp3"_s;
    put(other, before);
    setting(u"Error"_s, dwordSetting(0));
    putDatabase(indexRow(1, {.name = u"Titel"_s, .path = other}) +
                indexRow(2, {.name = u"Zuletzt"_s, .path = putList(u"Zuletzt"_s, {putTrack(u"a"_s)})}));
    start();
    ASSERT_FALSE(desktop.memory()->recovered().contains(before));
    click(1);
    EXPECT_EQ("/m/eins.mp3\r\n/m/zwei.mp3\r\n\r\n", bytes(other).toStdString());
    EXPECT_EQ(1, desktop.memory()->recovered().count(before));
}

TEST_F(UnfitLists, ANeighbourWhoseNameBeginsLikeACommentKeepsItsFolder)
{
    put(u"/l/#1 Hit.mp3"_s, "mp3");
    put(u"/l/zwei.mp3"_s, "mp3");
    startWith("/l/#1 Hit.mp3\r\n/l/zwei.mp3\r\n");
    for (const char* const time : {"first", "second"}) {
        SCOPED_TRACE(time);
        catalogue().Tag = u"0"_s;
        click(1);
        EXPECT_EQ("/l/#1 Hit.mp3\r\nzwei.mp3\r\n\r\n", bytes(list).toStdString());
        EXPECT_EQ(2, tracks().count());
        EXPECT_EQ("/l/#1 Hit.mp3", tracks().subItem(1, 3).toStdString());
    }
}

TEST_F(UnfitLists, ADateThatCannotBeReadIsNotWrittenOver)
{
    startWith("/m/eins.mp3\r\n/m/zwei.mp3\r\n");
    putTrack(u"zwei"_s);
    const int before = desktop.events().yields();
    click(1);
    const int yields = desktop.events().yields() - before;
    bool failed = false;
    for (int yield = 1; yield <= yields; ++yield) {
        SCOPED_TRACE(yield);
        click(2);
        const QByteArray there = bytes(database()) + "[X]\r\n";
        desktop.events().atYield(yield, [&] {
            // Somebody touches the database, and it cannot be read at once.
            put(database(), there);
            desktop.log.failNext(u"files.readBytes "_s + quoted(database()));
            failed = true;
        });
        click(1);
        EXPECT_EQ(there.toStdString(), bytes(database()).toStdString());
    }
    EXPECT_TRUE(failed);
}

} // namespace orvantine::fake
