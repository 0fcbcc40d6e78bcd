#include "search/FindAudio.h"

#include "app/DataFolder.h"
#include "catalogue/mnuAddFolder.h"
#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// "Erste", "Zweite" and "Dritte" with two tracks, "Einzeln" with one; the first is open. Below "/such" lie a track or
/// a list in each level down to the fourth.
class Finder : public PlaybackWorld
{
protected:
    Finder()
    {
        startPlayback();
        root().mnuLokalePlayliste.Checked = false;
        for (const QString& folder :
             {u"/such"_s, u"/such/b"_s, u"/such/A"_s, u"/such/b/c"_s, u"/such/b/c/d"_s, u"/such/b/c/d/e"_s}) {
            const QString name = folder.section(u'/', -1);
            put(folder + u"/lied "_s + name + u".mp3"_s, "mp3");
            put(folder + u"/liste "_s + name + u".m3u"_s, "/m/Erste 1.mp3\r\n/m/Zweite 1.mp3\r\n");
            put(folder + u"/text.txt"_s, "txt");
        }
        put(u"/such/klang.wav"_s, "wav");
        // Of today, so that no run comes first.
        put(indexFile(root()), "/m/Erste 1.mp3\r\n/m/Erste 2.mp3\r\n");
        forgetCalls();
    }

    FindAudio& form() { return *root().findAudio; }
    /// What the user does in the finder; it is closed at the end.
    void inFinder(const std::function<void()>& act)
    {
        desktop.forms().whileModal(u"FindAudio"_s, [&](Form& shown) {
            act();
            if (shown.Visible)
                root().services.forms.unload(shown);
        });
        ASSERT_TRUE(root().mnuAddFolder.press());
    }
    void choose(const QString& folder, int type)
    {
        form().TDrives.Text = folder;
        form().LFindType.ListIndex = type;
        form().LFindType.Click();
    }
    void scan(const QString& folder, int type)
    {
        choose(folder, type);
        form().Command1.Click();
    }
    [[nodiscard]] std::string results()
    {
        QStringList found;
        for (qsizetype i = 0; i < form().LFileList.List.value().size(); ++i)
            found += (form().LFileList.Checked.value().value(i) ? u""_s : u"off "_s) +
                     QString(form().LFileList.List.value()[i]).replace(u'\t', u'|');
        return lines(found);
    }
    void uncheck(qsizetype line)
    {
        QList<bool> marks = form().LFileList.Checked;
        marks[line] = false;
        form().LFileList.Checked = marks;
    }
    [[nodiscard]] std::string names()
    {
        QStringList found;
        for (int row = 1; row <= catalogue().count(); ++row)
            found += u"%1 (%2) %3"_s.arg(catalogue().subItem(row, 1), catalogue().subItem(row, 3),
                                         catalogue().subItem(row, 2));
        return QString::fromStdString(lines(found)).replace(data(), u"{data}/"_s).toStdString();
    }
    [[nodiscard]] std::string file(const QString& list)
    {
        return QString::fromUtf8(bytes(listPath(list))).replace(u"\r\n"_s, u"|"_s).toStdString();
    }
    void addLists(int count)
    {
        for (int i = catalogue().count(); i < count; ++i) {
            ListItem row;
            row.SubItems = {{.Text = u"L%1"_s.arg(i)}, {.Text = u"/l/%1.m3u"_s.arg(i)}, {.Text = u"0"_s}};
            catalogue().append(row);
        }
    }
};

const std::string Before = "Erste (2) {data}/Playlisten/Erste.m3u\nZweite (2) {data}/Playlisten/Zweite.m3u\n"
                           "Dritte (2) {data}/Playlisten/Dritte.m3u\nEinzeln (1) {data}/Playlisten/Einzeln.m3u";

constexpr int Lists = FindAudio::Playlists;
constexpr int Tracks = FindAudio::NamesAndFolders;
constexpr int NamesOnly = FindAudio::NamesOnly;

} // namespace

TEST_F(Finder, BearsItsTexts)
{
    inFinder([&] {
        QStringList texts{form().Caption, form().Command1.Caption, form().bOnlyAudio.Caption, form().bAbbrechen.Caption,
                          form().bHilfe.Caption};
        EXPECT_EQ(" Ordner durchsuchen|FINDEN|&Nur Mp3-Audiodateien suchen |&Abbrechen|&Hilfe",
                  texts.join(u'|').toStdString());
        EXPECT_EQ("Dateinamen und Ordner hinzufügen", form().LFindType.List.value()[2].toStdString());
        EXPECT_EQ("Nur Dateinamen hinzufügen ", form().LFindType.List.value()[3].toStdString());
    });
}

