#include "shell/Dialoge.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

constexpr int Cancel = 0;
constexpr int Back = 1;
constexpr int Next = 2;

/// Below "/musik" lie a track, two folders with tracks, one of them with another one in it, and one without.
class Welcome : public CatalogueWorld
{
protected:
    Welcome()
    {
        setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
        for (const QString& track : {u"/musik/oben.mp3"_s, u"/musik/Rock/r1.mp3"_s, u"/musik/Rock/r2.wav"_s,
                                     u"/musik/Rock/CD 1/c1.mp3"_s, u"/musik/Jazz/j1.wma"_s, u"/musik/leer/text.txt"_s})
            put(track, "mp3");
    }

    Dialoge& form() { return *root().dialoge; }
    void press(int button)
    {
        ASSERT_TRUE(form().bButton[button].Enabled.value());
        form().bButton[button].Click();
    }
    void begin()
    {
        start();
        ASSERT_TRUE(form().Visible.value());
        press(Next);
        form().tOrdner.Text = u"/musik"_s;
    }
    /// Enabled states of the three buttons, the page, and the caption of the third.
    [[nodiscard]] std::string state()
    {
        std::string text = std::to_string(form().page.value()) + ' ';
        for (const int button : {Cancel, Back, Next})
            text += form().bButton[button].Enabled.value() ? '1' : '0';
        return text + ' ' + form().bButton[Next].Caption.value().toStdString();
    }
    [[nodiscard]] std::string names()
    {
        QStringList all;
        for (int row = 1; row <= catalogue().count(); ++row)
            all += catalogue().subItem(row, 1) + u' ' + catalogue().subItem(row, 3);
        return lines(all);
    }
    [[nodiscard]] std::string word() { return form().progress.Caption.value().toStdString(); }
};

} // namespace

TEST_F(Welcome, TheTextsAreTheToldOnes)
{
    EXPECT_EQ(" Herzlich Willkommen", form().Caption.value().toStdString());
    EXPECT_EQ("Abbruch|Zurück|Weiter", (form().bLabel[0].Caption.value() + u'|' + form().bLabel[1].Caption.value() +
                                        u'|' + form().bLabel[2].Caption.value())
                                           .toStdString());
    EXPECT_EQ("Möglicherweise haben Sie auch schon festgestellt, dass es gar nicht so leicht ist seine Musiklisten "
              "übersichtlich in einem Programm zu verwalten. Diese Zeiten sind jedoch vorbei, denn mit der "
              "Orvantenverwaltung von Verdanis haben Sie eine übersichtliche und unerhört gute Listenverwaltung.",
              form().RCaption.Caption.value().toStdString());
    EXPECT_EQ("Es können automatische Wiedergabelisten erzeugt werden. Geben Sie einen Ordner an, indem Sie die "
              "Sounddateien speichern. Unterverzeichnisse werden anschließend als Wiedergabeliste hinzugefügt.",
              form().RHinweis.Caption.value().toStdString());
    EXPECT_EQ("Unterordner in neue Playliste hinzufügen ", form().bSubDir.Caption.value().toStdString());
    EXPECT_EQ("Sounds in seperate Playliste einfügen ", form().bSndfiles.Caption.value().toStdString());
    EXPECT_EQ("Bitte haben Sie einen kleinen Moment Geduld. Die Sounddateien werden im ausgewählten Ordner überprüft "
              "und Ihre Wiedergabelisten werden jetzt zusammengestellt.",
              form().Label1.Caption.value().toStdString());
    EXPECT_EQ("Wenn Sie den Vorgang abbrechen, dann werden die Playlisten unvollständig in den Orvanten Manager "
              "hinzugefügt.",
              form().Label2.Caption.value().toStdString());
}

TEST_F(Welcome, ThePagesFollowOneAnother)
{
    start();
    EXPECT_EQ("0 101 Weiter", state());
    press(Next);
    EXPECT_EQ("1 111 Weiter", state());
    press(Back);
    EXPECT_EQ("0 101 Weiter", state());
    press(Cancel);
    EXPECT_FALSE(form().Visible.value());
    EXPECT_EQ("", names());
}

