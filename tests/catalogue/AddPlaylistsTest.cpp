
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueWorld.h"

#include "app/DataFolder.h"
#include "catalogue/NewPlayliste.h"
#include "catalogue/mnuAddFolder.h"
#include "catalogue/mnuSpeichern.h"
#include "search/FindAudio.h"
#include "search/IndexFiles.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class AddPlaylists : public CatalogueWorld
{
protected:
    /// A list outside the data folder, with two tracks.
    QString putOther(const QString& name = u"Andere.m3u"_s)
    {
        const QString path = u"/m/"_s + name;
        put(path, (putTrack(u"o1"_s) + u"\r\n"_s + putTrack(u"o2"_s) + u"\r\n"_s).toUtf8());
        return path;
    }
    void putNml()
    {
        putTrack(u"o1"_s);
        put(u"/m/Liste.nml"_s, "<LOCATION FILE=\"o1.mp3\" PATH=\"/m/\"/>\r\n</NML>\r\n");
    }
    void putFullCatalogue()
    {
        const QString path = putList(u"L"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
        QByteArray index;
        for (int row = 1; row <= MostPlaylists; ++row)
            index += indexRow(row, {.name = u"L%1"_s.arg(row), .path = path});
        putDatabase(index);
    }
    void answerLimit()
    {
        desktop.messages.answer(Answer::Ok, u" Wiedergabelisten verwalten"_s,
                                u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \n"
                                u"Bitte löschen Sie eine der 160 Playlisten aus der Liste."_s);
    }
    [[nodiscard]] QString index(int row, char letter)
    {
        return root().services.profiles.value(database(), u"Index"_s, QString::number(row) + QLatin1Char(letter));
    }
};

} // namespace

TEST_F(AddPlaylists, ANewListGoesToTheFileAtOnceAndIsOpen)
{
    putCatalogue({u"Eins"_s});
    start();
    desktop.messages.enter(u"Neu"_s);
    root().mnuNeu.Click();
    EXPECT_EQ("input title \" Neue Playliste\" text \"Geben Sie einen Namen für die neue Playliste ein:\" default \"\" "
              "entered \"Neu\"",
              boxes());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ("Neu", index(2, 'b').toStdString());
    EXPECT_EQ(listPath(u"Neu"_s).toStdString(), index(2, 'c').toStdString());
    EXPECT_EQ("\r\n", bytes(listPath(u"Neu"_s)).toStdString());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ(5, tracks().columns());
    EXPECT_EQ(listPath(u"Neu"_s).toStdString(), root().trackList.path().toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(AddPlaylists, CancelInTheInputBoxLeavesTheCatalogueAndItsFile)
{
    putCatalogue({u"Eins"_s});
    start();
    const std::string before = rows(catalogue()) + rows(tracks()) + databaseText();
    desktop.messages.enter({});
    root().mnuNeu.Click();
    EXPECT_EQ(before, rows(catalogue()) + rows(tracks()) + databaseText());
}

TEST_F(AddPlaylists, AFullCatalogueTakesNeitherANewNorAnExistingList)
{
    putFullCatalogue();
    start();
    answerLimit();
    root().mnuNeu.Click();
    EXPECT_EQ(
        "box title \" Wiedergabelisten verwalten\" text \"Die maximale Anzahl von Wiedergabelisten wurde "
        "erreicht. \\nBitte löschen Sie eine der 160 Playlisten aus der Liste.\" icon critical buttons ok answer ok",
        boxes());
    answerLimit();
    root().mnuDurchsuchen.Click();
    EXPECT_EQ(MostPlaylists, catalogue().count());
    EXPECT_EQ("", calls({u"choosers"_s}));
}

TEST_F(AddPlaylists, ANameThatCannotBeAFileNameStandsAndShowsRedAtTheNextLoad)
{
    setting(u"Error"_s, dwordSetting(0));
    putCatalogue({u"Eins"_s});
    start();
    desktop.messages.enter(u"AC/DC"_s);
    desktop.messages.answer(Answer::Cancel, u" AC/DC"_s,
                            u"Die folgende Wiedergabeliste ist nicht vorhanden: \n"_s + listPath(u"AC/DC"_s));
    root().mnuNeu.Click();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("AC/DC", index(2, 'b').toStdString());
    EXPECT_EQ("Eins.m3u", desktop.disk().list(data() + u"Playlisten"_s, u"*.*"_s).join(u' ').toStdString());

    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    EXPECT_EQ(Color::DarkRed, catalogue().color(2, 1));
    EXPECT_EQ(Color::DarkRed, catalogue().color(2, 3));
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 1));
}

