#include "transfer/Datenbank.h"
#include "transfer/BackupWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class DatabaseCommands : public BackupWorld
{
protected:
    void inDialog(std::function<void(Datenbank&)> script)
    {
        desktop.forms().whileModal(u"Datenbank"_s, [this, script](Form& form) {
            script(static_cast<Datenbank&>(form));
            open = form.Visible.value();
            if (open)
                desktop.forms().unload(form);
        });
        root().mnuDatabase.Click();
    }
    /// The sibling stands in the program's folder and does its work as soon as it is started.
    void putSibling(bool works = true)
    {
        put(desktop.folders.program + u"/Laubfeger.dll"_s, "x");
        if (works)
            desktop.launcher.Started = [this](const LaunchRequest&) {
                desktop.disk().remove(listPath(u"Eins"_s));
                desktop.disk().remove(listPath(u"Zwei"_s));
                desktop.disk().writeBytes(database(), {});
            };
    }
    void resetWithoutBackup()
    {
        desktop.messages.answer(Answer::Ok);
        desktop.messages.answer(Answer::No);
        root().mnuDeleteDatabase.Click();
    }
    [[nodiscard]] std::size_t started() const { return desktop.launcher.started.size(); }

    bool open = false;
};

} // namespace

TEST_F(DatabaseCommands, TheDialogShowsTheToldTextsAndThePresentFolder)
{
    inDialog([this](Datenbank& form) {
        EXPECT_EQ(" Datenbank-Ordner", form.Caption.value().toStdString());
        EXPECT_EQ("Im Datenbank-Ordner werden die Einträge des Orvanten Manager und die Wiedergabelisten und CD-Covers "
                  "gespeichert.",
                  form.LHinweis.Caption.value().toStdString());
        EXPECT_EQ("&Datenbank-Ordner:", form.LDatabase.Caption.value().toStdString());
        EXPECT_EQ("&Abbrechen", form.bAbbrechen.Caption.value().toStdString());
        EXPECT_EQ("&Hilfe", form.bHilfe.Caption.value().toStdString());
        EXPECT_EQ(data().toStdString(), form.tDatabase.Text.value().toStdString());
        form.bAbbrechen.Click();
    });
    EXPECT_FALSE(open);
}

TEST_F(DatabaseCommands, YesWritesTheFolderWithASeparatorOnlyIfItIsMissing)
{
    for (const QString& text : {u"/anderswo"_s, u"/anderswo/"_s}) {
        inDialog([&](Datenbank& form) {
            form.tDatabase.Text = text;
            desktop.messages.answer(
                Answer::Yes, u" Datenbank-Ordner "_s,
                u"Änderungen an der Datenbank erfordern einen Neustart der Anwendung, damit die Einstellungen neu "
                u"geladen werden können. Soweit keine Datenbank im Ordner vorhanden ist, wird diese nach dem Neustart "
                u"erstellt und zugewiesen.\n\nMöchten Sie die Anwendung neustarten ?"_s);
            form.BReady.Click();
        });
        EXPECT_FALSE(open);
        EXPECT_EQ("sz \"/anderswo/\"", setting(u"Database"_s).toStdString());
        EXPECT_FALSE(desktop.events().ended());
    }
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::YesNoCancel, desktop.messages.shown()[0].buttons);
    EXPECT_EQ(data().toStdString(), root().tDatenbank.Text.value().toStdString());
}

TEST_F(DatabaseCommands, NoWritesNothingAndClosesAndCancelLeavesTheDialogOpen)
{
    const QString before = setting(u"Database"_s);
    inDialog([this](Datenbank& form) {
        form.tDatabase.Text = u"/anderswo"_s;
        desktop.messages.answer(Answer::No);
        form.BReady.Click();
    });
    EXPECT_FALSE(open);
    inDialog([this](Datenbank& form) {
        form.tDatabase.Text = u"/anderswo"_s;
        desktop.messages.answer(Answer::Cancel);
        form.BReady.Click();
    });
    EXPECT_TRUE(open);
    EXPECT_EQ(before, setting(u"Database"_s));
}

TEST_F(DatabaseCommands, AFolderThatIsBrowsedForStandsInTheField)
{
    inDialog([this](Datenbank& form) {
        desktop.choosers.chooseFolder(u"/gesucht"_s);
        form.bDurchsuchen.Click();
        EXPECT_EQ("/gesucht", form.tDatabase.Text.value().toStdString());
        desktop.choosers.cancel(ChooserKind::Folder);
        form.bDurchsuchen.Click();
        EXPECT_EQ("/gesucht", form.tDatabase.Text.value().toStdString());
    });
}

