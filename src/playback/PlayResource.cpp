#include "playback/PlayResource.h"

#include "app/Root.h"
#include "platform/Cues.h"

namespace orvantine {

bool SoundCardPresent(const Root& root)
{
    return root.services.sound.deviceCount() > 0;
}

void PlayResource(Root& root, const QString& name, std::optional<int> flags)
{
    if (!SoundCardPresent(root))
        return;

    const QByteArray wave = cueNamed(name);
    if (wave.isEmpty())
        return;

    root.services.sound.play(wave, flags.value_or(SoundFlag::Memory | SoundFlag::NoDefault) | SoundFlag::Memory);
}

} // namespace orvantine
