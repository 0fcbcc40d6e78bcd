#include "search/FolderCheck.h"

#include "catalogue/CatalogueWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// Three lists, "Eins", "Zwei" and "Drei", with two tracks each in "/m"; the first one is open.
class Remapping : public CatalogueWorld
{
protected:
    void startAll()
    {
        putCatalogue({u"Eins"_s, u"Zwei"_s, u"Drei"_s});
        for (const QString& name : {u"Eins"_s, u"Zwei"_s, u"Drei"_s})
            for (const QString& track : {u" 1"_s, u" 2"_s})
                put(u"/neu/"_s + name + track + u".mp3"_s, "mp3");
        start();
        click(1);
    }

    FolderCheck& form() { return *root().folderCheck; }

    /// The user fills the dialog, presses OK and answers No and OK; `meanwhile` runs in the n-th yield behind that.
    void remap(const QString& old, const QString& fresh, int yield = 0, const std::function<void()>& meanwhile = {})
    {
        desktop.forms().whileModal(u"FolderCheck"_s, [&](Form&) {
            form().tFolderOld.Text = old;
            form().tFolderNew.Text = fresh;
            desktop.messages.answer(Answer::No);
            if (meanwhile)
                desktop.events().atYield(yield, meanwhile);
            else
                desktop.messages.answer(Answer::Ok);
            form().BReady.Click();
            if (form().Visible.value())
                desktop.forms().unload(form());
        });
        root().mnuFolderCheck.Click();
    }

    /// Actions on the disk and reads, each once.
    static QStringList stepsOf(const QStringList& calls)
    {
        QStringList steps;
        const QStringList starts = LoggingFiles::actions() + QStringList{u"files.read"_s, u"files.list "_s};
        for (const QString& call : calls)
            for (const QString& start : starts)
                if (call.startsWith(start) && !steps.contains(call))
                    steps += call;
        return steps;
    }

    [[nodiscard]] std::string list(const QString& name) { return bytes(listPath(name)).toStdString(); }
    static std::string entries(const QString& folder, const QString& name)
    {
        return u"%1/%2 1.mp3\r\n%1/%2 2.mp3\r\n\r\n"_s.arg(folder, name).toStdString();
    }
};

} // namespace

TEST_F(Remapping, ClosingTheDialogEndsAPairThatNeverEndsWithoutWritingTheFile)
{
    for (const QString& fresh : {u"/m"_s, u"/m/m"_s, u"/M"_s}) {
        SCOPED_TRACE(fresh.toStdString());
        desktop.newProcess();
        startAll();
        remap(u"/m"_s, fresh, 20, [this] { form().bAbbrechen.Click(); });
        EXPECT_EQ(entries(u"/m"_s, u"Eins"_s), list(u"Eins"_s));
        EXPECT_EQ(entries(u"/m"_s, u"Zwei"_s), list(u"Zwei"_s));
        EXPECT_FALSE(form().Visible.value());
        EXPECT_TRUE(root().mnuBearbeiten.Enabled.value());
        EXPECT_TRUE(root().commands.idle());
        desktop.messages.take();
    }
}

TEST_F(Remapping, TheEndOfTheProgramEndsAPairThatNeverEndsWithoutWritingTheFile)
{
    startAll();
    remap(u"/m"_s, u"/m/m"_s, 20, [this] { desktop.events().endProcess(); });
    EXPECT_EQ(entries(u"/m"_s, u"Eins"_s), list(u"Eins"_s));
    EXPECT_TRUE(root().commands.idle());
}

TEST_F(Remapping, AListThatWasWrittenBeforeTheDialogWasClosedIsShownAsItIs)
{
    startAll();
    // The wait, then one yield for each list
    remap(u"/m"_s, u"/neu"_s, 3, [this] { form().bAbbrechen.Click(); });
    EXPECT_EQ(entries(u"/neu"_s, u"Eins"_s), list(u"Eins"_s));
    EXPECT_EQ(entries(u"/m"_s, u"Zwei"_s), list(u"Zwei"_s));
    EXPECT_EQ("/neu/Eins 1.mp3", tracks().subItem(1, 3).toStdString());
    root().mnuFileSave.Click();
    EXPECT_EQ("/neu/Eins 1.mp3\r\n/neu/Eins 2.mp3\r\n", list(u"Eins"_s));
}

