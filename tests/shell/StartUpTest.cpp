#include "shell/FormLoad.h"

#include "catalogue/CatalogueWorld.h"

#include "app/Registry.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString FontTitle = u" Komponente hinzufügen"_s;

QString fontQuestion(const QString& family)
{
    return u"Die Schriftart ''%1'' konnte im Windows-Ordner nicht gefunden werden.    \n"
           u"Möchten Sie diese Schriftart jetzt in Windows hinzufügen und registrieren ?"_s.arg(family);
}

class StartUp : public CatalogueWorld
{
protected:
    /// How the log begins with a call for that value.
    [[nodiscard]] static QString settingCall(const QString& call, const QString& name)
    {
        return u"settings.%1 HKCU \"Software\\\\Verdanis\\\\Orvant Manager\" \"%2\""_s.arg(call, name);
    }

    [[nodiscard]] std::string written()
    {
        QStringList all;
        const QStringList taken = desktop.log.take();
        for (const QString& line : taken)
            if (line.startsWith(u"settings.setValue"_s))
                all += QString(line.section(u'"', 3)).remove(u'"').replace(data(), u"{data}/"_s);
        return lines(all);
    }
};

} // namespace

TEST_F(StartUp, AFirstRunWritesTheseValuesInThisOrder)
{
    start();
    EXPECT_EQ(u"Version sz 2.3\nDatabase sz {data}/\nInstallDir sz %1\nShowDate dword 0\nLV_1 sz 2800\nLV_2 sz 900\n"
              "Info sz 1\nUpdate sz 20.11.2026"_s.arg(desktop.folders.program)
                  .toStdString(),
              written());
}

TEST_F(StartUp, AStoredDatabaseFolderIsTakenAndStays)
{
    setting(u"Database"_s, stringSetting(u"/anderswo/"_s));
    putFolder(u"/anderswo"_s);
    start();
    EXPECT_EQ("/anderswo/", root().tDatenbank.Text.value().toStdString());
    EXPECT_EQ("sz \"/anderswo/\"", setting(u"Database"_s).toStdString());
    for (const QString& folder : {u"Burning"_s, u"Playlisten"_s, u"Resource"_s})
        EXPECT_TRUE(desktop.disk().isFolder(u"/anderswo/"_s + folder));
    EXPECT_FALSE(desktop.disk().exists(data() + u"Playlisten"_s));
}

TEST_F(StartUp, AnotherVersionIsNotedWithAPauseUnderTheWaitCursor)
{
    struct Case
    {
        std::optional<QString> stored;
        bool pauses;
    };
    for (const Case& c :
         {Case{std::nullopt, true}, Case{u"2.2"_s, true}, Case{u"2.3"_s, false}, Case{u"2.30"_s, true}}) {
        SCOPED_TRACE(c.stored.value_or(u"absent"_s).toStdString());
        desktop.newProcess();
        if (c.stored)
            setting(u"Version"_s, stringSetting(*c.stored));
        MousePointer during = MousePointer::Default;
        desktop.events().after(std::chrono::milliseconds{500}, [&] { during = root().Pointer.value(); });
        const auto begin = desktop.events().elapsed();
        start();
        EXPECT_EQ(c.pauses ? MousePointer::Hourglass : MousePointer::Default, during);
        EXPECT_EQ(c.pauses, (desktop.events().elapsed() - begin).count() >= 1000);
        EXPECT_EQ("sz \"2.3\"", setting(u"Version"_s).toStdString());
    }
}

TEST_F(StartUp, TheStoredVersionIsCutAtItsFirstNul)
{
    setting(u"Version"_s, stringSetting(u"2.3"_s + QChar(u'\0') + u"alt"_s));
    const auto begin = desktop.events().elapsed();
    putCatalogue({});
    start();
    EXPECT_EQ(0, (desktop.events().elapsed() - begin).count());
    EXPECT_EQ("", calls({settingCall(u"setValue"_s, u"Version"_s)}));
}

