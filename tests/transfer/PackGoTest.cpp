#include "transfer/mnuPackGo.h"

#include "app/Registry.h"
#include "shell/Shutdown.h"
#include "transfer/TransferWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const std::string AskPack =
    "exclamation yes-no-cancel Pack and Go: Die Sounddateien und Wiedergabelisten können in einer "
    "komprimierten Zipdatei auf den austauschbaren Datenträger kopiert werden. \nDer "
    "Packungsvorgang wird eventuell einige Zeit in Anspruch nehmen ...\n\nMöchten Sie die Dateien "
    "vor der Übertragung packen ?";
const std::string AskBurn =
    "question ok-cancel CD-Burning for Windows XP: Mit Windows CD-Burning können Sie die Orvanten "
    "auf CD-Rom brennen.   \nKlicken Sie ''Ok'' um alle Dateien in den CD-Burning Ordner zu "
    "kopieren.\nWählen Sie ''Abbrechen'' um eine Ordnerauswahl anzuzeigen.";
const std::string AskUsed =
    "exclamation ok-cancel Pack and Go: In dem ausgewählten Ordner für ''Pack and Go'' sind bereits "
    "Dateien enthalten.   \nDie Orvanten werden zwar in einen Unterordner kopiert, jedoch könnten   "
    "\neventl. Probleme beim Wiederherstellen der Wiedergabelisten auftreten.\n\nMöchten Sie den "
    "Ordner für ''Pack and Go'' trotzdem verwenden ?";
const std::string AskRoom =
    "exclamation retry-cancel Pack and Go: Der Zieldatenträger hat nur wenig freien Speicherplatz "
    "zur Verfügung.   \nDer Vorgang wird ohne ein erfolgreichen Abschluss abgebrochen.";
const std::string Stopped = "exclamation ok Pack and Go: Der Vorgang wurde abgebrochen, bevor die Dateien vollständig "
                            "kopiert wurden. ";
const std::string Packed = "information ok Pack and Go: Die Sounddateien wurden erfolgreich in die komprimierte Datei "
                           "''Orvanten (Pack and Go).zip'' gepackt. \n\r\nDie Zip-Datei befindet sich im Ordner: "
                           "\n\r\n\"/media/stick/\"";

class PackGo : public TransferWorld
{
protected:
    void run() { EXPECT_TRUE(root().mnuPackGo.press()); }
    [[nodiscard]] std::string shown()
    {
        QStringList all;
        const auto messages = desktop.messages.take();
        for (const ShownMessage& message : messages)
            all += u"%1 %2%3: %4"_s.arg(nameOf(message.icon), nameOf(message.buttons), message.title, message.text);
        return lines(all);
    }
    /// Runs when that track is on its way.
    void meanwhile(const QString& track, std::function<void()> action)
    {
        m_watch = root().kopieren->LDatei.Caption.addNotifier([this, track, action] {
            if (root().kopieren->LDatei.Caption.value() == track)
                action();
        });
    }
    [[nodiscard]] QStringList archived()
    {
        QStringList names;
        const auto opened = desktop.services().zip.open(Stick + u"/Orvanten (Pack and Go).zip"_s, 1000);
        if (opened)
            for (const ArchiveEntry& entry : opened->entries())
                names += entry.name;
        names.sort();
        return names;
    }
    /// What the run takes away.
    [[nodiscard]] std::string frozen()
    {
        QStringList all;
        all += catalogue().Enabled ? u"catalogue"_s : u"-"_s;
        all += tracks().Enabled ? u"tracks"_s : u"-"_s;
        all += root().Timer2.Enabled ? u"timer"_s : u"-"_s;
        all += root().Pointer.value() == MousePointer::Hourglass ? u"waits"_s : u"-"_s;
        all += desktop.priority.now == ProcessPriority::High ? u"high"_s : u"normal"_s;
        all += u"tag "_s + root().Tag;
        return all.join(u' ').toStdString();
    }

