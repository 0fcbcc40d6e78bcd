
#include "operations/mnuEditPaste.h"
#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// The list "Erste" with two tracks is open.
class EditCommands : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    void paste(const QString& text, Answer answer = Answer::Yes)
    {
        desktop.clipboard.content = text;
        desktop.messages.answer(
            answer, u" Dateien aus der Zwischenablage"_s,
            u"Markieren Sie die Audiodateien im Explorer und klicken Sie mit der rechten Maustaste auf die Dateien und "
            u"wählen Sie im Menü ''Senden an'' und den Eintrag ''Zwischenablage''.\n \nMöchten Sie die Audiodateien "
            u"aus der Zwischenablage in diese Wiedergabeliste einfügen ? "_s);
        tracks().GotFocus();
        root().mnuEditPaste.Click();
    }
    /// Paths of the rows behind the two that the list had.
    [[nodiscard]] std::string added()
    {
        QStringList paths;
        for (int row = 3; row <= tracks().count(); ++row)
            paths += tracks().subItem(row, 3);
        return paths.join(u' ').toStdString();
    }
    [[nodiscard]] std::string file() { return bytes(listPath(u"Erste"_s)).toStdString(); }
};

[[nodiscard]] std::string parsed(const QString& text)
{
    QStringList paths;
    const QList<QStringView> found = quotedPaths(text);
    for (const QStringView path : found)
        paths += path.toString();
    return paths.join(u'|').toStdString();
}

} // namespace

TEST_F(EditCommands, CopyTakesThePlaylistsNameFromTheCatalogue)
{
    catalogue().GotFocus();
    root().mnuEditCopy.Click();
    EXPECT_EQ("Erste", desktop.clipboard.content.toStdString());
}

TEST_F(EditCommands, CopyTakesTheFullPathFromTheTracks)
{
    tracks().select(2);
    tracks().GotFocus();
    root().mnuEditCopy.Click();
    EXPECT_EQ("/m/Erste 2.mp3", desktop.clipboard.content.toStdString());
}

TEST_F(EditCommands, CopyWithAnyOtherMarkPutsAnEmptyText)
{
    desktop.clipboard.content = u"alt"_s;
    root().mnuEditCopy.Tag = u"0"_s;
    root().mnuEditCopy.Click();
    EXPECT_EQ("", desktop.clipboard.content.toStdString());
}

TEST_F(EditCommands, CopyWithoutASelectedTrackPutsAnEmptyText)
{
    desktop.clipboard.content = u"alt"_s;
    tracks().GotFocus();
    tracks().clearSelection();
    root().mnuEditCopy.Click();
    EXPECT_EQ("", desktop.clipboard.content.toStdString());
}

TEST_F(EditCommands, DeleteWithAnyOtherMarkAsksNothing)
{
    root().mnuEditCopy.Tag = u"0"_s;
    root().mnuEditKill.Click();
    EXPECT_EQ("", boxes());
    EXPECT_EQ("", actions());
}

TEST_F(EditCommands, BeforeAnyListHadTheFocusNothingIsCopiedRemovedOrPasted)
{
    desktop.clipboard.content = u"\"/m/Zweite 1.mp3\""_s;
    root().mnuEditCopy.Tag = QString();
    root().mnuEditCopy.Click();
    EXPECT_EQ("\"/m/Zweite 1.mp3\"", desktop.clipboard.content.toStdString());
    root().mnuEditKill.Click();
    desktop.messages.answer(Answer::Yes);
    root().mnuEditPaste.Click();
    EXPECT_EQ("", added());
}

TEST_F(EditCommands, DeleteRemovesThePlaylistOrTheTrack)
{
    catalogue().GotFocus();
    desktop.messages.answer(Answer::Cancel);
    root().mnuEditKill.Click();
    EXPECT_NE(std::string::npos, boxes().find("title \" Wiedergabeliste entfernen\""));
    tracks().GotFocus();
    desktop.messages.answer(Answer::Cancel);
    root().mnuEditKill.Click();
    EXPECT_NE(std::string::npos, boxes().find("title \" Dateien entfernen\""));
}

