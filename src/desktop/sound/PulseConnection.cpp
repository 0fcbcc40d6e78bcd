#include "desktop/sound/PulseConnection.h"

#include <algorithm>
#include <utility>

namespace orvantine {

using namespace std::chrono_literals;

namespace {

/// How long a server may take for its answer.
constexpr auto Patience = 300ms;

/// How long one that has taken the connection may take until it is ready: it may only just be starting. Where nobody
/// listens the connection is refused at once.
constexpr auto PatienceWithStart = 3s;

} // namespace

bool PulseConnection::open()
{
    close();
    m_loop = m_pulse.mainloopNew();
    if (!m_loop)
        return false;
    m_context = m_pulse.contextNew(m_pulse.mainloopGetApi(m_loop), "Orvanten Manager");
    if (m_context && m_pulse.contextConnect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) >= 0 &&
        wait([this] { return ready(); }, PatienceWithStart))
        return true;
    close();
    return false;
}

void PulseConnection::close()
{
    if (m_context) {
        m_pulse.contextDisconnect(m_context);
        m_pulse.contextUnref(std::exchange(m_context, nullptr));
    }
    if (m_loop)
        m_pulse.mainloopFree(std::exchange(m_loop, nullptr));
}

bool PulseConnection::alive()
{
    if (!m_context)
        return false;
    // Until nothing is waiting; a server that never stops to talk is not listened to for ever.
    constexpr int MostTurns = 16;
    for (int count = 0; count < MostTurns; ++count) {
        const Turn turned = turn(0us);
        if (turned != Turn::Served)
            return turned == Turn::Idle && ready();
    }
    return ready();
}

bool PulseConnection::wait(const std::function<bool()>& holds, std::chrono::milliseconds most)
{
    const auto end = std::chrono::steady_clock::now() + most;
    while (m_context && !holds()) {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - std::chrono::steady_clock::now());
        if (left <= 0us || turn(left) == Turn::Lost)
            return false;
    }
    return m_context != nullptr;
}

bool PulseConnection::finish(pa_operation* request)
{
    if (!request)
        return false;
    const bool done =
        wait([this, request] { return m_pulse.operationGetState(request) != PA_OPERATION_RUNNING; }, Patience) &&
        m_pulse.operationGetState(request) == PA_OPERATION_DONE;
    if (!done)
        m_pulse.operationCancel(request);
    m_pulse.operationUnref(request);
    return done;
}

bool PulseConnection::ready() const
{
    return m_pulse.contextGetState(m_context) == PA_CONTEXT_READY;
}

PulseConnection::Turn PulseConnection::turn(std::chrono::microseconds most)
{
    if (m_pulse.mainloopPrepare(m_loop, static_cast<int>(most.count())) < 0 || m_pulse.mainloopPoll(m_loop) < 0)
        return Turn::Lost;
    const int served = m_pulse.mainloopDispatch(m_loop);
    if (served < 0 || !PA_CONTEXT_IS_GOOD(m_pulse.contextGetState(m_context)))
        return Turn::Lost;
    return served > 0 ? Turn::Served : Turn::Idle;
}

} // namespace orvantine
