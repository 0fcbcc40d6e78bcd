#include "shell/mnuAddCDs.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString ShellFolders = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"_s;
const QString FreeRip = u"Software\\MGShareware\\FreeRip3"_s;

class OutsidePrograms : public CatalogueWorld
{
protected:
    OutsidePrograms()
    {
        setting(u"Update"_s, stringSetting(u"20.11.2026"_s));
        putCatalogue({u"Erste"_s});
        start();
        click(1);
        tracks().select(2);
        desktop.launcher.started.clear();
    }

    [[nodiscard]] QString program(const QString& name) const { return desktop.folders.program + u'/' + name; }
    /// Kind, command line and arguments of what was started.
    [[nodiscard]] std::string started()
    {
        QStringList all;
        for (const LaunchRequest& request : std::exchange(desktop.launcher.started, {}))
            all += nameOf(request.kind) + u' ' + request.command + u" -> "_s + request.target +
                   (request.arguments.isEmpty() ? QString() : u" | "_s + request.arguments.join(u' '));
        return lines(all);
    }
    void ripper(const QString& path)
    {
        put(path, "x");
        setting(u"Ripper"_s, stringSetting(path));
        pass();
    }
    /// A pass of the housekeeping, which shows the command.
    void pass() { root().Timer2.Tick(); }
    /// A pass so many seconds after noon, and what is told then.
    [[nodiscard]] std::string passAt(int seconds)
    {
        root().quietLine.Caption = QString();
        desktop.events().setNow(QDateTime(QDate(2026, 11, 20), QTime(12, 0).addSecs(seconds)));
        pass();
        return root().quietLine.Caption.value().toStdString();
    }
};

} // namespace

TEST_F(OutsidePrograms, TheOtherPlayerGetsTheTrackOrThePlaylist)
{
    ASSERT_TRUE(root().mnuOpenMediaplayerEx[1].press());
    EXPECT_EQ("defaultplayer C:\\Programme\\Windows Media Player\\wmplayer.exe /m/Erste 2.mp3 -> /m/Erste 2.mp3",
              started());
    ASSERT_TRUE(root().mnuOpenMediaplayerEx[2].press());
    EXPECT_EQ("defaultplayer C:\\Programme\\Windows Media Player\\wmplayer.exe " + listPath(u"Erste"_s).toStdString() +
                  " -> " + listPath(u"Erste"_s).toStdString(),
              started());
    EXPECT_EQ("", boxes());
}

TEST_F(OutsidePrograms, TheFolderOfTheOtherPlayerIsThatOfTheMachinesPrograms)
{
    desktop.settings.put(Hive::LocalMachine, u"Software\\Microsoft\\Windows\\CurrentVersion"_s, u"ProgramFilesDir"_s,
                         stringSetting(u"D:\\Programs"_s));
    ASSERT_TRUE(root().mnuOpenMediaplayerEx[1].press());
    EXPECT_EQ("defaultplayer D:\\Programs\\Windows Media Player\\wmplayer.exe /m/Erste 2.mp3 -> /m/Erste 2.mp3",
              started());
}

TEST_F(OutsidePrograms, ForTheOtherPlayerTheOwnPlaybackStops)
{
    root().pSoundPlayer.Click();
    ASSERT_TRUE(root().pPausePlayer.Enabled.value());
    (void)boxes();
    desktop.messages.script({Answer::Ok, {}, u" Wiedergabe angehalten"_s, {}, [this] {
                                 EXPECT_FALSE(root().pPausePlayer.Enabled.value());
                                 EXPECT_EQ("", started());
                             }});
    ASSERT_TRUE(root().mnuOpenMediaplayerEx[1].press());
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
    EXPECT_NE("", started());
}

TEST_F(OutsidePrograms, WithoutATrackNothingIsHandedOver)
{
    desktop.messages.enter(u"Leer"_s);
    ASSERT_TRUE(root().mnuNeu.press());
    ASSERT_EQ(0, tracks().count());
    ASSERT_TRUE(root().mnuOpenMediaplayerEx[1].press());
    ASSERT_TRUE(root().mnuEingangsordner.press());
    EXPECT_EQ("", started());
}

TEST_F(OutsidePrograms, TheFileManagerShowsTheFolderOfTheTrack)
{
    ASSERT_TRUE(root().mnuEingangsordner.press());
    EXPECT_EQ("filemanager Explorer.exe /m/ -> /m", started());
}

