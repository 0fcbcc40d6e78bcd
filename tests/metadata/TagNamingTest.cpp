#include "MetadataTest.h"
#include "app/Command.h"
#include "metadata/mnuSetTagName.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class TagNaming : public MetadataTest
{
protected:
    [[nodiscard]] QString database() const { return data() + u"Orvantine.dat"_s; }
    /// The labels after a look at the row, as a click on it leaves them.
    void look(int row)
    {
        tracks().select(row);
        root().LListView2.Click();
    }
    [[nodiscard]] std::string names()
    {
        QStringList list;
        for (int row = 1; row <= tracks().count(); ++row)
            list << name(row);
        return lines(list);
    }
    [[nodiscard]] int keys() { return static_cast<int>(desktop.profiles().keys(database(), u"TagInfo"_s).size()); }
};

} // namespace

TEST_F(TagNaming, NamesEveryTaggedTrackOfTheList)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    addTrack(u"b.mp3"_s, {});
    addTrack(u"c.mp3"_s, {.artist = u"C"_s});
    addTrack(u"d.mp3"_s, {.title = u"Vier"_s});
    look(1);
    root().mnuSetTagName.Click();
    EXPECT_EQ("A - Eins\nName\nC - \nName", names());
    EXPECT_EQ(u"A - Eins"_s, stored(music(u"a.mp3"_s)));
    EXPECT_EQ(u"C -"_s, stored(music(u"c.mp3"_s)));
    EXPECT_TRUE(bytes(database()).contains("/music/c.mp3=C - \r\n")) << bytes(database()).toStdString();
    EXPECT_EQ(2, keys());
    EXPECT_EQ(1, tracks().selectedRow());
    EXPECT_EQ(u"Eins"_s, root().sTitle.Caption.value());
}

TEST_F(TagNaming, TheViewIsToldOfAllNamesAtOnce)
{
    for (const QString& file : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s})
        addTrack(file, {.title = file, .artist = u"A"_s});
    for (const QString& column : {u"ID"_s, u"Track"_s, u"Name"_s})
        tracks().addColumn(column, 1000);
    look(1);
    int told = 0;
    QObject::connect(&tracks(), &QAbstractItemModel::dataChanged, &tracks(), [&told] { ++told; });
    root().mnuSetTagName.Click();
    EXPECT_EQ("A - a.mp3\nA - b.mp3\nA - c.mp3", names());
    EXPECT_EQ(1, told);
    EXPECT_FALSE(tracks().batching());
}

TEST_F(TagNaming, ASelectedTrackWithoutATagChangesNothingEvenIfOthersHaveOne)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    addTrack(u"b.mp3"_s, {});
    look(2);
    const int before = reads();
    root().mnuSetTagName.Click();
    EXPECT_EQ("Name\nName", names());
    EXPECT_EQ(0, keys());
    EXPECT_EQ(before, reads());
}

TEST_F(TagNaming, TheDatabaseIsCopiedFirst)
{
    put(database(), "[TagInfo]\r\nx=y\r\n");
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    look(1);
    root().mnuSetTagName.Click();
    EXPECT_EQ("[TagInfo]\r\nx=y\r\n", bytes(data() + u"Orvantine.bak"_s));
    EXPECT_EQ("[TagInfo]\r\nx=y\r\n/music/a.mp3=A - Eins\r\n", bytes(database()));
}

TEST_F(TagNaming, WithoutADatabaseNothingIsCopiedAndThePointerNeverWaits)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    look(1);
    desktop.disk().remove(database());
    desktop.log.take();
    int changes = 0;
    const auto watch = root().Pointer.addNotifier([&changes] { ++changes; });
    root().mnuSetTagName.Click();
    EXPECT_EQ("A - Eins", names());
    EXPECT_EQ("", calls({u"files.copy"_s}));
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.bak"_s));
    EXPECT_EQ(0, changes);
}