TEST_F(Welcome, EachFolderBecomesAListAndTheFirstOnePlays)
{
    begin();
    press(Next);
    EXPECT_EQ("2 001 Fertig", state());
    EXPECT_EQ("musik 1\nJazz 1\nRock 2\nRock - CD 1 1", names());
    EXPECT_EQ("Hinzugefügt: 4 Wiedergabelisten mit 5 Sounddateien.", word());
    EXPECT_EQ("musik (1)\nJazz (1)\nRock (2)\nRock - CD 1 (1)", lines(form().LFindDir.List));
    EXPECT_EQ("/musik/Rock/r1.mp3\r\n/musik/Rock/r2.wav\r\n", bytes(listPath(u"Rock"_s)).toStdString());
    EXPECT_FALSE(form().Label1.Visible.value());
    EXPECT_TRUE(form().play.Visible.value());
    // The housekeeping lets the player's commands be pressed.
    root().Timer2.Tick();
    press(Next);
    EXPECT_FALSE(form().Visible.value());
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ("/musik/oben.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_TRUE(root().pPausePlayer.Enabled.value());
    EXPECT_EQ("/musik/oben.mp3", desktop.mediaplayer().URL().toStdString());
}

TEST_F(Welcome, FoldersOfAnyDepthBecomeLists)
{
    put(u"/musik/Genre/Künstler/Jahr/Album/CD 2/tief.mp3"_s, "mp3");
    begin();
    press(Next);
    EXPECT_EQ("musik 1\nJazz 1\nRock 2\nRock - CD 1 1\nGenre - Künstler - Jahr - Album - CD 2 1", names());
    EXPECT_EQ("Hinzugefügt: 5 Wiedergabelisten mit 6 Sounddateien.", word());
}

TEST_F(Welcome, WithoutTheMarkNothingPlays)
{
    begin();
    press(Next);
    form().play.Value = false;
    root().Timer2.Tick();
    press(Next);
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
}

TEST_F(Welcome, TheTwoMarksSayWhatIsAdded)
{
    begin();
    form().bSubDir.Value = false;
    press(Next);
    EXPECT_EQ("musik 1", names());
    EXPECT_EQ("Hinzugefügt: 1 Wiedergabeliste mit 1 Sounddatei.", word());
    form().play.Value = false;
    press(Next);

    root().services.forms.show(form());
    press(Next);
    form().tOrdner.Text = u"/musik/Rock"_s;
    form().bSndfiles.Value = false;
    press(Next);
    EXPECT_EQ("musik 1\nCD 1 1", names());
}

TEST_F(Welcome, WithoutAFolderOrAMarkThePageSaysWhatIsMissing)
{
    begin();
    for (const QString& none : {QString(), u"   "_s, u"/weg"_s, u"/musik/oben.mp3"_s}) {
        form().tOrdner.Text = none;
        press(Next);
        EXPECT_EQ(1, form().page.value());
        EXPECT_EQ("Bitte wählen Sie einen Ordner, der vorhanden ist.", form().refusal.Caption.value().toStdString());
    }
    form().tOrdner.Text = u"/musik/"_s;
    form().bSubDir.Value = false;
    form().bSndfiles.Value = false;
    press(Next);
    EXPECT_EQ("Bitte wählen Sie, was hinzugefügt werden soll: Unterordner, Sounds oder beides.",
              form().refusal.Caption.value().toStdString());
    form().bSubDir.Value = true;
    press(Next);
    EXPECT_EQ("", form().refusal.Caption.value().toStdString());
    EXPECT_EQ(2, form().page.value());
}

TEST_F(Welcome, AFolderWithoutSoundsLeadsBack)
{
    begin();
    form().tOrdner.Text = u"/musik/leer"_s;
    press(Next);
    EXPECT_EQ("2 011 Fertig", state());
    EXPECT_EQ("In diesem Ordner wurden keine Sounddateien gefunden. Gehen Sie zurück und wählen Sie einen anderen.",
              word());
    EXPECT_FALSE(form().play.Visible.value());
    press(Back);
    EXPECT_EQ("1 111 Weiter", state());
}

TEST_F(Welcome, CancelLeavesTheListsThatStandAndSaysSo)
{
    begin();
    // A file of that name keeps its track.
    put(listPath(u"musik"_s), (putTrack(u"alt"_s) + u"\r\n\r\n"_s).toUtf8());
    const auto added = form().LFindDir.List.addNotifier([this] {
        if (form().LFindDir.List.value().size() == 2)
            form().bButton[Cancel].Click();
    });
    press(Next);
    EXPECT_EQ("musik 2\nJazz 1", names());
    EXPECT_EQ("Abgebrochen. Hinzugefügt: 2 Wiedergabelisten mit 2 Sounddateien. 2 Ordner wurden nicht übernommen.",
              word());
    EXPECT_TRUE(form().Visible.value());
}

TEST_F(Welcome, TheFormThatIsClosedMeanwhileStopsTheWork)
{
    begin();
    const auto added = form().LFindDir.List.addNotifier([this] {
        if (form().LFindDir.List.value().size() == 1)
            root().services.forms.unload(form());
    });
    press(Next);
    EXPECT_EQ("musik 1", names());
    EXPECT_FALSE(form().Visible.value());
    EXPECT_FALSE(form().working.value());
}

TEST_F(Welcome, TheFullCatalogueIsToldOnceAndWhatIsLeftIsCounted)
{
    QByteArray index;
    for (int row = 1; row <= 159; ++row)
        index += indexRow(row, {.name = u"L%1"_s.arg(row), .path = putList(u"L"_s, {putTrack(u"t"_s)})});
    putDatabase(index);
    begin();
    (void)boxes();
    desktop.messages.answer(Answer::Ok);
    press(Next);
    EXPECT_EQ("box title \" Wiedergabelisten verwalten\" text \"Die maximale Anzahl von Wiedergabelisten wurde "
              "erreicht. \\nBitte löschen Sie eine der 160 Playlisten aus der Liste.\" icon critical buttons ok answer "
              "ok",
              boxes());
    EXPECT_EQ(160, catalogue().count());
    EXPECT_EQ("Hinzugefügt: 1 Wiedergabeliste mit 1 Sounddatei. 3 Ordner wurden nicht übernommen.", word());
}

TEST_F(Welcome, WhileTheProgramStartsThePageWaits)
{
    begin();
    root().loaded = false;
    press(Next);
    EXPECT_EQ("Bitte einen Moment Geduld: Das Programm ist noch beschäftigt.",
              form().refusal.Caption.value().toStdString());
    EXPECT_EQ(1, form().page.value());
    root().loaded = true;
}

TEST_F(Welcome, WhoeverWantsNoTipsSaysSoAtOnce)
{
    start();
    EXPECT_TRUE(form().tips.Value.value());
    press(Cancel);
    EXPECT_EQ("(absent)", setting(u"HelpDirekt"_s).toStdString());
    root().services.forms.show(form());
    form().tips.Value = false;
    press(Cancel);
    EXPECT_EQ("dword 1", setting(u"HelpDirekt"_s).toStdString());
    root().services.forms.show(form());
    EXPECT_FALSE(form().tips.Value.value());
    form().tips.Value = true;
    press(Cancel);
    EXPECT_EQ("dword 0", setting(u"HelpDirekt"_s).toStdString());
}

TEST_F(Welcome, WhatTheOptionsSayOfTheTipsMeanwhileStays)
{
    start();
    setting(u"HelpDirekt"_s, dwordSetting(1));
    press(Cancel);
    EXPECT_EQ("dword 1", setting(u"HelpDirekt"_s).toStdString());
    root().services.forms.show(form());
    EXPECT_FALSE(form().tips.Value.value());
    setting(u"HelpDirekt"_s, dwordSetting(0));
    press(Cancel);
    EXPECT_EQ("dword 0", setting(u"HelpDirekt"_s).toStdString());
}

TEST_F(Welcome, TheMusicFolderIsProposed)
{
    putFolder(desktop.folders.music);
    start();
    EXPECT_EQ(desktop.folders.music.toStdString(), form().tOrdner.Text.value().toStdString());
}

TEST_F(Welcome, TheChooserPutsItsFolderIntoTheField)
{
    begin();
    desktop.choosers.chooseFolder(u"/musik/Rock"_s);
    form().bOrdner.Click();
    EXPECT_EQ("/musik/Rock", form().tOrdner.Text.value().toStdString());
    desktop.choosers.cancel(ChooserKind::Folder);
    form().bOrdner.Click();
    EXPECT_EQ("/musik/Rock", form().tOrdner.Text.value().toStdString());
}

TEST_F(Welcome, TheProgramThatEndsMeanwhileAddsNoFurtherList)
{
    begin();
    const auto added = form().LFindDir.List.addNotifier([this] {
        if (form().LFindDir.List.value().size() == 1)
            root().services.events.endProcess();
    });
    press(Next);
    EXPECT_EQ("musik 1", names());
}

} // namespace orvantine::fake
