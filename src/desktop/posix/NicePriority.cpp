#include "desktop/posix/NicePriority.h"

#include <algorithm>

#include <sys/resource.h>

namespace orvantine {
namespace {

// What the desktops that the program comes from give to a process of the high class, in steps of this host.
constexpr int StepsToHigh = 10;
constexpr int Highest = -20;

} // namespace

NicePriority::NicePriority() : m_normal(::getpriority(PRIO_PROCESS, 0)) {}

void NicePriority::set(ProcessPriority priority)
{
    const int wanted = priority == ProcessPriority::High ? std::max(m_normal - StepsToHigh, Highest) : m_normal;
    static_cast<void>(::setpriority(PRIO_PROCESS, 0, wanted));
}

} // namespace orvantine
