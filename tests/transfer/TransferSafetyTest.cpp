#include "transfer/TransferWorld.h"

#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// What a transfer must not cost: lists that could not be read, tracks that lie at the target, what was not selected.
class TransferSafety : public TransferWorld
{
protected:
    void choose(const QString& folder = Stick)
    {
        answer(Answer::Ok);
        desktop.choosers.chooseFolder(folder);
    }
    [[nodiscard]] std::string report() { return desktop.messages.take().back().text.toStdString(); }
    /// Runs once when that file is on its way.
    void meanwhile(const QString& file, const std::function<void()>& action)
    {
        m_watches.push_back(root().kopieren->LDatei.Caption.addNotifier([this, file, action] {
            if (root().kopieren->LDatei.Caption.value() == file && !m_seen.contains(file)) {
                m_seen += file;
                action();
            }
        }));
    }
    /// Runs when the packing begins.
    void whenPacking(const std::function<void()>& action)
    {
        m_watches.push_back(root().kopieren->Caption.addNotifier([this, action] {
            if (root().kopieren->Caption.value() == u" Datenkomprimierung"_s)
                action();
        }));
    }
    void passSeconds(int seconds) { desktop.events().setNow(desktop.events().now().addSecs(seconds)); }

    QString m_scratch = desktop.folders.temp + u"/PackFolder"_s;

private:
    std::vector<QPropertyNotifier> m_watches;
    QStringList m_seen;
};

const std::string Stopped = "Der Vorgang wurde abgebrochen, bevor die Dateien vollständig kopiert wurden. ";
const std::string Packed =
    "Die Sounddateien wurden erfolgreich in die komprimierte Datei ''Orvanten (Pack and Go).zip'' "
    "gepackt. \n\r\nDie Zip-Datei befindet sich im Ordner: \n\r\n\"/media/stick/\"";

} // namespace

TEST_F(TransferSafety, AListThatCannotBeReadLeavesTheOlderOneOfItsFolder)
{
    packIntoFolder();
    const QByteArray older = bytes(Stick + u"/Rock/Rock.m3u"_s);
    ASSERT_FALSE(older.isEmpty());
    desktop.memory()->setUnreadable(listPath(u"Rock"_s));
    answer(Answer::No);
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Ok);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuPackGo.press());
    EXPECT_EQ(bytes(Stick + u"/Rock/Rock.m3u"_s), older);
    EXPECT_TRUE(quiet().starts_with("Nicht kopiert: „Rock.m3u“.")) << quiet();
}

TEST_F(TransferSafety, AListThatCannotBeReadIsNotTransferredAsAnEmptyOne)
{
    put(Stick + u"/Rock.m3u"_s, "von früher\r\n");
    click(2);
    desktop.memory()->setUnreadable(listPath(u"Rock"_s));
    click(1);
    ASSERT_EQ(tracks().count(), 0);
    choose();
    enter(u"Rock"_s);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[1].press());
    EXPECT_EQ(bytes(Stick + u"/Rock.m3u"_s), "von früher\r\n");
    EXPECT_TRUE(quiet().starts_with("Nicht kopiert: „Rock.m3u“.")) << quiet();
}

TEST_F(TransferSafety, ATrackOfALaterListIsNotReplacedByOneOfTheSameName)
{
    put(u"/alt/A.mp3"_s, "alt");
    put(u"/musik/Rock/A.mp3"_s, "neu");
    put(listPath(u"Rock"_s), "/alt/A.mp3\r\n");
    put(listPath(u"Pop"_s), "/musik/Rock/A.mp3\r\n");
    desktop.volumes.set(u"/musik"_s, {.fileSystem = u"EXT4"_s, .free = quint64{1} << 30, .total = 0});
    packIntoFolder(u"/musik"_s);
    EXPECT_EQ(bytes(u"/musik/Rock/A.mp3"_s), "neu");
    EXPECT_EQ(quiet(), "Nicht kopiert: „A.mp3“.");
}

TEST_F(TransferSafety, EventsAreServedWhileAllTracksAreComparedWithAnOlderFile)
{
    QByteArray list = "/m/Rock 1.mp3\r\n";
    for (int track = 0; track < 640; ++track)
        list += "/fehlt/" + QByteArray::number(track) + ".mp3\r\n";
    put(listPath(u"Rock"_s), list);
    put(Stick + u"/Rock 1.mp3"_s, "alt");
    root().mnuErrorDisplay.Checked = false;
    click(2);
    click(1);
    ASSERT_TRUE(tracks().select(1));
    choose();
    answer(Answer::Ok);
    const int before = desktop.events().yields();
    EXPECT_TRUE(root().mnuHandling[4].press());
    EXPECT_GE(desktop.events().yields() - before, 10);
    EXPECT_EQ(bytes(Stick + u"/Rock 1.mp3"_s), "mp3");

    // The end of the program in there copies nothing more.
    put(Stick + u"/Rock 1.mp3"_s, "alt");
    choose();
    desktop.events().atYield(6, [this] { desktop.events().endProcess(); });
    root().mnuHandling[4].press();
    EXPECT_EQ(bytes(Stick + u"/Rock 1.mp3"_s), "alt");
}

TEST_F(TransferSafety, ASingleTrackDoesNotReplaceAnotherOneOfTheList)
{
    put(u"/studio/01.mp3"_s, "studio");
    put(u"/live/01.mp3"_s, "live");
    put(listPath(u"Rock"_s), "/studio/01.mp3\r\n/live/01.mp3\r\n");
    click(2);
    click(1);
    ASSERT_TRUE(tracks().select(1));
    desktop.volumes.set(u"/live"_s, {.fileSystem = u"EXT4"_s, .free = quint64{1} << 30, .total = 0});
    choose(u"/live"_s);
    EXPECT_TRUE(root().mnuHandling[4].press());
    EXPECT_EQ(bytes(u"/live/01.mp3"_s), "live");
    EXPECT_EQ(quiet(), "Nicht kopiert: „01.mp3“.");
}

