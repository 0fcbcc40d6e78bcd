#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueWorld.h"
#include "catalogue/mnuLaden.h"
#include "catalogue/mnuSpeichern.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString LimitTitle = u" Wiedergabelisten verwalten"_s;
const QString LimitText = u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \n"
                          u"Bitte löschen Sie eine der 160 Playlisten aus der Liste."_s;

class CatalogueSave : public CatalogueWorld
{
protected:
    void putExtras(int rows)
    {
        QByteArray index;
        for (int row = 1; row <= rows; ++row) {
            const QString name = u"L%1"_s.arg(row);
            index += indexRow(row, {.name = name,
                                    .path = putList(name, {putTrack(name + u'a'), putTrack(name + u'b')}),
                                    .description = u"Text %1"_s.arg(row),
                                    .date = u"0%1.01.2001"_s.arg(row),
                                    .favourite = row == 2 ? u"1"_s : QString()});
        }
        putDatabase(index);
    }
};

} // namespace

TEST_F(CatalogueSave, TheSectionIsWrittenFromTheRowsKeyByKeyAndOtherSectionsStayByteForByte)
{
    const QString one = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    const QString three = putList(u"Drei"_s, {putTrack(u"c"_s), putTrack(u"d"_s)});
    const QByteArray others = "; von Hand\r\n[TagInfo]\r\n/m/a.mp3=Wir - Lied\r\n\r\n[Rename]\r\nAlt.m3u=Neu\r\n"
                              "[Options]\r\nSoundfiles=/m\r\n[Finder]\r\n01=suche\r\n";
    putDatabase("1a=falsch\r\n1b=Eins\r\n1c=" + one.toUtf8() +
                    "\r\n1d=2\r\n1e=Text\r\n1f=05.06.2007\r\n1g=1\r\n2c=/ohne/Namen\r\n2f=x\r\n2e=zwei\r\n"
                    "3a=auch falsch\r\n3b=Drei\r\n3c=" +
                    three.toUtf8() + "\r\n3d=9\r\n3e=drei\r\n3f=y\r\n3g=1\r\n",
                others);
    start();
    mnuSpeichern_Click(root());
    EXPECT_EQ(others.toStdString() +
                  "[Index]\r\n"
                  "1a=000\r\n1b=Eins\r\n1c={data}/Playlisten/Eins.m3u\r\n1d=2\r\n1e=Text\r\n1f=05.06.2007\r\n1g=1\r\n"
                  "2a=001\r\n2b=Drei\r\n2c={data}/Playlisten/Drei.m3u\r\n2d=9\r\n2e=zwei\r\n2f=x\r\n2g=\r\n",
              databaseText());
}

TEST_F(CatalogueSave, AnEmptyValueStandsAsKeyAndEqualSign)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = path}));
    start();
    mnuSpeichern_Click(root());
    EXPECT_EQ("[Index]\r\n1a=000\r\n1b=Eins\r\n1c={data}/Playlisten/Eins.m3u\r\n1d=2\r\n1e=\r\n1f=01.02.2003\r\n"
              "1g=\r\n",
              databaseText());
}

TEST_F(CatalogueSave, ASecondSaveGivesTheSameBytes)
{
    putExtras(3);
    start();
    mnuSpeichern_Click(root());
    const QByteArray once = bytes(database());
    mnuSpeichern_Click(root());
    EXPECT_EQ(once.toStdString(), bytes(database()).toStdString());
}

TEST_F(CatalogueSave, WithTheFavouritesFilterOnTheFileStaysByteForByteAndNoCopyIsMade)
{
    putExtras(3);
    start();
    const QByteArray before = bytes(database());
    root().mnuFavoritenShow.Tag = u"1"_s;
    catalogue().remove(1);
    forgetCalls();
    mnuSpeichern_Click(root());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("(missing)", bytes(backup()).toStdString());
    EXPECT_EQ("", actions());
}

TEST_F(CatalogueSave, AnEmptyListLeavesTheFileByteForByteAndMakesNoCopy)
{
    putExtras(3);
    start();
    const QByteArray before = bytes(database());
    catalogue().clear();
    forgetCalls();
    SaveDatabase(root());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("(missing)", bytes(backup()).toStdString());
    EXPECT_EQ("", actions());
}

