#include "desktop/mpris/MprisBus.h"

#include "app/Command.h"
#include "playback/PlaybackWorld.h"
#include "playback/PlayerControl.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QRegularExpression>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString Name = u"org.mpris.MediaPlayer2.orvantine"_s;
const QString Path = u"/org/mpris/MediaPlayer2"_s;
const QString RootFace = u"org.mpris.MediaPlayer2"_s;
const QString PlayerPart = u"org.mpris.MediaPlayer2.Player"_s;
const QString PlaylistsPart = u"org.mpris.MediaPlayer2.Playlists"_s;
const QString Properties = u"org.freedesktop.DBus.Properties"_s;

/// Serves events until it holds.
bool await(const std::function<bool()>& holds)
{
    const QDeadlineTimer deadline{std::chrono::seconds{20}};
    while (!holds()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    }
    return true;
}

/// A value as one text: "[a, b]" for lists and structures, "key=value" for maps, in the order of the keys.
QString printed(const QVariant& value)
{
    QStringList parts;
    if (value.userType() == qMetaTypeId<QDBusVariant>())
        return printed(value.value<QDBusVariant>().variant());
    if (value.userType() == qMetaTypeId<QDBusObjectPath>())
        return value.value<QDBusObjectPath>().path();
    if (value.userType() == qMetaTypeId<QDBusArgument>()) {
        const auto argument = value.value<QDBusArgument>();
        switch (argument.currentType()) {
        case QDBusArgument::StructureType:
            argument.beginStructure();
            while (!argument.atEnd())
                parts += printed(argument.asVariant());
            argument.endStructure();
            return u'(' + parts.join(u", "_s) + u')';
        case QDBusArgument::ArrayType:
            argument.beginArray();
            while (!argument.atEnd())
                parts += printed(argument.asVariant());
            argument.endArray();
            return u'[' + parts.join(u", "_s) + u']';
        case QDBusArgument::MapType: {
            QVariantMap map;
            argument >> map;
            return printed(map);
        }
        default:
            return printed(argument.asVariant());
        }
    }
    if (value.userType() == QMetaType::QVariantMap) {
        const QVariantMap map = value.toMap();
        for (auto entry = map.begin(); entry != map.end(); ++entry)
            parts += entry.key() + u'=' + printed(entry.value());
        return parts.join(u'\n');
    }
    if (value.userType() == QMetaType::QStringList)
        return u'[' + value.toStringList().join(u", "_s) + u']';
    return value.toString();
}

/// Writes down what is announced: "Player: CanPause=true …", one line a signal.
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(QDBusConnection& bus)
    {
        bus.connect(Name, Path, Properties, u"PropertiesChanged"_s, this,
                    SLOT(change(QString, QVariantMap, QStringList)));
        bus.connect(Name, Path, PlaylistsPart, u"PlaylistChanged"_s, this, SLOT(rename(QDBusMessage)));
        bus.connect(Name, Path, PlayerPart, u"Seeked"_s, this, SLOT(leap(qlonglong)));
    }

    QStringList heard;
    /// The last values that were announced.
    QVariantMap values;
    /// Those of the announced metadata, in their order.
    QStringList titles;

public Q_SLOTS:
    void change(const QString& interface, const QVariantMap& changed, const QStringList&)
    {
        heard += interface.section(u'.', -1) + u": "_s + changed.keys().join(u' ');
        values.insert(changed);
        static const QRegularExpression title(u"xesam:title=(.*)"_s);
        if (const auto found = title.match(printed(changed.value(u"Metadata"_s))); found.hasMatch())
            titles += found.captured(1);
    }
    void leap(qlonglong place) { heard += u"leap: %1"_s.arg(place); }
    void rename(const QDBusMessage& message) { heard += u"renamed: "_s + printed(message.arguments().value(0)); }
};

