#include "operations/Reordering.h"

#include "catalogue/CatalogueWorld.h"

#include "app/IniFiles.h"
#include "catalogue/CatalogueDatabase.h"
#include "operations/Positionen.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// Three playlists with descriptions, dates and marks of their own. The first click opens one of them.
class Reordering : public CatalogueWorld
{
protected:
    void startWith(int row)
    {
        QByteArray index;
        const QStringList names{u"Eins"_s, u"Zwei"_s, u"Drei"_s};
        for (int number = 1; number <= 3; ++number) {
            const QString& name = names[number - 1];
            const QString path = putList(name, {putTrack(name + u" 1"_s), putTrack(name + u" 2"_s)});
            index += indexRow(number, {.name = name,
                                       .path = path,
                                       .tracks = u"2"_s,
                                       .description = u"Text "_s + name,
                                       .date = u"0%1.01.2001"_s.arg(number),
                                       .favourite = number == 2 ? u"1"_s : QString()});
        }
        putDatabase(index);
        setting(u"CheckEntrys"_s, dwordSetting(1));
        start();
        click(row);
        forgetCalls();
    }

    /// The keys of a number, "(none)" for none, with the folder of the lists left out.
    [[nodiscard]] std::string keys(int number, const QString& file = {})
    {
        QString text;
        for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'g'}) {
            const QString key = QString::number(number) + QLatin1Char(letter);
            const bool there = desktop.profiles()
                                   .keys(file.isEmpty() ? database() : file, u"Index"_s)
                                   .contains(key, Qt::CaseInsensitive);
            text += there ? IniFiles::ReadValue(root(), file.isEmpty() ? database() : file, u"Index"_s, key) : u"-"_s;
            text += u'|';
        }
        return text.remove(data() + u"Playlisten/"_s).toStdString();
    }

    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= catalogue().count(); ++row)
            texts += (row == catalogue().selectedRow() ? u"*"_s : QString()) + catalogue().subItem(row, 1);
        return texts.join(u' ').toStdString();
    }

    /// Loads the catalogue without the question about doubles.
    void reload()
    {
        setting(u"CheckEntrys"_s, dwordSetting(0));
        mnuLaden_Click(root());
    }

    [[nodiscard]] std::string sounds() { return calls({u"cue"_s}); }

    Positionen& form() { return *root().positionen; }
    void openDialog(const std::function<void()>& script)
    {
        desktop.forms().whileModal(u"Positionen"_s, [script](Form&) { script(); });
        mnuVerschiebung_Click(root(), 4);
    }
    void confirm()
    {
        desktop.messages.answer(Answer::Ok, u" Orvanten Manager"_s,
                                u"Es wurde eine Datensicherungsdatei unter ''Orvanten.bak'' erstellt.   "_s);
        form().BReady.Click();
    }
};

} // namespace

TEST_F(Reordering, AStepUpTakesDescriptionDateAndMarkAlong)
{
    startWith(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("*Zwei Eins Drei", names());
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2)) << "the neighbour keeps its old ID";
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
}

TEST_F(Reordering, TheDescriptionOfTheMovedListIsItsOwnThoughTheSaveNamesTracksByTheirTags)
{
    setting(u"AutoTag"_s, dwordSetting(1));
    desktop.tags.tracks[u"/m/Zwei 1.mp3"_s] = {.title = u"Lied"_s, .artist = u"Wir"_s};
    startWith(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
    EXPECT_EQ("Wir - Lied", desktop.profiles().value(database(), u"TagInfo"_s, u"/m/Zwei 1.mp3"_s).toStdString());
}

TEST_F(Reordering, TheDateIsThatWhichTheWindowShowsAfterTheWaitAndBeforeTheMove)
{
    startWith(2);
    desktop.events().after(std::chrono::milliseconds{500}, [this] { root().tDatum.Caption = u"09.09.1999"_s; });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|09.09.1999|1|", keys(1));
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
}

TEST_F(Reordering, TheDatabaseAndItsCopyAreNamedAfterTheProgramsFile)
{
    startWith(2);
    root().services.start.stem = u"Anders"_s;
    put(data() + u"Anders.dat"_s, bytes(database()));
    const std::string before = databaseText();
    const std::string copyBefore = backupText();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(before, withoutFolder(bytes(data() + u"Anders.bak"_s)));
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1, data() + u"Anders.dat"_s));
    openDialog([this] {
        form().LSortView.move(0, 2);
        confirm();
    });
    EXPECT_EQ("002|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(3, data() + u"Anders.dat"_s));
    EXPECT_EQ(before, databaseText()) << "the other file is not touched";
    EXPECT_EQ(copyBefore, backupText());
}