    QString m_scratch = desktop.folders.temp + u"/PackFolder"_s;
    QPropertyNotifier m_watch;
};

} // namespace

TEST_F(PackGo, GivesEachPlaylistAFolderWithTracksAndAListOfFileNames)
{
    packIntoFolder();
    EXPECT_EQ(tree(), "Orvantine.dat\nOrvantine.log\nPop/\nPop/Pop 1.mp3\nPop/Pop 2.mp3\nPop/Pop.m3u\n"
                      "Rock/\nRock/Rock 1.mp3\nRock/Rock 2.mp3\nRock/Rock.m3u");
    EXPECT_EQ(listText(Stick + u"/Rock/Rock.m3u"_s), "Rock 1.mp3|Rock 2.mp3|");
    EXPECT_EQ(listText(Stick + u"/Orvantine.log"_s), "/media/stick/Rock|/media/stick/Pop|");
    EXPECT_EQ(bytes(Stick + u"/Orvantine.dat"_s), bytes(database()));
    EXPECT_EQ(bytes(Stick + u"/Pop/Pop 2.mp3"_s), "mp3");
    EXPECT_EQ(quiet(), "");
}

TEST_F(PackGo, AFolderCopyAlwaysEndsAsAStoppedOne)
{
    packIntoFolder();
    EXPECT_EQ(shown(), AskPack + '\n' + AskBurn + '\n' + Stopped);
    EXPECT_EQ(setting(u"BackupDir"_s), u"sz \"\""_s);
    EXPECT_EQ(setting(u"UseCDBurner"_s), u"dword 0"_s);
}

TEST_F(PackGo, PacksTheSameTreeIntoAnArchiveAndEmptiesTheScratchFolder)
{
    packIntoArchive();
    EXPECT_EQ(archived().join(u' ').toStdString(),
              "Orvantine.dat Orvantine.log Pop/ Pop/Pop 1.mp3 Pop/Pop 2.mp3 Pop/Pop.m3u Rock/ Rock/Rock 1.mp3 "
              "Rock/Rock 2.mp3 Rock/Rock.m3u");
    EXPECT_EQ(shown(), AskPack + '\n' + Packed);
    EXPECT_EQ(tree(m_scratch), "");
    EXPECT_EQ(setting(u"BackupDir"_s), u"sz \"/media/stick/\""_s);
    EXPECT_EQ(tree(), "Orvanten (Pack and Go).zip");
}

TEST_F(PackGo, NoAndCancelBringUpTheFolderDialogAndCancelThereEndsIt)
{
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.cancel(ChooserKind::Folder);
    run();
    EXPECT_EQ(shown(), AskPack + '\n' + AskBurn);
    EXPECT_EQ(tree(), "");
}

TEST_F(PackGo, TheEarlyExitsLeaveThePriorityRaised)
{
    answer(Answer::Cancel);
    run();
    EXPECT_EQ(desktop.priority.now, ProcessPriority::High);
    packIntoFolder();
    EXPECT_EQ(desktop.priority.now, ProcessPriority::Normal);
}

TEST_F(PackGo, WithoutABurningFolderOkGoesToTheFolderDialogToo)
{
    answer(Answer::No);
    answer(Answer::Ok);
    desktop.choosers.cancel(ChooserKind::Folder);
    run();
    EXPECT_EQ(setting(u"UseCDBurner"_s), u"dword 0"_s);
}

TEST_F(PackGo, ABurningFolderIsTakenWithoutADialog)
{
    desktop.settings.put(Hive::CurrentUser, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"_s,
                         u"CD Burning"_s, stringSetting(Stick));
    answer(Answer::No);
    answer(Answer::Ok);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(setting(u"UseCDBurner"_s), u"dword 1"_s);
    EXPECT_EQ(listText(Stick + u"/Pop/Pop.m3u"_s), "Pop 1.mp3|Pop 2.mp3|");
}

