#include "shell/Optionen.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString RunKey = u"Software\\Microsoft\\Windows\\CurrentVersion\\Run"_s;
const QString Folders = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders"_s;

class OptionsDialog : public CatalogueWorld
{
protected:
    OptionsDialog()
    {
        setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
        putCatalogue({u"Erste"_s});
    }

    Optionen& form() { return *root().optionen; }
    /// What the user does in the dialog; it is left by Cancel unless it has gone.
    void inDialog(const std::function<void()>& act)
    {
        desktop.forms().whileModal(u"Optionen"_s, [this, act](Form& shown) {
            act();
            if (shown.Visible)
                form().bAbbrechen.Click();
        });
        ASSERT_TRUE(root().mnuOptionen.press());
    }
    /// As a user turns a check box.
    static void turn(CheckBox& box)
    {
        box.Value = !box.Value.value();
        if (box.Click)
            box.Click();
    }
    /// The marks of the boxes in the order of the table, then the line of the list.
    [[nodiscard]] std::string marks()
    {
        const Optionen& shown = form();
        std::string text;
        for (const CheckBox* box : {&shown.bFolderView, &shown.bLokalePlayliste, &shown.bShowDialog, &shown.bShowChange,
                                    &shown.bCheckEntrys, &shown.bCreateFolder, &shown.bShowDate, &shown.bAutoTag,
                                    &shown.bNoUpdate, &shown.bUseCDBurner, &shown.bLoadPlayer})
            text += box->Value.value() ? '1' : '0';
        return text + ' ' + std::to_string(shown.bZipCompress.ListIndex.value());
    }
    /// Changes of the store since the last look, without the program's own key.
    [[nodiscard]] std::string written()
    {
        QStringList all;
        for (QString line : desktop.log.linesOf({u"settings."_s}))
            if (!line.startsWith(u"settings.value"_s) && !line.startsWith(u"settings.keyExists"_s))
                all += line.remove(u"settings."_s).remove(u"HKCU \"Software\\\\Verdanis\\\\Orvant Manager\" "_s);
        return lines(all);
    }
};

} // namespace

TEST_F(OptionsDialog, TheCaptionsAreTheToldOnes)
{
    const std::vector<std::pair<QString, const char*>> told{
        {form().Caption, " Einstellungen"},
        {form().bFolderView.Caption, "&Sounddateien hinzufügen zeigt Ordnerauswahl "},
        {form().bLokalePlayliste.Caption, "&Neue Playlisten im lokalen Ordner speichern "},
        {form().bShowDialog.Caption, "&Zeige Dialog bei Hinzufügen vorhandener Playlisten "},
        {form().bShowChange.Caption, "&Nächste Playliste ohne Wechselanzeige abspielen "},
        {form().bCheckEntrys.Caption, "&Prüfen vor Hinzufügen doppelte Playlisten-Einträge "},
        {form().bCreateFolder.Caption, "&Bei Übertragung den Interpreten als Unterordner "},
        {form().bShowDate.Caption, "&Erstellungsdatum und Soundanzahl nicht anzeigen "},
        {form().bAutoTag.Caption, "&Tag-ID automatisch nach Hinzufügen ausführen "},
        {form().bNoUpdate.Caption, "&Keine Update-Überprüfung nach dem Start "},
        {form().LZipCompress.Caption, "&Komprimierungsstärke der Datensicherungen:"},
        {form().bZipCompress.List.value().join(u'|'), "einfach|mäßig|stark!"},
        {form().bUseCDBurner.Caption, "&Verwende CD-Burning bei Übertragung von Pack'n Go "},
        {form().bLoadPlayer.Caption, "&Windows-Start und automatische Wiedergabe "},
        {form().LSoundfiles.Caption, "&Ordner für Sounddateien:"},
        {form().LRipper.Caption, "&CD-Ripper/Kopierer:"},
        {form().bAbbrechen.Caption, "&Abbrechen"},
        {form().bHilfe.Caption, "&Hilfe"}};
    for (const auto& [shown, text] : told)
        EXPECT_EQ(text, shown.toStdString());
}

