#include "desktop/mpris/MprisBus.h"

#include "desktop/mpris/RemoteWish.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace orvantine {

/// A playlist as it goes over the bus: (oss).
struct MprisPlaylist
{
    QDBusObjectPath id{QStringLiteral("/")};
    QString name;
    QString icon;

    bool operator==(const MprisPlaylist&) const = default;
};

/// A playlist that may be none: (b(oss)).
struct MprisMaybePlaylist
{
    bool valid = false;
    MprisPlaylist playlist;

    bool operator==(const MprisMaybePlaylist&) const = default;
};

static QDBusArgument& operator<<(QDBusArgument& to, const MprisPlaylist& playlist)
{
    to.beginStructure();
    to << playlist.id << playlist.name << playlist.icon;
    to.endStructure();
    return to;
}

static const QDBusArgument& operator>>(const QDBusArgument& from, MprisPlaylist& playlist)
{
    from.beginStructure();
    from >> playlist.id >> playlist.name >> playlist.icon;
    from.endStructure();
    return from;
}

static QDBusArgument& operator<<(QDBusArgument& to, const MprisMaybePlaylist& maybe)
{
    to.beginStructure();
    to << maybe.valid << maybe.playlist;
    to.endStructure();
    return to;
}

static const QDBusArgument& operator>>(const QDBusArgument& from, MprisMaybePlaylist& maybe)
{
    from.beginStructure();
    from >> maybe.valid >> maybe.playlist;
    from.endStructure();
    return from;
}

} // namespace orvantine

Q_DECLARE_METATYPE(orvantine::MprisPlaylist)
Q_DECLARE_METATYPE(orvantine::MprisMaybePlaylist)