TEST_F(TagNaming, TheSelectedRowIsNamedByTheLabelsBeforeItIsRead)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    addTrack(u"b.mp3"_s, {});
    look(1);
    tracks().select(2);
    root().mnuSetTagName.Click();
    EXPECT_EQ("A - Eins\nA - Eins", names());
    EXPECT_EQ(2, keys());
    EXPECT_EQ(2, tracks().selectedRow());
}

TEST_F(TagNaming, ThePopUpOfTheTracksHasTheSameCommands)
{
    const FakeTrack track{.title = u"Eins"_s, .artist = u"A"_s};
    for (const int place : {3, 4, 5}) {
        QStringList seen;
        MenuItem* const main[] = {&root().mnuSetFileName, &root().mnuSetTagName, &root().mnuGetIDTag};
        for (MenuItem* item : {main[place - 3], &root().mnxBearbeiten[place]}) {
            tracks().clear();
            put(database(), "[TagInfo]\r\n/music/a.mp3=Alt\r\n");
            addTrack(u"a.mp3"_s, track);
            look(1);
            desktop.log.take();
            item->Click();
            seen += desktop.log.take().join(u'\n') + u'\n' + name(1) + QString::fromUtf8(bytes(database()));
        }
        EXPECT_EQ(seen[0].toStdString(), seen[1].toStdString()) << place;
        EXPECT_TRUE(seen[0].contains(place == 3 ? u"\na["_s : u"\nA - Eins["_s)) << seen[0].toStdString();
    }
}

TEST_F(TagNaming, SelectsTheRememberedRowAgain)
{
    for (const QString& file : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s})
        addTrack(file, {.title = file, .artist = u"A"_s});
    look(2);
    root().mnuSetTagName.Click();
    EXPECT_EQ(2, tracks().selectedRow());
    EXPECT_EQ(u"b.mp3"_s, root().sTitle.Caption.value());
}

TEST_F(TagNaming, AFileNameIsTheNameAgainAndTheKeyGoes)
{
    put(database(), "[TagInfo]\r\n/music/song.mp3=A - Eins\r\n/music/other.mp3=B - Zwei\r\n");
    addRow(music(u"song.mp3"_s), u"A - Eins"_s);
    root().mnuSetFileName.Click();
    EXPECT_EQ(u"song"_s, name(1));
    EXPECT_EQ("[TagInfo]\r\n/music/other.mp3=B - Zwei\r\n", bytes(database()));
}

TEST_F(TagNaming, TheLastFourCharactersGoWhateverTheyAre)
{
    const std::pair<QString, QString> cases[] = {{u"/music/song.flac"_s, u"song."_s},
                                                 {u"C:\\Musik\\lied.mp3"_s, u"lied"_s},
                                                 {u"abc"_s, u""_s},
                                                 {u"a.mp3"_s, u"a"_s}};
    for (const auto& [path, expected] : cases) {
        tracks().clear();
        addRow(path);
        mnuSetFileName_Click(root());
        EXPECT_EQ(expected, name(1)) << path.toStdString();
    }
}

TEST_F(TagNaming, TheEditorOfTagsOpensNothingAndNamesTheTrack)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    root().mnuGetIDTag.Click();
    EXPECT_EQ(u"A - Eins"_s, name(1));
    EXPECT_EQ(u"A - Eins"_s, stored(music(u"a.mp3"_s)));
    EXPECT_FALSE(root().tagForm->Visible.value());
    EXPECT_EQ("", calls({u"Forms.show frmID3V1"_s, u"Forms.showModal"_s}));
}

