#pragma once

#include "platform/Events.h"
#include "support/CallLog.h"
#include "support/Complaints.h"

#include <map>
#include <memory>
#include <vector>

namespace orvantine::fake {

/// An event loop whose time moves only when somebody waits. Timers fire in the order of their due times, those due at
/// one time in the order of their attaching; also inside a nested yield, never inside their own tick.
class VirtualEvents final : public Events
{
public:
    VirtualEvents(CallLog& log, Complaints& complaints);
    ~VirtualEvents() override;

    /// Without a time: fires what is due. With one: moves to the next due time, at most `atMost` ahead, and fires what
    /// is due there.
    void yield(std::chrono::milliseconds atMost = std::chrono::milliseconds{0}) override;
    [[nodiscard]] QDateTime now() const override;
    [[nodiscard]] double secondsOfDay() const override;
    void attach(Timer& timer) override;
    void endProcess() override;
    [[nodiscard]] bool ended() const override { return m_ended; }

    /// Sets the clock; timers keep their distance.
    void setNow(const QDateTime& now);
    /// Time goes by: everything that falls due within it is fired in order.
    void run(std::chrono::milliseconds time);
    /// The action runs when the time has gone by, before a timer that is due at the same moment: a user who does
    /// something while the program waits.
    void after(std::chrono::milliseconds time, std::function<void()> action);
    /// The action runs inside the yield of that number, counted from now among those without a time.
    void atYield(int number, std::function<void()> action);
    /// How often somebody yielded without a time.
    [[nodiscard]] int yields() const { return m_yields; }
    /// Since the events came into being.
    [[nodiscard]] std::chrono::milliseconds elapsed() const { return m_now; }

private:
    using Time = std::chrono::milliseconds;
    struct Driver;
    struct Action
    {
        Time due{0};
        std::function<void()> run;
    };

    [[nodiscard]] std::optional<Time> nextDue() const;
    /// Fires the first thing that is due; false if nothing is.
    bool fireOne();

    CallLog& m_log;
    Complaints& m_complaints;
    std::vector<std::unique_ptr<Driver>> m_timers;
    std::vector<Action> m_actions;
    std::map<int, std::function<void()>> m_atYield;
    QDateTime m_start;
    Time m_now{0};
    Time m_lastMove{0};
    int m_idleYields = 0;
    int m_yields = 0;
    bool m_ended = false;
};

} // namespace orvantine::fake
