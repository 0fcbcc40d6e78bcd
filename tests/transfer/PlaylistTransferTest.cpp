#include "transfer/TransferWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString Title = u" Sounddateien übertragen"_s;
const QString Remembered = u"Bitte stecken Sie den austauschbaren Datenträger in den USB-Anschluss. \n"
                           u"Die Dateien werden jetzt in den zuletzt verwendeten Ordner kopiert.\n\n"
                           u"Klicken Sie bitte ''Abbrechen'' um den Zielordner anzupassen."_s;
const QString First = u"Bitte stecken Sie den austauschbaren Datenträger in den USB-Anschluss. \n"
                      u"Wählen Sie das Laufwerk, welches dem USB-Stick zugeordnet wurde."_s;
const QString NamePrompt =
    u"Die Bezeichnung kann wegen ungültiger Zeichen nicht verwendet werden. Geben Sie einen neuen "
    u"Namen für diese Wiedergabeliste ein:\n\nUnzulässige Sonderzeichen: / \\ : * ? \" < > | -"_s;
const QString LittleRoom = u"Der Zieldatenträger hat zu wenig freien Speicherplatz zur Verfügung.   \n"
                           u"Die komplette Übertragung der Sounddateien ist nicht möglich."_s;
const QString NoAccess = u"Der Zugriff auf den austauschbaren Datenträger ist nicht möglich.   \n"
                         u"Entfernen Sie bitte den Schreibschutz am Datenträger !"_s;
const QString MediumGone = u"Der USB-Datenträger ist nicht vorhanden oder wurde kürzlich entfernt.   \n"
                           u"Bitte legen Sie den korrekten Datenträger in das Laufwerk oder \n"
                           u"überprüfen Sie gegebenenfalls den freien Speicherplatz."_s;
const QString Incomplete = u"Der Kopiervorgang wurde unvollständig auf den USB-Datenträger ausgeführt. \n\n"
                           u"Zielordner: ''/media/stick/''"_s;

class PlaylistTransfer : public TransferWorld
{
protected:
    /// One box a line: icon, buttons, title where it is another one, text.
    [[nodiscard]] QStringList shown()
    {
        QStringList all;
        const auto messages = desktop.messages.take();
        for (const ShownMessage& message : messages)
            all += message.input
                       ? u"input%1: %2 [%3]"_s.arg(message.title, message.text, message.defaultText)
                       : u"%1 %2%3: %4"_s.arg(nameOf(message.icon), nameOf(message.buttons),
                                              message.title == Title ? QString() : message.title, message.text);
        return all;
    }
    /// The first target of the day.
    void choose(const QString& folder = Stick)
    {
        answer(Answer::Ok);
        desktop.choosers.chooseFolder(folder);
    }
    void run() { EXPECT_TRUE(root().mnuHandling[1].press()); }
    void transfer(const QString& name = u"Mein Rock"_s)
    {
        choose();
        enter(name);
        answer(Answer::Ok);
        run();
    }
};

} // namespace

TEST_F(PlaylistTransfer, CopiesTheTracksIntoAFolderAndAListAboveIt)
{
    transfer();
    EXPECT_EQ(tree(), "Rock.m3u\nMein Rock/\nMein Rock/Rock 1.mp3\nMein Rock/Rock 2.mp3\nRock/");
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Mein Rock/Rock 1.mp3|Mein Rock/Rock 2.mp3|");
    EXPECT_EQ(bytes(Stick + u"/Mein Rock/Rock 2.mp3"_s), "mp3");
    EXPECT_EQ(quiet(), "");
}

TEST_F(PlaylistTransfer, ShowsItsBoxesAndAlwaysAsksForAName)
{
    transfer();
    EXPECT_EQ(lines(shown()), lines({u"information ok-cancel: "_s + First,
                                     u"input Name der Wiedergabeliste: "_s + NamePrompt + u" [Rock]"_s,
                                     u"information ok: "_s + Incomplete}));
}

TEST_F(PlaylistTransfer, KeepsTheTargetAndTheDay)
{
    transfer();
    EXPECT_EQ(option(u"CopyStick"_s), "/media/stick/");
    EXPECT_EQ(option(u"CopyDate"_s), "20.11.2026");
    EXPECT_EQ(root().Tag, u"0"_s);
    EXPECT_FALSE(root().kopieren->Visible.value());
}