TEST_F(Reordering, AKeyThatCannotBeWrittenIsSkippedInAStepWithoutAMessage)
{
    startWith(2);
    desktop.log.failNext(u"files.appendBytes"_s, 3);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("*Zwei Eins Drei", names());
    EXPECT_EQ("", boxes());
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1)) << "the rewriting brings the key of the save";
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
}

TEST_F(Reordering, AStepTakesItsFirstStepsInTheirOrder)
{
    startWith(1);
    desktop.events().after(std::chrono::milliseconds{500}, [this] {
        const std::string done = calls({u"settings.setValue"_s, u"files.copy"_s});
        const std::size_t off = done.find("\"CheckEntrys\"");
        const std::size_t copied = done.find("Orvantine.bak");
        ASSERT_NE(off, std::string::npos) << done;
        ASSERT_NE(copied, std::string::npos) << done;
        EXPECT_LT(off, copied) << done;
        EXPECT_EQ("", sounds()) << "the cue comes behind the wait";
    });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("cue.play PLAY 6", sounds());
}

TEST_F(Reordering, AStepDownTakesDescriptionDateAndMarkAlong)
{
    startWith(2);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("Eins Drei *Zwei", names());
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(1));
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(2));
    EXPECT_EQ("002|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(3));
}

TEST_F(Reordering, AStepThatAFavouritePassesLeavesTheMarkWithIt)
{
    startWith(1);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("Zwei *Eins Drei", names());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
    EXPECT_EQ("001|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(2));
}

TEST_F(Reordering, TheButtonsDoTheSameAsTheCommands)
{
    startWith(2);
    root().bMoveDown.Click();
    EXPECT_EQ("Eins Drei *Zwei", names());
    root().bMoveUp.Click();
    EXPECT_EQ("Eins *Zwei Drei", names());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2));
}

TEST_F(Reordering, AfterStepsTheCatalogueLoadsInTheNewOrder)
{
    startWith(3);
    root().mnuVerschiebung[1].Click();
    root().mnuVerschiebung[1].Click();
    reload();
    EXPECT_EQ("Drei Eins *Zwei", names());
    EXPECT_EQ("Text Drei", indexValue(root(), database(), 1, 'e').toStdString());
    EXPECT_EQ("Text Eins", indexValue(root(), database(), 2, 'e').toStdString());
    EXPECT_EQ("Text Zwei", indexValue(root(), database(), 3, 'e').toStdString());
}

TEST_F(Reordering, TheCopyHoldsTheStateBeforeTheStep)
{
    startWith(2);
    const std::string before = databaseText();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(before, backupText());
}

TEST_F(Reordering, AStepWaitsOneSecond)
{
    startWith(2);
    const auto begin = desktop.events().elapsed();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(1000, (desktop.events().elapsed() - begin).count() / 10 * 10);
}

TEST_F(Reordering, TheCopyIsMadeBeforeTheWaitAndTheKeysAreReadBehindIt)
{
    startWith(2);
    desktop.events().after(std::chrono::milliseconds{500}, [this] {
        EXPECT_EQ("Eins *Zwei Drei", names());
        EXPECT_NE("(missing)", bytes(backup()).toStdString());
        writeIndexValue(root(), database(), 1, 'e', u"später"_s);
    });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Eins|Eins.m3u|2|später|01.01.2001||", keys(2));
}

TEST_F(Reordering, TheTopRowUpPlaysPlayAndSavesAndKeepsTheOrder)
{
    startWith(1);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("cue.play PLAY 6", sounds());
    EXPECT_EQ("*Eins Zwei Drei", names());
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(1));
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2)) << "no row is harmed";
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
    EXPECT_EQ("|||||||", keys(0)) << "the neighbour's values go to number 0";
    EXPECT_EQ("0", catalogue().Tag.toStdString());
}

