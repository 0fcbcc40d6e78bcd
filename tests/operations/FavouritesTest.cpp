
#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Favourites : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    [[nodiscard]] std::string mark(int row)
    {
        return root().services.profiles.value(database(), u"Index"_s, QString::number(row) + u'g').toStdString();
    }
    [[nodiscard]] std::string names()
    {
        QStringList all;
        for (int row = 1; row <= catalogue().count(); ++row)
            all += catalogue().subItem(row, 1);
        return all.join(u' ').toStdString();
    }
};

} // namespace

TEST_F(Favourites, TheCommandMarksTheSelectedListAndTakesTheMarkAway)
{
    click(2);
    ASSERT_FALSE(root().mnuFavoriten.Checked.value());
    root().mnuFavoriten.Click();
    EXPECT_TRUE(root().mnuFavoriten.Checked.value());
    EXPECT_EQ("Icon_6 Icon_6 Icon_1 Icon_1", marks());
    EXPECT_EQ("1", mark(2));
    root().mnuFavoriten.Click();
    EXPECT_FALSE(root().mnuFavoriten.Checked.value());
    EXPECT_EQ("Icon_6 Icon_1 Icon_1 Icon_1", marks());
    EXPECT_EQ(-1, bytes(database()).indexOf("2g"));
}

TEST_F(Favourites, WithoutASelectedRowNothingIsMarked)
{
    catalogue().clearSelection();
    const bool before = root().mnuFavoriten.Checked.value();
    forgetCalls();
    root().mnuFavoriten.Click();
    EXPECT_EQ(before, root().mnuFavoriten.Checked.value());
    EXPECT_EQ("", actions());
}

TEST_F(Favourites, TheFilterLeavesTheFavouritesWithTheirIconsAndSelectsTheFirst)
{
    click(3);
    root().mnuFavoriten.Click();
    click(2);
    const std::string before = databaseText();
    forgetCalls();
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Dritte", names());
    EXPECT_EQ("Icon_6 Icon_6", marks());
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ("(2)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ("1", root().mnuFavoritenShow.Tag.toStdString());
    EXPECT_TRUE(root().mnuFavoritenShow.Checked.value());
    EXPECT_EQ("", actions());
    EXPECT_EQ(before, databaseText());
}

TEST_F(Favourites, AClickInTheFilteredListOpensTheRowThatIsSeen)
{
    click(3);
    root().mnuFavoriten.Click();
    click(2);
    root().mnuFavoritenShow.Click();
    click(2);
    EXPECT_EQ("Dritte 1", tracks().subItem(1, 2).toStdString());
}

TEST_F(Favourites, RowNumbersOfTheFilteredListAreThoseOfTheShrunkList)
{
    click(3);
    root().mnuFavoriten.Click();
    root().mnuFavoritenShow.Click();
    catalogue().select(2);
    root().mnuFavoriten.Checked = true;
    root().mnuFavoriten.Click();
    // The mark that goes is that of the second key, not that of the third playlist.
    EXPECT_EQ("", mark(2));
    EXPECT_EQ("1", mark(3));
}

TEST_F(Favourites, WithoutAFavouriteTheListIsEmpty)
{
    click(1);
    root().mnuFavoriten.Click();
    root().mnuFavoritenShow.Click();
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(0, catalogue().selectedRow());
}

TEST_F(Favourites, AFilteredListIsNeverSaved)
{
    const std::string before = databaseText();
    root().mnuFavoritenShow.Click();
    forgetCalls();
    root().mnuSpeichern.Click();
    EXPECT_EQ("", actions());
    EXPECT_EQ(before, databaseText());
}

TEST_F(Favourites, TheSecondClickBringsAllListsBackWithoutAnyQuestion)
{
    // Each name stands in the database: with the check on, the reload would ask of every one.
    for (const SettingValue& stored : {dwordSetting(1), dwordSetting(0)}) {
        setting(u"CheckEntrys"_s, stored);
        root().mnuFavoritenShow.Click();
        ASSERT_EQ("Erste", names());
        root().mnuFavoritenShow.Click();
        EXPECT_EQ("Erste Zweite Dritte Einzeln", names());
        EXPECT_EQ("0", root().mnuFavoritenShow.Tag.toStdString());
        EXPECT_FALSE(root().mnuFavoritenShow.Checked.value());
        EXPECT_EQ("(4)", root().nAnzeige.Caption.value().toStdString());
        EXPECT_EQ(described(stored).toStdString(), setting(u"CheckEntrys"_s).toStdString());
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_FALSE(root().buttonsDisabled);
        EXPECT_TRUE(root().LListView1.Enabled.value());
        EXPECT_EQ("", boxes());
    }
}

TEST_F(Favourites, ACheckThatWasAbsentAndSoOnIsOnAfterwards)
{
    root().mnuFavoritenShow.Click();
    root().mnuFavoritenShow.Click();
    EXPECT_EQ(described(dwordSetting(1)).toStdString(), setting(u"CheckEntrys"_s).toStdString());
}

TEST_F(Favourites, BothCommandsNameTheFileByItsConstant)
{
    root().services.start.stem = u"Anders"_s;
    click(2);
    root().mnuFavoriten.Checked = false;
    root().mnuFavoriten.Click();
    EXPECT_EQ("1", mark(2));
    root().mnuFavoritenShow.Click();
    EXPECT_EQ("Erste Zweite", names());
}

} // namespace orvantine::fake