TEST_F(OptionsDialog, AnAbsentValueShowsItsDefault)
{
    start();
    // The start itself stores that date and number of tracks are shown.
    desktop.settings.drop(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"ShowDate"_s);
    inDialog([this] {
        EXPECT_EQ("11001100000 2", marks());
        EXPECT_EQ("", form().tSoundfiles.Text.value().toStdString());
        EXPECT_EQ("", form().tRipper.Text.value().toStdString());
        EXPECT_FALSE(form().bHelpDirekt.Value.value());
    });
}

TEST_F(OptionsDialog, EachCheckBoxTakesTheStoredValue)
{
    const QStringList names{u"FolderView"_s,  u"Lokal"_s,        u"ShowDialog"_s, u"ShowChange"_s,
                            u"CheckEntrys"_s, u"CreateFolder"_s, u"ShowDate"_s,   u"AutoTag"_s,
                            u"NoUpdate"_s,    u"UseCDBurner"_s,  u"LoadPlayer"_s};
    start();
    for (qsizetype on = 0; on < names.size(); ++on) {
        for (qsizetype i = 0; i < names.size(); ++i)
            setting(names[i], dwordSetting(i == on ? 1 : 0));
        setting(u"ZipCompress"_s, dwordSetting(1));
        std::string expected(static_cast<std::size_t>(names.size()), '0');
        expected[static_cast<std::size_t>(on)] = '1';
        inDialog([&] { EXPECT_EQ(expected + " 1", marks()) << names[on].toStdString(); });
    }
}

TEST_F(OptionsDialog, ValuesOfAnotherTypeOrSizeAreTakenByTheirNumberOrAsOff)
{
    start();
    const SettingValue odd{.type = SettingType::Binary, .text = {}, .bytes = QByteArray(1000, '\1')};
    setting(u"FolderView"_s, stringSetting(u"1"_s));
    setting(u"Lokal"_s, binarySetting(1));
    setting(u"ShowDialog"_s, stringSetting(u"ja"_s));
    setting(u"CheckEntrys"_s, dwordSetting(-1));
    // Longer than a number: it counts as absent.
    setting(u"CreateFolder"_s, odd);
    for (const SettingValue& value :
         {stringSetting(u"viel"_s), dwordSetting(7), dwordSetting(-1), stringSetting(u""_s), odd}) {
        setting(u"ZipCompress"_s, value);
        inDialog([this] { EXPECT_EQ("11000100000 2", marks()); });
    }
}

TEST_F(OptionsDialog, OkWritesEverySettingInTheOrderOfTheTable)
{
    start();
    forgetCalls();
    inDialog([this] {
        form().tSoundfiles.Text = u"/musik"_s;
        form().tRipper.Text = u"/bin/ripper"_s;
        turn(form().bNoUpdate);
        turn(form().bLoadPlayer);
        form().bZipCompress.ListIndex = 0;
        form().BReady.Click();
    });
    EXPECT_EQ(R"(setValue "FolderView" dword 1
setValue "Lokal" dword 1
setValue "ShowDialog" dword 0
setValue "ShowChange" dword 0
setValue "CheckEntrys" dword 1
setValue "CreateFolder" dword 1
setValue "ShowDate" dword 0
setValue "AutoTag" dword 0
setValue "NoUpdate" dword 1
setValue "ZipCompress" dword 0
setValue "UseCDBurner" dword 0
setValue "LoadPlayer" dword 1
createKey HKCU "Software\\Microsoft\\Windows\\CurrentVersion\\Run"
setValue HKCU "Software\\Microsoft\\Windows\\CurrentVersion\\Run" "Orvantinen" sz ")" +
                  desktop.folders.program.toStdString() + R"(/Orvantine.exe /hide"
setValue "Soundfiles" sz "/musik"
setValue "Ripper" sz "/bin/ripper")",
              written());
}

