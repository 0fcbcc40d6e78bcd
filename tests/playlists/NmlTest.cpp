#include "catalogue/CatalogueWorld.h"

#include "playlists/PlaylistText.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

QString location(const QString& file, const QString& folder)
{
    return u"<LOCATION FILE=\"%1\" PATH=\"%2\"/>\r\n"_s.arg(file, folder);
}

class Nml : public CatalogueWorld
{
protected:
    /// A catalogue with one NML list of these bytes, open.
    void open(const QByteArray& nml)
    {
        put(u"/m/Set.nml"_s, nml);
        putDatabase(indexRow(1, {.name = u"Set"_s, .path = u"/m/Set.nml"_s}));
        before = bytes(database());
        start();
    }

    /// A catalogue with a list that stands, open, behind an NML list whose file is gone.
    void openMissing()
    {
        putDatabase(indexRow(1, {.name = u"Set"_s, .path = u"/m/Set.nml"_s}) +
                    indexRow(2, {.name = u"Zuletzt"_s, .path = putList(u"Zuletzt"_s, {putTrack(u"a"_s)})}));
        desktop.messages.answer(Answer::Ok, u" Wiedergabelisten überprüfen"_s,
                                u"Es wurden 1 nicht vorhandene Playlisten in der Datenbank gefunden.    \n"
                                u"Überprüfen Sie bitte die Datenbankeinträge oder die Quelldateien."_s);
        start();
        desktop.messages.take();
    }
    /// The click asks whether to try, and the read where the list has gone; the user chooses this one.
    void clickAndChoose(const QString& file)
    {
        desktop.messages.answer(Answer::Retry, u" Set"_s,
                                u"Die folgende Wiedergabeliste ist nicht vorhanden: \n/m/Set.nml"_s);
        desktop.messages.answer(Answer::Yes, u" Songinformationen"_s,
                                u"Die Wiedergabeliste wurde verschoben und kann nicht gelesen werden.    \nMöchten Sie "
                                u"jetzt die Wiedergabeliste im Dateisystem auswählen ?"_s);
        desktop.choosers.open(file);
        click(1);
    }
    [[nodiscard]] std::string paths()
    {
        QStringList texts;
        for (int row = 1; row <= tracks().count(); ++row)
            texts += tracks().subItem(row, 3);
        return texts.join(u' ').toStdString();
    }

    QByteArray before;
};

} // namespace

TEST(EntriesOfNml, FolderAndNameAreJoinedAndTheFirstCrIsGone)
{
    EXPECT_EQ("\n/m/a.mp3\r\n/n/b.mp3",
              entriesOfNml(location(u"a.mp3"_s, u"/m/"_s) + location(u"b.mp3"_s, u"/n/"_s)).toStdString());
    EXPECT_EQ("", entriesOfNml(u"<NML>\r\n</NML>\r\n"_s).toStdString());
}

TEST(EntriesOfNml, Of100EntriesAreTaken99)
{
    QString text;
    for (int i = 1; i <= 100; ++i)
        text += location(u"t%1.mp3"_s.arg(i), u"D:\\"_s);
    const QStringList entries = entriesOfNml(text).mid(1).split(u"\r\n"_s);
    EXPECT_EQ(99, entries.size());
    EXPECT_EQ("D:\\t1.mp3", entries.first().toStdString());
    EXPECT_EQ("D:\\t99.mp3", entries.last().toStdString());
}

TEST(EntriesOfNml, EntriesInsideTheSkipOfTheFirstPassAreLost)
{
    // The place of the first entry counts twice: what lies within as many characters behind it is passed over.
    const QString head(120, u'x');
    EXPECT_EQ("\n/m/eins.mp3\r\n/m/fünf.mp3",
              entriesOfNml(head + u"\r\n"_s + location(u"eins.mp3"_s, u"/m/"_s) + location(u"zwei.mp3"_s, u"/m/"_s) +
                           location(u"drei.mp3"_s, u"/m/"_s) + QString(60, u'y') + u"\r\n"_s +
                           location(u"fünf.mp3"_s, u"/m/"_s))
                  .toStdString());
}

TEST(EntriesOfNml, ALineWithoutAFolderGivesWhatStandsBehindItsSixthCharacter)
{
    // Neither the mark of the folder nor a first part of the line is there.
    EXPECT_EQ("\n.mp3", entriesOfNml(u"<LOCATION FILE=\"eins01.mp3\"/>\r\n"_s).toStdString());
    EXPECT_EQ("\n", entriesOfNml(u"<LOCATION FILE=\"a.mp3\"/>\r\n"_s).toStdString());
}

