#include "operations/Positionen.h"

#include "operations/ReorderingFixture.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

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

TEST_F(Reordering, AStepOfReadyThatFailsLeavesDatabaseAndCopyAsTheyWereAndNoBoxSpeaksOfACopy)
{
    startWith(1);
    setting(u"Error"_s, dwordSetting(0));
    const std::string before = databaseText();
    struct Fault
    {
        QString call;
        int number;
    };
    for (const Fault& fault : {Fault{u"files.copy"_s, 1}, Fault{u"files.remove"_s, 1},
                               Fault{u"files.replaceBytes"_s, 1}, Fault{u"files.appendBytes"_s, 5}}) {
        openDialog([this, &fault] {
            form().LSortView.move(2, 0);
            put(backup(), "[Index]\r\n1b=Frueher\r\n");
            desktop.log.failNext(fault.call, fault.number);
            form().BReady.Click();
        });
        EXPECT_EQ(before, databaseText()) << fault.call.toStdString();
        EXPECT_EQ("[Index]\r\n1b=Frueher\r\n", backupText()) << fault.call.toStdString();
        EXPECT_EQ("Eins Zwei *Drei", names()) << "the catalogue is loaded again";
        EXPECT_EQ("", boxes());
        EXPECT_TRUE(root().quietLine.Visible.value());
        EXPECT_FALSE(form().Visible.value());
    }
}

TEST_F(Reordering, ALookAtTheDatabaseThatFailsCostsNothing)
{
    startWith(1);
    const std::string before = databaseText();
    openDialog([this] {
        form().LSortView.move(2, 0);
        desktop.log.failNext(u"files.exists \""_s + database());
        desktop.messages.answer(Answer::Ok);
        form().BReady.Click();
    });
    EXPECT_EQ(before, backupText());
    EXPECT_NE(std::string::npos, databaseText().find("1b=Drei\r\n"));
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

TEST_F(Reordering, OtherSectionsStayByteForByteUnderANewOrder)
{
    startWith(1);
    const QByteArray others = "; von Hand\r\n[TagInfo]\r\n/m/Eins 1.mp3=Wir - Lied\r\n[Rename]\r\nEins.m3u=Eins\r\n"
                              "[Options]\r\nSoundfiles=/m\r\n[Finder]\r\n01=suche\r\n";
    put(database(), others + bytes(database()));
    openDialog([this] {
        form().LSortView.move(2, 0);
        confirm();
    });
    EXPECT_TRUE(databaseText().starts_with(others.toStdString())) << databaseText();
    EXPECT_EQ("000|Drei|Drei.m3u|2|Text Drei|03.01.2001|0|", keys(1));
}

TEST_F(Reordering, ATabInAPathLosesNoList)
{
    startWith(1);
    catalogue().setSubItem(2, 2, u"/m/a\tb.m3u"_s);
    catalogue().setSubItem(3, 1, u"Dr\tei"_s);
    openDialog([this] { confirm(); });
    EXPECT_EQ("Eins", key(1, 'b'));
    EXPECT_EQ("Zwei", key(2, 'b'));
    EXPECT_EQ("Drei", key(3, 'b'));
}

} // namespace orvantine::fake
