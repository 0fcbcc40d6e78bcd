#pragma once

#include "desktop/media/MpvEngine.h"
#include "platform/MediaPlayer.h"
#include "platform/PlaylistWalk.h"

#include <QElapsedTimer>
#include <QObject>

#include <optional>

namespace orvantine {

/// The real player. It walks through a list itself: the engine only ever knows the item that plays and the one after
/// it, which it is told early, so that they follow one another without a gap. Its state is what was asked of it last;
/// news of the engine that belong to an earlier wish are dropped.
///
/// Items that are no regular files are passed over: that search looks at a few entries at a time and goes on from the
/// event loop, so that a long list of missing files neither holds up the window nor rushes through. At the end, and
/// where nothing could be played, the current item is the last one.
///
/// `MediaChange` and `PositionChange` are called from the event loop, never from within one of the
/// operations.
class MpvPlayer final : public MediaPlayer
{
public:
    /// The player library is loaded at the first playback. Without it nothing can be played.
    explicit MpvPlayer(Files& files, MpvSetup setup = {});

    void setURL(const QString& path) override;
    [[nodiscard]] QString URL() const override { return m_url; }
    void close() override;
    [[nodiscard]] QString status() const override;
    [[nodiscard]] PlayState playState() const override;
    [[nodiscard]] bool heard() const override { return m_heard; }

    /// Resumes; after a stop or at the end it starts with the first item.
    void play() override;
    void pause() override;
    /// Goes back to the first item.
    void stop() override;
    /// Nothing happens at the last item that can be played. A paused player plays on.
    void next() override;
    /// The first item starts anew. A paused player plays on.
    void previous() override;
    void fastForward() override;
    void fastReverse() override;

    [[nodiscard]] QString currentSourceURL() const override;
    [[nodiscard]] double currentDuration() const override { return m_seconds; }
    /// The engine is asked now and then; in between a clock goes on.
    [[nodiscard]] double currentPosition() override;
    void setCurrentPosition(double seconds) override;
    /// The names of items are found ignoring case.
    [[nodiscard]] QString currentItemInfo(const QString& item) const override;

    [[nodiscard]] int playlistCount() const override { return int(m_entries.size()); }
    [[nodiscard]] QString playlistSourceURL(int item) const override;

    void newPlaylist(const QString& path, const QString& name) override;
    void newMedia(const QString& path) override;

    /// Name of the sound output in use, "null" for the silent one; "" while none is open.
    [[nodiscard]] QByteArray soundOutput() const { return m_engine.soundOutput(); }

private:
    enum class State { Closed, Playing, Paused, Ended };
    enum class Purpose {
        Play,   ///< play the item found; without one the list is over
        Follow, ///< append the item found
        Next,   ///< play the item found; without one what plays goes on
        Back,   ///< play the item found; without one start the current item anew
    };

    /// A search for an item that can be played.
    struct Search
    {
        Purpose purpose;
        int item;
    };

    /// A file that the engine was handed.
    struct Handed
    {
        quint64 ticket;
        int item;
        /// 0 until the engine has taken it.
        qint64 entry = 0;
        bool started = false;
        /// Its item is the current one, and that was told.
        bool chosen = false;
    };

    void search(Purpose purpose, int from);
    void searchOn();
    void postSearch();
    void found(Purpose purpose, int item, const QByteArray& file);
    void notFound(Purpose purpose);
    void playFile(int item, const QByteArray& file);
    void finish();
    void choose(int item);
    void forgetWork();
    void forgetData();

    void hear(const MpvNews& news);
    void hearStarted(qint64 entry);
    void hearEnded(qint64 entry);
    void tellData();
    void postMediaChange();
    void hearPlace(const MpvNews& news);
    void seek(double seconds);
    /// The place is this one from now on.
    void setPlace(double seconds);
    [[nodiscard]] double reckonedPlace() const;
    void askPlace();
    [[nodiscard]] bool running() const { return m_state == State::Playing || m_state == State::Paused; }

    Files& m_files;
    MpvEngine m_engine;
    QString m_url;
    /// Known to be a list, whatever its ending.
    QString m_playlist;
    QList<PlaylistEntry> m_entries;
    State m_state = State::Closed;
    /// 0-based; -1 without one.
    int m_current = -1;
    bool m_loaded = false;
    bool m_heard = false;
    bool m_dataTold = false;
    QHash<QString, QString> m_info;
    double m_seconds = 0;
    /// The second that was heard when `m_placeAge` began; that one is invalid while nothing is known.
    double m_place = 0;
    QElapsedTimer m_placeAge;
    /// The question whose answer is waited for; those to earlier ones are void.
    quint64 m_question = 0;
    bool m_placeAsked = false;
    /// Paused at a place that was sought: it stands, for the engine tells one that is up to seconds off until it plays.
    bool m_placeChosen = false;
    /// A place was sought, and that was not told yet.
    bool m_seeking = false;
    /// What is answered now is of that place or behind it.
    bool m_arrived = false;
    QElapsedTimer m_seekAge;

    /// What the engine has in hand, the file that plays first: two at most.
    QList<Handed> m_handed;
    quint64 m_lastTicket = 0;
    std::optional<Search> m_search;
    bool m_searchPosted = false;
    /// Counts the wishes; a `MediaChange` that was posted for an earlier one is void.
    quint64 m_wish = 0;
    /// Receives what is posted; what waits is dropped with it.
    QObject m_receiver;
};

} // namespace orvantine
