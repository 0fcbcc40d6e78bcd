#include "playback/Volume.h"

#include "app/Command.h"
#include "app/Root.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Auxiliary = 4105;
// Required: eight steps of 8000 end at 64000, not at the 65535 that the speakers can have.
constexpr int LevelPerStep = 8000;

} // namespace

clsVolume::clsVolume(MixerDevice& device) : m_mixer(device.open())
{
    if (!m_mixer)
        return;

    for (Line* line : {&m_wave, &m_microphone, &m_waveIn, &m_midi, &m_compactDisc})
        GetVolumeControl(line->componentType, *line);
    if (!GetVolumeControl(m_lineIn.componentType, m_lineIn))
        GetVolumeControl(Auxiliary, m_lineIn);
}

bool clsVolume::GetVolumeControl(int componentType, Line& line)
{
    const auto range = m_mixer->line(componentType);
    if (!range)
        return false;
    line = {componentType, *range};
    return true;
}

void clsVolume::SetVolumeControl(const Line& line, long level)
{
    if (m_mixer)
        m_mixer->setLevel(line.componentType, std::max(line.range.minimum, std::min(level, line.range.maximum)));
}

long clsVolume::GetVolumeValue(const Line& line) const
{
    return m_mixer ? m_mixer->level(line.componentType) : 0;
}

namespace {

/// Halves go to the even step.
void showLevel(Root& root)
{
    const auto step = static_cast<int>(std::nearbyint(static_cast<double>(root.volume->WaveVolume()) / LevelPerStep));
    root.sVolume.Value = std::clamp(step, root.sVolume.Min.value(), root.sVolume.Max.value());
}

} // namespace

void LoadVolume(Root& root)
{
    root.volume = std::make_shared<clsVolume>(root.services.mixer);
    Command command(root);
    if (!root.volume->present() &&
        !command.ask({.text = u"Die Soundkarte konnte nicht gefunden oder initialisiert werden.    \n"
                              u"Warscheinlich ist die Audiowiedergabe nicht verfügbar."_s,
                      .title = u" Sound und Audiowiedergabe"_s,
                      .icon = MessageIcon::Critical}))
        return;
    showLevel(root);
}

void RefreshVolume(Root& root)
{
    // A line that was not found has no limits either: a level set by it would be silence.
    if (!root.volume || root.volume->MaxWaveVolume() <= 0)
        root.volume = std::make_shared<clsVolume>(root.services.mixer);
    // Without the speakers' line there is no level that could be shown.
    if (root.volume->MaxWaveVolume() > 0)
        showLevel(root);
}

void sVolume_Scroll(Root& root)
{
    const int step = root.sVolume.Value;
    const double percentPerStep = QLocale(QLocale::German, QLocale::Germany).toDouble(u"12,5"_s);
    root.sVolume.Text = QString::number(static_cast<int>(std::nearbyint(step * percentPerStep)));

    if (root.volume)
        root.volume->setWaveVolume(long{step} * LevelPerStep);
}

void sVolume_Click(Root& root)
{
    root.LListView1.SetFocus();
}

} // namespace orvantine
