#include "playlists/PlaylistText.h"
#include "support/DesktopTest.h"
#include "support/FormsContract.h"
#include "support/Quoting.h"

#include <gmock/gmock.h>

namespace orvantine::fake {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class FakesTest : public testing::Test
{
protected:
    CallLog log;
    Complaints complaints;
    ControlSet controls;
    QStringList ticks;

    void note(Timer& timer)
    {
        timer.Tick = [this, &timer] { ticks += timer.name; };
    }
};

} // namespace

TEST_F(FakesTest, TheLogFailsTheNthCallOfTheRun)
{
    log.failCall(2);

    EXPECT_TRUE(log.call(u"one"_s));
    EXPECT_FALSE(log.call(u"two"_s));
    EXPECT_TRUE(log.call(u"three"_s));
    EXPECT_EQ(log.calls(), 3);
}

TEST_F(FakesTest, TheLogFailsTheNextCallsThatBeginWithAText)
{
    log.failNext(u"files.copy"_s, 2);
    log.failNext(u"files.remove"_s);

    EXPECT_TRUE(log.call(u"files.copy a"_s));
    EXPECT_FALSE(log.call(u"files.remove a"_s));
    EXPECT_FALSE(log.call(u"files.copy b"_s));
    EXPECT_TRUE(log.call(u"files.copy c"_s));
    EXPECT_EQ(log.linesOf({u"files.copy"_s}), (QStringList{u"files.copy a"_s, u"files.copy b"_s, u"files.copy c"_s}));
}

TEST_F(FakesTest, TimersFireInTheOrderOfTheirDueTimes)
{
    VirtualEvents events(log, complaints);
    Timer slow(controls, u"slow", 200ms);
    Timer fast(controls, u"fast", 150ms);
    note(slow);
    note(fast);
    events.attach(slow);
    events.attach(fast);
    slow.Enabled = true;
    fast.Enabled = true;

    events.run(449ms);

    EXPECT_EQ(ticks.join(u' ').toStdString(), "fast slow fast slow");
    events.run(1ms);
    EXPECT_EQ(ticks.last(), u"fast"_s);
}

TEST_F(FakesTest, ADisabledTimerDoesNotFireAndStartsAnewWhenItIsEnabled)
{
    VirtualEvents events(log, complaints);
    Timer timer(controls, u"timer", 100ms);
    note(timer);
    events.attach(timer);
    events.run(500ms);
    EXPECT_EQ(ticks.size(), 0);

    timer.Enabled = true;
    events.run(60ms);
    timer.Enabled = false;
    timer.Enabled = true;
    events.run(99ms);
    EXPECT_EQ(ticks.size(), 0);
    events.run(1ms);
    EXPECT_EQ(ticks.size(), 1);
}

TEST_F(FakesTest, ATimerFiresInsideANestedYieldOfAnotherButNeverInsideItsOwnTick)
{
    VirtualEvents events(log, complaints);
    Timer outer(controls, u"outer", 100ms);
    Timer inner(controls, u"inner", 30ms);
    outer.Tick = [&] {
        ticks += u"("_s;
        for (int i = 0; i < 8; ++i)
            events.yield(30ms);
        ticks += u")"_s;
    };
    note(inner);
    events.attach(outer);
    events.attach(inner);
    outer.Enabled = true;
    inner.Enabled = true;

    events.run(100ms);

    EXPECT_EQ(ticks.join(u' ').toStdString(), "inner inner inner ( inner inner inner inner inner inner inner inner )");
}

TEST_F(FakesTest, AYieldWithoutATimeLetsNoTimeGoBy)
{
    VirtualEvents events(log, complaints);
    Timer timer(controls, u"timer", 10ms);
    note(timer);
    events.attach(timer);
    timer.Enabled = true;

    events.yield();
    EXPECT_EQ(ticks.size(), 0);
    EXPECT_EQ(events.elapsed(), 0ms);
    events.yield(4ms);
    EXPECT_EQ(events.elapsed(), 4ms);
    events.yield(100ms);
    EXPECT_EQ(events.elapsed(), 10ms) << "a yield ends with the first event";
    EXPECT_EQ(ticks.size(), 1);
}

TEST_F(FakesTest, AnActionRunsInsideAWaitBeforeATimerOfTheSameMoment)
{
    VirtualEvents events(log, complaints);
    Timer timer(controls, u"timer", 50ms);
    note(timer);
    events.attach(timer);
    timer.Enabled = true;
    events.after(50ms, [&] { ticks += u"user"_s; });

    events.run(50ms);

    EXPECT_EQ(ticks.join(u' ').toStdString(), "user timer");
}