TEST_F(AddPlaylists, NoneOfTheCommandsActsInTheMiddleOfALoad)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    int tried = 0;
    desktop.events().atYield(4, [&] {
        ++tried;
        EXPECT_EQ(1, catalogue().count());
        root().mnuNeu.Click();
        root().mnuDurchsuchen.Click();
        root().mnuLöschen.Click();
        root().mnuFavoritenShow.Click();
        EXPECT_EQ(1, catalogue().count());
    });
    root().mnuLaden.Click();
    EXPECT_EQ(1, tried);
    EXPECT_EQ(2, catalogue().count());
}

TEST_F(AddPlaylists, NoneOfTheCommandsActsInTheWaitOfALoad)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    const std::string before = databaseText();
    std::vector<MenuItem*> commands{&root().mnuNeu,          &root().mnuDurchsuchen,     &root().mnuLöschen,
                                    &root().mnuUmbenennen,   &root().mnuBeschriftung,    &root().mnuFavoriten,
                                    &root().mnuSpeichern,    &root().mnuVerschiebung[1], &root().mnuVerschiebung[2],
                                    &root().mnuFavoritenShow};
    int tried = 0;
    for (MenuItem* command : commands) {
        SCOPED_TRACE(command->fullName().toStdString());
        desktop.events().after(std::chrono::milliseconds{500}, [&] {
            ++tried;
            // What was selected before has gone with its row.
            catalogue().select(1);
            command->Click();
        });
        root().mnuLaden.Click();
        EXPECT_EQ(before, databaseText());
        EXPECT_EQ(2, catalogue().count());
        EXPECT_EQ("", boxes());
    }
    EXPECT_EQ(static_cast<int>(commands.size()), tried);
}

