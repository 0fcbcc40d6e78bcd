#include "desktop/posix/NicePriority.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace orvantine {

TEST(NicePriority, ComesBackToTheOneThatTheProgramWasStartedWith)
{
    const int before = ::getpriority(PRIO_PROCESS, 0);
    NicePriority priority;
    priority.set(ProcessPriority::High);
    // Who may not raise it keeps what he has.
    EXPECT_LE(::getpriority(PRIO_PROCESS, 0), before);
    priority.set(ProcessPriority::Normal);
    EXPECT_EQ(::getpriority(PRIO_PROCESS, 0), before);
}

} // namespace orvantine
