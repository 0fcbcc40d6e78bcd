#include "app/DataFolder.h"
#include "app/FormResize.h"
#include "app/IniFiles.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueWorld.h"
#include "catalogue/mnuLaden.h"
#include "catalogue/mnuSpeichern.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class CatalogueLoad : public CatalogueWorld
{
protected:
    void answerMissing(int count)
    {
        desktop.messages.answer(Answer::Ok, u" Wiedergabelisten überprüfen"_s,
                                u"Es wurden %1 nicht vorhandene Playlisten in der Datenbank gefunden.    \n"
                                u"Überprüfen Sie bitte die Datenbankeinträge oder die Quelldateien."_s.arg(count));
    }

    void answerDouble(Answer answer)
    {
        desktop.messages.answer(answer, u" Playliste hinzufügen"_s,
                                u"Diese Wiedergabeliste ist schon im Datenbestand vorhanden.\n"
                                u"Überprüfen Sie bitte, ob es sich nur um den gleichen Namen handelt.   \n \n"
                                u"Möchten Sie diese Playliste trotzdem erneut hinzufügen ?"_s);
    }
};

} // namespace

TEST_F(CatalogueLoad, AGapInTheNumbersGivesTwoRowsAndTheFavouriteMarkIsReadByThePackedPosition)
{
    const QString one = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    const QString three = putList(u"Drei"_s, {putTrack(u"c"_s), putTrack(u"d"_s)});
    putDatabase("1a=000\r\n1b=Eins\r\n1c=" + one.toUtf8() + "\r\n1d=2\r\n1f=x\r\n2f=y\r\n2g=1\r\n" +
                indexRow(3, {.name = u"Drei"_s, .path = three}));
    start();
    EXPECT_EQ(lines({u"  1 \"000\" \"Eins\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(one),
                     u"> 2 \"002\" \"Drei\" \"%1\" \"2\" [icon Icon_6, 1 icon Icon_6]"_s.arg(three)}),
              rows(catalogue()));
}

TEST_F(CatalogueLoad, AMarkUnderTheNumberBeforeTheGapIsNotSeen)
{
    const QString three = putList(u"Drei"_s, {putTrack(u"c"_s), putTrack(u"d"_s)});
    putDatabase("1f=x\r\n" + indexRow(3, {.name = u"Drei"_s, .path = three, .favourite = u"1"_s}));
    start();
    EXPECT_EQ(lines({u"> 1 \"002\" \"Drei\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(three)}),
              rows(catalogue()));
}

TEST_F(CatalogueLoad, WrongIdsAreShownAsTheyStand)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase("1a=Quatsch\r\n1b=Eins\r\n1c=" + path.toUtf8() + "\r\n1d=77\r\n1f=x\r\n");
    start();
    EXPECT_EQ(lines({u"> 1 \"Quatsch\" \"Eins\" \"%1\" \"77\" [icon Icon_1, 1 icon Icon_1]"_s.arg(path)}),
              rows(catalogue()));
}

TEST_F(CatalogueLoad, ARowWithoutANameIsSkippedThoughItHasAPath)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase("1c=/m/namenlos.m3u\r\n1f=x\r\n" + indexRow(2, {.name = u"Eins"_s, .path = path}));
    start();
    EXPECT_EQ(1, catalogue().count());
    EXPECT_EQ("Eins", catalogue().subItem(1, 1).toStdString());
}