TEST_F(PackGo, ATargetThatHoldsADatabaseIsAskedForAndCancelChoosesAnother)
{
    put(u"/media/alt/Orvantine.dat"_s, "von früher");
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(u"/media/alt"_s);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(shown(), AskPack + '\n' + AskBurn + '\n' + AskUsed + '\n' + Stopped);
    EXPECT_EQ(bytes(u"/media/alt/Orvantine.dat"_s), "von früher");
    EXPECT_NE(tree(), "");
}

TEST_F(PackGo, ATargetThatHoldsADatabaseIsUsedAfterOk)
{
    put(Stick + u"/Orvantine.dat"_s, "von früher");
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Ok);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(bytes(Stick + u"/Orvantine.dat"_s), bytes(database()));
    EXPECT_TRUE(desktop.memory()->recovered().contains("von früher"));
}

TEST_F(PackGo, ACatalogueOfNoRowsCopiesTheDatabaseAndAnEmptyLog)
{
    catalogue().clear();
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Ok);
    mnuPackGo_Click(root());
    EXPECT_EQ(tree(), "Orvantine.dat\nOrvantine.log");
    EXPECT_EQ(bytes(Stick + u"/Orvantine.log"_s), QByteArray());
}

TEST_F(PackGo, AnArchiveOfACatalogueOfNoRowsHoldsThoseTwoFiles)
{
    catalogue().clear();
    answer(Answer::Yes);
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Ok);
    mnuPackGo_Click(root());
    EXPECT_EQ(archived().join(u' '), u"Orvantine.dat Orvantine.log"_s);
}

TEST_F(PackGo, AMissingTrackHasALineAndNoFile)
{
    desktop.disk().remove(u"/m/Rock 1.mp3"_s);
    root().mnuErrorDisplay.Checked = false;
    packIntoFolder();
    EXPECT_EQ(tree(Stick + u"/Rock"_s), "Rock 2.mp3\nRock.m3u");
    EXPECT_EQ(listText(Stick + u"/Rock/Rock.m3u"_s), "Rock 1.mp3|Rock 2.mp3|");
    EXPECT_EQ(quiet(), "");
}

TEST_F(PackGo, TwoPlaylistsOfOneNameShareOneFolder)
{
    catalogue().setSubItem(2, CatalogueItem::Name, u"Rock"_s);
    packIntoFolder();
    EXPECT_EQ(tree(), "Orvantine.dat\nOrvantine.log\nRock/\nRock/Pop 1.mp3\nRock/Pop 2.mp3\nRock/Pop.m3u\n"
                      "Rock/Rock 1.mp3\nRock/Rock 2.mp3\nRock/Rock.m3u");
    EXPECT_EQ(listText(Stick + u"/Orvantine.log"_s), "/media/stick/Rock|/media/stick/Rock|");
}

TEST_F(PackGo, TheCoverGoesAlongAndALaterEndingWins)
{
    put(data() + u"Resource/Rock.jpg"_s, "jpg");
    put(data() + u"Resource/Rock.bmp"_s, "bmp");
    packIntoFolder();
    EXPECT_EQ(tree(Stick + u"/Rock"_s), "Rock 1.mp3\nRock 2.mp3\nRock.bmp\nRock.m3u");
}

TEST_F(PackGo, ThePercentageCanPassAHundredWhereACellCountsTooFew)
{
    catalogue().setSubItem(1, CatalogueItem::Tracks, QString());
    catalogue().setSubItem(2, CatalogueItem::Tracks, QString());
    QStringList told;
    QPropertyNotifier watch = root().tCopyStatus.Caption.addNotifier([&] {
        if (!root().tCopyStatus.Caption.value().isEmpty())
            told += root().tCopyStatus.Caption.value();
    });
    packIntoFolder();
    EXPECT_EQ(told.join(u'|').toStdString(), "50% der Dateien kopiert|100% der Dateien kopiert|150% der Dateien "
                                             "kopiert|200% der Dateien kopiert");
    EXPECT_EQ(root().tCopyStatus.Tag, u"2"_s);
}