TEST_F(PlaylistTransfer, OffersTheTargetOfTheDayAndRetryTakesIt)
{
    rememberStick();
    answer(Answer::Retry);
    enter(u"Rock"_s);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(shown().constFirst(), u"information retry-cancel: "_s + Remembered);
    EXPECT_EQ(tree(), "Rock.m3u\nRock/\nRock/Rock 1.mp3\nRock/Rock 2.mp3");
}

TEST_F(PlaylistTransfer, CancelOnTheTargetOfTheDayChoosesAnotherAndDoesNotForgetIt)
{
    rememberStick();
    answer(Answer::Cancel);
    desktop.choosers.cancel(ChooserKind::Folder);
    run();
    EXPECT_EQ(option(u"CopyStick"_s), "/media/stick/");
    EXPECT_EQ(tree(), "");
}

TEST_F(PlaylistTransfer, OnAnotherDayTheTargetIsNotOffered)
{
    rememberStick();
    option(u"CopyDate"_s, u"19.11.2026"_s);
    answer(Answer::Cancel);
    run();
    EXPECT_EQ(lines(shown()), (u"information ok-cancel: "_s + First).toStdString());
    EXPECT_EQ(tree(), "");
}

TEST_F(PlaylistTransfer, WithoutAFolderTheCommandEnds)
{
    answer(Answer::Ok);
    desktop.choosers.cancel(ChooserKind::Folder);
    run();
    EXPECT_EQ(option(u"CopyStick"_s), "");
    EXPECT_EQ(root().Tag, u"0"_s);
}

TEST_F(PlaylistTransfer, AnEmptyNameEndsItAndAFolderMadeUnderTheOldNameStays)
{
    choose();
    enter(QString());
    run();
    EXPECT_EQ(tree(), "Rock/");
    EXPECT_EQ(option(u"CopyDate"_s), "");
    EXPECT_FALSE(root().kopieren->Visible.value());
}

TEST_F(PlaylistTransfer, TheExitsBeforeTheLoopLeaveTheMarkOfALongJob)
{
    choose();
    enter(QString());
    run();
    EXPECT_EQ(root().Tag, u"1"_s);
}

TEST_F(PlaylistTransfer, WithoutSubfoldersTheNamePromptStillDecidesOne)
{
    setting(u"CreateFolder"_s, dwordSetting(0));
    transfer(u"Name"_s);
    EXPECT_EQ(tree(), "Rock.m3u\nName/\nName/Rock 1.mp3\nName/Rock 2.mp3");
}

TEST_F(PlaylistTransfer, ADoubleSeparatorAtTheEndOfTheTargetBecomesOne)
{
    option(u"CopyStick"_s, Stick + u"//"_s);
    option(u"CopyDate"_s, u"20.11.2026"_s);
    answer(Answer::Retry);
    enter(u"Rock"_s);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(option(u"CopyStick"_s), "/media/stick/");
}

TEST_F(PlaylistTransfer, AMissingTrackIsNotCopiedAndIsStillListed)
{
    desktop.disk().remove(u"/m/Rock 1.mp3"_s);
    transfer();
    EXPECT_EQ(tree(), "Rock.m3u\nMein Rock/\nMein Rock/Rock 2.mp3\nRock/");
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Mein Rock/Rock 1.mp3|Mein Rock/Rock 2.mp3|");
    EXPECT_EQ(quiet(), "");
}

TEST_F(PlaylistTransfer, AFailedCopyIsPassedOverAndNamedQuietly)
{
    desktop.memory()->setUnreadable(u"/m/Rock 1.mp3"_s);
    transfer();
    EXPECT_EQ(tree(), "Rock.m3u\nMein Rock/\nMein Rock/Rock 2.mp3\nRock/");
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Mein Rock/Rock 1.mp3|Mein Rock/Rock 2.mp3|");
    EXPECT_EQ(quiet(), "Nicht kopiert: „Rock 1.mp3“. Die Datei ist schreibgeschützt, oder es fehlen die Rechte.");
}