TEST_F(OptionsDialog, CancelWritesNothing)
{
    start();
    forgetCalls();
    inDialog([this] {
        for (CheckBox* box : {&form().bFolderView, &form().bLoadPlayer, &form().bShowDate})
            turn(*box);
        form().tRipper.Text = u"/bin/ripper"_s;
        form().bAbbrechen.Click();
    });
    EXPECT_EQ("", written());
    EXPECT_TRUE(root().mnuAddSoundfiles.Checked.value());
}

TEST_F(OptionsDialog, ARunEntryMadeByHandShowsAsMarkedAndIsRemovedBySavingUnmarked)
{
    desktop.settings.put(Hive::CurrentUser, RunKey, u"Orvantinen"_s, stringSetting(u"/von/hand"_s));
    setting(u"LoadPlayer"_s, dwordSetting(0));
    start();
    inDialog([this] {
        EXPECT_TRUE(form().bLoadPlayer.Value.value());
        turn(form().bLoadPlayer);
        form().BReady.Click();
    });
    EXPECT_FALSE(desktop.settings.peek(Hive::CurrentUser, RunKey, u"Orvantinen"_s).has_value());
    EXPECT_EQ("dword 0", setting(u"LoadPlayer"_s).toStdString());
}

TEST_F(OptionsDialog, TheFolderForSoundFilesIsTheStoredOneIfItExistsElseTheMusicFolder)
{
    putFolder(u"/musik"_s);
    start();
    setting(u"Soundfiles"_s, stringSetting(u"/weg"_s));
    inDialog([this] { EXPECT_EQ("", form().tSoundfiles.Text.value().toStdString()); });
    desktop.settings.put(Hive::CurrentUser, Folders, u"My Music"_s, stringSetting(u"/musik"_s));
    inDialog([this] { EXPECT_EQ("/musik", form().tSoundfiles.Text.value().toStdString()); });
    putFolder(u"/eigene"_s);
    setting(u"Soundfiles"_s, stringSetting(u"/eigene"_s));
    inDialog([this] { EXPECT_EQ("/eigene", form().tSoundfiles.Text.value().toStdString()); });
}

TEST_F(OptionsDialog, TheRipperIsTheStoredOneIfItExistsElseTheProgramsOwn)
{
    start();
    setting(u"Ripper"_s, stringSetting(u"/weg.exe"_s));
    inDialog([this] { EXPECT_EQ("", form().tRipper.Text.value().toStdString()); });
    put(desktop.folders.program + u"/CDRipper.exe"_s, "x");
    inDialog([this] {
        EXPECT_EQ((desktop.folders.program + u"/CDRipper.exe"_s).toStdString(),
                  form().tRipper.Text.value().toStdString());
    });
    put(u"/r/ripper"_s, "x");
    setting(u"Ripper"_s, stringSetting(u"/r/ripper"_s));
    inDialog([this] { EXPECT_EQ("/r/ripper", form().tRipper.Text.value().toStdString()); });
}

TEST_F(OptionsDialog, ARipperThatNamesAFolderByItsSeparatorIsNoFile)
{
    putFolder(u"/r"_s);
    start();
    setting(u"Ripper"_s, stringSetting(u"/r/"_s));
    inDialog([this] { EXPECT_EQ("", form().tRipper.Text.value().toStdString()); });
}

TEST_F(OptionsDialog, WhileACommandHoldsTheCheckForDoublesTheDialogIsPassedOver)
{
    start();
    setting(u"CheckEntrys"_s, dwordSetting(1));
    click(1);
    forgetCalls();
    bool came = false;
    desktop.events().after(std::chrono::milliseconds{500}, [this, &came] {
        EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
        came = true;
        root().mnuOptionen.press();
    });
    ASSERT_TRUE(root().mnuVerschiebung[2].press());
    EXPECT_TRUE(came);
    EXPECT_EQ("", calls({u"forms.showModal"_s}));
    EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
    inDialog([this] { EXPECT_TRUE(form().bCheckEntrys.Value.value()); });
}