TEST_F(DatabaseCommands, AFolderThatIsBrowsedForCanBeAccepted)
{
    inDialog([this](Datenbank& form) {
        form.tDatabase.Text = QString();
        form.tDatabase.Change();
        desktop.choosers.chooseFolder(u"/gesucht"_s);
        form.bDurchsuchen.Click();
        EXPECT_TRUE(form.BReady.Enabled.value());
    });
}

TEST_F(DatabaseCommands, AnEmptyFieldCannotBeAccepted)
{
    inDialog([](Datenbank& form) {
        form.tDatabase.Text = QString();
        form.tDatabase.Change();
        EXPECT_FALSE(form.BReady.Enabled.value());
    });
}

// The reset

TEST_F(DatabaseCommands, WithoutTheSiblingAMessageSaysSo)
{
    desktop.messages.answer(
        Answer::Ok, u"Orvanten Manager "_s,
        u"Die Systemkomponente ''Laubfeger.dll'' konnte nicht im Installationsordner gefunden werden."_s);
    root().mnuDeleteDatabase.Click();
    ASSERT_EQ(1U, desktop.messages.shown().size());
    EXPECT_EQ(MessageIcon::Critical, desktop.messages.shown()[0].icon);
}

TEST_F(DatabaseCommands, CancelOfTheFirstQuestionEnds)
{
    putSibling();
    desktop.messages.answer(
        Answer::Cancel, u" Datenbank zurücksetzen"_s,
        u"Diese Funktion löscht alle Einträge in der Datenbank und verschiebt die vorhandenen lokalen Wiedergabelisten "
        u"in den Papierkorb. \nEine Sicherungskopie sollte vorher erstellt werden.\nMöchten Sie die Datenbank "
        u"zurücksetzen ?"_s);
    root().mnuDeleteDatabase.Click();
    EXPECT_EQ(0U, started());
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::OkCancel, desktop.messages.shown()[0].buttons);
}

TEST_F(DatabaseCommands, TheSecondQuestionNamesTheLastBackupOrUnbekannt)
{
    putSibling();
    for (const QString& date : {u"Unbekannt"_s, u"01.02.2026"_s}) {
        if (date != u"Unbekannt"_s)
            setting(u"Backup"_s, stringSetting(date));
        desktop.messages.answer(Answer::Ok);
        desktop.messages.answer(Answer::Yes, u" Datenbank zurücksetzen"_s,
                                u"Möchten Sie eine Sicherungskopie der Datenbank und Playlisten erstellen ?   \n"
                                u"Letzte Sicherung wurde durchgeführt am: "_s +
                                    date);
        desktop.choosers.cancel(ChooserKind::Save);
        root().mnuDeleteDatabase.Click();
    }
    EXPECT_EQ(MessageIcon::Question, desktop.messages.shown()[1].icon);
    EXPECT_EQ(MessageButtons::YesNo, desktop.messages.shown()[1].buttons);
    // A backup that was asked for and cancelled ends the reset.
    EXPECT_EQ(0U, started());
}

TEST_F(DatabaseCommands, NoCopiesTheDatabaseAsideStartsTheSiblingAndLoadsTheEmptyCatalogue)
{
    putSibling();
    const QByteArray before = bytes(database());
    desktop.messages.answer(Answer::Ok);
    desktop.messages.answer(Answer::No);
    root().mnuDeleteDatabase.Click();
    ASSERT_EQ(1U, started());
    EXPECT_EQ((desktop.folders.program + u"/Laubfeger.dll"_s).toStdString(),
              desktop.launcher.started[0].target.toStdString());
    EXPECT_EQ(QStringList(), desktop.launcher.started[0].arguments);
    EXPECT_EQ(before.toStdString(), bytes(backup()).toStdString());
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("(0)", root().nAnzeige.Caption.value().toStdString());
    EXPECT_EQ("", bytes(database()));
    expectUnfrozen();
}

TEST_F(DatabaseCommands, YesRunsTheBackupFirst)
{
    putSibling();
    desktop.messages.answer(Answer::Ok);
    desktop.messages.answer(Answer::Yes);
    desktop.choosers.save(archive());
    root().mnuDeleteDatabase.Click();
    EXPECT_EQ("Eins.m3u\nOrvantine.dat\nZwei.jpg\nZwei.m3u", names(archive()));
    EXPECT_EQ(1U, started());
    EXPECT_EQ(0, catalogue().count());
}