TEST_F(CatalogueLoad, ARowBeyond160IsNeverSeen)
{
    const QString path = putList(u"L"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    QByteArray index = "1f=x\r\n";
    index += indexRow(160, {.name = u"Letzte"_s, .path = path});
    index += indexRow(161, {.name = u"Niemand"_s, .path = path});
    putDatabase(index);
    start();
    EXPECT_EQ(lines({u"> 1 \"159\" \"Letzte\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(path)}),
              rows(catalogue()));
}

TEST_F(CatalogueLoad, ACatalogueOf160RowsShows160)
{
    const QString path = putList(u"L"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    QByteArray index;
    for (int row = 1; row <= 160; ++row)
        index += indexRow(row, {.name = u"L%1"_s.arg(row), .path = path});
    putDatabase(index);
    start();
    EXPECT_EQ(160, catalogue().count());
    EXPECT_EQ("(160)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ(160, catalogue().selectedRow());
}

TEST_F(CatalogueLoad, MissingListsAreDarkRedInNameAndTracksAndTheirNumberIsTold)
{
    const QString path = putList(u"Da"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase(indexRow(1, {.name = u"Weg"_s, .path = u"/m/weg.m3u"_s}) +
                indexRow(2, {.name = u"Fort"_s, .path = u"/m/fort.m3u"_s}) +
                indexRow(3, {.name = u"Da"_s, .path = path}));
    answerMissing(2);
    start();
    EXPECT_EQ(lines({u"  1 \"000\" \"Weg\" \"/m/weg.m3u\" \"2\" [icon Icon_1, 1 icon Icon_1, 1 darkred, 3 darkred]"_s,
                     u"  2 \"001\" \"Fort\" \"/m/fort.m3u\" \"2\" [icon Icon_1, 1 icon Icon_1, 1 darkred, 3 darkred]"_s,
                     u"> 3 \"002\" \"Da\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(path)}),
              rows(catalogue()));
    EXPECT_EQ("box title \" Wiedergabelisten überprüfen\" text \"Es wurden 2 nicht vorhandene Playlisten in der "
              "Datenbank gefunden.    \\nÜberprüfen Sie bitte die Datenbankeinträge oder die Quelldateien.\" icon "
              "exclamation buttons ok answer ok",
              boxes());
    EXPECT_EQ("(missing)", bytes(u"/m/weg.m3u"_s).toStdString());
}

TEST_F(CatalogueLoad, TheNumberOfMissingListsIsToldOnlyWithErrorOneOrAbsent)
{
    struct Case
    {
        std::optional<int> error;
        bool told;
    };
    for (const Case& c : {Case{std::nullopt, true}, Case{1, true}, Case{0, false}, Case{2, false}}) {
        SCOPED_TRACE(c.error.value_or(-1));
        desktop.newProcess();
        if (c.error)
            setting(u"Error"_s, dwordSetting(*c.error));
        putDatabase(indexRow(1, {.name = u"Weg"_s, .path = u"/m/weg.m3u"_s}));
        if (c.told)
            answerMissing(1);
        start();
        EXPECT_EQ(c.told, !boxes().empty());
    }
}

TEST_F(CatalogueLoad, ASecondLoadCountsTheMissingListsAnew)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
    setting(u"CheckEntrys"_s, dwordSetting(0));
    desktop.disk().remove(listPath(u"Eins"_s));
    answerMissing(1);
    start();
    // Under a window that is seen a list that is missing would be made anew.
    root().Visible = false;
    desktop.disk().remove(listPath(u"Zwei"_s));
    answerMissing(2);
    mnuLaden_Click(root());
    EXPECT_EQ(2, root().missingPlaylists);
    put(listPath(u"Eins"_s), "/m/Eins 1.mp3\r\n");
    put(listPath(u"Zwei"_s), "/m/Zwei 1.mp3\r\n");
    desktop.messages.take();
    mnuLaden_Click(root());
    EXPECT_EQ("", boxes());
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 1));
}

TEST_F(CatalogueLoad, BehindALoadTheWindowIsKeptAtItsLeastSizeWithTheButtonsOnAgain)
{
    putCatalogue({u"Eins"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    // Nobody tells of the size before.
    root().Visible = false;
    root().Width.setValueBypassingBindings(100);
    root().Height.setValueBypassingBindings(100);
    bool buttons = false;
    bool told = false;
    const auto watch = root().Height.addNotifier([&] {
        buttons = root().mnuBearbeiten.Enabled.value();
        told = !boxes().empty();
    });
    mnuLaden_Click(root());
    EXPECT_EQ(LeastWidth, root().Width.value());
    EXPECT_EQ(LeastHeight, root().Height.value());
    EXPECT_TRUE(buttons);
    EXPECT_FALSE(told);
}

TEST_F(CatalogueLoad, WhileItLoadsThePointerIsTheArrowWithTheHourglass)
{
    putCatalogue({u"Eins"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    QStringList pointers;
    const auto watch =
        root().Pointer.addNotifier([&] { pointers += QString::number(static_cast<int>(root().Pointer.value())); });
    mnuLaden_Click(root());
    // The new row ends its wait, the display of the last list has one of its own.
    EXPECT_EQ("13 0 11 0", pointers.join(u' ').toStdString());
}

TEST_F(CatalogueLoad, TheLastRowOpensAfterASecondHasGoneBy)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    click(1);
    const auto begin = desktop.events().elapsed();
    QString after990;
    desktop.events().after(std::chrono::milliseconds{990}, [&] { after990 = QString::number(tracks().count()); });
    mnuLaden_Click(root());
    const auto taken = desktop.events().elapsed() - begin;
    EXPECT_GE(taken.count(), 1000);
    EXPECT_LT(taken.count(), 1050);
    EXPECT_EQ("0", after990.toStdString());
    EXPECT_EQ(3, catalogue().selectedRow());
    EXPECT_EQ("3", catalogue().Tag.toStdString());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("Drei", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(CatalogueLoad, WhileItLoadsMenusAndListsAreOff)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    bool listOn = true;
    bool menuOn = true;
    desktop.events().after(std::chrono::milliseconds{500}, [&] {
        listOn = catalogue().Enabled.value();
        menuOn = root().mnuBearbeiten.Enabled.value();
    });
    GetLoadListe(root());
    EXPECT_FALSE(listOn);
    EXPECT_FALSE(menuOn);
    EXPECT_TRUE(catalogue().Enabled.value());
    EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
    EXPECT_EQ(MousePointer::Default, root().Pointer.value());
}

TEST_F(CatalogueLoad, AnEmptyOrMissingDatabaseIsAnEmptyCatalogueWithoutAPause)
{
    start();
    const auto begin = desktop.events().elapsed();
    mnuLaden_Click(root());
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(begin, desktop.events().elapsed());
    EXPECT_EQ("(missing)", bytes(database()).toStdString());
}

TEST_F(CatalogueLoad, InAVisibleReloadTheTextsOfARefusedRowGoToTheRowWhoseNumberIsTheCounterElseNowhere)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
    start();
    answerDouble(Answer::Yes);
    answerDouble(Answer::No);
    answerDouble(Answer::Yes);
    mnuLaden_Click(root());
    // "Drei" is row 2 while the counter stands at 3: its texts find no row, and it keeps those of a new playlist.
    EXPECT_EQ(lines({u"  1 \"000\" \"Eins\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"Eins"_s)),
                     u"> 2 \"001\" \"Drei\" \"%1\" \"0\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"Drei"_s))}),
              rows(catalogue()));
}

TEST_F(CatalogueLoad, ADescriptionOf300CharactersComesBackWith254)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase(indexRow(1, {.name = u"Eins"_s, .path = path, .description = QString(300, u'x')}));
    start();
    EXPECT_EQ(254, indexValue(root(), database(), 1, 'e').size());
    mnuSpeichern_Click(root());
    EXPECT_EQ(QString(254, u'x'), desktop.profiles().value(database(), u"Index"_s, u"1e"_s));
}

TEST_F(CatalogueLoad, AReadOfTheDatabaseThatFailsIsNoEmptyDatabase)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
    setting(u"CheckEntrys"_s, dwordSetting(0));
    start();
    const std::string before = databaseText();
    put(database(), bytes(database()) + "[Options]\r\nx=1\r\n");
    const std::string there = databaseText();
    desktop.memory()->setUnreadable(database());
    mnuLaden_Click(root());
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ("Die Datenbank konnte nicht ganz gelesen werden. Bis zum nächsten Laden bleibt sie, wie sie ist.",
              root().quietLine.Caption.value().toStdString());

    // It can be read again, but the rows in sight are not those of it.
    desktop.memory()->setUnreadable(database(), false);
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    EXPECT_EQ(1, catalogue().count());
    mnuSpeichern_Click(root());
    EXPECT_EQ("Nicht gespeichert: Die Datenbank konnte nicht ganz gelesen werden.",
              root().quietLine.Caption.value().toStdString());
    EXPECT_EQ(there, databaseText());

    mnuLaden_Click(root());
    EXPECT_EQ(3, catalogue().count());
    catalogue().setSubItem(1, 1, u"Anders"_s);
    mnuSpeichern_Click(root());
    EXPECT_NE(databaseText().find("1b=Anders"), std::string::npos);
}

TEST_F(CatalogueLoad, ADatabaseWhoseLinesEndInCrAloneIsNoEmptyDatabase)
{
    const QByteArray there = "[Index]\r1b=Erste\r1c=/fehlt/Erste.m3u\r";
    put(database(), there);
    start();
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ("Die Datenbank konnte nicht ganz gelesen werden. Bis zum nächsten Laden bleibt sie, wie sie ist.",
              root().quietLine.Caption.value().toStdString());
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    root().mnuSpeichern.Click();
    root().mnuBeenden.Click();
    EXPECT_EQ(there.toStdString(), bytes(database()).toStdString());
}

TEST_F(CatalogueLoad, ALoadWhileAKilledCommandIsNotPutBackIsDoubted)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    setting(u"CheckEntrys"_s, dwordSetting(0));
    start();
    desktop.memory()->Trouble = FilesTrouble::Unfinished;
    mnuLaden_Click(root());
    EXPECT_TRUE(root().databaseDoubted);
    desktop.memory()->Trouble.reset();
    mnuLaden_Click(root());
    EXPECT_FALSE(root().databaseDoubted);
}

TEST_F(CatalogueLoad, ADatabaseThatAppearsAfterAStartWithoutOneKeepsItsRowsInFrontOfTheNewOnes)
{
    start();
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    put(database(), bytes(database()) + "2e=Beschrieben\r\n");
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    ASSERT_EQ(3, catalogue().count());
    EXPECT_EQ("Eins", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("Zwei", catalogue().subItem(2, 1).toStdString());
    EXPECT_EQ("Neu", catalogue().subItem(3, 1).toStdString());
    EXPECT_NE(databaseText().find("2b=Zwei\r\n"), std::string::npos);
    EXPECT_NE(databaseText().find("2e=Beschrieben\r\n"), std::string::npos);
    EXPECT_NE(databaseText().find("3b=Neu\r\n"), std::string::npos);
    EXPECT_EQ("Die Datenbank ist wieder da. Ihre Wiedergabelisten stehen vor den neuen.",
              root().quietLine.Caption.value().toStdString());
    catalogue().select(3);
    root().mnuSpeichern.Click();
    EXPECT_EQ(3, catalogue().count());
    EXPECT_NE(databaseText().find("1b=Eins\r\n"), std::string::npos);
}

TEST_F(CatalogueLoad, ASaveThatFailsWhileTheDatabaseIsAwayDoesNotMakeItOurs)
{
    start();
    desktop.log.failNext(u"files.writeBytes "_s + quoted(database()));
    desktop.log.failNext(u"files.appendBytes "_s + quoted(database()));
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    IniFiles::DeleteSection(root(), database(), u"Finder"_s);
    ASSERT_FALSE(desktop.disk().exists(database()));
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    root().mnuSpeichern.Click();
    EXPECT_NE(databaseText().find("1b=Eins\r\n"), std::string::npos);
    EXPECT_NE(databaseText().find("2b=Zwei\r\n"), std::string::npos);
}

TEST_F(CatalogueLoad, ADatabaseThatAppearsKeepsItsDescriptionsAlsoAtTheSaveAfterTheNext)
{
    start();
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    put(backupFile(root()), bytes(database()) + "2e=Von gestern\r\n");
    put(database(), bytes(database()) + "2e=Beschrieben\r\n");
    desktop.memory()->setModified(database(), QDateTime(QDate(2026, 11, 19), QTime(20, 0)));
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    root().mnuSpeichern.Click();
    EXPECT_NE(databaseText().find("2e=Beschrieben\r\n"), std::string::npos);
}

TEST_F(CatalogueLoad, ADatabaseThatAppearsAndCannotBeReadAtOnceKeepsItsRows)
{
    start();
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    desktop.log.failNext(u"files.readBytes "_s + quoted(database()));
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    EXPECT_NE(databaseText().find("1b=Eins\r\n"), std::string::npos);
    EXPECT_NE(databaseText().find("2b=Zwei\r\n"), std::string::npos);
}

TEST_F(CatalogueLoad, ADatabaseThatTheProgramHasMadeItselfIsSavedAsEver)
{
    start();
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    desktop.messages.enter(u"Noch eine"_s);
    root().mnuNeu.Click();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_NE(databaseText().find("1b=Neu\r\n"), std::string::npos);
    EXPECT_NE(databaseText().find("2b=Noch eine\r\n"), std::string::npos);
}

TEST_F(CatalogueLoad, ADatabaseThatAppearsWithoutACatalogueTakesTheRows)
{
    start();
    put(database(), "[Options]\r\nx=1\r\n");
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    EXPECT_EQ(1, catalogue().count());
    EXPECT_NE(databaseText().find("x=1\r\n"), std::string::npos);
    EXPECT_NE(databaseText().find("1b=Neu\r\n"), std::string::npos);
}

TEST_F(CatalogueLoad, ADatabaseThatAppearsAndLeavesNoRoomStaysAsItIs)
{
    start();
    QByteArray index;
    for (int row = 1; row <= MostPlaylists; ++row)
        index += indexRow(row, {.name = u"L%1"_s.arg(row), .path = u"/m/L%1.m3u"_s.arg(row)});
    putDatabase(index);
    const std::string before = databaseText();
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    EXPECT_EQ(before, databaseText());
    EXPECT_EQ("Nicht gespeichert: Es gibt inzwischen eine andere Datenbank.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(CatalogueLoad, OneFailingReadInsideALoadIsEnough)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
    setting(u"CheckEntrys"_s, dwordSetting(0));
    start();
    put(database(), bytes(database()) + "[Options]\r\nx=1\r\n");
    const std::string before = databaseText();
    desktop.log.failNext(u"files.readBytes \"%1\""_s.arg(database()), 1);
    mnuLaden_Click(root());
    mnuSpeichern_Click(root());
    EXPECT_EQ(before, databaseText());
}

} // namespace orvantine::fake