TEST_F(Finder, FindsThreeLevelsUnderTheStartFolderAndNoFourth)
{
    inFinder([&] {
        scan(u"/such"_s, Tracks);
        EXPECT_EQ("/such|lied such.mp3\n/such/A|lied A.mp3\n/such/b|lied b.mp3\n/such/b/c|lied c.mp3\n"
                  "/such/b/c/d|lied d.mp3",
                  results());
        EXPECT_EQ("/such/A\n/such/b", lines(form().List1.List));
        EXPECT_EQ("/such/b/c", lines(form().List2.List));
        EXPECT_EQ("/such/b/c/d", lines(form().List3.List));
        EXPECT_TRUE(form().Command1.Enabled);
        EXPECT_EQ("5 Sounddateien in 5 Ordnern gefunden.", form().progress.Caption.value().toStdString());
    });
}

TEST_F(Finder, LooksForTheFilesOfItsType)
{
    inFinder([&] {
        scan(u"/such/b/"_s, Lists);
        EXPECT_EQ("/such/b|liste b.m3u\n/such/b/c|liste c.m3u\n/such/b/c/d|liste d.m3u\n/such/b/c/d/e|liste e.m3u",
                  results());
        EXPECT_EQ("*.m3u", form().LCheckFiles.Pattern.toStdString());
        scan(u"/such/b/c/d/e"_s, NamesOnly);
        EXPECT_EQ("/such/b/c/d/e|lied e.mp3", results());
        EXPECT_EQ("*.mp3", form().LCheckFiles.Pattern.toStdString());
        form().bOnlyAudio.Value = false;
        scan(u"/such"_s, NamesOnly);
        EXPECT_EQ(0U, results().find("/such|klang.wav\n/such|lied such.mp3\n"));
    });
}

TEST_F(Finder, AnswersWithoutFolderOrTypeWithAMessage)
{
    inFinder([&] {
        for (const auto& [folder, type] :
             {std::pair(QString(), Lists), std::pair(u"/such"_s, int{FindAudio::Heading}), std::pair(u"/such"_s, -1)}) {
            desktop.messages.answer(Answer::Ok, u" Ordner durchsuchen "_s,
                                    u"Wählen Sie bitte einen Suchtypen aus der Auswahlliste. "_s);
            scan(folder, type);
        }
        EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown().back().icon);
    });
}

TEST_F(Finder, AnEmptyFolderGivesTheMessageOfTheTypeAndStaysOpen)
{
    putFolder(u"/leer"_s);
    inFinder([&] {
        scan(u"/leer"_s, Lists);
        desktop.messages.answer(Answer::Ok, u" Ordner durchsuchen "_s,
                                u"In diesem Ordner konnten keine Wiedergabelisten gefunden werden. "_s);
        form().BReady.Click();
        scan(u"/leer"_s, Tracks);
        desktop.messages.answer(Answer::Ok, u" Ordner durchsuchen "_s,
                                u"In diesem Ordner konnten keine Sounddateien gefunden werden. "_s);
        form().BReady.Click();
        EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown().back().icon);
        EXPECT_TRUE(form().Visible);
    });
}

TEST_F(Finder, AFolderThatIsNotThereHoldsNothing)
{
    inFinder([&] {
        scan(u"/nirgends"_s, Tracks);
        EXPECT_EQ("", results());
        EXPECT_TRUE(form().Command1.Enabled);
    });
}

TEST_F(Finder, ShowsItsResultsWhileItScansAndStopsByCancel)
{
    inFinder([&] {
        desktop.events().atYield(2, [&] {
            EXPECT_EQ("/such|lied such.mp3\n/such/A|lied A.mp3", results());
            EXPECT_FALSE(form().Command1.Enabled);
            EXPECT_FALSE(form().BReady.Enabled);
            form().bAbbrechen.Click();
            EXPECT_TRUE(form().Visible);
        });
        scan(u"/such"_s, Tracks);
        EXPECT_EQ("/such|lied such.mp3\n/such/A|lied A.mp3", results());
        EXPECT_TRUE(form().Command1.Enabled);
        form().bAbbrechen.Click();
        EXPECT_FALSE(form().Visible);
    });
}

