#include "playback/SequencingWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

TEST_F(Sequencing, AListOfTheSequenceThatPlaysNothingIsPassedOver)
{
    struct Case
    {
        const char* name;
        /// What plays to its end, and what is gone of the list behind it.
        int before;
        QStringList gone;
        const char* after;
    };
    const QString one = u"/m/Einzeln 1.mp3"_s;
    for (const Case& c :
         {Case{"missing list", 1, {listPath(u"Zweite"_s)}, "newPlaylist(Dritte.m3u, 2)\nclose\nURL = Dritte.m3u"},
          Case{"all tracks missing",
               1,
               {u"/m/Zweite 1.mp3"_s, u"/m/Zweite 2.mp3"_s},
               "newPlaylist(Dritte.m3u, 2)\nclose\nURL = Dritte.m3u"},
          Case{"missing one-track list", 3, {one}, "newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u"}}) {
        for (const int showChange : {0, 1}) {
            SCOPED_TRACE(std::string(c.name) + ", ShowChange " + std::to_string(showChange));
            desktop.newProcess();
            SetUp();
            setting(u"ShowChange"_s, dwordSetting(showChange));
            for (const QString& path : c.gone)
                desktop.disk().remove(path);
            playToTheEnd(c.before);
            root().Timer2.Enabled = true;
            run(10000);
            const QString calls = QString::fromStdString(told());
            EXPECT_TRUE(calls.endsWith(QString::fromLatin1(c.after))) << calls.toStdString();
            EXPECT_FALSE(calls.contains(u"controls.stop"_s));
            EXPECT_EQ(2, calls.count(u"URL = "_s));
            EXPECT_EQ(PlayState::Playing, player().playState());
            EXPECT_TRUE(root().pPausePlayer.Enabled.value());
            EXPECT_TRUE(root().Timer1.Enabled.value());
            EXPECT_EQ(showChange == 1 ? c.before : root().pSoundPlayer.Tag.toInt(), catalogue().selectedRow());
        }
    }
}

