#include "transfer/BackupWorld.h"
#include "transfer/Kopieren.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

using Restore = BackupWorld;

TEST_F(Restore, TheQuestionHasTheToldWordsAndCancelEnds)
{
    desktop.messages.answer(Answer::Cancel, u" Datenrücksicherungen"_s,
                            u"Eine Sicherungsdatei mit Datenbank und Playlisten zurücksichern.    \n"
                            u"Dabei werden alle vorhandenen Einträge überschrieben und \n"
                            u"durch den gesicherten und älteren Datenbestand ersetzt.\n"
                            u"\n"
                            u"Möchten Sie jetzt wirklich mit dem Vorgang fortfahren ?"_s);
    root().mnuDbWiederherstellung.Click();
    ASSERT_EQ(1U, desktop.messages.shown().size());
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::OkCancel, desktop.messages.shown()[0].buttons);
    EXPECT_EQ("", actions());
    EXPECT_EQ("", calls({u"choosers"_s}));
}

TEST_F(Restore, WhatWasBackedUpComesBackByteForByte)
{
    const QByteArray list = bytes(listPath(u"Eins"_s));
    const QByteArray before = bytes(database());
    const QByteArray cover = bytes(data() + u"Resource/Zwei.jpg"_s);
    backUp();
    put(listPath(u"Eins"_s), "/m/anders.mp3\r\n");
    put(data() + u"Resource/Zwei.jpg"_s, "anderes Bild");
    desktop.disk().remove(listPath(u"Zwei"_s));
    putDatabase(indexRow(1, {.name = u"Anders"_s, .path = listPath(u"Eins"_s)}));
    restore();
    EXPECT_EQ(list.toStdString(), bytes(listPath(u"Eins"_s)).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ(cover, bytes(data() + u"Resource/Zwei.jpg"_s));
    EXPECT_NE("(missing)", bytes(listPath(u"Zwei"_s)));
    EXPECT_EQ(2, catalogue().count());
    expectUnfrozen();
}

TEST_F(Restore, PicturesGoToResourceAndAllElseToPlaylisten)
{
    putArchive({{u"Neu.m3u"_s, "/m/a.mp3\r\n"},
                {u"Neu.JPG"_s, "b1"},
                {u"Neu.gif"_s, "b2"},
                {u"sub/Neu.bmp"_s, "b3"},
                {u"sub/Tief.m3u"_s, "/m/b.mp3\r\n"},
                {u"leer/"_s, ""}});
    restore();
    EXPECT_EQ("/m/a.mp3\r\n", bytes(data() + u"Playlisten/Neu.m3u"_s));
    EXPECT_EQ("b1", bytes(data() + u"Resource/Neu.JPG"_s));
    EXPECT_EQ("b2", bytes(data() + u"Resource/Neu.gif"_s));
    EXPECT_EQ("b3", bytes(data() + u"Resource/sub/Neu.bmp"_s));
    EXPECT_EQ("/m/b.mp3\r\n", bytes(data() + u"Playlisten/sub/Tief.m3u"_s));
    EXPECT_TRUE(desktop.disk().isFolder(data() + u"Playlisten/leer"_s));
}

TEST_F(Restore, TheDatabaseIsTakenOnlyIfTheArchiveHeldIt)
{
    const QByteArray before = bytes(database());
    putArchive({{u"Neu.m3u"_s, "/m/a.mp3\r\n"}});
    // One of an earlier restore.
    put(data() + u"Playlisten/Orvantine.dat"_s, "[Index]\r\n1b=Falsch\r\n");
    restore();
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

TEST_F(Restore, TheUnpackedCopyOfTheDatabaseStaysInPlaylisten)
{
    const QByteArray fresh = "[Index]\r\n" + indexRow(1, {.name = u"Eins"_s, .path = listPath(u"Eins"_s)});
    putArchive({{u"Orvantine.dat"_s, fresh}});
    restore();
    EXPECT_EQ(fresh.toStdString(), bytes(data() + u"Playlisten/Orvantine.dat"_s).toStdString());
    EXPECT_EQ(fresh.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ(1, catalogue().count());
}

TEST_F(Restore, TheTimesOfTheFilesAreKept)
{
    putArchive({{u"Neu.m3u"_s, "/m/a.mp3\r\n"}});
    restore();
    EXPECT_EQ(QDateTime(QDate(2003, 2, 1), QTime(4, 5, 6)), desktop.disk().modified(data() + u"Playlisten/Neu.m3u"_s));
}

TEST_F(Restore, TheFolderIsWritten)
{
    putArchive({{u"Neu.m3u"_s, "x"}});
    restore();
    EXPECT_EQ("sz \"/stick/\"", setting(u"ZipFolder"_s).toStdString());
    EXPECT_EQ("(absent)", setting(u"Backup"_s).toStdString());
}

TEST_F(Restore, ADamagedArchiveLeadsToNothingExtractedAndAReloadOfThePresentDatabase)
{
    putArchive({{u"Eins.m3u"_s, "neu"}});
    put(archive(), bytes(archive()).chopped(1));
    const QByteArray list = bytes(listPath(u"Eins"_s));
    putDatabase(indexRow(1, {.name = u"Anders"_s, .path = listPath(u"Eins"_s)}));
    restore();
    EXPECT_EQ(list, bytes(listPath(u"Eins"_s)));
    ASSERT_EQ(1, catalogue().count());
    EXPECT_EQ("Anders", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("Nichts wiederhergestellt: Die Datei ist beschädigt oder keine Sicherung.",
              root().quietLine.Caption.value().toStdString());
    expectUnfrozen();
}

TEST_F(Restore, TheFolderIsWrittenBehindADamagedArchiveAsWell)
{
    put(archive(), "kein Archiv");
    restore();
    EXPECT_EQ("sz \"/stick/\"", setting(u"ZipFolder"_s).toStdString());
}

TEST_F(Restore, WhyNothingCameBackIsSaidInWordsOfItsOwn)
{
    const auto line = [this] { return root().quietLine.Caption.value().toStdString(); };
    putArchive({{u"Eins.m3u"_s, "neu"}, {u"Link.m3u"_s, "x"}});
    const QByteArray list = bytes(listPath(u"Eins"_s));

    put(data() + u"Playlisten/Link.m3u"_s, "x");
    desktop.memory()->setLink(data() + u"Playlisten/Link.m3u"_s);
    restore();
    EXPECT_EQ("Nichts wiederhergestellt: „Link.m3u“ ist hier eine Verknüpfung.", line());

    putArchive({{u"Eins.m3u"_s, "neu"}});
    desktop.log.failNext(u"zip.open"_s);
    restore();
    EXPECT_EQ("Nichts wiederhergestellt: Der Datenträger meldet einen Fehler.", line());

    desktop.memory()->setReadOnly(listPath(u"Eins"_s));
    desktop.memory()->breakStore();
    restore();
    EXPECT_EQ("Nichts wiederhergestellt: Die bisherige Fassung kann nicht aufbewahrt werden.", line());
    EXPECT_EQ(list, bytes(listPath(u"Eins"_s)));
    expectUnfrozen();
}

TEST_F(Restore, TheRoomIsAskedWhereItGoesAndWhereItIsUnpacked)
{
    constexpr quint64 Mebibyte = quint64{1} << 20;
    putArchive({{u"Eins.m3u"_s, QByteArray(1 << 20, 'x')}});
    const QString staging = desktop.zip().open(archive(), 10)->unpackedFile(0);
    const auto line = [this] { return root().quietLine.Caption.value().toStdString(); };
    desktop.volumes.set(data(), {.free = 65 * Mebibyte - 1});
    restore();
    EXPECT_EQ("Nichts wiederhergestellt: Der freie Platz reicht nicht.", line());
    desktop.volumes.set(data(), {});
    desktop.volumes.set(staging.left(staging.lastIndexOf(u'/')), {.free = 65 * Mebibyte - 1});
    restore();
    EXPECT_EQ("Nichts wiederhergestellt: Der freie Platz reicht nicht.", line());
    desktop.volumes.set(data(), {.free = 65 * Mebibyte});
    desktop.volumes.set(staging.left(staging.lastIndexOf(u'/')), {.free = 65 * Mebibyte});
    restore();
    EXPECT_EQ(1 << 20, bytes(listPath(u"Eins"_s)).size());
}

TEST_F(Restore, TheWindowLivesBetweenTheFilesAndTheEndOfTheProgramPutsAllBack)
{
    const QByteArray list = bytes(listPath(u"Eins"_s));
    putArchive({{u"Eins.m3u"_s, "neu"}, {u"Zwei.m3u"_s, "auch neu"}});
    int yields = 0;
    constexpr int MostYields = 20;
    for (int yield = 1; yield <= MostYields; ++yield)
        desktop.events().atYield(yield, [&] {
            if (bytes(listPath(u"Eins"_s)) != "neu" || yields != 0)
                return;
            ++yields;
            EXPECT_NE("auch neu", bytes(listPath(u"Zwei"_s)));
            desktop.events().endProcess();
        });
    restore();
    EXPECT_EQ(1, yields);
    EXPECT_EQ(list, bytes(listPath(u"Eins"_s)));
}

TEST_F(Restore, ItFreezesTheWindowAndWaitsASecondBeforeAndBehindTheWork)
{
    putArchive({{u"Neu.m3u"_s, "/m/a.mp3\r\n"}});
    root().kopieren->pAnimations.Resource = 0;
    int seen = 0;
    desktop.events().after(std::chrono::milliseconds{999}, [&] {
        ++seen;
        EXPECT_EQ(" Datenübertragung", root().kopieren->Caption.value().toStdString());
        EXPECT_EQ("Bitte warten Sie, bis die Datenübertragung vollständig abgeschlossen wurde.",
                  root().kopieren->Label2.Caption.value().toStdString());
        EXPECT_TRUE(root().kopieren->Visible.value());
        EXPECT_EQ(103, root().kopieren->pAnimations.Resource);
        EXPECT_EQ("1", root().Tag.toStdString());
        EXPECT_FALSE(catalogue().Enabled.value());
        EXPECT_FALSE(tracks().Enabled.value());
        EXPECT_FALSE(root().Timer2.Enabled.value());
        EXPECT_EQ(MousePointer::Hourglass, root().Pointer.value());
        EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/Neu.m3u"_s));
    });
    desktop.events().after(std::chrono::milliseconds{1999}, [&] {
        ++seen;
        EXPECT_NE("(missing)", bytes(data() + u"Playlisten/Neu.m3u"_s));
        EXPECT_TRUE(root().kopieren->Visible.value());
        // The reload comes behind it.
        EXPECT_EQ("(absent)", setting(u"ZipFolder"_s).toStdString());
    });
    restore();
    EXPECT_EQ(2, seen);
    EXPECT_FALSE(root().kopieren->Visible.value());
    expectUnfrozen();
}

TEST_F(Restore, TheChooserIsAskedInTheToldWords)
{
    setting(u"ZipFolder"_s, stringSetting(u"/stick/"_s));
    desktop.messages.answer(Answer::Ok);
    desktop.choosers.cancel(ChooserKind::Open);
    root().mnuDbWiederherstellung.Click();
    const std::string line = calls({u"choosers.open"_s});
    for (const char* word : {"\"Datei öffnen\"", "\"Orvantenbackup.zip\"",
                             "\"Zip-Dateien|*.zip; *.dat|Alle Dateitypen|*.*\"", "\"zip\"", "\"/stick/\""})
        EXPECT_NE(std::string::npos, line.find(word)) << word << " in " << line;
}

TEST_F(Restore, TheOptionForListsOfOneNameIsOffWhileTheDatabaseIsLoaded)
{
    setting(u"CheckEntrys"_s, dwordSetting(1));
    putArchive({{u"Neu.m3u"_s, "x"}});
    const std::function<void()> load = root().mnuLaden.Click;
    int loads = 0;
    root().mnuLaden.Click = [&] {
        ++loads;
        EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
        load();
    };
    restore();
    EXPECT_EQ(1, loads);
    EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
}

TEST_F(Restore, AnEmptyCatalogueLeavesNoListInSight)
{
    click(2);
    ASSERT_EQ(2, tracks().count());
    putArchive({{u"Orvantine.dat"_s, "[Index]\r\n"}});
    restore();
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("", root().trackList.path().toStdString());
    EXPECT_EQ("(0)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ("0", catalogue().Tag.toStdString());
    expectUnfrozen();
}

TEST_F(Restore, OneBadNameAndNothingIsReplaced)
{
    const QByteArray list = bytes(listPath(u"Eins"_s));
    putArchive({{u"Eins.m3u"_s, "neu"}, {u"../Orvantine.dat"_s, "boese"}});
    const QByteArray before = bytes(database());
    restore();
    EXPECT_EQ(list, bytes(listPath(u"Eins"_s)));
    EXPECT_EQ(before, bytes(database()));
}

TEST_F(Restore, AFailingCopyPutsAllBack)
{
    const QByteArray list = bytes(listPath(u"Eins"_s));
    putArchive({{u"Eins.m3u"_s, "neu"}, {u"Zwei.m3u"_s, "auch neu"}});
    desktop.log.failNext(u"files.copy"_s, 2);
    restore();
    EXPECT_EQ(list, bytes(listPath(u"Eins"_s)));
    expectUnfrozen();
}

TEST_F(Restore, WhatIsReplacedIsKept)
{
    const QByteArray list = bytes(listPath(u"Eins"_s));
    putArchive({{u"Eins.m3u"_s, "/m/neu.mp3\r\n"}});
    restore();
    EXPECT_TRUE(desktop.memory()->recovered().contains(list));
}

TEST_F(Restore, TheOpenListIsReadAnewAndNeverWrittenBackWithItsOldRows)
{
    click(2);
    const QByteArray fresh = "/m/neu.mp3\r\n\r\n";
    put(u"/m/neu.mp3"_s, "mp3");
    putArchive({{u"Zwei.m3u"_s, fresh}});
    restore();
    EXPECT_EQ(1, tracks().count());
    root().mnuFileSave.Click();
    EXPECT_EQ("/m/neu.mp3\r\n", bytes(listPath(u"Zwei"_s)).toStdString());
}

TEST_F(Restore, TheReloadAsksNothingOfListsOfOneNameAndPutsTheOptionBack)
{
    setting(u"CheckEntrys"_s, dwordSetting(1));
    putArchive({{u"Orvantine.dat"_s, "[Index]\r\n" + indexRow(1, {.name = u"Eins"_s, .path = listPath(u"Eins"_s)}) +
                                         indexRow(2, {.name = u"Eins"_s, .path = listPath(u"Zwei"_s)})}});
    restore();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
    EXPECT_EQ(1U, desktop.messages.shown().size());
}

TEST_F(Restore, TheFilterIsOffAfterwards)
{
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = listPath(u"Eins"_s), .favourite = u"1"_s}) +
                indexRow(2, {.name = u"Zwei"_s, .path = listPath(u"Zwei"_s)}));
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(1, catalogue().count());
    putArchive({{u"Neu.m3u"_s, "x"}});
    restore();
    EXPECT_FALSE(root().mnuFavoritenShow.Checked.value());
    EXPECT_EQ(2, catalogue().count());
}

TEST_F(Restore, CancelInTheChooserChangesNothing)
{
    desktop.messages.answer(Answer::Ok);
    desktop.choosers.cancel(ChooserKind::Open);
    root().mnuDbWiederherstellung.Click();
    EXPECT_NE(std::string::npos, calls({u"choosers.open"_s}).find("\"Datei öffnen\""));
    EXPECT_EQ("", actions());
}

// The local copy

TEST_F(Restore, WithoutALocalCopyAMessageSaysSo)
{
    desktop.disk().remove(backup());
    desktop.messages.answer(Answer::Ok, u"Orvanten Manager "_s,
                            u"Es konnte keine Datenbank-Sicherung gefunden werden. "_s);
    root().mnuWiederherstellen.Click();
    ASSERT_EQ(1U, desktop.messages.shown().size());
    EXPECT_EQ(MessageIcon::Critical, desktop.messages.shown()[0].icon);
}

TEST_F(Restore, ACopyOfAnotherDayIsNamedByItsDate)
{
    desktop.memory()->put(backup(), "[Index]\r\n");
    desktop.memory()->setModified(backup(), QDateTime(QDate(2026, 11, 19), QTime(8, 0)));
    desktop.messages.answer(Answer::No, u" Sicherungsdatenbank"_s,
                            u"Möchten Sie die Datenbanksicherung vom 19.11.2026 wiederherstellen ?   \n"
                            u"Die Wiedergabelisten werden hiermit nicht zurückgesichert.\n"
                            u"\n"
                            u"Verwenden Sie dafür die Option ''Wiederherstellungen''."_s);
    forgetCalls();
    root().mnuWiederherstellen.Click();
    EXPECT_EQ("", actions());
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::YesNo, desktop.messages.shown()[0].buttons);
    EXPECT_FALSE(root().buttonsDisabled);
    expectUnfrozen();
}

TEST_F(Restore, ACopyOfTodayIsCalledTodays)
{
    desktop.memory()->put(backup(), "[Index]\r\n");
    desktop.messages.answer(Answer::No, u" Sicherungsdatenbank"_s,
                            u"Möchten Sie die heutige Datenbanksicherung wiederherstellen ?   \n"
                            u"Die Wiedergabelisten werden hiermit nicht zurückgesichert.\n"
                            u"\n"
                            u"Verwenden Sie dafür die Option ''Wiederherstellungen''."_s);
    root().mnuWiederherstellen.Click();
}

TEST_F(Restore, TheCopyTakesThePlaceOfTheDatabaseAndTheReplacedOneIsKeptBesideIt)
{
    const QByteArray copy = "[Index]\r\n" + indexRow(1, {.name = u"Frueher"_s, .path = listPath(u"Eins"_s)});
    desktop.memory()->put(backup(), copy);
    const QDateTime time(QDate(2026, 11, 19), QTime(8, 0));
    desktop.memory()->setModified(backup(), time);
    const QByteArray before = bytes(database());
    desktop.messages.answer(Answer::Yes);
    root().mnuWiederherstellen.Click();
    EXPECT_EQ(copy.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(data() + u"Orvantine.restore"_s).toStdString());
    EXPECT_EQ(copy.toStdString(), bytes(backup()).toStdString());
    EXPECT_EQ(time, desktop.disk().modified(database()));
    ASSERT_EQ(1, catalogue().count());
    EXPECT_EQ("Frueher", catalogue().subItem(1, 1).toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
    expectUnfrozen();
}

TEST_F(Restore, ButtonsAndListsRestUnderThePointerOfAWaitWhileItAsksForTheCopy)
{
    desktop.memory()->put(backup(), "[Index]\r\n");
    desktop.messages.script({.answer = Answer::No, .meanwhile = [this] {
                                 EXPECT_EQ(MousePointer::ArrowHourglass, root().Pointer.value());
                                 EXPECT_TRUE(root().buttonsDisabled);
                                 EXPECT_FALSE(catalogue().Enabled.value());
                                 EXPECT_FALSE(tracks().Enabled.value());
                             }});
    root().mnuWiederherstellen.Click();
    EXPECT_FALSE(root().buttonsDisabled);
    expectUnfrozen();
}

TEST_F(Restore, AnOlderReplacedDatabaseIsReplacedAndKept)
{
    desktop.memory()->put(backup(), "[Index]\r\n");
    put(data() + u"Orvantine.restore"_s, "von ganz frueher");
    const QByteArray before = bytes(database());
    desktop.messages.answer(Answer::Yes);
    root().mnuWiederherstellen.Click();
    EXPECT_EQ(before.toStdString(), bytes(data() + u"Orvantine.restore"_s).toStdString());
    EXPECT_TRUE(desktop.memory()->recovered().contains("von ganz frueher"));
}

TEST_F(Restore, ALocalCopyThatGoesWhileTheQuestionIsUpLeavesTheDatabase)
{
    desktop.memory()->put(backup(), "[Index]\r\n");
    const QByteArray before = bytes(database());
    desktop.messages.script({.answer = Answer::Yes, .meanwhile = [this] { desktop.disk().remove(backup()); }});
    root().mnuWiederherstellen.Click();
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.restore"_s));
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("Nichts wiederhergestellt: Die Datenbank-Sicherung ist nicht mehr da.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(Restore, ADatabaseThatCannotBeSetAsideStays)
{
    desktop.memory()->put(backup(), "[Index]\r\n");
    const QByteArray before = bytes(database());
    desktop.log.failNext(u"files.copy"_s);
    desktop.messages.answer(Answer::Yes);
    root().mnuWiederherstellen.Click();
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.restore"_s));
    EXPECT_EQ("Nichts wiederhergestellt: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(Restore, ALocalCopyThatCannotBeReadLeavesTheDatabase)
{
    desktop.memory()->put(backup(), "[Index]\r\n");
    desktop.memory()->setUnreadable(backup());
    const QByteArray before = bytes(database());
    desktop.messages.answer(Answer::Yes);
    root().mnuWiederherstellen.Click();
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.restore"_s));
    EXPECT_EQ(2, catalogue().count());
}

TEST_F(Restore, WithoutADatabaseTheCopyIsPutInItsPlaceAndNothingIsKept)
{
    desktop.memory()->put(backup(), "[Index]\r\n" + indexRow(1, {.name = u"Da"_s, .path = listPath(u"Eins"_s)}));
    desktop.disk().remove(database());
    desktop.messages.answer(Answer::Yes);
    root().mnuWiederherstellen.Click();
    EXPECT_EQ(bytes(backup()), bytes(database()));
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.restore"_s));
    EXPECT_EQ(1, catalogue().count());
}

} // namespace orvantine::fake
