#include "transfer/FassungenWorld.h"

#include "catalogue/CatalogueRows.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class BringBack : public FassungenWorld
{
protected:
    void bringBack(Answer answer = Answer::Yes)
    {
        desktop.messages.answer(answer);
        form().bZurückholen.Click();
    }
    /// Time, size and reason of what was kept, and the bytes.
    [[nodiscard]] std::string keptLines()
    {
        QStringList all;
        for (const MemoryFiles::Kept& one : kept())
            all += QString(one.path).replace(data(), u"{data}/"_s) + u" ("_s + one.reason + u") "_s +
                   QString::fromUtf8(one.bytes).replace(u"\r\n"_s, u";"_s);
        return lines(all);
    }
    [[nodiscard]] std::string names()
    {
        QStringList all;
        for (int row = 1; row <= tracks().count(); ++row)
            all += tracks().subItem(row, 3);
        return lines(all);
    }
};

} // namespace

TEST_F(BringBack, AsksInPlainWordsAndDoesNothingOnNo)
{
    keep(listPath(u"Zwei"_s), "/m/alt.mp3\r\n", 1);
    keep(u"/m/Weg.m3u"_s, "/m/alt.mp3\r\n", 2);
    keep(data() + u"Resource/Eins.jpg"_s, "Bild", 3);
    keep(database(), "[Index]\r\n", 4);
    inWindow([this] {
        forgetCalls();
        const QString now = u"Der jetzige Stand wird vorher aufbewahrt und kann ebenso zurückgeholt werden."_s;
        const QString fresh = u"Die Datei ist zurzeit nicht da und wird wieder angelegt."_s;
        const QString until = u" mit dem Stand bis 20.11.2026 %1:00:00 zurückholen ?\n\n"_s;
        for (const auto& [row, text] : {std::pair{1, u"Möchten Sie die Playliste „Zwei“"_s + until.arg(11) + now},
                                        std::pair{2, u"Möchten Sie die Playliste „Weg“"_s + until.arg(10) + fresh},
                                        std::pair{3, u"Möchten Sie das CD-Cover „Eins“"_s + until.arg(u"09"_s) + fresh},
                                        std::pair{4, u"Möchten Sie die Datenbank"_s + until.arg(u"08"_s) + now}}) {
            selectFile(row);
            desktop.messages.answer(Answer::No, u" Frühere Fassungen"_s, text);
            form().bZurückholen.Click();
        }
        EXPECT_EQ("", actions());
        EXPECT_EQ("", told());
    });
    EXPECT_EQ(4, kept().size());
}

TEST_F(BringBack, PutsTheVersionBackAndKeepsThePresentStateFirst)
{
    const QString zwei = listPath(u"Zwei"_s);
    keep(zwei, "/m/alt.mp3\r\n", 1, u"Löschen"_s);
    inWindow([this, &zwei] {
        bringBack();
        EXPECT_EQ("/m/alt.mp3\r\n", bytes(zwei));
        EXPECT_EQ("„Zwei“ ist zurückgeholt: Stand bis 20.11.2026 11:00:00.", told());
        EXPECT_EQ("{data}/Playlisten/Zwei.m3u (Löschen) /m/alt.mp3;\n"
                  "{data}/Playlisten/Zwei.m3u (Frühere Fassungen) /m/Zwei 1.mp3;/m/Zwei 2.mp3;;",
                  keptLines());
        EXPECT_EQ("Zwei | Playliste | 2", files()) << "the window shows what was kept just now";
        settle();
        EXPECT_EQ("+2 −1", form().LFassungen.subItem(1, 4).toStdString());
        EXPECT_EQ("wie jetzt", form().LFassungen.subItem(2, 4).toStdString());

        // It can be undone: the newest version is what stood there.
        bringBack();
        EXPECT_EQ("/m/Zwei 1.mp3\r\n/m/Zwei 2.mp3\r\n\r\n", bytes(zwei));
    });
}

TEST_F(BringBack, AListInSightIsReadAnewAndNeverWrittenBackWithOldRows)
{
    const QString eins = listPath(u"Eins"_s);
    const QByteArray before = "/m/Zwei 2.mp3\r\n/m/Eins 1.mp3\r\n/m/Zwei 1.mp3\r\n\r\n";
    keep(eins, before);
    inWindow([this] { bringBack(); });
    EXPECT_EQ("/m/Zwei 2.mp3\n/m/Eins 1.mp3\n/m/Zwei 1.mp3", names());
    EXPECT_EQ("3", catalogue().subItem(1, 3).toStdString());
    EXPECT_EQ(TrackList::Content::Own, root().trackList.content());
    ASSERT_TRUE(root().mnuFileSave.press());
    EXPECT_EQ(before.left(45), bytes(eins).left(45));
    tracks().select(2);
    root().mnuMoveEntry[2].press();
    EXPECT_EQ("/m/Zwei 2.mp3\r\n/m/Zwei 1.mp3\r\n/m/Eins 1.mp3\r\n", bytes(eins).left(45));
}