TEST_F(Reordering, TheLastRowDownPlaysStopAndSavesAndKeepsTheOrder)
{
    startWith(3);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("cue.play STOP 6", sounds());
    EXPECT_EQ("Eins Zwei *Drei", names());
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001||", keys(1));
    EXPECT_EQ("0", catalogue().Tag.toStdString());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2)) << "no row is harmed";
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001||", keys(3));
    EXPECT_EQ("|||||||", keys(4)) << "the neighbour's values go to count + 1";
    reload();
    EXPECT_EQ(3, catalogue().count());
}

TEST_F(Reordering, InTheMiddleNoCueSounds)
{
    startWith(2);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("", sounds());
}

TEST_F(Reordering, TheBackupIsMadeAlsoByAnEdgeStep)
{
    startWith(1);
    const std::string before = databaseText();
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(before, backupText());
}

TEST_F(Reordering, TheCheckIsOffForTheTimeOfTheMove)
{
    startWith(2);
    desktop.events().after(std::chrono::milliseconds{500},
                           [this] { EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString()); });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
}

TEST_F(Reordering, ACheckThatWasOffOrAbsentStaysOff)
{
    startWith(2);
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
    desktop.settings.drop(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"CheckEntrys"_s);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
}

TEST_F(Reordering, AnUnmarkedDescriptionIsNotTakenAlong)
{
    startWith(2);
    root().LSoundCaption.Tag = u"0"_s;
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("000|Zwei|Zwei.m3u|2||02.01.2001|1|", keys(1));
}

TEST_F(Reordering, TheMoveMarkStandsForTheTimeOfAMoveAndTheTracksAreUnsorted)
{
    startWith(2);
    tracks().setSorted(true);
    QString during;
    catalogue().LockUpdate = [](bool) {};
    const auto watch = catalogue().selection().addNotifier([&] { during += root().bMoveDown.Tag; });
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ(during.left(1), u"1"_s);
    EXPECT_EQ("0", root().bMoveDown.Tag.toStdString());
    EXPECT_FALSE(tracks().sorted());
    EXPECT_EQ("0", catalogue().Tag.toStdString()) << "the next click loads anew";
}

TEST_F(Reordering, AStepAskedForWhileAnotherOneWaitsIsPassedOver)
{
    startWith(3);
    desktop.events().after(std::chrono::milliseconds{300}, [this] { root().bMoveUp.Click(); });
    root().bMoveUp.Click();
    EXPECT_EQ("Eins *Drei Zwei", names());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(3));
}

TEST_F(Reordering, WithoutASelectedRowNoKeyIsWritten)
{
    startWith(1);
    catalogue().clearSelection();
    desktop.messages.answer(Answer::Ok, u" Wiedergabeliste speichern"_s,
                            u"Die Wiedergabeliste konnte nicht ordnungsgemäss gespeichert werden.    "_s);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("Eins Zwei Drei", names());
    EXPECT_EQ("-|-|-|-|-|-|-|", keys(0));
    EXPECT_EQ("-|-|-|-|-|-|-|", keys(-1));
    EXPECT_EQ("", sounds());
}

TEST_F(Reordering, WithTheFavouritesFilterOnNothingIsWrittenAndTheDialogStaysAway)
{
    startWith(2);
    root().mnuFavoritenShow.Tag = u"1"_s;
    catalogue().remove(1);
    const std::string before = databaseText();
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("Drei *Zwei", names());
    root().mnuVerschiebung[4].Click();
    EXPECT_EQ(before, databaseText());
}

