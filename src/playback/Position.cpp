#include "playback/Position.h"

#include "app/Root.h"
#include "playback/PlaybackState.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

std::optional<Position> positionOf(Root& root)
{
    MediaPlayer& player = root.services.mediaplayer;
    const double length = player.currentDuration();
    if (playbackStatus(root) == PlaybackStatus::Stopped || length <= 0)
        return std::nullopt;
    return Position{.seconds = std::clamp(player.currentPosition(), 0.0, length), .length = length};
}

void seekTo(Root& root, double seconds)
{
    if (!root.services.events.ended() && positionOf(root))
        root.services.mediaplayer.setCurrentPosition(seconds);
}

QString positionText(double seconds)
{
    constexpr int Minute = 60;
    constexpr int Hour = 60 * Minute;
    const auto whole = static_cast<int>(std::clamp(seconds, 0.0, 1e9));
    const auto two = [](int number) { return u"%1"_s.arg(number, 2, 10, QChar(u'0')); };
    const QString rest = u':' + two(whole % Minute);
    if (whole < Hour)
        return QString::number(whole / Minute) + rest;
    return QString::number(whole / Hour) + u':' + two(whole % Hour / Minute) + rest;
}

} // namespace orvantine
