#include "transfer/BackupWorld.h"
#include "transfer/Kopieren.h"
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

TEST_F(Backup, AShortPathEndsTheCommand)
{
    // Folder and name together have four characters.
    desktop.choosers.save(u"/a/b"_s);
    root().mnuDbSicherungen.Click();
    EXPECT_EQ("", calls({u"zip.add"_s}));
    EXPECT_EQ("(absent)", setting(u"ZipFolder"_s).toStdString());
}

} // namespace orvantine::fake
