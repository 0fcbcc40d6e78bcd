#include "desktop/sound/PulseMixer.h"

#include "desktop/sound/PulseConnection.h"

#include <QtGlobal>

#include <algorithm>

namespace orvantine {

namespace {

constexpr int Speakers = 4;
constexpr int Microphone = 4099;
constexpr long Top = 65535;

/// The sink or the source behind a line.
struct Device
{
    quint32 index = PA_INVALID_INDEX;
    pa_cvolume volume{};
};

long levelOf(quint32 volume)
{
    const quint64 level = (quint64{volume} * Top + PA_VOLUME_NORM / 2) / PA_VOLUME_NORM;
    return static_cast<long>(std::min<quint64>(level, Top));
}

quint32 volumeOf(long level)
{
    return static_cast<quint32>((static_cast<quint64>(level) * PA_VOLUME_NORM + Top / 2) / Top);
}

class PulseMixerHandle final : public MixerHandle
{
public:
    explicit PulseMixerHandle(const PulseLibrary& library) : m_pulse(library), m_connection(library) {}

    [[nodiscard]] bool open() { return m_connection.open(); }

    std::optional<MixerRange> line(int componentType) override
    {
        if (!device(componentType))
            return std::nullopt;
        return MixerRange{0, Top};
    }

    long level(int componentType) override
    {
        const auto found = device(componentType);
        return found ? levelOf(m_pulse.volumeMax(&found->volume)) : 0;
    }

    bool setLevel(int componentType, long level) override
    {
        auto found = device(componentType);
        if (!found)
            return false;
        if (!m_pulse.volumeScale(&found->volume, volumeOf(std::clamp(level, 0L, Top))))
            return false;
        bool done = false;
        const auto answer = [](pa_context*, int success, void* told) { *static_cast<bool*>(told) = success != 0; };
        pa_context* const context = m_connection.context();
        return m_connection.finish(
                   componentType == Speakers
                       ? m_pulse.setSinkVolumeByIndex(context, found->index, &found->volume, answer, &done)
                       : m_pulse.setSourceVolumeByIndex(context, found->index, &found->volume, answer, &done)) &&
               done;
    }

private:
    [[nodiscard]] std::optional<Device> device(int componentType)
    {
        if (componentType != Speakers && componentType != Microphone)
            return std::nullopt;
        if (!m_connection.alive() && !m_connection.open())
            return std::nullopt;
        Device found;
        pa_context* const context = m_connection.context();
        const bool answered = m_connection.finish(
            componentType == Speakers ? m_pulse.getSinkInfoByName(
                                            context, "@DEFAULT_SINK@",
                                            [](pa_context*, const pa_sink_info* sink, int end, void* told) {
                                                if (end == 0)
                                                    *static_cast<Device*>(told) = {sink->index, sink->volume};
                                            },
                                            &found)
                                      : m_pulse.getSourceInfoByName(
                                            context, "@DEFAULT_SOURCE@",
                                            [](pa_context*, const pa_source_info* source, int end, void* told) {
                                                if (end == 0 && source->monitor_of_sink == PA_INVALID_INDEX)
                                                    *static_cast<Device*>(told) = {source->index, source->volume};
                                            },
                                            &found));
        return answered && found.index != PA_INVALID_INDEX ? std::optional(found) : std::nullopt;
    }

    const PulseLibrary& m_pulse;
    PulseConnection m_connection;
};

} // namespace

std::unique_ptr<MixerHandle> PulseMixer::open()
{
    const PulseLibrary* const library = PulseLibrary::get();
    if (!library)
        return nullptr;
    auto handle = std::make_unique<PulseMixerHandle>(*library);
    return handle->open() ? std::move(handle) : nullptr;
}

} // namespace orvantine
