#pragma once

#include <QString>

#include <optional>

namespace orvantine {

struct Root;

/// True if there is a device that sounds can be played on.
[[nodiscard]] bool SoundCardPresent(const Root& root);

/// Plays the cue of that name ("Play", "Stop", "Ready"; case does not count), to its end unless `SoundFlag::Async` is
/// among the flags. An unknown name is silence, as is a machine without a sound card.
void PlayResource(Root& root, const QString& name, std::optional<int> flags = std::nullopt);

} // namespace orvantine