TEST_F(EditCommands, APasteAddsTheQuotedFilesAndSavesOnce)
{
    paste(u"\"/m/Zweite 1.mp3\" \"/m/Zweite 2.mp3\""_s);
    EXPECT_EQ("/m/Zweite 1.mp3 /m/Zweite 2.mp3", added());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3\r\n", file());
    EXPECT_EQ("4", catalogue().subItem(1, 3).toStdString());
    EXPECT_NE(std::string::npos, boxes().find("icon exclamation buttons yes-no answer yes"));
}

TEST_F(EditCommands, NoPastesNothing)
{
    paste(u"\"/m/Zweite 1.mp3\""_s, Answer::No);
    EXPECT_EQ("", added());
    EXPECT_EQ("", actions());
}

TEST_F(EditCommands, FilesThatDoNotExistAreSkippedWithoutAWord)
{
    paste(u"\"/m/gibt es nicht.mp3\" \"/m/Zweite 2.mp3\""_s);
    EXPECT_EQ("/m/Zweite 2.mp3", added());
}

TEST_F(EditCommands, BehindTheFirstAcceptedFileAnyOtherOneIsAddedToo)
{
    put(u"/m/vorher.txt"_s, "");
    put(u"/m/nachher.txt"_s, "");
    paste(u"\"/m/vorher.txt\" \"/m/Zweite 1.mp3\" \"/m/nachher.txt\""_s);
    EXPECT_EQ("/m/Zweite 1.mp3 /m/nachher.txt", added());
}

TEST_F(EditCommands, TheEndingOfAPastedFileRespectsCase)
{
    put(u"/m/GROSS.MP3"_s, "");
    put(u"/m/klein.wma"_s, "");
    put(u"/m/klein.wav"_s, "");
    paste(u"\"/m/GROSS.MP3\""_s);
    EXPECT_EQ("", added());
    paste(u"\"/m/klein.wma\" \"/m/GROSS.MP3\" \"/m/klein.wav\""_s);
    EXPECT_EQ("/m/klein.wma /m/GROSS.MP3 /m/klein.wav", added());
}

TEST_F(EditCommands, APasteTakesTwentyFiles)
{
    QStringList paths;
    for (int i = 1; i <= 25; ++i)
        paths += u'"' + putTrack(u"n%1"_s.arg(i)) + u'"';
    paste(paths.join(u' '));
    EXPECT_EQ(22, tracks().count());
    EXPECT_EQ("/m/n20.mp3", tracks().subItem(22, 3).toStdString());
}

TEST_F(EditCommands, FilesThatDoNotExistCountAmongTheTwenty)
{
    QStringList paths;
    for (int i = 1; i <= 5; ++i)
        paths += u"\"/m/fehlt%1.mp3\""_s.arg(i);
    for (int i = 1; i <= 20; ++i)
        paths += u'"' + putTrack(u"n%1"_s.arg(i)) + u'"';
    paste(paths.join(u' '));
    EXPECT_EQ(17, tracks().count());
    EXPECT_EQ("/m/n15.mp3", tracks().subItem(17, 3).toStdString());
}

TEST_F(EditCommands, QuotedPathsOnLinesOfTheirOwnAreAdded)
{
    paste(u"\"/m/Zweite 1.mp3\"\r\n\"/m/Zweite 2.mp3\""_s);
    EXPECT_EQ("/m/Zweite 1.mp3 /m/Zweite 2.mp3", added());
}

TEST_F(EditCommands, AFolderBehindAnAcceptedFileIsAddedToo)
{
    putFolder(u"/m/Ordner"_s);
    paste(u"\"/m/Zweite 1.mp3\" \"/m/Ordner\""_s);
    EXPECT_EQ("/m/Zweite 1.mp3 /m/Ordner", added());
}

