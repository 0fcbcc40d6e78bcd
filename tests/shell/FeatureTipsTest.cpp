#include "app/FeatureTips.h"
#include "app/Direkthilfe.h"
#include "shell/CommandTable.h"

#include "catalogue/CatalogueWorld.h"

#include <QFile>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString Warden = u"Software\\Verdanis\\Quelltextwart"_s;

class FeatureTips : public CatalogueWorld
{
protected:
    FeatureTips()
    {
        setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
        putCatalogue({u"Erste"_s});
    }

    Direkthilfe& form() { return *root().direkthilfe; }
    [[nodiscard]] QString tipFile() const { return desktop.folders.program + u"/Orvantine.tip"_s; }
    void tips(const QByteArray& text) { put(tipFile(), text); }
    /// The tip comes up, and this is what the user does.
    void expectTip(const std::function<void()>& act = {})
    {
        desktop.forms().whileModal(u"Direkthilfe"_s, [this, act](Form& shown) {
            if (act)
                act();
            if (shown.Visible)
                form().BReady.Click();
        });
    }
    /// The program ends while the tip of a command is up. What is done behind that.
    [[nodiscard]] std::string behindTheEndIn(const std::function<void()>& command)
    {
        expectTip([this] {
            root().services.events.endProcess();
            root().services.forms.unload(form());
        });
        forgetCalls();
        command();
        const QStringList all = desktop.log.lines();
        return lines(all.mid(all.indexOf(u"events.endProcess"_s) + 1));
    }
    [[nodiscard]] std::string shown() const { return calls({u"forms.showModal"_s}); }
    [[nodiscard]] std::string warden(const QString& name)
    {
        const auto value = desktop.settings.peek(Hive::CurrentUser, Warden, name);
        return value ? described(*value).toStdString() : "(absent)";
    }
};

} // namespace

TEST_F(FeatureTips, WithoutTheFileEveryCommandRunsWithNoDialog)
{
    start();
    forgetCalls();
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
    EXPECT_FALSE(root().mnuAddSoundfiles.Checked.value());
    EXPECT_EQ("", shown());
}

TEST_F(FeatureTips, TheTipShowsTheTextsOfItsNumberAndTheCommandRunsBehindIt)
{
    tips("[Tips]\r\n512a=Ordner\r\n512b=Was er tut.\r\n512c=Wie man es nimmt.\r\n");
    start();
    expectTip([this] {
        EXPECT_EQ("Orvanten Manager\rOrdner", form().Caption.value().toStdString());
        EXPECT_EQ("512", form().RHelpID.Caption.value().toStdString());
        EXPECT_EQ("Das folgende Problem wurde entdeckt:", form().RProblem.Caption.value().toStdString());
        EXPECT_EQ("Was er tut.\n\nWie man es nimmt.", form().RText.Caption.value().toStdString());
        EXPECT_EQ("&Diesen Dialog beim nächsten Start wieder anzeigen ",
                  form().BHelpShow.Caption.value().toStdString());
        EXPECT_EQ("&Nachrichten zu allen Themen nicht wieder anzeigen ",
                  form().BHelpDisabled.Caption.value().toStdString());
        EXPECT_EQ("&Weiter", form().BReady.Caption.value().toStdString());
        EXPECT_TRUE(root().mnuAddSoundfiles.Checked.value());
    });
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
    EXPECT_FALSE(root().mnuAddSoundfiles.Checked.value());
}

TEST_F(FeatureTips, AFileWithoutTheNumbersKeysShowsEmptyTexts)
{
    for (const QByteArray& text :
         {QByteArray(), QByteArray("[Tips]\r\n"), QByteArray("\x00\xFF\x01[Tips", 8), QByteArray(1000, '\xFF')}) {
        tips(text);
        desktop.newProcess();
        start();
        expectTip([this] {
            EXPECT_EQ("Orvanten Manager\r", form().Caption.value().toStdString());
            EXPECT_EQ("\n\n", form().RText.Caption.value().toStdString());
        });
        ASSERT_TRUE(root().mnuAddSoundfiles.press());
    }
}

TEST_F(FeatureTips, AmongAHundredThousandKeysTheNumbersOwnAreFound)
{
    QByteArray text = "[Tips]\r\n";
    for (int i = 1000; i < 34400; ++i)
        for (const char key : {'a', 'b', 'c'})
            text += QByteArray::number(i) + key + "=x\r\n";
    tips(text + "512b=gefunden 100 % <b>fett</b>\r\n512c=" + QByteArray(300, 'w') + "\r\n");
    start();
    expectTip([this] {
        // Read through the profile: 254 characters and no more.
        EXPECT_EQ("gefunden 100 % <b>fett</b>\n\n" + std::string(254, 'w'), form().RText.Caption.value().toStdString());
    });
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
}

