#pragma once

#include <QString>

#include <functional>

namespace orvantine {

/// One running program a user, by a lock that the kernel frees when its holder dies.
class Instance
{
public:
    virtual ~Instance() = default;

    /// True if this process holds the lock now.
    virtual bool acquire(const QString& title) = 0;
    /// Asks the holder to come to the front; false if it does not answer.
    virtual bool activateOther() = 0;
    /// A later instance asked this one to come to the front.
    std::function<void()> Activated = [] {};
};

} // namespace orvantine