TEST_F(StartUp, AFontThatTheProgramShipsIsNotAskedFor)
{
    desktop.fonts.families = {};
    put(desktop.folders.program + u"/Orvantine.sys"_s, "schrift");
    put(desktop.folders.program + u"/Orvantine.ttf"_s, "schrift");
    start();
    EXPECT_EQ("", boxes());
    EXPECT_EQ(u"fonts.provide \"Maiandra GD\" \"%1/Orvantine.sys\"\nfonts.provide \"OCR B\" \"%1/Orvantine.ttf\""_s
                  .arg(desktop.folders.program)
                  .toStdString(),
              calls({u"fonts"_s}));
}

TEST_F(StartUp, AMissingFontIsAskedForAndOkInstallsTheOneThatTheProgramShips)
{
    desktop.fonts.families = {};
    // A file that no font can be made of.
    desktop.fonts.readable = false;
    put(desktop.folders.program + u"/Orvantine.sys"_s, "schrift");
    desktop.messages.answer(Answer::Ok, FontTitle, fontQuestion(u"Maiandra GD"_s));
    desktop.messages.answer(Answer::Ok, FontTitle, fontQuestion(u"OCR B"_s));
    start();
    EXPECT_EQ("schrift", bytes(desktop.folders.windows + u"/FONTS/MAIAN.TTF"_s).toStdString());
    EXPECT_EQ(u"fonts.registerFont \"%1/FONTS/MAIAN.TTF\""_s.arg(desktop.folders.windows).toStdString(),
              calls({u"fonts.registerFont"_s}));
    EXPECT_EQ("(missing)", bytes(desktop.folders.windows + u"/FONTS/OCR_B.TTF"_s).toStdString());
    ASSERT_EQ(2U, desktop.messages.shown().size());
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::OkCancel, desktop.messages.shown()[0].buttons);
}

TEST_F(StartUp, CancelInstallsNoFont)
{
    desktop.fonts.families = {};
    desktop.messages.answer(Answer::Cancel, FontTitle, fontQuestion(u"Maiandra GD"_s));
    desktop.messages.answer(Answer::Cancel, FontTitle, fontQuestion(u"OCR B"_s));
    start();
    EXPECT_EQ("", desktop.disk().list(desktop.folders.windows + u"/FONTS"_s, u"*.*"_s).join(u' ').toStdString());
}

TEST_F(StartUp, AFontThatIsKnownOrWhoseFileStandsIsNotAskedFor)
{
    desktop.fonts.families = {u"OCR B"_s};
    put(desktop.folders.windows + u"/FONTS/MAIAN.TTF"_s, "x");
    start();
    EXPECT_EQ("", boxes());
}

