#include "desktop/sound/PulseSound.h"

#include "desktop/sound/PulseConnection.h"
#include "desktop/sound/WaveImage.h"

#include <algorithm>
#include <atomic>
#include <thread>

namespace orvantine {

using namespace std::chrono_literals;

namespace {

/// What the server may take beyond the sound's own length.
constexpr auto Margin = 500ms;
/// How much of the sound is at the server in advance.
constexpr auto Ahead = 100ms;
/// How soon a sound that is to end does so.
constexpr auto LookAgain = 20ms;

pa_sample_format formatOf(WaveImage::Format format)
{
    switch (format) {
    case WaveImage::Format::Unsigned8:
        return PA_SAMPLE_U8;
    case WaveImage::Format::Signed16:
        return PA_SAMPLE_S16LE;
    case WaveImage::Format::Signed24:
        return PA_SAMPLE_S24LE;
    case WaveImage::Format::Signed32:
        return PA_SAMPLE_S32LE;
    case WaveImage::Format::Float32:
        break;
    }
    return PA_SAMPLE_FLOAT32LE;
}

/// One sound on its way to the server.
class Playback
{
public:
    Playback(const PulseLibrary& library, PulseConnection& connection, const WaveImage& image,
             const std::atomic<bool>& ended)
        : m_pulse(library),
          m_connection(connection),
          m_image(image),
          m_ended(ended),
          m_end(std::chrono::steady_clock::now() + image.length() + Margin)
    {
    }
    ~Playback()
    {
        if (!m_stream)
            return;
        m_pulse.streamDisconnect(m_stream);
        m_pulse.streamUnref(m_stream);
    }
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;

    void run()
    {
        if (!connect())
            return;
        while (!m_rest.isEmpty())
            if (!waitUntil([this] { return writable() > 0; }) || !write())
                return;
        drain();
    }

private:
    bool connect()
    {
        const pa_sample_spec samples{formatOf(m_image.format), static_cast<quint32>(m_image.samplesPerSecond),
                                     static_cast<quint8>(m_image.channels)};
        m_stream = m_pulse.streamNew(m_connection.context(), "Orvanten Manager", &samples, nullptr);
        if (!m_stream)
            return false;
        constexpr auto ServersChoice = static_cast<quint32>(-1);
        const auto ahead =
            static_cast<quint32>(m_image.bytesPerFrame() * m_image.samplesPerSecond * Ahead.count() / 1000);
        const pa_buffer_attr buffer{ServersChoice, ahead, ServersChoice, ServersChoice, ServersChoice};
        if (m_pulse.streamConnectPlayback(m_stream, nullptr, &buffer, PA_STREAM_ADJUST_LATENCY, nullptr, nullptr) < 0)
            return false;
        return waitUntil([this] { return m_pulse.streamGetState(m_stream) == PA_STREAM_READY; });
    }

    [[nodiscard]] size_t writable() const
    {
        const size_t size = m_pulse.streamWritableSize(m_stream);
        return size == static_cast<size_t>(-1) ? 0 : size;
    }

    bool write()
    {
        const qsizetype frame = m_image.bytesPerFrame();
        qsizetype size = std::min(static_cast<qsizetype>(writable()), m_rest.size());
        // The end of a frame, or at least one.
        size = std::max(size - size % frame, frame);
        if (m_pulse.streamWrite(m_stream, m_rest.data(), static_cast<size_t>(size), nullptr, 0, PA_SEEK_RELATIVE) < 0)
            return false;
        m_rest = m_rest.sliced(size);
        return true;
    }

    void drain()
    {
        bool done = false;
        pa_operation* const request = m_pulse.streamDrain(
            m_stream, [](pa_stream*, int, void* told) { *static_cast<bool*>(told) = true; }, &done);
        if (!request)
            return;
        waitUntil([&done] { return done; });
        m_pulse.operationCancel(request);
        m_pulse.operationUnref(request);
    }

    /// False if the sound is to end, is over its time or has lost its stream.
    bool waitUntil(const std::function<bool()>& holds)
    {
        while (!m_ended && std::chrono::steady_clock::now() < m_end && m_connection.alive() &&
               PA_STREAM_IS_GOOD(m_pulse.streamGetState(m_stream)))
            if (m_connection.wait(holds, LookAgain))
                return true;
        return false;
    }

    const PulseLibrary& m_pulse;
    PulseConnection& m_connection;
    const WaveImage& m_image;
    const std::atomic<bool>& m_ended;
    std::chrono::steady_clock::time_point m_end;
    QByteArrayView m_rest = m_image.samples;
    pa_stream* m_stream = nullptr;
};

void playTo(const PulseLibrary& library, const QByteArray& wave, const std::atomic<bool>& ended)
{
    const auto image = readWaveImage(wave);
    if (!image || image->samples.isEmpty())
        return;
    PulseConnection connection(library);
    if (connection.open())
        Playback(library, connection, *image, ended).run();
}

} // namespace

/// A sound that plays while the program goes on.
class PulsePlayback
{
public:
    PulsePlayback(const PulseLibrary& library, const QByteArray& wave)
        : m_thread([this, &library, wave] { playTo(library, wave, m_ended); })
    {
    }
    ~PulsePlayback()
    {
        m_ended = true;
        m_thread.join();
    }
    PulsePlayback(const PulsePlayback&) = delete;
    PulsePlayback& operator=(const PulsePlayback&) = delete;

private:
    std::atomic<bool> m_ended{false};
    std::thread m_thread;
};

PulseSound::PulseSound() = default;

PulseSound::~PulseSound() = default;

int PulseSound::deviceCount() const
{
    const PulseLibrary* const library = PulseLibrary::get();
    if (!library)
        return 0;
    PulseConnection connection(*library);
    if (!connection.open())
        return 0;
    int count = 0;
    const bool answered = connection.finish(library->getSinkInfoList(
        connection.context(),
        [](pa_context*, const pa_sink_info*, int end, void* told) {
            if (end == 0)
                ++*static_cast<int*>(told);
        },
        &count));
    return answered ? count : 0;
}

void PulseSound::play(const QByteArray& wave, int flags)
{
    m_playing.reset();
    const PulseLibrary* const library = PulseLibrary::get();
    if (!library)
        return;
    if ((flags & SoundFlag::Async) != 0)
        m_playing = std::make_unique<PulsePlayback>(*library, wave);
    else
        playTo(*library, wave, false);
}

} // namespace orvantine