TEST_F(TransferSafety, EscInTheLastTrackStillBringsWhatIsNotStoppedThere)
{
    put(data() + u"Resource/Pop.jpg"_s, "jpg");
    meanwhile(u"Pop 2.mp3"_s, [this] { root().kopieren->KeyDown(27); });
    meanwhile(u"Pop.jpg"_s, [this] { passSeconds(2); });
    packIntoFolder();
    EXPECT_EQ(tree(), "Orvantine.dat\nOrvantine.log\nPop/\nPop/Pop 1.mp3\nPop/Pop 2.mp3\nPop/Pop.jpg\nPop/Pop.m3u\n"
                      "Rock/\nRock/Rock 1.mp3\nRock/Rock 2.mp3\nRock/Rock.m3u");
}

TEST_F(TransferSafety, ARowWithTheNameOfTheFolderAboveLeadsNowhere)
{
    put(u"/media/Rock 1.mp3"_s, "wichtig");
    catalogue().setSubItem(1, CatalogueItem::Name, u".."_s);
    packIntoFolder();
    EXPECT_EQ(bytes(u"/media/Rock 1.mp3"_s), "wichtig");
    EXPECT_EQ(quiet(), "Nicht kopiert: 2 Dateien, zuerst „Rock 1.mp3“. Unter diesem Namen lässt sich keine Datei "
                       "anlegen.");
}

TEST_F(TransferSafety, AnotherListThatIsOpenedInABoxIsNotTransferred)
{
    desktop.messages.script({Answer::Ok, {}, {}, {}, [this] { click(2); }});
    desktop.choosers.chooseFolder(Stick);
    enter(u"Meins"_s);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[1].press());
    EXPECT_EQ(listText(Stick + u"/Rock.m3u"_s), "Meins/Rock 1.mp3|Meins/Rock 2.mp3|");
    EXPECT_EQ(tree(Stick + u"/Meins"_s), "Rock 1.mp3\nRock 2.mp3");
}

TEST_F(TransferSafety, ATrackOfAnotherListThatIsOpenedInABoxIsNotTransferred)
{
    ASSERT_TRUE(tracks().select(2));
    desktop.messages.script({Answer::Ok, {}, {}, {}, [this] { click(2); }});
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[4].press());
    EXPECT_EQ(tree(), "Rock 2.mp3");
}

TEST_F(TransferSafety, AStopIsNotLostWhereThePlayerWritesTheMark)
{
    meanwhile(u"Rock 1.mp3"_s, [this] {
        root().kopieren->bAbbrechen.Click();
        root().Tag = u"1"_s;
    });
    packIntoArchive();
    EXPECT_EQ(report(), Stopped);
    EXPECT_EQ(tree(), "");

    meanwhile(u"Pop 1.mp3"_s, [this] {
        root().kopieren->bAbbrechen.Click();
        root().Tag = u"0"_s;
    });
    click(2);
    choose();
    enter(u"Pop"_s);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[1].press());
    EXPECT_EQ(tree(), "Pop.m3u\nPop/\nPop/Pop 1.mp3");
}

TEST_F(TransferSafety, AnArchiveIsToldOfAlsoWhereThePlayerWasStoppedMeanwhile)
{
    whenPacking([this] { desktop.events().after(std::chrono::seconds{1}, [this] { root().Tag = u"0"_s; }); });
    packIntoArchive();
    EXPECT_EQ(report(), Packed);
}

TEST_F(TransferSafety, TheListsStayFrozenWhileItPacks)
{
    std::string frozen;
    QPropertyNotifier watch = root().kopieren->bEscTaste.Visible.addNotifier([&] {
        if (!root().kopieren->bEscTaste.Visible)
            frozen = std::string(catalogue().Enabled ? "catalogue " : "- ") + (tracks().Enabled ? "tracks " : "- ") +
                     (root().Timer2.Enabled ? "timer" : "-");
    });
    packIntoArchive();
    EXPECT_EQ(frozen, "- - -");
    EXPECT_TRUE(catalogue().Enabled && tracks().Enabled && root().Timer2.Enabled);
}

TEST_F(TransferSafety, AnArchiveWithoutAFileThatBelongsThereIsNotToldOfAsPacked)
{
    whenPacking([this] { desktop.memory()->setUnreadable(m_scratch + u"/Rock/Rock 1.mp3"_s); });
    packIntoArchive();
    EXPECT_EQ(report(), Stopped);
    EXPECT_EQ(quiet(), "Nicht im Archiv: Rock/Rock 1.mp3");
    EXPECT_EQ(setting(u"BackupDir"_s), u"sz \"\""_s);
}

TEST_F(TransferSafety, AnArchiveWithoutTheDatabaseOrAListIsNotToldOfAsPacked)
{
    for (const QString& missing : {database(), listPath(u"Rock"_s)}) {
        SCOPED_TRACE(missing.toStdString());
        desktop.newProcess();
        SetUp();
        whenPacking([] {});
        desktop.memory()->setUnreadable(missing);
        packIntoArchive();
        EXPECT_EQ(report(), Stopped);
        EXPECT_EQ(setting(u"BackupDir"_s), u"sz \"\""_s);
        desktop.memory()->setUnreadable(missing, false);
    }
}

} // namespace orvantine::fake