namespace orvantine {

namespace {

const QString ServiceName = u"org.mpris.MediaPlayer2.orvantine"_s;
const QString ObjectPath = u"/org/mpris/MediaPlayer2"_s;
const QString RootInterface = u"org.mpris.MediaPlayer2"_s;
const QString PlayerInterface = u"org.mpris.MediaPlayer2.Player"_s;
const QString PlaylistsInterface = u"org.mpris.MediaPlayer2.Playlists"_s;
const QString PropertiesInterface = u"org.freedesktop.DBus.Properties"_s;
const QString TrackFolder = u"/example/orvanten/track/"_s;
const QString PlaylistFolder = u"/example/orvanten/playlist/"_s;

const QString Introspection = uR"xml(  <interface name="org.mpris.MediaPlayer2">
    <method name="Raise"/>
    <method name="Quit"/>
    <property name="CanQuit" type="b" access="read"/>
    <property name="CanRaise" type="b" access="read"/>
    <property name="HasTrackList" type="b" access="read"/>
    <property name="Identity" type="s" access="read"/>
    <property name="DesktopEntry" type="s" access="read"/>
    <property name="SupportedUriSchemes" type="as" access="read"/>
    <property name="SupportedMimeTypes" type="as" access="read"/>
  </interface>
  <interface name="org.mpris.MediaPlayer2.Player">
    <method name="Next"/>
    <method name="Previous"/>
    <method name="Pause"/>
    <method name="PlayPause"/>
    <method name="Stop"/>
    <method name="Play"/>
    <method name="Seek"><arg name="Offset" type="x" direction="in"/></method>
    <method name="SetPosition">
      <arg name="TrackId" type="o" direction="in"/>
      <arg name="Position" type="x" direction="in"/>
    </method>
    <method name="OpenUri"><arg name="Uri" type="s" direction="in"/></method>
    <signal name="Seeked"><arg name="Position" type="x"/></signal>
    <property name="PlaybackStatus" type="s" access="read"/>
    <property name="LoopStatus" type="s" access="readwrite"/>
    <property name="Rate" type="d" access="readwrite"/>
    <property name="Metadata" type="a{sv}" access="read"/>
    <property name="Volume" type="d" access="readwrite"/>
    <property name="Position" type="x" access="read">
      <annotation name="org.freedesktop.DBus.Property.EmitsChangedSignal" value="false"/>
    </property>
    <property name="MinimumRate" type="d" access="read"/>
    <property name="MaximumRate" type="d" access="read"/>
    <property name="CanGoNext" type="b" access="read"/>
    <property name="CanGoPrevious" type="b" access="read"/>
    <property name="CanPlay" type="b" access="read"/>
    <property name="CanPause" type="b" access="read"/>
    <property name="CanSeek" type="b" access="read"/>
    <property name="CanControl" type="b" access="read"/>
  </interface>
  <interface name="org.mpris.MediaPlayer2.Playlists">
    <method name="ActivatePlaylist"><arg name="PlaylistId" type="o" direction="in"/></method>
    <method name="GetPlaylists">
      <arg name="Index" type="u" direction="in"/>
      <arg name="MaxCount" type="u" direction="in"/>
      <arg name="Order" type="s" direction="in"/>
      <arg name="ReverseOrder" type="b" direction="in"/>
      <arg name="Playlists" type="a(oss)" direction="out"/>
    </method>
    <signal name="PlaylistChanged"><arg name="Playlist" type="(oss)"/></signal>
    <property name="PlaylistCount" type="u" access="read"/>
    <property name="Orderings" type="as" access="read"/>
    <property name="ActivePlaylist" type="(b(oss))" access="read"/>
  </interface>
)xml"_s;

/// Only letters, digits and "_" may stand in an element of an object path.
QString pathElement(const QString& text)
{
    constexpr qsizetype Longest = 200;
    const QByteArray bytes = text.toUtf8();
    QByteArray element;
    for (const char byte : bytes) {
        const bool plain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        element += plain ? QByteArray(1, byte) : '_' + QByteArray(1, byte).toHex();
    }
    if (element.size() > Longest)
        element = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
    return QString::fromLatin1(element);
}

QString fileUrl(const QByteArray& nativePath)
{
    return u"file://"_s + QString::fromLatin1(nativePath.toPercentEncoding("/"));
}

MprisPlaylist onTheBus(const KnownPlaylist& playlist)
{
    return {.id = QDBusObjectPath(PlaylistFolder + playlist.id), .name = playlist.name, .icon = {}};
}

QString statusName(PlaybackStatus status)
{
    switch (status) {
    case PlaybackStatus::Stopped:
        return u"Stopped"_s;
    case PlaybackStatus::Playing:
        return u"Playing"_s;
    case PlaybackStatus::Paused:
        return u"Paused"_s;
    }
    return {};
}

/// By repeat mode.
const QStringList LoopNames{u"Playlist"_s, u"Track"_s, u"None"_s};

} // namespace

MprisBus::MprisBus(RemoteControl& face, QString identity, QString desktopEntry)
    : m_face(face), m_identity(std::move(identity)), m_desktopEntry(std::move(desktopEntry))
{
    qDBusRegisterMetaType<MprisPlaylist>();
    qDBusRegisterMetaType<QList<MprisPlaylist>>();
    qDBusRegisterMetaType<MprisMaybePlaylist>();
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    QObject::connect(&m_soon, &QTimer::timeout, this, [this] { announce(); });
}

MprisBus::~MprisBus()
{
    m_face.Changed = [] {};
    m_face.Sought = [] {};
    if (!m_started)
        return;
    m_bus.unregisterObject(ObjectPath);
    if (!m_name.isEmpty())
        m_bus.send(QDBusMessage(QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                               u"org.freedesktop.DBus"_s, u"ReleaseName"_s))
                   << m_name);
}

void MprisBus::start()
{
    if (hasSessionBus())
        start(QDBusConnection::sessionBus());
}

void MprisBus::start(const QDBusConnection& bus)
{
    if (m_started || !bus.isConnected())
        return;
    m_bus = bus;
    m_started = m_bus.registerVirtualObject(ObjectPath, this);
    if (!m_started)
        return;
    for (const QString& interface : {PlayerInterface, PlaylistsInterface})
        m_told[interface] = propertiesOf(interface);
    m_toldNames = m_face.playlists();
    m_face.Changed = [this] {
        if (!m_soon.isActive())
            m_soon.start();
    };
    m_face.Sought = [this] { send(PlayerInterface, u"Seeked"_s, {m_face.position()}); };
    takeName(ServiceName, true);
}