TEST_F(TagNaming, NoKeyButTheToldOneChangesWhateverATagContains)
{
    const QByteArray rest = "; note\r\n[Other]\r\nTagInfo=1\r\n[Index]\r\n1b=Liste\r\n";
    const QString nasty[] = {u"a\r\n[Index]\r\n1b=x"_s,
                             u"[Index]"_s,
                             u"=x=y="_s,
                             u"\"quoted\""_s,
                             u"'q'"_s,
                             u"; comment"_s,
                             u"\n1b=x"_s,
                             u"x\r1b=x"_s,
                             u"Ãœ\u0081\u00ffЖ"_s,
                             QString(u"nul"_s) + QChar(0) + u"1b=x"_s};
    for (const QString& text : nasty) {
        tracks().clear();
        put(database(), rest);
        addTrack(u"a.mp3"_s, {.title = text, .artist = u"A"_s});
        look(1);
        root().mnuSetTagName.Click();
        root().mnuGetIDTag.Click();
        EXPECT_EQ((QStringList{u"/music/a.mp3"_s}), desktop.profiles().keys(database(), u"TagInfo"_s))
            << text.toStdString();
        EXPECT_EQ((QStringList{u"1b"_s}), desktop.profiles().keys(database(), u"Index"_s)) << text.toStdString();
        EXPECT_EQ(u"Liste"_s, desktop.profiles().value(database(), u"Index"_s, u"1b"_s)) << text.toStdString();
        EXPECT_EQ(1, bytes(database()).count("[Index]\r\n1b=Liste\r\n")) << bytes(database()).toStdString();
        EXPECT_EQ(1, bytes(database()).count("\r\n1b")) << bytes(database()).toStdString();
        desktop.disk().remove(database());
    }
}

TEST_F(TagNaming, SavingTheCatalogueWithAutoTagNamesTheOpenList)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    addTrack(u"b.mp3"_s, {.title = u"Zwei"_s, .artist = u"B"_s});
    look(2);
    root().mnuSpeichern.Tag = u"1"_s;
    root().mnuSetTagName.Click();
    EXPECT_EQ("A - Eins\nB - Zwei", names());
    EXPECT_EQ("", boxes());
}

TEST_F(TagNaming, OnlyTheNamingOfTheWholeListCopiesTheDatabase)
{
    put(database(), "[TagInfo]\r\n/music/a.mp3=Alt\r\n");
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    desktop.log.take();
    root().mnuSetFileName.Click();
    root().mnuGetIDTag.Click();
    EXPECT_EQ("", calls({u"files.copy"_s}));
    EXPECT_EQ("(missing)", bytes(data() + u"Orvantine.bak"_s));
}

TEST_F(TagNaming, TheViewFollowsWhenABoxComesUp)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    addTrack(u"b.mp3"_s, {.title = u"Zwei"_s, .artist = u"B"_s});
    tracks().select(1);
    tracks().Click();
    int shown = 0;
    tracks().BatchEnded = [&shown] { ++shown; };
    int atTheBox = -1;
    {
        const ListView::Batch together(tracks());
        desktop.messages.answer(Answer::Ok);
        Command(root()).tell({.text = u"?"_s, .title = u"!"_s});
        atTheBox = shown;
    }
    desktop.messages.take();
    EXPECT_EQ(1, atTheBox);
}

TEST_F(TagNaming, TheViewFollowsALongListTenTimesASecondAtTheMost)
{
    constexpr int Tracks = 40;
    for (int i = 1; i <= Tracks; ++i)
        addTrack(u"%1.mp3"_s.arg(i), {.title = QString::number(i), .artist = u"A"_s});
    look(1);
    const QDateTime begin = desktop.events().now();
    const int before = desktop.events().yields();
    // Each yield takes as long as a slow disk would.
    for (int yield = 1; yield <= 10 * Tracks; ++yield)
        desktop.events().atYield(yield, [this] { desktop.events().setNow(desktop.events().now().addMSecs(15)); });
    int shown = 0;
    bool selection = false;
    tracks().BatchEnded = [&] {
        ++shown;
        selection = selection || tracks().selectedRow() > 1;
    };
    root().mnuSetTagName.Click();
    ASSERT_LT(desktop.events().yields() - before, 10 * Tracks);
    const qint64 tenths = begin.msecsTo(desktop.events().now()) / 100;
    ASSERT_GT(tenths, 10);
    EXPECT_LE(shown, tenths + 1);
    EXPECT_GE(shown, tenths / 2) << "the view follows";
    EXPECT_TRUE(selection);
    tracks().BatchEnded = [] {};
}

