#include "transfer/TransferWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// What is told and shown on the way through Pack and Go.
class PackGoStages : public TransferWorld
{
protected:
    void run() { EXPECT_TRUE(root().mnuPackGo.press()); }
    void meanwhile(const QString& track, const std::function<void()>& action)
    {
        m_watch = root().kopieren->LDatei.Caption.addNotifier([this, track, action] {
            if (root().kopieren->LDatei.Caption.value() == track)
                action();
        });
    }
    void showCover()
    {
        put(data() + u"Resource/Rock.jpg"_s, "jpg");
        click(2);
        click(1);
        ASSERT_TRUE(root().pCoverBack.Visible.value());
    }

    QString m_scratch = desktop.folders.temp + u"/PackFolder"_s;
    QPropertyNotifier m_watch;
};

} // namespace

TEST_F(PackGoStages, ThePackingHasTextsOfItsOwnAndCannotBeStopped)
{
    QStringList told;
    QPropertyNotifier packing = root().kopieren->bEscTaste.Visible.addNotifier([&] {
        if (!root().kopieren->bEscTaste.Visible)
            told = {root().tCopyStatus.Caption, root().kopieren->Caption, root().kopieren->Label2.Caption,
                    u"Tag "_s + root().Tag, root().kopieren->bAbbrechen.Enabled ? u"stop"_s : u"no stop"_s};
    });
    packIntoArchive();
    EXPECT_EQ(lines(told), "Dateien werden komprimiert.\n Datenkomprimierung\nBitte warten Sie, bis die "
                           "Datenkomprimierung vollständig abgeschlossen wurde.\nTag 1\nno stop");
}

TEST_F(PackGoStages, TheCopyingHasThoseOfATransfer)
{
    QStringList told;
    meanwhile(u"Rock 1.mp3"_s, [&] { told = {root().kopieren->Caption, root().kopieren->Label2.Caption}; });
    packIntoFolder();
    EXPECT_EQ(lines(told), " Datenübertragung\nBitte warten Sie, bis die Datenübertragung vollständig abgeschlossen "
                           "wurde.");
}

TEST_F(PackGoStages, ACancelledRunLeavesTheCoverHidden)
{
    showCover();
    answer(Answer::Cancel);
    run();
    EXPECT_FALSE(root().pCoverBack.Visible.value());
}

TEST_F(PackGoStages, ACancelledFolderLeavesTheCoverHiddenToo)
{
    showCover();
    answer(Answer::Yes);
    desktop.choosers.cancel(ChooserKind::Folder);
    run();
    EXPECT_FALSE(root().pCoverBack.Visible.value());
    EXPECT_EQ(desktop.priority.now, ProcessPriority::High);
}

TEST_F(PackGoStages, OfThreeCoversTheLastEndingInTheOrderJpgGifBmpWins)
{
    put(data() + u"Resource/Rock.jpg"_s, "jpg");
    put(data() + u"Resource/Rock.gif"_s, "gif");
    put(data() + u"Resource/Pop.gif"_s, "gif");
    put(data() + u"Resource/Pop.bmp"_s, "bmp");
    packIntoFolder();
    EXPECT_EQ(tree(Stick + u"/Rock"_s), "Rock 1.mp3\nRock 2.mp3\nRock.gif\nRock.m3u");
    EXPECT_EQ(tree(Stick + u"/Pop"_s), "Pop 1.mp3\nPop 2.mp3\nPop.bmp\nPop.m3u");
}

TEST_F(PackGoStages, ThePercentageIsCutOff)
{
    catalogue().setSubItem(1, CatalogueItem::Tracks, u"5"_s);
    catalogue().setSubItem(2, CatalogueItem::Tracks, QString());
    QStringList told;
    QPropertyNotifier watch = root().tCopyStatus.Caption.addNotifier([&] {
        if (!root().tCopyStatus.Caption.value().isEmpty())
            told += root().tCopyStatus.Caption.value();
    });
    packIntoFolder();
    EXPECT_EQ(told.join(u'|').toStdString(), "14% der Dateien kopiert|28% der Dateien kopiert|42% der Dateien "
                                             "kopiert|57% der Dateien kopiert");
}

TEST_F(PackGoStages, TheTargetOfAnArchiveIsAskedForTooAndCancelTakesTheHourglassAway)
{
    put(u"/media/alt/Orvantine.dat"_s, "von früher");
    root().Pointer = MousePointer::Hourglass;
    answer(Answer::Yes);
    desktop.choosers.chooseFolder(u"/media/alt"_s);
    answer(Answer::Cancel);
    desktop.choosers.cancel(ChooserKind::Folder);
    run();
    EXPECT_EQ(root().Pointer.value(), MousePointer::Default);
    EXPECT_EQ(setting(u"UseCDBurner"_s), u"dword 0"_s);
    EXPECT_EQ(bytes(u"/media/alt/Orvantine.dat"_s), "von früher");
}

TEST_F(PackGoStages, TheDatabaseIsCopiedOnceMoreAtTheEnd)
{
    meanwhile(u"Rock 1.mp3"_s, [this] { option(u"Später"_s, u"1"_s); });
    packIntoFolder();
    EXPECT_TRUE(bytes(Stick + u"/Orvantine.dat"_s).contains("Später=1"));
}

TEST_F(PackGoStages, AStoppedArchiveLeavesTheScratchFolderForTheNextRun)
{
    meanwhile(u"Rock 2.mp3"_s, [this] { root().kopieren->KeyDown(27); });
    packIntoArchive();
    EXPECT_EQ(tree(m_scratch), "Orvantine.dat\nRock/\nRock/Rock 1.mp3\nRock/Rock 2.mp3\nRock/Rock.m3u");
    m_watch = root().kopieren->LDatei.Caption.addNotifier([] {});
    packIntoArchive();
    EXPECT_EQ(tree(m_scratch), "");
}

TEST_F(PackGoStages, AnEmptyBurningFolderEndsIt)
{
    desktop.settings.put(Hive::CurrentUser, u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"_s,
                         u"CD Burning"_s, stringSetting(QString()));
    answer(Answer::No);
    answer(Answer::Ok);
    run();
    EXPECT_EQ(setting(u"UseCDBurner"_s), u"dword 1"_s);
    EXPECT_EQ(tree(), "");
}

TEST_F(PackGoStages, ASingleKilobyteMoreThanTheLeastIsRoomEnough)
{
    setRoom(3000 * 1024 + 1);
    packIntoFolder();
    EXPECT_EQ(tree(Stick + u"/Rock"_s), "Rock 1.mp3\nRock 2.mp3\nRock.m3u");
}

} // namespace orvantine::fake
