#include "playback/Volume.h"

#include "app/Root.h"

#include <algorithm>

namespace orvantine {

namespace {

constexpr int Speakers = 4;
constexpr long LevelPerStep = 8000;

} // namespace

clsVolume::clsVolume(MixerDevice& mixer) : m_mixer(mixer)
{
    m_mixer.open();
}

clsVolume::~clsVolume()
{
    m_mixer.close();
}

long clsVolume::WaveVolume() const
{
    return m_mixer.level(Speakers);
}

void clsVolume::setWaveVolume(long level)
{
    const MixerRange range = m_mixer.line(Speakers).value_or(MixerRange{});
    m_mixer.setLevel(Speakers, std::clamp(level, range.minimum, range.maximum));
}

void LoadVolume(Root& root)
{
    root.volume = std::make_unique<clsVolume>(root.services.mixer);
    const auto step = static_cast<int>(root.volume->WaveVolume() / LevelPerStep);
    root.sVolume.Value = std::min(step, root.sVolume.Max.value());
}

} // namespace orvantine
