#include "playlists/SavePlayEntrys.h"

#include "app/Command.h"
#include "playlists/SavePlaylistsFixture.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(SavePlaylists, TheRowsAreWrittenInTheirOrderWithFullPaths)
{
    tracks().remove(2);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/c.mp3\r\n", listBytes());
    expectWaitOver();
    EXPECT_EQ("", boxes());
}

TEST_F(SavePlaylists, AnEmptyTrackListWritesOneEmptyLine)
{
    tracks().clear();
    SavePlayEntrys(root());
    EXPECT_EQ("\r\n", listBytes());
    EXPECT_EQ("0", catalogue().subItem(1, 3).toStdString());
}

TEST_F(SavePlaylists, ARowCountThatChangedIsInTheCellBeforeTheWriteAndNotInTheDatabase)
{
    const QByteArray before = bytes(database());
    tracks().remove(1);
    // The save yields once before it writes.
    QString cell;
    std::string onDisk;
    desktop.events().after(std::chrono::milliseconds{0}, [&] {
        cell = catalogue().subItem(1, 3);
        onDisk = listBytes();
    });
    SavePlayEntrys(root());
    EXPECT_EQ("2", cell.toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", onDisk);
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(SavePlaylists, TheCellIsReadAsANumber)
{
    const std::pair<QString, const char*> cases[] = {{u"2.5"_s, "3"}, {u"99999999999"_s, "3"},   {u"4294967299"_s, "3"},
                                                     {u"03"_s, "03"}, {u"3 Titel"_s, "3 Titel"}, {u"drei"_s, "3"}};
    for (const auto& [cell, after] : cases) {
        catalogue().setSubItem(1, 3, cell);
        SavePlayEntrys(root());
        EXPECT_EQ(after, catalogue().subItem(1, 3).toStdString()) << cell.toStdString();
    }
}

TEST_F(SavePlaylists, TheColumnWidthsGoToTheSettingsKeyFirst)
{
    catalogue().setColumnWidth(2, 2111);
    tracks().setColumnWidth(5, 0);
    SavePlayEntrys(root());
    QStringList written;
    for (const QString& line : desktop.log.linesOf({u"settings.setValue"_s, u"files.writeText"_s}))
        written += line.section(u'"', 3);
    EXPECT_EQ("LV_1\" sz \"2111\"\nLV_2\" sz \"900\"\nLV_4\" sz \"800\"\nLV_5\" sz \"3600\"\nLV_6\" sz \"2900\"\n"
              "/m/a.mp3\\r\\n/m/b.mp3\\r\\n/m/c.mp3\\r\\n\"",
              lines(written));
}

TEST_F(SavePlaylists, ThereIsNoBakAndNoTemporaryFileOnlyAWriteInPlace)
{
    SavePlayEntrys(root());
    EXPECT_EQ("files.clearAttributes \"/l/liste.m3u\"\n"
              "files.writeText \"/l/liste.m3u\" \"/m/a.mp3\\r\\n/m/b.mp3\\r\\n/m/c.mp3\\r\\n\"",
              actions());
    EXPECT_EQ("liste.m3u", desktop.disk().list(u"/l"_s, u"*.*"_s).join(u' ').toStdString());
}

TEST_F(SavePlaylists, AReadOnlyListBecomesWritable)
{
    desktop.memory()->setReadOnly(list);
    tracks().remove(3);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n", listBytes());
    EXPECT_TRUE(desktop.disk().writeBytes(list, "frei"));
}

TEST_F(SavePlaylists, AFailingWriteLeavesTheFileAndSaysNothing)
{
    tracks().remove(1);
    desktop.log.failNext(u"files.writeText"_s);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", listBytes());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("", boxes());
    expectWaitOver();
}

TEST_F(SavePlaylists, AnUnreadableListIsLeftAlone)
{
    desktop.memory()->setUnreadable(list);
    tracks().remove(1);
    SavePlayEntrys(root());
    desktop.memory()->setUnreadable(list, false);
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", listBytes());
    expectWaitOver();
}

TEST_F(SavePlaylists, AnEmptyPathIsToldAndTheListsAreOnAgain)
{
    catalogue().setSubItem(1, 2, {});
    desktop.messages.answer(Answer::Ok, SaveTitle, SaveFailure);
    forgetCalls();
    SavePlayEntrys(root());
    EXPECT_EQ("box title \" Wiedergabeliste speichern\" text \"Die Wiedergabeliste konnte nicht ordnungsgemäss "
              "gespeichert werden.    \" icon critical buttons ok answer ok",
              boxes());
    expectWaitOver();
    EXPECT_EQ("", actions());
}

TEST_F(SavePlaylists, WhileItLastsThePointerWaitsAndTheListsAreOff)
{
    const std::string all = "hourglass, catalogue off, tracks off, mnuBearbeiten off";
    std::string seen;
    EXPECT_EQ("", waiting());
    for (const bool local : {false, true}) {
        root().mnuLokalePlayliste.Checked = local;
        seen.clear();
        desktop.events().after(std::chrono::milliseconds{0}, [&] { seen = waiting(); });
        SavePlayEntrys(root());
        EXPECT_EQ(all, seen) << local;
        EXPECT_EQ("", waiting()) << local;
    }
    for (const bool local : {false, true}) {
        root().mnuLokalePlayliste.Checked = local;
        catalogue().setSubItem(1, 2, {});
        seen.clear();
        desktop.messages.script(
            {.answer = Answer::Ok, .entered = {}, .title = SaveTitle, .text = SaveFailure, .meanwhile = [&] {
                 seen = waiting();
             }});
        SavePlayEntrys(root());
        EXPECT_EQ(all, seen) << local;
        EXPECT_EQ("", waiting()) << local;
    }
}

TEST_F(SavePlaylists, TheFolderOfTheListsIsThereBeforeTheCopy)
{
    putFolder(u"/anders"_s);
    root().tDatenbank.Text = u"/anders/"_s;
    forgetCalls();
    SaveLocalEntrys(root());
    EXPECT_EQ("files.makeFolder \"/anders/Playlisten\"\n"
              "files.copy \"/l/liste.m3u\" to \"/anders/Playlisten/liste.m3u\"\n"
              "files.clearAttributes \"/anders/Playlisten/liste.m3u\"\n"
              "files.writeText \"/anders/Playlisten/liste.m3u\" \"/m/a.mp3\\r\\n/m/b.mp3\\r\\n/m/c.mp3\\r\\n\"",
              actions());
}

TEST_F(SavePlaylists, WithLocalListsAnEmptyPathIsToldOnceAndNothingIsCopied)
{
    root().mnuLokalePlayliste.Checked = true;
    catalogue().setSubItem(1, 2, {});
    desktop.messages.answer(Answer::Ok, SaveTitle, SaveFailure);
    forgetCalls();
    SavePlayEntrys(root());
    ASSERT_EQ(1U, desktop.messages.shown().size());
    EXPECT_EQ(MessageIcon::Critical, desktop.messages.shown()[0].icon);
    EXPECT_EQ("", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("", actions());
    expectWaitOver();
}

TEST_F(SavePlaylists, AfterASortTheOrderOnTheScreenIsSaved)
{
    tracks().setSubItem(1, 2, u"z"_s);
    tracks().ColumnClick(3);
    ASSERT_EQ("b", tracks().subItem(1, 2).toStdString());
    SavePlayEntrys(root());
    EXPECT_EQ("/m/b.mp3\r\n/m/c.mp3\r\n/m/a.mp3\r\n", listBytes());
}

TEST_F(SavePlaylists, AListOfMoreEntriesThanCanBeShownIsNotSaved)
{
    const QByteArray many = QByteArray("/m/a.mp3\r\n").repeated(32768);
    put(list, many);
    SavePlayEntrys(root());
    EXPECT_EQ(many.size(), bytes(list).size());
    EXPECT_EQ(many, bytes(list));
    expectWaitOver();
}

TEST_F(SavePlaylists, WithLocalListsOnAListFromElsewhereIsCopiedAndTheCopySaved)
{
    root().mnuLokalePlayliste.Checked = true;
    const QByteArray before = bytes(database());
    tracks().remove(1);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", listBytes());
    EXPECT_EQ("/m/b.mp3\r\n/m/c.mp3\r\n", bytes(listPath(u"liste"_s)).toStdString());
    EXPECT_EQ(lines({u"> 1 \"000\" \"Liste\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"liste"_s))}),
              rows(catalogue()));
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("files.copy \"/l/liste.m3u\" to \"{data}/Playlisten/liste.m3u\"\n"
              "files.clearAttributes \"{data}/Playlisten/liste.m3u\"\n"
              "files.writeText \"{data}/Playlisten/liste.m3u\" \"/m/b.mp3\\r\\n/m/c.mp3\\r\\n\"",
              actions());
    expectWaitOver();
}

TEST_F(SavePlaylists, APathBelowTheApplicationsFolderInAnotherCaseIsALocalOne)
{
    root().mnuLokalePlayliste.Checked = true;
    const QString local = listPath(u"liste"_s);
    put(local, "/m/x.mp3\r\n");
    catalogue().setSubItem(1, 2, local.toUpper());
    root().trackList.hold().follow(local.toUpper());
    SavePlayEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(local.toUpper().toStdString(), catalogue().subItem(1, 2).toStdString());
}

TEST_F(SavePlaylists, APathBelowTheApplicationsFolderWithBackslashesIsALocalOne)
{
    root().mnuLokalePlayliste.Checked = true;
    const QString local = data() + u"Eigen/liste.m3u"_s;
    put(local, "/m/x.mp3\r\n");
    const QString told = QString(local).replace(u"/Eigen/"_s, u"\\Eigen\\"_s).replace(u"/Orvanten"_s, u"\\Orvanten"_s);
    catalogue().setSubItem(1, 2, told);
    root().trackList.hold().follow(told);
    SavePlayEntrys(root());
    EXPECT_EQ(told.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n", bytes(local).toStdString());
}

TEST_F(SavePlaylists, TheRowsOfOneListAreNeverWrittenToTheFileOfAnother)
{
    const QString other = listPath(u"andere"_s);
    put(other, "/m/x.mp3\r\n");
    ListItem row;
    row.SubItems = {{.Text = u"Andere"_s}, {.Text = other}, {.Text = u"1"_s}};
    catalogue().append(std::move(row));
    ASSERT_TRUE(catalogue().select(catalogue().count()));
    SavePlayEntrys(root());
    SaveLocalEntrys(root());
    EXPECT_EQ("/m/x.mp3\r\n", bytes(other).toStdString());
    EXPECT_EQ("1", catalogue().subItem(catalogue().count(), 3).toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(SavePlaylists, AMissingListFromElsewhereIsToldAndTheRowStays)
{
    root().mnuLokalePlayliste.Checked = true;
    desktop.disk().remove(list);
    desktop.messages.answer(Answer::Ok, SaveTitle, SaveFailure);
    forgetCalls();
    SavePlayEntrys(root());
    EXPECT_EQ("box title \" Wiedergabeliste speichern\" text \"Die Wiedergabeliste konnte nicht ordnungsgemäss "
              "gespeichert werden.    \" icon critical buttons ok answer ok",
              boxes());
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("(missing)", bytes(listPath(u"liste"_s)).toStdString());
    EXPECT_EQ("", actions());
    expectWaitOver();
}

TEST_F(SavePlaylists, AListWhosePathIsItsOwnLocalOneIsWrittenEvenWhenMissing)
{
    const QString local = listPath(u"liste"_s);
    catalogue().setSubItem(1, 2, local);
    root().trackList.hold().follow(local);
    SaveLocalEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(local.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(SavePlaylists, AListThatCannotBeCopiedIsSavedWhereItLies)
{
    root().mnuLokalePlayliste.Checked = true;
    tracks().remove(2);
    desktop.log.failNext(u"files.copy"_s);
    SavePlayEntrys(root());
    EXPECT_EQ("/l/liste.m3u", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("(missing)", bytes(listPath(u"liste"_s)).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/c.mp3\r\n", listBytes());
}

TEST_F(SavePlaylists, ALocalCopyThatCannotBeWrittenIsNoneAndTheRowStays)
{
    root().mnuLokalePlayliste.Checked = true;
    tracks().remove(2);
    desktop.log.failNext(u"files.writeText"_s);
    runCommand(root(), Changes::Tracks, [this] { SavePlayEntrys(root()); });
    EXPECT_EQ("/l/liste.m3u", catalogue().subItem(1, 2).toStdString());
    EXPECT_TRUE(root().trackList.isOf(u"/l/liste.m3u"_s));
    EXPECT_EQ("(missing)", bytes(listPath(u"liste"_s)).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", listBytes());
    EXPECT_TRUE(root().quietLine.Visible.value());
    expectWaitOver();
}

TEST_F(SavePlaylists, AListThatSomebodyElseMadeLongerIsLeftAloneAndSaysSo)
{
    put(u"/l/liste.m3u"_s, "/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n/m/d.mp3\r\n");
    SavePlayEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n/m/d.mp3\r\n", listBytes());
    EXPECT_EQ("Nicht gespeichert: Die Playliste wurde inzwischen von einem anderen Programm geändert.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(SavePlaylists, ALocalCopyNeverTakesTheFileOfAnotherRow)
{
    const QString other = listPath(u"liste"_s);
    put(other, "/m/c.mp3\r\n\r\n");
    ListItem row;
    row.SubItems = {{.Text = u"Andere"_s}, {.Text = other}, {.Text = u"1"_s}};
    catalogue().append(std::move(row));
    root().mnuLokalePlayliste.Checked = true;
    tracks().remove(2);
    SavePlayEntrys(root());
    EXPECT_EQ("/l/liste.m3u", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/c.mp3\r\n", listBytes());
    EXPECT_EQ("/m/c.mp3\r\n\r\n", bytes(other).toStdString());
}

TEST_F(SavePlaylists, AListWithUmlautsIsCopiedOnceAndIsALocalOneFromThenOnInWhateverForm)
{
    desktop.newProcess();
    open(u"/l/Größe ÄÖÜ.m3u"_s);
    root().mnuLokalePlayliste.Checked = true;
    const QString local = listPath(u"Größe ÄÖÜ"_s);
    tracks().remove(1);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/b.mp3\r\n/m/c.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(local.toStdString(), catalogue().subItem(1, 2).toStdString());

    const QString other = listPath(u"GRO\u0308ßE A\u0308O\u0308U\u0308"_s);
    catalogue().setSubItem(1, 2, other);
    root().trackList.hold().follow(other);
    tracks().remove(1);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/c.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(other.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("Größe ÄÖÜ.m3u", desktop.disk().list(data() + u"Playlisten"_s, u"*.*"_s).join(u' ').toStdString());
}

TEST_F(SavePlaylists, ALocalCopyKeepsItsEnding)
{
    desktop.newProcess();
    open(u"/l/liste.m3u8"_s);
    root().mnuLokalePlayliste.Checked = true;
    tracks().remove(1);
    SavePlayEntrys(root());
    const QString local = data() + u"Playlisten/liste.m3u8"_s;
    EXPECT_EQ("/m/b.mp3\r\n/m/c.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(local.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", listBytes());
}

TEST_F(SavePlaylists, AListInASubfolderOfPlaylistenIsALocalOne)
{
    desktop.newProcess();
    open(data() + u"Playlisten/Alt/liste.m3u"_s);
    root().mnuLokalePlayliste.Checked = true;
    tracks().remove(1);
    SavePlayEntrys(root());
    EXPECT_EQ("/m/b.mp3\r\n/m/c.mp3\r\n", listBytes());
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("(missing)", bytes(listPath(u"liste"_s)).toStdString());
}

/// Whichever single call of a save fails: the file holds the old entries or the new ones, and never nothing.
TEST_F(SavePlaylists, NoSingleFailingCallEmptiesAList)
{
    const std::string before = "/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n";
    const std::string after = "/m/a.mp3\r\n/m/c.mp3\r\n";
    for (const bool local : {false, true}) {
        int failing = 0;
        for (bool reached = true; reached; ++failing) {
            SCOPED_TRACE(std::to_string(failing) + (local ? " local" : ""));
            desktop.newProcess();
            desktop.disk().remove(listPath(u"liste"_s));
            open(u"/l/liste.m3u"_s);
            root().mnuLokalePlayliste.Checked = local;
            tracks().remove(2);
            const int begin = desktop.log.calls();
            desktop.log.failCall(begin + failing + 1);
            if (local)
                desktop.messages.answer(Answer::Ok);
            SavePlayEntrys(root());
            reached = desktop.log.calls() > begin + failing;
            desktop.log.failCall(0);
            desktop.messages.queue.clear();
            expectWaitOver();

            const std::string now = listBytes();
            EXPECT_TRUE(now == before || now == after) << now;
            const std::string copy = bytes(listPath(u"liste"_s)).toStdString();
            EXPECT_TRUE(copy == "(missing)" || (local && (copy == before || copy == after))) << copy;
            if (local && now == after) {
                EXPECT_EQ("/l/liste.m3u", catalogue().subItem(1, 2).toStdString());
            }
            if (HasFailure())
                return;
        }
        EXPECT_GT(failing, 10);
    }
}

} // namespace orvantine::fake
