#pragma once

#include <QString>

#include <functional>

namespace orvantine {

enum class PlayState : int { Stopped = 1, Paused = 2, Playing = 3, Ready = 10 };

/// The player component. It is handed a playlist file or a single track and walks through the list by itself.
///
/// `status` is "Angehalten" exactly while paused, "Beendet" when stopped or at the end, another German text while
/// playing or opening, "" after close. A file that cannot be played is skipped; a whole round of failures stops.
/// Without a sound device playing goes to a silent output at real speed.
class MediaPlayer
{
public:
    virtual ~MediaPlayer() = default;

    /// Opens a playlist file or a track and starts it. What cannot be opened gives no message.
    virtual void setURL(const QString& path) = 0;
    [[nodiscard]] virtual QString URL() const = 0;
    virtual void close() = 0;
    [[nodiscard]] virtual QString status() const = 0;
    [[nodiscard]] virtual PlayState playState() const = 0;
    /// Something of the present URL was really played; false where nothing of it could be, and after close.
    [[nodiscard]] virtual bool heard() const = 0;

    // controls
    virtual void play() = 0;
    virtual void pause() = 0;
    virtual void stop() = 0;
    virtual void next() = 0;
    virtual void previous() = 0;
    /// Seeks 10 seconds ahead.
    virtual void fastForward() = 0;
    /// Seeks 10 seconds back.
    virtual void fastReverse() = 0;

    // currentMedia
    /// Text of the current item as its row has it; "" without one.
    [[nodiscard]] virtual QString currentSourceURL() const = 0;
    /// Seconds; 0 while unknown.
    [[nodiscard]] virtual double currentDuration() const = 0;
    /// Seconds into the current item; 0 while none plays or is paused.
    [[nodiscard]] virtual double currentPosition() = 0;
    /// Goes to that second of the current item, at the latest to its end, where the list goes on. A paused player stays
    /// paused. Nothing happens while the item's length is unknown.
    virtual void setCurrentPosition(double seconds) = 0;
    /// "Artist", "Title" …; "" for a missing item.
    [[nodiscard]] virtual QString currentItemInfo(const QString& item) const = 0;

    // currentPlaylist
    [[nodiscard]] virtual int playlistCount() const = 0;
    /// 0-based; "" beyond the end.
    [[nodiscard]] virtual QString playlistSourceURL(int item) const = 0;

    /// The file of that path is a list, whatever its ending, when it is opened next.
    virtual void newPlaylist(const QString& path, const QString& name) = 0;
    /// The path that is opened next is that of a track.
    virtual void newMedia(const QString& path) = 0;

    /// Called twice a track: when the item is chosen, and when its data is known.
    std::function<void()> MediaChange = [] {};
    /// Called when the position has been moved within the current item.
    std::function<void()> PositionChange = [] {};
};

} // namespace orvantine