TEST_F(DatabaseCommands, ABackupThatFailsEndsTheReset)
{
    putSibling();
    desktop.messages.answer(Answer::Ok);
    desktop.messages.answer(Answer::Yes);
    desktop.choosers.save(archive());
    desktop.log.failNext(u"zip.add"_s);
    root().mnuDeleteDatabase.Click();
    EXPECT_EQ(0U, started());
    EXPECT_EQ(2, catalogue().count());
}

TEST_F(DatabaseCommands, ACopyThatCannotBeMadeEndsTheReset)
{
    putSibling();
    desktop.messages.answer(Answer::Ok);
    desktop.messages.answer(Answer::No);
    desktop.log.failNext(u"files.copy"_s);
    root().mnuDeleteDatabase.Click();
    EXPECT_EQ(0U, started());
}

TEST_F(DatabaseCommands, ASiblingThatFailsLeavesTheCatalogueAndIsSaidSo)
{
    putSibling(false);
    desktop.launcher.ExitCode = [] { return std::optional(1); };
    resetWithoutBackup();
    EXPECT_EQ(1U, started());
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("Die Datenbank wurde nicht zurückgesetzt.", root().quietLine.Caption.value().toStdString());
    expectUnfrozen();
}

TEST_F(DatabaseCommands, ASiblingThatCannotBeStartedIsSaidSo)
{
    putSibling();
    desktop.log.failNext(u"launcher.start"_s);
    resetWithoutBackup();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("Die Datenbank wurde nicht zurückgesetzt.", root().quietLine.Caption.value().toStdString());
}

TEST_F(DatabaseCommands, TheSiblingIsWaitedForHoweverLongItTakes)
{
    putSibling(false);
    bool ends = false;
    desktop.launcher.ExitCode = [&ends] { return ends ? std::optional(0) : std::nullopt; };
    // What somebody else writes meanwhile is no reset.
    desktop.events().after(std::chrono::seconds{5}, [this] { putDatabase(indexRow(1, {.name = u"Eins"_s})); });
    desktop.events().after(std::chrono::seconds{299}, [this] {
        EXPECT_EQ(2, catalogue().count());
        EXPECT_FALSE(catalogue().Enabled.value());
        EXPECT_FALSE(tracks().Enabled.value());
    });
    desktop.events().after(std::chrono::seconds{300}, [&] {
        ends = true;
        desktop.disk().writeBytes(database(), {});
    });
    resetWithoutBackup();
    EXPECT_EQ(0, catalogue().count());
    EXPECT_EQ(0, tracks().count());
    EXPECT_TRUE(root().quietLine.Caption.value().isEmpty());
    expectUnfrozen();
}

TEST_F(DatabaseCommands, TheEndOfTheProgramEndsTheWaitForTheSibling)
{
    putSibling(false);
    desktop.launcher.ExitCode = [] { return std::optional<int>(); };
    desktop.events().after(std::chrono::seconds{30}, [this] { desktop.events().endProcess(); });
    resetWithoutBackup();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("", root().quietLine.Caption.value().toStdString());
}

TEST_F(DatabaseCommands, AnEntryThatIsLeftMeansThatNothingWasReset)
{
    putSibling(false);
    desktop.launcher.Started = [this](const LaunchRequest&) {
        putDatabase(indexRow(160, {.name = u"Letzte"_s, .path = listPath(u"Eins"_s)}));
    };
    resetWithoutBackup();
    EXPECT_EQ(2, catalogue().count());
    EXPECT_EQ("Die Datenbank wurde nicht zurückgesetzt.", root().quietLine.Caption.value().toStdString());
}

TEST_F(DatabaseCommands, AFolderThatTheNextStartWouldNotTakeIsNeverReset)
{
    putSibling();
    setting(u"Database"_s, stringSetting(u"/anderswo/"_s));
    // Nobody is asked for a backup that nothing would follow.
    desktop.messages.answer(Answer::Ok);
    root().mnuDeleteDatabase.Click();
    EXPECT_EQ(0U, started());
    EXPECT_EQ("Der Datenbank-Ordner wurde geändert: Bitte erst die Anwendung neu starten.",
              root().quietLine.Caption.value().toStdString());
}

TEST_F(DatabaseCommands, AFolderThatIsChangedDuringTheBackupIsNotResetEither)
{
    putSibling();
    desktop.messages.answer(Answer::Ok);
    desktop.messages.script(
        {.answer = Answer::No, .meanwhile = [this] { setting(u"Database"_s, stringSetting(u"/anderswo/"_s)); }});
    root().mnuDeleteDatabase.Click();
    EXPECT_EQ(0U, started());
    EXPECT_EQ("Der Datenbank-Ordner wurde geändert: Bitte erst die Anwendung neu starten.",
              root().quietLine.Caption.value().toStdString());
}

} // namespace orvantine::fake