TEST_F(PackGo, FreeSpaceIsToldInMegabytesOfTheTarget)
{
    setRoom(quint64{5120} << 20);
    std::string told;
    QPropertyNotifier watch = root().tDateiname.Caption.addNotifier([&] {
        if (!root().tDateiname.Caption.value().isEmpty())
            told = root().tDateiname.Caption.value().toStdString();
    });
    packIntoArchive();
    EXPECT_EQ(told, "5.120 MB freier Speicher im temporären Ordner");
    packIntoFolder();
    EXPECT_EQ(told, "5.120 MB freier Speicher auf dem USB-Datenträger");
    EXPECT_FALSE(root().pDateiname.Visible.value());
}

TEST_F(PackGo, OnAStickLittleRoomIsToldAtEachTrackAndRetryGoesOn)
{
    setRoom(quint64{1} << 40, u"FAT32"_s);
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    for (int track = 1; track <= 4; ++track)
        answer(Answer::Retry);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(shown(), AskPack + '\n' + AskBurn + '\n' + AskRoom + '\n' + AskRoom + '\n' + AskRoom + '\n' + AskRoom +
                           '\n' + Stopped);
    EXPECT_EQ(listText(Stick + u"/Pop/Pop.m3u"_s), "Pop 1.mp3|Pop 2.mp3|");
}

TEST_F(PackGo, CancelForLackOfRoomStopsIt)
{
    setRoom(3000 * 1024);
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Cancel);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(shown(), AskPack + '\n' + AskBurn + '\n' + AskRoom + '\n' + Stopped);
    EXPECT_EQ(tree(), "Orvantine.dat");
    EXPECT_EQ(root().Tag, u"0"_s);
}

TEST_F(PackGo, FreezesWhileItCopiesAndPutsAllBack)
{
    root().mnuErrorDisplay.Checked = true;
    catalogue().select(2);
    catalogue().Click();
    tracks().select(2);
    std::string during;
    meanwhile(u"Pop 1.mp3"_s, [&] { during = frozen(); });
    packIntoFolder();
    EXPECT_EQ(during, "- - - waits high tag 0");
    EXPECT_EQ(frozen(), "catalogue tracks timer - normal tag 0");
    EXPECT_TRUE(root().mnuErrorDisplay.Checked.value());
    EXPECT_EQ(catalogue().selectedRow(), 2);
    EXPECT_EQ(tracks().selectedRow(), 2);
    EXPECT_EQ(catalogue().Tag, u"2"_s);
    EXPECT_TRUE(root().trackList.isOf(listPath(u"Pop"_s)));
    EXPECT_FALSE(root().kopieren->Visible.value());
    EXPECT_FALSE(root().pCopyStatus.Visible.value());
    EXPECT_EQ(root().tCopyStatus.Caption.value(), QString());
}

TEST_F(PackGo, TheReadyCueSoundsAtTheEnd)
{
    packIntoFolder();
    EXPECT_EQ(calls({u"cue.play"_s}), "cue.play READY 6");
}

TEST_F(PackGo, AVisibleCoverIsHiddenMeanwhileAndComesBack)
{
    put(data() + u"Resource/Rock.jpg"_s, "jpg");
    click(2);
    click(1);
    ASSERT_TRUE(root().pCoverBack.Visible.value());
    packIntoFolder();
    EXPECT_TRUE(root().pCoverBack.Visible.value());
    EXPECT_TRUE(root().mnuCoverShow.Checked.value());
}

