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

} // namespace orvantine::fake
