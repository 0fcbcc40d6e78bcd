
#include "app/DisabledButtons.h"
#include "catalogue/CatalogueWorld.h"
#include "catalogue/NewPlayliste.h"
#include "catalogue/mnuSpeichern.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class NewPlaylist : public CatalogueWorld
{
protected:
    void answerDouble(Answer answer)
    {
        desktop.messages.answer(answer, u" Playliste hinzufügen"_s,
                                u"Diese Wiedergabeliste ist schon im Datenbestand vorhanden.\n"
                                u"Überprüfen Sie bitte, ob es sich nur um den gleichen Namen handelt.   \n \n"
                                u"Möchten Sie diese Playliste trotzdem erneut hinzufügen ?"_s);
    }
    void expectNoWait()
    {
        EXPECT_EQ(MousePointer::Default, root().Pointer.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
        EXPECT_TRUE(catalogue().Enabled.value());
        EXPECT_TRUE(tracks().Enabled.value());
        EXPECT_FALSE(root().buttonsDisabled);
    }
    [[nodiscard]] QString marker() const { return data() + u"Orvantine.tmp"_s; }
};

} // namespace

TEST_F(NewPlaylist, CancelInTheInputBoxAddsNoRowAndEndsTheWait)
{
    putCatalogue({u"Eins"_s});
    start();
    const std::string before = rows(catalogue()) + rows(tracks());
    root().Pointer = MousePointer::Hourglass;
    root().mnuBearbeiten.Enabled = false;
    desktop.messages.enter({});
    QString path;
    forgetCalls();
    EXPECT_FALSE(NewPlayliste(root(), path, {}));
    EXPECT_EQ("input title \" Neue Playliste\" text \"Geben Sie einen Namen für die neue Playliste ein:\" default \"\" "
              "entered \"\"",
              boxes());
    EXPECT_EQ(before, rows(catalogue()) + rows(tracks()));
    EXPECT_EQ("", path.toStdString());
    EXPECT_EQ(MousePointer::Default, root().Pointer.value());
    EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
    EXPECT_EQ("", actions());
}