TEST_F(FeatureTips, TheGateFollowsTheValueOfTheNumberAndHelpDirektSilencesAll)
{
    struct Case
    {
        std::optional<SettingValue> own, all;
        int result;
    };
    start();
    const std::vector<Case> cases{{{}, {}, 1},
                                  {dwordSetting(0), {}, 1},
                                  {dwordSetting(1), {}, 0},
                                  {stringSetting(u"1"_s), {}, 0},
                                  {dwordSetting(7), {}, 0},
                                  {{}, dwordSetting(0), 1},
                                  {{}, dwordSetting(1), 0},
                                  {dwordSetting(0), dwordSetting(1), 0},
                                  {dwordSetting(1), dwordSetting(0), 0}};
    const QString key = u"Software\\Verdanis\\Orvant Manager"_s;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        desktop.settings.drop(Hive::CurrentUser, key, u"113"_s);
        desktop.settings.drop(Hive::CurrentUser, key, u"HelpDirekt"_s);
        if (cases[i].own)
            setting(u"113"_s, *cases[i].own);
        if (cases[i].all)
            setting(u"HelpDirekt"_s, *cases[i].all);
        EXPECT_EQ(cases[i].result, DirektHilfen(root(), 113)) << i;
    }
}

TEST_F(FeatureTips, AfterTickingNotAgainTheSameTipComesUpAgainNextTime)
{
    tips("[Tips]\r\n");
    start();
    for (int round = 0; round < 2; ++round) {
        expectTip([this] {
            form().BHelpShow.Value = false;
            form().BHelpDisabled.Value = true;
        });
        ASSERT_TRUE(root().mnuAddSoundfiles.press());
    }
    EXPECT_EQ("(absent)", setting(u"512"_s).toStdString());
    EXPECT_EQ("(absent)", setting(u"HelpDirekt"_s).toStdString());
}

TEST_F(FeatureTips, TheChoiceIsFlippedOnTheWayInAndOutAndGoesToAnotherKey)
{
    tips("[Tips]\r\n");
    start();
    expectTip([this] {
        EXPECT_TRUE(form().BHelpShow.Value.value());
        EXPECT_FALSE(form().BHelpDisabled.Value.value());
    });
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
    EXPECT_EQ("dword 0", warden(u"512"_s));
    EXPECT_EQ("dword 1", warden(u"HelpDirekt"_s));
    expectTip([this] {
        form().BHelpShow.Value = false;
        form().BHelpDisabled.Value = true;
    });
    ASSERT_TRUE(root().mnuErrorDisplay.press());
    EXPECT_EQ("dword 1", warden(u"513"_s));
    EXPECT_EQ("dword 0", warden(u"HelpDirekt"_s));
}

TEST_F(FeatureTips, TheHeightIsThatOfTheTextAnd1000)
{
    tips("[Tips]\r\n");
    start();
    form().RText.Height = 450;
    expectTip([this] { EXPECT_EQ(1450, form().Height.value()); });
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
}

TEST_F(FeatureTips, TheClicksOfTheStartShowNoTip)
{
    tips("[Tips]\r\n");
    start();
    EXPECT_EQ("", shown());
}

TEST_F(FeatureTips, TheProgramThatEndsInATipRunsNoCommandBehindIt)
{
    tips("[Tips]\r\n");
    start();
    expectTip([this] {
        root().services.events.endProcess();
        root().services.forms.unload(form());
    });
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
    EXPECT_TRUE(root().mnuAddSoundfiles.Checked.value());
}

TEST_F(FeatureTips, TheProgramThatEndsInTheTipOf410CopiesNoDatabaseAndNamesNoTrack)
{
    tips("[Tips]\r\n");
    desktop.tags.tracks[u"/m/Erste 1.mp3"_s] = {.title = u"Eins"_s, .artist = u"A"_s};
    start();
    tracks().select(1);
    tracks().Click();
    ASSERT_EQ("A", root().sAnzeige[2].Caption.value().toStdString());
    EXPECT_EQ("forms.unload Direkthilfe", behindTheEndIn([this] { root().mnuSetTagName.press(); }));
}

TEST_F(FeatureTips, TheProgramThatEndsInTheTipOf313AsksForNoCover)
{
    tips("[Tips]\r\n");
    start();
    EXPECT_EQ("forms.unload Direkthilfe", behindTheEndIn([this] { root().pCovers.Click(); }));
}

TEST_F(FeatureTips, TheProgramThatEndsInTheTipOf715ReadsNeitherTheTrackNorItsList)
{
    tips("[Tips]\r\n");
    put(desktop.folders.program + u"/Orvantine.dll"_s, "x");
    const std::vector<std::function<void()>> commands{[this] { tracks().Click(); },
                                                      [this] { root().mnuEigenschaften.press(); },
                                                      [this] { root().mnuDateiEigenschaften.press(); }};
    for (const auto& command : commands) {
        desktop.newProcess();
        putTrack(u"Erste 1"_s);
        start();
        tracks().select(1);
        root().mnuErrorDisplay.Checked = true;
        desktop.disk().remove(u"/m/Erste 1.mp3"_s);
        EXPECT_EQ("forms.unload Direkthilfe", behindTheEndIn(command));
    }
}

