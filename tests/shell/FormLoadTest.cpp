#include "support/DesktopTest.h"

#include "playback/PlayerControl.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class FormLoad : public DesktopTest
{
protected:
    /// Left, top, width, height.
    [[nodiscard]] std::string geometry()
    {
        return QStringLiteral("%1 %2 %3 %4")
            .arg(root().Left.value())
            .arg(root().Top.value())
            .arg(root().Width.value())
            .arg(root().Height.value())
            .toStdString();
    }

    void putList(const QString& name, const QByteArray& text) { put(data() + u"Playlisten/"_s + name, text); }

    /// Rows by name, each with a list of two missing tracks in "Playlisten".
    void putCatalogue(const QStringList& names)
    {
        QByteArray database = "[Index]\r\n";
        for (int row = 1; row <= names.size(); ++row) {
            const QString path = data() + u"Playlisten/"_s + names[row - 1] + u".m3u"_s;
            put(path, "/fehlt/eins.mp3\r\n/fehlt/zwei.mp3\r\n");
            database += QStringLiteral("%1a=00%2\r\n%1b=%3\r\n%1c=%4\r\n%1d=2\r\n")
                            .arg(row)
                            .arg(row - 1)
                            .arg(names[row - 1], path)
                            .toUtf8();
        }
        put(data() + u"Orvantine.dat"_s, database);
    }
};

SettingValue word(int number)
{
    return {.type = SettingType::Dword, .text = {}, .bytes = QByteArray(1, static_cast<char>(number)) + "\0\0\0"_ba};
}

SettingValue text(const QString& value)
{
    return {.type = SettingType::String, .text = value, .bytes = {}};
}

} // namespace

TEST_F(FormLoad, AFirstRunMakesKeysFoldersAndDefaults)
{
    start();

    EXPECT_TRUE(desktop.settings.keyExists(Hive::CurrentUser, u"Software\\Verdanis"_s));
    EXPECT_EQ(data().toStdString(), root().tDatenbank.Text.value().toStdString());
    for (const QString& folder : {u"Burning"_s, u"Playlisten"_s, u"Resource"_s})
        EXPECT_TRUE(desktop.disk().isFolder(data() + folder)) << folder.toStdString();

    EXPECT_TRUE(root().mnuErrorDisplay.Checked.value());
    EXPECT_TRUE(root().mnuLokalePlayliste.Checked.value());
    EXPECT_TRUE(root().mnuAddSoundfiles.Checked.value());
    EXPECT_TRUE(root().mnuHandling[6].Checked.value());
    EXPECT_TRUE(root().mnuWiederholung[3].Checked.value());
    EXPECT_TRUE(root().mnuOrvmenu[1].Checked.value());
    EXPECT_TRUE(root().mnuDatumsanzeige.Checked.value());
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ("forms.show Dialoge\nforms.show Dialoge", calls({u"forms.show Dialoge"_s}));
}

TEST_F(FormLoad, WhatKeepsEveryFileFromBeingChangedIsToldOnce)
{
    for (const auto& [trouble, reason] :
         {std::pair{FilesTrouble::NoSafePlace,
                    u"Der Ordner, in dem die bisherigen Fassungen Ihrer Dateien aufbewahrt werden, fehlt oder gehört "
                    u"nicht Ihnen allein.    \n"_s},
          std::pair{FilesTrouble::Unfinished,
                    u"Ein unterbrochener Vorgang kann noch nicht zurückgenommen werden: Der Datenträger ist voll, "
                    u"schreibgeschützt oder nicht erreichbar.    \n"_s}}) {
        FakeDesktop other;
        other.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
        other.memory()->Trouble = trouble;
        other.messages.answer(Answer::Ok, u" Orvanten Manager"_s,
                              reason + u"Solange das so ist, wird keine Datei geändert."_s);
        other.start();
        other.complainOfUnused();
    }
}