TEST_F(PackGo, EscStopsItAtTheHeadOfTheNextTrack)
{
    meanwhile(u"Rock 1.mp3"_s, [this] { root().kopieren->KeyDown(27); });
    packIntoFolder();
    EXPECT_EQ(tree(), "Orvantine.dat\nRock/\nRock/Rock 1.mp3\nRock/Rock.m3u");
    EXPECT_EQ(listText(Stick + u"/Rock/Rock.m3u"_s), "Rock 1.mp3|");
    EXPECT_EQ(setting(u"BackupDir"_s), u"sz \"\""_s);
    EXPECT_EQ(frozen(), "catalogue tracks timer - normal tag 0");
}

TEST_F(PackGo, EscDuringPackingIsIgnored)
{
    QPropertyNotifier watch = root().kopieren->bEscTaste.Visible.addNotifier([this] {
        if (!root().kopieren->bEscTaste.Visible) {
            root().kopieren->KeyDown(27);
            root().kopieren->bAbbrechen.Click();
        }
    });
    packIntoArchive();
    EXPECT_EQ(shown(), AskPack + '\n' + Packed);
}

TEST_F(PackGo, AStopBeforeTheArchiveLeavesAnOlderOneAndTellsIt)
{
    put(Stick + u"/Orvanten (Pack and Go).zip"_s, "von früher");
    meanwhile(u"Rock 1.mp3"_s, [this] { root().kopieren->bAbbrechen.Click(); });
    packIntoArchive();
    EXPECT_EQ(bytes(Stick + u"/Orvanten (Pack and Go).zip"_s), "von früher");
    EXPECT_EQ(shown(), AskPack + '\n' + Stopped);
}

TEST_F(PackGo, AFileThatIsNoWholeArchiveIsLeftAloneAndTheRunEndsAsStopped)
{
    put(Stick + u"/Orvanten (Pack and Go).zip"_s, "kein Archiv");
    packIntoArchive();
    EXPECT_EQ(bytes(Stick + u"/Orvanten (Pack and Go).zip"_s), "kein Archiv");
    EXPECT_EQ(shown(), AskPack + '\n' + Stopped);
    EXPECT_EQ(setting(u"BackupDir"_s), u"sz \"\""_s);
}

TEST_F(PackGo, AListTooShortToBeReadGoesAsItsFileAlone)
{
    put(listPath(u"Pop"_s), "x\r\n");
    packIntoFolder();
    EXPECT_EQ(tree(Stick + u"/Pop"_s), "Pop.m3u");
    EXPECT_EQ(bytes(Stick + u"/Pop/Pop.m3u"_s), "x\r\n");
}

TEST_F(PackGo, AListWithoutTracksGoesAsItsFileAloneToo)
{
    put(listPath(u"Pop"_s), "");
    put(Stick + u"/Pop/Pop.m3u"_s, "von früher");
    packIntoFolder();
    EXPECT_EQ(tree(Stick + u"/Pop"_s), "Pop.m3u");
    EXPECT_EQ(bytes(Stick + u"/Pop/Pop.m3u"_s), QByteArray());
}

TEST_F(PackGo, ANameThatNoFolderCanHaveCostsThatListAloneAndIsNamed)
{
    catalogue().setSubItem(1, CatalogueItem::Name, u"AC/DC"_s);
    packIntoFolder();
    EXPECT_EQ(tree(), "Orvantine.dat\nOrvantine.log\nPop/\nPop/Pop 1.mp3\nPop/Pop 2.mp3\nPop/Pop.m3u");
    EXPECT_EQ(quiet(), "Nicht kopiert: 2 Dateien, zuerst „Rock 1.mp3“. Unter diesem Namen lässt sich keine Datei "
                       "anlegen.");
}

TEST_F(PackGo, TheDataFolderAsTargetCostsNoList)
{
    forgetCalls();
    catalogue().setSubItem(1, CatalogueItem::Name, u"Playlisten"_s);
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(data());
    answer(Answer::Ok);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(calls({u"files.carryBytes \""_s + listPath(u"Rock"_s), u"files.remove"_s}), "");
    EXPECT_EQ(quiet(), "Nicht kopiert: „Rock.m3u“.");
}

