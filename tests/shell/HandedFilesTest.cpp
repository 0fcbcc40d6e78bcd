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

} // namespace orvantine::fake