TEST_F(NewPlaylist, The160thIsAddedAndA161stIsNot)
{
    const QString path = putList(u"L"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    QByteArray index;
    for (int row = 1; row <= 159; ++row)
        index += indexRow(row, {.name = u"L%1"_s.arg(row), .path = path});
    putDatabase(index);
    start();
    QString added = path;
    EXPECT_TRUE(NewPlayliste(root(), added, u"Hundertsechzig"_s));
    EXPECT_EQ(160, catalogue().count());
    EXPECT_EQ("(160)", root().nAnzeige.Caption.value().toStdString());

    desktop.messages.answer(Answer::Ok, u" Wiedergabelisten verwalten"_s,
                            u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \n"
                            u"Bitte löschen Sie eine der 160 Playlisten aus der Liste."_s);
    DisabledButtons(root(), 1);
    root().Pointer = MousePointer::Hourglass;
    EXPECT_FALSE(NewPlayliste(root(), added, u"Zu viel"_s));
    EXPECT_EQ(160, catalogue().count());
    expectNoWait();
}

TEST_F(NewPlaylist, AnEmptyPathAndTheMarkerFormThePathAndTheCallerSeesIt)
{
    start();
    for (const QString& given : {QString(), marker()}) {
        SCOPED_TRACE(given.toStdString());
        const QString name = given.isEmpty() ? u"Erste"_s : u"Zweite"_s;
        QString path = given;
        desktop.messages.enter(name);
        EXPECT_TRUE(NewPlayliste(root(), path, {}));
        EXPECT_EQ(listPath(name).toStdString(), path.toStdString());
        EXPECT_EQ("\r\n", bytes(path).toStdString());
    }
    EXPECT_EQ(lines({u"  1 \"000\" \"Erste\" \"%1\" \"0\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"Erste"_s)),
                     u"> 2 \"001\" \"Zweite\" \"%1\" \"0\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"Zweite"_s))}),
              rows(catalogue()));
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ("(missing)", bytes(marker()).toStdString());
}

TEST_F(NewPlaylist, AnotherCaseOfAStoredNameAsksAndNoLeavesEverything)
{
    putCatalogue({u"Rock"_s});
    start();
    const std::string before = rows(catalogue()) + rows(tracks());
    answerDouble(Answer::No);
    DisabledButtons(root(), 1);
    root().Pointer = MousePointer::Hourglass;
    QString path;
    EXPECT_FALSE(NewPlayliste(root(), path, u"ROCK"_s));
    expectNoWait();
    EXPECT_EQ("box title \" Playliste hinzufügen\" text \"Diese Wiedergabeliste ist schon im Datenbestand "
              "vorhanden.\\nÜberprüfen Sie bitte, ob es sich nur um den gleichen Namen handelt.   \\n \\nMöchten Sie "
              "diese Playliste trotzdem erneut hinzufügen ?\" icon exclamation buttons yes-no answer no",
              boxes());
    EXPECT_EQ(before, rows(catalogue()) + rows(tracks()));
    EXPECT_EQ("/m/Rock 1.mp3\r\n/m/Rock 2.mp3\r\n\r\n", bytes(listPath(u"Rock"_s)).toStdString());
}

TEST_F(NewPlaylist, ADiskThatDoesNotAnswerIsNoProofThatThereIsNoFile)
{
    start();
    root().Visible = true;
    const QString there = putList(u"Da"_s, {putTrack(u"a"_s)});
    const std::string before = bytes(there).toStdString();
    for (const int call : {1, 2}) {
        desktop.log.failNext(u"files.exists \"%1\""_s.arg(there), call);
        QString path = there;
        (void)NewPlayliste(root(), path, u"Da %1"_s.arg(call));
        EXPECT_EQ(before, bytes(there).toStdString()) << call;
    }
}

TEST_F(NewPlaylist, YesAddsARowThatSharesTheFileAndKeepsItsBytes)
{
    putCatalogue({u"Rock"_s});
    start();
    answerDouble(Answer::Yes);
    QString path;
    EXPECT_TRUE(NewPlayliste(root(), path, u"rock"_s));
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(listPath(u"rock"_s).toStdString(), path.toStdString());
    EXPECT_EQ("/m/Rock 1.mp3\r\n/m/Rock 2.mp3\r\n\r\n", bytes(path).toStdString());
    EXPECT_EQ("Rock.m3u", desktop.disk().list(data() + u"Playlisten"_s, u"*.*"_s).join(u' ').toStdString());
}

TEST_F(NewPlaylist, WithCheckEntrysOffNothingIsAsked)
{
    putCatalogue({u"Rock"_s});
    setting(u"CheckEntrys"_s, dwordSetting(0));
    start();
    QString path;
    EXPECT_TRUE(NewPlayliste(root(), path, u"ROCK"_s));
    EXPECT_EQ("", boxes());
    EXPECT_EQ(2, catalogue().count());
}

TEST_F(NewPlaylist, AnInvisibleWindowNeitherAsksNorCreates)
{
    putCatalogue({u"Rock"_s});
    start();
    root().Visible = false;
    QString known;
    EXPECT_TRUE(NewPlayliste(root(), known, u"rock"_s));
    QString fresh;
    forgetCalls();
    EXPECT_TRUE(NewPlayliste(root(), fresh, u"Neu"_s));
    EXPECT_EQ("", boxes());
    EXPECT_EQ("", actions());
    EXPECT_EQ("(missing)", bytes(listPath(u"Neu"_s)).toStdString());
    EXPECT_EQ(3, catalogue().count());
}

TEST_F(NewPlaylist, AnExistingFileKeepsItsBytesAndLosesItsProtection)
{
    start();
    put(u"/m/alt.m3u"_s, "#EXTM3U\r\n/m/a.mp3\r\n");
    desktop.memory()->setReadOnly(u"/m/alt.m3u"_s);
    QString path = u"/m/alt.m3u"_s;
    EXPECT_TRUE(NewPlayliste(root(), path, u"Alt"_s));
    EXPECT_EQ("/m/alt.m3u", path.toStdString());
    EXPECT_EQ("#EXTM3U\r\n/m/a.mp3\r\n", bytes(path).toStdString());
    EXPECT_TRUE(desktop.disk().writeBytes(path, "frei"));
}

TEST_F(NewPlaylist, ANameThatIsNoFileNameStandsAsARowWithoutAFile)
{
    setting(u"CheckEntrys"_s, dwordSetting(0));
    start();
    int row = 0;
    for (const QString& name : {u"a:b"_s, u"a?b"_s, u"a*b"_s, u"AC/DC"_s, u"AC\\DC"_s, u"a<b"_s, u"a|b"_s}) {
        SCOPED_TRACE(name.toStdString());
        QString path = marker();
        EXPECT_TRUE(NewPlayliste(root(), path, name));
        EXPECT_EQ(++row, catalogue().count());
        EXPECT_EQ(name.toStdString(), catalogue().subItem(row, 1).toStdString());
        EXPECT_EQ((data() + u"Playlisten/"_s + name + u".m3u"_s).toStdString(), path.toStdString());
    }
    EXPECT_EQ("", desktop.disk().list(data() + u"Playlisten"_s, u"*.*"_s).join(u' ').toStdString());
    EXPECT_EQ("", desktop.disk().folders(data() + u"Playlisten"_s).join(u' ').toStdString());
}

TEST_F(NewPlaylist, TheFavouriteMarkIsThatOfThePlaceBehindTheLastRow)
{
    putDatabase("1f=x\r\n2g=1\r\n3g=ja\r\n");
    start();
    for (const QString& name : {u"Eins"_s, u"Zwei"_s, u"Drei"_s}) {
        QString path;
        EXPECT_TRUE(NewPlayliste(root(), path, name));
    }
    EXPECT_EQ(lines({u"  1 \"000\" \"Eins\" \"%1\" \"0\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"Eins"_s)),
                     u"  2 \"001\" \"Zwei\" \"%1\" \"0\" [icon Icon_6, 1 icon Icon_6]"_s.arg(listPath(u"Zwei"_s)),
                     u"> 3 \"002\" \"Drei\" \"%1\" \"0\" [icon Icon_1, 1 icon Icon_1]"_s.arg(listPath(u"Drei"_s))}),
              rows(catalogue()));
}

TEST_F(NewPlaylist, ThePanelsShowTheNewEmptyList)
{
    putCatalogue({u"Eins"_s});
    put(data() + u"Resource/Eins.jpg"_s, "bild");
    desktop.tags.tracks[u"/m/Eins 1.mp3"_s] = {.title = u"Lied"_s, .artist = u"Wir"_s};
    start();
    ASSERT_TRUE(root().mnuCoverShow.Checked.value());
    ASSERT_EQ("Lied", root().sAnzeige[1].Caption.value().toStdString());
    ASSERT_FALSE(root().tPlayliste.Text.value().isEmpty());

    QString path;
    EXPECT_TRUE(NewPlayliste(root(), path, u"Neu"_s));
    EXPECT_EQ("Neu", root().tPlaylisteinträge.Caption.value().toStdString());
    EXPECT_EQ("20.11.2026", root().tDatum.Caption.value().toStdString());
    EXPECT_EQ("", root().sAnzeige[1].Caption.value().toStdString());
    EXPECT_EQ("", root().sAnzeige[2].Caption.value().toStdString());
    EXPECT_EQ("", root().tPlayliste.Text.value().toStdString());
    EXPECT_EQ("", root().pCovers.Picture.value().toStdString());
    EXPECT_FALSE(root().mnuCoverShow.Checked.value());
    EXPECT_EQ(0, tracks().columns());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("(2)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ(MousePointer::Default, root().Pointer.value());
}

TEST_F(NewPlaylist, TheNewRowIsScrolledIntoSight)
{
    start();
    int seen = 0;
    catalogue().EnsureVisible = [&](int row) { seen = row; };
    QString path;
    EXPECT_TRUE(NewPlayliste(root(), path, u"Neu"_s));
    EXPECT_EQ(1, seen);
}

TEST_F(NewPlaylist, TheFolderPlaylistenComesBack)
{
    start();
    desktop.disk().remove(data() + u"Playlisten"_s);
    QString path;
    EXPECT_TRUE(NewPlayliste(root(), path, u"Neu"_s));
    EXPECT_TRUE(desktop.disk().isFolder(data() + u"Playlisten"_s));
}

TEST_F(NewPlaylist, ANameThatTheDatabaseGivesBackAsEmptyCountsAsNone)
{
    putCatalogue({u"Eins"_s});
    start();
    for (const QString& name : {u"  "_s, u"\t"_s, u"\"\""_s, u"''"_s}) {
        desktop.messages.enter(name);
        QString path;
        EXPECT_FALSE(NewPlayliste(root(), path, QString()));
        EXPECT_EQ(1, catalogue().count());
    }
}

} // namespace orvantine::fake