TEST_F(BringBack, AListThatWasRemovedIsOfferedToTheCatalogue)
{
    keep(u"/m/Weg.m3u"_s, "/m/Eins 1.mp3\r\n");
    inWindow([this] {
        desktop.messages.answer(Answer::Yes);
        desktop.messages.answer(Answer::No, u" Frühere Fassungen"_s,
                                u"Die Playliste „Weg“ ist zurückgeholt, steht aber nicht im Katalog.\n\n"
                                u"Möchten Sie die Playliste hinzufügen ?"_s);
        form().bZurückholen.Click();
        EXPECT_EQ("/m/Eins 1.mp3\r\n", bytes(u"/m/Weg.m3u"_s));
        EXPECT_EQ(2, catalogue().count());

        desktop.memory()->remove(u"/m/Weg.m3u"_s);
        desktop.messages.answer(Answer::Yes);
        desktop.messages.answer(Answer::Yes);
        form().bZurückholen.Click();
        ASSERT_EQ(3, catalogue().count());
        EXPECT_EQ("Weg", catalogue().subItem(3, 1).toStdString());
        // As always, a list that is added gets a copy in "Playlisten".
        EXPECT_EQ(listPath(u"Weg"_s).toStdString(), catalogue().subItem(3, 2).toStdString());
        EXPECT_EQ("/m/Eins 1.mp3", names());
    });
    EXPECT_TRUE(databaseText().find("3b=Weg") != std::string::npos) << databaseText();
}

TEST_F(BringBack, AFullCatalogueIsToldAsAlways)
{
    for (int row = 3; row <= 160; ++row) {
        ListItem item;
        item.SubItems = {{.Text = u"L%1"_s.arg(row)}, {.Text = u"/l/%1.m3u"_s.arg(row)}, {.Text = u"0"_s}};
        catalogue().append(std::move(item));
    }
    keep(u"/m/Weg.m3u"_s, "/m/Eins 1.mp3\r\n");
    inWindow([this] {
        desktop.messages.answer(Answer::Yes);
        desktop.messages.answer(Answer::Yes);
        desktop.messages.answer(Answer::Ok);
        form().bZurückholen.Click();
    });
    EXPECT_EQ(160, catalogue().count());
    EXPECT_EQ("/m/Eins 1.mp3\r\n", bytes(u"/m/Weg.m3u"_s));
    const std::vector<ShownMessage>& shown = desktop.messages.shown();
    ASSERT_FALSE(shown.empty());
    EXPECT_TRUE(shown.back().text.contains(u"160"_s)) << shown.back().text.toStdString();
}

TEST_F(BringBack, AListThatOnlyTheFilterHidesIsNotOffered)
{
    ASSERT_TRUE(root().mnuFavoriten.press());
    ASSERT_TRUE(root().mnuFavoritenShow.press());
    ASSERT_EQ(1, catalogue().count());
    kept().clear();
    keep(listPath(u"Zwei"_s), "/m/alt.mp3\r\n");
    inWindow([this] { bringBack(); });
    EXPECT_EQ("/m/alt.mp3\r\n", bytes(listPath(u"Zwei"_s)));
    EXPECT_EQ(1, catalogue().count());
}

TEST_F(BringBack, AMissingListIsThereAgain)
{
    const QString zwei = listPath(u"Zwei"_s);
    const QByteArray held = bytes(zwei);
    desktop.memory()->remove(zwei);
    markMissing(root(), 2, true);
    ASSERT_EQ(Color::DarkRed, catalogue().color(2, 1));
    inWindow([this] { bringBack(); });
    EXPECT_EQ(held, bytes(zwei));
    EXPECT_EQ(Color::ButtonText, catalogue().color(2, 1));
}

TEST_F(BringBack, AFolderThatIsAwayIsToldAndNothingDone)
{
    keep(u"/media/stick/Musik/Rock.m3u"_s, "x");
    inWindow([this] {
        forgetCalls();
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s,
                                u"Der Ordner „/media/stick/Musik/“ ist zurzeit nicht da.\n\n"
                                u"Schließen Sie den Datenträger an, oder verwenden Sie „Speichern unter“."_s);
        form().bZurückholen.Click();
        EXPECT_EQ("", actions());
    });
}

