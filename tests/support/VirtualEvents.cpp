#include "support/VirtualEvents.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// A loop that yields so often without letting time go by waits for something that will never come.
constexpr int MostIdleYields = 1'000'000;

} // namespace

struct VirtualEvents::Driver
{
    Driver(VirtualEvents& owner, Timer& served) : events(owner), timer(served)
    {
        watch = timer.Enabled.addNotifier([this] { follow(); });
        follow();
    }

    void follow()
    {
        if (timer.Enabled.value())
            due = events.m_now + timer.Interval;
        else
            due.reset();
    }

    VirtualEvents& events;
    Timer& timer;
    std::optional<Time> due;
    bool ticking = false;
    QPropertyNotifier watch;
};

VirtualEvents::VirtualEvents(CallLog& log, Complaints& complaints)
    : m_log(log), m_complaints(complaints), m_start(QDate(2026, 11, 20), QTime(12, 0))
{
}

VirtualEvents::~VirtualEvents() = default;

std::optional<VirtualEvents::Time> VirtualEvents::nextDue() const
{
    std::optional<Time> first;
    for (const Action& action : m_actions)
        if (!first || action.due < *first)
            first = action.due;
    for (const auto& timer : m_timers)
        if (timer->due && !timer->ticking && (!first || *timer->due < *first))
            first = timer->due;
    return first;
}

bool VirtualEvents::fireOne()
{
    const std::optional<Time> due = nextDue();
    if (!due || *due > m_now || m_ended)
        return false;
    const auto action =
        std::find_if(m_actions.begin(), m_actions.end(), [&](const Action& entry) { return entry.due == *due; });
    if (action != m_actions.end()) {
        const std::function<void()> run = std::move(action->run);
        m_actions.erase(action);
        run();
        return true;
    }
    for (std::size_t i = 0; i < m_timers.size(); ++i) {
        Driver& driver = *m_timers[i];
        if (driver.ticking || driver.due != due)
            continue;
        driver.due = std::max(*due + driver.timer.Interval, m_now);
        driver.ticking = true;
        if (driver.timer.Tick)
            driver.timer.Tick();
        driver.ticking = false;
        // What fell due inside the own tick is lost, not made up for.
        if (driver.due && *driver.due < m_now)
            driver.due = m_now + driver.timer.Interval;
        return true;
    }
    return false;
}

void VirtualEvents::yield(std::chrono::milliseconds atMost)
{
    if (m_ended)
        return;
    if (atMost.count() == 0)
        ++m_yields;
    if (atMost.count() > 0) {
        const Time limit = m_now + atMost;
        m_now = std::max(m_now, std::min(nextDue().value_or(limit), limit));
    } else if (m_lastMove == m_now) {
        if (++m_idleYields == MostIdleYields) {
            m_complaints.add(u"a loop yields without end while no time goes by"_s);
            m_ended = true;
            return;
        }
    }
    if (m_lastMove != m_now) {
        m_lastMove = m_now;
        m_idleYields = 0;
    }
    if (atMost.count() == 0)
        if (const auto action = m_atYield.extract(m_yields))
            action.mapped()();
    const Time until = m_now;
    while (nextDue().value_or(until + Time{1}) <= until && fireOne()) {
    }
}

QDateTime VirtualEvents::now() const
{
    return m_start.addMSecs(m_now.count());
}

double VirtualEvents::secondsOfDay() const
{
    return now().time().msecsSinceStartOfDay() / 1000.0;
}

void VirtualEvents::attach(Timer& timer)
{
    m_timers.push_back(std::make_unique<Driver>(*this, timer));
}

void VirtualEvents::endProcess()
{
    m_log.call(u"events.endProcess"_s);
    m_ended = true;
}

void VirtualEvents::setNow(const QDateTime& now)
{
    m_start = now.addMSecs(-m_now.count());
}

void VirtualEvents::run(std::chrono::milliseconds time)
{
    const Time until = m_now + time;
    while (!m_ended) {
        const std::optional<Time> due = nextDue();
        if (!due || *due > until)
            break;
        m_now = std::max(m_now, *due);
        fireOne();
    }
    m_now = std::max(m_now, until);
}

void VirtualEvents::after(std::chrono::milliseconds time, std::function<void()> action)
{
    m_actions.push_back({m_now + time, std::move(action)});
}

void VirtualEvents::atYield(int number, std::function<void()> action)
{
    m_atYield[m_yields + number] = std::move(action);
}

} // namespace orvantine::fake
