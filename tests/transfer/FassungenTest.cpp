#include "transfer/FassungenWorld.h"

#include "app/Command.h"
#include "transfer/VersionDifference.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class EarlierVersionsWindow : public FassungenWorld
{
};

VersionDifference difference(const char* now, const char* then)
{
    const auto rows = [](const char* text) { return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts); };
    return versionDifference(rows(now), rows(then));
}

} // namespace

// What differs

TEST(VersionDifference, RowsComeInGoAwayAndMove)
{
    struct Case
    {
        const char* now;
        const char* then;
        VersionDifference expected;
        const char* text;
    };
    for (const Case& c :
         {Case{"", "", {0, 0, 0}, ""}, Case{"a b c", "a b c", {0, 0, 0}, ""}, Case{"a", "a b c d", {3, 0, 0}, "+3"},
          Case{"a b c", "a", {0, 2, 0}, "−2"}, Case{"a b", "c", {1, 2, 0}, "+1 −2"},
          Case{"a b c d", "d a b c", {0, 0, 1}, "1 verschoben"}, Case{"a b c d", "d c b a", {0, 0, 3}, "3 verschoben"},
          Case{"a b c x", "c a b y z", {2, 1, 1}, "+2 −1, 1 verschoben"},
          Case{"a a b", "a b a a", {1, 0, 1}, "+1, 1 verschoben"}, Case{"a a a", "a", {0, 2, 0}, "−2"},
          Case{"A", "a", {1, 1, 0}, "+1 −1"}}) {
        SCOPED_TRACE(std::string(c.now) + " -> " + c.then);
        EXPECT_EQ(difference(c.now, c.then), c.expected);
        EXPECT_EQ(differenceText(difference(c.now, c.then)).toStdString(), c.text);
    }
}