TEST_F(Reordering, AFailingCopyLeavesTheStepToGoOn)
{
    startWith(2);
    desktop.log.failNext(u"files.copy"_s);
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("*Zwei Eins Drei", names());
    EXPECT_EQ("000|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(1));
}

TEST_F(Reordering, OneOfAHundredAndSixtyRowsMovesWithTheLimitTold)
{
    QByteArray index;
    const QString path = putList(u"Alle"_s, {putTrack(u"a"_s)});
    for (int number = 1; number <= 160; ++number)
        index += indexRow(number, {.name = u"L%1"_s.arg(number), .path = path, .description = u"T%1"_s.arg(number)});
    putDatabase(index);
    setting(u"Error"_s, dwordSetting(0));
    start();
    click(160);
    setting(u"CheckEntrys"_s, dwordSetting(1));
    desktop.messages.script({.answer = Answer::Ok,
                             .entered = {},
                             .title = u" Wiedergabelisten verwalten"_s,
                             .text = {},
                             .meanwhile = [this] {
                                 EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString());
                                 EXPECT_EQ("1", root().bMoveDown.Tag.toStdString());
                             }});
    root().mnuVerschiebung[1].Click();
    EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
    EXPECT_EQ("0", root().bMoveDown.Tag.toStdString());
    EXPECT_EQ("158|L160|Alle.m3u|1|T160|01.02.2003||", keys(159));
    EXPECT_EQ("158|L159|Alle.m3u|2|T159|01.02.2003||", keys(160));
    click(160);
    desktop.messages.answer(Answer::Ok);
    root().mnuVerschiebung[2].Click();
    EXPECT_EQ("|||||||", keys(161));
    EXPECT_EQ("159|L159|Alle.m3u|1|T159|01.02.2003||", keys(160));
}

// The dialog

TEST_F(Reordering, TheDialogShowsAllRowsWithPathAndNumber)
{
    startWith(1);
    openDialog([this] {
        EXPECT_EQ("Eins\t{p}Eins.m3u\t1\nZwei\t{p}Zwei.m3u\t2\nDrei\t{p}Drei.m3u\t3",
                  form().LSortView.List.value().join(u'\n').replace(data() + u"Playlisten/"_s, u"{p}"_s).toStdString());
        EXPECT_EQ(" Einträge positionieren", form().Caption.value().toStdString());
        EXPECT_EQ("Markieren Sie den Eintrag und halten Sie die Maustaste gedrückt während Sie den Eintrag nach oben "
                  "oder unten ziehen.",
                  form().sHilfe.Caption.value().toStdString());
        EXPECT_EQ("3 Playlisten in der Datenbank", form().sPlaylisten.Caption.value().toStdString());
        EXPECT_EQ("&Abbrechen", form().bAbbrechen.Caption.value().toStdString());
        EXPECT_EQ("&Hilfe", form().bHilfe.Caption.value().toStdString());
        form().bAbbrechen.Click();
    });
}

TEST_F(Reordering, CancelUnloadsTheDialogWithNoChange)
{
    startWith(1);
    const std::string before = databaseText();
    openDialog([this] {
        form().LSortView.move(0, 2);
        form().bAbbrechen.Click();
    });
    EXPECT_EQ(before, databaseText());
    EXPECT_EQ("*Eins Zwei Drei", names());
    EXPECT_EQ("dword 0", setting(u"CheckEntrys"_s).toStdString()) << "the check is not put back";
    openDialog([this] {
        EXPECT_EQ("Eins", form().LSortView.List.value().first().section(u'\t', 0, 0).toStdString()) << "loaded anew";
        form().bAbbrechen.Click();
    });
}

TEST_F(Reordering, TheDialogComesBehindTheCopyAndTheWait)
{
    startWith(1);
    const std::string before = databaseText();
    const auto begin = desktop.events().elapsed();
    openDialog([&] {
        EXPECT_EQ(before, backupText());
        EXPECT_EQ(1000, (desktop.events().elapsed() - begin).count() / 10 * 10);
        form().bAbbrechen.Click();
    });
}

TEST_F(Reordering, TheNewOrderIsWrittenWithEverythingOfEachRow)
{
    startWith(1);
    const std::string before = databaseText();
    openDialog([this] {
        form().LSortView.move(2, 0);
        confirm();
    });
    EXPECT_EQ(before, backupText());
    EXPECT_EQ("000|Drei|Drei.m3u|2|Text Drei|03.01.2001|0|", keys(1));
    EXPECT_EQ("001|Eins|Eins.m3u|2|Text Eins|01.01.2001|0|", keys(2));
    EXPECT_EQ("002|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(3));
    EXPECT_EQ("Drei Eins *Zwei", names());
    EXPECT_EQ("box title \" Orvanten Manager\" text \"Es wurde eine Datensicherungsdatei unter ''Orvanten.bak'' "
              "erstellt.   \" icon information buttons ok answer ok",
              boxes());
    EXPECT_FALSE(form().Visible.value());
}

TEST_F(Reordering, AnUnchangedOrderStillRewritesEveryKeyAndRenumbers)
{
    startWith(1);
    writeIndexValue(root(), database(), 2, 'a', u"777"_s);
    openDialog([this] { confirm(); });
    EXPECT_EQ("000|Eins|Eins.m3u|2|Text Eins|01.01.2001|0|", keys(1));
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2));
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001|0|", keys(3));
}