TEST(EntriesOfNml, ALastEntryThatNoCrClosesIsNone)
{
    QString text = location(u"a.mp3"_s, u"/m/"_s) + location(u"b.mp3"_s, u"/n/"_s);
    EXPECT_EQ("\n/m/a.mp3", entriesOfNml(text.chopped(2)).toStdString());
}

TEST_F(Nml, TheM3uBeginsWithLfAndTheListGoesOnAsM3u)
{
    // Written as entriesOfNml gives it; the display then drops the LF.
    desktop.log.failNext(u"files.writeText "_s + quoted(listPath(u"Set"_s)), 2);
    open((location(u"eins.mp3"_s, u"/m/"_s) + location(u"zwei.mp3"_s, u"/n/"_s) + u"--"_s).toUtf8());
    EXPECT_EQ("\n/m/eins.mp3\r\n/n/zwei.mp3\r\n", bytes(listPath(u"Set"_s)).toStdString());
    EXPECT_EQ(listPath(u"Set"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
}

TEST_F(Nml, TheRowPointsAtTheM3uAndTheDatabaseLearnsItAtTheNextSave)
{
    open((location(u"eins.mp3"_s, u"/m/"_s) + location(u"zwei.mp3"_s, u"/n/"_s) + u"--"_s).toUtf8());
    EXPECT_EQ("/m/eins.mp3\r\n/n/zwei.mp3\r\n\r\n", bytes(listPath(u"Set"_s)).toStdString());
    EXPECT_EQ(listPath(u"Set"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ(
        lines({u"> 1 \"101\" \"01\" \"eins\" \"/m/eins.mp3\" \"eins.mp3\" [icon Icon_2, 1 icon Icon_2, 3 darkred]"_s,
               u"  2 \"102\" \"02\" \"zwei\" \"/n/zwei.mp3\" \"zwei.mp3\" [icon Icon_2, 1 icon Icon_2, 3 darkred]"_s}),
        rows(tracks()));
}

TEST_F(Nml, ASecondReadingKeepsAChangedM3u)
{
    put(listPath(u"Set"_s), "/m/von Hand.mp3\r\n");
    open((location(u"eins.mp3"_s, u"/m/"_s) + u"--"_s).toUtf8());
    EXPECT_EQ("/m/von Hand.mp3\r\n\r\n", bytes(listPath(u"Set"_s)).toStdString());
    EXPECT_EQ(1, tracks().count());
    EXPECT_EQ("/m/von Hand.mp3", tracks().subItem(1, 3).toStdString());
}

TEST_F(Nml, AListOfTheHostThatCannotBeRewrittenGivesItsEntries)
{
    QByteArray nml = (location(u"eins.mp3"_s, u"/m/"_s) + location(u"zwei.mp3"_s, u"/m/"_s) + u"</NML>"_s).toUtf8();
    nml.replace('\r', "");
    put(u"/m/Set.nml"_s, nml);
    putDatabase(indexRow(1, {.name = u"Set"_s, .path = u"/m/Set.nml"_s}) +
                indexRow(2, {.name = u"Zuletzt"_s, .path = putList(u"Zuletzt"_s, {putTrack(u"a"_s)})}));
    putTrack(u"eins"_s);
    putTrack(u"zwei"_s);
    start();
    desktop.memory()->setReadOnly(u"/m/Set.nml"_s);
    click(1);
    EXPECT_EQ("/m/eins.mp3\r\n/m/zwei.mp3\r\n\r\n", bytes(listPath(u"Set"_s)).toStdString());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ(nml.toStdString(), bytes(u"/m/Set.nml"_s).toStdString());
}

TEST_F(Nml, TheNmlFileItselfStays)
{
    const QByteArray nml = (location(u"eins.mp3"_s, u"/m/"_s) + u"--"_s).toUtf8();
    open(nml);
    EXPECT_EQ(nml.toStdString(), bytes(u"/m/Set.nml"_s).toStdString());
}

TEST_F(Nml, AnM3uThatCannotBeWrittenLeavesTheRowAndMakesNoFile)
{
    desktop.log.failNext(u"files.writeText"_s);
    open(location(u"eins.mp3"_s, u"/m/"_s).toLatin1());
    EXPECT_EQ("/m/Set.nml", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("(missing)", bytes(listPath(u"Set"_s)).toStdString());
    EXPECT_EQ(location(u"eins.mp3"_s, u"/m/"_s).toStdString(), bytes(u"/m/Set.nml"_s).toStdString());
    EXPECT_EQ("Set", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_TRUE(root().LListView1.Enabled.value());
}

TEST_F(Nml, AMissingOneIsNotConvertedAndTheQuestionForAMissingListComes)
{
    openMissing();
    desktop.messages.answer(Answer::Cancel, u" Set"_s,
                            u"Die folgende Wiedergabeliste ist nicht vorhanden: \n/m/Set.nml"_s);
    click(1);
    EXPECT_EQ("/m/Set.nml", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("(missing)", bytes(listPath(u"Set"_s)).toStdString());
    EXPECT_EQ("/m/a.mp3", paths());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
}

TEST_F(Nml, AMissingOneWhoseM3uStandsIsOpenedWithoutAQuestion)
{
    openMissing();
    putList(u"Set"_s, {putTrack(u"eins"_s), putTrack(u"zwei"_s)});
    click(1);
    EXPECT_EQ("", boxes());
    EXPECT_EQ(listPath(u"Set"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/m/eins.mp3 /m/zwei.mp3", paths());
    EXPECT_EQ("Set", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ("1", catalogue().Tag.toStdString());
}

TEST_F(Nml, AMissingOneThatIsReplacedByAnotherKindGoesOnAsItsM3u)
{
    openMissing();
    put(u"/neu/ort.m3u"_s, "/m/eins.mp3\r\n/m/zwei.mp3\r\n");
    putTrack(u"eins"_s);
    putTrack(u"zwei"_s);
    clickAndChoose(u"/neu/ort.m3u"_s);
    EXPECT_EQ("(missing)", bytes(u"/m/Set.nml"_s).toStdString()) << "no M3U text under the name of an NML";
    EXPECT_EQ("/m/eins.mp3\r\n/m/zwei.mp3\r\n\r\n", bytes(listPath(u"Set"_s)).toStdString());
    EXPECT_EQ("/m/eins.mp3\r\n/m/zwei.mp3\r\n", bytes(u"/neu/ort.m3u"_s).toStdString());
    EXPECT_EQ(listPath(u"Set"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/m/eins.mp3 /m/zwei.mp3", paths());
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 1));
    EXPECT_EQ(Color::ButtonText, catalogue().color(1, 3));
}

TEST_F(Nml, AMissingOneThatIsReplacedByItsKindComesBackAndIsConverted)
{
    openMissing();
    const QByteArray nml = (location(u"eins.mp3"_s, u"/m/"_s) + u"--"_s).toUtf8();
    put(u"/neu/ort.nml"_s, nml);
    putTrack(u"eins"_s);
    clickAndChoose(u"/neu/ort.nml"_s);
    EXPECT_EQ(nml.toStdString(), bytes(u"/m/Set.nml"_s).toStdString());
    EXPECT_EQ(listPath(u"Set"_s).toStdString(), catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("/m/eins.mp3", paths());
}

TEST_F(Nml, ALookAtTheM3uThatFailsDoesNotConvertAnewOverIt)
{
    put(listPath(u"Set"_s), "/m/von Hand.mp3\r\n");
    desktop.log.failNext(u"files.exists "_s + quoted(listPath(u"Set"_s)));
    open((location(u"eins.mp3"_s, u"/m/"_s) + u"--"_s).toUtf8());
    EXPECT_EQ("/m/von Hand.mp3\r\n\r\n", bytes(listPath(u"Set"_s)).toStdString());
}

TEST_F(Nml, OfTwoOfOneNameTheSecondFindsTheM3uOfTheFirst)
{
    putTrack(u"eins"_s);
    put(u"/a/Set.nml"_s, (location(u"eins.mp3"_s, u"/m/"_s) + u"--"_s).toUtf8());
    put(u"/b/Set.nml"_s, (location(u"zwei.mp3"_s, u"/m/"_s) + u"--"_s).toUtf8());
    putDatabase(indexRow(1, {.name = u"A"_s, .path = u"/a/Set.nml"_s}) +
                indexRow(2, {.name = u"B"_s, .path = u"/b/Set.nml"_s}) +
                indexRow(3, {.name = u"Zuletzt"_s, .path = putList(u"Zuletzt"_s, {putTrack(u"a"_s)})}));
    start();
    for (const int row : {1, 2}) {
        click(row);
        EXPECT_EQ("/m/eins.mp3", paths());
        EXPECT_EQ(listPath(u"Set"_s).toStdString(), catalogue().subItem(row, 2).toStdString());
    }
}

} // namespace orvantine::fake
