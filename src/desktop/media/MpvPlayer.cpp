#include "desktop/media/MpvPlayer.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace orvantine {

namespace {

constexpr double seekSeconds = 10;
constexpr std::chrono::milliseconds longestSeek{3'000};

/// A search gives way to the event loop after so many entries, or so much time if a look-up is slow.
constexpr int searchEntries = 64;
constexpr std::chrono::milliseconds searchTime{8};

/// The engine is asked where it is if its last answer is older.
constexpr std::chrono::milliseconds placeAge{3000};

} // namespace

MpvPlayer::MpvPlayer(Files& files, MpvSetup setup)
    : m_files{files}, m_engine{std::move(setup), [this](const MpvNews& news) { hear(news); }}
{
}

void MpvPlayer::setURL(const QString& path)
{
    close();
    if (path.isEmpty())
        return;

    m_url = path;
    m_entries = entriesToPlay(m_files, path, m_playlist);
    m_state = State::Ended;
    play();
}

void MpvPlayer::close()
{
    ++m_wish;
    forgetWork();
    m_engine.stop();
    m_url.clear();
    m_entries.clear();
    m_current = -1;
    m_heard = false;
    m_state = State::Closed;
}

QString MpvPlayer::status() const
{
    switch (m_state) {
    case State::Closed:
        return {};
    case State::Playing:
        return m_loaded ? u"Wiedergabe"_s : u"Wird geöffnet"_s;
    case State::Paused:
        return u"Angehalten"_s;
    case State::Ended:
        return u"Beendet"_s;
    }
    return {};
}

PlayState MpvPlayer::playState() const
{
    switch (m_state) {
    case State::Closed:
        return PlayState::Ready;
    case State::Playing:
        return PlayState::Playing;
    case State::Paused:
        return PlayState::Paused;
    case State::Ended:
        return PlayState::Stopped;
    }
    return PlayState::Ready;
}

void MpvPlayer::play()
{
    if (m_state == State::Paused) {
        if (m_placeAge.isValid())
            setPlace(reckonedPlace());
        m_placeChosen = false;
        m_state = State::Playing;
        m_engine.setPaused(false);
    } else if (m_state == State::Ended) {
        forgetWork();
        m_state = State::Playing;
        m_current = m_entries.isEmpty() ? -1 : 0;
        search(Purpose::Play, 0);
    }
}

void MpvPlayer::pause()
{
    if (m_state != State::Playing)
        return;
    if (m_placeAge.isValid())
        setPlace(reckonedPlace());
    m_state = State::Paused;
    m_engine.setPaused(true);
    askPlace();
}

void MpvPlayer::stop()
{
    if (m_state == State::Closed)
        return;
    ++m_wish;
    forgetWork();
    m_engine.stop();
    m_current = m_entries.isEmpty() ? -1 : 0;
    m_state = State::Ended;
}

void MpvPlayer::next()
{
    if (m_state == State::Closed)
        return;
    int from = m_current + 1;
    if (m_handed.size() > 1)
        from = m_handed.back().item;
    else if (m_search && m_search->purpose != Purpose::Back)
        from = m_search->item;
    search(Purpose::Next, from);
}

void MpvPlayer::previous()
{
    if (m_state == State::Closed)
        return;
    search(Purpose::Back, m_current - 1);
}

void MpvPlayer::fastForward()
{
    seek(seekSeconds);
}

void MpvPlayer::fastReverse()
{
    seek(-seekSeconds);
}

QString MpvPlayer::currentSourceURL() const
{
    return playlistSourceURL(m_current);
}

double MpvPlayer::currentPosition()
{
    if (!running() || !m_loaded)
        return 0;
    if (!m_placeAge.isValid() || m_placeAge.hasExpired(placeAge.count()))
        askPlace();
    return m_placeAge.isValid() ? reckonedPlace() : 0;
}

void MpvPlayer::setCurrentPosition(double seconds)
{
    if (!running() || !m_loaded || m_seconds <= 0)
        return;
    const double place = std::clamp(seconds, 0.0, m_seconds);
    setPlace(place);
    m_placeChosen = m_state == State::Paused;
    m_seeking = true;
    m_arrived = false;
    m_seekAge.start();
    m_engine.seekTo(place);
}

QString MpvPlayer::currentItemInfo(const QString& item) const
{
    return m_info.value(item.toLower());
}

QString MpvPlayer::playlistSourceURL(int item) const
{
    return m_entries.value(item).sourceURL;
}

void MpvPlayer::newPlaylist(const QString& path, const QString& /*name*/)
{
    m_playlist = path;
}

void MpvPlayer::newMedia(const QString& /*path*/)
{
    m_playlist.clear();
}

void MpvPlayer::search(Purpose purpose, int from)
{
    m_search = Search{.purpose = purpose, .item = from};
    searchOn();
}

void MpvPlayer::searchOn()
{
    QElapsedTimer timer;
    timer.start();
    for (int looked = 0; looked < searchEntries && timer.elapsed() < searchTime.count(); ++looked) {
        const auto [purpose, item] = *m_search;
        if (item < 0 || item >= m_entries.size()) {
            m_search.reset();
            notFound(purpose);
            return;
        }
        const PlaylistEntry& entry = m_entries[item];
        const std::optional<QByteArray> file =
            isPlayable(m_files, entry) ? m_files.nativePath(entry.path) : std::nullopt;
        if (file) {
            m_search.reset();
            found(purpose, item, *file);
            return;
        }
        m_search->item += purpose == Purpose::Back ? -1 : 1;
    }
    postSearch();
}

void MpvPlayer::postSearch()
{
    if (std::exchange(m_searchPosted, true))
        return;
    QMetaObject::invokeMethod(
        &m_receiver,
        [this] {
            m_searchPosted = false;
            if (m_search)
                searchOn();
        },
        Qt::QueuedConnection);
}

void MpvPlayer::found(Purpose purpose, int item, const QByteArray& file)
{
    switch (purpose) {
    case Purpose::Follow:
        m_handed.append({.ticket = ++m_lastTicket, .item = item});
        m_engine.append(file, m_lastTicket);
        break;
    case Purpose::Play:
        playFile(item, file);
        break;
    case Purpose::Next:
    case Purpose::Back:
        m_state = State::Playing;
        playFile(item, file);
        break;
    }
}

void MpvPlayer::notFound(Purpose purpose)
{
    switch (purpose) {
    case Purpose::Play:
        finish();
        break;
    case Purpose::Follow:
    case Purpose::Next:
        if (running() && m_handed.isEmpty())
            finish();
        break;
    case Purpose::Back:
        m_state = State::Playing;
        search(Purpose::Play, std::max(m_current, 0));
        break;
    }
}

/// A player that was paused while it searched stays paused.
void MpvPlayer::playFile(int item, const QByteArray& file)
{
    ++m_wish;
    forgetWork();
    if (!m_engine.start()) {
        finish();
        return;
    }
    m_handed.append({.ticket = ++m_lastTicket, .item = item, .chosen = true});
    m_engine.setPaused(m_state == State::Paused);
    m_engine.load(file, m_lastTicket);
    choose(item);
}

void MpvPlayer::finish()
{
    m_search.reset();
    m_handed.clear();
    const int last = int(m_entries.size()) - 1;
    if (m_current != last)
        forgetData();
    m_current = last;
    m_state = State::Ended;
}

void MpvPlayer::choose(int item)
{
    forgetData();
    m_current = item;
    postMediaChange();
}

void MpvPlayer::forgetWork()
{
    m_search.reset();
    m_handed.clear();
    forgetData();
}

void MpvPlayer::forgetData()
{
    m_loaded = false;
    m_dataTold = false;
    m_info.clear();
    m_seconds = 0;
    m_place = 0;
    m_placeAge.invalidate();
    m_placeAsked = false;
    m_placeChosen = false;
    m_seeking = false;
    ++m_question;
}

void MpvPlayer::hear(const MpvNews& news)
{
    switch (news.kind) {
    case MpvNews::Kind::Queued:
        for (Handed& handed : m_handed)
            if (handed.ticket == news.ticket)
                handed.entry = news.entry;
        break;
    case MpvNews::Kind::Started:
        hearStarted(news.entry);
        break;
    case MpvNews::Kind::Loaded:
        if (!m_handed.isEmpty() && m_handed.front().started) {
            m_loaded = true;
            m_heard = true;
            m_engine.askData(m_handed.front().ticket);
        }
        break;
    case MpvNews::Kind::Data:
        if (!m_handed.isEmpty() && m_handed.front().ticket == news.ticket && !m_dataTold) {
            m_info = news.info;
            m_seconds = news.seconds;
            tellData();
        }
        break;
    case MpvNews::Kind::Sought:
        // What was answered before is a place that was left.
        m_placeAsked = false;
        m_arrived = m_seeking && !news.onTheWay;
        askPlace();
        break;
    case MpvNews::Kind::Place:
        hearPlace(news);
        break;
    case MpvNews::Kind::Ended:
        hearEnded(news.entry);
        break;
    case MpvNews::Kind::Gone:
        if (running())
            finish();
        break;
    }
}

void MpvPlayer::hearStarted(qint64 entry)
{
    const auto isEntry = [entry](const Handed& handed) { return handed.entry == entry; };
    const auto started = std::find_if(m_handed.begin(), m_handed.end(), isEntry);
    if (started == m_handed.end())
        return;
    m_handed.erase(m_handed.begin(), started);

    Handed& playing = m_handed.front();
    playing.started = true;
    if (!std::exchange(playing.chosen, true))
        choose(playing.item);
    if (!m_search)
        search(Purpose::Follow, m_current + 1);
}

/// The engine goes on by itself to a file that it has in hand already.
void MpvPlayer::hearEnded(qint64 entry)
{
    if (m_handed.isEmpty() || m_handed.front().entry != entry)
        return;
    if (m_loaded && !m_dataTold) {
        // A very short file is over before its data came: it stays the current one until its second call was made.
        tellData();
        QMetaObject::invokeMethod(
            &m_receiver, [this, entry] { hearEnded(entry); }, Qt::QueuedConnection);
        return;
    }
    m_handed.removeFirst();
    if (m_handed.isEmpty() && !m_search)
        finish();
}

void MpvPlayer::tellData()
{
    if (!std::exchange(m_dataTold, true))
        postMediaChange();
}

/// The engine keeps its news until the call is made, so that the handler finds what the call is about.
void MpvPlayer::postMediaChange()
{
    m_engine.hold();
    QMetaObject::invokeMethod(
        &m_receiver,
        [this, wish = m_wish] {
            m_engine.release();
            const std::function<void()> handler = MediaChange;
            if (wish == m_wish && handler)
                handler();
        },
        Qt::QueuedConnection);
}

void MpvPlayer::hearPlace(const MpvNews& news)
{
    if (news.ticket != m_question || !running() || !m_loaded)
        return;
    m_placeAsked = false;
    // One that never sets out, in what cannot be sought in, is not waited for.
    if (m_seeking && !m_arrived && !m_seekAge.hasExpired(longestSeek.count()))
        return;
    if (!m_placeChosen)
        m_place = news.seconds;
    m_placeAge.start();
    if (!std::exchange(m_seeking, false))
        return;
    QMetaObject::invokeMethod(
        &m_receiver,
        [this, wish = m_wish] {
            const std::function<void()> handler = PositionChange;
            if (wish == m_wish && handler)
                handler();
        },
        Qt::QueuedConnection);
}

void MpvPlayer::seek(double seconds)
{
    if (!running() || !m_loaded)
        return;
    if (m_placeAge.isValid() && m_seconds > 0) {
        setCurrentPosition(reckonedPlace() + seconds);
        return;
    }
    m_seeking = true;
    m_arrived = false;
    m_seekAge.start();
    m_engine.seek(seconds);
}

void MpvPlayer::setPlace(double seconds)
{
    m_place = seconds;
    m_placeAge.start();
    m_placeAsked = false;
    ++m_question;
}

double MpvPlayer::reckonedPlace() const
{
    const double since = m_state == State::Playing ? static_cast<double>(m_placeAge.elapsed()) / 1000 : 0;
    return m_seconds > 0 ? std::min(m_place + since, m_seconds) : m_place + since;
}

void MpvPlayer::askPlace()
{
    if (!std::exchange(m_placeAsked, true))
        m_engine.askPlace(++m_question);
}

} // namespace orvantine