TEST_F(Reordering, AnEmptyValueIsNotWritten)
{
    startWith(1);
    writeIndexValue(root(), database(), 1, 'e', {});
    openDialog([this] { confirm(); });
    EXPECT_EQ("000|Eins|Eins.m3u|2|-|01.01.2001|0|", keys(1));
}

TEST_F(Reordering, ReadyTakesItsStepsInTheirOrder)
{
    startWith(1);
    openDialog([this] {
        forgetCalls();
        confirm();
        const std::string done = actions();
        const std::size_t removed = done.find("files.remove \"{data}/Orvantine.bak\"");
        const std::size_t copied = done.find("files.copy \"{data}/Orvantine.dat\" to \"{data}/Orvantine.bak\"");
        EXPECT_NE(removed, std::string::npos) << done;
        EXPECT_NE(copied, std::string::npos) << done;
        EXPECT_LT(removed, copied) << done;
        EXPECT_LT(copied, done.find("files.replaceBytes \"{data}/Orvantine.dat\"")) << done;
    });
}

TEST_F(Reordering, WhileReadyWorksTheDialogIsLockedAndSaysSo)
{
    startWith(1);
    openDialog([this] {
        bool seen = false;
        desktop.events().after(std::chrono::milliseconds{0}, [this, &seen] {
            seen = true;
            EXPECT_FALSE(form().BReady.Enabled.value());
            EXPECT_FALSE(form().bAbbrechen.Enabled.value());
            EXPECT_FALSE(form().LSortView.Enabled.value());
            EXPECT_EQ(" Datensortierung", form().Caption.value().toStdString());
            EXPECT_EQ("-|-|-|-|-|-|-|", keys(1)) << "the section is deleted, nothing is written yet";
        });
        form().LSortView.move(2, 0);
        desktop.messages.script(
            {.answer = Answer::Ok, .entered = {}, .title = {}, .text = {}, .meanwhile = [this, &seen] {
                 EXPECT_TRUE(seen);
                 EXPECT_EQ("*Eins Zwei Drei", names()) << "loaded anew behind the box";
                 EXPECT_EQ("1", catalogue().Tag.toStdString());
                 EXPECT_EQ("000|Drei|Drei.m3u|2|Text Drei|03.01.2001|0|", keys(1));
                 EXPECT_FALSE(form().BReady.Enabled.value());
                 EXPECT_FALSE(form().bAbbrechen.Enabled.value());
                 EXPECT_FALSE(form().LSortView.Enabled.value());
                 EXPECT_EQ(" Datensortierung", form().Caption.value().toStdString());
                 EXPECT_EQ("Bitte warten Sie, bis die Reorganisation der Wiedergabelisten "
                           "abgeschlossen ist.",
                           form().sHilfe.Caption.value().toStdString());
             }});
        form().BReady.Click();
    });
}

TEST_F(Reordering, WithoutABackupOnlyTheIdsAreLeft)
{
    startWith(1);
    openDialog([this] {
        desktop.log.failNext(u"files.copy"_s);
        confirm();
    });
    EXPECT_EQ("000|-|-|-|-|-|0|", keys(1));
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ("0", catalogue().Tag.toStdString());
}

TEST_F(Reordering, AKeyThatCannotBeWrittenIsSkippedByReady)
{
    startWith(1);
    setting(u"Error"_s, dwordSetting(0));
    openDialog([this] {
        desktop.log.failNext(u"files.appendBytes"_s, 5);
        confirm();
    });
    EXPECT_EQ("000|Eins|Eins.m3u|2|-|01.01.2001|0|", keys(1));
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2));
    EXPECT_EQ("002|Drei|Drei.m3u|2|Text Drei|03.01.2001|0|", keys(3));
    EXPECT_EQ(1U, desktop.messages.take().size());
}

