#include "transfer/BackupWorld.h"
#include "transfer/Kopieren.h"
#include "transfer/RestorePlan.h"
#include "transfer/mnuDbSicherungen.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

using Backup = BackupWorld;

TEST_F(Backup, TheArchiveHoldsThePlaylistsTheCopyOfTheDatabaseAndTheCovers)
{
    put(data() + u"Playlisten/sub/Drei.m3u"_s, "/m/x.mp3\r\n");
    put(data() + u"Resource/alt/Drei.gif"_s, "Bild 3");
    const QByteArray database = bytes(this->database());
    backUp();
    EXPECT_EQ("Eins.m3u\nOrvantine.dat\nZwei.jpg\nZwei.m3u\nalt/Drei.gif\nsub/\nsub/Drei.m3u", names(archive()));
    const auto entries = FakeArchive::unpacked(bytes(archive()));
    for (const auto& [entry, bytes] : *entries) {
        if (entry.name == u"Orvantine.dat"_s) {
            EXPECT_EQ(database, bytes);
        }
    }
    expectUnfrozen();
}

TEST_F(Backup, ABackupWithAnEmptyResourceHasThePlaylistsOnly)
{
    desktop.disk().remove(data() + u"Resource/Zwei.jpg"_s);
    backUp();
    EXPECT_EQ("Eins.m3u\nOrvantine.dat\nZwei.m3u", names(archive()));
}

TEST_F(Backup, TheCopyOfTheDatabaseInPlaylistenIsDeletedAgain)
{
    put(data() + u"Playlisten/Orvantine.dat"_s, "von frueher");
    backUp();
    EXPECT_EQ(std::string::npos, content(archive()).find("von frueher"));
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/Orvantine.dat"_s));
    EXPECT_NE("(missing)", bytes(database()));
}

TEST_F(Backup, TheChooserIsAskedInTheToldWords)
{
    desktop.choosers.cancel(ChooserKind::Save);
    root().mnuDbSicherungen.Click();
    const std::string line = calls({u"choosers.save"_s});
    for (const char* word : {"\"Datei speichern\"", "\"Orvantenbackup.zip\"",
                             "\"Zip-Dateien|*.zip; *.dat|Alle Dateitypen|*.*\"", "\"zip\""})
        EXPECT_NE(std::string::npos, line.find(word)) << word << " in " << line;
    EXPECT_NE(std::string::npos, line.find(desktop.folders.documents.toStdString())) << line;
}

TEST_F(Backup, TheChooserBeginsInTheFolderOfTheLastBackupIfThatExists)
{
    setting(u"ZipFolder"_s, stringSetting(u"/stick/"_s));
    desktop.choosers.cancel(ChooserKind::Save);
    root().mnuDbSicherungen.Click();
    EXPECT_NE(std::string::npos, calls({u"choosers.save"_s}).find("\"/stick/\""));
    setting(u"ZipFolder"_s, stringSetting(u"/weg/"_s));
    desktop.log.take();
    desktop.choosers.cancel(ChooserKind::Save);
    root().mnuDbSicherungen.Click();
    EXPECT_EQ(std::string::npos, calls({u"choosers.save"_s}).find("\"/weg/\""));
}

TEST_F(Backup, CancelInTheChooserEndsTheCommandBeforeAnythingHasChanged)
{
    desktop.choosers.cancel(ChooserKind::Save);
    root().mnuDbSicherungen.Click();
    EXPECT_EQ("", actions());
    EXPECT_EQ("(absent)", setting(u"ZipFolder"_s).toStdString());
    EXPECT_EQ("(absent)", setting(u"Backup"_s).toStdString());
}

TEST_F(Backup, FolderAndDateOfTheBackupAreWritten)
{
    backUp();
    EXPECT_EQ("sz \"/stick/\"", setting(u"ZipFolder"_s).toStdString());
    EXPECT_EQ("sz \"20.11.2026\"", setting(u"Backup"_s).toStdString());
}

TEST_F(Backup, TheLevelFollowsZipCompress)
{
    const std::pair<std::optional<SettingValue>, const char*> cases[] = {
        {std::nullopt, "level 9"},    {dwordSetting(0), "level 3"},       {dwordSetting(1), "level 6"},
        {dwordSetting(2), "level 9"}, {stringSetting(u"1"_s), "level 6"}, {stringSetting(u"viel"_s), "level 9"}};
    for (const auto& [value, level] : cases) {
        if (value)
            setting(u"ZipCompress"_s, *value);
        desktop.log.take();
        backUp();
        const std::string line = calls({u"zip.add"_s});
        EXPECT_NE(std::string::npos, line.find(level)) << line;
    }
}