void MprisBus::takeName(const QString& name, bool mayBeTaken)
{
    constexpr uint DoNotQueue = 4;
    constexpr uint Owner = 1;
    QDBusMessage request = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                                          u"org.freedesktop.DBus"_s, u"RequestName"_s);
    request << name << DoNotQueue;
    auto* const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(request), this);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, name, mayBeTaken] {
        const QDBusPendingReply<uint> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            return;
        if (reply.value() == Owner)
            m_name = name;
        else if (mayBeTaken)
            takeName(u"%1.instance%2"_s.arg(ServiceName).arg(QCoreApplication::applicationPid()), false);
    });
}

QString MprisBus::introspect(const QString&) const
{
    return Introspection;
}

bool MprisBus::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const QString interface = message.interface();
    if (message.type() != QDBusMessage::MethodCallMessage ||
        (!interface.startsWith(RootInterface) && interface != PropertiesInterface && !interface.isEmpty()))
        return false;
    const QDBusMessage reply = answer(message);
    if (message.isReplyRequired())
        connection.send(reply);
    return true;
}

QDBusMessage MprisBus::answer(const QDBusMessage& message)
{
    const QString interface = message.interface();
    const QString member = message.member();
    const QString signature = message.signature();
    const auto is = [&](const QString& ofInterface, const QString& name, const QString& arguments = {}) {
        return (interface.isEmpty() || interface == ofInterface) && member == name && signature == arguments;
    };

    if (interface == PropertiesInterface)
        return answerProperties(message);

    const std::pair<QString, bool (RemoteControl::*)()> wishes[] = {
        {u"Next"_s, &RemoteControl::next},   {u"Previous"_s, &RemoteControl::previous},
        {u"Pause"_s, &RemoteControl::pause}, {u"PlayPause"_s, &RemoteControl::playPause},
        {u"Stop"_s, &RemoteControl::stop},   {u"Play"_s, &RemoteControl::play}};
    for (const auto& [name, wish] : wishes)
        if (is(PlayerInterface, name)) {
            later([&face = m_face, asked = wish] { (face.*asked)(); });
            return message.createReply();
        }
    if (is(RootInterface, u"Raise"_s)) {
        later([this] { m_face.raise(); });
        return message.createReply();
    }
    if (is(RootInterface, u"Quit"_s)) {
        later([this] { m_face.quit(); });
        return message.createReply();
    }
    if (is(PlayerInterface, u"Seek"_s, u"x"_s)) {
        later([this, offset = message.arguments()[0].toLongLong()] { m_face.seek(offset); });
        return message.createReply();
    }
    if (is(PlayerInterface, u"SetPosition"_s, u"ox"_s)) {
        const QString track = message.arguments()[0].value<QDBusObjectPath>().path();
        // The title that was meant may be over by now.
        later([this, track, place = message.arguments()[1].toLongLong()] {
            if (m_face.track() && track == trackPath())
                m_face.setPosition(place);
        });
        return message.createReply();
    }
    if (is(PlayerInterface, u"OpenUri"_s, u"s"_s))
        return message.createErrorReply(QDBusError::NotSupported, u"No URIs are opened"_s);
    if (is(PlaylistsInterface, u"GetPlaylists"_s, u"uusb"_s))
        return playlists(message);
    if (is(PlaylistsInterface, u"ActivatePlaylist"_s, u"o"_s)) {
        const QString path = message.arguments().value(0).value<QDBusObjectPath>().path();
        if (path.startsWith(PlaylistFolder))
            later([this, id = path.mid(PlaylistFolder.size())] { m_face.activate(id); });
        return message.createReply();
    }
    return message.createErrorReply(QDBusError::UnknownMethod, u"No such method: "_s + interface + u'.' + member);
}