TEST_F(PlaylistTransfer, AFullTargetDoesNotStopTheLoopAndLeavesNoShortFile)
{
    put(u"/m/Rock 1.mp3"_s, QByteArray(300'000, 'x'));
    desktop.memory()->Room = 100'000;
    transfer();
    EXPECT_EQ(tree(), "Rock.m3u\nMein Rock/\nMein Rock/Rock 2.mp3\nRock/");
    EXPECT_EQ(quiet(), "Nicht kopiert: „Rock 1.mp3“. Der Datenträger ist voll.");
}

TEST_F(PlaylistTransfer, TwoTracksOfOneNameEndAsOneFileWithTwoLines)
{
    put(u"/n/Rock 1.mp3"_s, "anderes");
    put(listPath(u"Rock"_s), "/m/Rock 1.mp3\r\n/n/Rock 1.mp3\r\n\r\n");
    click(2);
    click(1);
    transfer(u"Rock"_s);
    EXPECT_EQ(tree(), "Rock.m3u\nRock/\nRock/Rock 1.mp3");
    EXPECT_EQ(bytes(Stick + u"/Rock/Rock 1.mp3"_s), "anderes");
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Rock/Rock 1.mp3|Rock/Rock 1.mp3|");
}

TEST_F(PlaylistTransfer, APlaylistOfNoRowsStillWritesAnEmptyListAndReports)
{
    put(listPath(u"Pop"_s), "");
    click(2);
    ASSERT_EQ(tracks().count(), 0);
    transfer(u"Leer"_s);
    EXPECT_EQ(tree(), "Pop.m3u\nLeer/\nPop/");
    EXPECT_EQ(bytes(Stick + u"/Pop.m3u"_s), QByteArray());
    EXPECT_EQ(shown().constLast(), u"information ok: "_s + Incomplete);
}

TEST_F(PlaylistTransfer, TooLittleRoomIsToldInBytesAndCancelEndsIt)
{
    setRoom(3000);
    choose();
    enter(u"Rock"_s);
    answer(Answer::Cancel);
    run();
    EXPECT_EQ(shown().constLast(), u"exclamation retry-cancel: "_s + LittleRoom);
    EXPECT_EQ(tree(), "Rock/");
    EXPECT_FALSE(root().kopieren->Visible.value());
}

TEST_F(PlaylistTransfer, RetryOnTooLittleRoomGoesOnWithoutMeasuringAgain)
{
    setRoom(2);
    choose();
    enter(u"Rock"_s);
    answer(Answer::Retry);
    answer(Answer::Retry);
    answer(Answer::Ok);
    forgetCalls();
    run();
    EXPECT_EQ(lines(shown().mid(2)), lines({u"exclamation retry-cancel: "_s + LittleRoom,
                                            u"exclamation retry-cancel: "_s + LittleRoom +
                                                u"\n\nVerfügbarer Speicherplatz: 2\nBenötigter Speicherplatz: 6"_s,
                                            u"information ok: "_s + Incomplete}));
    EXPECT_EQ(calls({u"volumes.freeBytes"_s}), "volumes.freeBytes \"/media/stick\"");
    EXPECT_EQ(tree(), "Rock.m3u\nRock/\nRock/Rock 1.mp3\nRock/Rock 2.mp3");
}

TEST_F(PlaylistTransfer, OnAStickFreeSpaceCountsAs5000)
{
    put(u"/m/Rock 1.mp3"_s, QByteArray(5000, 'x'));
    setRoom(quint64{1} << 40, u"FAT32"_s);
    choose();
    enter(u"Rock"_s);
    answer(Answer::Cancel);
    tracks().select(2);
    run();
    EXPECT_EQ(shown().constLast(), u"exclamation retry-cancel: "_s + LittleRoom +
                                       u"\n\nVerfügbarer Speicherplatz: 5000\nBenötigter Speicherplatz: 5003"_s);
    EXPECT_EQ(tracks().selectedRow(), 2);
}

TEST_F(PlaylistTransfer, CancelForLackOfRoomDeletesOnlyWhatThisRunMade)
{
    put(Stick + u"/Rock/Rock.m3u"_s, "von früher");
    setRoom(4000);
    put(u"/m/Rock 1.mp3"_s, QByteArray(5000, 'x'));
    choose();
    enter(u"Rock"_s);
    answer(Answer::Cancel);
    run();
    EXPECT_EQ(bytes(Stick + u"/Rock/Rock.m3u"_s), "von früher");
}

TEST_F(PlaylistTransfer, AMediumThatIsGoneIsToldAndRetryStartsAnew)
{
    desktop.volumes.set(u"/media/fort"_s, {.fileSystem = u"EXT4"_s, .free = quint64{1} << 30, .total = 0});
    choose(u"/media/fort"_s);
    enter(u"Rock"_s);
    answer(Answer::Retry);
    answer(Answer::Cancel);
    run();
    EXPECT_EQ(lines(shown().mid(2)),
              lines({u"exclamation retry-cancel: "_s + MediumGone, u"information ok-cancel: "_s + First}));
    EXPECT_FALSE(root().kopieren->Visible.value());
}

TEST_F(PlaylistTransfer, AMediumThatTakesNoFolderIsTold)
{
    choose();
    enter(u"AC/DC"_s);
    answer(Answer::Cancel);
    run();
    EXPECT_EQ(shown().constLast(), u"exclamation retry-cancel: "_s + NoAccess);
    EXPECT_EQ(tree(), "Rock/");
}

TEST_F(PlaylistTransfer, EscLeavesTheFilesCopiedSoFarAndAListWithTheirLines)
{
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    desktop.memory()->CarriedAtOnce = 1;
    bool pressed = false;
    QPropertyNotifier watch = root().kopieren->LDatei.Caption.addNotifier([&] {
        if (root().kopieren->LDatei.Caption.value() == u"Rock 1.mp3"_s && !std::exchange(pressed, true))
            root().kopieren->KeyDown(27);
    });
    run();
    EXPECT_TRUE(pressed);
    EXPECT_EQ(tree(), "Rock.m3u\nRock/\nRock/Rock 1.mp3");
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Rock/Rock 1.mp3|");
    EXPECT_EQ(shown().constLast(), u"information ok: "_s + Incomplete);
    EXPECT_EQ(root().Tag, u"0"_s);
}

TEST_F(PlaylistTransfer, AFileThatIsNotOverASecondAfterEscIsBrokenOffAndNotListed)
{
    put(u"/m/Rock 2.mp3"_s, QByteArray(1'000'000, 'x'));
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    QPropertyNotifier watch = root().kopieren->LDatei.Caption.addNotifier([&] {
        if (root().kopieren->LDatei.Caption.value() == u"Rock 2.mp3"_s)
            root().kopieren->bAbbrechen.Click();
    });
    desktop.memory()->PieceCarried = [this] { desktop.events().setNow(desktop.events().now().addMSecs(400)); };
    run();
    EXPECT_EQ(tree(), "Rock.m3u\nRock/\nRock/Rock 1.mp3");
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Rock/Rock 1.mp3|");
    EXPECT_EQ(quiet(), "");
}

TEST_F(PlaylistTransfer, AnOlderListStaysUntilTheNewOneIsWhole)
{
    put(Stick + u"/Rock.m3u"_s, "von früher\r\n");
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    QByteArray meanwhile;
    QPropertyNotifier watch = root().kopieren->LDatei.Caption.addNotifier([&] {
        if (root().kopieren->LDatei.Caption.value() == u"Rock 2.mp3"_s)
            meanwhile = bytes(Stick + u"/Rock.m3u"_s);
    });
    run();
    EXPECT_EQ(meanwhile, "von früher\r\n");
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Rock/Rock 1.mp3|Rock/Rock 2.mp3|");
    EXPECT_TRUE(desktop.memory()->recovered().contains("von früher\r\n"));
}

TEST_F(PlaylistTransfer, TheFolderOfThePlaylistItselfAsTargetCostsNeitherListNorTracks)
{
    const QByteArray list = bytes(listPath(u"Rock"_s));
    const QString folder = data() + u"Playlisten"_s;
    choose(folder);
    enter(u"Rock"_s);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(bytes(listPath(u"Rock"_s)), list);
    EXPECT_EQ(bytes(folder + u"/Rock/Rock 1.mp3"_s), "mp3");
    EXPECT_EQ(quiet(), "Nicht kopiert: „Rock.m3u“.");
}

TEST_F(PlaylistTransfer, TheFolderOfTheTracksAsTargetLosesNoneOfThem)
{
    put(u"/n/Rock 1.mp3"_s, "anderes");
    put(listPath(u"Rock"_s), "/m/Rock 1.mp3\r\n/n/Rock 1.mp3\r\n\r\n");
    click(2);
    click(1);
    choose(u"/"_s);
    enter(u"m"_s);
    answer(Answer::Ok);
    desktop.volumes.set(u"/"_s, {});
    run();
    EXPECT_EQ(bytes(u"/m/Rock 1.mp3"_s), "mp3");
    EXPECT_EQ(bytes(u"/n/Rock 1.mp3"_s), "anderes");
    EXPECT_EQ(quiet(), "Nicht kopiert: „Rock 1.mp3“.");
}

TEST_F(PlaylistTransfer, TheSelectionFollowsTheCopyAndComesBack)
{
    tracks().select(2);
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    QStringList selected;
    QPropertyNotifier watch = root().kopieren->LDatei.Caption.addNotifier([&] {
        if (!root().kopieren->LDatei.Caption.value().isEmpty())
            selected += QString::number(tracks().selectedRow());
    });
    run();
    EXPECT_EQ(selected.join(u' '), u"1 2"_s);
    EXPECT_EQ(tracks().selectedRow(), 2);
}

TEST_F(PlaylistTransfer, AListThatIsOpenedMeanwhileChangesNothingOfWhatIsCopied)
{
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    bool opened = false;
    QPropertyNotifier watch = root().kopieren->LDatei.Caption.addNotifier([&] {
        if (root().kopieren->LDatei.Caption.value() == u"Rock 1.mp3"_s && !std::exchange(opened, true))
            click(2);
    });
    run();
    EXPECT_TRUE(opened);
    EXPECT_EQ(tree(), "Rock.m3u\nRock/\nRock/Rock 1.mp3\nRock/Rock 2.mp3");
}

TEST_F(PlaylistTransfer, SpeaksInItsDialogOfFileBytesSpeedAndTimeLeft)
{
    put(u"/m/Rock 2.mp3"_s, QByteArray(10 << 20, 'x'));
    desktop.memory()->CarriedAtOnce = 1 << 20;
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    Kopieren& form = *root().kopieren;
    QStringList told;
    QPropertyNotifier watch = form.LTempo.Caption.addNotifier([&] {
        if (!form.LTempo.Caption.value().isEmpty())
            told += form.LDatei.Caption.value() + u' ' + form.LMenge.Caption.value() + u' ' +
                    QString::number(form.pFortschritt.Value) + u' ' + form.LTempo.Caption.value();
    });
    desktop.memory()->PieceCarried = [this] { desktop.events().setNow(desktop.events().now().addMSecs(1000)); };
    run();
    EXPECT_EQ(told.value(0).toStdString(), "Rock 2.mp3 1,0 MB von 10,0 MB 100 512,0 KB/s, noch etwa 17 Sekunden");
    EXPECT_FALSE(form.pFortschritt.Visible.value());
}

TEST_F(PlaylistTransfer, TheDialogPlaysItsPictureAndKeepsItsTexts)
{
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    std::string seen;
    Kopieren& form = *root().kopieren;
    QPropertyNotifier watch = root().kopieren->pAnimations.Running.addNotifier([&] {
        if (form.pAnimations.Running)
            seen = (form.Caption.value() + u'|' + form.Label2.Caption.value() + u'|' + form.bEscTaste.Caption.value() +
                    u'|' + form.pAnimations.File + u'|' + QString::number(form.pAnimations.Resource))
                       .toStdString();
    });
    run();
    EXPECT_EQ(seen, " Datenübertragung|Bitte warten Sie, bis die Datenübertragung vollständig abgeschlossen wurde.|"
                    "Taste \"ESC\" zum Abbrechen|/orvantine/program/ResourceXpStyles.res|103");
    EXPECT_FALSE(form.pAnimations.Running);
}

TEST_F(PlaylistTransfer, WhatElseWorksShowsTheOtherPictureFromTheProgramItself)
{
    put(desktop.folders.program + u"/Orvantine.exe"_s, "x");
    root().Tag = u"0"_s;
    desktop.forms().show(*root().kopieren);
    EXPECT_EQ(root().kopieren->pAnimations.File, desktop.folders.program + u"/Orvantine.exe"_s);
    EXPECT_EQ(root().kopieren->pAnimations.Resource, 104);
    root().kopieren->bAbbrechen.Click();
    EXPECT_EQ(root().Tag, u"2"_s);
    desktop.forms().unload(*root().kopieren);
}

TEST_F(PlaylistTransfer, AnAnswerThatIsNoNameOfAFolderLeadsNowhereElse)
{
    for (const QString& name : {u".."_s, u"../m"_s, u"a:b"_s}) {
        choose();
        enter(name);
        answer(Answer::Cancel);
        run();
        EXPECT_EQ(shown().constLast(), u"exclamation retry-cancel: "_s + NoAccess) << name.toStdString();
        option(u"CopyDate"_s, QString());
    }
    EXPECT_EQ(tree(), "Rock/");
}

TEST_F(PlaylistTransfer, AListOfAsManyTracksAsFitGoesAsAWhole)
{
    constexpr int Most = 32767;
    QByteArray list = "/m/Rock 1.mp3\r\n";
    for (int track = 2; track <= Most; ++track)
        list += "/weg/" + QByteArray::number(track) + ".mp3\r\n";
    put(listPath(u"Rock"_s), list + "\r\n");
    root().mnuErrorDisplay.Checked = false;
    click(2);
    click(1);
    ASSERT_EQ(tracks().count(), Most);
    transfer(u"Viel"_s);
    EXPECT_EQ(bytes(Stick + u"/Rock.m3u"_s).count('\n'), Most);
    EXPECT_TRUE(bytes(Stick + u"/Rock.m3u"_s).endsWith("Viel/32767.mp3\r\n"));
    EXPECT_EQ(tree(), "Rock.m3u\nRock/\nViel/\nViel/Rock 1.mp3");
}

TEST_F(PlaylistTransfer, EveryCallMayFailWithoutAShortFile)
{
    for (int number = 1;; ++number) {
        desktop.newProcess();
        SetUp();
        put(u"/m/Rock 1.mp3"_s, QByteArray(200'000, 'x'));
        const int before = desktop.log.calls();
        desktop.log.failCall(before + number);
        desktop.messages.Unscripted = [](const ShownMessage& message) {
            ScriptedAnswer answer;
            if (message.input)
                answer.entered = u"Rock"_s;
            else
                answer.answer = offers(message.buttons, Answer::Ok) ? Answer::Ok : Answer::Cancel;
            return answer;
        };
        desktop.choosers.Unscripted = [](ChooserKind kind) {
            ScriptedChoice choice;
            choice.kind = kind;
            choice.folder = Stick;
            return choice;
        };
        root().mnuHandling[1].press();
        desktop.log.failCall(0);
        const int calls = desktop.log.calls() - before;
        const QByteArray copied = bytes(Stick + u"/Rock/Rock 1.mp3"_s);
        EXPECT_TRUE(copied == "(missing)" || copied.size() == 200'000) << number;
        EXPECT_FALSE(QString::fromStdString(tree()).contains(u".part"_s)) << number;
        EXPECT_EQ(bytes(u"/m/Rock 1.mp3"_s).size(), 200'000) << number;
        EXPECT_EQ(bytes(listPath(u"Rock"_s)), "/m/Rock 1.mp3\r\n/m/Rock 2.mp3\r\n\r\n") << number;
        if (number > calls)
            break;
    }
}

TEST_F(PlaylistTransfer, AListThatIsOpenedInsideTheReadOfAnotherOneIsCarriedWithAllItsTracks)
{
    for (const int yield : {1, 2, 3, 4}) {
        SCOPED_TRACE(yield);
        put(Stick + u"/Rock.m3u"_s, "von früher\r\n");
        catalogue().Tag = u"0"_s;
        desktop.events().atYield(yield, [this] { click(1); });
        click(2);
        ASSERT_EQ(tracks().subItem(1, 3), u"/m/Rock 1.mp3"_s);
        rememberStick();
        answer(Answer::Retry);
        enter(u"Rock"_s);
        answer(Answer::Ok);
        run();
        EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Rock/Rock 1.mp3|Rock/Rock 2.mp3|");
    }
}

} // namespace orvantine::fake
