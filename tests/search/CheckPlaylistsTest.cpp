#include "catalogue/CatalogueWorld.h"
#include "search/ErrorListe.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// "Eins" and "Zwei" lie in "Playlisten", "Fremd" elsewhere; "Lose" is no list of the catalogue.
class Checking : public CatalogueWorld
{
protected:
    void startAll()
    {
        putCatalogue({u"Eins"_s, u"Zwei"_s});
        putList(u"Lose"_s, {u"/m/lose.mp3"_s});
        put(foreign(), "/m/Eins 1.mp3\r\n/m/fehlt.mp3\r\n\r\n");
        put(database(), bytes(database()) + indexRow(3, {.name = u"Fremd"_s, .path = foreign()}));
        start();
        click(1);
    }

    [[nodiscard]] static QString foreign() { return u"/fremd/Fremd.m3u"_s; }
    ErrorListe& form() { return *root().errorListe; }

    void check(const std::function<void()>& inDialog = {})
    {
        desktop.messages.answer(Answer::Yes);
        desktop.forms().whileModal(u"ErrorListe"_s, [this, inDialog](Form&) {
            if (inDialog)
                inDialog();
            if (form().Visible.value())
                form().bAbbrechen.Click();
        });
        root().mnuCheckPlaylists.Click();
    }

    /// Actions on the disk and reads, each once.
    static QStringList stepsOf(const QStringList& calls)
    {
        QStringList steps;
        const QStringList starts = LoggingFiles::actions() + QStringList{u"files.read"_s, u"files.list "_s};
        for (const QString& call : calls)
            for (const QString& start : starts)
                if (call.startsWith(start) && !steps.contains(call))
                    steps += call;
        return steps;
    }

    /// Content of the file that the entry of that number names, "(missing)" for none.
    [[nodiscard]] std::string stored(int number)
    {
        return bytes(desktop.profiles().value(database(), u"Index"_s, QString::number(number) + u'c')).toStdString();
    }
};

} // namespace

TEST_F(Checking, RowsInSightPointToTheCopiesAndAreSavedSo)
{
    startAll();
    click(3);
    check();
    const QString local = data() + u"Playlisten/Fremd.m3u"_s;
    EXPECT_EQ(local.toStdString(), catalogue().subItem(3, 2).toStdString());
    EXPECT_TRUE(root().trackList.isOf(local));
    root().mnuSpeichern.Click();
    EXPECT_EQ(local.toStdString(), desktop.profiles().value(database(), u"Index"_s, u"3c"_s).toStdString());
}

TEST_F(Checking, AListOfTheCatalogueIsThereAtEveryMoment)
{
    startAll();
    desktop.messages.answer(Answer::Yes);
    int looks = 0;
    for (int yield = 1; yield <= 6; ++yield)
        desktop.events().atYield(yield, [&] {
            ++looks;
            EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n", stored(1));
            EXPECT_EQ("/m/Zwei 1.mp3\r\n/m/Zwei 2.mp3\r\n\r\n", stored(2));
            EXPECT_NE("(missing)", stored(3));
        });
    desktop.forms().whileModal(u"ErrorListe"_s, [this](Form&) { form().bAbbrechen.Click(); });
    root().mnuCheckPlaylists.Click();
    EXPECT_EQ(6, looks);
}