TEST_F(CatalogueSave, TheFirstSaveOfADayReplacesTheCopyAndASecondKeepsTheMornings)
{
    putExtras(2);
    const QByteArray yesterday = bytes(database());
    desktop.memory()->setModified(database(), QDateTime(QDate(2026, 11, 19), QTime(23, 0)));
    put(backup(), "[Index]\r\n1e=uralt\r\n");
    start();
    mnuSpeichern_Click(root());
    EXPECT_EQ(yesterday.toStdString(), bytes(backup()).toStdString());

    // An edit between the two saves is replaced by the morning's text.
    writeIndexValue(root(), database(), 1, 'e', u"Neuer Text"_s);
    catalogue().setSubItem(1, 1, u"Neuer Name"_s);
    mnuSpeichern_Click(root());
    EXPECT_EQ(yesterday.toStdString(), bytes(backup()).toStdString());
    EXPECT_EQ("Text 1", indexValue(root(), database(), 1, 'e').toStdString());
    EXPECT_EQ("Neuer Name", indexValue(root(), database(), 1, 'b').toStdString());
}

TEST_F(CatalogueSave, AMissingCopyIsMadeThoughTheDatabaseIsOfToday)
{
    putExtras(2);
    const QByteArray before = bytes(database());
    start();
    mnuSpeichern_Click(root());
    EXPECT_EQ(before.toStdString(), bytes(backup()).toStdString());
}