TEST_F(OptionsDialog, TheChoosersPutTheirResultIntoTheFields)
{
    start();
    forgetCalls();
    desktop.choosers.open(u"/r/ripper.exe"_s);
    desktop.choosers.chooseFolder(u"/musik"_s);
    inDialog([this] {
        form().bRipper.Click();
        form().bSoundfiles.Click();
        EXPECT_EQ("/r/ripper.exe", form().tRipper.Text.value().toStdString());
        EXPECT_EQ("/musik", form().tSoundfiles.Text.value().toStdString());
        desktop.choosers.cancel(ChooserKind::Open);
        desktop.choosers.cancel(ChooserKind::Folder);
        form().bRipper.Click();
        form().bSoundfiles.Click();
        EXPECT_EQ("/r/ripper.exe", form().tRipper.Text.value().toStdString());
        EXPECT_EQ("/musik", form().tSoundfiles.Text.value().toStdString());
    });
    const std::string asked = calls({u"choosers.open"_s});
    EXPECT_NE(std::string::npos, asked.find("\"Datei öffnen\"")) << asked;
    EXPECT_NE(std::string::npos, asked.find("\"Programme|*.exe; *.com; *.bat|Alle Dateitypen|*.*\"")) << asked;
    EXPECT_NE(std::string::npos, asked.find((desktop.folders.windows + u"/Desktop"_s).toStdString())) << asked;
}

TEST_F(OptionsDialog, MarkingTheChangeOfListsTellsWhatItDoes)
{
    start();
    (void)boxes();
    desktop.messages.answer(Answer::Ok);
    inDialog([this] {
        turn(form().bShowChange);
        turn(form().bShowChange);
    });
    EXPECT_EQ("box title \" Wiedergabelisten abspielen\" text \"Haben Sie die Option ''Alle Playlisten nacheinander "
              "abspielen'' aktiviert, dann springt die Listenanzeige zur nächsten Wiedergabeliste sobald die vorherige "
              "den letzten Song abgespielt hat. Wenn Sie diese Option aktivieren, verändert sich die markierte "
              "Position in der Listenanzeige nicht.\" icon information buttons ok answer ok",
              boxes());
}

TEST_F(OptionsDialog, AfterOkTheMarksOfTheMainWindowFollow)
{
    start();
    for (const bool on : {false, true}) {
        inDialog([this] {
            for (CheckBox* box :
                 {&form().bFolderView, &form().bLokalePlayliste, &form().bCreateFolder, &form().bShowDate})
                turn(*box);
            form().BReady.Click();
        });
        EXPECT_EQ(on, root().mnuAddSoundfiles.Checked.value());
        EXPECT_EQ(on, root().mnuLokalePlayliste.Checked.value());
        EXPECT_EQ(on, root().mnuHandling[6].Checked.value());
        EXPECT_EQ(on, root().mnuDatumsanzeige.Checked.value());
        EXPECT_EQ(on, root().pDatum.Visible.value());
        EXPECT_EQ(on, root().tSoundzahl.Visible.value());
    }
}

TEST_F(OptionsDialog, TheSwitchForTheTipsIsWrittenOnlyIfItWasTurned)
{
    start();
    inDialog([this] { form().BReady.Click(); });
    EXPECT_EQ("(absent)", setting(u"HelpDirekt"_s).toStdString());
    inDialog([this] {
        turn(form().bHelpDirekt);
        form().BReady.Click();
    });
    EXPECT_EQ("dword 1", setting(u"HelpDirekt"_s).toStdString());
    inDialog([this] {
        EXPECT_TRUE(form().bHelpDirekt.Value.value());
        turn(form().bHelpDirekt);
        form().BReady.Click();
    });
    EXPECT_EQ("dword 0", setting(u"HelpDirekt"_s).toStdString());
}

TEST_F(OptionsDialog, HelpOpensTheTopicOfTheSettings)
{
    put(desktop.folders.program + u"/Orvantine.chm"_s, "x");
    start();
    inDialog([this] { form().bHilfe.Click(); });
    ASSERT_EQ(1U, desktop.launcher.started.size());
    EXPECT_EQ(
        (u"hh.exe "_s + desktop.folders.program + u"/Orvantine.chm::/4.0 Einstellungen festlegen.htm"_s).toStdString(),
        desktop.launcher.started[0].command.toStdString());
}

} // namespace orvantine::fake