class Mpris : public PlaybackWorld
{
protected:
    Mpris()
    {
        startPlayback();
        face = std::make_unique<RemoteControl>(root(), [this] { return boxOpen; });
        server = std::make_unique<MprisBus>(*face, u"Orvanten Manager"_s, u"orvanten-manager"_s);
        server->start(QDBusConnection::connectToBus(address, u"server"_s));
        EXPECT_TRUE(await([this] { return !server->name().isEmpty(); }));
        listener = std::make_unique<Listener>(client);
        // Behind the answer the bus knows of the wish to listen.
        static_cast<void>(get(RootFace, u"Identity"_s));
        forgetCalls();
    }
    ~Mpris() override
    {
        listener.reset();
        server.reset();
        face.reset();
        QDBusConnection::disconnectFromBus(u"server"_s);
        QDBusConnection::disconnectFromBus(u"client"_s);
    }

    QDBusMessage call(const QString& interface, const QString& member, const QVariantList& arguments = {})
    {
        QDBusMessage message = QDBusMessage::createMethodCall(Name, Path, interface, member);
        message.setArguments(arguments);
        QDBusMessage reply = client.call(message, QDBus::BlockWithGui, 20'000);
        // What was asked for is carried out behind the answer.
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        return reply;
    }
    std::string get(const QString& interface, const QString& property)
    {
        return printed(call(Properties, u"Get"_s, {interface, property}).arguments().value(0)).toStdString();
    }
    QDBusMessage set(const QString& property, const QVariant& value)
    {
        return call(Properties, u"Set"_s, {PlayerPart, property, QVariant::fromValue(QDBusVariant(value))});
    }
    std::string player(const QString& property) { return get(PlayerPart, property); }
    FakePlayer& engine() { return desktop.mediaplayer(); }
    /// Ids are left out.
    std::string lists(uint first, uint most, const QString& order, bool reverse)
    {
        QString told =
            printed(call(PlaylistsPart, u"GetPlaylists"_s, {first, most, order, reverse}).arguments().value(0));
        return told.remove(QRegularExpression(u"/example/orvanten/playlist/[0-9a-f]{40}"_s)).toStdString();
    }
    QDBusObjectPath idOf(int row) const
    {
        return QDBusObjectPath(u"/example/orvanten/playlist/"_s + face->playlists()[row - 1].id);
    }

    QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    QDBusConnection client = QDBusConnection::connectToBus(address, u"client"_s);
    bool boxOpen = false;
    std::unique_ptr<RemoteControl> face;
    std::unique_ptr<MprisBus> server;
    std::unique_ptr<Listener> listener;
};

} // namespace

TEST_F(Mpris, TellsWhoItIs)
{
    EXPECT_EQ("CanQuit=true\nCanRaise=true\nDesktopEntry=orvanten-manager\nHasTrackList=false\n"
              "Identity=Orvanten Manager\nSupportedMimeTypes=[]\nSupportedUriSchemes=[]",
              printed(call(Properties, u"GetAll"_s, {RootFace}).arguments().value(0)).toStdString());
    const QString xml = printed(call(u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s).arguments().value(0));
    for (const QString& part : {RootFace, PlayerPart, PlaylistsPart})
        EXPECT_TRUE(xml.contains(u"<interface name=\"%1\">"_s.arg(part))) << part.toStdString();
}

TEST_F(Mpris, AnIdlePlayerTellsThatItCanPlayAndNothingMore)
{
    EXPECT_EQ("CanControl=true\nCanGoNext=false\nCanGoPrevious=false\nCanPause=false\nCanPlay=true\nCanSeek=false\n"
              "LoopStatus=None\nMaximumRate=1\nMetadata=mpris:trackid=/org/mpris/MediaPlayer2/TrackList/NoTrack\n"
              "MinimumRate=1\nPlaybackStatus=Stopped\nPosition=0\nRate=1\nVolume=0.5",
              printed(call(Properties, u"GetAll"_s, {PlayerPart}).arguments().value(0)).toStdString());
    EXPECT_EQ("(false, (/, , ))", get(PlaylistsPart, u"ActivePlaylist"_s));
}

