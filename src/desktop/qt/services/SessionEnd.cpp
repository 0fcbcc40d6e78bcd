#include "desktop/qt/services/SessionEnd.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <utility>

#include <sys/socket.h>
#include <unistd.h>

namespace orvantine {

namespace {

constexpr int Signals[] = {SIGTERM, SIGINT, SIGHUP};

/// A handler may do hardly more than write: the byte wakes the event loop, which does the rest.
int ears[2] = {-1, -1};

extern "C" void tell(int)
{
    const int before = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(ears[0], &byte, 1);
    errno = before;
}

void setHandler(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    ::sigaction(signal, nullptr, &action);
    // Who started the program may want it to outlive the terminal.
    if (action.sa_handler == SIG_IGN)
        return;
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

SessionEnd::SessionEnd(std::function<void()> ends) : m_ends(std::move(ends))
{
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this, [this] { m_ends(); }, Qt::DirectConnection);
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ears) != 0)
        return;
    auto* const heard = new QSocketNotifier(ears[1], QSocketNotifier::Read, this);
    connect(heard, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (::read(ears[1], bytes, sizeof bytes) > 0) {
        }
        m_ends();
    });
    for (const int signal : Signals)
        setHandler(signal, tell);
}

SessionEnd::~SessionEnd()
{
    if (ears[0] < 0)
        return;
    for (const int signal : Signals)
        setHandler(signal, SIG_DFL);
    for (int& ear : ears)
        ::close(std::exchange(ear, -1));
}

} // namespace orvantine
