#include "playlists/SavePlaylists.h"

#include "catalogue/CatalogueWorld.h"

#include "playlists/ReadPlaylists.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString saveTitle = u" Wiedergabeliste speichern"_s;
const QString saveFailure = u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden.    "_s;
const QString linkQuestion = u"Sie haben eine vorhandene Playliste unter einer neuen Datei gespeichert.    \n"
                             u"In der Datenbank wird ein Verweiss zu dieser Wiedergabeliste gesetzt.\n \n"
                             u"Möchten Sie die Verknüpfung zur neuen Wiedergabeliste setzen ?"_s;

/// One playlist, "Liste", with three tracks, open; lists stay where they are unless a test turns that option on.
class SavePlaylists : public CatalogueWorld
{
protected:
    void open(const QString& path)
    {
        list = path;
        setting(u"Error"_s, dwordSetting(0));
        put(path, "/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n");
        for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
            putTrack(name);
        putDatabase(indexRow(1, {.name = u"Liste"_s, .path = path, .tracks = u"3"_s}));
        start();
        root().mnuLokalePlayliste.Checked = false;
        ASSERT_EQ(3, tracks().count());
        forgetCalls();
    }
    void SetUp() override { open(u"/l/liste.m3u"_s); }

    void expectWaitOver()
    {
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_TRUE(tracks().Enabled.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
    }

    /// The user chooses `path`; `meanwhile` happens while the dialog is up.
    void chooseMeanwhile(const QString& path, std::function<void()> meanwhile)
    {
        const qsizetype name = path.lastIndexOf(u'/');
        desktop.choosers.queue.push({.kind = ChooserKind::Save,
                                     .file = ChosenFile{path.left(std::max(name, qsizetype{0})), path.mid(name + 1)},
                                     .folder = {},
                                     .font = {},
                                     .meanwhile = std::move(meanwhile)});
    }

    /// What the user finds in the middle of a save.
    [[nodiscard]] std::string waiting()
    {
        QStringList words;
        if (root().Pointer.value() == MousePointer::Hourglass)
            words += u"hourglass"_s;
        for (const auto& [name, on] :
             {std::pair{u"catalogue"_s, catalogue().Enabled.value()}, std::pair{u"tracks"_s, tracks().Enabled.value()},
              std::pair{u"mnuBearbeiten"_s, root().mnuBearbeiten.Enabled.value()}})
            if (!on)
                words += name + u" off"_s;
        return words.join(u", "_s).toStdString();
    }

    [[nodiscard]] std::string listBytes() { return bytes(list).toStdString(); }

    QString list;
};

} // namespace

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
              "LV_7\" sz \"0\"\n/m/a.mp3\\r\\n/m/b.mp3\\r\\n/m/c.mp3\\r\\n\"",
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
    desktop.messages.answer(Answer::Ok, saveTitle, saveFailure);
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
            {.answer = Answer::Ok, .entered = {}, .title = saveTitle, .text = saveFailure, .meanwhile = [&] {
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
    desktop.messages.answer(Answer::Ok, saveTitle, saveFailure);
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
    root().openPlaylist = local.toUpper();
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
    root().openPlaylist = told;
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
    desktop.messages.answer(Answer::Ok, saveTitle, saveFailure);
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
    root().openPlaylist = local;
    SaveLocalEntrys(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n", bytes(local).toStdString());
    EXPECT_EQ(local.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(SavePlaylists, ACopyThatFailsStillRepointsTheRowAndWritesTheRows)
{
    root().mnuLokalePlayliste.Checked = true;
    desktop.log.failNext(u"files.copy"_s);
    SavePlayEntrys(root());
    EXPECT_EQ(listPath(u"liste"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n", bytes(listPath(u"liste"_s)).toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/c.mp3\r\n\r\n", listBytes());
}

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
    EXPECT_EQ("choosers.save title \" Wiedergabeliste speichern\" folder \"/l/\" name \"\" filter "
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

TEST_F(SavePlaylists, AnNmlOfAListThatIsShownNoMoreIsNotWrittenAndNothingIsAsked)
{
    putFolder(u"/x"_s);
    root().mnuLokalePlayliste.Checked = true;
    const QString other = putList(u"Andere"_s, {u"/m/b.mp3"_s, u"/m/c.mp3"_s});
    ListItem row;
    row.SubItems = {{.Text = u"Andere"_s}, {.Text = other}, {.Text = u"2"_s}};
    catalogue().append(std::move(row));
    chooseMeanwhile(u"/x/neu.nml"_s, [this] { click(2); });
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("(missing)", bytes(u"/x/neu.nml"_s).toStdString());
    EXPECT_EQ("", boxes());
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
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
        {.answer = Answer::Ok, .entered = {}, .title = saveTitle, .text = linkQuestion, .meanwhile = [this] {
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
    desktop.messages.answer(Answer::Cancel, saveTitle, linkQuestion);
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
    desktop.messages.answer(Answer::Cancel, saveTitle, linkQuestion);
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
            desktop.messages.answer(Answer::Cancel, saveTitle, linkQuestion);
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
    desktop.messages.answer(Answer::Cancel, saveTitle, linkQuestion);
    mnuSpeichernUnter_Click(root());
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("box title \" Wiedergabeliste speichern\" text \"Sie haben eine vorhandene Playliste unter einer neuen "
              "Datei gespeichert.    \\nIn der Datenbank wird ein Verweiss zu dieser Wiedergabeliste gesetzt.\\n "
              "\\nMöchten Sie die Verknüpfung zur neuen Wiedergabeliste setzen ?\" icon question buttons ok-cancel "
              "answer cancel",
              boxes());

    desktop.choosers.save(u"/x/neu.m3u"_s);
    desktop.messages.answer(Answer::Ok, saveTitle, linkQuestion);
    mnuSpeichernUnter_Click(root());
    // The save of the catalogue saves the open list as a local one.
    EXPECT_EQ("[Index]\r\n1a=000\r\n1b=Liste\r\n1c=/x/neu.m3u\r\n1d=3\r\n1e=\r\n1f=01.02.2003\r\n1g=\r\n",
              databaseText());
    EXPECT_EQ(listPath(u"neu"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
}

// Whichever single call of a save fails: the file holds the old entries or the new ones, and never nothing.
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
            EXPECT_TRUE(now == before || (!local && now == after)) << now;
            const std::string copy = bytes(listPath(u"liste"_s)).toStdString();
            EXPECT_TRUE(copy == "(missing)" || (local && (copy == before || copy == after))) << copy;
            if (HasFailure())
                return;
        }
        EXPECT_GT(failing, 10);
    }
}

} // namespace orvantine::fake
