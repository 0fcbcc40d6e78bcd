#include "catalogue/CatalogueWorld.h"

#include "catalogue/GetPlayListe.h"
#include "operations/Eigenschaften.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

class CatalogueViewTest : public CatalogueWorld
{
};

TEST_F(CatalogueViewTest, GetPlayListeOfAnEmptyPathChangesNothingAtAll)
{
    putCatalogue({u"Eins"_s});
    start();
    const std::string before = rows(catalogue()) + rows(tracks());
    const QString tag = catalogue().Tag;
    forgetCalls();
    GetPlayListe(root(), {});
    EXPECT_EQ("", lines(desktop.log.take()));
    EXPECT_EQ(before, rows(catalogue()) + rows(tracks()));
    EXPECT_EQ(tag, catalogue().Tag);
    EXPECT_EQ("(1)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_TRUE(catalogue().Enabled.value());
}

TEST_F(CatalogueViewTest, ANameWithACommaComesThroughInsideTheRowTextAndNoSubItemIsFilled)
{
    const QString path = putList(u"Rock, Pop"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    start();
    root().mnuErrorDisplay.Checked = false;
    GetPlayListe(root(), path);
    EXPECT_EQ(u"001,Rock, Pop.m3u,%1,3"_s.arg(path).toStdString(), catalogue().text(1).toStdString());
    EXPECT_EQ("", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ("", catalogue().subItem(1, 2).toStdString());
    EXPECT_EQ("", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ("Icon_1", catalogue().item(1).SmallIcon.toStdString());
    EXPECT_EQ("(1)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ("1", catalogue().Tag.toStdString());
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ(2, tracks().count());
}

TEST_F(CatalogueViewTest, AMissingFileAddsNoRowButCountsAndTheLastRowIsSelected)
{
    putCatalogue({u"Eins"_s, u"Zwei"_s});
    start();
    root().mnuErrorDisplay.Checked = false;
    click(1);
    root().missingPlaylists = 0;
    GetPlayListe(root(), u"/m/weg.m3u"_s);
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(2, catalogue().selectedRow());
    EXPECT_EQ("2", catalogue().Tag.toStdString());
    EXPECT_EQ("(3)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ(1, root().missingPlaylists);
    EXPECT_EQ("(missing)", bytes(u"/m/weg.m3u"_s).toStdString());
}

TEST_F(CatalogueViewTest, AListWithoutColumnsGetsTheFour)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    start();
    catalogue().clearColumns();
    GetPlayListe(root(), path);
    EXPECT_EQ("1 \"ID\" 0\n2 \"Name\" 2800\n3 \"Path\" 0\n4 \"Tracks\" 900", lines(columnLines(catalogue())));
    GetPlayListe(root(), path);
    EXPECT_EQ(4, catalogue().columns());
}

TEST_F(CatalogueViewTest, ThePlaylistOpensAndTheWaitEnds)
{
    const QString path = putList(u"Eins"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    start();
    QStringList pointers;
    const auto watch =
        root().Pointer.addNotifier([&] { pointers += QString::number(static_cast<int>(root().Pointer.value())); });
    int seen = 0;
    catalogue().EnsureVisible = [&](int row) { seen = row; };
    GetPlayListe(root(), path);
    EXPECT_EQ("11 0", pointers.join(u' ').toStdString());
    EXPECT_EQ(1, seen);
    EXPECT_TRUE(catalogue().Enabled.value());
    EXPECT_TRUE(tracks().Enabled.value());
    EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
}

TEST_F(CatalogueViewTest, WhileThePlaylistIsTakenPointerListsAndButtonsWait)
{
    putCatalogue({u"Eins"_s});
    const QString path = putList(u"Neu"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    start();
    const auto state = [this] {
        return QStringList{QString::number(static_cast<int>(root().Pointer.value())),
                           catalogue().Enabled.value() ? u"catalogue"_s : u"-"_s,
                           tracks().Enabled.value() ? u"tracks"_s : u"-"_s,
                           root().mnuBearbeiten.Enabled.value() ? u"menus"_s : u"-"_s,
                           root().pSymbole.Enabled.value() ? u"buttons"_s : u"-"_s}
            .join(u' ')
            .toStdString();
    };
    ASSERT_EQ("0 catalogue tracks menus buttons", state());
    std::string inside;
    desktop.events().atYield(1, [&] { inside = state(); });
    GetPlayListe(root(), path);
    EXPECT_EQ("11 - - - -", inside);
    EXPECT_EQ("0 catalogue tracks menus buttons", state());
}

TEST_F(CatalogueViewTest, ARowWhoseListIsGoneCanStillBeSelected)
{
    const QString path = putList(u"Da"_s, {putTrack(u"a"_s), putTrack(u"b"_s)});
    putDatabase(indexRow(1, {.name = u"Weg"_s, .path = u"/m/weg.m3u"_s}) +
                indexRow(2, {.name = u"Da"_s, .path = path}));
    setting(u"Error"_s, dwordSetting(0));
    start();
    desktop.messages.answer(Answer::Retry, u" Weg"_s,
                            u"Die folgende Wiedergabeliste ist nicht vorhanden: \n/m/weg.m3u"_s);
    click(1);
    EXPECT_EQ(lines({u"> 1 \"000\" \"Weg\" \"/m/weg.m3u\" \"0\" [icon Icon_1, 1 icon Icon_1, 1 darkred, 3 darkred]"_s,
                     u"  2 \"001\" \"Da\" \"%1\" \"2\" [icon Icon_1, 1 icon Icon_1]"_s.arg(path)}),
              rows(catalogue()));
    EXPECT_EQ("1", catalogue().Tag.toStdString());
}

TEST_F(CatalogueViewTest, TheFieldsOfARowsPropertiesBearTheirLabels)
{
    const Eigenschaften& form = *root().eigenschaften;
    EXPECT_EQ("&Wiedergabeliste:", form.LPlaylistname.Caption.value().toStdString());
    EXPECT_EQ("&Orvantinee:", form.LPlayliste.Caption.value().toStdString());
    EXPECT_EQ("&Beschreibung:", form.LBeschreibung.Caption.value().toStdString());
    EXPECT_EQ("&Album CD-Cover:", form.LAlbumCover.Caption.value().toStdString());
    EXPECT_EQ("Abbrechen", form.bAbbrechen.Caption.value().toStdString());
    EXPECT_EQ("&Hilfe", form.bHilfe.Caption.value().toStdString());
}

} // namespace orvantine::fake