TEST_F(StartUp, EveryStoredMenuStateIsRestored)
{
    struct Case
    {
        const char* name;
        std::optional<int> value;
        std::function<bool(Root&)> state;
        bool expected;
    };
    const auto position = [](Root& r) { return r.mnuPositionen.Checked.value() && r.bMoveUp.Visible.value(); };
    const auto volume = [](Root& r) { return r.mnuLautstärke.Checked.value() && r.pVolume.Visible.value(); };
    const auto folders = [](Root& r) { return r.mnuHandling[6].Checked.value(); };
    const auto date = [](Root& r) { return r.mnuDatumsanzeige.Checked.value(); };
    const auto view = [](Root& r) { return r.mnuAddSoundfiles.Checked.value(); };
    const auto local = [](Root& r) { return r.mnuLokalePlayliste.Checked.value(); };
    const auto errors = [](Root& r) { return r.mnuErrorDisplay.Checked.value(); };
    const auto files = [](Root& r) { return r.mnuOrvmenu[2].Checked.value() && !r.mnuOrvmenu[1].Checked.value(); };
    const auto paths = [](Root& r) { return r.mnuOrvmenu[1].Checked.value() && !r.mnuOrvmenu[2].Checked.value(); };
    const auto mode = [](int wanted) {
        return [wanted](Root& r) {
            for (int i = 1; i <= 3; ++i)
                if (r.mnuWiederholung[i].Checked.value() != (i == wanted))
                    return false;
            return true;
        };
    };
    const auto second = [](Root& r) { return r.mnuWiederholung[2].Enabled.value(); };
    for (const Case& c : {Case{"Position", std::nullopt, position, false},
                          Case{"Position", 1, position, true},
                          Case{"Position", 0, position, false},
                          Case{"Position", 2, position, false},
                          Case{"ReCall", std::nullopt, mode(3), true},
                          Case{"ReCall", 1, mode(1), true},
                          Case{"ReCall", 2, mode(2), true},
                          Case{"ReCall", 3, mode(3), true},
                          Case{"ReCall", 0, mode(0), true},
                          Case{"ReCall", 4, mode(0), true},
                          Case{"ReCall", 2, second, true},
                          Case{"ReCall", 1, second, false},
                          Case{"CreateFolder", std::nullopt, folders, true},
                          Case{"CreateFolder", 1, folders, true},
                          Case{"CreateFolder", 0, folders, false},
                          Case{"Volume", std::nullopt, volume, false},
                          Case{"Volume", 1, volume, true},
                          Case{"Volume", 0, volume, false},
                          Case{"ShowDate", std::nullopt, date, true},
                          Case{"ShowDate", 1, date, false},
                          Case{"ShowDate", 0, date, true},
                          Case{"ShowDate", 2, date, true},
                          Case{"FolderView", std::nullopt, view, true},
                          Case{"FolderView", 1, view, true},
                          Case{"FolderView", 0, view, false},
                          Case{"ShowFiles", std::nullopt, paths, true},
                          Case{"ShowFiles", 1, files, true},
                          Case{"ShowFiles", 0, paths, true},
                          Case{"ShowFiles", 2, paths, true},
                          Case{"Lokal", std::nullopt, local, true},
                          Case{"Lokal", 1, local, true},
                          Case{"Lokal", 0, local, false},
                          Case{"Error", std::nullopt, errors, true},
                          Case{"Error", 1, errors, true},
                          Case{"Error", 0, errors, false}}) {
        desktop.newProcess();
        const QString name = QString::fromLatin1(c.name);
        desktop.settings.drop(Hive::CurrentUser, settingsKey(), name);
        if (c.value)
            setting(name, dwordSetting(*c.value));
        start();
        EXPECT_EQ(c.expected, c.state(root())) << c.name << ' ' << c.value.value_or(-1);
        desktop.settings.drop(Hive::CurrentUser, settingsKey(), name);
    }
}

TEST_F(StartUp, TheVisibleStateHasItsDefaults)
{
    start();
    EXPECT_EQ("20.11.2026", root().tDatum.Caption.value().toStdString());
    EXPECT_EQ("", root().tDateiname.Caption.value().toStdString());
    EXPECT_EQ("B&eenden \tAlt+Q", root().mnuBeenden.Caption.value().toStdString());
    EXPECT_FALSE(root().TagIDs.Visible.value());
    EXPECT_FALSE(root().mnuSuchDialog.Visible.value());
    EXPECT_FALSE(root().Trennung21.Visible.value());
    EXPECT_EQ(0xEBEBEBU, root().pCoverBack.BackColor.value());
    EXPECT_EQ("0", root().Tag.toStdString());
    EXPECT_EQ("", root().tCopyStatus.Caption.value().toStdString());
}

TEST_F(StartUp, TheFontNeedsBothOfItsValues)
{
    setting(u"Fontname"_s, stringSetting(u"Serife"_s));
    start();
    EXPECT_EQ("", catalogue().FontName.value().toStdString());
    setting(u"Fontsize"_s, stringSetting(u"12"_s));
    desktop.newProcess();
    start();
    for (const ListView* list : {&catalogue(), &tracks()}) {
        EXPECT_EQ("Serife", list->FontName.value().toStdString());
        EXPECT_EQ(12, list->FontSize.value());
    }
}