TEST_F(FakesTest, NothingIsServedOnceTheProcessHasEnded)
{
    VirtualEvents events(log, complaints);
    Timer timer(controls, u"timer", 50ms);
    note(timer);
    events.attach(timer);
    timer.Enabled = true;

    events.endProcess();
    events.run(1s);
    events.yield(1s);

    EXPECT_TRUE(events.ended());
    EXPECT_EQ(ticks.size(), 0);
}

TEST_F(FakesTest, ALoopThatYieldsForEverWithoutTimeIsAComplaint)
{
    VirtualEvents events(log, complaints);
    while (!events.ended())
        events.yield();
    EXPECT_EQ(complaints.texts().size(), 1);
}

TEST_F(FakesTest, ABoxThatNobodyScriptedIsAComplaintAndGetsTheRefusingButton)
{
    ScriptedMessages messages(log, complaints);

    EXPECT_EQ(messages.show(u"Text"_s, u" Titel"_s, MessageIcon::Question, MessageButtons::YesNo), Answer::No);
    EXPECT_EQ(messages.show({}, {}, MessageIcon::None, MessageButtons::YesNoCancel), Answer::Cancel);
    EXPECT_EQ(messages.show({}, {}, MessageIcon::None, MessageButtons::RetryCancel), Answer::Cancel);
    EXPECT_EQ(messages.show({}, {}, MessageIcon::None, MessageButtons::Ok), Answer::Ok);
    EXPECT_EQ(messages.input(u"Name"_s, u"Titel"_s, u"alt"_s), QString());
    EXPECT_EQ(complaints.texts().size(), 5);
    EXPECT_EQ(messageLines({messages.shown().front()}).first().toStdString(),
              R"(box title " Titel" text "Text" icon question buttons yes-no answer no)");
}

TEST_F(FakesTest, AScriptedBoxMustHaveTheButtonTheTitleAndTheText)
{
    ScriptedMessages messages(log, complaints);
    messages.answer(Answer::Yes, u"Titel"_s, u"Text"_s);
    messages.answer(Answer::Yes, u"Titel"_s, u"Text"_s);
    messages.answer(Answer::Retry);

    EXPECT_EQ(messages.show(u"Text"_s, u"Titel"_s, MessageIcon::None, MessageButtons::YesNo), Answer::Yes);
    EXPECT_EQ(complaints.texts().size(), 0);
    EXPECT_EQ(messages.show(u"Text "_s, u"Titel"_s, MessageIcon::None, MessageButtons::YesNo), Answer::Yes);
    EXPECT_EQ(complaints.texts().size(), 1);
    EXPECT_EQ(messages.show(u"Text"_s, u"Titel"_s, MessageIcon::None, MessageButtons::YesNo), Answer::No);
    EXPECT_EQ(complaints.texts().size(), 2);
}

TEST_F(FakesTest, AnAnswerThatNoBoxAskedForIsAComplaint)
{
    ScriptedMessages messages(log, complaints);
    ScriptedChoosers choosers(log, complaints);
    messages.answer(Answer::Ok);
    choosers.open(u"/a/b.m3u"_s);
    messages.complainOfUnused();
    choosers.complainOfUnused();
    EXPECT_EQ(complaints.texts().size(), 2);
}

TEST_F(FakesTest, AChooserGivesFolderAndFileApart)
{
    ScriptedChoosers choosers(log, complaints);
    choosers.open(u"C:\\M\\a.m3u"_s);
    choosers.cancel(ChooserKind::Save);

    const std::optional<ChosenFile> opened = choosers.openFile({u"Datei öffnen"_s, u"C:\\M"_s, {}, {}, {}});
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened->folder, u"C:\\M"_s);
    EXPECT_EQ(opened->fileName, u"a.m3u"_s);
    EXPECT_FALSE(choosers.saveFile({}));
    EXPECT_EQ(complaints.texts().size(), 0);
    EXPECT_TRUE(choosers.folder({}).isEmpty());
    EXPECT_EQ(complaints.texts().size(), 1);
}