TEST_F(EditCommands, EachPasteAcceptsAnew)
{
    put(u"/m/GROSS.MP3"_s, "");
    paste(u"\"/m/Zweite 1.mp3\""_s);
    paste(u"\"/m/GROSS.MP3\""_s);
    EXPECT_EQ("/m/Zweite 1.mp3", added());
}

TEST_F(EditCommands, ABareNameIsLookedForInTheFolderOfThePlaylist)
{
    // A drive exists by its bare name, and not in that folder.
    paste(u"\"/m/Zweite 1.mp3\" \"C:\" \"/m/Zweite 2.mp3\""_s);
    EXPECT_EQ(data().toStdString() + "Playlisten/C:", tracks().subItem(4, 3).toStdString());
    EXPECT_EQ(Color::ButtonText, tracks().color(3, 3));
    EXPECT_EQ(Color::DarkRed, tracks().color(4, 3));
    EXPECT_EQ(Color::ButtonText, tracks().color(5, 3));
}

TEST_F(EditCommands, TheFirstFileOfAnEmptyNewListBringsItToItsPlace)
{
    const QString path = data() + u"neu.tmp"_s;
    put(path, "");
    put(u"/m/c.mp3"_s, "");
    put(u"/m/d.mp3"_s, "");
    catalogue().setSubItem(2, 1, u"Leer"_s);
    catalogue().setSubItem(2, 2, path);
    click(2);
    paste(u"\"/m/c.mp3\" \"/m/d.mp3\""_s);
    EXPECT_EQ(listPath(u"Leer"_s).toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/m/c.mp3\r\n/m/d.mp3\r\n", bytes(listPath(u"Leer"_s)).toStdString());
    EXPECT_EQ("2", catalogue().subItem(2, 3).toStdString());
}

TEST_F(EditCommands, AListThatIsOpenedBehindTheFirstFileGetsNoneOfTheOthers)
{
    const QString path = data() + u"neu.tmp"_s;
    put(path, "");
    catalogue().setSubItem(2, 2, path);
    click(2);
    desktop.events().after(std::chrono::milliseconds{0}, [this] { click(3); });
    paste(u"\"/m/Zweite 1.mp3\" \"/m/Zweite 2.mp3\""_s);
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("/m/Dritte 1.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ("/m/Dritte 1.mp3\r\n/m/Dritte 2.mp3\r\n\r\n", bytes(listPath(u"Dritte"_s)).toStdString());
}

TEST_F(EditCommands, ATextWithoutAQuoteAddsNothing)
{
    paste(u"/m/Zweite 1.mp3"_s);
    paste({});
    EXPECT_EQ("", added());
}

TEST_F(EditCommands, AFileListOfTheHostIsTurnedIntoTheQuotedForm)
{
    desktop.clipboard.copied = {u"/m/Zweite 1.mp3"_s, u"/m/mit\"Zeichen.mp3"_s, u"/m/Zweite 2.mp3"_s};
    paste(u"file:///m/Zweite%201.mp3"_s);
    EXPECT_EQ("/m/Zweite 1.mp3 /m/Zweite 2.mp3", added());
}

TEST_F(EditCommands, QuotedPathsAreSteppedThroughByThreeCharacters)
{
    EXPECT_EQ("a|b", parsed(u"\"a\" \"b\""_s));
    EXPECT_EQ("a|b", parsed(u"\"a\"\r\n\"b\""_s));
    EXPECT_EQ("a|b", parsed(u"a\" \"b\""_s)) << "the first quote may be missing";
    EXPECT_EQ("a|bc", parsed(u"\"a\"  \"bc\""_s));
    EXPECT_EQ("a", parsed(u"\"a\""_s));
    EXPECT_EQ("a", parsed(u"\"a\" \""_s)) << "too short for another one";
    EXPECT_EQ("a", parsed(u"\"a\" \"b"_s)) << "the last quote is missing";
    EXPECT_EQ("", parsed(u"a"_s));
    EXPECT_EQ("", parsed({}));
    EXPECT_EQ("a", parsed(u"\"a\"b\"c"_s));
}

TEST_F(EditCommands, TheQuotedFormIsReadBack)
{
    const QStringList paths{u"/a b/c.mp3"_s, u"x"_s, u"/ü/ä.wav"_s};
    EXPECT_EQ(paths.join(u'|').toStdString(), parsed(quotedForm(paths)));
    EXPECT_EQ("", quotedForm({}).toStdString());
    EXPECT_EQ("\"b\"", quotedForm({u"a\"a"_s, u"b"_s}).toStdString());
}

TEST_F(EditCommands, HostileTextsAreEndedWithoutHarm)
{
    EXPECT_EQ(20, quotedPaths(QString(1000, u'"')).size());
    paste(QString(1000, u'"'));
    paste(QString(10'000'000, u'x'));
    paste(u'"' + QString(10'000'000, u'x') + u'"');
    EXPECT_EQ("", added());
}

TEST_F(EditCommands, APathWithALineEndIsNotPasted)
{
    for (const QString& path : {u"/m/a\r/m/b.mp3"_s, u"/m/a\nb.mp3"_s})
        desktop.memory()->put(path, "x");
    paste(u"\"/m/a\r/m/b.mp3\" \"/m/a\nb.mp3\" \"/m/Zweite 1.mp3\""_s);
    EXPECT_EQ("/m/Zweite 1.mp3", added());
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/Zweite 1.mp3\r\n", file());
}

TEST_F(EditCommands, APasteIntoAListWithoutTracksShowsThem)
{
    put(listPath(u"Zweite"_s), "");
    click(2);
    ASSERT_FALSE(tracks().Visible.value());
    paste(u"\"/m/Dritte 1.mp3\""_s);
    EXPECT_EQ("/m/Dritte 1.mp3\r\n", bytes(listPath(u"Zweite"_s)).toStdString());
    EXPECT_TRUE(tracks().Visible.value());
}

TEST_F(EditCommands, APasteGoesBehindTheOwnTracksOfAShortList)
{
    for (const char* content : {"x.mp3\r\n", "x.mp3"}) {
        put(listPath(u"Zweite"_s), content);
        catalogue().Tag = u"0"_s;
        click(2);
        paste(u"\"/m/Dritte 1.mp3\""_s);
        EXPECT_EQ(data().toStdString() + "Playlisten/x.mp3\r\n/m/Dritte 1.mp3\r\n",
                  bytes(listPath(u"Zweite"_s)).toStdString());
    }
}

TEST_F(EditCommands, APasteGoesToTheListInSightWhicheverRowIsSelected)
{
    catalogue().select(2);
    paste(u"\"/m/Dritte 1.mp3\""_s);
    EXPECT_EQ("/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n/m/Dritte 1.mp3\r\n", file());
    EXPECT_EQ("/m/Zweite 1.mp3\r\n/m/Zweite 2.mp3\r\n\r\n", bytes(listPath(u"Zweite"_s)).toStdString());
}

TEST_F(EditCommands, AnotherListThatIsOpenedWhileTheQuestionIsUpGetsNothing)
{
    desktop.clipboard.content = u"\"/m/Dritte 1.mp3\""_s;
    desktop.messages.script(
        {.answer = Answer::Yes, .entered = {}, .title = {}, .text = {}, .meanwhile = [this] { click(2); }});
    tracks().GotFocus();
    root().mnuEditPaste.Click();
    EXPECT_EQ(2, tracks().count());
}

TEST_F(EditCommands, APathWithALineEndAcceptsNoOtherFile)
{
    desktop.memory()->put(u"/m/a\nb.mp3"_s, "x");
    put(u"/m/x.txt"_s, "x");
    paste(u"\"/m/a\nb.mp3\" \"/m/x.txt\""_s);
    EXPECT_EQ("", added());
}

} // namespace orvantine::fake