TEST_F(Reordering, ABackupThatCannotBeDeletedIsOverwritten)
{
    startWith(1);
    const std::string before = databaseText();
    openDialog([this] {
        desktop.log.failNext(u"files.remove"_s);
        confirm();
    });
    EXPECT_EQ(before, backupText());
    EXPECT_EQ("001|Zwei|Zwei.m3u|2|Text Zwei|02.01.2001|1|", keys(2));
}

TEST_F(Reordering, ANameWithATabLosesItsNumber)
{
    EXPECT_EQ(1, sortLineOf(u"Rock\tund\tPop.m3u\t7"_s).number);
    EXPECT_EQ("Rock", sortLineOf(u"Rock\tund\tPop.m3u\t7"_s).name.toStdString());
    EXPECT_EQ(7, sortLineOf(u"Rock\tC:\\Pop.m3u\t7"_s).number);
    EXPECT_EQ("C:\\Pop.m3u", sortLineOf(u"Rock\tC:\\Pop.m3u\t7"_s).path.toStdString());
    EXPECT_EQ(1, sortLineOf(u"Rock"_s).number);
    EXPECT_EQ(1, sortLineOf(u"Rock\tPop"_s).number);
    EXPECT_EQ(3, sortLineOf(u"\t\t3"_s).number);
}

TEST_F(Reordering, ADoubleClickShowsTheLineInAPlainBox)
{
    startWith(1);
    openDialog([this] {
        form().LSortView.ListIndex = 1;
        desktop.messages.answer(Answer::Ok, u"Orvanten Manager"_s, u"Zwei\t%1\t2"_s.arg(listPath(u"Zwei"_s)));
        form().LSortView.DblClick();
        EXPECT_NE(boxes().find("icon none buttons ok"), std::string::npos);
        form().bAbbrechen.Click();
    });
}

TEST_F(Reordering, HelpOpensItsTopic)
{
    startWith(1);
    put(desktop.folders.program + u"/Orvantine.chm"_s, "x");
    openDialog([this] {
        form().bHilfe.Click();
        EXPECT_NE(calls({u"launcher"_s}).find("Orvantine.chm::/3.4 Orvanten positionieren.htm"), std::string::npos);
        form().bAbbrechen.Click();
    });
}

TEST_F(Reordering, AnEmptyCatalogueOpensAnEmptyDialog)
{
    start();
    openDialog([this] {
        EXPECT_EQ("0 Playlisten in der Datenbank", form().sPlaylisten.Caption.value().toStdString());
        form().bAbbrechen.Click();
    });
}

TEST_F(Reordering, ADrawnLineGoesToItsPlaceAndTheOthersCloseUp)
{
    DragListBox& list = form().LSortView;
    list.List = QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s};
    list.move(0, 2);
    EXPECT_EQ("b c a d", list.List.value().join(u' ').toStdString());
    EXPECT_EQ(2, list.ListIndex.value());
    list.move(3, 0);
    EXPECT_EQ("d b c a", list.List.value().join(u' ').toStdString());
    list.move(4, 0);
    list.move(0, -1);
    EXPECT_EQ("d b c a", list.List.value().join(u' ').toStdString());
}

TEST_F(Reordering, AllOfAHundredAndSixtyRowsGetTheirKeys)
{
    QByteArray index;
    const QString path = putList(u"Alle"_s, {putTrack(u"a"_s)});
    for (int number = 1; number <= 160; ++number)
        index += indexRow(number, {.name = u"L%1"_s.arg(number), .path = path});
    putDatabase(index);
    setting(u"Error"_s, dwordSetting(0));
    start();
    openDialog([this] {
        form().LSortView.move(0, 159);
        confirm();
    });
    EXPECT_EQ("000|L2|Alle.m3u|2|-|01.02.2003|0|", keys(1));
    EXPECT_EQ("159|L1|Alle.m3u|2|-|01.02.2003|0|", keys(160));
    EXPECT_EQ(160, catalogue().count());
}

} // namespace orvantine::fake