TEST_F(Finder, AFolderThatDoesNotAnswerHoldsUpNobody)
{
    desktop.walks.hangsBehind = 2;
    inFinder([&] {
        desktop.events().after(std::chrono::seconds{5}, [&] { form().bAbbrechen.Click(); });
        scan(u"/such"_s, Tracks);
        EXPECT_EQ("/such|lied such.mp3\n/such/A|lied A.mp3", results());
        EXPECT_EQ("Abgebrochen: 2 Sounddateien in 2 Ordnern gefunden.", form().progress.Caption.value().toStdString());
    });
}

TEST_F(Finder, TheFolderIsChosenByABrowserAndClearsTheResults)
{
    inFinder([&] {
        scan(u"/such"_s, Tracks);
        desktop.choosers.chooseFolder(u"/such/b"_s);
        form().bDurchsuchen.Click();
        EXPECT_EQ("/such/b", form().TDrives.Text.value().toStdString());
        EXPECT_EQ("", results() + lines(form().List2.List) + lines(form().List3.List));
    });
}

TEST_F(Finder, ResultsOfOneKindAreNotTakenForTheOther)
{
    inFinder([&] {
        scan(u"/such/b/c/d/e"_s, Lists);
        choose(u"/such"_s, Tracks);
        EXPECT_EQ("", results());
        scan(u"/such/b/c/d/e"_s, Tracks);
        choose(u"/such"_s, NamesOnly);
        EXPECT_EQ("/such/b/c/d/e|lied e.mp3", results());
    });
}

