
#include "playlists/AddTracksFixture.h"

#include "app/Registry.h"
#include "playlists/mnuAddSounds.h"
#include "transfer/FolderDialogs.h"

#include <random>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString AddTitle = u" Sounddateien hinzufügen"_s;

/// `mnuAddSounds` on these lists.
class AddSounds : public AddTracks
{
protected:
    void SetUp() override
    {
        AddTracks::SetUp();
        for (const QString& name : {u"a.mp3"_s, u"C.MP3"_s, u"d.wma"_s, u"e.wav"_s, u"f.ogg"_s, u".hidden.mp3"_s})
            put(u"/neu/"_s + name, "x");
    }

    /// The user chooses the folder in the dialog.
    void chooseFolder(const QString& folder)
    {
        desktop.forms().whileModal(u"Ordner"_s, [folder](Form& form) {
            auto& dialog = static_cast<Ordner&>(form);
            dialog.LTreeview.SelectedFolder = folder;
            dialog.LTreeview.Change();
            dialog.BReady.Click();
        });
    }
    void cancelFolder()
    {
        desktop.forms().whileModal(u"Ordner"_s, [](Form& form) { static_cast<Ordner&>(form).bAbbrechen.Click(); });
    }
    void addFolder(const QString& folder)
    {
        chooseFolder(folder);
        mnuAddSounds_Click(root());
    }

    void expectWaitOver()
    {
        EXPECT_FALSE(root().pDateiname.Visible.value());
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(tracks().Enabled.value());
        EXPECT_TRUE(tracks().Visible.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
        EXPECT_FALSE(root().pCopyStatus.Visible.value());
        EXPECT_EQ("", root().tCopyStatus.Caption.value().toStdString());
    }

    [[nodiscard]] std::string option(const QString& key)
    {
        return desktop.profiles().value(database(), u"Options"_s, key).toStdString();
    }
};

} // namespace

TEST_F(AddSounds, WithoutACatalogueRowTheMenuOnlyTellsWhatToDo)
{
    catalogue().clear();
    desktop.messages.answer(Answer::Ok);
    forgetCalls();
    mnuAddSounds_Click(root());
    EXPECT_EQ("box title \" Sounddateien hinzufügen\" text \"Bevor Sie Dateien einfügen können, müssen Sie eine "
              "Wiedergabeliste hinzufügen.    \\nWählen Sie im Menü den Eintrag ''Neue Playliste'' oder ''Liste "
              "hinzufügen'' aus.\" icon critical buttons ok answer ok",
              boxes());
    EXPECT_EQ("", actions());
    EXPECT_TRUE(tracks().Visible.value());
}

TEST_F(AddSounds, FolderModeAddsTheAudioFilesOfAFolderSortedAndSavesTheList)
{
    desktop.events().after(std::chrono::milliseconds{0}, [this] { root().tDateiname.Caption = u"vorher"_s; });
    addFolder(u"/neu"_s);
    EXPECT_EQ("vorher", root().tDateiname.Caption.value().toStdString());
    EXPECT_EQ("101 01 a </m/a.mp3> <a.mp3>\n"
              "102 02 b </m/b.mp3> <b.mp3>\n"
              "103 03 a </neu/a.mp3> <a.mp3>\n"
              "104 04 C </neu/C.MP3> <C.MP3>\n"
              "105 05 d </neu/d.wma> <d.wma>\n"
              "106 06 e </neu/e.wav> <e.wav>",
              shown());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(list).toStdString());
    EXPECT_EQ("6", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("/neu", option(u"Soundfiles"_s));
    EXPECT_EQ("/neu", root().LMp3Files.Path.toStdString());
    EXPECT_EQ("*.mp3;*.wma;*.wav", root().LMp3Files.Pattern.toStdString());
    EXPECT_EQ("", boxes());
    expectWaitOver();
}

TEST_F(AddSounds, AFileThatIsInTheListAlreadyIsNotAddedTwiceAndTheCountSaysSo)
{
    addFolder(u"/neu"_s);
    put(u"/neu/g.mp3"_s, "x");
    desktop.messages.answer(Answer::Ok);
    addFolder(u"/neu"_s);
    EXPECT_EQ(7, tracks().count());
    EXPECT_EQ("/neu/g.mp3", tracks().subItem(7, 3).toStdString());
    EXPECT_EQ("box title \" Sounddateien hinzufügen\" text \"Es wurden 4 vorhandene Sounddateien nicht zur Playliste "
              "hinzugefügt.   \" icon information buttons ok answer ok",
              boxes());
    expectWaitOver();
}

