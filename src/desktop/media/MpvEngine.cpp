#include "desktop/media/MpvEngine.h"

#include "desktop/media/MpvLibrary.h"
#include "platform/CodePage.h"

#include <chrono>
#include <clocale>

using namespace Qt::StringLiterals;

namespace orvantine {

namespace {

/// The low bits of a request's tag tell its answer apart.
enum Answer : quint64 {
    AnswerNone = 0,
    AnswerLoad = 1,
    AnswerInfo = 2,
    AnswerSeconds = 3,
    AnswerPlace = 4,
    AnswerSeek = 5
};
constexpr int answerWidth = 3;
constexpr quint64 answerBits = (1 << answerWidth) - 1;

constexpr std::chrono::seconds outputSearchInterval{2};

constexpr quint64 tagOf(quint64 ticket, Answer answer)
{
    return (ticket << answerWidth) | answer;
}

const QList<std::pair<QByteArray, QByteArray>>& ownOptions()
{
    static const QList<std::pair<QByteArray, QByteArray>> options{
        {"vid", "no"},
        {"audio-display", "no"},
        {"idle", "yes"},
        {"gapless-audio", "yes"},
        // What a mixer shows of the stream.
        {"audio-client-name", "Orvanten Manager"},
        {"title", "${?media-title:${media-title} - }Orvanten Manager"},
        // Without the output that crashes the process where a server has no sink.
        {"ao", "pulse,pipewire,alsa,jack"},
        {"audio-fallback-to-null", "yes"},
        {"config", "no"},
        {"terminal", "no"},
        {"input-default-bindings", "no"},
        {"load-scripts", "no"},
        {"load-stats-overlay", "no"},
        {"load-osd-console", "no"},
        {"load-auto-profiles", "no"},
        {"ytdl", "no"},
        {"resume-playback", "no"},
        // A track is one file: nothing beside it is opened, and nothing that it names.
        {"autoload-files", "no"},
        {"access-references", "no"},
        {"load-unsafe-playlists", "no"},
        {"ordered-chapters", "no"},
        {"demuxer", "+lavf"},
        // The engine reads that one file itself. What a file in the place of a sound names, the network above all, is
        // opened by none of the decoder's protocols.
        {"demuxer-lavf-o", "protocol_whitelist=none"},
        {"stream-lavf-o", "protocol_whitelist=none"},
    };
    return options;
}

QHash<QString, QString> infoOf(const mpv_node& node)
{
    // Old tags come as the bytes they are, whatever code page wrote them.
    const CodePage page;
    QHash<QString, QString> info;
    if (node.format != MPV_FORMAT_NODE_MAP)
        return info;
    for (int i = 0; i < node.u.list->num; ++i)
        if (const mpv_node& value = node.u.list->values[i]; value.format == MPV_FORMAT_STRING)
            info.insert(QString::fromUtf8(node.u.list->keys[i]).toLower(), page.decode(value.u.string));
    return info;
}

qint64 entryOf(const mpv_node& node)
{
    if (node.format == MPV_FORMAT_NODE_MAP)
        for (int i = 0; i < node.u.list->num; ++i)
            if (qstrcmp(node.u.list->keys[i], "playlist_entry_id") == 0)
                return node.u.list->values[i].u.int64;
    return 0;
}

} // namespace

MpvEngine::MpvEngine(MpvSetup setup, std::function<void(const MpvNews&)> listener)
    : m_setup{std::move(setup)}, m_listener{std::move(listener)}
{
    m_outputSearch.setInterval(outputSearchInterval);
    QObject::connect(&m_outputSearch, &QTimer::timeout, &m_receiver, [this] { send({"ao-reload"}, AnswerNone); });
}

MpvEngine::~MpvEngine()
{
    end();
}

bool MpvEngine::start()
{
    if (m_handle)
        return true;
    if (!m_library)
        m_library = std::make_unique<MpvLibrary>(m_setup.library);
    if (!m_library->usable())
        return false;

    // The library refuses to work where numbers are written with a comma.
    std::setlocale(LC_NUMERIC, "C");
    m_handle = m_library->create();
    if (!m_handle)
        return false;
    for (const auto& options : {ownOptions(), m_setup.options})
        for (const auto& [name, value] : options)
            m_library->setOptionString(m_handle, name.constData(), value.constData());
    if (m_library->initialize(m_handle) < 0) {
        end();
        return false;
    }
    m_library->observeProperty(m_handle, AnswerNone, "current-ao", MPV_FORMAT_STRING);
    m_library->setWakeupCallback(
        m_handle, [](void* engine) { static_cast<MpvEngine*>(engine)->wake(); }, this);
    return true;
}

void MpvEngine::load(const QByteArray& file, quint64 ticket)
{
    send({"loadfile", file, "replace"}, tagOf(ticket, AnswerLoad));
}

void MpvEngine::append(const QByteArray& file, quint64 ticket)
{
    send({"loadfile", file, "append-play"}, tagOf(ticket, AnswerLoad));
}

void MpvEngine::stop()
{
    send({"stop"}, AnswerNone);
    // An output stays open, the silent one as well: without this no later list would look for a sound device again.
    send({"ao-reload"}, AnswerNone);
}

void MpvEngine::setPaused(bool paused)
{
    if (!m_handle)
        return;
    int flag = paused ? 1 : 0;
    m_library->setPropertyAsync(m_handle, AnswerNone, "pause", MPV_FORMAT_FLAG, &flag);
}

void MpvEngine::seek(double seconds)
{
    sendSeek(QByteArray::number(seconds), "relative+exact");
}

void MpvEngine::seekTo(double seconds)
{
    sendSeek(QByteArray::number(seconds, 'f', 3), "absolute+exact");
}

void MpvEngine::sendSeek(const QByteArray& seconds, const QByteArray& manner)
{
    if (!m_handle)
        return;
    m_seek = Seek::Sent;
    send({"seek", seconds, manner}, tagOf(++m_lastSeek, AnswerSeek));
}

void MpvEngine::askData(quint64 ticket)
{
    if (!m_handle)
        return;
    m_library->getPropertyAsync(m_handle, tagOf(ticket, AnswerInfo), "metadata", MPV_FORMAT_NODE);
    m_library->getPropertyAsync(m_handle, tagOf(ticket, AnswerSeconds), "duration", MPV_FORMAT_DOUBLE);
}

void MpvEngine::askPlace(quint64 ticket)
{
    if (m_handle)
        m_library->getPropertyAsync(m_handle, tagOf(ticket, AnswerPlace), "time-pos", MPV_FORMAT_DOUBLE);
}

void MpvEngine::release()
{
    --m_holds;
    wake();
}

void MpvEngine::send(const QList<QByteArray>& command, quint64 tag)
{
    if (!m_handle)
        return;
    QList<const char*> words;
    for (const QByteArray& word : command)
        words.append(word.constData());
    words.append(nullptr);
    m_library->commandAsync(m_handle, tag, words.data());
}

/// Also runs in the threads of the library.
void MpvEngine::wake()
{
    if (!m_drainPosted.exchange(true))
        QMetaObject::invokeMethod(
            &m_receiver, [this] { drain(); }, Qt::QueuedConnection);
}

void MpvEngine::drain()
{
    m_drainPosted = false;
    while (m_handle && m_holds == 0) {
        const mpv_event* event = m_library->waitEvent(m_handle, 0);
        if (event->event_id == MPV_EVENT_NONE)
            return;
        hear(*event);
    }
}

void MpvEngine::hear(const mpv_event& event)
{
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
    case MPV_EVENT_GET_PROPERTY_REPLY:
        hearReply(event);
        break;
    case MPV_EVENT_START_FILE: {
        const auto& file = *static_cast<const mpv_event_start_file*>(event.data);
        m_seek = Seek::None;
        m_listener({.kind = MpvNews::Kind::Started, .entry = file.playlist_entry_id});
        break;
    }
    case MPV_EVENT_FILE_LOADED:
        m_listener({.kind = MpvNews::Kind::Loaded});
        break;
    case MPV_EVENT_SEEK:
        if (m_seek == Seek::Taken)
            m_seek = Seek::SetOut;
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        if (m_seek == Seek::SetOut)
            m_seek = Seek::None;
        m_listener({.kind = MpvNews::Kind::Sought, .onTheWay = m_seek != Seek::None});
        break;
    case MPV_EVENT_END_FILE: {
        const auto& file = *static_cast<const mpv_event_end_file*>(event.data);
        m_listener({.kind = MpvNews::Kind::Ended, .entry = file.playlist_entry_id});
        break;
    }
    case MPV_EVENT_PROPERTY_CHANGE: {
        const auto& property = *static_cast<const mpv_event_property*>(event.data);
        m_soundOutput =
            property.format == MPV_FORMAT_STRING ? QByteArray{*static_cast<char**>(property.data)} : QByteArray{};
        searchOutput();
        break;
    }
    case MPV_EVENT_SHUTDOWN:
        end();
        m_listener({.kind = MpvNews::Kind::Gone});
        break;
    default:
        break;
    }
}

