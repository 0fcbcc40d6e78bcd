#pragma once

#include "platform/Desktop.h"

namespace orvantine {

struct Root;

/// The speaker's line of the mixer. Opens the mixer when it is made and closes it when it goes.
class clsVolume
{
public:
    explicit clsVolume(MixerDevice& mixer);
    ~clsVolume();
    clsVolume(const clsVolume&) = delete;
    clsVolume& operator=(const clsVolume&) = delete;

    [[nodiscard]] long WaveVolume() const;
    void setWaveVolume(long level);

private:
    MixerDevice& m_mixer;
};

/// Makes the mixer object anew and puts the slider at the level of the speakers.
void LoadVolume(Root& root);

} // namespace orvantine