TEST_F(Backup, TheChosenFileMayBeAnArchiveThatIsAddedTo)
{
    putArchive({{u"Fremd.m3u"_s, "bleibt"}, {u"Eins.m3u"_s, "alt"}});
    backUp();
    EXPECT_EQ("Eins.m3u\nFremd.m3u\nOrvantine.dat\nZwei.jpg\nZwei.m3u", names(archive()));
    EXPECT_EQ(std::string::npos, content(archive()).find("Eins.m3u: alt"));
}

TEST_F(Backup, AFileThatIsNoArchiveIsLeftAloneAndTheLineSaysSo)
{
    put(archive(), "kein Archiv");
    backUp();
    EXPECT_EQ("kein Archiv", bytes(archive()));
    EXPECT_EQ("Keine Sicherung: Die gewählte Datei ist kein vollständiges Archiv.",
              root().quietLine.Caption.value().toStdString());
    EXPECT_EQ("(absent)", setting(u"Backup"_s).toStdString());
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/Orvantine.dat"_s));
    expectUnfrozen();
}

TEST_F(Backup, ABackupThatFailsKeepsTheDateOfTheLastOne)
{
    setting(u"Backup"_s, stringSetting(u"01.02.2020"_s));
    desktop.log.failNext(u"zip.add"_s);
    backUp();
    EXPECT_EQ("(missing)", bytes(archive()));
    EXPECT_EQ("sz \"01.02.2020\"", setting(u"Backup"_s).toStdString());
    EXPECT_EQ("Nicht gespeichert: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());
    expectUnfrozen();
}

TEST_F(Backup, WhatCouldNotBeBroughtBackIsLeftOutAndNamed)
{
    desktop.memory()->put(data() + u"Playlisten/was?.m3u"_s, "x");
    backUp();
    EXPECT_EQ("Eins.m3u\nOrvantine.dat\nZwei.jpg\nZwei.m3u", names(archive()));
    EXPECT_EQ("Nicht in der Sicherung: was?.m3u", root().quietLine.Caption.value().toStdString());
}

TEST_F(Backup, AFolderThatCouldNotBeBroughtBackIsLeftOutAndNamed)
{
    desktop.memory()->put(data() + u"Playlisten/AC: live/Jazz.m3u"_s, "x");
    desktop.choosers.save(archive());
    EXPECT_FALSE(backUpData(root()));
    EXPECT_EQ("Eins.m3u\nOrvantine.dat\nZwei.jpg\nZwei.m3u", names(archive()));
    EXPECT_EQ("Nicht in der Sicherung: AC: live/", root().quietLine.Caption.value().toStdString());
    // The rest of it comes back.
    desktop.disk().remove(listPath(u"Zwei"_s));
    restore();
    EXPECT_NE("(missing)", bytes(listPath(u"Zwei"_s)));
}

TEST_F(Backup, ALinkIsLeftOutAndNamedSoThatTheRestComesBack)
{
    put(data() + u"Playlisten/Fremd.m3u"_s, "/m/x.mp3\r\n");
    desktop.memory()->setLink(data() + u"Playlisten/Fremd.m3u"_s);
    backUp();
    EXPECT_EQ("Eins.m3u\nOrvantine.dat\nZwei.jpg\nZwei.m3u", names(archive()));
    EXPECT_EQ("Nicht in der Sicherung: Fremd.m3u", root().quietLine.Caption.value().toStdString());
    desktop.disk().remove(listPath(u"Zwei"_s));
    restore();
    EXPECT_NE("(missing)", bytes(listPath(u"Zwei"_s)));
}

TEST_F(Backup, AnArchiveInWhichSomethingWouldStandInTheWayOfARestoreStaysAsItIs)
{
    struct Case
    {
        QString entry;
        const char* line;
    };
    put(data() + u"Playlisten/Link.m3u"_s, "x");
    desktop.memory()->setLink(data() + u"Playlisten/Link.m3u"_s);
    const Case cases[] = {
        {u"..\\x.m3u"_s, "Keine Sicherung: „..\\x.m3u“ ließe sich nicht zurücksichern."},
        {u"Link.m3u"_s, "Keine Sicherung: „Link.m3u“ ist eine Verknüpfung und ließe sich nicht zurücksichern."}};
    setting(u"Backup"_s, stringSetting(u"01.02.2020"_s));
    for (const Case& one : cases) {
        putArchive({{u"Fremd.m3u"_s, "bleibt"}, {one.entry, "x"}});
        const QByteArray before = bytes(archive());
        desktop.choosers.save(archive());
        EXPECT_FALSE(backUpData(root()));
        EXPECT_EQ(before, bytes(archive()));
        EXPECT_EQ(one.line, root().quietLine.Caption.value().toStdString());
        EXPECT_EQ("sz \"01.02.2020\"", setting(u"Backup"_s).toStdString());
    }
    expectUnfrozen();
}

TEST_F(Backup, MoreThanARestoreTakesIsNoBackup)
{
    QList<std::pair<QString, QByteArray>> files;
    for (qint64 i = 0; i < MostRestoredEntries; ++i)
        files.append({QString::number(i), "x"});
    putArchive(files);
    const QByteArray before = bytes(archive());
    backUp();
    EXPECT_EQ(before, bytes(archive()));
    EXPECT_EQ("Keine Sicherung: Es ist mehr, als sich zurücksichern ließe.",
              root().quietLine.Caption.value().toStdString());
    EXPECT_EQ("(absent)", setting(u"Backup"_s).toStdString());
}

TEST_F(Backup, WithoutItsFolderNothingIsPackedAndTheDateStays)
{
    putArchive({{u"Fremd.m3u"_s, "bleibt"}});
    const QByteArray before = bytes(archive());
    setting(u"Backup"_s, stringSetting(u"01.02.2020"_s));
    root().tDatenbank.Text = u"/weg/"_s;
    desktop.choosers.save(archive());
    EXPECT_FALSE(backUpData(root()));
    EXPECT_EQ(before, bytes(archive()));
    EXPECT_EQ("sz \"01.02.2020\"", setting(u"Backup"_s).toStdString());
    EXPECT_EQ("Keine Sicherung: Der Datenbank-Ordner fehlt.", root().quietLine.Caption.value().toStdString());
    expectUnfrozen();
}

TEST_F(Backup, ABackupWithoutTheDatabaseKeepsTheDateOfTheLastOne)
{
    setting(u"Backup"_s, stringSetting(u"01.02.2020"_s));
    desktop.memory()->setUnreadable(database());
    desktop.choosers.save(archive());
    EXPECT_FALSE(backUpData(root()));
    EXPECT_EQ("Nicht in der Sicherung: Orvantine.dat", root().quietLine.Caption.value().toStdString());
    EXPECT_EQ("sz \"01.02.2020\"", setting(u"Backup"_s).toStdString());
}

TEST_F(Backup, WithoutADatabaseTheCopyOfAnEarlierRestoreGoesIn)
{
    put(data() + u"Playlisten/Orvantine.dat"_s, "von frueher");
    desktop.disk().remove(database());
    backUp();
    EXPECT_NE(std::string::npos, content(archive()).find("Orvantine.dat: von frueher"));
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/Orvantine.dat"_s));
}

TEST_F(Backup, ASecondGoesByBeforeThePackingAndOneBehindIt)
{
    int seen = 0;
    desktop.events().after(std::chrono::milliseconds{999}, [&] {
        ++seen;
        EXPECT_EQ("", calls({u"zip.add"_s}));
        EXPECT_EQ("(absent)", setting(u"ZipFolder"_s).toStdString());
    });
    desktop.events().after(std::chrono::milliseconds{1999}, [&] {
        ++seen;
        EXPECT_NE("(missing)", bytes(archive()));
        EXPECT_TRUE(root().kopieren->Visible.value());
        EXPECT_EQ("1", root().Tag.toStdString());
    });
    const std::chrono::milliseconds before = desktop.events().elapsed();
    backUp();
    EXPECT_EQ(2, seen);
    EXPECT_GE((desktop.events().elapsed() - before).count(), 2000);
}

TEST_F(Backup, AProgramThatEndsInTheLastSecondLeavesTheDateOfTheArchiveThatStands)
{
    setting(u"Backup"_s, stringSetting(u"01.02.2020"_s));
    desktop.events().after(std::chrono::milliseconds{1500}, [&] { desktop.events().endProcess(); });
    backUp();
    EXPECT_NE("(missing)", bytes(archive()));
    EXPECT_EQ("sz \"20.11.2026\"", setting(u"Backup"_s).toStdString());
}

TEST_F(Backup, TheAnimationIsTheOneOfATransfer)
{
    root().kopieren->pAnimations.Resource = 0;
    backUp();
    EXPECT_EQ(103, root().kopieren->pAnimations.Resource);
}

TEST_F(Backup, TheEndOfItClicksTheCatalogueBeforeTheTracksAndTheTimerAreOn)
{
    const std::function<void()> click = catalogue().Click;
    int clicks = 0;
    catalogue().Click = [&] {
        ++clicks;
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_FALSE(tracks().Enabled.value());
        EXPECT_FALSE(root().Timer2.Enabled.value());
        EXPECT_TRUE(root().kopieren->Visible.value());
        EXPECT_EQ("1", root().Tag.toStdString());
        click();
    };
    backUp();
    EXPECT_EQ(1, clicks);
    expectUnfrozen();
}

TEST_F(Backup, TheDialogOfTheTransferIsUpMeanwhile)
{
    int seen = 0;
    desktop.events().after(std::chrono::milliseconds{500}, [&] {
        ++seen;
        EXPECT_EQ(" Datenübertragung", root().kopieren->Caption.value().toStdString());
        EXPECT_EQ("Bitte warten Sie, bis die Datenübertragung vollständig abgeschlossen wurde.",
                  root().kopieren->Label2.Caption.value().toStdString());
        EXPECT_TRUE(root().kopieren->Visible.value());
        EXPECT_EQ("1", root().Tag.toStdString());
        EXPECT_FALSE(catalogue().Enabled.value());
        EXPECT_FALSE(tracks().Enabled.value());
        EXPECT_FALSE(root().Timer2.Enabled.value());
        EXPECT_EQ(MousePointer::Hourglass, root().Pointer.value());
    });
    backUp();
    EXPECT_EQ(1, seen);
    EXPECT_FALSE(root().kopieren->Visible.value());
    expectUnfrozen();
}

TEST_F(Backup, EscInTheDialogStopsNothing)
{
    constexpr int Escape = 27;
    desktop.events().after(std::chrono::milliseconds{500}, [&] { root().kopieren->KeyDown(Escape); });
    backUp();
    EXPECT_EQ("Eins.m3u\nOrvantine.dat\nZwei.jpg\nZwei.m3u", names(archive()));
    EXPECT_EQ("0", root().Tag.toStdString());
}

TEST_F(Backup, TheEndOfTheProgramMeanwhileLeavesNoArchive)
{
    desktop.events().after(std::chrono::milliseconds{500}, [&] { desktop.events().endProcess(); });
    backUp();
    EXPECT_EQ("(missing)", bytes(archive()));
    EXPECT_EQ("(missing)", bytes(data() + u"Playlisten/Orvantine.dat"_s));
}

TEST_F(Backup, ItSaysWhetherAllOfItStands)
{
    desktop.choosers.save(archive());
    EXPECT_TRUE(backUpData(root()));
    desktop.choosers.cancel(ChooserKind::Save);
    EXPECT_FALSE(backUpData(root()));
    desktop.log.failNext(u"zip.add"_s);
    desktop.choosers.save(archive());
    EXPECT_FALSE(backUpData(root()));
}

TEST_F(Backup, APathOfExactlyFiveCharactersGoesOn)
{
    desktop.choosers.save(u"/a/bc"_s);
    putFolder(u"/a"_s);
    root().mnuDbSicherungen.Click();
    EXPECT_NE("(missing)", bytes(u"/a/bc"_s));
    EXPECT_EQ("sz \"/a/\"", setting(u"ZipFolder"_s).toStdString());
}

TEST_F(Backup, AShortPathEndsTheCommand)
{
    // Folder and name together have four characters.
    desktop.choosers.save(u"/a/b"_s);
    root().mnuDbSicherungen.Click();
    EXPECT_EQ("", calls({u"zip.add"_s}));
    EXPECT_EQ("(absent)", setting(u"ZipFolder"_s).toStdString());
}

} // namespace orvantine::fake
