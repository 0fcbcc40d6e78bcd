#include "transfer/TransferWorld.h"

#include "transfer/FolderDialogs.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Handling : public TransferWorld
{
protected:
    void run(int index) { EXPECT_TRUE(root().mnuHandling[index].press()); }
    void choose(const QString& folder = Stick)
    {
        answer(Answer::Ok);
        desktop.choosers.chooseFolder(folder);
    }
    [[nodiscard]] std::string shown()
    {
        QStringList all;
        const auto messages = desktop.messages.take();
        for (const ShownMessage& message : messages)
            all += u"%1 %2%3: %4"_s.arg(nameOf(message.icon), nameOf(message.buttons), message.title, message.text);
        return lines(all);
    }
};

const std::string LittleRoom =
    "exclamation retry-cancel Sounddateien übertragen: Der Zieldatenträger hat zu wenig freien "
    "Speicherplatz zur Verfügung.   \nDie komplette Übertragung der Sounddateien ist nicht "
    "möglich.";

} // namespace

TEST_F(Handling, BearsItsCaptions)
{
    QStringList captions;
    for (const auto& item : root().mnuHandling)
        captions += item->Caption.value();
    EXPECT_EQ(lines(captions), "&Vollständige Playliste kopieren \n&Audio CD-Rom brennen \n&Bluetooth-Übertragung \n"
                               "&Sounddatei kopieren \n-\n&Unterordner (Interpreten) \n&Ordner auswählen ... ");
}

TEST_F(Handling, TwoCommandsOnlyTellThatTheyCannotBeUsedYet)
{
    answer(Answer::Ok);
    answer(Answer::Ok);
    run(2);
    run(3);
    EXPECT_EQ(shown(),
              "exclamation ok AudioCD erstellen: Diese erweiterte Funktion können Sie derzeit leider noch nicht "
              "verwenden. \nexclamation ok Bluetooth übertragen: Diese erweiterte Funktion können Sie derzeit "
              "leider noch nicht verwenden. ");
}

TEST_F(Handling, CopiesTheSelectedTrackAndTellsWhere)
{
    tracks().select(2);
    choose();
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(tree(), "Rock 2.mp3");
    EXPECT_EQ(shown(),
              "information ok-cancel Sounddateien übertragen: Bitte stecken Sie den austauschbaren Datenträger "
              "in den USB-Anschluss. \nWählen Sie das Laufwerk, welches dem USB-Stick zugeordnet wurde.\n"
              "information ok Sounddatei übertragen: Die markierte Sounddatei wurde erfolgreich in den Ordner "
              "kopiert. \n\nOrdner: ''/media/stick/''\nDateiname: ''Rock 2.mp3''");
    EXPECT_EQ(root().Tag, u"0"_s);
}

TEST_F(Handling, ATrackKeepsTheTargetButNotTheDay)
{
    choose();
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(option(u"CopyStick"_s), "/media/stick/");
    EXPECT_EQ(option(u"CopyDate"_s), "");
}

TEST_F(Handling, CancelOnTheTargetOfTheDayForgetsItBeforeATrack)
{
    rememberStick();
    answer(Answer::Cancel);
    desktop.choosers.cancel(ChooserKind::Folder);
    run(4);
    EXPECT_EQ(option(u"CopyStick"_s), "");
    EXPECT_EQ(option(u"CopyDate"_s), "20.11.2026");
}

TEST_F(Handling, ARememberedTargetIsTakenAsItStands)
{
    rememberStick();
    answer(Answer::Retry);
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(tree(), "Rock 1.mp3");
}

TEST_F(Handling, OfATrackThatIsNotThereNothingIsSaid)
{
    desktop.disk().remove(u"/m/Rock 1.mp3"_s);
    choose();
    run(4);
    EXPECT_EQ(tree(), "");
    EXPECT_EQ(root().Tag, u"0"_s);
}

TEST_F(Handling, ATrackThatCannotBeCopiedIsNotToldOfAsCopied)
{
    desktop.memory()->setUnreadable(u"/m/Rock 1.mp3"_s);
    choose();
    run(4);
    EXPECT_EQ(tree(), "");
    EXPECT_EQ(quiet(), "Nicht kopiert: „Rock 1.mp3“. Die Datei ist schreibgeschützt, oder es fehlen die Rechte.");
}

TEST_F(Handling, AnOlderFileThatStaysBecauseTheCopyFailedIsNotToldOfAsCopied)
{
    put(Stick + u"/Rock 1.mp3"_s, "alt");
    desktop.memory()->setReadOnly(Stick + u"/Rock 1.mp3"_s);
    choose();
    run(4);
    EXPECT_EQ(bytes(Stick + u"/Rock 1.mp3"_s), "alt");
    EXPECT_EQ(root().Tag, u"0"_s);
}

