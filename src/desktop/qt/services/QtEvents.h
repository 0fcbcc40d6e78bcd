#pragma once

#include "platform/Events.h"

#include <memory>
#include <vector>

namespace orvantine {

/// The application's event loop, its clock and its timers.
class QtEvents final : public Events
{
public:
    QtEvents();
    ~QtEvents() override;

    void yield(std::chrono::milliseconds atMost) override;
    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] double secondsOfDay() const override;
    void attach(Timer& timer) override;
    void endProcess() override;
    [[nodiscard]] bool ended() const override { return m_ended; }

private:
    class TimerDriver;
    std::vector<std::unique_ptr<TimerDriver>> m_timers;
    bool m_ended = false;
};

} // namespace orvantine