TEST_F(OutsidePrograms, WithoutTheSiblingSendToSaysHowToAddIt)
{
    (void)boxes();
    desktop.messages.answer(Answer::Ok);
    ASSERT_TRUE(root().mnuSendtoInstall.press());
    const std::string box = boxes();
    EXPECT_NE(std::string::npos, box.find("Um diese Funktion hinzuzufügen führen Sie bitte Setup aus.\" icon")) << box;
    EXPECT_EQ("", started());
}

TEST_F(OutsidePrograms, ASiblingThatIsThereAndMayNotBeStartedIsNotSaidToBeMissing)
{
    (void)boxes();
    put(program(u"Versandhilfe.dll"_s), "x");
    desktop.log.failNext(u"launcher.start"_s);
    ASSERT_TRUE(root().mnuSendtoInstall.press());
    EXPECT_EQ("", boxes());
    EXPECT_EQ("Die Komponente „Versandhilfe.dll“ konnte nicht gestartet werden.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(OutsidePrograms, SendToStartsTheSibling)
{
    put(program(u"Versandhilfe.dll"_s), "x");
    ASSERT_TRUE(root().mnuSendtoInstall.press());
    EXPECT_EQ("program " + program(u"Versandhilfe.dll"_s).toStdString() + " -> " +
                  program(u"Versandhilfe.dll"_s).toStdString(),
              started());
}

TEST_F(OutsidePrograms, AnyOtherRipperIsJustStarted)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/anderer"_s);
    put(u"/r/CdRipper.ini"_s, "[General]\r\nMP3OutputDir=alt\r\n");
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("program /r/anderer -> /r/anderer", started());
    EXPECT_EQ("[General]\r\nMP3OutputDir=alt\r\n", bytes(u"/r/CdRipper.ini"_s).toStdString());
    EXPECT_EQ("sz \"/musik\"", setting(u"OutputDir"_s).toStdString());
    EXPECT_EQ("/musik", root().LRipper.Path.toStdString());
    EXPECT_FALSE(desktop.settings.keyExists(Hive::CurrentUser, FreeRip));
}

TEST_F(OutsidePrograms, TheFileNameOfTheProgramSetsTheKind)
{
    EXPECT_EQ(RipperKind::CDRIPPER, ripperKind(u"C:\\x\\CdRipper.exe"_s));
    EXPECT_EQ(RipperKind::CDRIPPER, ripperKind(u"/x/CDRIPPER.EXE"_s));
    EXPECT_EQ(RipperKind::FREERIPPER, ripperKind(u"/x/FreeCDRipper.exe"_s));
    EXPECT_EQ(RipperKind::FREERIP3, ripperKind(u"/x/FreeRip3.exe"_s));
    EXPECT_EQ(RipperKind::Other, ripperKind(u"/CdRipper.exe/anderer"_s));
    EXPECT_EQ(RipperKind::Other, ripperKind(QString()));
}

TEST_F(OutsidePrograms, TheIniOfCdRipperKeepsEveryByteButThoseOfItsKey)
{
    struct Case
    {
        QByteArray before, after;
    };
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/CdRipper.exe"_s);
    const std::vector<Case> cases{
        {"; Kopf\r\n[Other]\r\na = b \r\n[General]\r\nx=1\r\nMP3OutputDir=C:\\alt\r\ny=\"2\"\r\n",
         "; Kopf\r\n[Other]\r\na = b \r\n[General]\r\nx=1\r\nMP3OutputDir=/musik\r\ny=\"2\"\r\n"},
        {"[general]\r\nmp3outputdir=alt\r\n", "[general]\r\nmp3outputdir=/musik\r\n"},
        // The key twice: the first one counts.
        {"[General]\r\nMP3OutputDir=1\r\nMP3OutputDir=2\r\n", "[General]\r\nMP3OutputDir=/musik\r\nMP3OutputDir=2\r\n"},
        {"a=b\r\n", "a=b\r\n[General]\r\nMP3OutputDir=/musik\r\n"},
        {"", "[General]\r\nMP3OutputDir=/musik\r\n"}};
    for (const Case& one : cases) {
        put(u"/r/CdRipper.ini"_s, one.before);
        ASSERT_TRUE(root().mnuAddCDs.press());
        EXPECT_EQ(one.after.toStdString(), bytes(u"/r/CdRipper.ini"_s).toStdString());
        EXPECT_EQ(one.before.toStdString(), bytes(u"/r/CdRipper.bak"_s).toStdString());
        EXPECT_EQ("program /r/CdRipper.exe -> /r/CdRipper.exe", started());
    }
}

TEST_F(OutsidePrograms, AnIniInAnotherEncodingOrWithoutACopyStaysAsItIs)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/CdRipper.exe"_s);
    const QByteArray wide("\xFF\xFE[\0G\0", 6);
    put(u"/r/CdRipper.ini"_s, wide);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ(wide, bytes(u"/r/CdRipper.ini"_s));
    EXPECT_EQ("(missing)", bytes(u"/r/CdRipper.bak"_s).toStdString());

    put(u"/r/CdRipper.ini"_s, "[General]\r\n");
    desktop.log.failNext(u"files.copy"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("[General]\r\n", bytes(u"/r/CdRipper.ini"_s).toStdString());
    EXPECT_EQ("program /r/CdRipper.exe -> /r/CdRipper.exe\nprogram /r/CdRipper.exe -> /r/CdRipper.exe", started());
}

TEST_F(OutsidePrograms, TheIniAndItsCopyAreOneChange)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/CdRipper.exe"_s);
    put(u"/r/CdRipper.ini"_s, "[General]\r\nMP3OutputDir=alt\r\n");
    put(u"/r/CdRipper.bak"_s, "[General]\r\nMP3OutputDir=noch älter\r\n");
    desktop.log.failNext(u"files.replaceBytes \"/r/CdRipper.ini\""_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("[General]\r\nMP3OutputDir=alt\r\n", bytes(u"/r/CdRipper.ini"_s).toStdString());
    EXPECT_EQ("[General]\r\nMP3OutputDir=noch älter\r\n", bytes(u"/r/CdRipper.bak"_s).toStdString());
    EXPECT_EQ("program /r/CdRipper.exe -> /r/CdRipper.exe", started());
}

TEST_F(OutsidePrograms, AWriteProtectedCopyOfTheIniIsNoBlock)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/CdRipper.exe"_s);
    put(u"/r/CdRipper.ini"_s, "[General]\r\nMP3OutputDir=alt\r\n");
    put(u"/r/CdRipper.bak"_s, "uralt");
    desktop.memory()->setReadOnly(u"/r/CdRipper.bak"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("[General]\r\nMP3OutputDir=/musik\r\n", bytes(u"/r/CdRipper.ini"_s).toStdString());
    EXPECT_EQ("[General]\r\nMP3OutputDir=alt\r\n", bytes(u"/r/CdRipper.bak"_s).toStdString());
}

TEST_F(OutsidePrograms, OldBytesElsewhereInTheIniStayWhatTheyAre)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/CdRipper.exe"_s);
    const QByteArray before("; K\xF6pfe\r\n[General]\r\nK\xFCnstler=\xC4\r\nMP3OutputDir=C:\\M\xFCsik\r\nx=\xDF\r\n");
    put(u"/r/CdRipper.ini"_s, before);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ(QByteArray("; K\xF6pfe\r\n[General]\r\nK\xFCnstler=\xC4\r\nMP3OutputDir=/musik\r\nx=\xDF\r\n"),
              bytes(u"/r/CdRipper.ini"_s));
    EXPECT_EQ(before, bytes(u"/r/CdRipper.bak"_s));
}