TEST_F(AddSounds, APathThatIsPartOfALongerPathCountsAsPresent)
{
    put(list, "/alt/neu/C.mp3.bak.mp3\r\n/m/b.mp3\r\n\r\n");
    catalogue().Tag = u"0"_s;
    click(1);
    put(u"/alt/neu/c.mp3"_s, "x");
    desktop.messages.answer(Answer::Ok);
    addFolder(u"/alt/neu"_s);
    EXPECT_EQ(2, tracks().count());
    desktop.messages.take();
}

TEST_F(AddSounds, TheLastTwoCharactersOfTheFileAreNotSearched)
{
    // Written by someone else while the list is open: without a line end the path reaches into the last two.
    put(list, "/m/b.mp3\r\n/neu/a.mp3");
    addFolder(u"/neu"_s);
    EXPECT_EQ(6, tracks().count());
    EXPECT_EQ("/neu/a.mp3", tracks().subItem(3, 3).toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(AddSounds, APathThatEndsRightInFrontOfTheLastTwoCharactersIsPresent)
{
    put(list, "/m/b.mp3\r\n/neu/A.mp3\r\n");
    desktop.messages.answer(Answer::Ok);
    addFolder(u"/neu"_s);
    EXPECT_EQ(5, tracks().count());
    EXPECT_NE(std::string::npos, boxes().find("Es wurden 1 vorhandene"));
}

TEST_F(AddSounds, OnlyOneOrNoValueOfFolderViewMeansTheFolder)
{
    for (const bool absent : {false, true}) {
        setting(u"FolderView"_s, dwordSetting(1));
        if (absent)
            desktop.settings.drop(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"FolderView"_s);
        forgetCalls();
        cancelFolder();
        mnuAddSounds_Click(root());
        EXPECT_EQ("", calls({u"choosers"_s}));
    }
    for (const int value : {0, 2}) {
        setting(u"FolderView"_s, dwordSetting(value));
        forgetCalls();
        desktop.choosers.cancel(ChooserKind::Open);
        mnuAddSounds_Click(root());
        EXPECT_NE("", calls({u"choosers"_s})) << value;
    }
}

TEST_F(AddSounds, WithoutAPathTheTracksAreShownAndTheSaveIsToldAsFailed)
{
    catalogue().setSubItem(1, 2, QString());
    root().trackList.close();
    const QByteArray before = bytes(list);
    desktop.messages.answer(Answer::Ok, u" Wiedergabeliste speichern"_s,
                            u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden.    "_s);
    addFolder(u"/neu"_s);
    EXPECT_EQ(4, tracks().count());
    EXPECT_EQ(before.toStdString(), bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, TheRememberedFolderHasNoSeparatorAtItsEndAndServesAgain)
{
    const std::pair<QString, QString> cases[] = {{u"/neu/"_s, u"/neu"_s}, {u"C:\\Neu\\"_s, u"C:\\Neu"_s}};
    for (const auto& [chosen, kept] : cases) {
        put(kept + (kept.contains(u'\\') ? u"\\x.mp3"_s : u"/x.mp3"_s), "x");
        const QString track = kept + (kept.contains(u'\\') ? u"\\x.mp3"_s : u"/x.mp3"_s);
        QString first;
        addFolder(chosen);
        EXPECT_EQ(kept.toStdString(), option(u"Soundfiles"_s));
        EXPECT_EQ(kept.toStdString(), root().tBrowseFolder.Text.value().toStdString());
        EXPECT_EQ(track.toStdString(), tracks().subItem(tracks().count(), 3).toStdString());
        const int count = tracks().count();
        // The dialog begins with it, and what the list holds is found in it.
        desktop.forms().whileModal(u"Ordner"_s, [&first](Form& form) {
            auto& dialog = static_cast<Ordner&>(form);
            first = dialog.LTreeview.SelectedFolder;
            dialog.BReady.Click();
        });
        desktop.messages.answer(Answer::Ok);
        mnuAddSounds_Click(root());
        EXPECT_EQ(kept.toStdString(), first.toStdString());
        EXPECT_EQ(count, tracks().count());
        desktop.messages.take();
    }
}

TEST_F(AddSounds, AFolderThatIsKeptWithASeparatorIsTakenWithout)
{
    setting(u"FolderView"_s, dwordSetting(0));
    const std::pair<const char*, const char*> cases[] = {{"/neu/", "/neu"}, {"/", "/"}, {"C:\\", "C:\\"}};
    const QByteArray before = bytes(database());
    for (const auto& [kept, taken] : cases) {
        put(database(), before + "[Options]\r\nSoundfiles=" + kept + "\r\n");
        desktop.choosers.cancel(ChooserKind::Open);
        mnuAddSounds_Click(root());
        EXPECT_EQ(taken, root().tBrowseFolder.Text.value().toStdString());
    }
}

TEST_F(AddSounds, ABareNameBesideTheListIsNotFoundByItsPathAndIsAddedAgain)
{
    put(data() + u"Playlisten/nah.mp3"_s, "x");
    put(list, "nah.mp3\r\n/m/b.mp3\r\n\r\n");
    catalogue().Tag = u"0"_s;
    click(1);
    addFolder(data() + u"Playlisten"_s);
    EXPECT_EQ(3, tracks().count());
}

TEST_F(AddSounds, AFolderWithoutAudioFilesAddsNothingAndAsksNothing)
{
    putFolder(u"/leer"_s);
    addFolder(u"/leer"_s);
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("/leer", option(u"Soundfiles"_s));
    EXPECT_EQ("", boxes());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, CancelLeavesTheFolderAsItWasAndStillSavesTheList)
{
    cancelFolder();
    forgetCalls();
    mnuAddSounds_Click(root());
    EXPECT_EQ("", option(u"Soundfiles"_s));
    EXPECT_EQ("0", root().tBrowseFolder.Tag.toStdString());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, TheListIsOutOfSightAndThePlayerStoppedBeforeTheFolderIsChosen)
{
    bool visible = true;
    bool enabled = true;
    QString mark;
    int stops = 0;
    int stopsBefore = 0;
    root().pStopPlayer.Click = [&] { ++stops; };
    root().tBrowseFolder.Text = u"alt"_s;
    QString text;
    desktop.forms().whileModal(u"Ordner"_s, [&](Form& form) {
        visible = tracks().Visible;
        enabled = tracks().Enabled;
        mark = root().tBrowseFolder.Tag;
        text = root().tBrowseFolder.Text;
        stopsBefore = stops;
        static_cast<Ordner&>(form).bAbbrechen.Click();
    });
    mnuAddSounds_Click(root());
    EXPECT_EQ(1, stopsBefore);
    EXPECT_FALSE(visible);
    EXPECT_FALSE(enabled);
    EXPECT_EQ("0", mark.toStdString());
    EXPECT_EQ("", text.toStdString());
    EXPECT_EQ(1, stops);
}

TEST_F(AddSounds, TheCountIsToldWhenTheListIsSavedAndInSightAgain)
{
    putList(u"Liste"_s, {u"/m/a.mp3"_s, u"/neu/a.mp3"_s});
    click(2);
    click(1);
    std::string state;
    desktop.messages.script({.answer = Answer::Ok,
                             .entered = {},
                             .title = AddTitle,
                             .text = u"Es wurden 1 vorhandene Sounddateien nicht zur Playliste hinzugefügt.   "_s,
                             .meanwhile = [&] {
                                 state = (tracks().Visible ? "visible " : "hidden ") +
                                         std::string(tracks().Enabled ? "on " : "off ") +
                                         (root().buttonsDisabled ? "disabled\n" : "enabled\n") +
                                         bytes(list).toStdString();
                             }});
    addFolder(u"/neu"_s);
    EXPECT_EQ("visible on enabled\n/m/a.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n", state);
}

TEST_F(AddSounds, BehindASingleRowTheFileIsWrittenAtOnce)
{
    const QString fresh = data() + u"neu.tmp"_s;
    put(fresh, "/m/a-ist-lang.mp3\r\n");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    ASSERT_EQ(1, tracks().count());
    addFolder(u"/neu"_s);
    const QString own = listPath(u"Leer"_s);
    EXPECT_EQ(own.toStdString(), catalogue().subItem(2, 2).toStdString()) << "a new list gets its file with the write";
    EXPECT_EQ("/m/a-ist-lang.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(own).toStdString());
}

TEST_F(AddSounds, BehindTwoRowsTheFilesAreABatch)
{
    const QString fresh = data() + u"neu.tmp"_s;
    put(fresh, "/m/a.mp3\r\n/m/b.mp3\r\n");
    catalogue().setSubItem(2, 2, fresh);
    click(2);
    ASSERT_EQ(2, tracks().count());
    addFolder(u"/neu"_s);
    EXPECT_EQ(fresh.toStdString(), catalogue().subItem(2, 2).toStdString());
}

TEST_F(AddSounds, ASecondRunInsideTheFirstDoesNothing)
{
    for (int i = 0; i < 600; ++i)
        put(u"/viele/%1.mp3"_s.arg(i), "x");
    chooseFolder(u"/viele"_s);
    bool ran = false;
    QObject::connect(&catalogue(), &QAbstractItemModel::dataChanged, &catalogue(), [&] {
        if (std::exchange(ran, true))
            return;
        // No dialog is scripted: one that opens is a failure.
        desktop.events().after(std::chrono::milliseconds{0}, [this] { root().mnuAddSounds.Click(); });
    });
    root().mnuAddSounds.Click();
    EXPECT_TRUE(ran);
    EXPECT_EQ(602, tracks().count());
}

TEST_F(AddSounds, BehindAMissingListThatWasCancelledTheFilesGoToTheListInSight)
{
    catalogue().setSubItem(2, 2, u"/fort/Leer.m3u"_s);
    desktop.messages.answer(Answer::Cancel);
    click(2);
    addFolder(u"/neu"_s);
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(list).toStdString());
    EXPECT_EQ("(missing)", bytes(u"/fort/Leer.m3u"_s).toStdString());
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());
}

TEST_F(AddSounds, AListThatIsOpenedWhileTheFolderIsChosenGetsNoFile)
{
    desktop.forms().whileModal(u"Ordner"_s, [this](Form& form) {
        auto& dialog = static_cast<Ordner&>(form);
        dialog.LTreeview.SelectedFolder = u"/neu"_s;
        dialog.LTreeview.Change();
        click(2);
        dialog.BReady.Click();
    });
    mnuAddSounds_Click(root());
    EXPECT_EQ("", bytes(empty).trimmed().toStdString());
    EXPECT_FALSE(bytes(list).contains("/neu/"));
    EXPECT_EQ(0, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, AListThatIsOpenedWhileTheFileIsChosenGetsNoFile)
{
    setting(u"FolderView"_s, dwordSetting(0));
    desktop.choosers.queue.push({.kind = ChooserKind::Open,
                                 .file = ChosenFile{.folder = u"/neu"_s, .fileName = u"a.mp3"_s},
                                 .folder = {},
                                 .font = {},
                                 .meanwhile = [this] { click(2); }});
    mnuAddSounds_Click(root());
    EXPECT_EQ("", bytes(empty).trimmed().toStdString());
    EXPECT_FALSE(bytes(list).contains("/neu/"));
    EXPECT_EQ(0, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, CancelInFileModeStillSavesTheList)
{
    setting(u"FolderView"_s, dwordSetting(0));
    desktop.choosers.cancel(ChooserKind::Open);
    ASSERT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n\r\n", bytes(list).toStdString());
    mnuAddSounds_Click(root());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n", bytes(list).toStdString());
    expectWaitOver();
}

TEST_F(AddSounds, FilesWhoseNameHasALineEndAreLeftOut)
{
    desktop.memory()->put(u"/neu/x\ry.mp3"_s, "x");
    desktop.memory()->put(u"/neu/x\ny.mp3"_s, "x");
    addFolder(u"/neu"_s);
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(list).toStdString());
    EXPECT_EQ(6, tracks().count());
    setting(u"FolderView"_s, dwordSetting(0));
    desktop.choosers.open(u"/neu/x\ry.mp3"_s);
    mnuAddSounds_Click(root());
    EXPECT_EQ(6, tracks().count());
}

TEST_F(AddSounds, TheFilesGoBehindTheOwnTracksOfAShortList)
{
    put(empty, "x.mp3\r\n");
    click(2);
    addFolder(u"/neu"_s);
    EXPECT_EQ(5, tracks().count());
    EXPECT_TRUE(bytes(empty).startsWith((data() + u"Playlisten/x.mp3\r\n/neu/a.mp3\r\n"_s).toUtf8()));
}

TEST_F(AddSounds, TheFilesGoToTheListInSightWhicheverRowIsSelected)
{
    const QByteArray before = bytes(empty);
    catalogue().select(2);
    addFolder(u"/neu"_s);
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/neu/a.mp3\r\n/neu/C.MP3\r\n/neu/d.wma\r\n/neu/e.wav\r\n",
              bytes(list).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(empty).toStdString());
    EXPECT_EQ("6 0", (catalogue().subItem(1, 3) + u' ' + catalogue().subItem(2, 3)).toStdString());
}

TEST_F(AddSounds, WithoutAnyKeptFolderTheTextStaysAsItWas)
{
    setting(u"FolderView"_s, dwordSetting(0));
    setting(u"Soundfiles"_s, stringSetting(u"/neu/a.mp3"_s));
    root().tBrowseFolder.Text = u"alt"_s;
    root().tBrowseFolder.Tag = u"0"_s;
    desktop.choosers.cancel(ChooserKind::Open);
    mnuAddSounds_Click(root());
    EXPECT_EQ("alt", root().tBrowseFolder.Text.value().toStdString()) << "a file is no folder";
    EXPECT_EQ("0", root().tBrowseFolder.Tag.toStdString());
}

TEST_F(AddSounds, TheFolderGoesToTheDatabaseAlone)
{
    setting(u"Soundfiles"_s, stringSetting(u"/m"_s));
    addFolder(u"/neu"_s);
    EXPECT_EQ("/neu", option(u"Soundfiles"_s));
    EXPECT_EQ("/m", readSetting(root(), u"Soundfiles"_s).text().toStdString());
}

TEST_F(AddSounds, ALocalListTakesTheFilesInItsOwnPlace)
{
    const QString outside = u"/k/Liste.m3u"_s;
    put(outside, "/m/a.mp3\r\n/m/b.mp3\r\n");
    catalogue().setSubItem(1, 2, outside);
    catalogue().Tag = u"0"_s;
    click(1);
    const QByteArray before = bytes(outside);
    root().mnuLokalePlayliste.Checked = true;
    addFolder(u"/neu"_s);
    EXPECT_EQ(list.toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(6, bytes(list).count("\r\n"));
    EXPECT_EQ(before.toStdString(), bytes(outside).toStdString());
}

TEST_F(AddSounds, TheWaitStateHoldsWhileFilesAreAdded)
{
    for (int i = 0; i < 600; ++i)
        put(u"/viele/%1.mp3"_s.arg(i), "x");
    std::string state;
    chooseFolder(u"/viele"_s);
    // The count in the catalogue grows while the files are added.
    QObject::connect(&catalogue(), &QAbstractItemModel::dataChanged, &catalogue(), [&] {
        if (catalogue().subItem(1, 3) != u"258"_s)
            return;
        state = QStringLiteral("%1 %2 %3 %4 <%5>")
                    .arg(root().Pointer.value() == MousePointer::Hourglass ? u"hourglass"_s : u"arrow"_s,
                         tracks().Enabled ? u"on"_s : u"off"_s, root().mnuBearbeiten.Enabled ? u"on"_s : u"off"_s,
                         root().pCopyStatus.Visible ? u"shown"_s : u"hidden"_s, root().tDateiname.Caption.value())
                    .toStdString();
    });
    mnuAddSounds_Click(root());
    EXPECT_EQ("hourglass off off shown </viele>", state);
    EXPECT_EQ(602, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, FileModeAddsOneFileWithoutATestAndStartsInTheFolderOfTheDatabase)
{
    setting(u"FolderView"_s, dwordSetting(0));
    setting(u"Soundfiles"_s, stringSetting(u"/m"_s));
    put(database(), bytes(database()) + "[Options]\r\nSoundfiles=/neu\r\n");
    desktop.choosers.open(u"/m/a.mp3"_s);
    mnuAddSounds_Click(root());
    EXPECT_EQ("101 01 a </m/a.mp3> <a.mp3>\n102 02 b </m/b.mp3> <b.mp3>\n103 03 a </m/a.mp3> <a.mp3>", shown());
    EXPECT_EQ("/m/a.mp3\r\n/m/b.mp3\r\n/m/a.mp3\r\n", bytes(list).toStdString());
    const std::string asked = calls({u"choosers"_s});
    for (const char* part : {"\" Sounddatei hinzufügen\"", "\"/neu\"",
                             "\"Sounddateien|*.mp3; *.wma; *.wav|Alle Dateitypen|*.*\"", "\"mp3\""})
        EXPECT_NE(std::string::npos, asked.find(part)) << asked;
    EXPECT_EQ("1", root().tBrowseFolder.Tag.toStdString());
    EXPECT_EQ("", boxes());
    expectWaitOver();
}

TEST_F(AddSounds, TheStartFolderIsThatOfTheSettingsKeyWhereTheOneOfTheDatabaseIsGone)
{
    setting(u"FolderView"_s, dwordSetting(0));
    setting(u"Soundfiles"_s, stringSetting(u"/m"_s));
    put(database(), bytes(database()) + "[Options]\r\nSoundfiles=/fort\r\n");
    desktop.choosers.cancel(ChooserKind::Open);
    mnuAddSounds_Click(root());
    EXPECT_EQ("/m", root().tBrowseFolder.Text.value().toStdString());
    EXPECT_EQ(2, tracks().count());
    expectWaitOver();
}

TEST_F(AddSounds, AFolderWithFiftyThousandFilesIsListedAndSaved)
{
    constexpr int Many = 50'000;
    for (int i = 0; i < Many; ++i)
        desktop.memory()->put(u"/riesig/%1.mp3"_s.arg(i, 5, 10, QLatin1Char('0')), "x");
    addFolder(u"/riesig"_s);
    EXPECT_EQ(Many + 2, tracks().count());
    EXPECT_EQ("/riesig/49999.mp3", tracks().subItem(Many + 2, 3).toStdString());
    EXPECT_EQ(Many + 2, bytes(list).count("\r\n"));
    expectWaitOver();
}

TEST_F(AddSounds, TheSearchForPresentNamesGivesWhatAPlainTextSearchGives)
{
    std::mt19937 random(7);
    const auto text = [&](int most, const QString& letters) {
        QString result;
        const int length = std::uniform_int_distribution(0, most)(random);
        for (int i = 0; i < length; ++i)
            result += letters[std::uniform_int_distribution<qsizetype>(0, letters.size() - 1)(random)];
        return result;
    };
    for (int round = 0; round < 3000; ++round) {
        const QString whole = text(60, u"aAbB/.Ää"_s);
        const QString start = text(3, u"aA/ä"_s) + u'/';
        QStringList names;
        for (int i = 0; i < 8; ++i)
            names += text(5, u"aAbB.äÄ"_s);
        QStringList plain;
        for (const QString& name : names)
            if (!whole.toLower().contains((start + name).toLower()))
                plain += name;
        ASSERT_EQ(lines(plain), lines(absentNames(whole, start, names)))
            << whole.toStdString() << " " << start.toStdString();
    }
}

TEST_F(AddSounds, TheIndexKeepsItsCountAndTheListIsSavedOnce)
{
    forgetCalls();
    addFolder(u"/neu"_s);
    EXPECT_EQ("6", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("2", desktop.profiles().value(database(), u"Index"_s, u"1d"_s).toStdString());
    EXPECT_EQ(1, desktop.log.linesOf({u"files.writeText \""_s + list}).size());
}

TEST_F(AddSounds, MarkAndFolderAreBothNeeded)
{
    for (const auto& [mark, folder] : {std::pair{u"1"_s, QString()}, std::pair{u"0"_s, u"/neu"_s}}) {
        desktop.forms().whileModal(u"Ordner"_s, [this, mark = mark, folder = folder](Form& form) {
            root().tBrowseFolder.Tag = mark;
            root().tBrowseFolder.Text = folder;
            desktop.forms().unload(form);
        });
        mnuAddSounds_Click(root());
        EXPECT_EQ("", option(u"Soundfiles"_s));
        EXPECT_EQ(2, tracks().count());
        expectWaitOver();
    }
}

} // namespace orvantine::fake