TEST_F(PackGo, CompressesAsTheOptionSays)
{
    for (const auto& [value, level] : {std::pair{0, 3}, {1, 6}, {2, 9}}) {
        setting(u"ZipCompress"_s, dwordSetting(value));
        packIntoArchive();
        EXPECT_TRUE(QString::fromStdString(calls({u"zip.add"_s})).contains(QString::number(level))) << value;
        forgetCalls();
    }
    setting(u"ZipCompress"_s, stringSetting(u"viel"_s));
    packIntoArchive();
    EXPECT_TRUE(QString::fromStdString(calls({u"zip.add"_s})).contains(u'9'));
}

TEST_F(PackGo, KillTempFilesEmptiesTheScratchFolderOneLevelDeepAndRestoresTheLists)
{
    put(m_scratch + u"/Rock/Rock 1.mp3"_s, "x");
    put(m_scratch + u"/Orvantine.dat"_s, "x");
    root().LMp3Files.Path = u"/vorher"_s;
    root().LRipper.Path = u"/auch"_s;
    KillTempFiles(root(), scratchFolder(root()));
    EXPECT_EQ(tree(m_scratch), "");
    EXPECT_TRUE(desktop.disk().isFolder(m_scratch));
    EXPECT_EQ(root().LMp3Files.Path, u"/vorher"_s);
    EXPECT_EQ(root().LRipper.Path, u"/auch"_s);
    EXPECT_EQ(root().LMp3Files.Pattern, u"*.mp3;*.wma;*.wav"_s);
}

TEST_F(PackGo, AScratchFolderOfSomebodyElseIsNeitherUsedNorEmptied)
{
    put(m_scratch + u"/Brief.txt"_s, "fremd");
    desktop.memory()->setForeign(m_scratch);
    packIntoArchive();
    EXPECT_EQ(bytes(m_scratch + u"/Brief.txt"_s), "fremd");
    EXPECT_EQ(archived().size(), 10);
    EXPECT_EQ(tree(m_scratch + u".2"_s), "");
}

TEST_F(PackGo, AFolderRunEmptiesTheScratchFolderAndNeverTheTarget)
{
    put(m_scratch + u"/Rest.mp3"_s, "x");
    put(Stick + u"/Brief.txt"_s, "wichtig");
    packIntoFolder();
    EXPECT_EQ(tree(m_scratch), "");
    EXPECT_EQ(bytes(Stick + u"/Brief.txt"_s), "wichtig");
}

TEST_F(PackGo, PlaybackIsStoppedFirst)
{
    root().pSoundPlayer.Click();
    ASSERT_TRUE(root().pPausePlayer.Enabled.value());
    packIntoFolder();
    EXPECT_FALSE(root().pPausePlayer.Enabled.value());
}

TEST_F(PackGo, TheEndOfTheProgramEndsItWithoutAnotherBox)
{
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    meanwhile(u"Rock 1.mp3"_s, [this] { desktop.events().endProcess(); });
    run();
    EXPECT_FALSE(QString::fromStdString(tree()).contains(u".part"_s));
    EXPECT_EQ(shown(), AskPack + '\n' + AskBurn);
}

TEST_F(PackGo, AWindowThatIsClosedMeanwhileStoresWhatTheUserHadChosen)
{
    root().mnuErrorDisplay.Checked = true;
    const int chosen = catalogue().selectedRow();
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    meanwhile(u"Rock 1.mp3"_s, [this] { desktop.events().atYield(1, [this] { Form_QueryUnload(root()); }); });
    run();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_TRUE(readSetting(root(), u"Error"_s).is(1));
    EXPECT_TRUE(readSetting(root(), u"Index"_s).is(chosen));
}

} // namespace orvantine::fake
