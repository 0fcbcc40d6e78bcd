#include "catalogue/CatalogueWorld.h"
#include "playlists/AddPlayEntrys.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/SavePlayEntrys.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class NestedRead : public CatalogueWorld
{
protected:
    NestedRead()
    {
        putCatalogue({u"Eins"_s, u"Zwei"_s});
        start();
    }
};

} // namespace

TEST_F(NestedRead, OfTwoReadsNestedInAYieldTheLaterOwnsTheList)
{
    desktop.events().after(std::chrono::milliseconds{0}, [&] { click(2); });
    click(1);
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("/m/Zwei 1.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ("/m/Zwei 2.mp3", tracks().subItem(2, 3).toStdString());
    EXPECT_EQ(TrackList::Content::Own, root().trackList.content());
    EXPECT_TRUE(tracks().Enabled.value());
    EXPECT_TRUE(tracks().Visible.value());
}

TEST_F(NestedRead, ASaveInsideAReadWritesNothing)
{
    for (const bool local : {false, true}) {
        SCOPED_TRACE(local);
        int saves = 0;
        desktop.events().after(std::chrono::milliseconds{0}, [&] {
            ++saves;
            ASSERT_EQ(0, tracks().count());
            if (local)
                SaveLocalEntrys(root());
            else
                SavePlayEntrys(root());
        });
        catalogue().Tag = u"0"_s;
        click(1);
        EXPECT_EQ(1, saves);
        EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Eins"_s)).toStdString());
        EXPECT_EQ(2, tracks().count());
    }
}

TEST_F(NestedRead, RowsThatChangeInsideASaveAreWrittenAsTheyAreThen)
{
    click(1);
    desktop.events().after(std::chrono::milliseconds{0}, [&] { AddPlayEntrys(root(), putTrack(u"neu"_s), 0); });
    SavePlayEntrys(root());
    EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n/m/neu.mp3\r\n", bytes(listPath(u"Eins"_s)).toStdString());
    EXPECT_TRUE(tracks().Enabled.value());
}

TEST_F(NestedRead, AListThatIsOpenedInsideASaveOfAnotherOneHarmsNeither)
{
    click(1);
    tracks().remove(1);
    desktop.events().after(std::chrono::milliseconds{0}, [&] { click(2); });
    SavePlayEntrys(root());
    EXPECT_EQ("/m/Eins 2.mp3\r\n", bytes(listPath(u"Eins"_s)).toStdString());
    EXPECT_EQ("/m/Zwei 1.mp3\r\n/m/Zwei 2.mp3\r\n\r\n", bytes(listPath(u"Zwei"_s)).toStdString());
    EXPECT_EQ("/m/Zwei 1.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ(MousePointer::Default, root().Pointer.value());
    EXPECT_TRUE(catalogue().Enabled.value());
}

TEST_F(NestedRead, AListThatIsReadAnewInsideItsSaveShowsWhatItsFileHolds)
{
    click(1);
    tracks().remove(1);
    desktop.events().after(std::chrono::milliseconds{0}, [&] {
        catalogue().Tag = u"0"_s;
        click(1);
    });
    SavePlayEntrys(root());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Eins"_s)).toStdString());
}

TEST_F(NestedRead, AListThatIsRemovedInsideItsSaveIsNotMadeAgain)
{
    click(1);
    desktop.events().after(std::chrono::milliseconds{0}, [&] {
        desktop.disk().remove(listPath(u"Eins"_s));
        root().trackList.close();
    });
    SavePlayEntrys(root());
    EXPECT_EQ("(missing)", bytes(listPath(u"Eins"_s)).toStdString());
}

TEST_F(NestedRead, ATickOfTheHousekeepingInsideAReadHarmsNothing)
{
    desktop.events().after(std::chrono::milliseconds{0}, [&] { root().Timer2.Tick(); });
    click(1);
    EXPECT_EQ("/m/Eins 1.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n", bytes(listPath(u"Eins"_s)).toStdString());
}

TEST_F(NestedRead, ARowThatIsOpenedIsSelectedAndMarkedAsLoaded)
{
    click(1);
    EXPECT_EQ(listPath(u"Zwei"_s).toStdString(), openRow(root(), 2).toStdString());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ("/m/Zwei 1.mp3", tracks().subItem(1, 3).toStdString());
}

TEST_F(NestedRead, ARowThatIsNotThereOpensNothingAndIsNotMarked)
{
    click(1);
    EXPECT_EQ("", openRow(root(), 3).toStdString());
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ("0", catalogue().Tag.toStdString());
    EXPECT_EQ("/m/Eins 1.mp3", tracks().subItem(1, 3).toStdString());
}

TEST_F(NestedRead, ASelectedListIsReadAnewWhateverIsMarked)
{
    click(1);
    putList(u"Eins"_s, {putTrack(u"neu"_s)});
    LoadPlayEntrysTmp(root());
    EXPECT_EQ(2, tracks().count());
    openSelectedAnew(root());
    EXPECT_EQ(1, tracks().count());
    EXPECT_EQ("1", catalogue().Tag.toStdString());
}

TEST_F(NestedRead, AListThatIsOpenedInAnyYieldOfAReadHoldsItsOwnTracksAndTakesOthersBehindThem)
{
    const QString track = putTrack(u"neu"_s);
    const QStringList own{u"/m/Zwei 1.mp3"_s, u"/m/Zwei 2.mp3"_s};
    constexpr int Enough = 8;
    int inside = 0;
    for (int yield = 1; yield <= Enough; ++yield) {
        SCOPED_TRACE(yield);
        putList(u"Zwei"_s, own);
        bool clicked = false;
        desktop.events().atYield(yield, [&] {
            clicked = true;
            click(2);
        });
        catalogue().Tag = u"0"_s;
        click(1);
        inside += clicked ? 1 : 0;
        while (!clicked)
            desktop.events().yield();
        ASSERT_EQ("/m/Zwei 1.mp3", tracks().subItem(1, 3).toStdString());
        EXPECT_EQ(TrackList::Content::Own, root().trackList.content());
        EXPECT_FALSE(root().trackList.showsListBefore());

        desktop.log.failNext(u"files.write"_s);
        AddPlayEntrys(root(), track, 0);
        EXPECT_EQ(2, tracks().count());
        AddPlayEntrys(root(), track, 0);
        EXPECT_EQ("/m/Zwei 1.mp3\r\n/m/Zwei 2.mp3\r\n/m/neu.mp3\r\n\r\n",
                  bytes(listPath(u"Zwei"_s)).replace("\r\r\n", "\r\n").toStdString());
    }
    EXPECT_LE(4, inside) << "a read serves events";
}

} // namespace orvantine::fake
