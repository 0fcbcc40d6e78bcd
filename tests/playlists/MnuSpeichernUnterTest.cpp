
#include "playlists/mnuSpeichernUnter.h"
#include "playlists/GetPlayEntrys.h"
#include "playlists/SavePlaylistsFixture.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(SavePlaylists, TheExportTakesWhatIsOnDiskNotTheUnsavedRows)
{
    putFolder(u"/x"_s);
    tracks().remove(1);
    for (const QString& name : {u"neu.m3u"_s, u"neu.pls"_s}) {
        SCOPED_TRACE(name.toStdString());
        desktop.choosers.save(u"/x/"_s + name);
        mnuSpeichernUnter_Click(root());
        EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\n/m/c.mp3\r\r\n", bytes(u"/x/"_s + name).toStdString().substr(0, 33));
    }
    EXPECT_EQ("", boxes());
}

TEST_F(SavePlaylists, AnExportedListCarriesCrCrLfAndAFinalLineEnd)
{
    putFolder(u"/x"_s);
    desktop.choosers.save(u"/x/neu.m3u"_s);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\n/m/c.mp3\r\r\n\r\n", bytes(u"/x/neu.m3u"_s).toStdString());
}

TEST_F(SavePlaylists, TheDialogIsAskedForWithTheListsFolderAndTheFilter)
{
    desktop.choosers.cancel(ChooserKind::Save);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ("choosers.save title \" Wiedergabeliste speichern\" folder \"/l/\" name \"liste.m3u\" filter "
              "\"Mp3-Wiedergabeliste|*.m3u; *.pls; *.nml|Mp3 Playliste|*.m3u|Winamp Wiedergabeliste|*.pls|Traktor "
              "Playliste|*.nml|Alle Dateitypen|*.*\" extension \"m3u\"",
              calls({u"choosers"_s}));
    EXPECT_EQ("", actions());
}

TEST_F(SavePlaylists, TheDialogBeginsInTheDocumentsWhereThePathHasNoFolder)
{
    // A drive exists, and no separator stands in its name.
    catalogue().setSubItem(1, 2, u"C:"_s);
    desktop.choosers.cancel(ChooserKind::Save);
    mnuSpeichernUnter_Click(root());
    const QString call = desktop.log.linesOf({u"choosers"_s}).join(u'\n');
    EXPECT_TRUE(call.contains(u" folder \"%1\" "_s.arg(desktop.folders.documents))) << call.toStdString();
}

TEST_F(SavePlaylists, AnExportedNmlEscapesNothingAndHoldsTheFolderTwice)
{
    putFolder(u"/x"_s);
    catalogue().setSubItem(1, 1, u"Rock & \"Pop\""_s);
    tracks().setSubItem(1, 2, u"Ä & \"B\" < C"_s);
    tracks().remove(3);
    desktop.choosers.save(u"/x/neu.NML"_s);
    mnuSpeichernUnter_Click(root());
    const std::string nml = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n"
                            "<NML VERSION=\"3\">\r\n"
                            "<HEAD PROGRAM=\"Traktor\" COMPANY=\"orvanten.example\"/>\r\n"
                            "<PLAYLIST TITLE=\"Rock & \"Pop\"\">\r\n"
                            "<ENTRY TITLE=\"Ä & \"B\" < C\">\r\n"
                            "<LOCATION FILE=\"/m/a.mp3\" PATH=\"/m/\"/>\r\n"
                            "</ENTRY>\r\n"
                            "<ENTRY TITLE=\"b\">\r\n"
                            "<LOCATION FILE=\"/m/b.mp3\" PATH=\"/m/\"/>\r\n"
                            "</ENTRY>\r\n"
                            "</PLAYLIST>\r\n"
                            "</NML>\r\n";
    EXPECT_EQ(nml, bytes(u"/x/neu.NML"_s).toStdString());

    catalogue().setSubItem(1, 2, u"/x/neu.NML"_s);
    QString path = u"/x/neu.NML"_s;
    GetPlayEntrys(root(), path);
    ASSERT_GE(tracks().count(), 1);
    EXPECT_EQ("/m//m/a.mp3", tracks().subItem(1, 3).toStdString());
}

TEST_F(SavePlaylists, AVanishedListIsExportedWithoutAWordOrADialog)
{
    desktop.disk().remove(list);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ("", boxes());
    EXPECT_EQ("", calls({u"choosers"_s}));
    EXPECT_EQ("", actions());
}