TEST_F(AddPlaylists, TheOpenDialogStartsInFolderFiveUnlessTheFlagHasAText)
{
    start();
    desktop.choosers.cancel(ChooserKind::Open);
    desktop.log.take();
    root().mnuDurchsuchen.Click();
    const QString asked = u"choosers.open title \" Wiedergabeliste hinzufügen\" folder \"%1\" name \"\" filter "
                          u"\"Mp3-Wiedergabeliste|*.m3u; *.pls; *.nml|Mp3 Playliste|*.m3u|Winamp Wiedergabeliste|*.pls|"
                          u"Traktor Playliste|*.nml|Alle Dateitypen|*.*\" extension \"m3u\""_s;
    EXPECT_EQ(asked.arg(desktop.folders.documents).toStdString(), calls({u"choosers"_s}));

    desktop.log.take();
    setting(u"FolderView"_s, dwordSetting(1));
    desktop.choosers.cancel(ChooserKind::Open);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ(asked.arg(u"1"_s).toStdString(), calls({u"choosers"_s}));
    EXPECT_EQ(0, catalogue().count());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(AddPlaylists, AFileNameThatIsEmptyOrAPathBelowFourCharactersAddsNothing)
{
    start();
    for (const ChosenFile& file : {ChosenFile{u"/m"_s, {}}, ChosenFile{{}, u"ab"_s}, ChosenFile{u"/"_s, u"ab"_s}}) {
        desktop.choosers.queue.push(
            {.kind = ChooserKind::Open, .file = file, .folder = {}, .font = {}, .meanwhile = {}});
        root().mnuDurchsuchen.Click();
        EXPECT_EQ(0, catalogue().count());
    }
}

TEST_F(AddPlaylists, AnExistingListIsTakenInPlaceOpenedCountedAndSaved)
{
    putCatalogue({u"Eins"_s});
    start();
    root().mnuLokalePlayliste.Checked = false;
    const QString path = putOther();
    put(data() + u"Resource/Andere.gif"_s, "bild");
    desktop.choosers.open(path);
    const QDateTime before = desktop.events().now();
    root().mnuDurchsuchen.Click();
    EXPECT_GE(before.msecsTo(desktop.events().now()), 2000);
    EXPECT_EQ(lines({u"  1 \"000\" \"Eins\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"Eins"_s)),
                     u"> 2 \"001\" \"Andere\" \"/m/Andere.m3u\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s}),
              rows(catalogue()));
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("Andere", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ("20.11.2026", root().tDatum.Caption.value().toStdString());
    EXPECT_EQ((data() + u"Resource/Andere.gif"_s).toStdString(), root().pCovers.Picture.value().toStdString());
    EXPECT_EQ("Andere", index(2, 'b').toStdString());
    EXPECT_EQ("/m/Andere.m3u", index(2, 'c').toStdString());
    EXPECT_EQ("2", index(2, 'd').toStdString());
    EXPECT_EQ("0", catalogue().Tag.toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
    EXPECT_EQ("", boxes());
}

TEST_F(AddPlaylists, ANewListOfANameWhoseFileStandsKeepsTheTracksOfTheFile)
{
    putCatalogue({u"Eins"_s});
    start();
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLokalePlayliste.Checked = true;
    const QByteArray before = bytes(listPath(u"Eins"_s));
    desktop.messages.enter(u"eins"_s);
    root().mnuNeu.Click();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ(before.toStdString(), bytes(listPath(u"Eins"_s)).toStdString());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("2", catalogue().subItem(2, 3).toStdString());
}

TEST_F(AddPlaylists, WithLocalPlaylistsAnExistingListIsCopiedToPlaylistenAndStaysWhereItWas)
{
    putCatalogue({u"Eins"_s});
    start();
    root().mnuLokalePlayliste.Checked = true;
    const QString path = putOther();
    desktop.choosers.open(path);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ(listPath(u"Andere"_s).toStdString(), catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("/m/o1.mp3\r\n/m/o2.mp3\r\n", bytes(listPath(u"Andere"_s)).toStdString());
    EXPECT_TRUE(bytes(path).contains("o1.mp3\r\no2.mp3")) << bytes(path).toStdString();
    EXPECT_EQ("/m/Andere.m3u", index(2, 'c').toStdString());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ("", boxes());
}

TEST_F(AddPlaylists, TheDateThatIsShownIsTodayThoughTheTracksAreOlder)
{
    putCatalogue({u"Eins"_s});
    start();
    const QString path = putOther();
    desktop.memory()->setModified(u"/m/o2.mp3"_s, QDateTime(QDate(2001, 5, 4), QTime(3, 2)));
    desktop.choosers.open(path);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("20.11.2026", root().tDatum.Caption.value().toStdString());
}

TEST_F(AddPlaylists, TheButtonsAreOffHalfASecondAfterTheChoice)
{
    putCatalogue({u"Eins"_s});
    start();
    desktop.choosers.open(putOther());
    std::string seen;
    desktop.events().after(std::chrono::milliseconds{500}, [this, &seen] {
        seen = root().buttonsDisabled && !root().mnuBearbeiten.Enabled.value() ? "off" : "on";
        seen += " with " + std::to_string(catalogue().count()) + " row";
    });
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("off with 1 row", seen);
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(AddPlaylists, AFileWhoseNameIsNoLongerThanAnEndingAsksForAName)
{
    start();
    root().mnuLokalePlayliste.Checked = false;
    put(u"/m/abc"_s, (putTrack(u"o1"_s) + u"\r\n"_s + putTrack(u"o2"_s) + u"\r\n"_s).toUtf8());
    desktop.choosers.open(u"/m/abc"_s);
    desktop.messages.enter(u"Kurz"_s);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("input title \" Neue Playliste\" text \"Geben Sie einen Namen für die neue Playliste ein:\" default \"\" "
              "entered \"Kurz\"",
              boxes());
    EXPECT_EQ("Kurz", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("/m/abc", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(2, tracks().count());
}

TEST_F(AddPlaylists, AListThatGotAnotherNameHasItAgain)
{
    put(database(), "[Rename]\r\nAndere.m3u=Mein Name\r\n");
    start();
    desktop.choosers.open(putOther());
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("Mein Name", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("Mein Name", root().tPlaylisteinträge.Caption.value().toStdString());
}

TEST_F(AddPlaylists, NoToTheSecondListOfANameEndsTheWaitAndSavesNothing)
{
    putCatalogue({u"Andere"_s});
    start();
    const std::string before = rows(catalogue()) + databaseText();
    desktop.choosers.open(putOther());
    desktop.messages.answer(Answer::No);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ(before, rows(catalogue()) + databaseText());
    EXPECT_FALSE(root().buttonsDisabled);
    EXPECT_EQ(MousePointer::Default, root().Pointer.value());
}

TEST_F(AddPlaylists, AnNmlListStandsWithTheListThatItWasTurnedInto)
{
    start();
    putNml();
    desktop.choosers.open(u"/m/Liste.nml"_s);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("Liste", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ(listPath(u"Liste"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(listPath(u"Liste"_s).toStdString(), index(1, 'c').toStdString());
}

TEST_F(AddPlaylists, AnNmlListWhoseM3uCannotBeWrittenIsNotStored)
{
    putCatalogue({u"Eins"_s});
    start();
    const std::string before = databaseText();
    putNml();
    desktop.choosers.open(u"/m/Liste.nml"_s);
    desktop.log.failNext(u"files.writeText "_s + quoted(listPath(u"Liste"_s)));
    root().mnuDurchsuchen.Click();
    EXPECT_EQ(before, databaseText());
    EXPECT_EQ("(missing)", bytes(listPath(u"Liste"_s)).toStdString());
    EXPECT_EQ("/m/Liste.nml", catalogue().subItem(2, 2).toStdString());
    EXPECT_EQ("Nicht gespeichert: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(AddPlaylists, AnNmlListThatCannotBeStoredTakesItsM3uBackAndStaysOneUntilTheNextRead)
{
    putCatalogue({u"Eins"_s});
    start();
    const std::string before = databaseText();
    putNml();
    desktop.choosers.open(u"/m/Liste.nml"_s);
    // The first one is the date that the reading stores.
    desktop.log.failNext(u"files.appendBytes "_s + quoted(database()), 2);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ(before, databaseText());
    EXPECT_EQ("(missing)", bytes(listPath(u"Liste"_s)).toStdString());
    EXPECT_EQ("/m/Liste.nml", catalogue().subItem(2, 2).toStdString());
    click(1);
    click(2);
    root().mnuSpeichern.Click();
    EXPECT_EQ("/m/o1.mp3", bytes(listPath(u"Liste"_s)).left(9).toStdString());
    EXPECT_EQ(listPath(u"Liste"_s).toStdString(), index(2, 'c').toStdString());
}

TEST_F(AddPlaylists, AnNmlListThatIsNoTextStandsWithoutTracks)
{
    start();
    put(u"/m/Liste.nml"_s, QByteArray("\0\1\2", 3));
    desktop.choosers.open(u"/m/Liste.nml"_s);
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("/m/Liste.nml", index(1, 'c').toStdString());
    EXPECT_EQ("0", index(1, 'd').toStdString());
}

TEST_F(AddPlaylists, ARowThatIsTakenAwayDuringTheWaitLeavesTheOthersAlone)
{
    putCatalogue({u"Eins"_s});
    start();
    desktop.choosers.open(putOther());
    desktop.events().after(std::chrono::milliseconds{1500}, [this] { catalogue().remove(2); });
    const std::string before = rows(catalogue());
    root().mnuDurchsuchen.Click();
    EXPECT_EQ(1, catalogue().count());
    EXPECT_EQ("2", catalogue().subItem(1, 3).toStdString());
    EXPECT_FALSE(root().buttonsDisabled);
}

TEST_F(AddPlaylists, AListThatIsMissingStartsAsAFileWithOneEmptyLine)
{
    putCatalogue({u"Eins"_s});
    start();
    putFolder(u"/m"_s);
    QString path = u"/m/fehlt.m3u"_s;
    EXPECT_TRUE(NewPlayliste(root(), path, u"X"_s));
    EXPECT_EQ("\r\n", bytes(path).toStdString());

    // So a load in a visible window makes the file that is missing, and the row is not red.
    desktop.disk().remove(listPath(u"Eins"_s));
    setting(u"CheckEntrys"_s, dwordSetting(0));
    root().mnuLaden.Click();
    EXPECT_EQ("\r\n", bytes(listPath(u"Eins"_s)).toStdString());
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 1));
}

TEST_F(AddPlaylists, AFileThatAppearsMeanwhileIsNotEmptied)
{
    putCatalogue({u"Eins"_s});
    start();
    putFolder(u"/m"_s);
    QString path = u"/m/spät.m3u"_s;
    desktop.events().after(std::chrono::milliseconds(0), [this] { put(u"/m/spät.m3u"_s, "von anderswo\r\n"); });
    EXPECT_TRUE(NewPlayliste(root(), path, u"X"_s));
    EXPECT_EQ("von anderswo\r\n", bytes(path).toStdString());
}

TEST_F(AddPlaylists, TheDoubleCheckLooksAtTheFirst160Keys)
{
    putCatalogue({u"Eins"_s});
    root().services.profiles.setValue(database(), u"Index"_s, u"161b"_s, u"Pop"_s);
    start();
    root().services.profiles.setValue(database(), u"Index"_s, u"160b"_s, u"Rock"_s);
    const auto add = [this](const QString& name) {
        QString path;
        return NewPlayliste(root(), path, name);
    };
    EXPECT_TRUE(add(u"pop"_s));
    EXPECT_EQ("", boxes());
    desktop.messages.answer(Answer::No);
    EXPECT_FALSE(add(u"rock"_s));
    setting(u"CheckEntrys"_s, dwordSetting(1));
    desktop.messages.answer(Answer::No);
    EXPECT_FALSE(add(u"rock"_s));
    setting(u"CheckEntrys"_s, dwordSetting(2));
    EXPECT_TRUE(add(u"rock"_s));
}

TEST_F(AddPlaylists, TheFolderStandsAgainBeforeTheNameIsAskedForIfThereIsAPath)
{
    putCatalogue({u"Eins"_s});
    start();
    desktop.disk().remove(listPath(u"Eins"_s));
    const auto folderAfter = [this](const QString& given) {
        desktop.messages.enter({});
        QString path = given;
        forgetCalls();
        EXPECT_FALSE(NewPlayliste(root(), path, QString()));
        EXPECT_FALSE(root().buttonsDisabled);
        return calls({u"files.makeFolder"_s});
    };
    desktop.log.failNext(u"files.folderExists"_s);
    EXPECT_NE("", folderAfter(u"/m/a.m3u"_s)) << "asked before the box";
    EXPECT_EQ("", folderAfter(QString()));
}

TEST_F(AddPlaylists, TheIndexIsOfTodayOnlyByItsFileDate)
{
    start();
    EXPECT_EQ((data() + u"Orvantine.idx"_s).toStdString(), indexFile(root()).toStdString());
    EXPECT_FALSE(indexIsOfToday(root()));
    put(indexFile(root()), "x");
    desktop.memory()->setModified(indexFile(root()), QDateTime(QDate(2026, 11, 20), QTime(0, 0)));
    EXPECT_TRUE(indexIsOfToday(root()));
    desktop.memory()->setModified(indexFile(root()), QDateTime(QDate(2026, 11, 19), QTime(23, 59)));
    EXPECT_FALSE(indexIsOfToday(root()));
}

TEST_F(AddPlaylists, TheFinderComesUpModalAndAfresh)
{
    start();
    desktop.forms().whileModal(u"FindAudio"_s, [this](Form& form) {
        EXPECT_EQ(" Ordner durchsuchen", form.Caption.value().toStdString());
        root().services.forms.unload(form);
    });
    // An index of today is not made anew.
    put(indexFile(root()), "x");
    forgetCalls();
    mnuAddFolder_Click(root());
    EXPECT_EQ("forms.unload FindAudio\nforms.showModal FindAudio\nforms.unload FindAudio", calls({u"forms"_s}));
}

TEST_F(AddPlaylists, AFileNameLosesItsLastFourCharactersWhateverItsEnding)
{
    start();
    root().mnuLokalePlayliste.Checked = false;
    desktop.choosers.open(putOther(u"Andere.m3u8"_s));
    root().mnuDurchsuchen.Click();
    EXPECT_EQ("Andere.", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("/m/Andere.m3u8", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(2, tracks().count());
}

TEST_F(AddPlaylists, AControlCharacterInANameBecomesABlank)
{
    start();
    desktop.messages.enter(u"a\tb\nc"_s);
    root().mnuNeu.Click();
    EXPECT_EQ("a b c", catalogue().subItem(1, 1).toStdString());
}

} // namespace orvantine::fake