TEST_F(StartUp, OnlyTheValueTwoMaximises)
{
    for (const QString& value : {u"0"_s, u"1"_s, u"2"_s}) {
        desktop.newProcess();
        setting(u"Maximized"_s, stringSetting(value));
        start();
        EXPECT_EQ(value == u"2"_s, root().State.value() == WindowState::Maximized) << value.toStdString();
    }
}

TEST_F(StartUp, TheMoveOfTheDataCopiesWhatIsThereAndNeverReplacesADatabase)
{
    const QString program = desktop.folders.program;
    put(program + u"/Orvantine.dat"_s, "neu");
    put(program + u"/Orvantine.bak"_s, "neues bak");
    put(program + u"/Burning/a.txt"_s, "brenn");
    put(program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    put(program + u"/Playlisten/B.m3u"_s, "neu B");
    put(data() + u"Orvantine.dat"_s, "[Options]\r\nSoundfiles=/m\r\n");
    put(data() + u"Playlisten/B.m3u"_s, "alt B");
    desktop.messages.answer(Answer::Ok, u"Orvanten Manager "_s,
                            u"Datenbanken wurden vom Installationsordner in den Benutzerordner kopiert. Die Datenbank "
                            u"und Playlisten befinden sich nun im AppData-Roaming Verzeichnis."_s);
    start();
    EXPECT_EQ("[Options]\r\nSoundfiles=/m\r\n", bytes(database()).toStdString());
    EXPECT_EQ("neues bak", bytes(backup()).toStdString());
    EXPECT_EQ("brenn", bytes(data() + u"Burning/a.txt"_s).toStdString());
    EXPECT_EQ("/fehlt/lied.mp3\r\n", bytes(data() + u"Playlisten/A.m3u"_s).toStdString());
    EXPECT_EQ("neu B", bytes(data() + u"Playlisten/B.m3u"_s).toStdString());
    EXPECT_EQ("dword 1", setting(u"NoDataCopy"_s).toStdString());
    EXPECT_EQ("box title \"Orvanten Manager \" text \"Datenbanken wurden vom Installationsordner in den Benutzerordner "
              "kopiert. Die Datenbank und Playlisten befinden sich nun im AppData-Roaming Verzeichnis.\" icon "
              "exclamation buttons ok answer ok",
              boxes());
}

TEST_F(StartUp, TheMoveOfTheDataPutsPathAndPatternOfTheHiddenListBack)
{
    put(desktop.folders.program + u"/Orvantine.dat"_s, "neu");
    put(desktop.folders.program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    root().LMp3Files.Path = u"/vorher"_s;
    root().LMp3Files.Pattern = u"*.wma"_s;
    desktop.messages.answer(Answer::Ok);
    start();
    EXPECT_EQ("/vorher", root().LMp3Files.Path.toStdString());
    EXPECT_EQ("*.wma", root().LMp3Files.Pattern.toStdString());
}

TEST_F(StartUp, AMoveOfTheDataThatFailsIsNotToldAndTriedAgain)
{
    put(desktop.folders.program + u"/Orvantine.dat"_s, "[Options]\r\nSoundfiles=/m\r\n");
    put(desktop.folders.program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    desktop.log.failNext(u"files.copy"_s);
    start();
    EXPECT_EQ("", boxes());
    EXPECT_EQ("(absent)", setting(u"NoDataCopy"_s).toStdString());
    desktop.newProcess();
    desktop.messages.answer(Answer::Ok);
    start();
    EXPECT_EQ("dword 1", setting(u"NoDataCopy"_s).toStdString());
}

TEST_F(StartUp, AMoveOfTheDataThatIsTriedAgainLeavesWhatItHasCopiedBefore)
{
    const QString program = desktop.folders.program;
    put(program + u"/Orvantine.dat"_s, "[Options]\r\nSoundfiles=/m\r\n");
    put(program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    put(program + u"/Playlisten/B.m3u"_s, "/fehlt/anderes.mp3\r\n");
    desktop.log.failNext(u"files.copy \"%1/Playlisten/B.m3u\""_s.arg(program));
    start();
    EXPECT_EQ("(absent)", setting(u"NoDataCopy"_s).toStdString());
    put(data() + u"Playlisten/A.m3u"_s, "/von/hand.mp3\r\n");
    desktop.newProcess();
    desktop.messages.answer(Answer::Ok);
    start();
    EXPECT_EQ("/von/hand.mp3\r\n", bytes(data() + u"Playlisten/A.m3u"_s).toStdString());
    EXPECT_EQ("/fehlt/anderes.mp3\r\n", bytes(data() + u"Playlisten/B.m3u"_s).toStdString());
    EXPECT_EQ("dword 1", setting(u"NoDataCopy"_s).toStdString());
}

TEST_F(StartUp, AFolderBesideTheProgramThatCannotBeReadIsNoEmptyOne)
{
    const QString program = desktop.folders.program;
    put(program + u"/Orvantine.dat"_s, "[Options]\r\nSoundfiles=/m\r\n");
    put(program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    putFolder(program + u"/Burning"_s);
    const QString playlists = u" \"%1/Playlisten\""_s.arg(program);
    desktop.log.failNext(u"files.list"_s + playlists);
    desktop.log.failNext(u"walks.begin"_s + playlists);
    start();
    EXPECT_EQ("", boxes());
    EXPECT_EQ("(absent)", setting(u"NoDataCopy"_s).toStdString());
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/A.m3u"_s).toStdString());

    // What only the list could not tell is moved.
    desktop.newProcess();
    desktop.log.failNext(u"files.list"_s + playlists);
    desktop.messages.answer(Answer::Ok);
    start();
    EXPECT_EQ("dword 1", setting(u"NoDataCopy"_s).toStdString());
    EXPECT_EQ("/fehlt/lied.mp3\r\n", bytes(data() + u"Playlisten/A.m3u"_s).toStdString());
}

TEST_F(StartUp, AReadOfTheDataFolderThatFailsAloneChangesNothing)
{
    putFolder(u"/anderswo"_s);
    for (int read = 1; read <= 6; ++read) {
        SCOPED_TRACE(read);
        desktop.newProcess();
        setting(u"Database"_s, stringSetting(u"/anderswo/"_s));
        desktop.log.failNext(settingCall(u"value"_s, u"Database"_s), read);
        start();
        EXPECT_EQ("/anderswo/", root().tDatenbank.Text.value().toStdString());
        EXPECT_EQ("sz \"/anderswo/\"", setting(u"Database"_s).toStdString());
    }
}

TEST_F(StartUp, AReadOfTheMarkOfTheMoveThatFailsAloneMovesNothing)
{
    put(desktop.folders.program + u"/Orvantine.dat"_s, "[Options]\r\nSoundfiles=/m\r\n");
    put(desktop.folders.program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    setting(u"NoDataCopy"_s, dwordSetting(1));
    desktop.log.failNext(settingCall(u"value"_s, u"NoDataCopy"_s));
    start();
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/A.m3u"_s).toStdString());
}

TEST_F(StartUp, SettingsThatCannotBeReadAreNotWrittenOverNothingIsMovedAndItIsTold)
{
    put(desktop.folders.program + u"/Orvantine.dat"_s, "[Options]\r\nSoundfiles=/m\r\n");
    put(desktop.folders.program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    put(data() + u"Playlisten/A.m3u"_s, "/von/hand.mp3\r\n");
    setting(u"Database"_s, stringSetting(u"/anderswo/"_s));
    setting(u"NoDataCopy"_s, dwordSetting(1));
    constexpr int All = 1000;
    for (int call = 1; call <= All; ++call)
        desktop.log.failNext(u"settings."_s, call);
    start();
    EXPECT_EQ("/von/hand.mp3\r\n", bytes(data() + u"Playlisten/A.m3u"_s).toStdString());
    EXPECT_EQ("sz \"/anderswo/\"", setting(u"Database"_s).toStdString());
    EXPECT_EQ("", calls({settingCall(u"setValue"_s, u"Database"_s), settingCall(u"setValue"_s, u"NoDataCopy"_s)}));
    EXPECT_EQ("Die Einstellungen können nicht gelesen oder geschrieben werden. Sie bleiben, wie sie sind.",
              root().quietLine.Caption.value().toStdString());
    EXPECT_EQ("", boxes());
}

TEST_F(StartUp, ADataFolderOfNoTextCountsAsAbsent)
{
    setting(u"Database"_s, stringSetting(QString()));
    start();
    EXPECT_EQ(data().toStdString(), root().tDatenbank.Text.value().toStdString());
    EXPECT_EQ(u"sz \"%1\""_s.arg(data()).toStdString(), setting(u"Database"_s).toStdString());
}

TEST_F(StartUp, WidthsOfTheCatalogueHoldForAnEmptyOneToo)
{
    setting(u"LV_1"_s, stringSetting(u"3333"_s));
    setting(u"LV_2"_s, stringSetting(u"1111"_s));
    start();
    EXPECT_EQ(3333, catalogue().columnWidth(2));
    EXPECT_EQ(1111, catalogue().columnWidth(4));
    root().mnuBeenden.Click();
    EXPECT_EQ("sz \"3333\"", setting(u"LV_1"_s).toStdString());
    EXPECT_EQ("sz \"1111\"", setting(u"LV_2"_s).toStdString());
}

TEST_F(StartUp, WhereAnotherDesktopWorksOnTheDataTheProgramGivesWayBeforeItTouchesThem)
{
    desktop.instance.folderTaken = true;
    start();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ("", boxes());
    EXPECT_FALSE(root().Visible.value());
    EXPECT_EQ(
        u"instance.acquire \"Orvanten Manager\"\ninstance.acquireFolder \"%1\"\ninstance.activateOther"_s.arg(data())
            .toStdString(),
        calls({u"instance"_s}));
    EXPECT_FALSE(desktop.disk().exists(data() + u"Playlisten"_s));
}

TEST_F(StartUp, WhereTheFirstProgramIsAboutToEndThisOneTakesItsPlace)
{
    desktop.instance.taken = true;
    desktop.instance.answers = false;
    desktop.instance.ends = true;
    start();
    EXPECT_FALSE(desktop.events().ended());
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ("Orvanten Manager", root().Caption.value().toStdString().substr(0, 16));
}

TEST_F(StartUp, WithoutADatabaseBesideTheProgramNothingIsMoved)
{
    put(desktop.folders.program + u"/Playlisten/A.m3u"_s, "/fehlt/lied.mp3\r\n");
    start();
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/A.m3u"_s).toStdString());
    EXPECT_EQ("(absent)", setting(u"NoDataCopy"_s).toStdString());
}

TEST_F(StartUp, AComparisonWithAValueOfAnUnexpectedTypeIsFalseAndItIsNotAbsentEither)
{
    for (const int type : {5, 6}) {
        desktop.newProcess();
        for (const QString& name : {u"Error"_s, u"Lokal"_s, u"FolderView"_s, u"CreateFolder"_s, u"Position"_s,
                                    u"ReCall"_s, u"Index"_s, u"Left"_s, u"Info"_s})
            setting(name, {static_cast<SettingType>(type), {}, "\1\0\0\0"_ba});
        forgetCalls();
        start();
        for (const MenuItem* item :
             {&root().mnuErrorDisplay, &root().mnuLokalePlayliste, &root().mnuAddSoundfiles, &root().mnuHandling[6],
              &root().mnuPositionen, &root().mnuWiederholung[1], &root().mnuWiederholung[3]})
            EXPECT_FALSE(item->Checked.value()) << type << ' ' << item->name.toStdString();
        EXPECT_EQ(8100, root().Left.value());
        EXPECT_EQ(1, desktop.log.linesOf({u"forms.show Dialoge"_s}).size()) << "for the empty catalogue alone";
    }
}

TEST_F(StartUp, TheWizardShowsForAFirstRunAndForAnEmptyCatalogue)
{
    struct Case
    {
        const char* name;
        bool info, rows;
        int shown;
    };
    for (const Case& c : {Case{"first run, empty", false, false, 2}, Case{"empty", true, false, 1},
                          Case{"rows", true, true, 0}, Case{"first run, rows", false, true, 1}}) {
        SCOPED_TRACE(c.name);
        desktop.newProcess();
        desktop.settings.drop(Hive::CurrentUser, settingsKey(), u"Info"_s);
        if (c.info)
            setting(u"Info"_s, stringSetting(u"1"_s));
        if (c.rows)
            putCatalogue({u"Eins"_s});
        else
            desktop.disk().remove(database());
        forgetCalls();
        start();
        EXPECT_EQ(c.shown, desktop.log.linesOf({u"forms.show Dialoge"_s}).size());
        EXPECT_EQ("sz \"1\"", setting(u"Info"_s).toStdString());
    }
}

TEST_F(StartUp, AValueOfEachTypeIsReadInItsForm)
{
    start();
    const QString nulAndBlank = QString(QChar(u'\0')) + u' ';
    struct Case
    {
        const char* name;
        SettingValue stored;
        SettingVariant read;
    };
    for (const Case& c : {Case{"text", {SettingType::String, u"a b"_s, {}}, u"a b"_s + nulAndBlank},
                          Case{"expandable text", {SettingType::ExpandString, u"%a%"_s, {}}, u"%a%"_s + nulAndBlank},
                          Case{"lines", {SettingType::MultiString, u"a\r\nb\r\n"_s, {}}, u"a\r\nb\r\n"_s + nulAndBlank},
                          Case{"binary", {SettingType::Binary, {}, "\7\0\0\0"_ba}, qint32{7}},
                          Case{"short binary", {SettingType::Binary, {}, "\7"_ba}, qint32{7}},
                          Case{"double word", {SettingType::Dword, {}, "\xff\xff\xff\xff"_ba}, qint32{-1}},
                          Case{"nothing", {SettingType::None, {}, {}}, std::monostate{}},
                          Case{"type 5", {SettingType{5}, {}, "\1\0\0\0"_ba}, std::monostate{}},
                          Case{"type 6", {SettingType{6}, u"1"_s, {}}, std::monostate{}},
                          Case{"type 8", {SettingType{8}, {}, "\1\0\0\0"_ba}, std::monostate{}}}) {
        setting(u"Wert"_s, c.stored);
        SettingVariant value;
        EXPECT_TRUE(Registry::ReadValue(root(), Hive::CurrentUser, settingsKey(), u"Wert"_s, value)) << c.name;
        EXPECT_TRUE(c.read == value) << c.name;
    }
    SettingVariant value = qint32{5};
    setting(u"Wert"_s, {SettingType{5}, {}, "\1\0\0\0"_ba});
    EXPECT_TRUE(Registry::ReadValue(root(), Hive::CurrentUser, settingsKey(), u"Wert"_s, value));
    EXPECT_TRUE(SettingVariant{qint32{5}} == value) << "nothing goes to it";
    EXPECT_FALSE(Registry::ReadValue(root(), Hive::CurrentUser, settingsKey(), u"Fehlt"_s, value));
    // The number that is asked for has no room for it.
    setting(u"Lang"_s, {SettingType::Binary, {}, "\7\0\0\0\1\1"_ba});
    EXPECT_FALSE(Registry::ReadValue(root(), Hive::CurrentUser, settingsKey(), u"Lang"_s, value));
    EXPECT_FALSE(Registry::ReadValue(root(), Hive::CurrentUser, u"Software\\Fehlt"_s, u"Wert"_s, value));
    EXPECT_TRUE(SettingVariant{qint32{5}} == value);
    EXPECT_FALSE(Registry::WriteValue(root(), Hive::CurrentUser, u"Software\\Fehlt"_s, u"Wert"_s, value));
}

} // namespace orvantine::fake
