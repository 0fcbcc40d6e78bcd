#pragma once

#include "platform/MixerDevice.h"

#include <memory>

namespace orvantine {

struct Root;

/// The lines of the mixer. Opens it when it is made and closes it when it goes.
///
/// The limits are those that the lines had then. A line that was not found has 0 and 0, so it reads as it may and is
/// written with 0. Without a mixer everything reads as 0 and nothing is written.
class clsVolume
{
public:
    explicit clsVolume(MixerDevice& device);
    ~clsVolume() = default;
    clsVolume(const clsVolume&) = delete;
    clsVolume& operator=(const clsVolume&) = delete;

    /// A sound server answered.
    [[nodiscard]] bool present() const { return m_mixer != nullptr; }

    // The speakers
    [[nodiscard]] long MinWaveVolume() const { return m_wave.range.minimum; }
    [[nodiscard]] long MaxWaveVolume() const { return m_wave.range.maximum; }
    [[nodiscard]] long WaveVolume() const { return GetVolumeValue(m_wave); }
    void setWaveVolume(long level) { SetVolumeControl(m_wave, level); }

    // The microphone
    [[nodiscard]] long MinMicVolume() const { return m_microphone.range.minimum; }
    [[nodiscard]] long MaxMicVolume() const { return m_microphone.range.maximum; }
    [[nodiscard]] long MicroVolume() const { return GetVolumeValue(m_microphone); }
    void setMicroVolume(long level) { SetVolumeControl(m_microphone, level); }

    // The source of the wave output
    [[nodiscard]] long MinWavInVolume() const { return m_waveIn.range.minimum; }
    [[nodiscard]] long MaxWavInVolume() const { return m_waveIn.range.maximum; }
    [[nodiscard]] long WaveInVolume() const { return GetVolumeValue(m_waveIn); }
    void setWaveInVolume(long level) { SetVolumeControl(m_waveIn, level); }

    // The synthesizer
    [[nodiscard]] long MinMidVolume() const { return m_midi.range.minimum; }
    [[nodiscard]] long MaxMidVolume() const { return m_midi.range.maximum; }
    [[nodiscard]] long MidVolume() const { return GetVolumeValue(m_midi); }
    void setMidVolume(long level) { SetVolumeControl(m_midi, level); }

    // The compact disc
    [[nodiscard]] long MinCDVolume() const { return m_compactDisc.range.minimum; }
    [[nodiscard]] long MaxCDVolume() const { return m_compactDisc.range.maximum; }
    [[nodiscard]] long CD_Volume() const { return GetVolumeValue(m_compactDisc); }
    void setCD_Volume(long level) { SetVolumeControl(m_compactDisc, level); }

    // The line in, or the auxiliary one in its place
    [[nodiscard]] long MinLineInVolume() const { return m_lineIn.range.minimum; }
    [[nodiscard]] long MaxLineInVolume() const { return m_lineIn.range.maximum; }
    [[nodiscard]] long LineInVolume() const { return GetVolumeValue(m_lineIn); }
    void setLineInVolume(long level) { SetVolumeControl(m_lineIn, level); }

private:
    struct Line
    {
        int componentType;
        MixerRange range{};
    };

    bool GetVolumeControl(int componentType, Line& line);
    void SetVolumeControl(const Line& line, long level);
    [[nodiscard]] long GetVolumeValue(const Line& line) const;

    // Required: "Wave" is the speakers' line, and "Wave in" is the source of the wave output.
    Line m_wave{4};
    Line m_microphone{4099};
    Line m_waveIn{4104};
    Line m_midi{4100};
    Line m_compactDisc{4101};
    Line m_lineIn{4098};
    std::unique_ptr<MixerHandle> m_mixer;
};

/// Makes the mixer object anew, with a message if there is no mixer, and puts the slider at the level of the speakers,
/// so that a change made elsewhere on the desktop is picked up.
void LoadVolume(Root& root);

/// Puts the slider where the speakers are, without a message: before it is moved by a step.
void RefreshVolume(Root& root);

/// The slider was moved: its text tells percent, its place becomes the level of the speakers.
void sVolume_Scroll(Root& root);
void sVolume_Click(Root& root);

} // namespace orvantine