TEST(VersionDifference, OfALongListIsFoundAtOnce)
{
    QStringList now;
    for (int row = 0; row < 32'767; ++row)
        now += QString::number(row);
    QStringList then = now;
    std::reverse(then.begin(), then.end());
    EXPECT_EQ(versionDifference(now, then), (VersionDifference{0, 0, 32'766}));
}

// The files

TEST_F(EarlierVersionsWindow, ShowsTheFilesTheLastChangedFirstByTheirNamesInTheCatalogue)
{
    keep(listPath(u"Zwei"_s), "x", 5);
    keep(listPath(u"Eins"_s), "x", 4);
    keep(listPath(u"Eins"_s), "y", 3);
    keep(u"/weg/Alte Liste.m3u"_s, "x", 2);
    keep(data() + u"Resource/Eins.jpg"_s, "Bild", 1);
    keep(database(), "[Index]\r\n", 6);
    root().LListView1.setSubItem(1, 1, u"Mein Name"_s);
    inWindow([this] {
        EXPECT_EQ("Eins | CD-Cover | 1\nAlte Liste | Playliste | 1\nMein Name | Playliste | 2\nZwei | Playliste | 1\n"
                  "Datenbank | Datenbank | 1",
                  files());
        EXPECT_EQ("20.11.2026 11:00:00", form().LDateien.subItem(1, 3).toStdString());
        selectFile(2);
        EXPECT_EQ("/weg/Alte Liste.m3u", form().LPfad.Caption.value().toStdString());
    });
}

TEST_F(EarlierVersionsWindow, ShowsNothingThatIsNoVersionOfAListACoverOrTheDatabase)
{
    keep(u"/m/Lied.mp3@128"_s, "TAG");
    keep(u"/m/Lied.mp3"_s, "mp3");
    keep(u"/m/Bild.jpg"_s, "Bild");
    keep(u"/anderswo/Orvantine.dat"_s, "[Index]\r\n");
    keep(backup(), "[Index]\r\n");
    inWindow([this] {
        EXPECT_EQ("", files());
        EXPECT_EQ("Noch wurde keine Playliste, kein CD-Cover und keine Datenbank ersetzt.", told());
        EXPECT_FALSE(form().bAnsehen.Enabled.value());
        EXPECT_FALSE(form().bZurückholen.Enabled.value());
        EXPECT_FALSE(form().bSpeichernUnter.Enabled.value());
    });
}

TEST_F(EarlierVersionsWindow, TheFilterLeavesTheFilesWhoseNameOrPathHoldsTheText)
{
    keep(listPath(u"Eins"_s), "x", 3);
    keep(listPath(u"Zwei"_s), "x", 2);
    keep(u"/stick/ROCK/a.m3u"_s, "x", 1);
    inWindow([this] {
        const auto filter = [this](const QString& text) {
            form().tFilter.Text = text;
            form().tFilter.Change();
            return files();
        };
        selectFile(3);
        EXPECT_EQ("Eins | Playliste | 1", filter(u" eIN "_s));
        EXPECT_EQ("a | Playliste | 1", filter(u"rock"_s));
        EXPECT_EQ("/stick/ROCK/a.m3u", form().LPfad.Caption.value().toStdString());
        EXPECT_EQ("", filter(u"nichts davon"_s));
        EXPECT_EQ("", form().LPfad.Caption.value().toStdString());
        EXPECT_EQ("", versions());
        EXPECT_FALSE(form().bZurückholen.Enabled.value());
        EXPECT_EQ("a | Playliste | 1\nZwei | Playliste | 1\nEins | Playliste | 1", filter({}));
    });
    inWindow([this] { EXPECT_EQ("", form().tFilter.Text.value().toStdString()) << "a new look is not filtered"; });
}

TEST_F(EarlierVersionsWindow, TheFilterKeepsTheSelectedFileWhereItStaysInSight)
{
    keep(listPath(u"Eins"_s), "x", 3);
    keep(listPath(u"Zwei"_s), "x", 2);
    inWindow([this] {
        selectFile(2);
        form().tFilter.Text = u"m3u"_s;
        form().tFilter.Change();
        EXPECT_EQ(listPath(u"Eins"_s).toStdString(), form().LPfad.Caption.value().toStdString());
    });
}

TEST_F(EarlierVersionsWindow, TellsTheRoomOfAllAndTheLimits)
{
    keep(listPath(u"Eins"_s), QByteArray(3 << 20, 'x'));
    keep(u"/m/Lied.mp3@128"_s, QByteArray(1 << 19, 'y'));
    inWindow([this] {
        EXPECT_EQ(
            "Alle Fassungen zusammen belegen 3,5 MB. Entfernt wird, was älter als 90 Tage ist, und über 200 MB das "
            "Älteste; die neueste Fassung jeder Datei bleibt.",
            form().LPlatz.Caption.value().toStdString());
    });
}

TEST_F(EarlierVersionsWindow, SaysThatItIsNotKnownWhatWasKept)
{
    keep(listPath(u"Eins"_s), "x");
    desktop.versions()->Unknown = true;
    inWindow([this] {
        EXPECT_EQ("", files());
        EXPECT_EQ("Das Verzeichnis der früheren Fassungen kann nicht gelesen werden.", told());
    });
}

// The versions of a file

TEST_F(EarlierVersionsWindow, TellsOfEachVersionTimeSizeTracksReasonAndWhatDiffers)
{
    const QString eins = listPath(u"Eins"_s);
    keep(eins, bytes(eins), 1, u"Playliste sortieren: Namen sortieren"_s);
    keep(eins, "/m/Eins 2.mp3\r\n/m/Eins 1.mp3\r\n", 2, u"Löschen"_s);
    keep(eins, "/m/neu.mp3\r\n/m/Eins 1.mp3\r\n/m/auch.mp3\r\n", 3);
    keep(eins, "#EXTM3U\r\n/m/Eins 1.mp3\r\n/m/Eins 2.mp3\r\n", 4);
    keep(eins, QByteArray(2000, 'x') + "\r\n", 5);
    inWindow([this] {
        settle();
        EXPECT_EQ("20.11.2026 11:00:00 | 32 Bytes | 2 | Playliste sortieren: Namen sortieren | wie jetzt\n"
                  "20.11.2026 10:00:00 | 30 Bytes | 2 | Löschen | 1 verschoben\n"
                  "20.11.2026 09:00:00 | 40 Bytes | 3 | nicht bekannt | +2 −1\n"
                  "20.11.2026 08:00:00 | 39 Bytes | 2 | nicht bekannt | Titel wie jetzt\n"
                  "20.11.2026 07:00:00 | 2,0 KB | 1 | nicht bekannt | +1 −2",
                  versions());
    });
}

TEST_F(EarlierVersionsWindow, TheReasonIsTheCommandAsItStandsInTheMenu)
{
    const auto reasonsOf = [this](const std::function<void()>& act) {
        kept().clear();
        act();
        QStringList reasons;
        for (const MemoryFiles::Kept& one : kept())
            if (!reasons.contains(one.reason))
                reasons += one.reason;
        return lines(reasons);
    };
    EXPECT_EQ("Einträge verschieben: Abwärts", reasonsOf([this] {
                  tracks().select(1);
                  ASSERT_TRUE(root().mnuMoveEntry[2].press());
              }));
    EXPECT_EQ("Verschieben: Tiefer", reasonsOf([this] { ASSERT_TRUE(root().mnuVerschiebung[2].press()); }));
    EXPECT_EQ("Datenbank speichern", reasonsOf([this] {
                  catalogue().setSubItem(1, 3, u"77"_s);
                  ASSERT_TRUE(root().mnuSpeichern.press());
              }));
    EXPECT_EQ("Playliste sortieren: Namen sortieren", reasonsOf([this] {
                  desktop.messages.answer(Answer::Yes);
                  ASSERT_TRUE(root().mnuSortierung[1].press());
              }));
    EXPECT_EQ("Ziehen und Ablegen", reasonsOf([this] { tracks().Drop({putTrack(u"Neu"_s)}); }));
}

TEST_F(EarlierVersionsWindow, TellsOfAFileThatIsMissingUnreadableOrAnotherPicture)
{
    keep(u"/weg/Alt.m3u"_s, "/m/a.mp3\r\n", 1);
    keep(listPath(u"Zwei"_s), "x", 2);
    put(data() + u"Resource/Eins.jpg"_s, "Bild");
    keep(data() + u"Resource/Eins.jpg"_s, "anderes", 3);
    desktop.memory()->setUnreadable(listPath(u"Zwei"_s));
    inWindow([this] {
        settle();
        EXPECT_EQ("20.11.2026 11:00:00 | 10 Bytes | 1 | nicht bekannt | fehlt jetzt", versions());
        selectFile(2);
        settle();
        EXPECT_EQ("20.11.2026 10:00:00 | 1 Bytes | 0 | nicht bekannt | jetzt nicht lesbar", versions());
        selectFile(3);
        settle();
        EXPECT_EQ("20.11.2026 09:00:00 | 7 Bytes |  | nicht bekannt | anderes Bild", versions());
    });
}

TEST_F(EarlierVersionsWindow, OfADatabaseTheListsAreCounted)
{
    keep(database(), "[Index]\r\n1b=Eins\r\n1c=" + listPath(u"Eins"_s).toUtf8() + "\r\n2b=Drei\r\n2c=/l/Drei.m3u\r\n");
    inWindow([this] {
        settle();
        const std::string row = versions();
        EXPECT_TRUE(QString::fromStdString(row).endsWith(u" | 2 | nicht bekannt | +1 −1"_s)) << row;
    });
}

TEST_F(EarlierVersionsWindow, ComparesAnewWhenTheFileChangesMeanwhile)
{
    const QString eins = listPath(u"Eins"_s);
    keep(eins, "/m/Eins 1.mp3\r\n");
    inWindow([this, &eins] {
        settle();
        EXPECT_EQ("−1", form().LFassungen.subItem(1, 4).toStdString());
        desktop.memory()->put(eins, "/m/Eins 1.mp3\r\n");
        settle();
        EXPECT_EQ("wie jetzt", form().LFassungen.subItem(1, 4).toStdString());
    });
}

TEST_F(EarlierVersionsWindow, OfTenThousandVersionsOnlyThoseInSightAreRead)
{
    const QString eins = listPath(u"Eins"_s);
    for (int number = 0; number < 10'000; ++number)
        kept().append({eins,
                       QDateTime(QDate(2026, 11, 1), QTime(0, 0)).addSecs(number),
                       {},
                       "/m/" + QByteArray::number(number) + ".mp3\r\n"});
    inWindow([this] {
        EXPECT_EQ(10'000, form().LFassungen.count());
        EXPECT_EQ(0, desktop.versions()->Reads);
        desktop.events().run(form().tVergleich.Interval);
        EXPECT_EQ(8, desktop.versions()->Reads) << "a few at a time";
        settle();
        EXPECT_EQ(61, desktop.versions()->Reads);
        form().LFassungen.TopRow = [] { return 9'990; };
        selectVersion(5'000);
        settle();
        EXPECT_EQ(61 + 1 + 11, desktop.versions()->Reads);
        EXPECT_EQ("+1 −2", form().LFassungen.subItem(5'000, 4).toStdString());
        EXPECT_EQ("+1 −2", form().LFassungen.subItem(10'000, 4).toStdString());
        EXPECT_EQ("", form().LFassungen.subItem(9'000, 4).toStdString());
    });
    EXPECT_FALSE(form().tVergleich.Enabled.value()) << "nothing is compared once the window is closed";
    EXPECT_TRUE(form().files.empty());
}

// Looking into one

TEST_F(EarlierVersionsWindow, LooksIntoAListWithoutChangingAnything)
{
    keep(listPath(u"Eins"_s), "#EXTM3U\r\n/m/a.mp3\r\n<b>fett</b>\x1b[31m\t\xe2\x80\xae.mp3\r\n");
    inWindow([this] {
        desktop.forms().whileModal(u"Fassung"_s, [this](Form&) {
            Fassung& look = *root().fassung;
            EXPECT_EQ("„Eins“, Stand bis 20.11.2026 11:00:00: 2 Titel", look.LKopf.Caption.value().toStdString());
            EXPECT_EQ("    1  /m/a.mp3\n    2  <b>fett</b> [31m  .mp3", look.tInhalt.Text.value().toStdString());
            EXPECT_TRUE(look.tInhalt.Visible.value());
            EXPECT_FALSE(look.pBild.Visible.value());
            look.bAbbrechen.Click();
        });
        forgetCalls();
        form().LFassungen.DblClick();
        EXPECT_EQ("", actions());
        EXPECT_EQ("", root().fassung->tInhalt.Text.value().toStdString());
    });
}

TEST_F(EarlierVersionsWindow, LooksIntoACoverAndADatabase)
{
    keep(data() + u"Resource/Eins.jpg"_s, "Bild", 1);
    keep(database(), "[Index]\r\n1b=Eins\r\n1c=/l/Eins.m3u\r\n", 2);
    inWindow([this] {
        desktop.forms().whileModal(u"Fassung"_s, [this](Form&) {
            Fassung& look = *root().fassung;
            EXPECT_EQ("„Eins“, Stand bis 20.11.2026 11:00:00", look.LKopf.Caption.value().toStdString());
            EXPECT_EQ("Bild", look.Bytes.value());
            EXPECT_TRUE(look.pBild.Visible.value());
            EXPECT_FALSE(look.tInhalt.Visible.value());
            look.bAbbrechen.Click();
        });
        form().bAnsehen.Click();
        selectFile(2);
        desktop.forms().whileModal(u"Fassung"_s, [this](Form&) {
            Fassung& look = *root().fassung;
            EXPECT_EQ("    1  Eins – /l/Eins.m3u", look.tInhalt.Text.value().toStdString());
            EXPECT_EQ("", look.Bytes.value());
            look.bAbbrechen.Click();
        });
        form().bAnsehen.Click();
    });
}

TEST_F(EarlierVersionsWindow, WhatNobodyReadsToItsEndIsCut)
{
    keep(listPath(u"Eins"_s), QByteArray(5'000, 'x') + "\r\n" + QByteArray("/m/a.mp3\r\n").repeated(40'001));
    inWindow([this] {
        desktop.forms().whileModal(u"Fassung"_s, [this](Form&) {
            const QStringList shown = root().fassung->tInhalt.Text.value().split(u'\n');
            EXPECT_EQ(40'001, shown.size());
            EXPECT_EQ(1'007, shown.first().size());
            EXPECT_EQ("... und 2 weitere", shown.last().toStdString());
            root().fassung->bAbbrechen.Click();
        });
        form().bAnsehen.Click();
    });
}

TEST_F(EarlierVersionsWindow, SaysThatAVersionIsDamagedOrHasGone)
{
    keep(listPath(u"Eins"_s), "x");
    desktop.versions()->Damaged.insert(desktop.versions()->list()->versions[0].handle);
    inWindow([this] {
        settle();
        EXPECT_EQ("nicht mehr lesbar", form().LFassungen.subItem(1, 4).toStdString());
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s,
                                u"Diese Fassung ist beschädigt oder nicht lesbar."_s);
        form().bAnsehen.Click();
        kept().clear();
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s, u"Diese Fassung ist nicht mehr da."_s);
        form().bAnsehen.Click();
    });
}

TEST_F(EarlierVersionsWindow, DoesNotComeUpInFrontOfACommandThatWaits)
{
    const Command waiting(root(), Changes::Tracks);
    Command door(root());
    desktop.events().atYield(1, [this] { EXPECT_TRUE(root().mnuFassungen.press()); });
    EXPECT_TRUE(door.yield());
    EXPECT_FALSE(form().Visible.value());
}

} // namespace orvantine::fake