TEST_F(CatalogueSave, ACopyThatFailsLeavesAllAsItWasAndTheLineSaysSo)
{
    putExtras(2);
    desktop.memory()->setModified(database(), QDateTime(QDate(2026, 11, 19), QTime(23, 0)));
    put(backup(), "[Index]\r\n1e=uralt\r\n2f=03.03.2003\r\n");
    start();
    const std::string before = databaseText();
    desktop.log.failNext(u"files.copy"_s);
    mnuSpeichern_Click(root());
    EXPECT_EQ("[Index]\r\n1e=uralt\r\n2f=03.03.2003\r\n", bytes(backup()).toStdString());
    EXPECT_EQ(before, databaseText()) << "the extras of the rows would come from the old copy";
    EXPECT_EQ("Nicht gespeichert: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());
    mnuSpeichern_Click(root());
    EXPECT_EQ(before, backupText());
}

TEST_F(CatalogueSave, AKeyThatCannotBeWrittenPutsTheWholeSaveBack)
{
    putExtras(2);
    put(backup(), "[Index]\r\n");
    start();
    const std::string before = databaseText();
    for (const int call : {1, 2, 9}) {
        desktop.log.failNext(u"files.appendBytes"_s, call);
        mnuSpeichern_Click(root());
        EXPECT_EQ(before, databaseText()) << call;
        EXPECT_TRUE(root().quietLine.Visible.value());
    }
    desktop.log.failNext(u"files.replaceBytes"_s);
    mnuSpeichern_Click(root());
    EXPECT_EQ(before, databaseText());
}

TEST_F(CatalogueSave, ADiskThatDoesNotAnswerIsNoProofThatThereIsNoDatabase)
{
    putExtras(2);
    desktop.memory()->setModified(database(), QDateTime(QDate(2026, 11, 19), QTime(23, 0)));
    put(backup(), "[Index]\r\n1e=uralt\r\n");
    start();
    const std::string before = databaseText();
    desktop.log.failNext(u"files.exists \"%1\""_s.arg(database()));
    mnuSpeichern_Click(root());
    EXPECT_EQ(before, databaseText()) << "the extras of the rows would come from the old copy";
}

TEST_F(CatalogueSave, ACopyThatCannotBeReadPutsTheWholeSaveBack)
{
    putExtras(2);
    start();
    mnuSpeichern_Click(root());
    const std::string before = databaseText();
    put(backup(), "[Index]\r\n1e=Text 1\r\n");
    desktop.memory()->setUnreadable(backup());
    mnuSpeichern_Click(root());
    EXPECT_EQ(before, databaseText()) << "the extras of the rows would be gone";
    EXPECT_TRUE(root().quietLine.Visible.value());
}

TEST_F(CatalogueSave, TheExtrasStayWithThePositionWhenARowHasGone)
{
    putExtras(3);
    start();
    catalogue().remove(1);
    mnuSpeichern_Click(root());
    EXPECT_EQ("[Index]\r\n"
              "1a=000\r\n1b=L2\r\n1c={data}/Playlisten/L2.m3u\r\n1d=2\r\n1e=Text 1\r\n1f=01.01.2001\r\n1g=\r\n"
              "2a=001\r\n2b=L3\r\n2c={data}/Playlisten/L3.m3u\r\n2d=2\r\n2e=Text 2\r\n2f=02.01.2001\r\n2g=1\r\n",
              databaseText());
}

TEST_F(CatalogueSave, AKeyThatTheCopyLacksBecomesEmpty)
{
    putExtras(1);
    put(backup(), "[Index]\r\n1b=L1\r\n");
    start();
    mnuSpeichern_Click(root());
    EXPECT_EQ("[Index]\r\n1a=000\r\n1b=L1\r\n1c={data}/Playlisten/L1.m3u\r\n1d=2\r\n1e=\r\n1f=\r\n1g=\r\n",
              databaseText());
}

TEST_F(CatalogueSave, AFullCatalogueIsToldAtEachSaveAndTheSaveIsDone)
{
    const QString path = putList(u"L"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    QByteArray index;
    for (int row = 1; row <= 160; ++row)
        index += indexRow(row, {.name = u"L%1"_s.arg(row), .path = path});
    putDatabase(index);
    start();
    for (const QString& name : {u"Erster Name"_s, u"Zweiter Name"_s}) {
        catalogue().setSubItem(160, 1, name);
        desktop.messages.answer(Answer::Ok, LimitTitle, LimitText);
        mnuSpeichern_Click(root());
        EXPECT_EQ("box title \" Wiedergabelisten verwalten\" text \"Die maximale Anzahl von Wiedergabelisten wurde "
                  "erreicht. \\nBitte löschen Sie eine der 160 Playlisten aus der Liste.\" icon critical buttons ok "
                  "answer ok",
                  boxes());
        EXPECT_EQ(name.toStdString(), indexValue(root(), database(), 160, 'b').toStdString());
        EXPECT_EQ(160 * 7, desktop.profiles().keys(database(), u"Index"_s).size());
    }
}

TEST_F(CatalogueSave, With159RowsNothingIsTold)
{
    const QString path = putList(u"L"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    QByteArray index;
    for (int row = 1; row <= 159; ++row)
        index += indexRow(row, {.name = u"L%1"_s.arg(row), .path = path});
    putDatabase(index);
    start();
    mnuSpeichern_Click(root());
    EXPECT_EQ("", boxes());
}

TEST_F(CatalogueSave, TheWaitCursorStandsWhileItWritesAndTheTagIsNoughtAfterwards)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    start();
    root().mnuLokalePlayliste.Checked = false;
    QStringList pointers;
    const auto watch =
        root().Pointer.addNotifier([&] { pointers += QString::number(static_cast<int>(root().Pointer.value())); });
    mnuSpeichern_Click(root());
    EXPECT_EQ("11 0", pointers.join(u' ').toStdString());
    EXPECT_EQ("0", catalogue().Tag.toStdString());
    EXPECT_EQ("(2)", root().tSoundzahl.Caption.value().toStdString());
}

TEST_F(CatalogueSave, RowsAreRenumberedInTheListToo)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    start();
    catalogue().setText(1, u"irgendwas"_s);
    mnuSpeichern_Click(root());
    EXPECT_EQ("000", catalogue().text(1).toStdString());
    EXPECT_EQ("001", catalogue().text(2).toStdString());
}

TEST_F(CatalogueSave, TheTrackCountComesIntoSightOnlyWithTheListPositions)
{
    for (const bool positions : {false, true}) {
        SCOPED_TRACE(positions);
        desktop.newProcess();
        putCatalogue({u"Eins"_s});
        start();
        root().mnuPositionen.Checked = positions;
        root().tSoundzahl.Visible = false;
        root().mnuLokalePlayliste.Checked = false;
        mnuSpeichern_Click(root());
        EXPECT_EQ(positions, root().tSoundzahl.Visible.value());
    }
}

TEST_F(CatalogueSave, WithAutoTagTheTracksAreRenamedUnderATagThatIsEmptyAfterwards)
{
    putCatalogue({u"Eins"_s});
    setting(u"AutoTag"_s, dwordSetting(1));
    desktop.tags.tracks[u"/m/Eins 1.mp3"_s] = {.title = u"Lied A"_s, .artist = u"Wir"_s};
    desktop.tags.tracks[u"/m/Eins 2.mp3"_s] = {.title = u"Lied B"_s, .artist = u"Ihr"_s};
    start();
    QStringList tags;
    const auto watch = root().sAnzeige[2].Caption.addNotifier([&] { tags += root().mnuSpeichern.Tag; });
    mnuSpeichern_Click(root());
    EXPECT_EQ("Wir - Lied A", tracks().subItem(1, 2).toStdString());
    EXPECT_EQ("Ihr - Lied B", tracks().subItem(2, 2).toStdString());
    EXPECT_FALSE(tags.isEmpty());
    EXPECT_EQ(tags.size(), tags.count(u"1"_s));
    EXPECT_EQ("", root().mnuSpeichern.Tag.toStdString());
}

TEST_F(CatalogueSave, WithoutTracksOrWithAutoTagOffNothingIsRenamed)
{
    struct Case
    {
        const char* name;
        std::optional<int> autoTag;
        bool tracks;
    };
    for (const Case& c : {Case{"absent", std::nullopt, true}, Case{"off", 0, true}, Case{"no tracks", 1, false}}) {
        SCOPED_TRACE(c.name);
        desktop.newProcess();
        putCatalogue({u"Eins"_s});
        if (c.autoTag)
            setting(u"AutoTag"_s, dwordSetting(*c.autoTag));
        desktop.tags.tracks[u"/m/Eins 1.mp3"_s] = {.title = u"Lied A"_s, .artist = u"Wir"_s};
        put(backup(), "[Index]\r\n1f=alt\r\n");
        start();
        root().mnuLokalePlayliste.Checked = false;
        if (!c.tracks)
            tracks().clear();
        mnuSpeichern_Click(root());
        EXPECT_EQ("", desktop.profiles().value(database(), u"TagInfo"_s, u"/m/Eins 1.mp3"_s).toStdString());
        // Renaming would have taken a copy of its own.
        EXPECT_EQ("[Index]\r\n1f=alt\r\n", bytes(backup()).toStdString());
    }
}

TEST_F(CatalogueSave, TheOpenListIsSavedOnlyWithLocalPlaylists)
{
    for (const bool local : {false, true}) {
        SCOPED_TRACE(local);
        desktop.newProcess();
        putCatalogue({u"Eins"_s});
        start();
        root().mnuLokalePlayliste.Checked = local;
        tracks().remove(1);
        mnuSpeichern_Click(root());
        EXPECT_EQ(local ? "/m/Eins 2.mp3\r\n" : "/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n",
                  bytes(listPath(u"Eins"_s)).toStdString());
    }
}

TEST_F(CatalogueSave, ASaveInTheMiddleOfALoadWritesNothing)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    const QByteArray before = bytes(database());
    bool saved = false;
    desktop.events().after(std::chrono::milliseconds{0}, [&] {
        saved = true;
        mnuSpeichern_Click(root());
    });
    mnuLaden_Click(root());
    EXPECT_TRUE(saved);
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
}

