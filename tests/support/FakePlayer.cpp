#include "support/FakePlayer.h"

#include <algorithm>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

FakePlayer::FakePlayer(Files& files, Log log, QString name)
    : m_files{files}, m_log{std::move(log)}, m_name{std::move(name)}
{
}

void FakePlayer::setURL(const QString& path)
{
    if (call(u".URL = "_s + path))
        open(path);
}

void FakePlayer::close()
{
    if (call(u".close"_s))
        forgetAll();
}

QString FakePlayer::status() const
{
    switch (m_state) {
    case PlayState::Stopped:
        return u"Beendet"_s;
    case PlayState::Paused:
        return u"Angehalten"_s;
    case PlayState::Playing:
        return m_loaded ? u"Wiedergabe"_s : u"Wird geöffnet"_s;
    case PlayState::Ready:
        return {};
    }
    return {};
}

void FakePlayer::play()
{
    if (!call(u".controls.play"_s))
        return;
    if (m_state == PlayState::Paused)
        m_state = PlayState::Playing;
    else if (m_state == PlayState::Stopped)
        startAt(playableFrom(0, 1));
}

void FakePlayer::pause()
{
    if (call(u".controls.pause"_s) && m_state == PlayState::Playing)
        m_state = PlayState::Paused;
}

void FakePlayer::stop()
{
    if (!call(u".controls.stop"_s) || m_state == PlayState::Ready)
        return;
    ++m_choice;
    m_current = m_entries.isEmpty() ? -1 : 0;
    m_loaded = false;
    m_state = PlayState::Stopped;
}

void FakePlayer::next()
{
    if (!call(u".controls.next"_s) || m_state == PlayState::Ready)
        return;
    if (const int item = playableFrom(m_current + 1, 1); item >= 0)
        startAt(item);
}

void FakePlayer::previous()
{
    if (!call(u".controls.previous"_s) || m_state == PlayState::Ready)
        return;
    const int before = playableFrom(m_current - 1, -1);
    startAt(before >= 0 ? before : playableFrom(std::max(m_current, 0), 1));
}

void FakePlayer::fastForward()
{
    if (call(u".controls.fastForward"_s))
        seek(m_position + 10);
}

void FakePlayer::fastReverse()
{
    if (call(u".controls.fastReverse"_s))
        seek(m_position - 10);
}

QString FakePlayer::currentSourceURL() const
{
    return playlistSourceURL(m_current);
}

double FakePlayer::currentDuration() const
{
    return known() ? m_seconds : 0;
}

void FakePlayer::setCurrentPosition(double seconds)
{
    if (call(u".controls.currentPosition = %1"_s.arg(seconds)))
        seek(seconds);
}

QString FakePlayer::currentItemInfo(const QString& item) const
{
    return known() ? m_info.value(item.toLower()) : QString{};
}

QString FakePlayer::playlistSourceURL(int item) const
{
    return m_entries.value(item).sourceURL;
}

void FakePlayer::newPlaylist(const QString& path, const QString& name)
{
    if (call(u".newPlaylist(%1, %2)"_s.arg(path, name)))
        m_playlist = path;
}

void FakePlayer::newMedia(const QString& path)
{
    if (call(u".newMedia(%1)"_s.arg(path)))
        m_playlist.clear();
}

void FakePlayer::pretendPlaying()
{
    m_loaded = true;
    m_heard = true;
    m_state = PlayState::Playing;
}

void FakePlayer::pretendPaused()
{
    m_state = PlayState::Paused;
}

void FakePlayer::pretendEnded()
{
    end();
}

void FakePlayer::pretendFailed()
{
    startAt(playableFrom(m_current + 1, 1));
}

void FakePlayer::pretendItem(int item)
{
    startAt(item);
}

void FakePlayer::setItemInfo(const QString& name, const QString& value)
{
    m_info.insert(name.toLower(), value);
}

bool FakePlayer::call(const QString& line) const
{
    return m_log(m_name + line);
}

/// -1 without one.
int FakePlayer::playableFrom(int item, int step) const
{
    while (item >= 0 && item < playlistCount() && !isPlayable(m_files, m_entries[item]))
        item += step;
    return item < playlistCount() ? item : -1;
}

void FakePlayer::open(const QString& path)
{
    forgetAll();
    if (path.isEmpty())
        return;
    m_url = path;
    m_entries = entriesToPlay(m_files, path, m_playlist);
    startAt(playableFrom(0, 1));
}

void FakePlayer::forgetAll()
{
    ++m_choice;
    m_url.clear();
    m_entries.clear();
    m_current = -1;
    m_loaded = false;
    m_heard = false;
    m_state = PlayState::Ready;
}

/// Ends the list for -1.
void FakePlayer::startAt(int item)
{
    m_state = PlayState::Playing;
    if (item < 0)
        end();
    else
        choose(item);
}

void FakePlayer::end()
{
    ++m_choice;
    m_loaded = m_loaded && m_current == playlistCount() - 1;
    m_current = playlistCount() - 1;
    m_state = PlayState::Stopped;
}

void FakePlayer::choose(int item)
{
    const int choice = ++m_choice;
    m_current = item;
    m_loaded = false;
    m_position = 0;
    MediaChange();
    if (choice != m_choice)
        return;
    m_loaded = true;
    m_heard = true;
    MediaChange();
}

/// At its end a playing item gives way to the one after it.
void FakePlayer::seek(double seconds)
{
    if (!known() || !running() || m_seconds <= 0)
        return;
    m_position = std::clamp(seconds, 0.0, m_seconds);
    if (m_position >= m_seconds && m_state == PlayState::Playing)
        pretendFailed();
    else
        PositionChange();
}

bool FakePlayer::known() const
{
    return m_current >= 0 && m_loaded;
}

} // namespace orvantine::fake