TEST_F(Remapping, WhatAnotherProgramWritesToTheDatabaseMeanwhileIsNotLost)
{
    startAll();
    desktop.forms().whileModal(u"FolderCheck"_s, [&](Form&) {
        form().tFolderOld.Text = u"/m"_s;
        form().tFolderNew.Text = u"/neu"_s;
        desktop.messages.answer(Answer::No);
        desktop.messages.answer(Answer::Ok);
        // The yield of the database comes behind those of the three lists
        desktop.events().atYield(5, [this] { put(database(), bytes(database()) + "[Andere]\r\nx=/m/y\r\n"); });
        form().BReady.Click();
    });
    root().mnuFolderCheck.Click();
    EXPECT_TRUE(bytes(database()).contains("[Andere]\r\nx=/neu/y\r\n")) << databaseText();
}

TEST_F(Remapping, TheReloadAsksNothingAndLeavesTheSettingAsItWas)
{
    startAll();
    root().Visible = true;
    remap(u"/m"_s, u"/neu"_s);
    EXPECT_EQ("(absent)", setting(u"CheckEntrys"_s).toStdString());
    EXPECT_EQ(3, catalogue().count());
}

TEST_F(Remapping, TheFilterOfFavouritesIsOffBehindIt)
{
    startAll();
    root().mnuFavoritenShow.Click();
    remap(u"/m"_s, u"/neu"_s);
    EXPECT_EQ(3, catalogue().count());
    EXPECT_FALSE(root().mnuFavoritenShow.Checked.value());
}

TEST_F(Remapping, AListIsNoPlaceForTheCopyOfAnother)
{
    putCatalogue({u"Eins"_s});
    put(u"/x/a.mp3"_s, "mp3");
    const QString other = data() + u"Playlisten/Eins.bak"_s;
    put(other, "/x/a.mp3\r\n\r\n");
    put(database(), bytes(database()) + indexRow(2, {.name = u"Zwei"_s, .path = other}));
    start();
    remap(u"/m"_s, u"/neu"_s);
    EXPECT_EQ(entries(u"/neu"_s, u"Eins"_s), list(u"Eins"_s));
    EXPECT_EQ("/x/a.mp3\r\n\r\n", bytes(other).toStdString());
}

TEST_F(Remapping, EnterGoesOnToTheNextField)
{
    startAll();
    int tabs = 0;
    for (TextBox* field : {&form().tFolderOld, &form().tFolderNew}) {
        field->SendTab = [&tabs] { ++tabs; };
        EXPECT_EQ(0, field->KeyPress(13));
        EXPECT_EQ('x', field->KeyPress('x'));
    }
    EXPECT_EQ(2, tabs);
}

TEST_F(Remapping, ThePreviewTellsWhatWouldChangeAndWritesNothing)
{
    startAll();
    desktop.disk().remove(u"/neu/Drei 2.mp3"_s);
    forgetCalls();
    desktop.forms().whileModal(u"FolderCheck"_s, [this](Form&) {
        const auto typed = [this](const QString& old, const QString& fresh) {
            form().tFolderOld.Text = old;
            form().tFolderNew.Text = fresh;
            form().tFolderNew.Change();
            EXPECT_EQ("", form().LVorschau.Caption.value().toStdString());
            desktop.events().run(std::chrono::milliseconds{600});
            return form().LVorschau.Caption.value().toStdString();
        };
        EXPECT_EQ("6 Einträge würden sich ändern (in 3 Playlisten). 5 der neuen Dateien sind vorhanden.",
                  typed(u"/M"_s, u"/neu"_s));
        EXPECT_EQ("Ein Eintrag würde sich ändern (in einer Playliste). Keine der neuen Dateien ist vorhanden.",
                  typed(u"/m/Eins 1"_s, u"/x"_s));
        EXPECT_EQ("Kein Eintrag in den Playlisten würde sich ändern.", typed(u"/y"_s, u"/x"_s));
        EXPECT_EQ("Der neue Text enthält den alten: Das Ersetzen käme nie zu einem Ende.", typed(u"/m"_s, u"/M/x"_s));
        EXPECT_EQ("", typed(u"/m"_s, {}));
        form().bAbbrechen.Click();
    });
    root().mnuFolderCheck.Click();
    EXPECT_EQ("", actions());
    EXPECT_FALSE(form().tRuhe.Enabled.value() || form().tVorschau.Enabled.value());
}