/// Whichever single call of a save fails: no list loses a track, and the section lacks one key at the most.
TEST_F(CatalogueSave, NoSingleFailingCallEmptiesAListOrTheSection)
{
    int failing = 0;
    for (bool reached = true; reached;) {
        ++failing;
        SCOPED_TRACE(failing);
        desktop.newProcess();
        desktop.log.failCall(0);
        desktop.disk().remove(backup());
        putExtras(2);
        start();
        const int begin = desktop.log.calls();
        desktop.log.failCall(begin + failing);
        mnuSpeichern_Click(root());
        reached = desktop.log.calls() >= begin + failing;
        desktop.log.failCall(0);

        EXPECT_EQ("/m/L1a.mp3\r\n/m/L1b.mp3\r\n\r\n", bytes(listPath(u"L1"_s)).toStdString());
        const QString open = QString::fromUtf8(bytes(listPath(u"L2"_s)));
        EXPECT_TRUE(open.startsWith(u"/m/L2a.mp3\r\n/m/L2b.mp3\r\n"_s)) << open.toStdString();

        const QStringList index = QString::fromUtf8(bytes(database())).split(u"\r\n"_s);
        int lost = 0;
        for (int row = 1; row <= 2; ++row)
            for (const QString& key :
                 {u"%1b=L%1"_s.arg(row), u"%1c=%2"_s.arg(row).arg(listPath(u"L%1"_s.arg(row))), u"%1d=2"_s.arg(row)})
                if (!index.contains(key))
                    ++lost;
        EXPECT_LE(lost, 1) << bytes(database()).toStdString();
        if (HasFailure())
            break;
    }
    EXPECT_GT(failing, 50);
}