TEST_F(Checking, ADatabaseThatCannotBeReadMovesNoList)
{
    startAll();
    put(database(), bytes(database()) + "\r\n");
    desktop.log.failNext(u"files.readBytes \""_s + database());
    check();
    EXPECT_NE("(missing)", bytes(listPath(u"Lose"_s)).toStdString());
    EXPECT_NE("(missing)", bytes(listPath(u"Eins"_s)).toStdString());
    EXPECT_EQ("Nichts bereinigt: Die Datenbank konnte nicht ganz gelesen werden.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(Checking, ACleanUpWithoutADatabaseSaysThatItRemovedNothing)
{
    startAll();
    put(listPath(u"Lose"_s).chopped(3) + u"bak"_s, "alt");
    put(database(), bytes(database()) + "\r\n");
    desktop.log.failNext(u"files.readBytes \""_s + database());
    desktop.messages.answer(Answer::Ok);
    root().mnuRecycle.Click();
    EXPECT_EQ("alt", bytes(listPath(u"Lose"_s).chopped(3) + u"bak"_s).toStdString());
    EXPECT_EQ("Nichts bereinigt: Die Datenbank konnte nicht ganz gelesen werden.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(Checking, AListThatLiesBesideItsTracksFindsThemFromItsNewPlace)
{
    startAll();
    put(foreign(), "nah.mp3\r\n/m/Eins 1.mp3\r\n\r\n");
    put(u"/fremd/nah.mp3"_s, "mp3");
    check();
    EXPECT_EQ("/fremd/nah.mp3\r\n/m/Eins 1.mp3\r\n\r\n", stored(3));
    EXPECT_EQ("nah.mp3\r\n/m/Eins 1.mp3\r\n\r\n", bytes(foreign()).toStdString());
}

TEST_F(Checking, TheEndOfTheProgramInTheCheckShowsNothingMore)
{
    startAll();
    desktop.messages.answer(Answer::Yes);
    desktop.events().atYield(2, [this] { desktop.events().endProcess(); });
    root().mnuCheckPlaylists.Click();
    EXPECT_NE("(missing)", stored(1));
    EXPECT_NE("(missing)", stored(2));
    EXPECT_EQ(lines({}), calls({u"forms.showModal"_s}));
}

TEST_F(Checking, TheListOfFaultsWritesNoPlaylist)
{
    putTrack(u"da"_s);
    put(u"/l/Host.m3u"_s, "/m/da.mp3\n#x\n/m/weg.mp3\n");
    put(u"/l/Kette.nml"_s, "<NML><ENTRY><LOCATION DIR=\"/:m/:\" FILE=\"weg.mp3\"></LOCATION></ENTRY></NML>\r\n");
    start();
    QByteArray index = indexRow(1, {.name = u"Host"_s, .path = u"/l/Host.m3u"_s});
    putDatabase(index);
    forgetCalls();
    desktop.forms().whileModal(u"ErrorListe"_s, [this](Form&) { form().bAbbrechen.Click(); });
    desktop.forms().showModal(form());
    EXPECT_EQ("", actions());
    EXPECT_EQ("/m/da.mp3\n#x\n/m/weg.mp3\n", bytes(u"/l/Host.m3u"_s).toStdString());
    EXPECT_EQ("  1 \"001\" \"02\" \"weg\" \"/m/weg.mp3\" \"Host\" [icon Icon_2, 1 icon Icon_2]",
              rows(form().LErrorView));
}

TEST_F(Checking, TwentyThousandFaultsAreListed)
{
    static constexpr int Faults = 20000;
    QByteArray list;
    for (int i = 1; i <= Faults; ++i)
        list += "/weg/" + QByteArray::number(i) + ".mp3\r\n";
    put(u"/l/Viele.m3u"_s, list);
    start();
    putDatabase(indexRow(1, {.name = u"Viele"_s, .path = u"/l/Viele.m3u"_s}));
    desktop.forms().whileModal(u"ErrorListe"_s, [this](Form&) {
        EXPECT_EQ(Faults, form().LErrorView.count());
        EXPECT_EQ("20000", form().LErrorView.text(Faults).toStdString());
        EXPECT_EQ("Es wurden 0 Playlisten und 20000 Sounddateien gefunden.",
                  form().LAnzahl.Caption.value().toStdString());
        form().bAbbrechen.Click();
    });
    desktop.forms().showModal(form());
}

TEST_F(Checking, AListOfThatNameIsNotTakenForAMissingOne)
{
    put(u"/l/Liste.m3u"_s, "/weg/a.mp3\r\n");
    start();
    putDatabase(indexRow(1, {.name = u"PLAYLISTE"_s, .path = u"/l/Liste.m3u"_s}));
    desktop.forms().whileModal(u"ErrorListe"_s, [this](Form&) {
        form().LErrorView.select(1);
        form().LErrorView.Click();
        EXPECT_EQ("FEHLERHAFTE SOUNDDATEI IN PLAYLISTE: PLAYLISTE", form().LFehler.Caption.value().toStdString());
        form().bAbbrechen.Click();
    });
    desktop.forms().showModal(form());
}

TEST_F(Checking, WhicheverStepFailsEachListIsFound)
{
    startAll();
    const qsizetype before = desktop.log.lines().size();
    check();
    ASSERT_EQ("(missing)", bytes(listPath(u"Lose"_s)).toStdString());
    const QStringList steps = stepsOf(desktop.log.lines().mid(before));
    ASSERT_GT(steps.size(), 10);
    for (const QString& step : steps) {
        SCOPED_TRACE(step.toStdString());
        desktop.newProcess();
        desktop.disk().remove(data() + u"Playlisten/Fremd.m3u"_s);
        startAll();
        desktop.log.failNext(step);
        check();
        EXPECT_EQ("/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n\r\n", stored(1));
        EXPECT_EQ("/m/Zwei 1.mp3\r\n/m/Zwei 2.mp3\r\n\r\n", stored(2));
        EXPECT_EQ("/m/Eins 1.mp3\r\n/m/fehlt.mp3\r\n\r\n", stored(3));
        EXPECT_EQ(
            "/m/lose.mp3\r\n\r\n",
            bytes(root().files.exists(listPath(u"Lose"_s)) ? listPath(u"Lose"_s) : data() + u"Playlisten/Lose.bak"_s)
                .toStdString());
        EXPECT_TRUE(root().commands.idle());
        desktop.messages.take();
    }
}

TEST_F(Checking, WhicheverStepFailsTheCleanUpRemovesCopiesAlone)
{
    startAll();
    const QString copy = data() + u"Playlisten/Alt.bak"_s;
    const auto cleanUp = [&] {
        put(copy, "x\r\n");
        desktop.messages.answer(Answer::Ok);
        root().mnuRecycle.Click();
    };
    const qsizetype before = desktop.log.lines().size();
    cleanUp();
    ASSERT_EQ("(missing)", bytes(copy).toStdString());
    const QStringList steps = stepsOf(desktop.log.lines().mid(before));
    ASSERT_GT(steps.size(), 1);
    for (const QString& step : steps) {
        desktop.log.failNext(step);
        cleanUp();
        EXPECT_NE("(missing)", stored(1)) << step.toStdString();
        EXPECT_NE("(missing)", bytes(listPath(u"Lose"_s)).toStdString()) << step.toStdString();
    }
}

TEST_F(Checking, AListOfAnotherKindIsCopiedByteForByte)
{
    struct Kind
    {
        QString name;
        QByteArray bytes;
    };
    for (const Kind& kind :
         {Kind{u"Set.nml"_s, "<?xml version=\"1.0\"?>\r\n<NML VERSION=\"19\">\r\n<LOCATION DIR=\"/:m/:\" FILE=\"Eins "
                             "1.mp3\" VOLUME=\"\"></LOCATION>\r\n</NML>\r\n"},
          Kind{u"Set.pls"_s, "[playlist]\r\nFile1=/m/Eins 1.mp3\r\nNumberOfEntries=1\r\nVersion=2\r\n"}}) {
        SCOPED_TRACE(kind.name.toStdString());
        desktop.newProcess();
        const QString eins = putList(u"Eins"_s, {putTrack(u"Eins 1"_s), putTrack(u"Eins 2"_s)});
        put(u"/fremd/"_s + kind.name, kind.bytes);
        putDatabase(indexRow(1, {.name = u"Set"_s, .path = u"/fremd/"_s + kind.name}) +
                    indexRow(2, {.name = u"Eins"_s, .path = eins}));
        start();
        check();
        EXPECT_EQ(kind.bytes.toStdString(), bytes(data() + u"Playlisten/"_s + kind.name).toStdString());
    }
}

TEST_F(Checking, AListThatCannotBeReadIsNotTakenForOneWithoutFaults)
{
    startAll();
    for (int read = 1; read <= 8; ++read)
        desktop.log.failNext(u"files.readBytes \""_s + listPath(u"Zwei"_s), read);
    desktop.forms().whileModal(u"ErrorListe"_s, [this](Form&) {
        EXPECT_TRUE(form().LHinweis.Visible.value());
        EXPECT_EQ("Nicht alle Playlisten konnten gelesen werden.", form().LHinweis.Caption.value().toStdString());
        form().bAbbrechen.Click();
    });
    desktop.forms().showModal(form());
}

} // namespace orvantine::fake
