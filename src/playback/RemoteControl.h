#pragma once

#include "platform/Bindings.h"
#include "playback/Sequence.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace orvantine {

struct Root;

/// The title that plays or is paused.
struct PlayedTrack
{
    /// Its text in the playlist.
    QString source;
    QString title, artist, album;
    /// The host's bytes of the file's path; empty for a file that is not there.
    QByteArray file;
    /// The same of the cover of the playlist that plays; empty for none.
    QByteArray cover;
    /// 0 while unknown.
    qint64 microseconds = 0;
};

struct KnownPlaylist
{
    /// Letters, digits and "_"; the same for the same list wherever its row stands.
    QString id;
    QString name;

    bool operator==(const KnownPlaylist&) const = default;
};

/// What a remote control sees of the program and may ask of it. It reads the controls of the main window and presses
/// them, as a user would: what is disabled cannot be pressed, and nothing can while a box is open or a long command
/// works. A wish that is not to be had now changes nothing and gives false.
class RemoteControl
{
public:
    /// `boxOpen` tells whether a modal window waits for the user.
    RemoteControl(Root& root, std::function<bool()> boxOpen);
    ~RemoteControl();
    RemoteControl(const RemoteControl&) = delete;
    RemoteControl& operator=(const RemoteControl&) = delete;

    // What is seen

    [[nodiscard]] PlaybackStatus status() const;
    /// Nothing while nothing runs.
    [[nodiscard]] std::optional<PlayedTrack> track() const;
    /// False for a title whose data is still to come: what is told of it now changes within a moment.
    [[nodiscard]] bool titleKnown() const;
    [[nodiscard]] bool canPlay() const;
    [[nodiscard]] bool canPause() const;
    /// Single tracks have neither a next nor a previous one.
    [[nodiscard]] bool canSkip() const;
    [[nodiscard]] bool canSeek() const;
    /// Microseconds into the title; 0 while nothing runs.
    [[nodiscard]] qint64 position() const;
    /// 1 playlist, 2 track, 3 none.
    [[nodiscard]] int repeatMode() const;
    /// 0 to 1, in the steps of the slider.
    [[nodiscard]] double volume() const;
    /// Picks up a level that was set elsewhere, once a second at most.
    void lookAtVolume();
    [[nodiscard]] const QList<KnownPlaylist>& playlists() const;
    /// The list that plays.
    [[nodiscard]] std::optional<KnownPlaylist> activePlaylist() const;

    // What is asked

    bool play();
    bool pause();
    bool playPause();
    bool stop();
    bool next();
    bool previous();
    /// Moves on by so many microseconds, back for less than 0. Behind the end lies the next title.
    bool seek(qint64 offset);
    /// A place that the title does not have changes nothing.
    bool setPosition(qint64 microseconds);
    bool setRepeatMode(int mode);
    /// A change that is less than half a step of the slider moves it by one step nevertheless, unless it is tiny.
    bool setVolume(double level);
    /// Selects the playlist's row and double clicks it.
    bool activate(const QString& id);
    bool raise();
    bool quit();

    /// Something that is seen may have changed. Called often, from within handlers: to be taken as a hint to look.
    std::function<void()> Changed = [] {};
    /// The position has been moved within the title, by whatever hand.
    std::function<void()> Sought = [] {};

private:
    [[nodiscard]] bool free() const;
    [[nodiscard]] bool running() const;
    [[nodiscard]] int rowOf(const QString& id) const;
    void watch();
    void changed() const { Changed(); }

    Root& m_root;
    std::function<bool()> m_boxOpen;
    Bindings m_bindings;
    /// Receives the news of the catalogue's model.
    QObject m_receiver;
    /// What these did before something was added to them.
    std::function<void()> m_tick;
    std::function<void()> m_mediaChange;
    std::function<void()> m_positionChange;
    /// Looked up once for each title: the cover is to be found on the disk.
    mutable QString m_knownSource;
    mutable QByteArray m_file;
    mutable QByteArray m_cover;
    mutable bool m_filesKnown = false;
    mutable std::optional<QList<KnownPlaylist>> m_playlists;
    QDateTime m_volumeSeen;
    /// The player tells of each title twice, the second time with its data.
    QString m_changedSource;
    bool m_titleKnown = false;
};

} // namespace orvantine
