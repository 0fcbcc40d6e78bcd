#include "runner/Run.h"

#include <array>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

void volume(Run& run, const Command& command)
{
    const QString root = run.text(command, 1);
    const QString fileSystem = run.text(command, 2);
    const qint64 free = run.bigNumber(command, 3);
    const qint64 total = command.words.size() > 4 ? run.bigNumber(command, 4) : free;
    if (!run.failed())
        run.desktop().volumes.set(root, {fileSystem, static_cast<quint64>(free), static_cast<quint64>(total)});
}

void tray(Run& run, const Command& command)
{
    const int what = run.choice(command, 1, {u"on"_s, u"off"_s, u"left"_s, u"right"_s});
    if (what < 0)
        return;
    if (what < 2) {
        run.desktop().trayPresent = what == 0;
        run.desktop().tray().setPresent(what == 0);
        return;
    }
    if (run.needsProgram() && !run.desktop().tray().click(what == 2 ? MouseButton::Left : MouseButton::Right))
        run.fail(u"there is no item in the tray to click"_s);
}

void mixer(Run& run, const Command& command)
{
    const int what = run.choice(command, 1, {u"on"_s, u"off"_s, u"level"_s, u"line"_s});
    if (what < 0)
        return;
    if (what < 2) {
        run.desktop().mixer.present = what == 0;
        return;
    }
    if (command.words.size() != (what == 2 ? 4 : 5))
        return run.fail(u"the form is: mixer level LINE LEVEL or mixer line LINE MIN MAX"_s);
    const int line = run.number(command, 2);
    const auto first = static_cast<long>(run.bigNumber(command, 3));
    if (run.failed())
        return;
    if (what == 3)
        run.desktop().mixer.lines[line].range = {first, static_cast<long>(run.bigNumber(command, 4))};
    else if (run.desktop().mixer.lines.contains(line))
        run.desktop().mixer.lines[line].level = first;
    else
        run.fail(u"the mixer has no line %1"_s.arg(line));
}

void soundcard(Run& run, const Command& command)
{
    const bool on = run.onOff(command, 1);
    if (!run.failed())
        run.desktop().sound.devices = on ? 1 : 0;
}

void font(Run& run, const Command& command)
{
    const QString family = run.text(command, 1);
    const int known = run.choice(command, 2, {u"unknown"_s, u"known"_s});
    if (run.failed())
        return;
    if (known == 1)
        run.desktop().fonts.families.insert(family);
    else
        run.desktop().fonts.families.remove(family);
}

void screen(Run& run, const Command& command)
{
    const Twips width = run.number(command, 1);
    const Twips height = run.number(command, 2);
    if (!run.failed())
        run.desktop().screen.setOnly(width, height);
}

void instance(Run& run, const Command& command)
{
    const int what = run.choice(command, 1, {u"free"_s, u"taken"_s, u"silent"_s});
    if (run.failed())
        return;
    run.desktop().instance.taken = what != 0;
    run.desktop().instance.answers = what != 2;
}

void clipboard(Run& run, const Command& command)
{
    const QString text = run.text(command, 1);
    if (!run.failed())
        run.desktop().clipboard.content = text;
}

void playerItem(Run& run, fake::FakePlayer& player, const Command& command)
{
    if (command.words.size() != 3)
        return run.fail(u"the form is: player item NUMBER"_s);
    const int item = run.number(command, 2);
    if (run.failed())
        return;
    if (item < 1 || item > player.playlistCount())
        return run.fail(u"the player has no item %1"_s.arg(item));
    player.pretendItem(item - 1);
}

void player(Run& run, const Command& command)
{
    const int what = run.choice(
        command, 1, {u"playing"_s, u"paused"_s, u"ended"_s, u"failed"_s, u"item"_s, u"info"_s, u"duration"_s});
    if (run.failed())
        return;
    fake::FakePlayer& there = run.desktop().mediaplayer();
    switch (what) {
    case 0:
        return there.pretendPlaying();
    case 1:
        return there.pretendPaused();
    case 2:
        return there.pretendEnded();
    case 3:
        return there.pretendFailed();
    case 4:
        return playerItem(run, there, command);
    default:
        break;
    }
    if (command.words.size() != (what == 5 ? 4 : 3))
        return run.fail(u"the form is: player info NAME \"VALUE\" or player duration SECONDS"_s);
    for (fake::FakePlayer* one : {&there, &run.desktop().mediaInfo()}) {
        if (what == 5)
            one->setItemInfo(run.text(command, 2), run.text(command, 3));
        else
            one->setDuration(run.text(command, 2).toDouble());
    }
}