TEST_F(Sequencing, ARoundWithoutASoundEndsTheSequence)
{
    for (const int showChange : {0, 1}) {
        SCOPED_TRACE(showChange);
        desktop.newProcess();
        SetUp();
        setting(u"ShowChange"_s, dwordSetting(showChange));
        for (const QString& name : {u"Erste"_s, u"Dritte"_s})
            desktop.disk().remove(listPath(name));
        for (const QString& track : {u"Zweite 1"_s, u"Zweite 2"_s, u"Einzeln 1"_s})
            desktop.disk().remove(u"/m/"_s + track + u".mp3"_s);
        root().Timer2.Enabled = true;
        pSoundPlayer_Click(root());
        run(60000);
        const QString calls = QString::fromStdString(told());
        EXPECT_EQ(4, calls.count(u"URL = "_s)) << calls.toStdString();
        for (const QString& url : {u"Erste.m3u"_s, u"Zweite.m3u"_s, u"Dritte.m3u"_s, u"/m/Einzeln 1.mp3"_s})
            EXPECT_EQ(1, calls.count(u"URL = "_s + url)) << url.toStdString();
        EXPECT_EQ(1, calls.count(u"controls.stop"_s));
        EXPECT_TRUE(calls.endsWith(u"controls.stop\nclose"_s)) << calls.toStdString();
        EXPECT_EQ("play 1 pause 0 tag 0 lists 4/4 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
    }
}

TEST_F(Sequencing, AStartByTheUserBeginsANewRound)
{
    for (const QString& name : {u"Zweite 1"_s, u"Zweite 2"_s, u"Dritte 1"_s, u"Dritte 2"_s, u"Einzeln 1"_s})
        desktop.disk().remove(u"/m/"_s + name + u".mp3"_s);
    click(2);
    pSoundPlayer_Click(root());
    root().Timer2.Enabled = true;
    // Two silent lists, and then three again that the user begins with.
    run(2500);
    pStopPlayer_Click(root());
    click(2);
    pSoundPlayer_Click(root());
    run(30000);
    EXPECT_EQ("1", root().pSoundPlayer.Tag.toStdString());
    EXPECT_EQ(PlayState::Playing, player().playState());
}

TEST_F(Sequencing, ASilentListIsNotRepeatedForEver)
{
    chooseMode(1);
    for (const QString& name : {u"Erste 1"_s, u"Erste 2"_s})
        desktop.disk().remove(u"/m/"_s + name + u".mp3"_s);
    pSoundPlayer_Click(root());
    root().Timer2.Enabled = true;
    run(10000);
    EXPECT_EQ("play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
}

TEST_F(Sequencing, WhatTheUserDoesInAWaitOfTheSequenceCounts)
{
    struct Case
    {
        const char* name;
        std::function<void()> act;
        /// Afterwards, in the wait for the next list and in the one behind its start.
        const char* before;
        const char* behind;
    };
    const auto rowTwo = [](ListView& list) {
        list.select(2);
        list.DblClick();
    };
    const std::vector<Case> cases{
        {"stop", [this] { root().pStopPlayer.Click(); },
         "play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten  10",
         "play 1 pause 0 tag 0 lists 2/2 timer 0 item3 1 item4 0 Wiedergabe starten  10"},
        {"play", [this] { root().pSoundPlayer.Click(); },
         "play 0 pause 1 tag 1 lists 2/2 timer 1 item3 1 item4 0 Wiedergabe stoppen  3 Zweite.m3u",
         "play 1 pause 0 tag 0 lists 2/2 timer 0 item3 1 item4 0 Wiedergabe starten  10"},
        {"pause", [this] { root().mnuSoundplayer[3].Click(); },
         "play 1 pause 0 tag 1 lists 1/1 timer 0 item3 0 item4 1 Wiedergabe starten  1 Erste.m3u",
         "play 0 pause 1 tag 1 lists 2/2 timer 1 item3 0 item4 1 Wiedergabe stoppen  2 Zweite.m3u"},
        {"double click on a track", [&] { rowTwo(tracks()); },
         "play 0 pause 1 tag 1 lists 2/2 timer 0 item3 1 item4 0 Wiedergabe stoppen  3 /m/Erste 2.mp3",
         "play 0 pause 1 tag 1 lists 2/2 timer 0 item3 1 item4 0 Wiedergabe stoppen  3 /m/Zweite 2.mp3"},
        {"double click on a list",
         [&] {
             click(3);
             catalogue().DblClick();
         },
         "play 0 pause 1 tag 1 lists 3/3 timer 1 item3 1 item4 0 Wiedergabe stoppen  3 Dritte.m3u",
         "play 0 pause 1 tag 1 lists 3/3 timer 1 item3 1 item4 0 Wiedergabe stoppen  3 Dritte.m3u"},
    };
    for (const Case& c : cases) {
        for (const bool behind : {false, true}) {
            SCOPED_TRACE(std::string(c.name) + (behind ? " behind the start" : " before the start"));
            desktop.newProcess();
            SetUp();
            setting(u"ShowChange"_s, dwordSetting(1));
            playToTheEnd(1);
            root().Timer2.Enabled = true;
            std::string selected;
            desktop.events().after(std::chrono::milliseconds{behind ? 1680 : 680}, [&] {
                c.act();
                selected = std::to_string(catalogue().selectedRow()) + tracks().subItem(1, 3).toStdString();
            });
            run(5000);
            QString url = player().URL().remove(data() + u"Playlisten/"_s);
            url = u"%1 %2 %3"_s.arg(QString::fromStdString(state())).arg(int(player().playState())).arg(url).trimmed();
            EXPECT_EQ(behind ? c.behind : c.before, url.toStdString());
            // The view stays as the user left it.
            EXPECT_EQ(selected, std::to_string(catalogue().selectedRow()) + tracks().subItem(1, 3).toStdString());
        }
    }
}

TEST_F(Sequencing, TheListBehindThePlayingOneFollowsThoughThatHasMoved)
{
    playToTheEnd(1);
    ListItem row = catalogue().item(1);
    catalogue().remove(1);
    catalogue().insert(2, std::move(row));
    run(180);
    EXPECT_EQ("close\nnewPlaylist(Dritte.m3u, 2)\nclose\nURL = Dritte.m3u", told());
    EXPECT_EQ("3/3", root().pSoundPlayer.Tag.toStdString() + '/' + tracks().Tag.toStdString());
}

TEST_F(Sequencing, AStopWhileTheRepeatedTrackIsShownCounts)
{
    chooseMode(2);
    playToTheEnd(1);
    desktop.events().after(std::chrono::milliseconds{500}, [&] { root().pStopPlayer.Click(); });
    run(5000);
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_EQ("play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
}

TEST_F(Sequencing, ADoubleClickPlaysNoTrackOfAListThatIsOpenedMeanwhile)
{
    root().mnuErrorDisplay.Checked = true;
    pSoundPlayer_Click(root());
    desktop.disk().remove(u"/m/Erste 2.mp3"_s);
    desktop.messages.script(
        {.answer = Answer::Cancel, .entered = {}, .title = {}, .text = {}, .meanwhile = [&] { click(2); }});
    forgetCalls();
    tracks().select(2);
    tracks().DblClick();
    EXPECT_EQ("", told());
    EXPECT_EQ(PlayState::Playing, player().playState());
    EXPECT_TRUE(root().Timer1.Enabled.value());
}

TEST_F(Sequencing, ATrackThatGivesNoSoundIsNotRepeatedForEver)
{
    chooseMode(2);
    playToTheEnd(1);
    tracks().select(1);
    desktop.disk().remove(u"/m/Erste 1.mp3"_s);
    run(30000);
    EXPECT_EQ("play 1 pause 0 tag 0 lists 1/1 timer 0 item3 1 item4 0 Wiedergabe starten ", state());
    EXPECT_LE(QString::fromStdString(told()).count(u"URL = "_s), 2);
}

TEST_F(Sequencing, TheCommandForFavouritesKnowsTheListThatTheSequenceOpened)
{
    EXPECT_TRUE(root().mnuFavoriten.Checked.value());
    playToTheEnd(1);
    run(180);
    ASSERT_EQ(2, catalogue().selectedRow());
    EXPECT_FALSE(root().mnuFavoriten.Checked.value());
}

} // namespace orvantine::fake
