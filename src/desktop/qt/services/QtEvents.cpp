#include "desktop/qt/services/QtEvents.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace orvantine {

/// Runs a QTimer in step with a timer control.
class QtEvents::TimerDriver
{
public:
    explicit TimerDriver(Timer& timer) : m_timer(timer)
    {
        m_clock.setTimerType(Qt::CoarseTimer);
        m_clock.setInterval(timer.Interval);
        QObject::connect(&m_clock, &QTimer::timeout, &m_clock, [this] { tick(); });
        m_watch = timer.Enabled.addNotifier([this] { follow(); });
        follow();
    }

    void stop() { m_clock.stop(); }

private:
    void follow()
    {
        if (m_timer.Enabled.value())
            m_clock.start();
        else
            m_clock.stop();
    }

    void tick()
    {
        if (m_ticking || !m_timer.Tick)
            return;
        m_ticking = true;
        m_timer.Tick();
        m_ticking = false;
    }

    Timer& m_timer;
    QTimer m_clock;
    bool m_ticking = false;
    QPropertyNotifier m_watch;
};

QtEvents::QtEvents() = default;
QtEvents::~QtEvents() = default;

void QtEvents::yield(std::chrono::milliseconds atMost)
{
    if (m_ended)
        return;
    if (atMost.count() <= 0) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        return;
    }
    // The loop below ends with the first event; the timer is the event that ends it when nothing else happens.
    QTimer limit;
    limit.setSingleShot(true);
    limit.setTimerType(Qt::PreciseTimer);
    limit.start(atMost);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

QDateTime QtEvents::now() const
{
    return QDateTime::currentDateTime();
}

double QtEvents::secondsOfDay() const
{
    return now().time().msecsSinceStartOfDay() / 1000.0;
}

void QtEvents::attach(Timer& timer)
{
    m_timers.push_back(std::make_unique<TimerDriver>(timer));
}

void QtEvents::endProcess()
{
    m_ended = true;
    for (const auto& timer : m_timers)
        timer->stop();
    QCoreApplication::exit(0);
}

} // namespace orvantine
