#include "transfer/FolderDialogs.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class FolderDialogs : public CatalogueWorld
{
protected:
    void SetUp() override
    {
        putFolder(u"/ziel/unter"_s);
        putFolder(desktop.folders.documents);
    }

    void startWith(const QByteArray& options)
    {
        put(database(), "[Options]\r\n" + options + "[Index]\r\n");
        setting(u"Info"_s, stringSetting(u"1"_s));
        root().tDatenbank.Text = data();
        forgetCalls();
    }

    /// The folder is selected in the dialog and taken; gives the one that was selected at the start.
    QString choose(FolderDialog& dialog, const QString& folder)
    {
        QString first;
        desktop.forms().whileModal(dialog.name, [&](Form&) {
            first = dialog.LTreeview.SelectedFolder;
            if (!folder.isNull())
                select(dialog, folder);
            dialog.BReady.Click();
        });
        desktop.forms().showModal(dialog);
        return first;
    }
    static void select(FolderDialog& dialog, const QString& folder)
    {
        dialog.LTreeview.SelectedFolder = folder;
        dialog.LTreeview.Change();
    }

    [[nodiscard]] std::string option(const QString& key)
    {
        return desktop.profiles().value(database(), u"Options"_s, key).toStdString();
    }
    [[nodiscard]] std::string result()
    {
        return u"<%1> %2 <%3>"_s.arg(root().tBrowseFolder.Text.value(), root().tBrowseFolder.Tag, root().LMp3Files.Path)
            .toStdString();
    }
};

} // namespace

TEST_F(FolderDialogs, TheyBearTheirCaptions)
{
    EXPECT_EQ(" Zielordner festlegen", root().filesCopy->Caption.value().toStdString());
    EXPECT_EQ(" Ordner auswählen", root().ordner->Caption.value().toStdString());
    EXPECT_EQ("&Abbrechen", root().filesCopy->bAbbrechen.Caption.value().toStdString());
    EXPECT_EQ("&Abbrechen", root().ordner->bAbbrechen.Caption.value().toStdString());
}

TEST_F(FolderDialogs, TheTargetIsKeptWithASeparatorAndTodaysDate)
{
    startWith("");
    choose(*root().filesCopy, u"/ziel/unter"_s);
    EXPECT_EQ("/ziel/unter/", option(u"CopyStick"_s));
    EXPECT_EQ("20.11.2026", option(u"CopyDate"_s));
    EXPECT_EQ("", option(u"Soundfiles"_s));
    EXPECT_EQ("</ziel/unter> 1 </ziel/unter>", result());
    EXPECT_EQ("Arbeitsplatz", root().filesCopy->LTreeview.RootCaption.value().toStdString());
}

TEST_F(FolderDialogs, TheFolderOfSoundFilesIsKeptWithoutADate)
{
    startWith("");
    choose(*root().ordner, u"/ziel"_s);
    EXPECT_EQ("/ziel/", option(u"Soundfiles"_s));
    EXPECT_EQ("", option(u"CopyStick"_s));
    EXPECT_EQ("", option(u"CopyDate"_s));
    EXPECT_EQ("</ziel> 1 </ziel>", result());
}

TEST_F(FolderDialogs, ASeparatorIsAddedInTheStyleOfTheFolderAndNotTwice)
{
    startWith("");
    const std::pair<QString, const char*> cases[] = {
        {u"C:\\Musik"_s, "C:\\Musik\\"}, {u"/"_s, "/"}, {u"C:\\"_s, "C:\\"}, {u"/ziel//"_s, "/ziel/"}};
    for (const auto& [folder, kept] : cases) {
        choose(*root().ordner, folder);
        EXPECT_EQ(kept, option(u"Soundfiles"_s)) << folder.toStdString();
    }
}

TEST_F(FolderDialogs, TheyBeginWithTheKeptFolderIfItStandsElseWithTheDocuments)
{
    const std::string documents = desktop.folders.documents.toStdString();
    startWith("CopyStick=/ziel/unter/\r\nSoundfiles=/ziel\r\n");
    EXPECT_EQ("/ziel/unter", choose(*root().filesCopy, {}).toStdString());
    EXPECT_EQ("/ziel", choose(*root().ordner, {}).toStdString());
    startWith("CopyStick=/fort/\r\n");
    EXPECT_EQ(documents, choose(*root().filesCopy, {}).toStdString());
    EXPECT_EQ(documents, choose(*root().ordner, {}).toStdString());
}