void MpvEngine::hearReply(const mpv_event& event)
{
    const quint64 ticket = event.reply_userdata >> answerWidth;
    const bool done = event.error >= 0;
    switch (event.reply_userdata & answerBits) {
    case AnswerLoad:
        if (done)
            m_listener({.kind = MpvNews::Kind::Queued,
                        .ticket = ticket,
                        .entry = entryOf(static_cast<const mpv_event_command*>(event.data)->result)});
        break;
    case AnswerInfo: {
        m_info.clear();
        if (done)
            m_info = infoOf(*static_cast<const mpv_node*>(static_cast<const mpv_event_property*>(event.data)->data));
        break;
    }
    case AnswerSeconds: {
        MpvNews news{.kind = MpvNews::Kind::Data, .ticket = ticket, .info = m_info};
        if (done)
            news.seconds = *static_cast<const double*>(static_cast<const mpv_event_property*>(event.data)->data);
        m_listener(news);
        break;
    }
    case AnswerPlace:
        if (done)
            m_listener(
                {.kind = MpvNews::Kind::Place,
                 .ticket = ticket,
                 .seconds = *static_cast<const double*>(static_cast<const mpv_event_property*>(event.data)->data)});
        break;
    case AnswerSeek:
        if (ticket != m_lastSeek || m_seek != Seek::Sent)
            break;
        m_seek = done ? Seek::Taken : Seek::None;
        if (!done)
            m_listener({.kind = MpvNews::Kind::Sought});
        break;
    default:
        break;
    }
}

/// The silent output stays once it was fallen back to, though the server may be there again.
void MpvEngine::searchOutput()
{
    const bool asked = m_setup.options.contains({"ao", "null"});
    if (m_soundOutput != "null" || asked)
        m_outputSearch.stop();
    else if (!m_outputSearch.isActive())
        m_outputSearch.start();
}

void MpvEngine::end()
{
    m_outputSearch.stop();
    if (!m_handle)
        return;
    // The library calls back under the lock that this takes: afterwards no thread of it knows us any more.
    m_library->setWakeupCallback(m_handle, nullptr, nullptr);
    m_library->terminateDestroy(m_handle);
    m_handle = nullptr;
    m_soundOutput.clear();
}

} // namespace orvantine
