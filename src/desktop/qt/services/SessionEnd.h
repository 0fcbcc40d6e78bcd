#pragma once

#include <QObject>

#include <functional>

namespace orvantine {

/// Tells that the session ends (log-out) or that the process is asked to end (SIGTERM, SIGINT, SIGHUP). At most one
/// lives at a time.
class SessionEnd final : public QObject
{
public:
    explicit SessionEnd(std::function<void()> ends);
    ~SessionEnd() override;

private:
    std::function<void()> m_ends;
};

} // namespace orvantine
