#pragma once

#include "desktop/sound/PulseLibrary.h"

#include <chrono>
#include <functional>

namespace orvantine {

/// A connection to the sound server that belongs to the thread that uses it. Every wait has an end, and no events of
/// the program are served in it. A server that is not there is never started.
class PulseConnection
{
public:
    explicit PulseConnection(const PulseLibrary& library) : m_pulse(library) {}
    ~PulseConnection() { close(); }
    PulseConnection(const PulseConnection&) = delete;
    PulseConnection& operator=(const PulseConnection&) = delete;

    /// Connects anew; false if nobody listens, or a server that has taken the connection is not
    /// ready within three seconds.
    bool open();
    void close();
    /// Takes note of what the server told since the last call; false if the connection is lost.
    [[nodiscard]] bool alive();

    /// Serves the connection until it holds; false if that did not come about in time or the connection was lost.
    bool wait(const std::function<bool()>& holds, std::chrono::milliseconds most);
    /// The same until the server has answered the request, which is released. Null is a request that failed.
    bool finish(pa_operation* request);

    /// Of an open connection.
    [[nodiscard]] pa_context* context() const { return m_context; }

private:
    [[nodiscard]] bool ready() const;
    enum class Turn { Idle, Served, Lost };
    /// Waits for something to do, at the most that long.
    Turn turn(std::chrono::microseconds most);

    const PulseLibrary& m_pulse;
    pa_mainloop* m_loop = nullptr;
    pa_context* m_context = nullptr;
};

} // namespace orvantine