TEST_F(BringBack, ADatabaseIsPutBackAndLoaded)
{
    QString before = QString::fromUtf8(bytes(database()));
    before.replace(u"1b=Eins"_s, u"1b=Früher"_s);
    keep(database(), before.toUtf8());
    inWindow([this] {
        bringBack();
        EXPECT_EQ("„Datenbank“ ist zurückgeholt: Stand bis 20.11.2026 11:00:00.", told());
    });
    EXPECT_EQ("Früher", catalogue().subItem(1, 1).toStdString());
    EXPECT_EQ(2, catalogue().count());
    root().mnuSpeichern.Click();
    EXPECT_TRUE(databaseText().find("1b=Früher") != std::string::npos) << databaseText();
}

TEST_F(BringBack, TheCoverInSightIsShownAnew)
{
    const QString cover = data() + u"Resource/Eins.jpg"_s;
    keep(cover, "Bild");
    inWindow([this] { bringBack(); });
    EXPECT_EQ("Bild", bytes(cover));
    EXPECT_TRUE(root().pCovers.Picture.value().endsWith(u"Eins.jpg"_s));
    EXPECT_TRUE(root().pCoverBack.Visible.value());
}

TEST_F(BringBack, AWriteThatFailsChangesNothingAndSaysWhy)
{
    const QString eins = listPath(u"Eins"_s);
    const QByteArray held = bytes(eins);
    keep(eins, "/m/alt.mp3\r\n");
    desktop.memory()->setReadOnly(eins);
    inWindow([this] {
        desktop.messages.answer(Answer::Yes);
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s,
                                u"Nichts zurückgeholt: Die Datei ist schreibgeschützt, oder es fehlen die Rechte."_s);
        form().bZurückholen.Click();
        EXPECT_EQ("", told());
        desktop.memory()->setReadOnly(listPath(u"Eins"_s), false);
        desktop.memory()->breakStore();
        desktop.messages.answer(Answer::Yes);
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s,
                                u"Nichts zurückgeholt: Die bisherige Fassung kann nicht aufbewahrt werden."_s);
        form().bZurückholen.Click();
    });
    EXPECT_EQ(held, bytes(eins));
    EXPECT_EQ("/m/Eins 1.mp3\n/m/Eins 2.mp3", names());
}

TEST_F(BringBack, WhatIsNoTextIsNotWrittenOver)
{
    const QString zwei = listPath(u"Zwei"_s);
    keep(zwei, "/m/alt.mp3\r\n");
    desktop.memory()->put(zwei, QByteArray("MP3\0\0\xff", 6));
    inWindow([this] {
        desktop.messages.answer(Answer::Yes);
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s,
                                u"Nichts zurückgeholt: An der Stelle der Playliste steht jetzt etwas anderes."_s);
        form().bZurückholen.Click();
    });
    EXPECT_EQ(QByteArray("MP3\0\0\xff", 6), bytes(zwei));
}

// Two that meet

TEST_F(BringBack, AnotherListThatComesIntoSightWhileItAsksStaysInSight)
{
    keep(listPath(u"Eins"_s), "/m/alt.mp3\r\n");
    inWindow([this] {
        desktop.messages.script({Answer::Yes, {}, {}, {}, [this] { click(2); }});
        form().bZurückholen.Click();
    });
    EXPECT_EQ("/m/alt.mp3\r\n", bytes(listPath(u"Eins"_s)));
    EXPECT_EQ("/m/Zwei 1.mp3\n/m/Zwei 2.mp3", names());
    ASSERT_TRUE(root().mnuFileSave.press());
    EXPECT_EQ("/m/Zwei 1.mp3\r\n/m/Zwei 2.mp3", bytes(listPath(u"Zwei"_s)).left(28));
}

TEST_F(BringBack, AListThatComesIntoSightWhileItAsksIsReadAnew)
{
    keep(listPath(u"Zwei"_s), "/m/Eins 1.mp3\r\n");
    inWindow([this] {
        desktop.messages.script({Answer::Yes, {}, {}, {}, [this] { click(2); }});
        form().bZurückholen.Click();
    });
    EXPECT_EQ("/m/Eins 1.mp3", names());
}