TEST_F(Finder, TakesTheCheckedListsIntoTheCatalogue)
{
    inFinder([&] {
        scan(u"/such/b"_s, Lists);
        uncheck(1);
        form().BReady.Click();
        EXPECT_FALSE(form().Visible);
    });
    EXPECT_EQ(Before + "\nliste b (2) /such/b/liste b.m3u\nliste d (2) /such/b/c/d/liste d.m3u\n"
                       "liste e (2) /such/b/c/d/e/liste e.m3u",
              names());
    EXPECT_EQ("liste e", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_NE(std::string::npos, databaseText().find("7b=liste e\r\n"));
}

TEST_F(Finder, PassesOverWhatLiesInThePlaylistFolderOrIsKnown)
{
    inFinder([&] {
        scan(data() + u"Playlisten"_s, Lists);
        EXPECT_NE("", results());
        form().BReady.Click();
    });
    EXPECT_EQ(Before, names());
    for (int time = 1; time <= 2; ++time)
        inFinder([&] {
            scan(u"/such/b/c/d/e"_s, Lists);
            form().BReady.Click();
        });
    EXPECT_EQ(Before + "\nliste e (2) /such/b/c/d/e/liste e.m3u", names());
}

TEST_F(Finder, MakesCopiesThatFindTheirTracks)
{
    root().mnuLokalePlayliste.Checked = true;
    put(u"/fern/Reise.m3u"_s, "#EXTM3U\r\nhier.mp3\r\nsub\\dort.mp3\r\n/m/Erste 1.mp3\r\n");
    put(u"/fern/hier.mp3"_s, "mp3");
    put(u"/fern/sub/dort.mp3"_s, "mp3");
    inFinder([&] {
        scan(u"/fern"_s, Lists);
        form().BReady.Click();
    });
    EXPECT_EQ(Before + "\nReise (3) {data}/Playlisten/Reise.m3u", names());
    EXPECT_EQ("/fern/hier.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ("/m/Erste 1.mp3", tracks().subItem(3, 3).toStdString());
    EXPECT_EQ("#EXTM3U\r\nhier.mp3\r\nsub\\dort.mp3\r\n/m/Erste 1.mp3\r\n", bytes(u"/fern/Reise.m3u"_s).toStdString());
}

TEST_F(Finder, ACopyNeverTakesThePlaceOfAnotherList)
{
    root().mnuLokalePlayliste.Checked = true;
    put(u"/fern/Zweite.m3u"_s, "/m/Erste 1.mp3\r\n");
    const std::string before = file(u"Zweite"_s);
    desktop.messages.answer(Answer::Yes);
    inFinder([&] {
        scan(u"/fern"_s, Lists);
        form().BReady.Click();
    });
    EXPECT_EQ(Before + "\nZweite (1) /fern/Zweite.m3u", names());
    EXPECT_EQ(before, file(u"Zweite"_s));
}

TEST_F(Finder, ARefusedListLeavesNoCopy)
{
    root().mnuLokalePlayliste.Checked = true;
    put(u"/fern/Neu.m3u"_s, "/m/Erste 1.mp3\r\n");
    put(database(), bytes(database()) + "9b=neu\r\n");
    desktop.messages.answer(Answer::No);
    inFinder([&] {
        scan(u"/fern"_s, Lists);
        form().BReady.Click();
    });
    EXPECT_EQ(Before, names());
    EXPECT_EQ("(missing)", file(u"Neu"_s));
}

TEST_F(Finder, EndsAtTheLimitOfLists)
{
    addLists(159);
    inFinder([&] {
        desktop.messages.answer(
            Answer::Ok, u" Wiedergabelisten verwalten"_s,
            u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \nBitte löschen Sie eine der "
            u"160 Playlisten aus der Liste."_s);
        // The save of a full catalogue tells it again.
        desktop.messages.answer(Answer::Ok, u" Wiedergabelisten verwalten"_s,
                                desktop.messages.queue.waiting()[0].text.value());
        scan(u"/such/b"_s, Lists);
        form().BReady.Click();
    });
    EXPECT_EQ(160, catalogue().count());
    EXPECT_EQ(MessageIcon::Critical, desktop.messages.shown().back().icon);
}

TEST_F(Finder, AddsTracksToTheOpenListAndSavesIt)
{
    inFinder([&] {
        scan(u"/such/b"_s, Tracks);
        uncheck(0);
        form().BReady.Click();
    });
    EXPECT_EQ("/m/Erste 1.mp3|/m/Erste 2.mp3|/such/b/c/lied c.mp3|/such/b/c/d/lied d.mp3|/such/b/c/d/e/lied e.mp3|",
              file(u"Erste"_s).substr(0, file(u"Erste"_s).rfind("mp3|") + 4));
    EXPECT_EQ(5, tracks().count());
    EXPECT_EQ("5", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("1", catalogue().Tag.toStdString());
}

TEST_F(Finder, AsksForATrackThatTheCatalogueHolds)
{
    const QString text = u"Die Sounddatei ist bereits in einer Wiedergabeliste vorhanden. \nMöchten ''"_s;
    inFinder([&] {
        scan(u"/m"_s, Tracks);
        desktop.messages.answer(Answer::No, u" Vorhandene Sounddatei"_s, text + u"/m/Erste 1.mp3'' hinzufügen ?"_s);
        desktop.messages.answer(Answer::Yes, u" Vorhandene Sounddatei"_s, text + u"/m/Erste 2.mp3'' hinzufügen ?"_s);
        form().BReady.Click();
    });
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown().back().icon);
    EXPECT_EQ(MessageButtons::YesNoCancel, desktop.messages.shown().back().buttons);
    // Dritte 1 and 2, Einzeln 1, Erste 2 and Zweite 1 and 2 beside those of the list itself.
    EXPECT_EQ(8, tracks().count());
}

TEST_F(Finder, NamesOnlyChangesTheQuestionAlone)
{
    inFinder([&] {
        scan(u"/m"_s, NamesOnly);
        desktop.messages.answer(Answer::Yes, u" Vorhandene Sounddatei"_s,
                                u"Die Sounddatei ist bereits in einer Wiedergabeliste vorhanden. \nMöchten ''Erste "
                                u"1.mp3'' trotzdem hinzufügen ?"_s);
        desktop.messages.answer(Answer::Cancel);
        form().BReady.Click();
    });
    // What came before the Cancel.
    EXPECT_EQ(6, tracks().count());
    EXPECT_EQ("/m/Erste 1.mp3", tracks().subItem(6, 3).toStdString());
}

TEST_F(Finder, AMissingIndexMeansThatNothingIsAsked)
{
    inFinder([&] {
        desktop.disk().remove(indexFile(root()));
        scan(u"/m"_s, Tracks);
        form().BReady.Click();
    });
    EXPECT_EQ(9, tracks().count());
    EXPECT_EQ("", boxes());
}

TEST_F(Finder, WithoutAListNoTrackIsAdded)
{
    root().trackList.close();
    catalogue().clear();
    forgetCalls();
    inFinder([&] {
        scan(u"/such/b"_s, Tracks);
        form().BReady.Click();
    });
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("", actions());
}

TEST_F(Finder, TheTracksGoToTheListThatWasOpenWhenItCameUp)
{
    const std::string before = file(u"Dritte"_s);
    // Yields of the scan, of the questions and of the reads, and the wait before the save
    for (int yield = 0; yield <= 14; ++yield) {
        SCOPED_TRACE(yield);
        inFinder([&] {
            if (yield > 0)
                desktop.events().atYield(yield, [&] { click(3); });
            else
                desktop.events().after(std::chrono::milliseconds{500}, [&] { click(3); });
            scan(u"/such/b/c/d/e"_s, Tracks);
            form().BReady.Click();
        });
        EXPECT_EQ(before, file(u"Dritte"_s));
        EXPECT_NE(std::string::npos, file(u"Erste"_s).find("lied e.mp3"));
        EXPECT_EQ("", boxes());
        putList(u"Erste"_s, {u"/m/Erste 1.mp3"_s, u"/m/Erste 2.mp3"_s});
        click(2);
        click(1);
    }
}

TEST_F(Finder, AListThatHasGoneMeanwhileGetsNoTrack)
{
    const std::string before = file(u"Dritte"_s);
    inFinder([&] {
        scan(u"/such/b"_s, Tracks);
        catalogue().remove(1);
        click(2);
        forgetCalls();
        form().BReady.Click();
    });
    EXPECT_EQ(before, file(u"Dritte"_s));
    EXPECT_EQ("", actions());
}

TEST_F(Finder, UnderTheFilterTheCountOfAnAddedListIsStored)
{
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(1, catalogue().count());
    inFinder([&] {
        scan(u"/such/b/c/d/e"_s, Lists);
        form().BReady.Click();
    });
    EXPECT_NE(std::string::npos, databaseText().find("5b=liste e\r\n"));
    EXPECT_NE(std::string::npos, databaseText().find("5d=2\r\n"));
}

TEST_F(Finder, AListThatTheFilterHidesIsKnown)
{
    inFinder([&] {
        scan(u"/such/b/c/d/e"_s, Lists);
        form().BReady.Click();
    });
    root().mnuFavoritenShow.Click();
    ASSERT_EQ(1, catalogue().count());
    inFinder([&] {
        scan(u"/such/b/c/d/e"_s, Lists);
        form().BReady.Click();
    });
    EXPECT_EQ(1, catalogue().count());
}

TEST_F(Finder, AListWhosePathHoldsALineEndIsPassedOver)
{
    inFinder([&] {
        scan(u"/such/b/c/d/e"_s, Lists);
        form().LFileList.List = QStringList{u"/zeile\teins\nzwei.m3u"_s};
        form().BReady.Click();
    });
    EXPECT_EQ(Before, names());
}

TEST_F(Finder, DoesNotComeUpInsideARead)
{
    forgetCalls();
    desktop.events().atYield(1, [&] { root().mnuAddFolder.Click(); });
    click(2);
    EXPECT_EQ("", calls({u"forms"_s}));
}

TEST_F(Finder, BuildsTheIndexFirstWhereItIsNotOfToday)
{
    desktop.memory()->setModified(indexFile(root()), QDateTime(QDate(2026, 11, 19), QTime(23, 59)));
    inFinder([] {});
    EXPECT_EQ(7, QString::fromUtf8(bytes(indexFile(root()))).count(u'\n'));
}

TEST_F(Finder, DoesNotComeUpInFrontOfACommandThatWaits)
{
    desktop.messages.script({Answer::Cancel, {}, {}, {}, [&] {
                                 forgetCalls();
                                 root().mnuAddFolder.Click();
                                 EXPECT_EQ("", calls({u"forms"_s}));
                             }});
    root().mnuLöschen.Click();
}

TEST_F(Finder, AFullCatalogueIsToldForAKnownListToo)
{
    addLists(160);
    inFinder([&] {
        desktop.messages.answer(
            Answer::Ok, u" Wiedergabelisten verwalten"_s,
            u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \nBitte löschen Sie eine der "
            u"160 Playlisten aus der Liste."_s);
        scan(data() + u"Playlisten"_s, Lists);
        form().BReady.Click();
    });
    EXPECT_EQ(160, catalogue().count());
}

} // namespace orvantine::fake
