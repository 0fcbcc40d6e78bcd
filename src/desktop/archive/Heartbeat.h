#pragma once

#include "platform/ZipArchive.h"

#include <QElapsedTimer>

#include <algorithm>

namespace orvantine {

/// Tells of progress often enough that a window stays alive, and seldom enough that the work goes on.
class Heartbeat
{
public:
    Heartbeat(const ArchiveProgress& progress, qint64 total) : m_progress(progress), m_total(total) { m_since.start(); }

    /// False: stop.
    [[nodiscard]] bool add(qint64 bytes) { return reach(m_done + bytes); }
    [[nodiscard]] bool reach(qint64 done)
    {
        constexpr qint64 Beat = 40;
        m_done = std::clamp(done, m_done, std::max(m_done, m_total));
        if (m_goesOn && m_since.elapsed() >= Beat)
            beat();
        return m_goesOn;
    }
    [[nodiscard]] bool finish()
    {
        m_done = m_total;
        if (m_goesOn)
            beat();
        return m_goesOn;
    }

private:
    void beat()
    {
        m_goesOn = !m_progress || m_progress(m_done, m_total);
        m_since.restart();
    }

    const ArchiveProgress& m_progress;
    qint64 m_total;
    qint64 m_done = 0;
    bool m_goesOn = true;
    QElapsedTimer m_since;
};

} // namespace orvantine