QDBusMessage MprisBus::playlists(const QDBusMessage& message) const
{
    const QVariantList arguments = message.arguments();
    QList<KnownPlaylist> known = m_face.playlists();
    if (arguments[2].toString() == u"Alphabetical"_s)
        std::stable_sort(known.begin(), known.end(), [](const KnownPlaylist& a, const KnownPlaylist& b) {
            return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
        });
    if (arguments[3].toBool())
        std::reverse(known.begin(), known.end());
    QList<MprisPlaylist> wanted;
    const auto first = static_cast<qsizetype>(arguments[0].toUInt());
    for (const KnownPlaylist& playlist : known.mid(first, static_cast<qsizetype>(arguments[1].toUInt())))
        wanted.append(onTheBus(playlist));
    return message.createReply(QVariant::fromValue(wanted));
}

QDBusMessage MprisBus::answerProperties(const QDBusMessage& message)
{
    const QString interface = message.arguments().value(0).toString();
    const QString name = message.arguments().value(1).toString();
    const bool reads = message.member() == u"GetAll"_s || (message.member() == u"Get"_s && name == u"Volume"_s);
    if (interface == PlayerInterface && reads)
        m_face.lookAtVolume();
    const QVariantMap properties = propertiesOf(interface);
    if (properties.isEmpty())
        return message.createErrorReply(QDBusError::UnknownInterface, u"No such interface: "_s + interface);
    if (message.member() == u"GetAll"_s && message.signature() == u"s"_s)
        return message.createReply(properties);
    if (!properties.contains(name))
        return message.createErrorReply(QDBusError::UnknownProperty, u"No such property: "_s + name);
    if (message.member() == u"Get"_s && message.signature() == u"ss"_s)
        return message.createReply(QVariant::fromValue(QDBusVariant(properties[name])));
    if (message.member() == u"Set"_s && message.signature() == u"ssv"_s)
        return set(message);
    return message.createErrorReply(QDBusError::UnknownMethod, u"No such method: "_s + message.member());
}

QDBusMessage MprisBus::set(const QDBusMessage& message)
{
    const QString name = message.arguments()[1].toString();
    const QVariant value = message.arguments()[2].value<QDBusVariant>().variant();
    const bool ofPlayer = message.arguments()[0].toString() == PlayerInterface;
    if (ofPlayer && name == u"LoopStatus"_s && LoopNames.contains(value.toString())) {
        later([this, mode = static_cast<int>(LoopNames.indexOf(value.toString())) + 1] { m_face.setRepeatMode(mode); });
        return message.createReply();
    }
    if (ofPlayer && name == u"Volume"_s && value.userType() == QMetaType::Double) {
        later([this, level = value.toDouble()] { m_face.setVolume(level); });
        return message.createReply();
    }
    // There is one rate only; another one is not taken.
    if (ofPlayer && name == u"Rate"_s && value.userType() == QMetaType::Double)
        return message.createReply();
    if (ofPlayer && QStringList{u"LoopStatus"_s, u"Volume"_s, u"Rate"_s}.contains(name))
        return message.createErrorReply(QDBusError::InvalidArgs, u"No value of "_s + name);
    return message.createErrorReply(QDBusError::PropertyReadOnly, u"Read only: "_s + name);
}

void MprisBus::later(std::function<void()> wish)
{
    QMetaObject::invokeMethod(this, std::move(wish), Qt::QueuedConnection);
}

QVariantMap MprisBus::rootProperties() const
{
    return {{u"CanQuit"_s, true},
            {u"CanRaise"_s, true},
            {u"HasTrackList"_s, false},
            {u"Identity"_s, m_identity},
            {u"DesktopEntry"_s, m_desktopEntry},
            {u"SupportedUriSchemes"_s, QStringList()},
            {u"SupportedMimeTypes"_s, QStringList()}};
}

QString MprisBus::trackPath() const
{
    const auto track = m_face.track();
    return track ? TrackFolder + pathElement(track->source) : u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s;
}

