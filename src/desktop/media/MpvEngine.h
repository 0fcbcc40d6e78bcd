#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

struct mpv_event;
struct mpv_handle;

namespace orvantine {

class MpvLibrary;

struct MpvSetup
{
    QString library = QStringLiteral("libmpv.so.2");
    /// Name and value; set after the player's own options, so that they win.
    QList<std::pair<QByteArray, QByteArray>> options;
};

/// What the engine tells. `ticket` is the number that the caller gave with its request, `entry` the engine's own
/// number of a file, known from `Queued` on.
struct MpvNews
{
    enum class Kind {
        Queued,  ///< a file was taken: ticket, entry
        Started, ///< entry is being opened
        Loaded,  ///< the entry that started last can be played
        Data,    ///< answer to askData: ticket, info, seconds
        Sought,  ///< what plays does so from its start on, or from a place that was sought: onTheWay
        Place,   ///< answer to askPlace: ticket, seconds
        Ended,   ///< entry is over, played to its end or broken
        Gone,    ///< the engine ended by itself
    };
    Kind kind = Kind::Gone;
    quint64 ticket = 0;
    qint64 entry = 0;
    /// Keys in lower case.
    QHash<QString, QString> info;
    double seconds = 0;
    /// A later seek is on its way to its place yet.
    bool onTheWay = false;
};

/// One handle of the player library, made at the first `start`. Requests never wait: they are sent, and what comes of
/// them arrives as news in the thread that made the engine, from its event loop, nested ones included.
class MpvEngine
{
public:
    MpvEngine(MpvSetup setup, std::function<void(const MpvNews&)> listener);
    ~MpvEngine();
    MpvEngine(const MpvEngine&) = delete;
    MpvEngine& operator=(const MpvEngine&) = delete;

    /// Makes the handle if there is none; false if nothing can be played on this machine.
    bool start();

    /// The requests below do nothing before a `start`.

    /// Plays `file` in the place of everything else.
    void load(const QByteArray& file, quint64 ticket);
    /// Plays `file` after what is playing without a gap, at once if nothing is.
    void append(const QByteArray& file, quint64 ticket);
    void stop();
    void setPaused(bool paused);
    /// By so many seconds.
    void seek(double seconds);
    /// To that second.
    void seekTo(double seconds);
    /// Asks for the tags and the length of what is playing.
    void askData(quint64 ticket);
    /// Asks for the second that is heard; without one there is no answer.
    void askPlace(quint64 ticket);

    /// No news come until as many `release` as `hold` were called.
    void hold() { ++m_holds; }
    void release();

    /// Name of the sound output in use, "null" for the silent one; "" while none is open.
    [[nodiscard]] QByteArray soundOutput() const { return m_soundOutput; }

private:
    void send(const QList<QByteArray>& command, quint64 tag);
    void wake();
    void drain();
    void hear(const mpv_event& event);
    void hearReply(const mpv_event& event);
    void sendSeek(const QByteArray& seconds, const QByteArray& manner);
    void searchOutput();
    void end();

    MpvSetup m_setup;
    std::function<void(const MpvNews&)> m_listener;
    std::unique_ptr<MpvLibrary> m_library;
    mpv_handle* m_handle = nullptr;
    std::atomic<bool> m_drainPosted{false};
    int m_holds = 0;
    QHash<QString, QString> m_info;
    /// How far the last seek has come. Restarts before it set out are those of others.
    enum class Seek { None, Sent, Taken, SetOut } m_seek = Seek::None;
    quint64 m_lastSeek = 0;
    QByteArray m_soundOutput;
    /// While the silent output stands in for another one, that is looked for again and again.
    QTimer m_outputSearch;
    /// Receives what is posted from the engine's threads; what waits is dropped with it.
    QObject m_receiver;
};

} // namespace orvantine
