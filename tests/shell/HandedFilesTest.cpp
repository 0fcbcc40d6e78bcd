#include "shell/HandedFiles.h"

#include "catalogue/CatalogueWorld.h"

#include "app/Command.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class HandedFiles : public CatalogueWorld
{
protected:
    HandedFiles()
    {
        setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
        putCatalogue({u"Erste"_s, u"Zweite"_s});
        put(u"/neu/lied.mp3"_s, "mp3");
        put(u"/neu/liste.m3u"_s, "/neu/lied.mp3\r\n\r\n");
        start();
        click(1);
    }

    /// As the other program does it: first it is asked.
    bool hand(const QStringList& paths)
    {
        const bool taken = desktop.instance.TakesFiles();
        if (taken)
            desktop.instance.Handed(paths);
        return taken;
    }
};

} // namespace

TEST_F(HandedFiles, TracksGoToTheOpenListAndFoldersAndListsToTheCatalogue)
{
    EXPECT_TRUE(hand({u"/neu/lied.mp3"_s, u"/neu"_s, u"/neu/liste.m3u"_s}));
    EXPECT_EQ(4, catalogue().count());
    EXPECT_EQ("neu", catalogue().subItem(3, 1).toStdString());
    EXPECT_EQ("liste", catalogue().subItem(4, 1).toStdString());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/neu/lied.mp3\r\n", bytes(listPath(u"Erste"_s)).toStdString());
}

TEST_F(HandedFiles, AListThatStandsInTheCatalogueIsOnlySelected)
{
    const std::string before = bytes(database()).toStdString();
    EXPECT_TRUE(hand({listPath(u"Zweite"_s)}));
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("/m/Zweite 1.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ(before, bytes(database()).toStdString());
}

TEST_F(HandedFiles, EachKindOfListIsAddedInTheToldWayAndOpened)
{
    // A copy in "Playlisten" would be made otherwise.
    root().mnuLokalePlayliste.Click();
    put(u"/neu/alt.pls"_s, "/neu/lied.mp3\r\n\r\n");
    put(u"/neu/neu.m3u8"_s, "/neu/lied.mp3\r\n/m/Erste 1.mp3\r\n\r\n");
    EXPECT_TRUE(hand({u"/neu/alt.pls"_s, u"/neu/neu.m3u8"_s}));
    EXPECT_EQ(4, catalogue().count());
    EXPECT_EQ("/neu/alt.pls", catalogue().subItem(3, 2).toStdString());
    EXPECT_EQ(4, catalogue().selectedRow());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n\r\n", bytes(listPath(u"Erste"_s)).toStdString());
}

TEST_F(HandedFiles, AListThatOnceGotAnotherNameHasItAgain)
{
    put(database(), bytes(database()) + "[Rename]\r\nliste.m3u=Mein Name\r\n");
    EXPECT_TRUE(hand({u"/neu/liste.m3u"_s}));
    EXPECT_EQ("Mein Name", catalogue().subItem(3, 1).toStdString());
}

TEST_F(HandedFiles, AListOfAKnownNameIsAskedFor)
{
    put(u"/neu/Zweite.m3u"_s, "/neu/lied.mp3\r\n\r\n");
    desktop.messages.answer(Answer::No, u" Playliste hinzufügen"_s,
                            u"Diese Wiedergabeliste ist schon im Datenbestand vorhanden.\n"
                            u"Überprüfen Sie bitte, ob es sich nur um den gleichen Namen handelt.   \n \n"
                            u"Möchten Sie diese Playliste trotzdem erneut hinzufügen ?"_s);
    EXPECT_TRUE(hand({u"/neu/Zweite.m3u"_s}));
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(1, catalogue().selectedRow());
}

TEST_F(HandedFiles, AListThatTheFilterHidesIsShown)
{
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(0, catalogue().count());
    EXPECT_TRUE(hand({listPath(u"Zweite"_s)}));
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("/m/Zweite 1.mp3", tracks().subItem(1, 3).toStdString());
}

TEST_F(HandedFiles, AListThatHasVanishedIsPassedOver)
{
    EXPECT_TRUE(hand({u"/neu/weg.m3u"_s}));
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("(missing)", bytes(u"/neu/weg.m3u"_s).toStdString());
}

TEST_F(HandedFiles, TheWindowComesToTheFront)
{
    root().State = WindowState::Minimized;
    root().Visible = false;
    EXPECT_TRUE(hand({u"/neu/lied.mp3"_s}));
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ(WindowState::Normal, root().State.value());
}

TEST_F(HandedFiles, WhileACommandOrADialogIsAtWorkNothingIsTaken)
{
    desktop.forms().whileModal(u"Info"_s, [this](Form& form) {
        EXPECT_FALSE(hand({u"/neu/lied.mp3"_s}));
        takeHandedFiles(root(), {u"/neu/lied.mp3"_s});
        root().services.forms.unload(form);
    });
    ASSERT_TRUE(root().mnuInfo.press());
    EXPECT_EQ(2, tracks().count());
    EXPECT_TRUE(hand({u"/neu/lied.mp3"_s}));
    EXPECT_EQ(3, tracks().count());
}

TEST_F(HandedFiles, BeforeTheStartAndAfterTheEndNothingIsTaken)
{
    root().loaded = false;
    EXPECT_FALSE(hand({u"/neu/lied.mp3"_s}));
    root().loaded = true;
    root().services.events.endProcess();
    EXPECT_FALSE(hand({u"/neu/lied.mp3"_s}));
    EXPECT_EQ(2, tracks().count());
}

TEST_F(HandedFiles, AFullCatalogueTellsItsLimit)
{
    QByteArray index;
    for (int row = 1; row <= 160; ++row)
        index += indexRow(row, {.name = u"Liste %1"_s.arg(row), .path = listPath(u"Erste"_s)});
    putDatabase(index);
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    ASSERT_EQ(160, catalogue().count());
    static_cast<void>(boxes());
    desktop.messages.answer(Answer::Ok, u" Wiedergabelisten verwalten"_s,
                            u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \n"
                            u"Bitte löschen Sie eine der 160 Playlisten aus der Liste."_s);
    EXPECT_TRUE(hand({u"/neu/liste.m3u"_s}));
    EXPECT_EQ(160, catalogue().count());
}

} // namespace orvantine::fake