QVariantMap MprisBus::metadata() const
{
    QVariantMap told{{u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(trackPath()))}};
    const auto track = m_face.track();
    if (!track)
        return told;
    told[u"xesam:title"_s] = track->title;
    if (!track->artist.isEmpty())
        told[u"xesam:artist"_s] = QStringList{track->artist};
    if (!track->album.isEmpty())
        told[u"xesam:album"_s] = track->album;
    if (!track->file.isEmpty())
        told[u"xesam:url"_s] = fileUrl(track->file);
    if (!track->cover.isEmpty())
        told[u"mpris:artUrl"_s] = fileUrl(track->cover);
    if (track->microseconds > 0)
        told[u"mpris:length"_s] = track->microseconds;
    return told;
}

QVariantMap MprisBus::playerProperties() const
{
    return {{u"PlaybackStatus"_s, statusName(m_face.status())},
            {u"LoopStatus"_s, LoopNames[m_face.repeatMode() - 1]},
            {u"Rate"_s, 1.0},
            {u"Metadata"_s, metadata()},
            {u"Volume"_s, m_face.volume()},
            {u"Position"_s, m_face.position()},
            {u"MinimumRate"_s, 1.0},
            {u"MaximumRate"_s, 1.0},
            {u"CanGoNext"_s, m_face.canSkip()},
            {u"CanGoPrevious"_s, m_face.canSkip()},
            {u"CanPlay"_s, m_face.canPlay()},
            {u"CanPause"_s, m_face.canPause()},
            {u"CanSeek"_s, m_face.canSeek()},
            {u"CanControl"_s, true}};
}

QVariantMap MprisBus::playlistsProperties() const
{
    MprisMaybePlaylist active;
    if (const auto playlist = m_face.activePlaylist())
        active = {.valid = true, .playlist = onTheBus(*playlist)};
    return {{u"PlaylistCount"_s, static_cast<uint>(m_face.playlists().size())},
            {u"Orderings"_s, QStringList{u"UserDefined"_s, u"Alphabetical"_s}},
            {u"ActivePlaylist"_s, QVariant::fromValue(active)}};
}

QVariantMap MprisBus::propertiesOf(const QString& interface) const
{
    if (interface == RootInterface)
        return rootProperties();
    if (interface == PlayerInterface)
        return playerProperties();
    return interface == PlaylistsInterface ? playlistsProperties() : QVariantMap();
}

void MprisBus::announce()
{
    for (auto& [interface, told] : m_told) {
        QVariantMap now = propertiesOf(interface);
        if (interface == PlayerInterface && !m_face.titleKnown())
            now[u"Metadata"_s] = told[u"Metadata"_s];
        // Whoever wants to know it looks; only a leap is told, by a signal of its own.
        now.remove(u"Position"_s);
        QVariantMap changed;
        for (auto property = now.begin(); property != now.end(); ++property)
            if (told.value(property.key()) != property.value())
                changed.insert(property.key(), property.value());
        if (changed.isEmpty())
            continue;
        told = now;
        send(PropertiesInterface, u"PropertiesChanged"_s, {interface, changed, QStringList()});
    }
    announceNames();
}

void MprisBus::announceNames()
{
    const QList<KnownPlaylist>& now = m_face.playlists();
    if (now == m_toldNames)
        return;
    for (const KnownPlaylist& playlist : now) {
        const auto before = std::find_if(m_toldNames.cbegin(), m_toldNames.cend(),
                                         [&playlist](const KnownPlaylist& told) { return told.id == playlist.id; });
        if (before != m_toldNames.cend() && before->name != playlist.name)
            send(PlaylistsInterface, u"PlaylistChanged"_s, {QVariant::fromValue(onTheBus(playlist))});
    }
    m_toldNames = now;
}

void MprisBus::send(const QString& interface, const QString& member, const QVariantList& arguments)
{
    QDBusMessage signal = QDBusMessage::createSignal(ObjectPath, interface, member);
    signal.setArguments(arguments);
    m_bus.send(signal);
}

} // namespace orvantine