/// Whichever single call of a start fails: nothing but the told normalising of the open list is written.
TEST_F(CatalogueSave, NoSingleFailingCallOfALoadChangesTheDatabaseOrAList)
{
    // From the 60th call on the numbers behind the last row are asked for, four reads each, all alike.
    constexpr int FirstAlike = 60;
    constexpr int LastAlike = 600;
    setting(u"Error"_s, dwordSetting(0));
    int failing = 0;
    for (bool reached = true; reached; failing += failing > FirstAlike && failing < LastAlike ? 20 : 1) {
        SCOPED_TRACE(failing);
        desktop.newProcess();
        desktop.log.failCall(0);
        putExtras(2);
        const QByteArray before = bytes(database());
        root().tDatenbank.Text = data();
        root().Timer2.Enabled = false; // a pass of the housekeeping writes nothing, and there would be many
        const int begin = desktop.log.calls();
        desktop.log.failCall(begin + failing + 1);
        mnuLaden_Click(root());
        reached = desktop.log.calls() > begin + failing;
        desktop.log.failCall(0);
        desktop.messages.take();

        EXPECT_TRUE(QString::fromUtf8(bytes(database())).startsWith(QString::fromUtf8(before)));
        for (const QString& name : {u"L1"_s, u"L2"_s}) {
            const QString list = u"/m/%1a.mp3\r\n/m/%1b.mp3\r\n\r\n"_s.arg(name);
            EXPECT_EQ(list.toStdString(), bytes(listPath(name)).toStdString());
        }
        if (HasFailure())
            break;
    }
    EXPECT_GT(failing, LastAlike);
}

TEST_F(CatalogueSave, WithAutoTagTheCopyIsRenewedSoAnEditOfTheDayStays)
{
    putExtras(2);
    put(backup(), "[Index]\r\n1e=alt\r\n");
    setting(u"AutoTag"_s, dwordSetting(1));
    start();
    writeIndexValue(root(), database(), 1, 'e', u"Neuer Text"_s);
    mnuSpeichern_Click(root());
    EXPECT_EQ("Neuer Text", indexValue(root(), database(), 1, 'e').toStdString());
}

TEST_F(CatalogueSave, TheFirstPanelIsFittedToTheFrame)
{
    putExtras(2);
    start();
    root().xpFrame1.Width = 6543;
    root().sAnzeige[0].Width = 1;
    mnuSpeichern_Click(root());
    EXPECT_EQ(6543, root().sAnzeige[0].Width.value());
}

TEST_F(CatalogueSave, ThePublicEntryWritesTheWholeCatalogue)
{
    putExtras(2);
    start();
    catalogue().setSubItem(1, 1, u"Anders"_s);
    SaveDatabase(root());
    EXPECT_EQ("Anders", indexValue(root(), database(), 1, 'b').toStdString());
}

} // namespace orvantine::fake