TEST_F(Mpris, PlayPauseAndStopPressTheControls)
{
    call(PlayerPart, u"Pause"_s);
    call(PlayerPart, u"Stop"_s);
    EXPECT_EQ("", told());
    call(PlayerPart, u"Play"_s);
    EXPECT_EQ("newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
    EXPECT_EQ("Playing", player(u"PlaybackStatus"_s));
    call(PlayerPart, u"Play"_s);
    EXPECT_EQ("", told());
    call(PlayerPart, u"Pause"_s);
    EXPECT_EQ("controls.pause", told());
    EXPECT_EQ("Paused", player(u"PlaybackStatus"_s));
    EXPECT_EQ("play 0 pause 1 tag 1 lists 1/1 timer 1 item3 0 item4 1 Wiedergabe stoppen ", state());
    call(PlayerPart, u"Pause"_s);
    EXPECT_EQ("", told());
    call(PlayerPart, u"Play"_s);
    EXPECT_EQ("controls.play", told());
    call(PlayerPart, u"PlayPause"_s);
    call(PlayerPart, u"PlayPause"_s);
    EXPECT_EQ("controls.pause\ncontrols.play", told());
    call(PlayerPart, u"Stop"_s);
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_EQ("Stopped", player(u"PlaybackStatus"_s));
    call(PlayerPart, u"PlayPause"_s);
    EXPECT_EQ("newPlaylist(Erste.m3u, 2)\nclose\nURL = Erste.m3u", told());
}

TEST_F(Mpris, APauseIsToBeHadAfterAResumeByTheMenuToo)
{
    EXPECT_EQ("false", player(u"CanPause"_s));
    pSoundPlayer_Click(root());
    for (int round = 1; round <= 2; ++round) {
        SCOPED_TRACE(round);
        forgetCalls();
        call(PlayerPart, u"PlayPause"_s);
        EXPECT_EQ("controls.pause", told());
        EXPECT_EQ("Paused", player(u"PlaybackStatus"_s));
        EXPECT_EQ("true", player(u"CanPause"_s));
        root().mnuWiedergabe.Click();
        EXPECT_EQ("controls.play", told());
        EXPECT_EQ("Playing", player(u"PlaybackStatus"_s));
        EXPECT_EQ("true", player(u"CanPause"_s));
    }
    call(PlayerPart, u"Pause"_s);
    EXPECT_EQ("controls.pause", told());
}

TEST_F(Mpris, AStopInTheWaitForTheNextListEndsIt)
{
    pSoundPlayer_Click(root());
    engine().pretendEnded();
    bool stopped = false;
    desktop.events().after(std::chrono::milliseconds{680}, [&] {
        EXPECT_FALSE(root().pPausePlayer.Enabled.value());
        stopped = face->stop();
    });
    forgetCalls();
    run(5000);
    EXPECT_TRUE(stopped);
    EXPECT_EQ("controls.stop\nclose", told());
    EXPECT_FALSE(face->stop());
}

TEST_F(Mpris, NextAndPreviousWorkInAListAndNotWithASingleTrack)
{
    call(PlayerPart, u"Next"_s);
    EXPECT_EQ("", told());
    pSoundPlayer_Click(root());
    EXPECT_EQ("true", player(u"CanGoNext"_s));
    forgetCalls();
    call(PlayerPart, u"Next"_s);
    call(PlayerPart, u"Previous"_s);
    EXPECT_EQ("controls.next\ncontrols.previous", told());
    tracks().DblClick();
    forgetCalls();
    EXPECT_EQ("false", player(u"CanGoNext"_s));
    call(PlayerPart, u"Next"_s);
    call(PlayerPart, u"Previous"_s);
    EXPECT_EQ("", told());
}

TEST_F(Mpris, ATitleIsSoughtInAndEachLeapIsTold)
{
    engine().setDuration(200);
    pSoundPlayer_Click(root());
    engine().pretendPosition(30);
    EXPECT_EQ("true", player(u"CanSeek"_s));
    EXPECT_EQ("30000000", player(u"Position"_s));
    EXPECT_TRUE(await([this] { return listener->values[u"CanSeek"_s] == true; }));
    listener->heard.clear();
    call(PlayerPart, u"Seek"_s, {qlonglong{12'000'000}});
    EXPECT_TRUE(await([this] { return listener->heard.contains(u"leap: 42000000"_s); }));
    const auto here = QDBusObjectPath(u"/example/orvanten/track/"_s + u"_2fm_2fErste_201_2emp3"_s);
    call(PlayerPart, u"SetPosition"_s, {QVariant::fromValue(here), qlonglong{90'000'000}});
    EXPECT_TRUE(await([this] { return listener->heard.contains(u"leap: 90000000"_s); }));
    const auto gone = QDBusObjectPath(u"/example/orvanten/track/_2fm_2fErste_202_2emp3"_s);
    call(PlayerPart, u"SetPosition"_s, {QVariant::fromValue(gone), qlonglong{5'000'000}});
    call(PlayerPart, u"SetPosition"_s, {QVariant::fromValue(here), qlonglong{200'000'001}});
    EXPECT_EQ("90000000", player(u"Position"_s));
    // The place itself is never announced.
    EXPECT_EQ("leap: 42000000\nleap: 90000000", lines(listener->heard));
    call(PlayerPart, u"Seek"_s, {qlonglong{111'000'000}});
    EXPECT_EQ("Erste 2.mp3", engine().currentSourceURL().section(u'/', -1).toStdString());
}

TEST_F(Mpris, TellsOfTheTitleThatPlays)
{
    const QString track = putTrack(u"Über #1"_s);
    putList(u"Erste"_s, {track, putTrack(u"b"_s)});
    put(data() + u"Resource/Erste.jpg"_s, "cover");
    catalogue().Tag = u"0"_s;
    click(1);
    engine().setDuration(61.5);
    pSoundPlayer_Click(root());
    const std::string folder = QString(data()).replace(u' ', u"%20"_s).toStdString();
    EXPECT_EQ("mpris:artUrl=file://" + folder +
                  "Resource/Erste.jpg\nmpris:length=61500000\n"
                  "mpris:trackid=/example/orvanten/track/_2fm_2f_c3_9cber_20_231_2emp3\n"
                  "xesam:title=Über #1\nxesam:url=file:///m/%C3%9Cber%20%231.mp3",
              player(u"Metadata"_s));
    engine().setItemInfo(u"Title"_s, u"Über"_s);
    engine().setItemInfo(u"Artist"_s, u"Wir"_s);
    engine().setItemInfo(u"Album"_s, u"Alles"_s);
    const QString named = QString::fromStdString(player(u"Metadata"_s));
    EXPECT_TRUE(named.contains(u"xesam:album=Alles\nxesam:artist=[Wir]\nxesam:title=Über\n"_s)) << named.toStdString();
}

TEST_F(Mpris, TheTitleIsAnnouncedOnceItIsKnown)
{
    engine().setItemInfo(u"Title"_s, u"Lied"_s);
    engine().setDuration(60);
    // What is announced goes out between the two calls of a title.
    engine().MediaChange = [before = engine().MediaChange] {
        before();
        QCoreApplication::processEvents();
    };
    pSoundPlayer_Click(root());
    EXPECT_TRUE(await([this] { return !listener->titles.isEmpty(); }));
    engine().pretendItem(1);
    EXPECT_TRUE(await([this] { return listener->titles.size() == 2; }));
    pStopPlayer_Click(root());
    EXPECT_TRUE(await([this] { return listener->values[u"PlaybackStatus"_s] == u"Stopped"_s; }));
    EXPECT_EQ("Lied\nLied", lines(listener->titles));
}

TEST_F(Mpris, TheListThatPlaysIsFollowedToItsNewRow)
{
    pSoundPlayer_Click(root());
    const QString id = idOf(1).path();
    ListItem row = catalogue().item(1);
    catalogue().remove(1);
    catalogue().insert(3, std::move(row));
    EXPECT_NE(std::string::npos, get(PlaylistsPart, u"ActivePlaylist"_s).find(id.toStdString()));
    catalogue().remove(3);
    EXPECT_EQ("(false, (/, , ))", get(PlaylistsPart, u"ActivePlaylist"_s));
}

TEST_F(Mpris, ALongNameStillGivesAnIdOfFewCharacters)
{
    QString name(300, u'ä');
    putList(u"Erste"_s, {putTrack(name), putTrack(u"b"_s)});
    pSoundPlayer_Click(root());
    const auto metadata = QString::fromStdString(player(u"Metadata"_s));
    EXPECT_TRUE(metadata.contains(QRegularExpression(u"trackid=/example/orvanten/track/[0-9a-f]{40}\n"_s)))
        << metadata.toStdString();
}

TEST_F(Mpris, TheLoopStatusIsTheRepeatMode)
{
    root().mnuWiederholung[2].Enabled = true;
    for (const auto& [mode, name] : {std::pair{1, "Playlist"}, std::pair{2, "Track"}, std::pair{3, "None"}}) {
        set(u"LoopStatus"_s, QString::fromLatin1(name));
        EXPECT_TRUE(root().mnuWiederholung[mode].Checked.value()) << name;
        EXPECT_EQ(name, player(u"LoopStatus"_s));
    }
    root().mnuWiederholung[2].Enabled = false;
    set(u"LoopStatus"_s, u"Track"_s);
    EXPECT_EQ("None", player(u"LoopStatus"_s));
}

TEST_F(Mpris, TheVolumeMovesTheSliderAndWithItTheSpeakers)
{
    const auto level = [this] { return desktop.mixer.lines[4].level; };
    set(u"Volume"_s, 1.0);
    EXPECT_EQ(8, root().sVolume.Value.value());
    EXPECT_EQ(64000, level());
    EXPECT_EQ("1", player(u"Volume"_s));
    set(u"Volume"_s, 7.0);
    EXPECT_EQ(8, root().sVolume.Value.value());
    set(u"Volume"_s, -1.0);
    EXPECT_EQ(0, level());
    // Five percent more or less is a step too, so that wheels and keys get on.
    set(u"Volume"_s, 0.05);
    EXPECT_EQ(8000, level());
    set(u"Volume"_s, 0.125 - 0.05);
    EXPECT_EQ(0, level());
}

TEST_F(Mpris, ALevelThatWasSetElsewhereIsToldOnceASecondAtMost)
{
    const auto asks = [this] { return calls({u"mixer."_s}); };
    EXPECT_EQ("0.5", player(u"Volume"_s));
    desktop.mixer.lines[4].level = 8000;
    forgetCalls();
    EXPECT_EQ("0.5", player(u"Volume"_s));
    EXPECT_EQ("", asks());
    run(1000);
    forgetCalls();
    EXPECT_EQ("0.125", player(u"Volume"_s));
    EXPECT_EQ("mixer.level 4", asks());
    // A change goes on from the level that is heard.
    desktop.mixer.lines[4].level = 56'000;
    set(u"Volume"_s, 0.8);
    EXPECT_EQ(48'000, desktop.mixer.lines[4].level);
}

TEST_F(Mpris, ThePlaylistsAreTheRowsOfTheCatalogue)
{
    EXPECT_EQ("4", get(PlaylistsPart, u"PlaylistCount"_s));
    EXPECT_EQ("[UserDefined, Alphabetical]", get(PlaylistsPart, u"Orderings"_s));
    EXPECT_EQ("[(, Erste, ), (, Zweite, ), (, Dritte, ), (, Einzeln, )]", lists(0, 100, u"UserDefined"_s, false));
    EXPECT_EQ("[(, Dritte, ), (, Einzeln, ), (, Erste, ), (, Zweite, )]", lists(0, 100, u"Alphabetical"_s, false));
    EXPECT_EQ("[(, Zweite, ), (, Erste, ), (, Einzeln, ), (, Dritte, )]", lists(0, 100, u"Alphabetical"_s, true));
    EXPECT_EQ("[(, Zweite, ), (, Dritte, )]", lists(1, 2, u"UserDefined"_s, false));
    EXPECT_EQ("[(, Dritte, ), (, Zweite, )]", lists(1, 2, u"UserDefined"_s, true));
    EXPECT_EQ("[]", lists(4, 4000000000U, u"UserDefined"_s, false));
    EXPECT_EQ("[]", lists(4000000000U, 1, u"UserDefined"_s, false));
}

TEST_F(Mpris, APlaylistIsActivatedByADoubleClickOnItsRow)
{
    call(PlaylistsPart, u"ActivatePlaylist"_s, {QVariant::fromValue(idOf(3))});
    EXPECT_EQ("newPlaylist(Dritte.m3u, 2)\nclose\nURL = Dritte.m3u", told());
    EXPECT_EQ("Icon_6 Icon_1 Icon_C Icon_1", marks());
    EXPECT_EQ("/m/Dritte 1.mp3", tracks().subItem(1, 3).toStdString());
    EXPECT_EQ("(true, (" + idOf(3).path().toStdString() + ", Dritte, ))", get(PlaylistsPart, u"ActivePlaylist"_s));

    call(PlaylistsPart, u"ActivatePlaylist"_s, {QVariant::fromValue(idOf(2))});
    EXPECT_EQ("controls.stop\nclose\nnewPlaylist(Zweite.m3u, 2)\nclose\nURL = Zweite.m3u", told());
    for (const QString& unknown : {u"/"_s, u"/example/orvanten/playlist/0"_s, u"/example/other/1"_s})
        call(PlaylistsPart, u"ActivatePlaylist"_s, {QVariant::fromValue(QDBusObjectPath(unknown))});
    EXPECT_EQ("", told());
}

TEST_F(Mpris, AMissingPlaylistIsAskedForAndNotPlayedIfTheUserCancels)
{
    desktop.disk().remove(listPath(u"Dritte"_s));
    desktop.messages.answer(Answer::Cancel);
    call(PlaylistsPart, u"ActivatePlaylist"_s, {QVariant::fromValue(idOf(3))});
    EXPECT_EQ("", told());
    EXPECT_NE("", boxes());
}

TEST_F(Mpris, TwoRowsOfOneFileAreTwoPlaylists)
{
    catalogue().setSubItem(2, 2, catalogue().subItem(1, 2));
    EXPECT_EQ(idOf(1).path() + u"_2"_s, idOf(2).path());
    call(PlaylistsPart, u"ActivatePlaylist"_s, {QVariant::fromValue(idOf(2))});
    EXPECT_EQ(2, catalogue().selectedRow());
}

TEST_F(Mpris, ChangesOfOneCommandAreAnnouncedTogether)
{
    call(PlayerPart, u"Play"_s);
    EXPECT_TRUE(await([this] { return listener->values.contains(u"ActivePlaylist"_s); }));
    EXPECT_EQ("Player: CanGoNext CanGoPrevious CanPause Metadata PlaybackStatus\nPlaylists: ActivePlaylist",
              lines(listener->heard));
    EXPECT_EQ("Playing", printed(listener->values[u"PlaybackStatus"_s]).toStdString());

    listener->heard.clear();
    root().sVolume.Value = 7;
    root().mnuWiederholung[1].Click();
    EXPECT_TRUE(await([this] { return !listener->heard.isEmpty(); }));
    EXPECT_EQ("Player: LoopStatus Volume", lines(listener->heard));

    // The menu tells the player alone; the housekeeping sees it.
    root().pPausePlayer.Click();
    EXPECT_TRUE(await([this] { return listener->values[u"PlaybackStatus"_s] == u"Paused"_s; }));
    root().mnuWiedergabe.Click();
    run(280);
    EXPECT_TRUE(await([this] { return listener->values[u"PlaybackStatus"_s] == u"Playing"_s; }));
}

TEST_F(Mpris, NothingIsAnnouncedWhileNothingChanges)
{
    run(3000);
    static_cast<void>(get(RootFace, u"Identity"_s));
    EXPECT_EQ("", lines(listener->heard));
}

TEST_F(Mpris, NewRowsAndNewNamesAreAnnounced)
{
    catalogue().setSubItem(2, 1, u"Anders"_s);
    EXPECT_TRUE(await([this] { return !listener->heard.isEmpty(); }));
    EXPECT_EQ("renamed: (" + idOf(2).path().toStdString() + ", Anders, )", lines(listener->heard));
    listener->heard.clear();
    catalogue().remove(4);
    EXPECT_TRUE(await([this] { return !listener->heard.isEmpty(); }));
    EXPECT_EQ("Playlists: PlaylistCount", lines(listener->heard));
}

TEST_F(Mpris, NothingIsPressedWhileABoxIsOpenOrACommandWorks)
{
    const auto tryAll = [this] {
        for (const char* wish : {"Play", "PlayPause", "Pause", "Next", "Previous", "Stop"})
            call(PlayerPart, QString::fromLatin1(wish));
        call(PlaylistsPart, u"ActivatePlaylist"_s, {QVariant::fromValue(idOf(2))});
        call(RootFace, u"Quit"_s);
        set(u"LoopStatus"_s, u"Playlist"_s);
        set(u"Volume"_s, 1.0);
        EXPECT_EQ("", calls({u"Mediaplayer."_s, u"events."_s, u"mixer."_s}));
        EXPECT_EQ("None", player(u"LoopStatus"_s));
    };
    std::optional<Command> command;
    const auto wait = [&](Wait what) {
        return [&, what] {
            command.emplace(root());
            command->wait(what);
        };
    };
    const auto goOn = [&] { command.reset(); };
    pSoundPlayer_Click(root());
    for (const auto& [name, enter, leave] :
         std::initializer_list<std::tuple<const char*, std::function<void()>, std::function<void()>>>{
             {"box", [this] { boxOpen = true; }, [this] { boxOpen = false; }},
             {"buttons off", wait(Wait::Buttons), goOn},
             {"lists off", wait(Wait::Lists), goOn},
             {"all off", wait(Wait::All), goOn},
             {"start-up", [this] { root().loaded = false; }, [this] { root().loaded = true; }}}) {
        SCOPED_TRACE(name);
        enter();
        forgetCalls();
        tryAll();
        leave();
    }
    call(PlayerPart, u"Stop"_s);
    EXPECT_EQ("controls.stop\nclose", told());
}

TEST_F(Mpris, RaisesTheWindowAsASecondInstanceDoesAndQuitsByTheMenu)
{
    desktop.tray().click(MouseButton::Left);
    ASSERT_FALSE(root().Visible.value());
    call(RootFace, u"Raise"_s);
    EXPECT_TRUE(root().Visible.value());
    EXPECT_EQ(WindowState::Normal, root().State.value());
    EXPECT_FALSE(desktop.events().ended());
    call(RootFace, u"Quit"_s);
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ("9", root().Tag.toStdString());
}

TEST_F(Mpris, CallsThatDoNotExistAreErrors)
{
    const auto error = [](const QDBusMessage& reply) { return reply.errorName().section(u'.', -1).toStdString(); };
    EXPECT_EQ("UnknownMethod", error(call(PlayerPart, u"Fly"_s)));
    EXPECT_EQ("UnknownMethod", error(call(PlayerPart, u"Play"_s, {1})));
    EXPECT_EQ("UnknownProperty", error(call(Properties, u"Get"_s, {PlayerPart, u"Colour"_s})));
    EXPECT_EQ("UnknownInterface", error(call(Properties, u"GetAll"_s, {u"org.example.Other"_s})));
    EXPECT_EQ("PropertyReadOnly", error(set(u"CanSeek"_s, true)));
    EXPECT_EQ("InvalidArgs", error(set(u"LoopStatus"_s, u"Sometimes"_s)));
    EXPECT_EQ("InvalidArgs", error(set(u"Volume"_s, u"loud"_s)));
    EXPECT_EQ("NotSupported", error(call(PlayerPart, u"OpenUri"_s, {u"file:///a.mp3"_s})));
    EXPECT_EQ("", error(call(PlayerPart, u"Seek"_s, {qlonglong{5}})));
    EXPECT_EQ("", error(set(u"Rate"_s, 2.0)));
    EXPECT_EQ("1", player(u"Rate"_s));
    EXPECT_EQ("", told());
}

TEST_F(Mpris, ASecondInstanceTakesANameWithItsNumber)
{
    MprisBus second(*face, u"Orvanten Manager"_s, u"orvanten-manager"_s);
    second.start(QDBusConnection::connectToBus(address, u"second"_s));
    EXPECT_TRUE(await([&second] { return !second.name().isEmpty(); }));
    EXPECT_EQ(Name + u".instance%1"_s.arg(QCoreApplication::applicationPid()), second.name());
    QDBusConnection::disconnectFromBus(u"second"_s);
}

TEST_F(Mpris, WithoutABusItIsSilent)
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nowhere");
    MprisBus lonely(*face, u"Orvanten Manager"_s, u"orvanten-manager"_s);
    lonely.start();
    pSoundPlayer_Click(root());
    QCoreApplication::processEvents();
    EXPECT_EQ("", lonely.name().toStdString());
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    qputenv("XDG_RUNTIME_DIR", runtime);
}

} // namespace orvantine::fake

#include "MprisTest.moc"