TEST_F(TagNaming, WhereOneNameCannotBeStoredThoseBeforeItGoAgain)
{
    const QByteArray before = "[Other]\r\nx=y\r\n";
    put(database(), before);
    for (const QString& file : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s, u"d.mp3"_s})
        addTrack(file, {.title = file, .artist = u"A"_s});
    look(1);
    desktop.log.failNext(u"files.appendBytes"_s, 3);
    root().mnuSetTagName.Click();
    EXPECT_EQ(before.toStdString(), bytes(database()).toStdString());
    EXPECT_EQ("A - a.mp3\nA - b.mp3\nA - c.mp3\nA - d.mp3", names());
    EXPECT_EQ("Nicht gespeichert: Der Datenträger meldet einen Fehler.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(TagNaming, ADatabaseThatItMadeAndThatWentAgainIsStillAwaited)
{
    addTrack(u"a.mp3"_s, {.title = u"Eins"_s, .artist = u"A"_s});
    addTrack(u"b.mp3"_s, {.title = u"Zwei"_s, .artist = u"B"_s});
    look(1);
    desktop.disk().remove(database());
    root().databaseAwaited = true;
    desktop.log.failNext(u"files.appendBytes"_s, 2);
    root().mnuSetTagName.Click();
    EXPECT_EQ("(missing)", bytes(database()));
    EXPECT_TRUE(root().databaseAwaited);

    root().mnuSetTagName.Click();
    EXPECT_EQ(2, keys());
    EXPECT_FALSE(root().databaseAwaited);
}

TEST_F(TagNaming, TheNamesOfASecondAgoStandWhateverFailsBehindThem)
{
    for (const QString& file : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s, u"d.mp3"_s})
        addTrack(file, {.title = file, .artist = u"A"_s});
    look(1);
    desktop.disk().remove(database());
    // The file of the second row is slow.
    for (int yield = 1; yield < 100; ++yield)
        desktop.events().atYield(yield, [this] {
            if (tracks().selectedRow() == 2)
                desktop.events().setNow(desktop.events().now().addSecs(1));
        });
    desktop.log.failNext(u"files.appendBytes"_s, 4);
    root().mnuSetTagName.Click();
    EXPECT_EQ("[TagInfo]\r\n/music/a.mp3=A - a.mp3\r\n/music/b.mp3=A - b.mp3\r\n", bytes(database()).toStdString());
}

TEST_F(TagNaming, BeforeSomebodyIsAskedTheNamesStand)
{
    for (const QString& file : {u"a.mp3"_s, u"b.mp3"_s})
        addTrack(file, {.title = file, .artist = u"A"_s});
    addRow(music(u"weg.mp3"_s));
    addTrack(u"d.mp3"_s, {.title = u"d.mp3"_s, .artist = u"A"_s});
    look(1);
    desktop.disk().remove(database());
    root().mnuErrorDisplay.Checked = true;
    root().Visible = true;
    QByteArray atTheBox;
    desktop.messages.script({.answer = Answer::Cancel, .meanwhile = [&] {
                                 // What fails while the box is up has nothing to do with the names.
                                 desktop.files().failWhole();
                                 atTheBox = bytes(database());
                             }});
    desktop.log.failNext(u"files.appendBytes"_s, 4);
    root().mnuSetTagName.Click();
    EXPECT_EQ("[TagInfo]\r\n/music/a.mp3=A - a.mp3\r\n/music/b.mp3=A - b.mp3\r\n", atTheBox.toStdString());
    // Its file could not be read: it has the name of the row before it.
    EXPECT_EQ((atTheBox + "/music/weg.mp3=A - b.mp3\r\n").toStdString(), bytes(database()).toStdString());
}

} // namespace orvantine::fake