TEST_F(FormLoad, FilesThatWaitForTheirDiskAreToldQuietly)
{
    desktop.memory()->Waiting = QStringList{u"/media/stick/Rock.m3u"_s, u"/media/stick/Pop.m3u"_s};
    start();
    EXPECT_EQ("Wird beim nächsten Start zurückgenommen, wenn der Datenträger da ist: Rock.m3u und 1 weitere",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(FormLoad, TheLastPlaylistIsOpenUntilTheRememberedIndexIsSelected)
{
    putCatalogue({u"Erste"_s, u"Zweite"_s, u"Dritte"_s});
    start();
    EXPECT_EQ(3, catalogue().selectedRow());
    EXPECT_EQ("Dritte", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ(2, tracks().count());
}

TEST_F(FormLoad, ARememberedIndexSelectsItsRow)
{
    putCatalogue({u"Erste"_s, u"Zweite"_s, u"Dritte"_s});
    setting(u"Index"_s, {.type = SettingType::Binary, .text = {}, .bytes = "\2\0\0\0"_ba});
    start();
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("Zweite", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(FormLoad, AnIndexOfARowThatNoLongerExistsSelectsNothingNew)
{
    putCatalogue({u"Erste"_s});
    setting(u"Index"_s, {.type = SettingType::Binary, .text = {}, .bytes = "\7\0\0\0"_ba});
    start();
    EXPECT_EQ(1, catalogue().selectedRow());
}

TEST_F(FormLoad, AnIndexIsARowNumberInEveryFormAndNoughtOrLessSelectsNothingNew)
{
    putCatalogue({u"Erste"_s, u"Zweite"_s, u"Dritte"_s});
    struct Case
    {
        SettingValue stored;
        int row;
    };
    for (const Case& c :
         {Case{binarySetting(0), 3}, Case{binarySetting(-1), 3}, Case{binarySetting(1), 1}, Case{dwordSetting(2), 2},
          Case{text(u"1"_s), 1}, Case{text(u"0"_s), 3}, Case{text(u"-1"_s), 3}, Case{text(u"zwei"_s), 3}}) {
        SCOPED_TRACE(described(c.stored).toStdString());
        desktop.newProcess();
        setting(u"Index"_s, c.stored);
        start();
        EXPECT_EQ(c.row, catalogue().selectedRow());
        EXPECT_EQ(QStringList({u"Erste"_s, u"Zweite"_s, u"Dritte"_s})[c.row - 1],
                  root().tPlaylisteinträge.Caption.value());
        EXPECT_EQ(2, tracks().count());
    }
}

TEST_F(FormLoad, HideStartsMinimisedWithoutSplashAndPlays)
{
    putCatalogue({u"Erste"_s});
    start(u"/HIDE"_s);
    EXPECT_EQ("", calls({u"forms.show Startup"_s}));
    EXPECT_EQ(WindowState::Minimized, root().State.value());
    EXPECT_FALSE(root().Visible.value());
    EXPECT_EQ("1", root().Tag.toStdString());
    EXPECT_EQ("Wiedergabe stoppen ", root().mnuWiedergabe.Caption.value().toStdString());
}

TEST_F(FormLoad, PlayShowsTheSplashAndThenMinimisesAndPlays)
{
    putCatalogue({u"Erste"_s});
    start(u"/play"_s);
    EXPECT_EQ("forms.show Startup", calls({u"forms.show Startup"_s}));
    EXPECT_EQ(WindowState::Minimized, root().State.value());
    EXPECT_TRUE(root().Timer1.Enabled.value());
}

TEST_F(FormLoad, AProgramThatEndsInThePauseBeforeItPlaysPlaysNothing)
{
    putCatalogue({u"Erste"_s});
    const auto pauseBegins = root().State.addNotifier(
        [&] { desktop.events().after(std::chrono::milliseconds{500}, [&] { desktop.events().endProcess(); }); });
    start(u"/play"_s);
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ("", calls({u"Mediaplayer.URL"_s}));
    EXPECT_FALSE(root().Timer1.Enabled.value());
}

TEST_F(FormLoad, HideAndPlayTogetherStartANormalWindow)
{
    putCatalogue({u"Erste"_s});
    start(u"/hide /play"_s);
    EXPECT_EQ(WindowState::Normal, root().State.value());
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ("Wiedergabe starten ", root().mnuWiedergabe.Caption.value().toStdString().substr(1));
}

TEST_F(FormLoad, ANegativeStoredLeftLeavesTheCentredPosition)
{
    setting(u"Left"_s, text(u"-300"_s));
    setting(u"Top"_s, text(u"450"_s));
    start();
    EXPECT_EQ((28800 - root().Width.value()) / 2, root().Left.value());
    EXPECT_EQ(450, root().Top.value());
}

TEST_F(FormLoad, GeometryThatIsNoNumberIsPassedOver)
{
    for (const QString& rubbish : {u"abc"_s, u""_s, u"12abc"_s, u"nan"_s, u"inf"_s, u"1e3"_s, u"0x10"_s}) {
        SCOPED_TRACE(rubbish.toStdString());
        desktop.newProcess();
        for (const QString& name : {u"Height"_s, u"Width"_s, u"Left"_s, u"Top"_s})
            setting(name, text(rubbish));
        start();
        EXPECT_EQ("8100 3300 12600 9600", geometry());
    }
}

TEST_F(FormLoad, AFirstStartIsInTheMiddleOfThePrimaryScreenWhereverThatLies)
{
    desktop.screen.all = {{{30000, 600, 28800, 16200}, {30000, 600, 28800, 15600}}, {{0, 0, 30000, 16200}, {}}};
    start();
    EXPECT_EQ("38100 3900 12600 9600", geometry());
}

TEST_F(FormLoad, AWindowOnASecondScreenStaysThere)
{
    desktop.screen.all.push_back({{28800, 0, 28800, 16200}, {28800, 0, 28800, 16200}});
    setting(u"Left"_s, text(u"30000"_s));
    setting(u"Top"_s, text(u"150"_s));
    start();
    EXPECT_EQ("30000 150 12600 9600", geometry());
}

TEST_F(FormLoad, AWindowThatHasNoRoomOnTheScreenIsMadeToFitBelowItsFrame)
{
    struct Case
    {
        const char* name;
        DesktopScreen screen;
        const char* geometry;
    };
    for (const Case& c : {
             Case{"1024x600", {{0, 0, 15360, 9000}, {0, 0, 15360, 9000}}, "1380 0 12600 8400"},
             Case{"with a panel above", {{0, 0, 15360, 9000}, {0, 450, 15360, 8550}}, "1380 450 12600 7950"},
             Case{"1366x768 at 200 %", {{0, 0, 10245, 5760}, {0, 0, 10245, 5760}}, "0 0 10095 5160"},
         }) {
        SCOPED_TRACE(c.name);
        desktop.newProcess();
        desktop.screen.all = {c.screen};
        start();
        EXPECT_EQ(c.geometry, geometry());
    }
}

TEST_F(FormLoad, AWindowThatLiesBesideAllScreensComesBack)
{
    setting(u"Left"_s, text(u"60000"_s));
    setting(u"Top"_s, text(u"16000"_s));
    start();
    EXPECT_EQ("16050 6000 12600 9600", geometry());
}

TEST_F(FormLoad, AWindowThatReachesOverAnEdgeStaysWhereItWasPutAsLongAsItsTitleCanBeReached)
{
    struct Case
    {
        const char* name;
        QString left, top, height;
        const char* geometry;
    };
    for (const Case& c :
         {Case{"over the right edge", u"20000"_s, u"150"_s, u"9600"_s, "20000 150 12600 9600"},
          Case{"over the lower edge", u"150"_s, u"14000"_s, u"9600"_s, "150 14000 12600 9600"},
          Case{"over both", u"28200"_s, u"16050"_s, u"9600"_s, "28200 16050 12600 9600"},
          Case{"by nothing more than a strip", u"28201"_s, u"150"_s, u"9600"_s, "16050 150 12600 9600"},
          Case{"with half of its title", u"150"_s, u"16051"_s, u"9600"_s, "150 6000 12600 9600"},
          Case{"as tall as the screen below a title", u"0"_s, u"0"_s, u"15840"_s, "0 0 12600 15840"},
          Case{"beyond all numbers", u"99999999999"_s, u"99999999999"_s, u"9600"_s, "16050 6000 12600 9600"}}) {
        SCOPED_TRACE(c.name);
        desktop.newProcess();
        setting(u"Left"_s, text(c.left));
        setting(u"Top"_s, text(c.top));
        setting(u"Height"_s, text(c.height));
        start();
        EXPECT_EQ(c.geometry, geometry());
    }
}

TEST_F(FormLoad, AStartAndAnEndWithoutAMoveChangeNothingOfTheStoredPlace)
{
    setting(u"Left"_s, text(u"20000"_s));
    setting(u"Top"_s, text(u"14000"_s));
    start();
    root().mnuBeenden.Click();
    EXPECT_EQ("sz \"20000\" sz \"14000\"", (setting(u"Left"_s) + u' ' + setting(u"Top"_s)).toStdString());
}

TEST_F(FormLoad, ATitleUnderAPanelComesOutOfIt)
{
    desktop.screen.all = {{{0, 0, 28800, 16200}, {0, 600, 28800, 15600}}};
    setting(u"Left"_s, text(u"20000"_s));
    setting(u"Top"_s, text(u"0"_s));
    start();
    EXPECT_EQ("16050 600 12600 9600", geometry());
}

TEST_F(FormLoad, AHiddenWindowThatLiesBesideAllScreensComesUpInSight)
{
    const std::function<void()> ways[] = {[this] { desktop.instance.Activated(); },
                                          [this] { desktop.tray().setPresent(false); }};
    for (const auto& comesUp : ways) {
        desktop.newProcess();
        setting(u"Left"_s, text(u"60000"_s));
        setting(u"Top"_s, text(u"60000"_s));
        start(u"/hide"_s);
        // The screens of a session may come later than what starts with it.
        EXPECT_EQ("60000 60000 12600 9600", geometry());
        comesUp();
        EXPECT_TRUE(root().Visible.value());
        EXPECT_EQ("16050 6000 12600 9600", geometry());
    }
}

TEST_F(FormLoad, WithoutATrayAHiddenStartStandsOnTheScreen)
{
    desktop.trayPresent = false;
    desktop.newProcess();
    setting(u"Left"_s, text(u"60000"_s));
    setting(u"Top"_s, text(u"60000"_s));
    start(u"/hide"_s);
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ("16050 6000 12600 9600", geometry());
}

TEST_F(FormLoad, AStoredHeightOfNoughtIsAppliedAndCorrectedUpwards)
{
    setting(u"Height"_s, text(u"0"_s));
    start();
    EXPECT_EQ(7245, root().Height.value());
}

TEST_F(FormLoad, WithNoDataCopySetNothingIsCopiedAgain)
{
    put(desktop.folders.program + u"/Orvantine.dat"_s, "[Index]\r\n1b=Alt\r\n");
    setting(u"NoDataCopy"_s, word(1));
    start();
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.dat"_s).toStdString());
}

TEST_F(FormLoad, DataBesideTheProgramMovesToTheUserOnce)
{
    put(desktop.folders.program + u"/Orvantine.dat"_s, "[Options]\r\nSoundfiles=/m\r\n");
    put(desktop.folders.program + u"/Playlisten/Alt.m3u"_s, "/fehlt/lied.mp3\r\n");
    put(desktop.folders.program + u"/Resource/Alt.jpg"_s, "bild");
    desktop.messages.answer(Answer::Ok);
    start();
    EXPECT_EQ("[Options]\r\nSoundfiles=/m\r\n", bytes(data() + u"Orvantine.dat"_s).toStdString());
    EXPECT_EQ("/fehlt/lied.mp3\r\n", bytes(data() + u"Playlisten/Alt.m3u"_s).toStdString());
    EXPECT_EQ("bild", bytes(data() + u"Resource/Alt.jpg"_s).toStdString());
    EXPECT_NE("(absent)", setting(u"NoDataCopy"_s).toStdString());
}

TEST_F(FormLoad, ASecondInstanceEndsWithoutAMessage)
{
    desktop.instance.taken = true;
    start();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_FALSE(root().Visible.value());
    EXPECT_EQ("", boxes());
    EXPECT_FALSE(desktop.settings.keyExists(Hive::CurrentUser, u"Software\\Verdanis"_s));
}

} // namespace orvantine::fake