TEST_F(FakesTest, WhatAModalFormsScriptAddsComesBeforeWhatWasWaiting)
{
    ScriptQueue<int> queue;
    queue.push(1);
    queue.push(2);
    EXPECT_EQ(queue.pop(), 1);
    queue.enter();
    queue.push(10);
    queue.push(11);
    EXPECT_EQ(queue.pop(), 10);
    queue.push(12);
    queue.leave();
    EXPECT_EQ(queue.pop(), 11);
    EXPECT_EQ(queue.pop(), 12);
    EXPECT_EQ(queue.pop(), 2);
    EXPECT_EQ(queue.pop(), std::nullopt);
}

TEST_F(FakesTest, AFormLoadsWhenItComesUpAndUnloadsOnceWhenItGoes)
{
    FakeForms forms(log, complaints);
    Form form(u"Suchen"_s);
    form.Load = [&] { ticks += form.Visible.value() ? u"late"_s : u"load"_s; };
    form.Unload = [&] { ticks += u"unload"_s; };

    forms.show(form);
    forms.show(form);
    EXPECT_TRUE(form.Visible.value());
    forms.unload(form);
    forms.unload(form);
    EXPECT_FALSE(form.Visible.value());

    forms.whileModal(u"Suchen"_s, [&](Form& shown) {
        EXPECT_TRUE(shown.Visible.value());
        EXPECT_EQ(forms.modal(), QStringList{u"Suchen"_s});
        shown.Visible = false;
    });
    forms.showModal(form);
    EXPECT_EQ(ticks.join(u' ').toStdString(), "load unload load");
    EXPECT_EQ(complaints.texts().size(), 0);
}

TEST_F(FakesTest, AFormThatIsUpIsNotShownModalOnceMore)
{
    FakeForms forms(log, complaints);
    Form form(u"Direkthilfe"_s);
    expectAFormThatIsUpToStayAsItIs(forms, form);
    EXPECT_EQ(complaints.texts().size(), 0);
}

TEST_F(FakesTest, AModalFormThatNobodyScriptedOrThatStaysOpenIsAComplaint)
{
    FakeForms forms(log, complaints);
    Form form(u"Suchen"_s);

    forms.showModal(form);
    EXPECT_EQ(complaints.texts().size(), 1);
    EXPECT_FALSE(form.Visible.value());
    forms.whileModal(u"Suchen"_s, [](Form&) {});
    forms.showModal(form);
    EXPECT_EQ(complaints.texts().size(), 2);
    EXPECT_FALSE(form.Visible.value());
    forms.whileModal(u"Andere"_s, [](Form&) {});
    forms.showModal(form);
    EXPECT_EQ(complaints.texts().size(), 3);
}

TEST_F(FakesTest, BytesAreQuotedSoThatEachCanBeToldFromTheOthers)
{
    EXPECT_EQ(quotedBytes("a\r\n\t\\\"{\x01\x7f").toStdString(), R"("a\r\n\t\\\"\{\x01\x7F")");
    EXPECT_EQ(quotedBytes("\xC3\xBC").toStdString(), "\"\xC3\xBC\"");
    EXPECT_EQ(quotedBytes("\xFC").toStdString(), R"("\xFC")");
    EXPECT_EQ(quotedBytes("\xC3").toStdString(), R"("\xC3")");
    EXPECT_EQ(quotedBytes("\xEF\xBB\xBFx").toStdString(), R"("\xEF\xBB\xBFx")");
    EXPECT_EQ(quotedBytes("\xEF\xBF\xBD").toStdString(), R"("\xEF\xBF\xBD")");
}

TEST_F(FakesTest, ALoggedFileCallCanFailAndThenLeavesTheDiskAsItWas)
{
    MemoryFiles memory;
    memory.put(u"/m/a.txt"_s, "alt");
    LoggingFiles files(memory, log);
    log.failNext(u"files."_s, 1);
    EXPECT_FALSE(files.writeBytes(u"/m/a.txt"_s, "neu"));
    EXPECT_EQ(memory.bytes(u"/m/a.txt"_s), "alt");
    log.failNext(u"files."_s, 1);
    EXPECT_EQ(files.readBytes(u"/m/a.txt"_s).outcome, ReadOutcome::Failed);
    log.failNext(u"files."_s, 1);
    EXPECT_FALSE(files.exists(u"/m/a.txt"_s));
    EXPECT_TRUE(files.exists(u"/m/a.txt"_s));
}

