#include "app/Command.h"
#include "app/IniFiles.h"
#include "shell/Info.h"

#include "support/DesktopTest.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Commands : public DesktopTest
{
protected:
    /// Whether a command that changes this would run inside the next yield.
    bool admittedInside(Command& command, Changes wanted)
    {
        bool admitted = false;
        desktop.events().atYield(1, [&] { runCommand(root(), wanted, [&] { admitted = true; }); });
        EXPECT_TRUE(command.yield());
        return admitted;
    }
    [[nodiscard]] bool waits()
    {
        return root().Pointer.value() != MousePointer::Default || !catalogue().Enabled.value() ||
               !tracks().Enabled.value() || root().buttonsDisabled;
    }
};

} // namespace

TEST_F(Commands, OneThatChangesTheSameIsPassedOverInTheWaitOfAnother)
{
    Command command(root(), Changes::Catalogue);
    EXPECT_FALSE(admittedInside(command, Changes::Catalogue));
    EXPECT_FALSE(admittedInside(command, Changes::Both));
    EXPECT_TRUE(admittedInside(command, Changes::Tracks));
    EXPECT_TRUE(admittedInside(command, Changes::Nothing));
    Command part(root());
    EXPECT_FALSE(admittedInside(part, Changes::Catalogue)) << "what waits further up counts";
}

TEST_F(Commands, WhatACommandCallsItselfIsAPartOfIt)
{
    const Command command(root(), Changes::Both);
    bool ran = false;
    runCommand(root(), Changes::Both, [&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_FALSE(root().commands.idle());
}

TEST_F(Commands, OldBytesAreKeptForTheCommandThatTheUserCalled)
{
    const QString file = data() + u"a.m3u"_s;
    put(file, "0");
    int written = 0;
    const auto write = [&] { ASSERT_TRUE(root().files.writeBytes(file, QByteArray::number(++written))); };
    write();
    runCommand(
        root(), Changes::Catalogue,
        [&] {
            write();
            const Command routine(root());
            write();
            runCommand(root(), Changes::Catalogue, write, u"Datenbank speichern"_s);
            Command command(root());
            desktop.events().atYield(1, [&] {
                runCommand(root(), Changes::Tracks, write);
                runCommand(root(), Changes::Tracks, write, u"Sortieren"_s);
            });
            EXPECT_TRUE(command.yield());
            write();
            desktop.forms().whileModal(u"Info"_s, [&](Form& form) {
                runCommand(root(), Changes::Tracks, write);
                desktop.forms().unload(form);
            });
            EXPECT_TRUE(command.showModal(*root().info));
        },
        u"Umbenennen"_s);
    write();
    QStringList reasons;
    for (const MemoryFiles::Kept& kept : desktop.memory()->AllKept)
        reasons += QString::fromUtf8(kept.bytes) + u' ' + kept.reason;
    EXPECT_EQ(lines({u"0 "_s, u"1 Umbenennen"_s, u"2 Umbenennen"_s, u"3 Umbenennen"_s, u"4 "_s, u"5 Sortieren"_s,
                     u"6 Umbenennen"_s, u"7 Umbenennen"_s, u"8 "_s}),
              lines(reasons));
}

TEST_F(Commands, AWaitEndsWithItsCommandOnWhateverWay)
{
    for (const Wait what : {Wait::Buttons, Wait::Lists, Wait::All}) {
        {
            Command command(root());
            command.wait(what);
            EXPECT_TRUE(waits());
            EXPECT_EQ(what == Wait::Lists, !root().buttonsDisabled);
            EXPECT_EQ(what == Wait::Buttons, root().Pointer.value() == MousePointer::Default);
        }
        EXPECT_FALSE(waits());
    }
    EXPECT_TRUE(root().commands.idle());
}

TEST_F(Commands, TheDatabaseIsKeptOnceForEachCommand)
{
    const QString file = data() + u"Orvantine.dat"_s;
    put(file, "[A]\r\n");
    const qsizetype before = desktop.memory()->recovered().size();
    const auto kept = [&] { return desktop.memory()->recovered().size() - before; };
    int number = 0;
    const auto write = [&] { IniFiles::WriteValue(root(), file, u"A"_s, u"x"_s, QString::number(++number)); };
    {
        Command command(root());
        write();
        const Command part(root());
        write();
        EXPECT_EQ(1, kept());
        desktop.events().atYield(1, [&] {
            const Command other(root());
            write();
            write();
        });
        EXPECT_TRUE(command.yield());
        EXPECT_EQ(2, kept()) << "what comes in meanwhile stands for itself";
    }
    const Command next(root());
    write();
    EXPECT_EQ(3, kept());
}

TEST_F(Commands, BehindTheEndOfTheProgramNoDoorOpens)
{
    Command command(root());
    desktop.events().atYield(1, [&] { desktop.events().endProcess(); });
    EXPECT_FALSE(command.yield());
    EXPECT_TRUE(command.ended());
    EXPECT_FALSE(command.yield());
    EXPECT_FALSE(command.pause(1.0));
    // No box, chooser or form is scripted: one that came up would be a failure.
    EXPECT_FALSE(command.ask({.text = u"?"_s, .title = u" Frage"_s}).has_value());
    EXPECT_FALSE(command.enter(u"?"_s, u" Frage"_s).has_value());
    EXPECT_FALSE(command.openFile({}).has_value());
    EXPECT_FALSE(command.saveFile({}).has_value());
    EXPECT_EQ("", command.folder({}).toStdString());
    EXPECT_FALSE(command.font({}).has_value());
    command.tell({.text = u"!"_s, .title = u" Meldung"_s});
    Form form(u"Form"_s);
    EXPECT_FALSE(command.showModal(form));
    EXPECT_EQ("", boxes());
}

TEST_F(Commands, ABoxInWhichTheProgramEndsHasNoAnswer)
{
    desktop.messages.script({Answer::Yes, {}, {}, {}, [&] { desktop.events().endProcess(); }});
    Command command(root());
    EXPECT_FALSE(command.ask({.text = u"?"_s, .title = u" Frage"_s, .buttons = MessageButtons::YesNo}).has_value());
}

} // namespace orvantine::fake
