
#include "operations/TrackListOperationsFixture.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(TrackListOperations, ARenamedListKeepsItsFileAndIsRemembered)
{
    open();
    enterName(u"Über neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Über neu", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ(listPath(u"Liste"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("Über neu", IniFiles::ReadValue(root(), database(), u"Rename"_s, u"Liste.m3u"_s).toStdString());
    EXPECT_EQ("Über neu", IniFiles::ReadValue(root(), database(), u"Index"_s, u"1b"_s).toStdString());
    EXPECT_EQ("Über neu", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ("input title \" Wiedergabeliste umbenennen\" text \"Geben Sie einen neuen Namen für die Playliste "
              "ein:\" default \"Liste\" entered \"Über neu\"",
              boxes());
}

TEST_F(TrackListOperations, TheHeadingFollowsEveryNewNameOfTheOpenList)
{
    open();
    for (const QString& name : {u"Neu"_s, u"Noch neuer"_s}) {
        enterName(name);
        root().mnuUmbenennen.Click();
        EXPECT_EQ(name.toStdString(), root().tPlaylisteinträge.Caption.value().toStdString());
    }
}

TEST_F(TrackListOperations, TheHeadingOfTheOpenListStaysWhereAnotherOneIsRenamed)
{
    open();
    catalogue().select(2);
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Liste", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(TrackListOperations, AnEmptyNameChangesNothing)
{
    open();
    enterName({});
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Liste", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("", actions());
}

TEST_F(TrackListOperations, ANameThatReadsAsEmptyChangesNothing)
{
    open();
    forgetCalls();
    for (const QString& name : {u"  "_s, u"\t"_s, u"\"\""_s, u" ' ' "_s}) {
        enterName(name);
        root().mnuUmbenennen.Click();
        EXPECT_EQ("Liste", catalogue().subItem(1, 1).toStdString());
        EXPECT_EQ("", actions());
    }
}

TEST_F(TrackListOperations, ARowThatBecameAnotherPlaylistWhileTheBoxWasUpKeepsItsName)
{
    for (const int changed : {1, 2}) {
        open();
        const QString there = catalogue().subItem(1, changed) + u'x';
        desktop.messages.script({.answer = Answer::Ok, .entered = u"Neu"_s, .title = {}, .text = {}, .meanwhile = [&] {
                                     catalogue().setSubItem(1, changed, there);
                                 }});
        forgetCalls();
        root().mnuUmbenennen.Click();
        EXPECT_EQ(changed == 1 ? "Listex" : "Liste", catalogue().subItem(1, 1).toStdString());
        EXPECT_EQ("", actions());
        desktop.messages.take();
        desktop.newProcess();
    }
}

TEST_F(TrackListOperations, TheCoverGetsTheNewNameAndIsShownAgain)
{
    open();
    put(picture(u"Liste.jpg"_s), "jpg");
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("jpg", bytes(picture(u"Neu.jpg"_s)).toStdString());
    EXPECT_EQ("(missing)", bytes(picture(u"Liste.jpg"_s)).toStdString());
    EXPECT_EQ(picture(u"Neu.jpg"_s).toStdString(), root().pCovers.Picture.value().toStdString());
}

TEST_F(TrackListOperations, ARenamedListWithAPictureIsOpenedAsByAClick)
{
    open();
    put(picture(u"Andere.gif"_s), "gif");
    catalogue().select(2);
    enterName(u"X"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("*Andere 1 Andere 2", names());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ(picture(u"X.gif"_s).toStdString(), root().pCovers.Picture.value().toStdString());
}

TEST_F(TrackListOperations, ARenamedListWithoutAPictureIsNotOpened)
{
    open();
    catalogue().select(2);
    enterName(u"X"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("*c a B", names());
    EXPECT_EQ("0", catalogue().Tag.toStdString()) << "as the save leaves it";
}

TEST_F(TrackListOperations, ThePictureIsShownAgainWhereTheClickPassesOverTheRow)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    // The view of the favourites: the database is not saved, and the row counts as loaded.
    root().mnuFavoritenShow.Tag = u"1"_s;
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ(picture(u"Neu.gif"_s).toStdString(), root().pCovers.Picture.value().toStdString());
}

TEST_F(TrackListOperations, TheCoverOfAMissingListIsNotShownWhereItsOpeningIsCancelled)
{
    open();
    put(picture(u"Andere.gif"_s), "gif");
    desktop.disk().remove(listPath(u"Andere"_s));
    catalogue().select(2);
    const std::string before = root().pCovers.Picture.value().toStdString();
    enterName(u"X"_s);
    desktop.messages.answer(Answer::Cancel);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("gif", bytes(picture(u"X.gif"_s)).toStdString());
    EXPECT_EQ(before, root().pCovers.Picture.value().toStdString());
    EXPECT_EQ("*c a B", names());
}

TEST_F(TrackListOperations, ARenameIsRememberedBeforeTheSaveAndTheCoverComesLast)
{
    open();
    put(picture(u"Liste.jpg"_s), "jpg");
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    QStringList steps;
    const QStringList made = QString::fromStdString(actions()).split(u'\n');
    for (const QString& line : made)
        for (const QString& part : {u"[Rename]\\r\\nListe.m3u=Neu\\r\\n"_s, u"1b=Neu\\r\\n"_s,
                                    u"files.copy \"{data}/Resource/Liste.jpg\" to \"{data}/Resource/Neu.jpg\""_s,
                                    u"files.remove \"{data}/Resource/Liste.jpg\""_s})
            if (line.contains(part))
                steps += part;
    EXPECT_EQ("[Rename]\\r\\nListe.m3u=Neu\\r\\n\n1b=Neu\\r\\n\n"
              "files.copy \"{data}/Resource/Liste.jpg\" to \"{data}/Resource/Neu.jpg\"\n"
              "files.remove \"{data}/Resource/Liste.jpg\"",
              lines(steps));
}

TEST_F(TrackListOperations, ARenameIsRememberedInTheFileOfTheProgramsName)
{
    desktop.context.stem = u"Meine"_s;
    desktop.newProcess();
    const QString own = data() + u"Meine.dat"_s;
    put(own, "[Index]\r\n" + indexRow(1, {.name = u"Liste"_s, .path = putList(u"Liste"_s, {putTrack(u"a"_s)})}));
    put(database(), "[Index]\r\n");
    setting(u"Error"_s, dwordSetting(0));
    start();
    click(1);
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("Neu", IniFiles::ReadValue(root(), own, u"Rename"_s, u"Liste.m3u"_s).toStdString());
    EXPECT_EQ("Neu", IniFiles::ReadValue(root(), own, u"Index"_s, u"1b"_s).toStdString());
    EXPECT_EQ("[Index]\r\n", bytes(database()).toStdString());
}

TEST_F(TrackListOperations, TheLastPictureThatExistsSetsTheExtension)
{
    open();
    put(picture(u"Liste.jpg"_s), "jpg");
    put(picture(u"Liste.bmp"_s), "bmp");
    enterName(u"Neu"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("bmp", bytes(picture(u"Neu.bmp"_s)).toStdString());
    EXPECT_EQ("(missing)", bytes(picture(u"Neu.jpg"_s)).toStdString());
    EXPECT_EQ("jpg", bytes(picture(u"Liste.jpg"_s)).toStdString());
    EXPECT_EQ("(missing)", bytes(picture(u"Liste.bmp"_s)).toStdString());
}

TEST_F(TrackListOperations, ThePictureOfAListThatGetsTheNameThatItHasGoes)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    enterName(u"Liste"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("(missing)", bytes(picture(u"Liste.gif"_s)).toStdString());
    EXPECT_EQ("Liste", IniFiles::ReadValue(root(), database(), u"Rename"_s, u"Liste.m3u"_s).toStdString());
}

TEST_F(TrackListOperations, ANameThatDiffersInCaseAloneKeepsItsPicture)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    enterName(u"LISTE"_s);
    root().mnuUmbenennen.Click();
    EXPECT_EQ("gif", bytes(picture(u"LISTE.gif"_s)).toStdString());
}

TEST_F(TrackListOperations, APictureThatCannotBearTheNewNameStays)
{
    open();
    put(picture(u"Liste.gif"_s), "gif");
    for (const QString& name : {u"a/b"_s, u"../../x"_s, u"was?"_s}) {
        enterName(name);
        root().mnuUmbenennen.Click();
        EXPECT_EQ(name.toStdString(), catalogue().subItem(1, 1).toStdString());
        EXPECT_EQ("gif", bytes(picture(u"Liste.gif"_s)).toStdString());
        catalogue().setSubItem(1, 1, u"Liste"_s);
    }
    enterName(u"Neu"_s);
    desktop.log.failNext(u"files.copy \""_s + picture(u"Liste.gif"_s));
    root().mnuUmbenennen.Click();
    EXPECT_EQ("gif", bytes(picture(u"Liste.gif"_s)).toStdString());
}

TEST_F(TrackListOperations, ADoubleClickOnTheHeadingRenamesUnlessTheTitleIsDisabled)
{
    open();
    enterName(u"Neu"_s);
    root().tPlaylisteinträge.DblClick();
    EXPECT_EQ("Neu", catalogue().subItem(1, 1).toStdString());
    root().tDateiname.Enabled = false;
    root().tPlaylisteinträge.DblClick();
    root().tDateiname.Enabled = true;
}

TEST_F(TrackListOperations, WithoutASelectedPlaylistNothingIsAsked)
{
    open();
    catalogue().clearSelection();
    root().mnuUmbenennen.Click();
    EXPECT_EQ("", boxes());
}

} // namespace orvantine::fake
