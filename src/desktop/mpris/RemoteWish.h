#pragma once

#include <QString>

namespace orvantine {

/// Connecting where there is no bus would start one.
[[nodiscard]] bool hasSessionBus();

/// Asks the program that runs in this session for a step of its player ("Play", "Pause", "Next"). False if none has
/// heard it. Needs an application object.
[[nodiscard]] bool askRunning(const QString& step);

} // namespace orvantine