TEST_F(OutsidePrograms, WithoutAnIniOneIsMadeAndNoCopy)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/CdRipper.exe"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("[General]\r\nMP3OutputDir=/musik\r\n", bytes(u"/r/CdRipper.ini"_s).toStdString());
    EXPECT_EQ("(missing)", bytes(u"/r/CdRipper.bak"_s).toStdString());
}

TEST_F(OutsidePrograms, WhatTheRipperPutsIntoItsFolderIsToldWhenNoMoreComes)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik/"_s));
    put(u"/musik/alt.mp3"_s, "mp3");
    ripper(u"/r/anderer"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("", passAt(16));
    put(u"/musik/1.mp3"_s, "mp3");
    put(u"/musik/text.txt"_s, "txt");
    EXPECT_EQ("", passAt(17));
    EXPECT_EQ("", passAt(22));
    put(u"/musik/2.wav"_s, "wav");
    EXPECT_EQ("", passAt(28));
    EXPECT_EQ("Vom CD-Ripper: 2 neue Sounddateien in „musik“. Hinzufügen mit „Sounddateien ...“.", passAt(34));
    EXPECT_EQ("", passAt(40));
    desktop.disk().remove(u"/musik/1.mp3"_s);
    EXPECT_EQ("", passAt(46));
    put(u"/musik/3.mp3"_s, "mp3");
    EXPECT_EQ("", passAt(52));
    EXPECT_EQ("Vom CD-Ripper: eine neue Sounddatei in „musik“. Hinzufügen mit „Sounddateien ...“.", passAt(58));
}