/// The record of a file in the tag library; a file without one cannot be read by it.
void track(Run& run, const Command& command)
{
    const QString path = run.text(command, 1);
    if (command.words.size() == 3 && command.words[2].keyword() == u"none"_s) {
        run.desktop().tags.tracks.remove(path);
        return;
    }
    if (command.words.size() % 2 != 0)
        return run.fail(u"each field of a track is followed by its value"_s);
    fake::FakeTrack tag;
    const std::array<QString*, 5> texts{&tag.title, &tag.artist, &tag.album, &tag.year, &tag.comment};
    const std::array<int*, 3> numbers{&tag.track, &tag.bitRate, &tag.seconds};
    for (qsizetype i = 2; i < command.words.size() && !run.failed(); i += 2) {
        const int field = run.choice(
            command, i,
            {u"title"_s, u"artist"_s, u"album"_s, u"year"_s, u"comment"_s, u"track"_s, u"bitrate"_s, u"seconds"_s});
        if (field < 0)
            return;
        const auto place = static_cast<std::size_t>(field);
        if (place < texts.size())
            *texts[place] = run.text(command, i + 1);
        else
            *numbers[place - texts.size()] = run.number(command, i + 1);
    }
    if (!run.failed())
        run.desktop().tags.tracks[path] = tag;
}

void hand(Run& run, const Command& command)
{
    QStringList paths;
    for (qsizetype i = 1; i < command.words.size(); ++i)
        paths += run.text(command, i);
    if (run.failed() || !run.needsProgram())
        return;
    const Instance& instance = run.desktop().instance;
    if (!instance.TakesFiles())
        return run.fail(u"the program takes no files now"_s);
    instance.Handed(paths);
}

void failNext(Run& run, const Command& command)
{
    const QString start = run.text(command, 1);
    const int which = command.words.size() > 2 ? run.number(command, 2) : 1;
    if (!run.failed())
        run.desktop().log.failNext(start, which);
}

} // namespace

QList<CommandEntry> deviceCommands()
{
    return {
        {u"volume"_s, u"volume ROOT FILESYSTEM FREE [TOTAL]"_s, 3, 4, Body::None, volume},
        {u"tray"_s, u"tray on|off|left|right"_s, 1, 1, Body::None, tray},
        {u"mixer"_s, u"mixer on|off, mixer level LINE LEVEL, mixer line LINE MIN MAX"_s, 1, 4, Body::None, mixer},
        {u"soundcard"_s, u"soundcard on|off"_s, 1, 1, Body::None, soundcard},
        {u"font"_s, u"font \"FAMILY\" known|unknown"_s, 2, 2, Body::None, font},
        {u"screen"_s, u"screen WIDTH HEIGHT"_s, 2, 2, Body::None, screen},
        {u"instance"_s, u"instance free|taken|silent"_s, 1, 1, Body::None, instance},
        {u"hand"_s, u"hand PATH …"_s, 1, -1, Body::None, hand},
        {u"clipboard"_s, u"clipboard \"TEXT\""_s, 1, 1, Body::None, clipboard},
        {u"player"_s, u"player playing|paused|ended|failed|item NUMBER|info NAME \"VALUE\"|duration SECONDS"_s, 1, 3,
         Body::None, player},
        {u"track"_s,
         u"track PATH [title|artist|album|year|comment \"TEXT\"] [track|bitrate|seconds NUMBER] …, track PATH none"_s,
         1, 17, Body::None, track},
        {u"fail"_s, u"fail \"CALL\" [NUMBER]"_s, 1, 2, Body::None, failNext},
    };
}

} // namespace orvantine::scenario