TEST_F(FeatureTips, ATipThatIsUpKeepsItsTextsWhateverAsksForAnotherOne)
{
    tips("[Tips]\r\n512a=Ordner\r\n512b=Was.\r\n512c=Wie.\r\n513a=Fehler\r\n513b=x\r\n513c=y\r\n");
    start();
    const bool before = root().mnuErrorDisplay.Checked.value();
    forgetCalls();
    expectTip([this, before] {
        ASSERT_TRUE(root().mnuErrorDisplay.press());
        EXPECT_NE(before, root().mnuErrorDisplay.Checked.value());
        EXPECT_EQ("512", form().RHelpID.Caption.value().toStdString());
        EXPECT_EQ("Orvanten Manager\rOrdner", form().Caption.value().toStdString());
        EXPECT_EQ("Was.\n\nWie.", form().RText.Caption.value().toStdString());
    });
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
    EXPECT_EQ("forms.showModal Direkthilfe", shown());
    EXPECT_EQ("dword 0", warden(u"512"_s));
    EXPECT_EQ("(absent)", warden(u"513"_s));
}

TEST_F(FeatureTips, AFileThatIsFarTooLargeForTipsShowsNone)
{
    const auto filled = [](qsizetype size) {
        QByteArray text = "[Tips]\r\n512a=Ordner\r\n";
        for (int i = 1000; text.size() < size; ++i)
            text += QByteArray::number(i) + "a=x\r\n";
        return text;
    };
    tips(filled((1 << 20) + 1));
    start();
    forgetCalls();
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
    EXPECT_FALSE(root().mnuAddSoundfiles.Checked.value());
    EXPECT_EQ("", shown());
    EXPECT_EQ("", calls({u"files.read"_s}));
}

TEST_F(FeatureTips, TheResetAsksTheGateOfOneNumberAndShowsTheTextsOfAnother)
{
    tips("[Tips]\r\n510a=Spalten\r\n510b=x\r\n790a=Zurücksetzen\r\n790b=Leert alles.\r\n790c=Vorher sichern.\r\n");
    start();
    const auto reset = [this] {
        desktop.messages.answer(Answer::Ok);
        root().mnuDeleteDatabase.press();
        EXPECT_TRUE(desktop.messages.shown().back().text.startsWith(u"Die Systemkomponente ''Laubfeger.dll''"));
    };
    expectTip([this] {
        EXPECT_EQ("790", form().RHelpID.Caption.value().toStdString());
        EXPECT_EQ("Orvanten Manager\rZurücksetzen", form().Caption.value().toStdString());
        EXPECT_EQ("Leert alles.\n\nVorher sichern.", form().RText.Caption.value().toStdString());
    });
    reset();
    setting(u"790"_s, dwordSetting(1));
    expectTip();
    reset();
    setting(u"510"_s, dwordSetting(1));
    reset();
}

TEST_F(FeatureTips, TheFileThatIsShippedHasThreeTextsForEachNumber)
{
    QFile file(QStringLiteral(ORVANTINE_TIPS));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray shipped = file.readAll();
    tips(shipped);
    start();
    const std::vector<int> numbers{110, 111, 112, 113, 114, 115, 310, 311, 312, 313, 410, 411, 510, 511,
                                   512, 513, 514, 515, 710, 711, 712, 713, 714, 715, 719, 720, 790};
    EXPECT_EQ(static_cast<qsizetype>(numbers.size() * 3), shipped.count('='));
    for (const int number : numbers)
        for (const QChar key : {u'a', u'b', u'c'}) {
            const QString name = QString::number(number) + key;
            const QString text = desktop.profiles().value(tipFile(), u"Tips"_s, name);
            EXPECT_GT(text.size(), 4) << name.toStdString();
            EXPECT_LE(text.size(), 254) << name.toStdString();
            // Where something changes it is said how to undo it.
            const bool reads = number == 312 || number == 713 || number == 715;
            EXPECT_TRUE(key != u'c' || reads || text.contains(u"ückgängig: "_s)) << name.toStdString();
        }
    for (const auto& rows : {barRows(root()), popupRows(root())})
        for (const CommandRow& row : rows)
            EXPECT_TRUE(row.tip == 0 || std::find(numbers.begin(), numbers.end(), row.tip) != numbers.end()) << row.tip;
}

TEST_F(FeatureTips, ASecondPressInTheWaitOfTheFirstChangesNothing)
{
    tips("[Tips]\r\n");
    start();
    const auto stored = [this](const QString& name) {
        const std::optional<SettingValue> value = desktop.settings.peek(Hive::CurrentUser, Warden, name);
        return value ? described(*value).toStdString() : "(absent)";
    };
    expectTip([this] {
        desktop.events().atYield(1, [this] { form().BReady.Click(); });
        form().BReady.Click();
    });
    ASSERT_TRUE(root().mnuAddSoundfiles.press());
    EXPECT_EQ("dword 0", stored(u"512"_s));
    EXPECT_EQ("dword 1", stored(u"HelpDirekt"_s));
}

} // namespace orvantine::fake