TEST_F(Handling, RoomForATrackIsMeasuredInKilobytes)
{
    setRoom(3000 * 1024);
    choose();
    answer(Answer::Cancel);
    run(4);
    EXPECT_EQ(tree(), "");
    EXPECT_TRUE(QString::fromStdString(shown()).endsWith(QString::fromStdString(LittleRoom)));

    setRoom(3000 * 1024 + 1);
    choose();
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(tree(), "Rock 1.mp3");
}

TEST_F(Handling, OnAStickTooLittleRoomIsAlwaysToldAndRetryGoesOn)
{
    setRoom(quint64{1} << 40, u"FAT32"_s);
    choose();
    answer(Answer::Retry);
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(tree(), "Rock 1.mp3");
}

TEST_F(Handling, TheDialogComesUpOnlyForATrackThatTakesLong)
{
    choose();
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(calls({u"forms.show Kopieren"_s}), "");

    put(u"/m/Rock 1.mp3"_s, QByteArray(1'000'000, 'x'));
    desktop.memory()->PieceCarried = [this] { desktop.events().setNow(desktop.events().now().addMSecs(100)); };
    choose();
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(calls({u"forms.show Kopieren"_s}), "forms.show Kopieren");
    EXPECT_FALSE(root().kopieren->Visible.value());
}

TEST_F(Handling, TheMarkOfSubfoldersIsKept)
{
    const bool before = root().mnuHandling[6].Checked;
    run(6);
    EXPECT_NE(root().mnuHandling[6].Checked.value(), before);
    EXPECT_EQ(setting(u"CreateFolder"_s), before ? u"dword 0"_s : u"dword 1"_s);
    run(6);
    EXPECT_EQ(setting(u"CreateFolder"_s), before ? u"dword 1"_s : u"dword 0"_s);
}

TEST_F(Handling, AChosenFolderIsTheTargetOfTheDay)
{
    desktop.forms().whileModal(u"FilesCopy"_s, [this](Form&) {
        FilesCopy& form = *root().filesCopy;
        form.LTreeview.SelectedFolder = Stick;
        form.LTreeview.Change();
        form.BReady.Click();
    });
    answer(Answer::Ok);
    run(7);
    EXPECT_EQ(shown(),
              "information ok Ordnerauswahl: Das Verzeichnis wurde als standardmäßiger Zielordner ausgewählt "
              "und gespeichert. \nWählen Sie nun ''Vollständige Playliste kopieren'' oder ''Sounddatei kopieren'' "
              "um \nden Kopiervorgang der markierten Datei oder Wiedergabeliste zu starten.");
    answer(Answer::Retry);
    answer(Answer::Ok);
    run(4);
    EXPECT_EQ(tree(), "Rock 1.mp3");
}

TEST_F(Handling, ACancelledFolderChangesNothing)
{
    root().Tag = u"1"_s;
    desktop.forms().whileModal(u"FilesCopy"_s, [this](Form&) { root().filesCopy->bAbbrechen.Click(); });
    run(7);
    EXPECT_EQ(root().Tag, u"0"_s);
    EXPECT_EQ(option(u"CopyStick"_s), "");
}

TEST_F(Handling, WhileATransferWaitsNoOtherOneBegins)
{
    put(u"/m/Rock 1.mp3"_s, QByteArray(1'000'000, 'x'));
    choose();
    answer(Answer::Ok);
    bool tried = false;
    desktop.memory()->PieceCarried = [this, &tried] {
        desktop.events().atYield(1, [this, &tried] {
            tried = true;
            root().mnuHandling[4].press();
            root().mnuHandling[1].press();
            root().mnuPackGo.press();
        });
    };
    run(4);
    EXPECT_TRUE(tried);
    EXPECT_EQ(tree(), "Rock 1.mp3");
}

TEST_F(Handling, AFolderThatCouldNotBeKeptIsNotToldOfAsStored)
{
    desktop.forms().whileModal(u"FilesCopy"_s, [this](Form&) {
        FilesCopy& form = *root().filesCopy;
        form.LTreeview.SelectedFolder = Stick;
        form.LTreeview.Change();
        for (const QString& write : {u"files.appendBytes"_s, u"files.replaceBytes"_s, u"files.writeBytes"_s})
            desktop.log.failNext(write);
        form.BReady.Click();
    });
    run(7);
    EXPECT_EQ(shown(), "");
}

} // namespace orvantine::fake