TEST_F(FakesTest, MemoryAdoptsAHostTextAndKeepsItsExactCopy)
{
    MemoryFiles files;
    files.put(u"/m/liste.m3u"_s, "a.mp3\nb.mp3");
    EXPECT_EQ(files.readPlaylist(u"/m/liste.m3u"_s).text, u"a.mp3\r\nb.mp3\r\n"_s);
    EXPECT_EQ(files.bytes(u"/m/liste.m3u"_s), "a.mp3\r\nb.mp3\r\n");
    EXPECT_EQ(files.recovered(), QList<QByteArray>{"a.mp3\nb.mp3"});

    MemoryFiles literal({CodePage::Windows1252, false});
    literal.put(u"/m/liste.m3u"_s, "\xFC.mp3\n");
    EXPECT_EQ(literal.readPlaylist(u"/m/liste.m3u"_s).text, u"ü.mp3\n"_s);
    EXPECT_EQ(literal.bytes(u"/m/liste.m3u"_s), "\xFC.mp3\n");
}

TEST_F(FakesTest, TheTrayGivesTheCallbackTheTwipsOfTheButton)
{
    FakeTray tray(log);
    QList<int> clicks;
    tray.Callback = [&](int x) { clicks += x; };
    EXPECT_FALSE(tray.click(MouseButton::Left));
    EXPECT_TRUE(tray.add(u"Orvanten Manager"_s));
    EXPECT_TRUE(tray.click(MouseButton::Left));
    EXPECT_TRUE(tray.click(MouseButton::Right));
    EXPECT_EQ(clicks, (QList<int>{7695, 7740}));
}

TEST_F(FakesTest, AVolumeIsTheLongestRootThatAPathBeginsWith)
{
    FakeVolumes volumes(log);
    volumes.set(u"/media/anna/STICK"_s, {u"fat32"_s, 1, 2});
    volumes.set(u"/media"_s, {u"ext4"_s, 3, 4});
    EXPECT_EQ(volumes.rootOf(u"/media/anna/stick/M/a.mp3"_s), u"/media/anna/STICK"_s);
    EXPECT_EQ(volumes.rootOf(u"/media/anna/STICKS"_s), u"/media"_s);
    EXPECT_EQ(volumes.rootOf(u"E:\\M\\a.mp3"_s), u"E:\\"_s);
    EXPECT_EQ(volumes.fileSystem(u"/media/anna/STICK"_s), u"FAT32"_s);
    EXPECT_EQ(volumes.freeBytes(u"/media/anna/STICK"_s), 1U);
    EXPECT_EQ(volumes.fileSystem(u"E:\\"_s), QString());
}

TEST(FakeDesktop, ANewProcessKeepsDiskSettingsAndTimeOfDay)
{
    FakeDesktop desktop;
    desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
    desktop.disk().writeBytes(desktop.base + u"/a.txt"_s, "a");
    desktop.settings.put(Hive::CurrentUser, u"Software\\X"_s, u"Wert"_s, dwordSetting(7));
    desktop.events().run(90s);
    const QDateTime before = desktop.events().now();

    desktop.newProcess();

    EXPECT_EQ(desktop.events().now(), before);
    EXPECT_EQ(desktop.disk().readBytes(desktop.base + u"/a.txt"_s).bytes, "a");
    EXPECT_EQ(described(*desktop.settings.peek(Hive::CurrentUser, u"software\\x"_s, u"WERT"_s)).toStdString(),
              "dword 7");
}

TEST(FakeDesktop, ARealFileGetsTheVirtualClocksTime)
{
    DesktopOptions options;
    options.disk = DiskKind::TemporaryFolder;
    options.now = QDateTime(QDate(2020, 2, 29), QTime(23, 59, 58));
    FakeDesktop desktop(options);
    const QString path = desktop.base + u"/a.txt"_s;

    ASSERT_TRUE(desktop.files().writeBytes(path, "a"));
    EXPECT_EQ(desktop.disk().modified(path), options.now);
    desktop.events().run(5s);
    ASSERT_TRUE(desktop.files().writeBytes(path, "a"));
    EXPECT_EQ(desktop.disk().modified(path), options.now) << "equal bytes are no change";
    ASSERT_TRUE(desktop.files().writeBytes(path, "b"));
    EXPECT_EQ(desktop.disk().modified(path), options.now.addSecs(5));
    ASSERT_TRUE(desktop.files().copy(path, desktop.base + u"/b.txt"_s));
    EXPECT_EQ(desktop.disk().modified(desktop.base + u"/b.txt"_s), options.now.addSecs(5));
}

} // namespace orvantine::fake
