#pragma once

#include "platform/Controls.h"

#include <QDateTime>

#include <chrono>

namespace orvantine {

/// The event loop and the clock of the one thread.
class Events
{
public:
    virtual ~Events() = default;

    /// Serves the waiting events. With a time it may sleep for as long, at most, until one arrives.
    virtual void yield(std::chrono::milliseconds atMost = std::chrono::milliseconds{0}) = 0;
    /// Local date and time.
    [[nodiscard]] virtual QDateTime now() const = 0;
    /// Seconds since midnight, with fractions.
    [[nodiscard]] virtual double secondsOfDay() const = 0;
    /// Serves the timer from now on: it ticks while it is enabled, also inside a yield, never inside its own tick.
    virtual void attach(Timer& timer) = 0;
    /// Ends the process when the handlers that are running have returned. No yield serves anything any more.
    virtual void endProcess() = 0;
    [[nodiscard]] virtual bool ended() const = 0;
};

} // namespace orvantine