TEST_F(BringBack, NoCommandOnTracksOrCatalogueRunsWhileItAsks)
{
    keep(listPath(u"Eins"_s), "/m/alt.mp3\r\n");
    const QByteArray zwei = bytes(listPath(u"Zwei"_s));
    inWindow([this] {
        desktop.messages.script({Answer::No, {}, {}, {}, [this] {
                                     forgetCalls();
                                     root().mnuFileSave.Click();
                                     root().mnuLöschen.Click();
                                     EXPECT_EQ("", actions());
                                 }});
        form().bZurückholen.Click();
    });
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ(zwei, bytes(listPath(u"Zwei"_s)));
}

TEST_F(BringBack, WhatWasKeptMeanwhileAndAgedAwayIsToldAndNothingDone)
{
    const QString eins = listPath(u"Eins"_s);
    const QByteArray held = bytes(eins);
    keep(eins, "/m/alt.mp3\r\n");
    inWindow([this] {
        desktop.messages.script({Answer::Yes, {}, {}, {}, [this] { kept().clear(); }});
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s, u"Diese Fassung ist nicht mehr da."_s);
        form().bZurückholen.Click();
        EXPECT_EQ("", files());
    });
    EXPECT_EQ(held, bytes(eins));
}

TEST_F(BringBack, TheEndOfTheProgramWhileItAsksLeavesAllAsItIs)
{
    const QString eins = listPath(u"Eins"_s);
    const QByteArray held = bytes(eins);
    keep(eins, "/m/alt.mp3\r\n");
    inWindow([this] {
        desktop.messages.script({Answer::Yes, {}, {}, {}, [this] { desktop.events().endProcess(); }});
        form().bZurückholen.Click();
    });
    EXPECT_EQ(held, bytes(eins));
    EXPECT_EQ(1, kept().size());
}

// Saving elsewhere

TEST_F(BringBack, AVersionIsSavedElsewhere)
{
    keep(listPath(u"Eins"_s), "/m/alt.mp3\r\n");
    inWindow([this] {
        forgetCalls();
        desktop.choosers.cancel(ChooserKind::Save);
        form().bSpeichernUnter.Click();
        const std::string asked = calls({u"choosers."_s});
        EXPECT_TRUE(asked.find("Eins 2026-11-20 11-00-00.m3u") != std::string::npos) << asked;
        EXPECT_EQ("", actions());
        desktop.choosers.save(u"/m/Kopie.m3u"_s);
        form().bSpeichernUnter.Click();
        EXPECT_EQ("/m/alt.mp3\r\n", bytes(u"/m/Kopie.m3u"_s));
        EXPECT_EQ("Gespeichert als „Kopie.m3u“.", told());
    });
    EXPECT_EQ("/m/Eins 1.mp3\n/m/Eins 2.mp3", names());
}

TEST_F(BringBack, ACopyIsWrittenOverNoDatabaseAndNoOtherKindOfFile)
{
    const QByteArray held = bytes(database());
    keep(listPath(u"Eins"_s), "/m/alt.mp3\r\n", 1);
    keep(database(), "[Index]\r\n", 2);
    put(u"/m/Lied.mp3"_s, QByteArray("MP3\0\xff", 5));
    inWindow([this] {
        const QString refusal =
            u"Dort steht eine Datei, die nicht überschrieben wird. Wählen Sie bitte einen anderen Namen."_s;
        for (const QString& target : {database(), u"/m/Lied.mp3"_s}) {
            desktop.choosers.save(target);
            desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s, refusal);
            form().bSpeichernUnter.Click();
        }
        selectFile(2);
        desktop.choosers.save(database());
        desktop.messages.answer(Answer::Ok, u" Frühere Fassungen"_s, refusal);
        form().bSpeichernUnter.Click();
    });
    EXPECT_EQ(held, bytes(database()));
    EXPECT_EQ(QByteArray("MP3\0\xff", 5), bytes(u"/m/Lied.mp3"_s));
}

TEST_F(BringBack, ACopyOverTheListInSightIsReadAnew)
{
    keep(listPath(u"Zwei"_s), "/m/Zwei 2.mp3\r\n");
    inWindow([this] {
        desktop.choosers.save(listPath(u"Eins"_s));
        form().bSpeichernUnter.Click();
    });
    EXPECT_EQ("/m/Zwei 2.mp3", names());
    EXPECT_EQ("{data}/Playlisten/Zwei.m3u () /m/Zwei 2.mp3;\n"
              "{data}/Playlisten/Eins.m3u (Frühere Fassungen) /m/Eins 1.mp3;/m/Eins 2.mp3;;\n"
              "{data}/Playlisten/Eins.m3u (Frühere Fassungen) /m/Zwei 2.mp3;",
              keptLines())
        << "the read brings it into its form";
}

} // namespace orvantine::fake