TEST_F(OutsidePrograms, AnotherFolderInTheListOfTheRipperIsNotTakenForTheWatchedOne)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik mit blanks"_s));
    putFolder(u"/musik mit blanks"_s);
    ripper(u"/r/anderer"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    put(u"/kratz/1.mp3"_s, "mp3");
    put(u"/kratz/2.mp3"_s, "mp3");
    // As while a packing empties its folder.
    const QString watched = std::exchange(root().LRipper.Path, u"/kratz"_s);
    EXPECT_EQ("", passAt(6));
    EXPECT_EQ("", passAt(12));
    EXPECT_EQ("", passAt(18));
    root().LRipper.Path = watched;
    put(u"/musik mit blanks/neu.mp3"_s, "mp3");
    EXPECT_EQ("", passAt(24));
    EXPECT_EQ("Vom CD-Ripper: eine neue Sounddatei in „musik mit blanks“. Hinzufügen mit „Sounddateien ...“.",
              passAt(30));
}

TEST_F(OutsidePrograms, ARipperThatCouldNotBeStartedIsNotWatched)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    putFolder(u"/musik"_s);
    ripper(u"/r/anderer"_s);
    desktop.log.failNext(u"launcher.start"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    put(u"/musik/neu.mp3"_s, "mp3");
    EXPECT_EQ("", passAt(6));
    EXPECT_EQ("", passAt(12));
    EXPECT_EQ("", passAt(18));
}

TEST_F(OutsidePrograms, FreeRip3GetsItsValues)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/FreeRip3.exe"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    const auto value = [this](const QString& name) {
        const auto found = desktop.settings.peek(Hive::CurrentUser, FreeRip, name);
        return found ? described(*found).toStdString() : "(absent)";
    };
    EXPECT_EQ("sz \"/musik\"", value(u"OutputPath"_s));
    EXPECT_EQ("sz \"3\"", value(u"Mp3Enc_WriteID3"_s));
    EXPECT_EQ("sz \"1\"", value(u"Mp3Enc_Mode"_s));
    EXPECT_EQ("program /r/FreeRip3.exe -> /r/FreeRip3.exe", started());
}

TEST_F(OutsidePrograms, TheOutputFolderIsTheStoredOneOrElseTheMusicFolderOrElseAskedFor)
{
    ripper(u"/r/anderer"_s);
    (void)boxes();
    desktop.messages.answer(Answer::Ok);
    desktop.choosers.cancel(ChooserKind::Folder);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("", started());
    EXPECT_EQ("box title \" CD-Ripper\" text \"Bitte wählen Sie das Verzeichnis für die encodierten Sounddateien. \" "
              "icon none buttons ok answer ok",
              boxes());

    desktop.messages.answer(Answer::Ok);
    desktop.choosers.chooseFolder(u"/gewählt"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("sz \"/gewählt\"", setting(u"Soundfiles"_s).toStdString());
    EXPECT_EQ("/gewählt", desktop.profiles().value(database(), u"Options"_s, u"Soundfiles"_s).toStdString());
    EXPECT_EQ("sz \"/gewählt\"", setting(u"OutputDir"_s).toStdString());
    EXPECT_EQ("program /r/anderer -> /r/anderer", started());

    desktop.settings.put(Hive::CurrentUser, ShellFolders, u"My Music"_s, stringSetting(u"/music"_s));
    setting(u"Soundfiles"_s, stringSetting(QString()));
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("sz \"/gewählt\"", setting(u"OutputDir"_s).toStdString());
    desktop.profiles().removeKey(database(), u"Options"_s, u"Soundfiles"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("sz \"/music\"", setting(u"OutputDir"_s).toStdString());
}

TEST_F(OutsidePrograms, WithoutASettingTheProgramsOwnRipperIsStarted)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    root().mnuAddCDs.Click();
    EXPECT_EQ("program " + program(u"CDRipper.exe"_s).toStdString() + " -> " + program(u"CDRipper.exe"_s).toStdString(),
              started());
}

TEST_F(OutsidePrograms, ARipperThatCannotBeStartedIsToldQuietly)
{
    setting(u"Soundfiles"_s, stringSetting(u"/musik"_s));
    ripper(u"/r/anderer"_s);
    desktop.log.failNext(u"launcher.start"_s);
    ASSERT_TRUE(root().mnuAddCDs.press());
    EXPECT_EQ("Der CD-Ripper konnte nicht gestartet werden.", root().quietLine.Caption.value().toStdString());
}

} // namespace orvantine::fake