TEST_F(FolderDialogs, TheTreeIsToldWhereTheHostHasAFolder)
{
    startWith("");
    putFolder(u"C:\\Musik"_s);
    for (const FolderDialog* dialog :
         {static_cast<FolderDialog*>(root().filesCopy.get()), static_cast<FolderDialog*>(root().ordner.get())}) {
        EXPECT_EQ("/ziel/unter", dialog->LTreeview.NativePath(u"/ZIEL/Unter"_s).value_or("none").toStdString());
        EXPECT_EQ("C:/Musik", dialog->LTreeview.NativePath(u"C:\\musik"_s).value_or("none").toStdString());
        EXPECT_FALSE(dialog->LTreeview.NativePath(u"/fort"_s).has_value());
    }
}

TEST_F(FolderDialogs, AKeptFolderIsTakenAgainAsItStandsWhateverTheHostCallsIt)
{
    putFolder(u"C:\\Musik"_s);
    startWith("CopyStick=C:\\musik\\\r\n");
    EXPECT_EQ("C:\\musik", choose(*root().filesCopy, {}).toStdString());
    EXPECT_EQ("C:\\musik\\", option(u"CopyStick"_s));
    EXPECT_EQ("<C:\\musik> 1 <C:\\musik>", result());
}

TEST_F(FolderDialogs, AFileIsNoFolderToBeginWith)
{
    put(u"/ziel/datei"_s, "x");
    startWith("Soundfiles=/ziel/datei\r\n");
    EXPECT_EQ(desktop.folders.documents.toStdString(), choose(*root().ordner, {}).toStdString());
}

TEST_F(FolderDialogs, WithTheMarkOneNothingIsWrittenAndTheMarkGoesWithTheForm)
{
    startWith("");
    root().filesCopy->Tag = u"1"_s;
    choose(*root().filesCopy, u"/ziel"_s);
    EXPECT_EQ("", option(u"CopyStick"_s));
    EXPECT_EQ("", option(u"CopyDate"_s));
    EXPECT_EQ("</ziel> 1 </ziel>", result());
    choose(*root().filesCopy, u"/ziel"_s);
    EXPECT_EQ("/ziel/", option(u"CopyStick"_s));
}

TEST_F(FolderDialogs, CancelGivesNothingAndWritesNothing)
{
    startWith("");
    root().LMp3Files.Path = u"/vorher"_s;
    for (FolderDialog* dialog : std::initializer_list<FolderDialog*>{root().filesCopy.get(), root().ordner.get()}) {
        root().tBrowseFolder.Text = u"/alt"_s;
        root().tBrowseFolder.Tag = u"1"_s;
        desktop.forms().whileModal(dialog->name, [&](Form&) {
            select(*dialog, u"/ziel"_s);
            dialog->bAbbrechen.Click();
        });
        desktop.forms().showModal(*dialog);
        EXPECT_EQ("<> 0 </vorher>", result());
    }
    EXPECT_EQ("", actions());
}

TEST_F(FolderDialogs, AHeadingOfTheTreeIsNoFolderToBeTaken)
{
    startWith("");
    desktop.forms().whileModal(u"FilesCopy"_s, [&](Form&) {
        FolderDialog& dialog = *root().filesCopy;
        EXPECT_TRUE(dialog.BReady.Enabled.value());
        select(dialog, QString());
        EXPECT_FALSE(dialog.BReady.Enabled.value());
        dialog.BReady.Click();
        EXPECT_TRUE(dialog.Visible.value());
        select(dialog, u"/ziel"_s);
        EXPECT_TRUE(dialog.BReady.Enabled.value());
        dialog.bAbbrechen.Click();
    });
    desktop.forms().showModal(*root().filesCopy);
    EXPECT_EQ("", option(u"CopyStick"_s));
}

} // namespace orvantine::fake
