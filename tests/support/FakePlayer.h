#pragma once

#include "platform/MediaPlayer.h"
#include "platform/PlaylistWalk.h"

#include <QHash>

namespace orvantine::fake {

/// A player without sound. It keeps the contract of the real one, except that all of it happens at once: `MediaChange`
/// is called from within the operation that chose the item. Time never passes by itself, so an item plays until one
/// of the `pretend…` functions says otherwise.
class FakePlayer final : public MediaPlayer
{
public:
    /// Takes down a call, "Mediaplayer.controls.play"; false makes that call do nothing.
    using Log = std::function<bool(const QString& line)>;

    /// `name` begins the lines of the log. Questions are not logged.
    explicit FakePlayer(
        Files& files, Log log = [](const QString&) { return true; }, QString name = QStringLiteral("Mediaplayer"));

    void setURL(const QString& path) override;
    [[nodiscard]] QString URL() const override { return m_url; }
    void close() override;
    [[nodiscard]] QString status() const override;
    [[nodiscard]] PlayState playState() const override { return m_state; }
    [[nodiscard]] bool heard() const override { return m_heard; }

    void play() override;
    void pause() override;
    void stop() override;
    void next() override;
    void previous() override;
    void fastForward() override;
    void fastReverse() override;

    [[nodiscard]] QString currentSourceURL() const override;
    [[nodiscard]] double currentDuration() const override;
    [[nodiscard]] double currentPosition() override { return known() && running() ? m_position : 0; }
    void setCurrentPosition(double seconds) override;
    [[nodiscard]] QString currentItemInfo(const QString& item) const override;

    [[nodiscard]] int playlistCount() const override { return int(m_entries.size()); }
    [[nodiscard]] QString playlistSourceURL(int item) const override;

    void newPlaylist(const QString& path, const QString& name) override;
    void newMedia(const QString& path) override;

    // What the engine would do by itself

    /// The current item plays, as if it had been opened or resumed.
    void pretendPlaying();
    void pretendPaused();
    /// The list is played to its end: the last item is the current one.
    void pretendEnded();
    /// The current item turns out to be broken: the one after it is chosen, or the list is over.
    void pretendFailed();
    /// So many seconds of the current item have been played.
    void pretendPosition(double seconds) { m_position = seconds; }
    /// The item before is over and this one (0-based) is chosen.
    void pretendItem(int item);

    // What the engine would read from the files: the same for every item, known once an item plays

    void setItemInfo(const QString& name, const QString& value);
    void setDuration(double seconds) { m_seconds = seconds; }

private:
    [[nodiscard]] bool call(const QString& line) const;
    [[nodiscard]] int playableFrom(int item, int step) const;
    void open(const QString& path);
    void forgetAll();
    void startAt(int item);
    void end();
    void choose(int item);
    [[nodiscard]] bool known() const;
    [[nodiscard]] bool running() const { return m_state == PlayState::Playing || m_state == PlayState::Paused; }
    void seek(double seconds);

    Files& m_files;
    Log m_log;
    QString m_name;
    QString m_url;
    QString m_playlist;
    QList<PlaylistEntry> m_entries;
    PlayState m_state = PlayState::Ready;
    bool m_loaded = false;
    bool m_heard = false;
    int m_current = -1;
    /// Counts what was chosen, so that a handler that chooses anew is noticed.
    int m_choice = 0;
    QHash<QString, QString> m_info;
    double m_seconds = 0;
    double m_position = 0;
};

} // namespace orvantine::fake