TEST_F(SavePlaylists, AResultOfFewerThanFiveCharactersIsNothing)
{
    for (const ChosenFile& file :
         {ChosenFile{u"/"_s, u"abc"_s}, ChosenFile{{}, u"abc"_s}, ChosenFile{u"/abcdef"_s, {}}}) {
        desktop.choosers.queue.push(
            {.kind = ChooserKind::Save, .file = file, .folder = {}, .font = {}, .meanwhile = {}});
        mnuSpeichernUnter_Click(root());
        EXPECT_EQ("", actions()) << file.folder.toStdString();
    }
}

TEST_F(SavePlaylists, AnEmptyFolderGetsASeparatorLikeAnyOther)
{
    chooseMeanwhile(u"neu.m3u"_s, {});
    mnuSpeichernUnter_Click(root());
    EXPECT_NE("(missing)", bytes(u"/neu.m3u"_s).toStdString());
}

TEST_F(SavePlaylists, AnNmlOfAListThatIsShownNoMoreOpensItFirst)
{
    putFolder(u"/x"_s);
    const QString other = putList(u"Andere"_s, {u"/m/b.mp3"_s, u"/m/c.mp3"_s});
    ListItem row;
    row.SubItems = {{.Text = u"Andere"_s}, {.Text = other}, {.Text = u"2"_s}};
    catalogue().append(std::move(row));
    chooseMeanwhile(u"/x/neu.nml"_s, [this] { click(2); });
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ(3, tracks().count());
    EXPECT_EQ(1, catalogue().selectedRow());
    const QByteArray nml = bytes(u"/x/neu.nml"_s);
    EXPECT_EQ(3, nml.count("<ENTRY TITLE="));
    EXPECT_TRUE(nml.contains("<PLAYLIST TITLE=\"Liste\">")) << nml.toStdString();
    EXPECT_TRUE(nml.contains("FILE=\"/m/a.mp3\"")) << nml.toStdString();
}

TEST_F(SavePlaylists, ARowThatChangedUnderTheDialogIsNotExported)
{
    putFolder(u"/x"_s);
    root().mnuLokalePlayliste.Checked = true;
    for (const QString& target : {u"/x/neu.m3u"_s, u"/x/neu.nml"_s}) {
        catalogue().setSubItem(1, 2, list);
        chooseMeanwhile(target, [this] { catalogue().setSubItem(1, 2, u"/l/andere.m3u"_s); });
        mnuSpeichernUnter_Click(root());
        EXPECT_EQ("(missing)", bytes(target).toStdString());
        EXPECT_EQ("", boxes());
    }
}