TEST_F(Remapping, ALookThatFailsEmptiesNoList)
{
    for (int look = 1; look <= 5; ++look) {
        SCOPED_TRACE(look);
        setting(u"Error"_s, dwordSetting(0));
        startAll();
        desktop.log.failNext(u"files.exists \""_s + listPath(u"Zwei"_s), look);
        remap(u"/m"_s, u"/neu"_s);
        EXPECT_TRUE(list(u"Zwei"_s) == entries(u"/neu"_s, u"Zwei"_s) || list(u"Zwei"_s) == entries(u"/m"_s, u"Zwei"_s))
            << list(u"Zwei"_s);
        desktop.newProcess();
    }
}

TEST_F(Remapping, ThePreviewCountsAListThatTwoRowsHaveOnce)
{
    putCatalogue({u"Eins"_s});
    put(database(), bytes(database()) + "200c=" + listPath(u"Eins"_s).toUtf8() + "\r\n");
    start();
    desktop.forms().whileModal(u"FolderCheck"_s, [this](Form&) {
        form().tFolderOld.Text = u"/m"_s;
        form().tFolderNew.Text = u"/x"_s;
        form().tFolderNew.Change();
        desktop.events().run(std::chrono::milliseconds{600});
        EXPECT_EQ("2 Einträge würden sich ändern (in einer Playliste). Keine der neuen Dateien ist vorhanden.",
                  form().LVorschau.Caption.value().toStdString());
        form().bAbbrechen.Click();
    });
    root().mnuFolderCheck.Click();
}

TEST_F(Remapping, ThePreviewLooksAtAsManyNumbersAsTheRun)
{
    putCatalogue({u"Eins"_s});
    put(u"/fern/Letzte.m3u"_s, "/m/a.mp3\r\n");
    put(database(), bytes(database()) + "200c=/fern/Letzte.m3u\r\n");
    start();
    desktop.forms().whileModal(u"FolderCheck"_s, [this](Form&) {
        form().tFolderOld.Text = u"/m/a"_s;
        form().tFolderNew.Text = u"/x"_s;
        form().tFolderNew.Change();
        desktop.events().run(std::chrono::milliseconds{600});
        EXPECT_EQ("Ein Eintrag würde sich ändern (in einer Playliste). Keine der neuen Dateien ist vorhanden.",
                  form().LVorschau.Caption.value().toStdString());
        form().bAbbrechen.Click();
    });
    root().mnuFolderCheck.Click();
}

TEST_F(Remapping, DoesNotComeUpInFrontOfACommandThatWaits)
{
    startAll();
    desktop.messages.script({Answer::Cancel, {}, {}, {}, [&] {
                                 forgetCalls();
                                 root().mnuFolderCheck.Click();
                                 EXPECT_EQ("", calls({u"forms"_s}));
                             }});
    root().mnuLöschen.Click();
}

TEST_F(Remapping, WhicheverStepFailsEachListIsAsItWasOrChanged)
{
    startAll();
    const qsizetype before = desktop.log.lines().size();
    remap(u"/m"_s, u"/neu"_s);
    ASSERT_EQ(entries(u"/neu"_s, u"Drei"_s), list(u"Drei"_s));
    const QStringList steps = stepsOf(desktop.log.lines().mid(before));
    ASSERT_GT(steps.size(), 15);
    for (const QString& step : steps) {
        SCOPED_TRACE(step.toStdString());
        desktop.newProcess();
        startAll();
        desktop.log.failNext(step);
        remap(u"/m"_s, u"/neu"_s);
        for (const QString& name : {u"Eins"_s, u"Zwei"_s, u"Drei"_s})
            EXPECT_TRUE(list(name) == entries(u"/m"_s, name) || list(name) == entries(u"/neu"_s, name)) << list(name);
        EXPECT_TRUE(bytes(database()).contains("3c="));
        EXPECT_EQ(3, catalogue().count());
        EXPECT_TRUE(root().commands.idle());
        desktop.messages.take();
    }
}

} // namespace orvantine::fake