TEST_F(SavePlaylists, ARowThatChangedUnderTheQuestionIsNotRepointed)
{
    putFolder(u"/x"_s);
    root().mnuLokalePlayliste.Checked = true;
    const QByteArray before = bytes(database());
    desktop.choosers.save(u"/x/neu.m3u"_s);
    desktop.messages.script(
        {.answer = Answer::Ok, .entered = {}, .title = SaveTitle, .text = LinkQuestion, .meanwhile = [this] {
             catalogue().setSubItem(1, 2, u"/l/andere.m3u"_s);
         }});
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ("/l/andere.m3u", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(SavePlaylists, BothSeparatorsMakeOneFolder)
{
    desktop.newProcess();
    open(u"C:\\M\\liste.m3u"_s);
    root().mnuLokalePlayliste.Checked = true;
    desktop.choosers.save(u"c:/m/neu.m3u"_s);
    mnuSpeichernUnter_Click(root());
    EXPECT_NE("(missing)", bytes(u"C:\\M\\neu.m3u"_s).toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(SavePlaylists, AListTooShortIsToldUnderTheProgramsNameAndTheQuestionStillComes)
{
    putFolder(u"/x"_s);
    put(list, "a.mp3\r\n");
    root().mnuLokalePlayliste.Checked = true;
    desktop.choosers.save(u"/x/neu.m3u"_s);
    desktop.messages.answer(Answer::Ok, u"Orvanten Manager "_s,
                            u"Beim Einlesen oder Speichern der Playliste ist ein Fehler aufgetreten.    \n"
                            u"Die Änderungen konnten nicht erfolgreich gespeichert werden."_s);
    desktop.messages.answer(Answer::Cancel, SaveTitle, LinkQuestion);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ("(missing)", bytes(u"/x/neu.m3u"_s).toStdString());
    EXPECT_EQ("a.mp3\r\n", listBytes());
    EXPECT_EQ(2, desktop.messages.shown().size());
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::Ok, desktop.messages.shown()[0].buttons);
}

TEST_F(SavePlaylists, AFailedExportIsToldUnderTheWindowsCaption)
{
    put(list, "a.mp3\r\n");
    root().Caption = u"X"_s;
    desktop.choosers.save(u"/l/neu.m3u"_s);
    desktop.messages.answer(Answer::Ok);
    mnuSpeichernUnter_Click(root());
    ASSERT_EQ(1U, desktop.messages.shown().size());
    EXPECT_EQ("X ", desktop.messages.shown()[0].title.toStdString());
}

TEST_F(SavePlaylists, TheLastThreeCharactersDecideAndAnNmlInAnotherFolderIsAskedForToo)
{
    putFolder(u"/x"_s);
    root().mnuLokalePlayliste.Checked = true;
    desktop.choosers.save(u"/x/setnml"_s);
    desktop.messages.answer(Answer::Cancel, SaveTitle, LinkQuestion);
    mnuSpeichernUnter_Click(root());
    EXPECT_TRUE(bytes(u"/x/setnml"_s).startsWith("<?xml")) << bytes(u"/x/setnml"_s).toStdString();
    EXPECT_EQ(1U, desktop.messages.shown().size());
}

TEST_F(SavePlaylists, TheQuestionComesOnlyWithLocalListsAndAnotherFolder)
{
    putFolder(u"/x"_s);
    struct Case
    {
        bool local;
        QString target;
        bool asked;
    };
    for (const Case& c : {Case{false, u"/x/neu.m3u"_s, false}, Case{true, u"/l/neu.m3u"_s, false},
                          Case{true, u"/L/neu.m3u"_s, false}, Case{true, u"/x/neu.m3u"_s, true}}) {
        SCOPED_TRACE(c.target.toStdString() + (c.local ? " local" : ""));
        root().mnuLokalePlayliste.Checked = c.local;
        desktop.choosers.save(c.target);
        if (c.asked)
            desktop.messages.answer(Answer::Cancel, SaveTitle, LinkQuestion);
        mnuSpeichernUnter_Click(root());
        EXPECT_EQ(c.asked ? 1 : 0, desktop.messages.take().size());
        EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    }
}

TEST_F(SavePlaylists, CancelKeepsThePathAndOkRepointsAndSavesTheCatalogue)
{
    putFolder(u"/x"_s);
    root().mnuLokalePlayliste.Checked = true;
    const QByteArray before = bytes(database());
    desktop.choosers.save(u"/x/neu.m3u"_s);
    desktop.messages.answer(Answer::Cancel, SaveTitle, LinkQuestion);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("box title \" Wiedergabeliste speichern\" text \"Sie haben eine vorhandene Playliste unter einer neuen "
              "Datei gespeichert.    \\nIn der Datenbank wird ein Verweiss zu dieser Wiedergabeliste gesetzt.\\n "
              "\\nMöchten Sie die Verknüpfung zur neuen Wiedergabeliste setzen ?\" icon question buttons ok-cancel "
              "answer cancel",
              boxes());

    desktop.choosers.save(u"/x/neu.m3u"_s);
    desktop.messages.answer(Answer::Ok, SaveTitle, LinkQuestion);
    mnuSpeichernUnter_Click(root());
    // The save of the catalogue saves the open list as a local one.
    EXPECT_EQ("[Index]\r\n1a=000\r\n1b=Liste\r\n1c=/x/neu.m3u\r\n1d=3\r\n1e=\r\n1f=01.02.2003\r\n1g=\r\n",
              databaseText());
    EXPECT_EQ(listPath(u"neu"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
}

TEST_F(SavePlaylists, AnExportHoldsItsOwnListWhateverIsOpenedInItsYields)
{
    putFolder(u"/x"_s);
    const QString other = putList(u"Andere"_s, {putTrack(u"x"_s), putTrack(u"y"_s)});
    ListItem row;
    row.SubItems = {{.Text = u"Andere"_s}, {.Text = other}, {.Text = u"2"_s}};
    catalogue().append(std::move(row));
    for (const QString& target : {u"/x/neu.m3u"_s, u"/x/neu.pls"_s}) {
        bool inTime = true;
        for (int yield = 1; inTime; ++yield) {
            SCOPED_TRACE(target.toStdString() + ' ' + std::to_string(yield));
            ASSERT_LT(yield, 20);
            catalogue().Tag = u"0"_s;
            click(1);
            desktop.disk().remove(target);
            desktop.choosers.save(target);
            bool clicked = false;
            desktop.events().atYield(yield, [&] {
                clicked = true;
                click(2);
            });
            mnuSpeichernUnter_Click(root());
            EXPECT_EQ("/m/a.mp3\r\r\n/m/b.mp3\r\r\n/m/c.mp3\r\r\n\r\n", bytes(target).toStdString());
            inTime = clicked;
            EXPECT_TRUE(inTime || yield > 1) << "an export serves events";
            while (!clicked)
                desktop.events().yield();
        }
    }
}

TEST_F(SavePlaylists, TheLinkGoesToTheExportedListWhicheverIsSelectedUnderTheQuestion)
{
    putFolder(u"/x"_s);
    const QString other = putList(u"Andere"_s, {putTrack(u"x"_s), putTrack(u"y"_s)});
    ListItem row;
    row.SubItems = {{.Text = u"Andere"_s}, {.Text = other}, {.Text = u"2"_s}};
    catalogue().append(std::move(row));
    root().mnuLokalePlayliste.Checked = true;
    desktop.choosers.save(u"/x/neu.m3u"_s);
    desktop.messages.script(
        {.answer = Answer::Ok, .entered = {}, .title = SaveTitle, .text = LinkQuestion, .meanwhile = [this] {
             click(2);
         }});
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ("/x/neu.m3u", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(other.toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/x/neu.m3u", desktop.profiles().value(database(), u"Index"_s, u"1c"_s).toStdString());
    EXPECT_EQ(other.toStdString(), desktop.profiles().value(database(), u"Index"_s, u"2c"_s).toStdString());
}

TEST_F(SavePlaylists, AnExportThatStandsIsToldQuietlyAndOneThatDoesNotIsNot)
{
    putFolder(u"/x"_s);
    for (const QString& name : {u"/x/neu.m3u"_s, u"/x/neu.nml"_s}) {
        root().quietLine.Caption = QString();
        desktop.choosers.save(name);
        mnuSpeichernUnter_Click(root());
        EXPECT_EQ("Gespeichert", root().quietLine.Caption.value().toStdString()) << name.toStdString();
    }
    root().quietLine.Caption = QString();
    desktop.choosers.save(u"/gibt es nicht/neu.m3u"_s);
    mnuSpeichernUnter_Click(root());
    EXPECT_NE("Gespeichert", root().quietLine.Caption.value().toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(SavePlaylists, AnExportThatFailsLeavesTheTracksOfAShortListItsOwn)
{
    put(list, "a.mp3\r\n");
    ASSERT_TRUE(ownTracks(root()));
    catalogue().Tag = u"0"_s;
    click(1);
    ASSERT_TRUE(ownTracks(root()));
    desktop.choosers.save(u"/l/neu.m3u"_s);
    desktop.messages.answer(Answer::Ok);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ(1, tracks().count());
    EXPECT_FALSE(root().trackList.showsListBefore());
}

TEST_F(SavePlaylists, ALinkToAnNmlLeavesThatFileAloneAndSpeaksOfNoOtherProgram)
{
    putFolder(u"/x"_s);
    root().mnuLokalePlayliste.Checked = true;
    desktop.choosers.save(u"/x/neu.nml"_s);
    desktop.messages.answer(Answer::Ok, SaveTitle, LinkQuestion);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ("/x/neu.nml", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/x/neu.nml", desktop.profiles().value(database(), u"Index"_s, u"1c"_s).toStdString());
    EXPECT_TRUE(bytes(u"/x/neu.nml"_s).startsWith("<?xml")) << bytes(u"/x/neu.nml"_s).toStdString();
    EXPECT_EQ("Gespeichert", root().quietLine.Caption.value().toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", listBytes());

    click(1);
    EXPECT_EQ(listPath(u"neu"_s).toStdString(), catalogue().subItem(1, 2).toStdString()) << "opened, it is an M3U";
    EXPECT_EQ(TrackList::Content::Own, root().trackList.content());
}

} // namespace orvantine::fake
